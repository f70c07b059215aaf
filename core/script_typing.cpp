#include "core/script_typing.h"

#include <algorithm>
#include <string>

#include "keys/key_injection.h"
#include "keys/script_tokens.h"
#include "platform/event_pump.h"

namespace kalvo {

namespace {

void typeUntimed(const Platform& platform, Keysend& keysend, std::string_view script) {
    const std::string text = pressNumLockTokens(platform.keyboard, script);
    switchCapsLockOffForTokens(platform.keyboard, text);
    keysend.SendKeyScript(withoutCapsLockTokens(text), 0);
}

// Here the CapsLock tokens stay in the pieces, so that the sender types them too.
void typeTimed(const Platform& platform, Keysend& keysend, std::string_view script,
               int timerPause) {
    for (TimerPieces pieces(script); pieces.remaining() > 0;) {
        platform.events.DoEvents();
        const std::string piece = pressNumLockTokens(platform.keyboard, pieces.next());
        switchCapsLockOffForTokens(platform.keyboard, piece);
        keysend.SendKeyScript(piece, 0);
        platform.events.DoEvents();
        platform.events.Sleep(std::max(timerPause, 0));
    }
}

}  // namespace

void typeScript(const Platform& platform, std::string_view script, int timerPause) {
    Keysend keysend(platform.keyboard, platform.events);
    if (script.find(kTimerToken) == std::string_view::npos)
        typeUntimed(platform, keysend, script);
    else
        typeTimed(platform, keysend, script, timerPause);
}

}  // namespace kalvo
