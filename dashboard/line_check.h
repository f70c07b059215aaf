// "Tester la liaison": whether a terminal can be heard.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/reception/line_tap.h"
#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// What bytes from a terminal look like.
enum class LineVerdict { kNothing, kNoise, kUnended, kFrame };

// Noise is what a wrong speed, parity or number of bits makes of a text: a character in five or
// more is none that barcodes are made of. A frame is text with a line that is ended by CR.
[[nodiscard]] LineVerdict verdictOn(std::string_view bytes);

class LineCheck {
public:
    // Everything given here outlives it; `line` is the platform's port.
    LineCheck(const Platform& platform, const RunTimeState& state, LineTap& line)
        : platform_(platform), state_(state), line_(line) {}

    // Polled terminals are asked for their records and heard for three seconds at most, during
    // which nothing else runs; the record that comes is not acknowledged, and is dropped: the
    // terminal keeps it. Push terminals are only listened to from here on: what they send is
    // received as ever. What the user should know, in French.
    [[nodiscard]] std::string begin();

    // While it listens, to be called several times a second: what was heard once the line has
    // been silent again for a second, or after half a minute; until then nothing.
    [[nodiscard]] std::optional<std::string> look();

    [[nodiscard]] bool listening() const { return listening_; }

private:
    void hear();
    void askAndHear();
    [[nodiscard]] std::uint32_t elapsed(std::uint32_t since);
    [[nodiscard]] std::string finding() const;

    Platform platform_;
    const RunTimeState& state_;
    LineTap& line_;
    bool listening_ = false;
    bool breaks_ = false;
    std::string heard_;
    std::uint64_t next_ = 0;       // event of the tap
    std::uint32_t began_ = 0;      // ticks
    std::uint32_t lastHeard_ = 0;  // ticks
};

}  // namespace kalvo
