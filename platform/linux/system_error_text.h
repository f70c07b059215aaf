// The errors of the system's file calls as the program's run-time errors.
#pragma once

#include <string_view>

#include "text/runtime_error.h"

namespace kalvo {

// The RuntimeError of an errno value: its number as FileSystem states it, its text
// in French with the path (code page 1252) the user knows the file by. `missing` is
// the number for "no such file": kFileNotFound or kPathNotFound.
[[nodiscard]] RuntimeError fileError(int systemError, std::string_view path,
                                     int missing = error_number::kFileNotFound);

}  // namespace kalvo
