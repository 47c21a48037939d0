#include "output/format.h"
#include "output/scale.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace quorvanta {
namespace {

struct Case {
    f32 Low;
    f32 High;
    i16 N;
    f32 NewLow;
    f32 NewHigh;
    f32 Step;
};

// Each worked by hand, step by step, from the published procedure.
constexpr Case cases[] = {
    {0.7F, 0.9F, 10, 0.7F, 0.9F, 0.02F},     // a = 0.02: exactly ten steps
    {0.7F, 0.9F, 11, 0.7F, 0.92F, 0.02F},    // one step left over: all of it goes above
    {0.0F, 1.0F, 10, 0.0F, 1.0F, 0.1F},      // a = 0.1 is b = 10 of the decade below
    {0.0F, 100.0F, 10, 0.0F, 100.0F, 10.0F}, // a = 10: b = 1
    {12.3F, 87.9F, 10, 0.0F, 100.0F, 10.0F}, // 1 to 9: eight steps, one below and one above
    {-3.1F, 11.1F, 5, -5.0F, 20.0F, 5.0F},   // b = 2.84; -1 to 3
    {5.2F, 10.2F, 5, 4.0F, 14.0F, 2.0F},     // 5 to 11 would be six steps of 1: the next step
    {-12000.0F, -100.0F, 9, -14000.0F, 4000.0F, 2000.0F}, // -6 to 0, one below, two above
    {-1.0F, 1.0F, 10, -1.0F, 1.0F, 0.2F},                 // a = 0.2: b = 2
    {-0.5F, -0.1F, 4, -0.5F, -0.1F, 0.1F}, // negative limits that are multiples of the step
    {5.0F, 5.0F, 10, 5.0F, 6.0F, 0.1F},    // no range: 5 to 6
    {5.0F, 3.0F, 10, 5.0F, 6.0F, 0.1F},    // a range upside down: the same
    {0.0F, 1.0F, 2, 0.0F, 1.0F, 0.5F},
    {0.0F, 1.0F, 1, 0.0F, 1.0F, 0.5F},               // n below 2 is 2
    {-1.0F, 1001.0F, 2, -2000.0F, 2000.0F, 2000.0F}, // beyond 10 in the table: 20 times 100
    {0.93F, 0.97F, 10, 0.925F, 0.975F, 0.005F},      // b = 4: 186 to 194, one below and one above
};

TEST(NiceScales, CasesWorkedByHand) {
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.Low << " to " << c.High << " in " << c.N);
        f32 low = 0;
        f32 high = 0;
        f32 step = 0;
        NiceScale(c.Low, c.High, c.N, low, high, step);
        EXPECT_FLOAT_EQ(step, c.Step);
        EXPECT_NEAR(low, c.NewLow, 1e-6F * std::fabs(c.NewLow));
        EXPECT_NEAR(high, c.NewHigh, 1e-6F * std::fabs(c.NewHigh));
    }
}

TEST(NiceScales, TheDataAreAlwaysInsideAndTheStepsAreRound) {
    std::mt19937 random(463);
    std::uniform_real_distribution<f32> mantissa(-1.0F, 1.0F);
    std::uniform_int_distribution<int> exponent(-8, 8);
    std::uniform_int_distribution<int> steps(2, 20);
    const auto draw = [&] {
        return mantissa(random) * std::pow(10.0F, static_cast<f32>(exponent(random)));
    };
    for (int i = 0; i < 20000; ++i) {
        const f32 a = draw();
        const f32 b = draw();
        const f32 low = std::min(a, b);
        const f32 high = std::max(a, b);
        const auto n = static_cast<i16>(steps(random));
        f32 newLow = 0;
        f32 newHigh = 0;
        f32 step = 0;
        NiceScale(low, high, n, newLow, newHigh, step);
        SCOPED_TRACE(testing::Message() << low << " to " << high << " in " << n);
        ASSERT_LE(newLow, low);
        ASSERT_GE(newHigh, high);
        const f64 decade = std::pow(10.0, std::floor(std::log10(static_cast<f64>(step)) + 1e-6));
        const f64 lead = static_cast<f64>(step) / decade;
        ASSERT_TRUE(std::fabs(lead - 1) < 1e-5 || std::fabs(lead - 2) < 1e-5 ||
                    std::fabs(lead - 5) < 1e-5)
            << lead;
        const f64 length = static_cast<f64>(newHigh) - static_cast<f64>(newLow);
        ASSERT_NEAR(length / static_cast<f64>(step), n, 1e-3 + 1e-6 * std::fabs(low / step));
    }
}

TEST(NiceScales, ExtremeRangesEnd) {
    constexpr f32 ranges[][2] = {{0.0F, 1e-45F},       {1e30F, 1e30F},       {-3e38F, 3e38F},
                                 {99998.9F, 99999.0F}, {1e8F, 1.0000001e8F}, {-1e-30F, 1e-38F}};
    for (const auto& range : ranges) {
        f32 low = 0;
        f32 high = 0;
        f32 step = 0;
        NiceScale(range[0], range[1], 10, low, high, step);
        EXPECT_LE(low, range[0]);
        EXPECT_GE(high, range[1]);
        EXPECT_LT(low, high);
        EXPECT_GT(step, 0.0F);
    }
}

TEST(TickFormats, WholeStepsHaveNoDecimals) {
    EXPECT_EQ(TickFormat(1.0F, 0.0F), "0");
    EXPECT_EQ(TickFormat(20.0F, -40.0F), "0");
    EXPECT_EQ(TickFormat(1e6F, 0.0F), "0");
}

TEST(TickFormats, FinerStepsHaveTheDecimalsTheyNeed) {
    EXPECT_EQ(TickFormat(0.5F, 0.0F), "0.0");
    EXPECT_EQ(TickFormat(0.1F, 0.7F), "0.0");
    EXPECT_EQ(TickFormat(0.02F, 0.7F), "0.0#");
    EXPECT_EQ(TickFormat(0.005F, 0.0F), "0.0##");
    EXPECT_EQ(TickFormat(0.25F, 0.125F), "0.0##"); // typed: 0.125, 0.375, ...
    EXPECT_EQ(TickFormat(1.0F, 0.5F), "0.0");      // 0.5, 1.5, ...
    EXPECT_EQ(Format(0.72, TickFormat(0.02F, 0.7F)), "0.72");
    EXPECT_EQ(Format(0.7, TickFormat(0.02F, 0.7F)), "0.7");
}

} // namespace
} // namespace quorvanta
