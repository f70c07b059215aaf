// What only this system has: its texts, its layouts, its key states.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "keys/key_injection.h"
#include "platform/windows/keyboard/named_layout.h"
#include "platform/windows/keyboard/windows_keyboard.h"
#include "platform/windows/port_names.h"
#include "platform/windows/wide_text.h"
#include "tests/support/fake_event_pump.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

constexpr std::array<std::uint8_t, 3> kLocks = {VK_CAPITAL, VK_NUMLOCK, VK_SCROLL};

TEST(WideText, GoesThroughTheCoresCodePage) {
    std::string every;
    for (int byte = 1; byte < 256; ++byte) every.push_back(static_cast<char>(byte));
    EXPECT_EQ(ansiFromWide(wideFromAnsi(every)), every);
    EXPECT_EQ(wideFromAnsi("€é"_ansi), L"\u20AC\u00E9");
    EXPECT_EQ(ansiFromWide(L"\u6F22\U0001F600"), "??") << "one a character";
    EXPECT_EQ(utf8FromWide(wideFromUtf8("é漢😀")), "é漢😀");
}

TEST(PortNames, ReachEveryNumber) {
    EXPECT_EQ(portDevice(1, "").locate(), R"(\\.\COM1)");
    EXPECT_EQ(portDevice(12, "").locate(), R"(\\.\COM12)");
    EXPECT_EQ(portDevice(3, R"(USB\VID_0000\no-such-device)").locate(), "");
    int last = 0;
    for (const PortEntry& port : listPorts()) {
        EXPECT_GT(port.number, last);
        EXPECT_EQ(port.device, "COM" + std::to_string(port.number));
        last = port.number;
    }
}

TEST(NamedLayouts, AnswerForThemselves) {
    const auto us = makeNamedLayout("us");
    EXPECT_EQ(us->VkKeyScanExA('a'), 0x41);
    EXPECT_EQ(us->VkKeyScanExA('A'), 0x141);
    EXPECT_EQ(us->VkKeyScanExA('\r'), 0x0D);
    EXPECT_EQ(us->VkKeyScanExA('\t'), 0x09);
    EXPECT_EQ(us->VkKeyScanExA('\xE9'), -1);
    EXPECT_EQ(us->MapVirtualKeyExA(0x41), 0x1E);
    EXPECT_EQ(us->MapVirtualKeyExA(kVkShift), 0x2A);
    EXPECT_NE(makeNamedLayout("0000040c"), nullptr);
    for (const char* unknown : {"", "klingon", "00000409x", "0000040"})
        EXPECT_THROW(static_cast<void>(makeNamedLayout(unknown)), RuntimeError) << unknown;
}

TEST(Keyboard, KnowsTheFamilyAndTheOemCodes) {
    WindowsKeyboard keyboard;
    EXPECT_EQ(keyboard.platformIdentifier(), 2);
    EXPECT_EQ(keyboard.CharToOemA('a'), 'a');
    EXPECT_EQ(keyboard.CharToOemA('\xE9'), 0x82);
    EXPECT_THROW(keyboard.SendKeys("a", false), RuntimeError);
}

// Presses and releases a lock key; its state while it is held.
int press(WindowsKeyboard& keyboard, std::uint8_t lock) {
    const auto scan = static_cast<std::uint8_t>(keyboard.MapVirtualKeyA(lock));
    keyboard.keybd_event(lock, scan, kKeyEventExtendedKey);
    const int held = keyboard.GetKeyState(lock);
    keyboard.keybd_event(lock, scan, kKeyEventExtendedKey | kKeyEventKeyUp);
    return held;
}

TEST(Keyboard, SeesTheLocksItSwitchesAtOnce) {
    WindowsKeyboard keyboard;
    for (const std::uint8_t lock : kLocks) {
        const auto before = keyboard.GetKeyState(lock) & 1;
        for (const int expected : {1 - before, before}) {
            EXPECT_LT(press(keyboard, lock), 0) << "held";
            EXPECT_EQ(keyboard.GetKeyState(lock), expected) << lock;
        }
    }
}

// A script leaves each lock as it found it, but for what it does itself.
TEST(Keyboard, ScriptsPutTheLocksBack) {
    WindowsKeyboard keyboard;
    testing::FakeEventPump events;
    Keysend keysend(keyboard, events);
    const auto states = [&] {
        std::string text;
        for (const int lock : kLocks)
            text.push_back((keyboard.GetKeyState(lock) & 1) != 0 ? '1' : '0');
        return text;
    };
    ASSERT_EQ(states(), "000");
    for (const std::string initial : {"000", "100", "010", "001", "111"}) {
        for (std::size_t i = 0; i < 3; ++i)
            if (states()[i] != initial[i]) press(keyboard, kLocks[i]);
        ASSERT_EQ(states(), initial);
        for (const char* script : {"", "aB\xE9", "{NUMLOCK 2}", "{SCROLLLOCK}{SCROLLLOCK}"}) {
            keysend.SendKeyScript(script, 0);
            EXPECT_EQ(states(), initial) << script;
        }
    }
    keysend.SendKeyScript("{CAPSLOCK}", 0);
    EXPECT_EQ(states(), "111") << "off at first, then the script's own press";
    for (const std::uint8_t lock : kLocks) press(keyboard, lock);
    keysend.SendKeyScript("{CAPSLOCK}", 0);
    EXPECT_EQ(states(), "000") << "the script's press is taken back";
}

// A session that takes `room` records and no more; keys come up all the same.
TEST(Keyboard, LetsKeysUpAndSaysSoWhenTheSessionTakesLess) {
    for (UINT room = 0; room <= 4; ++room) {
        UINT left = room;
        std::string sent;
        WindowsKeyboard keyboard([&](UINT count, INPUT* inputs, int) {
            const UINT taken = std::min(count, left);
            left -= taken;
            for (UINT i = 0; i < count; ++i) {
                const bool up = (inputs[i].ki.dwFlags & KEYEVENTF_KEYUP) != 0;
                if (i < taken || (up && count == 1))
                    sent += {static_cast<char>(inputs[i].ki.wVk), up ? '^' : 'v'};
            }
            return taken;
        });
        const std::uint32_t up = kKeyEventScanCode | kKeyEventKeyUp;
        keyboard.SendInput(
            std::vector<KeyRecord>{{'S', 1, kKeyEventScanCode}, {'A', 2, kKeyEventScanCode}});
        keyboard.SendInput(std::vector<KeyRecord>{{'S', 1, up}, {'A', 2, up}});
        keyboard.SendInput(std::vector<KeyRecord>{{'B', 3, kKeyEventScanCode}});
        static constexpr std::array kSent = {"", "SvS^", "SvAvA^S^", "SvAvS^A^", "SvAvS^A^"};
        EXPECT_EQ(sent, kSent[room]) << room;
        EXPECT_EQ(keyboard.obstacle(), TypingStop::kKeysRefused) << room;
        EXPECT_TRUE(keyboard.connected()) << "the session is there";
        keyboard.prepareFor("");
        EXPECT_EQ(keyboard.obstacle(), TypingStop::kNone) << room;
    }
}

TEST(Keyboard, RecordsGoTogetherAndTheKeyStateArrayIsTheThreadsOwn) {
    WindowsKeyboard keyboard;
    const std::uint16_t scan = keyboard.foregroundLayout().MapVirtualKeyExA(kVkShift);
    for (const std::uint32_t up : {0U, kKeyEventKeyUp}) {
        keyboard.SendInput(std::vector<KeyRecord>{{kVkShift, scan, kKeyEventScanCode | up}});
        EXPECT_EQ(keyboard.GetKeyState(kVkShift) < 0, up == 0);
    }
    keyboard.SendInput({});

    std::array<std::uint8_t, 256> state{};
    std::array<std::uint8_t, 256> after{};
    keyboard.GetKeyboardState(state);
    for (int flip = 0; flip < 2; ++flip) {  // and back
        state[kVkNumLock] ^= 1U;
        keyboard.SetKeyboardState(state);
        keyboard.GetKeyboardState(after);
        EXPECT_EQ(after[kVkNumLock], state[kVkNumLock]);
    }
}

}  // namespace
}  // namespace kalvo
