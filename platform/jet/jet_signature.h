// Telling a Jet database from other files, by the start of its first page:
//
//   0   00 01 00 00
//   4   "Standard Jet DB", NUL   ("Standard ACE DB" in files of its successor)
//   20  version: 0 Jet 3, 1 Jet 4, more for its successor
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace kalvo {

// The versions whose files are read differ in page size and text encoding; kNewer is
// the family's later formats (.accdb), which are told but not read.
enum class JetVersion { kNone, kJet3, kJet4, kNewer };

// What the first bytes of a file say; kNone also for a file that is missing or cannot
// be read.
[[nodiscard]] JetVersion jetVersionOf(std::string_view start);
[[nodiscard]] JetVersion jetVersionOfFile(const std::filesystem::path& file);

// Size of a page in bytes; a whole file is a whole number of pages.
[[nodiscard]] constexpr std::size_t jetPageSize(JetVersion version) {
    return version == JetVersion::kJet3 ? 2048 : 4096;
}

}  // namespace kalvo
