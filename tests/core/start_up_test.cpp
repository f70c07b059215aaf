#include "core/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/icon_state.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct StartingUp : ::testing::Test, testing::Site {
    BatchJournal journal{nullptr, world.events, {}};
    SerialReception reception{platform, state, journal, [] {}};
    int settingsOpened = 0;

    StartingUp() {
        portSerie("PortActif", "1");
        portSerie("Port", "2");
        choose("Stock");
    }
    void portSerie(const char* key, const char* value) {
        profiles.write(portSerieIni(folder.path()), "Port_série"_ansi, key, value);
    }
    void choose(const std::string& name) {
        writeSetting(world.registry, kRacScenChx, name);
        files.create(scenarioFile(folder.path(), name))->close();
    }
    PortStart start() {
        return startUp(platform, state, reception, [this] { ++settingsOpened; });
    }
    [[nodiscard]] std::string tip() const { return world.icon.lastTip; }
    static std::string expectedTip(const char* port, std::string_view name) {
        std::string text =
            "Kalvo COM " + std::string(port) + std::string(" : Ouvert, Scénario : "_ansi);
        text += name;
        text.resize(64, ' ');
        return text;
    }
};

TEST_F(StartingUp, BringsEverythingUpAndShowsTheIcon) {
    writeSetting(world.registry, kRacInvent, "Inv");
    writeSetting(world.registry, kRacCde, "Cde");
    writeSetting(world.registry, kSepDec, ",");
    state.database->Execute(
        "INSERT INTO Scenarios (Numero,Nom,Type) VALUES (3,'Stock','Emulation')");
    insertAction(*state.database, 3, 1, {"&CODE", 0});
    start();
    EXPECT_THAT(world.dialogs.shown, IsEmpty());
    EXPECT_EQ(state.RacInvent, "Inv");
    EXPECT_EQ(state.RacCde, "Cde");
    EXPECT_EQ(state.scenario.DecimalSeparator, ",");
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "&CODE"))
        << "compiled, then loaded";
    EXPECT_TRUE(world.port.open);
    EXPECT_EQ(tip(), expectedTip("2", "Stock"));
    EXPECT_THAT(world.icon.log[1], HasSubstr("add "));
}

TEST_F(StartingUp, SaysWhatIsMissing) {
    portSerie("PortActif", "0");
    start();
    EXPECT_FALSE(world.port.open) << "an inactive port is not opened, and nothing is said";
    EXPECT_THAT(world.dialogs.shown, IsEmpty());
    EXPECT_EQ(tip(), expectedTip("1", "Stock"));
    EXPECT_EQ(world.content("Scenarios/Stock.ini"), "")
        << "not in the table: not compiled, but its file from before still serves";

    portSerie("PortActif", "1");
    portSerie("Port", "");
    start();
    EXPECT_EQ(settingsOpened, 1);
    EXPECT_FALSE(world.icon.log.empty());
    portSerie("Port", "2");
    writeSetting(world.registry, kRacScenChx, "");
    start();
    EXPECT_EQ(tip(), expectedTip("2", "Aucun scénario choisi"_ansi));
    world.port.port = 7;
    world.port.log.clear();
    start();
    EXPECT_THAT(world.port.log, IsEmpty()) << "an open port is not opened again";
    EXPECT_EQ(world.dialogs.shown[3].icon, MessageIcon::kCritical);
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre("Veuillez configurer les paramétres de communication."_ansi,
                            "Aucun scénario n'est défini"_ansi, "Aucun scénario n'est défini"_ansi,
                            "Le port de communication : 7 est déja ouvert"_ansi));
}

TEST_F(StartingUp, ErrorsAreShownAndTheProgramGoesOn) {
    const std::string database = folder / "Scen.mdb";
    state.database.reset();  // Windows does not rename a file that is open
    std::filesystem::rename(database, database + ".away");
    start();
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre(AllOf(HasSubstr(std::string("Erreur N° : 3024\r\n\r\n"_ansi)),
                                  HasSubstr("\r\n\r\nL'application va se fermer."))));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kCritical);
    EXPECT_FALSE(world.port.open) << "the rest of the steps is left out";
    EXPECT_EQ(tip(), expectedTip("1", "Aucun scénario choisi"_ansi));

    std::filesystem::rename(database + ".away", database);
    world.dialogs.shown.clear();
    struct Case {
        int error;
        PortStart port;
    };
    const std::vector<Case> cases = {{error_number::kPortSettings, PortStart::kSettingsRefused},
                                     {error_number::kPermissionDenied, PortStart::kFailed},
                                     {error_number::kPortInvalid, PortStart::kAway},
                                     {error_number::kPortAlreadyOpen, PortStart::kBusy}};
    for (const auto& [error, port] : cases) {
        world.port.openError = error;
        EXPECT_EQ(start(), port) << error;
    }
    EXPECT_THAT(world.dialogs.texts().back(), HasSubstr("8005"));
    EXPECT_EQ(tip(), expectedTip("2", "Stock"));
}

TEST(IconState, ShowsTheMostPressingThing) {
    struct Case {
        ProgramCondition condition;
        IconState state;
    };
    const std::vector<Case> cases = {
        {{.portOpen = true}, IconState::kReady},
        {{.portOpen = false, .waiting = 2}, IconState::kNoPort},
        {{.portOpen = true, .lineLost = true, .waiting = 2}, IconState::kNoPort},
        {{.portOpen = true, .waiting = 1}, IconState::kAttention},
        {{.portOpen = false, .lineLost = true, .typing = true, .waiting = 1}, IconState::kTyping},
    };
    for (const auto& [condition, state] : cases) EXPECT_EQ(iconStateOf(condition), state);
}

}  // namespace
}  // namespace kalvo
