#include "core/frame_dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "settings/options.h"
#include "tests/support/disk_journal.h"
#include "tests/support/site.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Dispatch : ::testing::Test, testing::Site {
    testing::DiskJournal file{folder.path()};
    BatchJournal journal{&file, world.events, [](std::string_view) {}};
    BatchReport report;

    Dispatch() {
        state.scenario.active.ScenarioName = "Stock";
        world.compiled("Stock", "Fichier", "Chemin", folder / "lot.txt");
        world.port.open = true;
    }

    // Dispatches a frame through a scenario whose one action is the given text.
    void dispatch(const char* action) {
        state.scenario.active.ActionLines = {"", action};
        state.ReceivedData = "A\r";
        report = TraiteEmul(platform, state, journal);
    }
    [[nodiscard]] std::ptrdiff_t presses(const char* event) const {
        return std::count(world.keyboard.keybdEvents.begin(), world.keyboard.keybdEvents.end(),
                          event);
    }
};

TEST_F(Dispatch, LockTokensArePressedAndTheRestIsTyped) {
    dispatch("abc{NUMLOCK}def{NUMLOCK}{CAPSLOCK}g");
    EXPECT_EQ(world.keyboard.typed(), "ABCDEFG");
    EXPECT_EQ(presses("90 01"), 2);
    EXPECT_EQ(presses("14 01"), 0) << "CapsLock was off";
    EXPECT_THAT(world.events.sleeps, ElementsAre(100));

    dispatch("abc{NUMLOCK}def");
    EXPECT_TRUE(world.keyboard.lockOn(kVkNumLock)) << "stays as its tokens leave it";
    EXPECT_EQ(world.keyboard.typed(), "ABCDEF");

    world.keyboard.setLock(kVkCapital, true);
    dispatch("a{CAPSLOCK}{CAPSLOCK}b");
    EXPECT_EQ(world.keyboard.typed(), "AB");
    EXPECT_EQ(presses("14 01"), 1);
    EXPECT_FALSE(world.keyboard.lockOn(kVkCapital)) << "for good";
}

TEST_F(Dispatch, ATimedScriptIsTypedInPiecesWithPauses) {
    state.scenario.TimerPause = 250;
    dispatch("x{TIMER}123y{TIMER}");
    EXPECT_EQ(world.keyboard.typed(), "X123Y");
    EXPECT_THAT(world.events.sleeps, ElementsAre(100, 250, 250, 250));

    dispatch("a{CAPSLOCK}{TIMER}{NUMLOCK}b");
    EXPECT_EQ(world.keyboard.typed().substr(0, 2), "A^") << "pieces keep their CapsLock tokens";
    EXPECT_EQ(presses("90 01"), 1);
    state.scenario.TimerPause = -5;
    EXPECT_NO_THROW(dispatch("a{TIMER}"));
}

TEST_F(Dispatch, AFileScenarioWritesWhatWasReceivedOrBuilt) {
    state.scenario.active.FileMode = true;
    dispatch("abc{NUMLOCK}");
    EXPECT_EQ(world.content("lot.txt"), "A\r");
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_THAT(world.keyboard.keybdEvents, IsEmpty());
    setOption(profiles, folder.path(), Option::kBuiltText, 1);
    dispatch("abc");
    EXPECT_EQ(world.content("lot.txt"), "abc");
}

TEST_F(Dispatch, AnOpenPortIsResetAndAClosedOneLeftClosed) {
    world.port.waiting = "typed meanwhile";
    world.progress.visible = true;
    state.scenario.active.ActionLines = {"", "&CODE"};
    report = TraiteEmul(platform, state, journal);  // also for an empty frame
    EXPECT_FALSE(world.progress.visible);
    EXPECT_THAT(world.keyboard.batches, IsEmpty());
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0", "reopen"));
    EXPECT_EQ(world.port.waiting, "");
    world.port.open = false;
    world.port.log.clear();
    dispatch("a");
    EXPECT_THAT(world.port.log, IsEmpty());
}

TEST_F(Dispatch, WhatBecomesOfABatchIsKeptAndReported) {
    state.batch = journal.receive({}, "A\r", {}, 0);
    dispatch("abc");
    EXPECT_THAT(file.kept(), ElementsAre("saisi A\r"));
    EXPECT_TRUE(report.whole());
    EXPECT_EQ(shortText(report), "1 enregistrement saisi");

    state.scenario.active.FileMode = true;
    state.batch = journal.receive({}, "A\r", {}, 0);
    files.diskFull = true;
    dispatch("abc");
    EXPECT_EQ(file.kept()[1], "echec A\r");
    EXPECT_FALSE(report.whole());
}

TEST_F(Dispatch, TypingStopsBetweenKeysAndTellsHowFarItCame) {
    world.watch.goneAt = 3;
    state.scenario.active.ActionLines = {"", "&CODE", "{NUMLOCK}+(b", "c"};
    for (int i = 0; i < 500; ++i) state.ReceivedData += "abcdefgh\r";
    state.batch = journal.receive({}, state.ReceivedData, {}, 0);
    report = TraiteEmul(platform, state, journal);
    EXPECT_EQ(report.outcome, BatchReport::Outcome::kInterrupted);
    EXPECT_EQ(report.passes, 500);
    // Three looks, 64 keys apart, ten keys a record.
    EXPECT_EQ(report.passesDone, 3 * 64 / 11);
    const JournalEntry kept = *file.find(1);
    EXPECT_EQ(kept.state, BatchState::kInterrupted);
    EXPECT_EQ(kept.passesDone, report.passesDone);
    std::map<int, int> down;
    for (const auto& batch : world.keyboard.batches)
        for (const KeyRecord& key : batch)
            down[key.virtualKey & 0xFF] += (key.flags & kKeyEventKeyUp) != 0 ? -1 : 1;
    for (const auto& [key, count] : down) EXPECT_EQ(count, 0) << "key " << key << " is down";

    // From the record it stopped in, to the end.
    (void)world.keyboard.typed();
    report = dispatchAgain(platform, state, journal, kept, file.bytes(1), report.passesDone + 1);
    EXPECT_TRUE(report.whole());
    const std::string rest = world.keyboard.typed();
    EXPECT_EQ(std::count(rest.begin(), rest.end(), 'A'), 500 - 3 * 64 / 11);
}

TEST_F(Dispatch, TheEndOfTheProgramStopsAScriptOfAnyLength) {
    world.events.end = true;
    state.batch = journal.receive({}, "A\r", {}, 0);
    EXPECT_THROW(dispatch("{a 2000000000}"), ProgramEnd);
    EXPECT_LT(world.keyboard.batches.size(), 200U);
    EXPECT_EQ(file.find(1)->state, BatchState::kInterrupted);
}

}  // namespace
}  // namespace kalvo
