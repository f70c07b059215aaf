// An event pump without a window system: a queue that the test empties.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "platform/shared/queued_event_pump.h"

namespace kalvo::testing {

inline constexpr std::chrono::seconds kDeadline{20};

class TestPump : public QueuedEventPump {
public:
    TestPump()
        : QueuedEventPump(
              [](const RuntimeError& e) { throw std::runtime_error(e.description()); }) {}

    void DoEvents() override {
        while (deliverWaiting()) {
        }
    }
    void waitForEvents(int milliseconds) override {
        DoEvents();
        Sleep(milliseconds);
    }

    // Delivers events until the condition holds; false after the deadline.
    bool runUntil(const std::function<bool()>& condition) {
        const auto deadline = std::chrono::steady_clock::now() + kDeadline;
        while (std::chrono::steady_clock::now() < deadline) {
            DoEvents();
            if (condition()) return true;
            Sleep(1);
        }
        return false;
    }

    [[nodiscard]] std::size_t queued() {
        const std::lock_guard lock(mutex_);
        return queue_.size();
    }

private:
    void wake() override {}
};

// Waits without delivering any event; false after the deadline.
inline bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace kalvo::testing
