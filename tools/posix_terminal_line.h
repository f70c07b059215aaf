// The simulated terminal's end of a device or of a pseudo-terminal.
#pragma once

#include <sys/types.h>

#include <stdexcept>
#include <string>

#include "tools/terminal_line.h"

namespace kalvo {

// SIGINT or SIGTERM came while the line was waiting.
class Interrupted : public std::runtime_error {
public:
    Interrupted() : std::runtime_error("interrompu") {}
};

// From now on SIGINT and SIGTERM end the waits below with Interrupted.
void interruptOnSignals();

// Reads and writes a non-blocking descriptor. std::system_error when the device is
// gone.
class PosixTerminalLine : public TerminalLine {
public:
    // The master of a pseudo-terminal goes on while its other side is closed for the
    // moment: reading finds nothing then. A device that reports this is gone.
    enum class Side { kDevice, kMaster };

    // Closes the descriptor at the end.
    PosixTerminalLine(int descriptor, Side side) : descriptor_(descriptor), side_(side) {}
    ~PosixTerminalLine() override;
    PosixTerminalLine(const PosixTerminalLine&) = delete;
    PosixTerminalLine& operator=(const PosixTerminalLine&) = delete;

    void write(std::string_view bytes) override;
    std::string read(std::int64_t milliseconds) override;
    void pause(std::int64_t milliseconds) override;
    [[nodiscard]] std::int64_t now() override;

    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    void checkTransfer(ssize_t count, const char* what) const;

    int descriptor_;
    Side side_;
};

// A new raw pseudo-terminal, seen from its master side.
class PseudoTerminal {
public:
    // `link`: a symbolic link to make to the slave, replacing an older link; empty:
    // none. Removed at the end. std::system_error when one or the other fails.
    explicit PseudoTerminal(const std::string& link);
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    [[nodiscard]] const std::string& slavePath() const { return slavePath_; }
    [[nodiscard]] PosixTerminalLine& line() { return line_; }

    // Returns once somebody has the slave open.
    void waitUntilOpened();

private:
    PosixTerminalLine line_;
    std::string slavePath_;
    std::string link_;
};

}  // namespace kalvo
