#include "platform/x11/target/desktop_focus.h"

#include "platform/x11/x11_atoms.h"

namespace kalvo {

DesktopFocus::DesktopFocus(const X11Connection& connection)
    : connection_(connection), announcement_(atomOf(connection, "_NET_SUPPORTING_WM_CHECK")) {}

bool DesktopFocus::holds(xcb_window_t window) const {
    if (window == connection_.root()) return true;
    if (window == asked_) return answer_;
    asked_ = window;
    answer_ = announcesManager(window) || showsNothing(window);
    return answer_;
}

bool DesktopFocus::announcesManager(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        x, xcb_get_property(x, 0, connection_.root(), announcement_, XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    return reply && xcb_get_property_value_length(reply.get()) == sizeof(xcb_window_t) &&
           *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())) == window;
}

// The windows that toolkits keep the focus on are such ones, too, but inside an application's.
bool DesktopFocus::showsNothing(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    if (!attributes || attributes->_class != XCB_WINDOW_CLASS_INPUT_ONLY ||
        attributes->override_redirect == 0)
        return false;
    const XReply<xcb_query_tree_reply_t> place(
        xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
    return place && place->parent == connection_.root();
}

}  // namespace kalvo
