// Types a whole key script: the tokens that the sender does not know are handled on
// the way to it.
#pragma once

#include <string_view>

#include "platform/platform.h"

namespace kalvo {

// Types a script into the focused application. {TIMER} splits it into pieces that
// are typed one after another with a pause of `timerPause` milliseconds after each;
// {NUMLOCK} presses NumLock, {CAPSLOCK} switches CapsLock off.
void typeScript(const Platform& platform, std::string_view script, int timerPause);

}  // namespace kalvo
