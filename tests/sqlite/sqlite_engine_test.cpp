// The scenario database on real files: the system's own statements, the errors they
// meet, and what survives.
#include "platform/sqlite/sqlite_engine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/sqlite/schema.h"
#include "scenario/scenario_store.h"
#include "tests/support/error_of.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using testing::errorOf;

struct ScenarioDatabase : ::testing::Test {
    testing::TemporaryFolder folder;
    std::string file = folder / "Scen.mdb";
    SqliteEngine engine;
    std::unique_ptr<Database> database;

    ScenarioDatabase() {
        createScenarioDatabase(file);
        database = engine.OpenDatabase(file);
    }

    void addScenario(std::int16_t numero, const std::string& name) const {
        ScenarioRecord record;
        record.Numero = numero;
        record.Nom = name;
        record.Type = "Emulation";
        insertScenario(*database, record);
    }
    // The first column named of every row.
    [[nodiscard]] std::string column(const std::string& sql, const char* name) const {
        std::string values;
        for (const auto rows = database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext())
            values += textField(*rows, name) + "|";
        return values;
    }
    [[nodiscard]] int executing(const std::string& sql) const {
        return errorOf([&] { database->Execute(sql); });
    }
    [[nodiscard]] int querying(const std::string& sql) const {
        return errorOf([&] { (void)database->OpenRecordset(sql); });
    }
};

TEST_F(ScenarioDatabase, AnEmptyOneHasThreeTablesAndOneCounterOfZero) {
    EXPECT_EQ(column("SELECT NunInc FROM Increment", "NunInc"), "0|");
    EXPECT_EQ(column("SELECT * FROM Scenarios", "Nom"), "");
    EXPECT_EQ(column("SELECT * FROM Actions", "Champs"), "");
    EXPECT_EQ(nextScenarioNumber(*database), 1);
    EXPECT_EQ(errorOf([&] { createScenarioDatabase(file); }), 58);
}

TEST_F(ScenarioDatabase, UnderstandsTheStatementsAsTheyAreWritten) {
    addScenario(2, "Stock");
    for (const char* text : {"&CODE", "-", "&QTY"}) insertAction(*database, 2, 3, {text, 0});
    updateAction(*database, 2, 3, "tous");  // "...NumAction=3AND NumeroScen=2"
    EXPECT_EQ(column("SELECT Champs FROM Actions WHERE NumAction=3AND NumeroScen=2", "CHAMPS"),
              "tous|tous|tous|");
    EXPECT_EQ(
        executing("UPDATE Actions SET NumAction=NumAction + 1 WHERE NumAction>2AND NumeroScen=2"),
        0);
    EXPECT_EQ(column("SELECT Numaction FROM Actions", "numaction"), "4|4|4|");
    EXPECT_EQ(executing("UPDATE Actions SET Champs='3AND 4' WHERE NumAction=4"), 0);
    EXPECT_EQ(column("SELECT Champs FROM Actions", "Champs"), "3AND 4|3AND 4|3AND 4|");
    renumberActions(*database, 2);
    EXPECT_EQ(column("SELECT NumAction FROM Actions", "NumAction"), "1|1|1|");
    updateBoucle(*database, 2, 5);
    updateDepart(*database, 2, 3);
    updateChemin(*database, 2, "C:\\lots -- à jour; /*\\l.txt"_ansi);
    const auto scenario = readScenario(*database, 2);
    ASSERT_TRUE(scenario);
    EXPECT_EQ(scenario->Boucle, 5);
    EXPECT_EQ(scenario->Depart, 3);
    EXPECT_EQ(scenario->Chemin, std::string("C:\\lots -- à jour; /*\\l.txt"_ansi));
    deleteScenario(*database, 2);
    EXPECT_EQ(column("SELECT * FROM Actions", "Champs"), "");
}

TEST_F(ScenarioDatabase, NumbersScenariosBehindTheLargestAndActionsInTheirOrder) {
    addScenario(41, "A");
    EXPECT_EQ(nextScenarioNumber(*database), 42);
    addScenario(32767, "B");
    EXPECT_EQ(errorOf([&] { (void)nextScenarioNumber(*database); }), error_number::kOverflow);
    for (const int number : {9, 2, 5})
        insertAction(*database, 41, number, {std::to_string(number), 0});
    database->Execute("INSERT INTO Actions (NumeroScen,NumAction,Champs) VALUES (41,Null,'n')");
    renumberActions(*database, 41);  // Null comes first and keeps its place
    EXPECT_EQ(column("SELECT Champs FROM Actions WHERE NumAction>0 ORDER BY NumAction", "Champs"),
              "2|5|9|");
}

TEST_F(ScenarioDatabase, ATransactionIsWholeOrNothing) {
    // What another program sees.
    const auto counter = [this] { return readCounter(*engine.OpenDatabase(file)); };
    database->Transaction([&] { writeCounter(*database, *readCounter(*database) + 5); });
    EXPECT_EQ(counter(), 5);
    EXPECT_EQ(errorOf([&] {
                  database->Transaction([&] {
                      writeCounter(*database, 9);
                      EXPECT_EQ(counter(), 5);
                      // Another program waits for its turn, in vain.
                      const auto other = engine.OpenDatabase(file);
                      EXPECT_EQ(errorOf([&] { other->Transaction([] {}); }),
                                error_number::kDataLocked);
                      EXPECT_EQ(errorOf([&] { other->Execute("PRAGMA user_version=9"); }),
                                error_number::kDataSyntax)
                          << "refused then, too";
                      throw RuntimeError(error_number::kDataDisk, "x");
                  });
              }),
              error_number::kDataDisk);
    EXPECT_EQ(counter(), 5);
    EXPECT_EQ(executing("PRAGMA user_version=9"), error_number::kDataSyntax) << "refused again";
    EXPECT_EQ(executing("UPDATE Increment SET NunInc=6"), 0);
    EXPECT_EQ(counter(), 6) << "kept at once, without a transaction";
}

TEST_F(ScenarioDatabase, NamesCompareWithoutRegardToCaseAccentsIncluded) {
    addScenario(1, std::string("Été à l’ŒUVRE"_ansi));
    EXPECT_EQ(findScenario(*database, "éTÉ À L’œuvre"_ansi), 1);
    EXPECT_EQ(findScenario(*database, "Ete a l’oeuvre"_ansi), std::nullopt);
}

TEST_F(ScenarioDatabase, RefusesWhatIsNoSingleStatementOfTheSystem) {
    for (const auto& [sql, number] :
         {std::pair{"UPDATE Increment SET NunInc=1; DELETE FROM Increment", 3075},
          {"UPDATE Increment SET NunInc=1;DELETE FROM Increment", 3075},
          {"UPDAT Increment SET NunInc=1", 3075},
          {"UPDATE Increment SET NunInc='1", 3075},
          {"UPDATE Increment SET Nombre=1", 3061},
          {"UPDATE Compteur SET NunInc=1", 3078},
          {"ATTACH 'x' AS y", 3075},
          {"PRAGMA journal_mode=OFF", 3075},
          {"BEGIN", 3075},
          {"SELECT NunInc FROM Increment", 3065},
          {"", 3075}}) {
        EXPECT_EQ(executing(sql), number) << sql;
    }
    EXPECT_EQ(querying("DELETE FROM Increment"), 3219);
    EXPECT_EQ(errorOf([&] { (void)findScenario(*database, "L'inventaire"); }), 3075);
    EXPECT_EQ(errorOf([&] { addScenario(1, "L'inventaire"); }), 3075);
    EXPECT_EQ(column("SELECT NunInc FROM Increment", "NunInc"), "0|");
    EXPECT_EQ(executing("UPDATE Increment SET NunInc=1 ; "), 0);
}

TEST_F(ScenarioDatabase, NumbersThatDoNotFitAreErrorsOfTheirRead) {
    for (const auto& [value, error] : {std::pair{"32767", 0},
                                       {"' 12 '", 0},
                                       {"32768", 6},
                                       {"-40000", 6},
                                       {"'douze'", 13},
                                       {"NULL", 94}}) {
        database->Execute(std::string("UPDATE Increment SET NunInc=") + value);
        const auto rows = database->OpenRecordset("SELECT NunInc FROM Increment");
        EXPECT_EQ(errorOf([&] { (void)int16Field(*rows, "NunInc"); }), error) << value;
    }
    const auto rows = database->OpenRecordset("SELECT NunInc FROM Increment");
    EXPECT_EQ(errorOf([&] { (void)rows->Fields("Nombre"); }), 3265);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(errorOf([&] { (void)rows->Fields("NunInc"); }), 3021);
}

TEST_F(ScenarioDatabase, AQueryKeepsTheRowsOfItsMoment) {
    for (std::int16_t i = 1; i <= 40; ++i) insertAction(*database, 1, i, {"a", 0});
    const auto rows =
        database->OpenRecordset("SELECT NumAction FROM Actions ORDER BY NumAction ASC");
    int count = 0;
    for (; !rows->Eof(); rows->MoveNext(), ++count)
        database->Execute("DELETE FROM Actions WHERE NumAction=" + std::to_string(40 - count));
    EXPECT_EQ(count, 40);
    EXPECT_EQ(column("SELECT * FROM Actions", "Champs"), "");
}

TEST(DatabaseFiles, ThatAreNoDatabaseAreToldApart) {
    const testing::TemporaryFolder folder;
    SqliteEngine engine;
    const auto opening = [&](const std::string& content) {
        testing::writeBytes(folder / "x.mdb", content);
        return errorOf([&] {
            const auto database = engine.OpenDatabase(folder / "x.mdb");
            (void)database->OpenRecordset("SELECT NunInc FROM Increment");
        });
    };
    EXPECT_EQ(errorOf([&] { (void)engine.OpenDatabase(folder / "none.mdb"); }), 3024);
    EXPECT_EQ(opening(""), 3343);
    EXPECT_EQ(opening("not a database at all"), 3343);
    EXPECT_EQ(opening(std::string(100000, '\xA5')), 3343);
    createScenarioDatabase(folder / "good.mdb");
    const std::string good = testing::bytesOf(folder / "good.mdb");
    EXPECT_EQ(opening(good), 0);
    EXPECT_NE(opening(good.substr(0, good.size() / 2)), 0);
    EXPECT_NE(opening(good.substr(0, 90)), 0);
}

}  // namespace
}  // namespace kalvo
