// The keyboard on a real X server: whatever a script says arrives, character for
// character, under every layout and lock state, and the user's keys are left as found.
#include "platform/x11/x11_keyboard.h"

#include <gtest/gtest.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <chrono>
#include <cstdlib>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "keys/key_injection.h"
#include "tests/support/fake_event_pump.h"
#include "tests/x11/keyboard_state.h"
#include "tests/x11/recording_window.h"
#include "tests/x11/x_server.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

using testing::kCapsLock;
using testing::KeyboardState;
using testing::kNumLock;
using testing::RecordingWindow;
using testing::XServer;

// One server for all tests of the program.
XServer& server() {
    static XServer instance;
    return instance;
}

// Text as a script types it literally.
std::string literal(std::string_view text) {
    std::string script;
    for (const char c : text) {
        if (std::string_view("+^%(){}~").find(c) != std::string_view::npos)
            script.append(1, '{').append(1, c).append(1, '}');
        else
            script += c;
    }
    return script;
}

std::string printableAscii() {
    std::string text;
    for (char c = ' '; c <= '~'; ++c) text += c;
    return text;
}

// Every character of the code page from 128 on; five codes have none.
std::string upperHalf() {
    std::string text;
    for (int code = 128; code <= 255; ++code) {
        const auto c = static_cast<char>(code);
        if (ansiToUnicode(c) < 0x80 || ansiToUnicode(c) >= 0xA0) text += c;
    }
    return text;
}

struct Typing : ::testing::Test {
    // Each test starts with a US keyboard, no locks and no held keys.
    Typing() {
        server().setLayout("us", "-option");
        state.lockGroup(0);
        state.lock(0);
    }

    // What arrives of a script.
    std::string typed(const std::string& script) {
        keyboard.prepareFor(script);
        Keysend(keyboard, events).SendKeyScript(script, 0);
        (void)keyboard.GetKeyState(kVkCapital);  // everything has reached the server
        return window.take();
    }

    KeyboardState state{server().display()};
    RecordingWindow window{server().display()};
    testing::FakeEventPump events;
    X11Keyboard keyboard{server().display()};
};

struct Layouts : Typing, ::testing::WithParamInterface<std::tuple<const char*, unsigned>> {};

TEST_P(Layouts, EveryCharacterArrives) {
    const auto [layout, locks] = GetParam();
    server().setLayout(layout);
    state.lock(locks);
    EXPECT_EQ(typed(literal(printableAscii())), printableAscii());
    EXPECT_EQ(typed(upperHalf()), upperHalf());
    EXPECT_EQ(typed("Été œuvré à 12,50 €{TAB}{ENTER}"_ansi.data()),
              std::string("Été œuvré à 12,50 €\t\r"_ansi));
    EXPECT_EQ(state.locks(), locks);
    EXPECT_FALSE(state.anyKeyDown());
}

INSTANTIATE_TEST_SUITE_P(EachWithAndWithoutLocks, Layouts,
                         ::testing::Combine(::testing::Values("us", "fr", "de", "be"),
                                            ::testing::Values(0U, kCapsLock, kNumLock,
                                                              kCapsLock | kNumLock)));

TEST_F(Typing, NamedKeysAreTheirOwnKeysWhateverNumLockSays) {
    for (const unsigned locks : {0U, kNumLock}) {
        state.lock(locks);
        EXPECT_EQ(typed("{LEFT}{RIGHT 2}{UP}{DOWN}{HOME}{END}{PGUP}{PGDN}{INS}{F1}{F12}"),
                  "{Left}{Right}{Right}{Up}{Down}{Home}{End}{Prior}{Next}{Insert}{F1}{F12}");
        EXPECT_EQ(typed("{DEL}{BS}{ESC}{PRTSCR}{BREAK}{F16}"), "\x7f\b\x1b{Print}{Pause}{F16}");
    }
}

TEST_F(Typing, ModifiersReachTheKeysTheyStandBefore) {
    EXPECT_EQ(typed("^a%{F4}+{TAB}^%{DEL}+(ab)c"),
              "^a%{F4}{ISO_Left_Tab}^%\x7f"
              "ABc");
    EXPECT_FALSE(state.anyKeyDown());
}

TEST_F(Typing, LockKeysOfAScriptActInItAndLocksAreAsFoundAfterwards) {
    for (const unsigned locks : {0U, kCapsLock, kNumLock}) {
        state.lock(locks);
        EXPECT_EQ(typed("a{CAPSLOCK}a{CAPSLOCK}a{NUMLOCK 2}"), "aAa");
        EXPECT_EQ(typed("{CAPSLOCK}a"), "A");
        EXPECT_EQ(state.locks(), locks);
    }
}

TEST_F(Typing, FollowsTheGroupInForceAndChangesOfTheMap) {
    server().setLayout("us,fr");
    EXPECT_EQ(typed("azqw12é"_ansi.data()), std::string("azqw12é"_ansi));
    state.lockGroup(1);
    EXPECT_EQ(typed("azqw12é€@"_ansi.data()), std::string("azqw12é€@"_ansi));
    state.lockGroup(0);
    for (const char* layout : {"de", "be", "fr", "us"}) {
        server().setLayout(layout);
        EXPECT_EQ(typed("azqwy;:/12ß"_ansi.data()), std::string("azqwy;:/12ß"_ansi)) << layout;
    }
}

// The XTEST keyboard can be left with another map than the one users type on.
TEST_F(Typing, TheMapOfTheCoreKeyboardCounts) {
    const X11Connection connection(server().display());
    server().setLayout("fr");
    server().setLayout("us", "-device " + std::to_string(connection.xtestKeyboard()));
    X11Keyboard fresh(server().display());
    Keysend(fresh, events).SendKeyScript("aqzwm,", 0);
    (void)fresh.GetKeyState(kVkCapital);
    EXPECT_EQ(window.take(), "aqzwm,");
}

TEST_F(Typing, ComposesAnyCodeOfTheKeypad) {
    EXPECT_EQ(typed("{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}x"), std::string("éx"_ansi));
    EXPECT_EQ(typed("%({NUMPAD6}{NUMPAD5})"), "A");
}

// A busy application looks its keys up long after they were typed: they must still mean
// what they meant.
TEST_F(Typing, ALateApplicationGetsEveryCharacter) {
    const std::string french = "Élève à 12,50 €, cœur naïf ; où ça ? «Ça»"_ansi.data();
    for (const std::string& text : {french, upperHalf()}) {
        window.beBusyFor(std::chrono::milliseconds(1500));
        EXPECT_EQ(typed(text + text), text + text);
    }
}

// A run that was killed has left its keys in the map: the next one types with them, and
// the map is not changed once more.
TEST_F(Typing, TheNextRunTakesUpTheKeysThatTheLastOneLeft) {
    const std::string text = "Ça coûte 12 € à Noël"_ansi.data();
    EXPECT_EQ(typed(text), text);
    const X11Connection observer(server().display());
    const auto bound = [&] {
        const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
            observer.get(), xcb_get_keyboard_mapping(observer.get(), 9, 247), nullptr));
        return std::vector<xcb_keysym_t>(xcb_get_keyboard_mapping_keysyms(map.get()),
                                         xcb_get_keyboard_mapping_keysyms(map.get()) +
                                             xcb_get_keyboard_mapping_keysyms_length(map.get()));
    };
    const auto before = bound();
    X11Keyboard next(server().display());
    next.prepareFor(text);
    Keysend(next, events).SendKeyScript(text, 0);
    EXPECT_EQ(window.take(), text);
    EXPECT_EQ(bound(), before);
}

// What Applications.ini says of an application; names are those of its WM_CLASS.
TEST_F(Typing, KeepsToTheMannerOfTheApplication) {
    const std::string script = "aé{TAB}b"_ansi.data();
    keyboard.useManners([](std::span<const std::string> names) {
        EXPECT_EQ(std::vector<std::string>(names.begin(), names.end()),
                  (std::vector<std::string>{"Recorder", "recorder"}));
        return TypingManner{
            .method = TypingMethod::kKeypad, .keyPause = 5, .confirmPause = 200, .lead = 1};
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(typed(script), "a%0%2%3%3\tb");
    // 3 keys, Alt and 4 digits, NumLock twice: 10 presses and as many releases.
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20 * 5 + 200));
}

TEST_F(Typing, PastesTextWhereTheApplicationWantsIt) {
    keyboard.useManners([](std::span<const std::string>) {
        return TypingManner{.method = TypingMethod::kClipboard};
    });
    EXPECT_EQ(typed("Né{TAB}^a{}}"_ansi.data()), "[N\xE9]\t^a[}]");
}

// With a layout that lacks characters, and no keycode left for them.
TEST_F(Typing, TellsOnceWhatItCannotType) {
    server().setLayout("ru");
    X11Connection user(server().display());
    for (unsigned key = 9; key <= 255; ++key) {
        const XReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
            user.get(), xcb_get_keyboard_mapping(user.get(), static_cast<xcb_keycode_t>(key), 1),
            nullptr));
        const xcb_keysym_t taken = XKB_KEY_F35;
        if (*xcb_get_keyboard_mapping_keysyms(map.get()) == XKB_KEY_NoSymbol)
            xcb_change_keyboard_mapping(user.get(), 1, static_cast<xcb_keycode_t>(key), 1, &taken);
    }
    user.sync();
    EXPECT_EQ(typed("1aé2aé3"_ansi.data()), "123");
    EXPECT_EQ(keyboard.takeUntyped(), std::string("aé"_ansi));
    EXPECT_EQ(keyboard.takeUntyped(), "");
    EXPECT_FALSE(state.anyKeyDown());
}

// More characters without a key than there are spare keycodes, over and over.
TEST_F(Typing, CharactersWithoutAKeyTakeTurnsOnTheSpareOnes) {
    const std::string text = upperHalf() + upperHalf().substr(40) + upperHalf();
    EXPECT_EQ(typed(text), text);
}

TEST_F(Typing, AModifierThatSomebodyHoldsIsNotInTheWayAndStaysHeld) {
    X11Connection user(server().display());
    const std::uint8_t shift = state.keycode(XKB_KEY_Shift_L);
    const auto fake = [&](std::uint8_t type) {
        xcb_test_fake_input(user.get(), type, shift, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        user.sync();
    };
    fake(XCB_KEY_PRESS);
    X11Keyboard fresh(server().display());
    Keysend(fresh, events).SendKeyScript("abc1", 0);
    (void)fresh.GetKeyState(kVkCapital);
    EXPECT_EQ(window.take(), "abc1");
    EXPECT_TRUE(state.anyKeyDown());
    fake(XCB_KEY_RELEASE);
    EXPECT_FALSE(state.anyKeyDown());
}

TEST_F(Typing, BrokenOffInTheMiddleNothingStaysDown) {
    {
        X11Keyboard broken(server().display());
        Keysend keysend(broken, events);
        keysend.SendKeyDown({Key::Kind::kControl, 0});
        keysend.SendKeyDown({Key::Kind::kShift, 0});
        keysend.SendKeyDown({Key::Kind::kLiteral, 'a'});
        (void)broken.GetKeyState(kVkCapital);
        EXPECT_TRUE(state.anyKeyDown());
    }
    (void)keyboard.GetKeyState(kVkCapital);
    EXPECT_FALSE(state.anyKeyDown());
}

TEST(NoDisplay, IsARunTimeError) {
    try {
        const X11Keyboard keyboard(":9999");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), error_number::kInvalidCall);
        EXPECT_FALSE(error.description().empty());
    }
}

}  // namespace
}  // namespace kalvo
