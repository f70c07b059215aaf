#include "tools/terminal_dialogue.h"

#include <algorithm>
#include <limits>

namespace kalvo {

namespace {

constexpr std::string_view kBatchEnd = "FINTRANSKALVO";
constexpr std::string_view kConnectionText = "PT630\xFF";
constexpr std::string_view kEmptyBatch = "<DEL>\r\n";
constexpr std::string_view kTransferEnd = "OVER\r";
constexpr std::string_view kAckLine = "ACK\r";
constexpr std::int64_t kLongestRead = 1000;

// What ends a line on the wire: CR for a polled one, the last CR LF of a batch.
std::size_t contentSize(std::string_view line) {
    const auto last = line.find_last_not_of("\r\n");
    return last == std::string_view::npos ? 0 : last + 1;
}

}  // namespace

void TerminalDialogue::run(const std::vector<TerminalRecord>& records) {
    const bool polled = isPolled(options_.kind);
    std::vector<std::string> lines;
    lines.reserve(records.size());
    for (const TerminalRecord& record : records)
        lines.push_back(polled ? encodePolledRecord(record, options_.tabbed) + "\r"
                               : encodeBatchRecord(record));
    for (int batch = 0; batch < options_.batches; ++batch) {
        line_.pause(options_.waitMilliseconds);
        if (polled)
            sendWhenPolled(lines);
        else
            sendBatch(lines);
    }
}

void TerminalDialogue::sendBatch(const std::vector<std::string>& lines) {
    if (options_.announceConnection) return line_.write(kConnectionText);
    if (options_.emptyBatch) return line_.write(kEmptyBatch);
    int number = 0;
    for (const std::string& line : lines) {
        line_.write(firstForm(line, ++number));
        delivered_(number);
    }
    if (options_.kind == TerminalKind::kHt630) line_.write(kBatchEnd);
}

void TerminalDialogue::sendWhenPolled(const std::vector<std::string>& lines) {
    if (!waitForLine("READ", options_.readTimeout))
        throw DialogueFailure("la commande READ n'est pas arrivée");
    if (options_.answersRead) line_.write(kAckLine);
    int number = 0;
    for (const std::string& line : lines) deliver(line, ++number);
    line_.write(kTransferEnd);
    if (options_.kind == TerminalKind::kScanPal) line_.write(kTransferEnd);
}

void TerminalDialogue::deliver(const std::string& line, int number) {
    for (int attempt = 0; attempt <= options_.resends; ++attempt) {
        line_.write(attempt == 0 ? firstForm(line, number) : line);
        bool acknowledged = waitForLine("ACK", options_.ackTimeout);
        if (acknowledged && ++acks_ == options_.lostAck)
            acknowledged = waitForLine("ACK", options_.ackTimeout);
        if (!acknowledged) continue;
        return delivered_(number);
    }
    throw DialogueFailure("l'enregistrement " + std::to_string(number) +
                          " n'a pas été acquitté après " + std::to_string(options_.resends + 1) +
                          " envois");
}

std::string TerminalDialogue::firstForm(const std::string& line, int number) const {
    if (number != options_.cutRecord) return line;
    const std::size_t content = contentSize(line);
    return line.substr(0, content / 2) + line.substr(content);
}

bool TerminalDialogue::waitForLine(std::string_view expected, std::int64_t milliseconds) {
    const std::int64_t deadline =
        milliseconds == 0 ? std::numeric_limits<std::int64_t>::max() : line_.now() + milliseconds;
    for (;;) {
        while (const auto line = takeLine())
            if (*line == expected) return true;
        const std::int64_t left = deadline - line_.now();
        if (left <= 0) return false;
        received_ += line_.read(std::min(left, kLongestRead));
    }
}

std::optional<std::string> TerminalDialogue::takeLine() {
    const auto end = received_.find('\r');
    if (end == std::string::npos) return std::nullopt;
    std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    line.erase(std::remove(line.begin(), line.end(), '\n'), line.end());
    return line;
}

}  // namespace kalvo
