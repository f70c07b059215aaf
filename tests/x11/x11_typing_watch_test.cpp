// Typing that is watched, on a real X server: what a user does stops it or makes it wait,
// and nothing is spoilt beyond the record in which he did it.
#include "platform/x11/target/x11_typing_watch.h"

#include <gtest/gtest.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "keys/key_injection.h"
#include "platform/x11/x11_atoms.h"
#include "platform/x11/x11_keyboard.h"
#include "tests/x11/keyboard_state.h"
#include "tests/x11/recording_window.h"
#include "tests/x11/x_server.h"

namespace kalvo {
namespace {

using testing::KeyboardState;
using testing::RecordingWindow;
using namespace std::chrono_literals;

testing::XServer& server() {
    static testing::XServer instance;
    return instance;
}

// A pump without events on the real clock.
class RealTime : public EventPump {
public:
    std::atomic<bool> end = false;
    void DoEvents() override {}
    void waitForEvents(int milliseconds) override { Sleep(milliseconds); }
    bool ending() override { return end; }
    void Sleep(int milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    std::uint32_t GetTickCount() override { return steadyTicks(); }
    LocalTime now() override { return {}; }
    void post(std::function<void()>) override {}
};

struct Watching : ::testing::Test {
    Watching() {
        server().setLayout("us", "-option");
        state.lockGroup(0);
        state.lock(0);
    }

    // Types a script while `meanwhile` happens, as soon as the first keys have arrived.
    Typing type(const std::string& script, const std::function<void()>& meanwhile) {
        X11TypingWatch watch([this] { return rules; }, server().display());
        Keysend keysend(keyboard, pump, watch,
                        {.progress = {}, .disturbed = [this](std::size_t at) { disturbed = at; }});
        std::atomic<bool> over = false;
        std::thread user([&] {
            while (window->size() < 2000 && !over) std::this_thread::sleep_for(1ms);
            meanwhile();
        });
        watch.begin();
        const Typing typing = keysend.SendKeyScript(script, 0);
        over = true;
        user.join();
        return typing;
    }
    void tapRealKey(unsigned long symbol, std::chrono::milliseconds held = 1ms) const {
        state.moveRealKey(state.keycode(symbol), true);
        std::this_thread::sleep_for(held);
        state.moveRealKey(state.keycode(symbol), false);
    }

    KeyboardState state{server().display()};
    std::unique_ptr<RecordingWindow> window = std::make_unique<RecordingWindow>(server().display());
    RealTime pump;
    WatchRules rules;
    X11Keyboard keyboard{server().display()};
    std::size_t disturbed = 0;
};

std::string records(int count) {
    std::string text;
    for (int i = 10000; i < 10000 + count; ++i) text += "ref-" + std::to_string(i) + ";aqzw{ENTER}";
    return text;
}

// The records that did not arrive as they were typed.
int spoilt(std::string arrived, int count) {
    int wrong = 0;
    for (int i = 10000; i < 10000 + count; ++i) {
        const std::string record = "ref-" + std::to_string(i) + ";aqzw\r";
        wrong += arrived.starts_with(record) ? 0 : 1;
        arrived.erase(0, arrived.find('\r') + 1);
    }
    return wrong;
}

TEST_F(Watching, StopsForTheStopKeyTheFocusTheTargetAndTheEnd) {
    const std::string endless = "+(x{a 20000000}";
    struct Case {
        const char* name;
        TypingStop stop;
        std::function<void()> meanwhile;
    };
    std::unique_ptr<RecordingWindow> other;
    const std::vector<Case> cases = {
        {"stop key", TypingStop::kStopKey, [&] { tapRealKey(XKB_KEY_Escape); }},
        {"program", TypingStop::kProgramEnds, [&] { pump.end = true; }},
        {"target", TypingStop::kTargetGone,
         [&] {
             window->destroy();
             other = std::make_unique<RecordingWindow>(server().display());
         }},
        {"focus", TypingStop::kOtherApplication,
         [&] { other = std::make_unique<RecordingWindow>(server().display()); }}};
    for (const auto& [name, stop, meanwhile] : cases) {
        window.reset();
        window = std::make_unique<RecordingWindow>(server().display());
        pump.end = false;
        std::chrono::steady_clock::time_point happened;
        const Typing typing = type(endless, [&happened, &occur = meanwhile] {
            occur();
            happened = std::chrono::steady_clock::now();
        });
        EXPECT_LT(std::chrono::steady_clock::now() - happened, 300ms) << name;
        EXPECT_EQ(typing.stop, stop) << name;
        EXPECT_EQ(typing.lead.substr(0, 5), "+({a ") << name;
        EXPECT_FALSE(state.anyKeyDown()) << name;
        EXPECT_EQ(other ? other->take() : "", "") << name;
        other.reset();
    }
}

// A window manager keeps the focus on a window of its own when no other is there.
TEST_F(Watching, NobodyIsTypedIntoWhereTheDesktopHasTheFocus) {
    X11Connection manager(server().display());
    xcb_connection_t* const x = manager.get();
    const auto give = [&](std::uint16_t windowClass) {
        const xcb_window_t helper = xcb_generate_id(x);
        const std::uint32_t unmanaged = 1;
        xcb_create_window(x, 0, helper, manager.root(), -100, -100, 1, 1, 0, windowClass,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
        xcb_map_window(x, helper);
        xcb_set_input_focus(x, XCB_INPUT_FOCUS_PARENT, helper, XCB_CURRENT_TIME);
        return helper;
    };
    const auto stop = [&] {
        manager.sync();
        return type("abc", [] {}).stop;
    };
    give(XCB_WINDOW_CLASS_INPUT_ONLY);
    EXPECT_EQ(stop(), TypingStop::kNoTarget) << "it shows nothing";
    const xcb_window_t helper = give(XCB_WINDOW_CLASS_INPUT_OUTPUT);
    EXPECT_EQ(stop(), TypingStop::kNone) << "a menu, say";
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, manager.root(),
                        atomOf(manager, "_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 32, 1,
                        &helper);
    give(XCB_WINDOW_CLASS_INPUT_OUTPUT);
    EXPECT_EQ(stop(), TypingStop::kNone);
    xcb_set_input_focus(x, XCB_INPUT_FOCUS_PARENT, helper, XCB_CURRENT_TIME);
    EXPECT_EQ(stop(), TypingStop::kNoTarget) << "it announces the manager";
    xcb_delete_property(x, manager.root(), atomOf(manager, "_NET_SUPPORTING_WM_CHECK"));
    manager.sync();
}

TEST_F(Watching, RulesSwitchTheStopKeyAndTheGuardOff) {
    rules = {.stopKey = false, .targetGuard = false};
    std::unique_ptr<RecordingWindow> other;
    const Typing typing = type(records(1000), [&] {
        tapRealKey(XKB_KEY_Escape);
        other = std::make_unique<RecordingWindow>(server().display());
    });
    EXPECT_EQ(typing.stop, TypingStop::kNone);
    EXPECT_GT(other->take().size(), 0U);
}

TEST_F(Watching, AKeyOfTheUsersTouchesOneRecordAtMostAndTypingWaitsForIt) {
    std::size_t whileHeld = 0;
    const Typing typing = type(records(1000), [&] {
        state.moveRealKey(state.keycode(XKB_KEY_Shift_L), true);
        std::this_thread::sleep_for(50ms);
        const std::size_t before = window->size();
        std::this_thread::sleep_for(200ms);
        whileHeld = window->size() - before;
        state.moveRealKey(state.keycode(XKB_KEY_Shift_L), false);
    });
    EXPECT_EQ(typing.stop, TypingStop::kNone);
    EXPECT_EQ(whileHeld, 0U);
    EXPECT_LE(spoilt(window->take(), 1000), 1);
    EXPECT_GT(disturbed, 0U);
    EXPECT_FALSE(state.anyKeyDown());
}

TEST_F(Watching, AChangeOfLayoutInTheMiddleSpoilsNothing) {
    const Typing typing = type(records(4000), [&] {
        for (const char* layout : {"fr", "us", "us,fr"}) server().setLayout(layout);
        for (const unsigned group : {1U, 0U, 1U}) {
            state.lockGroup(group);
            std::this_thread::sleep_for(10ms);
        }
    });
    EXPECT_EQ(typing.stop, TypingStop::kNone);
    EXPECT_EQ(spoilt(window->take(), 4000), 0);
}

// A program that was killed has let go of nothing; somebody else's keys stay.
TEST_F(Watching, WhatAKilledRunLeftDownComesUpWithTheNext) {
    const std::uint8_t shift = state.keycode(XKB_KEY_Shift_L);
    for (const bool killed : {false, true}) {
        if (killed) {
            const pid_t child = fork();
            if (child == 0) {
                const X11Keyboard broken(server().display());
                raise(SIGKILL);
            }
            waitpid(child, nullptr, 0);
        }
        X11Connection user(server().display());
        xcb_test_fake_input(user.get(), XCB_KEY_PRESS, shift, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        user.sync();
        const X11Keyboard next(server().display());
        EXPECT_EQ(state.anyKeyDown(), !killed);
    }
}

}  // namespace
}  // namespace kalvo
