// What the systems do differently about a serial line, behind one set of calls.
// One file a system implements it: native_line_posix.cpp, native_line_windows.cpp.
#pragma once

#include <optional>
#include <string>

#include "platform/asio/line_settings.h"
#include "platform/port_device.h"
#include "platform/serial_port.h"

namespace kalvo {

#ifdef _WIN32
using NativeLine = void*;
#else
using NativeLine = int;
#endif

// Where a device is now. RuntimeError 8002 while it is away.
[[nodiscard]] std::string presentPath(const PortDevice& device);

// Opens a device for this program alone, non-blocking (overlapped), configures it,
// raises DTR and RTS, and drops what was received before. RuntimeErrors: 8002 not
// there or no serial line, 8005 in use by another program, 70 no permission, 380
// settings the line cannot do, 8012 other failures.
[[nodiscard]] NativeLine openNativeLine(const std::string& path, const LineSettings& settings,
                                        Handshaking handshaking);

// Applies settings at once. RuntimeError 380 when the line cannot do them; it then
// keeps those it had.
void configureNativeLine(NativeLine line, const LineSettings& settings, Handshaking handshaking);

// Whether the driver still holds bytes that have not left.
[[nodiscard]] bool hasUnsentOutput(NativeLine line) noexcept;

// To be called before the handle is closed: drops what is waiting in either
// direction (output only when some is still unsent) and ends the exclusive use.
void releaseNativeLine(NativeLine line) noexcept;

// Watches what a driver tells besides data.
class LineMonitor {
public:
    struct Changes {
        bool breakReceived = false;
        bool overflow = false;  // received bytes were lost below this program
        bool cts = false;
    };

    // Takes the present state as the starting point.
    explicit LineMonitor(NativeLine line) noexcept;

    // False on lines whose driver tells nothing (pseudo-terminals).
    [[nodiscard]] bool supported() const noexcept { return supported_; }

    // As they are now; nothing on lines that have none.
    [[nodiscard]] std::optional<ModemLines> modemLines() const noexcept;

    // What happened since the last call.
    [[nodiscard]] Changes poll() noexcept;

private:
    struct Counters {
        int breaks = 0;
        int overflows = 0;
        int ctsChanges = 0;
    };
    [[nodiscard]] bool read(Counters& counters) const noexcept;

    NativeLine line_;
    Counters last_;
    bool supported_;
};

}  // namespace kalvo
