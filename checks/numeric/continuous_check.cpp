#include "core/fault.h"
#include "numeric/gamma0.h"
#include "numeric/integra1.h"
#include "numeric/probdist.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace quorvanta {
namespace {

f32 Beta(f32 x, f32 a, f32 b) {
    return BetaInc(x, a, b);
}

f32 Chi2TailOf(f32 df, f32 chi2) {
    f32 p = -1;
    Chi2Tail(1, df, chi2, p);
    return p;
}

f32 FQuantile(f32 p, f32 df1, f32 df2) {
    return FInv(p, df1, df2);
}

// --- Gamma and beta functions -----------------------------------------------------------------

TEST(Factorial, IsExactUpToFifty) {
    f64 product = 1;
    for (i16 n = 1; n <= 22; ++n) { // whole numbers that 64 bits hold exactly
        product *= n;
        EXPECT_EQ(Factorial(n), product) << n;
    }
    EXPECT_EQ(Factorial(0), 1.0);
    EXPECT_EQ(Factorial(50), 30414093201713378043612608166064768844377641568960512e12);
}

TEST(Factorial, ComesFromTheFormulaUpTo140) {
    // The exponent is midway between the bounds of H. Robbins (1955), 1/(12 n + 1) and 1/(12 n).
    const auto halfWidth = [](f64 n) { return (1 / (12 * n) - 1 / (12 * n + 1)) / 2; };
    EXPECT_NEAR(Factorial(51) / 1.551118753287382e66, 1, halfWidth(51));
    EXPECT_NEAR(Factorial(140) / 1.346201247571752e241, 1, halfWidth(140));
    EXPECT_TRUE(std::isfinite(Factorial(140)));
    EXPECT_EQ(Factorial(141), 1e300);
    EXPECT_EQ(Factorial(32767), 1e300);
}

TEST(Factorial, ANegativeNumberIsAFault) {
    EXPECT_THROW(Factorial(-1), RunTimeError);
}

TEST(GammaFn, IsZeroAtZero) {
    ClearFloatFaults();
    EXPECT_EQ(GammaFn(0), 0.0);
    EXPECT_FALSE(HasFloatFault());
}

TEST(GammaFn, IsClassicalAtHalves) {
    const f64 rootPi = 1.7724538509055160273;
    // The first term left out of Stirling's series at x + 2.
    const auto bound = [](f64 x) { return 1 / (1260 * std::pow(x + 2, 5)); };
    EXPECT_NEAR(GammaFn(0.5) / rootPi, 1, bound(0.5));
    EXPECT_NEAR(GammaFn(1.5) / (rootPi / 2), 1, bound(1.5));
    // Brought back to 0.5.
    EXPECT_NEAR(GammaFn(-0.5) / (-2 * rootPi), 1, bound(0.5));
    EXPECT_NEAR(GammaFn(-1.5) / (4 * rootPi / 3), 1, bound(0.5));
}

TEST(GammaFn, HasPolesAtNegativeWholeNumbers) {
    ClearFloatFaults();
    EXPECT_TRUE(std::isinf(GammaFn(-2)));
    EXPECT_TRUE(HasFloatFault());
    ClearFloatFaults();
}

TEST(BetaInc, AnXBelowTheFloorCountsAsTheFloor) {
    f32 x = 1e-7F;
    const f32 value = BetaInc(x, 0.5F, 5.0F);
    EXPECT_EQ(x, 1e-5F);
    EXPECT_EQ(value, Beta(1e-5F, 0.5F, 5.0F));
    EXPECT_GT(value, 0.0F);
    x = -3.0F;
    EXPECT_EQ(BetaInc(x, 0.5F, 5.0F), value);
}

TEST(BetaInc, AnXAboveTheFloorStays) {
    f32 x = 0.25F;
    BetaInc(x, 2.0F, 3.0F);
    EXPECT_EQ(x, 0.25F);
    x = 0.9F; // mirrored inside
    BetaInc(x, 2.0F, 3.0F);
    EXPECT_EQ(x, 0.9F);
}

TEST(BetaInc, AgreesWithTheClosedForms) {
    // I_x(1, b) = 1 - (1 - x)^b and I_x(a, 1) = x^a.
    for (const f32 x : {0.05F, 0.3F, 0.6F, 0.95F}) {
        EXPECT_NEAR(Beta(x, 1, 4), 1 - std::pow(1 - x, 4), 1e-6);
        EXPECT_NEAR(Beta(x, 3, 1), std::pow(x, 3), 1e-6);
    }
}

// --- Student's t ------------------------------------------------------------------------------

TEST(TCdf, TheFloorOfTheBetaFunctionShowsAtZero) {
    // The floor at 1e-5 leaves 2 * 0.0039 to be lost around t = 0; exact is 0.5.
    EXPECT_NEAR(TCdf(0, 10), 0.5039, 5e-5);
}

TEST(TCdf, HasTheTableValues) {
    // R. A. Fisher and F. Yates, Statistical Tables, table III: two-sided 5 %.
    const struct {
        f32 Df, T;
    } rows[] = {{1, 12.706F}, {2, 4.303F}, {5, 2.571F}, {10, 2.228F}, {30, 2.042F}, {120, 1.980F}};
    for (const auto& row : rows) {
        EXPECT_NEAR(TCdf(row.T, row.Df), 0.975, 2e-5 + 5e-4 * NorDensity(2)) << row.Df;
        EXPECT_NEAR(TCdf(-row.T, row.Df), 0.025, 2e-5 + 5e-4 * NorDensity(2)) << row.Df;
    }
}

TEST(TInv, IsZeroAtAHalf) {
    EXPECT_EQ(TInv(0.5F, 10), 0.0F);
}

TEST(TInv, IsTheCauchyQuantileUpToOneDegreeOfFreedom) {
    for (const f32 p : {0.025F, 0.3F, 0.5F, 0.95F}) {
        EXPECT_EQ(TInv(p, 1), CauchyInv(p));
        EXPECT_EQ(TInv(p, 0.5F), CauchyInv(p));
    }
    EXPECT_NEAR(TInv(0.75F, 1), 1.0, 1e-6);
}

TEST(TInv, CarriesTheMarksOfTheNormalQuantileThrough) {
    ClearFloatFaults();
    EXPECT_GT(TInv(1, 10), 100.0F);
    EXPECT_LT(TInv(0, 10), -100.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(NcTCdf, IsTheNormalApproximation) {
    // Without non-centrality and with many degrees of freedom it is the normal distribution.
    EXPECT_NEAR(NcTCdf(1.96F, 1e6F, 0), 0.975, 1e-5);
    EXPECT_NEAR(NcTCdf(1.96F, 1e6F, 1.96F), 0.5, 1e-5);
}

// --- Chi-square -------------------------------------------------------------------------------

TEST(Chi2Tail, IsOneAtZeroForEveryDf) {
    for (const f32 df : {1.0F, 2.0F, 5.5F, 40.0F, 41.0F, 500.0F})
        EXPECT_EQ(Chi2TailOf(df, 0), 1.0F) << df;
}

TEST(Chi2Tail, HalvesTheProbabilityOfTheCallerWithOneDf) {
    f32 p = 0.05F;
    f32 chi2 = 0;
    Chi2Tail(2, 1, chi2, p);
    EXPECT_EQ(p, 0.025F);
    EXPECT_FLOAT_EQ(chi2, 1.95996F * 1.95996F);
    for (const f32 df : {2.0F, 7.0F, 50.0F}) {
        p = 0.05F;
        Chi2Tail(2, df, chi2, p);
        EXPECT_EQ(p, 0.05F) << df;
    }
}

TEST(Chi2Tail, ComparesWithTheRealDf) {
    // The sum of an even whole part ends where the next whole number would: from 4 to 6, df - 1
    // reaches the term of i = 4 at 5.
    EXPECT_EQ(Chi2TailOf(4.9F, 3), Chi2TailOf(4, 3));
    EXPECT_GT(Chi2TailOf(6, 3), Chi2TailOf(4, 3));
}

TEST(Chi2Tail, AnyOtherModeDoesNothing) {
    f32 chi2 = 2;
    f32 p = 0.25F;
    Chi2Tail(3, 4, chi2, p);
    EXPECT_EQ(chi2, 2.0F);
    EXPECT_EQ(p, 0.25F);
}

TEST(Chi2Cdf, HasItsEdges) {
    EXPECT_EQ(Chi2Cdf(1e-11F, 4), 0.0F);
    EXPECT_EQ(Chi2Cdf(-1, 4), 0.0F);
    EXPECT_EQ(Chi2Cdf(5, 0), 1.0F);
    EXPECT_EQ(Chi2Cdf(0, 0), 0.0F);
}

TEST(Chi2Inv, HasTheTableValues) {
    // R. A. Fisher and F. Yates, Statistical Tables, table IV: upper 5 %. Above 10 df the program
    // goes through an F quantile of its own approximation.
    EXPECT_NEAR(Chi2Inv(0.95F, 1), 3.841, 1e-3);
    EXPECT_NEAR(Chi2Inv(0.95F, 2), 5.991, 1e-3);
    EXPECT_NEAR(Chi2Inv(0.95F, 5), 11.070, 2e-3);
    EXPECT_NEAR(Chi2Inv(0.95F, 10), 18.307, 2e-3);
    EXPECT_NEAR(Chi2Inv(0.95F, 20), 31.410, 0.06);
}

TEST(NcChi2Cdf, WithoutNonCentralityIsTheCentralOne) {
    EXPECT_EQ(NcChi2Cdf(9, 4, 0), Chi2Cdf(9, 4));
    EXPECT_EQ(NcChi2Cdf(0, 4, 3), 0.0F);
    EXPECT_EQ(NcChi2Cdf(-1, 4, 3), 0.0F);
}

// --- F ----------------------------------------------------------------------------------------

TEST(FTail, RestoresTheProbabilityOfTheCaller) {
    f32 p = 0.05F;
    f32 f = 0;
    FTail(2, 3, 20, f, p);
    EXPECT_EQ(p, 0.05F);
    EXPECT_NEAR(f, 3.098, 1e-3); // Fisher and Yates, table V
    FTail(2, 40, 60, f, p);
    EXPECT_EQ(p, 0.05F);
    EXPECT_NEAR(f, 1.594, 2e-3);
}

TEST(FTail, AnyOtherModeDoesNothing) {
    f32 p = 0.25F;
    f32 f = 2;
    FTail(0, 3, 20, f, p);
    EXPECT_EQ(p, 0.25F);
    EXPECT_EQ(f, 2.0F);
}

TEST(FInv, WholeDfOfAHalfOrLessHasNoValue) {
    EXPECT_EQ(FQuantile(0.95F, 0, 20), 99999.0F);
    EXPECT_EQ(FQuantile(0.95F, 3, 0), 99999.0F);
    EXPECT_EQ(FQuantile(0.95F, -2, 20), 99999.0F);
}

TEST(FInv, ADfThatIsNoNumberHasNoValue) {
    const f32 none = std::nanf("");
    EXPECT_EQ(FQuantile(0.95F, none, 10), static_cast<f32>(NoValue));
    EXPECT_EQ(FQuantile(0.95F, 3, none), static_cast<f32>(NoValue));
}

// What is remembered is what was asked: the same quantile as that of the tail, asked for in any
// order, with levels and degrees of freedom that lie close together, and once more.
TEST(FInv, RemembersNoOtherQuantile) {
    const auto byTail = [](f32 p, f32 df1, f32 df2) {
        f32 tail = static_cast<f32>(1 - f64{p});
        f32 f = 0;
        FTail(2, df1, df2, f, tail);
        return f;
    };
    for (int round = 1; round <= 2; ++round)
        for (f32 df1 = 1; df1 <= 12; df1 += 1)
            for (f32 df2 = 1; df2 <= 999; df2 += 83)
                for (f32 p : {0.05F, 0.95F, std::nextafter(0.95F, 1.0F), 0.99F, 0.975F, 0.5F}) {
                    if (df1 > 10 && df2 > 10)
                        continue;
                    EXPECT_EQ(FQuantile(p, df1, df2), byTail(p, df1, df2))
                        << p << ' ' << df1 << ' ' << df2;
                    EXPECT_EQ(FQuantile(p, df2, df1), byTail(p, df2, df1))
                        << p << ' ' << df2 << ' ' << df1;
                }
}

TEST(FInv, ABrokenDfLiesBetweenItsNeighbours) {
    const f32 at2 = FQuantile(0.95F, 2, 20);
    const f32 at3 = FQuantile(0.95F, 3, 20);
    EXPECT_FLOAT_EQ(FQuantile(0.95F, 2.5F, 20), (at2 + at3) / 2);
    EXPECT_FLOAT_EQ(FQuantile(0.95F, 3, 47.25F),
                    0.75F * FQuantile(0.95F, 3, 47) + 0.25F * FQuantile(0.95F, 3, 48));
}

TEST(FInv, CutsLargeDfForTheCaller) {
    f32 df1 = 5;
    f32 df2 = 1500;
    const f32 cut = FInv(0.95F, df1, df2);
    EXPECT_EQ(df1, 5.0F);
    EXPECT_EQ(df2, 999.0F);
    EXPECT_EQ(cut, FQuantile(0.95F, 5, 999));
    // A search for a sample size passes through broken df: they are cut as well.
    df2 = 1500.5F;
    EXPECT_EQ(FInv(0.95F, df1, df2), cut);
    EXPECT_EQ(df2, 999.0F);
    df1 = 20;
    df2 = 1500;
    FInv(0.95F, df1, df2);
    EXPECT_EQ(df2, 1500.0F);
}

TEST(FCdf, ChangesItsFormWhereOneDfPasses100) {
    // The exact value is 0.96413 (both df).
    const f32 paulson = FCdf(2, 11, 101);
    const f32 beta = FCdf(2, 11, 100);
    EXPECT_NE(paulson, beta);
    EXPECT_NEAR(paulson, beta, 5e-4);
    EXPECT_NEAR(paulson, 0.96413, 5e-4);
    EXPECT_NEAR(beta, 0.96413, 5e-4);
}

TEST(FCdf, IsZeroBelowZero) {
    ClearFloatFaults();
    EXPECT_EQ(FCdf(-0.5F, 3, 20), 0.0F);
    EXPECT_EQ(FCdf(-50, 3, 20), 0.0F);
    EXPECT_FALSE(HasFloatFault());
}

TEST(NcFCdf, ALambdaBelowTheFloorCountsAsTheFloor) {
    f32 lambda = 0;
    const f32 value = NcFCdf(3, 4, 20, lambda);
    EXPECT_EQ(lambda, 1e-5F);
    EXPECT_NEAR(value, FCdf(3, 4, 20), 1e-5);
    lambda = 2.5F;
    NcFCdf(3, 4, 20, lambda);
    EXPECT_EQ(lambda, 2.5F);
}

TEST(NcFCdf, IsZeroUpToZero) {
    f32 lambda = 3;
    EXPECT_EQ(NcFCdf(0, 4, 20, lambda), 0.0F);
    EXPECT_EQ(NcFCdf(-2, 4, 20, lambda), 0.0F);
}

TEST(Interpolation, PartsAndMixtures) {
    EXPECT_EQ(FracPart(2.25F), 0.25F);
    EXPECT_EQ(FracPart(-2.25F), 0.75F);
    EXPECT_EQ(FracPart(7), 0.0F);
    EXPECT_EQ(InterpLinear(2, 4, 0.25F), 2.5F);
    EXPECT_EQ(InterpLinear(2, 4, 0), 2.0F);
    EXPECT_EQ(InterpLinear(2, 4, 1), 4.0F);
}

// --- Faults -----------------------------------------------------------------------------------

TEST(ContinuousDistributions, RaiseNoFloatFaultWithinTheLimitsOfTheirArguments) {
    const std::vector<f32> probabilities = {1e-5F, 0.0005F, 0.025F, 0.3F,
                                            0.5F,  0.8F,    0.975F, 0.99999F};
    const std::vector<f32> values = {1e-5F, 0.01F, 0.5F, 1, 2.5F, 30, 1000, 99999};
    const std::vector<f32> dfs = {1, 1.5F, 2, 3, 9.5F, 10, 11, 21, 22, 40.5F, 101, 998.5F, 99999};
    ClearFloatFaults();
    const auto quiet = [](const char* name, f32 a, f32 b, f32 c) {
        EXPECT_FALSE(HasFloatFault()) << name << " " << a << " " << b << " " << c;
        ClearFloatFaults();
    };
    for (const f32 df : dfs) {
        for (const f32 p : probabilities) {
            TInv(p, df);
            quiet("TInv", p, df, 0);
            Chi2Inv(p, df);
            quiet("Chi2Inv", p, df, 0);
            for (const f32 df2 : dfs) {
                FQuantile(p, df, df2);
                quiet("FInv", p, df, df2);
            }
        }
        for (const f32 x : values) {
            TCdf(x, df);
            TCdf(-x, df);
            quiet("TCdf", x, df, 0);
            NcTCdf(x, df, 99999);
            NcTCdf(-x, df, x);
            quiet("NcTCdf", x, df, 0);
            Chi2Cdf(x, df);
            quiet("Chi2Cdf", x, df, 0);
            for (const f32 lambda : values) {
                NcChi2Cdf(x, df, lambda);
                quiet("NcChi2Cdf", x, df, lambda);
            }
            for (const f32 df2 : dfs) {
                FCdf(x, df, df2);
                quiet("FCdf", x, df, df2);
                for (f32 lambda : values) {
                    NcFCdf(x, df, df2, lambda);
                    quiet("NcFCdf", x, df, df2);
                }
            }
        }
    }
}

} // namespace
} // namespace quorvanta
