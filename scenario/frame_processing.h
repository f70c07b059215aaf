// From a frame to the key script, or to the text of a file.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "scenario/scenario_run.h"

namespace kalvo {

// Cuts a frame into run.FrameFields: each CR ends a field, LF is left out.
void SplitFrameFields(const Platform& platform, ScenarioRun& run, std::string_view frame);

// Walks the actions of the scenario in force over the fields that SplitFrameFields
// cut, as often as it takes to use them all, and returns the key script. In partial
// mode `frame` becomes the reassembled record. Sets run.CounterText, run.TimerPause and
// run.passStarts. Failing statements are passed over.
[[nodiscard]] std::string BuildKeyScript(const Platform& platform, ScenarioRun& run,
                                         std::string& frame);

// The running counter of the database in decimal, before it is advanced by 1; "0"
// when the database has no counter row, empty when it cannot be read.
[[nodiscard]] std::string NextCounterValue(const Platform& platform, const ScenarioRun& run);

// The text with its decimal points (or, if it has none, its commas) replaced by the
// separator; "x" removes ".00" (",00") instead, and the empty separator changes
// nothing.
// `places` are positions in the text, ascending; they become those in the result.
[[nodiscard]] std::string withDecimalSeparator(std::string text, std::string_view separator,
                                               std::span<std::uint32_t> places = {});

}  // namespace kalvo
