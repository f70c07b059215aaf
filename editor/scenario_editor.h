// The scenarios of the settings window: their list, the properties of one, the
// choice of the one in force, and the apply of the whole configuration.
// RuntimeErrors of a statement reach the caller but for applyConfiguration; the
// list then shows what the database holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/run_time_state.h"
#include "editor/action_editor.h"
#include "editor/current_scenario.h"
#include "editor/row_list.h"
#include "editor/serial_config.h"
#include "platform/platform.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// What the controls of the scenario and connection tabs hold, under their
// names.
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
    RowList CboChoix;  // bare names
    std::string CboChoixText;
    std::string txtSep;
    std::string RacScenChx;
    std::string RacInvent;
    std::string RacCde;
};

class ScenarioEditor {
public:
    ScenarioForm form;
    // The windows of the current scenario's steps are open.
    bool stepsShown = false;

    ScenarioEditor(const Platform& platform, RunTimeState& state, CurrentScenario& current,
                   SerialConfig& serial, ActionEditor& actions)
        : platform_(platform),
          state_(state),
          current_(current),
          serial_(serial),
          actions_(actions) {}

    // Window load: lists and registry choices.
    void load();
    void ChargeScenarios();
    void ChargeScenForChoix();
    // Tab change. Choices made and not applied yet stay shown.
    void readChoices();

    // A click on a row of the list; while the step windows are open they follow. A new
    // scenario that is being entered is given up only when the user says so.
    void select(int row);
    // Shows the selected scenario's properties and its steps.
    void loadSelected();
    void createNew();
    void chooseType(int row);
    // Asks for the number of fields, whichever way the box was clicked.
    void clickPartialFrame(bool ticked);
    void editPath(std::string_view path);
    // A scenario that exists gets its path and increment flag saved, nothing
    // else; a new one, under a name of its own, is added and its step windows open.
    void save();
    void deleteScenario();
    // Makes the selected scenario the one in force.
    void chooseScenario();

    void chooseConnection(int row);
    // The scenarios for inventory and for order work; empty for none.
    void chooseInventory(std::string_view name);
    void chooseOrder(std::string_view name);
    // Choices, separator, compilation, serial settings, port. A failure ends it
    // with a message.
    void applyConfiguration();

    // Whether the connection tab holds choices, or the scenario tab a new scenario,
    // that are stored nowhere yet.
    [[nodiscard]] bool unsaved() const;

private:
    void showProperties(const ScenarioRecord& scenario);
    [[nodiscard]] bool enteringNew() const;
    [[nodiscard]] bool mayAbandonNew();
    [[nodiscard]] bool nameIsFree();
    void insertNew();
    template <typename Change>
    void keepTrue(Change change);
    void forget(const std::string& name);
    void writeChoices(std::string_view chosen);
    void compile(std::string_view name);
    void applyChoice(const std::string& choice);

    Platform platform_;
    RunTimeState& state_;
    CurrentScenario& current_;
    SerialConfig& serial_;
    ActionEditor& actions_;
    std::string fieldCount_;
    // Made on the connection tab and not applied yet.
    std::string connectionChoice_;
    std::optional<std::string> pendingInvent_;
    std::optional<std::string> pendingCde_;
};

}  // namespace kalvo
