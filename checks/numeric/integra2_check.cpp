#include "numeric/integra2.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

TEST(NestedSimpson, IsExactForCubics) {
    const auto f = [](f64 x, f64 s) {
        return (x * x * x - 2.0 * x + 1.0) * (4.0 * s * s * s + 3.0);
    };
    // (81/4 - 9 + 3 - (1/4 - 1 + 1)) over 1..3, and 16 + 6 over 0..2.
    EXPECT_NEAR(NestedSimpson(f, 1.0, 3.0, 1, 2.0, 1), 14.0 * 22.0, 1.0e-11);
    EXPECT_NEAR(NestedSimpson(f, 1.0, 3.0, 30, 2.0, 50), 14.0 * 22.0, 1.0e-10);
    EXPECT_NEAR(NestedSimpson(f, 3.0, 1.0, 3, 2.0, 2), -14.0 * 22.0, 1.0e-11);
}

// The error of each direction, h^4/180 times the width times the fourth derivative, bounds it:
// below 2 (pi/60)^4/180 pi + 2 (1/20)^4/180 e for sin(x) exp(s) with 60 and 20 intervals.
TEST(NestedSimpson, MeetsItsErrorBound) {
    const f64 pi = 3.141592653589793;
    const f64 exact = 2.0 * (std::exp(1.0) - 1.0);
    const auto f = [](f64 x, f64 s) { return std::sin(x) * std::exp(s); };
    EXPECT_NEAR(NestedSimpson(f, 0.0, pi, 30, 1.0, 10), exact,
                1.72 * pi * std::pow(pi / 60.0, 4) / 180.0 +
                    2.0 * std::exp(1.0) * std::pow(1.0 / 20.0, 4) / 180.0);
    EXPECT_GT(std::fabs(NestedSimpson(f, 0.0, pi, 2, 1.0, 10) - exact), 1.0e-3);
}

// 2n intervals of x and 2m of s: every node once.
TEST(NestedSimpson, EvaluatesEveryNodeOnce) {
    int count = 0;
    f64 lowX = 9;
    f64 highS = -9;
    const auto f = [&](f64 x, f64 s) {
        ++count;
        lowX = std::fmin(lowX, x);
        highS = std::fmax(highS, s);
        return 1.0;
    };
    EXPECT_NEAR(NestedSimpson(f, -10.0, 10.0, 30, 4.1335, 50), 20.0 * 4.1335, 1.0e-12);
    EXPECT_EQ(count, 61 * 101);
    EXPECT_EQ(lowX, -10.0);
    EXPECT_NEAR(highS, 4.1335, 1.0e-15);
}

} // namespace
} // namespace quorvanta
