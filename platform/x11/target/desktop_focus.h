// Where the focus is while no application has it.
#pragma once

#include <xcb/xcb.h>

#include "platform/x11/x11_connection.h"

namespace kalvo {

class DesktopFocus {
public:
    explicit DesktopFocus(const X11Connection& connection);

    // Whether a window is one that a window manager gives the focus to when nobody else is
    // there: the root, the window it announces itself by, or one that can show nothing. Cheap
    // when asked of the same window again.
    [[nodiscard]] bool holds(xcb_window_t window) const;

private:
    [[nodiscard]] bool announcesManager(xcb_window_t window) const;
    [[nodiscard]] bool showsNothing(xcb_window_t window) const;

    const X11Connection& connection_;
    xcb_atom_t announcement_;
    mutable xcb_window_t asked_ = XCB_NONE;
    mutable bool answer_ = false;
};

}  // namespace kalvo
