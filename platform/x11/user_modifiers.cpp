#include "platform/x11/user_modifiers.h"

#include <xcb/xinput.h>

#include <array>

namespace kalvo {

namespace {

constexpr std::size_t kKeymapBytes = 32;

std::bitset<256> toKeys(const std::uint8_t* bytes) {
    std::bitset<256> keys;
    for (std::size_t key = 0; key < kKeymapBytes * 8; ++key)
        if ((bytes[key / 8] >> (key % 8) & 1) != 0) keys.set(key);
    return keys;
}

std::vector<std::uint8_t> realKeyboards(const X11Connection& connection) {
    std::vector<std::uint8_t> found;
    const XReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection.get(), xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!devices) return found;
    for (auto at = xcb_input_xi_query_device_infos_iterator(devices.get()); at.rem > 0;
         xcb_input_xi_device_info_next(&at))
        if (at.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
            at.data->attachment == connection.coreKeyboard() &&
            at.data->deviceid != connection.xtestKeyboard() && at.data->deviceid < 128)
            found.push_back(static_cast<std::uint8_t>(at.data->deviceid));
    return found;
}

}  // namespace

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

std::bitset<256> UserModifiers::physicallyDown() const {
    std::bitset<256> down;
    for (const std::uint8_t keyboard : keyboards_) {
        const XReply<xcb_input_query_device_state_reply_t> state(xcb_input_query_device_state_reply(
            connection_.get(), xcb_input_query_device_state(connection_.get(), keyboard), nullptr));
        if (!state) continue;
        for (auto at = xcb_input_query_device_state_classes_iterator(state.get()); at.rem > 0;
             xcb_input_input_state_next(&at))
            if (at.data->class_id == XCB_INPUT_INPUT_CLASS_KEY)
                down |= toKeys(reinterpret_cast<const xcb_input_key_state_t*>(at.data)->keys);
    }
    return down;
}

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
