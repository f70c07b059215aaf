// The failures of reading a Jet database, with their French texts.
#pragma once

#include <string_view>

#include "text/runtime_error.h"

namespace kalvo {

// 3343: the file is damaged or not of a kind that can be read; `file` in code page
// 1252, `detail` says what was found, if anything.
[[nodiscard]] RuntimeError jetDamaged(std::string_view file, std::string_view detail = {});

// 3343: a file that is whole, but not to be read: its pages are enciphered, it asks for a
// password, or it comes from a later version of the engine.
[[nodiscard]] RuntimeError jetEnciphered(std::string_view file);
[[nodiscard]] RuntimeError jetPassword(std::string_view file);
[[nodiscard]] RuntimeError jetTooNew(std::string_view file);

// 3078 and 3265: the file lacks what the system needs.
[[nodiscard]] RuntimeError jetTableMissing(std::string_view table);
[[nodiscard]] RuntimeError jetColumnMissing(std::string_view table, std::string_view column);

}  // namespace kalvo
