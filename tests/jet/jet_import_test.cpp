// Bringing a Jet database in: whole or not at all, the original untouched.
#include "platform/jet/jet_import.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/sqlite/sqlite_engine.h"
#include "tests/support/error_of.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using testing::errorOf;

// The column x of a query's rows, all texts.
std::vector<std::string> rowsOf(const std::string& file, const std::string& sql) {
    std::vector<std::string> values;
    const auto database = SqliteEngine().OpenDatabase(file);
    for (const auto rows = database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext())
        values.push_back(std::get<std::string>(rows->Fields("x")));
    return values;
}

struct JetImport : ::testing::Test {
    testing::TemporaryFolder folder;
    std::string sample = testing::bytesOf(KALVO_TEST_DATA "Scen-jet4.mdb");
    std::string target = folder / "Scen.mdb";

    // Imports a Jet file of this content; the error's number, 0 for none.
    int importing(const std::string& content) {
        testing::writeBytes(folder / "old.mdb", content);
        const int error = errorOf([&] { (void)importJetDatabase(folder / "old.mdb", target); });
        EXPECT_EQ(testing::bytesOf(folder / "old.mdb"), content);
        return error;
    }
};

TEST_F(JetImport, BringsEveryRowWithItsNullsAccentsAndGaps) {
    ASSERT_EQ(importing(sample), 0);
    using Rows = std::vector<std::string>;
    EXPECT_EQ(rowsOf(target, "SELECT NunInc||'' AS x FROM Increment"), Rows{"41"});
    EXPECT_EQ(
        rowsOf(target,
               "SELECT Nom||'|'||coalesce(Chemin,'-')||'|'||coalesce(Boucle,'-') AS x "
               "FROM Scenarios ORDER BY Numero"),
        (Rows{std::string("Inventaire été|-|1"_ansi), "Commande|-|-",
              std::string("Réception dépôt n°2|C:\\données\\réception.txt|0"_ansi), "Vide|-|0"}));
    const Rows actions = rowsOf(target,
                                "SELECT NumAction||Champs||coalesce(PlaceTrame,'-') AS x "
                                "FROM Actions ORDER BY NumeroScen, NumAction");
    ASSERT_EQ(actions.size(), 13U);
    EXPECT_EQ(actions[5], std::string("5Entrée0"_ansi));
    EXPECT_EQ(actions[12], "4&PASSLIGNE-");
    const auto again = [&] { return importJetDatabase(folder / "old.mdb", target); };
    EXPECT_TRUE(again().alreadyDone);
    SqliteEngine().OpenDatabase(target)->Execute("UPDATE Scenarios SET Nom='x' WHERE Numero=1");
    EXPECT_EQ(errorOf([&] { (void)again(); }), 58) << "what is there is another site's";
}

TEST_F(JetImport, DamagedFilesAreRefusedAndLeaveNothingBehind) {
    EXPECT_EQ(errorOf([&] { (void)importJetDatabase(folder / "none.mdb", target); }), 3024);
    EXPECT_EQ(importing(""), 3343);
    EXPECT_EQ(importing("text"), 3343);
    EXPECT_EQ(importing(sample.substr(0, 4096)), 3343);
    EXPECT_EQ(importing(sample.substr(0, sample.size() / 2)), 3343);
    EXPECT_EQ(importing(sample.substr(0, sample.size() - 100)), 3343);
    EXPECT_EQ(folder.entries(), 1) << "the damaged file alone";
}

TEST_F(JetImport, AtStartTheOriginalIsKeptBeside) {
    EXPECT_EQ(upgradeJetInPlace(target), std::nullopt);
    testing::writeBytes(target, sample);
    const auto upgrade = upgradeJetInPlace(target);
    ASSERT_TRUE(upgrade);
    EXPECT_EQ(testing::bytesOf(folder / "Scen.jet.mdb"), sample);
    EXPECT_EQ(rowsOf(target, "SELECT Nom AS x FROM Scenarios").size(), upgrade->imported.scenarios);
    EXPECT_EQ(upgradeJetInPlace(target), std::nullopt);

    std::string newer = sample;
    newer[20] = 2;
    for (const std::string& unreadable : {sample.substr(0, sample.size() / 2), newer}) {
        testing::writeBytes(target, unreadable);
        EXPECT_EQ(errorOf([&] { (void)upgradeJetInPlace(target); }), 3343);
        EXPECT_EQ(testing::bytesOf(target), unreadable);
    }
}

}  // namespace
}  // namespace kalvo
