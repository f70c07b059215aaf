// What stands behind the "=" of a line of a .reg file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"
#include "text/file_text.h"

namespace kalvo {

// `data` is the text behind the equals sign, blanks around it removed, possibly over
// several lines. `wide` says that texts written as bytes are UTF-16 (version 5).
// Nothing when the text makes no value.
[[nodiscard]] std::optional<RegistryValue> parseRegData(const FileText& file, std::string_view data,
                                                        bool wide);

// The reverse, in the encoding of `file`. A text that holds control characters is
// written as bytes.
[[nodiscard]] std::string formatRegData(const FileText& file, const RegistryValue& value,
                                        bool wide);

// A text between quotes with `\` in front of `\` and `"`, and back. Other backslashes
// stay, as people write paths by hand.
[[nodiscard]] std::string quotedRegText(std::string_view text);
[[nodiscard]] std::string unescapedRegText(std::string_view text);

// The position of the quote that ends a quoted text of which `at` is the inside.
[[nodiscard]] std::size_t closingRegQuote(std::string_view text, std::size_t at);

}  // namespace kalvo
