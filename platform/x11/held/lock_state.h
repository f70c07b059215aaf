// Which keys are down and which locks are on, in an X session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>

#include "platform/shared/alt_keypad.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_layout.h"

namespace kalvo {

class LockState {
public:
    LockState(X11Connection& connection, X11Keymap& keymap, X11Layout& layout,
              const AltKeypad& altKeypad)
        : connection_(connection), keymap_(keymap), layout_(layout), altKeypad_(altKeypad) {}

    // Bit 0: on; negative: down. Everything sent to the server before counts.
    [[nodiscard]] std::int16_t keyState(std::uint8_t virtualKey);

    // A key goes to the server: from now on the CapsLock state that the server reported
    // last may be an old one.
    void keySent(xkb_keycode_t key) {
        capsLockSent_ = capsLockSent_ || key == keymap_.modifiers().capsLock.keycode;
    }
    // Asks the server only when its last report will not do.
    [[nodiscard]] bool capsLockOn();

private:
    [[nodiscard]] xkb_mod_mask_t maskOf(std::uint8_t virtualKey) const;

    X11Connection& connection_;
    X11Keymap& keymap_;
    X11Layout& layout_;
    const AltKeypad& altKeypad_;
    bool capsLockSent_ = false;
};

}  // namespace kalvo
