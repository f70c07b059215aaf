// Which program a window of an X session belongs to.
#pragma once

#include <xcb/xcb.h>

#include <string>

#include "platform/x11/x11_connection.h"

namespace kalvo {

// The path of the program file whose process made a window, as the X server knows that
// process (X-Resource extension); empty when it does not, or runs on another machine.
std::string programOf(const X11Connection& connection, xcb_window_t window);

}  // namespace kalvo
