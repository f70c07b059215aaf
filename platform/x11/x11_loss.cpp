#include "platform/x11/x11_loss.h"

#include <X11/Xlib.h>
#include <xcb/xcb.h>

#include <cstdlib>

namespace kalvo {

namespace {

void (*lossHandler)() = nullptr;

int onIoError(Display*) {
    lossHandler();
    return 0;
}

}  // namespace

bool x11Named() {
    const char* const name = std::getenv("DISPLAY");
    return name != nullptr && *name != '\0';
}

bool x11Answers() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

void onX11Loss(void (*handler)()) {
    lossHandler = handler;
    XSetIOErrorHandler(onIoError);
}

}  // namespace kalvo
