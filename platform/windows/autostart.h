// Starting with the user's session: a value of the registry's Run key.
#pragma once

#include <optional>
#include <string>

namespace kalvo {

// Writes or removes the user's value for this executable. `appDir` (UTF-8) is the
// application folder to start with, if one was named. RuntimeError 75 when the registry
// refuses.
void writeRunValue(bool on, const std::optional<std::string>& appDir);

}  // namespace kalvo
