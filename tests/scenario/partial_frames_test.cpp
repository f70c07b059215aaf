#include "scenario/partial_frames.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

std::vector<SubFrameSlot> map(std::initializer_list<int> subFrames) {
    std::vector<SubFrameSlot> slots(1);
    for (const int subFrame : subFrames)
        slots.push_back(
            {static_cast<std::int16_t>(slots.size()), static_cast<std::int16_t>(subFrame)});
    return slots;
}

TEST(PartialFrames, RecordsComeOutInSlotOrder) {
    struct Case {
        const char* frame;
        std::vector<SubFrameSlot> slots;
        int count;
        const char* expected;
    };
    for (const auto& [frame, slots, count, expected] : {
             Case{"a\rb\r", map({2, 1}), 2, "b\ra\r"},
             Case{"a\rb\rc\rd\r", map({2, 1}), 2, "b\ra\rd\rc\r"},
             Case{"a\rb\rc\r", map({2, 1}), 2, "b\ra\r"},
             Case{"a\rb\rc", map({1, 1, 2}), 2, "a\ra\rb\r"},
             Case{"a\rb\r", map({9, 1, -1, 0}), 2, "\ra\r\r\r"},
             Case{"a\r\nb\r\n", map({1, 2}), 2, "a\r\nb\r"},
             Case{"a\rb\r", map({}), 1, ""},
             Case{"a\rb\r", map({1}), 0, ""},
             Case{"a\rb\r", map({1}), -5, ""},
             Case{"a\rb\r", map({1}), 32767, ""},
             Case{"", map({1}), 1, ""},
         })
        EXPECT_EQ(reassembleSubFrames(frame, slots, static_cast<std::int16_t>(count)), expected)
            << frame << " by " << count;
}

}  // namespace
}  // namespace kalvo
