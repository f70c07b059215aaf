#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/asio/asio_serial_port.h"
#include "platform/asio/custom_speed.h"
#include "tests/serial/pty.h"
#include "tests/serial/test_pump.h"
#include "tests/support/error_of.h"
#include "tests/support/temporary_folder.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::errorOf;
using testing::Pty;
using testing::TestPump;
using testing::waitUntil;

std::string everyByte() {
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes.push_back(static_cast<char>(value));
    return bytes;
}

struct SerialPortTest : ::testing::Test {
    std::unique_ptr<AsioSerialPort> makePort() {
        const auto resolve = [this](int) -> PortDevice {
            if (device.empty()) return {};
            return {"reader", "", [this] {
                        ++looks;
                        return device;
                    }};
        };
        return std::make_unique<AsioSerialPort>(pump, resolve, [this](std::function<void()> plug) {
            plugged = std::move(plug);
            return std::shared_ptr<void>(nullptr, [this](void*) { plugged = nullptr; });
        });
    }
    void open(int receiveThreshold = 1) {
        port->setRThreshold(receiveThreshold);
        port->onComm([this] { ++events; });
        port->setPortOpen(true);
    }
    bool arrived(std::size_t count) {
        return waitUntil([&] { return port->InBufferCount() >= count; });
    }

    Pty line;
    std::string device = line.path();
    std::atomic<int> looks = 0;     // at where the device is
    std::function<void()> plugged;  // to be called when something is plugged in
    TestPump pump;
    int events = 0;
    std::unique_ptr<AsioSerialPort> port = makePort();
};

TEST_F(SerialPortTest, EveryByteValuePassesInBothDirections) {
    for (const auto mode : {Handshaking::kNone, Handshaking::kRtsCts}) {
        port->setHandshaking(mode);
        open();
        line.send(everyByte());
        ASSERT_TRUE(arrived(256));
        EXPECT_EQ(port->Input(), everyByte());
        port->Output(everyByte());
        EXPECT_EQ(line.receive(256), everyByte());
        port->setPortOpen(false);
    }
}

TEST_F(SerialPortTest, InputTakesAsMuchAsInputLenSaysAtTheTime) {
    open();
    line.send("ABCDEFGH");
    ASSERT_TRUE(arrived(8));
    std::string taken;
    for (const int length : {1, 1, 3, 0, 0}) {
        port->setInputLen(length);
        taken += port->Input();
        taken += "|" + std::to_string(port->InBufferCount()) + " ";
    }
    EXPECT_EQ(taken, "A|7 B|6 CDE|3 FGH|0 |0 ");
}

TEST_F(SerialPortTest, ReceptionWhileTheProgramIsBusyBecomesOneEvent) {
    open();
    for (int part = 1; part <= 5; ++part) {
        line.send("xyz");
        ASSERT_TRUE(arrived(static_cast<std::size_t>(part) * 3));
    }
    EXPECT_EQ(events, 0) << "delivered outside the pump";
    EXPECT_EQ(pump.queued(), 1U) << "one event on its way is enough";
    pump.DoEvents();
    EXPECT_EQ(events, 1);
    EXPECT_EQ(port->CommEvent(), comm_event::kReceive);

    line.send("!");
    EXPECT_TRUE(pump.runUntil([&] { return events == 2; })) << "no event for later bytes";
    line.send("abc");
    ASSERT_TRUE(waitUntil([&] { return pump.queued() == 1; }));
    (void)port->Input();
    pump.DoEvents();
    EXPECT_EQ(events, 2) << "for bytes taken before the delivery";
}

TEST_F(SerialPortTest, TheReceiveThresholdDecidesWhenAnEventComes) {
    open(5);
    std::size_t count = 0;
    const auto eventsAfter = [&](std::string_view bytes) {
        line.send(bytes);
        EXPECT_TRUE(arrived(count += bytes.size()));
        pump.DoEvents();
        return events;
    };
    EXPECT_EQ(eventsAfter("1234"), 0);
    EXPECT_EQ(eventsAfter("5"), 1);
    port->setRThreshold(0);
    EXPECT_EQ(eventsAfter("6"), 1);
}

TEST_F(SerialPortTest, ASentTextRaisesAnEventOnlyWhenAskedFor) {
    open();
    for (const char* part : {"a", "b"}) {  // "b" leaves after "a" was dealt with
        port->Output(part);
        ASSERT_EQ(line.receive(1), part);
    }
    EXPECT_EQ(pump.queued(), 0U);
    port->setSThreshold(1);
    port->Output("told");
    EXPECT_TRUE(pump.runUntil([&] { return events > 0; }));
    EXPECT_EQ(port->CommEvent(), comm_event::kSend);
    EXPECT_EQ(line.receive(4), "told");
}

TEST_F(SerialPortTest, ClosingAndReopeningDropsWhatWaits) {
    open();
    line.send("in the program");
    ASSERT_TRUE(arrived(14));
    port->setPortOpen(false);
    EXPECT_EQ(port->InBufferCount(), 0U);
    pump.DoEvents();
    EXPECT_EQ(events, 0) << "an event outlived its bytes";

    // More than one kernel buffer full while nobody listens.
    const std::string stale(4096, 's');
    std::size_t sent = 0;
    while (const std::size_t count = line.sendWhatFits(stale)) sent += count;
    ASSERT_GT(sent, 8192U);
    port->setPortOpen(true);
    ASSERT_EQ(line.send("fresh"), 5U);
    ASSERT_TRUE(arrived(5));
    EXPECT_EQ(port->Input(), "fresh");
}

TEST_F(SerialPortTest, AnAnswerSentJustBeforeTheCloseArrivesAndAStoppedLineHoldsNothingUp) {
    open();
    for (int round = 0; round < 50; ++round) {
        port->Output("ACK\r");
        port->setPortOpen(false);
        port->setPortOpen(true);
        ASSERT_EQ(line.receive(4), "ACK\r") << "round " << round;
    }
    port->Output(std::string(500000, 'x'));
    port->setPortOpen(false);  // for ever, if it waited until all is read
}

TEST_F(SerialPortTest, TenMegabytesAtFullSpeedArriveWholeWhileTheProgramSleeps) {
    std::string sent;
    sent.resize(10000000);
    std::uint32_t value = 1;
    for (char& byte : sent) {
        value = value * 1664525U + 1013904223U;
        byte = static_cast<char>(value >> 24U);
    }
    open();
    std::thread sender([&] { EXPECT_EQ(line.send(sent), sent.size()); });
    EXPECT_TRUE(arrived(sent.size()));
    sender.join();
    pump.DoEvents();
    EXPECT_EQ(events, 1);

    // One character at a time out of a long queue: hours, if each moved the rest.
    std::string received;
    port->setInputLen(1);
    for (int i = 0; i < 1000000; ++i) received += port->Input();
    port->setInputLen(0);
    received += port->Input();
    EXPECT_TRUE(received == sent);
}

TEST_F(SerialPortTest, ALostLineIsReportedOnceAndComesBackByItself) {
    const testing::TemporaryFolder folder;
    device = folder / "line";
    const auto plugIn = [this](const Pty& pty) {
        fs::remove(device);
        fs::create_symlink(pty.path(), device);
    };
    plugIn(line);
    std::vector<bool> changes;
    port->onLineChange([&](bool lost) { changes.push_back(lost); });
    port->setSettings("19200,N,8,1");
    open();
    line.send("last words");
    ASSERT_TRUE(arrived(10));

    line.unplug();
    ASSERT_TRUE(pump.runUntil([&] { return !changes.empty(); }));
    EXPECT_TRUE(port->PortOpen());
    EXPECT_EQ(port->CommEvent(), comm_event::kLineLost);
    EXPECT_EQ(port->Input(), "last words");
    EXPECT_EQ(errorOf([&] { port->Output("x"); }), error_number::kPortIo);
    port->setSettings("38400,N,8,1");  // counts when the line is back
    EXPECT_EQ(port->deviceName(), "reader");
    const int before = looks;
    const auto start = std::chrono::steady_clock::now();
    plugged();
    EXPECT_TRUE(waitUntil([&] { return looks > before + 8; }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << "tried quickly for a while";

    Pty second;
    plugIn(second);
    ASSERT_TRUE(pump.runUntil([&] { return changes.size() > 1; }));
    EXPECT_THAT(changes, ::testing::ElementsAre(true, false));
    EXPECT_FALSE(plugged) << "nobody watches while the line is there";
    EXPECT_EQ(actualSpeed(second.master()), 38400U);
    second.send("again");
    ASSERT_TRUE(arrived(5));
    EXPECT_EQ(port->Input(), "again");
    port->Output("yes");
    EXPECT_EQ(second.receive(3), "yes");

    // Gone while it is closed for a moment: opened again it is lost, not refused.
    port->setPortOpen(false);
    std::string heard;
    port->onInput([&](std::string_view bytes) { heard += bytes; });
    second.unplug();
    port->reopen();
    EXPECT_TRUE(port->PortOpen());
    ASSERT_TRUE(pump.runUntil([&] { return changes.size() > 2; }));
    Pty third;
    plugIn(third);
    ASSERT_TRUE(pump.runUntil([&] { return changes.size() > 3; }));
    EXPECT_THAT(changes, ::testing::ElementsAre(true, false, true, false));
    third.send("and again");
    ASSERT_TRUE(arrived(9));
    EXPECT_EQ(port->Input(), "and again");
    port->setPortOpen(false);
    EXPECT_EQ(heard, "and again") << "listened to on the line's own thread";
}

TEST_F(SerialPortTest, ALostPortCanBeClosed) {
    int changes = 0;
    port->onLineChange([&](bool) { ++changes; });
    open();
    line.unplug();
    ASSERT_TRUE(waitUntil([&] { return pump.queued() > 0; }));
    port->setPortOpen(false);
    pump.DoEvents();
    EXPECT_EQ(changes, 0) << "a closed port reports nothing";
    EXPECT_EQ(errorOf([&] { port->setPortOpen(true); }), error_number::kPortInvalid);
    EXPECT_FALSE(port->PortOpen());
}

TEST_F(SerialPortTest, ASecondOpenerIsRefusedUntilTheFirstCloses) {
    open();
    const auto second = makePort();
    EXPECT_EQ(errorOf([&] { second->setPortOpen(true); }), error_number::kPortAlreadyOpen);
    EXPECT_FALSE(second->PortOpen());
    line.send("mine");
    ASSERT_TRUE(arrived(4));
    EXPECT_EQ(port->Input(), "mine");

    port->setPortOpen(false);
    EXPECT_EQ(errorOf([&] { second->setPortOpen(true); }), 0);
}

TEST_F(SerialPortTest, MisuseHasItsErrorNumbers) {
    EXPECT_EQ(errorOf([&] { (void)port->Input(); }), error_number::kPortNotOpen);
    EXPECT_EQ(errorOf([&] { port->Output("x"); }), error_number::kPortNotOpen);
    EXPECT_EQ(port->InBufferCount(), 0U);
    port->setPortOpen(false);
    for (const int number : {0, -1, 257})
        EXPECT_EQ(errorOf([&] { port->setCommPort(number); }), error_number::kPortInvalid);
    port->setCommPort(256);
    EXPECT_EQ(port->CommPort(), 256);

    open();
    EXPECT_EQ(errorOf([&] { port->setPortOpen(true); }), error_number::kPortAlreadyOpen);
    EXPECT_EQ(errorOf([&] { port->setCommPort(2); }), error_number::kPortAlreadyOpen);
    port->setPortOpen(false);

    for (const char* missing : {"", "/dev/no-such-port", "/dev/null", "/tmp"}) {
        device = missing;
        EXPECT_EQ(errorOf([&] { port->setPortOpen(true); }), error_number::kPortInvalid) << missing;
        EXPECT_FALSE(port->PortOpen());
    }
}

TEST_F(SerialPortTest, SettingsTheLineCannotDoAreRefusedAndChangeNothing) {
    port->setSettings("9600,N,4,1");
    EXPECT_EQ(errorOf([&] { port->setPortOpen(true); }), error_number::kPortSettings);
    port->setSettings("4800,E,7,2");
    open();
    EXPECT_EQ(actualSpeed(line.master()), 4800U);
    EXPECT_EQ(errorOf([&] { port->setSettings("9600,N,8,1.5"); }), error_number::kPortSettings);
    EXPECT_EQ(errorOf([&] { port->setSettings("fast"); }), error_number::kPortSettings);
    EXPECT_EQ(actualSpeed(line.master()), 4800U);
    port->setSettings("9600,N,5,1.5");
    EXPECT_EQ(actualSpeed(line.master()), 9600U);
}

TEST_F(SerialPortTest, SpeedAndFlowControlReachTheDeviceWhileItIsOpen) {
    open();
    for (const std::uint32_t speed : {300U, 12345U, 115200U, 921600U}) {
        port->setSettings(std::to_string(speed) + ",N,8,1");
        EXPECT_EQ(actualSpeed(line.master()), speed);
    }
    struct Case {
        Handshaking mode;
        bool rtsCts;
        bool xonXoff;
    };
    for (const Case& c :
         {Case{Handshaking::kXonXoff, false, true}, Case{Handshaking::kRtsCts, true, false},
          Case{Handshaking::kRtsAndXon, true, true}, Case{Handshaking::kNone, false, false}}) {
        port->setHandshaking(c.mode);
        termios state{};
        ASSERT_EQ(tcgetattr(line.master(), &state), 0);
        EXPECT_EQ((state.c_cflag & CRTSCTS) != 0, c.rtsCts);
        EXPECT_EQ((state.c_iflag & (IXON | IXOFF)) == (IXON | IXOFF), c.xonXoff);
        EXPECT_EQ(state.c_lflag & (ECHO | ICANON | ISIG), 0U);
    }
    EXPECT_EQ(errorOf([&] { port->setHandshaking(static_cast<Handshaking>(4)); }),
              error_number::kPortSettings);
}

TEST_F(SerialPortTest, NothingIsDeliveredAfterTheEndOfThePort) {
    open();
    port->onLineChange([this](bool) { ++events; });
    std::atomic<bool> stop = false;
    std::thread sender([&] {
        while (!stop) (void)line.sendWhatFits("0123456789");
    });
    for (int round = 0; round < 20; ++round) {
        EXPECT_TRUE(waitUntil([&] { return pump.queued() > 0; }));
        port.reset();
        events = 0;
        pump.DoEvents();
        EXPECT_EQ(events, 0);
        port = makePort();
        open();
    }
    stop = true;
    sender.join();
}

TEST_F(SerialPortTest, AHandlerMayDestroyOrReopenThePort) {
    open();
    port->onComm([this] {
        port->setPortOpen(false);
        port->setPortOpen(true);
        ++events;
    });
    line.send("reopen");
    ASSERT_TRUE(pump.runUntil([&] { return events == 1; }));
    port->onComm([this] {
        port.reset();
        ++events;
    });
    line.send("destroy");
    ASSERT_TRUE(pump.runUntil([&] { return events == 2; }));
    EXPECT_EQ(port, nullptr);
    pump.DoEvents();
    EXPECT_EQ(events, 2);
}

}  // namespace
}  // namespace kalvo
