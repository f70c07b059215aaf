// The OEM code page of the Alt+keypad codes, for systems that have none of their own.
//
// It is code page 850, extended so that no character of the ANSI code page is
// lost on its way through a key script: the 31 ANSI codes without a character in
// 850 take the places of the line-drawing characters (and of the dotless i) that
// no ANSI text can hold; the euro sign stands at 0xD5 as in code page 858.
// The two conversions are therefore inverse to each other.
#pragma once

#include <array>
#include <cstddef>

#include "text/ansi_text.h"

namespace kalvo {

namespace oem_detail {

inline constexpr std::array<char16_t, 128> kUpper850 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557,
    0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB,
    0x00C8, 0x20AC, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE, 0x00DE, 0x00DA, 0x00DB, 0x00D9,
    0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0};

struct Tables {
    std::array<unsigned char, 128> toOem{};
    std::array<unsigned char, 128> toAnsi{};
};

// First every ANSI character that 850 has, then the others, in order, into the
// places that are left.
consteval Tables pairUp() {
    Tables tables;
    for (std::size_t ansi = 0; ansi < 128; ++ansi)
        for (std::size_t oem = 0; oem < 128; ++oem)
            if (kUpper850[oem] == ansiToUnicode(static_cast<char>(ansi + 128))) {
                tables.toOem[ansi] = static_cast<unsigned char>(oem + 128);
                tables.toAnsi[oem] = static_cast<unsigned char>(ansi + 128);
            }
    std::size_t place = 0;
    for (std::size_t ansi = 0; ansi < 128; ++ansi) {
        if (tables.toOem[ansi] != 0) continue;
        while (tables.toAnsi[place] != 0) ++place;
        tables.toOem[ansi] = static_cast<unsigned char>(place + 128);
        tables.toAnsi[place] = static_cast<unsigned char>(ansi + 128);
    }
    return tables;
}

inline constexpr Tables kTables = pairUp();

}  // namespace oem_detail

// The OEM code of an ANSI character; below 128 the two are the same.
constexpr unsigned char ansiToOem(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 128 ? byte : oem_detail::kTables.toOem[byte - 128U];
}

// The ANSI character of an OEM code.
constexpr char oemToAnsi(unsigned char oem) {
    return static_cast<char>(oem < 128 ? oem : oem_detail::kTables.toAnsi[oem - 128U]);
}

}  // namespace kalvo
