#include <csignal>
#include <ctime>
#include <thread>
#include <utility>

#include "app/process/end_signals.h"

namespace kalvo {

struct EndSignals::Waiting {
    sigset_t signals{};
    std::jthread thread;
};

namespace {

// How long the waiting thread takes at most to see that it is no longer needed.
constexpr timespec kLookInterval{0, 100'000'000};

}  // namespace

EndSignals::EndSignals() : waiting_(std::make_unique<Waiting>()) {
    sigemptyset(&waiting_->signals);
    for (const int signal : {SIGINT, SIGTERM, SIGUSR1}) sigaddset(&waiting_->signals, signal);
    // Whoever started us may want us to outlive the terminal.
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN) sigaddset(&waiting_->signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &waiting_->signals, nullptr);
}

EndSignals::~EndSignals() = default;

void EndSignals::start(std::function<void()> onEnd, std::function<void()> onTransfer) {
    waiting_->thread =
        std::jthread([signals = waiting_->signals, onEnd = std::move(onEnd),
                      onTransfer = std::move(onTransfer)](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                const int signal = sigtimedwait(&signals, nullptr, &kLookInterval);
                if (signal == SIGUSR1) onTransfer();
                if (signal == SIGINT || signal == SIGTERM || signal == SIGHUP) onEnd();
            }
        });
}

void EndSignals::stop() { waiting_->thread = {}; }

}  // namespace kalvo
