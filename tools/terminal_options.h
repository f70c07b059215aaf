// The command line of kalvo-terminal.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/faulty_line.h"
#include "tools/terminal_dialogue.h"

namespace kalvo {

struct TerminalOptions {
    std::string device;  // or a pseudo-terminal
    bool pseudoTerminal = false;
    std::string link;
    bool waitsForOpening = false;
    int terminals = 1;  // at once, on a pseudo-terminal each
    std::int64_t lingerMilliseconds = 1000;
    std::string settings = "9600,N,8,1";
    std::string fileFolder;   // serves its files instead of sending records
    std::string captureFile;  // plays what it holds instead
    std::string recordFile;   // "-": standard input
    std::string logFile;      // what is off the terminal's hands; empty: nowhere
    char separator = ';';
    DialogueOptions dialogue;
    LineFaults faults;
    // Asked for with --help: the help text, UTF-8. Everything else is then as above.
    std::string help;
};

// A call that makes no sense; the text is French, UTF-8.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The options of one of several terminals, from 1.
[[nodiscard]] TerminalOptions optionsOf(TerminalOptions options, int terminal);

// Reads the arguments behind the program's name. UsageError.
[[nodiscard]] TerminalOptions parseTerminalOptions(std::vector<std::string> arguments);

}  // namespace kalvo
