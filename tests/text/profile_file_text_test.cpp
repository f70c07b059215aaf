#include "text/profile_file_text.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "text/ansi_text.h"
#include "text/file_text.h"

namespace kalvo {
namespace {

std::string utf16Be(std::string_view utf8) {
    std::string bytes = "\xFE\xFF";
    const std::string little = utf8ToUtf16Le(utf8);
    for (std::size_t i = 0; i < little.size(); i += 2) bytes += {little[i + 1], little[i]};
    return bytes;
}

TEST(ProfileEncodings, AMarkTellsUnicode) {
    const std::string text = "[Port_série]\r\nRépertoire=C:\\été\r\n漢=字😀\r\n";
    const std::string changed = "[Port_série]\r\nRépertoire=C:\\été\r\n漢=字😀\r\nÉtat=prêt €\r\n";
    struct Case {
        std::string before, after;
    };
    for (const auto& [before, after] :
         {Case{"\xEF\xBB\xBF" + text, "\xEF\xBB\xBF" + changed},
          Case{"\xFF\xFE" + utf8ToUtf16Le(text), "\xFF\xFE" + utf8ToUtf16Le(changed)},
          Case{utf16Be(text), utf16Be(changed)}}) {
        EXPECT_EQ(findProfileValue(before, "port_SÉRIE"_ansi, "RÉPERTOIRE"_ansi), "C:\\été"_ansi);
        EXPECT_EQ(withProfileValue(before, "Port_série"_ansi, "État"_ansi, "prêt €"_ansi), after);
    }
}

TEST(ProfileEncodings, WithoutAMarkAFileIsCodePage1252UnlessItIsUtf8) {
    const std::string utf8 = "[Port_série]\r\nPort=3\r\n";
    EXPECT_EQ(findProfileValue(utf8, "Port_série"_ansi, "Port"), "3");
    EXPECT_EQ(withProfileValue(utf8, "Port_série"_ansi, "Bit d'arrêt"_ansi, "1"),
              utf8 + "Bit d'arrêt=1\r\n");
    EXPECT_EQ(
        findProfileValue(std::string("[Port_série]\nPort=3\n"_ansi), "Port_série"_ansi, "Port"),
        "3");
}

TEST(ProfileEncodings, DamagedUnicodeSurvives) {
    // A lone surrogate, a broken UTF-8 sequence.
    const std::string lone =
        "\xFF\xFE" + utf8ToUtf16Le("[s]\r\na=") + std::string("\x00\xD8\x0D\x00\x0A\x00", 6);
    EXPECT_EQ(withProfileValue(lone, "s", "b", "1"), lone + utf8ToUtf16Le("b=1\r\n"));
    const std::string broken = "\xEF\xBB\xBF[s]\r\na=\xC3(\xFF\r\n";
    EXPECT_EQ(withProfileValue(broken, "s", "b", "1"), broken + "b=1\r\n");
}

TEST(ProfileText, WhatIsAboutTheNextSectionStaysWhenOneGoes) {
    EXPECT_EQ(withoutProfileSection("; a\n[a]\nk=1\n; within\nl=2\n\n; b\n[b]\n", "A"),
              "; a\n; b\n[b]\n");
    EXPECT_EQ(withoutProfileSection("[a]\nk=1", "a"), "");
}

TEST(ProfileText, LinesEndInAnyOfTheThreeWaysAndUnfinishedOnesAreHarmless) {
    const std::string mixed = "[s]\ra=1\rb=2\nc=3\r\n\x1A";
    for (const auto& [key, value] : {std::pair{"a", "1"}, {"b", "2"}, {"c", "3"}})
        EXPECT_EQ(findProfileValue(mixed, "s", key), value);
    EXPECT_EQ(withProfileValue("[s]\ra=1\rb=2\r", "s", "a", "x"), "[s]\ra=x\rb=2\r");
    for (const char* content : {"", "[", "[s", "=", "]", "[]", ";", "\r", "[s]\r\n[s", "\xFF\xFE",
                                "\xFE\xFF\x00", "\xEF\xBB\xBF"})
        EXPECT_EQ(findProfileValue(withProfileValue(content, "x", "k", "v"), "x", "k"), "v")
            << content;
}

}  // namespace
}  // namespace kalvo
