// The journal of batches as an SQLite file of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/journal_file.h"
#include "platform/sqlite/reception_flow.h"
#include "platform/sqlite/sqlite_connection.h"

namespace kalvo {

// "Journal.db" in an application folder (code page 1252), readable by its owner only:
//
//   Lots      one row a batch: time, origin, state, records, passes, reason, size
//   Morceaux  its bytes, in as many pieces as it came in
//   Flux      one row: the number of the flow's file, and how much of it batches have
//
// and beside it the flow's file, "Journal.db-flux-N". Write-ahead log; what append and
// extend return from is on the disk. Several processes may use the file at once; one of
// them receives.
class SqliteJournal : public JournalFile {
public:
    enum class Use {
        kReceive,  // has the flow, too
        kLook,     // beside a program that receives
    };

    // Opens the file, or makes it. One that is damaged is put aside, which notice() tells,
    // and another begun. RuntimeErrors 3051 and 3043 when none can be had.
    SqliteJournal(std::string_view applicationFolder, Use use);
    ~SqliteJournal() override;

    // What the user should know of the opening, in French; empty as a rule.
    [[nodiscard]] const std::string& notice() const { return notice_; }

    std::int64_t append(const NewBatch& batch, std::string_view bytes,
                        std::uint64_t flowTaken) override;
    void extend(std::int64_t id, std::string_view bytes, std::int32_t records) override;
    void update(std::int64_t id, BatchState state, std::int32_t passes, std::int32_t passesDone,
                std::string_view reason) override;
    void keepFlow(std::string_view bytes) noexcept override;
    void forgetFlow(std::uint64_t taken) override;
    [[nodiscard]] std::string earlierFlow() override;
    [[nodiscard]] std::string latestFlow(std::uint64_t bytes) override;
    void dropLatestFlow(std::uint64_t bytes) override;
    [[nodiscard]] std::vector<JournalEntry> list(std::size_t most) override;
    [[nodiscard]] std::size_t countUnfinished() override;
    [[nodiscard]] std::optional<JournalEntry> find(std::int64_t id) override;
    [[nodiscard]] std::string bytes(std::int64_t id) override;
    [[nodiscard]] std::vector<std::int64_t> containing(std::string_view text) override;
    std::size_t purge(std::string_view before, std::uint64_t mostBytes) override;

private:
    struct Statements;

    [[nodiscard]] std::filesystem::path flowFile() const;
    void openFlow();
    void addPiece(std::int64_t id, std::string_view bytes);
    void beginFlowAnew();
    template <typename Steps>
    void durably(Steps&& steps);

    std::filesystem::path file_;
    std::string notice_;
    std::unique_ptr<SqliteConnection> connection_;
    std::unique_ptr<Statements> statements_;
    std::unique_ptr<ReceptionFlow> flow_;
    std::int64_t flowNumber_ = 1;
};

}  // namespace kalvo
