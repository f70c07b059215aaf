// One line on the state of reception, for the foot of the settings window.
#pragma once

#include <string>

#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// "COM 1 ouvert à 115200, scénario Réception": port, stored speed, scenario in force.
[[nodiscard]] std::string lineStatus(const Platform& platform, const RunTimeState& state);

}  // namespace kalvo
