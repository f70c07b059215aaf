// Starting with the user's session: an entry in the autostart folder (XDG).
#pragma once

#include <optional>
#include <string>

namespace kalvo {

// Writes or removes the user's entry for this executable. `appDir` (native) is the
// application folder to start with, if one was named. RuntimeError 75 when the entry
// cannot be written or removed.
void writeAutostartEntry(bool on, const std::optional<std::string>& appDir);

}  // namespace kalvo
