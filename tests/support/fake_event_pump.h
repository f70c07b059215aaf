// A pump with a clock of its own: sleeping costs no time, and what a test wants to
// happen "meanwhile" is done from hooks.
#pragma once

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "platform/event_pump.h"

namespace kalvo::testing {

class FakeEventPump : public EventPump {
public:
    std::uint32_t tick = 1000;
    std::uint32_t step = 0;  // that passes with every look at the tick count
    LocalTime time{2024, 3, 5, 14, 7, 9};
    std::vector<int> sleeps;
    int pumped = 0;
    bool end = false;
    // Called by every Sleep and every DoEvents, after time has moved on.
    std::function<void()> whileSleeping;
    std::function<void()> whilePumping;

    void DoEvents() override {
        ++pumped;
        ++tick;
        if (whilePumping) whilePumping();
        for (auto waiting = std::exchange(queue_, {}); !waiting.empty(); waiting.pop_front())
            waiting.front()();
    }
    void waitForEvents(int milliseconds) override {
        tick += static_cast<std::uint32_t>(milliseconds);
        DoEvents();
        if (end) throw ProgramEnd{};
    }
    [[nodiscard]] bool ending() override { return end; }
    void Sleep(int milliseconds) override {
        sleeps.push_back(milliseconds);
        tick += static_cast<std::uint32_t>(milliseconds);
        if (whileSleeping) whileSleeping();
    }
    std::uint32_t GetTickCount() override { return tick += step; }
    LocalTime now() override { return time; }
    void post(std::function<void()> handler) override { queue_.push_back(std::move(handler)); }

private:
    std::deque<std::function<void()>> queue_;
};

}  // namespace kalvo::testing
