// Modifier keys that the user holds while the program types.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <bitset>
#include <cstdint>
#include <vector>

#include "platform/x11/key_injector.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// Takes the user's Shift, Control and the like out of the way of each batch of
// keys and puts them back behind it. As long as none is held this costs nothing
// but one question to the server at the start of typing.
class UserModifiers {
public:
    UserModifiers(X11Connection& connection, X11Keymap& keymap, KeyInjector& injector)
        : connection_(connection), keymap_(keymap), injector_(injector) {}

    // Asks which modifier keys are down that the program did not press.
    void detect();

    // Releases those that are held; forgets those the user has let go.
    void lift();

    // Presses again what lift() released, if the user still holds it.
    void putBack();

private:
    [[nodiscard]] std::bitset<256> physicallyDown() const;

    X11Connection& connection_;
    X11Keymap& keymap_;
    KeyInjector& injector_;
    std::vector<std::uint8_t> keyboards_;  // real ones, looked up when first needed
    std::bitset<256> held_;
    // Held keys no real keyboard accounts for: another program's, taken as held.
    std::bitset<256> foreign_;
    // Pressed again by us: to the XTEST keyboard they are down until released there.
    std::bitset<256> restored_;
};

}  // namespace kalvo
