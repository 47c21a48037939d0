// Anything at all that a user may do, in any order: after each step the windows agree with the
// state, and none is left disabled, half closed or without an answer.
//
// QUORVANTA_MONKEY_SEED and QUORVANTA_MONKEY_STEPS set the seed and the length of the walk: the
// seed stands in the message of a walk that failed, and leads to the same steps again.
// With QUORVANTA_MONKEY_TRAIL set, every step is told as it is taken.
// With the sanitizers (preset asan-ui) the test monkey_walk takes 20,000 steps.
#include "ui/monkey.h"

#include <gtest/gtest.h>

namespace quorvanta {
namespace {

int Setting(const char* name, int usual) {
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue(name, &isSet);
    return isSet ? value : usual;
}

class MonkeyCheck : public testing::TestWithParam<int> {};

TEST_P(MonkeyCheck, FindsStateAndWindowsInAgreement) {
    Monkey monkey(static_cast<unsigned>(Setting("QUORVANTA_MONKEY_SEED", GetParam())));
    const std::string failure = monkey.Walk(Setting("QUORVANTA_MONKEY_STEPS", 700));
    EXPECT_TRUE(failure.empty()) << failure;
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyCheck, testing::Values(1, 2, 3));

TEST(MonkeyWalk, IsTheSameFromTheSameSeed) {
    constexpr int steps = 200;
    std::size_t signatures[2] = {};
    for (std::size_t& signature : signatures) {
        Monkey monkey(4);
        EXPECT_EQ(monkey.Walk(steps), "");
        signature = monkey.Signature();
    }
    EXPECT_EQ(signatures[0], signatures[1]);
}

} // namespace
} // namespace quorvanta
