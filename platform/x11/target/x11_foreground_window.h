// The window that has the keyboard focus, on X11.
#pragma once

#include <cstdint>

#include "platform/foreground_window.h"
#include "platform/x11/target/desktop_focus.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// Tells our own windows by their _NET_WM_PID.
class X11ForegroundWindow : public ForegroundWindow {
public:
    // Throws RuntimeError 5 when there is no display.
    X11ForegroundWindow();

    void remember() override;
    void giveBack() override;
    [[nodiscard]] bool foreign() override { return isForeign(focused()); }

private:
    [[nodiscard]] xcb_window_t focused() const;
    [[nodiscard]] bool isForeign(xcb_window_t window) const;

    X11Connection connection_;
    DesktopFocus desktop_{connection_};
    xcb_atom_t pidProperty_ = XCB_NONE;
    xcb_window_t remembered_ = XCB_NONE;
};

}  // namespace kalvo
