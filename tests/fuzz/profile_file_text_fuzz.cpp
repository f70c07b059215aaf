// Whatever stands in a private-profile file: what is set is what is found, and other keys
// stay.
#include <algorithm>

#include "tests/fuzz/fuzz_property.h"
#include "text/ansi_text.h"
#include "text/file_text.h"
#include "text/number_text.h"
#include "text/profile_file_text.h"

namespace kalvo {
namespace {

using namespace std::string_view_literals;

std::string_view trimmed(std::string_view text) { return trimBlanks(text, " \t\v\f\x1A"); }

// Without a mark the content itself tells how it is encoded: a write that makes another
// guess of it is none of these files' business.
bool looksLikeUtf8(std::string_view content) {
    return isUtf8(content) && std::any_of(content.begin(), content.end(), [](char c) {
               return static_cast<unsigned char>(c) >= 0x80;
           });
}

// A value as the readers of such files take it.
std::string asRead(std::string_view value) {
    value = trimmed(value);
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    if (quoted) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

}  // namespace

void fuzz(FuzzInput& input) {
    const std::string section = input.text("]\r\n\0"sv);
    const std::string key = input.text("=;[\r\n\0"sv);
    const std::string value = input.text("\r\n\0"sv);
    const std::string otherKey = input.text("\0"sv);
    const std::string content = input.rest() + "\r\n";

    const std::string written = withProfileValue(content, section, key, value);
    if (looksLikeUtf8(written) != looksLikeUtf8(content)) return;
    require(findProfileValue(written, section, key) == asRead(value), "what is set is found");
    require(withProfileValue(written, section, key, value) == written,
            "setting it again changes nothing");
    require(equalIgnoringCase(trimmed(otherKey), trimmed(key)) ||
                findProfileValue(written, section, otherKey) ==
                    findProfileValue(content, section, otherKey),
            "other keys stay");
    const bool isUtf16 = content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF");
    require(isUtf16 || std::count(written.begin(), written.end(), '\n') >=
                           std::count(content.begin(), content.end(), '\n'),
            "no line goes");
}

}  // namespace kalvo
