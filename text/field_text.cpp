#include "text/field_text.h"

namespace kalvo {

std::string_view FieldCursor::next() {
    const std::size_t position =
        separator_.empty() ? std::string_view::npos : text_.find(separator_, start_);
    found_ = position != std::string_view::npos;
    if (!found_) {
        start_ = text_.size();
        return {};
    }
    const std::string_view field = text_.substr(start_, position - start_);
    start_ = position + 1;
    return field;
}

std::string_view GetField(std::string_view text, std::size_t n, std::string_view separator) {
    FieldCursor cursor(text, separator);
    std::string_view field;
    for (std::size_t i = 0; i < n && cursor.found(); ++i) field = cursor.next();
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
