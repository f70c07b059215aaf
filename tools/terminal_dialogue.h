// What a terminal says on its line, and what it waits for.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/terminal_line.h"
#include "tools/terminal_records.h"

namespace kalvo {

struct DialogueOptions {
    TerminalKind kind = TerminalKind::kHt630;

    // Batches (one "READ" each for the polled types).
    int batches = 1;
    std::int64_t waitMilliseconds = 0;  // before every batch

    // PT630: instead of the records, "PT630" and character 255, or an empty batch.
    bool announceConnection = false;
    bool emptyBatch = false;

    // Polled types.
    bool tabbed = false;
    bool answersRead = true;                    // with an "ACK" line
    std::int64_t readTimeout = 0;               // ms to wait for "READ"; 0: for ever
    std::int64_t ackTimeout = 2000;             // ms to wait for "ACK" before sending again
    int resends = 3;                            // of one record, before giving up
    std::optional<int> lostAck = std::nullopt;  // 1-based: this "ACK" is taken as not received

    // 1-based: the second half of this record's line is lost the first time it is
    // sent; what ends the line is not.
    std::optional<int> cutRecord = std::nullopt;
};

// The other side did not do its part; the text is French, UTF-8.
class DialogueFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A terminal that sends its records.
//
//   HT630    record... "FINTRANSKALVO"           record: field CR ... LF
//   PT630    record...                           the same, ended by silence
//   Optimus  (READ CR) "ACK" CR line CR (ACK CR) ... "OVER" CR
//   ScanPal  (READ CR) "ACK" CR line CR (ACK CR) ... "OVER" CR "OVER" CR
//
// In brackets: what it waits for. Other lines it receives are ignored, as is LF.
class TerminalDialogue {
public:
    TerminalDialogue(TerminalLine& line, DialogueOptions options)
        : line_(line), options_(options) {}

    // Sends all batches. DialogueFailure when an answer does not come in time;
    // std::length_error for a record that does not fit (nothing is sent then).
    void run(const std::vector<TerminalRecord>& records);

    // Called with the number (from 1) of each record that is off its hands: sent by a
    // terminal that pushes, acknowledged to one that is polled.
    void onDelivered(std::function<void(int number)> handler) { delivered_ = std::move(handler); }

private:
    void sendBatch(const std::vector<std::string>& lines);
    void sendWhenPolled(const std::vector<std::string>& lines);
    void deliver(const std::string& line, int number);
    // False when the line does not come within `milliseconds` (0: for ever).
    bool waitForLine(std::string_view expected, std::int64_t milliseconds);
    std::optional<std::string> takeLine();
    [[nodiscard]] std::string firstForm(const std::string& line, int number) const;

    TerminalLine& line_;
    DialogueOptions options_;
    std::function<void(int)> delivered_ = [](int) {};
    std::string received_;
    int acks_ = 0;
};

}  // namespace kalvo
