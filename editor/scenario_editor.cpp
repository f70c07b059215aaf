#include "editor/scenario_editor.h"

#include <vector>

#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/number_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

std::vector<std::string> scenarioTypes() {
    return {std::string(kEmulationType), std::string(kFileType)};
}

std::string scenarioRow(std::string_view name) { return std::string(kRowPrefix).append(name); }

void warn(const Platform& platform, std::string_view text) {
    platform.dialogs.message(text, kApplicationTitle, MessageIcon::kExclamation);
}

}  // namespace

void ScenarioEditor::load() {
    form.CboType.rows = scenarioTypes();
    ChargeScenarios();
    ChargeScenForChoix();
    readChoices();
    form.txtSep = readSetting(platform_.registry, kSepDec);
    form.CboChoixText = form.RacScenChx;
    form.CboChoix.select(form.RacScenChx);
}

void ScenarioEditor::ChargeScenarios() {
    form.LstScen.clear();
    for (const std::string& name : scenarioNames(*state_.database))
        form.LstScen.rows.push_back(scenarioRow(name));
}

void ScenarioEditor::ChargeScenForChoix() {
    form.CboChoix = {scenarioNames(*state_.database)};
    form.CboChoix.select(form.CboChoixText);
}

void ScenarioEditor::readChoices() {
    form.RacInvent = pendingInvent_.value_or(readSetting(platform_.registry, kRacInvent));
    form.RacCde = pendingCde_.value_or(readSetting(platform_.registry, kRacCde));
    form.RacScenChx = readSetting(platform_.registry, kRacScenChx);
}

void ScenarioEditor::select(int row) {
    if (enteringNew() && !mayAbandonNew()) return;
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

bool ScenarioEditor::mayAbandonNew() {
    return platform_.dialogs.confirm(std::string("Le nouveau scénario "_ansi) + form.TxtNomScen +
                                         std::string(" n'est pas enregistré. L'abandonner ?"_ansi),
                                     kApplicationTitle, MessageIcon::kQuestion);
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
    form.chkIncrement = scenario.Specif == 1;
    form.FraCheminShown = scenario.Type == kFileType;
    form.TxtChemin = scenario.Chemin;
}

void ScenarioEditor::createNew() {
    form.inputsShown = true;
    form.CboType = {scenarioTypes()};
    current_.scenarioType.clear();
    form.TxtNomScen.clear();
    form.TxtChemin.clear();
    form.ChcPartiel = current_.partialFrame = false;
    form.ChDatalogic = current_.datalogic = false;
    form.chkIncrement = false;
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
        platform_.dialogs.inputBox("Nombre de champs dans la trame :", kApplicationTitle, "");
    form.ChcPartiel = ticked && !fieldCount_.empty() && fieldCount_ != "0";
}

void ScenarioEditor::editPath(std::string_view path) {
    form.TxtChemin = path;
    updateChemin(*state_.database, current_.scenarioNumber, path);
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

void ScenarioEditor::save() {
    if (current_.scenarioType.empty()) {
        platform_.dialogs.message("Vous devez préciser un type pour le scénario."_ansi,
                                  kApplicationTitle, MessageIcon::kCritical);
        return;
    }
    Database& database = *state_.database;
    if (current_.scenarioNumber != 0 && scenarioExists(database, current_.scenarioNumber)) {
        updateOutput(database, current_.scenarioNumber, form.TxtChemin, form.chkIncrement);
        return;
    }
    if (!nameIsFree()) return;
    keepTrue([&] { insertNew(); });
    ChargeScenForChoix();
    stepsShown = true;
    actions_.ChargeTouches();
    actions_.loadSteps(0, 0);
}

// A scenario is found by its name, and so is its compiled file: it needs one of its own.
bool ScenarioEditor::nameIsFree() {
    if (trimBlanks(form.TxtNomScen).empty()) {
        warn(platform_, "Vous devez donner un nom au scénario."_ansi);
        return false;
    }
    if (!findScenario(*state_.database, form.TxtNomScen)) return true;
    warn(platform_, "Un scénario de ce nom existe déjà."_ansi);
    return false;
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
    form.LstScen.selected = form.LstScen.count() - 1;
    current_.scenarioName = scenario.Nom;
}

void ScenarioEditor::deleteScenario() {
    const std::string name = current_.scenarioName;
    if (name.empty()) {
        warn(platform_, "Veuillez choisir un scénario."_ansi);
        return;
    }
    if (!platform_.dialogs.confirm(
            std::string("Attention. Cette suppression sera définitive. Voulez-vous réellement "
                        "supprimer le scénario "_ansi) +
                name + "?",
            kApplicationTitle, MessageIcon::kExclamation))
        return;
    const std::string file = scenarioFile(state_.scenario.applicationFolder, name);
    if (platform_.files.fileExists(file)) platform_.files.remove(file);
    keepTrue([&] {
        form.LstScen.remove(form.LstScen.selected);
        kalvo::deleteScenario(*state_.database, current_.scenarioNumber);
    });
    for (const std::string_view choice : {kRacScenChx, kRacInvent, kRacCde})
        if (readSetting(platform_.registry, choice) == name)
            writeSetting(platform_.registry, choice, "");
    forget(name);
    readChoices();
    ChargeScenForChoix();
}

// A scenario that is gone is neither the current one nor anybody's choice.
void ScenarioEditor::forget(const std::string& name) {
    if (connectionChoice_ == name) connectionChoice_.clear();
    if (form.CboChoixText == name) form.CboChoixText.clear();
    if (pendingInvent_ == name) pendingInvent_.reset();
    if (pendingCde_ == name) pendingCde_.reset();
    current_.scenarioNumber = 0;
    current_.scenarioName.clear();
    stepsShown = false;
    form.inputsShown = false;
    form.TxtNomScen.clear();
    form.TxtChemin.clear();
}

void ScenarioEditor::writeChoices(std::string_view chosen) {
    writeSetting(platform_.registry, kRacInvent, form.RacInvent);
    writeSetting(platform_.registry, kRacCde, form.RacCde);
    writeSetting(platform_.registry, kRacScenChx, chosen);
    pendingInvent_.reset();
    pendingCde_.reset();
    form.RacScenChx = chosen;
    state_.RacInvent = form.RacInvent;
    state_.RacCde = form.RacCde;
}

void ScenarioEditor::compile(std::string_view name) {
    if (name.empty()) return;
    actions_.cancelInsert();
    const auto numero = findScenario(*state_.database, name);
    if (!numero) return;
    const Compilation compilation =
        CompileScenario(platform_, *state_.database, state_.scenario.applicationFolder, *numero);
    if (!compilation.problem.empty()) warn(platform_, compilation.problem);
}

void ScenarioEditor::chooseScenario() {
    const std::string name = current_.scenarioName.empty()
                                 ? rowText(form.LstScen.at(form.LstScen.selected))
                                 : current_.scenarioName;
    if (name.empty()) {
        warn(platform_, "Veuillez choisir un scénario."_ansi);
        return;
    }
    writeChoices(name);
    compile(name);
    LoadActiveScenario(platform_, state_.scenario);
    updateChemin(*state_.database, current_.scenarioNumber, form.TxtChemin);
    connectionChoice_.clear();
    form.CboChoixText = name;
    form.CboChoix.select(name);
}

void ScenarioEditor::chooseConnection(int row) {
    form.CboChoix.selected = row;
    connectionChoice_ = form.CboChoixText = form.CboChoix.at(row);
}

void ScenarioEditor::chooseInventory(std::string_view name) {
    pendingInvent_ = form.RacInvent = name;
}

void ScenarioEditor::chooseOrder(std::string_view name) { pendingCde_ = form.RacCde = name; }

void ScenarioEditor::applyChoice(const std::string& choice) {
    writeChoices(choice);
    if (form.txtSep.size() != 1) form.txtSep = ".";
    writeSetting(platform_.registry, kSepDec, form.txtSep);
    state_.scenario.DecimalSeparator = form.txtSep;
    compile(choice);
    compile(form.RacInvent);
    compile(form.RacCde);
    LoadActiveScenario(platform_, state_.scenario);
    connectionChoice_.clear();
}

void ScenarioEditor::applyConfiguration() {
    try {
        const std::string choice =
            connectionChoice_.empty() ? form.CboChoixText : connectionChoice_;
        if (choice.empty())
            warn(platform_, "Vous devez entrer un choix pour le scenario choisi.");
        else
            applyChoice(choice);
        serial_.saveAndReconnect();
    } catch (const RuntimeError&) {
        warn(platform_,
             "Une erreur vient de se produire. L'opération en cours a été annulée. Merci de bien "
             "vouloir recommencer"_ansi);
    }
    platform_.icon.modify(trayTip(platform_.port.CommPort(), state_.scenario.active.ScenarioName));
}

bool ScenarioEditor::unsaved() const {
    return enteringNew() || !connectionChoice_.empty() || pendingInvent_ || pendingCde_;
}

}  // namespace kalvo
