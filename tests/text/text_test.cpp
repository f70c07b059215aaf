#include <gtest/gtest.h>

#include <set>
#include <string>

#include "text/ansi_text.h"
#include "text/oem_text.h"

namespace kalvo {
namespace {

TEST(AnsiText, LiteralsBecomeOneByteACharacter) {
    EXPECT_EQ("Port_série"_ansi, "Port_s\xE9rie");
    EXPECT_EQ("€œ"_ansi, "\x80\x9C");
    EXPECT_EQ(""_ansi, "");
}

TEST(AnsiText, EveryByteSurvivesTheWayThroughUnicode) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string ansi(1, static_cast<char>(byte));
        EXPECT_EQ(fromUtf8(toUtf8(ansi)), ansi) << "byte " << byte;
    }
}

TEST(AnsiText, WhatHasNoCharacterBecomesAQuestionMark) {
    EXPECT_EQ(fromUtf8("a→b"), "a?b");
    EXPECT_EQ(fromUtf8("a\xE9"
                       "b"),
              "a?b")
        << "a stray byte is not UTF-8";
    EXPECT_EQ(fromUtf8("\xC3"), "?") << "a cut sequence ends the text";
    EXPECT_EQ(fromUtf8("\U0001F600!"), "?!");
}

TEST(AnsiText, ComparingIgnoresTheCaseOfAccentedLetters) {
    EXPECT_TRUE(equalIgnoringCase("Port_série"_ansi, "PORT_SÉRIE"_ansi));
    EXPECT_TRUE(equalIgnoringCase("ŒŸŠ"_ansi, "œÿš"_ansi));
    EXPECT_FALSE(equalIgnoringCase("×"_ansi, "÷"_ansi)) << "signs have no case";
    EXPECT_FALSE(equalIgnoringCase("ab", "abc"));
}

TEST(OemText, AccentedLettersHaveTheirCodesOfPage850) {
    EXPECT_EQ(ansiToOem("é"_ansi[0]), 130);
    EXPECT_EQ(ansiToOem("ÿ"_ansi[0]), 152);
    EXPECT_EQ(ansiToOem("Ô"_ansi[0]), 226);
    EXPECT_EQ(ansiToOem("€"_ansi[0]), 213);
    EXPECT_EQ(ansiToOem('A'), 65);
}

TEST(OemText, NoAnsiCharacterIsLost) {
    std::set<unsigned char> codes;
    for (int byte = 0; byte < 256; ++byte) {
        const char ansi = static_cast<char>(byte);
        codes.insert(ansiToOem(ansi));
        EXPECT_EQ(oemToAnsi(ansiToOem(ansi)), ansi) << "byte " << byte;
    }
    EXPECT_EQ(codes.size(), 256U);
}

}  // namespace
}  // namespace kalvo
