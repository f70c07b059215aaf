// What the commands share: a platform of console bindings, and reading their input.
#pragma once

#include <memory>
#include <string>

#include "app/absent_devices.h"
#include "app/console_event_pump.h"
#include "app/console_user_interface.h"
#include "app/session_watch.h"
#include "app/system_bindings.h"
#include "core/error_text.h"
#include "core/no_progress.h"
#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// A command's outside world: the system's files and settings, the console as user
// interface, and a keyboard and a port only where they were given.
class CommandContext {
public:
    explicit CommandContext(SystemBindings& bindings);

    void useKeyboard(std::unique_ptr<KeyboardInput> keyboard) { keyboard_ = std::move(keyboard); }
    void openSerialPort();

    // The platform as it is now; valid as long as the context.
    [[nodiscard]] Platform platform();

    ConsoleEventPump events;
    ConsoleDialogs dialogs;
    RunTimeState state;

private:
    SystemBindings& bindings_;
    ConsoleNotifyIcon icon_;
    NoProgress progress_;
    SessionWatch watch_;
    std::unique_ptr<KeyboardInput> keyboard_;
    std::unique_ptr<SerialPort> port_;
};

// The bytes of a file named on the command line, or of standard input for "-". RuntimeError 53 when
// there is none, 75 for what is no readable file.
[[nodiscard]] std::string readInput(const std::string& argument);

// Writes bytes to standard output as they are. RuntimeError 57 when it fails.
void writeOutput(std::string_view bytes);

}  // namespace kalvo
