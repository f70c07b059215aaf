#include "platform/sqlite/sqlite_connection.h"

#include <fstream>
#include <system_error>

#include "platform/sqlite/database_path.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/text_functions.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Long enough for another program's write, short enough for a user who waits.
constexpr int kBusyTimeoutMs = 2000;

// Setting the journal mode reads the file's first page, which is what finds out whether
// it is a database. EXTRA goes beyond FULL in one point: the folder is flushed after the
// rollback journal has been removed, so that a power cut cannot bring the journal back
// and undo what was confirmed.
constexpr const char* kRollbackJournal =
    "PRAGMA synchronous=EXTRA; PRAGMA cell_size_check=ON; PRAGMA journal_mode=DELETE;"
    "SELECT 1 FROM sqlite_master LIMIT 1";
constexpr const char* kWriteAheadLog =
    "PRAGMA auto_vacuum=INCREMENTAL; PRAGMA cell_size_check=ON; PRAGMA journal_mode=WAL;"
    "PRAGMA synchronous=FULL; SELECT 1 FROM sqlite_master LIMIT 1";

int refuseSettings(void* /*context*/, int action, const char* /*first*/, const char* /*second*/,
                   const char* /*database*/, const char* /*trigger*/) {
    switch (action) {
        case SQLITE_ATTACH:
        case SQLITE_DETACH:
        case SQLITE_PRAGMA:
        case SQLITE_SAVEPOINT:
        case SQLITE_TRANSACTION: return SQLITE_DENY;
        default: return SQLITE_OK;
    }
}

}  // namespace

SqliteConnection SqliteConnection::open(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) throw fileMissingError(shownName(file));
    // The engine would take an empty file for a database without tables.
    if (!std::filesystem::is_regular_file(file, error) ||
        std::filesystem::file_size(file, error) == 0)
        throw formatError(shownName(file));
    return {file, SQLITE_OPEN_READWRITE, kRollbackJournal};
}

SqliteConnection SqliteConnection::create(const std::filesystem::path& file) {
    return {file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, kRollbackJournal};
}

// The log and its index take their permissions from the file.
SqliteConnection SqliteConnection::openWithLog(const std::filesystem::path& file,
                                               const char* schema) {
    using std::filesystem::perms;
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        std::ofstream created(file, std::ios::app);
        std::filesystem::permissions(file, perms::owner_read | perms::owner_write, error);
    }
    SqliteConnection connection(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, kWriteAheadLog);
    connection.run(schema);
    return connection;
}

SqliteConnection::SqliteConnection(const std::filesystem::path& file, int flags,
                                   const char* settings) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(engineName(file).c_str(), &handle, flags, nullptr);
    handle_.reset(handle);
    if (result == SQLITE_CANTOPEN)
        throw RuntimeError(error_number::kDataNoAccess,
                           std::string("Impossible d'ouvrir le fichier « "_ansi) + shownName(file) +
                               std::string(" »."_ansi));
    if (result != SQLITE_OK) throw engineError(handle_.get(), {});
    configure(settings);
}

void SqliteConnection::configure(const char* settings) {
    sqlite3_busy_timeout(handle(), kBusyTimeoutMs);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    if (registerTextFunctions(handle()) != SQLITE_OK) throw engineError(handle(), {});
    run(settings);
}

void SqliteConnection::run(const std::string& statements) {
    if (sqlite3_exec(handle(), statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw engineError(handle(), fromUtf8(statements));
}

void SqliteConnection::restrictStatements() {
    sqlite3_set_authorizer(handle(), refuseSettings, nullptr);
}

SqliteStatement::SqliteStatement(const SqliteConnection& connection, const std::string& sql,
                                 std::string_view shown)
    : connection_(connection.handle()), shown_(shown) {
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    const int result =
        sqlite3_prepare_v2(connection_, sql.data(), static_cast<int>(sql.size()), &handle, &tail);
    handle_.reset(handle);
    if (result != SQLITE_OK) throw engineError(connection_, shown_);
    const bool isWhole = tail == sql.data() + sql.size();
    if (handle == nullptr || !isWhole) throw syntaxError(shown_);
}

void SqliteStatement::bindText(int index, const std::string& utf8) {
    if (sqlite3_bind_text(handle(), index, utf8.data(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT) != SQLITE_OK)
        throw engineError(connection_, shown_);
}

void SqliteStatement::bindNull(int index) {
    if (sqlite3_bind_null(handle(), index) != SQLITE_OK) throw engineError(connection_, shown_);
}

void SqliteStatement::bind(int index, std::int64_t number) {
    if (sqlite3_bind_int64(handle(), index, number) != SQLITE_OK)
        throw engineError(connection_, shown_);
}

void SqliteStatement::bind(int index, std::string_view ansi) { bindText(index, toUtf8(ansi)); }

void SqliteStatement::bindBytes(int index, std::string_view bytes) {
    if (sqlite3_bind_blob64(handle(), index, bytes.data(), bytes.size(), SQLITE_TRANSIENT) !=
        SQLITE_OK)
        throw engineError(connection_, shown_);
}

void SqliteStatement::runBound() {
    try {
        while (step()) {
        }
    } catch (const RuntimeError&) {
        reset();
        throw;
    }
    reset();
}

bool SqliteStatement::step() {
    const int result = sqlite3_step(handle());
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    throw engineError(connection_, shown_);
}

void SqliteStatement::reset() { sqlite3_reset(handle()); }

}  // namespace kalvo
