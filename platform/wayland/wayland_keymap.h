// The key map of our own keyboard in a Wayland session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/x11/layout/xkb_handles.h"

namespace kalvo {

// A key and the symbols on its levels: alone, with Shift, with AltGr, with both.
struct MapKey {
    xkb_keycode_t keycode;
    std::vector<xkb_keysym_t> symbols;
};

// A US keyboard whose keys hold the rest of code page 1252 on AltGr, and a few more keys for
// what is left: every character and every named key has its place, whatever the user's own
// layout is, and the place never changes. Keycodes stay within those of X11.
struct WaylandKeymap {
    WaylandKeymap();

    XkbContextHandle context;
    XkbKeymapHandle keymap;
    std::string text;  // what the compositor is given
    std::vector<MapKey> keys;
    // Those that no usual keyboard has, each with two characters.
    std::vector<MapKey> extraKeys;
};

// Keys that typing itself needs.
inline constexpr xkb_keycode_t kShiftKey = 50;
inline constexpr xkb_keycode_t kControlKey = 37;
inline constexpr xkb_keycode_t kAltKey = 64;
inline constexpr xkb_keycode_t kLevel3Key = 108;
inline constexpr xkb_keycode_t kCapsLockKey = 66;

}  // namespace kalvo
