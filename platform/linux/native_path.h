// The one rule by which paths of the core become paths of this system.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// The POSIX path (UTF-8) of a path stored in code page 1252: "\" separates folders
// as "/" does, a drive prefix ("C:") is dropped, nothing else changes. "C:\TEMP"
// is "/TEMP", "C:lot.txt" is "lot.txt", "\\serveur\stock" is "//serveur/stock".
[[nodiscard]] std::string nativePath(std::string_view path);

}  // namespace kalvo
