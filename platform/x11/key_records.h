// From the records of an injection to key events of the XTEST keyboard.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <span>

#include "platform/keyboard_input.h"
#include "platform/shared/alt_keypad.h"
#include "platform/x11/held/lock_state.h"
#include "platform/x11/key_injector.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/x11_layout.h"

namespace kalvo {

class KeyRecords {
public:
    KeyRecords(X11Keymap& keymap, X11Layout& layout, KeyInjector& injector, LockState& locks)
        : keymap_(keymap), layout_(layout), injector_(injector), locks_(locks) {}

    // One injection, handed to `keypad`, which passes the keys on to press(). Control with
    // Alt around a key that needs both is AltGr here; sent for themselves they stay what
    // they are.
    void feed(std::span<const KeyRecord> records, AltKeypad& keypad);

    // The key of a record, down or up.
    void press(const KeyRecord& record);

    // A key, down or up. Releases of keys that are not down are left out: they might be
    // the user's.
    void inject(xkb_keycode_t key, bool up, bool modifier);

private:
    X11Keymap& keymap_;
    X11Layout& layout_;
    KeyInjector& injector_;
    LockState& locks_;
};

}  // namespace kalvo
