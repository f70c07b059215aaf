// The keys behind which an application may begin something.
#pragma once

#include "platform/keyboard_input.h"

namespace kalvo {

// The release of Enter, Tab or a function key.
[[nodiscard]] inline bool confirms(const KeyRecord& record) {
    constexpr unsigned kTab = 0x09;
    constexpr unsigned kEnter = 0x0D;
    constexpr unsigned kF1 = 0x70;
    constexpr unsigned kF24 = 0x87;
    const unsigned key = record.virtualKey & 0xFFU;
    return (record.flags & kKeyEventKeyUp) != 0 &&
           (key == kTab || key == kEnter || (key >= kF1 && key <= kF24));
}

}  // namespace kalvo
