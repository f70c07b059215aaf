#include "platform/x11/target/x11_foreground_window.h"

#include <unistd.h>

#include <string_view>

namespace kalvo {

namespace {

constexpr std::string_view kPidProperty = "_NET_WM_PID";

}  // namespace

X11ForegroundWindow::X11ForegroundWindow() : connection_(nullptr) {
    xcb_connection_t* const x = connection_.get();
    const auto cookie = xcb_intern_atom(x, 0, kPidProperty.size(), kPidProperty.data());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x, cookie, nullptr));
    if (reply) pidProperty_ = reply->atom;
}

void X11ForegroundWindow::remember() {
    const xcb_window_t window = focused();
    if (isForeign(window)) remembered_ = window;
}

void X11ForegroundWindow::giveBack() {
    if (remembered_ == XCB_NONE || isForeign(focused())) return;
    xcb_connection_t* const x = connection_.get();
    // A window that is gone by now is an error without consequences.
    xcb_discard_reply(
        x, xcb_set_input_focus(x, XCB_INPUT_FOCUS_PARENT, remembered_, XCB_CURRENT_TIME).sequence);
    connection_.sync();
}

xcb_window_t X11ForegroundWindow::focused() const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

bool X11ForegroundWindow::isForeign(xcb_window_t window) const {
    if (window == XCB_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT || desktop_.holds(window))
        return false;
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        x, xcb_get_property(x, 0, window, pidProperty_, XCB_ATOM_CARDINAL, 0, 1), nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(std::uint32_t)) return true;
    const auto* const pid = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return *pid != static_cast<std::uint32_t>(getpid());
}

}  // namespace kalvo
