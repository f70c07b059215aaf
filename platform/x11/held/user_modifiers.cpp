#include "platform/x11/held/user_modifiers.h"

#include "platform/x11/held/key_bits.h"
#include "platform/x11/held/real_keyboards.h"

namespace kalvo {

void UserModifiers::detect() {
    const XReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    if (!reply) return;
    const std::bitset<256> down = toKeys(reply->keys) & ~injector_.down();
    held_.reset();
    foreign_.reset();
    for (const xkb_keycode_t key : keymap_.modifierKeycodes())
        if (down[key]) held_.set(key);
    // What was put back once and is up now is still down to the XTEST keyboard,
    // which would swallow the next press of it as a repetition.
    for (std::size_t key = 0; key < restored_.size(); ++key)
        if (restored_[key] && !held_[key])
            injector_.send(XCB_KEY_RELEASE, static_cast<xkb_keycode_t>(key));
    restored_ &= held_;
    if (held_.none()) return;
    keyboards_ = realKeyboards(connection_);
    foreign_ = held_ & ~physicallyDown();
}

std::bitset<256> UserModifiers::physicallyDown() const { return keysDown(connection_, keyboards_); }

void UserModifiers::lift() {
    if (held_.none()) return;
    held_ &= physicallyDown() | foreign_;
    for (const xkb_keycode_t key : keymap_.modifierKeycodes())
        if ((held_[key] || restored_[key]) && !injector_.isDown(key))
            injector_.send(XCB_KEY_RELEASE, key);
    restored_.reset();
}

void UserModifiers::putBack() {
    if (held_.none()) return;
    held_ &= physicallyDown() | foreign_;
    for (const xkb_keycode_t key : keymap_.modifierKeycodes()) {
        if (!held_[key] || injector_.isDown(key)) continue;
        injector_.send(XCB_KEY_PRESS, key);
        restored_.set(key);
    }
    // Let go between the question and the press: nothing would release it later.
    const std::bitset<256> still = physicallyDown() | foreign_;
    for (const xkb_keycode_t key : keymap_.modifierKeycodes()) {
        if (!restored_[key] || still[key]) continue;
        injector_.send(XCB_KEY_RELEASE, key);
        restored_.reset(key);
    }
    held_ &= still;
}

}  // namespace kalvo
