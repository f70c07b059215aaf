// What a scenario would type or write for a sample frame, without doing it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

struct ScriptPreview {
    bool toFile = false;  // the text goes to a file instead of the keyboard
    std::string script;
    int timerPause = 0;  // milliseconds
    // What in the scenario will not work as it looks, and which options change what it does;
    // in French.
    std::vector<std::string> warnings;
    std::vector<std::string> options;
};

// The scenario as it is in the database now, run over a frame whose fields end with
// CR or CR LF. The compiled files, the scenario in force and the counter stay as they
// are, nothing is typed. RuntimeErrors of the database.
[[nodiscard]] ScriptPreview previewScript(const Platform& platform, const RunTimeState& state,
                                          std::int16_t scenarioNumber, std::string_view frame);

}  // namespace kalvo
