#include "core/pull_dialogue.h"

#include <cstddef>

#include "core/during.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kRead = "READ\r";
constexpr std::string_view kAcknowledge = "ACK\r";
constexpr std::size_t kRecordLength = 28;
constexpr std::size_t kCodeLength = 20;
constexpr std::size_t kQuantityLength = 6;

std::string_view column(std::string_view line, std::size_t position, std::size_t length) {
    return position > line.size() ? std::string_view{}
                                  : trimBlanks(line.substr(position - 1, length));
}

}  // namespace

bool PullDialogue::run(PullScanner scanner) {
    const During running([this](bool on) { running_ = on; });
    cancelled_ = false;
    state_.ReceivedData.clear();
    platform_.port.Output(kRead);
    state_.TransferEnded = false;
    while (!state_.TransferEnded) {
        if (!waitscan()) return false;
        showInput(scanner);
    }
    return true;
}

bool PullDialogue::waitscan() {
    while (platform_.port.InBufferCount() == 0) {
        platform_.events.DoEvents();
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
    if (line == "ACK" || line.size() < kRecordLength) return;
    takeRecord(line);
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

// A record that begins with a control character below 10 (TAB among them) holds its
// columns one place further right.
void PullDialogue::takeRecord(std::string_view line) {
    std::string& data = state_.ReceivedData;
    const auto append = [&](std::string_view code, std::string_view quantity) {
        data.append(code).append("\r").append(quantity).append("\r\n");
    };
    if (static_cast<unsigned char>(line.front()) < 10) {
        append(column(line, 2, kCodeLength), column(line, 23, kQuantityLength));
        return;
    }
    const std::string_view trimmed = trimBlanks(line);
    if (trimmed.starts_with(';'))
        append(std::string(kCodeLength, ' '), std::string(kQuantityLength, ' '));
    else
        append(column(trimmed, 1, kCodeLength), column(trimmed, 22, kQuantityLength));
}

}  // namespace kalvo
