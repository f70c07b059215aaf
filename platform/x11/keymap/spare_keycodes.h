// Characters that no key of the layout types get a key of their own.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/x11/keymap/spare_symbols.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/target/target_pace.h"

namespace kalvo {

// A key and the kNeeds... bits that type a symbol with it (AltGr as in
// LayoutCharacter).
struct KeyStroke {
    xkb_keycode_t keycode;
    std::uint16_t shiftState;
};

// The keycodes the map leaves free, the highest first, each holding up to four symbols
// on its levels. They are kept, also when the program ends: an application looks a key up
// when it gets round to it, in the map of that moment. Only where more symbols are needed
// than there is room for, those used longest ago make room, once the application has read
// everything typed.
class SpareKeycodes {
public:
    SpareKeycodes(X11Connection& connection, X11Keymap& keymap, TargetPace& pace);

    // To be called after a new map was fetched: keeps the symbols that are still in it.
    void keymapChanged();

    // Binds what is about to be typed, as far as there is room, in one change of the map.
    // The first ones matter most; those needed later are bound together.
    void prepare(std::vector<xkb_keysym_t> symbols);

    // The stroke for a symbol, bound if need be. Nothing when the symbol is none or no
    // keycode is free.
    [[nodiscard]] std::optional<KeyStroke> strokeFor(xkb_keysym_t symbol);

    // A virtual key Windows has not assigned stands for each spare keycode.
    [[nodiscard]] std::uint8_t virtualKeyOf(xkb_keycode_t keycode) const;
    // The keycode of such a virtual key; nothing for any other.
    [[nodiscard]] std::optional<xkb_keycode_t> keycodeOf(std::uint16_t virtualKey) const;

private:
    struct Spare {
        SpareKey key;
        std::uint64_t lastUse = 0;  // by count of uses
    };

    [[nodiscard]] std::optional<KeyStroke> boundStroke(xkb_keysym_t symbol);
    [[nodiscard]] bool isBound(xkb_keysym_t symbol) const;
    [[nodiscard]] bool isWanted(const Spare& spare) const;
    [[nodiscard]] std::vector<xkb_keysym_t> unbound(std::vector<xkb_keysym_t> symbols) const;
    [[nodiscard]] std::vector<xkb_keysym_t> likelySymbols();
    void bind(std::vector<xkb_keysym_t> symbols, std::span<Spare* const> mayChange);
    [[nodiscard]] std::vector<Spare*> longestUnused();

    SpareSymbols symbols_;
    X11Keymap& keymap_;
    TargetPace& pace_;
    std::vector<Spare> spares_;
    std::vector<xkb_keysym_t> wanted_;
    std::uint64_t uses_ = 0;
};

}  // namespace kalvo
