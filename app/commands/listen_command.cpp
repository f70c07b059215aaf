// listen: the run-time side without windows.
#include <cstddef>
#include <string>

#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/end_signals.h"
#include "core/frame_dispatch.h"
#include "core/serial_reception.h"
#include "core/start_up.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// File scenarios need no keyboard; without one the others are told that they cannot work.
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

}  // namespace kalvo
