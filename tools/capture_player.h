// A terminal that says once more what a captured one said.
#pragma once

#include <span>

#include "text/line_capture.h"
#include "tools/terminal_line.h"

namespace kalvo {

// Sends what the program had received, with the pauses there were in between. Where the program
// had sent something, as many bytes are waited for, ten seconds at most.
void playCapture(TerminalLine& line, std::span<const LineEvent> events);

}  // namespace kalvo
