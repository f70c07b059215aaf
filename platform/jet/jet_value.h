// What a field of a Jet file says, as text. A long text's field holds twelve bytes, then
// perhaps the text:
//
//   length (30 bits) and kind (2 bits), pointer (4), ? (4)
//
//   kind 2   the text follows
//   kind 1   the pointer leads to a row of this length, the text
//   kind 0   the pointer leads to the first of a chain of rows:
//            pointer to the next or 0 (4), a piece of the text
#pragma once

#include <optional>
#include <string>

#include "platform/jet/jet_record.h"

namespace kalvo {

// A value as text (UTF-8), whatever its type was; nothing for Null.
using JetValue = std::optional<std::string>;

// Yes/no gives "-1" and "0". JetFault for a column of a type that holds neither numbers
// nor texts.
[[nodiscard]] JetValue jetValue(JetPages& pages, const JetRecord& record, const JetColumn& column);

}  // namespace kalvo
