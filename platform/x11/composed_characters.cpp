#include "platform/x11/composed_characters.h"

#include <array>
#include <cstddef>
#include <utility>

namespace kalvo {

void ComposedCharacters::type(char character) {
    layout_.follow();
    const auto stroke = layout_.strokeOf(character);
    if (!stroke) {
        layout_.noteUntyped(character);
        return;
    }
    const bool capsLock = locks_.capsLockOn();
    const xkb_keycode_t capsLockKey = keymap_.modifiers().capsLock.keycode;
    if (capsLock) injector_.tap(capsLockKey);
    tap(*stroke);
    if (capsLock) injector_.tap(capsLockKey);
}

void ComposedCharacters::typeOnKeypad(char character) {
    constexpr std::uint8_t kVkNumpad0 = 0x60;
    const xkb_keycode_t alt = keymap_.modifiers().alt.keycode;
    records_.inject(alt, false, true);
    const auto code = static_cast<unsigned char>(character);
    for (const int digit : {0, code / 100, code / 10 % 10, code % 10})
        injector_.tap(layout_.namedKeycode(static_cast<std::uint8_t>(kVkNumpad0 + digit)));
    records_.inject(alt, true, true);
}

// With exactly the modifiers it needs; those a script holds are lifted meanwhile.
void ComposedCharacters::tap(KeyStroke stroke) {
    const ModifierKeys& keys = keymap_.modifiers();
    const std::array<std::pair<xkb_keycode_t, bool>, 4> wanted = {
        {{keys.shift.keycode, (stroke.shiftState & kNeedsShift) != 0},
         {keys.level3.keycode, (stroke.shiftState & kNeedsAltGr) == kNeedsAltGr},
         {keys.control.keycode, false},
         {keys.alt.keycode, false}}};
    std::array<bool, 4> before{};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto [key, down] = wanted[i];
        if (key > 255) continue;
        before[i] = injector_.isDown(key);
        if (before[i] != down) records_.inject(key, !down, true);
    }
    injector_.tap(stroke.keycode);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (wanted[i].first <= 255 && before[i] != wanted[i].second)
            records_.inject(wanted[i].first, !before[i], true);
}

}  // namespace kalvo
