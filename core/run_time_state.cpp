#include "core/run_time_state.h"

#include "platform/log.h"
#include "platform/serial_port.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"

namespace kalvo {

BatchOrigin originOf(const Platform& platform, const RunTimeState& state) {
    return {platform.port.CommPort(), state.TerminalType, state.scenario.active.ScenarioName};
}

void logOpenPort(const Platform& platform, const RunTimeState& state) {
    platform.log.write(LogLevel::kInformation,
                       "Port COM " + std::to_string(platform.port.CommPort()) + " ouvert (" +
                           lineSettings(platform.profiles, state.scenario.applicationFolder) +
                           "), terminal " + state.TerminalType);
}

}  // namespace kalvo
