#include "platform/windows/keyboard/windows_foreground_window.h"

#include <windows.h>

namespace kalvo {

namespace {

bool isForeign(HWND window) {
    DWORD process = 0;
    if (window == nullptr || GetWindowThreadProcessId(window, &process) == 0) return false;
    return process != GetCurrentProcessId();
}

}  // namespace

void WindowsForegroundWindow::remember() {
    const HWND window = GetForegroundWindow();
    if (isForeign(window)) remembered_ = window;
}

bool WindowsForegroundWindow::foreign() { return isForeign(GetForegroundWindow()); }

void WindowsForegroundWindow::giveBack() {
    const auto window = static_cast<HWND>(remembered_);
    if (isForeign(GetForegroundWindow()) || !IsWindow(window)) return;
    SetForegroundWindow(window);
}

}  // namespace kalvo
