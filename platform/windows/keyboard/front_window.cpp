#include "platform/windows/keyboard/front_window.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kalvo {

namespace {

// Classes of the shell's own windows.
constexpr std::array<std::wstring_view, 5> kShell = {L"Progman", L"WorkerW", L"Shell_TrayWnd",
                                                     L"Shell_SecondaryTrayWnd",
                                                     L"NotifyIconOverflowWindow"};

bool ofTheShell(HWND window) {
    if (window == GetDesktopWindow() || window == GetShellWindow()) return true;
    std::array<wchar_t, 64> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    const std::wstring_view found(name.data(), static_cast<std::size_t>(length));
    return std::find(kShell.begin(), kShell.end(), found) != kShell.end();
}

}  // namespace

HWND frontWindow() {
    const HWND window = GetForegroundWindow();
    return window == nullptr || ofTheShell(window) ? nullptr : window;
}

}  // namespace kalvo
