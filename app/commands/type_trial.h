// A trial of how an application wants to be typed into.
#pragma once

#include "app/commands/command_context.h"

namespace kalvo {

// Types a known text into the application in front, reads it back by the clipboard, and
// tries other manners until it comes out right; proposes an entry of Applications.ini for
// the one that does. What is in the field is replaced. The answer is an exit code: failure
// when no manner does, or nothing can be read back.
int runTypeTrial(CommandContext& context);

}  // namespace kalvo
