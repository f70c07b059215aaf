// The characters on the keys of one group of an XKB keymap.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <vector>

namespace kalvo {

// The X keycode of a key is its scan code plus this.
inline constexpr xkb_keycode_t kScanToKeycode = 8;

// One character of the main block. `shiftState` holds the kNeeds... bits; AltGr
// (the third level) is kNeedsControl with kNeedsAlt, as Windows says it.
struct LayoutCharacter {
    char character;
    std::uint8_t scanCode;
    std::uint16_t shiftState;
    bool dead;
};

// The real modifier a key of the keymap holds down; 0 when there is none. For the
// keys that lock, the modifier that stays after the key has been let go.
struct ModifierOfKey {
    xkb_keycode_t keycode = XKB_KEYCODE_INVALID;
    xkb_mod_mask_t held = 0;
    xkb_mod_mask_t locked = 0;
};

// The first key of the keymap whose unshifted symbol in `group` is `symbol`, with
// what it does; keycode XKB_KEYCODE_INVALID when no key has it.
[[nodiscard]] ModifierOfKey findModifierKey(xkb_keymap* keymap, xkb_layout_index_t group,
                                            xkb_keysym_t symbol);

// All code page 1252 characters that keys of the main block type in `group` with
// Shift and AltGr only, the best way first: without a modifier, with Shift, on the
// key beside the left Shift key, with AltGr, with both; then by scan code. The
// rank of that key keeps < and > of the US layout where all US keyboards have them.
[[nodiscard]] std::vector<LayoutCharacter> layoutCharacters(xkb_keymap* keymap,
                                                            xkb_layout_index_t group);

// The unshifted symbol of a key.
[[nodiscard]] xkb_keysym_t unshiftedSymbol(xkb_keymap* keymap, xkb_layout_index_t group,
                                           std::uint8_t scanCode);

}  // namespace kalvo
