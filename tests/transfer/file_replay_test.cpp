#include "transfer/file_replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/options.h"
#include "tests/support/fake_platform.h"
#include "tests/support/words.h"
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
        const char *content, *separator, *fields;
    };
    run.active.FileMode = true;
    world.compiled("S", "Fichier", "Chemin", world.folder / "out.txt");
    actions({"&CODE", "|"});
    for (const Case& c : {Case{"a;b\r\nc;d\r\ne;f", ";", "a|b|c|d|e|f|"},
                          Case{"a;b;\n", ";", "a|b|"}, Case{"a\r\r\nb\n", ";", "a|b|"},
                          Case{"a||b\n\nc\n", "||", "a|b||c|"}, Case{"a;b\n", "#", "a;b|"}}) {
        EXPECT_TRUE(replay(c.content, c.separator)) << c.content;
        EXPECT_EQ(world.content("out.txt"), c.fields) << c.content;
    }
}

TEST_F(Replay, OnlyTextBeforeATimerOrWithALockTokenIsTypedUnlessTheSiteWantsAll) {
    struct Case {
        const char *actions, *frame, *typed, *typedWhole;
    };
    for (const bool whole : {false, true}) {
        setOption(world.profiles, world.folder.path(), Option::kWholeReplay, whole ? 1 : 0);
        for (const Case& c :
             {Case{"&CODE x", "AB\n", "", "ABX"}, Case{"&CODE {TIMER}x", "AB\n", "AB", "ABX"},
              Case{"&CODE {TIMER} &QTY", "AB;CD\nEF;GH\n", "ABCDEF", "ABCDEFGH"},
              Case{"{CAPSLOCK} &CODE", "AB\n", "AB", "AB"},
              Case{"{NUMLOCK} &CODE {NUMLOCK}", "AB\n", "AB", "AB"}}) {
            actions(testing::words(c.actions));
            EXPECT_TRUE(replay(c.frame));
            EXPECT_EQ(typed(), whole ? c.typedWhole : c.typed) << c.actions;
        }
    }
    EXPECT_EQ(world.keyboard.keybdEvents.size(), 8U) << "the two NumLock keys, twice";
    world.events.sleeps.clear();
    actions({"{CAPSLOCK}", "&CODE", "&Timer 70"});
    world.keyboard.setLock(kVkCapital, true);
    EXPECT_TRUE(replay("AB\n"));
    EXPECT_FALSE(world.keyboard.lockOn(kVkCapital));
    EXPECT_EQ(world.events.sleeps.back(), 70);

    // One that is suspended is told in its own window.
    world.watch.goneAt = world.watch.looks + 1;
    EXPECT_NE(ReplayFile(world.platform, run, file, ";")->rest, nullptr);
    EXPECT_THAT(toUtf8(world.icon.notices.back()),
                ::testing::Not(::testing::StartsWith("Saisie arr")));
}

TEST_F(Replay, AMissingFileIsSaidAndAFailingOutputReported) {
    EXPECT_FALSE(ReplayFile(world.platform, run, file, ";"));
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Le fichier n'existe pas"));
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_FALSE(world.progress.visible);
    run.active.FileMode = true;
    testing::writeBytes(file, "A\n");
    EXPECT_FALSE(ReplayFile(world.platform, run, file, ";")->whole()) << "no path for it";
    EXPECT_THAT(toUtf8(world.icon.notices.back()), ::testing::StartsWith("Rejeu échoué : "));
    world.files.unreadable = true;
    EXPECT_THROW((void)ReplayFile(world.platform, run, file, ";"), RuntimeError);
    EXPECT_FALSE(world.progress.visible) << "whatever happens";
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
