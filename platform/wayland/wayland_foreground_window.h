// The window that has the keyboard focus, in a Wayland session.
#pragma once

#include <string>

#include "platform/foreground_window.h"
#include "platform/wayland/toplevel_windows.h"

namespace kalvo {

class WaylandForegroundWindow : public ForegroundWindow {
public:
    // `ours` is the name that our own windows have. Throws RuntimeError 5 when the
    // compositor does not show its windows.
    explicit WaylandForegroundWindow(std::string ours) : ours_(std::move(ours)) {}

    void remember() override {
        const ToplevelWindows::Window window = windows_.focused();
        if (isForeign(window)) remembered_ = window;
    }
    void giveBack() override {
        if (!foreign()) windows_.activate(remembered_);
    }
    [[nodiscard]] bool foreign() override { return isForeign(windows_.focused()); }

private:
    [[nodiscard]] bool isForeign(ToplevelWindows::Window window) {
        return window != ToplevelWindows::kNone && windows_.applicationOf(window) != ours_;
    }

    std::string ours_;
    ToplevelWindows windows_;
    ToplevelWindows::Window remembered_ = ToplevelWindows::kNone;
};

}  // namespace kalvo
