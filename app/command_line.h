// The command line of kalvo-horizon.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// What the program is asked to do. Texts are code page 1252, but for the folder.
struct CommandLine {
    // The command's name; empty for the desktop program.
    std::string command;
    // The command's own arguments, options taken out.
    std::vector<std::string> arguments;
    std::optional<std::string> applicationFolder;  // --app-dir, UTF-8
    std::optional<std::string> scenario;           // --scenario
    std::optional<std::string> date;               // --date
    std::optional<std::string> layout;             // --layout
    std::optional<std::string> locks;              // --locks
    std::optional<std::string> separator;          // --separator
    std::optional<std::string> pause;              // --pause
    std::optional<std::string> autostart;          // --autostart: "on" or "off"
    bool all = false;                              // --all
    bool help = false;                             // --help
    bool version = false;                          // --version
};

// Exit codes of every command.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Understands the arguments (UTF-8, without the program's name). On a mistake nothing is
// returned and `problem` says in French what is wrong.
[[nodiscard]] std::optional<CommandLine> parseCommandLine(const std::vector<std::string>& arguments,
                                                          std::string& problem);

// The help text, code page 1252.
[[nodiscard]] std::string_view usageText();

}  // namespace kalvo
