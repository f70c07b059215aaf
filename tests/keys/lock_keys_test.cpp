#include "keys/lock_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_keyboard.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(LockKeys, AreOnOnlyWhenToggledAndNotHeld) {
    testing::FakeKeyboard keyboard;
    EXPECT_FALSE(IsCapsLockOn(keyboard));
    keyboard.setLock(kVkCapital, true);
    keyboard.setLock(kVkNumLock, true);
    EXPECT_TRUE(IsCapsLockOn(keyboard));
    EXPECT_TRUE(IsNumLockOn(keyboard));

    class Held : public testing::FakeKeyboard {
        std::int16_t GetKeyState(int) override { return static_cast<std::int16_t>(0x8001); }
    } held;
    EXPECT_FALSE(IsCapsLockOn(held)) << "held down while toggled";
}

TEST(LockKeys, FlipWithOneExtendedPressAndRelease) {
    testing::FakeKeyboard keyboard;
    CapsLockOff(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, IsEmpty()) << "already off";

    InvertNumLock(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("90 01", "90 03"));
    EXPECT_TRUE(IsNumLockOn(keyboard));
    InvertNumLock(keyboard);
    EXPECT_FALSE(IsNumLockOn(keyboard)) << "pressed whatever the state";

    keyboard.setLock(kVkCapital, true);
    keyboard.keybdEvents.clear();
    CapsLockOff(keyboard);
    CapsLockOff(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("14 01", "14 03"));
}

}  // namespace
}  // namespace kalvo
