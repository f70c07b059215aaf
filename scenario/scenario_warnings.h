// What a scenario holds that will not work as it looks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "scenario/scenario_store.h"

namespace kalvo {

struct ScenarioFacts {
    const ScenarioRecord& scenario;
    const std::vector<std::string>& steps;
    // Whether the number of fields entered in the editor counts (option TramePartielle).
    bool partialCountActs = false;
    std::int32_t counter = 0;  // the running counter
};

// French sentences, code page 1252, each one line; none for a scenario without such things.
[[nodiscard]] std::vector<std::string> scenarioWarnings(const ScenarioFacts& facts);

}  // namespace kalvo
