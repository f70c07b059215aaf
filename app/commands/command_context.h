// What the commands share: a platform of console bindings, and reading their input.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/bindings/absent_devices.h"
#include "app/bindings/system_bindings.h"
#include "app/console_event_pump.h"
#include "app/console_user_interface.h"
#include "app/session_watch.h"
#include "core/error_text.h"
#include "core/no_progress.h"
#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// Whether the user's leave to type is waited for.
enum class LeaveAnswer : std::uint8_t { kAwaited, kLater };

// What a command leaves in the log of the application folder.
enum class CommandLog : std::uint8_t {
    kNothing,
    kWork,        // what it types and writes
    kEverything,  // that, and all it says: standard error shows the entries of the log
};

// A log with somebody who looks at the entries; any thread may write them.
class WatchedLog : public Log {
public:
    explicit WatchedLog(std::unique_ptr<Log> log) : log_(std::move(log)) {}

    void write(LogLevel level, std::string_view text) noexcept override {
        log_->write(level, text);
        if (watch_) watch_(level, text);
    }
    // Set while one thread writes; must not throw.
    void onEntry(std::function<void(LogLevel, std::string_view)> watch) {
        watch_ = std::move(watch);
    }

private:
    std::unique_ptr<Log> log_;
    std::function<void(LogLevel, std::string_view)> watch_;
};

// Where the words of a command go.
class CommandOutput {
public:
    CommandOutput(SystemBindings& bindings, CommandLog use);

    // What happens.
    [[nodiscard]] WatchedLog& log() { return log_; }
    // What the user is told.
    [[nodiscard]] Log& said() { return said_; }

private:
    WatchedLog log_;
    ConsoleLog console_;
    Log& said_;
};

// A command's outside world: the system's files and settings, the console as user
// interface, and a keyboard and a port only where they were given.
class CommandContext {
public:
    explicit CommandContext(SystemBindings& bindings, CommandLog use = CommandLog::kNothing);

    // Says what the user has to know of it, too. An answer that is awaited is waited for a
    // while, unless the program ends.
    void useKeyboard(std::unique_ptr<KeyboardInput> keyboard,
                     LeaveAnswer answer = LeaveAnswer::kAwaited);
    void openSerialPort();

    // The platform as it is now; valid as long as the context.
    [[nodiscard]] Platform platform();

    CommandOutput output;
    ConsoleEventPump events;
    ConsoleDialogs dialogs{output.said()};
    RunTimeState state;

private:
    void awaitLeave();

    SystemBindings& bindings_;
    ConsoleNotifyIcon icon_{output.said()};
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
