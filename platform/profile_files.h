// Private-profile (INI) files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// What a reader gets of a value at most, in characters.
inline constexpr std::size_t kLongestProfileValue = 2054;

// Reading and writing with the rules of GetPrivateProfileStringA and
// WritePrivateProfileStringA. All texts are code page 1252.
class ProfileFiles {
public:
    virtual ~ProfileFiles() = default;

    // The value of a key, at most kLongestProfileValue characters of it; empty when the file, the
    // section or the key is missing. Section and key compare without regard to
    // case and to blanks around them; one pair of enclosing quotes is removed.
    [[nodiscard]] virtual std::string read(std::string_view file, std::string_view section,
                                           std::string_view key) = 0;

    // Sets a key, creating file and section when missing and leaving every other
    // line alone. The value is stored as given, leading blanks included. False
    // when the file could not be written; it is then as it was.
    virtual bool write(std::string_view file, std::string_view section, std::string_view key,
                       std::string_view value) = 0;

    // The names of the sections in the order of the file; empty when there is no file.
    [[nodiscard]] virtual std::vector<std::string> sections(std::string_view file) = 0;

    // Removes the first section of that name with its keys, not with the comments behind the
    // last of them, which are about the next one; no harm when there is none. False when the
    // file could not be written.
    virtual bool removeSection(std::string_view file, std::string_view section) = 0;
};

}  // namespace kalvo
