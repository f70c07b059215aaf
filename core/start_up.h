// The load event of the hidden main window: brings the whole run-time state up.
#pragma once

#include <functional>

#include "core/run_time_state.h"
#include "core/serial_reception.h"
#include "platform/platform.h"

namespace kalvo {

// Database, settings, scenario, key tables, port and tray icon, in this order. A
// run-time error on the way is shown and the icon is created all the same: the
// program goes on with what it has. `openSettings` shows the settings window, which
// is asked for when no port is configured. False when the configured port could not be
// opened.
bool startUp(const Platform& platform, RunTimeState& state, SerialReception& reception,
             const std::function<void()>& openSettings);

}  // namespace kalvo
