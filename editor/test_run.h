// The test of a scenario from its editor.
#pragma once

#include <functional>

#include "core/run_time_state.h"
#include "editor/current_scenario.h"
#include "platform/platform.h"

namespace kalvo {

// Asks for the fields of four simulated frames (cancelling one ends the test), compiles and loads
// the scenario, calls `minimise`, leaves the user two seconds to bring the target application to
// the front, and types (or writes) the result. Afterwards the scenario that was in force is so
// again. RuntimeErrors of the database.
void runScenarioTest(const Platform& platform, RunTimeState& state, const CurrentScenario& current,
                     const std::function<void()>& minimise);

// Calls `minimise` and leaves the user two seconds to bring the target application to the
// front.
void leaveTimeToChangeWindow(const Platform& platform, const std::function<void()>& minimise);

}  // namespace kalvo
