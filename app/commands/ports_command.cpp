// ports: the serial ports of this machine, or its keyboard.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// What would type, without typing.
int showKeyboard(SystemBindings& bindings) {
    const auto keyboard = connectKeyboard(bindings.keyboard);
    const std::string remark = keyboardRemark(*keyboard);
    writeOutput(toUtf8(std::string(keyboard->name()) + "\t" + remark + "\n"));
    return kExitSuccess;
}

}  // namespace

int runPorts(const CommandLine& line, SystemBindings& bindings) {
    if (line.listKeyboard) return showKeyboard(bindings);
    const CommandContext context(bindings);
    for (const PortEntry& port :
         listSerialPorts(*bindings.profiles, context.state.scenario.applicationFolder))
        writeOutput(toUtf8("COM" + std::to_string(port.number) + "\t" + port.device + "\t" +
                           port.description + "\n"));
    return kExitSuccess;
}

}  // namespace kalvo
