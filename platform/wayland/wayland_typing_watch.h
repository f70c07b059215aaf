// What happens in a Wayland session while the program types into one of its applications.
#pragma once

#include <chrono>
#include <functional>

#include "platform/typing_watch.h"
#include "platform/wayland/toplevel_windows.h"

namespace kalvo {

// Knows the window in front. No Wayland session shows anybody the keys of its keyboards, so
// the stop key cannot be seen here, nor that the user types as well.
class WaylandTypingWatch : public TypingWatch {
public:
    // `rules` is asked whenever typing begins. Throws RuntimeError 5 when the compositor
    // does not show its windows.
    explicit WaylandTypingWatch(std::function<WatchRules()> rules) : rules_(std::move(rules)) {}

    void begin() override;
    [[nodiscard]] TypingStop look() override;
    [[nodiscard]] Hold hold() override { return hold_; }
    [[nodiscard]] bool targetInFront() override;
    [[nodiscard]] bool connected() override { return windows_.alive(); }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool ofTarget(ToplevelWindows::Window window);

    std::function<WatchRules()> rules_;
    ToplevelWindows windows_;
    WatchRules rule_;
    ToplevelWindows::Window target_ = ToplevelWindows::kNone;
    ToplevelWindows::Window mainWindow_ = ToplevelWindows::kNone;
    Clock::time_point nobodySince_;
    Hold hold_ = Hold::kNone;
};

}  // namespace kalvo
