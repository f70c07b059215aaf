#include "core/frame_dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "core/typing_turns.h"
#include "settings/options.h"
#include "tests/support/disk_journal.h"
#include "tests/support/site.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
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

TEST_F(Dispatch, ABatchWaitsForItsTurnAtTheKeyboardAndGivesItBack) {
    world.keyboard.othersTurns = 3;
    int asked = 0;
    world.events.whilePumping = [&] {
        if (world.keyboard.othersTurns < 3) ++asked;
        EXPECT_EQ(world.keyboard.typed(), "");
    };
    dispatch("ab");
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(world.keyboard.typed(), "AB");
    EXPECT_FALSE(world.keyboard.taken);
    EXPECT_THAT(world.icon.notices, IsEmpty());
    world.events.whilePumping = nullptr;
    world.keyboard.othersTurns = 300;
    dispatch("ab");
    EXPECT_EQ(world.keyboard.typed(), "AB");
    EXPECT_EQ(world.icon.notices.size(), 1U) << "a long wait is said once";
    world.keyboard.othersTurns = 1000;
    world.events.whilePumping = [&] { world.events.end = asked++ > 9; };
    EXPECT_THROW(dispatch("ab"), ProgramEnd);
    EXPECT_EQ(world.keyboard.typed(), "");
}

TEST_F(Dispatch, ATimedScriptIsTypedInPiecesWithPauses) {
    state.scenario.TimerPause = 250;
    dispatch("x{TIMER}123y{TIMER}");
    EXPECT_EQ(world.keyboard.typed(), "X123Y");
    EXPECT_THAT(world.events.sleeps, ElementsAre(100, 100, 100, 50, 100, 100, 50, 100, 100, 50));

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
    world.keyboard.application = "XTerm";
    dispatch("abc");
    EXPECT_THAT(file.kept(), ElementsAre("saisi A\r"));
    EXPECT_TRUE(report.whole());
    EXPECT_EQ(shortText(report), "1 enregistrement saisi");
    EXPECT_THAT(toUtf8(world.log.lines.back()),
                HasSubstr("Trame traitée : 1 enregistrement saisi dans « XTerm », 2 caractères, "));
    EXPECT_EQ(levelOf(report), LogLevel::kInformation) << "good news";

    state.scenario.active.FileMode = true;
    state.batch = journal.receive({}, "A\r", {}, 0);
    files.diskFull = true;
    dispatch("abc");
    EXPECT_EQ(file.kept()[1], "echec A\r");
    EXPECT_FALSE(report.whole());
    EXPECT_EQ(levelOf(report), LogLevel::kError);
}

TEST_F(Dispatch, TheSiteDecidesWhatTheUserIsToldAndAskedAfterABatch) {
    struct Case {
        const char* terminal;
        BatchReport::Outcome outcome;
        int notices, afterSuccess;  // the options
        bool notice, question;
    };
    const std::vector<Case> cases = {
        {"HT630", BatchReport::Outcome::kTyped, 1, 1, true, true},
        {"PT630", BatchReport::Outcome::kWritten, 0, 1, false, true},
        {"Optimus", BatchReport::Outcome::kTyped, 1, 0, true, false},
        {"HT630", BatchReport::Outcome::kInterrupted, 0, 1, true, false},
        {"HT630", BatchReport::Outcome::kFailed, 0, 0, true, true},
    };
    for (const auto& c : cases) {
        state.TerminalType = c.terminal;
        setOption(profiles, folder.path(), Option::kNotifications, c.notices);
        setOption(profiles, folder.path(), Option::kEraseAfterSuccess, c.afterSuccess);
        report.outcome = c.outcome;
        const Aftermath aftermath = aftermathOf(platform, state, report);
        EXPECT_EQ(aftermath.notice, c.notice) << c.terminal << c.notices;
        EXPECT_EQ(aftermath.eraseQuestion, c.question) << c.terminal << c.afterSuccess;
    }
    report.rest = std::make_shared<BatchTyping>(0, "", std::vector<std::uint32_t>{}, 0);
    EXPECT_FALSE(aftermathOf(platform, state, report).notice) << "its window tells of it";
}

TEST_F(Dispatch, TypingStopsBetweenKeysAndTellsHowFarItCame) {
    world.watch.goneAt = 3;
    state.scenario.active.ActionLines = {"", "&CODE", "{NUMLOCK}+(b", "c"};
    for (int i = 0; i < 500; ++i) state.ReceivedData += "abcdefgh\r";
    state.batch = journal.receive({}, state.ReceivedData, {}, 0);
    report = TraiteEmul(platform, state, journal);
    EXPECT_EQ(report.outcome, BatchReport::Outcome::kInterrupted);
    EXPECT_EQ(report.passes, 500);
    // A look before the first key and every 512 keys, ten keys a record.
    EXPECT_EQ(report.passesDone, 2 * 512 / 11);
    const JournalEntry kept = *file.find(1);
    EXPECT_EQ(kept.state, BatchState::kInterrupted);
    EXPECT_EQ(kept.passesDone, report.passesDone);
    std::map<int, int> down;
    for (const auto& batch : world.keyboard.batches)
        for (const KeyRecord& key : batch)
            down[key.virtualKey & 0xFF] += (key.flags & kKeyEventKeyUp) != 0 ? -1 : 1;
    for (const auto& [key, count] : down) EXPECT_EQ(count, 0) << "key " << key << " is down";

    // From the record it stopped in, to the end; not from behind it.
    (void)world.keyboard.typed();
    report = dispatchAgain(platform, state, journal, kept, file.bytes(1), 501);
    EXPECT_EQ(report.outcome, BatchReport::Outcome::kNothing);
    EXPECT_EQ(file.find(1)->state, BatchState::kInterrupted);
    JournalEntry typedWhole = kept;
    typedWhole.passesDone = 500;
    EXPECT_TRUE(dispatchAgain(platform, state, journal, typedWhole, file.bytes(1), 501).whole());
    report = dispatchAgain(platform, state, journal, kept, file.bytes(1), kept.passesDone + 1);
    EXPECT_TRUE(report.whole());
    const std::string rest = world.keyboard.typed();
    EXPECT_EQ(std::count(rest.begin(), rest.end(), 'A'), 500 - 2 * 512 / 11);
}

// Stopped anywhere and taken up again, the keys are those of a script typed in one go.
TEST_F(Dispatch, AStoppedScriptGoesOnWhereItWas) {
    const auto keysOf = [&](std::string script, ScriptSource source, int goneAt) {
        world.watch.looks = 0;
        world.watch.goneAt = goneAt;
        BatchTyping typing(BatchJournal::kNone, std::move(script), {0}, 0, source);
        BatchReport told;
        while (typing.run(platform, &journal, told) != TypingStop::kNone) world.watch.goneAt = 0;
        return world.keyboard.typed();
    };
    const std::string timed = "+(a{ab 90}{TAB 3}c)^{F1 90}{TIMER}d{~ 70}\xE9{ENTER}";
    for (const auto& [script, source] :
         {std::pair(timed, ScriptSource::kReceived), std::pair(timed, ScriptSource::kReplayed),
          std::pair(std::string("{NUMLOCK}{a 90}{TAB 3}c"), ScriptSource::kReplayed)}) {
        const std::string whole = keysOf(script, source, 0);
        for (int look = 1; look < 9; ++look)
            EXPECT_EQ(keysOf(script, source, look), whole) << script << look;
    }
}

// One batch after the other, into applications only; a suspended one comes first.
TEST_F(Dispatch, BatchesTakeTurnsAndASuspendedOneWaitsForItsApplication) {
    struct Watch : TypingWatch {
        bool away = true;
        bool* unplugs = nullptr;
        bool busy = false;
        TypingStop look() override {
            EXPECT_TRUE(busy) << "what shows that something is typed";
            if (unplugs != nullptr) *unplugs = false;
            return away ? TypingStop::kOtherApplication : TypingStop::kNone;
        }
        bool targetInFront() override { return !away; }
    } watch;
    const Platform watched{world.platform.keyboard,
                           world.platform.port,
                           world.platform.profiles,
                           world.platform.registry,
                           world.platform.databases,
                           world.platform.files,
                           world.platform.events,
                           world.platform.dialogs,
                           world.platform.icon,
                           world.platform.progress,
                           watch,
                           world.log};
    bool ready = false;
    std::string shown;
    std::vector<BatchReport::Outcome> done;
    std::vector<std::uint32_t> took;
    TypingTurns turns(watched, state, journal,
                      {.targetReady = [&] { return ready; },
                       .showSuspended = [&](std::string_view text) { shown = text; },
                       .hideSuspended = [&] { shown.clear(); },
                       .say = [](std::string_view, LogLevel) {},
                       .typing = [&](bool on) { watch.busy = on; },
                       .done =
                           [&](const BatchReport& told) {
                               done.push_back(told.outcome);
                               took.push_back(told.milliseconds);
                           }});
    world.events.step = 1;
    state.scenario.active.ActionLines = {"", "&CODE"};
    const auto receive = [&](const char* bytes) {
        state.ReceivedData = bytes;
        state.batch = journal.receive({}, bytes, {}, 0);
        turns.dispatch();
    };
    receive("a\r");  // no application in front
    EXPECT_EQ(file.find(1)->state, BatchState::kReceived);
    EXPECT_NE(file.find(1)->reason, "");
    ready = true;
    world.keyboard.problem = TypingStop::kTargetRefuses;
    turns.tick();
    EXPECT_FALSE(turns.suspended()) << "it goes on waiting";
    world.keyboard.problem = TypingStop::kNone;
    turns.tick();  // broken off at once
    EXPECT_TRUE(turns.suspended());
    EXPECT_EQ(shown.substr(0, 41), std::string("Saisie suspendue à l'enregistrement 1 sur"_ansi));
    receive("b\r");  // waits behind it
    turns.tick();
    EXPECT_EQ(world.keyboard.typed(), "");
    watch.away = false;
    turns.tick();
    EXPECT_EQ(shown, "");
    turns.tick();
    EXPECT_EQ(world.keyboard.typed(), "AB");
    turns.retypeLast();
    EXPECT_EQ(world.keyboard.typed(), "B");
    ready = false;
    for (const std::int32_t from : {1, 2}) turns.retype(7, "x\ry\r", from);
    EXPECT_EQ(world.keyboard.typed(), "");
    ready = true;
    turns.tick();
    turns.tick();
    EXPECT_EQ(world.keyboard.typed(), "Y") << "once, as it was wanted last";
    using Outcome = BatchReport::Outcome;
    EXPECT_THAT(done, ElementsAre(Outcome::kInterrupted, Outcome::kTyped, Outcome::kTyped,
                                  Outcome::kTyped, Outcome::kTyped));
    watch.away = true;
    receive("c\r");
    turns.retype(1, "a\r", 1);
    EXPECT_EQ(world.keyboard.typed(), "") << "one is suspended";
    EXPECT_GT(took.at(1), took.front()) << "what came before the suspension counts, too";
    turns.abandon();
    EXPECT_FALSE(turns.suspended());
    EXPECT_EQ(file.find(3)->state, BatchState::kInterrupted);

    // What is no batch takes its turn, too, and is suspended as one; nothing is done with it.
    const std::size_t batches = done.size();
    const auto typeOther = [&] {
        turns.typeOther([&]() -> std::optional<BatchReport> {
            BatchReport told;
            told.rest = std::make_shared<BatchTyping>(0, "d", std::vector<std::uint32_t>{0}, 0);
            told.stop = told.rest->run(watched, nullptr, told);
            return told;
        });
    };
    typeOther();
    EXPECT_TRUE(turns.suspended());
    typeOther();  // refused
    watch.away = false;
    turns.resume();
    EXPECT_FALSE(turns.suspended());
    EXPECT_EQ(world.keyboard.typed(), "D");
    EXPECT_EQ(done.size(), batches);

    // Without leave to type the user is asked, and it is typed once he agrees. What a
    // keyboard took along comes again.
    world.keyboard.plugged = false;
    turns.retype(1, "z\r", 1);
    EXPECT_EQ(world.keyboard.leavesAsked, 1);
    turns.tick();
    EXPECT_EQ(world.keyboard.typed(), "");
    world.keyboard.plugged = true;
    turns.tick();
    EXPECT_EQ(world.keyboard.typed(), "Z");
    watch.unplugs = &world.keyboard.plugged;
    receive("lost\r");
    EXPECT_TRUE(turns.suspended());
    turns.resume();
    EXPECT_EQ(world.keyboard.leavesAsked, 2);
    watch.unplugs = nullptr;
    world.keyboard.plugged = true;
    EXPECT_EQ(world.keyboard.typed(), "LOST");
    turns.resume();
    EXPECT_EQ(world.keyboard.typed(), "LOST");
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
