// Key events of a virtual keyboard, and which of its keys are down.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <bitset>
#include <chrono>
#include <cstdint>

#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_keymap.h"
#include "platform/x11/layout/xkb_handles.h"

struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

namespace kalvo {

// One keyboard of the compositor's, with one key map for its whole life. The state of its
// modifiers and locks is ours to keep: other keyboards have no part in it.
class KeySender {
public:
    // Plugs the keyboard in. Throws RuntimeError 5 when the compositor has none for us.
    KeySender(WaylandConnection& connection, const WaylandKeymap& map);
    ~KeySender();
    KeySender(const KeySender&) = delete;
    KeySender& operator=(const KeySender&) = delete;

    // A pause behind each press and each release; none at first.
    void setPause(std::chrono::milliseconds pause) { pause_ = pause; }
    // Lets everything out and waits.
    void rest(std::chrono::milliseconds time);

    void press(xkb_keycode_t key);
    void release(xkb_keycode_t key);
    void tap(xkb_keycode_t key) {
        press(key);
        release(key);
    }
    void releaseAll();

    [[nodiscard]] bool isDown(xkb_keycode_t key) const { return key < down_.size() && down_[key]; }
    [[nodiscard]] bool isLocked(const char* modifier) const;
    // How many keys have been pressed so far.
    [[nodiscard]] std::uint64_t presses() const { return presses_; }

private:
    void giveKeymap(const std::string& text);
    void send(xkb_keycode_t key, bool down);

    WaylandConnection& connection_;
    XkbStateHandle state_;
    zwp_virtual_keyboard_manager_v1* manager_ = nullptr;
    zwp_virtual_keyboard_v1* keyboard_ = nullptr;
    std::bitset<256> down_;
    std::chrono::milliseconds pause_{0};
    std::uint64_t presses_ = 0;
};

}  // namespace kalvo
