#include "tray/tray_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/settings_store.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Menu : ::testing::Test, testing::Site {
    // What was opened, dispatched or ended, in order.
    std::vector<std::string> log;
    BatchJournal journal{nullptr, world.events, {}};
    SerialReception reception{platform, state, journal,
                              [this] { log.push_back("dispatch " + state.ReceivedData); }};
    TrayMenu menu{platform,
                  state,
                  reception,
                  {.showSettings = [this] { log.emplace_back("settings"); },
                   .showAbout = [this] { log.emplace_back("about"); },
                   .showReplay = [this] { log.emplace_back("replay"); },
                   .endProgram = [this] { log.emplace_back("end"); }}};

    Menu() { world.port.open = true; }
};

TEST_F(Menu, SettingsOpenUnlessAPasswordIsLeftInTheRegistryAndReplayAsksOrTakesTheConfiguredFile) {
    menu.choose(MenuEntry::kSettings);
    menu.choose(MenuEntry::kReplay);
    EXPECT_THAT(log, ElementsAre("settings", "replay"));
    writeSetting(world.registry, "MDPUTL", "x");
    profiles.write(portSerieIni(folder.path()), "Port_série"_ansi, "Fichier", folder / "lot.txt");
    menu.choose(MenuEntry::kSettings);
    menu.choose(MenuEntry::kReplay);
    EXPECT_EQ(log.size(), 2U);
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre("Problème de mot de passe"_ansi, "Le fichier n'existe pas"));
}

TEST_F(Menu, AnOrderScenarioBecomesTheActiveOneEachTime) {
    menu.choose(MenuEntry::kOrder);
    writeSetting(world.registry, kRacCde, "Commandes");
    world.compiled("Commandes", "Ligne", "Champs", "&CODE@");
    menu.choose(MenuEntry::kOrder);
    menu.choose(MenuEntry::kOrder);
    EXPECT_EQ(readSetting(world.registry, kRacScenChx), "Commandes");
    EXPECT_EQ(state.scenario.active.ScenarioName, "Commandes");
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre(std::string("Aucun scénario n'est défini pour la commande"_ansi),
                            std::string("Scénario de commande actif !"_ansi),
                            std::string("Scénario de commande actif !"_ansi)));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kInformation);
}

TEST_F(Menu, TransferPullsFromAScannerOnly) {
    state.TerminalType = "HT630";
    EXPECT_FALSE(menu.useful(MenuEntry::kTransfer));
    menu.choose(MenuEntry::kTransfer);
    EXPECT_EQ(world.port.sent, "");
    EXPECT_THAT(log, IsEmpty());

    state.TerminalType = "Optimus";
    EXPECT_TRUE(menu.useful(MenuEntry::kTransfer));
    world.port.whenSent = [&](std::string_view sent) {
        if (sent == "READ\r") world.port.waiting = "OVER\r";
    };
    menu.choose(MenuEntry::kTransfer);
    EXPECT_THAT(log, ElementsAre("dispatch "));
}

TEST_F(Menu, QuitClosesThePortRemovesTheIconAndEndsInATransferToo) {
    menu.choose(MenuEntry::kQuit);
    EXPECT_FALSE(world.port.open);
    EXPECT_THAT(world.icon.log, ElementsAre("delete"));
    EXPECT_THAT(log, ElementsAre("end"));

    state.TerminalType = "ScanPal";
    world.port.open = true;
    world.events.whilePumping = [&] {
        menu.choose(MenuEntry::kQuit);
        world.events.end = true;
    };
    EXPECT_THROW(menu.choose(MenuEntry::kTransfer), ProgramEnd);
    EXPECT_THAT(log, ElementsAre("end", "end")) << "nothing is dispatched any more";
}

TEST(MenuHighlight, GoesRoundWithTheArrows) {
    MenuHighlight highlight;
    highlight.up();
    EXPECT_EQ(highlight.index(), 5);
    highlight.down();
    EXPECT_EQ(highlight.index(), 0);
    highlight.overBackground();
    highlight.down();
    EXPECT_EQ(highlight.index(), 0);
}

}  // namespace
}  // namespace kalvo
