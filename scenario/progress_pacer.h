// Lets the user interface run during a long loop without paying for it.
#pragma once

#include <cstdint>

#include "platform/event_pump.h"

namespace kalvo {

// Ask due() in every round of a loop: it answers true about 30 times a second, and
// looks at the clock only every few hundred rounds.
class ProgressPacer {
public:
    explicit ProgressPacer(EventPump& events) : events_(events), last_(events.GetTickCount()) {}

    [[nodiscard]] bool due() {
        if (++rounds_ % kRoundsBetweenLooks != 0) return false;
        const std::uint32_t now = events_.GetTickCount();
        if (now - last_ < kInterval) return false;
        last_ = now;
        return true;
    }

private:
    static constexpr std::uint32_t kRoundsBetweenLooks = 256;
    static constexpr std::uint32_t kInterval = 33;  // milliseconds

    EventPump& events_;
    std::uint32_t last_;
    std::uint32_t rounds_ = 0;
};

}  // namespace kalvo
