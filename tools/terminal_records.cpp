#include "tools/terminal_records.h"

#include <array>
#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::size_t kCodeWidth = 20;
constexpr std::size_t kQuantityWidth = 6;
constexpr std::size_t kPolledWidth = 28;

constexpr std::array<std::pair<std::string_view, TerminalKind>, 4> kKinds = {{
    {"HT630", TerminalKind::kHt630},
    {"PT630", TerminalKind::kPt630},
    {"Optimus", TerminalKind::kOptimus},
    {"ScanPal", TerminalKind::kScanPal},
}};

TerminalRecord splitFields(std::string_view line, char separator) {
    TerminalRecord fields;
    for (;;) {
        const auto end = line.find(separator);
        fields.emplace_back(line.substr(0, end));
        if (end == std::string_view::npos) return fields;
        line.remove_prefix(end + 1);
    }
}

std::string padded(const std::string& text, std::size_t width, const char* name) {
    if (text.size() > width)
        throw std::length_error(std::string(name) + " de plus de " + std::to_string(width) +
                                " caractères : " + text);
    return text + std::string(width - text.size(), ' ');
}

}  // namespace

TerminalKind terminalKindOf(std::string_view name) {
    for (const auto& [text, kind] : kKinds)
        if (equalIgnoringCase(text, name)) return kind;
    throw std::invalid_argument("type de terminal inconnu : " + std::string(name));
}

bool isPolled(TerminalKind kind) {
    return kind == TerminalKind::kOptimus || kind == TerminalKind::kScanPal;
}

std::vector<TerminalRecord> parseRecords(std::string_view text, char separator) {
    std::vector<TerminalRecord> records;
    while (!text.empty()) {
        const auto end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (!line.empty()) records.push_back(splitFields(line, separator));
    }
    return records;
}

std::string encodeBatchRecord(const TerminalRecord& record) {
    std::string bytes;
    for (const std::string& field : record) bytes.append(field).push_back('\r');
    bytes.push_back('\n');
    return bytes;
}

std::string encodePolledRecord(const TerminalRecord& record, bool tabbed) {
    if (record.empty() || record.size() > 2)
        throw std::length_error(
            "un enregistrement Optimus ou ScanPal a un code et une quantité, pas " +
            std::to_string(record.size()) + " champs");
    const std::string quantity = record.size() > 1 ? record[1] : std::string();
    std::string line = tabbed ? "\t" : "";
    line +=
        padded(record[0], kCodeWidth, "code") + " " + padded(quantity, kQuantityWidth, "quantité");
    line.resize(kPolledWidth, ' ');
    return line;
}

}  // namespace kalvo
