#include "platform/asio/line_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tests/support/words.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

TEST(LineSettings, ReadsEveryForm) {
    struct Case {
        const char* text;
        std::uint32_t speed;
        Parity parity;
        int dataBits;
        StopBits stopBits;
    };
    for (const Case& c : {
             Case{"9600,N,8,1", 9600, Parity::kNone, 8, StopBits::kOne},
             Case{"300,E,7,2", 300, Parity::kEven, 7, StopBits::kTwo},
             Case{"110,O,5,1.5", 110, Parity::kOdd, 5, StopBits::kOneAndHalf},
             Case{"921600,M,6,1", 921600, Parity::kMark, 6, StopBits::kOne},
             Case{"1,S,4,1", 1, Parity::kSpace, 4, StopBits::kOne},
             Case{"4000000,N,8,1", 4000000, Parity::kNone, 8, StopBits::kOne},
         }) {
        const LineSettings s = parseLineSettings(c.text);
        EXPECT_EQ(std::tie(s.speed, s.parity, s.dataBits, s.stopBits),
                  std::tie(c.speed, c.parity, c.dataBits, c.stopBits))
            << c.text;
    }
}

TEST(LineSettings, RefusesEverythingElse) {
    for (const std::string& text : testing::split(
             "|,,,|9600|9600,N,8|9600,N,8,1,|9600,N,8,1,1| 9600,N,8,1|9600 ,N,8,1|9600,N,8,1 |"
             "9600,N, 8,1|0,N,8,1|-9600,N,8,1|+9600,N,8,1|9600.0,N,8,1|0x2580,N,8,1|4000001,N,8,1|"
             "99999999999,N,8,1|HT630,N,8,1|,N,8,1|9600,,8,1|9600,n,8,1|9600,X,8,1|9600,NN,8,1|"
             "9600,N,3,1|9600,N,9,1|9600,N,08,1|9600,N,,1|9600,N,8,|9600,N,8,0|9600,N,8,3|"
             "9600,N,8,1,5|9600,N,8,1.50|9600;N;8;1",
             "|")) {
        try {
            (void)parseLineSettings(text);
            ADD_FAILURE() << "accepted: " << text;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), error_number::kPortSettings) << text;
            EXPECT_NE(error.description().find("\"" + text + "\""), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace kalvo
