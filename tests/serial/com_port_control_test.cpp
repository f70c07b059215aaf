#include "platform/asio/com_port_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/asio/tcp_stream.h"

namespace kalvo {
namespace {

constexpr LineSettings kSettings{57600, Parity::kEven, 7, StopBits::kTwo};

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text.push_back(static_cast<char>(value));
    return text;
}

TEST(ComPortControl, SetsThePortOnceTheServerAgreesAndAnswersNothingTwice) {
    ComPortControl control(kSettings, Handshaking::kXonXoff);
    EXPECT_THAT(control.greeting(), ::testing::StartsWith(bytes({255, 251, 44})));
    EXPECT_EQ(control.configure(kSettings, Handshaking::kRtsCts), "") << "nobody agreed to it";
    const auto agreed = control.receive(bytes({255, 253, 44}));
    EXPECT_EQ(agreed.answer, bytes({255, 250, 44,  1,   0,   0,  225, 0, 255, 240, 255, 250, 44, 2,
                                    7,   255, 240, 255, 250, 44, 3,   3, 255, 240, 255, 250, 44, 4,
                                    2,   255, 240, 255, 250, 44, 5,   3, 255, 240, 255, 250, 44, 5,
                                    8,   255, 240, 255, 250, 44, 12,  1, 255, 240}));
    struct Case {
        std::string received;
        std::string answer;
    };
    for (const auto& [received, answer] : {
             Case{bytes({255, 253, 44}), ""},                   // said already
             Case{bytes({255, 253, 0, 255, 251, 0}), ""},       // what we asked for
             Case{bytes({255, 251, 1}), bytes({255, 254, 1})},  // an echo is not wanted
             Case{bytes({255, 251, 1}), ""},
             Case{bytes({255, 253, 24}), bytes({255, 252, 24})},  // no terminal type
             Case{bytes({255, 250, 44, 101, 255, 255, 0, 0, 255, 240}), ""},
         }) {
        const auto result = control.receive(received);
        EXPECT_EQ(result.answer, answer);
        EXPECT_EQ(result.bytes, "");
    }
    EXPECT_THAT(control.configure({255}, Handshaking::kNone),
                ::testing::StartsWith(bytes({255, 250, 44, 1, 0, 0, 0, 255, 255, 255, 240})));
}

TEST(ComPortControl, PassesEveryByteHoweverTheStreamIsCut) {
    std::string every;
    for (int value = 0; value < 256; ++value) every.push_back(static_cast<char>(value));
    const std::string stream = ComPortControl::encode(every) +
                               bytes({255, 250, 44, 107, 1, 255, 240}) +
                               ComPortControl::encode(every);
    for (const std::size_t piece : {1U, 3U, 1000U}) {
        ComPortControl control(kSettings, Handshaking::kNone);
        std::string received;
        for (std::size_t at = 0; at < stream.size(); at += piece)
            received += control.receive(stream.substr(at, piece)).bytes;
        EXPECT_EQ(received, every + every) << piece;
    }
}

TEST(LineServer, IsReadFromItsAddress) {
    const auto text = [](const char* path) {
        const auto server = serverOf(path);
        return server ? server->host + " " + server->port + (server->controlled ? " c" : "") : "";
    };
    for (const auto& [path, expected] : std::initializer_list<std::pair<const char*, const char*>>{
             {"tcp://moxa:4001", "moxa 4001"},
             {"rfc2217://10.0.0.7:2217", "10.0.0.7 2217 c"},
             {"tcp://[::1]:23", "::1 23"},
             {"tcp://moxa", ""},
             {"tcp://:23", ""},
             {"tcp://moxa:", ""},
             {"/dev/ttyS0", ""}})
        EXPECT_EQ(text(path), expected) << path;
}

}  // namespace
}  // namespace kalvo
