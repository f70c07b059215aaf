// Numbers out of texts, with the conversions of the platform the files come from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kalvo {

// The text without blanks (code 32, or those named) at both ends.
[[nodiscard]] std::string_view trimBlanks(std::string_view text, std::string_view blanks = " ");

// The leading number of a text: blanks ignored, a sign, digits, a point and an
// exponent understood, whatever follows left out. 0 when there is none ("12abc"
// is 12, "abc" is 0).
[[nodiscard]] double leadingNumber(std::string_view text);

// The integer part (rounded towards minus infinity) of the leading number, kept
// within 32 bits.
[[nodiscard]] std::int32_t integerPart(std::string_view text);

// The leading number rounded to the nearest integer (half to even), kept within
// 32 bits.
[[nodiscard]] std::int32_t roundedLeadingNumber(std::string_view text);

// The integer part (rounded towards minus infinity) of a text that must be a number
// as a whole (point or comma), blanks at its ends aside; kept within 32 bits.
// RuntimeError 13 when it is not one.
[[nodiscard]] std::int32_t requiredIntegerPart(std::string_view text);

// The conversion to a 16-bit integer: the whole text, blanks at its ends aside,
// must be a number (point or comma); half rounds to even. RuntimeError 13 when it
// is not one, 6 outside -32768..32767.
[[nodiscard]] std::int16_t toInteger16(std::string_view text);

// Decimal text with the sign position the settings files carry: " 9600", "-1".
[[nodiscard]] std::string withSignPosition(std::int64_t number);

}  // namespace kalvo
