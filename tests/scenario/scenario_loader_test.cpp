#include "scenario/scenario_loader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Loading : public ::testing::Test {
protected:
    testing::FakePlatform world;
    ScenarioRun run;

    Loading() {
        run.applicationFolder = "/app";
        choose("Stock");
    }
    void choose(const char* name) {
        writeSetting(world.registry, kRacScenChx, name);
        world.files.files[scenarioFile("/app", name)] = "";
    }
    void set(const char* section, const char* key, const char* value,
             const char* scenario = "Stock") {
        world.profiles.write(scenarioFile("/app", scenario), section, key, value);
    }
    void load() { LoadActiveScenario(world.platform, run); }
};

TEST_F(Loading, FillsTheScenarioInForce) {
    set("Type", "Type", "Fichier");
    set("Fichier", "Chemin", "C:\\data\\{3}.txt");
    set("Mat", "Specif", "1");
    set("Ligne", "Champs", "a@@b@");
    set("Partiel", "Choix", "1");
    set("Trame", "Trame", "2@x@1@");
    world.port.port = 4;
    load();
    EXPECT_EQ(run.active.ScenarioName, "Stock");
    EXPECT_TRUE(run.active.FileMode);
    EXPECT_TRUE(run.active.FileNameFromFrame);
    EXPECT_EQ(run.active.FileNameField, "3");
    EXPECT_TRUE(run.active.SpecifMode);
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "a"));
    ASSERT_EQ(run.active.SubFrameMap.size(), 4U);
    EXPECT_EQ(run.active.SubFrameMap[1].subFrame, 2);
    EXPECT_EQ(run.active.SubFrameMap[2].subFrame, 0) << "no number";
    EXPECT_EQ(run.active.SubFrameMap[3].slot, 3);
    EXPECT_THAT(world.icon.log,
                ElementsAre(std::string("modify Kalvo COM 4 : Ouvert, Scénario : Stock"_ansi)));
    EXPECT_EQ(world.icon.lastTip.size(), kTipLength);
}

TEST_F(Loading, MissingValuesLeaveWhatWasThere) {
    set("Ligne", "Champs", "a@b@");
    set("Mat", "Specif", "1");
    load();
    choose("Vide");
    load();
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "a", "b"));
    EXPECT_TRUE(run.active.SpecifMode);
    EXPECT_FALSE(run.active.FileMode);
}

TEST_F(Loading, AnEmulationHasNoFileName) {
    set("Type", "Type", "Fichier");
    set("Fichier", "Chemin", "}{");
    load();
    EXPECT_TRUE(run.active.FileNameFromFrame);
    EXPECT_EQ(run.active.FileNameField, "") << "braces in the wrong order name nothing";
    set("Type", "Type", "Emulation");
    load();
    EXPECT_FALSE(run.active.FileMode);
    EXPECT_FALSE(run.active.FileNameFromFrame);
}

TEST_F(Loading, AChoiceWhoseFileIsGoneIsCleared) {
    load();
    world.files.files.clear();
    load();
    EXPECT_EQ(readSetting(world.registry, kRacScenChx), "");
    EXPECT_EQ(run.active.ScenarioName, "");
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre(std::string("Aucun scénario n'est défini"_ansi)));
    EXPECT_EQ(world.dialogs.shown[0].title, "KALVO Horizon");
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kInformation);
}

TEST_F(Loading, ATestLeavesTheChosenScenarioChosen) {
    load();
    world.icon.log.clear();
    set("Ligne", "Champs", "t@", "Essai");
    LoadTestScenario(world.platform, run, "Essai");
    EXPECT_EQ(run.active.ScenarioName, "Stock");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "t"));
    EXPECT_THAT(world.dialogs.shown, IsEmpty());
    EXPECT_THAT(world.icon.log, IsEmpty());
}

}  // namespace
}  // namespace kalvo
