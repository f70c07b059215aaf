// Fields of a text in which a separator ends every field.
#pragma once

#include <cstddef>
#include <string_view>

namespace kalvo {

// The n-th (from 1) field of a text in which a separator ends every field; a last
// field without its separator does not count. Each search resumes one character
// after the beginning of the separator before it, so with a longer separator every
// field after the first begins with the separator's remaining characters.
[[nodiscard]] std::string_view GetField(std::string_view text, std::size_t n,
                                        std::string_view separator);

// How often the separator occurs, hits not overlapping.
[[nodiscard]] std::size_t CountSeparators(std::string_view text, std::string_view separator);

}  // namespace kalvo
