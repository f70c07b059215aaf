// The command line of kalvo-terminal.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tools/faulty_line.h"
#include "tools/terminal_dialogue.h"

namespace kalvo {

struct TerminalOptions {
    bool help = false;
    std::string device;  // or a pseudo-terminal
    bool pseudoTerminal = false;
    std::string link;
    bool waitsForOpening = false;
    std::int64_t lingerMilliseconds = 1000;
    std::string settings = "9600,N,8,1";
    std::string fileFolder;  // serves its files instead of sending records
    std::string recordFile;  // "-": standard input
    char separator = ';';
    DialogueOptions dialogue;
    LineFaults faults;
};

// A call that makes no sense; the text is French, UTF-8.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads the arguments behind the program's name. UsageError.
[[nodiscard]] TerminalOptions parseTerminalOptions(const std::vector<std::string>& arguments);

// The help text, French, UTF-8.
[[nodiscard]] std::string_view terminalHelp();

}  // namespace kalvo
