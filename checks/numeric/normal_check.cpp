#include "core/fault.h"
#include "numeric/probdist.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

TEST(NorCdf, IsExactlyAHalfAtZero) {
    EXPECT_EQ(NorCdf(0.0F), 0.5F);
    EXPECT_EQ(NorCdf(-0.0F), 0.5F);
}

TEST(NorCdf, IsExactlyZeroAndOneFarOut) {
    EXPECT_EQ(NorCdf(10.0F), 1.0F);
    EXPECT_EQ(NorCdf(-10.0F), 0.0F);
    EXPECT_EQ(NorCdf(1e30F), 1.0F);
    EXPECT_EQ(NorCdf(-1e30F), 0.0F);
    EXPECT_EQ(NorCdf(9.99F), 1.0F);
    EXPECT_GE(NorCdf(-9.99F), 0.0F);
}

TEST(NorCdf, IsTheApproximationAndNotTheExactFunction) {
    EXPECT_EQ(NorCdf(1.96F), 0.97500217F);
    EXPECT_NE(NorCdf(1.96F), 0.97500210F);
}

TEST(NorCdf, NeverFallsBetweenSteps) {
    f32 before = 0;
    for (int i = -1000; i <= 1000; ++i) {
        const f32 p = NorCdf(static_cast<f32>(i) / 100);
        EXPECT_GE(p, before) << i;
        before = p;
    }
}

TEST(NorDensity, IsSymmetricAndVanishesFarOut) {
    EXPECT_EQ(NorDensity(1.25F), NorDensity(-1.25F));
    EXPECT_EQ(NorDensity(1e6F), 0.0F);
    EXPECT_FLOAT_EQ(NorDensity(0.0F), 0.39894228F);
}

TEST(NorInv, AnswersProbabilitiesOutsideZeroToOneWithItsMarks) {
    EXPECT_EQ(NorInv(0.0F), -100.0F);
    EXPECT_EQ(NorInv(1.0F), 100.0F);
    EXPECT_EQ(NorInv(-0.25F), -100.0F);
    EXPECT_EQ(NorInv(1.25F), 100.0F);
}

TEST(NorInv, AProbabilityTooSmallForALogarithmIsLikeZero) {
    ClearFloatFaults();
    EXPECT_EQ(NorInv(1e-30F), -100.0F);
    EXPECT_EQ(NorInv(1e-17F), -100.0F);
    EXPECT_GT(NorInv(1e-15F), -9.0F);
    EXPECT_LT(NorInv(0.99999994F), 6.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(NorInv, IsZeroAtAHalf) {
    EXPECT_EQ(NorInv(0.5F), 0.0F);
}

TEST(NorInv, IsTheApproximationAndNotTheExactQuantile) {
    EXPECT_EQ(NorInv(0.975F), 1.9603955F);
    EXPECT_EQ(NorInv(0.025F), -1.9603949F);
    EXPECT_NEAR(NorInv(0.975F), -NorInv(0.025F), 1e-6);
}

TEST(NorTail, HasZeroTailAboveSeven) {
    f32 z = 8;
    f32 p = -1;
    NorTail(1, z, p);
    EXPECT_EQ(p, 0.0F);
    z = -8;
    NorTail(1, z, p);
    EXPECT_EQ(p, 1.0F);
}

TEST(NorTail, AnswersTheUsualLevelsFromConstants) {
    const struct {
        f32 P, Z;
    } levels[] = {{0.05F, 1.64485F}, {0.025F, 1.95996F}, {0.01F, 2.32635F}, {0.005F, 2.57583F}};
    for (const auto& level : levels) {
        f32 p = level.P;
        f32 z = 0;
        NorTail(2, z, p);
        EXPECT_EQ(z, level.Z);
        EXPECT_EQ(p, level.P);
    }
    f32 p = 0.5F;
    f32 z = -1;
    NorTail(2, z, p);
    EXPECT_EQ(z, 0.0F);
}

TEST(NorTail, TheUpperHalfMirrorsTheLower) {
    // 1 - 0.975 is not the 32-bit float of 0.025, so the polynomial answers.
    f32 p = 0.975F;
    f32 z = 0;
    NorTail(2, z, p);
    EXPECT_NEAR(z, -1.95996, 1e-5);
    // 1 - 0.75 is exact.
    f32 q = 0.25F;
    f32 y = 0;
    NorTail(2, y, q);
    p = 0.75F;
    NorTail(2, z, p);
    EXPECT_EQ(z, -y);
}

TEST(NorTail, AnyOtherModeDoesNothing) {
    for (const i16 mode : {i16{0}, i16{3}, i16{-1}}) {
        f32 z = 1.5F;
        f32 p = 0.25F;
        NorTail(mode, z, p);
        EXPECT_EQ(z, 1.5F);
        EXPECT_EQ(p, 0.25F);
    }
}

TEST(NorTail, ItsInverseDoesNotAgreeWithNorInv) {
    f32 p = 0.025F;
    f32 z = 0;
    NorTail(2, z, p);
    EXPECT_GT(std::fabs(z - NorInv(0.975F)), 4e-4);
}

} // namespace
} // namespace quorvanta
