#include "dashboard/batch_list.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

#include "text/ansi_text.h"
#include "text/search_text.h"

namespace kalvo {

namespace {

constexpr std::array<std::string_view, kBatchStates.size()> kWords = {
    "reçu"_ansi, "en cours", "saisi", "écrit"_ansi, "interrompu", "échec"_ansi, "écarté"_ansi};

constexpr std::array<std::string_view, kBatchColumns> kHeadings = {
    "Lot", "Reçu le"_ansi, "Port", "Terminal", "Scénario"_ansi, "Enreg.", "État"_ansi, "Motif"};

bool shows(const JournalEntry& entry, std::string_view text) {
    for (int column = 0; column < kBatchColumns; ++column)
        if (containsLoosely(cellOf(entry, static_cast<BatchColumn>(column)), text)) return true;
    return false;
}

// How much of a batch is done, where that is not all or nothing.
std::string progressOf(const JournalEntry& entry) {
    const bool partly =
        entry.state == BatchState::kTyping || entry.state == BatchState::kInterrupted;
    if (!partly) return std::to_string(entry.records);
    return std::to_string(entry.passesDone) + " sur " + std::to_string(entry.passes);
}

}  // namespace

std::string_view wordFor(BatchState state) { return kWords.at(static_cast<std::size_t>(state)); }

std::string_view headingOf(BatchColumn column) {
    return kHeadings.at(static_cast<std::size_t>(column));
}

std::string cellOf(const JournalEntry& entry, BatchColumn column) {
    switch (column) {
        case BatchColumn::kNumber: return std::to_string(entry.id);
        case BatchColumn::kTime: return entry.received;
        case BatchColumn::kPort:
            return entry.origin.port == 0 ? "" : "COM " + std::to_string(entry.origin.port);
        case BatchColumn::kTerminal: return entry.origin.terminal;
        case BatchColumn::kScenario: return entry.origin.scenario;
        case BatchColumn::kRecords: return progressOf(entry);
        case BatchColumn::kState: return std::string(wordFor(entry.state));
        case BatchColumn::kReason: break;
    }
    return entry.reason;
}

void BatchList::refresh() {
    rows_.clear();
    if (journal_ == nullptr) return;
    std::vector<JournalEntry> entries = journal_->list(0);
    std::set<std::int64_t> holding;
    if (!filter_.text.empty())
        for (const std::int64_t id : journal_->containing(filter_.text)) holding.insert(id);
    std::erase_if(entries, [&](const JournalEntry& entry) {
        if (filter_.state && entry.state != *filter_.state) return true;
        return !filter_.text.empty() && !holding.contains(entry.id) && !shows(entry, filter_.text);
    });
    rows_ = std::move(entries);
}

void BatchList::setFilter(BatchFilter filter) {
    filter_ = std::move(filter);
    refresh();
}

int BatchList::rowOf(std::int64_t id) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [id](const JournalEntry& entry) { return entry.id == id; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

}  // namespace kalvo
