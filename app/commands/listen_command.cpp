// listen: the run-time side without windows.
#include <memory>
#include <string>
#include <utility>

#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "app/run_journal.h"
#include "app/run_log.h"
#include "core/frame_dispatch.h"
#include "core/serial_reception.h"
#include "core/start_up.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

void sayLineChange(Log& said, const SerialPort& port, bool lost) {
    said.write(lost ? LogLevel::kWarning : LogLevel::kInformation, lineChangeText(port, lost));
}

void closePort(SerialPort& port) {
    resumeNext([&] {
        if (port.PortOpen()) port.setPortOpen(false);
    });
}

}  // namespace

int runListen(const CommandLine&, SystemBindings& bindings) {
    // Before any thread starts, so that the signals go where they are waited for.
    EndSignals signals;
    CommandContext context(bindings, CommandLog::kEverything);
    Log& said = context.output.said();
    const RunLog run(said, bindings.applicationFolder, "Écoute"_ansi);
    auto keyboard = std::make_unique<ReconnectingKeyboard>(connectKeyboard);
    const bool canType = keyboard->connected();
    context.useKeyboard(std::move(keyboard));
    context.openSerialPort();
    RunJournal journal(bindings, context.events,
                       [&](std::string_view text) { said.write(LogLevel::kWarning, text); });
    const Platform platform = context.platform();
    SerialReception reception(platform, context.state, journal.batches(), [&] {
        const BatchReport report = TraiteEmul(platform, context.state, journal.batches());
        if (report.outcome == BatchReport::Outcome::kInterrupted && report.batch != 0)
            said.write(LogLevel::kWarning, "Pour reprendre : kalvo-horizon journal resend " +
                                               std::to_string(report.batch) + " --from " +
                                               std::to_string(report.passesDone + 1));
    });
    platform.port.onLineChange([&](bool lost) { sayLineChange(said, platform.port, lost); });
    startUp(platform, context.state, reception, [] {});
    if (!platform.port.PortOpen()) {
        said.write(LogLevel::kError,
                   "Aucun port n'est ouvert (section Port_série de PortSerie.ini)"_ansi);
        return kExitFailure;
    }
    if (!canType && !context.state.scenario.active.FileMode)
        said.write(
            LogLevel::kWarning,
            "Clavier indisponible (pas d'affichage) : les lots attendront dans le journal"_ansi);
    journal.begin();
    signals.start([&] { context.events.requestEnd(); },
                  [&] { context.events.post([&] { reception.transfer(); }); });
    context.events.run();
    closePort(platform.port);
    return kExitSuccess;
}

}  // namespace kalvo
