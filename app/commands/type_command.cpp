// type: a key script into the focused application.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/end_signals.h"
#include "core/frame_dispatch.h"
#include "core/script_typing.h"

namespace kalvo {

int runType(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const std::string script = readInput(line.file);
    // Behind the reading, which a signal may end at once.
    EndSignals signals;
    signals.start([&] { context.events.requestEnd(); }, [] {});
    context.useKeyboard(connectKeyboard());
    const Typing typing = typeScript(context.platform(), script, line.pause);
    if (typing.stop != TypingStop::kNone) writeErrorLine(reasonOf(typing.stop));
    return typing.stop == TypingStop::kNone ? kExitSuccess : kExitFailure;
}

}  // namespace kalvo
