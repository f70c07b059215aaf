#include "core/run_time_state.h"

#include "platform/serial_port.h"

namespace kalvo {

BatchOrigin originOf(const Platform& platform, const RunTimeState& state) {
    return {platform.port.CommPort(), state.TerminalType, state.scenario.active.ScenarioName};
}

}  // namespace kalvo
