#include "text/number_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/error_of.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

TEST(NumberText, TheIntegerPartIsThatOfTheLeadingNumber) {
    struct Case {
        const char* text;
        int expected;
    };
    for (const auto& [text, expected] :
         {Case{" 9600", 9600}, Case{"9600,N", 9600}, Case{"1.5", 1}, Case{" 1 2", 12}, Case{"", 0},
          Case{"HT630", 0}, Case{"-1.5", -2}, Case{"+7", 7}, Case{"-", 0}, Case{"1e3", 1000},
          Case{"99999999999", 2147483647}, Case{"nan", 0}, Case{"inf", 0},
          Case{"1e999", 2147483647}})
        EXPECT_EQ(integerPart(text), expected) << '"' << text << '"';
}

TEST(NumberText, SixteenBitConversionRoundsHalfToEven) {
    struct Case {
        const char* text;
        int expected;
    };
    for (const auto& [text, expected] :
         {Case{" 500 ", 500}, Case{"0.5", 0}, Case{"1.5", 2}, Case{"2.5", 2}, Case{"2,5", 2},
          Case{"-32768", -32768}, Case{"32767.4", 32767}, Case{"+3", 3}})
        EXPECT_EQ(toInteger16(text), expected) << '"' << text << '"';
}

TEST(NumberText, SixteenBitConversionFailsWithTheNumberOfItsError) {
    struct Case {
        const char* text;
        int error;
    };
    for (const auto& [text, error] :
         {Case{"", error_number::kTypeMismatch}, Case{"12abc", error_number::kTypeMismatch},
          Case{"-", error_number::kTypeMismatch}, Case{"1 2", error_number::kTypeMismatch},
          Case{"nan", error_number::kTypeMismatch}, Case{"32768", error_number::kOverflow},
          Case{"-32769", error_number::kOverflow}, Case{"1e400", error_number::kOverflow}}) {
        try {
            (void)toInteger16(text);
            ADD_FAILURE() << '"' << text << "\" was converted";
        } catch (const RuntimeError& failure) {
            EXPECT_EQ(failure.number(), error) << '"' << text << '"';
        }
    }
}

TEST(NumberText, ARequiredNumberIsTheWholeText) {
    EXPECT_EQ(requiredIntegerPart(" 9600"), 9600);
    EXPECT_EQ(requiredIntegerPart("1,5"), 1);
    EXPECT_EQ(testing::errorOf([] { (void)requiredIntegerPart("9600 bauds"); }),
              error_number::kTypeMismatch);
    EXPECT_EQ(testing::errorOf([] { (void)requiredIntegerPart("HT630"); }),
              error_number::kTypeMismatch);
}

TEST(NumberText, StoredNumbersKeepASignPosition) {
    EXPECT_EQ(withSignPosition(9600), " 9600");
    EXPECT_EQ(withSignPosition(0), " 0");
    EXPECT_EQ(withSignPosition(-3), "-3");
}

}  // namespace
}  // namespace kalvo
