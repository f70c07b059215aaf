#include "platform/x11/x11_layout.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/x11/keymap/character_symbol.h"
#include "platform/x11/layout/named_keys.h"

namespace kalvo {

namespace {

std::uint8_t lowByte(std::uint16_t virtualKey) { return virtualKey & 0xFFU; }

}  // namespace

void X11Layout::follow() {
    if (!keymap_.update()) return;
    spares_.keymapChanged();
    namedKeycodes_.fill(0);
}

void X11Layout::prepareFor(std::string_view script, unsigned char lastCode) {
    std::array<std::size_t, 256> counts{};
    for (const char character : script) ++counts[static_cast<unsigned char>(character)];
    std::vector<unsigned char> characters;
    for (std::size_t code = ' '; code <= lastCode; ++code)
        if (counts[code] > 0) characters.push_back(static_cast<unsigned char>(code));
    std::stable_sort(characters.begin(), characters.end(),
                     [&](unsigned char a, unsigned char b) { return counts[a] > counts[b]; });
    std::vector<xkb_keysym_t> symbols;
    for (const unsigned char character : characters) {
        const xkb_keysym_t symbol = missingSymbol(static_cast<char>(character));
        if (symbol != XKB_KEY_NoSymbol) symbols.push_back(symbol);
    }
    spares_.prepare(std::move(symbols));
}

void X11Layout::noteUntyped(char character) {
    if (untyped_.find(character) == std::string::npos) untyped_ += character;
}

xkb_keysym_t X11Layout::missingSymbol(char character) {
    if (keymap_.layout().VkKeyScanExA(character) != -1) return XKB_KEY_NoSymbol;
    return symbolOfCharacter(character);
}

std::int16_t X11Layout::VkKeyScanExA(char character) {
    if (text_.passes(character)) return PassedText::kVkPacket;
    const std::int16_t own = keymap_.layout().VkKeyScanExA(character);
    if (own != -1) return own;
    const auto stroke = spares_.strokeFor(symbolOfCharacter(character));
    if (!stroke) {
        noteUntyped(character);
        return -1;
    }
    return static_cast<std::int16_t>(spares_.virtualKeyOf(stroke->keycode) | stroke->shiftState);
}

std::uint16_t X11Layout::MapVirtualKeyExA(std::uint16_t virtualKey) {
    if (virtualKey == PassedText::kVkPacket) return text_.code();
    if (const auto spare = spares_.keycodeOf(virtualKey))
        return static_cast<std::uint16_t>(*spare - kScanToKeycode);
    return keymap_.layout().MapVirtualKeyExA(virtualKey);
}

xkb_keycode_t X11Layout::keycodeOf(const KeyRecord& record) {
    const std::uint8_t virtualKey = lowByte(record.virtualKey);
    if (const xkb_keycode_t named = namedKeycode(virtualKey); named != 0) return named;
    // A named key that the keyboard lacks, such as F20.
    if (const auto spare = spares_.strokeFor(symbolOfNamedKey(virtualKey))) return spare->keycode;
    const std::uint16_t scanCode =
        (record.flags & kKeyEventScanCode) != 0 ? record.scanCode : MapVirtualKeyExA(virtualKey);
    return scanCode == 0 ? 0 : scanCode + kScanToKeycode;
}

xkb_keycode_t X11Layout::namedKeycode(std::uint8_t virtualKey) {
    const xkb_keysym_t symbol = symbolOfNamedKey(virtualKey);
    if (symbol == XKB_KEY_NoSymbol) return 0;
    xkb_keycode_t& known = namedKeycodes_[virtualKey];
    if (known == 0) known = keymap_.keyWithSymbol(symbol).value_or(0);
    return known;
}

std::optional<KeyStroke> X11Layout::strokeOf(char character) {
    const std::int16_t own = keymap_.layout().VkKeyScanExA(character);
    if (own == -1) return spares_.strokeFor(symbolOfCharacter(character));
    const auto answer = static_cast<std::uint16_t>(own);
    // Characters on Control with a key are no text.
    const auto shiftState = static_cast<std::uint16_t>(answer & ~0xFFU);
    if ((shiftState & kNeedsAltGr) == kNeedsControl) return std::nullopt;
    const xkb_keycode_t key = keycodeOf({.virtualKey = lowByte(answer), .scanCode = 0, .flags = 0});
    if (key == 0) return std::nullopt;
    return KeyStroke{key, shiftState};
}

}  // namespace kalvo
