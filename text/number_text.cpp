#include "text/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// The number a text starts with; nothing when it starts with none. `used` is the
// number of characters it takes.
std::optional<double> parseNumber(std::string_view text, std::size_t& used) {
    const bool plus = !text.empty() && text.front() == '+';
    const std::string_view digits = plus ? text.substr(1) : text;
    // The library's own words for infinity and not-a-number are no numbers here.
    const std::size_t sign = !plus && !digits.empty() && digits.front() == '-' ? 1 : 0;
    if (digits.size() <= sign ||
        (digits[sign] != '.' && (digits[sign] < '0' || digits[sign] > '9')))
        return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::invalid_argument) return std::nullopt;
    if (error == std::errc::result_out_of_range)
        number =
            sign != 0 ? -std::numeric_limits<double>::max() : std::numeric_limits<double>::max();
    used = static_cast<std::size_t>(end - text.data());
    return number;
}

// The number a whole text is. RuntimeError 13 when it is none.
double wholeNumber(std::string_view text) {
    std::string_view trimmed = text;
    while (!trimmed.empty() && isBlank(trimmed.front())) trimmed.remove_prefix(1);
    while (!trimmed.empty() && isBlank(trimmed.back())) trimmed.remove_suffix(1);
    std::string number(trimmed);
    if (std::count(number.begin(), number.end(), ',') == 1)
        std::replace(number.begin(), number.end(), ',', '.');
    std::size_t used = 0;
    const std::optional<double> value = parseNumber(number, used);
    if (!value || used != number.size())
        throw RuntimeError(error_number::kTypeMismatch, std::string("Type incompatible"_ansi));
    return *value;
}

std::int32_t within32Bits(double number) {
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(number, kLowest, kHighest));
}

}  // namespace

std::string_view trimBlanks(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

double leadingNumber(std::string_view text) {
    // A number text is short: what stands behind its first characters cannot count.
    constexpr std::size_t kLongest = 64;
    std::string compact;
    for (const char c : text) {
        if (compact.size() == kLongest) break;
        if (!isBlank(c)) compact.push_back(c);
    }
    std::size_t used = 0;
    return parseNumber(compact, used).value_or(0);
}

std::int32_t integerPart(std::string_view text) {
    return within32Bits(std::floor(leadingNumber(text)));
}

std::int32_t roundedLeadingNumber(std::string_view text) {
    return within32Bits(std::nearbyint(leadingNumber(text)));
}

std::int32_t requiredIntegerPart(std::string_view text) {
    return within32Bits(std::floor(wholeNumber(text)));
}

std::int16_t toInteger16(std::string_view text) {
    const double rounded = std::nearbyint(wholeNumber(text));
    if (rounded < std::numeric_limits<std::int16_t>::min() ||
        rounded > std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(error_number::kOverflow, std::string("Dépassement de capacité"_ansi));
    return static_cast<std::int16_t>(rounded);
}

std::string withSignPosition(std::int64_t number) {
    return (number < 0 ? "" : " ") + std::to_string(number);
}

}  // namespace kalvo
