// desktop_windows FILE: writes the visible windows of this desktop to FILE (UTF-8) five
// times a second, each on a line: ">" where it is in front, class, title.
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <fstream>
#include <string>

#include "platform/windows/wide_text.h"

namespace {

BOOL CALLBACK describe(HWND window, LPARAM lines) {
    if (IsWindowVisible(window) == 0) return TRUE;
    std::array<wchar_t, 200> name{}, title{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
    *reinterpret_cast<std::wstring*>(lines) += (window == GetForegroundWindow() ? L"> " : L"  ") +
                                               std::wstring(name.data()) + L" " + title.data() +
                                               L"\n";
    return TRUE;
}

}  // namespace

int main() {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count != 2) return 2;
    const std::wstring file = words[1];
    const std::wstring temporary = file + L".new";
    for (;; Sleep(200)) {
        std::wstring lines;
        EnumWindows(describe, reinterpret_cast<LPARAM>(&lines));
        std::ofstream(temporary.c_str(), std::ios::binary) << kalvo::utf8FromWide(lines);
        MoveFileExW(temporary.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING);
    }
}
