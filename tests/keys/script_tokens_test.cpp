#include "keys/script_tokens.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "keys/lock_keys.h"
#include "tests/support/fake_keyboard.h"
#include "text/field_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(TimerPieces, AreOneMoreThanTheTokens) {
    struct Case {
        const char* script;
        std::vector<std::string> pieces;
    };
    for (const Case& expected :
         {Case{"", {""}}, Case{"X{TIMER}123456Y", {"X", "123456Y"}}, Case{"X{TIMER}", {"X", ""}},
          Case{"{TIMER}{TIMER}", {"", "", ""}}, Case{"a{TIMER", {"a{TIMER"}}}) {
        std::vector<std::string> pieces;
        for (TimerPieces split(expected.script); split.remaining() > 0;)
            pieces.emplace_back(split.next());
        EXPECT_EQ(pieces, expected.pieces) << expected.script;
    }
}

TEST(TimerPieces, AreTheFieldsOfTheScriptWithoutTheRestOfTheirSeparator) {
    const std::string script = "ab{TIMER}c{TIMER}{TIMER}d";
    const std::string terminated = script + "{TIMER}";
    TimerPieces split(script);
    for (std::size_t i = 1; split.remaining() > 0; ++i) {
        const std::string_view field = GetField(terminated, i, kTimerToken);
        EXPECT_EQ(split.next(), i == 1 ? field : field.substr(kTimerToken.size() - 1));
    }
}

TEST(LockTokens, NumLockIsPressedForEachAndCutOut) {
    struct Case {
        const char* piece;
        const char* text;
        std::size_t presses;
    };
    for (const auto& [piece, text, presses] :
         {Case{"ABC{NUMLOCK}DEF", "ABCDEF", 1}, Case{"{NUMLOCK}{NUMLOCK}", "", 2},
          Case{"abc", "abc", 0}, Case{"{numlock}", "{numlock}", 0},
          Case{"{NUM{NUMLOCK}LOCK}x", "{NUMLOCK}x", 1},
          Case{"{NUM{NUMLOCK}LOCK}x{NUMLOCK}", "x{NUMLOCK}", 2}}) {
        testing::FakeKeyboard keyboard;
        EXPECT_EQ(pressNumLockTokens(keyboard, piece).text(), text);
        EXPECT_EQ(keyboard.keybdEvents.size(), 2 * presses) << piece;
    }
}

TEST(LockTokens, CapsLockIsOnlyEverSwitchedOff) {
    testing::FakeKeyboard keyboard;
    switchCapsLockOffForTokens(keyboard, "{CAPSLOCK}");
    EXPECT_THAT(keyboard.keybdEvents, IsEmpty());
    keyboard.setLock(kVkCapital, true);
    switchCapsLockOffForTokens(keyboard, "{CAPSLOCK}a{CAPSLOCK}");
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("14 01", "14 03"))
        << "one extended press and release, however many tokens";
    const TokenFreeText cut("{CAPSLOCK}ab{CAPSLOCK}c", kCapsLockToken);
    EXPECT_EQ(cut.text(), "abc");
    EXPECT_EQ(cut.before(1), 11U);
    EXPECT_EQ(cut.before(3), 23U) << "every character knows where it stood";
}

TEST(LockKeys, AreOnOnlyWhenToggledAndNotHeld) {
    testing::FakeKeyboard keyboard;
    EXPECT_FALSE(IsCapsLockOn(keyboard));
    InvertNumLock(keyboard);
    EXPECT_TRUE(IsNumLockOn(keyboard));
    InvertNumLock(keyboard);
    EXPECT_FALSE(IsNumLockOn(keyboard)) << "pressed whatever the state";
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("90 01", "90 03", "90 01", "90 03"));
    keyboard.setLock(kVkCapital, true);
    EXPECT_TRUE(IsCapsLockOn(keyboard));

    class Held : public testing::FakeKeyboard {
        std::int16_t GetKeyState(int) override { return static_cast<std::int16_t>(0x8001); }
    } held;
    EXPECT_FALSE(IsCapsLockOn(held)) << "held down while toggled";
}

}  // namespace
}  // namespace kalvo
