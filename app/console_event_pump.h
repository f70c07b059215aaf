// The event loop of command-line use.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <optional>

#include "platform/shared/queued_event_pump.h"

namespace kalvo {

class ConsoleEventPump : public QueuedEventPump {
public:
    using QueuedEventPump::QueuedEventPump;

    // Makes now() answer this day, for dry runs.
    void setDate(const LocalTime& date) { fixedDate_ = date; }

    // Delivers handlers until the program is asked to end.
    void run();

    // Queues a handler that run() delivers by itself: never in the middle of another one.
    // Other threads may call it.
    void postAtRest(std::function<void()> handler);

    void DoEvents() override;
    void waitForEvents(int milliseconds) override;
    LocalTime now() override { return fixedDate_ ? *fixedDate_ : QueuedEventPump::now(); }

private:
    void wake() override { arrived_.notify_all(); }
    // Cut short by the end of the program.
    void rest(int milliseconds) override;
    void waitAtRest();
    // Waits for a handler, or the end, at most that long.
    void wait(std::chrono::milliseconds time);

    [[nodiscard]] std::function<void()> takeAtRest();

    std::optional<LocalTime> fixedDate_;
    std::deque<std::function<void()>> atRest_;  // guarded as the queue is
    std::condition_variable arrived_;
};

}  // namespace kalvo
