// What characters and keys are in the layout of an X session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/shared/passed_text.h"
#include "platform/x11/keymap/spare_keycodes.h"
#include "platform/x11/keymap/x11_keymap.h"

namespace kalvo {

// Virtual keys and scan codes of the active XKB map. Characters and named keys that the
// map lacks are those of spare keycodes.
class X11Layout : public KeyboardLayout {
public:
    X11Layout(X11Keymap& keymap, SpareKeycodes& spares) : keymap_(keymap), spares_(spares) {}

    // Gives keys to the characters of a script that have none, up to a code, the most
    // frequent first.
    void prepareFor(std::string_view script, unsigned char lastCode);

    // What comes out as text instead of keys.
    [[nodiscard]] PassedText& text() { return text_; }

    // Takes in a map that has come into force since the last call.
    void follow();

    std::int16_t VkKeyScanExA(char character) override;
    std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;

    // The keycode of a record's key; 0 for none.
    [[nodiscard]] xkb_keycode_t keycodeOf(const KeyRecord& record);
    // The keycode of a virtual key with a meaning of its own (arrows, locks, ...), where
    // the map has it; 0 otherwise.
    [[nodiscard]] xkb_keycode_t namedKeycode(std::uint8_t virtualKey);
    // The key and modifiers that type a character as text.
    [[nodiscard]] std::optional<KeyStroke> strokeOf(char character);

    // Characters that could not be typed are kept, each once, until they are taken.
    void noteUntyped(char character);
    [[nodiscard]] std::string takeUntyped() { return std::exchange(untyped_, {}); }

private:
    [[nodiscard]] xkb_keysym_t missingSymbol(char character);

    X11Keymap& keymap_;
    SpareKeycodes& spares_;
    std::string untyped_;
    PassedText text_;
    std::array<xkb_keycode_t, 256> namedKeycodes_{};  // 0: not looked up yet
};

}  // namespace kalvo
