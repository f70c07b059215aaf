#include "scenario/scenario_store.h"

#include <cmath>
#include <limits>
#include <memory>
#include <variant>

#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

std::string text(std::int64_t number) { return std::to_string(number); }

std::string quoted(std::string_view value) { return "'" + std::string(value) + "'"; }

std::int16_t narrow(double number) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<std::int16_t>::min() &&
          rounded <= std::numeric_limits<std::int16_t>::max()))
        throw RuntimeError(error_number::kOverflow, std::string("Dépassement de capacité"_ansi));
    return static_cast<std::int16_t>(rounded);
}

// The first of the rows as a scenario; what is not among its columns keeps 0 or the
// empty text.
std::optional<ScenarioRecord> firstScenario(const Recordset& row, std::int16_t numero) {
    if (row.Eof()) return std::nullopt;
    ScenarioRecord scenario;
    scenario.Numero = numero;
    const auto readNumber = [&](std::int16_t& into, std::string_view column) {
        resumeNext([&] { into = int16Field(row, column); });
    };
    const auto readText = [&](std::string& into, std::string_view column) {
        resumeNext([&] { into = textField(row, column); });
    };
    readText(scenario.Nom, "Nom");
    readText(scenario.Type, "Type");
    readNumber(scenario.Trame, "Trame");
    readNumber(scenario.Specif, "Specif");
    readText(scenario.Chemin, "Chemin");
    readNumber(scenario.Boucle, "Boucle");
    readNumber(scenario.Depart, "Depart");
    readNumber(scenario.NbrTrame, "NbrTrame");
    return scenario;
}

void updateScenario(Database& database, std::int16_t numero, const std::string& assignments) {
    database.Execute("UPDATE Scenarios SET " + assignments + " WHERE Numero=" + text(numero));
}

// The number of the actions for which `which` holds.
void renumber(Database& database, std::int16_t numero, const std::string& number,
              const std::string& which) {
    database.Execute("UPDATE Actions SET NumAction=" + number + " WHERE " + which +
                     " AND NumeroScen=" + text(numero));
}

}  // namespace

std::int16_t int16Field(const Recordset& row, std::string_view column) {
    const DatabaseValue value = row.Fields(column);
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return narrow(static_cast<double>(*whole));
    if (const auto* fractional = std::get_if<double>(&value)) return narrow(*fractional);
    if (const auto* characters = std::get_if<std::string>(&value)) return toInteger16(*characters);
    throw RuntimeError(error_number::kInvalidNull, "Utilisation incorrecte de Null");
}

std::string textField(const Recordset& row, std::string_view column) {
    const DatabaseValue value = row.Fields(column);
    if (const auto* characters = std::get_if<std::string>(&value)) return *characters;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return text(*whole);
    if (const auto* fractional = std::get_if<double>(&value)) return std::to_string(*fractional);
    return {};
}

std::vector<std::string> scenarioNames(Database& database) {
    std::vector<std::string> names;
    for (const auto rows = database.OpenRecordset("SELECT Nom FROM Scenarios"); !rows->Eof();
         rows->MoveNext())
        names.push_back(textField(*rows, "Nom"));
    return names;
}

std::optional<std::int16_t> findScenario(Database& database, std::string_view name) {
    const auto rows =
        database.OpenRecordset("SELECT Numero FROM Scenarios WHERE Nom=" + quoted(name));
    if (rows->Eof()) return std::nullopt;
    return int16Field(*rows, "Numero");
}

std::optional<ScenarioRecord> readScenario(Database& database, std::int16_t numero) {
    return firstScenario(
        *database.OpenRecordset("SELECT * FROM Scenarios WHERE Numero=" + text(numero)), numero);
}

std::optional<ScenarioRecord> readProperties(Database& database, std::int16_t numero) {
    return firstScenario(
        *database.OpenRecordset(
            "SELECT Nom,Type,Trame,Specif,Chemin,Boucle,Depart FROM Scenarios WHERE Numero=" +
            text(numero)),
        numero);
}

bool scenarioExists(Database& database, std::int16_t numero) {
    return !database.OpenRecordset("SELECT Nom FROM Scenarios WHERE Numero=" + text(numero))->Eof();
}

std::int16_t nextScenarioNumber(Database& database) {
    const auto rows = database.OpenRecordset("SELECT Numero FROM Scenarios ORDER BY Numero DESC");
    return rows->Eof() ? std::int16_t{1} : narrow(int16Field(*rows, "Numero") + 1.0);
}

void insertScenario(Database& database, const ScenarioRecord& scenario) {
    database.Execute(
        "INSERT INTO Scenarios (Numero,Nom,Type,Trame,Specif,Chemin,Nbrtrame) VALUES(" +
        text(scenario.Numero) + "," + quoted(scenario.Nom) + "," + quoted(scenario.Type) + "," +
        text(scenario.Trame) + "," + text(scenario.Specif) + "," + quoted(scenario.Chemin) + "," +
        text(scenario.NbrTrame) + ")");
}

void updateOutput(Database& database, std::int16_t numero, std::string_view chemin, bool specif) {
    updateScenario(database, numero,
                   "Chemin=" + quoted(chemin) + ",Specif=" + (specif ? "1" : "0"));
}

void updateChemin(Database& database, std::int16_t numero, std::string_view chemin) {
    updateScenario(database, numero, "Chemin=" + quoted(chemin));
}

void updateBoucle(Database& database, std::int16_t numero, std::int16_t action) {
    updateScenario(database, numero, "Boucle=" + text(action));
}

void updateDepart(Database& database, std::int16_t numero, std::int16_t action) {
    updateScenario(database, numero, "Depart=" + text(action));
}

void updateNom(Database& database, std::int16_t numero, std::string_view nom) {
    updateScenario(database, numero, "Nom=" + quoted(nom));
}

std::int16_t copyScenario(Database& database, std::int16_t numero, std::string_view nom) {
    std::int16_t copy = 0;
    database.Transaction([&] {
        copy = nextScenarioNumber(database);
        database.Execute(
            "INSERT INTO Scenarios (Numero,Nom,Type,Trame,Specif,Chemin,Nbrtrame,Boucle,Depart) "
            "SELECT " +
            text(copy) + "," + quoted(nom) +
            ",Type,Trame,Specif,Chemin,Nbrtrame,Boucle,Depart FROM Scenarios WHERE Numero=" +
            text(numero));
        database.Execute(
            "INSERT INTO Actions (NumeroScen,Numaction,Champs,PlaceTrame) SELECT " + text(copy) +
            ",Numaction,Champs,PlaceTrame FROM Actions WHERE NumeroScen=" + text(numero));
    });
    return copy;
}

void deleteScenario(Database& database, std::int16_t numero) {
    database.Execute("DELETE FROM Scenarios WHERE Numero=" + text(numero));
    database.Execute("DELETE FROM Actions WHERE NumeroScen=" + text(numero));
}

std::optional<ActionRecord> readAction(Database& database, std::int16_t numero,
                                       std::int32_t position) {
    const auto row = database.OpenRecordset(
        "SELECT Champs,PlaceTrame FROM Actions WHERE NumeroScen=" + text(numero) +
        " AND Numaction=" + text(position));
    if (row->Eof()) return std::nullopt;
    ActionRecord action;
    resumeNext([&] { action.Champs = textField(*row, "Champs"); });
    resumeNext([&] { action.PlaceTrame = int16Field(*row, "PlaceTrame"); });
    return action;
}

std::vector<std::string> readActionTexts(Database& database, std::int16_t numero) {
    std::vector<std::string> texts;
    const auto rows = database.OpenRecordset(
        "SELECT Champs FROM Actions WHERE NumeroScen=" + text(numero) + " ORDER BY Numaction");
    for (; !rows->Eof(); rows->MoveNext()) texts.push_back(textField(*rows, "Champs"));
    return texts;
}

std::optional<std::string> readActionText(Database& database, std::int16_t numero,
                                          std::int32_t position) {
    const auto row = database.OpenRecordset(
        "SELECT Champs FROM Actions WHERE NumeroScen=" + text(numero) +
        (position == 1 ? " AND NumAction=" : " AND Numaction=") + text(position));
    if (row->Eof()) return std::nullopt;
    return textField(*row, "Champs");
}

std::int16_t lastActionPosition(Database& database, std::int16_t numero) {
    const auto last =
        database.OpenRecordset("SELECT NumAction FROM Actions WHERE NumeroScen=" + text(numero) +
                               " ORDER BY NumAction DESC");
    return last->Eof() ? std::int16_t{0} : int16Field(*last, "NumAction");
}

void insertAction(Database& database, std::int16_t numero, std::int32_t position,
                  const ActionRecord& action) {
    database.Execute("INSERT INTO Actions (NumeroScen,Numaction,Champs,PlaceTrame) VALUES (" +
                     text(numero) + "," + text(position) + "," + quoted(action.Champs) + "," +
                     text(action.PlaceTrame) + ")");
}

void updateAction(Database& database, std::int16_t numero, std::int32_t position,
                  std::string_view champs) {
    database.Execute("UPDATE Actions SET Champs=" + quoted(champs) +
                     " WHERE NumAction=" + text(position) + "AND NumeroScen=" + text(numero));
}

std::vector<ActionRecord> readActions(Database& database, std::int16_t numero) {
    std::vector<ActionRecord> actions;
    const auto rows = database.OpenRecordset(
        "SELECT Champs,PlaceTrame FROM Actions WHERE NumeroScen=" + text(numero) +
        " ORDER BY Numaction");
    for (; !rows->Eof(); rows->MoveNext()) {
        ActionRecord action{textField(*rows, "Champs"), 0};
        resumeNext([&] { action.PlaceTrame = int16Field(*rows, "PlaceTrame"); });
        actions.push_back(std::move(action));
    }
    return actions;
}

void replaceActions(Database& database, std::int16_t numero,
                    const std::vector<ActionRecord>& actions) {
    database.Execute("DELETE FROM Actions WHERE NumeroScen=" + text(numero));
    std::int32_t position = 0;
    for (const ActionRecord& action : actions) insertAction(database, numero, ++position, action);
}

void moveAction(Database& database, std::int16_t numero, std::int32_t from, std::int32_t to) {
    const auto between = [](std::int32_t first, std::int32_t last) {
        return "NumAction>=" + text(first) + " AND NumAction<=" + text(last);
    };
    database.Transaction([&] {
        renumber(database, numero, "0", "NumAction=" + text(from));
        if (from < to)
            renumber(database, numero, "NumAction - 1", between(from + 1, to));
        else
            renumber(database, numero, "NumAction + 1", between(to, from - 1));
        renumber(database, numero, text(to), "NumAction=0");
    });
}

int countActions(Database& database, std::string_view champs) {
    int count = 0;
    const auto rows =
        database.OpenRecordset("SELECT Champs FROM Actions WHERE Champs=" + quoted(champs));
    for (; !rows->Eof(); rows->MoveNext()) ++count;
    return count;
}

void renameActions(Database& database, std::string_view champs, std::string_view renamed) {
    database.Execute("UPDATE Actions SET Champs=" + quoted(renamed) +
                     " WHERE Champs=" + quoted(champs));
}

void openActionGap(Database& database, std::int16_t numero, std::int32_t row) {
    renumber(database, numero, "NumAction + 1", "NumAction>" + text(row));
}

void deleteAction(Database& database, std::int16_t numero, std::int32_t position) {
    database.Execute("DELETE FROM Actions WHERE NumAction=" + text(position) +
                     " AND NumeroScen=" + text(numero));
    database.Execute("UPDATE Actions SET NumAction=NumAction - 1 WHERE NumAction>" +
                     text(position) + "AND NumeroScen=" + text(numero));
}

void renumberActions(Database& database, std::int16_t numero) {
    const auto rows =
        database.OpenRecordset("SELECT NumAction FROM Actions WHERE NumeroScen=" + text(numero) +
                               " ORDER BY NumAction ASC");
    for (std::int32_t position = 1; !rows->Eof(); rows->MoveNext(), ++position) {
        resumeNext([&] {
            renumber(database, numero, text(position),
                     "NumAction=" + text(int16Field(*rows, "NumAction")));
        });
    }
}

std::optional<std::int16_t> readCounter(Database& database) {
    const auto rows = database.OpenRecordset("SELECT NunInc FROM Increment");
    if (rows->Eof()) return std::nullopt;
    return int16Field(*rows, "NunInc");
}

void writeCounter(Database& database, std::int32_t value) {
    database.Execute("UPDATE Increment SET NunInc=" + text(value));
}

}  // namespace kalvo
