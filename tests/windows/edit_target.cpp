// edit_target FILE: a window with an edit control that has the focus. What it holds
// is written to FILE (UTF-8) whenever it changes, and once when it is ready. Alt with
// keypad digits composes a character, as on Windows, of the ANSI code page behind a leading
// zero; Wine leaves that out.
#include <windows.h>

#include <shellapi.h>

#include <fstream>
#include <string>
#include <utility>

#include "platform/windows/wide_text.h"

namespace {

HWND edit = nullptr;
std::wstring file;
bool changed = false;  // and not written yet

std::wstring content() {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(edit)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
    return text;
}

// Whole or not at all, for whoever is waiting for a certain content.
void save() {
    const std::wstring temporary = file + L".new";
    std::ofstream(temporary.c_str(), std::ios::binary) << kalvo::utf8FromWide(content());
    MoveFileExW(temporary.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING);
}

WNDPROC ordinaryEdit = nullptr;
std::string digits;

LRESULT CALLBACK handleEdit(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_SYSKEYDOWN && w >= VK_NUMPAD0 && w <= VK_NUMPAD9) {
        digits += static_cast<char>('0' + (w - VK_NUMPAD0));
        return 0;
    }
    if ((message == WM_KEYUP || message == WM_SYSKEYUP) && w == VK_MENU && !digits.empty()) {
        const char code = static_cast<char>(std::stoi(digits));
        const UINT page = digits.front() == '0' ? CP_ACP : CP_OEMCP;
        digits.clear();
        wchar_t character = 0;
        MultiByteToWideChar(page, MB_USEGLYPHCHARS, &code, 1, &character, 1);
        return SendMessageW(window, WM_CHAR, character, 1);
    }
    return CallWindowProcW(ordinaryEdit, window, message, w, l);
}

LRESULT CALLBACK handle(HWND window, UINT message, WPARAM w, LPARAM l) {
    switch (message) {
        case WM_SETFOCUS: SetFocus(edit); return 0;
        case WM_COMMAND:
            // A timer that is set again begins anew: while keys come, nothing would be written.
            if (HIWORD(w) == EN_CHANGE && !std::exchange(changed, true))
                SetTimer(window, 1, 50, nullptr);
            return 0;
        case WM_TIMER:
            KillTimer(window, 1);
            changed = false;
            save();
            return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, message, w, l);
    }
}

}  // namespace

int main() {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count != 2) return 2;
    file = words[1];

    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = handle;
    windowClass.lpszClassName = L"KalvoEditTarget";
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowW(windowClass.lpszClassName, L"Saisie", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20,
                      20, 600, 500, nullptr, nullptr, nullptr, nullptr);
    edit = CreateWindowW(
        L"EDIT", L"",
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN, 0, 0,
        590, 470, window, nullptr, nullptr, nullptr);
    SendMessageW(edit, EM_SETLIMITTEXT, 0, 0);
    ordinaryEdit = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handleEdit)));
    SetForegroundWindow(window);
    SetFocus(edit);
    save();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
