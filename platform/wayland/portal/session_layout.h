// What the user's own layout can type, in a Wayland session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <map>
#include <set>
#include <vector>

namespace kalvo {

// The first layout of the session's keyboard, as the compositor hands it to every client.
class SessionLayout {
public:
    // Asks the compositor.
    SessionLayout();

    // The symbols that type one: itself, or a dead key and a letter; empty when the layout
    // has no way. Of a layout that is not known everything is believed.
    [[nodiscard]] std::vector<xkb_keysym_t> strokesFor(xkb_keysym_t symbol) const;

private:
    void read(xkb_keymap* keymap);
    void addDeadKeys(xkb_context* context);

    std::set<xkb_keysym_t> symbols_;
    std::map<xkb_keysym_t, std::vector<xkb_keysym_t>> composed_;
};

}  // namespace kalvo
