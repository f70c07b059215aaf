// Which application a window of an X session belongs to.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

#include "platform/x11/target/desktop_focus.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// What the windows of one application have in common; 0 is unknown.
struct X11Application {
    std::uint32_t client = 0;   // the connection that made the window
    std::uint32_t process = 0;  // _NET_WM_PID
    std::uint32_t leader = 0;   // WM_CLIENT_LEADER, or the window group

    // Whether both are the same connection, process or client group.
    [[nodiscard]] bool sameAs(const X11Application& other) const;
};

class X11Applications {
public:
    explicit X11Applications(X11Connection& connection);

    // The window that keys go to now; none when that is the desktop's own business.
    [[nodiscard]] xcb_window_t focused() const;
    // The application of a window, which may be one inside its main window.
    [[nodiscard]] X11Application of(xcb_window_t window) const;
    [[nodiscard]] bool exists(xcb_window_t window) const;

private:
    [[nodiscard]] xcb_atom_t atom(const char* name) const;
    [[nodiscard]] std::uint32_t number(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                       std::uint32_t index) const;
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t underPointer() const;

    X11Connection& connection_;
    DesktopFocus desktop_;
    xcb_atom_t processProperty_;
    xcb_atom_t leaderProperty_;
    xcb_atom_t stateProperty_;
};

}  // namespace kalvo
