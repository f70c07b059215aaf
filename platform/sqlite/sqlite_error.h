// What a failure of the engine is called in the terms of the system.
#pragma once

#include <sqlite3.h>

#include <string_view>

#include "text/runtime_error.h"

namespace kalvo {

// A failure with its number and a French text built from `text` and, where there
// is one, the name or statement concerned (code page 1252).
[[nodiscard]] RuntimeError syntaxError(std::string_view statement);
[[nodiscard]] RuntimeError formatError(std::string_view file);
[[nodiscard]] RuntimeError fileMissingError(std::string_view file);
[[nodiscard]] RuntimeError diskError(std::string_view file);

// The failure a call on `connection` just reported; `statement` is what was being
// run (code page 1252).
[[nodiscard]] RuntimeError engineError(sqlite3* connection, std::string_view statement);

}  // namespace kalvo
