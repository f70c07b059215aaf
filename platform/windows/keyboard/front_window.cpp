#include "platform/windows/keyboard/front_window.h"

namespace kalvo {

namespace {

// The desktop, the taskbar, its tips and bubbles have no title bar; folders and dialogs of the
// same process do.
bool ofTheShell(HWND window) {
    if (window == GetDesktopWindow() || window == GetShellWindow()) return true;
    const HWND taskbar = FindWindowW(L"Shell_TrayWnd", nullptr);
    return taskbar != nullptr && processOf(window) == processOf(taskbar) &&
           (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) != WS_CAPTION;
}

}  // namespace

DWORD processOf(HWND window) {
    DWORD process = 0;
    if (window != nullptr) GetWindowThreadProcessId(window, &process);
    return process;
}

HWND frontWindow() {
    const HWND window = GetForegroundWindow();
    return window == nullptr || ofTheShell(window) ? nullptr : window;
}

}  // namespace kalvo
