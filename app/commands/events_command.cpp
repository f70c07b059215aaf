// events: the key events of a script, without typing them.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/commands/event_listing.h"
#include "keys/key_injection.h"

namespace kalvo {

int runEvents(const CommandLine& line, SystemBindings&) {
    const auto layout = layoutByName(line.layout);
    const std::string script = readInput(line.file);
    EventListing listing(*layout, line.locks, writeOutput);
    ConsoleEventPump events(nullptr);
    Keysend(listing, events).SendKeyScript(script, 0);
    listing.finish();
    return kExitSuccess;
}

}  // namespace kalvo
