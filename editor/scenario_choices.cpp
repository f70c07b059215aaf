#include "editor/scenario_choices.h"

#include <algorithm>

#include "editor/warning.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/settings_store.h"
#include "text/runtime_error.h"

namespace kalvo {

void ScenarioChoices::load() {
    ChargeScenForChoix();
    readChoices();
    form.txtSep = readSetting(platform_.registry, kSepDec);
    if (form.txtSep.empty()) form.txtSep = ".";
    storedSeparator_ = form.txtSep;
    form.CboChoixText = form.RacScenChx;
    form.CboChoix.select(form.RacScenChx);
}

void ScenarioChoices::ChargeScenForChoix() {
    form.CboChoix = {scenarioNames(*state_.database)};
    form.CboChoix.select(form.CboChoixText);
}

void ScenarioChoices::readChoices() {
    form.RacInvent = pendingInvent_.value_or(readSetting(platform_.registry, kRacInvent));
    form.RacCde = pendingCde_.value_or(readSetting(platform_.registry, kRacCde));
    form.RacScenChx = readSetting(platform_.registry, kRacScenChx);
}

void ScenarioChoices::chooseConnection(int row) {
    form.CboChoix.selected = row;
    connectionChoice_ = form.CboChoixText = form.CboChoix.at(row);
}

void ScenarioChoices::chooseInventory(std::string_view name) {
    pendingInvent_ = form.RacInvent = name;
}

void ScenarioChoices::chooseOrder(std::string_view name) { pendingCde_ = form.RacCde = name; }

void ScenarioChoices::writeChoices(std::string_view chosen) {
    writeSetting(platform_.registry, kRacInvent, form.RacInvent);
    writeSetting(platform_.registry, kRacCde, form.RacCde);
    writeSetting(platform_.registry, kRacScenChx, chosen);
    pendingInvent_.reset();
    pendingCde_.reset();
    form.RacScenChx = chosen;
    state_.RacInvent = form.RacInvent;
    state_.RacCde = form.RacCde;
}

void ScenarioChoices::compile(std::string_view name) {
    if (name.empty()) return;
    actions_.cancelInsert();
    const auto numero = findScenario(*state_.database, name);
    if (!numero) return;
    const Compilation compilation =
        CompileScenario(platform_, *state_.database, state_.scenario.applicationFolder, *numero);
    for (const std::string& warning : compilation.warnings) {
        std::string text;
        text.append("« "_ansi).append(name).append(" » : "_ansi).append(warning);
        if (std::find(warnings.begin(), warnings.end(), text) == warnings.end())
            warnings.push_back(text);
    }
    if (!compilation.problem.empty()) showWarning(platform_.dialogs, compilation.problem);
}

void ScenarioChoices::putInForce(const std::string& name) {
    writeChoices(name);
    warnings.clear();
    compile(name);
    LoadActiveScenario(platform_, state_.scenario);
    connectionChoice_.clear();
    form.CboChoixText = name;
    form.CboChoix.select(name);
}

void ScenarioChoices::recompile() {
    warnings.clear();
    for (const std::string_view choice : {kRacScenChx, kRacInvent, kRacCde})
        compile(readSetting(platform_.registry, choice));
    if (!readSetting(platform_.registry, kRacScenChx).empty())
        LoadActiveScenario(platform_, state_.scenario);
}

void ScenarioChoices::apply(const std::string& choice) {
    writeChoices(choice);
    if (form.txtSep.size() != 1) form.txtSep = ".";
    writeSetting(platform_.registry, kSepDec, form.txtSep);
    storedSeparator_ = form.txtSep;
    state_.scenario.DecimalSeparator = form.txtSep;
    warnings.clear();
    compile(choice);
    compile(form.RacInvent);
    compile(form.RacCde);
    LoadActiveScenario(platform_, state_.scenario);
    connectionChoice_.clear();
}

bool ScenarioChoices::applyConfiguration() {
    bool done = false;
    try {
        done = applyChoice();
        serial_.saveAndReconnect();
    } catch (const RuntimeError&) {
        showWarning(
            platform_.dialogs,
            "Une erreur vient de se produire. L'opération en cours a été annulée. Merci de bien "
            "vouloir recommencer"_ansi);
    }
    showInForce();
    return done;
}

bool ScenarioChoices::applyChoice() {
    const std::string choice = connectionChoice_.empty() ? form.CboChoixText : connectionChoice_;
    if (choice.empty())
        showWarning(platform_.dialogs, "Vous devez entrer un choix pour le scenario choisi.");
    else
        apply(choice);
    return !choice.empty();
}

void ScenarioChoices::showInForce() {
    platform_.icon.modify(trayTip(platform_.port.CommPort(), state_.scenario.active.ScenarioName));
}

void ScenarioChoices::forget(const std::string& name) {
    for (const std::string_view choice : {kRacScenChx, kRacInvent, kRacCde})
        if (readSetting(platform_.registry, choice) == name)
            writeSetting(platform_.registry, choice, "");
    if (connectionChoice_ == name) connectionChoice_.clear();
    if (form.CboChoixText == name) form.CboChoixText.clear();
    if (pendingInvent_ == name) pendingInvent_.reset();
    if (pendingCde_ == name) pendingCde_.reset();
    readChoices();
    ChargeScenForChoix();
}

void ScenarioChoices::follow(const std::string& old, const std::string& name) {
    const auto replace = [&](std::string& chosen) {
        if (equalIgnoringCase(chosen, old)) chosen = name;
    };
    const bool inForce = equalIgnoringCase(state_.scenario.active.ScenarioName, old);
    for (const std::string_view choice : {kRacScenChx, kRacInvent, kRacCde})
        if (equalIgnoringCase(readSetting(platform_.registry, choice), old))
            writeSetting(platform_.registry, choice, name);
    for (std::string* const chosen :
         {&state_.RacInvent, &state_.RacCde, &connectionChoice_, &form.CboChoixText})
        replace(*chosen);
    if (pendingInvent_) replace(*pendingInvent_);
    if (pendingCde_) replace(*pendingCde_);
    readChoices();
    ChargeScenForChoix();
    compile(name);
    if (inForce) LoadActiveScenario(platform_, state_.scenario);
}

bool ScenarioChoices::unsaved() const {
    return !connectionChoice_.empty() || form.txtSep != storedSeparator_ || pendingInvent_ ||
           pendingCde_;
}

}  // namespace kalvo
