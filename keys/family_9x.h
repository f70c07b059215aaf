// What the older platform family (9x) does in its own way.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/keyboard_input.h"

namespace kalvo {

// Hands a whole script, as it stands, to the platform's own sender. An error of it is
// passed over.
void sendByPlatform(KeyboardInput& keyboard, std::string_view script, std::int16_t wait);

// Inverts NumLock in the thread's key state.
void flipNumLockState(KeyboardInput& keyboard);

}  // namespace kalvo
