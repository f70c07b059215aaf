// The settings: INI files, registry values, and the texts and lock keys that go
// with them. Nothing is cached: every read goes to the file or the registry again.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/keyboard_input.h"
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

// The n-th (from 1) field of a text in which a separator ends every field; a last
// field without its separator does not count. Each search resumes one character
// after the beginning of the separator before it, so with a longer separator every
// field after the first begins with the separator's remaining characters.
[[nodiscard]] std::string_view GetField(std::string_view text, std::size_t n,
                                        std::string_view separator);

// How often the separator occurs, hits not overlapping.
[[nodiscard]] std::size_t CountSeparators(std::string_view text, std::string_view separator);

// All fields of GetField in order, in one pass over the text: call next() for
// field 1, 2, ... and test found() after each.
class FieldCursor {
public:
    FieldCursor(std::string_view text, std::string_view separator)
        : text_(text), separator_(separator) {}

    // The next field; empty, with found() false, behind the last.
    std::string_view next();
    [[nodiscard]] bool found() const { return found_; }

private:
    std::string_view text_;
    std::string_view separator_;
    std::size_t start_ = 0;
    bool found_ = true;
};

// One press and release of a key with the extended-key flag: a lock flips.
void ToggleLockKey(KeyboardInput& keyboard, std::uint8_t virtualKey);

// Toggled on and not held down.
[[nodiscard]] bool IsCapsLockOn(KeyboardInput& keyboard);
[[nodiscard]] bool IsNumLockOn(KeyboardInput& keyboard);

void ToggleCapsLock(KeyboardInput& keyboard);
void ToggleNumLock(KeyboardInput& keyboard);

// Presses NumLock once, whatever its state.
void InvertNumLock(KeyboardInput& keyboard);
// Presses CapsLock only when it is on.
void CapsLockOff(KeyboardInput& keyboard);

}  // namespace kalvo
