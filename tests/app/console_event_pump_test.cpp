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
    std::string log;
    std::function<void()> again = [&] {
        log += "a";
        pump.post(again);
    };
    pump.post(again);
    pump.post([] { throw RuntimeError(8018, ""); });
    pump.post([&] { log += "b"; });
    pump.DoEvents();
    EXPECT_EQ(log, "ab") << "one that posts itself does not keep DoEvents, nor does an error";
    EXPECT_EQ(errors, 8018);
}

TEST_F(ConsolePump, WakesForAHandlerAndForTheEndWhichUnwindsIt) {
    bool left = false;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        pump.post([&] {
            struct Leaving {
                bool& flag;
                ~Leaving() { flag = true; }
            } leaving{left};
            for (;;) pump.DoEvents();
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        pump.requestEnd();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THROW(pump.waitForEvents(60000), ProgramEnd);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << "not woken";
    other.join();
    EXPECT_TRUE(left);
    pump.run();  // ends at once
}

TEST_F(ConsolePump, WhatWaitsForRestIsNeverInTheMiddleOfAnother) {
    std::string log;
    pump.postAtRest([&] {
        log += "rest ";
        pump.requestEnd();
    });
    pump.post([&] {
        pump.waitForEvents(1);
        log += "work ";
    });
    pump.run();
    EXPECT_EQ(log, "work rest ");
    const auto start = std::chrono::steady_clock::now();
    pump.Sleep(60000);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << "at its end";
}

TEST_F(ConsolePump, PollingItForeverDoesNotBurnTheProcessor) {
    const auto start = std::chrono::steady_clock::now();
    int calls = 0;
    for (; std::chrono::steady_clock::now() - start < std::chrono::milliseconds(300); ++calls)
        pump.DoEvents();
    EXPECT_LT(calls, 600) << "it rests between most of them";
}

}  // namespace
}  // namespace kalvo
