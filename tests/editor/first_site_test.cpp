// The assistant of a new site: what it refuses, shows and types, and that it stores what
// the settings window stores.
#include "editor/first_site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/options.h"
#include "tests/editor/editor_site.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

enum TemplateRow { kCode, kCodeAndQuantity, kPlace, kFile };

struct FirstSiteTest : ::testing::Test, testing::EditorSite {
    FirstSite site{platform, state};

    [[nodiscard]] std::vector<std::string> stored() {
        std::vector<std::string> texts;
        for (const std::string& file : {portSerieIni(folder.path()), optionsIni(folder.path()),
                                        scenarioFile(folder.path(), "Saisie")})
            texts.push_back(files.fileExists(file) ? files.read(file) : "");
        for (const std::string_view name : {kRacScenChx, kRacInvent, kRacCde, kSepDec})
            texts.push_back(readSetting(platform.registry, name));
        const auto numero = findScenario(*state.database, "Saisie");
        current.scenarioNumber = numero.value_or(0);
        for (const std::string& action : storedActions()) texts.push_back(action);
        return texts;
    }
};

TEST_F(FirstSiteTest, StoresWhatTheSettingsWindowStores) {
    EXPECT_TRUE(nothingSetUp(platform, state));
    setPort(port_serie::kPort, " 0");
    EXPECT_TRUE(nothingSetUp(platform, state)) << "applied with nothing chosen";
    site.followDevices({"/dev/ttyS0"});
    EXPECT_EQ(site.serial.CboPort.selected, 0);
    site.followDevices({"", "/dev/ttyS1", "/dev/ttyS2"});
    EXPECT_EQ(site.serial.CboPort.selected, 0) << "two have appeared";
    site.followDevices({"/dev/ttyS0", "/dev/ttyS1"});
    site.followDevices({"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyUSB0"});
    EXPECT_EQ(site.serial.CboPort.selected, 2);
    site.choosePort(2);
    site.followDevices({"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyUSB0", "/dev/ttyUSB1"});
    EXPECT_EQ(site.serial.CboPort.selected, 2) << "the user's own";
    site.serial.chooseProtocol(2);
    EXPECT_TRUE(site.finish());
    EXPECT_FALSE(nothingSetUp(platform, state));
    EXPECT_EQ(state.scenario.active.ScenarioName, "Saisie");
    EXPECT_THAT(world.port.log, ::testing::Contains("Settings=9600,N,8,1"));
    const auto byAssistant = stored();

    testing::EditorSite byHand;
    byHand.setPort(port_serie::kPort, " 0");
    byHand.setPort(port_serie::kPortActive, "1");
    byHand.serial.ChargeCommunication();
    byHand.chooseSettings(2, 6, 4, 0, 0, 0, 2);
    byHand.scenarios.load();
    byHand.addScenario("Saisie", testing::kEmulationRow,
                       {"&CODE", "Touche Tab", "&QTY", std::string("Touche Entrée"_ansi)});
    byHand.choices.chooseConnection(0);
    byHand.choices.applyConfiguration();
    EXPECT_EQ(byAssistant[1], "") << "no options";
    EXPECT_EQ(byAssistant[0], byHand.files.read(portSerieIni(byHand.folder.path())));
    EXPECT_EQ(byAssistant[2], byHand.files.read(scenarioFile(byHand.folder.path(), "Saisie")));
    EXPECT_EQ(byAssistant[3], "Saisie");
    EXPECT_EQ(byAssistant[6], ".");
    EXPECT_EQ(storedActions(), byHand.storedActions());
}

TEST_F(FirstSiteTest, APageIsLeftOnlyWhenItIsFilledIn) {
    EXPECT_THAT(site.refusalOfTerminal(), HasSubstr("type"));
    site.serial.chooseProtocol(0);
    EXPECT_THAT(site.refusalOfTerminal(), HasSubstr("port"));
    site.serial.choosePort(0);
    EXPECT_EQ(site.refusalOfTerminal(), "");
    addScenario("Stock", testing::kEmulationRow, {"&CODE"});
    struct Case {
        const char *sample, *name, *path;
        TemplateRow row;
        const char* refusal;
    };
    const std::vector<Case> cases = {{"A\n1", "Saisie", "", kCodeAndQuantity, ""},
                                     {" \n", "Saisie", "", kCode, "exemple"},
                                     {"A", "l'article", "", kCode, "apostrophe"},
                                     {"A", "a/b", "", kCode, "dossiers"},
                                     {"A", "stock", "", kCode, "existe"},
                                     {"A\n1", "Saisie", " ", kFile, "fichier"},
                                     {"A\n1", "Saisie", "l'un.txt", kFile, "apostrophe"},
                                     {"A\n1", "Saisie", "lot.txt", kFile, ""}};
    for (const auto& one : cases) {
        site.sample = one.sample;
        site.scenarioName = one.name;
        site.outputPath = one.path;
        site.templates.selected = one.row;
        const std::string refusal = site.refusalOfScenario();
        EXPECT_TRUE(*one.refusal == '\0' ? refusal.empty()
                                         : refusal.find(one.refusal) != std::string::npos)
            << one.name << one.path << ": " << refusal;
    }
}

TEST_F(FirstSiteTest, TheSampleIsTypedAndNothingStored) {
    const auto before = stored();
    EXPECT_EQ(site.remark(), "");
    site.sample = "A+1\n2";
    EXPECT_EQ(site.preview().script, "A+1{TAB}2{ENTER}");
    site.advisedOptions = true;
    EXPECT_EQ(site.preview().script, "A{+}1{TAB}2{ENTER}");
    site.templates.selected = kFile;
    EXPECT_EQ(site.preview().script, "A+1;2\r\n");
    const auto ready = [] { return true; };
    site.test({[] {}, ready});
    EXPECT_THAT(world.keyboard.batches, IsEmpty()) << "a file is not typed";
    site.templates.selected = kPlace;
    EXPECT_THAT(site.remark(), HasSubstr("2 champs"));
    site.templates.selected = kCode;
    site.sample = "a";
    bool minimised = false;
    site.test({[&] { minimised = true; }, ready});
    EXPECT_TRUE(minimised);
    EXPECT_EQ(world.keyboard.typed(), "A!");
    EXPECT_THAT(world.events.sleeps, ::testing::Contains(2000));
    EXPECT_EQ(stored(), before);
}

TEST_F(FirstSiteTest, TheAdvisableOptionsAreSetAndNoOthers) {
    site.serial.chooseProtocol(0);
    site.serial.choosePort(0);
    site.advisedOptions = true;
    world.port.openError = 8002;
    EXPECT_FALSE(site.finish());
    EXPECT_THAT(world.dialogs.shown, IsEmpty()) << "the start-up that follows says it";
    std::vector<std::string_view> set;
    for (const OptionInfo& info : allOptions())
        if (optionValue(profiles, folder.path(), info.option) != info.standard)
            set.push_back(info.key);
    EXPECT_THAT(set, ElementsAre("TexteConstruit", "RejeuComplet", "TramePartielle", "PointDepart",
                                 "ChampsLitteraux", "TamponVide"));
    EXPECT_EQ(portSetting(port_serie::kProtocol), "Optimus") << "stored whatever the port does";
}

}  // namespace
}  // namespace kalvo
