// Which picture the tray icon shows.
#pragma once

#include <cstddef>

#include "platform/notify_icon.h"

namespace kalvo {

// What the program is doing, as far as the icon tells of it.
struct ProgramCondition {
    bool portOpen = false;
    bool lineLost = false;    // the port is open, its device away
    bool typing = false;      // a batch is on its way
    std::size_t waiting = 0;  // batches that are not finished
};

// The most pressing thing: nobody has to do anything about a batch that is being typed, and
// without a line no other comes.
[[nodiscard]] constexpr IconState iconStateOf(const ProgramCondition& condition) {
    if (condition.typing) return IconState::kTyping;
    if (!condition.portOpen || condition.lineLost) return IconState::kNoPort;
    return condition.waiting > 0 ? IconState::kAttention : IconState::kReady;
}

}  // namespace kalvo
