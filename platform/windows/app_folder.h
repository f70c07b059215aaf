// The folder the program keeps its files in, and the one its shipped files come from.
// Results are paths of the core (code page 1252) without a separator at their end.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

// The application folder: `appDir` (UTF-8) when there is one; else the executable's
// folder when it holds PortSerie.ini or Scen.mdb; else "Kalvo Horizon" among the
// user's local application data. Always absolute, created with its parents when
// missing. RuntimeError 75 when it cannot be created or is no folder, 76 when code
// page 1252 cannot hold its path.
[[nodiscard]] std::string applicationFolder(std::optional<std::string_view> appDir);

// The same rule for given folders, nothing created.
[[nodiscard]] std::filesystem::path chooseApplicationFolder(
    std::optional<std::string_view> appDir, const std::filesystem::path& executableFolder,
    const std::filesystem::path& userFolder);

// The folder of the shipped key files: "data" beside the executable. Empty when there
// is none.
[[nodiscard]] std::string shippedDataFolder();

}  // namespace kalvo
