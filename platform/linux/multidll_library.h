// The communication library for portables, where one is installed.
#pragma once

#include <memory>
#include <string>

#include "platform/multidll.h"

namespace kalvo {

// libMultidll.so beside the program, else where the system looks for libraries; null when there
// is none. RuntimeError 53 when it cannot be loaded, 453 when it lacks a function.
[[nodiscard]] std::unique_ptr<Multidll> findMultidllLibrary();

// The library in that file (UTF-8); the same errors.
[[nodiscard]] std::unique_ptr<Multidll> loadMultidllLibrary(const std::string& path);

}  // namespace kalvo
