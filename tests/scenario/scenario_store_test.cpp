#include "scenario/scenario_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/scripted_database.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

class ScenarioStore : public ::testing::Test {
protected:
    testing::ScriptedDatabase store;
    std::unique_ptr<Database> database = store.OpenDatabase("Scen.mdb");

    void answer(const char* sql, std::vector<testing::Row> rows) {
        store.answers[sql] = std::move(rows);
    }
};

TEST_F(ScenarioStore, ColumnsAreReadAsSixteenBitIntegers) {
    const testing::Row row = {
        {"whole", std::int64_t{-7}},    {"half", 2.5},   {"text", std::string(" 12 ")},
        {"large", std::int64_t{32768}}, {"huge", 1e300}, {"word", std::string("douze")},
        {"null", std::monostate{}}};
    const testing::ScriptedRecordset rows({row});
    EXPECT_EQ(int16Field(rows, "WHOLE"), -7);
    EXPECT_EQ(int16Field(rows, "half"), 2);
    EXPECT_EQ(int16Field(rows, "text"), 12);
    for (const auto& [column, number] :
         {std::pair{"large", 6}, {"huge", 6}, {"word", 13}, {"null", 94}, {"none", 3265}}) {
        try {
            (void)int16Field(rows, column);
            ADD_FAILURE() << column << " was read";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), number) << column;
        }
    }
    EXPECT_EQ(textField(rows, "null"), "");
    EXPECT_EQ(textField(rows, "whole"), "-7");
}

TEST_F(ScenarioStore, NamesGoIntoStatementsAsTheyAre) {
    answer("SELECT Numero FROM Scenarios WHERE Nom='l'été'", {{{"Numero", std::int64_t{4}}}});
    EXPECT_EQ(findScenario(*database, "l'été"), 4);
    EXPECT_EQ(findScenario(*database, "autre"), std::nullopt);
}

TEST_F(ScenarioStore, NewScenariosGetTheLargestNumberPlusOne) {
    EXPECT_EQ(nextScenarioNumber(*database), 1);
    answer("SELECT Numero FROM Scenarios ORDER BY Numero DESC",
           {{{"Numero", std::int64_t{41}}}, {{"Numero", std::int64_t{2}}}});
    EXPECT_EQ(nextScenarioNumber(*database), 42);
    answer("SELECT Numero FROM Scenarios ORDER BY Numero DESC",
           {{{"Numero", std::int64_t{32767}}}});
    EXPECT_THROW((void)nextScenarioNumber(*database), RuntimeError);
}

TEST_F(ScenarioStore, ChangesAreTheStatementsOfTheStore) {
    insertScenario(*database, {7, "Stock", "Fichier", 1, 0, "C:\\out\\a.txt", 0, 0, 3});
    updateChemin(*database, 7, "b.txt");
    updateBoucle(*database, 7, 2);
    updateDepart(*database, 7, 1);
    insertAction(*database, 7, 3, {"&CODE", 2});
    updateAction(*database, 7, 3, "&QTY");
    deleteScenario(*database, 7);
    EXPECT_THAT(store.executed,
                ElementsAre("INSERT INTO Scenarios (Numero,Nom,Type,Trame,Specif,Chemin,Nbrtrame) "
                            "VALUES(7,'Stock','Fichier',1,0,'C:\\out\\a.txt',3)",
                            "UPDATE Scenarios SET Chemin='b.txt' WHERE Numero=7",
                            "UPDATE Scenarios SET Boucle=2 WHERE Numero=7",
                            "UPDATE Scenarios SET Depart=1 WHERE Numero=7",
                            "INSERT INTO Actions (NumeroScen,Numaction,Champs,PlaceTrame) VALUES "
                            "(7,3,'&CODE',2)",
                            "UPDATE Actions SET Champs='&QTY' WHERE NumAction=3AND NumeroScen=7",
                            "DELETE FROM Scenarios WHERE Numero=7",
                            "DELETE FROM Actions WHERE NumeroScen=7"));
}

TEST_F(ScenarioStore, RenumberingFollowsTheOrderOfTheActions) {
    answer("SELECT NumAction FROM Actions WHERE NumeroScen=7 ORDER BY NumAction ASC",
           {{{"NumAction", std::int64_t{2}}},
            {{"NumAction", std::monostate{}}},
            {{"NumAction", std::int64_t{9}}}});
    renumberActions(*database, 7);
    EXPECT_THAT(store.executed,
                ElementsAre("UPDATE Actions SET NumAction=1 WHERE NumAction=2 AND NumeroScen=7",
                            "UPDATE Actions SET NumAction=3 WHERE NumAction=9 AND NumeroScen=7"))
        << "a row without a number is passed over";
}

}  // namespace
}  // namespace kalvo
