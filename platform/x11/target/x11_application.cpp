#include "platform/x11/target/x11_application.h"

#include <cstring>

namespace kalvo {

namespace {

// WM_HINTS: its flags, the one that says there is a group, and the group.
constexpr std::uint32_t kHintFlags = 0;
constexpr std::uint32_t kHasGroup = 1U << 6U;
constexpr std::uint32_t kHintGroup = 8;

bool both(std::uint32_t a, std::uint32_t b) { return a != 0 && a == b; }

}  // namespace

bool X11Application::sameAs(const X11Application& other) const {
    return both(client, other.client) || both(process, other.process) || both(leader, other.leader);
}

X11Applications::X11Applications(X11Connection& connection)
    : connection_(connection),
      desktop_(connection),
      processProperty_(atom("_NET_WM_PID")),
      leaderProperty_(atom("WM_CLIENT_LEADER")),
      stateProperty_(atom("WM_STATE")) {}

xcb_atom_t X11Applications::atom(const char* name) const {
    xcb_connection_t* const x = connection_.get();
    const auto size = static_cast<std::uint16_t>(std::strlen(name));
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, size, name), nullptr));
    return reply ? reply->atom : XCB_NONE;
}

xcb_window_t X11Applications::focused() const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    if (!reply) return XCB_NONE;
    if (reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT) return underPointer();
    return desktop_.holds(reply->focus) ? xcb_window_t{XCB_NONE} : reply->focus;
}

xcb_window_t X11Applications::underPointer() const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(x, xcb_query_pointer(x, connection_.root()), nullptr));
    return reply ? reply->child : xcb_window_t{XCB_NONE};
}

// Upwards from a window inside to the main window, which the window manager marks.
X11Application X11Applications::of(xcb_window_t window) const {
    X11Application application;
    if (window == XCB_NONE) return application;
    application.client = window & ~xcb_get_setup(connection_.get())->resource_id_mask;
    for (xcb_window_t at = window; at != XCB_NONE && at != connection_.root(); at = parentOf(at)) {
        if (application.process == 0)
            application.process = number(at, processProperty_, XCB_ATOM_CARDINAL, 0);
        if (application.leader == 0)
            application.leader = number(at, leaderProperty_, XCB_ATOM_WINDOW, 0);
        const std::uint32_t hints = number(at, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, kHintFlags);
        if (application.leader == 0 && (hints & kHasGroup) != 0)
            application.leader = number(at, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, kHintGroup);
        if (number(at, stateProperty_, stateProperty_, 0) != 0) break;
    }
    return application;
}

bool X11Applications::exists(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
    return reply != nullptr;
}

std::uint32_t X11Applications::number(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                      std::uint32_t index) const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        x, xcb_get_property(x, 0, window, property, type, index, 1), nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(std::uint32_t)) return 0;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

xcb_window_t X11Applications::parentOf(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_NONE};
}

}  // namespace kalvo
