// The content of private-profile (INI) files, by the rules of the Windows functions:
//
//   [ Section ]          text behind the first "]" is ignored
//   key = value          blanks around names and values are ignored
//   key = " value "      one enclosing pair of " or ' goes, blanks inside stay
//   ; comment            never a key; so is a line without "="
//
// Lines end with CR LF, LF or CR. Names ignore case, accented letters included. Of
// equal sections and of equal keys in a section only the first counts. A file is
// code page 1252 unless it starts with a Unicode byte order mark or is valid UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// The value of a key in code page 1252; empty when section or key are missing.
[[nodiscard]] std::string findProfileValue(std::string content, std::string_view section,
                                           std::string_view key);

// The content with the key set. The value goes into the file as given, up to its
// first NUL; names without the blanks around them. A new key stands behind the last
// key of its section, a new section at the end, each line ended by CR LF. A last
// line without end gets one; every other byte stays.
[[nodiscard]] std::string withProfileValue(std::string content, std::string_view section,
                                           std::string_view key, std::string_view value);

// The names of the sections in code page 1252, in their order.
[[nodiscard]] std::vector<std::string> profileSections(std::string content);

// The content without the first section of that name: its line, its keys and the blank
// lines behind them. What else stands behind its last key is about the next section.
[[nodiscard]] std::string withoutProfileSection(std::string content, std::string_view section);

}  // namespace kalvo
