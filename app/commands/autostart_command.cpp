#include "app/commands/commands.h"
#include "app/console_user_interface.h"
#include "text/ansi_text.h"

namespace kalvo {

int runAutostart(const CommandLine& line) {
    const bool on = line.autostart.value_or(false);
    setAutostart(on, line.applicationFolder);
    writeErrorLine(on ? "KALVO Horizon démarrera avec la session"_ansi
                      : "KALVO Horizon ne démarre plus avec la session"_ansi);
    return kExitSuccess;
}

}  // namespace kalvo
