// Sets of keys as the X protocol has them.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>

namespace kalvo {

// From the 32 bytes of a keymap, a bit for each keycode.
[[nodiscard]] inline std::bitset<256> toKeys(const std::uint8_t* bytes) {
    std::bitset<256> keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        if ((bytes[key / 8] >> (key % 8) & 1) != 0) keys.set(key);
    return keys;
}

}  // namespace kalvo
