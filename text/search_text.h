// Looking for a text as people do: neither case nor accents count.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "text/ansi_text.h"

namespace kalvo {

// The lower-case letter below the accent of a code page 1252 character; any other character
// as it is.
constexpr char plainLetter(char character) {
    struct Range {
        unsigned char first, last;
        char letter;
    };
    constexpr std::array<Range, 10> kAccented = {{{0xE0, 0xE5, 'a'},
                                                  {0xE7, 0xE7, 'c'},
                                                  {0xE8, 0xEB, 'e'},
                                                  {0xEC, 0xEF, 'i'},
                                                  {0xF1, 0xF1, 'n'},
                                                  {0xF2, 0xF6, 'o'},
                                                  {0xF9, 0xFC, 'u'},
                                                  {0xFD, 0xFF, 'y'},
                                                  {0x9A, 0x9A, 's'},
                                                  {0x9E, 0x9E, 'z'}}};
    const char lower = foldCase(character);
    const auto code = static_cast<unsigned char>(lower);
    for (const Range& range : kAccented)
        if (code >= range.first && code <= range.last && code != 0xFE) return range.letter;
    return lower;
}

// Whether a text holds another one; megabytes are searched in a moment.
inline bool containsLoosely(std::string_view text, std::string_view part) {
    static constexpr auto kPlain = [] {
        std::array<char, 256> plain{};
        for (std::size_t i = 0; i < plain.size(); ++i) plain[i] = plainLetter(static_cast<char>(i));
        return plain;
    }();
    const auto plain = [](char c) { return kPlain[static_cast<unsigned char>(c)]; };
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [&](char a, char b) { return plain(a) == plain(b); }) != text.end();
}

}  // namespace kalvo
