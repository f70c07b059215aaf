// The names a key script may put in braces, and the virtual keys they stand for.
#pragma once

#include <cstdint>
#include <string_view>

namespace kalvo {

// The virtual-key code of a name, in any case; 0 when the name is unknown.
[[nodiscard]] std::int16_t KeyNameToCode(std::string_view name);

// The name of such a virtual key; empty for any other.
[[nodiscard]] std::string_view nameOfKey(std::uint8_t code);

}  // namespace kalvo
