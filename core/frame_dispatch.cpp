#include "core/frame_dispatch.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "keys/key_injection.h"
#include "keys/script_tokens.h"
#include "platform/event_pump.h"
#include "platform/progress.h"
#include "platform/serial_port.h"
#include "scenario/file_output.h"
#include "scenario/frame_processing.h"

namespace kalvo {

namespace {

// Time for the target application to come to rest before it is typed into.
constexpr int kPauseBeforeTyping = 100;  // milliseconds

void typeUntimed(const Platform& platform, Keysend& keysend, std::string_view script) {
    const std::string text = pressNumLockTokens(platform.keyboard, script);
    switchCapsLockOffForTokens(platform.keyboard, text);
    keysend.SendKeyScript(withoutCapsLockTokens(text), 0);
}

// Here the CapsLock tokens stay in the pieces, so that the sender types them too.
void typeTimed(const Platform& platform, const RunTimeState& state, Keysend& keysend,
               std::string_view script) {
    for (TimerPieces pieces(script); pieces.remaining() > 0;) {
        platform.events.DoEvents();
        const std::string piece = pressNumLockTokens(platform.keyboard, pieces.next());
        switchCapsLockOffForTokens(platform.keyboard, piece);
        keysend.SendKeyScript(piece, 0);
        platform.events.DoEvents();
        platform.events.Sleep(std::max<int>(state.scenario.TimerPause, 0));
    }
}

void typeScript(const Platform& platform, const RunTimeState& state, std::string_view script) {
    Keysend keysend(platform.keyboard, platform.events);
    if (script.find(kTimerToken) == std::string_view::npos)
        typeUntimed(platform, keysend, script);
    else
        typeTimed(platform, state, keysend, script);
}

void resetPort(SerialPort& port) {
    if (!port.PortOpen()) return;
    port.setPortOpen(false);
    port.setPortOpen(true);
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
        typeScript(platform, state, script);
    resetPort(platform.port);
}

}  // namespace kalvo
