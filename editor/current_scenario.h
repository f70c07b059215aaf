// What the windows of the configuration side share.
#pragma once

#include <cstdint>
#include <string>

namespace kalvo {

struct EditorState {
    std::int16_t scenarioNumber = 0;  // 0: a new scenario is being entered
    std::string scenarioName;
    std::string scenarioType;  // "Emulation", "Fichier", or empty
    bool partialFrame = false;
    bool datalogic = false;
    // The windows of the current scenario's steps are open.
    bool stepsShown = false;
    // The next picked key takes the place of the selected row.
    bool insertMode = false;
    std::int16_t accessLevel = 0;   // 1: every tab
    std::int16_t erasePending = 0;  // not 0: the erase question waits for its answer
};

}  // namespace kalvo
