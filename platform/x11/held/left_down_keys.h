// Keys that a run before left down: a program that is killed lets go of nothing.
#pragma once

#include <xcb/xcb.h>

#include "platform/x11/x11_connection.h"

namespace kalvo {

// A mark on the root window for as long as this connection types. A mark whose owner is
// gone means that it was killed: then all keys of the XTEST keyboard come up. Without such
// a mark they belong to somebody else, and stay.
class LeftDownKeys {
public:
    explicit LeftDownKeys(X11Connection& connection);
    ~LeftDownKeys();
    LeftDownKeys(const LeftDownKeys&) = delete;
    LeftDownKeys& operator=(const LeftDownKeys&) = delete;

private:
    void readMarks();
    void letUp();

    X11Connection& connection_;
    xcb_atom_t property_ = XCB_NONE;
    xcb_window_t mark_ = XCB_NONE;
};

}  // namespace kalvo
