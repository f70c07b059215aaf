#include "platform/wayland/wayland_layout.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <cstddef>

#include "platform/x11/keymap/character_symbol.h"
#include "platform/x11/layout/layout_keys.h"
#include "platform/x11/layout/named_keys.h"

namespace kalvo {

namespace {

// Virtual keys without a meaning in any layout, one for each extra key.
constexpr auto kUnassigned =
    std::to_array<std::uint8_t>({0xD0, 0xD1, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD7, 0xD8, 0xD9, 0xDA,
                                 0x97, 0x98, 0x99, 0x9A, 0x9B, 0x9C});

}  // namespace

WaylandLayout::WaylandLayout(const WaylandKeymap& map)
    : usual_(map.keymap.get(), 0, XkbLayout::DeadKeys::skipped) {
    placeExtraKeys(map);
    placeNamedKeys(map);
}

void WaylandLayout::placeExtraKeys(const WaylandKeymap& map) {
    extraCharacters_.fill(-1);
    for (std::size_t i = 0; i < map.extraKeys.size() && i < kUnassigned.size(); ++i) {
        const MapKey& key = map.extraKeys[i];
        const std::uint8_t virtualKey = kUnassigned[i];
        extraKeycodes_[virtualKey] = key.keycode;
        for (int code = 0x80; code <= 0xFF; ++code) {
            const xkb_keysym_t symbol = symbolOfCharacter(static_cast<char>(code));
            const auto at = std::find(key.symbols.begin(), key.symbols.end(), symbol);
            if (symbol == XKB_KEY_NoSymbol || at == key.symbols.end()) continue;
            extraCharacters_[static_cast<std::size_t>(code)] = static_cast<std::int16_t>(
                virtualKey | (at == key.symbols.begin() ? 0 : kNeedsShift));
        }
    }
}

// On the lowest level where a symbol is to be had.
void WaylandLayout::placeNamedKeys(const WaylandKeymap& map) {
    for (std::size_t virtualKey = 0; virtualKey < namedKeycodes_.size(); ++virtualKey) {
        xkb_keysym_t symbol = symbolOfNamedKey(static_cast<std::uint8_t>(virtualKey));
        // A symbol whose name begins with a digit cannot be written in a map.
        if (symbol == XKB_KEY_3270_PrintScreen) symbol = XKB_KEY_Print;
        if (symbol == XKB_KEY_NoSymbol) continue;
        for (std::size_t level = 2; level-- > 0;)
            for (const MapKey& key : map.keys)
                if (level < key.symbols.size() && key.symbols[level] == symbol)
                    namedKeycodes_[virtualKey] = key.keycode;
    }
}

std::int16_t WaylandLayout::VkKeyScanExA(char character) {
    const std::int16_t usual = usual_.VkKeyScanExA(character);
    return usual != -1 ? usual : extraCharacters_[static_cast<unsigned char>(character)];
}

std::uint16_t WaylandLayout::MapVirtualKeyExA(std::uint16_t virtualKey) {
    if (virtualKey < extraKeycodes_.size() && extraKeycodes_[virtualKey] != 0)
        return static_cast<std::uint16_t>(extraKeycodes_[virtualKey] - kScanToKeycode);
    return usual_.MapVirtualKeyExA(virtualKey);
}

xkb_keycode_t WaylandLayout::keycodeOf(const KeyRecord& record) {
    const std::uint8_t virtualKey = record.virtualKey & 0xFFU;
    if (namedKeycodes_[virtualKey] != 0) return namedKeycodes_[virtualKey];
    const std::uint16_t scanCode =
        (record.flags & kKeyEventScanCode) != 0 ? record.scanCode : MapVirtualKeyExA(virtualKey);
    return scanCode == 0 ? 0 : scanCode + kScanToKeycode;
}

std::optional<WaylandLayout::Stroke> WaylandLayout::strokeOf(char character) {
    const auto answer = static_cast<std::uint16_t>(VkKeyScanExA(character));
    const auto shiftState = static_cast<std::uint16_t>(answer & ~0xFFU);
    // Characters on Control with a key are no text; all bits are set for none at all.
    if ((shiftState & kNeedsAltGr) == kNeedsControl || (shiftState & 0xF800U) != 0)
        return std::nullopt;
    const std::uint16_t virtualKey = answer & 0xFFU;
    const xkb_keycode_t key = keycodeOf({.virtualKey = virtualKey, .scanCode = 0, .flags = 0});
    if (key == 0) return std::nullopt;
    return Stroke{key, shiftState};
}

}  // namespace kalvo
