#include "platform/sqlite/journal_database.h"

#include <algorithm>
#include <system_error>

#include "platform/sqlite/database_path.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"
#include "text/search_text.h"

namespace kalvo {

namespace {

constexpr const char* kName = "Journal.db";

constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS Lots (
    Id INTEGER PRIMARY KEY AUTOINCREMENT,
    Recu TEXT, Port INTEGER, Terminal TEXT, Scenario TEXT, Etat TEXT,
    Enregistrements INTEGER, Passes INTEGER DEFAULT 0, Faites INTEGER DEFAULT 0,
    Motif TEXT, Taille INTEGER
);
CREATE TABLE IF NOT EXISTS Morceaux (Lot INTEGER, Octets BLOB);
CREATE INDEX IF NOT EXISTS MorceauxParLot ON Morceaux (Lot);
CREATE TABLE IF NOT EXISTS Flux (Numero INTEGER, Pris INTEGER);
INSERT INTO Flux SELECT 1, 0 WHERE NOT EXISTS (SELECT 1 FROM Flux);
)sql";

constexpr const char* kColumns =
    "SELECT Id,Recu,Port,Terminal,Scenario,Etat,Enregistrements,Passes,Faites,Motif,Taille "
    "FROM Lots ";

// Batches that are done; the others are forgotten for their age alone.
constexpr const char* kDone = "(Etat IN ('saisi','ecrit','ecarte'))";

std::string_view nameOf(BatchState state) {
    return kBatchStates.at(static_cast<std::size_t>(state));
}

std::string text(sqlite3_stmt* row, int column) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return bytes == nullptr ? std::string() : fromUtf8(bytes);
}

// Valid until the next row.
std::string_view blob(sqlite3_stmt* row, int column) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
    if (bytes == nullptr) return {};
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(row, column))};
}

JournalEntry entryOf(sqlite3_stmt* row) {
    JournalEntry entry;
    entry.id = sqlite3_column_int64(row, 0);
    entry.received = text(row, 1);
    entry.origin = {sqlite3_column_int(row, 2), text(row, 3), text(row, 4)};
    const auto* const state = std::find(kBatchStates.begin(), kBatchStates.end(), text(row, 5));
    entry.state = state == kBatchStates.end()
                      ? BatchState::kDiscarded
                      : static_cast<BatchState>(state - kBatchStates.begin());
    entry.records = sqlite3_column_int(row, 6);
    entry.passes = sqlite3_column_int(row, 7);
    entry.passesDone = sqlite3_column_int(row, 8);
    entry.reason = text(row, 9);
    entry.size = static_cast<std::uint64_t>(sqlite3_column_int64(row, 10));
    return entry;
}

std::unique_ptr<SqliteConnection> openJournal(const std::filesystem::path& file) {
    auto connection =
        std::make_unique<SqliteConnection>(SqliteConnection::openWithLog(file, kSchema));
    return connection;
}

}  // namespace

// Prepared once: a batch costs its commit and little else.
struct SqliteJournal::Statements {
    SqliteStatement begin;
    SqliteStatement commit;
    SqliteStatement rollback;
    SqliteStatement addBatch;
    SqliteStatement addPiece;
    SqliteStatement grow;
    SqliteStatement takeFlow;
    SqliteStatement update;

    explicit Statements(const SqliteConnection& connection)
        : begin(connection, "BEGIN IMMEDIATE", {}),
          commit(connection, "COMMIT", {}),
          rollback(connection, "ROLLBACK", {}),
          addBatch(connection,
                   "INSERT INTO Lots (Recu,Port,Terminal,Scenario,Etat,Enregistrements,Motif,"
                   "Taille) VALUES (?1,?2,?3,?4,?5,?6,?7,?8)",
                   {}),
          addPiece(connection, "INSERT INTO Morceaux (Lot,Octets) VALUES (?1,?2)", {}),
          grow(connection,
               "UPDATE Lots SET Taille=Taille+?2,Enregistrements=Enregistrements+?3 WHERE Id=?1",
               {}),
          takeFlow(connection, "UPDATE Flux SET Numero=?1,Pris=?2", {}),
          update(connection, "UPDATE Lots SET Etat=?2,Passes=?3,Faites=?4,Motif=?5 WHERE Id=?1",
                 {}) {}
};

SqliteJournal::SqliteJournal(std::string_view applicationFolder, Use use)
    : file_(databaseFile(applicationFolder) / kName) {
    try {
        connection_ = openJournal(file_);
    } catch (const RuntimeError& error) {
        if (error.number() != error_number::kDataFormat) throw;
        std::filesystem::path aside;
        std::error_code ignored;
        for (int number = 1; aside.empty() || std::filesystem::exists(aside, ignored); ++number)
            aside = file_.parent_path() / ("Journal-abime-" + std::to_string(number) + ".db");
        std::filesystem::rename(file_, aside, ignored);
        for (const char* companion : {"-wal", "-shm"})
            std::filesystem::remove(std::filesystem::path(file_) += companion, ignored);
        notice_ = std::string("Le journal des lots était abîmé ; il est gardé sous "_ansi) +
                  shownName(aside) + ".";
        connection_ = openJournal(file_);
    }
    statements_ = std::make_unique<Statements>(*connection_);
    if (use == Use::kReceive) openFlow();
}

SqliteJournal::~SqliteJournal() = default;

std::filesystem::path SqliteJournal::flowFile() const {
    return std::filesystem::path(file_) += "-flux-" + std::to_string(flowNumber_);
}

// The number in the database tells the file; one with another number was about to be
// begun, or given up, when a run before ended.
void SqliteJournal::openFlow() {
    SqliteStatement row(*connection_, "SELECT Numero,Pris FROM Flux", {});
    std::uint64_t taken = 0;
    if (row.step()) {
        flowNumber_ = sqlite3_column_int64(row.handle(), 0);
        taken = static_cast<std::uint64_t>(sqlite3_column_int64(row.handle(), 1));
    }
    std::error_code ignored;
    for (const std::int64_t other : {flowNumber_ - 1, flowNumber_ + 1})
        std::filesystem::remove(std::filesystem::path(file_) += "-flux-" + std::to_string(other),
                                ignored);
    flow_ = std::make_unique<ReceptionFlow>(flowFile(), taken);
}

// One transaction, on the disk when this returns.
template <typename Steps>
void SqliteJournal::durably(Steps&& steps) {
    connection_->run("PRAGMA synchronous=FULL");
    statements_->begin.run();
    try {
        steps();
        statements_->commit.run();
    } catch (const RuntimeError&) {
        if (sqlite3_get_autocommit(connection_->handle()) == 0) statements_->rollback.run();
        throw;
    }
}

std::int64_t SqliteJournal::append(const NewBatch& batch, std::string_view bytes,
                                   std::uint64_t flowTaken) {
    std::int64_t id = 0;
    durably([&] {
        statements_->addBatch.run(batch.received, batch.origin.port, batch.origin.terminal,
                                  batch.origin.scenario, nameOf(batch.state), batch.records,
                                  batch.reason, static_cast<std::int64_t>(bytes.size()));
        id = sqlite3_last_insert_rowid(connection_->handle());
        addPiece(id, bytes);
        if (flow_ != nullptr && flowTaken > 0)
            statements_->takeFlow.run(flowNumber_,
                                      static_cast<std::int64_t>(flow_->restAfter(flowTaken)));
    });
    if (flow_ != nullptr && flowTaken > 0) {
        flow_->take(flowTaken);
        if (flow_->spent()) beginFlowAnew();
    }
    return id;
}

void SqliteJournal::addPiece(std::int64_t id, std::string_view bytes) {
    statements_->addPiece.bind(1, id);
    statements_->addPiece.bindBytes(2, bytes);
    statements_->addPiece.runBound();
}

void SqliteJournal::beginFlowAnew() {
    ++flowNumber_;
    flow_->beginAnew(flowFile(), [this] {
        durably([this] { statements_->takeFlow.run(flowNumber_, std::int64_t{0}); });
    });
}

void SqliteJournal::extend(std::int64_t id, std::string_view bytes, std::int32_t records) {
    durably([&] {
        addPiece(id, bytes);
        statements_->grow.run(id, static_cast<std::int64_t>(bytes.size()), records);
    });
}

void SqliteJournal::update(std::int64_t id, BatchState state, std::int32_t passes,
                           std::int32_t passesDone, std::string_view reason) {
    connection_->run("PRAGMA synchronous=NORMAL");
    statements_->update.run(id, nameOf(state), passes, passesDone, reason);
}

void SqliteJournal::keepFlow(std::string_view bytes) noexcept {
    if (flow_ != nullptr) flow_->keep(bytes);
}

void SqliteJournal::forgetFlow(std::uint64_t taken) {
    if (flow_ == nullptr || taken == 0) return;
    flow_->take(taken);
    connection_->run("PRAGMA synchronous=NORMAL");
    statements_->takeFlow.run(flowNumber_, static_cast<std::int64_t>(flow_->restAfter(0)));
}

std::string SqliteJournal::earlierFlow() {
    return flow_ == nullptr ? std::string() : flow_->earlier();
}

std::string SqliteJournal::latestFlow(std::uint64_t bytes) {
    return flow_ == nullptr ? std::string() : flow_->latest(bytes);
}

void SqliteJournal::dropLatestFlow(std::uint64_t bytes) {
    if (flow_ != nullptr) flow_->dropLatest(bytes);
}

std::vector<JournalEntry> SqliteJournal::list(std::size_t most) {
    SqliteStatement rows(*connection_,
                         std::string(kColumns) + "ORDER BY Id DESC" +
                             (most == 0 ? "" : " LIMIT " + std::to_string(most)),
                         {});
    std::vector<JournalEntry> entries;
    while (rows.step()) entries.push_back(entryOf(rows.handle()));
    return entries;
}

std::size_t SqliteJournal::countUnfinished() {
    SqliteStatement count(*connection_, std::string("SELECT COUNT(*) FROM Lots WHERE NOT ") + kDone,
                          {});
    count.step();
    return static_cast<std::size_t>(sqlite3_column_int64(count.handle(), 0));
}

std::optional<JournalEntry> SqliteJournal::find(std::int64_t id) {
    SqliteStatement row(*connection_, std::string(kColumns) + "WHERE Id=?1", {});
    row.bind(1, id);
    if (!row.step()) return std::nullopt;
    return entryOf(row.handle());
}

std::string SqliteJournal::bytes(std::int64_t id) {
    SqliteStatement rows(*connection_, "SELECT Octets FROM Morceaux WHERE Lot=?1 ORDER BY rowid",
                         {});
    rows.bind(1, id);
    std::string bytes;
    while (rows.step()) bytes += blob(rows.handle(), 0);
    return bytes;
}

std::vector<std::int64_t> SqliteJournal::containing(std::string_view text) {
    SqliteStatement rows(*connection_, "SELECT Lot,Octets FROM Morceaux", {});
    std::vector<std::int64_t> ids;
    while (rows.step())
        if (containsLoosely(blob(rows.handle(), 1), text))
            ids.push_back(sqlite3_column_int64(rows.handle(), 0));
    return ids;
}

std::size_t SqliteJournal::purge(std::string_view before, std::uint64_t mostBytes) {
    std::size_t forgotten = 0;
    durably([&] {
        // The running sum from the newest on: what goes beyond the limit goes.
        SqliteStatement tooMuch(
            *connection_,
            std::string("DELETE FROM Lots WHERE Recu<?1 OR (") + kDone +
                " AND Id IN (SELECT Id FROM (SELECT Id,SUM(Taille) OVER (ORDER BY Id DESC) AS "
                "Somme FROM Lots) WHERE Somme>?2))",
            {});
        tooMuch.bind(1, before);
        tooMuch.bind(2, static_cast<std::int64_t>(mostBytes));
        tooMuch.runBound();
        forgotten = static_cast<std::size_t>(sqlite3_changes(connection_->handle()));
        SqliteStatement(*connection_, "DELETE FROM Morceaux WHERE Lot NOT IN (SELECT Id FROM Lots)",
                        {})
            .runBound();
    });
    if (forgotten > 0) connection_->run("PRAGMA incremental_vacuum");
    return forgotten;
}

}  // namespace kalvo
