// Line speeds outside the fixed list of termios.
#pragma once

#include <cstdint>

namespace kalvo {

// Sets both speeds of a terminal device in bit/s, any number. False when the system
// or the device refuses.
[[nodiscard]] bool setCustomSpeed(int descriptor, std::uint32_t speed) noexcept;

// The output speed the device really runs at, in bit/s; 0 when it cannot be told.
[[nodiscard]] std::uint32_t actualSpeed(int descriptor) noexcept;

}  // namespace kalvo
