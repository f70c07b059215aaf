#include "platform/sqlite/schema.h"

#include <string>
#include <system_error>

#include "platform/sqlite/database_path.h"
#include "platform/sqlite/file_placement.h"
#include "platform/sqlite/temporary_file.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Numbers are INTEGER so that '3' comes back as 3; the index serves the queries for
// one step, which otherwise read every step of every scenario. Renumbering sets most
// steps to the number they have: the trigger keeps such an UPDATE from writing, and
// waiting for the disk, thousands of times. It compares bytes, since a change of case
// is a change.
constexpr const char* kSchema = R"sql(
CREATE TABLE Scenarios (
    Numero   INTEGER UNIQUE,
    Nom      TEXT COLLATE ANSI1252_NOCASE,
    Type     TEXT COLLATE ANSI1252_NOCASE,
    Trame    INTEGER,
    Specif   INTEGER,
    Chemin   TEXT COLLATE ANSI1252_NOCASE,
    Boucle   INTEGER,
    Depart   INTEGER,
    NbrTrame INTEGER
);
CREATE TABLE Actions (
    NumeroScen INTEGER,
    NumAction  INTEGER,
    Champs     TEXT COLLATE ANSI1252_NOCASE,
    PlaceTrame INTEGER
);
CREATE TABLE Increment (
    NunInc INTEGER
);
CREATE INDEX ActionsByNumber ON Actions (NumeroScen, NumAction);
CREATE TRIGGER ActionsUnchanged BEFORE UPDATE ON Actions
WHEN NEW.NumeroScen IS OLD.NumeroScen AND NEW.NumAction IS OLD.NumAction
    AND NEW.Champs IS OLD.Champs COLLATE BINARY AND NEW.PlaceTrame IS OLD.PlaceTrame
BEGIN
    SELECT RAISE(IGNORE);
END;
PRAGMA user_version = 1;
)sql";

}  // namespace

void buildScenarioDatabase(const std::filesystem::path& file,
                           const std::function<void(SqliteConnection&)>& fill) {
    SqliteConnection connection = SqliteConnection::create(file);
    connection.run("BEGIN");
    connection.run(kSchema);
    fill(connection);
    connection.run("COMMIT");
}

void createScenarioDatabase(const std::filesystem::path& file,
                            const std::function<void(SqliteConnection&)>& fill) {
    const auto exists = [&] {
        return RuntimeError(error_number::kFileExists,
                            std::string("Le fichier existe déjà : « "_ansi)
                                .append(shownName(file))
                                .append(" »."_ansi));
    };
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored)) throw exists();
    const TemporaryFile made(file);
    buildScenarioDatabase(made.path(), fill);
    // A journal whose database is gone would be played back into the new one.
    std::filesystem::remove(journalOf(file), ignored);
    if (!placeNewFile(made.path(), file)) throw exists();
}

void createScenarioDatabase(std::string_view path) {
    createScenarioDatabase(databaseFile(path), [](SqliteConnection& connection) {
        connection.run("INSERT INTO Increment (NunInc) VALUES (0)");
    });
}

}  // namespace kalvo
