#include "platform/asio/line_settings.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kHighestSpeed = 4000000;

constexpr std::array<std::pair<std::string_view, Parity>, 5> kParities = {{
    {"N", Parity::kNone},
    {"E", Parity::kEven},
    {"O", Parity::kOdd},
    {"M", Parity::kMark},
    {"S", Parity::kSpace},
}};
constexpr std::array<std::pair<std::string_view, StopBits>, 3> kStopBits = {{
    {"1", StopBits::kOne},
    {"1.5", StopBits::kOneAndHalf},
    {"2", StopBits::kTwo},
}};

std::vector<std::string_view> splitAtCommas(std::string_view text) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto comma = text.find(',');
        parts.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos) return parts;
        text.remove_prefix(comma + 1);
    }
}

std::optional<std::uint32_t> speedOf(std::string_view digits) {
    std::uint32_t speed = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, speed);
    if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
    if (speed == 0 || speed > kHighestSpeed) return std::nullopt;
    return speed;
}

std::optional<int> dataBitsOf(std::string_view digit) {
    if (digit.size() != 1 || digit[0] < '4' || digit[0] > '8') return std::nullopt;
    return digit[0] - '0';
}

template <typename Table>
auto valueOf(const Table& table, std::string_view name)
    -> std::optional<typename Table::value_type::second_type> {
    for (const auto& [text, value] : table)
        if (text == name) return value;
    return std::nullopt;
}

}  // namespace

LineSettings parseLineSettings(std::string_view text) {
    const auto parts = splitAtCommas(text);
    if (parts.size() == 4) {
        const auto speed = speedOf(parts[0]);
        const auto parity = valueOf(kParities, parts[1]);
        const auto dataBits = dataBitsOf(parts[2]);
        const auto stopBits = valueOf(kStopBits, parts[3]);
        if (speed && parity && dataBits && stopBits) return {*speed, *parity, *dataBits, *stopBits};
    }
    throw RuntimeError(
        error_number::kPortSettings,
        std::string("Réglages du port série non valides : \""_ansi) + std::string(text) + "\"");
}

}  // namespace kalvo
