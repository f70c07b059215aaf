#include "platform/x11/key_records.h"

#include "platform/x11/layout/named_keys.h"

namespace kalvo {

namespace {

// The answer for a character without a key: Shift, Control and Alt around nothing.
constexpr std::uint16_t kNoKey = 0xFFFF;

bool isUp(std::uint32_t flags) { return (flags & kKeyEventKeyUp) != 0; }

bool isControlOrAlt(std::uint16_t virtualKey) {
    return virtualKey == kVkControl || virtualKey == kVkMenu;
}

}  // namespace

// The key's own record tells what the modifiers before it are for.
void KeyRecords::feed(std::span<const KeyRecord> records, AltKeypad& keypad) {
    const std::uint16_t key = records.back().virtualKey;
    const bool altGr = key != kNoKey && (key & kNeedsAltGr) == kNeedsAltGr;
    for (const KeyRecord& record : records) {
        if (!altGr || !isControlOrAlt(record.virtualKey))
            keypad.feed(record);
        else if (record.virtualKey == kVkMenu)
            inject(keymap_.modifiers().level3.keycode, isUp(record.flags), true);
    }
}

void KeyRecords::press(const KeyRecord& record) {
    const auto virtualKey = static_cast<std::uint8_t>(record.virtualKey & 0xFFU);
    inject(layout_.keycodeOf(record), isUp(record.flags), isModifierKey(virtualKey));
}

void KeyRecords::inject(xkb_keycode_t key, bool up, bool modifier) {
    if (key == 0 || key > 255) return;
    locks_.keySent(key);
    if (!up) {
        if (!modifier || !injector_.isDown(key)) injector_.press(key);
    } else if (injector_.isDown(key)) {
        injector_.release(key);
    }
}

}  // namespace kalvo
