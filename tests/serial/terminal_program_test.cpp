#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/asio/asio_serial_port.h"
#include "platform/asio/asio_transfer_line.h"
#include "platform/linux/linux_file_system.h"
#include "platform/serial_port.h"
#include "tests/serial/pty.h"
#include "tests/serial/terminal_process.h"
#include "tests/serial/test_pump.h"
#include "transfer/kermit_multidll.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::Pty;
using testing::TerminalProcess;
using testing::TestPump;
using testing::waitUntil;

const std::string kBatch = "A\r1\r\nB\xE9\r2\r\n";
const std::string kFirst = "A                    1      \r";
const std::string kSecond = "B\xE9                   2      \r";

// A terminal program on one side, the serial port on the other.
class TerminalProgramTest : public ::testing::Test {
protected:
    TerminalProgramTest() {
        std::string pattern = (fs::temp_directory_path() / "kalvo-terminal-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        records = (folder / "records.txt").string();
        std::ofstream(records, std::ios::binary) << "A;1\r\nB\xE9;2\n";
    }
    void TearDown() override { fs::remove_all(folder); }

    void openPort(const std::string& path) {
        device = path;
        port.setRThreshold(1);
        port.setPortOpen(true);
    }
    // What has arrived once it ends with `end`, or after the deadline.
    std::string receiveUntil(std::string_view end) {
        std::string received;
        waitUntil([&] {
            received += port.Input();
            return received.ends_with(end);
        });
        return received;
    }

    fs::path folder;
    std::string records;
    TestPump pump;
    std::string device;
    AsioSerialPort port{pump, [this](int) { return device; }};
};

TEST_F(TerminalProgramTest, ADialogueOutlivesAReopeningOfThePort) {
    TerminalProcess terminal(
        {"Optimus", records, "--pty", "--ack-timeout", "200", "--resend", "50", "--linger", "0"});
    openPort(terminal.readLine());
    port.Output("READ\r");
    EXPECT_EQ(receiveUntil(kFirst), kFirst);
    port.setPortOpen(false);
    port.setPortOpen(true);
    port.Output("ACK\r");
    EXPECT_TRUE(receiveUntil(kSecond).ends_with(kSecond));
    port.Output("ACK\r");
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST_F(TerminalProgramTest, SendsOnADeviceToo) {
    Pty line;
    TerminalProcess terminal({"HT630", records, "--device", line.path()});
    EXPECT_EQ(line.receive(kBatch.size() + 13), kBatch + "FINTRANSKALVO");
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST_F(TerminalProgramTest, FailuresAndMisuseHaveTheirExitCodes) {
    struct Case {
        std::vector<std::string> arguments;
        int code;
        std::string said;
    };
    for (const Case& c : {
             Case{{"--help"}, 0, "simulateur"},
             Case{{"--files", "/tmp", "--pty", "HT630"}, 2, "--files"},
             Case{{"--pty"}, 2, "type de terminal"},
             Case{{"HT630", "--pty", "--oups", records}, 2, "--oups"},
             Case{{"HT630", "--pty", (folder / "none").string()}, 1, "illisible"},
             Case{{"HT630", "--device", "/dev/no-such-port", records}, 1, "introuvable"},
             Case{{"HT630", "--device", "/dev/null", records}, 1, "port série"},
             Case{{"Optimus", "--device", Pty().path(), "--settings", "x", records}, 1, "glages"},
         }) {
        TerminalProcess terminal(c.arguments);
        EXPECT_NE(terminal.readLine().find(c.said), std::string::npos) << c.said;
        EXPECT_EQ(terminal.exitCode(), c.code) << c.said;
    }
    TerminalProcess unanswered({"ScanPal", "--pty", "--read-timeout", "20", records});
    EXPECT_EQ(unanswered.readLine().rfind("/dev/pts/", 0), 0U);
    EXPECT_NE(unanswered.readLine().find("READ"), std::string::npos);
    EXPECT_EQ(unanswered.exitCode(), 1);
}

TEST_F(TerminalProgramTest, AnUnpluggedDeviceEndsIt) {
    Pty line;
    TerminalProcess terminal({"ScanPal", records, "--device", line.path()});
    ASSERT_TRUE(waitUntil([&] {
        (void)line.sendWhatFits("READ\r");  // lost until it has the device open
        return !line.receiveWaiting().empty();
    }));
    line.unplug();
    EXPECT_EQ(terminal.exitCode(), 1);
}

TEST_F(TerminalProgramTest, TheLinkLivesAsLongAsTheProgram) {
    const std::string link = (folder / "port").string();
    fs::create_symlink("/dev/pts/left-over", link);
    TerminalProcess terminal({"Optimus", records, "--pty", "--link", link});
    const std::string slave = terminal.readLine();
    EXPECT_EQ(fs::read_symlink(link), slave);
    openPort(link);
    port.Output("READ\r");
    EXPECT_EQ(receiveUntil(kFirst), kFirst);
    terminal.terminate();
    EXPECT_EQ(terminal.exitCode(), 1);
    EXPECT_FALSE(fs::is_symlink(link));
}

}  // namespace
}  // namespace kalvo
