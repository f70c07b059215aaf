#include "platform/sqlite/database_path.h"

#include <algorithm>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

std::filesystem::path fromUtf8Name(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

}  // namespace

std::filesystem::path databaseFile(std::string_view path) {
    std::string name = toUtf8(path);
    if constexpr (std::filesystem::path::preferred_separator == '/') {
        std::replace(name.begin(), name.end(), '\\', '/');
        const bool hasDrive =
            name.size() >= 2 && name[1] == ':' &&
            ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= 'a' && name[0] <= 'z'));
        if (hasDrive) name.erase(0, 2);
    }
    return fromUtf8Name(name);
}

std::string engineName(const std::filesystem::path& file) {
    const std::u8string utf8 = file.u8string();
    return {utf8.begin(), utf8.end()};
}

std::string shownName(const std::filesystem::path& file) { return fromUtf8(engineName(file)); }

}  // namespace kalvo
