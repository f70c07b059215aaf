// Telling a Jet database from other files.
#pragma once

#include <filesystem>
#include <string_view>

namespace kalvo {

// The versions whose files are read; they differ in page size and text encoding.
enum class JetVersion { kNone, kJet3, kJet4 };

// What the first bytes of a file say; kNone also for one that is missing or cannot
// be read.
[[nodiscard]] JetVersion jetVersionOf(const std::filesystem::path& file);

// Size of a page in bytes; a whole file is a whole number of pages.
[[nodiscard]] constexpr unsigned jetPageSize(JetVersion version) {
    return version == JetVersion::kJet3 ? 2048 : 4096;
}

// Whether the file (path in code page 1252) is a Jet 3 or Jet 4 database. To be asked
// while no database is open on the file.
[[nodiscard]] bool isJetDatabase(std::string_view path);

}  // namespace kalvo
