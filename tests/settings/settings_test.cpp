// What is kept in INI files and the registry, and how it is read back.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "settings/application_paths.h"
#include "settings/application_settings.h"
#include "settings/options.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "settings/site_registry.h"
#include "tests/support/fake_registry.h"
#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"

namespace kalvo {
namespace {

struct Settings : ::testing::Test {
    testing::TemporaryFolder folder;
    testing::SystemProfiles files;
    const std::string app = folder.path();

    void set(std::string_view key, std::string_view value) {
        files.write(portSerieIni(app), port_serie::kSection, key, value);
    }
};

TEST_F(Settings, OptionsAreReadEachTimeAndFallBackToTheirStandard) {
    for (const OptionInfo& info : allOptions()) {
        EXPECT_EQ(info.advisable, info.standard == 0) << info.key;
        EXPECT_EQ(info.number, info.standard > 1) << info.key;
        EXPECT_EQ(std::count(info.sentence.begin(), info.sentence.end(), '.'), 1) << info.key;
        for (const char* nothing : {"", "oui", "1x"}) {
            EXPECT_EQ(optionValue(files, app, info.option), info.standard) << info.key;
            files.write(optionsIni(app), "Options", info.key, nothing);
        }
        EXPECT_EQ(optionValue(files, app, info.option), info.standard) << info.key;
        files.write(optionsIni(app), "Options", info.key, " 7");
        EXPECT_EQ(optionValue(files, app, info.option), 7) << info.key;
        EXPECT_TRUE(setOption(files, app, info.option, 0));
        EXPECT_FALSE(optionSet(files, app, info.option)) << info.key;
    }
}

TEST_F(Settings, AnApplicationIsTypedIntoInItsMannerElseInThatOfAll) {
    std::vector<std::string> complaints;
    const MannerOf mannerOf = applicationManners(
        files, app, [&](std::string_view text) { complaints.emplace_back(text); });
    const auto of = [&](std::vector<std::string> names) { return mannerOf(names); };
    EXPECT_EQ(of({"Term", "term"}), TypingManner()) << "no file";
    const auto write = [&](const char* section, std::string_view key, const char* value) {
        files.write(applicationsIni(app), section, key, value);
    };
    write("term", "Methode", "Presse-Papiers");
    write("term", "PauseTouche", "5");
    write("*", "PauseTouche", "1");
    write("*", "PauseValidation", "20");
    write("Term", "Avance", "0");
    write("*", "Avance", "x");
    const TypingManner term{.method = TypingMethod::kClipboard,
                            .keyPause = 5,
                            .confirmPause = 20,
                            .lead = 0,
                            .extendedKeys = false};
    EXPECT_EQ(of({"Other", "TERM"}), term);
    EXPECT_EQ(of({"Other", "TERM"}), term);
    EXPECT_EQ(of({}), (TypingManner{.keyPause = 1, .confirmPause = 20}));
    EXPECT_EQ(
        complaints,
        (std::vector<std::string>{
            std::string("Applications.ini, section « TERM », Avance : valeur ignorée, 0"_ansi),
            std::string("Applications.ini, section « * », Avance : valeur ignorée, x"_ansi)}));
}

TEST_F(Settings, IniReaderTakesTheFileFirstAndWriterLast) {
    const std::string file = folder / "a.ini";
    EXPECT_NE(WriteIniValue(files, "Type", "Nom", "Stock", file), 0);
    EXPECT_EQ(ReadIniValue(files, file, "Type", "Nom"), "Stock");
    EXPECT_EQ(ReadIniValue(files, folder / "b.ini", "Type", "Nom"), "");
    ClearIniValue(files, file, "Type", "Nom");
    EXPECT_EQ(testing::bytesOf(file), "[Type]\r\nNom=\r\n");
    EXPECT_EQ(WriteIniValue(files, "Type", "Nom", "x", folder / "none/a.ini"), 0);
}

TEST_F(Settings, RegistryValuesAreReadBackAsWritten) {
    testing::FakeRegistry registry;
    const auto root = RegistryRoot::kCurrentUser;
    EXPECT_EQ(GetValueKey(registry, root, kSettingsKey, kSepDec), "") << "missing";
    SetValueKey(registry, root, kSettingsKey, kSepDec, ",");
    EXPECT_EQ(GetValueKey(registry, root, kSettingsKey, kSepDec), ",");
    EXPECT_EQ(registry.query(root, kSettingsKey, kSepDec)->data.size(), 1U)
        << "no terminator is stored";
    registry.set(root, kSettingsKey, kRacCde, {kRegSz, std::string("Stock\0\0", 7)});
    EXPECT_EQ(readSetting(registry, kRacCde), "Stock") << "a stored terminator is cut";
    registry.set(root, kSettingsKey, kRacCde, {kRegDword, std::string("\x01\0\0\0", 4)});
    EXPECT_EQ(readSetting(registry, kRacCde), "") << "another type is no text";
}

TEST_F(Settings, ASiteHasTheUsersChoicesUntilItMakesOne) {
    auto usual = std::make_unique<testing::FakeRegistry>();
    testing::FakeRegistry& user = *usual;
    SiteRegistry site(std::make_unique<testing::FakeRegistry>(), std::move(usual));
    writeSetting(user, kSepDec, ",");
    EXPECT_EQ(readSetting(site, kSepDec), ",");
    writeSetting(user, kRacScenChx, "Stock");
    writeSetting(site, kSepDec, ".");
    writeSetting(user, kRacInvent, "later");
    EXPECT_EQ(readSetting(site, kRacScenChx) + readSetting(site, kSepDec), "Stock.");
    EXPECT_EQ(readSetting(site, kRacInvent), "") << "taken over once";
    EXPECT_EQ(readSetting(user, kSepDec), ",") << "the user's own stay";
}

TEST_F(Settings, TheLineSettingsAreIntegerPartsJoinedByCommas) {
    EXPECT_EQ(lineSettings(files, app), "0,,0,0") << "nothing configured";
    struct Case {
        const char *speed, *parity, *data, *stop, *line;
    };
    for (const Case& c : {Case{" 9600", "N", " 8", " 1", "9600,N,8,1"},
                          Case{"256000", "e", "7", " 1.5", "256000,e,7,1"},
                          Case{"HT630", "N", "8", "2", "0,N,8,2"}}) {
        set("Vitesse", c.speed);
        set("Bit de parité"_ansi, c.parity);
        set("Bit de donnée"_ansi, c.data);
        set("Bit d'arrêt"_ansi, c.stop);
        EXPECT_EQ(lineSettings(files, app), c.line);
    }
}

TEST_F(Settings, ThePortIsActiveForAnyOtherNumberThanZero) {
    EXPECT_FALSE(portActive(files, app));
    for (const auto& [value, active] :
         {std::pair{"0", false}, {" 1", true}, {"-1", true}, {"oui", false}}) {
        set("PortActif", value);
        EXPECT_EQ(portActive(files, app), active) << value;
    }
    set("Flux", " 2");
    EXPECT_EQ(storedHandshaking(files, app), Handshaking::kRtsCts);
    set("Flux", "4");
    EXPECT_EQ(storedHandshaking(files, app), Handshaking::kNone) << "no flow control known";
}

}  // namespace
}  // namespace kalvo
