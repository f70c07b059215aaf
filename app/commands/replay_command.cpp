// replay: a text file as if it had been received.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "core/frame_dispatch.h"
#include "scenario/scenario_loader.h"
#include "settings/settings_store.h"
#include "transfer/file_replay.h"

namespace kalvo {

int runReplay(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings, CommandLog::kWork);
    const Platform files = context.platform();
    ScenarioRun& run = context.state.scenario;
    const std::string separator = fromUtf8(line.separator);
    if (!ReplayForm(files, run).complete(line.file, separator)) return kExitUsage;
    const std::string content = readInput(line.file);
    LoadActiveScenario(files, run);
    if (run.active.ScenarioName.empty()) return kExitFailure;
    run.keys.LoadKeyCorrespondence(*bindings.profiles, run.applicationFolder);
    run.DecimalSeparator = readSetting(*bindings.registry, kSepDec);
    files.log.write(LogLevel::kInformation, "Rejeu de " + fromUtf8(line.file));
    EndSignals signals;
    signals.start([&] { context.events.requestEnd(); }, [] {});
    if (!run.active.FileMode)
        context.useKeyboard(std::make_unique<ReconnectingKeyboard>(
            [&] { return connectKeyboard(bindings.keyboard); }, ReconnectingKeyboard::kNeeded));
    try {
        const BatchReport report = ReplayText(context.platform(), run, content, separator);
        if (!report.whole()) writeErrorLine(report.reason);
        const bool asAsked = report.whole() || report.outcome == BatchReport::Outcome::kNothing;
        return asAsked ? kExitSuccess : kExitFailure;
    } catch (const ProgramEnd&) {
        writeErrorLine(reasonOf(TypingStop::kProgramEnds));
        return kExitFailure;
    }
}

}  // namespace kalvo
