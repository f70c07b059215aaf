// What the user's own layout can type, in a Wayland session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <map>
#include <vector>

namespace kalvo {

// A key to press: the desktop finds it by its symbol, unless it has a code.
struct SessionKey {
    xkb_keysym_t symbol = 0;
    xkb_keycode_t code = 0;
    // With a code: 1 with Shift, 2 with AltGr, 3 with both.
    xkb_level_index_t level = 0;
};

// The first layout of the session's keyboard, as the compositor hands it to every client.
class SessionLayout {
public:
    // Asks the compositor.
    SessionLayout();

    // The keys that type a symbol: one, or a dead key and a letter; empty when the layout
    // has no way. Of a layout that is not known everything is believed.
    [[nodiscard]] std::vector<SessionKey> strokesFor(xkb_keysym_t symbol) const;

private:
    void read(xkb_keymap* keymap);
    void add(const SessionKey& key);
    void addDeadKeys(xkb_context* context);

    std::map<xkb_keysym_t, SessionKey> keys_;
    std::map<xkb_keysym_t, std::vector<SessionKey>> composed_;
};

}  // namespace kalvo
