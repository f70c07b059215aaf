#include "core/frame_dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "settings/application_paths.h"
#include "settings/options.h"
#include "tests/support/fake_journal_file.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Dispatch : public ::testing::Test {
protected:
    testing::FakePlatform world;
    RunTimeState state;
    testing::FakeJournalFile file;
    BatchJournal journal{&file, world.events, [](std::string_view) {}};
    BatchReport report;

    Dispatch() {
        state.scenario.applicationFolder = "/app";
        state.scenario.active.ScenarioName = "Stock";
        world.port.open = true;
    }

    // Dispatches a frame through a scenario whose one action is the given text.
    void dispatch(const char* action) {
        state.scenario.active.ActionLines = {"", action};
        state.ReceivedData = "A\r";
        report = TraiteEmul(world.platform, state, journal);
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
    report = TraiteEmul(world.platform, state, journal);
    EXPECT_FALSE(world.progress.visible);
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0", "reopen"));
}

TEST_F(Dispatch, WhatBecomesOfABatchIsKeptAndReported) {
    state.batch = journal.receive({}, "A\r", {}, 0);
    world.port.arrive("meanwhile");
    file.inFlow = "meanwhile";
    dispatch("abc");
    EXPECT_EQ(file.batches[0].entry.state, BatchState::kTyped);
    EXPECT_EQ(file.batches[1].bytes, "meanwhile") << "dropped, but not forgotten";
    EXPECT_EQ(file.batches[1].entry.state, BatchState::kDiscarded);
    EXPECT_TRUE(report.whole());
    EXPECT_EQ(shortText(report), "1 enregistrement saisi");

    state.scenario.active.FileMode = true;
    state.batch = journal.receive({}, "A\r", {}, 0);
    world.files.diskFull = true;
    world.profiles.write(scenarioFile("/app", "Stock"), "Fichier", "Chemin", "/out/lot.txt");
    dispatch("abc");
    EXPECT_EQ(file.batches[2].entry.state, BatchState::kFailed);
    EXPECT_FALSE(report.whole());
}

TEST_F(Dispatch, AFileGetsTheTextThatWasBuiltWhereTheSiteWantsIt) {
    state.scenario.active.FileMode = true;
    world.files.folders = {"/out"};
    world.profiles.write(scenarioFile("/app", "Stock"), "Fichier", "Chemin", "/out/lot.txt");
    setOption(world.profiles, "/app", Option::kBuiltText, 1);
    dispatch("abc");
    EXPECT_EQ(world.files.files["/out/lot.txt"], "abc");
}

// Keys typed before something happens, and the watch that notices.
TEST_F(Dispatch, TypingStopsBetweenKeysAndTellsHowFarItCame) {
    struct Watch : TypingWatch {
        int looks = 0;
        TypingStop look() override {
            return ++looks == 3 ? TypingStop::kTargetGone : TypingStop::kNone;
        }
    } watch;
    const Platform platform{world.keyboard,  world.port,     world.profiles, world.registry,
                            world.databases, world.files,    world.events,   world.dialogs,
                            world.icon,      world.progress, watch};
    state.scenario.active.ActionLines = {"", "&CODE", "{NUMLOCK}+(b", "c"};
    state.ReceivedData.clear();
    for (int i = 0; i < 500; ++i) state.ReceivedData += "abcdefgh\r";
    state.batch = journal.receive({}, state.ReceivedData, {}, 0);
    report = TraiteEmul(platform, state, journal);
    EXPECT_EQ(report.outcome, BatchReport::Outcome::kInterrupted);
    EXPECT_EQ(report.passes, 500);
    // Three looks, 64 keys apart, ten keys a record.
    EXPECT_EQ(report.passesDone, 3 * 64 / 11);
    EXPECT_EQ(file.batches[0].entry.state, BatchState::kInterrupted);
    EXPECT_EQ(file.batches[0].entry.passesDone, report.passesDone);
    std::map<int, int> down;
    for (const auto& batch : world.keyboard.batches)
        for (const KeyRecord& key : batch)
            down[key.virtualKey & 0xFF] += (key.flags & kKeyEventKeyUp) != 0 ? -1 : 1;
    for (const auto& [key, count] : down) EXPECT_EQ(count, 0) << "key " << key << " is down";

    // From the record it stopped in, to the end.
    world.keyboard.batches.clear();
    report = dispatchAgain(world.platform, state, journal, file.batches[0].entry,
                           file.batches[0].bytes, report.passesDone + 1);
    EXPECT_TRUE(report.whole());
    const std::string rest = typed();
    EXPECT_EQ(std::count(rest.begin(), rest.end(), 'A'), 500 - 3 * 64 / 11);
}

TEST_F(Dispatch, TheEndOfTheProgramStopsAScriptOfAnyLength) {
    world.events.end = true;
    state.batch = journal.receive({}, "A\r", {}, 0);
    EXPECT_THROW(dispatch("{a 2000000000}"), ProgramEnd);
    EXPECT_LT(world.keyboard.batches.size(), 200U);
    EXPECT_EQ(file.batches[0].entry.state, BatchState::kInterrupted);
}

}  // namespace
}  // namespace kalvo
