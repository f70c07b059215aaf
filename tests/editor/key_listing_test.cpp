#include "editor/keys/key_listing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "editor/keys/key_tables.h"
#include "keys/key_files.h"
#include "tests/editor/editor_site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

std::string listed(std::string_view script) {
    std::string rows;
    for (const std::string& row : listKeys(script, 250, 6)) rows += row + "|";
    return rows;
}

TEST(KeyListing, NamesKeysAsUsersDo) {
    struct Case {
        std::string_view script;
        std::string_view rows;
    };
    for (const auto& [script, rows] : {
             Case{"AB1 ~", "Texte : AB1 |Entrée|"_ansi},
             Case{"{TAB}{TAB}\t{F12}", "Tab x 3|F12|"},
             Case{"{DEL 40}", "Suppr x 40|"},
             Case{"^%{PGDN}x", "Ctrl + Alt + Page suivante|Texte : x|"},
             Case{"+(ab)c", "Maj + A|Maj + B|Texte : c|"},
             Case{"%{q}", "Alt + Q|"},
             Case{"été {!}"_ansi, "Texte : été !|"_ansi},
             Case{"\r\n", "Entrée|Ctrl + Entrée|"_ansi},
             Case{"\x01", "Ctrl + A|"},
             Case{"a{TIMER}b", "Texte : a|Pause de 250 ms|Texte : b|Pause de 250 ms|"},
             Case{"{NUMLOCK}a{CAPSLOCK}", "Verr. Num|Verr. Maj : éteint|Texte : a|"_ansi},
             Case{"a{CAPSLOCK}{TIMER}",
                  "Verr. Maj : éteint|Texte : a|Verr. Maj|Pause de 250 ms|Pause de 250 ms|"_ansi},
             Case{"{NUMPAD7}{BREAK}", "Pavé num. 7|Pause|"_ansi},
             Case{"a{oops", "Texte : a|"},
             Case{"", ""},
         })
        EXPECT_EQ(toUtf8(listed(script)), toUtf8(rows)) << script;
}

TEST(KeyListing, StopsAtItsLimit) {
    EXPECT_EQ(listed("a~a~a~a~a~a~"), std::string("Texte : a|Entrée|Texte : a|Entrée|Texte : a|"
                                                  "Entrée|...|"_ansi));
    EXPECT_EQ(listKeys("{DEL 2000000000}~", 0, 6).back(), "...") << "counting ends somewhere";
}

struct KeyBoxes : ::testing::Test, testing::EditorSite {};

TEST_F(KeyBoxes, RenamingAKeyKeepsWhatItTypes) {
    KeyTables tables = RemplirTouches(profiles, folder.path());
    ASSERT_EQ(tables.keys.size(), 15U);
    ASSERT_EQ(tables.systemKey.size(), 23U);
    EXPECT_EQ(tables.systemKey[1].label, "{Touche Tab}");
    EXPECT_EQ(tables.systemKey[1].types, "{TAB}");

    std::vector<std::string> labels;
    for (const KeyBox& box : tables.systemKey) labels.push_back(box.label);
    labels[1] = "{Suivant}";
    saveKeyLabels(profiles, folder.path(), kSystemSection, labels);
    KeyCorrespondenceTable keys;
    keys.LoadKeyCorrespondence(profiles, folder.path());
    EXPECT_EQ(keys.textOf("{Suivant}"), "{TAB}");
    EXPECT_EQ(keys.textOf("{Touche Tab}"), "");
    EXPECT_EQ(keys.textOf("{Touche F1}"), "{F1}");
    EXPECT_EQ(RemplirTouches(profiles, folder.path()).keys[3].label, tables.keys[3].label);
}

}  // namespace
}  // namespace kalvo
