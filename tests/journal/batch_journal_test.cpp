// The journal on its real file: what was confirmed is there whatever happens then.
#include "journal/batch_journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

#include "platform/sqlite/journal_database.h"
#include "tests/support/disk_journal.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct Journal : ::testing::Test {
    testing::TemporaryFolder folder;
    testing::FakeEventPump events;
    std::vector<std::string> warnings;
    const BatchOrigin origin{3, "HT630", std::string("Réception"_ansi)};

    SqliteJournal open(SqliteJournal::Use use = SqliteJournal::Use::kReceive) {
        return {folder.path(), use};
    }
    BatchJournal over(JournalFile* file) {
        return {file, events, [this](std::string_view text) { warnings.emplace_back(text); }};
    }
};

TEST_F(Journal, KeepsBatchesAndWhatBecameOfThem) {
    SqliteJournal file = open();
    BatchJournal journal = over(&file);
    const std::string bytes("A\r1\r\nB\xFF\r\0\r\n", 12);
    journal.keepFlow(bytes + "FINTRANSKALVOtail and more");
    const std::int64_t id = journal.receive(origin, bytes, "tail", bytes.size() + 13 + 4);
    EXPECT_EQ(id, 1);
    journal.discardUnread(origin, 9, "non lu à la fermeture du port"_ansi);
    journal.typing(id, 2, 1);
    journal.typing(id, 2, 2);  // too soon to be worth a write
    EXPECT_EQ(file.find(id)->passesDone, 1);
    journal.interrupted(id, 2, 1, "arrêtée"_ansi);

    std::int64_t polled = journal.receiveRecords(BatchJournal::kNone, origin, "C\r3\r\n");
    polled = journal.receiveRecords(polled, origin, "C\r3\r\nD\r4\r\n");
    journal.typed(polled, 2);
    EXPECT_EQ(file.bytes(polled), "C\r3\r\nD\r4\r\n");
    EXPECT_EQ(file.find(polled)->records, 2);

    SqliteJournal beside = open(SqliteJournal::Use::kLook);
    const auto entries = beside.list(0);
    ASSERT_THAT(entries, SizeIs(4));
    const JournalEntry& first = entries.back();
    EXPECT_EQ(first.received, "2024-03-05 14:07:09");
    EXPECT_EQ(first.origin.port, 3);
    EXPECT_EQ(first.origin.scenario, origin.scenario);
    EXPECT_EQ(first.state, BatchState::kInterrupted);
    EXPECT_EQ(first.records, 2);
    EXPECT_EQ(first.reason, std::string("arrêtée"_ansi));
    EXPECT_EQ(beside.bytes(1), bytes) << "exactly what was received";
    EXPECT_EQ(beside.bytes(2), "tail");
    EXPECT_EQ(beside.bytes(3), " and more");
    EXPECT_EQ(beside.bytes(9), "");
    EXPECT_THAT(warnings, IsEmpty());
#ifndef _WIN32
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        EXPECT_EQ(entry.status().permissions() & std::filesystem::perms(0077),
                  std::filesystem::perms::none)
            << entry.path();
#endif
}

TEST_F(Journal, TellsAtTheNextStartWhatWasNotFinished) {
    {
        SqliteJournal file = open();
        BatchJournal journal = over(&file);
        journal.typing(journal.receive(origin, "A\r\n", {}, 0), 9, 4);
        journal.typed(journal.receive(origin, "B\r\n", {}, 0), 1);
        journal.keepFlow("half a bat");
    }
    SqliteJournal file = open();
    EXPECT_EQ(file.countUnfinished(), 1U);
    EXPECT_EQ(over(&file).recover(), 2U);
    EXPECT_EQ(file.countUnfinished(), 2U);
    EXPECT_EQ(file.find(1)->state, BatchState::kInterrupted);
    EXPECT_EQ(file.find(1)->passesDone, 4);
    EXPECT_EQ(file.bytes(3), "half a bat");
    BatchJournal next = over(&file);
    next.keepFlow("new");
    EXPECT_EQ(next.recover(), 2U) << "and leaves nothing to be found twice";
    EXPECT_THAT(file.list(0), SizeIs(3));
}

TEST_F(Journal, ForgetsWhatIsOldOrTooMuchButNotWhatWaits) {
    SqliteJournal file = open();
    BatchJournal journal = over(&file);
    const std::string megabyte(1024 * 1024, 'x');
    events.time = {2024, 1, 31, 0, 0, 0};
    journal.receive(origin, "old", {}, 0);
    events.time = {2024, 3, 1, 0, 0, 0};
    journal.typed(journal.receive(origin, megabyte, {}, 0), 1);
    journal.failed(journal.receive(origin, megabyte, {}, 0), "x");
    journal.typed(journal.receive(origin, "new", {}, 0), 1);
    EXPECT_EQ(journal.purge(30, 1), 1U) << "30 days before 1 March is 31 January";
    EXPECT_EQ(journal.purge(29, 100), 1U);
    const auto left = file.list(0);
    ASSERT_THAT(left, SizeIs(2));
    EXPECT_EQ(left[1].state, BatchState::kFailed) << "waits for the user";
    EXPECT_EQ(left[0].size, 3U);
    EXPECT_EQ(file.bytes(1), "");
}

TEST_F(Journal, ThatCannotBeWrittenIsSaidOnceAndKeepsNobodyFromWork) {
    testing::DiskJournal file{folder.path()};
    BatchJournal journal = over(&file);
    file.diskFull = true;
    EXPECT_EQ(journal.receive(origin, "A", {}, 0), BatchJournal::kNone);
    journal.typed(BatchJournal::kNone, 1);
    EXPECT_EQ(journal.receiveRecords(BatchJournal::kNone, origin, "B\r\n"), BatchJournal::kNone);
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("la saisie continue")));
    file.diskFull = false;
    EXPECT_NE(journal.receive(origin, "C", {}, 0), BatchJournal::kNone);
    file.diskFull = true;
    journal.receive(origin, "D", {}, 0);
    EXPECT_THAT(warnings, SizeIs(2)) << "another failure is news again";
    journal.typed(1, 1);
    file.diskFull = false;
    journal.receive(origin, "E", {}, 0);
    EXPECT_EQ(file.find(1)->state, BatchState::kTyped) << "late, but not lost";

    file.diskFull = true;
    journal.typing(1, 9, 1);
    file.diskFull = false;
    events.tick += 300;
    journal.typing(1, 9, 2);
    EXPECT_EQ(file.find(1)->state, BatchState::kTyped) << "keys do not wait for it each time";
    events.tick += 20'000;
    journal.typing(1, 9, 3);
    EXPECT_EQ(file.find(1)->passesDone, 3);

    std::int64_t polled = BatchJournal::kNone;
    std::string records;
    for (const bool full : {true, false, true, false}) {
        file.diskFull = full;
        records += std::to_string(records.size()) + "\r\n";
        polled = journal.receiveRecords(polled, origin, records);
    }
    EXPECT_EQ(file.bytes(polled), records) << "no record is missing in the middle";
    EXPECT_EQ(file.find(polled)->records, 4);
    EXPECT_EQ(over(nullptr).receive(origin, "F", {}, 0), BatchJournal::kNone);
}

TEST_F(Journal, ADamagedFileIsPutAsideAndSaid) {
    testing::writeBytes(folder / "Journal.db", std::string(5000, 'x'));
    SqliteJournal file = open();
    EXPECT_THAT(file.notice(), HasSubstr("Journal-abime-1.db"));
    EXPECT_EQ(over(&file).receive(origin, "A", {}, 0), 1);
    EXPECT_TRUE(std::filesystem::exists(folder / "Journal-abime-1.db"));
}

#ifndef _WIN32
// A process that receives record after record is killed at any instant; what it had
// confirmed is there, once.
TEST_F(Journal, WhatWasConfirmedSurvivesAKill) {
    for (int round = 0; round < 12; ++round) {
        const std::string prefix = std::to_string(round) + "-";
        const std::string said = folder / ("confirmed" + prefix);
        const pid_t child = fork();
        if (child == 0) {
            SqliteJournal file = open();
            BatchJournal journal = over(&file);
            journal.recover();
            std::ofstream confirmed(said, std::ios::binary);
            std::string five;
            for (int i = 0;; ++i) {
                const std::string text = prefix + std::to_string(i) + ";";
                journal.keepFlow(text);
                confirmed << text << std::flush;
                five += text;
                if (i % 5 != 4) continue;
                journal.typed(journal.receive(origin, five, {}, five.size()), 1);
                five.clear();
            }
        }
        usleep(static_cast<useconds_t>(20000 + 7000 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        SqliteJournal file = open();
        over(&file).recover();
        std::string kept;
        for (const JournalEntry& entry : file.list(0)) {
            const std::string bytes = file.bytes(entry.id);
            if (bytes.starts_with(prefix)) kept.insert(0, bytes);
        }
        // The child may have been killed between keeping and confirming.
        const std::string confirmed = testing::bytesOf(said);
        EXPECT_EQ(kept.substr(0, confirmed.size()), confirmed);
        EXPECT_LE(kept.size(), confirmed.size() + 10) << "nothing is there twice";
    }
}
#endif

}  // namespace
}  // namespace kalvo
