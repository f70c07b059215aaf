#include "app/console_event_pump.h"

#include <chrono>
#include <thread>
#include <utility>

namespace kalvo {

namespace {

constexpr int kWholeSecond = 1000;  // milliseconds

}  // namespace

void ConsoleEventPump::run() {
    try {
        for (;;) {
            if (const auto handler = take(kWholeSecond)) deliver(handler);
            DoEvents();
        }
    } catch (const ProgramEnd&) {
        // Asked to end: the caller closes what it opened.
    }
}

void ConsoleEventPump::requestEnd() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    arrived_.notify_all();
}

void ConsoleEventPump::DoEvents() {
    // A handler that posts another does not keep the caller here for ever.
    std::size_t waiting = 0;
    {
        const std::lock_guard lock(mutex_);
        if (ending_) throw ProgramEnd{};
        waiting = queue_.size();
    }
    if (waiting == 0) {
        const bool rest = ++idleCalls_ > kIdleCallsBeforeRest;
        if (const auto handler = take(rest ? 1 : 0)) deliver(handler);
        return;
    }
    for (; waiting > 0; --waiting)
        if (const auto handler = take(0)) deliver(handler);
    idleCalls_ = 0;
}

void ConsoleEventPump::waitForEvents(int milliseconds) {
    if (const auto handler = take(milliseconds)) deliver(handler);
    DoEvents();
}

bool ConsoleEventPump::ending() {
    const std::lock_guard lock(mutex_);
    return ending_;
}

std::function<void()> ConsoleEventPump::take(int waitMilliseconds) {
    std::unique_lock lock(mutex_);
    if (waitMilliseconds > 0)
        arrived_.wait_for(lock, std::chrono::milliseconds(waitMilliseconds),
                          [this] { return ending_ || !queue_.empty(); });
    if (queue_.empty()) return nullptr;
    auto handler = std::move(queue_.front());
    queue_.pop_front();
    return handler;
}

void ConsoleEventPump::deliver(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RuntimeError& error) {
        onError_(error);
    }
}

void ConsoleEventPump::Sleep(int milliseconds) {
    idleCalls_ = 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::uint32_t ConsoleEventPump::GetTickCount() { return steadyTicks(); }

LocalTime ConsoleEventPump::now() { return fixedDate_ ? *fixedDate_ : localNow(); }

void ConsoleEventPump::post(std::function<void()> handler) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(handler));
    }
    arrived_.notify_one();
}

}  // namespace kalvo
