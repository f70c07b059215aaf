// The errors of the system's file functions as the program's run-time errors.
#pragma once

#include <windows.h>

#include <string_view>

#include "text/runtime_error.h"

namespace kalvo {

// The RuntimeError of a GetLastError value: its number as FileSystem states it, its
// text in French with the path (code page 1252) the user knows the file by.
[[nodiscard]] RuntimeError fileError(DWORD systemError, std::string_view path);

}  // namespace kalvo
