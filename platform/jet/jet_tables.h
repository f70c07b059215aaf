// What is taken out of a Jet database, and the reader that takes it.
#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/sqlite/schema.h"

namespace kalvo {

// A value as text (UTF-8), whatever its type was; nothing for Null.
using JetValue = std::optional<std::string>;
using JetRow = std::vector<JetValue>;

// The rows of each table in the file's order, their values in the column order of
// kScenarioTables.
using JetTables = std::array<std::vector<JetRow>, kScenarioTableCount>;

// How long reading may take before the file counts as damaged.
inline constexpr std::chrono::seconds kJetReadLimit{20};

// Reads the three tables; order and case of the columns, their types, and other
// tables do not matter. RuntimeError 3343 for a damaged file (rows missing from it
// included), 3078 for a missing table, 3265 for a missing column. The reading is done
// in a process of its own: whatever a damaged file does to the library, this returns.
[[nodiscard]] JetTables readJetTables(const std::filesystem::path& file,
                                      std::chrono::milliseconds limit = kJetReadLimit);

}  // namespace kalvo
