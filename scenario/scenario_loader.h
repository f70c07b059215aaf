// From the compiled scenario file to the scenario in force.
#pragma once

#include <string_view>

#include "platform/platform.h"
#include "scenario/scenario_run.h"

namespace kalvo {

// Loads the scenario chosen for daily use (registry value RacScenChx) and shows its
// name in the tray icon's tip. A choice whose file is gone is cleared; without a
// choice the user is told and run.active keeps what it held, name aside.
void LoadActiveScenario(const Platform& platform, ScenarioRun& run);

// Loads the actions of a named scenario for a test. The chosen scenario stays
// chosen, so the loop and start points still come from its file.
void LoadTestScenario(const Platform& platform, ScenarioRun& run, std::string_view name);

}  // namespace kalvo
