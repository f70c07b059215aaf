// listen, type, replay and ports: the commands that meet the outside world.
#include <cstddef>
#include <string>

#include "app/command_context.h"
#include "app/commands.h"
#include "app/end_signals.h"
#include "core/frame_dispatch.h"
#include "core/script_typing.h"
#include "core/serial_reception.h"
#include "core/start_up.h"
#include "scenario/scenario_loader.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"
#include "transfer/file_replay.h"

namespace kalvo {

namespace {

// File scenarios need no keyboard; emulation without one is said and ends.
void connectKeyboardIfPossible(CommandContext& context) {
    try {
        context.useKeyboard(connectKeyboard());
    } catch (const RuntimeError& error) {
        writeErrorLine(std::string("Clavier indisponible, seuls les scénarios de type "
                                   "« Fichier » fonctionnent : "_ansi) +
                       error.description());
    }
}

void sayLineChange(int port, bool lost) {
    const std::string name = "Port COM " + std::to_string(port);
    writeErrorLine(name + std::string(lost ? " : liaison perdue, réouverture dès son retour"_ansi
                                           : " : liaison rétablie"_ansi));
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
    CommandContext context(bindings);
    connectKeyboardIfPossible(context);
    context.openSerialPort();
    const Platform platform = context.platform();
    SerialReception reception(platform, context.state, [&] {
        const std::size_t received = context.state.ReceivedData.size();
        TraiteEmul(platform, context.state);
        writeErrorLine(std::string("Trame traitée : "_ansi) + std::to_string(received) +
                       std::string(" caractères"_ansi));
    });
    platform.port.onLineChange([&](bool lost) { sayLineChange(platform.port.CommPort(), lost); });
    startUp(platform, context.state, reception, [] {});
    if (!platform.port.PortOpen()) {
        writeErrorLine("Aucun port n'est ouvert (section Port_série de PortSerie.ini)"_ansi);
        return kExitFailure;
    }
    signals.start([&] { context.events.requestEnd(); },
                  [&] { context.events.post([&] { reception.transfer(); }); });
    context.events.run();
    closePort(platform.port);
    return kExitSuccess;
}

int runType(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const std::string script = readInput(*bindings.files, line.arguments.front());
    context.useKeyboard(connectKeyboard());
    typeScript(context.platform(), script, integerPart(line.pause.value_or("0")));
    return kExitSuccess;
}

int runReplay(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const std::string separator = line.separator.value_or("");
    if (!ReplayForm(context.platform(), context.state.scenario)
             .complete(line.arguments.front(), separator))
        return kExitUsage;
    ScenarioRun& run = context.state.scenario;
    LoadActiveScenario(context.platform(), run);
    if (run.active.ScenarioName.empty()) return kExitFailure;
    run.keys.LoadKeyCorrespondence(*bindings.profiles, run.applicationFolder);
    run.DecimalSeparator = readSetting(*bindings.registry, kSepDec);
    if (!run.active.FileMode) context.useKeyboard(connectKeyboard());
    const bool replayed = ReplayFile(context.platform(), run, line.arguments.front(), separator);
    return replayed ? kExitSuccess : kExitFailure;
}

int runPorts(const CommandLine&, SystemBindings& bindings) {
    const CommandContext context(bindings);
    for (const PortListing& port :
         listSerialPorts(*bindings.profiles, context.state.scenario.applicationFolder))
        writeOutput(toUtf8("COM" + std::to_string(port.number) + "\t" + port.device + "\t" +
                           port.description + "\n"));
    return kExitSuccess;
}

}  // namespace kalvo
