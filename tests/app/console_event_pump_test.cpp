#include "app/console_event_pump.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace kalvo {
namespace {

class ConsolePump : public ::testing::Test {
protected:
    int errors = 0;
    ConsoleEventPump pump{[this](const RuntimeError& error) { errors = error.number(); }};
};

TEST_F(ConsolePump, DeliversWhatWasPostedAndNoMore) {
    int delivered = 0;
    std::function<void()> again = [&] {
        ++delivered;
        pump.post(again);
    };
    pump.post(again);
    pump.DoEvents();
    EXPECT_EQ(delivered, 1) << "a handler that posts itself does not keep DoEvents";
    pump.DoEvents();
    EXPECT_EQ(delivered, 2);
}

TEST_F(ConsolePump, AnErrorOfAHandlerStaysWithIt) {
    bool second = false;
    pump.post([] { throw RuntimeError(8018, ""); });
    pump.post([&] { second = true; });
    EXPECT_NO_THROW(pump.DoEvents());
    EXPECT_EQ(errors, 8018);
    EXPECT_TRUE(second);
}

TEST_F(ConsolePump, TheEndUnwindsWhateverIsGoingOn) {
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        pump.requestEnd();
    });
    bool left = false;
    pump.post([&] {
        struct Leaving {
            bool& flag;
            ~Leaving() { flag = true; }
        } leaving{left};
        for (;;) pump.DoEvents();
    });
    pump.run();
    other.join();
    EXPECT_TRUE(left);
    EXPECT_THROW(pump.DoEvents(), ProgramEnd);
}

TEST_F(ConsolePump, WakesUpForOtherThreads) {
    const auto start = std::chrono::steady_clock::now();
    std::thread other([&] { pump.post([&] { pump.requestEnd(); }); });
    pump.run();
    other.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(900));
}

TEST_F(ConsolePump, PollingItForeverDoesNotBurnTheProcessor) {
    const auto start = std::chrono::steady_clock::now();
    int calls = 0;
    for (; std::chrono::steady_clock::now() - start < std::chrono::milliseconds(300); ++calls)
        pump.DoEvents();
    EXPECT_LT(calls, 600) << "it rests between most of them";
}

TEST_F(ConsolePump, ADateCanBeSet) {
    pump.setDate({1999, 12, 31});
    EXPECT_EQ(pump.now().year, 1999);
    EXPECT_EQ(pump.now().day, 31);
}

}  // namespace
}  // namespace kalvo
