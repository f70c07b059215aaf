#include "core/frame_dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "settings/application_paths.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Dispatch : public ::testing::Test {
protected:
    testing::FakePlatform world;
    RunTimeState state;

    Dispatch() {
        state.scenario.applicationFolder = "/app";
        state.scenario.active.ScenarioName = "Stock";
        world.port.open = true;
    }

    // Dispatches a frame through a scenario whose one action is the given text.
    void dispatch(const char* action) {
        state.scenario.active.ActionLines = {"", action};
        state.ReceivedData = "A\r";
        TraiteEmul(world.platform, state);
    }
    // The letters typed, and L for each CapsLock key among them.
    [[nodiscard]] std::string typed() const {
        std::string letters;
        for (const auto& batch : world.keyboard.batches) {
            const KeyRecord& key = batch.back();
            if ((key.flags & kKeyEventKeyUp) != 0) continue;
            letters.push_back(key.virtualKey == kVkCapital ? 'L'
                                                           : static_cast<char>(key.virtualKey));
        }
        return letters;
    }
    [[nodiscard]] std::ptrdiff_t presses(const char* event) const {
        return std::count(world.keyboard.keybdEvents.begin(), world.keyboard.keybdEvents.end(),
                          event);
    }
};

TEST_F(Dispatch, AnUntimedScriptIsTypedWithoutItsLockTokens) {
    dispatch("abc{NUMLOCK}def{NUMLOCK}{CAPSLOCK}g");
    EXPECT_EQ(typed(), "ABCDEFG");
    EXPECT_EQ(presses("90 01"), 2);
    EXPECT_EQ(presses("14 01"), 0) << "CapsLock was off";
    EXPECT_THAT(world.events.sleeps, ElementsAre(100));
}

TEST_F(Dispatch, NumLockStaysAsItsTokensLeaveIt) {
    dispatch("abc{NUMLOCK}def");
    EXPECT_TRUE(world.keyboard.lockOn(kVkNumLock));
    EXPECT_EQ(typed().substr(1, 6), "ABCDEF") << "behind the sender's own NumLock key";
}

TEST_F(Dispatch, CapsLockIsSwitchedOffForGood) {
    world.keyboard.setLock(kVkCapital, true);
    dispatch("a{CAPSLOCK}{CAPSLOCK}b");
    EXPECT_EQ(typed(), "AB");
    EXPECT_EQ(presses("14 01"), 1);
    EXPECT_FALSE(world.keyboard.lockOn(kVkCapital));
}

TEST_F(Dispatch, ATimedScriptIsTypedInPiecesWithPauses) {
    state.scenario.TimerPause = 250;
    dispatch("x{TIMER}123y{TIMER}");
    EXPECT_EQ(typed(), "X123Y");
    EXPECT_THAT(world.events.sleeps, ElementsAre(100, 250, 250, 250));
}

TEST_F(Dispatch, TimedPiecesKeepTheirCapsLockTokens) {
    dispatch("a{CAPSLOCK}{TIMER}{NUMLOCK}b");
    EXPECT_EQ(typed().substr(0, 2), "AL");
    EXPECT_EQ(presses("90 01"), 1);
    state.scenario.TimerPause = -5;
    EXPECT_NO_THROW(dispatch("a{TIMER}"));
}

TEST_F(Dispatch, AFileScenarioWritesWhatWasReceived) {
    state.scenario.active.FileMode = true;
    world.files.folders = {"/out"};
    world.profiles.write(scenarioFile("/app", "Stock"), "Fichier", "Chemin", "/out/lot.txt");
    dispatch("abc{NUMLOCK}");
    EXPECT_EQ(world.files.files["/out/lot.txt"], "A\r");
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_THAT(world.keyboard.keybdEvents, IsEmpty());
}

TEST_F(Dispatch, AnOpenPortIsResetAndAClosedOneLeftClosed) {
    world.port.waiting = "typed meanwhile";
    dispatch("a");
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0", "reopen"));
    EXPECT_EQ(world.port.waiting, "");
    world.port.open = false;
    world.port.log.clear();
    dispatch("a");
    EXPECT_THAT(world.port.log, IsEmpty());
}

TEST_F(Dispatch, AnEmptyFrameRunsTheWholeSequence) {
    state.scenario.active.ActionLines = {"", "&CODE"};
    state.ReceivedData.clear();
    world.progress.visible = true;
    TraiteEmul(world.platform, state);
    EXPECT_FALSE(world.progress.visible);
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0", "reopen"));
}

}  // namespace
}  // namespace kalvo
