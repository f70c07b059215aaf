// What the run-time side of the scenarios knows: the scenario in force, the keys it
// may press, and the frame being processed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "keys/key_files.h"
#include "scenario/frame_fields.h"

namespace kalvo {

// One entry of the sub-frame list: which sub-frame fills which slot of a record.
struct SubFrameSlot {
    std::int16_t slot = 0;
    std::int16_t subFrame = 0;
};

// The scenario in force (`ActiveScenario`).
struct ActiveScenario {
    std::string ScenarioName;
    bool SpecifMode = false;
    bool FileMode = false;
    // Loaded with the rest of the file; nothing reads them today.
    bool FileNameFromFrame = false;
    std::string FileNameField;
    // The actions from index 1 on; index 0 is empty.
    std::vector<std::string> ActionLines = std::vector<std::string>(1);
    std::int16_t PartialMode = 0;
    // The sub-frame list from index 1 on; index 0 is unused.
    std::vector<SubFrameSlot> SubFrameMap = std::vector<SubFrameSlot>(1);
};

// Whether a frame advances the running counter. A dry run leaves it alone.
enum class CounterUse { kAdvance, kReadOnly };

struct ScenarioRun {
    std::string applicationFolder;
    ActiveScenario active;
    KeyCorrespondenceTable keys;
    // The fields of the current frame. A frame that comes in while another is being
    // processed replaces the pointer and leaves the other one its own fields.
    std::shared_ptr<const FrameFieldTable> FrameFields = std::make_shared<const FrameFieldTable>();
    // Where each pass over the current frame begins in its key script (32 bits: there is
    // one for each record of a batch of any size).
    std::vector<std::uint32_t> passStarts;
    std::string CounterText;
    CounterUse counterUse = CounterUse::kAdvance;
    // The registry value SepDec; "x" drops decimals, empty changes nothing.
    std::string DecimalSeparator;
    std::int16_t TimerPause = 0;  // milliseconds
};

}  // namespace kalvo
