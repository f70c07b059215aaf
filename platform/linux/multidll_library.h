// The communication library for portables, where one is installed.
#pragma once

#include <memory>
#include <string>

#include "platform/multidll.h"

namespace kalvo {

// The library named (UTF-8), else libMultidll.so beside the program; null when there is
// neither. RuntimeError 53 when it cannot be loaded, 453 when it lacks a function.
[[nodiscard]] std::unique_ptr<Multidll> findMultidllLibrary(const std::string& named = {});

// The library in that file (UTF-8); the same errors.
[[nodiscard]] std::unique_ptr<Multidll> loadMultidllLibrary(const std::string& path);

}  // namespace kalvo
