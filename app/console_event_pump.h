// The event loop of command-line use: a queue of handlers and the system's clocks.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/event_pump.h"
#include "text/runtime_error.h"

namespace kalvo {

class ConsoleEventPump : public EventPump {
public:
    // `onError` is told of run-time errors that a delivered handler did not handle.
    explicit ConsoleEventPump(std::function<void(const RuntimeError&)> onError)
        : onError_(std::move(onError)) {}

    // Makes now() answer this day, for dry runs.
    void setDate(const LocalTime& date) { fixedDate_ = date; }

    // Delivers handlers until the program is asked to end.
    void run();

    // Asks the program to end. Other threads may call it.
    void requestEnd();

    void DoEvents() override;
    void waitForEvents(int milliseconds) override;
    [[nodiscard]] bool ending() override;
    void Sleep(int milliseconds) override;
    std::uint32_t GetTickCount() override;
    LocalTime now() override;
    void post(std::function<void()> handler) override;

private:
    // The next handler, waiting for one up to the given time; none when none came.
    std::function<void()> take(int waitMilliseconds);
    void deliver(const std::function<void()>& handler);

    std::function<void(const RuntimeError&)> onError_;
    std::optional<LocalTime> fixedDate_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<std::function<void()>> queue_;
    bool ending_ = false;
    // Calls of DoEvents in a row that found nothing.
    int idleCalls_ = 0;
};

}  // namespace kalvo
