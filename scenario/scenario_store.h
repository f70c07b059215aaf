// The scenario database Scen.mdb: its rows, and the statements that read and change
// them.
//
// Statements are put together as text, values between single quotes and nothing
// escaped: a name that holds a quote breaks its statement, which users of today
// see as an error and not as something else being done. Some lack a blank before
// AND; the engine takes them as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace kalvo {

// What a scenario's type is called in the database and in its compiled file.
inline constexpr std::string_view kEmulationType = "Emulation";
inline constexpr std::string_view kFileType = "Fichier";

// One row of the table Scenarios. Numbers that are Null read as 0, texts as empty.
struct ScenarioRecord {
    std::int16_t Numero = 0;
    std::string Nom;
    std::string Type;
    std::int16_t Trame = 0;   // 1: a record arrives as several sub-frames
    std::int16_t Specif = 0;  // 1: a new output file for every frame
    std::string Chemin;
    std::int16_t Boucle = 0;
    std::int16_t Depart = 0;
    std::int16_t NbrTrame = 0;
};

// One row of the table Actions.
struct ActionRecord {
    std::string Champs;
    std::int16_t PlaceTrame = 0;
};

// A column as a 16-bit integer. RuntimeError 94 for Null, 13 for a text that is no
// number, 6 outside 16 bits.
[[nodiscard]] std::int16_t int16Field(const Recordset& row, std::string_view column);

// A column as text; Null reads as the empty text.
[[nodiscard]] std::string textField(const Recordset& row, std::string_view column);

// Every scenario's name, in the order of the table.
[[nodiscard]] std::vector<std::string> scenarioNames(Database& database);

// The number of the scenario of that name.
[[nodiscard]] std::optional<std::int16_t> findScenario(Database& database, std::string_view name);

// A scenario row; columns that cannot be read keep 0 or the empty text.
[[nodiscard]] std::optional<ScenarioRecord> readScenario(Database& database, std::int16_t numero);

// Whether there is a scenario of that number.
[[nodiscard]] bool scenarioExists(Database& database, std::int16_t numero);

// The same without the field count, as the scenario editor asks for it.
[[nodiscard]] std::optional<ScenarioRecord> readProperties(Database& database, std::int16_t numero);

// The largest number in use plus 1; 1 for an empty table.
[[nodiscard]] std::int16_t nextScenarioNumber(Database& database);

// Adds a scenario; Boucle and Depart are set later.
void insertScenario(Database& database, const ScenarioRecord& scenario);
// What saving an existing scenario changes of it.
void updateOutput(Database& database, std::int16_t numero, std::string_view chemin, bool specif);
void updateChemin(Database& database, std::int16_t numero, std::string_view chemin);
void updateBoucle(Database& database, std::int16_t numero, std::int16_t action);
void updateDepart(Database& database, std::int16_t numero, std::int16_t action);

void updateNom(Database& database, std::int16_t numero, std::string_view nom);

// Adds a scenario like another one, with its actions, under a number and a name of its own.
// Its number.
std::int16_t copyScenario(Database& database, std::int16_t numero, std::string_view nom);

// Removes a scenario and its actions.
void deleteScenario(Database& database, std::int16_t numero);

// An action by its position, from 1.
[[nodiscard]] std::optional<ActionRecord> readAction(Database& database, std::int16_t numero,
                                                     std::int32_t position);

// The texts of all actions, in their order.
[[nodiscard]] std::vector<std::string> readActionTexts(Database& database, std::int16_t numero);

// The text of an action by its position, as a test run asks for one after the other.
[[nodiscard]] std::optional<std::string> readActionText(Database& database, std::int16_t numero,
                                                        std::int32_t position);

// The highest position in use; 0 without actions.
[[nodiscard]] std::int16_t lastActionPosition(Database& database, std::int16_t numero);

void insertAction(Database& database, std::int16_t numero, std::int32_t position,
                  const ActionRecord& action);
void updateAction(Database& database, std::int16_t numero, std::int32_t position,
                  std::string_view champs);

// All actions, in their order; and others in their place, in a transaction of the caller's.
[[nodiscard]] std::vector<ActionRecord> readActions(Database& database, std::int16_t numero);
void replaceActions(Database& database, std::int16_t numero,
                    const std::vector<ActionRecord>& actions);

// Gives an action another position; those between move by one.
void moveAction(Database& database, std::int16_t numero, std::int32_t from, std::int32_t to);

// How many actions of all scenarios have that text, and another text for all of these.
[[nodiscard]] int countActions(Database& database, std::string_view champs);
void renameActions(Database& database, std::string_view champs, std::string_view renamed);

// Frees position row + 1: what stands there and behind it moves up by one.
void openActionGap(Database& database, std::int16_t numero, std::int32_t row);

// Removes an action; those behind it move down by one.
void deleteAction(Database& database, std::int16_t numero, std::int32_t position);

// Numbers the actions of a scenario 1, 2, 3, ... in their order. Two actions that
// share a number end up sharing the first's new one.
void renumberActions(Database& database, std::int16_t numero);

// The running counter; nothing when the database has no row for it.
[[nodiscard]] std::optional<std::int16_t> readCounter(Database& database);
void writeCounter(Database& database, std::int32_t value);

}  // namespace kalvo
