#include "editor/keys/key_listing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

}  // namespace
}  // namespace kalvo
