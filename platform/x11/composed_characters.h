// Types a character that Alt with digits of the keypad has composed.
#pragma once

#include "platform/x11/held/lock_state.h"
#include "platform/x11/key_injector.h"
#include "platform/x11/key_records.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/x11_layout.h"

namespace kalvo {

// With its own key or, where the layout has none, with a spare one. Lock keys and
// modifiers that a script holds have no influence on it.
class ComposedCharacters {
public:
    ComposedCharacters(X11Keymap& keymap, X11Layout& layout, KeyInjector& injector,
                       KeyRecords& records, LockState& locks)
        : keymap_(keymap), layout_(layout), injector_(injector), records_(records), locks_(locks) {}

    void type(char character);
    // With Alt and its code on the keypad instead: 0 and the code of the ANSI code page.
    void typeOnKeypad(char character);

private:
    void tap(KeyStroke stroke);

    X11Keymap& keymap_;
    X11Layout& layout_;
    KeyInjector& injector_;
    KeyRecords& records_;
    LockState& locks_;
};

}  // namespace kalvo
