// A journal in memory.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/journal_file.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

class FakeJournalFile : public JournalFile {
public:
    struct Kept {
        JournalEntry entry;
        std::string bytes;
    };
    std::vector<Kept> batches;
    std::string inFlow;
    bool diskFull = false;

    std::int64_t append(const NewBatch& batch, std::string_view bytes,
                        std::uint64_t flowTaken) override {
        work();
        JournalEntry entry;
        static_cast<NewBatch&>(entry) = batch;
        entry.id = static_cast<std::int64_t>(batches.size()) + 1;
        entry.size = bytes.size();
        batches.push_back({entry, std::string(bytes)});
        forgetFlow(flowTaken);
        return entry.id;
    }
    void extend(std::int64_t id, std::string_view record, std::int32_t) override {
        work();
        batches.at(static_cast<std::size_t>(id) - 1).bytes += record;
    }
    void update(std::int64_t id, BatchState state, std::int32_t passes, std::int32_t passesDone,
                std::string_view reason) override {
        work();
        JournalEntry& entry = batches.at(static_cast<std::size_t>(id) - 1).entry;
        entry.state = state;
        entry.passes = passes;
        entry.passesDone = passesDone;
        entry.reason = reason;
    }
    void keepFlow(std::string_view bytes) noexcept override { inFlow += bytes; }
    void forgetFlow(std::uint64_t taken) override { inFlow.erase(0, taken); }
    std::string earlierFlow() override { return {}; }
    std::string latestFlow(std::uint64_t bytes) override {
        return inFlow.substr(inFlow.size() - std::min<std::size_t>(bytes, inFlow.size()));
    }
    void dropLatestFlow(std::uint64_t bytes) override {
        inFlow.resize(inFlow.size() - std::min<std::size_t>(bytes, inFlow.size()));
    }
    std::vector<JournalEntry> list(std::size_t) override {
        std::vector<JournalEntry> entries;
        for (auto kept = batches.rbegin(); kept != batches.rend(); ++kept)
            entries.push_back(kept->entry);
        return entries;
    }
    std::size_t countUnfinished() override { return 0; }
    std::optional<JournalEntry> find(std::int64_t id) override {
        return batches.at(static_cast<std::size_t>(id) - 1).entry;
    }
    std::string bytes(std::int64_t id) override {
        return batches.at(static_cast<std::size_t>(id) - 1).bytes;
    }
    std::vector<std::int64_t> containing(std::string_view) override { return {}; }
    std::size_t purge(std::string_view, std::uint64_t) override { return 0; }

private:
    void work() const {
        if (diskFull) throw RuntimeError(error_number::kDiskFull, "plein");
    }
};

}  // namespace kalvo::testing
