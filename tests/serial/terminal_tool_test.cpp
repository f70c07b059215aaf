#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "tests/serial/memory_line.h"
#include "tests/support/words.h"
#include "tools/capture_player.h"
#include "tools/faulty_line.h"
#include "tools/terminal_options.h"

namespace kalvo {
namespace {

using testing::MemoryLine;
using testing::words;

TEST(FaultyLine, KeepsThePaceOfTheLine) {
    MemoryLine line;
    FaultyLine paced(line, {.speed = 9600});
    const std::string text(960, 'x');
    const auto start = line.now();
    for (int part = 0; part < 10; ++part) paced.write(text);
    EXPECT_EQ(line.wire.size(), 9600U);
    EXPECT_NEAR(static_cast<double>(line.now() - start), 10000.0, 2.0);

    // Silence is not made up for.
    paced.pause(5000);
    const auto resumed = line.now();
    paced.write(text);
    EXPECT_NEAR(static_cast<double>(line.now() - resumed), 1000.0, 2.0);
}

TEST(FaultyLine, PausesWhereItIsTold) {
    MemoryLine line;
    FaultyLine faulty(line, {.pauses = {{500, 9}, {200, 4}, {100, 4}, {7, 0}}});
    faulty.write("abcdef");
    faulty.write("ghijkl");
    EXPECT_EQ(line.wire, "abcdefghijkl");
    EXPECT_THAT(line.times, ::testing::ElementsAre(5007, 5307, 5307, 5807));
}

TEST(FaultyLine, NoiseIsAddedAndDependsOnTheSeedOnly) {
    const auto wireOf = [](double noise, std::uint32_t seed, std::size_t parts) {
        MemoryLine line;
        FaultyLine faulty(line, {.noise = noise, .seed = seed});
        for (std::size_t part = 0; part < parts; ++part)
            faulty.write(std::string(1000 / parts, 'x'));
        return line.wire;
    };
    EXPECT_EQ(wireOf(0, 1, 1), std::string(1000, 'x'));
    const std::string noisy = wireOf(0.1, 1, 1);
    EXPECT_EQ(noisy, wireOf(0.1, 1, 4));
    EXPECT_NE(noisy, wireOf(0.1, 2, 1));
    EXPECT_GE(std::count(noisy.begin(), noisy.end(), 'x'), 1000);
    EXPECT_NEAR(static_cast<double>(noisy.size()), 1100.0, 40.0);
    EXPECT_EQ(wireOf(1, 1, 1).size(), 2000U);
}

TEST(CapturePlayer, SaysAgainWhatTheTerminalSaidOnceItIsAsked) {
    MemoryLine line([](std::string_view) { return "ACK\r"; });
    line.incoming = "READ\r";
    playCapture(line, parseCapture("2024-03-05 23:59:59.900 > 52 45 41 44 0D  |READ<0D>|\n"
                                   "2024-03-05 23:59:59.950 < 41 0D\r\n\n# note\n"
                                   "2024-03-06 00:00:00.000 > 41 43 4B 0D\n"
                                   "2024-03-06 00:00:01.000 = Port COM 1 ouvert\n"
                                   "2024-03-06 00:00:01.250 < 42\n"));
    EXPECT_EQ(line.wire, "A\rB");
    EXPECT_THAT(line.times, ::testing::ElementsAre(5050, 6300));
}

TEST(TerminalOptions, AreReadFromTheCommandLine) {
    const TerminalOptions o = parseTerminalOptions(words(
        "scanpal --pty --link /tmp/l --wait-open --separator TAB --speed 9600 "
        "--noise 0.25 --pause 300:12 --pause 5:0 records.txt --cut 3 --lose-ack 2 --seed 7 "
        "--repeat 010 "
        "--wait 50 --no-ack --tab --ack-timeout 100 --resend 0 --read-timeout 900 --linger 0"));
    EXPECT_TRUE(o.pseudoTerminal && o.waitsForOpening && !o.dialogue.answersRead &&
                o.dialogue.tabbed);
    EXPECT_EQ(std::tie(o.dialogue.kind, o.link, o.recordFile, o.separator, o.lingerMilliseconds),
              std::tuple(TerminalKind::kScanPal, "/tmp/l", "records.txt", '\t', 0));
    EXPECT_EQ(std::tie(o.faults.speed, o.faults.noise, o.faults.seed, o.dialogue.cutRecord,
                       o.dialogue.lostAck, o.dialogue.batches),
              std::tuple(9600U, 0.25, 7U, 3, 2, 10));
    EXPECT_EQ(std::tie(o.dialogue.waitMilliseconds, o.dialogue.ackTimeout, o.dialogue.resends,
                       o.dialogue.readTimeout),
              std::tuple(50, 100, 0, 900));
    ASSERT_EQ(o.faults.pauses.size(), 2U);
    EXPECT_EQ(o.faults.pauses[0].milliseconds, 300);
    EXPECT_EQ(o.faults.pauses[0].after, 12U);

    const TerminalOptions third = optionsOf(
        parseTerminalOptions(words("HT630 --pty --terminals 3 --link l{n}-{n} --log g{n} r{n}")),
        3);
    EXPECT_EQ(std::tie(third.link, third.logFile, third.recordFile, third.faults.seed),
              std::tuple("l3-3", "g3", "r3", 3U));
    EXPECT_EQ(parseTerminalOptions(words("--pty --capture c.txt")).captureFile, "c.txt");
    EXPECT_THROW((void)parseTerminalOptions(words("HT630 --pty --capture c.txt -")), UsageError);
    EXPECT_EQ(parseTerminalOptions(words("HT630 --device /dev/x -")).recordFile, "-");
    EXPECT_EQ(parseTerminalOptions(words("HT630 --pty -- --odd")).recordFile, "--odd");
    for (const auto* option : {"--device", "--lose-ack", "--noise", "--read-timeout"})
        EXPECT_NE(parseTerminalOptions({"--help"}).help.find(option), std::string::npos);
}

}  // namespace
}  // namespace kalvo
