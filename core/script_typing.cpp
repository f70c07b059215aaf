#include "core/script_typing.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "keys/key_injection.h"
#include "keys/script_tokens.h"
#include "platform/event_pump.h"

namespace kalvo {

namespace {

bool holdsLockToken(std::string_view text) {
    return text.find(kNumLockToken) != std::string_view::npos ||
           text.find(kCapsLockToken) != std::string_view::npos;
}

void typeUntimed(const Platform& platform, Keysend& keysend, std::string text,
                 ScriptSource source) {
    const bool replayed = source == ScriptSource::kReplayed;
    // Cutting a token out may join the text around it to another one.
    for (bool due = !replayed || holdsLockToken(text); due;
         due = replayed && holdsLockToken(text)) {
        text = pressNumLockTokens(platform.keyboard, text);
        switchCapsLockOffForTokens(platform.keyboard, text);
        text = withoutCapsLockTokens(text);
        keysend.SendKeyScript(text, 0);
    }
}

// Here the CapsLock tokens stay in the pieces, so that the sender types them too.
void typeTimed(const Platform& platform, Keysend& keysend, std::string_view script, int timerPause,
               ScriptSource source) {
    const std::size_t untyped = source == ScriptSource::kReplayed ? 1 : 0;
    for (TimerPieces pieces(script); pieces.remaining() > untyped;) {
        platform.events.DoEvents();
        const std::string piece = pressNumLockTokens(platform.keyboard, pieces.next());
        switchCapsLockOffForTokens(platform.keyboard, piece);
        keysend.SendKeyScript(piece, 0);
        platform.events.DoEvents();
        platform.events.Sleep(std::max(timerPause, 0));
    }
}

}  // namespace

void typeScript(const Platform& platform, std::string_view script, int timerPause,
                ScriptSource source) {
    Keysend keysend(platform.keyboard, platform.events);
    if (script.find(kTimerToken) == std::string_view::npos)
        typeUntimed(platform, keysend, std::string(script), source);
    else
        typeTimed(platform, keysend, script, timerPause, source);
}

}  // namespace kalvo
