#include "keys/key_files.h"

#include <gtest/gtest.h>

#include "settings/application_paths.h"
#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"

namespace kalvo {
namespace {

struct KeyFiles : ::testing::Test {
    testing::TemporaryFolder folder;
    testing::SystemProfiles files;
    KeyCorrespondenceTable table;

    void touche(const char* section, const char* entry, const char* value) {
        files.write(toucheIni(folder.path()), section, entry, value);
    }
    void corres(const char* code, const char* script) {
        files.write(corresIni(folder.path()), "Correspondance", code, script);
    }
    void load() { table.LoadKeyCorrespondence(files, folder.path()); }
};

TEST_F(KeyFiles, FillTheTableInOrder) {
    touche("Particuliere", "3", "{F5}@116");
    touche("Particuliere", "14", "{Fermer}@7");
    touche("systeme", "0", "{Haut}@7");
    touche("systeme", "22", "{Sans}@999");
    corres("116", "{F5}");
    corres("7", "%{q}");
    load();
    EXPECT_EQ(table.entries()[3].KeyLabel, "{F5}");
    EXPECT_EQ(table.textOf("{F5}"), "{F5}");
    EXPECT_EQ(table.entries()[15].KeyLabel, "{Haut}");
    EXPECT_EQ(table.textOf("{Haut}"), "%{q}") << "two entries may share a code";
    EXPECT_EQ(table.entries()[37].KeyLabel, "{Sans}");
    EXPECT_EQ(table.textOf("{Sans}"), "") << "a code without a script";
    EXPECT_EQ(table.textOf("{f5}"), "") << "labels compare exactly";

    touche("systeme", "5", "{F5}@7");
    touche("Particuliere", "14", "{Neuf}@7");
    load();
    EXPECT_EQ(table.textOf("{F5}"), "%{q}") << "the last of equal labels counts";
    EXPECT_EQ(table.textOf("{Neuf}"), "%{q}");
    EXPECT_EQ(table.textOf("{Fermer}"), "") << "loading again replaces every entry";
}

TEST_F(KeyFiles, EntriesThatMakeNoSenseMatchNothing) {
    touche("Particuliere", "0", "{A}");
    touche("Particuliere", "1", "{B}@douze");
    touche("Particuliere", "2", "{C}@99999");
    touche("Particuliere", "3", "{D}@1@2");
    corres("0", "zero");
    load();
    for (const auto& entry : table.entries()) EXPECT_EQ(entry.KeyLabel + entry.KeyText, "");
}

}  // namespace
}  // namespace kalvo
