// Storing the names of the keys, and what depends on them: the table that is typed from,
// and the steps of scenarios that call a key by its name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "editor/scenario_choices.h"
#include "platform/platform.h"

namespace kalvo {

// Stores the labels of one section of the key file and has them used from now on. Offers to
// correct the steps that call a renamed key by its former name. False, with a message and
// nothing stored, for a label that no step could call: one without braces, one that another
// key has, one with an apostrophe or "@". RuntimeErrors of the database.
bool storeKeyLabels(const Platform& platform, RunTimeState& state, ScenarioChoices& choices,
                    std::string_view section, const std::vector<std::string>& labels);

}  // namespace kalvo
