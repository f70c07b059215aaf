#include "keys/key_injection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>
#include <vector>

#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_keyboard.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Sending : ::testing::Test {
    testing::FakeKeyboard keyboard;
    testing::FakeEventPump events;
    Keysend keysend{keyboard, events};

    // One text a batch: "10v 141v", the virtual keys in hex with v for down.
    std::vector<std::string> typed(std::string_view script, std::int16_t wait = 0) {
        keyboard.batches.clear();
        keysend.SendKeyScript(script, wait);
        std::vector<std::string> lines;
        for (const auto& batch : keyboard.batches) {
            std::string line;
            for (const KeyRecord& record : batch) {
                std::array<char, 16> text{};
                std::snprintf(text.data(), text.size(), "%s%x%c", line.empty() ? "" : " ",
                              record.virtualKey, (record.flags & kKeyEventKeyUp) != 0 ? '^' : 'v');
                line += text.data();
            }
            lines.push_back(line);
        }
        return lines;
    }
};

TEST_F(Sending, ACharacterCarriesTheModifiersItsLayoutAsksFor) {
    EXPECT_THAT(typed("a"), ElementsAre("41v", "41^"));
    EXPECT_THAT(typed("A"), ElementsAre("10v 141v", "10^ 141^")) << "Shift comes up first";
    EXPECT_THAT(typed("@"), ElementsAre("11v 12v 632v", "11^ 12^ 632^"));
    EXPECT_THAT(typed("+a"), ElementsAre("10v", "41v", "41^", "10^"));
    EXPECT_THAT(typed("\x01"), IsEmpty()) << "the layout answers 0";
    EXPECT_THAT(typed("#"), ElementsAre("10v 11v 12v ffffv", "10^ 11^ 12^ ffff^"))
        << "a character the layout lacks counts as it stands";
}

TEST_F(Sending, RecordsCarryScanCodesAndTheFlagsOfTheFamily) {
    typed("A");
    const std::vector<KeyRecord> down = {{0x10, 0x90, 8}, {0x141, 0xC1, 8}};
    const std::vector<KeyRecord> up = {{0x10, 0x90, 10}, {0x141, 0xC1, 10}};
    EXPECT_THAT(keyboard.batches, ElementsAre(down, up));
    typed("b");
    EXPECT_EQ(keyboard.layoutQueries, 4) << "the layout is asked for at every key event";
}

TEST_F(Sending, LocksAreOffWhileTypingAndBackAfterwards) {
    for (const int lock : {kVkCapital, kVkNumLock, kVkScroll}) {
        keyboard.setLock(lock, true);
        const auto batches = typed("a");
        EXPECT_EQ(batches.size(), 6U) << lock;
        EXPECT_EQ(batches[2], "41v") << lock;
        EXPECT_TRUE(keyboard.lockOn(lock));
        keyboard.setLock(lock, false);
    }
    keyboard.setLock(kVkCapital, true);
    EXPECT_THAT(typed(""), ElementsAre("14v", "14^", "14v", "14^"));
}

TEST_F(Sending, AScriptsOwnLockKeysCountAgainstTheInitialState) {
    for (const char* script : {"{CAPSLOCK}", "{CAPSLOCK 2}"})
        for (const bool before : {false, true}) {
            keyboard.setLock(kVkCapital, before);
            typed(script);
            EXPECT_EQ(keyboard.lockOn(kVkCapital), before) << script;
        }
    typed("{NUMLOCK 2}");
    EXPECT_FALSE(keyboard.lockOn(kVkNumLock));
    keyboard.setLock(kVkNumLock, true);
    typed("\xE9");
    EXPECT_TRUE(keyboard.lockOn(kVkNumLock)) << "an Alt+keypad code borrows NumLock";
}

TEST_F(Sending, DigitsOfTheWaitSwitchRestoringOff) {
    for (const auto& [wait, lock] : {std::pair{2, kVkCapital}, {3, kVkNumLock}, {14, kVkScroll}}) {
        keyboard.setLock(lock, true);
        typed("a", static_cast<std::int16_t>(wait));
        EXPECT_FALSE(keyboard.lockOn(lock)) << "wait " << wait;
    }
    const auto before = events.tick;
    typed("a", 1);
    EXPECT_GT(events.tick - before, 20U) << "and any wait pauses";
    // Waiting ends when the tick count wraps around.
    events.tick = 0xFFFFFFFE;
    keysend.WaitWithEvents(1000);
    EXPECT_LT(events.tick, 10U);
}

TEST_F(Sending, WhatWasRefusedIsTypedAgainFromTheLastLookOn) {
    struct Case {
        const char* script;
        int taken;  // batches; a key is two
        std::size_t typed;
        const char* lead;
    };
    for (const Case& each :
         {Case{"ab", 1, 0, ""}, Case{"ab{ENTER}cd{ENTER}e", 9, 9, ""},
          Case{"ab{ENTER}cd{ENTER}e", 10, 9, ""}, Case{"a{ENTER}+(b{ENTER}c)", 10, 18, "+("},
          Case{"a{ENTER}b", 5, 8, ""}}) {
        keyboard.takes = each.taken;
        const Typing typing = keysend.SendKeyScript(each.script, 0);
        EXPECT_EQ(typing.stop, TypingStop::kKeysRefused) << each.script;
        EXPECT_EQ(typing.typed, each.typed) << each.script;
        EXPECT_EQ(typing.resumeAt, each.typed) << each.script;
        EXPECT_EQ(typing.lead, each.lead) << each.script;
    }
}

TEST(LateApplication, GetsNoKeyBeforeTheFocusHasBeenLookedAtAgain) {
    struct Late : testing::FakeKeyboard {
        int asked = 0, loose = 0;
        bool held = false;
        bool awaitTarget(int) override {
            if (++asked % 3 != 0) return true;
            return held = false;  // others have gone on while it waited
        }
        bool holdLayout() override { return held = true; }
        void finishInput() override { held = false; }
        void SendInput(std::span<const KeyRecord> records) override {
            loose += held ? 0 : 1;
            FakeKeyboard::SendInput(records);
        }
    } late;
    testing::FakeEventPump events;
    Keysend(late, events).SendKeyScript("abcdefgh{TAB}ij{ENTER}", 0);
    EXPECT_EQ(late.typed(), "ABCDEFGH>IJ!");
    EXPECT_EQ(late.loose, 0);
}

TEST_F(Sending, TheOlderFamilyLeavesTheScriptToThePlatform) {
    keyboard.platform = 1;
    keyboard.setLock(kVkCapital, true);
    EXPECT_THAT(typed("\xE9{TAB}"), IsEmpty());
    EXPECT_THAT(keyboard.sentToPlatform, ElementsAre("\xE9{TAB}|"));
    EXPECT_TRUE(keyboard.lockOn(kVkCapital));
    keyboard.platformSenderFails = true;
    EXPECT_NO_THROW(typed("a"));
    keysend.FlipNumLock();
    EXPECT_TRUE(keyboard.lockOn(kVkNumLock)) << "through the thread's key state";
    EXPECT_THAT(keyboard.batches, IsEmpty());
}

}  // namespace
}  // namespace kalvo
