#include "platform/linux/settings/reg_file_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegMultiSz = 7;
constexpr std::string_view kDwordPrefix = "dword:";
constexpr std::string_view kHexPrefix = "hex";

bool isText(std::uint32_t type) {
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

bool isControl(char character) { return static_cast<unsigned char>(character) < 0x20; }

template <typename Number>
std::optional<Number> hexNumber(std::string_view digits) {
    Number number = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

std::string hexText(std::uint32_t number, std::size_t digits) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text(digits, '0');
    for (std::size_t i = digits; i > 0; --i, number >>= 4U) text[i - 1] = kDigits[number & 15U];
    return text;
}

std::string littleEndian(std::uint32_t number) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>((number >> shift) & 0xFFU));
    return bytes;
}

// "41,00,\<line end>  42" and the like.
std::optional<std::string> parseBytes(std::string_view list) {
    std::string digits;
    std::string bytes;
    const auto endOfByte = [&] {
        const auto byte = hexNumber<std::uint8_t>(digits);
        if (byte) bytes.push_back(static_cast<char>(*byte));
        digits.clear();
        return byte.has_value();
    };
    for (const char character : list) {
        if (character == ',') {
            if (!endOfByte()) return std::nullopt;
        } else if (!isControl(character) && character != ' ' && character != '\\') {
            digits.push_back(character);
        }
    }
    // Nothing behind a comma: the rest of the list is lost.
    const bool isComplete = digits.empty() ? bytes.empty() : endOfByte();
    return isComplete ? std::optional(bytes) : std::nullopt;
}

// hex:... is binary, hex(n):... of type n.
std::optional<RegistryValue> parseHex(std::string_view data, bool wide) {
    const std::size_t colon = data.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::string_view type = data.substr(kHexPrefix.size(), colon - kHexPrefix.size());
    RegistryValue value{kRegBinary, {}};
    if (!type.empty()) {
        if (type.size() < 3 || type.front() != '(' || type.back() != ')') return std::nullopt;
        const auto number = hexNumber<std::uint32_t>(type.substr(1, type.size() - 2));
        if (!number) return std::nullopt;
        value.type = *number;
    }
    auto bytes = parseBytes(data.substr(colon + 1));
    if (!bytes) return std::nullopt;
    value.data = wide && isText(value.type) ? fromUtf8(utf16LeToUtf8(*bytes)) : *bytes;
    return value;
}

}  // namespace

std::optional<RegistryValue> parseRegData(const FileText& file, std::string_view data, bool wide) {
    if (data.starts_with('"')) {
        if (closingRegQuote(data, 1) != data.size() - 1) return std::nullopt;
        return RegistryValue{kRegSz,
                             file.toAnsi(unescapedRegText(data.substr(1, data.size() - 2)))};
    }
    std::string prefix(data.substr(0, kDwordPrefix.size()));
    std::transform(prefix.begin(), prefix.end(), prefix.begin(), foldCase);
    if (prefix == kDwordPrefix) {
        const auto number = hexNumber<std::uint32_t>(data.substr(kDwordPrefix.size()));
        if (!number) return std::nullopt;
        return RegistryValue{kRegDword, littleEndian(*number)};
    }
    if (prefix.starts_with(kHexPrefix)) return parseHex(data, wide);
    return std::nullopt;
}

std::string formatRegData(const FileText& file, const RegistryValue& value, bool wide) {
    if (value.type == kRegSz) {
        std::string_view text = value.data;
        text = text.substr(0, text.find_last_not_of('\0') + 1);
        if (std::none_of(text.begin(), text.end(), isControl))
            return quotedRegText(file.fromAnsi(text));
    }
    if (value.type == kRegDword && value.data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i > 0; --i)
            number = (number << 8U) | static_cast<unsigned char>(value.data[i - 1]);
        return std::string(kDwordPrefix) + hexText(number, 8);
    }
    std::string text(kHexPrefix);
    if (value.type != kRegBinary) {
        std::array<char, 8> digits{};
        const auto end = std::to_chars(digits.begin(), digits.end(), value.type, 16).ptr;
        text += "(" + std::string(digits.begin(), end) + ")";
    }
    const std::string bytes =
        wide && isText(value.type) ? utf8ToUtf16Le(toUtf8(value.data)) : value.data;
    char separator = ':';
    for (const char byte : bytes) {
        text += separator + hexText(static_cast<unsigned char>(byte), 2);
        separator = ',';
    }
    return bytes.empty() ? text + ":" : text;
}

std::string quotedRegText(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') quoted.push_back('\\');
        quoted.push_back(character);
    }
    return quoted + "\"";
}

std::string unescapedRegText(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"');
        plain.push_back(escape ? text[++i] : text[i]);
    }
    return plain;
}

std::size_t closingRegQuote(std::string_view text, std::size_t at) {
    while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
    return at < text.size() ? at : std::string_view::npos;
}

}  // namespace kalvo
