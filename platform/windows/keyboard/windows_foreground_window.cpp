#include "platform/windows/keyboard/windows_foreground_window.h"

#include <windows.h>

#include "platform/windows/keyboard/front_window.h"

namespace kalvo {

namespace {

bool isForeign(HWND window) {
    DWORD process = 0;
    if (window == nullptr || GetWindowThreadProcessId(window, &process) == 0) return false;
    return process != GetCurrentProcessId();
}

}  // namespace

void WindowsForegroundWindow::remember() {
    const HWND window = frontWindow();
    if (isForeign(window)) remembered_ = window;
}

bool WindowsForegroundWindow::foreign() { return isForeign(frontWindow()); }

void WindowsForegroundWindow::giveBack() {
    const auto window = static_cast<HWND>(remembered_);
    if (isForeign(frontWindow()) || !IsWindow(window)) return;
    SetForegroundWindow(window);
}

}  // namespace kalvo
