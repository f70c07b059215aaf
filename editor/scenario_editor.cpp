#include "editor/scenario_editor.h"

#include <vector>

#include "editor/warning.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/application_paths.h"
#include "text/number_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

std::vector<std::string> scenarioTypes() {
    return {std::string(kEmulationType), std::string(kFileType)};
}

std::string scenarioRow(std::string_view name) { return std::string(kRowPrefix).append(name); }

}  // namespace

// A scenario is found by its name, and so is its compiled file: it needs one of its own.
std::string refusalOfNewName(Database& database, const std::string& name) {
    std::string problem = refusalOfName(name);
    if (trimBlanks(name).empty())
        problem = "Vous devez donner un nom au scénario."_ansi;
    else if (name.find('\'') != std::string::npos)
        problem = "Nom de scénario refusé : il contient une apostrophe"_ansi;
    else if (problem.empty() && findScenario(database, name))
        problem = "Un scénario de ce nom existe déjà."_ansi;
    return problem;
}

void ScenarioEditor::load() {
    form.CboType.rows = scenarioTypes();
    ChargeScenarios();
    choices_.load();
}

void ScenarioEditor::ChargeScenarios() {
    form.LstScen.clear();
    for (const std::string& name : scenarioNames(*state_.database))
        form.LstScen.rows.push_back(scenarioRow(name));
}

void ScenarioEditor::select(int row) {
    if (!mayAbandon()) return;
    const std::string name = rowText(form.LstScen.at(row));
    const auto numero = findScenario(*state_.database, name);
    form.LstScen.selected = row;
    current_.scenarioName = name;
    if (!numero) return;
    const bool another = *numero != current_.scenarioNumber;
    current_.scenarioNumber = *numero;
    // What is saved next is saved for this scenario, so the form has to show it.
    if (const auto scenario = readProperties(*state_.database, *numero)) showProperties(*scenario);
    if (another && stepsShown) loadSelected();
}

bool ScenarioEditor::enteringNew() const {
    return current_.scenarioNumber == 0 && form.inputsShown && !form.TxtNomScen.empty();
}

bool ScenarioEditor::mayAbandon() {
    std::string question;
    if (enteringNew())
        question = std::string("Le nouveau scénario "_ansi) + form.TxtNomScen +
                   std::string(" n'est pas enregistré. L'abandonner ?"_ansi);
    else if (form.chkIncrement != storedIncrement_)
        question =
            "L'incrémentation des fichiers n'est pas enregistrée. Abandonner ce changement ?"_ansi;
    return question.empty() ||
           platform_.dialogs.confirm(question, kApplicationTitle, MessageIcon::kQuestion);
}

void ScenarioEditor::loadSelected() {
    const auto scenario = readProperties(*state_.database, current_.scenarioNumber);
    if (!scenario) return;
    showProperties(*scenario);
    form.inputsShown = true;
    stepsShown = true;
    actions_.ChargeTouches();
    actions_.loadSteps(scenario->Boucle, scenario->Depart);
}

void ScenarioEditor::showProperties(const ScenarioRecord& scenario) {
    form.CboType.rows = scenarioTypes();
    form.TxtNomScen = scenario.Nom;
    form.CboType.select(scenario.Type);
    current_.scenarioType = form.CboType.at(form.CboType.selected);
    form.ChcPartiel = current_.partialFrame = scenario.Trame == 1;
    form.chkIncrement = storedIncrement_ = scenario.Specif == 1;
    form.FraCheminShown = scenario.Type == kFileType;
    form.TxtChemin = scenario.Chemin;
}

void ScenarioEditor::createNew() {
    if (!mayAbandon()) return;
    form.inputsShown = true;
    form.CboType = {scenarioTypes()};
    current_.scenarioType.clear();
    form.TxtNomScen.clear();
    form.TxtChemin.clear();
    form.ChcPartiel = current_.partialFrame = false;
    form.ChDatalogic = current_.datalogic = false;
    form.chkIncrement = storedIncrement_ = false;
    form.LstScen.selected = -1;
    fieldCount_.clear();
    current_.scenarioNumber = 0;
    current_.scenarioName.clear();
    stepsShown = false;
}

void ScenarioEditor::chooseType(int row) {
    form.CboType.selected = row;
    current_.scenarioType = form.CboType.at(row);
    if (current_.scenarioType == kFileType) form.FraCheminShown = true;
}

void ScenarioEditor::clickPartialFrame(bool ticked) {
    fieldCount_ =
        platform_.dialogs.inputBox("Nombre de champs dans la trame :", kApplicationTitle, "")
            .value_or("");
    form.ChcPartiel = ticked && !fieldCount_.empty() && fieldCount_ != "0";
}

void ScenarioEditor::editPath(std::string_view path) {
    form.TxtChemin = path;
    if (pathAccepted()) updateChemin(*state_.database, current_.scenarioNumber, path);
}

bool ScenarioEditor::pathAccepted() {
    if (form.TxtChemin.find('\'') == std::string::npos) return true;
    showWarning(platform_.dialogs, "Le chemin d'un fichier ne peut pas contenir d'apostrophe.");
    return false;
}

// Runs a change of list and database. When the database refuses it, the list goes
// back to what the database holds.
template <typename Change>
void ScenarioEditor::keepTrue(Change change) {
    try {
        change();
    } catch (const RuntimeError&) {
        ChargeScenarios();
        throw;
    }
}

bool ScenarioEditor::save() {
    if (current_.scenarioType.empty()) {
        platform_.dialogs.message("Vous devez préciser un type pour le scénario."_ansi,
                                  kApplicationTitle, MessageIcon::kCritical);
        return false;
    }
    if (!pathAccepted()) return false;
    Database& database = *state_.database;
    if (current_.scenarioNumber != 0 && scenarioExists(database, current_.scenarioNumber)) {
        updateOutput(database, current_.scenarioNumber, form.TxtChemin, form.chkIncrement);
        storedIncrement_ = form.chkIncrement;
        return true;
    }
    if (!nameIsFree(form.TxtNomScen)) return false;
    keepTrue([&] { insertNew(); });
    choices_.ChargeScenForChoix();
    stepsShown = true;
    actions_.ChargeTouches();
    actions_.loadSteps(0, 0);
    return true;
}

bool ScenarioEditor::nameIsFree(const std::string& name) {
    const std::string problem = refusalOfNewName(*state_.database, name);
    if (!problem.empty()) showWarning(platform_.dialogs, problem);
    return problem.empty();
}

void ScenarioEditor::insertNew() {
    form.LstScen.rows.push_back(scenarioRow(form.TxtNomScen));
    current_.partialFrame = form.ChcPartiel;
    current_.datalogic = form.ChDatalogic;
    if (fieldCount_.empty()) fieldCount_ = "0";
    ScenarioRecord scenario;
    scenario.Numero = nextScenarioNumber(*state_.database);
    scenario.Nom = form.TxtNomScen;
    scenario.Type = current_.scenarioType;
    scenario.Trame = current_.partialFrame ? 1 : 0;
    scenario.Specif = form.chkIncrement ? 1 : 0;
    scenario.Chemin = form.TxtChemin;
    scenario.NbrTrame = toInteger16(fieldCount_);
    insertScenario(*state_.database, scenario);
    current_.scenarioNumber = scenario.Numero;
    storedIncrement_ = form.chkIncrement;
    form.LstScen.selected = form.LstScen.count() - 1;
    current_.scenarioName = scenario.Nom;
}

void ScenarioEditor::deleteScenario() {
    if (!scenarioSelected()) return;
    const std::string name = current_.scenarioName;
    if (!platform_.dialogs.confirm(
            std::string("Attention. Cette suppression sera définitive. Voulez-vous réellement "
                        "supprimer le scénario "_ansi) +
                name + "?",
            kApplicationTitle, MessageIcon::kExclamation))
        return;
    removeScenarioFile(platform_.files, state_.scenario.applicationFolder, name);
    keepTrue([&] {
        form.LstScen.remove(form.LstScen.selected);
        kalvo::deleteScenario(*state_.database, current_.scenarioNumber);
    });
    choices_.forget(name);
    // Nothing is typed by a scenario that is no more.
    if (equalIgnoringCase(state_.scenario.active.ScenarioName, name)) {
        state_.scenario.active = {};
        platform_.icon.modify(trayTip(platform_.port.CommPort(), ""));
    }
    current_.scenarioNumber = 0;
    current_.scenarioName.clear();
    stepsShown = false;
    form.inputsShown = false;
    form.chkIncrement = storedIncrement_ = false;
    form.TxtNomScen.clear();
    form.TxtChemin.clear();
}

bool ScenarioEditor::scenarioSelected() {
    if (!current_.scenarioName.empty()) return true;
    showWarning(platform_.dialogs, "Veuillez choisir un scénario."_ansi);
    return false;
}

// A name that a scenario may have; empty when the user gives up.
std::string ScenarioEditor::askForName(std::string_view prompt) {
    std::string name = current_.scenarioName;
    do {
        name = platform_.dialogs.inputBox(prompt, kApplicationTitle, name).value_or("");
    } while (!name.empty() && !nameIsFree(name));
    return name;
}

void ScenarioEditor::rename() {
    if (!scenarioSelected()) return;
    const std::string old = current_.scenarioName;
    const std::string name = askForName("Nouveau nom du scénario :"_ansi);
    if (name.empty()) return;
    updateNom(*state_.database, current_.scenarioNumber, name);
    removeScenarioFile(platform_.files, state_.scenario.applicationFolder, old);
    choices_.follow(old, name);
    selectNamed(name);
}

void ScenarioEditor::duplicate() {
    if (!scenarioSelected()) return;
    const std::string name = askForName("Nom du nouveau scénario :"_ansi);
    if (name.empty()) return;
    copyScenario(*state_.database, current_.scenarioNumber, name);
    choices_.ChargeScenForChoix();
    selectNamed(name);
}

void ScenarioEditor::selectNamed(const std::string& name) {
    ChargeScenarios();
    form.LstScen.select(scenarioRow(name));
    select(form.LstScen.selected);
}

bool ScenarioEditor::chooseScenario() {
    const std::string name = current_.scenarioName.empty()
                                 ? rowText(form.LstScen.at(form.LstScen.selected))
                                 : current_.scenarioName;
    if (name.empty()) {
        showWarning(platform_.dialogs, "Veuillez choisir un scénario."_ansi);
        return false;
    }
    choices_.putInForce(name);
    updateChemin(*state_.database, current_.scenarioNumber, form.TxtChemin);
    return true;
}

bool ScenarioEditor::unsaved() const {
    return enteringNew() || form.chkIncrement != storedIncrement_ || choices_.unsaved();
}

}  // namespace kalvo
