#include "text/field_text.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(Fields, AreEndedByTheirSeparator) {
    struct Case {
        const char* text;
        std::size_t n;
        const char* separator;
        const char* expected;
    };
    for (const auto& [text, n, separator, expected] :
         {Case{"A;B;C", 3, ";", ""}, Case{"A;B;C;", 3, ";", "C"}, Case{";B;", 1, ";", ""},
          Case{";B;", 2, ";", "B"}, Case{"A;B;", 0, ";", ""}, Case{"A;B;", 9, ";", ""},
          Case{"X{TIMER}Y{TIMER}", 1, "{TIMER}", "X"},
          Case{"X{TIMER}Y{TIMER}", 2, "{TIMER}", "TIMER}Y"},
          Case{"X{TIMER}{TIMER}", 2, "{TIMER}", "TIMER}"}, Case{"aaa", 2, "aa", ""},
          Case{"aaab", 2, "aa", ""}, Case{"A", 1, "", ""}})
        EXPECT_EQ(GetField(text, n, separator), expected) << text << " field " << n;
}

TEST(Fields, ASearchResumesInsideALongSeparator) {
    // The second "aa" begins one character behind the first.
    EXPECT_EQ(GetField("xaaay", 2, "aa"), "");
    FieldCursor cursor("xaaay", "aa");
    EXPECT_EQ(cursor.next(), "x");
    EXPECT_EQ(cursor.next(), "");
    EXPECT_TRUE(cursor.found()) << "an empty field between two separators";
    cursor.next();
    EXPECT_FALSE(cursor.found());
}

TEST(Separators, AreCountedWithoutOverlap) {
    EXPECT_EQ(CountSeparators("", ";"), 0U);
    EXPECT_EQ(CountSeparators("A;;B;", ";"), 3U);
    EXPECT_EQ(CountSeparators("aaaa", "aa"), 2U);
    EXPECT_EQ(CountSeparators("{TIMER}x{TIMER", "{TIMER}"), 1U);
    EXPECT_EQ(CountSeparators("abc", ""), 0U);
}

}  // namespace
}  // namespace kalvo
