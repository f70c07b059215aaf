// The folder the program keeps its files in, and the one its shipped files come from.
// Results are paths of the core (code page 1252) without a separator at their end.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

// The application folder: `appDir` (native text, as the command line gave it) when
// there is one; else the executable's folder when it holds PortSerie.ini or Scen.mdb;
// else the user's data folder. Always absolute, created with its parents when missing.
// RuntimeError 75 when it cannot be created or is no folder, 76 when code page 1252
// cannot hold its path.
[[nodiscard]] std::string applicationFolder(std::optional<std::string_view> appDir);

// The same rule for given folders (native paths), nothing created.
[[nodiscard]] std::string chooseApplicationFolder(std::optional<std::string_view> appDir,
                                                  const std::string& executableFolder,
                                                  const std::string& userFolder);

// The folder of the shipped key files and samples: share/kalvo-horizon beside the
// executable's folder, or the source tree the program was built from. Empty when
// there is neither.
[[nodiscard]] std::string shippedDataFolder();

}  // namespace kalvo
