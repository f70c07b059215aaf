// From received data to the focused application, or to a file.
#pragma once

#include <cstdint>
#include <string>

#include "core/batch_report.h"
#include "core/batch_typing.h"
#include "core/run_time_state.h"
#include "journal/batch_journal.h"
#include "platform/platform.h"

namespace kalvo {

// Whether a batch can go anywhere now: a scenario that types needs a keyboard.
[[nodiscard]] bool canDispatch(const Platform& platform, const RunTimeState& state);

// Hands state.ReceivedData to the scenario in force: its key script is typed piece
// by piece, with the timer and lock-key tokens handled on the way, or the text goes
// to the scenario's file. Afterwards an open port is closed and opened again, which
// drops what came in meanwhile; the journal keeps it. What becomes of the batch goes
// into the journal, too, and comes back. Without a keyboard nothing is typed and the
// batch waits in the journal. ProgramEnd when the program was asked to end while typing.
BatchReport TraiteEmul(const Platform& platform, RunTimeState& state, BatchJournal& journal);

// Takes a batch of the journal through the scenario in force once more, from a pass on (the
// first is 1). The port is left alone. RuntimeError 5 for a number the journal has not.
BatchReport dispatchAgain(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                          const JournalEntry& entry, std::string bytes, std::int32_t fromPass);

// Whether a bubble says what became of a batch or a replay: not of a suspended one, which is
// told in a window of its own, whose buttons a bubble would cover.
[[nodiscard]] bool deservesNotice(const Platform& platform, std::string_view applicationFolder,
                                  const BatchReport& report);

// What the user is told and asked once a batch is done with, as the site wants it.
struct Aftermath {
    bool notice = false;         // a bubble says what became of it
    bool eraseQuestion = false;  // whether the terminal may forget it
};
[[nodiscard]] Aftermath aftermathOf(const Platform& platform, const RunTimeState& state,
                                    const BatchReport& report);

}  // namespace kalvo
