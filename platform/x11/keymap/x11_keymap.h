// The key map and the state of the core keyboard, followed through XKB events.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/x11/layout/layout_keys.h"
#include "platform/x11/layout/xkb_handles.h"
#include "platform/x11/layout/xkb_layout.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// The keys typing needs by what they do.
struct ModifierKeys {
    ModifierOfKey shift;
    ModifierOfKey control;
    ModifierOfKey alt;
    ModifierOfKey level3;
    ModifierOfKey capsLock;
    ModifierOfKey numLock;
    ModifierOfKey scrollLock;
};

// Asks the server for the map once, and again only after it was told of a change.
class X11Keymap {
public:
    // Fetches the map. Throws RuntimeError 5 when the server gives none.
    explicit X11Keymap(X11Connection& connection);

    // Takes in what the server has reported since the last call; no round trip
    // unless the map changed. True when a new map was fetched.
    bool update();

    // Reads what the server has reported, for a later update(). Events that are not about
    // the keyboard go to whoever asked for them.
    void readEvents();
    void onOtherEvents(std::function<void(const xcb_generic_event_t&)> handler) {
        otherEvents_ = std::move(handler);
    }

    // The change that a request of ours makes is no new map. Another request must follow
    // it before any other client's can.
    void expectOwnChange(unsigned sequence) { ownChange_ = sequence; }

    [[nodiscard]] xkb_keymap* get() const { return keymap_.get(); }
    // The layout of the group in force, dead keys skipped.
    [[nodiscard]] XkbLayout& layout() { return *layouts_[group_ % layouts_.size()]; }
    [[nodiscard]] const ModifierKeys& modifiers() const { return modifiers_; }
    // All keys that hold a modifier down, both sides of the keyboard.
    [[nodiscard]] const std::vector<xkb_keycode_t>& modifierKeycodes() const {
        return modifierKeycodes_;
    }
    // The key that has the symbol, best on its lowest level; nothing without one.
    [[nodiscard]] std::optional<xkb_keycode_t> keyWithSymbol(xkb_keysym_t symbol) const;
    // The locked modifiers as last reported.
    [[nodiscard]] xkb_mod_mask_t reportedLocks() const { return locks_; }

private:
    void selectEvents();
    bool fetch();
    void readModifiers();
    bool isNews(const xcb_generic_event_t& event);

    X11Connection& connection_;
    XkbContextHandle context_;
    XkbKeymapHandle keymap_;
    std::vector<std::unique_ptr<XkbLayout>> layouts_;
    ModifierKeys modifiers_;
    std::vector<xkb_keycode_t> modifierKeycodes_;
    std::function<void(const xcb_generic_event_t&)> otherEvents_;
    std::uint32_t ownChange_ = 0;
    bool changed_ = false;
    xkb_layout_index_t group_ = 0;
    xkb_mod_mask_t locks_ = 0;
};

}  // namespace kalvo
