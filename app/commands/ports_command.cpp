// ports: the serial ports of this machine.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "text/ansi_text.h"

namespace kalvo {

int runPorts(const CommandLine&, SystemBindings& bindings) {
    const CommandContext context(bindings);
    for (const PortEntry& port :
         listSerialPorts(*bindings.profiles, context.state.scenario.applicationFolder))
        writeOutput(toUtf8("COM" + std::to_string(port.number) + "\t" + port.device + "\t" +
                           port.description + "\n"));
    return kExitSuccess;
}

}  // namespace kalvo
