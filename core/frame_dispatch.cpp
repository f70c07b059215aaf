#include "core/frame_dispatch.h"

#include <string>

#include "core/script_typing.h"
#include "platform/event_pump.h"
#include "platform/progress.h"
#include "platform/serial_port.h"
#include "scenario/file_output.h"
#include "scenario/frame_processing.h"

namespace kalvo {

namespace {

void resetPort(SerialPort& port) {
    if (!port.PortOpen()) return;
    port.setPortOpen(false);
    port.reopen();
}

}  // namespace

void TraiteEmul(const Platform& platform, RunTimeState& state) {
    std::string data = state.ReceivedData;
    SplitFrameFields(platform, state.scenario, data);
    const std::string script = BuildKeyScript(platform, state.scenario, data);
    platform.progress.unload();
    platform.events.DoEvents();
    platform.events.Sleep(kPauseBeforeTyping);
    if (state.scenario.active.FileMode)
        WriteFileLine(platform, state.scenario, data);
    else
        typeScript(platform, script, state.scenario.TimerPause);
    resetPort(platform.port);
}

}  // namespace kalvo
