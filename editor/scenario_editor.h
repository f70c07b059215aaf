// The scenarios of the settings window: their list and the properties of one.
// RuntimeErrors of a statement reach the caller; the list then shows what the
// database holds.
#pragma once

#include <string>
#include <string_view>

#include "core/run_time_state.h"
#include "editor/action_editor.h"
#include "editor/current_scenario.h"
#include "editor/row_list.h"
#include "editor/scenario_choices.h"
#include "platform/platform.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// What the controls of the scenario tab hold, under their names.
struct ScenarioForm {
    RowList LstScen;
    std::string TxtNomScen;
    RowList CboType;
    bool ChcPartiel = false;
    bool ChDatalogic = false;
    bool chkIncrement = false;
    bool inputsShown = false;  // name and type
    bool FraCheminShown = false;
    std::string TxtChemin;
};

// Why no scenario may be added under that name, in French; empty when one may.
[[nodiscard]] std::string refusalOfNewName(Database& database, const std::string& name);

class ScenarioEditor {
public:
    ScenarioForm form;
    // The windows of the current scenario's steps are open.
    bool stepsShown = false;

    ScenarioEditor(const Platform& platform, RunTimeState& state, CurrentScenario& current,
                   ActionEditor& actions, ScenarioChoices& choices)
        : platform_(platform),
          state_(state),
          current_(current),
          actions_(actions),
          choices_(choices) {}

    // Window load: the lists, and the choices.
    void load();
    void ChargeScenarios();

    // A click on a row of the list; while the step windows are open they follow. A new
    // scenario that is being entered, or a tick that is not stored, is given up only when the
    // user says so.
    void select(int row);
    // Shows the selected scenario's properties and its steps.
    void loadSelected();
    // What was being entered is given up only when the user says so.
    void createNew();
    void chooseType(int row);
    // Asks for the number of fields, whichever way the box was clicked.
    void clickPartialFrame(bool ticked);
    // Stores the path of the current scenario. One with an apostrophe is refused.
    void editPath(std::string_view path);
    // What is typed and ticked; stored by save().
    void setName(std::string_view name) { form.TxtNomScen = name; }
    void setPath(std::string_view path) { form.TxtChemin = path; }
    void setIncrement(bool ticked) { form.chkIncrement = ticked; }
    void setDatalogic(bool ticked) { form.ChDatalogic = ticked; }
    // A scenario that exists gets its path and increment flag saved, nothing
    // else; a new one, under a name of its own, is added and its step windows open.
    // True when it was stored.
    bool save();
    void deleteScenario();
    // Asks for another name of the selected scenario; what chose it by name follows.
    void rename();
    // Asks for the name of a new scenario that is like the selected one, and selects it.
    void duplicate();
    // Makes the selected scenario the one in force; true when there is one.
    bool chooseScenario();

    // Whether there are choices, or a new scenario, that are stored nowhere yet.
    [[nodiscard]] bool unsaved() const;

private:
    void showProperties(const ScenarioRecord& scenario);
    [[nodiscard]] bool enteringNew() const;
    [[nodiscard]] bool mayAbandon();
    [[nodiscard]] bool pathAccepted();
    [[nodiscard]] bool nameIsFree(const std::string& name);
    [[nodiscard]] bool scenarioSelected();
    [[nodiscard]] std::string askForName(std::string_view prompt);
    void selectNamed(const std::string& name);
    void insertNew();
    template <typename Change>
    void keepTrue(Change change);

    Platform platform_;
    RunTimeState& state_;
    CurrentScenario& current_;
    ActionEditor& actions_;
    ScenarioChoices& choices_;
    std::string fieldCount_;
    bool storedIncrement_ = false;
};

}  // namespace kalvo
