// What is in a batch, and what it would become now.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// Lists to be shown; code page 1252, a control character as "<1D>".
struct BatchLook {
    std::vector<std::string> fields;  // "1 : REF001"
    bool toFile = false;              // the text is written instead of typed
    std::vector<std::string> keys;    // or the lines of the text, under the record they belong to
};

// A dry run of the scenario in force over the first records of a batch: nothing is typed or
// written, the counter stays as it is.
[[nodiscard]] BatchLook lookAt(const Platform& platform, const RunTimeState& state,
                               std::string_view bytes);

// The text of a batch as it is shown and copied: one line a field.
[[nodiscard]] std::string textOf(std::string_view bytes);

// Whether a scenario is in force that could do anything with a batch.
[[nodiscard]] bool scenarioInForce(const RunTimeState& state);

}  // namespace kalvo
