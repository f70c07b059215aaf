#include "app/console_event_pump.h"

#include <utility>

namespace kalvo {

void ConsoleEventPump::run() {
    try {
        for (;;) {
            waitAtRest();
            DoEvents();
            while (const auto handler = takeAtRest()) deliver(handler);
        }
    } catch (const ProgramEnd&) {
        // Asked to end: the caller closes what it opened.
    }
}

void ConsoleEventPump::DoEvents() {
    const bool delivered = deliverWaiting();
    if (ending()) throw ProgramEnd{};
    if (restIsDue(delivered)) wait(std::chrono::milliseconds(1));
}

void ConsoleEventPump::waitForEvents(int milliseconds) {
    wait(std::chrono::milliseconds(milliseconds));
    DoEvents();
}

void ConsoleEventPump::postAtRest(std::function<void()> handler) {
    {
        const std::lock_guard lock(mutex_);
        atRest_.push_back(std::move(handler));
    }
    wake();
}

std::function<void()> ConsoleEventPump::takeAtRest() {
    const std::lock_guard lock(mutex_);
    if (atRest_.empty() || ending()) return nullptr;
    auto handler = std::move(atRest_.front());
    atRest_.pop_front();
    return handler;
}

void ConsoleEventPump::waitAtRest() {
    std::unique_lock lock(mutex_);
    arrived_.wait(lock, [this] { return ending() || !queue_.empty() || !atRest_.empty(); });
}

void ConsoleEventPump::rest(int milliseconds) {
    std::unique_lock lock(mutex_);
    arrived_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return ending(); });
}

void ConsoleEventPump::wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    arrived_.wait_for(lock, time, [this] { return ending() || !queue_.empty(); });
}

}  // namespace kalvo
