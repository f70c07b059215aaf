#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "platform/asio/asio_serial_port.h"
#include "platform/asio/host_lookup.h"
#include "tests/serial/pty.h"
#include "tests/serial/test_pump.h"
#include "tests/support/error_of.h"

namespace kalvo {
namespace {

using testing::errorOf;
using testing::TestPump;
using testing::waitUntil;

// A serial device server: what it is sent, and one connection at a time.
struct DeviceServer {
    asio::io_context io;
    asio::ip::tcp::acceptor acceptor{io, {asio::ip::address_v4::loopback(), 0}};
    asio::ip::tcp::socket client{io};

    [[nodiscard]] std::string place() {
        return "127.0.0.1:" + std::to_string(acceptor.local_endpoint().port());
    }
    void accept() {
        client = acceptor.accept();
        client.non_blocking(true);
    }
    // What has come, once it holds a text.
    std::string receive(std::string_view wanted) {
        std::string received;
        EXPECT_TRUE(waitUntil([&] {
            std::array<char, 4096> buffer{};
            asio::error_code error;
            received.append(buffer.data(), client.read_some(asio::buffer(buffer), error));
            return received.find(wanted) != std::string::npos;
        }));
        return received;
    }
    void send(const std::string& bytes) { asio::write(client, asio::buffer(bytes)); }
};

TEST(NetworkLineTest, ALineBehindADeviceServerIsOneLikeAnyOther) {
    DeviceServer server;
    std::string device;
    std::vector<bool> changes;
    TestPump pump;
    const auto resolve = [&](int) { return PortDevice{"reader", "", [&] { return device; }}; };
    const auto port = std::make_unique<AsioSerialPort>(
        pump, resolve, [](const std::function<void()>&) { return std::shared_ptr<void>(); });
    port->onLineChange([&](bool lost) { changes.push_back(lost); });
    for (const bool controlled : {false, true}) {
        changes.clear();
        device = (controlled ? "rfc2217://" : "tcp://") + server.place();
        port->setSettings("19200,E,8,1");
        port->setPortOpen(true);
        server.accept();
        const std::string speed = "\xFF\xFA\x2C\x01" + std::string("\0\0\x4B\0", 4);
        if (controlled) {
            server.send("\xFF\xFD\x2C");
            server.receive(speed);
        }
        server.send("in \xFF\xFF out");
        ASSERT_TRUE(waitUntil([&] { return port->InBufferCount() >= (controlled ? 8U : 9U); }));
        EXPECT_EQ(port->Input(), controlled ? "in \xFF out" : "in \xFF\xFF out");
        port->Output("a\xFF");
        EXPECT_THAT(server.receive("a\xFF"),
                    ::testing::EndsWith(controlled ? "a\xFF\xFF" : "a\xFF"));

        server.client.close();
        ASSERT_TRUE(pump.runUntil([&] { return changes == std::vector{true}; }));
        server.accept();
        ASSERT_TRUE(pump.runUntil([&] { return changes == std::vector{true, false}; }));
        port->Output("last");
        port->setPortOpen(false);
        server.receive("last");
    }
    server.acceptor.close();
    EXPECT_EQ(errorOf([&] { port->setPortOpen(true); }), error_number::kPortInvalid);
    port->reopen();
    EXPECT_TRUE(port->PortOpen()) << "awaited";
    port->setPortOpen(false);
}

TEST(HostNames, AreNotWaitedForAndALateAnswerServesTheNextWhoAsks) {
    using namespace std::chrono_literals;
    std::promise<HostAnswer> answer;
    std::atomic<int> asked = 0;
    const auto resolve = [&](const std::string&, const std::string&) {
        ++asked;
        return answer.get_future().get();
    };
    for (int tries = 0; tries < 2; ++tries) EXPECT_FALSE(lookUpHost("slow", "1", 10ms, resolve));
    answer.set_value({{{asio::ip::address_v4::loopback(), 1}}, {}});
    const auto late = lookUpHost("slow", "1", 10s, resolve);
    ASSERT_TRUE(late);
    EXPECT_EQ(late->places.size(), 1U);
    EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace kalvo
