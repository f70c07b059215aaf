#include "tools/terminal_dialogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/serial/memory_line.h"

namespace kalvo {
namespace {

using testing::MemoryLine;

const std::vector<TerminalRecord> kRecords = {{"A", "1"}, {"3760001", "12"}};
const std::string kFirst = "A                    1      \r";
const std::string kSecond = "3760001              12     \r";

// A host that acknowledges every record line.
std::string acknowledge(std::string_view written) {
    return written.size() == kFirst.size() ? "ACK\r" : "";
}

std::string wireOf(const DialogueOptions& options, MemoryLine& line) {
    TerminalDialogue(line, options).run(kRecords);
    return line.wire;
}
// The same on a line of its own, on which this is received at first.
std::string wireOf(const DialogueOptions& options, const char* incoming = "") {
    MemoryLine line(acknowledge);
    line.incoming = incoming;
    return wireOf(options, line);
}

TEST(TerminalRecords, AreReadAsTheyStand) {
    EXPECT_EQ(parseRecords("A;1\r\n\nB\xE9;;\n;\r\n\r\nlast", ';'),
              (std::vector<TerminalRecord>{{"A", "1"}, {"B\xE9", "", ""}, {"", ""}, {"last"}}));
    EXPECT_EQ(parseRecords("A;1\tB", '\t'), (std::vector<TerminalRecord>{{"A;1", "B"}}));
    EXPECT_TRUE(parseRecords("", ';').empty());
}

TEST(TerminalRecords, PolledLinesHaveTheirColumns) {
    const std::string code(20, 'c');
    EXPECT_EQ(encodePolledRecord({code, "123456"}, false), code + " 123456 ");
    EXPECT_EQ(encodePolledRecord({code, "123456"}, true), "\t" + code + " 123456");
    EXPECT_EQ(encodePolledRecord({"A"}, false), "A" + std::string(27, ' '));
    for (const TerminalRecord& bad :
         {TerminalRecord{code + "c", "1"}, TerminalRecord{"A", "1234567"},
          TerminalRecord{"A", "1", "x"}, TerminalRecord{}})
        EXPECT_THROW((void)encodePolledRecord(bad, false), std::length_error);
}

TEST(TerminalDialogue, BatchTerminalsSendOnTheirOwn) {
    const std::string batch = "A\r1\r\n3760001\r12\r\n";
    EXPECT_EQ(wireOf({.kind = TerminalKind::kHt630}), batch + "FINTRANSKALVO");
    MemoryLine repeated;
    EXPECT_EQ(
        wireOf({.kind = TerminalKind::kPt630, .batches = 2, .waitMilliseconds = 700}, repeated),
        batch + batch);
    EXPECT_EQ(repeated.times.front(), 5700);
    EXPECT_EQ(repeated.times.back(), 6400);

    EXPECT_EQ(wireOf({.kind = TerminalKind::kPt630, .announceConnection = true}), "PT630\xFF");
    EXPECT_EQ(wireOf({.kind = TerminalKind::kPt630, .emptyBatch = true}), "<DEL>\r\n");
}

TEST(TerminalDialogue, PolledScannersWaitForTheirCommands) {
    EXPECT_EQ(wireOf({.kind = TerminalKind::kOptimus, .answersRead = false}, "noise\rREAD\r"),
              kFirst + kSecond + "OVER\r");
    EXPECT_EQ(wireOf({.kind = TerminalKind::kScanPal}, "\nREAD\r\n"),
              "ACK\r" + kFirst + kSecond + "OVER\rOVER\r");

    MemoryLine silent;
    EXPECT_THROW(wireOf({.kind = TerminalKind::kOptimus, .readTimeout = 300}, silent),
                 DialogueFailure);
    EXPECT_EQ(silent.wire, "");
    EXPECT_EQ(silent.now(), 5300);
}

TEST(TerminalDialogue, EveryBatchOfAPolledScannerNeedsItsRead) {
    int overs = 0;
    MemoryLine line([&](std::string_view written) {
        if (written == "OVER\r" && ++overs == 1) return std::string("READ\r");
        return acknowledge(written);
    });
    line.incoming = "READ\r";
    EXPECT_EQ(wireOf({.kind = TerminalKind::kOptimus, .batches = 2, .answersRead = false}, line),
              kFirst + kSecond + "OVER\r" + kFirst + kSecond + "OVER\r");
}

TEST(TerminalDialogue, ARecordWithoutAnswerIsSentAgainAndThenGivenUp) {
    MemoryLine line;
    line.incoming = "READ\r";
    const DialogueOptions options{
        .kind = TerminalKind::kScanPal, .answersRead = false, .ackTimeout = 250, .resends = 2};
    EXPECT_THROW(wireOf(options, line), DialogueFailure);
    EXPECT_EQ(line.wire, kFirst + kFirst + kFirst);
    EXPECT_THAT(line.times, ::testing::ElementsAre(5000, 5250, 5500));
}

TEST(TerminalDialogue, FaultsHitTheRecordTheyNameOnce) {
    EXPECT_EQ(
        wireOf(
            {.kind = TerminalKind::kOptimus, .answersRead = false, .ackTimeout = 100, .lostAck = 2},
            "READ\r"),
        kFirst + kSecond + kSecond + "OVER\r");
    // The host ignores the short line, so it is sent again, whole.
    EXPECT_EQ(
        wireOf({.kind = TerminalKind::kOptimus, .answersRead = false, .cutRecord = 1}, "READ\r"),
        kFirst.substr(0, 14) + "\r" + kFirst + kSecond + "OVER\r");
    EXPECT_EQ(wireOf({.kind = TerminalKind::kHt630, .cutRecord = 2}),
              "A\r1\r\n37600\r\nFINTRANSKALVO");
}

}  // namespace
}  // namespace kalvo
