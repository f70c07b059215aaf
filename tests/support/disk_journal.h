// The journal on its real file, on a disk that can be full or damaged.
#pragma once

#include <string>
#include <vector>

#include "journal/batch_journal.h"
#include "platform/sqlite/journal_database.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

class DiskJournal : public SqliteJournal {
public:
    bool diskFull = false;
    bool damaged = false;

    explicit DiskJournal(const std::string& folder) : SqliteJournal(folder, Use::kReceive) {}
    std::int64_t append(const NewBatch& batch, std::string_view bytes,
                        std::uint64_t flowTaken) override {
        work();
        return SqliteJournal::append(batch, bytes, flowTaken);
    }
    void update(std::int64_t id, BatchState state, std::int32_t passes, std::int32_t passesDone,
                std::string_view reason) override {
        work();
        SqliteJournal::update(id, state, passes, passesDone, reason);
    }

    std::vector<JournalEntry> list(std::size_t most) override {
        if (damaged) throw RuntimeError(error_number::kDataFormat, "damaged");
        return SqliteJournal::list(most);
    }

    // The states and bytes of all batches, in the order of their arrival.
    [[nodiscard]] std::vector<std::string> kept() {
        std::vector<std::string> all;
        for (const JournalEntry& entry : list(0))
            all.insert(all.begin(), std::string(nameOf(entry.state)) + " " + bytes(entry.id));
        return all;
    }

private:
    void work() const {
        if (diskFull) throw RuntimeError(error_number::kDiskFull, "plein");
    }
};

}  // namespace kalvo::testing
