#include "transfer/kermit/kermit_coding.h"

#include <gtest/gtest.h>

#include "transfer/kermit/kermit_packet.h"

namespace kalvo {
namespace {

// Length, time-out, padding, its character, end of line, control prefix, eighth-bit prefix,
// block check, repeat prefix, capabilities (long packets), window, long length.
std::string parameters(int longLength) {
    return "~* @-#N3~" + std::string{toChar(2), toChar(0), toChar(longLength / kKermitBase),
                                     toChar(longLength % kKermitBase)};
}

TEST(KermitParameters, ALongLengthThatHoldsNothingIsNoLength) {
    for (int length = 1; length < 20; ++length)
        EXPECT_EQ(parseParameters(parameters(length)).packetLength, kShortPacket) << length;
    EXPECT_EQ(parseParameters(parameters(0)).packetLength, 500) << "not told";
    EXPECT_EQ(parseParameters(parameters(1000)).packetLength, 1000);
}

TEST(KermitAgreements, PrefixesAreToldApart) {
    KermitParameters ours;
    KermitParameters theirs;
    ours.eighthBit = 'Y';
    theirs.eighthBit = '&';
    EXPECT_EQ(agree(ours, theirs).sending.eighthBit, '&');
    for (const char taken : {ours.control, theirs.control}) {
        theirs.eighthBit = taken;
        EXPECT_EQ(agree(ours, theirs).sending.eighthBit, '\0') << "is the control prefix";
    }
    theirs.eighthBit = '~';
    ours.repeat = theirs.repeat = '~';
    EXPECT_EQ(agree(ours, theirs).sending.repeat, '\0') << "is the eighth-bit prefix";
}

}  // namespace
}  // namespace kalvo
