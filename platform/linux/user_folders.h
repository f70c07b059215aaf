// The user's own folders, by the XDG rules. All paths are native (UTF-8).
#pragma once

#include <string>

namespace kalvo {

// $XDG_CONFIG_HOME/kalvo-horizon, by default in ~/.config.
[[nodiscard]] std::string userConfigFolder();

// $XDG_DATA_HOME/kalvo-horizon, by default in ~/.local/share.
[[nodiscard]] std::string userDataFolder();

// For locks of the running session: in $XDG_RUNTIME_DIR, by default in /tmp, made where it
// is missing and nobody else's.
[[nodiscard]] std::string userRuntimeFolder();

}  // namespace kalvo
