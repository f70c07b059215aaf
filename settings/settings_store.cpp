#include "settings/settings_store.h"

namespace kalvo {

std::string ReadIniValue(ProfileFiles& profiles, std::string_view file, std::string_view section,
                         std::string_view key) {
    return profiles.read(file, section, key);
}

int WriteIniValue(ProfileFiles& profiles, std::string_view section, std::string_view key,
                  std::string_view value, std::string_view file) {
    return profiles.write(file, section, key, value) ? 1 : 0;
}

void ClearIniValue(ProfileFiles& profiles, std::string_view file, std::string_view section,
                   std::string_view key) {
    profiles.write(file, section, key, "");
}

std::string GetValueKey(Registry& registry, RegistryRoot root, std::string_view path,
                        std::string_view name) {
    const auto value = registry.query(root, path, name);
    if (!value || value->type != kRegSz) return {};
    return value->data.substr(0, value->data.find('\0'));
}

void SetValueKey(Registry& registry, RegistryRoot root, std::string_view path,
                 std::string_view name, std::string_view value) {
    registry.set(root, path, name, {kRegSz, std::string(value)});
}

std::string readSetting(Registry& registry, std::string_view name) {
    return GetValueKey(registry, RegistryRoot::kCurrentUser, kSettingsKey, name);
}

void writeSetting(Registry& registry, std::string_view name, std::string_view value) {
    SetValueKey(registry, RegistryRoot::kCurrentUser, kSettingsKey, name, value);
}

}  // namespace kalvo
