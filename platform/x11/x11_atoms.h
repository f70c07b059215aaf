// Atoms by their names.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>

#include "platform/x11/x11_connection.h"

namespace kalvo {

// XCB_ATOM_NONE when the server does not answer.
[[nodiscard]] inline xcb_atom_t atomOf(const X11Connection& connection, std::string_view name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.get(), xcb_intern_atom(connection.get(), 0, length, name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace kalvo
