// Bringing the scenarios of a Jet database (the files of the former data engine)
// into a scenario database. All paths are code page 1252.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

struct JetImportReport {
    std::size_t scenarios = 0;
    std::size_t actions = 0;
    bool alreadyDone = false;  // by an import before, and nothing was written
};

// Copies the three tables of `source` into `target`, which is made, or must hold
// neither scenarios nor actions yet; all of it or, on an error, nothing. A target that
// holds every scenario of the source is left as it is. The source is only read. RuntimeError 3024
// when it is missing, 3343 when it is not a Jet database, damaged, protected or too new, 3078 and
// 3265 for a missing table or column, 58 when the target holds other scenarios, and those of
// opening and writing the target.
JetImportReport importJetDatabase(const std::filesystem::path& source, std::string_view target);

struct JetUpgrade {
    JetImportReport imported;
    std::string keptAs;  // path of the untouched original
};

// At start-up: when `path` is a Jet database, keeps it as "<name>.jet.<extension>"
// ("<name>.jet-2..." and so on when that is taken) and puts a scenario database with
// its content in its place. Nothing when it is not one. At every moment, a crash
// included, `path` is the one or the other, and a second run completes the upgrade.
// Errors as above, `path` being untouched then.
std::optional<JetUpgrade> upgradeJetInPlace(std::string_view path);

}  // namespace kalvo
