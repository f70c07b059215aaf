// The keysym that types a character.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include "text/ansi_text.h"

namespace kalvo {

// XKB_KEY_NoSymbol for a code without a character.
[[nodiscard]] inline xkb_keysym_t symbolOfCharacter(char character) {
    constexpr char32_t kPerMille = 0x2030;
    constexpr xkb_keysym_t kUnicodeSymbols = 0x1000000;
    const char32_t codePoint = ansiToUnicode(character);
    // Of all the older keysyms of the code page it is this one that GTK and Java drop.
    if (codePoint == kPerMille) return kUnicodeSymbols + kPerMille;
    return xkb_utf32_to_keysym(codePoint);
}

}  // namespace kalvo
