// The batches of the journal as a list that can be searched.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/journal_file.h"

namespace kalvo {

// What becomes of a batch in the words of users (code page 1252), by BatchState.
[[nodiscard]] std::string_view wordFor(BatchState state);

// The columns of the list.
enum class BatchColumn { kNumber, kTime, kPort, kTerminal, kScenario, kRecords, kState, kReason };
inline constexpr int kBatchColumns = 8;

// The heading of a column, and a batch in it.
[[nodiscard]] std::string_view headingOf(BatchColumn column);
[[nodiscard]] std::string cellOf(const JournalEntry& entry, BatchColumn column);

// Which batches are shown.
struct BatchFilter {
    // In any column or within what was received, whatever its case and accents.
    std::string text;
    std::optional<BatchState> state;
};

class BatchList {
public:
    // Without a journal the list stays empty.
    explicit BatchList(JournalFile* journal) : journal_(journal) {}

    // Reads the journal again; RuntimeErrors of the data engine.
    void refresh();
    void setFilter(BatchFilter filter);

    // The latest first.
    [[nodiscard]] const std::vector<JournalEntry>& rows() const { return rows_; }
    // The row of a batch; -1 when it is not shown.
    [[nodiscard]] int rowOf(std::int64_t id) const;

private:
    JournalFile* journal_;
    BatchFilter filter_;
    std::vector<JournalEntry> rows_;
};

}  // namespace kalvo
