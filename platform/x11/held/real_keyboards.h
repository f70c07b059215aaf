// The keyboards that hands type on, as against XTEST's.
#pragma once

#include <bitset>
#include <cstdint>
#include <vector>

#include "platform/x11/x11_connection.h"

namespace kalvo {

// Those of the core keyboard.
[[nodiscard]] std::vector<std::uint8_t> realKeyboards(const X11Connection& connection);

// The keys that are down on some keyboards.
[[nodiscard]] std::bitset<256> keysDown(const X11Connection& connection,
                                        const std::vector<std::uint8_t>& keyboards);

}  // namespace kalvo
