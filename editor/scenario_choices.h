// Which scenarios are in force: for what the terminal sends, for inventory, for order
// work; and the apply of the whole configuration. What is chosen on the connection tab
// stays pending until it is applied.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "editor/action_editor.h"
#include "editor/port/serial_config.h"
#include "editor/row_list.h"
#include "platform/platform.h"

namespace kalvo {

// What the controls of the connection tab hold, under their names.
struct ChoicesForm {
    RowList CboChoix;  // bare names
    std::string CboChoixText;
    std::string txtSep;
    std::string RacScenChx;
    std::string RacInvent;
    std::string RacCde;
};

class ScenarioChoices {
public:
    ChoicesForm form;
    // What the latest compilations found that will not work as it looks, in French.
    std::vector<std::string> warnings;

    ScenarioChoices(const Platform& platform, RunTimeState& state, SerialConfig& serial,
                    ActionEditor& actions)
        : platform_(platform), state_(state), serial_(serial), actions_(actions) {}

    // Window load: the list of names, the registry choices, the separator.
    void load();
    void ChargeScenForChoix();
    // Tab change. Choices made and not applied yet stay shown.
    void readChoices();

    void chooseConnection(int row);
    // The scenarios for inventory and for order work; empty for none.
    void chooseInventory(std::string_view name);
    void chooseOrder(std::string_view name);

    // Puts the named scenario in force at once.
    void putInForce(const std::string& name);
    // Compiles the chosen scenarios as they are stored now, and reloads the one in force.
    void recompile();
    void setSeparator(std::string_view separator) { form.txtSep = separator; }
    // Choices, separator, compilation, serial settings, port. A failure ends it
    // with a message. True when all of it was done.
    bool applyConfiguration();
    // The same without the port; RuntimeErrors are the caller's. False without a choice.
    bool applyChoice();
    // Port and scenario at the icon.
    void showInForce();
    // A scenario that is gone is nobody's choice.
    void forget(const std::string& name);
    // A scenario has got another name: it stays chosen, and in force.
    void follow(const std::string& old, const std::string& name);

    // Whether there are choices that are stored nowhere yet.
    [[nodiscard]] bool unsaved() const;

private:
    void writeChoices(std::string_view chosen);
    void compile(std::string_view name);
    void apply(const std::string& choice);

    Platform platform_;
    RunTimeState& state_;
    SerialConfig& serial_;
    ActionEditor& actions_;
    // Made on the connection tab and not applied yet.
    std::string connectionChoice_;
    std::string storedSeparator_;
    std::optional<std::string> pendingInvent_;
    std::optional<std::string> pendingCde_;
};

}  // namespace kalvo
