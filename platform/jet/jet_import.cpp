#include "platform/jet/jet_import.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "platform/jet/jet_signature.h"
#include "platform/jet/jet_tables.h"
#include "platform/sqlite/database_path.h"
#include "platform/sqlite/file_placement.h"
#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_error.h"
#include "platform/sqlite/temporary_file.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

namespace fs = std::filesystem;

std::string insertStatement(const TableDescription& table) {
    std::string columns;
    std::string parameters;
    for (const std::string_view column : table.columns) {
        columns.append(columns.empty() ? "" : ",").append(column);
        parameters.append(parameters.empty() ? "?" : ",?");
    }
    return std::string("INSERT INTO ")
        .append(table.name)
        .append(" (" + columns + ") VALUES (" + parameters + ")");
}

void insertRows(SqliteConnection& connection, const TableDescription& table,
                const std::vector<JetRow>& rows) {
    const std::string sql = insertStatement(table);
    SqliteStatement insert(connection, sql, sql);
    for (const JetRow& row : rows) {
        int index = 0;
        for (const JetValue& value : row) {
            ++index;
            if (value)
                insert.bindText(index, *value);
            else
                insert.bindNull(index);
        }
        insert.step();
        insert.reset();
    }
}

void fillTables(SqliteConnection& connection, const JetTables& tables) {
    for (std::size_t i = 0; i < tables.size(); ++i)
        insertRows(connection, kScenarioTables[i], tables[i]);
    if (tables[kIncrement].empty()) connection.run("INSERT INTO Increment (NunInc) VALUES (0)");
}

bool holdsScenarios(const SqliteConnection& connection) {
    const std::string sql = "SELECT 1 FROM Scenarios UNION ALL SELECT 1 FROM Actions LIMIT 1";
    return SqliteStatement(connection, sql, sql).step();
}

// Every scenario is there under its number and name; what was changed since is the user's.
bool holdsAll(const SqliteConnection& connection, const JetTables& tables) {
    const auto placeOf = [](std::string_view column) {
        const auto& columns = kScenarioTables[kScenarios].columns;
        return static_cast<std::size_t>(std::find(columns.begin(), columns.end(), column) -
                                        columns.begin());
    };
    const std::size_t number = placeOf("Numero");
    const std::size_t name = placeOf("Nom");
    const std::string sql = "SELECT 1 FROM Scenarios WHERE Numero=?1 AND Nom IS ?2";
    SqliteStatement scenario(connection, sql, sql);
    const auto bind = [&scenario](int index, const JetValue& value) {
        value ? scenario.bindText(index, *value) : scenario.bindNull(index);
    };
    return !tables[kScenarios].empty() &&
           std::all_of(tables[kScenarios].begin(), tables[kScenarios].end(),
                       [&](const JetRow& row) {
                           bind(1, row.at(number));
                           bind(2, row.at(name));
                           const bool found = scenario.step();
                           scenario.reset();
                           return found;
                       });
}

// False when an earlier import has brought them all.
bool fillExisting(const fs::path& file, const JetTables& tables) {
    SqliteConnection connection = SqliteConnection::open(file);
    connection.run("BEGIN IMMEDIATE");
    if (holdsScenarios(connection) && holdsAll(connection, tables)) return false;
    if (holdsScenarios(connection))
        throw RuntimeError(error_number::kFileExists,
                           std::string("La base « "_ansi)
                               .append(shownName(file))
                               .append(" » contient déjà des scénarios."_ansi));
    connection.run("DELETE FROM Increment");
    fillTables(connection, tables);
    connection.run("COMMIT");
    return true;
}

JetTables readSource(const fs::path& source) {
    std::error_code error;
    if (!fs::exists(source, error)) throw fileMissingError(shownName(source));
    return readJetTables(source);
}

JetImportReport reportOf(const JetTables& tables) {
    return {tables[kScenarios].size(), tables[kActions].size()};
}

bool sameContent(const fs::path& a, const fs::path& b) {
    std::ifstream left(a, std::ios::binary);
    std::ifstream right(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return left && right && std::equal(Bytes(left), Bytes(), Bytes(right), Bytes());
}

fs::path keptName(const fs::path& original, int number) {
    const std::string mark = number == 1 ? ".jet" : ".jet-" + std::to_string(number);
    fs::path kept = original.parent_path() / original.stem();
    kept += mark;
    kept += original.extension();
    return kept;
}

// A copy of the original under the first free name. One a run before this made,
// which then did not get to its end, is taken as it is.
fs::path keepCopy(const fs::path& original) {
    const TemporaryFile copy(original);
    std::error_code error;
    if (!fs::copy_file(original, copy.path(), error)) throw diskError(shownName(copy.path()));
    flushFile(copy.path());
    for (int number = 1;; ++number) {
        fs::path kept = keptName(original, number);
        if (placeNewFile(copy.path(), kept) || sameContent(original, kept)) return kept;
    }
}

}  // namespace

JetImportReport importJetDatabase(const fs::path& source, std::string_view target) {
    const JetTables tables = readSource(source);
    const fs::path file = databaseFile(target);
    std::error_code error;
    JetImportReport report = reportOf(tables);
    if (fs::exists(file, error))
        report.alreadyDone = !fillExisting(file, tables);
    else
        createScenarioDatabase(
            file, [&](SqliteConnection& connection) { fillTables(connection, tables); });
    return report;
}

std::optional<JetUpgrade> upgradeJetInPlace(std::string_view path) {
    const fs::path file = databaseFile(path);
    if (jetVersionOfFile(file) == JetVersion::kNone) return std::nullopt;
    const JetTables tables = readSource(file);
    const TemporaryFile made(file);
    buildScenarioDatabase(made.path(),
                          [&](SqliteConnection& connection) { fillTables(connection, tables); });
    const fs::path kept = keepCopy(file);
    // No journal can belong to a Jet file, but it would be played back into the new one.
    std::error_code ignored;
    fs::remove(journalOf(file), ignored);
    replaceFile(made.path(), file);
    return JetUpgrade{reportOf(tables), shownName(kept)};
}

}  // namespace kalvo
