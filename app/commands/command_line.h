// The command line of kalvo-horizon.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/bindings/system_bindings.h"
#include "platform/event_pump.h"

namespace kalvo {

struct Command;

// What `journal` is asked to do.
enum class JournalAction { kList, kShow, kResend, kPurge };

// What the program is asked to do. Arguments are as the system gave them (UTF-8 as a
// rule); what becomes text of the core is converted where it is used.
struct CommandLine {
    // Null for the desktop program.
    const Command* command = nullptr;
    std::string file;                                  // FICHIER
    std::string scenario;                              // NOM
    bool allScenarios = false;                         // --all
    std::string layout = "us";                         // --layout
    std::string locks;                                 // --locks
    std::string separator;                             // --separator
    bool trial = false;                                // type --trial
    int pause = 0;                                     // --pause, milliseconds
    std::optional<LocalTime> date;                     // --date
    std::optional<std::string> applicationFolder;      // --app-dir
    std::optional<bool> autostart;                     // --autostart
    KeyboardKind keyboard = KeyboardKind::kAutomatic;  // --keyboard
    bool listKeyboard = false;                         // ports --keyboard
    JournalAction journal = JournalAction::kList;
    bool status = false;     // listen --status
    bool json = false;       // journal list --json
    std::int64_t batch = 0;  // journal show, journal resend
    std::int32_t from = 1;   // journal resend --from: the first pass that is typed
    // Everything was asked for with --help or --version: this is it, UTF-8.
    std::optional<std::string> answer;
};

// Exit codes of every command.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Understands the arguments, the program's name left out. On a mistake nothing is
// returned and `problem` says in French (UTF-8) what is wrong.
[[nodiscard]] std::optional<CommandLine> parseCommandLine(std::vector<std::string> arguments,
                                                          std::string& problem);

}  // namespace kalvo
