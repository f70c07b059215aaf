// What is taken out of a Jet database, and the reader that takes it.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/jet_value.h"
#include "platform/sqlite/schema.h"

namespace kalvo {

using JetRow = std::vector<JetValue>;

// The rows of each table in the file's order, their values in the column order of
// kScenarioTables.
using JetTables = std::array<std::vector<JetRow>, kScenarioTableCount>;

// Reads the three tables; order and case of the columns, their types, and other tables
// do not matter. RuntimeError 3343 for a file that is no Jet database, is damaged (rows
// missing from it included), protected, or of a newer format, 3078 for a missing table,
// 3265 for a missing column. Time and memory stay in proportion to the file's size,
// whatever is in it.
[[nodiscard]] JetTables readJetTables(const std::filesystem::path& file);

// The same of a file's content; `name` is what messages call it.
[[nodiscard]] JetTables readJetTables(std::string content, std::string_view name);

}  // namespace kalvo
