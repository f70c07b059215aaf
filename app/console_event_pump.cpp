#include "app/console_event_pump.h"

namespace kalvo {

void ConsoleEventPump::run() {
    try {
        for (;;) {
            wait(std::chrono::seconds(1));
            DoEvents();
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

void ConsoleEventPump::wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    arrived_.wait_for(lock, time, [this] { return ending() || !queue_.empty(); });
}

}  // namespace kalvo
