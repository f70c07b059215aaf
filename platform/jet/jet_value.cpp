#include "platform/jet/jet_value.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

#include "platform/jet/jet_text.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// The shortest text that gives the number again.
template <typename Number>
std::string decimal(Number number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

// A whole number of ten-thousandths.
std::string currency(std::int64_t amount) {
    const std::uint64_t size =
        amount < 0 ? 0 - static_cast<std::uint64_t>(amount) : static_cast<std::uint64_t>(amount);
    std::string fraction = std::to_string(10000 + size % 10000);
    fraction.front() = '.';
    return (amount < 0 ? "-" : "") + std::to_string(size / 10000) + fraction;
}

// The pieces of a long text. A row is not read twice, so a ring of them comes to an end.
std::string chainedText(JetPages& pages, std::uint32_t pointer, std::size_t length) {
    std::string text;
    while (text.size() < length) {
        const JetBytes piece = pages.rowAt(pointer);
        pointer = piece.u32(0);
        text.append(piece.from(4).text().substr(0, length - text.size()));
    }
    return text;
}

std::string longText(JetPages& pages, JetBytes field) {
    constexpr std::size_t kHeader = 12;
    const std::uint32_t lengthAndKind = field.u32(0);
    const std::size_t length = lengthAndKind & 0x3FFFFFFFU;
    const std::uint32_t pointer = field.u32(4);
    switch (lengthAndKind >> 30U) {
        case 2: return std::string(field.part(kHeader, length).text());
        case 1: return std::string(pages.rowAt(pointer).part(0, length).text());
        case 0: return chainedText(pages, pointer, length);
        default: throw JetFault{};
    }
}

std::string stored(JetPages& pages, const JetColumn& column, JetBytes field) {
    switch (column.type) {
        case JetType::kByte: return decimal(unsigned{field.u8(0)});
        case JetType::kInteger: return decimal(static_cast<std::int16_t>(field.u16(0)));
        case JetType::kLong: return decimal(static_cast<std::int32_t>(field.u32(0)));
        case JetType::kCurrency: return currency(static_cast<std::int64_t>(field.number(0, 8)));
        case JetType::kSingle: return decimal(std::bit_cast<float>(field.u32(0)));
        case JetType::kDouble: return decimal(std::bit_cast<double>(field.number(0, 8)));
        case JetType::kText: return jetText(field, pages.version());
        case JetType::kMemo: return jetText(JetBytes(longText(pages, field)), pages.version());
        case JetType::kBoolean: break;
    }
    throw JetFault{std::string("la colonne « "_ansi)
                       .append(column.name)
                       .append(" » ne contient ni textes ni nombres"_ansi)};
}

}  // namespace

JetValue jetValue(JetPages& pages, const JetRecord& record, const JetColumn& column) {
    if (column.type == JetType::kBoolean) return record.isSet(column) ? "-1" : "0";
    const auto field = record.field(column);
    if (!field) return std::nullopt;
    // Any type may hold the empty text instead of a value.
    if (field->size() == 0) return "";
    return stored(pages, column, *field);
}

}  // namespace kalvo
