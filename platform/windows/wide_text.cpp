#include "platform/windows/wide_text.h"

#include <windows.h>

#include "text/ansi_text.h"

namespace kalvo {

std::wstring wideFromAnsi(std::string_view ansi) {
    std::wstring wide;
    wide.reserve(ansi.size());
    for (const char character : ansi)
        wide.push_back(static_cast<wchar_t>(ansiToUnicode(character)));
    return wide;
}

std::string ansiFromWide(std::wstring_view wide) {
    // Over UTF-8, so that a character of two units becomes one "?".
    return fromUtf8(utf8FromWide(wide));
}

std::wstring wideFromUtf8(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size)));
    return wide;
}

std::string utf8FromWide(std::wstring_view wide) {
    const int size = static_cast<int>(wide.size());
    std::string utf8(3 * wide.size(), '\0');  // three bytes a unit at most
    utf8.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(),
                            static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

}  // namespace kalvo
