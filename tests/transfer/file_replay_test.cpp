#include "transfer/file_replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/options.h"
#include "tests/support/fake_platform.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Replay : ::testing::Test {
    testing::FakePlatform world;
    ScenarioRun run;
    const std::string file = world.folder / "f.txt";

    Replay() {
        run.applicationFolder = world.folder.path();
        run.active.ScenarioName = "S";
    }

    void actions(std::vector<std::string> lines) {
        lines.insert(lines.begin(), "");
        run.active.ActionLines = std::move(lines);
    }

    bool replay(const std::string& content, std::string_view separator = ";") {
        testing::writeBytes(file, content);
        return ReplayFile(world.platform, run, file, separator).has_value();
    }
    std::string typed() { return world.keyboard.typed(); }
};

// The frame a file becomes, as a file scenario of one field and one break shows it.
TEST_F(Replay, EveryLineBecomesARecordOfTheFrame) {
    struct Case {
        std::string_view content, separator, fields;
    };
    const Case cases[] = {
        {"a;b\r\nc;d\r\ne;f", ";", "a|b|c|d|e|f|"},
        {"a;b;\n", ";", "a|b|"},
        {"a\r\r\nb\n", ";", "a|b|"},
        {"a||b\n\nc\n", "||", "a|b||c|"},
        {"a;b\n", "#", "a;b|"},
    };
    run.active.FileMode = true;
    world.compiled("S", "Fichier", "Chemin", world.folder / "out.txt");
    actions({"&CODE", "|"});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.content);
        EXPECT_TRUE(replay(std::string(c.content), c.separator));
        EXPECT_EQ(world.content("out.txt"), c.fields);
    }
}

TEST_F(Replay, OfATimedScriptTheTextBehindTheLastTimerIsNotTyped) {
    actions({"&CODE", "&Timer 70", "&QTY"});
    EXPECT_TRUE(replay("AB;CD\n"));
    EXPECT_EQ(typed(), "AB");
    EXPECT_EQ(world.events.sleeps, (std::vector<int>{100, 70}));
    EXPECT_TRUE(replay("AB;CD\nEF;GH\n"));
    EXPECT_EQ(typed(), "ABCDEF");
}

TEST_F(Replay, WithoutTimerOnlyAScriptWithALockTokenIsTyped) {
    actions({"&CODE"});
    EXPECT_TRUE(replay("AB\n"));
    EXPECT_EQ(typed(), "");

    actions({"{CAPSLOCK}", "&CODE"});
    world.keyboard.setLock(kVkCapital, true);
    EXPECT_TRUE(replay("AB\n"));
    EXPECT_EQ(typed(), "AB");
    EXPECT_FALSE(world.keyboard.lockOn(kVkCapital));

    world.keyboard.keybdEvents.clear();
    actions({"{NUMLOCK}", "&CODE", "{NUMLOCK}"});
    EXPECT_TRUE(replay("AB\n"));
    EXPECT_EQ(typed(), "AB");
    EXPECT_EQ(world.keyboard.keybdEvents.size(), 4U);
}

TEST_F(Replay, EverythingIsTypedWhereTheSiteWantsIt) {
    for (const bool whole : {false, true}) {
        setOption(world.profiles, world.folder.path(), Option::kWholeReplay, whole ? 1 : 0);
        for (const char* last : {"x", "{TIMER}x"}) {
            actions({"&CODE", last});
            EXPECT_TRUE(replay("AB\n"));
            const std::string without = *last == 'x' ? "" : "AB";
            EXPECT_EQ(typed(), whole ? "ABX" : without) << last;
        }
    }
}

TEST_F(Replay, AMissingFileIsSaidAndAFailingOutputReported) {
    EXPECT_FALSE(ReplayFile(world.platform, run, file, ";"));
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Le fichier n'existe pas"));
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_FALSE(world.progress.visible);
    run.active.FileMode = true;
    testing::writeBytes(file, "A\n");
    EXPECT_FALSE(ReplayFile(world.platform, run, file, ";")->whole()) << "no path for it";
}

TEST_F(Replay, TheFormSaysWhatIsMissing) {
    const ReplayForm form(world.platform, run);
    EXPECT_FALSE(form.complete("", ""));
    EXPECT_FALSE(form.complete("f", ""));
    EXPECT_TRUE(form.complete("f", ";"));
    EXPECT_THAT(
        world.dialogs.texts(),
        ElementsAre(std::string("Veuillez sélectionner un fichier à remonter"_ansi),
                    std::string("Veuillez sélectionner un séparateur pour les champs"_ansi)));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kExclamation);
}

TEST_F(Replay, TheFileDialogStartsInTheConfiguredFolder) {
    const auto startFolder = [&] {
        (void)ReplayForm(world.platform, run).getFile();
        return world.dialogs.startFolder;
    };
    run.applicationFolder = "D:\\kalvo";
    EXPECT_EQ(startFolder(), "D:\\TEMP");
    run.applicationFolder = world.folder.path();
    EXPECT_NE(startFolder(), "");
    world.profiles.write(portSerieIni(run.applicationFolder), "Port_série"_ansi, "Repertoire",
                         "/lots");
    EXPECT_EQ(startFolder(), "/lots");
}

}  // namespace
}  // namespace kalvo
