#include "platform/x11/held/lock_state.h"

#include "platform/keyboard_input.h"
#include "platform/x11/keymap/xcb_xkb.h"

namespace kalvo {

namespace {

constexpr std::int16_t kHeld = -0x8000;
// Virtual keys of the left and right modifiers follow each other from here.
constexpr std::uint8_t kSides = 0xA0;

}  // namespace

std::int16_t LockState::keyState(std::uint8_t virtualKey) {
    const auto state = xcb_xkb_get_state(connection_.get(), connection_.coreKeyboard());
    const auto keys = xcb_query_keymap(connection_.get());
    const XReply<xcb_xkb_get_state_reply_t> locks(
        xcb_xkb_get_state_reply(connection_.get(), state, nullptr));
    const XReply<xcb_query_keymap_reply_t> down(
        xcb_query_keymap_reply(connection_.get(), keys, nullptr));
    if (!locks || !down) return 0;
    const auto isDown = [&](std::uint8_t key) {
        xkb_keycode_t code = layout_.namedKeycode(key);
        if (code == 0) code = layout_.MapVirtualKeyExA(key) + kScanToKeycode;
        return code < 256 && (down->keys[code / 8] >> (code % 8) & 1) != 0;
    };
    bool held = isDown(virtualKey) || (virtualKey == kVkMenu && altKeypad_.holdsAlt());
    if (virtualKey >= kVkShift && virtualKey <= kVkMenu)  // the right-hand one counts too
        held = held || isDown(static_cast<std::uint8_t>(kSides + (virtualKey - kVkShift) * 2 + 1));
    const bool on = (locks->lockedMods & maskOf(virtualKey)) != 0;
    return static_cast<std::int16_t>((held ? kHeld : 0) | (on ? 1 : 0));
}

bool LockState::capsLockOn() {
    if (capsLockSent_) return (keyState(kVkCapital) & 1) != 0;
    return (keymap_.reportedLocks() & keymap_.modifiers().capsLock.locked) != 0;
}

xkb_mod_mask_t LockState::maskOf(std::uint8_t virtualKey) const {
    switch (virtualKey) {
        case kVkCapital: return keymap_.modifiers().capsLock.locked;
        case kVkNumLock: return keymap_.modifiers().numLock.locked;
        case kVkScroll: return keymap_.modifiers().scrollLock.locked;
        default: return 0;
    }
}

}  // namespace kalvo
