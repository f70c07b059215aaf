// What goes over the line: looked at on its way, and judged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/reception/line_tap.h"
#include "dashboard/line_check.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Line : ::testing::Test, testing::Site {
    std::int64_t now = 0;
    LineTap tap{world.port, [this] { return now; }};
    LineCheck check{{platform.keyboard, tap, platform.profiles, platform.registry,
                     platform.databases, platform.files, platform.events, platform.dialogs,
                     platform.icon, platform.progress, platform.watch, platform.log},
                    state,
                    tap};

    void open(const char* terminal) {
        state.TerminalType = terminal;
        tap.setSettings("9600,N,8,1");
        tap.setPortOpen(true);
    }
    // The events as "<bytes", one a word of the list.
    [[nodiscard]] std::vector<std::string> seen(std::uint64_t from) {
        std::vector<std::string> all;
        for (const LineEvent& event : tap.since(from).events)
            all.push_back(signOf(event.kind) + event.bytes);
        return all;
    }
};

TEST_F(Line, IsSeenWithoutBeingChanged) {
    std::string heard;
    std::size_t dropped = 0;
    int events = 0;
    tap.onInput([&](std::string_view bytes) { heard += bytes; });
    tap.onClosed([&](std::size_t unread) { dropped = unread; });
    tap.onComm([&] { ++events; });
    open("HT630");
    world.port.receive("AB");
    world.port.receive("C");
    now += 100;
    world.port.receive("later");
    tap.Output("READ\r");
    world.port.event = comm_event::kBreak;
    world.port.receive("0123456789abcdefXYZ");
    EXPECT_THAT(seen(1), ElementsAre("<ABC", "<later", ">READ\r", "<0123456789abcdef", "<XYZ",
                                     "=Signal d'arrêt"_ansi));
    EXPECT_EQ(heard, "ABClater0123456789abcdefXYZ");
    EXPECT_EQ(events, 4);
    const std::uint64_t next = tap.since(0).next;
    world.port.receive("behind");
    EXPECT_THAT(seen(next), ElementsAre("<behind", "=Signal d'arrêt"_ansi));
    tap.setPortOpen(false);
    EXPECT_EQ(dropped, 33U);
    world.port.openError = 8002;
    EXPECT_THROW(tap.setPortOpen(true), RuntimeError);
    EXPECT_EQ(seen(0).back(), std::string("=Port COM 1 : Port refusé"));

    for (int i = 0; i < 30'000; ++i) world.port.arrive("0123456789abcdef");
    EXPECT_EQ(tap.since(0).events.size(), LineTap::kMost);
    EXPECT_EQ(tap.since(tap.since(0).next - 2).events.size(), 2U);
}

TEST_F(Line, IsJudgedByWhatComes) {
    struct Case {
        const char* terminal;
        std::string_view answer;
        LineVerdict verdict;
        std::string_view said;
    };
    const std::string_view noise(
        "\x00\xE0\x1C\xFF\x80"
        "A\xF8\x9C",
        8);
    for (const auto& [terminal, answer, verdict, said] :
         {Case{"ScanPal", "", LineVerdict::kNothing, "n'a pas répondu à READ"_ansi},
          Case{"HT630", "", LineVerdict::kNothing, "Rien n'est arrivé"_ansi},
          Case{"Optimus", noise, LineVerdict::kNoise, "(9600,N,8,1)"},
          Case{"HT630", noise, LineVerdict::kNoise, "bruit"},
          Case{"HT630", "REF001", LineVerdict::kUnended, "« REF001 »"_ansi},
          Case{"HT630",
               "\r\nCAF\xC9\x1D"
               "1\r\n2\r\n",
               LineVerdict::kFrame, "3 lignes, la première est « CAFÉ<1D>1 »"_ansi},
          Case{"PT630", "PT630\xFF", LineVerdict::kFrame, "bonne"},
          Case{"ScanPal", "OVER\r", LineVerdict::kFrame, "rien à envoyer"_ansi},
          Case{"ScanPal", "REF001              ;12    \r", LineVerdict::kFrame,
               "n'a pas été acquitté"_ansi}}) {
        EXPECT_EQ(verdictOn(answer), verdict) << answer;
        open(terminal);
        world.port.sent.clear();
        world.port.whenSent = [&, bytes = answer](std::string_view) { world.port.arrive(bytes); };
        std::string text = check.begin();
        const bool polled = !check.listening();
        EXPECT_EQ(world.port.sent, polled ? "READ\r" : "");
        if (!polled) world.port.arrive(answer);
        for (int i = 0; check.listening() && i < 100; ++i) {
            world.events.tick += 500;
            text = check.look().value_or("");
        }
        EXPECT_THAT(text, HasSubstr(std::string(said))) << answer;
        EXPECT_EQ(world.port.waiting.empty(), polled || answer.empty()) << "no record is eaten";
        tap.setPortOpen(false);
    }
    EXPECT_THAT(check.begin(), HasSubstr("pas ouvert"));
}

}  // namespace
}  // namespace kalvo
