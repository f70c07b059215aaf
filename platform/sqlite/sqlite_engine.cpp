#include "platform/sqlite/sqlite_engine.h"

#include <algorithm>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/sqlite/database_path.h"
#include "platform/sqlite/file_placement.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/statement_text.h"
#include "platform/sqlite/temporary_file.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

using Row = std::vector<DatabaseValue>;

RuntimeError noCurrentRow() {
    return {error_number::kDataNoCurrentRow, std::string("Aucun enregistrement en cours."_ansi)};
}

class Snapshot : public Recordset {
public:
    Snapshot(std::vector<std::string> columns, std::vector<Row> rows)
        : columns_(std::move(columns)), rows_(std::move(rows)) {}

    [[nodiscard]] bool Eof() const override { return current_ >= rows_.size(); }

    [[nodiscard]] DatabaseValue Fields(std::string_view name) const override {
        const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const auto& known) {
            return equalIgnoringCase(known, name);
        });
        if (column == columns_.end())
            throw RuntimeError(
                error_number::kDataUnknownColumn,
                std::string("Colonne inconnue dans ce jeu d'enregistrements : « "_ansi)
                    .append(name)
                    .append(" »."_ansi));
        if (Eof()) throw noCurrentRow();
        return rows_[current_][static_cast<std::size_t>(column - columns_.begin())];
    }

    void MoveNext() override {
        if (Eof()) throw noCurrentRow();
        ++current_;
    }

    void Close() override { rows_.clear(); }

private:
    std::vector<std::string> columns_;
    std::vector<Row> rows_;
    std::size_t current_ = 0;
};

DatabaseValue columnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL: return std::monostate{};
        case SQLITE_INTEGER:
            return static_cast<std::int64_t>(sqlite3_column_int64(statement, column));
        case SQLITE_FLOAT: return sqlite3_column_double(statement, column);
        default: break;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    if (text == nullptr) return std::string{};
    return fromUtf8({text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))});
}

std::unique_ptr<Recordset> takeRows(SqliteStatement& statement) {
    std::vector<std::string> columns;
    const int count = sqlite3_column_count(statement.handle());
    columns.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        columns.push_back(fromUtf8(sqlite3_column_name(statement.handle(), i)));
    std::vector<Row> rows;
    while (statement.step()) {
        Row row;
        row.reserve(columns.size());
        for (int i = 0; i < count; ++i) row.push_back(columnValue(statement.handle(), i));
        rows.push_back(std::move(row));
    }
    return std::make_unique<Snapshot>(std::move(columns), std::move(rows));
}

class SqliteDatabase : public Database {
public:
    explicit SqliteDatabase(SqliteConnection connection) : connection_(std::move(connection)) {
        connection_.restrictStatements();
    }

    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        SqliteStatement statement = prepare(sql);
        if (!isQuery(statement))
            throw RuntimeError(error_number::kDataInvalidOperation,
                               std::string("Opération non valide : cette instruction ne rend pas "
                                           "d'enregistrements."_ansi));
        return takeRows(statement);
    }

    void Execute(std::string_view sql) override {
        SqliteStatement statement = prepare(sql);
        if (isQuery(statement))
            throw RuntimeError(error_number::kDataSelectExecuted,
                               std::string("Impossible d'exécuter une requête Sélection."_ansi));
        while (statement.step()) {
        }
    }

    void Transaction(const std::function<void()>& statements) override {
        // What the system itself may do, its statements may not.
        sqlite3_set_authorizer(connection_.handle(), nullptr, nullptr);
        try {
            connection_.run("BEGIN IMMEDIATE");
            connection_.restrictStatements();
            statements();
            sqlite3_set_authorizer(connection_.handle(), nullptr, nullptr);
            connection_.run("COMMIT");
        } catch (const RuntimeError&) {
            sqlite3_set_authorizer(connection_.handle(), nullptr, nullptr);
            // A full disk has ended it by itself.
            if (sqlite3_get_autocommit(connection_.handle()) == 0) connection_.run("ROLLBACK");
            connection_.restrictStatements();
            throw;
        }
        connection_.restrictStatements();
    }

private:
    SqliteStatement prepare(std::string_view sql) {
        SqliteStatement statement(connection_, engineStatement(sql), sql);
        if (sqlite3_bind_parameter_count(statement.handle()) != 0)
            throw RuntimeError(error_number::kDataMissingParameter,
                               std::string("Trop peu de paramètres dans l'instruction « "_ansi)
                                   .append(sql)
                                   .append(" »."_ansi));
        return statement;
    }

    static bool isQuery(const SqliteStatement& statement) {
        return sqlite3_stmt_readonly(statement.handle()) != 0 &&
               sqlite3_column_count(statement.handle()) > 0;
    }

    SqliteConnection connection_;
};

}  // namespace

std::unique_ptr<Database> SqliteEngine::OpenDatabase(std::string_view path) {
    return std::make_unique<SqliteDatabase>(SqliteConnection::open(databaseFile(path)));
}

void SqliteEngine::CompactDatabase(std::string_view from, std::string_view to) {
    const std::filesystem::path target = databaseFile(to);
    const TemporaryFile made(target);
    {
        const SqliteConnection source = SqliteConnection::open(databaseFile(from));
        SqliteStatement copy(source, "VACUUM INTO ?1", {});
        copy.bindText(1, engineName(made.path()));
        copy.runBound();
    }
    flushFile(made.path());
    // A journal whose database is gone would be played back into the new one.
    std::error_code ignored;
    std::filesystem::remove(journalOf(target), ignored);
    replaceFile(made.path(), target);
}

}  // namespace kalvo
