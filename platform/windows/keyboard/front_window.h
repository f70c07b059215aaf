// The window of the application in front.
#pragma once

#include <windows.h>

namespace kalvo {

// What GetForegroundWindow says, but null for the desktop and the taskbar: they are in front
// when an icon of the notification area has been clicked, or nothing is open, and letters
// that are typed there choose and start things.
[[nodiscard]] HWND frontWindow();

}  // namespace kalvo
