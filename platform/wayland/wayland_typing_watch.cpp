#include "platform/wayland/wayland_typing_watch.h"

namespace kalvo {

namespace {

// An application that closes a dialog leaves the focus to nobody for a moment.
constexpr std::chrono::milliseconds kFocusGap{1000};

}  // namespace

void WaylandTypingWatch::begin() {
    rule_ = rules_();
    target_ = windows_.focused();
    mainWindow_ = windows_.mainWindowOf(target_);
    nobodySince_ = {};
    hold_ = Hold::kNone;
}

TypingStop WaylandTypingWatch::look() {
    hold_ = Hold::kNone;
    if (!rule_.targetGuard || !windows_.alive()) return TypingStop::kNone;
    if (target_ == ToplevelWindows::kNone) return TypingStop::kNoTarget;
    const ToplevelWindows::Window focused = windows_.focused();
    const TypingStop left =
        windows_.exists(target_) ? TypingStop::kOtherApplication : TypingStop::kTargetGone;
    if (focused != ToplevelWindows::kNone) {
        nobodySince_ = {};
        return ofTarget(focused) ? TypingStop::kNone : left;
    }
    const Clock::time_point now = Clock::now();
    if (nobodySince_ == Clock::time_point{}) nobodySince_ = now;
    if (now - nobodySince_ >= kFocusGap) return left;
    hold_ = Hold::kFocusMoves;
    return TypingStop::kNone;
}

// A window and its dialogs are one application; windows of the same name may well be two.
bool WaylandTypingWatch::ofTarget(ToplevelWindows::Window window) {
    return window == target_ || windows_.mainWindowOf(window) == mainWindow_;
}

bool WaylandTypingWatch::targetInFront() {
    const ToplevelWindows::Window focused = windows_.focused();
    return focused != ToplevelWindows::kNone && ofTarget(focused);
}

}  // namespace kalvo
