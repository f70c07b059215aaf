// The actions of a scenario, understood once for all passes over a frame.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "keys/key_files.h"

namespace kalvo {

// What one action does to the output.
struct ActionStep {
    enum class Kind {
        kText,     // text: appended as it stands
        kTimer,    // text: the pause in milliseconds, not yet converted
        kDate,     // today's date
        kCounter,  // the counter value of the frame
        kField,    // the next field of the frame
    };
    Kind kind = Kind::kText;
    std::string text;
    // The action moves the frame position forward ...
    bool advances = false;
    // ... and back by one, because it stands for no character of the frame.
    bool stepsBack = false;
};

// The step of an action text; markers and key labels compare exactly.
[[nodiscard]] ActionStep understandAction(std::string_view action,
                                          const KeyCorrespondenceTable& keys);

// The steps of all actions; index 0 does nothing, as in the action list.
[[nodiscard]] std::vector<ActionStep> understandActions(const std::vector<std::string>& actions,
                                                        const KeyCorrespondenceTable& keys);

}  // namespace kalvo
