// The names of the keys while they are changed, and what depends on them: the table that is
// typed from, and the steps of scenarios that call a key by its name.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "editor/keys/key_tables.h"
#include "editor/scenario_choices.h"
#include "platform/platform.h"

namespace kalvo {

class KeyLabels {
public:
    // One section of the key file, as it is now. Everything given here outlives it.
    KeyLabels(const Platform& platform, RunTimeState& state, ScenarioChoices& choices,
              std::string_view section);

    [[nodiscard]] const std::vector<KeyBox>& boxes() const { return boxes_; }
    void setLabel(std::size_t index, std::string label) {
        boxes_.at(index).label = std::move(label);
    }
    // Whether a label differs from the one that is stored.
    [[nodiscard]] bool unsaved() const;

    // Stores the labels and has them used from now on. Offers to correct the steps that call a
    // renamed key by its former name. False, with a message and nothing stored, for a label that
    // no step could call: one without braces, one that another key has, one with an apostrophe
    // or "@". RuntimeErrors of the database.
    bool store();

private:
    [[nodiscard]] std::vector<KeyBox> stored(bool ofThisSection) const;
    [[nodiscard]] bool acceptable() const;
    void renameSteps(const std::vector<std::string>& former);

    Platform platform_;
    RunTimeState& state_;
    ScenarioChoices& choices_;
    std::string_view section_;
    std::vector<KeyBox> boxes_;
    std::vector<std::string> stored_;
};

}  // namespace kalvo
