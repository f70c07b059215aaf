// What a user does with a batch of the journal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/run_time_state.h"
#include "platform/journal_file.h"
#include "platform/platform.h"

namespace kalvo {

class BatchDesk {
public:
    // Takes the bytes of a batch through the scenario in force from a pass on, as soon as an
    // application of the user's has the focus.
    using Retype =
        std::function<void(std::int64_t batch, std::string bytes, std::int32_t fromPass)>;

    // Everything given here outlives it.
    BatchDesk(const Platform& platform, const RunTimeState& state, JournalFile& journal,
              Retype retype);

    // The whole batch once more. One that is done is asked about: its records would be there
    // twice.
    void retype(const JournalEntry& entry);
    // Asks for the record to begin with; the one behind those that are done is proposed.
    void retypeFrom(const JournalEntry& entry);
    // Asks for a file and writes what was received into it, byte for byte. RuntimeErrors of
    // the file system.
    void saveAsText(const JournalEntry& entry);

private:
    [[nodiscard]] bool possible();
    void start(const JournalEntry& entry, std::int32_t fromPass);

    Platform platform_;
    const RunTimeState& state_;
    JournalFile& journal_;
    Retype retype_;
};

}  // namespace kalvo
