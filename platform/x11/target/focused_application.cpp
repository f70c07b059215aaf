#include "platform/x11/target/focused_application.h"

#include <cstddef>
#include <cstring>

#include "platform/x11/x11_atoms.h"

namespace kalvo {

namespace {

// Of a property that lists protocols or names, all that is ever there.
constexpr std::uint32_t kPropertyWords = 256;

bool holdsAtom(std::string_view list, xcb_atom_t atom) {
    for (std::size_t at = 0; at + sizeof(xcb_atom_t) <= list.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t entry = XCB_ATOM_NONE;
        std::memcpy(&entry, list.data() + at, sizeof entry);
        if (entry == atom) return true;
    }
    return false;
}

}  // namespace

FocusedApplication::FocusedApplication(const X11Connection& connection)
    : connection_(connection),
      protocols_(atomOf(connection, "WM_PROTOCOLS")),
      ping_(atomOf(connection, "_NET_WM_PING")) {}

bool FocusedApplication::look() {
    const XReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
    const xcb_window_t focus = reply ? reply->focus : xcb_window_t{XCB_NONE};
    if (focus == focus_) return false;
    focus_ = focus;
    read();
    return true;
}

// The focus may be on a window inside the one that the application is known by.
void FocusedApplication::read() {
    answering_ = XCB_NONE;
    names_.clear();
    xcb_window_t window = focus_;
    while (window > XCB_INPUT_FOCUS_POINTER_ROOT && window != connection_.root()) {
        if (answering_ == XCB_NONE && holdsAtom(property(window, protocols_, XCB_ATOM_ATOM), ping_))
            answering_ = window;
        if (names_.empty()) readNames(property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
        window = parentOf(window);
    }
}

std::string FocusedApplication::property(xcb_window_t window, xcb_atom_t name,
                                         xcb_atom_t type) const {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, window, name, type, 0, kPropertyWords), nullptr));
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

xcb_window_t FocusedApplication::parentOf(xcb_window_t window) const {
    const XReply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(
        connection_.get(), xcb_query_tree(connection_.get(), window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_NONE};
}

// Instance and class, each ended by a NUL.
void FocusedApplication::readNames(std::string_view windowClass) {
    const std::size_t end = windowClass.find('\0');
    if (end == std::string_view::npos) return;
    const std::string_view rest = windowClass.substr(end + 1);
    names_ = {std::string(rest.substr(0, rest.find('\0'))),
              std::string(windowClass.substr(0, end))};
    // Wine names each window after its program.
    if (names_.front().ends_with(".exe")) names_.emplace_back(kWine);
}

}  // namespace kalvo
