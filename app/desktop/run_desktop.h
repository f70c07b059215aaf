// The start of the desktop program.
#pragma once

#include "app/bindings/system_bindings.h"
#include "app/commands/command_line.h"

namespace kalvo {

// Starts the program and runs it until the user quits, a signal asks for the end, or
// the session closes. Returns its exit code.
int runDesktop(const CommandLine& line, SystemBindings& bindings);

}  // namespace kalvo
