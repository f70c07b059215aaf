// From received data to the focused application, or to a file.
#pragma once

#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// Hands state.ReceivedData to the scenario in force: its key script is typed piece
// by piece, with the timer and lock-key tokens handled on the way, or the text goes
// to the scenario's file. Afterwards an open port is closed and opened again, which
// drops what came in meanwhile. Errors of the port reach the caller.
void TraiteEmul(const Platform& platform, RunTimeState& state);

}  // namespace kalvo
