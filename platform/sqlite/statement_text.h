// The statements of the system as the engine underneath can read them.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// A statement (code page 1252) as the engine takes it (UTF-8). Outside quotes,
// a number and a keyword right behind it ("3AND") are separated, and "--" and "/*"
// are operators, not comments: a value with an unlucky quote must not hide the rest
// of its statement. RuntimeError 3075 for an open quote, a NUL, or anything but
// blanks behind the first ";".
[[nodiscard]] std::string engineStatement(std::string_view statement);

}  // namespace kalvo
