// The daily copies of a real scenario database, and the return to one.
#include "dashboard/site_copies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "scenario/scenario_store.h"
#include "settings/settings_store.h"
#include "tests/support/error_of.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

struct Copies : ::testing::Test, testing::Site {
    void addScenario(std::int16_t number, const char* name) {
        insertScenario(*state.database, {number, name, "Emulation", 0, 0, "", 0, 0, 0});
        insertAction(*state.database, number, 1, {"A", 0});
    }
    [[nodiscard]] std::vector<std::string> titles() {
        std::vector<std::string> all;
        for (const SiteCopy& copy : siteCopies(files, folder.path())) all.push_back(copy.title);
        return all;
    }
};

TEST_F(Copies, AreMadeOnceADayAndTenAreKept) {
    EXPECT_THAT(titles(), ElementsAre());
    for (int day = 1; day <= 12; ++day) {
        world.events.time.day = day;
        keepDailyCopy(platform, folder.path());
    }
    const auto firstSize = std::filesystem::file_size(folder / "Copies/Scen-2024-03-12.mdb");
    state.database->Transaction([&] {
        for (std::int16_t i = 1; i < 200; ++i) addScenario(i, "Stock");
    });
    keepDailyCopy(platform, folder.path());
    EXPECT_EQ(std::filesystem::file_size(folder / "Copies/Scen-2024-03-12.mdb"), firstSize);
    makeDailyCopy(platform, folder.path());
    EXPECT_GT(std::filesystem::file_size(folder / "Copies/Scen-2024-03-12.mdb"), firstSize);
    std::ofstream(folder / "Copies/Scen-2024-3-012.mdb") << "not ours";
    EXPECT_EQ(titles().size(), 10U);
    EXPECT_EQ(titles().front(), "12/03/2024");
    EXPECT_EQ(titles().back(), "03/03/2024");
}

TEST_F(Copies, BringTheirScenariosBackAndLeaveTheCounter) {
    addScenario(1, "Stock");
    writeCounter(*state.database, 5);
    makeDailyCopy(platform, folder.path());
    writeCounter(*state.database, 9);
    updateNom(*state.database, 1, "Autre");
    std::filesystem::create_directory(folder / "Scenarios");
    for (const char* name : {"Autre", "De la main"})
        std::ofstream(folder / ("Scenarios/" + std::string(name) + ".ini")) << "[Type]\n";
    SetValueKey(world.registry, RegistryRoot::kCurrentUser, kSettingsKey, kRacScenChx, "Stock");

    SiteCopy copy = siteCopies(files, folder.path()).front();
    EXPECT_EQ(returnTo(platform, state, copy),
              "Les scénarios sont ceux de la copie : 05/03/2024."_ansi);
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Stock"));
    EXPECT_EQ(readCounter(*state.database), 9);
    EXPECT_FALSE(files.fileExists(folder / "Scenarios/Autre.ini")) << "would be typed on";
    EXPECT_TRUE(files.fileExists(folder / "Scenarios/De la main.ini"));
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "A"));
    EXPECT_THAT(titles(), ElementsAre("avant le dernier retour en arrière"_ansi, "05/03/2024"));

    // And forth again.
    copy = siteCopies(files, folder.path()).front();
    (void)returnTo(platform, state, copy);
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Autre"));

    // A copy that is no database changes nothing.
    std::ofstream(folder / "Copies/Scen-2024-03-06.mdb") << "damaged";
    const SiteCopy damaged{folder / "Copies/Scen-2024-03-06.mdb", "06/03/2024"};
    EXPECT_NE(testing::errorOf([&] { (void)returnTo(platform, state, damaged); }), 0);
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Autre"));
    EXPECT_FALSE(files.fileExists(folder / "Copies/Scen-avant-retour.kalvo-1.tmp"));

    // What they are for.
    state.database.reset();
    std::ofstream(folder / "Scen.mdb", std::ios::trunc) << "damaged";
    (void)returnTo(platform, state, siteCopies(files, folder.path()).at(2));
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Stock"));
    EXPECT_EQ(world.content("Copies/Scen-avant-retour.mdb"), "damaged");
}

}  // namespace
}  // namespace kalvo
