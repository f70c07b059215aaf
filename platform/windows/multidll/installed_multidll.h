// The communication library for portables, where one is installed.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/multidll.h"

namespace kalvo {

// The library named (UTF-8, a whole path), else Multidll.dll beside the program; null when
// there is neither. One for 32 bits is loaded by kalvo-multidll32.exe beside the program.
// RuntimeError 53 when it cannot be loaded, 453 when it lacks a function.
[[nodiscard]] std::unique_ptr<Multidll> findMultidllLibrary(const std::string& named = {});

// The library in that file, loaded and served by a process of its own, which ends with it;
// the same errors, and 57 from its functions once that process has gone.
[[nodiscard]] std::unique_ptr<Multidll> serveMultidllLibrary(const std::filesystem::path& server,
                                                             const std::filesystem::path& library);

}  // namespace kalvo
