#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <thread>
#include <utility>

#include "app/process/end_signals.h"
#include "platform/shared/file_descriptor.h"

namespace kalvo {

namespace {

bool hasTerminal() {
    return FileDescriptor(open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC)).isOpen();
}

}  // namespace

struct EndSignals::Waiting {
    sigset_t signals{};
    bool hadTerminal = hasTerminal();
    std::jthread thread;
};

EndSignals::EndSignals() : waiting_(std::make_unique<Waiting>()) {
    sigemptyset(&waiting_->signals);
    for (const int signal : {SIGINT, SIGTERM, SIGUSR1}) sigaddset(&waiting_->signals, signal);
    // Whoever started us may want us to outlive the terminal.
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN) sigaddset(&waiting_->signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &waiting_->signals, nullptr);
}

EndSignals::~EndSignals() { stop(); }

void EndSignals::start(std::function<void()> onEnd, std::function<void()> onTransfer,
                       std::function<void()> onReload) {
    waiting_->thread =
        std::jthread([this, onEnd = std::move(onEnd), onTransfer = std::move(onTransfer),
                      onReload = std::move(onReload)](const std::stop_token& stop) {
            for (;;) {
                int signal = 0;
                sigwait(&waiting_->signals, &signal);
                if (stop.stop_requested()) return;
                // A terminal that closes sends the same as whoever wants the settings read again.
                const bool closing = waiting_->hadTerminal && !hasTerminal();
                if (signal == SIGUSR1)
                    onTransfer();
                else if (signal == SIGHUP && onReload && !closing)
                    onReload();
                else
                    onEnd();
            }
        });
}

void EndSignals::stop() {
    if (!waiting_->thread.joinable()) return;
    waiting_->thread.request_stop();
    pthread_kill(waiting_->thread.native_handle(), SIGUSR1);
    waiting_->thread.join();
}

}  // namespace kalvo
