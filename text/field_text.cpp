#include "text/field_text.h"

namespace kalvo {

std::string_view GetField(std::string_view text, std::size_t n, std::string_view separator) {
    if (separator.empty()) return {};
    std::string_view field;
    for (std::size_t start = 0; n > 0; --n) {
        const std::size_t position = text.find(separator, start);
        if (position == std::string_view::npos) return {};
        field = text.substr(start, position - start);
        start = position + 1;
    }
    return field;
}

std::size_t CountSeparators(std::string_view text, std::string_view separator) {
    if (separator.empty()) return 0;
    std::size_t count = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, at + separator.size()))
        ++count;
    return count;
}

}  // namespace kalvo
