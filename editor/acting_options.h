// Which switches change what a scenario does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// The options that are off for every site, are on in this one, and matter to a scenario and
// the type of its terminal: one French line each.
[[nodiscard]] std::vector<std::string> actingOptions(ProfileFiles& profiles,
                                                     std::string_view applicationFolder,
                                                     const ScenarioRecord& scenario,
                                                     std::string_view terminalType);

}  // namespace kalvo
