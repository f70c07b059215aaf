#include "platform/asio/line_inbox.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "platform/serial_port.h"
#include "tests/serial/test_pump.h"

namespace kalvo {
namespace {

struct LineInboxTest : ::testing::Test {
    LineInboxTest() {
        inbox->setReceiveThreshold(1);
        inbox->setSendThreshold(1);
        inbox->setEventHandler([this] { ++events; });
    }

    testing::TestPump pump;
    int events = 0;
    std::shared_ptr<LineInbox> inbox = std::make_shared<LineInbox>(pump);
};

TEST_F(LineInboxTest, JoinedEventsHaveTheKindThatMattersMost) {
    using namespace comm_event;
    struct Case {
        std::initializer_list<int> kinds;
        int delivered;
    };
    for (const Case& c : {Case{{kReceive, kSend}, kReceive}, Case{{kSend, kReceive}, kReceive},
                          Case{{kCts, kSend}, kCts}, Case{{kCts, kReceive}, kReceive},
                          Case{{kReceive, kBreak, kSend}, kBreak},
                          Case{{kReceiveOverflow, kReceive}, kReceiveOverflow}}) {
        events = 0;
        for (const int kind : c.kinds) {
            if (kind == kReceive)
                inbox->received("x");
            else if (kind == kSend)
                inbox->sent(0);
            else
                inbox->happened(kind);
        }
        pump.DoEvents();
        EXPECT_EQ(events, 1);
        EXPECT_EQ(inbox->latestEvent(), c.delivered);
        (void)inbox->take();
    }
    events = 0;
    inbox->received("x");
    inbox->sent(0);
    (void)inbox->take();
    pump.DoEvents();
    EXPECT_EQ(events, 1) << "taken bytes leave the other events in place";
    EXPECT_EQ(inbox->latestEvent(), kSend);
}

TEST_F(LineInboxTest, AnEventDuringAHandlerIsDeliveredByAPumpCallOfThatHandler) {
    int depth = 0;
    int deepest = 0;
    inbox->setEventHandler([&] {
        deepest = std::max(deepest, ++depth);
        if (++events == 1) {
            inbox->received("more");
            pump.DoEvents();
        }
        --depth;
    });
    inbox->received("x");
    pump.DoEvents();
    EXPECT_EQ(events, 2);
    EXPECT_EQ(deepest, 2);
}

TEST_F(LineInboxTest, ClearingDropsEventsOnTheirWayAndLaterOnesStillCome) {
    std::vector<bool> changes;
    inbox->setLineHandler([&](bool lost) { changes.push_back(lost); });
    inbox->received("old");
    inbox->lineChanged(true);
    inbox->clear();
    EXPECT_EQ(inbox->waiting(), 0U);
    inbox->received("new");
    inbox->lineChanged(false);
    pump.DoEvents();
    EXPECT_EQ(events, 1);
    EXPECT_EQ(inbox->take(), "new");
    EXPECT_EQ(changes, std::vector<bool>{false});
}

TEST(ReceiveQueue, MixedTakesGiveTheBytesInOrder) {
    ReceiveQueue queue;
    std::string in;
    std::string out;
    for (std::size_t step = 1; step <= 2000; ++step) {
        const std::string part(step % 17, static_cast<char>('a' + step % 26));
        queue.append(part);
        in += part;
        out += queue.take(step % 13 + 1);
        ASSERT_EQ(queue.size(), in.size() - out.size());
    }
    out += queue.take(0);
    EXPECT_EQ(out, in);
    EXPECT_EQ(queue.size(), 0U);
    EXPECT_EQ(queue.take(5), "");
}

}  // namespace
}  // namespace kalvo
