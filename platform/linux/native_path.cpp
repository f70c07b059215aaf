#include "platform/linux/native_path.h"

#include <algorithm>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

bool startsWithDrive(std::string_view path) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    return path.size() >= 2 && path[1] == ':' && isLetter(path[0]);
}

}  // namespace

std::string nativePath(std::string_view path) {
    if (startsWithDrive(path)) path.remove_prefix(2);
    std::string native = toUtf8(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace kalvo
