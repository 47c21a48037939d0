// The location-scale families: their edges and marks, and that cdf and quantile undo each other.
#include "core/fault.h"
#include "numeric/probdist.h"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>

namespace quorvanta {
namespace {

Array1<f32> FromZero(std::initializer_list<f32> values) {
    Array1<f32> array(0, static_cast<int>(values.size()) - 1);
    int i = 0;
    for (const f32 value : values)
        array(i++) = value;
    return array;
}

Array1<f32> FromOne(std::initializer_list<f32> values) {
    Array1<f32> array(1, static_cast<int>(values.size()));
    int i = 1;
    for (const f32 value : values)
        array(i++) = value;
    return array;
}

TEST(Exponential, Edges) {
    EXPECT_EQ(ExpCdf(0), 0.0F);
    EXPECT_EQ(ExpCdf(-1), 0.0F);
    EXPECT_EQ(ExpDensity(0), 99999.0F);
    EXPECT_EQ(ExpDensity(-1), 0.0F);
    EXPECT_FLOAT_EQ(ExpDensity(1e-6F), 0.999999F);
    EXPECT_EQ(ExpInv(0), 0.0F);
}

TEST(Uniform, Edges) {
    EXPECT_EQ(UniformCdf(-0.6F), 0.0F);
    EXPECT_EQ(UniformCdf(-0.5F), 0.0F);
    EXPECT_EQ(UniformCdf(0.25F), 0.75F);
    EXPECT_EQ(UniformCdf(0.5F), 1.0F);
    EXPECT_EQ(UniformDensity(-0.51F), 0.0F);
    EXPECT_EQ(UniformDensity(-0.5F), 1.0F);
    EXPECT_EQ(UniformDensity(0.5F), 1.0F);
    EXPECT_EQ(UniformDensity(0.51F), 0.0F);
    EXPECT_EQ(UniformInv(0.75F), 0.25F);
}

TEST(Laplace, Edges) {
    EXPECT_EQ(LaplaceCdf(0), 0.5F);
    EXPECT_EQ(LaplaceDensity(0), 0.5F);
    EXPECT_EQ(LaplaceInv(0.5F), 0.0F);
    EXPECT_EQ(LaplaceDensity(-2), LaplaceDensity(2));
}

TEST(Cauchy, Edges) {
    EXPECT_EQ(CauchyCdf(0), 0.5F);
    EXPECT_FLOAT_EQ(CauchyCdf(1), 0.75F);
    EXPECT_FLOAT_EQ(CauchyDensity(0), 0.31830988F);
}

TEST(Logistic, Edges) {
    EXPECT_EQ(LogisticCdf(0), 0.5F);
    EXPECT_EQ(LogisticDensity(0), 0.25F);
    EXPECT_EQ(LogisticInv(0), -99999.0F);
    EXPECT_EQ(LogisticInv(-0.5F), -99999.0F);
    EXPECT_EQ(LogisticInv(1), 99999.0F);
    EXPECT_EQ(LogisticInv(0.5F), 0.0F);
}

TEST(ExtremeValue, Edges) {
    EXPECT_EQ(ExtremeInv(0), -100.0F);
    EXPECT_EQ(ExtremeInv(1), 100.0F);
    EXPECT_FLOAT_EQ(ExtremeCdf(0), 0.36787944F);
    EXPECT_EQ(ExtremeCdf(-200), 0.0F);
    EXPECT_EQ(ExtremeDensity(-200), 0.0F);
}

TEST(Weibull, NeverLessThanTheLowEdgeForAPositiveX) {
    EXPECT_EQ(WeibullCdf(1e-8F, 1, 2), 1e-5F);
    EXPECT_EQ(WeibullCdf(1e-30F, 1e10F, 5), 1e-5F);
    EXPECT_EQ(WeibullCdf(0, 1, 2), 0.0F);
    EXPECT_EQ(WeibullCdf(-1, 1, 2), 0.0F);
    EXPECT_EQ(WeibullCdf(1, 0, 2), 0.99999F);
}

TEST(Weibull, IsLoweredByTheLowEdge) {
    EXPECT_NEAR(WeibullCdf(2, 1, 1), 1 - std::exp(-2.0) - 1e-5, 1e-7);
    EXPECT_NEAR(WeibullCdf(1000, 1, 1), 1 - 1e-5, 1e-7);
}

TEST(Weibull, TheDensityHasTheScaleToTheFirstPower) {
    EXPECT_FLOAT_EQ(WeibullDensity(2, 4, 3), static_cast<f32>(3.0 * 4.0 / 4.0 * std::exp(-0.125)));
    EXPECT_EQ(WeibullDensity(0, 1, 3), 99999.0F);
    EXPECT_EQ(WeibullDensity(-1, 1, 3), 0.0F);
    EXPECT_EQ(WeibullDensity(1, 0, 3), 0.0F);
}

TEST(Weibull, ALargeHazardRaisesNoFault) {
    ClearFloatFaults();
    EXPECT_NEAR(WeibullCdf(99999, 1e-5F, 99), 0.99999, 1e-7);
    EXPECT_EQ(WeibullDensity(99999, 1e-5F, 99), 0.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(Weibull, TheQuantileOfOneIsFinite) {
    ClearFloatFaults();
    EXPECT_FLOAT_EQ(WeibullInv(1, 2, 1), static_cast<f32>(2 * -std::log(f64{1e-5F})));
    EXPECT_FALSE(HasFloatFault());
}

TEST(Lognormal, Edges) {
    EXPECT_EQ(LognormCdf(0, 0, 1), 1e-5F);
    EXPECT_EQ(LognormCdf(-1, 0, 1), 1e-5F);
    EXPECT_EQ(LognormCdf(1, 0, 0), 0.99999F);
    EXPECT_EQ(LognormCdf(1, 0, 1), 0.5F);
    EXPECT_EQ(LognormDensity(0, 0, 1), 1e-5F);
    EXPECT_EQ(LognormDensity(1, 0, 0), 1e-5F);
    EXPECT_EQ(LognormInv(0.5F, 0, 1), 1.0F);
}

TEST(Gamma, Edges) {
    EXPECT_EQ(GammaCdf(0, 1, 2), 0.0F);
    EXPECT_EQ(GammaCdf(0, -1, 2), 0.0F); // before the scale is looked at
    EXPECT_EQ(GammaCdf(-1, 1, 2), 0.0F);
    EXPECT_EQ(GammaCdf(1, 0, 2), 0.99999F);
    EXPECT_EQ(GammaDensity(1, 0, 2), 0.0F);
    EXPECT_EQ(GammaDensity(-1, 1, 2.5F), 0.0F);
    EXPECT_EQ(GammaDensity(0, 1, 0.5F), 99999.0F);
    EXPECT_EQ(GammaDensity(0, 1, 2), 0.0F);
    EXPECT_NEAR(GammaDensity(0, 2, 1), 0.5, 1e-5);
}

// An integral from 0 to 0 would be divided by a gamma function that these shapes have no value of.
TEST(Gamma, AtZeroNothingIsIntegrated) {
    ClearFloatFaults();
    for (const f32 shape : {-2.0F, -0.5F, 0.0F, 0.5F, 1.0F, 3.0F, 500.0F})
        EXPECT_EQ(GammaCdf(0, 1, shape), 0.0F) << shape;
    EXPECT_FALSE(HasFloatFault());
}

TEST(Gamma, FarOutEverythingHasHappened) {
    // With the peak in a few millionths of the range, the integrator would step over it.
    EXPECT_EQ(GammaCdf(1e6F, 1, 2), 1.0F);
    EXPECT_EQ(GammaCdf(1e6F, 1, 0.5F), 1.0F);
    for (f32 x = 5; x < 1e6F; x *= 1.3F)
        EXPECT_NEAR(GammaCdf(x, 1, 3), 1 - std::exp(-f64{x}) * (1 + x + f64{x} * x / 2), 2e-5) << x;
}

TEST(Families, QuantileAndDistributionFunctionUndoEachOther) {
    for (int i = 1; i < 20; ++i) {
        const f32 q = static_cast<f32>(i) / 20;
        EXPECT_NEAR(ExpCdf(ExpInv(q)), q, 1e-6);
        EXPECT_NEAR(UniformCdf(UniformInv(q)), q, 1e-6);
        EXPECT_NEAR(LaplaceCdf(LaplaceInv(q)), q, 1e-6);
        EXPECT_NEAR(CauchyCdf(CauchyInv(q)), q, 1e-6);
        EXPECT_NEAR(LogisticCdf(LogisticInv(q)), q, 1e-6);
        EXPECT_NEAR(ExtremeCdf(ExtremeInv(q)), q, 1e-6);
        EXPECT_NEAR(WeibullCdf(WeibullInv(q, 2.5F, 0.7F), 2.5F, 0.7F), q - 1e-5F, 1e-6);
        // 4.5e-4 is the error bound of the normal quantile.
        EXPECT_NEAR(LognormCdf(LognormInv(q, 0.3F, 0.8F), 0.3F, 0.8F), q, 4.5e-4 * 0.4);
    }
}

// --- Piecewise exponential --------------------------------------------------------------------

TEST(PiecewiseExponential, FollowsTheHazardOfEachInterval) {
    const Array1<f32> cuts = FromZero({0, 1, 3});
    const Array1<f32> hazards = FromOne({0.5F, 0.25F});
    EXPECT_EQ(PwExpCdf(0, cuts, hazards), 0.0F);
    EXPECT_EQ(PwExpCdf(-1, cuts, hazards), 0.0F);
    EXPECT_NEAR(PwExpCdf(0.5F, cuts, hazards), 1 - std::exp(-0.25), 1e-7);
    EXPECT_NEAR(PwExpCdf(1, cuts, hazards), 1 - std::exp(-0.5), 1e-7);
    EXPECT_NEAR(PwExpCdf(2, cuts, hazards), 1 - std::exp(-0.75), 1e-7);
    // Nothing happens past the last cut.
    EXPECT_NEAR(PwExpCdf(3, cuts, hazards), 1 - std::exp(-1.0), 1e-7);
    EXPECT_NEAR(PwExpCdf(30, cuts, hazards), 1 - std::exp(-1.0), 1e-7);
}

TEST(PiecewiseExponential, TheDensityBreaksWhereACutIsPassed) {
    const Array1<f32> cuts = FromZero({0, 1, 3});
    const Array1<f32> hazards = FromOne({0.5F, 0.25F});
    EXPECT_EQ(PwExpDensity(0, cuts, hazards), 99999.0F);
    EXPECT_NEAR(PwExpDensity(0.5F, cuts, hazards), 0.5 * std::exp(-0.25), 1e-7);
    EXPECT_EQ(PwExpDensity(1, cuts, hazards), 99999.0F);
    EXPECT_NEAR(PwExpDensity(1, cuts, hazards), 0.25 * std::exp(-0.5), 1e-7);
    EXPECT_NEAR(PwExpDensity(2, cuts, hazards), 0.25 * std::exp(-0.75), 1e-7);
    EXPECT_EQ(PwExpDensity(4, cuts, hazards), 99999.0F);
    EXPECT_EQ(PwExpDensity(5, cuts, hazards), 0.0F);
    EXPECT_EQ(PwExpDensity(-1, cuts, hazards), 0.0F);
}

} // namespace
} // namespace quorvanta
