// Time, as EventPump hands it on.
#pragma once

#include <cstdint>

#include "platform/event_pump.h"

namespace kalvo {

// The system clock's date and time in the user's time zone.
[[nodiscard]] LocalTime localNow();

// Milliseconds since the machine started; wraps around at 2^32. Setting the system
// clock does not move it.
[[nodiscard]] std::uint32_t tickCount();

}  // namespace kalvo
