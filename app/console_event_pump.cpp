#include "app/console_event_pump.h"

#include <chrono>
#include <ctime>
#include <thread>
#include <utility>

namespace kalvo {

namespace {

// A loop that polls through DoEvents rests after this many empty calls.
constexpr int kIdleCallsBeforeRest = 100;
constexpr int kWholeSecond = 1000;  // milliseconds

std::tm localTimeOf(std::time_t time) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &time);
#else
    localtime_r(&time, &local);
#endif
    return local;
}

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

std::uint32_t ConsoleEventPump::GetTickCount() {
    using std::chrono::steady_clock;
    const auto sinceStart = steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

LocalTime ConsoleEventPump::now() {
    if (fixedDate_) return *fixedDate_;
    const std::tm local = localTimeOf(std::time(nullptr));
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

void ConsoleEventPump::post(std::function<void()> handler) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(handler));
    }
    arrived_.notify_one();
}

}  // namespace kalvo
