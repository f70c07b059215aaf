// A site is set up from nothing, tested, and receives its first frame.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "core/frame_dispatch.h"
#include "core/start_up.h"
#include "editor/script_preview.h"
#include "editor/test_run.h"
#include "tests/editor/editor_site.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kEmulationRow;

struct NewSite : ::testing::Test, testing::EditorSite {
    std::string typed() { return world.keyboard.typed(); }
};

TEST_F(NewSite, IsSetUpTestedAndTypesItsFirstFrame) {
    setPort(port_serie::kPortActive, "1");
    serial.ChargeCommunication();
    scenarios.load();

    // The scenario and its steps, with every way of changing them.
    addScenario("Stock", kEmulationRow, {"&CODE", "&EMP", "x", "Touche Tab"});
    actions.select(1);
    actions.pick("Touche Tab");
    actions.select(2);
    actions.mnuinsert();
    actions.pick("&QTY");
    actions.select(3);
    actions.mnusupp();
    actions.select(3);
    actions.pick(actions.LstTouches[3]);
    EXPECT_THAT(actions.LstChamps.rows, ElementsAre("--- &CODE", "--- Touche Tab", "--- &QTY",
                                                    std::string("--- Touche Entrée"_ansi)));

    // What it would type, before anything is typed or stored.
    const ScriptPreview preview =
        previewScript(platform, state, current.scenarioNumber, "REF\r\n12\r\n");
    EXPECT_EQ(preview.script, "REF{TAB}12{ENTER}");
    EXPECT_FALSE(files.fileExists(scenarioFile(folder.path(), "Stock")));
    EXPECT_THAT(world.keyboard.batches, IsEmpty());

    // Start and loop: the first frame field counts once, the rest is repeated.
    actions.select(0);
    actions.mnuboucle();
    actions.mnudepart();

    // The test asks four times for each field, and types after two seconds.
    world.dialogs.shown.clear();
    world.dialogs.inputs = {"a", "1", "b", "2", "c", "3", "d", "4"};
    bool minimised = false;
    runScenarioTest(platform, state, current, [&] { minimised = true; });
    EXPECT_TRUE(minimised);
    EXPECT_EQ(world.dialogs.shown.size(), 8U);
    EXPECT_EQ(world.dialogs.shown[1].text, "Valeur du champs &QTY");
    EXPECT_THAT(world.events.sleeps, ::testing::Contains(2000));
    EXPECT_EQ(typed(), "A>1!B>2!C>3!D>4!");
    EXPECT_EQ(state.scenario.active.ScenarioName, "") << "a test puts nothing in force";

    // Port and scenario are applied.
    chooseSettings(1, 6, 4, 0, 0, 0, 2);
    scenarios.chooseConnection(0);
    scenarios.applyConfiguration();
    EXPECT_EQ(world.dialogs.shown.size(), 8U) << "no message";
    EXPECT_TRUE(world.port.open);
    EXPECT_EQ(world.port.port, 2);
    EXPECT_EQ(world.icon.lastTip.substr(0, 42),
              std::string("Kalvo COM 2 : Ouvert, Scénario : Stock    "_ansi).substr(0, 42));

    // A frame comes in.
    BatchJournal journal(nullptr, world.events, {});
    SerialReception reception(platform, state, journal,
                              [&] { TraiteEmul(platform, state, journal); });
    world.port.receive("REF1\r5\rREF2\r7\rFINTRANSKALVO");
    EXPECT_EQ(typed(), "REF1>5!REF2>7!");

    // The next start finds everything.
    RunTimeState later;
    later.scenario.applicationFolder = folder.path();
    world.port.open = false;
    SerialReception again(platform, later, journal, [&] { TraiteEmul(platform, later, journal); });
    startUp(platform, later, again, [] { FAIL() << "the settings were asked for"; });
    world.port.receive("Z\r9\rFINTRANSKALVO");
    EXPECT_EQ(typed(), "Z>9!");
}

TEST_F(NewSite, ATestOfAnotherScenarioLeavesTheOneInForce) {
    addScenario("Actif", kEmulationRow, {"&CODE", "Touche Tab"});
    scenarios.chooseScenario();
    addScenario("Essai", testing::kFileRow, {"&QTY", "x"});
    scenarios.editPath(folder / "lot.txt");
    EXPECT_TRUE(previewScript(platform, state, current.scenarioNumber, "1\r").toFile);
    EXPECT_EQ(previewScript(platform, state, current.scenarioNumber, "1\r2\r").script, "1x2x");
    world.dialogs.inputs = {"1", "2", "3", "4"};
    runScenarioTest(platform, state, current, [] {});
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "&CODE", "Touche Tab"));
    EXPECT_FALSE(state.scenario.active.FileMode);
    EXPECT_EQ(previewScript(platform, state, 99, "1\r").script, "") << "no such scenario";
}

}  // namespace
}  // namespace kalvo
