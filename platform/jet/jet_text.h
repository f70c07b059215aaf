// Texts of a Jet file. Jet 3 stores code page 1252. Jet 4 stores UTF-16 or, when that is
// shorter, a compressed form of it:
//
//   FF FE, then stretches that take turns, a 00 byte between them: first one byte for
//   each character (its high byte is 0), then two bytes for each, and so on
#pragma once

#include <string>

#include "platform/jet/jet_bytes.h"
#include "platform/jet/jet_signature.h"

namespace kalvo {

// The text in UTF-8, up to its first NUL if it holds one.
[[nodiscard]] std::string jetText(JetBytes stored, JetVersion version);

}  // namespace kalvo
