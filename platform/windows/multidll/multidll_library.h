// A communication library for portables, loaded into this process.
#pragma once

#include <memory>
#include <string>

#include "platform/multidll.h"

namespace kalvo {

// The library in that file, a whole path. RuntimeError 53 when it cannot be loaded, 453 when
// it lacks a function.
[[nodiscard]] std::unique_ptr<Multidll> loadMultidllLibrary(const std::wstring& path);

}  // namespace kalvo
