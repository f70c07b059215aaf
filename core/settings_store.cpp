#include "core/settings_store.h"

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

std::string_view FieldCursor::next() {
    const std::size_t position =
        separator_.empty() ? std::string_view::npos : text_.find(separator_, start_);
    found_ = position != std::string_view::npos;
    if (!found_) {
        start_ = text_.size();
        return {};
    }
    const std::string_view field = text_.substr(start_, position - start_);
    start_ = position + 1;
    return field;
}

std::string_view GetField(std::string_view text, std::size_t n, std::string_view separator) {
    FieldCursor cursor(text, separator);
    std::string_view field;
    for (std::size_t i = 0; i < n && cursor.found(); ++i) field = cursor.next();
    return field;
}

std::size_t CountSeparators(std::string_view text, std::string_view separator) {
    if (separator.empty()) return 0;
    std::size_t count = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, at + separator.size()))
        ++count;
    return count;
}

void ToggleLockKey(KeyboardInput& keyboard, std::uint8_t virtualKey) {
    const auto scanCode = [&] {
        return static_cast<std::uint8_t>(keyboard.MapVirtualKeyA(virtualKey));
    };
    keyboard.keybd_event(virtualKey, scanCode(), kKeyEventExtendedKey);
    keyboard.keybd_event(virtualKey, scanCode(), kKeyEventExtendedKey | kKeyEventKeyUp);
}

bool IsCapsLockOn(KeyboardInput& keyboard) { return keyboard.GetKeyState(kVkCapital) == 1; }

bool IsNumLockOn(KeyboardInput& keyboard) { return keyboard.GetKeyState(kVkNumLock) == 1; }

void ToggleCapsLock(KeyboardInput& keyboard) { ToggleLockKey(keyboard, kVkCapital); }

void ToggleNumLock(KeyboardInput& keyboard) { ToggleLockKey(keyboard, kVkNumLock); }

void InvertNumLock(KeyboardInput& keyboard) { ToggleNumLock(keyboard); }

void CapsLockOff(KeyboardInput& keyboard) {
    if (IsCapsLockOn(keyboard)) ToggleCapsLock(keyboard);
}

}  // namespace kalvo
