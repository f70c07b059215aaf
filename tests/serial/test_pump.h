// An event pump without a window system: a queue that the test empties.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/event_pump.h"

namespace kalvo::testing {

inline constexpr std::chrono::seconds kDeadline{20};

class TestPump : public EventPump {
public:
    void DoEvents() override {
        for (;;) {
            std::function<void()> handler;
            {
                const std::lock_guard lock(mutex_);
                if (queue_.empty()) return;
                handler = std::move(queue_.front());
                queue_.pop_front();
            }
            handler();
        }
    }
    void waitForEvents(int milliseconds) override {
        DoEvents();
        Sleep(milliseconds);
    }
    [[nodiscard]] bool ending() override { return false; }
    void Sleep(int milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    std::uint32_t GetTickCount() override { return 0; }
    LocalTime now() override { return {}; }
    void post(std::function<void()> handler) override {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(handler));
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
    std::mutex mutex_;
    std::deque<std::function<void()>> queue_;
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
