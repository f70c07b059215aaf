#include "scenario/frame_processing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "keys/key_files.h"
#include "scenario/partial_frames.h"
#include "scenario/scenario_store.h"
#include "settings/options.h"
#include "tests/support/site.h"
#include "tests/support/words.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

struct Processing : ::testing::Test, testing::Site {
    ScenarioRun& run = state.scenario;
    std::string frameAfter;

    Processing() {
        run.active.ScenarioName = "Stock";
        // Compiled files always carry a loop point.
        index("Boucle", "0");
        index("Depart", "0");
        writeCounter(*state.database, 41);
    }
    void index(const char* section, const char* value) {
        world.compiled("Stock", section, "Index", value);
    }
    void actions(std::vector<std::string> list) {
        run.active.ActionLines.assign(1, "");
        run.active.ActionLines.insert(run.active.ActionLines.end(), list.begin(), list.end());
    }
    std::string process(std::string frame) {
        SplitFrameFields(platform, run, frame);
        std::string script = BuildKeyScript(platform, run, frame);
        frameAfter = frame;
        return script;
    }
};

TEST_F(Processing, FieldsAreTakenInOrderAndTheActionsRepeated) {
    actions({"&CODE", "-", "&QTY", "{ENTER}"});
    EXPECT_EQ(process("A\rB\r"), "A-B{ENTER}");
    EXPECT_EQ(process("A\r1\r\nB\r2\r\n"), "A-1{ENTER}B-2{ENTER}");
    EXPECT_EQ(process("A\r1\rB\r"), "A-1{ENTER}B-{ENTER}") << "the rest of the pass still runs";
    EXPECT_EQ(process(""), "");
}

TEST_F(Processing, MarkersBecomeWhatTheyStandFor) {
    actions({"&CODE", "&TAB", "&DATE", "&PASSLIGNE", "&INCREMENT", "&FERMER", "&OUVRIR_E",
             "&OUVRIR_S", "&VALIDER", "libre"});
    EXPECT_EQ(process("A\r"), "A\t05/03/24\r\n41%{q}%{c}%{r}%{v}libre");
    actions({"&code", "&tab"});
    EXPECT_EQ(process("A\rB\r"), "AB") << "markers compare exactly; anything else is a field";
}

TEST_F(Processing, KeyLabelsBecomeTheirScripts) {
    profiles.write(toucheIni(folder.path()), "systeme", "0", "{Entrer}@5");
    profiles.write(toucheIni(folder.path()), "systeme", "1", "{Muet}@6");
    profiles.write(corresIni(folder.path()), "Correspondance", "5", "{ENTER}");
    run.keys.LoadKeyCorrespondence(profiles, folder.path());
    actions({"&CODE", "Entrer", "entrer", "Muet", "{Entrer}"});
    EXPECT_EQ(process("A\r"), "A{ENTER}entrerMuet{Entrer}");
}

TEST_F(Processing, ATimerSetsThePauseAndSplitsTheScript) {
    actions({"&CODE", "&Timer 500", "x"});
    EXPECT_EQ(process("A\r"), "A{TIMER}x");
    EXPECT_EQ(run.TimerPause, 500);
    actions({"&CODE", "&Timer", "&Timer vite", "&Timer 99999"});
    EXPECT_EQ(process("A\r"), "A{TIMER}{TIMER}{TIMER}");
    EXPECT_EQ(run.TimerPause, 500) << "no number: the pause stays";
}

TEST_F(Processing, LaterPassesStartAtTheLoopPoint) {
    actions({"a", "&CODE", "b"});
    // Boucle, Depart, script.
    for (const std::string& row : testing::split(
             "2 3 a1b2b3b|0 0 a1ba2ba3b|'' 2 1b2b3b|'' '' a1ba2ba3b|x 2 a1b2b3b|-4 '' a1ba2ba3b",
             "|")) {
        const auto c = testing::words(row);
        index("Boucle", c[0].c_str());
        index("Depart", c[1].c_str());
        EXPECT_EQ(process("1\r2\r3\r"), c[2]) << row;
    }
}

TEST_F(Processing, OptionsChangeWhatSitesAreNotUsedTo) {
    struct Case {
        Option option;
        std::vector<std::string> actions;
        const char* frame;
        const char* off;
        const char* on;
    };
    index("Depart", "2");
    index("Boucle", "1");
    world.compiled("Stock", "Partiel", "Nbr", "2");
    run.active.SubFrameMap = {{}, {1, 2}, {2, 1}};
    for (const auto& [option, list, frame, off, on] : {
             Case{Option::kStartPoint, {"a", "&CODE"}, "X\rY\r", "aXaY", "XaY"},
             Case{Option::kLiteralFields, {"&CODE", "+"}, "a+(b)%\r", "a+(b)%+", "a{+}{(}b{)}{%}+"},
             Case{Option::kPartialFrame, {"&CODE"}, "X\rY\r", "", "XY"},
         }) {
        actions(list);
        run.active.PartialMode = option == Option::kPartialFrame ? 1 : 0;
        EXPECT_EQ(process(frame), off) << optionInfo(option).key;
        setOption(profiles, folder.path(), option, 1);
        EXPECT_EQ(process(frame), on) << optionInfo(option).key;
        setOption(profiles, folder.path(), option, 0);
    }
}

TEST_F(Processing, PassesAreFoundInTheFinishedScript) {
    actions({"&CODE", "{TAB}", "&QTY", "{ENTER}"});
    run.DecimalSeparator = "::";
    const std::string script = process("A.5\r1\r\nB\r2.25\r\n");
    ASSERT_EQ(run.passStarts.size(), 2U);
    EXPECT_EQ(script.substr(run.passStarts[1]), "B{TAB}2::25{ENTER}");
    run.DecimalSeparator = "x";
    EXPECT_EQ(process("A.00\r1\r\nB.00\r2\r\n").substr(run.passStarts[1]), "B{TAB}2{ENTER}");
    index("Boucle", "-32768");
    EXPECT_EQ(process("A\r1\r\nB\r2\r\n"), "A{TAB}1{ENTER}B{TAB}2{ENTER}");
}

TEST_F(Processing, PassesThatLeadNowhereEnd) {
    struct Case {
        std::vector<std::string> actions;
        const char* frame;
        const char* script;
    };
    for (const auto& [list, frame, script] : {
             Case{{"texte"}, "A\rB\r", "texte"},
             Case{{"&TAB"}, "A\rB\r", "\t"},
             Case{{"&Timer 1", "x"}, "A\rB\r", "{TIMER}x"},
             Case{{}, "A\rB\r", ""},
             // A control marker goes on without taking a field: to A; over the CR to B; over
             // the CR to the end.
             Case{{"^c"}, "A\rB\r", "^c^c^c"},
             Case{{"^c", "&TAB"}, "AB  \rC", "^c\t^c\t^c\t"},
             // No field to come, without any CR, ends the passes after this one.
             Case{{"&CODE"}, "ABC", "ABC"},
             Case{{"x", "&CODE"}, "ABC", "xABC"},
         }) {
        actions(list);
        EXPECT_EQ(process(frame), script);
    }
    actions({"&CODE", "b"});
    index("Boucle", "9");
    EXPECT_EQ(process("1\r2\r3\r"), "1b2b3b")
        << "a loop point behind the last action: every other pass does nothing";
    index("Boucle", "");
    index("Depart", "9");
    EXPECT_EQ(process("1\r2\r3\r"), "") << "and a start point there leaves nothing to do";
}

TEST_F(Processing, PartialModeReassemblesTheFrameButNotTheFields) {
    run.active.PartialMode = 1;
    run.active.SubFrameMap = {{}, {1, 2}, {2, 1}};
    actions({"&A", "&B"});
    world.compiled("Stock", "Partiel", "Nbr", "2");
    EXPECT_EQ(process("a\rb\r"), "") << "the compiled count is not the one that is read";
    EXPECT_EQ(frameAfter, "");
    world.compiled("Stock", "Trame", "Nbr", "2");
    EXPECT_EQ(process("a\rb\rc\r"), "abc");
    EXPECT_EQ(frameAfter, "b\ra\r");
}

TEST_F(Processing, TheCounterAdvancesOncePerFrame) {
    const auto stored = [this] { return *readCounter(*state.database); };
    actions({"&CODE"});
    process("A\rB\r");
    EXPECT_EQ(run.CounterText, "41");
    EXPECT_EQ(stored(), 42);

    run.counterUse = CounterUse::kReadOnly;
    EXPECT_EQ(NextCounterValue(platform, run), "42");
    EXPECT_EQ(stored(), 42);
    run.counterUse = CounterUse::kAdvance;
    writeCounter(*state.database, -1);
    EXPECT_EQ(NextCounterValue(platform, run), "-1");
    writeCounter(*state.database, 32767);
    EXPECT_EQ(world.icon.notices.size(), 0U);
    EXPECT_EQ(NextCounterValue(platform, run), "32767");
    EXPECT_EQ(stored(), 32767) << "a full counter stays where it is";
    EXPECT_EQ(world.icon.notices.size(), 1U) << "and that is said";

    state.database->Transaction([&] {
        EXPECT_EQ(NextCounterValue(platform, run), "") << "another program counts just now";
    });
    EXPECT_EQ(world.icon.notices.size(), 2U);

    state.database->Execute("DELETE FROM Increment");
    EXPECT_EQ(NextCounterValue(platform, run), "0") << "no row";
    for (const char* broken : {"Null", "40000"}) {
        state.database->Execute(std::string("INSERT INTO Increment (NunInc) VALUES (") + broken +
                                ")");
        EXPECT_EQ(NextCounterValue(platform, run), "0") << broken;
        EXPECT_EQ(stored(), 1);
        EXPECT_THAT(toUtf8(world.icon.notices.back()), ::testing::HasSubstr("illisible"));
        state.database->Execute("DELETE FROM Increment");
    }
    run.applicationFolder += "/none";
    EXPECT_EQ(NextCounterValue(platform, run), "") << "no database";
    EXPECT_EQ(world.icon.notices.size(), 5U) << "each once a frame";
}

TEST_F(Processing, TheDecimalSeparatorIsPutIn) {
    // Text -> separator -> result.
    for (const std::string& row : testing::split(
             "12.5 ->  -> 12.5|12.5 1.0 -> , -> 12,5 1,0|12.00 -> x -> 12|12.50 -> x -> 12.50|"
             "1.000 -> x -> 10|12,00 -> x -> 12|1,5 -> . -> 1.5|1.5,2 -> , -> 1,5,2|"
             "{A.B} -> , -> {A,B}|15 -> , -> 15",
             "|")) {
        const auto c = testing::split(row, " -> ");
        EXPECT_EQ(withDecimalSeparator(c[0], c[1]), c[2]) << row;
    }
    actions({"&PRIX", "{F1}."});
    run.DecimalSeparator = ",";
    EXPECT_EQ(process("2.5\r"), "2,5{F1},");
}

TEST_F(Processing, ShowsItsProgress) {
    actions({"&CODE"});
    process("A\r");
    EXPECT_THAT(world.progress.labels, ElementsAre("", "Vidage des données en cours....."_ansi,
                                                   "Traitement des données..."_ansi));
    EXPECT_TRUE(world.progress.visible);
    EXPECT_EQ(world.progress.values.back(), 100);
}

TEST_F(Processing, AFrameThatComesInMeanwhileLeavesTheFirstItsFields) {
    actions({"&CODE"});
    std::string frame;
    std::string expected;
    for (int i = 0; i < 2000; ++i) {
        frame += std::to_string(i) + "\r";
        expected += std::to_string(i);
    }
    SplitFrameFields(platform, run, frame);
    world.events.step = 50;  // time passes while the actions run
    world.events.whilePumping = [&] {
        world.events.whilePumping = nullptr;
        EXPECT_EQ(process("other\r"), "other");
    };
    EXPECT_EQ(BuildKeyScript(platform, run, frame), expected);
    EXPECT_GT(world.events.pumped, 0);
}

TEST_F(Processing, TimeGrowsWithTheFrameAndNotFaster) {
    actions({"&CODE", "{TAB}", "&QTY", "{ENTER}"});
    const auto timeOf = [this](std::size_t records) {
        std::string frame;
        for (std::size_t i = 0; i < records; ++i) frame += "1234567890123\r12\r\n";
        const std::clock_t start = std::clock();
        EXPECT_EQ(process(frame).size(), records * (13 + 5 + 2 + 7));
        return static_cast<double>(std::clock() - start);
    };
    timeOf(1000);  // warm
    // Ten times as much takes ten times as long; a quadratic loop a hundred times. A loop
    // point far before the first step costs nothing.
    const double usual = timeOf(5000);
    EXPECT_LT(timeOf(50000), 40 * usual);
    index("Boucle", "-32768");
    EXPECT_LT(timeOf(5000), 4 * usual);
}

TEST(FrameFields, AreEndedByCarriageReturns) {
    const auto split = [](std::string_view frame) {
        FrameFieldTable fields;
        for (const char c : frame) fields.add(c);
        return fields;
    };
    const FrameFieldTable fields = split("A\r1\r\nB\n\xFF\r\r\nrest");
    EXPECT_EQ(fields.FieldCount(), 4U);
    const std::vector<std::string_view> expected = {"A", "1", "B\xFF", "", "rest", ""};
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(fields.at(i), expected[i]) << i;
    EXPECT_EQ(split("").at(0), "");

    std::string frame;
    for (int i = 0; i < 100003; ++i) frame += "x\r";
    const FrameFieldTable many = split(frame);
    EXPECT_EQ(many.FieldCount(), 100003U);
    EXPECT_EQ(many.at(100000), "x");
    EXPECT_EQ(many.at(100001), "") << "text behind the last index is dropped";
}

TEST(PartialFrames, RecordsComeOutInSlotOrder) {
    struct Case {
        const char *frame, *map;
        std::int16_t count;
        const char* expected;
    };
    for (const auto& [frame, map, count, expected] :
         {Case{"a\rb\r", "2 1", 2, "b\ra\r"}, Case{"a\rb\rc\rd\r", "2 1", 2, "b\ra\rd\rc\r"},
          Case{"a\rb\rc\r", "2 1", 2, "b\ra\r"}, Case{"a\rb\rc", "1 1 2", 2, "a\ra\rb\r"},
          Case{"a\rb\r", "9 1 -1 0", 2, "\ra\r\r\r"}, Case{"a\r\nb\r\n", "1 2", 2, "a\r\nb\r"},
          Case{"a\rb\r", "", 1, ""}, Case{"a\rb\r", "1", 0, ""}, Case{"a\rb\r", "1", -5, ""},
          Case{"a\rb\r", "1", 32767, ""}, Case{"", "1", 1, ""}}) {
        std::vector<SubFrameSlot> slots(1);
        for (const std::string& subFrame : testing::words(map))
            slots.push_back({static_cast<std::int16_t>(slots.size()),
                             static_cast<std::int16_t>(std::stoi(subFrame))});
        EXPECT_EQ(reassembleSubFrames(frame, slots, count), expected) << frame << " by " << count;
    }
}

}  // namespace
}  // namespace kalvo
