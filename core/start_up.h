// The load event of the hidden main window: brings the whole run-time state up.
#pragma once

#include <cstdint>
#include <functional>

#include "core/reception/serial_reception.h"
#include "core/run_time_state.h"
#include "platform/platform.h"
#include "text/runtime_error.h"

namespace kalvo {

// What became of the configured port.
enum class PortStart : std::uint8_t {
    kDone,             // open, or none is used
    kAway,             // not there: it may come, or another one may do
    kBusy,             // held by another program: another one may do
    kSettingsRefused,  // it does not open with the settings that are stored
    kFailed,           // neither another port nor other settings would help
};

// What an error of the port's set-up or opening means for the user.
[[nodiscard]] PortStart portRefusal(const RuntimeError& error);

// What is said of a configured port whose device is away.
enum class AwayPort : std::uint8_t {
    kError,    // that it is one
    kNothing,  // the caller awaits it, and says so
};

// Database, settings, scenario, key tables, port and tray icon, in this order. `prepare`
// comes first and makes the application folder ready. A run-time error on the way is
// shown, once, and the icon is created all the same: the program goes on with what it
// has. `openSettings` shows the settings window, which is asked for when no port is
// configured.
PortStart startUp(
    const Platform& platform, RunTimeState& state, SerialReception& reception,
    const std::function<void()>& openSettings, const std::function<void()>& prepare = [] {},
    AwayPort away = AwayPort::kError);

}  // namespace kalvo
