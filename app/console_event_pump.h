// The event loop of command-line use.
#pragma once

#include <chrono>
#include <condition_variable>
#include <optional>

#include "platform/queued_event_pump.h"

namespace kalvo {

class ConsoleEventPump : public QueuedEventPump {
public:
    using QueuedEventPump::QueuedEventPump;

    // Makes now() answer this day, for dry runs.
    void setDate(const LocalTime& date) { fixedDate_ = date; }

    // Delivers handlers until the program is asked to end.
    void run();

    void DoEvents() override;
    void waitForEvents(int milliseconds) override;
    LocalTime now() override { return fixedDate_ ? *fixedDate_ : QueuedEventPump::now(); }

private:
    void wake() override { arrived_.notify_all(); }
    // Waits for a handler, or the end, at most that long.
    void wait(std::chrono::milliseconds time);

    std::optional<LocalTime> fixedDate_;
    std::condition_variable arrived_;
};

}  // namespace kalvo
