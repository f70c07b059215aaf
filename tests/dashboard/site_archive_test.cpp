// A site in a zip archive, and out of it again.
#include "dashboard/site_archive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/libzip/zip_archive.h"
#include "scenario/scenario_store.h"
#include "settings/settings_store.h"
#include "tests/support/error_of.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using testing::errorOf;
using ::testing::HasSubstr;
using ::testing::Not;

struct SiteArchive : ::testing::Test, testing::Site {
    ZipArchive zip;

    void write(const std::string& name, std::string_view content) {
        std::filesystem::create_directories(folder / "Scenarios");
        files.replace(folder / name, content);
    }
    void addScenario(std::int16_t number, const char* name, const char* action) {
        insertScenario(*state.database, {number, name, "Emulation", 0, 0, "", 0, 0, 0});
        insertAction(*state.database, number, 1, {action, 0});
    }
    [[nodiscard]] std::string changes(const SiteImport& site) {
        return changesOf(platform, folder.path(), site);
    }
};

TEST_F(SiteArchive, CarriesASiteToAnotherState) {
    write("PortSerie.ini", "[Port_s\xE9rie]\r\nPort=3\r\n");
    const std::string keys = "[systeme]\r\n 1={Tab}@7\r\n";
    write("Touche.ini", keys);
    write("Corres.ini", "[Correspondance]\r\n 7={TAB}\r\n");
    write("Journal.db", "stays here");
    write("Scenarios/\xC9t\xE9.ini", "compiled");
    addScenario(1, "Stock", "A");
    addScenario(2, "Vente", "B");
    const SiteImport site = readSite(zip, packSite(platform, folder.path(), zip));
    std::vector<std::string> names;
    for (const ArchiveFile& file : site.files) names.push_back(file.name);
    EXPECT_THAT(names, ElementsAre("PortSerie.ini", "Touche.ini", "Corres.ini", "Scen.mdb",
                                   "Scenarios/\xC9t\xE9.ini"));
    EXPECT_EQ(changes(site), "");

    write("Touche.ini", "new");
    std::filesystem::remove(folder / "PortSerie.ini");
    updateAction(*state.database, 1, 1, "C");
    deleteScenario(*state.database, 2);
    addScenario(3, "Retour", "D");
    writeCounter(*state.database, 7);
    SetValueKey(world.registry, RegistryRoot::kCurrentUser, kSettingsKey, kRacScenChx, "Stock");
    EXPECT_THAT(
        changes(site),
        AllOf(HasSubstr("PortSerie.ini : ajouté"_ansi.data()),
              HasSubstr("Touche.ini : remplacé"_ansi.data()),
              HasSubstr("Stock : changé"_ansi.data()), HasSubstr("Vente : ajouté"_ansi.data()),
              HasSubstr("Retour : supprimé"_ansi.data()), Not(HasSubstr("t\xE9.ini"))));
    EXPECT_THAT(bringIn(platform, state, zip, site), HasSubstr("importé"_ansi.data()));
    EXPECT_EQ(state.scenario.keys.textOf("{Tab}"), "{TAB}") << "at once";
    EXPECT_EQ(changes(site), "");
    EXPECT_EQ(world.content("Touche.ini"), keys);
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Stock", "Vente"));
    EXPECT_EQ(readCounter(*state.database), 7);
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "A"));
    // And back.
    (void)bringIn(platform, state, zip,
                  readSite(zip, world.content("Copies/Site-avant-import.zip")));
    EXPECT_EQ(world.content("Touche.ini"), "new");
    EXPECT_THAT(scenarioNames(*state.database), ElementsAre("Stock", "Retour"));
    EXPECT_FALSE(files.fileExists(folder / "Copies/Scen-echange.kalvo-1.tmp"));
}

TEST_F(SiteArchive, LeavesAsideWhatIsNoneOfASite) {
    const SiteImport site = readSite(zip, zip.pack({{"touche.INI", "1"},
                                                    {"Touche.ini", "2"},
                                                    {"../Corres.ini", ""},
                                                    {"Scenarios/../Options.ini", ""},
                                                    {"Scenarios/a/b.ini", ""},
                                                    {"Scenarios/a\\b.ini", ""},
                                                    {"scenarios/Stock.ini", "3"},
                                                    {"Scenarios/.ini", ""},
                                                    {"C:\\Corres.ini", ""},
                                                    {"/Corres.ini", ""},
                                                    {"Journal.db", ""}}));
    ASSERT_EQ(site.files.size(), 2U);
    EXPECT_EQ(site.files[0], (ArchiveFile{"Touche.ini", "1"}));
    EXPECT_EQ(site.files[1], (ArchiveFile{"Scenarios/Stock.ini", "3"}));
    EXPECT_EQ(site.ignored.size(), 9U);

    const std::string good = zip.pack({{"Touche.ini", std::string(100'000, 'x')}});
    EXPECT_LT(good.size(), 2'000U);
    std::string damaged = zip.pack({{"Touche.ini", "abc"}});
    damaged[41] = static_cast<char>(damaged[41] ^ 1);
    for (const std::string& bytes :
         {std::string(), std::string("PK"), good.substr(0, good.size() / 2), damaged,
          zip.pack({{"other.txt", "x"}})})
        EXPECT_EQ(errorOf([&] { (void)readSite(zip, bytes); }), error_number::kBadFormat)
            << bytes.size();
    EXPECT_EQ(errorOf([&] { (void)zip.unpack(good, 99'999); }), error_number::kBadFormat);
    addScenario(1, "Stock", "A");
    EXPECT_NE(errorOf([&] { (void)changes({{{"Scen.mdb", "no database"}}, {}}); }), 0);
}

}  // namespace
}  // namespace kalvo
