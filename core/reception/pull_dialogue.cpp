#include "core/reception/pull_dialogue.h"

#include <cstddef>
#include <utility>

#include "core/during.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "settings/options.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kAcknowledge = "ACK\r";
constexpr std::size_t kRecordLength = 28;
constexpr std::size_t kCodeLength = 20;
constexpr std::size_t kQuantityLength = 6;
// Bytes end the wait at once; this is for what announces itself in no other way.
constexpr int kLongestWait = 1000;  // milliseconds

std::string_view column(std::string_view line, std::size_t position, std::size_t length) {
    return position > line.size() ? std::string_view{}
                                  : trimBlanks(line.substr(position - 1, length));
}

}  // namespace

bool PullDialogue::run(PullScanner scanner) {
    // However it ends: what a full disk had no room for may have found it.
    const During running([this](bool on) {
        running_ = on;
        if (!on) settle();
    });
    cancelled_ = false;
    state_.ReceivedData.clear();
    state_.batch = BatchJournal::kNone;
    dropped_.clear();
    if (optionSet(platform_.profiles, state_.scenario.applicationFolder, Option::kEmptyBuffer)) {
        LineBuffer.clear();
        PreviousLine.clear();
    }
    platform_.port.Output(kReadCommand);
    state_.TransferEnded = false;
    while (!state_.TransferEnded && waitscan()) showInput(scanner);
    return state_.TransferEnded;
}

void PullDialogue::settle() {
    keepRecords();
    journal_.discard(originOf(platform_, state_), std::exchange(dropped_, {}),
                     "ligne trop courte, non acquittée"_ansi);
}

void PullDialogue::keepRecords() {
    if (state_.ReceivedData.empty()) return;
    state_.batch =
        journal_.receiveRecords(state_.batch, originOf(platform_, state_), state_.ReceivedData);
}

bool PullDialogue::waitscan() {
    while (platform_.port.InBufferCount() == 0) {
        platform_.events.waitForEvents(kLongestWait);
        if (cancelled_) return false;
    }
    return true;
}

void PullDialogue::showInput(PullScanner scanner) {
    platform_.port.setInputLen(1);
    const std::string character = platform_.port.Input();
    platform_.events.Sleep(0);
    if (character != "\r") {
        LineBuffer += character;
        return;
    }
    const std::string line = LineBuffer;
    if (endsTransfer(scanner, line)) return;
    LineBuffer.clear();
    if (line == "ACK" || line.size() < kRecordLength) return drop(line);
    const std::string record = recordOf(line);
    state_.ReceivedData += record;
    keepRecords();
    platform_.port.Output(kAcknowledge);
}

// True when the line belongs to the end of the transfer, the first of two included.
bool PullDialogue::endsTransfer(PullScanner scanner, const std::string& line) {
    if (scanner == PullScanner::kOptimus) {
        if (line == "OVER") state_.TransferEnded = true;
        return line == "OVER";
    }
    const bool second = line == "OVEROVER" || (line == "OVER" && PreviousLine == "OVER");
    if (second) state_.TransferEnded = true;
    PreviousLine = line;
    return second || line == "OVER";
}

void PullDialogue::drop(std::string_view line) {
    if (!line.empty() && line != "ACK") dropped_.append(line).append("\r\n");
}

// A record that begins with a control character below 10 (TAB among them) holds its
// columns one place further right.
std::string PullDialogue::recordOf(std::string_view line) {
    const auto record = [](std::string_view code, std::string_view quantity) {
        return std::string(code).append("\r").append(quantity).append("\r\n");
    };
    if (static_cast<unsigned char>(line.front()) < 10)
        return record(column(line, 2, kCodeLength), column(line, 23, kQuantityLength));
    const std::string_view trimmed = trimBlanks(line);
    if (trimmed.starts_with(';'))
        return record(std::string(kCodeLength, ' '), std::string(kQuantityLength, ' '));
    return record(column(trimmed, 1, kCodeLength), column(trimmed, 22, kQuantityLength));
}

}  // namespace kalvo
