// Reading Jet files: three samples, what an independent reader makes of variants of them,
// and damage. Two of the samples (one a version, put together byte by byte) hold every
// type a column can have, memos of every kind, a definition of several pages, rows that
// are deleted, moved or older than a column, both kinds of usage map, and a page no map
// names.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iomanip>
#include <random>
#include <set>
#include <sstream>
#include <vector>

#include "platform/jet/jet_tables.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

constexpr std::array kSamples = {"Scen-jet4.mdb", "Scen-wide-jet4.mdb", "Scen-wide-jet3.mdb"};

std::string sample(const std::string& name) { return testing::bytesOf(KALVO_TEST_DATA + name); }
std::size_t pageSizeOf(const std::string& file) { return file.at(20) == 0 ? 2048 : 4096; }
JetTables tablesOf(const std::string& file) { return readJetTables(file, "x.mdb"); }

// The run-time error reading ends with, "" for none.
std::string readError(const std::string& file) {
    try {
        (void)tablesOf(file);
        return "";
    } catch (const RuntimeError& error) {
        return std::to_string(error.number()) + " " + toUtf8(error.description());
    }
}

// A row as a line, Null as "-".
std::string lineOf(const JetRow& row) {
    std::string line;
    for (const JetValue& value : row) line += value.value_or("-") + "|";
    return line;
}

TEST(JetReader, GivesEveryTypeInBothVersions) {
    for (const bool jet3 : {false, true}) {
        const JetTables tables = tablesOf(sample(kSamples[jet3 ? 2 : 1]));
        const auto& scenarios = tables[kScenarios];
        ASSERT_EQ(scenarios.size(), 7U);
        const std::string path = "C:\\données\\été.txt";
        EXPECT_EQ(lineOf(scenarios[0]), "1|Inventaire été|Emulation           |0|0|-|0|1|0.0000|");
        EXPECT_EQ(lineOf(scenarios[1]),
                  "-2147483648||Fichier             |255|-1|" + path + "|1|0.5|-12.5000|");
        EXPECT_EQ(scenarios[2][1], "Réception dépôt n°2 €");
        EXPECT_EQ(scenarios[2][5]->size(), 30 * std::string("Chemin « simple » éèêàçœ€ ").size());
        EXPECT_EQ(scenarios[3][5]->substr(0, 10), jet3 ? "0000 été" : "0000 α→");
        EXPECT_EQ(std::count(scenarios[3][5]->begin(), scenarios[3][5]->end(), '|'), 330);
        EXPECT_EQ(scenarios[5][1], jet3 ? "Ÿ Š ž ƒ" : "Zażółć → 漢字");
        EXPECT_EQ(scenarios[5][8], "922337203685477.5807");
        EXPECT_EQ(lineOf(scenarios[6]),
                  "99|ancienne ligne|Emulation           |1|-1|" + path + "|4|2|-|");

        const auto& actions = tables[kActions];
        ASSERT_EQ(actions.size(), 36U);
        EXPECT_EQ(lineOf(actions[10]), "1|12|-|-11|") << "a moved row in its place";
        EXPECT_EQ(lineOf(actions[35]), "4|40|Entrée é|-39|");
        EXPECT_EQ(lineOf(tables[kIncrement].at(0)), "123456|");
    }
}

// A value as two readers have it in common: mdb-export tells Null from the empty text as
// little as yes from 1, and writes large numbers with an exponent.
std::string common(const JetValue& value) {
    if (!value || *value == "-1") return value ? "1" : "";
    char* end = nullptr;
    const double number = std::strtod(value->c_str(), &end);
    if (value->empty() || *end != 0) return *value;
    std::ostringstream text;
    text << std::setprecision(15) << number;
    return text.str();
}

// The rows in no order.
std::multiset<std::string> linesOf(const std::vector<JetRow>& rows) {
    std::multiset<std::string> lines;
    for (const JetRow& row : rows) {
        std::string line;
        for (const JetValue& value : row) line += common(value) + "|";
        lines.insert(line);
    }
    return lines;
}

std::vector<std::string> split(const std::string& text, const std::string& mark) {
    std::vector<std::string> parts;
    for (std::size_t at = 0, end = 0; (end = text.find(mark, at)) != std::string::npos;
         at = end + mark.size())
        parts.push_back(text.substr(at, end - at));
    return parts;
}

// The wanted columns of a table as mdb-export gives them; no row when it fails.
std::vector<JetRow> exported(const std::string& file, const TableDescription& table) {
    const std::string out = file + ".out";
    const std::string command = "mdb-export -Q -d '\x1F:' -R '\x1F:\x1E:' " + file + " " +
                                std::string(table.name) + " >" + out + " 2>/dev/null";
    if (std::system(command.c_str()) != 0) return {};
    const auto lines = split(testing::bytesOf(out), "\x1E:");
    const auto names = split(lines.at(0), "\x1F:");
    std::vector<JetRow> rows;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        const auto values = split(lines[line], "\x1F:");
        JetRow& row = rows.emplace_back();
        for (const std::string_view wanted : table.columns)
            for (std::size_t i = 0; i < std::min(names.size(), values.size()); ++i)
                if (equalIgnoringCase(names[i], wanted)) row.emplace_back(values[i]);
    }
    return rows;
}

// Another byte somewhere in a row or a long value, none that code page 1252 leaves open
// nor half of a surrogate pair: there each reader takes its own way.
void vary(std::string& file, std::minstd_rand& random) {
    constexpr std::size_t kPageHead = 64;
    const std::size_t pageSize = pageSizeOf(file);
    const std::size_t at = random() % file.size();
    const std::size_t byte = random() % 0x80 + (random() % 3 == 0 ? 0x60 : 0);
    if (file[at - at % pageSize] == 1 && at % pageSize >= kPageHead)
        file[at] = static_cast<char>(byte >= 0x80 && byte < 0xA0 ? byte + 0x40 : byte);
}

TEST(JetReader, AgreesWithMdbExportOnVariantsOfTheSamples) {
    if (std::system("mdb-export --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "mdb-export (Debian package mdbtools) is not installed";
    const testing::TemporaryFolder folder;
    std::minstd_rand random(1);
    unsigned compared = 0;
    for (unsigned variant = 0; variant < 18; ++variant) {
        std::string file = sample(kSamples[variant % 3]);
        for (unsigned edits = variant / 3; edits > 0; --edits) vary(file, random);
        if (!readError(file).empty()) continue;
        testing::writeBytes(folder / "x.mdb", file);
        const JetTables tables = tablesOf(file);
        for (std::size_t i = 0; i < tables.size(); ++i) {
            const auto theirs = exported(folder / "x.mdb", kScenarioTables[i]);
            if (theirs.empty()) continue;
            ASSERT_EQ(linesOf(tables[i]), linesOf(theirs)) << "variant " << variant;
            ++compared;
        }
    }
    EXPECT_GT(compared, 30U);
}

TEST(JetReader, RefusesWhatItCannotRead) {
    constexpr std::size_t kPage = 2048;
    struct Case {
        const char* damage;
        std::size_t at;
        std::string bytes;
        const char* error;
    };
    const std::vector<Case> cases = {
        {"no Jet file", 4, "X", "3343 Format"},
        {"the successor's", 13, "ACE", "plus récent"},
        {"a later version", 20, "\x02", "plus récent"},
        {"page key", 0x3E, "\x01", "chiffrée"},
        {"password", 0x43, "\x01", "mot de passe"},
        {"no such table", 23 * kPage + 1885, "X", "3078 "},
        {"no such column", 5 * kPage + 62, "X", "3265 "},
        {"a column of a type without text", 5 * kPage + 43, "\x0B", "NunInc"},
        {"a row less than announced", 10 * kPage + 11, "\x86", "annonce 7 lignes, dont 6"},
        {"a definition of itself and itself", 3 * kPage + 4, "\x03", "3343 "},
        {"a usage map that is nowhere", 3 * kPage + 37, "\xFF", "3343 "},
        {"a row moved to itself", 15 * kPage + 0x656, std::string("\x01\x0F\0", 3), "3343 "},
    };
    for (const auto& damaged : cases) {
        std::string file = sample("Scen-wide-jet3.mdb");
        file.replace(damaged.at, damaged.bytes.size(), damaged.bytes);
        EXPECT_NE(readError(file).find(damaged.error), std::string::npos)
            << damaged.damage << ": " << readError(file);
    }
}

// Whatever is damaged: an error of such a file, or a result.
TEST(JetReader, SurvivesCutsAndRandomDamage) {
    for (const char* name : kSamples) {
        const std::string whole = sample(name);
        for (std::size_t size = 0; size < whole.size(); size += pageSizeOf(whole)) {
            const std::string cut = whole.substr(0, size);
            EXPECT_TRUE(!readError(cut).empty() || tablesOf(cut) == tablesOf(whole))
                << name << size;
        }
        std::minstd_rand random(2);
        for (int round = 0; round < 500; ++round) {
            std::string file = whole;
            for (unsigned edits = random() % 8 + 1; edits > 0; --edits)
                file[random() % file.size()] = static_cast<char>(random() & 0xFFU);
            const std::string number = readError(file).substr(0, 5);
            EXPECT_NE(std::string("3343 3078 3265 ").find(number), std::string::npos) << number;
        }
    }
}

}  // namespace
}  // namespace kalvo
