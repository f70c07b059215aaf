// The settings: INI files and registry values. Nothing is cached: every read goes to
// the file or the registry again.
#pragma once

#include <string>
#include <string_view>

#include "platform/profile_files.h"
#include "platform/registry.h"

namespace kalvo {

// The registry key of the system's own settings and its values.
inline constexpr std::string_view kSettingsKey = "Software\\Ketvan\\Lumo";
inline constexpr std::string_view kRacScenChx = "RacScenChx";
inline constexpr std::string_view kRacInvent = "RacInvent";
inline constexpr std::string_view kRacCde = "RacCde";
inline constexpr std::string_view kSepDec = "SepDec";

// The title of every message box that has no other.
inline constexpr std::string_view kApplicationTitle = "KALVO Horizon";

// The value of a key, at most 2054 characters of it; empty when anything of it is
// missing. The file comes first here and last in the writer: callers rely on both.
[[nodiscard]] std::string ReadIniValue(ProfileFiles& profiles, std::string_view file,
                                       std::string_view section, std::string_view key);

// Non-zero on success; nobody is told of a failure.
int WriteIniValue(ProfileFiles& profiles, std::string_view section, std::string_view key,
                  std::string_view value, std::string_view file);

// Leaves the key in the file with nothing behind its equals sign.
void ClearIniValue(ProfileFiles& profiles, std::string_view file, std::string_view section,
                   std::string_view key);

// A string value; empty when key or value are missing or the value is of another
// type. Cut before the first NUL.
[[nodiscard]] std::string GetValueKey(Registry& registry, RegistryRoot root, std::string_view path,
                                      std::string_view name);

// Stores the characters of the text without a terminating NUL, as REG_SZ.
void SetValueKey(Registry& registry, RegistryRoot root, std::string_view path,
                 std::string_view name, std::string_view value);

// One of the system's own settings (under kSettingsKey of the current user).
[[nodiscard]] std::string readSetting(Registry& registry, std::string_view name);
void writeSetting(Registry& registry, std::string_view name, std::string_view value);

}  // namespace kalvo
