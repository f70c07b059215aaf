// The assistant of a site where nothing is set up yet: terminal, sample, scenario, test.
// What is chosen stays here until the end and is then stored by the controllers of the
// settings window, as if it had been entered there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/run_time_state.h"
#include "editor/port/serial_config.h"
#include "editor/row_list.h"
#include "editor/script_preview.h"
#include "editor/test_run.h"
#include "platform/platform.h"

namespace kalvo {

// Whether neither a port is stored nor a scenario.
[[nodiscard]] bool nothingSetUp(const Platform& platform, const RunTimeState& state);

class FirstSite {
public:
    // Terminal type and port; the rest of the line is what most terminals are set to.
    SerialConfig serial;
    // A record as the terminal sends it, a field a line, lines ended by LF.
    std::string sample = "REF001\n12";
    // What is done with a record.
    RowList templates;
    std::string scenarioName = "Saisie";
    std::string outputPath;  // of a template that writes a file
    // Sets the options that are advisable for a new site.
    bool advisedOptions = false;

    // Both outlive it. The database is open.
    FirstSite(const Platform& platform, RunTimeState& state);

    // The device behind each port as it is now. Until the user chooses a port, the only one
    // that has appeared since the last call is taken: a built-in port gives way to the terminal
    // that is plugged in.
    void followDevices(std::vector<std::string> now);
    // The user's own choice.
    void choosePort(int row);
    [[nodiscard]] const std::vector<std::string>& devices() const { return devices_; }

    // Whether the chosen template writes a file.
    [[nodiscard]] bool toFile() const;

    // Why a page cannot be left behind yet, in French; empty when it can.
    [[nodiscard]] std::string refusalOfTerminal() const;
    [[nodiscard]] std::string refusalOfScenario() const;
    // What the user should know of sample and template, in French; empty when they agree.
    [[nodiscard]] std::string remark() const;

    // What the scenario makes of the sample. Nothing is stored or typed.
    [[nodiscard]] ScriptPreview preview() const;
    // Leaves two seconds to bring the target application to the front and types the preview.
    // A file is not written.
    void test(const TestDesktop& desktop) const;

    // Stores everything, compiles the scenario, puts it in force and opens the port; true
    // when that is open; nothing is said when it is not. RuntimeErrors of the database: nothing
    // is stored then.
    bool finish();

private:
    [[nodiscard]] std::optional<std::vector<std::string>> steps() const;
    [[nodiscard]] int sampleFields() const;
    void storeSwitches();

    Platform platform_;
    RunTimeState& state_;
    std::vector<std::string> devices_;
    bool portChosen_ = false;  // by the user
};

}  // namespace kalvo
