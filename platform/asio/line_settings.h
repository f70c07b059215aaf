// The settings text of a line, "9600,N,8,1", as values.
#pragma once

#include <cstdint>
#include <string_view>

namespace kalvo {

enum class Parity { kNone, kEven, kOdd, kMark, kSpace };
enum class StopBits { kOne, kOneAndHalf, kTwo };

struct LineSettings {
    std::uint32_t speed = 9600;  // bit/s
    Parity parity = Parity::kNone;
    int dataBits = 8;  // 4..8
    StopBits stopBits = StopBits::kOne;
};

// Reads "speed,parity,data bits,stop bits": a speed of 1 to 4000000 in digits, one
// of the letters N E O M S, 4 to 8, and 1, 1.5 or 2, without blanks. RuntimeError
// 380 for anything else. Whether a line can do it shows when it is configured.
[[nodiscard]] LineSettings parseLineSettings(std::string_view text);

}  // namespace kalvo
