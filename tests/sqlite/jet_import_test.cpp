// Bringing a Jet database in: whole or not at all, the original untouched.
#include "platform/jet/jet_import.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/jet/jet_stream.h"
#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_engine.h"
#include "tests/support/error_of.h"
#include "tests/support/temporary_folder.h"

namespace kalvo {
namespace {

using testing::errorOf;

// The values of a query's rows, Null as "-".
std::vector<std::string> rowsOf(const std::string& file, const std::string& sql,
                                const std::vector<std::string>& columns) {
    std::vector<std::string> lines;
    const auto database = SqliteEngine().OpenDatabase(file);
    for (const auto rows = database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext()) {
        std::string line;
        for (const std::string& column : columns) {
            const DatabaseValue value = rows->Fields(column);
            if (const auto* text = std::get_if<std::string>(&value))
                line += *text;
            else if (const auto* number = std::get_if<std::int64_t>(&value))
                line += std::to_string(*number);
            else
                line += "-";
            line += "|";
        }
        lines.push_back(line);
    }
    return lines;
}

struct JetImport : ::testing::Test {
    testing::TemporaryFolder folder;
    std::string sample = testing::bytesOf(KALVO_JET_SAMPLE);
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
    const auto scenarios = rowsOf(target, "SELECT * FROM Scenarios ORDER BY Numero",
                                  {"Numero", "Nom", "Type", "Chemin", "Boucle"});
    const auto actions = rowsOf(target, "SELECT * FROM Actions ORDER BY NumeroScen, NumAction",
                                {"NumeroScen", "NumAction", "Champs", "PlaceTrame"});
    EXPECT_EQ(rowsOf(target, "SELECT NunInc FROM Increment", {"NunInc"}),
              std::vector<std::string>{"41|"});
    ASSERT_FALSE(scenarios.empty());
    ASSERT_FALSE(actions.empty());
    const auto anyWith = [](const std::vector<std::string>& lines, std::string_view part) {
        for (const std::string& line : lines)
            if (line.find(part) != std::string::npos) return true;
        return false;
    };
    EXPECT_TRUE(anyWith(scenarios, "|-|")) << "a Null column stays Null";
    EXPECT_TRUE(anyWith(scenarios, "\xE9") || anyWith(actions, "\xE9")) << "an accent";
    EXPECT_EQ(errorOf([&] { (void)importJetDatabase(folder / "old.mdb", target); }), 58);
}

TEST_F(JetImport, DamagedFilesAreRefusedAndLeaveNothingBehind) {
    EXPECT_EQ(errorOf([&] { (void)importJetDatabase(folder / "none.mdb", target); }), 3024);
    EXPECT_EQ(importing(""), 3343);
    EXPECT_EQ(importing("text"), 3343);
    EXPECT_EQ(importing(sample.substr(0, 4096)), 3343);
    EXPECT_EQ(importing(sample.substr(0, sample.size() / 2)), 3343);
    EXPECT_EQ(importing(sample.substr(0, sample.size() - 100)), 3343);
    std::string overwritten = sample;
    overwritten.replace(4096, sample.size() - 4096, sample.size() - 4096, '\xFF');
    EXPECT_NE(importing(overwritten), 0);
    EXPECT_EQ(folder.entries(), 1) << "the damaged file alone";
}

// Any byte of it may be wrong: an error or a result, never a crash.
TEST_F(JetImport, SurvivesRandomDamage) {
    for (std::size_t at = 4200; at < sample.size(); at += 2711) {
        std::string damaged = sample;
        damaged[at] = static_cast<char>(~damaged[at]);
        testing::writeBytes(folder / "old.mdb", damaged);
        std::filesystem::remove(target);
        (void)errorOf([&] { (void)importJetDatabase(folder / "old.mdb", target); });
    }
}

TEST_F(JetImport, AtStartTheOriginalIsKeptBeside) {
    EXPECT_EQ(upgradeJetInPlace(target), std::nullopt);
    testing::writeBytes(target, sample);
    const auto upgrade = upgradeJetInPlace(target);
    ASSERT_TRUE(upgrade);
    EXPECT_EQ(testing::bytesOf(folder / "Scen.jet.mdb"), sample);
    EXPECT_EQ(rowsOf(target, "SELECT * FROM Scenarios", {"Numero"}).size(),
              upgrade->imported.scenarios);
    EXPECT_EQ(upgradeJetInPlace(target), std::nullopt);

    testing::writeBytes(target, sample.substr(0, sample.size() / 2));
    EXPECT_EQ(errorOf([&] { (void)upgradeJetInPlace(target); }), 3343);
    EXPECT_EQ(testing::bytesOf(target), sample.substr(0, sample.size() / 2));
}

// What the reading process hands over, cut short anywhere, is no result.
TEST(JetStream, IsWholeOrNothing) {
    std::FILE* const file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    JetStreamWriter writer(file);
    writer.beginRow();
    writer.value("1");
    for (std::size_t i = 1; i < kScenarioColumns.size(); ++i) writer.value(std::nullopt);
    for (std::size_t table = 0; table < kScenarioTableCount; ++table) writer.endTable();
    writer.done();
    std::string stream(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    ASSERT_EQ(std::fread(stream.data(), 1, stream.size(), file), stream.size());
    std::fclose(file);

    const auto tables = parseJetStream(stream);
    ASSERT_TRUE(tables);
    EXPECT_EQ((*tables)[0].at(0).at(0), "1");
    EXPECT_EQ((*tables)[0].at(0).at(8), std::nullopt);
    for (std::size_t length = 0; length < stream.size(); ++length)
        EXPECT_FALSE(parseJetStream(stream.substr(0, length))) << length;
}

}  // namespace
}  // namespace kalvo
