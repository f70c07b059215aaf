// The X keys of virtual keys that are no characters.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>

namespace kalvo {

// The symbol of a named, modifier, keypad or function key; XKB_KEY_NoSymbol for
// every other virtual key.
[[nodiscard]] xkb_keysym_t symbolOfNamedKey(std::uint8_t virtualKey);

// Shift, Control and Alt, either side: a second press of them is no repetition.
[[nodiscard]] bool isModifierKey(std::uint8_t virtualKey);

}  // namespace kalvo
