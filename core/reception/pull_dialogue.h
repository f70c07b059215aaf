// The dialogue with the polled scanners "ScanPal" and "Optimus".
//
//   host    READ<CR>                      start sending
//   scanner record<CR> ... host ACK<CR>   fixed-width records, each acknowledged
//   scanner OVER<CR>                      the end ("ScanPal": two of them)
#pragma once

#include <string>
#include <string_view>

#include "core/run_time_state.h"
#include "journal/batch_journal.h"
#include "platform/platform.h"

namespace kalvo {

// Asks a scanner for its records.
inline constexpr std::string_view kReadCommand = "READ\r";

enum class PullScanner { kScanPal, kOptimus };

class PullDialogue {
public:
    PullDialogue(const Platform& platform, RunTimeState& state, BatchJournal& journal)
        : platform_(platform), state_(state), journal_(journal) {}

    // Asks the scanner for its records and collects them in state.ReceivedData
    // until it says that it has no more, or until cancel(). True when the scanner
    // ended the transfer. There is no time limit; events are delivered meanwhile. A record
    // is in the journal before the scanner is told that it was accepted.
    bool run(PullScanner scanner);

    // Ends a running dialogue at its next wait. Records acknowledged so far stay in
    // state.ReceivedData.
    void cancel() { cancelled_ = true; }
    [[nodiscard]] bool running() const { return running_; }

    // Waits until a character has come. False when cancelled.
    bool waitscan();

    // Read and handle one character.
    void showinputScanPal() { showInput(PullScanner::kScanPal); }
    void showinputOptimus() { showInput(PullScanner::kOptimus); }

private:
    void settle();
    void keepRecords();
    void showInput(PullScanner scanner);
    bool endsTransfer(PullScanner scanner, const std::string& line);
    [[nodiscard]] static std::string recordOf(std::string_view line);
    void drop(std::string_view line);

    Platform platform_;
    RunTimeState& state_;
    BatchJournal& journal_;
    // The current line up to its CR. The lines that end a transfer are left in it
    // on purpose: the second OVER of a "ScanPal" then reads OVEROVER.
    std::string LineBuffer;
    std::string PreviousLine;
    std::string dropped_;  // lines of this transfer that are no records
    bool cancelled_ = false;
    bool running_ = false;
};

}  // namespace kalvo
