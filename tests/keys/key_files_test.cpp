#include "keys/key_files.h"

#include <gtest/gtest.h>

#include "settings/application_paths.h"
#include "tests/support/fake_profile_files.h"

namespace kalvo {
namespace {

class KeyFiles : public ::testing::Test {
protected:
    testing::FakeProfileFiles files;
    KeyCorrespondenceTable table;

    void touche(const char* section, const char* entry, const char* value) {
        files.write(toucheIni("app"), section, entry, value);
    }
    void corres(const char* code, const char* script) {
        files.write(corresIni("app"), "Correspondance", code, script);
    }
};

TEST_F(KeyFiles, FillTheTableInOrder) {
    touche("Particuliere", "3", "{F5}@116");
    touche("Particuliere", "14", "{Fermer}@7");
    touche("systeme", "0", "{Haut}@7");
    touche("systeme", "22", "{Sans}@999");
    corres("116", "{F5}");
    corres("7", "%{q}");
    table.LoadKeyCorrespondence(files, "app");
    EXPECT_EQ(table.entries()[3].KeyLabel, "{F5}");
    EXPECT_EQ(table.textOf("{F5}"), "{F5}");
    EXPECT_EQ(table.entries()[15].KeyLabel, "{Haut}");
    EXPECT_EQ(table.textOf("{Haut}"), "%{q}") << "two entries may share a code";
    EXPECT_EQ(table.entries()[37].KeyLabel, "{Sans}");
    EXPECT_EQ(table.textOf("{Sans}"), "") << "a code without a script";
    EXPECT_EQ(table.textOf("{f5}"), "") << "labels compare exactly";
}

TEST_F(KeyFiles, TheLastOfEqualLabelsCounts) {
    touche("Particuliere", "0", "{A}@1");
    touche("systeme", "5", "{A}@2");
    corres("1", "one");
    corres("2", "two");
    table.LoadKeyCorrespondence(files, "app");
    EXPECT_EQ(table.textOf("{A}"), "two");
}

TEST_F(KeyFiles, EntriesThatMakeNoSenseMatchNothing) {
    touche("Particuliere", "0", "{A}");
    touche("Particuliere", "1", "{B}@douze");
    touche("Particuliere", "2", "{C}@99999");
    touche("Particuliere", "3", "{D}@1@2");
    corres("0", "zero");
    table.LoadKeyCorrespondence(files, "app");
    for (const auto& entry : table.entries()) EXPECT_EQ(entry.KeyLabel + entry.KeyText, "");
}

TEST_F(KeyFiles, ReloadingReplacesEveryEntry) {
    touche("Particuliere", "0", "{A}@1");
    corres("1", "one");
    table.LoadKeyCorrespondence(files, "app");
    touche("Particuliere", "0", "{B}@1");
    table.LoadKeyCorrespondence(files, "app");
    EXPECT_EQ(table.textOf("{A}"), "");
    EXPECT_EQ(table.textOf("{B}"), "one");
}

}  // namespace
}  // namespace kalvo
