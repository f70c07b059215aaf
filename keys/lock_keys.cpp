#include "keys/lock_keys.h"

namespace kalvo {

void ToggleLockKey(KeyboardInput& keyboard, std::uint8_t virtualKey) {
    const auto scanCode = [&] {
        return static_cast<std::uint8_t>(keyboard.MapVirtualKeyA(virtualKey));
    };
    keyboard.keybd_event(virtualKey, scanCode(), kKeyEventExtendedKey);
    keyboard.keybd_event(virtualKey, scanCode(), kKeyEventExtendedKey | kKeyEventKeyUp);
}

bool IsCapsLockOn(KeyboardInput& keyboard) { return keyboard.GetKeyState(kVkCapital) == 1; }

bool IsNumLockOn(KeyboardInput& keyboard) { return keyboard.GetKeyState(kVkNumLock) == 1; }

void ToggleCapsLock(KeyboardInput& keyboard) { ToggleLockKey(keyboard, kVkCapital); }

void ToggleNumLock(KeyboardInput& keyboard) { ToggleLockKey(keyboard, kVkNumLock); }

void InvertNumLock(KeyboardInput& keyboard) { ToggleNumLock(keyboard); }

void CapsLockOff(KeyboardInput& keyboard) {
    if (IsCapsLockOn(keyboard)) ToggleCapsLock(keyboard);
}

}  // namespace kalvo
