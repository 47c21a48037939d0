#include "numeric/integra1.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

TEST(TrapezoidSum, IsExactForAStraightLine) {
    const auto line = [](f64 x) { return 3 * x + 1; };
    for (const i16 n : {i16{1}, i16{2}, i16{7}, i16{64}})
        EXPECT_NEAR(TrapezoidSum(line, 0, 2, n), 8, 1e-12) << n;
}

TEST(TrapezoidSum, TakesEachAbscissaOnce) {
    int calls = 0;
    TrapezoidSum([&calls](f64) { return static_cast<f64>(++calls); }, 0, 1, 5);
    EXPECT_EQ(calls, 6);
}

TEST(TrapezoidSum, HasTheTextbookValue) {
    // x^2 over 0 to 1 with 4 panels: (0 + 2 (1/16 + 4/16 + 9/16) + 1) / 8 = 0.34375.
    EXPECT_DOUBLE_EQ(TrapezoidSum([](f64 x) { return x * x; }, 0, 1, 4), 0.34375);
}

TEST(RombergIntegrate, IsExactForPolynomials) {
    const auto f = [](f64 x) { return 5 * x * x * x * x - 3 * x * x + 1; };
    EXPECT_NEAR(RombergIntegrate(f, -1, 2, 100, 1e-5), 33 - 9 + 3, 1e-10);
}

TEST(RombergIntegrate, AgreesWithClosedForms) {
    EXPECT_NEAR(RombergIntegrate([](f64 x) { return std::exp(x); }, 0, 1, 100, 1e-5),
                std::exp(1.0) - 1, 1e-8);
    EXPECT_NEAR(RombergIntegrate([](f64 x) { return std::sin(x); }, 0, 3.14159265358979, 100, 1e-5),
                2, 1e-8);
}

TEST(RombergIntegrate, TakesSixRowsAtLeast) {
    // A constant is exact in the first row; 2, 3, 5, 9, 17 and 33 abscissas are taken all the same.
    int calls = 0;
    const auto one = [&calls](f64) {
        ++calls;
        return 1.0;
    };
    EXPECT_DOUBLE_EQ(RombergIntegrate(one, 0, 1, 100, 1e-5), 1);
    EXPECT_EQ(calls, 2 + 3 + 5 + 9 + 17 + 33);
}

TEST(RombergIntegrate, SeesAPeakBetweenTheFirstAbscissas) {
    // A normal density of standard deviation 0.03 at 0.2: the first rows see next to nothing.
    const auto peak = [](f64 x) {
        const f64 z = (x - 0.2) / 0.03;
        return std::exp(-z * z / 2) / (0.03 * std::sqrt(2 * 3.14159265358979));
    };
    EXPECT_NEAR(RombergIntegrate(peak, 0, 1, 100, 1e-5), 1, 1e-4);
}

TEST(RombergIntegrate, EndsAtTheMaximumOfSteps) {
    int calls = 0;
    const auto rough = [&calls](f64) {
        ++calls;
        return calls % 7 == 0 ? 1.0 : 0.0;
    };
    RombergIntegrate(rough, 0, 1, 3, 1e-5);
    EXPECT_EQ(calls, 2 + 3 + 5);
}

TEST(RombergIntegrate, EndsBeforeThePanelsLeave16Bits) {
    int calls = 0;
    const auto rough = [&calls](f64 x) {
        ++calls;
        return std::fmod(1234567.891 * x * x, 1.0); // no estimate is near the one before
    };
    RombergIntegrate(rough, 0, 1, 100, 1e-12);
    EXPECT_EQ(calls, 15 + 32767); // n + 1 abscissas for n = 1, 2, 4, ..., 16384
}

TEST(RombergIntegrate, AnIntegrandThatIsNothingHasNoIntegral) {
    EXPECT_EQ(RombergIntegrate([](f64) { return 0.0; }, 0, 1, 100, 1e-5), 0.0);
}

} // namespace
} // namespace quorvanta
