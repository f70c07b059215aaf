// A scenario's test and its preview: nothing that is in force changes.
#include "editor/test_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "editor/script_preview.h"
#include "settings/options.h"
#include "tests/editor/editor_site.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScenarioTest : ::testing::Test, testing::EditorSite {
    [[nodiscard]] ScriptPreview preview(std::string_view frame) {
        return previewScript(platform, state, current.scenarioNumber, frame);
    }
};

TEST_F(ScenarioTest, IsPreviewedThenTypedFourTimes) {
    addScenario("Stock", testing::kEmulationRow,
                {"&CODE", "Touche Tab", "&QTY", std::string("Touche Entrée"_ansi)});
    EXPECT_EQ(preview("REF\r\n12\r\n").script, "REF{TAB}12{ENTER}");
    EXPECT_FALSE(files.fileExists(scenarioFile(folder.path(), "Stock")));
    EXPECT_THAT(world.keyboard.batches, IsEmpty());

    // It asks four times for each field, and types after two seconds.
    world.dialogs.inputs = {"a", "1", "b", "2", "c", "3", "d", "4"};
    std::string desktop;
    const auto minimise = [&] { desktop += 'm'; };
    runScenarioTest(platform, state, current, {minimise, [&] {
                                                   desktop += 't';
                                                   return true;
                                               }});
    EXPECT_EQ(desktop, "mt");
    EXPECT_EQ(world.dialogs.shown.size(), 8U);
    EXPECT_EQ(world.dialogs.shown[1].text, "Valeur du champs &QTY");
    EXPECT_THAT(world.events.sleeps, ::testing::Contains(2000));
    EXPECT_EQ(world.keyboard.typed(), "A>1!B>2!C>3!D>4!");
    EXPECT_EQ(state.scenario.active.ScenarioName, "") << "a test puts nothing in force";

    // The second frame's first question is cancelled: that is the end.
    world.dialogs.inputs = {"a", "1", std::nullopt};
    runScenarioTest(platform, state, current, {minimise, [] { return true; }});
    EXPECT_EQ(world.dialogs.shown.size(), 8U + 3U);
    EXPECT_EQ(world.dialogs.shown.back().title, "KALVO Horizon : trame 2 sur 4");
    EXPECT_EQ(world.keyboard.typed() + desktop, "mt");

    // Not into a window of ours.
    world.dialogs.inputs = {"a", "1", "b", "2", "c", "3", "d", "4"};
    runScenarioTest(platform, state, current, {minimise, [] { return false; }});
    EXPECT_EQ(world.keyboard.typed(), "");
    EXPECT_THAT(world.dialogs.texts().back(), ::testing::HasSubstr("rien n"));
}

TEST_F(ScenarioTest, LeavesAnotherOneInForce) {
    addScenario("Actif", testing::kEmulationRow, {"&CODE", "Touche Tab"});
    scenarios.chooseScenario();
    addScenario("Essai", testing::kFileRow, {"&QTY", "x"});
    scenarios.editPath(folder / "lot.txt");
    EXPECT_TRUE(preview("1\r").toFile);
    EXPECT_EQ(preview("1\r2\r").script, "1x2x");
    // Of two options that are on, this one changes what goes into a file.
    for (const Option option : {Option::kBuiltText, Option::kLiteralFields})
        setOption(profiles, folder.path(), option, 1);
    EXPECT_THAT(preview("1\r").options, ElementsAre(::testing::HasSubstr("TexteConstruit")));
    world.dialogs.inputs = {"1", "2", "3", "4"};
    runScenarioTest(platform, state, current, {[] {}, [] { return true; }});
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "&CODE", "Touche Tab"));
    EXPECT_FALSE(state.scenario.active.FileMode);
    current.scenarioNumber = 99;
    EXPECT_EQ(preview("1\r").script, "") << "no such scenario";
}

}  // namespace
}  // namespace kalvo
