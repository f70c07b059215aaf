#include "platform/qt/xwayland.h"

#include <QGuiApplication>

namespace kalvo {

bool throughXwayland() {
    return QGuiApplication::platformName() == "xcb" &&
           (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
            qEnvironmentVariable("XDG_SESSION_TYPE") == "wayland");
}

}  // namespace kalvo
