// The commands of the command line.
#pragma once

#include <span>
#include <string_view>

#include "app/bindings/system_bindings.h"
#include "app/commands/command_line.h"

namespace CLI {
class App;
}

namespace kalvo {

// One command: what it is called, what the help says of it (French, UTF-8), which
// arguments it takes, and what it does. `run` returns the program's exit code; run-time
// errors reach the caller.
struct Command {
    const char* name;
    const char* help;
    void (*declare)(CLI::App& app, CommandLine& line);
    int (*run)(const CommandLine& line, SystemBindings& bindings);
};

// All of them, in the order of the help.
[[nodiscard]] std::span<const Command> allCommands();

int runListen(const CommandLine& line, SystemBindings& bindings);
int runCompile(const CommandLine& line, SystemBindings& bindings);
int runScript(const CommandLine& line, SystemBindings& bindings);
int runEvents(const CommandLine& line, SystemBindings& bindings);
int runType(const CommandLine& line, SystemBindings& bindings);
int runReplay(const CommandLine& line, SystemBindings& bindings);
int runImport(const CommandLine& line, SystemBindings& bindings);
int runJournal(const CommandLine& line, SystemBindings& bindings);
int runPorts(const CommandLine& line, SystemBindings& bindings);
int runSites(const CommandLine& line, SystemBindings& bindings);

// --autostart, which goes with no command.
int runAutostart(const CommandLine& line);

}  // namespace kalvo
