#include "platform/x11/held/left_down_keys.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <bitset>
#include <span>
#include <string_view>
#include <vector>

#include "platform/x11/held/real_keyboards.h"

namespace kalvo {

namespace {

constexpr std::string_view kProperty = "_KALVO_HORIZON_TYPES";
constexpr std::uint32_t kMostMarks = 64;

// The windows that the property of a window lists.
std::vector<xcb_window_t> marksOf(const X11Connection& connection, xcb_window_t window,
                                  xcb_atom_t property) {
    xcb_connection_t* const x = connection.get();
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        x, xcb_get_property(x, 0, window, property, XCB_ATOM_WINDOW, 0, kMostMarks), nullptr));
    if (!reply) return {};
    const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    const std::span marks(static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())),
                          bytes / sizeof(xcb_window_t));
    return {marks.begin(), marks.end()};
}

void setMarks(const X11Connection& connection, xcb_window_t window, xcb_atom_t property,
              const std::vector<xcb_window_t>& marks) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_WINDOW,
                        32, static_cast<std::uint32_t>(marks.size()), marks.data());
}

}  // namespace

LeftDownKeys::LeftDownKeys(X11Connection& connection) : connection_(connection) {
    xcb_connection_t* const x = connection_.get();
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, kProperty.size(), kProperty.data()), nullptr));
    if (!reply) return;
    property_ = reply->atom;
    mark_ = xcb_generate_id(x);
    xcb_create_window(x, 0, mark_, connection_.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    // Its number may have been another program's: a mark names itself.
    setMarks(connection_, mark_, property_, {mark_});
    readMarks();
}

// Others that start or end at the same moment wait.
void LeftDownKeys::readMarks() {
    connection_.holdOthers();
    std::vector<xcb_window_t> marks = marksOf(connection_, connection_.root(), property_);
    const auto left = std::erase_if(marks, [&](xcb_window_t mark) {
        return mark == mark_ || marksOf(connection_, mark, property_).empty();
    });
    if (left > 0) letUp();
    marks.push_back(mark_);
    setMarks(connection_, connection_.root(), property_, marks);
    connection_.flush();
}

void LeftDownKeys::letUp() {
    const std::bitset<256> down =
        keysDown(connection_, {static_cast<std::uint8_t>(connection_.xtestKeyboard())});
    for (std::size_t key = 0; key < down.size(); ++key)
        if (down[key])
            xcb_test_fake_input(connection_.get(), XCB_KEY_RELEASE, static_cast<std::uint8_t>(key),
                                XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

LeftDownKeys::~LeftDownKeys() {
    if (property_ == XCB_NONE) return;
    connection_.holdOthers();
    std::vector<xcb_window_t> marks = marksOf(connection_, connection_.root(), property_);
    std::erase(marks, mark_);
    setMarks(connection_, connection_.root(), property_, marks);
    connection_.sync();
}

}  // namespace kalvo
