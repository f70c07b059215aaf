#include "editor/test_run.h"

#include <optional>
#include <string>
#include <string_view>

#include "core/script_typing.h"
#include "editor/acting_options.h"
#include "editor/warning.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/log.h"
#include "platform/progress.h"
#include "scenario/file_output.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kSimulatedFrames = 4;
constexpr int kTimeToChangeWindow = 2000;  // milliseconds

// The scenario in force, back in its place whatever happens meanwhile; the chosen one
// itself stays as the test has loaded it.
class KeptScenario {
public:
    KeptScenario(ScenarioRun& run, std::string_view tested)
        : run_(run),
          active_(run.active),
          chosen_(equalIgnoringCase(run.active.ScenarioName, tested)) {}
    KeptScenario(const KeptScenario&) = delete;
    KeptScenario& operator=(const KeptScenario&) = delete;
    ~KeptScenario() {
        if (!chosen_) run_.active = std::move(active_);
    }

private:
    ScenarioRun& run_;
    ActiveScenario active_;
    bool chosen_;
};

std::string roundTitle(int round) {
    return std::string(kApplicationTitle) + " : trame " + std::to_string(round) + " sur " +
           std::to_string(kSimulatedFrames);
}

// Nothing when the user cancels.
std::optional<std::string> askForFrame(const Platform& platform, Database& database,
                                       std::int16_t scenario) {
    std::string frame;
    for (int round = 1; round <= kSimulatedFrames; ++round) {
        for (int step = 1;; ++step) {
            const auto value = readActionText(database, scenario, step);
            if (!value) break;
            if (!value->starts_with('&') && !value->starts_with('^')) continue;
            const auto answer =
                platform.dialogs.inputBox("Valeur du champs " + *value, roundTitle(round), "");
            if (!answer) return std::nullopt;
            frame += *answer + "\r\n";
        }
    }
    return frame;
}

}  // namespace

void leaveTimeToChangeWindow(const Platform& platform, const TestDesktop& desktop) {
    desktop.minimise();
    platform.events.DoEvents();
    platform.events.Sleep(kTimeToChangeWindow);
    platform.events.DoEvents();
}

bool targetReady(const Platform& platform, const TestDesktop& desktop) {
    const bool ready = desktop.targetReady();
    if (!ready)
        showWarning(platform.dialogs,
                    "Aucune application n'est devant : rien n'a été frappé. Recommencez et passez "
                    "dans l'application visée dans les deux secondes."_ansi);
    return ready;
}

void runScenarioTest(const Platform& platform, RunTimeState& state, const CurrentScenario& current,
                     const TestDesktop& desktop) {
    const auto scenario = readScenario(*state.database, current.scenarioNumber);
    if (!scenario) return;
    auto frame = askForFrame(platform, *state.database, scenario->Numero);
    if (!frame) return;
    ScenarioRun& run = state.scenario;
    const Compilation compilation =
        CompileScenario(platform, *state.database, run.applicationFolder, scenario->Numero);
    if (!compilation.problem.empty()) showWarning(platform.dialogs, compilation.problem);
    if (!refusalOfName(scenario->Nom).empty()) return;
    const KeptScenario kept(run, scenario->Nom);
    LoadTestScenario(platform, run, scenario->Nom);
    run.keys.LoadKeyCorrespondence(platform.profiles, run.applicationFolder);
    platform.log.write(LogLevel::kInformation, "Essai de " + scenario->Nom);
    for (const std::string& option :
         actingOptions(platform.profiles, run.applicationFolder, *scenario, state.TerminalType))
        platform.log.write(LogLevel::kInformation, option);
    SplitFrameFields(platform, run, *frame);
    const std::string script = BuildKeyScript(platform, run, *frame);
    platform.progress.unload();
    leaveTimeToChangeWindow(platform, desktop);
    if (run.active.FileMode)
        WriteFileLine(platform, run, script);
    else if (targetReady(platform, desktop))
        typeScript(platform, script, run.TimerPause);
}

}  // namespace kalvo
