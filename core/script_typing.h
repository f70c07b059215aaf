// Types a whole key script: the tokens that the sender does not know are handled on
// the way to it.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "keys/key_injection.h"
#include "platform/platform.h"

namespace kalvo {

// Time for the target application to come to rest before it is typed into, milliseconds.
inline constexpr int kPauseBeforeTyping = 100;

// Where a script comes from. Of a replayed file with {TIMER} tokens the text behind the
// last one stays untyped, and one without {TIMER} is typed only if it holds a lock-key
// token: sites have built their scenarios on that.
enum class ScriptSource { kReceived, kReplayed };

// Whether anything of a script is typed at all.
[[nodiscard]] bool typesAnything(std::string_view script, ScriptSource source);

// Types a script into the focused application. {TIMER} splits it into pieces that
// are typed one after another with a pause of `timerPause` milliseconds after each;
// {NUMLOCK} presses NumLock, {CAPSLOCK} switches CapsLock off. `progress` hears now and
// then how many characters of the script are done. What is not typed on purpose counts as
// done at the end. ProgramEnd does not come out of here: it is a reason to stop.
Typing typeScript(const Platform& platform, std::string_view script, int timerPause,
                  ScriptSource source = ScriptSource::kReceived,
                  const std::function<void(std::size_t typed)>& progress = {});

}  // namespace kalvo
