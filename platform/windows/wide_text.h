// Between the core's text, UTF-8 and the UTF-16 of the system's functions.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// Code page 1252 to UTF-16 and back; what has no character there becomes "?". The
// code page is the core's own, whatever the system's ANSI code page is.
[[nodiscard]] std::wstring wideFromAnsi(std::string_view ansi);
[[nodiscard]] std::string ansiFromWide(std::wstring_view wide);

[[nodiscard]] std::wstring wideFromUtf8(std::string_view utf8);
[[nodiscard]] std::string utf8FromWide(std::wstring_view wide);

}  // namespace kalvo
