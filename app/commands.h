// The commands of the command line. Each returns the program's exit code; run-time
// errors reach the caller.
#pragma once

#include "app/command_line.h"
#include "app/system_bindings.h"

namespace kalvo {

int runAutostart(const CommandLine& line);
int runListen(const CommandLine& line, SystemBindings& bindings);
int runCompile(const CommandLine& line, SystemBindings& bindings);
int runScript(const CommandLine& line, SystemBindings& bindings);
int runEvents(const CommandLine& line, SystemBindings& bindings);
int runType(const CommandLine& line, SystemBindings& bindings);
int runReplay(const CommandLine& line, SystemBindings& bindings);
int runImport(const CommandLine& line, SystemBindings& bindings);
int runPorts(const CommandLine& line, SystemBindings& bindings);

}  // namespace kalvo
