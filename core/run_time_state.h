// The state of a run that several parts of the program share.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/journal_file.h"
#include "platform/platform.h"
#include "scenario/scenario_run.h"

namespace kalvo {

struct RunTimeState {
    // The scenario in force, the key tables and the frame being processed.
    ScenarioRun scenario;
    // Received records that wait for the dispatch, each ended by CR LF.
    std::string ReceivedData;
    // Their number in the journal; 0 while they are not in it.
    std::int64_t batch = 0;
    // The stored terminal type ("HT630", "PT630", "Optimus", "ScanPal", or whatever
    // the file says); compares without regard to case.
    std::string TerminalType;
    // Set by the pull dialogue when the scanner has no more data.
    bool TransferEnded = false;
    // The scenarios for inventory and for order work.
    std::string RacInvent;
    std::string RacCde;
    // Open for the whole run; empty when it could not be opened.
    std::unique_ptr<Database> database;
};

// Where what is received now comes from, for the journal.
[[nodiscard]] BatchOrigin originOf(const Platform& platform, const RunTimeState& state);

// Writes down that the port has been opened, and how.
void logOpenPort(const Platform& platform, const RunTimeState& state);

}  // namespace kalvo
