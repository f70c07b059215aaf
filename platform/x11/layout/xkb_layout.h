// The keyboard layout functions answered from an XKB keymap; needs no display.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/keyboard_input.h"

namespace kalvo {

// One group of a keymap, answering as Windows answers for its layout of that
// name: scan code = X keycode - 8; letters have the virtual key of their letter,
// the digit row its digits by position, the rest the OEM keys of the layout's
// family. AltGr is Control with Alt. The keypad types no character.
class XkbLayout : public KeyboardLayout {
public:
    // What VkKeyScanExA answers for a character that is a dead key only: the dead
    // key, as Windows does, or -1.
    enum class DeadKeys : std::uint8_t { answered, skipped };

    // Reads the group's characters; the keymap is not kept.
    XkbLayout(xkb_keymap* keymap, xkb_layout_index_t group, DeadKeys deadKeys);

    [[nodiscard]] std::int16_t VkKeyScanExA(char character) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;

private:
    void placeVirtualKeys(xkb_keymap* keymap, xkb_layout_index_t group);
    void place(std::uint8_t scanCode, std::uint8_t virtualKey);
    void readCharacters(xkb_keymap* keymap, xkb_layout_index_t group, DeadKeys deadKeys);
    void addControlCharacters(bool us);

    std::array<std::uint8_t, 256> virtualKeys_{};  // by scan code
    std::array<std::uint8_t, 256> scanCodes_{};    // by virtual key
    std::array<std::int16_t, 256> characters_{};   // VkKeyScanExA's answers
};

// The layout of a name such as "us", "fr", "fr(bepo)" or "de:nodeadkeys", dead
// keys answered. Throws RuntimeError 5 when the system knows no such layout.
[[nodiscard]] std::unique_ptr<KeyboardLayout> makeXkbLayout(std::string_view name);

}  // namespace kalvo
