// Text as every side of an interface agrees on it.
//
// A std::string of the core holds code page 1252 bytes: one char is one
// character, and what a terminal sent passes one to one. The five codes the code
// page leaves open (0x81 0x8D 0x8F 0x90 0x9D) stand for the C1 controls of the
// same number, so that every byte survives a round trip through Unicode.
// Source files are UTF-8; a literal with accents is converted by `_ansi` while
// compiling.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kalvo {

namespace ansi_detail {

inline constexpr std::array<char16_t, 32> kUpper1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

inline constexpr std::size_t kMalformed = static_cast<std::size_t>(-1);

struct Decoded {
    char32_t codePoint;
    std::size_t length;
};

// One UTF-8 sequence at `at`; a malformed byte counts as U+FFFD of length 1.
constexpr Decoded decodeUtf8(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(at);
    if (lead < 0x80) return {static_cast<char32_t>(lead), 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {0xFFFD, 1};
    char32_t codePoint = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U) return {0xFFFD, 1};
        codePoint = (codePoint << 6U) | (byte(at + i) & 0x3FU);
    }
    return {codePoint, length};
}

}  // namespace ansi_detail

// The Unicode code point of a code page 1252 character.
constexpr char32_t ansiToUnicode(char character) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x80 && byte < 0xA0) return ansi_detail::kUpper1252[byte - 0x80U];
    return byte;
}

// The code page 1252 character of a code point; '?' when it has none.
constexpr char unicodeToAnsi(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF))
        return static_cast<char>(codePoint);
    for (std::size_t i = 0; i < ansi_detail::kUpper1252.size(); ++i)
        if (ansi_detail::kUpper1252[i] == codePoint) return static_cast<char>(0x80 + i);
    return '?';
}

// Adds a code point as UTF-8.
inline void appendUtf8(std::string& utf8, char32_t codePoint) {
    const auto trail = [&](unsigned shift) {
        utf8.push_back(static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU)));
    };
    if (codePoint < 0x80) {
        utf8.push_back(static_cast<char>(codePoint));
    } else if (codePoint < 0x800) {
        utf8.push_back(static_cast<char>(0xC0U | (codePoint >> 6U)));
        trail(0);
    } else if (codePoint < 0x10000) {
        utf8.push_back(static_cast<char>(0xE0U | (codePoint >> 12U)));
        trail(6);
        trail(0);
    } else {
        utf8.push_back(static_cast<char>(0xF0U | (codePoint >> 18U)));
        trail(12);
        trail(6);
        trail(0);
    }
}

// UTF-8 to code page 1252; what has no character there becomes '?'.
inline std::string fromUtf8(std::string_view utf8) {
    std::string ansi;
    ansi.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto decoded = ansi_detail::decodeUtf8(utf8, at);
        ansi.push_back(unicodeToAnsi(decoded.codePoint));
        at += decoded.length;
    }
    return ansi;
}

// Code page 1252 to UTF-8; never fails.
inline std::string toUtf8(std::string_view ansi) {
    std::string utf8;
    utf8.reserve(ansi.size());
    for (const char character : ansi) appendUtf8(utf8, ansiToUnicode(character));
    return utf8;
}

// Lower-case form of a code page 1252 character, accented letters included.
constexpr char foldCase(char character) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 'A' && byte <= 'Z') return static_cast<char>(byte + 32);
    if (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7) return static_cast<char>(byte + 32);
    switch (byte) {
        case 0x8A:
        case 0x8C:
        case 0x8E: return static_cast<char>(byte + 16);
        case 0x9F: return static_cast<char>(0xFF);
        default: return character;
    }
}

// Equality that ignores case, accented letters included.
constexpr bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return foldCase(x) == foldCase(y); });
}

namespace ansi_detail {

// A UTF-8 string literal as a template argument, converted on construction.
template <std::size_t N>
struct Literal {
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): that is what a string literal is
    consteval Literal(const char (&utf8)[N]) {
        const std::string_view text(utf8, N - 1);
        for (std::size_t at = 0; at < text.size();) {
            const Decoded decoded = decodeUtf8(text, at);
            bytes[size++] = unicodeToAnsi(decoded.codePoint);
            at += decoded.length;
        }
    }
    std::array<char, N> bytes{};
    std::size_t size = 0;
};

template <Literal L>
struct Stored {
    static constexpr auto kLiteral = L;
};

}  // namespace ansi_detail

inline namespace literals {

// "Port_série"_ansi: the text in code page 1252, zero-terminated, for ever. (clang 14
// crashes on a local std::string initialised from nothing but such a literal; assign
// it, or name a string_view.)
template <ansi_detail::Literal L>
constexpr std::string_view operator""_ansi() {
    return {ansi_detail::Stored<L>::kLiteral.bytes.data(), L.size};
}

}  // namespace literals

}  // namespace kalvo
