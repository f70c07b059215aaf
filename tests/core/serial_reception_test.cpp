#include "core/reception/serial_reception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "core/frame_dispatch.h"
#include "settings/options.h"
#include "settings/serial_settings.h"
#include "tests/support/disk_journal.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Reception : ::testing::Test, testing::Site {
    // What each dispatch found in ReceivedData.
    std::vector<std::string> dispatched;
    testing::DiskJournal kept{folder.path()};
    BatchJournal journal{&kept, world.events, [](std::string_view) {}};
    SerialReception reception{platform, state, journal,
                              [this] { dispatched.push_back(state.ReceivedData); }};

    Reception() { world.port.open = true; }
    void terminal(const char* type) { state.TerminalType = type; }

    // Hands chunks over one by one whenever the program sleeps; no event is delivered
    // then.
    void arriveWhileSleeping(std::vector<std::string> chunks) {
        world.events.whileSleeping = [this, chunks, next = std::size_t{0}]() mutable {
            if (next < chunks.size()) world.port.waiting += chunks[next++];
        };
    }
};

TEST_F(Reception, ThePortIsSetUpFromItsFileInOrder) {
    for (const auto& [key, value] : {std::pair{"Port"_ansi, " 3"},
                                     {"Vitesse"_ansi, " 19200"},
                                     {"Bit de parité"_ansi, "E"},
                                     {"Bit de donnée"_ansi, " 7"},
                                     {"Bit d'arrêt"_ansi, " 2"},
                                     {"Flux"_ansi, " 1"},
                                     {"Protocol"_ansi, "PT630"}})
        profiles.write(portSerieIni(folder.path()), port_serie::kSection, key, value);
    world.port.open = false;
    reception.configurePort();
    reception.openPort();
    EXPECT_THAT(world.port.log,
                ElementsAre("CommPort=3", "Settings=19200,E,7,2", "SThreshold=1", "RThreshold=1",
                            "Handshaking=1", "InputMode=0", "InputLen=1", "PortOpen=1"));
    EXPECT_EQ(state.TerminalType, "PT630");
    EXPECT_EQ(world.dialogs.beeps, 1);
    reception.openPort();
    EXPECT_EQ(world.dialogs.beeps, 1) << "an open port is left alone";
    profiles.write(portSerieIni(folder.path()), port_serie::kSection, "Flux", " 7");
    reception.configurePort();
    EXPECT_THAT(world.icon.notices.back(), ::testing::HasSubstr("Flux=7")) << "no mode";
}

TEST_F(Reception, AnHt630BatchEndsAtItsMark) {
    terminal("HT630");
    arriveWhileSleeping({"A;1\r\nB;2\r\nFINTRANS", "KALVOtrailing"});
    world.port.receive("");
    EXPECT_THAT(dispatched, ElementsAre("A;1\r\nB;2\r\n"));
    EXPECT_THAT(world.events.sleeps, ElementsAre(300, 300));
    EXPECT_THAT(kept.kept(), ElementsAre("recu A;1\r\nB;2\r\n", "ecarte trailing"));
    EXPECT_EQ(state.batch, 1) << "in the journal before anything acts on it";
}

TEST_F(Reception, EveryBatchIsCollectedOnceAndStraysAreLost) {
    terminal("ht630");
    world.port.receive("xy");
    EXPECT_THAT(dispatched, IsEmpty());
    EXPECT_THAT(kept.kept(), ElementsAre("ecarte xy"));
    int inside = 0;
    world.events.whilePumping = [&] {
        if (++inside == 1) world.port.receive("A\r\nFINTRANSKALVO");
    };
    world.port.receive("AB\r\n");
    EXPECT_THAT(dispatched, ElementsAre("AB\r\nA\r\n")) << "however many events come";

    dispatched.clear();
    for (const char* type : {"", "Optimus", "ScanPal", "XYZ"}) {
        terminal(type);
        world.port.receive("A\r\nFINTRANSKALVO");
    }
    EXPECT_THAT(dispatched, IsEmpty()) << "other terminals are not read by the event";
    EXPECT_FALSE(world.port.waiting.empty());
}

TEST_F(Reception, AFailingDispatchDoesNotBlockLaterBatches) {
    terminal("HT630");
    SerialReception failing(platform, state, journal, [&] {
        if (state.ReceivedData == "A\r\n") throw RuntimeError(error_number::kPortInvalid, "");
        dispatched.push_back(state.ReceivedData);
    });
    EXPECT_THROW(world.port.receive("A\r\nFINTRANSKALVO"), RuntimeError);
    world.port.receive("B\r\nFINTRANSKALVO");
    EXPECT_THAT(dispatched, ElementsAre("B\r\n"));
}

// The port may have been opened for another type, be closed while a batch is coming in, and
// the journal may have no room: the flow keeps to what is still to come.
TEST_F(Reception, WhatComesInIsKeptForWhoeverOpensAndClosesThePort) {
    terminal("Optimus");
    world.port.setPortOpen(true);
    world.port.receive("seen by the scanner only");
    world.port.setPortOpen(false);
    EXPECT_EQ(kept.latestFlow(99), "");

    terminal("HT630");
    world.port.setPortOpen(true);
    world.events.whilePumping = [&, round = 0]() mutable {
        if (++round != 2) return;
        world.port.arrive("dropped");
        world.port.setPortOpen(false);
        world.port.setPortOpen(true);
        world.port.arrive("C\r\nFINTRANSKALVO");
    };
    world.port.receive("AB\r\n");
    EXPECT_THAT(dispatched, ElementsAre("AB\r\nC\r\n"));
    EXPECT_THAT(kept.kept(), ElementsAre("ecarte dropped", "recu AB\r\nC\r\n"));
    EXPECT_EQ(kept.latestFlow(99), "");

    world.events.whilePumping = nullptr;
    kept.diskFull = true;
    world.port.receive("D\r\nFINTRANSKALVO");
    EXPECT_EQ(kept.latestFlow(99), "");
}

struct Pt630 : Reception {
    const std::string file = folder / "5320241479.tmp";
    Pt630() { terminal("PT630"); }
};

TEST_F(Pt630, ABatchGoesThroughATemporaryFile) {
    arriveWhileSleeping({"B\r2\r\n", "", "too late"});
    world.port.receive("A\r1\r\n");
    EXPECT_THAT(dispatched, ElementsAre("A\r1\r\nB\r2\r\n"))
        << "silence of 500 ms ends a batch, whatever comes after it";
    EXPECT_THAT(world.events.sleeps, ElementsAre(1, 500, 1000));
    EXPECT_FALSE(files.fileExists(file));
    EXPECT_THAT(world.progress.labels, ElementsAre("", "Préparation de la mémoire"_ansi));
    EXPECT_TRUE(world.progress.visible) << "the dispatch takes the window away";
}

TEST_F(Pt630, NeitherAFullDiskNorAnEndlessLineHarmsABatch) {
    files.diskFull = true;
    arriveWhileSleeping({"B\r2\r\n", ""});
    world.port.receive("A\r1\r\n");
    EXPECT_THAT(dispatched, ElementsAre("A\r1\r\nB\r2\r\n"));
    EXPECT_THAT(kept.kept(), ElementsAre("recu A\r1\r\nB\r2\r\n"));

    int rounds = 0;
    world.events.whileSleeping = [&] { world.port.waiting += "x"; };
    world.events.whilePumping = [&] {
        if (++rounds == 100) throw ProgramEnd{};
    };
    EXPECT_THROW(world.port.receive("x"), ProgramEnd);
}

TEST_F(Pt630, AnEmptyBatchLeavesNothingBehindAndAnAnnouncementItsFile) {
    for (const char* batch : {"<DEL>\r\n", "", "PT630 V2\xFF"}) {
        EXPECT_THAT(world.dialogs.shown, IsEmpty());
        EXPECT_FALSE(files.fileExists(file));
        world.port.receive(batch);
        EXPECT_THAT(dispatched, IsEmpty());
        EXPECT_FALSE(world.progress.visible);
    }
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Terminal connecté"_ansi));
    EXPECT_TRUE(files.fileExists(file));
    EXPECT_THAT(kept.kept(), IsEmpty());
    world.port.receive("A\r1\r\nPT630 V2\xFF");
    EXPECT_THAT(kept.kept(), ElementsAre("ecarte A\r1\r\nPT630 V2\xFF"));
}

TEST_F(Pt630, TheLastEventDecidesWhatBecomesOfABatch) {
    for (const auto& [event, dispatches, message] :
         {std::tuple{2, true, ""},
          {3, true, ""},
          {1, false, ""},
          {1001, false, "Réception d'un signal d'arrêt"},
          {1008, false, "Dépassement de la capacité du tampon de réception"},
          {1010, false, "Tampon de transmission plein"},
          {1009, false, "Erreur ou evenement inconnu"}}) {
        dispatched.clear();
        world.dialogs.shown = {{"", "", MessageIcon::kNone}};
        world.port.event = event;
        world.port.receive("A\r\n");
        EXPECT_EQ(!dispatched.empty(), dispatches) << event;
        EXPECT_EQ(toUtf8(world.dialogs.shown.back().text), message) << event;
        EXPECT_FALSE(files.fileExists(file));
    }
}

struct Pulling : Reception {
    static constexpr std::string_view kRecord = "CODE-1               000012 ";

    // A scanner that answers READ with the first line and each ACK with the next.
    void scanner(std::vector<std::string> lines) {
        world.port.whenSent = [this, lines, next = std::size_t{0}](std::string_view sent) mutable {
            if (sent != "READ\r" && sent != "ACK\r") ADD_FAILURE() << "sent " << sent;
            if (next < lines.size()) world.port.waiting += lines[next++];
        };
    }
};

TEST_F(Pulling, RecordsAreAcknowledgedUntilTheScannerIsDone) {
    ASSERT_EQ(kRecord.size(), 28U);
    const std::string record(kRecord);
    terminal("Optimus");
    scanner({"ACK\r" + record + "\r", record + "\r", "OVER\r"});
    reception.transfer();
    EXPECT_THAT(dispatched, ElementsAre("CODE-1\r000012\r\nCODE-1\r000012\r\n"));
    EXPECT_EQ(world.port.sent, "READ\rACK\rACK\r");
    EXPECT_TRUE(state.TransferEnded);

    // The list spells it ScanPal, older files Scanpal; two OVER lines end it.
    for (const char* spelling : {"ScanPal", "Scanpal"}) {
        terminal(spelling);
        world.port.sent.clear();
        scanner({"ACK\r" + record + "\r", "OVER\rOVER\r"});
        reception.transfer();
        EXPECT_EQ(dispatched.back(), "CODE-1\r000012\r\n");
        EXPECT_EQ(world.port.sent, "READ\rACK\r");
    }
}

TEST_F(Pulling, RecordsAreCutByPosition) {
    struct Case {
        const char* line;
        const char* record;
    };
    for (const auto& [line, record] : {
             Case{"\tABC                  000007", "ABC\r000007\r\n"},
             Case{"\x09"
                  "12345678901234567890Q123456",
                  "12345678901234567890\r123456\r\n"},
             Case{"12345678901234567890;123456 ", "12345678901234567890\r123456\r\n"},
             Case{"   12345678901234567890;12  ", "12345678901234567890\r12\r\n"},
             Case{"  ;                         ", "                    \r      \r\n"},
             Case{"                            ", "\r\r\n"},
         }) {
        ASSERT_EQ(std::string(line).size(), 28U) << line;
        terminal("Optimus");
        dispatched.clear();
        scanner({"ACK\r" + std::string(line) + "\r", "OVER\r"});
        reception.transfer();
        EXPECT_THAT(dispatched, ElementsAre(record)) << line;
    }
    // Short lines are dropped without an answer; an empty transfer is dispatched all the same.
    world.port.sent.clear();
    scanner({"ACK\r" + std::string(27, 'x') + "\rACK\rOVER\r"});
    reception.transfer();
    EXPECT_EQ(world.port.sent, "READ\r");
    EXPECT_EQ(dispatched.back(), "");
}

TEST_F(Pulling, CanBeEndedOrBegunAnewWithoutLosingAcknowledgedRecords) {
    terminal("Optimus");
    scanner({std::string(kRecord) + "\r", "", std::string(kRecord) + "\r", "OVER\r"});
    int pumped = 0;
    world.events.whilePumping = [&] {
        EXPECT_TRUE(reception.transferring());
        if (++pumped == 5) reception.transfer();  // the scanner did not hear its READ
    };
    reception.transfer();
    EXPECT_THAT(dispatched, ElementsAre("CODE-1\r000012\r\n", "CODE-1\r000012\r\n"));
    EXPECT_EQ(world.port.sent, "READ\rACK\rREAD\rACK\r");
    EXPECT_THAT(kept.kept(), ElementsAre("recu CODE-1\r000012\r\n", "recu CODE-1\r000012\r\n"));
    EXPECT_FALSE(reception.transferring());

    dispatched.clear();
    scanner({});
    world.events.whilePumping = [&] { reception.cancelTransfer(); };
    reception.transfer();
    EXPECT_THAT(dispatched, IsEmpty());
}

TEST_F(Pulling, ARecordIsKeptBeforeItIsAcknowledged) {
    terminal("Optimus");
    world.port.whenSent = [&](std::string_view sent) {
        if (sent == "READ\r") world.port.waiting = std::string(kRecord) + "\rshort\rOVER\r";
        if (sent != "ACK\r") return;
        EXPECT_THAT(kept.kept(), ElementsAre("recu CODE-1\r000012\r\n"));
    };
    reception.transfer();
    EXPECT_THAT(kept.kept(), ElementsAre("recu CODE-1\r000012\r\n", "ecarte short\r\n"));
    // The rest of one transfer is still there for the next, unless the site wants otherwise.
    for (const bool empty : {false, true}) {
        setOption(profiles, folder.path(), Option::kEmptyBuffer, empty ? 1 : 0);
        scanner({std::string(kRecord) + "\r", "OVER\r"});
        const std::size_t before = kept.kept().size();
        reception.transfer();
        EXPECT_EQ(kept.kept()[before] == "recu CODE-1\r000012\r\n", empty);
    }
}

TEST_F(Pulling, WhatWasReceivedBeforeALossOrTheEndIsKeptAndNotTyped) {
    terminal("Optimus");
    const std::string record = "CODE-1\r000012\r\n";
    scanner({std::string(kRecord) + "\rshort\r"});
    world.events.end = true;
    EXPECT_THROW(reception.transfer(), ProgramEnd);
    EXPECT_THAT(kept.kept(), ElementsAre("recu " + record, "ecarte short\r\n"));
    EXPECT_THAT(world.icon.notices, IsEmpty()) << "the next start tells of it";

    world.port.whenSent = [&](std::string_view sent) {
        world.port.waiting = std::string(kRecord) + "\r";
        world.port.open = sent != "ACK\r";
    };
    EXPECT_THROW(reception.transfer(), RuntimeError);
    EXPECT_EQ(kept.kept().back(), "echec " + record + record);
    EXPECT_THAT(world.icon.notices, ElementsAre(::testing::HasSubstr("(lot 3 du journal)")));
    EXPECT_THAT(dispatched, IsEmpty());
}

TEST_F(Pulling, AScannerIsNotAskedForWhatNobodyCanType) {
    world.keyboard.plugged = false;
    terminal("Optimus");
    reception.transfer();
    EXPECT_THAT(dispatched, IsEmpty());
    EXPECT_EQ(world.port.sent, "");
    EXPECT_EQ(world.icon.notices.size(), 1U);
    // A portable sends all the same: its batch waits.
    state.ReceivedData = "A\r\n";
    state.batch = journal.receive({}, "A\r\n", {}, 0);
    const BatchReport report = TraiteEmul(platform, state, journal);
    EXPECT_EQ(report.outcome, BatchReport::Outcome::kFailed);
    EXPECT_THAT(kept.kept(), ElementsAre("echec A\r\n"));
    EXPECT_THAT(world.port.log, IsEmpty()) << "nothing was typed, nothing is dropped";
}

TEST_F(Pulling, ATransferNeedsAPolledScannerAndAnOpenPort) {
    terminal("HT630");
    reception.transfer();
    EXPECT_EQ(world.port.sent, "");
    terminal("Optimus");
    world.port.open = false;
    EXPECT_THROW(reception.transfer(), RuntimeError);
    EXPECT_FALSE(reception.transferring());
}

}  // namespace
}  // namespace kalvo
