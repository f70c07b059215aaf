// The scenario that the windows of the configuration side work on.
#pragma once

#include <cstdint>
#include <string>

namespace kalvo {

struct CurrentScenario {
    std::int16_t scenarioNumber = 0;  // 0: a new scenario is being entered
    std::string scenarioName;
    std::string scenarioType;  // "Emulation", "Fichier", or empty
    bool partialFrame = false;
    bool datalogic = false;
};

}  // namespace kalvo
