// Reassembly of records that a terminal sends in several sub-frames.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/scenario_run.h"

namespace kalvo {

// Puts every `count` CR-terminated sub-frames of a frame together to one record:
// slot i of the map, in order, receives its sub-frame, each slot ended by CR. An
// incomplete last record is dropped. With a count below 1 no record is ever
// complete and the result is empty.
[[nodiscard]] std::string reassembleSubFrames(std::string_view frame,
                                              const std::vector<SubFrameSlot>& subFrameMap,
                                              std::int16_t count);

}  // namespace kalvo
