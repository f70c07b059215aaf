// The records a simulated terminal holds, and their forms on the wire. Bytes pass as
// they stand, whatever their encoding.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

enum class TerminalKind { kHt630, kPt630, kOptimus, kScanPal };

// The kind named "HT630", "PT630", "Optimus" or "ScanPal" in any case.
// std::invalid_argument for another name.
[[nodiscard]] TerminalKind terminalKindOf(std::string_view name);

// Whether the terminal waits to be asked for its records.
[[nodiscard]] bool isPolled(TerminalKind kind);

using TerminalRecord = std::vector<std::string>;

// One record a line (LF or CR LF), its fields between separators; empty lines are
// skipped.
[[nodiscard]] std::vector<TerminalRecord> parseRecords(std::string_view text, char separator);

// A record of a batch: each field followed by CR, then LF.
[[nodiscard]] std::string encodeBatchRecord(const TerminalRecord& record);

// A record line of a polled scanner, 28 characters without its CR: code in columns 1
// to 20, quantity in columns 22 to 27, blanks elsewhere. `tabbed`: TAB first and both
// one column further right. std::length_error (French, UTF-8) when the record has
// more than these two fields or one is too long.
[[nodiscard]] std::string encodePolledRecord(const TerminalRecord& record, bool tabbed);

}  // namespace kalvo
