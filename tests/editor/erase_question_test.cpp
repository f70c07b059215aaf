#include "editor/erase_question.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/error_of.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

TEST(EraseQuestion, SendsSixBytesForYesAndNothingForNo) {
    testing::FakePlatform world;
    EraseQuestion state;
    world.port.open = true;
    state.pending = 1;
    answerEraseQuestion(world.platform, state, false);
    EXPECT_EQ(world.port.sent, "");
    EXPECT_EQ(state.pending, 0);
    answerEraseQuestion(world.platform, state, true);
    EXPECT_EQ(world.port.sent, std::string({27, '1', '*', 27, 13, 10}));
    world.port.open = false;
    EXPECT_EQ(testing::errorOf([&] { answerEraseQuestion(world.platform, state, true); }),
              error_number::kPortNotOpen);
    EXPECT_EQ(state.pending, 0) << "the question does not come back";
}

}  // namespace
}  // namespace kalvo
