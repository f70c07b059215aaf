// The tables of the scenario database: what they are, and how an empty one is made.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <span>
#include <string_view>

#include "platform/sqlite/sqlite_connection.h"

namespace kalvo {

struct TableDescription {
    std::string_view name;
    std::span<const std::string_view> columns;
};

inline constexpr std::array<std::string_view, 9> kScenarioColumns = {
    "Numero", "Nom", "Type", "Trame", "Specif", "Chemin", "Boucle", "Depart", "NbrTrame"};
inline constexpr std::array<std::string_view, 4> kActionColumns = {"NumeroScen", "NumAction",
                                                                   "Champs", "PlaceTrame"};
inline constexpr std::array<std::string_view, 1> kIncrementColumns = {"NunInc"};

enum ScenarioTable { kScenarios, kActions, kIncrement, kScenarioTableCount };

// Indexed by ScenarioTable.
inline constexpr std::array<TableDescription, kScenarioTableCount> kScenarioTables = {{
    {"Scenarios", kScenarioColumns},
    {"Actions", kActionColumns},
    {"Increment", kIncrementColumns},
}};

// Makes an empty scenario database (path in code page 1252): three tables, one
// counter row of 0. The file appears under its name whole or not at all.
// RuntimeError 58 when the file exists, 3051 or 3043 when it cannot be written.
void createScenarioDatabase(std::string_view path);

// The same with rows of the caller's: `fill` gets the three empty tables, no counter
// row, inside a transaction. Nothing is left of the file when it throws.
void createScenarioDatabase(const std::filesystem::path& file,
                            const std::function<void(SqliteConnection&)>& fill);

// A new scenario database under a name of the caller's choice, not yet in its place.
void buildScenarioDatabase(const std::filesystem::path& file,
                           const std::function<void(SqliteConnection&)>& fill);

}  // namespace kalvo
