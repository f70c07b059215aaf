// type: a key script into the focused application.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/commands/type_trial.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "core/batch_report.h"
#include "core/frame_dispatch.h"
#include "core/script_typing.h"
#include "text/ansi_text.h"

namespace kalvo {

int runType(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings, CommandLog::kWork);
    const std::string script = line.trial ? std::string() : readInput(line.file);
    // Behind the reading, which a signal may end at once.
    EndSignals signals;
    signals.start([&] { context.events.requestEnd(); }, [] {});
    context.useKeyboard(std::make_unique<ReconnectingKeyboard>(
        [&] { return connectKeyboard(bindings.keyboard); }, ReconnectingKeyboard::kNeeded));
    if (line.trial) return runTypeTrial(context);
    const Typing typing = typeScript(context.platform(), script, line.pause);
    const bool whole = typing.stop == TypingStop::kNone;
    if (!whole) writeErrorLine(reasonOf(typing.stop));
    if (!typing.untyped.empty()) writeErrorLine(untypedText(typing.untyped));
    context.output.log().write(whole ? LogLevel::kInformation : LogLevel::kWarning,
                               std::string("Script saisi, caractères : "_ansi) +
                                   std::to_string(typing.typed) + " sur " +
                                   std::to_string(script.size()));
    return whole ? kExitSuccess : kExitFailure;
}

}  // namespace kalvo
