// The lock keys, pressed and asked for outside a key script.
#pragma once

#include <cstdint>

#include "platform/keyboard_input.h"

namespace kalvo {

// One press and release of a key with the extended-key flag: a lock flips.
void ToggleLockKey(KeyboardInput& keyboard, std::uint8_t virtualKey);

// Toggled on and not held down.
[[nodiscard]] bool IsCapsLockOn(KeyboardInput& keyboard);
[[nodiscard]] bool IsNumLockOn(KeyboardInput& keyboard);

void ToggleCapsLock(KeyboardInput& keyboard);
void ToggleNumLock(KeyboardInput& keyboard);

// Presses NumLock once, whatever its state.
void InvertNumLock(KeyboardInput& keyboard);
// Presses CapsLock only when it is on.
void CapsLockOff(KeyboardInput& keyboard);

}  // namespace kalvo
