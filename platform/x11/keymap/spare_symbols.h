// The symbols on the spare keycodes, as the X server has them.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/keymap/xcb_xkb.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// A spare keycode with a symbol on each of its levels: plain, Shift, AltGr, both.
struct SpareKey {
    static constexpr std::size_t kLevels = 4;

    xkb_keycode_t keycode = XKB_KEYCODE_INVALID;
    std::array<xkb_keysym_t, kLevels> symbols{};  // XKB_KEY_NoSymbol behind the last one

    [[nodiscard]] bool empty() const { return symbols[0] == XKB_KEY_NoSymbol; }
};

// A property of the root window says which symbols this program has put on which
// keycodes, so that the next run, or another one, finds them.
class SpareSymbols {
public:
    SpareSymbols(X11Connection& connection, X11Keymap& keymap);

    // To be called after a new map was fetched: looks for the key type to use.
    void keymapChanged();
    // How many levels a key can have: 4, or 2 in a map without AltGr.
    [[nodiscard]] std::size_t levels() const { return levels_; }

    // What the property says.
    [[nodiscard]] std::vector<SpareKey> recorded() const;
    // Whether the map has exactly these symbols: it may have come from another program
    // since they were put there.
    [[nodiscard]] bool inForce(const SpareKey& key) const;

    // Puts symbols on keys, in one change of the map, because every change makes all
    // applications fetch the map again. `all` are the keys for the property.
    void write(std::span<const SpareKey> changed, std::span<const SpareKey> all);

private:
    void useFourLevelType(const xcb_xkb_get_map_reply_t& types);
    void appendKey(std::vector<std::uint32_t>& keys, const SpareKey& key) const;
    void record(std::span<const SpareKey> all) const;

    X11Connection& connection_;
    X11Keymap& keymap_;
    xcb_atom_t property_;
    std::uint8_t keyType_ = 1;  // index of the key type in the server's map
    std::size_t levels_ = 2;    // its levels
};

}  // namespace kalvo
