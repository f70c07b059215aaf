#include "transfer/file_replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/application_paths.h"
#include "settings/options.h"
#include "tests/support/fake_platform.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Replay : public ::testing::Test {
protected:
    testing::FakePlatform world;
    ScenarioRun run;

    Replay() {
        run.applicationFolder = "/app";
        run.active.ScenarioName = "S";
    }

    void actions(std::vector<std::string> lines) {
        lines.insert(lines.begin(), "");
        run.active.ActionLines = std::move(lines);
    }

    bool replay(const std::string& content, std::string_view separator = ";") {
        world.files.files["/f.txt"] = content;
        return ReplayFile(world.platform, run, "/f.txt", separator).has_value();
    }

    // The letters and digits that were typed.
    [[nodiscard]] std::string typed() const {
        std::string text;
        for (const auto& batch : world.keyboard.batches) {
            const KeyRecord& key = batch.back();
            const auto code = static_cast<char>(key.virtualKey & 0xFFU);
            const bool down = (key.flags & kKeyEventKeyUp) == 0;
            if (down && code >= '0' && code <= 'Z') text += code;
        }
        return text;
    }
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
    world.profiles.write(scenarioFile("/app", "S"), "Fichier", "Chemin", "/out.txt");
    actions({"&CODE", "|"});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.content);
        EXPECT_TRUE(replay(std::string(c.content), c.separator));
        EXPECT_EQ(world.files.files["/out.txt"], c.fields);
    }
}

TEST_F(Replay, OfATimedScriptTheTextBehindTheLastTimerIsNotTyped) {
    actions({"&CODE", "&Timer 70", "&QTY"});
    EXPECT_TRUE(replay("AB;CD\n"));
    EXPECT_EQ(typed(), "AB");
    EXPECT_EQ(world.events.sleeps, (std::vector<int>{100, 70}));
    world.keyboard.batches.clear();
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

    world.keyboard.batches.clear();
    world.keyboard.keybdEvents.clear();
    actions({"{NUMLOCK}", "&CODE", "{NUMLOCK}"});
    EXPECT_TRUE(replay("AB\n"));
    EXPECT_EQ(typed(), "AB");
    EXPECT_EQ(world.keyboard.keybdEvents.size(), 4U);
}

TEST_F(Replay, EverythingIsTypedWhereTheSiteWantsIt) {
    for (const bool whole : {false, true}) {
        setOption(world.profiles, "/app", Option::kWholeReplay, whole ? 1 : 0);
        for (const char* last : {"x", "{TIMER}x"}) {
            world.keyboard.batches.clear();
            actions({"&CODE", last});
            EXPECT_TRUE(replay("AB\n"));
            const std::string without = *last == 'x' ? "" : "AB";
            EXPECT_EQ(typed(), whole ? "ABX" : without) << last;
        }
    }
}

TEST_F(Replay, AFailingOutputIsReported) {
    run.active.FileMode = true;
    world.files.diskFull = true;
    world.files.files["/f.txt"] = "A\n";
    const auto report = ReplayFile(world.platform, run, "/f.txt", ";");
    EXPECT_FALSE(report->whole());
}

TEST_F(Replay, AMissingFileIsSaidAndTypesNothing) {
    EXPECT_FALSE(ReplayFile(world.platform, run, "/none", ";"));
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Le fichier n'existe pas"));
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_FALSE(world.progress.visible);
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
    run.applicationFolder = "/app";
    EXPECT_NE(startFolder(), "");
    world.profiles.write(portSerieIni("/app"), "Port_série"_ansi, "Repertoire", "/lots");
    EXPECT_EQ(startFolder(), "/lots");
}

}  // namespace
}  // namespace kalvo
