#include "editor/action_editor.h"

#include <algorithm>

#include "editor/keys/key_tables.h"
#include "editor/warning.h"
#include "keys/key_files.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/number_text.h"
#include "text/runtime_error.h"

namespace kalvo {

struct ActionEditor::Marker {
    std::string_view beginning;  // what its row is recognised by
    std::string_view label;
    void (*store)(Database&, std::int16_t, std::int16_t);
};

namespace {

constexpr std::string_view kFreeField = "Champs libre";
constexpr std::string_view kLoopLabel = "Boucle : ";
constexpr std::string_view kStartLabel = "Départ : "_ansi;

bool startsLikeField(std::string_view value) {
    return value.starts_with('&') || value.starts_with('^');
}

std::string stepRow(std::string_view value) { return std::string(kRowPrefix).append(value); }

}  // namespace

void ActionEditor::ChargeTouches() {
    const std::string_view folder = state_.scenario.applicationFolder;
    const auto value = [&](const std::string& file, std::string_view section, std::size_t key) {
        return ReadIniValue(platform_.profiles, file, section,
                            withSignPosition(static_cast<std::int64_t>(key)));
    };
    LstTouches = {"&EMP", "&CODE", "&QTY"};
    if (current_.scenarioType == kFileType) {
        LstTouches.insert(LstTouches.end(), {"&DATE", "&PASSLIGNE", "&INCREMENT", "&TAB"});
        for (std::size_t key = 0; key < kFileEntries; ++key)
            LstTouches.push_back(value(touFicIni(folder), kFileSection, key));
    } else {
        for (std::size_t key = 0; key < kSystemKeys; ++key)
            LstTouches.push_back(keyName(value(toucheIni(folder), kSystemSection, key)));
        for (std::size_t key = 0; key < kParticularKeys; ++key)
            LstTouches.push_back(keyName(value(toucheIni(folder), kParticularSection, key)));
    }
    LstTouches.emplace_back("&Timer");
    LstTouches.emplace_back(kFreeField);
}

// Runs a change of list and database that can be taken back. When the database refuses it,
// the list goes back to what the database holds. The key of an insert belongs to the change
// that its gap has begun.
template <typename Change>
void ActionEditor::change(Change change) {
    if (!insertMode) history_.keep(*state_.database, current_.scenarioNumber);
    try {
        change();
    } catch (const RuntimeError&) {
        history_.drop();
        reload();
        throw;
    }
}

void ActionEditor::reload() {
    const auto scenario = readScenario(*state_.database, current_.scenarioNumber);
    if (scenario)
        showSteps(scenario->Boucle, scenario->Depart);
    else
        LstChamps.clear();
}

void ActionEditor::cancelInsert() {
    if (!insertMode) return;
    history_.drop();
    reload();
}

void ActionEditor::select(int row) {
    const int gap = LstChamps.selected;
    if (insertMode && row != gap) {
        cancelInsert();
        if (row > gap) --row;
    }
    LstChamps.selected = row;
}

// Whether the selected row stands for a step: markers and empty rows do not, the
// gap of an insert does.
bool ActionEditor::stepSelected() const {
    return LstChamps.selected >= 0 && (insertMode || isStep(LstChamps.selected));
}

bool ActionEditor::isStep(int row) const {
    return LstChamps.at(row).starts_with(kRowPrefix.substr(0, 3));
}

// Rows before the empty row that parts the steps from the markers.
int ActionEditor::steps() const {
    int count = 0;
    while (isStep(count)) ++count;
    return count;
}

void ActionEditor::loadSteps(std::int16_t boucle, std::int16_t depart) {
    history_.clear();
    showSteps(boucle, depart);
}

void ActionEditor::showSteps(std::int16_t boucle, std::int16_t depart) {
    insertMode = false;
    LstChamps.clear();
    for (const std::string& value : readActionTexts(*state_.database, current_.scenarioNumber))
        LstChamps.rows.push_back(stepRow(value));
    if (LstChamps.rows.empty()) return;
    if (lastStep() != LstChamps.count()) renumberActions(*state_.database, current_.scenarioNumber);
    LstChamps.rows.emplace_back();
    LstChamps.rows.push_back(std::string(kLoopLabel) + std::to_string(boucle));
    LstChamps.rows.push_back(std::string(kStartLabel) + std::to_string(depart));
}

std::int16_t ActionEditor::askPlace() {
    const std::string answer =
        platform_.dialogs.inputBox("Place du champs dans la trame d'origine", kApplicationTitle, "")
            .value_or("");
    return toInteger16(std::to_string(integerPart(answer)));
}

// The database's statements take no apostrophe, the compiled file ends a step at an "@".
bool ActionEditor::accepted(std::string_view typed) {
    if (typed.find_first_of("'@") == std::string_view::npos) return true;
    showWarning(platform_.dialogs,
                "Un champ ne peut contenir ni apostrophe (') ni arobase (@)."_ansi);
    return false;
}

void ActionEditor::pick(std::string_view entry) {
    std::string value(entry);
    if (entry == kFreeField) {
        value = platform_.dialogs.inputBox("Valeur du champs libre : ", kApplicationTitle, "")
                    .value_or("");
        if (!accepted(value)) return;
    }
    if (value.empty()) return;
    change([&] { pickValue(value); });
}

void ActionEditor::pickValue(const std::string& value) {
    const int row = LstChamps.selected;
    if (!stepSelected()) {
        append(value);
    } else if (insertMode) {
        const std::int16_t place = current_.partialFrame ? askPlace() : std::int16_t{0};
        replaceRow(row, value);
        insertAction(*state_.database, current_.scenarioNumber, row + 1, {value, place});
        insertMode = false;
    } else {
        replaceRow(row, value);
        if (current_.partialFrame) static_cast<void>(askPlace());
        updateAction(*state_.database, current_.scenarioNumber, row + 1, value);
    }
}

void ActionEditor::append(const std::string& value) {
    LstChamps.insert(steps(), stepRow(value));
    const bool comesFromFrame = startsLikeField(value) && value != "&PASSLIGNE" && value != "&TAB";
    const std::int16_t place =
        current_.partialFrame && comesFromFrame ? askPlace() : std::int16_t{0};
    insertAction(*state_.database, current_.scenarioNumber, lastStep() + 1, {value, place});
}

int ActionEditor::lastStep() {
    return lastActionPosition(*state_.database, current_.scenarioNumber);
}

void ActionEditor::replaceRow(int row, const std::string& value) {
    LstChamps.remove(row);
    LstChamps.insert(row, stepRow(value));
}

void ActionEditor::editStep(int row) {
    if (!isStep(row)) return;
    const std::string answer =
        platform_.dialogs
            .inputBox("Valeur du champ :", "Modification de champ", rowText(LstChamps.at(row)))
            .value_or("");
    if (answer.empty() || !accepted(answer)) return;
    change([&] {
        LstChamps.rows[static_cast<std::size_t>(row)] = stepRow(answer);
        updateAction(*state_.database, current_.scenarioNumber, row + 1, answer);
    });
}

void ActionEditor::mnuinsert() {
    if (!stepSelected()) {
        showWarning(platform_.dialogs, "Veuillez sélectionner un champ avant d'insérer"_ansi);
        return;
    }
    if (insertMode) return;
    change([&] {
        const int row = LstChamps.selected;
        openActionGap(*state_.database, current_.scenarioNumber, row);
        LstChamps.insert(row, "");
        insertMode = true;
    });
}

void ActionEditor::mnusupp() {
    if (!stepSelected()) {
        showWarning(platform_.dialogs, "Vous devez selectionner un champs à supprimer"_ansi);
        return;
    }
    change([&] { removeSelected(); });
}

void ActionEditor::removeSelected() {
    const int row = LstChamps.selected;
    LstChamps.remove(row);
    insertMode = false;
    deleteAction(*state_.database, current_.scenarioNumber, row + 1);
}

void ActionEditor::mnuboucle() {
    change([&] { mark({"Bouc", kLoopLabel, updateBoucle}); });
}

void ActionEditor::mnudepart() {
    change([&] { mark({"Dépa"_ansi, kStartLabel, updateDepart}); });
}

void ActionEditor::mark(const Marker& marker) {
    int found = 0;
    while (found < LstChamps.count() && !LstChamps.at(found).starts_with(marker.beginning)) ++found;
    marker.store(*state_.database, current_.scenarioNumber,
                 static_cast<std::int16_t>(LstChamps.selected + 1));
    const auto row = [&] {
        return std::string(marker.label) + std::to_string(LstChamps.selected + 1);
    };
    if (found < LstChamps.count()) {
        LstChamps.remove(found);
        LstChamps.insert(found, row());
    } else {
        LstChamps.rows.emplace_back();
        LstChamps.rows.push_back(row());
    }
}

void ActionEditor::moveStep(int row, int before) {
    if (insertMode || !isStep(row)) return;
    const int to = std::clamp(before > row ? before - 1 : before, 0, steps() - 1);
    if (to == row) return;
    change([&] {
        moveAction(*state_.database, current_.scenarioNumber, row + 1, to + 1);
        const std::string text = LstChamps.at(row);
        LstChamps.remove(row);
        LstChamps.insert(to, text);
        LstChamps.selected = to;
    });
}

void ActionEditor::moveUp() { moveStep(LstChamps.selected, LstChamps.selected - 1); }

void ActionEditor::moveDown() { moveStep(LstChamps.selected, LstChamps.selected + 2); }

void ActionEditor::undo() {
    if (insertMode) {
        cancelInsert();
        return;
    }
    if (history_.undo(*state_.database, current_.scenarioNumber)) reload();
}

}  // namespace kalvo
