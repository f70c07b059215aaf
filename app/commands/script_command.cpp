// script: the key script of a frame, without typing it.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// The scenario of a dry run, in force for this run only: the choice stays as it is.
void loadScenario(CommandContext& context, const CommandLine& line) {
    const Platform platform = context.platform();
    ScenarioRun& run = context.state.scenario;
    const std::string name = line.scenario.empty() ? readSetting(platform.registry, kRacScenChx)
                                                   : fromUtf8(line.scenario);
    if (name.empty())
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Aucun scénario n'est défini"_ansi));
    if (const std::string refusal = refusalOfName(name); !refusal.empty())
        throw RuntimeError(error_number::kInvalidCall, refusal);
    if (!platform.files.fileExists(findScenarioFile(platform.files, run.applicationFolder, name)))
        throw RuntimeError(error_number::kFileNotFound,
                           std::string("Le scénario n'est pas compilé : "_ansi) + name);
    run.active.ScenarioName = name;
    LoadTestScenario(platform, run, name);
    run.keys.LoadKeyCorrespondence(platform.profiles, run.applicationFolder);
    run.DecimalSeparator = readSetting(platform.registry, kSepDec);
    run.counterUse = CounterUse::kReadOnly;
}

}  // namespace

int runScript(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    if (line.date) context.events.setDate(*line.date);
    loadScenario(context, line);
    const Platform platform = context.platform();
    std::string frame = readInput(line.file);
    SplitFrameFields(platform, context.state.scenario, frame);
    writeOutput(BuildKeyScript(platform, context.state.scenario, frame));
    return kExitSuccess;
}

}  // namespace kalvo
