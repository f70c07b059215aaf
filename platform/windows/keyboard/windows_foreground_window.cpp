#include "platform/windows/keyboard/windows_foreground_window.h"

#include <windows.h>

#include "platform/windows/keyboard/front_window.h"

namespace kalvo {

namespace {

bool isForeign(HWND window) {
    const DWORD process = processOf(window);
    return process != 0 && process != GetCurrentProcessId();
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
