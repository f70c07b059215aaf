#include "scenario/frame_fields.h"

#include <gtest/gtest.h>

#include <string>

namespace kalvo {
namespace {

FrameFieldTable split(std::string_view frame) {
    FrameFieldTable fields;
    for (const char c : frame) fields.add(c);
    return fields;
}

TEST(FrameFields, AreEndedByCarriageReturns) {
    const FrameFieldTable fields = split("A\r1\r\nB\n2\r\r\nrest");
    EXPECT_EQ(fields.FieldCount(), 4U);
    EXPECT_EQ(fields.at(0), "A");
    EXPECT_EQ(fields.at(1), "1");
    EXPECT_EQ(fields.at(2), "B2");
    EXPECT_EQ(fields.at(3), "");
    EXPECT_EQ(fields.at(4), "rest") << "kept, but not counted";
    EXPECT_EQ(fields.at(5), "");
    EXPECT_EQ(split("").FieldCount(), 0U);
    EXPECT_EQ(split("").at(0), "");
}

TEST(FrameFields, NulAndHighBytesAreCharactersLikeOthers) {
    const std::string frame("\0\xFF\r", 3);
    EXPECT_EQ(split(frame).at(0), std::string_view(frame).substr(0, 2));
}

TEST(FrameFields, TextBehindTheLastIndexIsDropped) {
    std::string frame;
    for (int i = 0; i < 100003; ++i) frame += "x\r";
    const FrameFieldTable fields = split(frame);
    EXPECT_EQ(fields.FieldCount(), 100003U);
    EXPECT_EQ(fields.at(99999), "x");
    EXPECT_EQ(fields.at(100000), "x");
    EXPECT_EQ(fields.at(100001), "");
    EXPECT_EQ(fields.at(100003), "");
}

}  // namespace
}  // namespace kalvo
