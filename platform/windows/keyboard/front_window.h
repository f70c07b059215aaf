// The window of the application in front.
#pragma once

#include <windows.h>

namespace kalvo {

// What GetForegroundWindow says, but null for the desktop, the taskbar and its bubbles: one of
// them is in front when an icon of the notification area has been clicked, or nothing is open, and
// letters that are typed there choose and start things.
[[nodiscard]] HWND frontWindow();
// The number of the process a window belongs to; 0 for none.
[[nodiscard]] DWORD processOf(HWND window);

}  // namespace kalvo
