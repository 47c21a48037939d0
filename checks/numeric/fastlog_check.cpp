#include "core/fault.h"
#include "numeric/fastlog.h"
#include "support/statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

constexpr int uniforms = 1 << 24;

// All of them, or about a tenth: a step that takes in every residue of a power of two.
const int step = checks::WholeStatistics() ? 1 : 11;

// ln and cos of the C library in 80-bit arithmetic are exact beside the errors looked for.
static_assert(sizeof(long double) > sizeof(f64));

f64 RelativeError(f64 value, long double exact) {
    return exact == 0 ? std::fabs(value) : static_cast<f64>(std::fabs((value - exact) / exact));
}

// Every argument that the exponential, the normal and the truncated generators can form: there are
// only 2^24 uniform numbers.
TEST(FastLog, IsAccurateForEveryUniformNumber) {
    f64 worst = 0;
    for (int i = 0; i < uniforms; i += step) {
        const f64 u = i * 0x1p-24;
        for (const f64 x : {u + 1.0e-10, 1.0000000001 - u})
            worst =
                std::max(worst, RelativeError(FastLog(x), std::log(static_cast<long double>(x))));
    }
    EXPECT_LT(worst, 3.0e-16);
}

TEST(FastExp, IsAccurateWhereItIsDefined) {
    f64 worst = 0;
    for (f64 x = -708; x <= 709; x += 0.000873)
        worst = std::max(worst, RelativeError(FastExp(x), std::exp(static_cast<long double>(x))));
    EXPECT_LT(worst, 4.0e-16);
    EXPECT_EQ(FastExp(0), 1);
    EXPECT_EQ(FastExp(-709), 0);
    EXPECT_EQ(FastExp(1e300), FastExp(709));
    EXPECT_GT(FastExp(709), 1e300);
}

// Weibull variates of any shape are rounded to 32 bits.
TEST(FastPow, IsAccurateForTheVariatesThatAreRoundedTo32Bits) {
    for (const f64 y : {0.1, 0.5, 1.0, 2.0, 10.0})
        for (f64 x = 1.0e-9; x < 25; x *= 1.00137) {
            const long double exact = std::pow(static_cast<long double>(x), y);
            EXPECT_LT(RelativeError(FastPow(x, y), exact), 1.0e-13) << x << " " << y;
        }
    EXPECT_EQ(FastPow(0, 1), FastPow(0, 2));
    EXPECT_LT(FastPow(0, 1), 1e-300);
}

// Every argument of a Cauchy variate.
TEST(FastTan, IsAccurateForEveryUniformNumber) {
    f64 worst = 0;
    for (int i = 0; i < uniforms; i += step) {
        const f64 x = (i * 0x1p-24 - 0.5) * 3.141592654;
        worst = std::max(worst, RelativeError(FastTan(x), std::tan(static_cast<long double>(x))));
    }
    EXPECT_LT(worst, 2.0e-15);
}

TEST(FastLog, IsAccurateOverTheWholeRange) {
    f64 worst = 0;
    for (f64 x = 1.0e-300; x < 1.0e300; x *= 1.00137)
        worst = std::max(worst, RelativeError(FastLog(x), std::log(static_cast<long double>(x))));
    EXPECT_LT(worst, 3.0e-16);
    EXPECT_EQ(FastLog(1.0), 0.0);
}

TEST(FastLog, RaisesNoFault) {
    ClearFloatFaults();
    for (const f64 x : {2.3e-308, 1.0e-10, 1.0, 1.7e308})
        EXPECT_TRUE(std::isfinite(FastLog(x)));
    EXPECT_FALSE(HasFloatFault());
}

TEST(FastCos, IsAccurateForEveryUniformNumber) {
    f64 worst = 0;
    for (int i = 0; i < uniforms; i += step) {
        const f64 x = 6.283185308 * (i * 0x1p-24);
        worst = std::max(worst, RelativeError(FastCos(x), std::cos(static_cast<long double>(x))));
    }
    EXPECT_LT(worst, 7.0e-16);
}

} // namespace
} // namespace quorvanta
