// Characters that no key of the layout types get a key of their own for a while.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keymap.h"

namespace kalvo {

// A key and the kNeeds... bits that type a symbol with it (AltGr as in
// LayoutCharacter).
struct KeyStroke {
    xkb_keycode_t keycode;
    std::uint16_t shiftState;
};

// The keycodes the map leaves free, the highest first, each holding up to four
// symbols on its levels. What was used longest ago makes room for what is new, but
// not before every application had kSettleTime to read the keys already typed:
// an application looks a key up when it gets round to it, in the map of that moment.
class SpareKeycodes {
public:
    static constexpr std::chrono::milliseconds kSettleTime{500};

    SpareKeycodes(X11Connection& connection, X11Keymap& keymap);
    // Waits for the applications as above, then gives the keycodes back empty.
    ~SpareKeycodes();
    SpareKeycodes(const SpareKeycodes&) = delete;
    SpareKeycodes& operator=(const SpareKeycodes&) = delete;

    // To be called after a new map was fetched: keeps the symbols that are still in it.
    void keymapChanged();

    // The stroke for a symbol, bound if need be. The characters that the layout
    // lacks as well and that are likely to follow are bound with it, because every
    // binding makes all applications fetch the map again. Nothing when the symbol
    // is none or no keycode is free.
    [[nodiscard]] std::optional<KeyStroke> strokeFor(xkb_keysym_t symbol);

    // A virtual key Windows has not assigned stands for each spare keycode.
    [[nodiscard]] std::uint8_t virtualKeyOf(xkb_keycode_t keycode) const;
    // The keycode of such a virtual key; nothing for any other.
    [[nodiscard]] std::optional<xkb_keycode_t> keycodeOf(std::uint16_t virtualKey) const;

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t kLevels = 4;

    struct Spare {
        xkb_keycode_t keycode = XKB_KEYCODE_INVALID;
        std::array<xkb_keysym_t, kLevels> symbols{};
        Clock::time_point lastUse;
    };

    void findFourLevelType();
    [[nodiscard]] std::array<xkb_keysym_t, kLevels> companionsOf(xkb_keysym_t symbol);
    [[nodiscard]] std::vector<xkb_keysym_t> missingSymbols();
    Spare* leastRecentlyUsed();
    void write(const Spare& spare);
    void settle(Clock::time_point lastUse) const;
    [[nodiscard]] bool holds(const Spare& spare) const;

    X11Connection& connection_;
    X11Keymap& keymap_;
    std::vector<Spare> spares_;
    std::uint8_t keyType_ = 1;  // index of the key type in the server's map
    std::size_t levels_ = 2;    // its levels
};

}  // namespace kalvo
