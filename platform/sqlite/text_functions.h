// Comparing texts as the system does: without regard to case, accented letters
// included.
#pragma once

#include <sqlite3.h>

namespace kalvo {

// The collation the text columns are declared with. A file that uses it can only be
// searched through a connection that knows it.
inline constexpr const char* kTextCollation = "ANSI1252_NOCASE";

// Gives the connection the collation and a LIKE that ignores case the same way.
// Result code of the engine.
[[nodiscard]] int registerTextFunctions(sqlite3* connection);

}  // namespace kalvo
