#include "core/analysis_state.h"
#include "core/fault.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>

namespace quorvanta {
namespace {

Array1<f32> Shares(std::initializer_list<f32> values) {
    Array1<f32> shares(1, static_cast<int>(values.size()));
    int i = 1;
    for (const f32 value : values)
        shares(i++) = value;
    return shares;
}

// --- Binomial coefficients --------------------------------------------------------------------

TEST(Choose, HasTheKnownValues) {
    EXPECT_EQ(Choose(5, 2), 10.0);
    EXPECT_EQ(Choose(10, 10), 1.0);
    EXPECT_EQ(Choose(0, 0), 1.0);
    EXPECT_DOUBLE_EQ(Choose(52, 5), 2598960.0);
    EXPECT_DOUBLE_EQ(Choose(60, 30), 118264581564861424.0);
}

TEST(Choose, IsZeroOutsideZeroToN) {
    EXPECT_EQ(Choose(5, -1), 0.0);
    EXPECT_EQ(Choose(5, 6), 0.0);
    EXPECT_EQ(Choose(-3, 0), 0.0);
    EXPECT_EQ(Choose(-3, 1), 0.0);
}

TEST(Choose, IsTheProductInWhateverOrderItIsAsked) {
    // The rows that are kept are filled from where they ended.
    for (const i16 k : {i16{7}, i16{3}, i16{15}, i16{0}, i16{12}})
        EXPECT_EQ(Choose(31, k), ChooseProduct(31, k)) << k;
    EXPECT_EQ(Choose(31, 24), Choose(31, 7));
    EXPECT_EQ(Choose(1000, 500), ChooseProduct(1000, 500));
    EXPECT_EQ(Choose(2000, 3), ChooseProduct(2000, 3));
}

TEST(ChooseProduct, IsOneForNothing) {
    EXPECT_EQ(ChooseProduct(5, 0), 1.0);
    EXPECT_EQ(ChooseProduct(5, -2), 1.0);
}

TEST(Choose, TheMiddleOfTheLargestKeptRowIsFinite) {
    ClearFloatFaults();
    EXPECT_TRUE(std::isfinite(Choose(1029, 514)));
    EXPECT_FALSE(HasFloatFault());
    EXPECT_TRUE(std::isinf(Choose(1030, 515)));
    EXPECT_TRUE(HasFloatFault());
    ClearFloatFaults();
}

// --- Binomial ---------------------------------------------------------------------------------

TEST(Binomial, HasTheTableValues) {
    // National Bureau of Standards, Tables of the Binomial Probability Distribution (1950), n = 10.
    EXPECT_NEAR(BinDensity(10, 3, 0.3F), 0.2668279, 1e-7);
    EXPECT_NEAR(BinCdf(10, 3, 0.3F), 1 - 0.3503893, 1e-7);
    EXPECT_NEAR(BinCdf(10, 7, 0.3F), 1 - 0.0015904, 1e-7);
}

TEST(Binomial, NothingIsOutsideZeroToN) {
    ClearFloatFaults();
    EXPECT_EQ(BinDensity(10, -1, 0.3F), 0.0F);
    EXPECT_EQ(BinDensity(10, 11, 0.3F), 0.0F);
    EXPECT_EQ(BinDensity(10, 500, 0.99999F), 0.0F);
    EXPECT_EQ(BinCdf(10, -1, 0.3F), 0.0F);
    EXPECT_EQ(BinCdf(10, 11, 0.3F), 1.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(Binomial, TheDistributionFunctionAtNIsOne) {
    for (const f32 n : {1.0F, 2.0F, 37.0F, 1000.0F})
        EXPECT_EQ(BinCdf(n, static_cast<i16>(n), 0.9F), 1.0F) << n;
}

TEST(Binomial, ABrokenNCountsWholeInTheCoefficient) {
    EXPECT_FLOAT_EQ(BinDensity(10.5F, 3, 0.3F),
                    static_cast<f32>(120 * std::pow(f64{0.3F}, 3) * std::pow(1 - f64{0.3F}, 7.5)));
    EXPECT_EQ(BinCdf(10.5F, 11, 0.3F), 1.0F);
}

TEST(Binomial, CertainAndImpossibleEventsRaiseNoFault) {
    ClearFloatFaults();
    for (const f32 n : {5.0F, 2000.0F}) {
        EXPECT_EQ(BinDensity(n, 0, 0), 1.0F);
        EXPECT_EQ(BinDensity(n, 1, 0), 0.0F);
        EXPECT_EQ(BinDensity(n, static_cast<i16>(n), 1), 1.0F);
    }
    EXPECT_EQ(BinCdf(5, 2, 0), 1.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(Binomial, ACountAbove16BitsIsAFault) {
    try {
        BinDensity(40000, 3, 0.5F);
        ADD_FAILURE() << "no fault";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.Kind(), Fault::Overflow);
    }
    EXPECT_THROW(BinCdf(40000, 3, 0.5F), RunTimeError);
}

TEST(BinInv, StopsAt502) {
    EXPECT_EQ(BinInv(0.99F, 1000, 0.9F), 502.0F);
    EXPECT_EQ(BinInv(2, 1000, 0.5F), 502.0F);
}

TEST(BinInv, IsTheSmallestCountThatReachesTheProbability) {
    for (const f32 q : {0.01F, 0.5F, 0.95F}) {
        const f32 x = BinInv(q, 40, 0.3F);
        const i16 count = static_cast<i16>(x);
        EXPECT_GE(BinCdf(40, count, 0.3F), q - 1e-5F);
        EXPECT_LT(BinCdf(40, static_cast<i16>(count - 1), 0.3F), q - 1e-5F);
    }
    EXPECT_EQ(BinInv(0, 40, 0.3F), 0.0F);
    EXPECT_EQ(BinInv(1, 10, 0.5F), 10.0F);
    // Short of the probability by less than 1e-5 counts as reaching it.
    EXPECT_EQ(BinInv(0.875005F, 3, 0.5F), 2.0F);
}

// --- Hypergeometric ---------------------------------------------------------------------------

TEST(Hypergeometric, HasTheKnownValues) {
    // A lady tasting tea (R. A. Fisher 1935): 4 cups of 8.
    EXPECT_DOUBLE_EQ(HyperDensity(8, 4, 4, 0.5F), 1.0 / 70);
    EXPECT_DOUBLE_EQ(HyperDensity(8, 4, 3, 0.5F), 16.0 / 70);
    EXPECT_NEAR(HyperCdf(8, 4, 2, 0.5F), 53.0 / 70, 1e-7);
}

TEST(Hypergeometric, MoreMarkedThanThereAreIsImpossible) {
    EXPECT_EQ(HyperDensity(20, 10, 7, 0.3F), 0.0);
    EXPECT_EQ(HyperDensity(20, 10, 11, 0.9F), 0.0);
    EXPECT_EQ(HyperDensity(20, 10, -1, 0.3F), 0.0);
    EXPECT_EQ(HyperDensity(20, 10, 3, 0.9F), 0.0); // 7 of only 2 unmarked
}

TEST(Hypergeometric, TheMarkedAreRoundedToAWholeNumber) {
    // 0.7 in 32 bits times 10 is below 7.
    EXPECT_EQ(HyperDensity(10, 10, 7, 0.7F), 1.0);
}

TEST(Hypergeometric, TheDistributionFunctionHasItsEnds) {
    EXPECT_EQ(HyperCdf(20, 10, -1, 0.3F), 0.0F);
    EXPECT_EQ(HyperCdf(20, 10, 10, 0.3F), 1.0F);
    EXPECT_EQ(HyperCdf(20, 10, 11, 0.3F), 1.0F);
    EXPECT_NEAR(HyperCdf(20, 10, 6, 0.3F), 1, 1e-6);
}

TEST(Hypergeometric, ALargePopulationRaisesNoFault) {
    ClearFloatFaults();
    f64 sum = 0;
    for (i16 x = 0; x <= 2000; ++x)
        sum += HyperDensity(5000, 2000, x, 0.4F);
    EXPECT_NEAR(sum, 1, 1e-9);
    EXPECT_FALSE(HasFloatFault());
}

// --- Poisson ----------------------------------------------------------------------------------

TEST(Poisson, NothingHappenedHasTheClampedExponential) {
    EXPECT_EQ(PoissonDensity(0, 100), static_cast<f32>(std::exp(-100.0)));
    EXPECT_EQ(PoissonDensity(0, 0), 1.0F);
    EXPECT_EQ(PoissonDensity(-1, 3), 0.0F);
}

TEST(Poisson, Above50TheDensityIsADifferenceOfChiSquareValues) {
    EXPECT_EQ(PoissonDensity(51, 50), Chi2Cdf(100, 102) - Chi2Cdf(100, 104));
    EXPECT_NE(PoissonDensity(50, 50), Chi2Cdf(100, 100) - Chi2Cdf(100, 102));
    EXPECT_NEAR(PoissonDensity(51, 50) / PoissonDensity(50, 50), 50.0 / 51, 2e-3);
}

TEST(Poisson, HasTheTableValues) {
    // E. C. Molina, Poisson's Exponential Binomial Limit (1942), mean 2: P(X <= 3) = 0.857123.
    EXPECT_NEAR(PoissonCdf(3, 2), 0.857123, 1e-3);
    EXPECT_NEAR(PoissonDensity(3, 2), 0.180447, 1e-6);
}

TEST(Poisson, AVeryLargeMeanRaisesNoFault) {
    ClearFloatFaults();
    EXPECT_EQ(PoissonDensity(50, 99999), 0.0F);
    EXPECT_EQ(PoissonCdf(100, 99999), 0.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(PoissonInv, IsTheSmallestCountThatReachesTheProbability) {
    for (const f32 q : {0.05F, 0.5F, 0.99F}) {
        const f32 x = PoissonInv(q, 7.5F);
        EXPECT_GE(PoissonCdf(x, 7.5F), q - 1e-5F);
        EXPECT_LT(PoissonCdf(x - 1, 7.5F), q - 1e-5F);
    }
}

TEST(PoissonInv, StopsAt502) {
    EXPECT_EQ(PoissonInv(0.5F, 5000), 502.0F);
}

// --- Tables of category proportions -----------------------------------------------------------

TEST(DiscreteTable, SumsTheFirstCategories) {
    const Array1<f32> shares = Shares({0.25F, 0.5F, 0.25F});
    EXPECT_EQ(DiscreteCdf(-0.1F, shares), 0.0F);
    EXPECT_EQ(DiscreteCdf(0, shares), 0.0F);
    EXPECT_EQ(DiscreteCdf(1, shares), 0.25F);
    EXPECT_EQ(DiscreteCdf(1.6F, shares), 0.75F);
    EXPECT_EQ(DiscreteCdf(2, shares), 0.75F);
    EXPECT_EQ(DiscreteCdf(3, shares), 1.0F);
    EXPECT_EQ(DiscreteCdf(99, shares), 1.0F);
}

TEST(DiscreteTable, FindsTheCategoryOfAProbability) {
    const Array1<f32> shares = Shares({0.25F, 0.5F, 0.25F});
    EXPECT_EQ(DiscreteInv(0, shares), 1);
    EXPECT_EQ(DiscreteInv(0.25F, shares), 1);
    EXPECT_EQ(DiscreteInv(0.26F, shares), 2);
    EXPECT_EQ(DiscreteInv(0.75F, shares), 2);
    EXPECT_EQ(DiscreteInv(1, shares), 3);
    EXPECT_EQ(DiscreteInv(2, shares), 3);
}

TEST(DiscreteTable, ATableThatSumsBelowOneEndsAtItsLastCategory) {
    EXPECT_EQ(DiscreteInv(0.95F, Shares({0.25F, 0.5F})), 2);
}

// --- Kolmogorov-Smirnov -----------------------------------------------------------------------

TEST(KolSmiCdf, HasItsEnds) {
    for (const f32 n : {1.0F, 5.0F, 50.0F, 51.0F, 500.0F}) {
        EXPECT_EQ(KolSmiCdf(n, 0), 0.0F) << n;
        EXPECT_EQ(KolSmiCdf(n, -0.5F), 0.0F) << n;
        EXPECT_EQ(KolSmiCdf(n, 1), 1.0F) << n;
        EXPECT_EQ(KolSmiCdf(n, 1.5F), 1.0F) << n;
    }
}

TEST(KolSmiCdf, IsExactUpTo50AndTheLimitAbove) {
    const f64 d = 0.15F;
    EXPECT_EQ(KolSmiCdf(51, 0.15F),
              static_cast<f32>(1 - std::exp(static_cast<f32>(-2 * 51 * d * d))));
    EXPECT_GT(std::fabs(KolSmiCdf(50, 0.15F) - (1 - std::exp(-2 * 50 * d * d))), 0.003);
}

TEST(KolSmiCdf, HasTheTableValues) {
    // L. H. Miller (1956), Table of percentage points of Kolmogorov statistics, JASA 51, 111-121:
    // upper 5 % and 1 % points of the one-sided statistic.
    const struct {
        f32 N, D5, D1;
    } rows[] = {{2, 0.77639F, 0.90000F},  {3, 0.63604F, 0.78456F},  {4, 0.56522F, 0.68887F},
                {5, 0.50945F, 0.62718F},  {10, 0.36866F, 0.45662F}, {20, 0.26473F, 0.32866F},
                {30, 0.21756F, 0.27023F}, {40, 0.18913F, 0.23494F}, {50, 0.16959F, 0.21068F}};
    for (const auto& row : rows) {
        // Half a unit of the fifth decimal of d moves the probability by less than 5e-6 * 2 n.
        const f64 tolerance = 5e-6 * 2 * row.N;
        EXPECT_NEAR(KolSmiCdf(row.N, row.D5), 0.95, tolerance) << row.N;
        EXPECT_NEAR(KolSmiCdf(row.N, row.D1), 0.99, tolerance) << row.N;
        EXPECT_NEAR(KolSmiInv(row.N, 0.95F, 0), row.D5, 2e-5) << row.N;
        EXPECT_NEAR(KolSmiInv(row.N, 0.99F, 0), row.D1, 2e-5) << row.N;
    }
}

TEST(KolSmiCdf, OfASampleOfOneIsUniform) {
    for (const f32 d : {0.1F, 0.5F, 0.9F})
        EXPECT_NEAR(KolSmiCdf(1, d), d, 1e-6);
}

TEST(KolSmiDiscreteCdf, AgreesWithTheContinuousNullForAFineTable) {
    Array1<f32> shares(1, 2000);
    for (int i = 1; i <= 2000; ++i)
        shares(i) = 1.0F / 2000;
    for (const i16 side : {i16{0}, i16{1}})
        EXPECT_NEAR(KolSmiDiscreteCdf(20, 0.25F, shares, side), KolSmiCdf(20, 0.25F), 0.01);
}

TEST(KolSmiDiscreteCdf, Above50TheLimitIsThatOfTheContinuousNull) {
    const Array1<f32> shares = Shares({0.25F, 0.25F, 0.5F});
    EXPECT_EQ(KolSmiDiscreteCdf(51, 0.2F, shares, 0), KolSmiCdf(51, 0.2F));
    EXPECT_EQ(KolSmiDiscreteCdf(51, 0.2F, shares, 1), KolSmiCdf(51, 0.2F));
}

TEST(KolSmiDiscreteCdf, ASymmetricTableHasTwoLikeSides) {
    const Array1<f32> shares = Shares({0.125F, 0.25F, 0.25F, 0.25F, 0.125F});
    for (const f32 d : {0.1F, 0.23F, 0.4F})
        EXPECT_NEAR(KolSmiDiscreteCdf(9, d, shares, 0), KolSmiDiscreteCdf(9, d, shares, 1), 1e-6);
}

TEST(KolSmiInv, Above50IsTheLimit) {
    EXPECT_EQ(KolSmiInv(51, 0.95F, 0),
              static_cast<f32>(std::sqrt(-std::log(1 - f64{0.95F}) / 2 / 51)));
    EXPECT_NEAR(KolSmiInv(51, 0.95F, 0), std::sqrt(std::log(20.0) / 102), 1e-7);
}

TEST(KolSmiInv, ACancelledSearchHasNoValue) {
    Cancelled = True;
    EXPECT_EQ(KolSmiInv(20, 0.95F, 0), 99999.0F);
    Cancelled = False;
}

TEST(KolSmiTwoCdf, HasTheTableValues) {
    // N. V. Smirnov (1948), Table for estimating the goodness of fit of empirical distributions,
    // Ann. Math. Statist. 19, 279-281: the 10, 5 and 1 % points of the limit to four decimals.
    const f64 root = std::sqrt(16000.0 * 16000.0 / 32000.0);
    const struct { f64 Z, P; } rows[] = {{1.2238, 0.90}, {1.3581, 0.95}, {1.6276, 0.99}};
    for (const auto& row : rows)
        // Half a unit of the fourth decimal of z, times a density of 0.5 at most.
        EXPECT_NEAR(KolSmiTwoCdf(16000, 16000, static_cast<f32>(row.Z / root), 0), row.P, 2.5e-5)
            << row.Z;
}

TEST(KolSmiTwoCdf, StaysWithinZeroAndOne) {
    EXPECT_EQ(KolSmiTwoCdf(20, 30, 0, 0), 0.0F);
    EXPECT_EQ(KolSmiTwoCdf(20, 30, -1, 1), 0.0F);
    f32 before = 0;
    for (int i = 1; i <= 1000; ++i) {
        const f32 p = KolSmiTwoCdf(100, 100, static_cast<f32>(i) / 1000, 0);
        EXPECT_GE(p, before - 2e-4F) << i; // the cut of the series
        EXPECT_LE(p, 1.0F);
        before = p;
    }
}

TEST(KolSmiTwoCdf, ATinyDistanceIsNoEvidence) {
    // Twenty terms of the series don't settle below a scaled distance of 0.1; taken as they are
    // they would rise to 1 again.
    for (const f32 d : {1e-6F, 1e-4F, 1e-3F, 0.01F})
        EXPECT_EQ(KolSmiTwoCdf(100, 100, d, 0), 0.0F) << d;
}

TEST(KolSmiTwoCdf, OneSidedIsTheExponentialLimit) {
    EXPECT_NEAR(KolSmiTwoCdf(20, 30, 0.3F, 1), 1 - std::exp(-2 * 12 * 0.09), 1e-6);
}

TEST(KolSmiTwoCdf, TheSumOfTheSizesHas16Bits) {
    EXPECT_NO_THROW(KolSmiTwoCdf(16383, 16384, 0.01F, 0));
    EXPECT_THROW(KolSmiTwoCdf(16384, 16384, 0.01F, 0), RunTimeError);
}

} // namespace
} // namespace quorvanta
