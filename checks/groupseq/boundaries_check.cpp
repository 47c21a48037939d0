#include "core/analysis_state.h"
#include "groupseq/boundaries.h"
#include "groupseq/groupseq.h"
#include "groupseq/recursion.h"
#include "groupseq/spending.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "support/groupseq_literal.h"
#include "support/number.h"
#include "support/scripted_platform.h"
#include "support/tsv.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta {
namespace {

using checks::ParseNumber;

std::vector<f64> Numbers(const std::string& text) {
    std::vector<f64> numbers;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ',');)
        numbers.push_back(ParseNumber(word));
    return numbers;
}

std::vector<f64> EqualSteps(int looks) {
    std::vector<f64> fractions;
    for (int k = 1; k <= looks; ++k)
        fractions.push_back(f64(k) / looks);
    return fractions;
}

f32 At(const std::vector<f64>& values, i16 k) {
    return Single(values[static_cast<std::size_t>(k - 1)]);
}

class GroupSeq : public testing::Test {
  protected:
    void SetUp() override {
        ResetAnalysisState();
        ForgetCritValues();
        NoOfTails = OneSided;
        NoOfSamples = TwoSamples;
        UnknownParNo = 2;
        ParValue(PowerParNo) = 0.8;
        GsTestKind = GsMeans;
        SdValue = 1;
        MarginSum = 0;
        DesignTheta = 1;
        CritReady = False;
    }
    void TearDown() override {
        ForgetCritValues();
        ResetAnalysisState();
    }

    // The critical values of a design for an error that both tails share.
    static bool Solve(i16 type, f64 par, const std::vector<f64>& fractions, f64 alpha, i16 tails) {
        BoundType = type;
        FamilyPar = Single(par);
        NoOfTails = tails;
        CritReady = False;
        SetAnalyses(fractions);
        f32 target = Single(1 - (tails == TwoSided ? alpha / 2 : alpha));
        return GsCritValues(target);
    }

    // Bounds of the user's own on the Z scale, and information of the effect's own scale.
    static void SetBounds(const std::vector<f64>& low, const std::vector<f64>& upp,
                          const std::vector<f64>& fractions) {
        BoundType = BoundUserDefined;
        SetAnalyses(fractions);
        for (Array1<f32>* each : {&LowBound, &UppBound, &ExitUpp, &ExitLow, &ExitUppH0, &ExitLowH0})
            each->ReDim(0, NoOfAnal);
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            LowBound(k) = At(low, k);
            UppBound(k) = At(upp, k);
        }
        CritReady = True;
    }

    ScriptedPlatform platform_;
};

using GroupSeqBounds = GroupSeq;
using GroupSeqExits = GroupSeq;
using GroupSeqSpending = GroupSeq;
using GroupSeqGrid = GroupSeq;
using GroupSeqProgress = GroupSeq;

// --- Against exact integration ------------------------------------------------------------------

// A bound is off by its probability, 2e-6 in 32 bits, over the density there; the search ends at
// 1e-5. A quantile by NorInv is off by 4.5e-4: the first bound of a spending design is one, the
// spending of O'Brien and Fleming's type has another, and the bounds that follow pay for them.
f64 BoundTolerance(i16 type, i16 k, f64 bound) {
    constexpr f64 quantile = 4.5e-4;
    const f64 density = std::exp(-bound * bound / 2) / std::sqrt(6.283185307179586);
    const f64 own = 1.5e-5 + 2e-6 / std::max(0.3 * density, 1e-6);
    if (type < BoundLanDeMetsPocock || type > BoundRhoFamily)
        return own;
    const f64 quantiles = type == BoundLanDeMetsOBrienFleming ? 2 * quantile : quantile;
    return own + (k == 1 ? quantiles : 1.6 * quantiles);
}

TEST_F(GroupSeqBounds, AgreeWithExactIntegration) {
    const auto rows = checks::ReadTsv("group_sequential_bounds.tsv");
    EXPECT_GE(rows.size(), 150U);
    for (const auto& row : rows) {
        const i16 type = ToI16(ParseNumber(row[0]));
        const i16 tails = ToI16(ParseNumber(row[2]));
        const auto fractions = Numbers(row[4]);
        const auto exact = Numbers(row[5]);
        SCOPED_TRACE(row[0] + " " + row[1] + " tails " + row[2] + " level " + row[3] + " at " +
                     row[4]);
        ASSERT_TRUE(Solve(type, ParseNumber(row[1]), fractions, ParseNumber(row[3]), tails));
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            const f64 bound = exact[static_cast<std::size_t>(k - 1)];
            // A boundary of one constant is as exact as its most probable part.
            const f64 most = type <= BoundHaybittlePeto ? exact.back() : bound;
            const f64 scale = type <= BoundHaybittlePeto ? bound / most : 1;
            EXPECT_NEAR(f64{UppBound(k)}, bound, scale * BoundTolerance(type, k, most)) << k;
        }
    }
}

TEST_F(GroupSeqBounds, OfThePowerFamilyAgreeWithExactIntegration) {
    for (const auto& row : checks::ReadTsv("group_sequential_families.tsv")) {
        const i16 tails = ToI16(ParseNumber(row[1]));
        SCOPED_TRACE(row[0] + " tails " + row[1] + " level " + row[2] + " at " + row[3] + " beta " +
                     row[5]);
        ParValue(PowerParNo) = 1 - ParseNumber(row[5]);
        DesignTheta = 0.37F;
        SdValue = 0.11F;
        ASSERT_TRUE(Solve(BoundPowerFamily, ParseNumber(row[0]), Numbers(row[3]),
                          ParseNumber(row[2]), tails));
        EXPECT_NEAR(f64{BoundC1}, ParseNumber(row[6]), 2e-4);
        EXPECT_NEAR(f64{BoundC2}, ParseNumber(row[7]), 2e-4);
        const auto upp = Numbers(row[4]);
        const auto low = Numbers(row[8]);
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            EXPECT_NEAR(f64{UppBound(k)}, f64{At(upp, k)}, 1.5e-3) << k;
            EXPECT_NEAR(f64{LowBound(k)}, f64{At(low, k)}, 1.5e-3) << k;
        }
    }
}

TEST_F(GroupSeqExits, AgreeWithExactIntegrationUnderDrifts) {
    constexpr f64 tolerance = 5e-6;
    for (const auto& row : checks::ReadTsv("group_sequential_exits.tsv")) {
        SCOPED_TRACE("drift " + row[0] + " at " + row[1]);
        SetBounds(Numbers(row[3]), Numbers(row[2]), Numbers(row[1]));
        const auto above = Numbers(row[4]);
        const auto below = Numbers(row[5]);
        f64 total = 0;
        for (const f64 p : above)
            total += p;
        EXPECT_NEAR(f64{GsExitProb(Single(ParseNumber(row[0])), 1, false)}, total, tolerance);
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            EXPECT_NEAR(f64{ExitUpp(k - 1)}, above[static_cast<std::size_t>(k - 1)], tolerance);
            EXPECT_NEAR(f64{ExitLow(k - 1)}, below[static_cast<std::size_t>(k - 1)], tolerance);
        }
    }
}

// --- Against published tables -------------------------------------------------------------------

struct Published {
    i16 Type;
    int Looks;
    f64 Alpha;
    f64 Constant;
};

// S. J. Pocock, Biometrika 64, 1977, 191-199, and P. C. O'Brien and T. R. Fleming, Biometrics 35,
// 1979, 549-556, in the three decimals of C. Jennison and B. W. Turnbull, Group Sequential Methods
// with Applications to Clinical Trials, 2000, tables 2.1 and 2.3.
TEST_F(GroupSeqBounds, HaveThePublishedConstants) {
    const Published tables[] = {
        {BoundPocock, 2, 0.05, 2.178},        {BoundPocock, 3, 0.05, 2.289},
        {BoundPocock, 4, 0.05, 2.361},        {BoundPocock, 5, 0.05, 2.413},
        {BoundPocock, 10, 0.05, 2.555},       {BoundPocock, 2, 0.01, 2.772},
        {BoundPocock, 5, 0.01, 2.986},        {BoundPocock, 2, 0.1, 1.875},
        {BoundPocock, 5, 0.1, 2.122},         {BoundOBrienFleming, 2, 0.05, 1.977},
        {BoundOBrienFleming, 3, 0.05, 2.004}, {BoundOBrienFleming, 4, 0.05, 2.024},
        {BoundOBrienFleming, 5, 0.05, 2.040}, {BoundOBrienFleming, 10, 0.05, 2.087},
        {BoundOBrienFleming, 2, 0.01, 2.580}, {BoundOBrienFleming, 5, 0.1, 1.751}};
    for (const auto& [type, looks, alpha, constant] : tables) {
        ASSERT_TRUE(Solve(type, 0, EqualSteps(looks), alpha, TwoSided));
        EXPECT_NEAR(f64{BoundC1}, constant, 6e-4) << type << " " << looks << " " << alpha;
    }
}

// S. K. Wang and A. A. Tsiatis, Biometrics 43, 1987, 193-199: constants at two-sided 0.05 in the
// three decimals of C. Jennison and B. W. Turnbull, 2000, table 2.9, and the bounds of the example
// of their section 3.2.2.
TEST_F(GroupSeqBounds, OfWangAndTsiatisHaveThePublishedConstants) {
    struct Row {
        f64 Delta;
        int Looks;
        f64 Constant;
    };
    for (const auto& [delta, looks, constant] :
         {Row{0.1, 9, 2.113}, Row{0.25, 6, 2.154}, Row{0.4, 7, 2.313}, Row{0.25, 5, 2.136},
          Row{0.25, 4, 2.113}}) {
        ASSERT_TRUE(Solve(BoundWangTsiatis, delta, EqualSteps(looks), 0.05, TwoSided));
        EXPECT_NEAR(f64{BoundC1}, constant, 6e-4) << delta << " " << looks;
    }
    const f64 printed[] = {2.988, 2.513, 2.271, 2.113};
    for (i16 k = 1; k <= 4; ++k)
        EXPECT_NEAR(f64{UppBound(k)}, printed[k - 1], 1.1e-3) << k;
}

// The same, 0.025 one-sided, Delta 0.3, at unequal steps, as the checks of the R package rpact (G.
// Wassmer and F. Pahlke) print them.
TEST_F(GroupSeqBounds, OfWangAndTsiatisAreThosePrintedElsewhere) {
    ASSERT_TRUE(Solve(BoundWangTsiatis, 0.3, {0.2, 0.5, 1}, 0.025, OneSided));
    const f64 printed[] = {2.8688923, 2.3885055, 2.0793148};
    for (i16 k = 1; k <= 3; ++k)
        EXPECT_NEAR(f64{UppBound(k)}, printed[k - 1], 6e-4) << k;
}

// Levels and powers of designs whose groups come out other than planned: C. Jennison and B. W.
// Turnbull, 2000, table 3.1. Two groups, variance 4, an effect of 1; planned at equal steps, at
// two-sided 0.05.
struct OtherSizes {
    i16 Type;
    std::vector<f64> Sizes;
    f64 Level;
    f64 Power;
};

TEST_F(GroupSeqExits, OfOtherSizesThanPlannedAreThePublishedOnes) {
    const OtherSizes table[] = {{BoundPocock, {21, 42, 63, 84, 105}, 0.050, 0.910},
                                {BoundPocock, {18, 36, 54, 72, 90}, 0.050, 0.860},
                                {BoundPocock, {23, 46, 69, 92, 115}, 0.050, 0.934},
                                {BoundPocock, {30, 50, 55, 86, 105}, 0.046, 0.909},
                                {BoundPocock, {12, 31, 57, 81, 105}, 0.054, 0.909},
                                {BoundPocock, {13, 42, 56, 78, 99}, 0.051, 0.892},
                                {BoundPocock, {26, 40, 63, 96, 110}, 0.049, 0.923},
                                {BoundOBrienFleming, {18, 36, 54, 72, 90}, 0.050, 0.912},
                                {BoundOBrienFleming, {16, 32, 48, 64, 80}, 0.050, 0.877},
                                {BoundOBrienFleming, {20, 40, 60, 80, 100}, 0.050, 0.937},
                                {BoundOBrienFleming, {26, 39, 50, 76, 90}, 0.049, 0.911},
                                {BoundOBrienFleming, {10, 27, 55, 66, 90}, 0.051, 0.912},
                                {BoundOBrienFleming, {11, 38, 59, 65, 83}, 0.049, 0.888},
                                {BoundOBrienFleming, {27, 40, 57, 73, 96}, 0.051, 0.928},
                                {BoundWangTsiatis, {18, 36, 54, 72, 90}, 0.050, 0.901},
                                {BoundWangTsiatis, {16, 32, 48, 64, 80}, 0.050, 0.864},
                                {BoundWangTsiatis, {20, 40, 60, 80, 100}, 0.050, 0.929},
                                {BoundWangTsiatis, {26, 39, 50, 76, 90}, 0.049, 0.901},
                                {BoundWangTsiatis, {10, 27, 55, 66, 90}, 0.052, 0.901},
                                {BoundWangTsiatis, {11, 38, 59, 65, 83}, 0.048, 0.875},
                                {BoundWangTsiatis, {27, 40, 57, 73, 96}, 0.050, 0.919}};
    for (const auto& [type, sizes, level, power] : table) {
        SCOPED_TRACE(std::to_string(type) + " to " + std::to_string(sizes.back()));
        ASSERT_TRUE(Solve(type, 0.25, EqualSteps(5), 0.05, TwoSided));
        std::vector<f64> upp;
        std::vector<f64> low;
        std::vector<f64> fractions;
        for (i16 k = 1; k <= 5; ++k) {
            upp.push_back(f64{UppBound(k)});
            low.push_back(-upp.back());
            fractions.push_back(sizes[static_cast<std::size_t>(k - 1)] / sizes.back());
        }
        SetBounds(low, upp, fractions);
        const auto probability = [](f64 drift) {
            GsExitProb(Single(drift), 1, false);
            return f64{ExitUpp(NoOfAnal)} + f64{ExitLow(NoOfAnal)};
        };
        EXPECT_NEAR(probability(0), level, 6e-4);
        EXPECT_NEAR(probability(std::sqrt(sizes.back() / 8)), power, 6e-4);
    }
}

// A design of two boundaries of the power family, printed by the checks of the same package: 0.035
// one-sided, power 0.9, Delta 0.2 above and 0.3 below, at 0.3, 0.8 and 1 (S. Pampallona and A. A.
// Tsiatis, Journal of Statistical Planning and Inference 42, 1994, 19-35). The boundaries meet at
// the end, so the lower one and the drift have one constant.
TEST_F(GroupSeqExits, OfTwoBoundariesAreThosePrintedElsewhere) {
    const std::vector<f64> fractions{0.3, 0.8, 1};
    const std::vector<f64> upp{2.6664156, 1.9867225, 1.8580792};
    const std::vector<f64> low{-0.042079545, 1.4407359, 1.8580792};
    const auto lowerConstant = [&](std::size_t k) {
        const f64 root = std::sqrt(fractions[k]);
        return (upp[2] * root - low[k]) / (std::pow(fractions[k], -0.2) - root);
    };
    EXPECT_NEAR(lowerConstant(0), lowerConstant(1), 1e-6);
    EXPECT_NEAR(upp[0] / upp[2], std::pow(fractions[0], -0.3), 1e-7);
    EXPECT_NEAR(upp[1] / upp[2], std::pow(fractions[1], -0.3), 1e-7);
    SetBounds(low, upp, fractions);
    const auto expectSums = [](f64 drift, const std::vector<f64>& above,
                               const std::vector<f64>& below) {
        GsExitProb(Single(drift), 1, false);
        f64 sumAbove = 0;
        f64 sumBelow = 0;
        for (i16 k = 0; k < 3; ++k) {
            const auto at = static_cast<std::size_t>(k);
            EXPECT_NEAR(sumAbove += f64{ExitUpp(k)}, above[at], 5e-6) << k;
            if (!below.empty()) {
                EXPECT_NEAR(sumBelow += f64{ExitLow(k)}, below[at], 5e-6) << k;
            }
        }
    };
    expectSums(0, {0.0038332428, 0.024917169, 0.035}, {});
    expectSums(upp[2] + lowerConstant(1), {0.19834666, 0.83001122, 0.9},
               {0.031375368, 0.080734151, 0.1});
}

// S. Pampallona and A. A. Tsiatis, Journal of Statistical Planning and Inference 42, 1994, 19-35:
// the constants of both boundaries in the three decimals of C. Jennison and B. W. Turnbull, Group
// Sequential Methods with Applications to Clinical Trials, 2000, tables 4.1 and 4.2, one-sided at
// 0.05.
TEST_F(GroupSeqBounds, OfThePowerFamilyHaveThePublishedConstants) {
    struct Row {
        f64 Delta;
        int Looks;
        f64 Beta;
        f64 Upper;
        f64 Lower;
    };
    for (const auto& [delta, looks, beta, upper, lower] :
         {Row{0.25, 4, 0.2, 1.741, 1.093}, Row{-0.5, 5, 0.1, 1.648, 1.320}}) {
        SCOPED_TRACE(delta);
        ParValue(PowerParNo) = 1 - beta;
        DesignTheta = 2;
        SdValue = 1;
        ASSERT_TRUE(Solve(BoundPowerFamily, delta, EqualSteps(looks), 0.05, OneSided));
        EXPECT_NEAR(f64{BoundC1}, upper, 6e-4);
        EXPECT_NEAR(f64{BoundC2}, lower, 6e-4);
    }
}

// K. K. G. Lan and D. L. DeMets, Biometrika 70, 1983, 659-663: five equal looks, 0.025 one-sided,
// in the decimals of D. M. Reboussin, D. L. DeMets, K. Kim and K. K. G. Lan, Controlled Clinical
// Trials 21, 2000, 190-207.
TEST_F(GroupSeqBounds, OfSpendingDesignsAreThePublishedOnes) {
    ASSERT_TRUE(Solve(BoundLanDeMetsOBrienFleming, 0, EqualSteps(5), 0.025, OneSided));
    const f64 oBrienFleming[] = {3.357, 2.680, 2.290, 2.031};
    for (i16 k = 2; k <= 5; ++k)
        EXPECT_NEAR(f64{UppBound(k)}, oBrienFleming[k - 2], 1.1e-3 + (k == 2 ? 5e-3 : 0)) << k;
    ASSERT_TRUE(Solve(BoundLanDeMetsPocock, 0, EqualSteps(5), 0.025, OneSided));
    const f64 pocock[] = {2.438, 2.427, 2.410, 2.397, 2.386};
    for (i16 k = 1; k <= 5; ++k)
        EXPECT_NEAR(f64{UppBound(k)}, pocock[k - 1], 1.1e-3) << k;
}

// --- Every analysis, step by step ---------------------------------------------------------------

TEST_F(GroupSeqExits, HaveTheBitsOfTheRecursionStepByStep) {
    const auto expectSame = [](f32 drift) {
        const f32 total = GsExitProb(drift, 1, false);
        const literal::Exits exits = literal::ExitProbs(drift, true);
        for (i16 k = 1; k <= NoOfAnal; ++k) {
            EXPECT_EQ(ExitUpp(k - 1), exits.Upper(k)) << k << " under " << drift;
            EXPECT_EQ(ExitLow(k - 1), exits.Lower(k)) << k << " under " << drift;
        }
        f32 sum = exits.Upper(1);
        for (i16 k = 2; k <= NoOfAnal; ++k)
            sum = Single(f64{sum} + f64{exits.Upper(k)});
        EXPECT_EQ(total, sum);
    };
    // One after the other, so that much of one is kept for the next.
    for (const int looks : {1, 2, 5, 10})
        for (const f64 bound : {-1.0, 0.00001, 0.5, 2.0, 2.0001, 3.5, 8.0, 100.0})
            for (const f64 low : {-100.0, -bound, 0.3, bound - 0.01, bound})
                for (const f32 drift : {0.0F, 3.0F}) {
                    const std::vector<f64> upp(static_cast<std::size_t>(looks), bound);
                    std::vector<f64> lower(static_cast<std::size_t>(looks), low);
                    if (looks > 2 && low == -100)
                        lower[1] = 0.2;
                    SetBounds(lower, upp, EqualSteps(looks));
                    expectSame(drift);
                }
}

TEST_F(GroupSeqBounds, HaveTheBitsOfTheRecursionStepByStep) {
    for (const i16 type : {BoundPocock, BoundOBrienFleming, BoundHaybittlePeto,
                           BoundLanDeMetsPocock, BoundGammaFamily})
        for (const int looks : {2, 3, 6}) {
            ASSERT_TRUE(Solve(type, 1, EqualSteps(looks), 0.05, OneSided));
            const f32 total = ExitUpp(NoOfAnal);
            EXPECT_EQ(literal::EitherTotal(0, false), total) << type << " " << looks;
        }
}

TEST_F(GroupSeqExits, DependOnNothingThatWasCalculatedBefore) {
    const auto calculate = [] {
        Solve(BoundOBrienFleming, 0, EqualSteps(4), 0.05, TwoSided);
        CritReady = True;
        return GsExitProb(2.5F, 0.8F, false);
    };
    const f32 first = calculate();
    for (const i16 type : {BoundPocock, BoundRhoFamily, BoundPowerFamily}) {
        Solve(type, 0.25, {0.2, 0.3, 1}, 0.01, OneSided);
        ForgetCritValues();
        EXPECT_EQ(calculate(), first);
    }
}

// --- The grid -----------------------------------------------------------------------------------

TEST_F(GroupSeqGrid, OfReferenceHasItsPoints) {
    GsStdGrid(16);
    EXPECT_FLOAT_EQ(GridBase(1), static_cast<f32>(-3 - 4 * std::log(16.0)));
    EXPECT_FLOAT_EQ(GridBase(16), -3);
    EXPECT_FLOAT_EQ(GridBase(48), 0);
    EXPECT_FLOAT_EQ(GridBase(80), 3);
    EXPECT_FLOAT_EQ(GridBase(95), static_cast<f32>(3 + 4 * std::log(16.0)));
}

TEST_F(GroupSeqGrid, WithoutLowerBoundIsThePlainOne) {
    GsStdGrid(16);
    Theta = 0;
    GsTrimGrid(16, -100, 2, 1);
    EXPECT_EQ(GridFirst, 1);
    EXPECT_EQ(GridX(1), -100);
    for (i16 i = 2; i < GridLast; ++i)
        EXPECT_EQ(GridX(i), GridBase(i));
    EXPECT_EQ(GridX(GridLast), 2);
    EXPECT_LT(GridBase(GridLast - 1), 2);
    EXPECT_GE(GridBase(GridLast), 2);
}

// The point above the lower bound is lost, and that above the upper one stays.
TEST_F(GroupSeqGrid, BetweenTwoBoundsRunsBackwardsAtItsEnd) {
    GsStdGrid(16);
    Theta = 0;
    GsTrimGrid(16, -2, 2, 1);
    const i16 n = static_cast<i16>(GridLast - GridFirst + 1);
    EXPECT_LE(GridBase(GridFirst), -2);
    EXPECT_GT(GridBase(GridFirst + 1), -2);
    EXPECT_EQ(GridX(1), -2);
    EXPECT_EQ(GridX(2), GridBase(GridFirst + 2));
    EXPECT_GE(GridX(n - 1), 2);
    EXPECT_EQ(GridX(n - 1), GridBase(GridLast));
    EXPECT_EQ(GridX(n), 2);
    SetBounds({-2}, {2}, {1});
    GsExitProb(0, 1, false);
    EXPECT_LE(GridW(GridSize(1), 1), 0);
}

TEST_F(GroupSeqGrid, IntegratesTheDensity) {
    SetBounds({-100}, {1.7}, {1});
    GsExitProb(0, 1, false);
    EXPECT_NEAR(f64{GsDensityAt(1, 1, 0)}, 0, 1e-7);
    f64 density = 0;
    for (int j = 1; j <= GridSize(1); ++j)
        density += f64{GridH(j, 1)};
    EXPECT_NEAR(density, 0.5 * std::erfc(-1.7 / std::sqrt(2.0)), 3e-6);
}

// --- Edges --------------------------------------------------------------------------------------

TEST_F(GroupSeqBounds, OfOneAnalysisInvertTheDistribution) {
    for (const f64 alpha : {0.001, 0.025, 0.05, 0.2}) {
        ASSERT_TRUE(Solve(BoundPocock, 0, {1}, alpha, OneSided));
        EXPECT_NEAR(f64{NorCdf(BoundC1)}, 1 - alpha, 4e-6);
        EXPECT_NEAR(f64{BoundC1}, f64{NorInv(Single(1 - alpha))}, 5e-4);
        EXPECT_EQ(ExitUpp(0), ExitUpp(1));
        EXPECT_EQ(ExitUpp(1), Single(1 - f64{NorCdf(UppBound(1))})) << "nothing is summed up";
    }
}

TEST_F(GroupSeqExits, OfTwoAnalysesCloseInTimeHaveAFloorOfTheIncrement) {
    SetBounds({-100, -100}, {2, 2}, {0.9999999, 1});
    const f32 total = GsExitProb(0, 1, false);
    EXPECT_EQ(GsIncrement(2), 0.00001F);
    EXPECT_TRUE(std::isfinite(total));
    EXPECT_GT(total, 0.02F);
    // Where the information is small the floor is small with it.
    GsExitProb(0, 1000, false);
    EXPECT_FLOAT_EQ(GsIncrement(2), 1e-11F);
    // More information than 1: the floor stays.
    GsExitProb(0, 0.001F, false);
    EXPECT_GE(GsIncrement(2), 0.00001F);
}

// A standard error above 100, as costs have it: with the floor of small errors every power is 1.
TEST_F(GroupSeqExits, DoNotDependOnTheUnitOfTheEffect) {
    ASSERT_TRUE(Solve(BoundOBrienFleming, 0, EqualSteps(3), 0.05, OneSided));
    CritReady = True;
    const f64 small{GsExitProb(2, 1, false)};
    EXPECT_NEAR(f64{GsExitProb(2000, 1000, false)}, small, 5e-6);
    EXPECT_NEAR(f64{GsExitProb(0.002F, 0.001F, false)}, small, 5e-6);
}

TEST_F(GroupSeqBounds, OfSpendingBelowTheFloorStartWithItsQuantile) {
    ASSERT_TRUE(Solve(BoundLanDeMetsOBrienFleming, 0, EqualSteps(5), 0.05, TwoSided));
    EXPECT_EQ(UppBound(1), NorInv(Single(1 - f64{0.00001F})));
    EXPECT_NEAR(f64{UppBound(1)}, 4.2645, 5e-4);
}

TEST_F(GroupSeqBounds, OfHaybittleAndPetoAreThreeBeforeTheEnd) {
    for (const f64 alpha : {0.01, 0.05, 0.2}) {
        ASSERT_TRUE(Solve(BoundHaybittlePeto, 0, EqualSteps(4), alpha, OneSided));
        for (i16 k = 1; k < 4; ++k)
            EXPECT_EQ(UppBound(k), 3) << alpha;
        EXPECT_EQ(UppBound(4), BoundC1);
    }
}

TEST_F(GroupSeqBounds, OfHaybittleAndPetoThatEquivalenceCannotReachAreRemoved) {
    MarginSum = 5;
    SdValue = 1;
    // At fraction t the margins are apart 2.5 roots of t standard errors on either side.
    ASSERT_TRUE(Solve(BoundHaybittlePeto, 0, {0.25, 0.81, 1}, 0.05, TwoOneSided));
    EXPECT_EQ(UppBound(1), BoundAboveAll);
    EXPECT_EQ(UppBound(2), BoundAboveAll);
    EXPECT_NE(UppBound(3), BoundAboveAll);
    MarginSum = 8;
    ASSERT_TRUE(Solve(BoundHaybittlePeto, 0, {0.25, 0.81, 1}, 0.05, TwoOneSided));
    EXPECT_EQ(UppBound(1), BoundAboveAll);
    EXPECT_EQ(UppBound(2), 3);
}

TEST_F(GroupSeqBounds, OfThePowerFamilyWithoutDriftHaveTheLengthOfNoValue) {
    BoundType = BoundPowerFamily;
    SetBounds({0, 0}, {0, 0}, {0.5, 1});
    BoundType = BoundPowerFamily;
    BoundDelta = 0;
    BoundC1 = 2;
    BoundC2 = 1;
    DesignTheta = 0;
    CritReady = False;
    GsExitProb(0, 1, false);
    EXPECT_FLOAT_EQ(Info(2), 99999.0F * 99999.0F);
    EXPECT_FLOAT_EQ(Info(1), 99999.0F * 99999.0F / 2);
}

TEST_F(GroupSeqBounds, OfTheTwoSidedPowerFamilyLackALowerOneBelowZero) {
    ParValue(PowerParNo) = 0.9;
    ASSERT_TRUE(Solve(BoundPowerFamily, 0, EqualSteps(4), 0.05, TwoSided));
    EXPECT_EQ(LowBound(1), BoundBelowAll);
    EXPECT_GT(LowBound(3), 0);
    EXPECT_EQ(LowBound(4), UppBound(4));
    ASSERT_TRUE(Solve(BoundPowerFamily, 0, EqualSteps(4), 0.05, OneSided));
    EXPECT_LT(LowBound(1), 0);
    EXPECT_GT(LowBound(1), BoundBelowAll);
}

TEST_F(GroupSeqBounds, AndConstantsOfThePowerFamilyBelongTogether) {
    ParValue(PowerParNo) = 0.8;
    ASSERT_TRUE(Solve(BoundPowerFamily, -0.25, EqualSteps(3), 0.05, OneSided));
    EXPECT_FLOAT_EQ(UppBound(3), BoundC1);
    EXPECT_FLOAT_EQ(UppBound(1), static_cast<f32>(std::pow(1.0 / 3, -0.75) * f64{BoundC1}));
    // The power is that at the drift which its constants make.
    CritReady = True;
    const f32 scale = Single(f64{DesignTheta} / (f64{BoundC1} + f64{BoundC2}));
    EXPECT_NEAR(f64{GsExitProb(DesignTheta, scale, false)}, 0.8, 1e-3);
    EXPECT_NEAR(f64{GsExitProb(DesignTheta, scale, true)}, 0.2, 1e-3);
}

TEST_F(GroupSeqBounds, ThatDoNotExistAreNoValue) {
    ParValue(PowerParNo) = 0.8;
    Solve(BoundPowerFamily, 0, EqualSteps(3), 0.05, TwoSided);
    EXPECT_TRUE(f64{BoundC1} == NoValue || f64{BoundC2} == NoValue);
}

TEST_F(GroupSeqBounds, OfTheUserAreHisLevels) {
    LevelReject.ReDim(1, 2);
    LevelAccept.ReDim(1, 2);
    LevelReject(1) = 0.01F;
    LevelReject(2) = 0.04F;
    LevelAccept(1) = 0.6F;
    LevelAccept(2) = 1;
    BoundType = BoundUserDefined;
    SetAnalyses({0.5, 1});
    f32 target = 0.95F;
    ASSERT_TRUE(GsCritValues(target));
    EXPECT_EQ(UppBound(1), -NorInv(0.01F));
    EXPECT_EQ(LowBound(1), -NorInv(0.6F));
    EXPECT_EQ(LowBound(2), BoundBelowAll);
    EXPECT_EQ(target, ExitUpp(2));
    NoOfTails = TwoSided;
    ForgetCritValues();
    ASSERT_TRUE(GsCritValues(target));
    EXPECT_EQ(UppBound(1), -NorInv(0.005F));
    EXPECT_EQ(LowBound(1), NorInv(Single((1 - f64{0.6F}) / 2)));
    EXPECT_EQ(LevelReject(1), 0.01F);
    EXPECT_EQ(ExitUppH0(2), Single(2 * f64{ExitUpp(2)}));
}

TEST_F(GroupSeqBounds, HaveNominalLevels) {
    ASSERT_TRUE(Solve(BoundPocock, 0, EqualSteps(2), 0.05, TwoSided));
    EXPECT_NEAR(f64{LevelReject(1)}, 0.0294, 5e-5);
    EXPECT_EQ(LevelAccept(1), 1);
    ASSERT_TRUE(Solve(BoundOBrienFleming, 0, EqualSteps(5), 0.05, TwoSided));
    EXPECT_EQ(LevelReject(1), 0.00001F); // not less
    EXPECT_NEAR(f64{ExitUppH0(5)}, 0.05, 1e-5);
}

// --- Spending -----------------------------------------------------------------------------------

TEST_F(GroupSeqSpending, FollowsItsFamilies) {
    const f32 alpha = 0.025F;
    FamilyPar = 0;
    EXPECT_FLOAT_EQ(GsSpend(0.5F, alpha, BoundLanDeMetsPocock), 0.015502863F);
    EXPECT_NEAR(f64{GsSpend(0.5F, alpha, BoundLanDeMetsOBrienFleming)}, 0.0015253, 4e-6);
    EXPECT_FLOAT_EQ(GsSpend(0.25F, alpha, BoundGammaFamily), 0.00625F);
    FamilyPar = 1;
    EXPECT_FLOAT_EQ(GsSpend(0.5F, alpha, BoundGammaFamily), 0.015561484F);
    FamilyPar = -4;
    EXPECT_FLOAT_EQ(GsSpend(0.5F, alpha, BoundGammaFamily), 0.0029800731F);
    FamilyPar = 3;
    EXPECT_FLOAT_EQ(GsSpend(0.5F, alpha, BoundRhoFamily), 0.003125F);
    for (i16 type = BoundLanDeMetsPocock; type <= BoundRhoFamily; ++type) {
        EXPECT_EQ(GsSpend(0, alpha, type), 0) << type;
        EXPECT_LE(GsSpend(1, alpha, type), alpha) << type;
        EXPECT_NEAR(f64{GsSpend(1, alpha, type)}, f64{alpha}, 3e-5) << type;
    }
}

TEST_F(GroupSeqSpending, OfStudentsTestHasItsDegreesOfFreedom) {
    GsTestKind = GsStudent;
    SetAnalyses({0.5, 1});
    CumSize.ReDim(1, 2);
    CumSize(1) = 12;
    const f32 df = 10;
    const f32 spent = GsSpend(0.5F, 0.05F, BoundLanDeMetsOBrienFleming);
    const f64 quantile = f64{TInv(0.975F, df)} / std::sqrt(0.5);
    EXPECT_FLOAT_EQ(spent, static_cast<f32>(2 - 2 * f64{TCdf(static_cast<f32>(quantile), df)}));
    NoOfSamples = OneSample;
    EXPECT_NE(GsSpend(0.5F, 0.05F, BoundLanDeMetsOBrienFleming), spent);
}

TEST_F(GroupSeqSpending, IsFoldedForTwoTailsOnly) {
    f32 p = 0.3F;
    GsFoldTwoSided(p);
    EXPECT_EQ(p, 0.3F);
    NoOfTails = TwoSided;
    GsFoldTwoSided(p);
    EXPECT_EQ(p, 0.6F);
    p = 0.5F;
    GsFoldTwoSided(p);
    EXPECT_EQ(p, 1);
    p = 0.8F;
    GsFoldTwoSided(p);
    EXPECT_FLOAT_EQ(p, 0.6F);
}

// --- Progress, cancel, cache --------------------------------------------------------------------

TEST_F(GroupSeqProgress, AppearsWhenTheCalculationIsLong) {
    ASSERT_TRUE(Solve(BoundPocock, 0, EqualSteps(3), 0.05, OneSided));
    EXPECT_EQ(platform_.ProgressTotal, 0);
    ForgetCritValues();
    platform_.ClockStep = 2;
    bool seen = false;
    platform_.OnDoEvents = [&] {
        seen = true;
        EXPECT_TRUE(platform_.ProgressShown);
        EXPECT_EQ(platform_.ProgressCaption, "Calculation of Critical Values");
        EXPECT_EQ(platform_.ProgressTotal, 10);
        EXPECT_LE(platform_.ProgressSteps, 10);
        EXPECT_EQ(Calculating, True);
    };
    ASSERT_TRUE(Solve(BoundPocock, 0, EqualSteps(3), 0.05, OneSided));
    EXPECT_TRUE(seen);
    EXPECT_FALSE(platform_.ProgressShown);
    EXPECT_EQ(Calculating, False);
}

TEST_F(GroupSeqProgress, CancelsAtAnyStepAndLeavesNothingHalfDone) {
    for (const i16 type :
         {BoundOBrienFleming, BoundLanDeMetsPocock, BoundPowerFamily, BoundUserDefined}) {
        platform_.ClockStep = 0;
        platform_.OnDoEvents = nullptr;
        ForgetCritValues();
        LevelReject.ReDim(1, 3);
        LevelAccept.ReDim(1, 3);
        for (i16 k = 1; k <= 3; ++k) {
            LevelReject(k) = 0.02F;
            LevelAccept(k) = 1;
        }
        const f64 par = -0.25;
        ASSERT_TRUE(Solve(type, par, EqualSteps(3), 0.05, OneSided));
        const Array1<f32> bounds = UppBound;
        platform_.ClockStep = 2;
        for (int stop = 1;; ++stop) {
            int steps = 0;
            platform_.OnDoEvents = [&] {
                if (++steps == stop)
                    Cancelled = True;
            };
            ForgetCritValues();
            const bool done = Solve(type, par, EqualSteps(3), 0.05, OneSided);
            EXPECT_FALSE(platform_.ProgressShown);
            EXPECT_EQ(Calculating, False);
            EXPECT_EQ(NoOfAnal, 3);
            EXPECT_EQ(CritReady, False);
            if (done) {
                EXPECT_EQ(UppBound, bounds) << type << " after " << stop;
                break;
            }
            EXPECT_EQ(Cancelled, True);
            EXPECT_EQ(GsExitProb(1, 1, false), 0);
            Cancelled = False;
            ASSERT_LT(stop, 2000);
        }
        // What was cancelled left nothing behind that a later design would take for its own.
        platform_.OnDoEvents = nullptr;
        ASSERT_TRUE(Solve(type, par, EqualSteps(3), 0.05, OneSided));
        EXPECT_EQ(UppBound, bounds);
    }
}

TEST_F(GroupSeqProgress, IsSparedByTheCacheForTheSameDesign) {
    const auto isNew = [](i16 type, f64 par, const std::vector<f64>& fractions, f64 alpha) {
        GsCritValuesAreNew();
        EXPECT_TRUE(Solve(type, par, fractions, alpha, NoOfTails));
        return GsCritValuesAreNew();
    };
    EXPECT_TRUE(isNew(BoundOBrienFleming, 0, EqualSteps(3), 0.05));
    const Array1<f32> bounds = UppBound;
    EXPECT_FALSE(isNew(BoundOBrienFleming, 0, EqualSteps(3), 0.05));
    EXPECT_EQ(UppBound, bounds);
    // What the boundaries don't depend on.
    SdValue = 3;
    DesignTheta = 7;
    MarginSum = 2;
    EXPECT_FALSE(isNew(BoundOBrienFleming, 0, EqualSteps(3), 0.05));
    // What they do.
    EXPECT_TRUE(isNew(BoundPocock, 0, EqualSteps(3), 0.05));
    EXPECT_TRUE(isNew(BoundPocock, 0, EqualSteps(3), 0.01));
    EXPECT_TRUE(isNew(BoundPocock, 0, EqualSteps(4), 0.01));
    EXPECT_TRUE(isNew(BoundPocock, 0, {0.1, 0.4, 0.5, 1}, 0.01));
    EXPECT_TRUE(isNew(BoundRhoFamily, 1, EqualSteps(4), 0.01));
    EXPECT_TRUE(isNew(BoundRhoFamily, 2, EqualSteps(4), 0.01));
    EXPECT_TRUE(isNew(BoundPowerFamily, 0, EqualSteps(4), 0.05));
    EXPECT_FALSE(isNew(BoundPowerFamily, 0, EqualSteps(4), 0.05));
    DesignTheta = 5;
    EXPECT_TRUE(isNew(BoundPowerFamily, 0, EqualSteps(4), 0.05));
    NoOfTails = TwoOneSided;
    EXPECT_TRUE(isNew(BoundHaybittlePeto, 0, EqualSteps(2), 0.05));
    EXPECT_FALSE(isNew(BoundHaybittlePeto, 0, EqualSteps(2), 0.05));
    MarginSum = 9;
    EXPECT_TRUE(isNew(BoundHaybittlePeto, 0, EqualSteps(2), 0.05));
    // An unknown power of two one-sided tests is always calculated.
    UnknownParNo = PowerParNo;
    EXPECT_TRUE(isNew(BoundHaybittlePeto, 0, EqualSteps(2), 0.05));
    EXPECT_TRUE(isNew(BoundHaybittlePeto, 0, EqualSteps(2), 0.05));
}

} // namespace
} // namespace quorvanta
