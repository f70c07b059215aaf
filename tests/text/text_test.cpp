#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/error_of.h"
#include "tests/support/words.h"
#include "text/ansi_text.h"
#include "text/field_text.h"
#include "text/line_capture.h"
#include "text/number_text.h"
#include "text/oem_text.h"

namespace kalvo {
namespace {

using testing::errorOf;
using testing::split;
using testing::words;

TEST(AnsiText, LiteralsBecomeOneByteACharacter) {
    EXPECT_EQ("Port_série"_ansi, "Port_s\xE9rie");
    EXPECT_EQ("€œ"_ansi, "\x80\x9C");
    EXPECT_EQ(""_ansi, "");
}

TEST(AnsiText, GoesThroughUnicodeAndOemTextWithoutLoss) {
    std::set<unsigned char> codes;
    for (int byte = 0; byte < 256; ++byte) {
        const char ansi = static_cast<char>(byte);
        EXPECT_EQ(fromUtf8(toUtf8(std::string(1, ansi))), std::string(1, ansi)) << "byte " << byte;
        EXPECT_EQ(oemToAnsi(ansiToOem(ansi)), ansi) << "byte " << byte;
        codes.insert(ansiToOem(ansi));
    }
    EXPECT_EQ(codes.size(), 256U);
    // Codes of page 850.
    const std::string_view letters = "éÿÔ€A"_ansi;
    for (const auto& [at, code] : {std::pair{0U, 130}, {1U, 152}, {2U, 226}, {3U, 213}, {4U, 65}})
        EXPECT_EQ(ansiToOem(letters[at]), code);
}

TEST(AnsiText, WhatHasNoCharacterBecomesAQuestionMark) {
    EXPECT_EQ(fromUtf8("a→b"), "a?b");
    EXPECT_EQ(fromUtf8("a\xE9-"), "a?-") << "a stray byte is not UTF-8";
    EXPECT_EQ(fromUtf8("\xC3"), "?") << "a cut sequence ends the text";
    EXPECT_EQ(fromUtf8("\U0001F600!"), "?!");
}

TEST(AnsiText, ComparingIgnoresTheCaseOfAccentedLetters) {
    EXPECT_TRUE(equalIgnoringCase("Port_série"_ansi, "PORT_SÉRIE"_ansi));
    EXPECT_TRUE(equalIgnoringCase("ŒŸŠ"_ansi, "œÿš"_ansi));
    EXPECT_FALSE(equalIgnoringCase("×"_ansi, "÷"_ansi)) << "signs have no case";
    EXPECT_FALSE(equalIgnoringCase("ab", "abc"));
}

TEST(Fields, AreEndedByTheirSeparator) {
    // Text, number, separator, field; the second "aa" of "xaaay" begins one character behind
    // the first.
    for (const std::string& row :
         split("A;B;C 3 ; ''|A;B;C; 3 ; C|;B; 1 ; ''|;B; 2 ; B|A;B; 0 ; ''|A;B; 9 ; ''|"
               "X{TIMER}Y{TIMER} 1 {TIMER} X|X{TIMER}Y{TIMER} 2 {TIMER} TIMER}Y|"
               "X{TIMER}{TIMER} 2 {TIMER} TIMER}|aaa 2 aa ''|aaab 2 aa ''|A 1 '' ''|xaaay 2 aa ''",
               "|")) {
        const auto c = words(row);
        EXPECT_EQ(GetField(c[0], std::stoul(c[1]), c[2]), c[3]) << row;
    }
}

TEST(Separators, AreCountedWithoutOverlap) {
    EXPECT_EQ(CountSeparators("", ";"), 0U);
    EXPECT_EQ(CountSeparators("A;;B;", ";"), 3U);
    EXPECT_EQ(CountSeparators("aaaa", "aa"), 2U);
    EXPECT_EQ(CountSeparators("{TIMER}x{TIMER", "{TIMER}"), 1U);
    EXPECT_EQ(CountSeparators("abc", ""), 0U);
}

struct Number {
    const char* text;
    int expected;
};

TEST(NumberText, TheIntegerPartIsThatOfTheLeadingNumber) {
    for (const auto& [text, expected] :
         {Number{" 9600", 9600}, Number{"9600,N", 9600}, Number{"1.5", 1}, Number{" 1 2", 12},
          Number{"", 0}, Number{"HT630", 0}, Number{"-1.5", -2}, Number{"+7", 7}, Number{"-", 0},
          Number{"1e3", 1000}, Number{"99999999999", 2147483647}, Number{"nan", 0},
          Number{"inf", 0}, Number{"1e999", 2147483647}})
        EXPECT_EQ(integerPart(text), expected) << '"' << text << '"';
    EXPECT_EQ(requiredIntegerPart(" 9600"), 9600);
    EXPECT_EQ(requiredIntegerPart("1,5"), 1);
    for (const char* text : {"9600 bauds", "HT630"})
        EXPECT_EQ(errorOf([&] { (void)requiredIntegerPart(text); }), error_number::kTypeMismatch);
    for (const auto& [text, number] : {Number{" 9600", 9600}, Number{" 0", 0}, Number{"-3", -3}})
        EXPECT_EQ(withSignPosition(number), text);
}

TEST(NumberText, SixteenBitConversionRoundsHalfToEvenAndFailsWithTheNumberOfItsError) {
    for (const auto& [text, expected] :
         {Number{" 500 ", 500}, Number{"0.5", 0}, Number{"1.5", 2}, Number{"2.5", 2},
          Number{"2,5", 2}, Number{"-32768", -32768}, Number{"32767.4", 32767}, Number{"+3", 3}})
        EXPECT_EQ(toInteger16(text), expected) << '"' << text << '"';
    for (const auto& [text, error] :
         {Number{"", error_number::kTypeMismatch}, Number{"12abc", error_number::kTypeMismatch},
          Number{"-", error_number::kTypeMismatch}, Number{"1 2", error_number::kTypeMismatch},
          Number{"nan", error_number::kTypeMismatch}, Number{"32768", error_number::kOverflow},
          Number{"-32769", error_number::kOverflow}, Number{"1e400", error_number::kOverflow}})
        EXPECT_EQ(errorOf([&number = text] { (void)toInteger16(number); }), error)
            << '"' << text << '"';
}

TEST(LineCapture, IsReadBackAsItWasWritten) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const std::vector<LineEvent> events = {
        {951'782'399'999, LineEventKind::kReceived, all},
        {0, LineEventKind::kSent, "READ\r"},
        {1'709'647'629'123, LineEventKind::kNote, std::string("Débordement"_ansi)}};
    EXPECT_EQ(timeOf(events[0]), "2000-02-28 23:59:59.999");
    EXPECT_EQ(parseCapture(captureText(events)), events);
    for (const char* damaged :
         {"x", "2024-03-05 14:07:09.123", "2024-13-05 14:07:09.123 < 41",
          "2024-03-05 14:07:09.123 ? 41", "2024-03-05 14:07:09.123 < 4",
          "2024-03-05 14:07:09.123 < 41 G2", "2024-03-05 14:07:09.123 < 4142"})
        EXPECT_THROW((void)parseCapture(damaged), RuntimeError) << damaged;
}

}  // namespace
}  // namespace kalvo
