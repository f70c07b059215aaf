#include "settings/settings_store.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/fake_profile_files.h"
#include "tests/support/fake_registry.h"

namespace kalvo {
namespace {

TEST(IniValues, ReaderTakesTheFileFirstAndWriterLast) {
    testing::FakeProfileFiles files;
    EXPECT_NE(WriteIniValue(files, "Type", "Nom", "Stock", "a.ini"), 0);
    EXPECT_EQ(ReadIniValue(files, "a.ini", "Type", "Nom"), "Stock");
    EXPECT_EQ(ReadIniValue(files, "b.ini", "Type", "Nom"), "");

    ClearIniValue(files, "a.ini", "Type", "Nom");
    EXPECT_EQ(files.writes.back(), "a.ini[Type]Nom=");

    files.readOnly = true;
    EXPECT_EQ(WriteIniValue(files, "Type", "Nom", "x", "a.ini"), 0);
}

TEST(RegistryValues, AreReadBackAsWritten) {
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

}  // namespace
}  // namespace kalvo
