// Paths as users of the other system wrote them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace kalvo {

// A stored path where "/" separates folders: "\\" does so too, and a drive prefix ("C:")
// is dropped.
[[nodiscard]] inline std::string posixPath(std::string_view path) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    if (path.size() >= 2 && path[1] == ':' && isLetter(path[0])) path.remove_prefix(2);
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace kalvo
