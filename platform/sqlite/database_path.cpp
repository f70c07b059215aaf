#include "platform/sqlite/database_path.h"

#include "text/ansi_text.h"
#include "text/path_text.h"

namespace kalvo {

namespace {

std::filesystem::path fromUtf8Name(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

}  // namespace

std::filesystem::path databaseFile(std::string_view path) {
    constexpr bool kSlashes = std::filesystem::path::preferred_separator == '/';
    return fromUtf8Name(toUtf8(kSlashes ? posixPath(path) : std::string(path)));
}

std::string engineName(const std::filesystem::path& file) {
    const std::u8string utf8 = file.u8string();
    return {utf8.begin(), utf8.end()};
}

std::string shownName(const std::filesystem::path& file) { return fromUtf8(engineName(file)); }

}  // namespace kalvo
