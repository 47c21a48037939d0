// Procedures of many hypotheses, data set for data set and over many of them.
#include "core/fault.h"
#include "core/kinds.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "multcomp/procedures.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/tsv.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr f32 Large = 100000; // degrees of freedom

class Procedures : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        IsTest = True;
        TestNo = 144;
        NoOfTails = OneSided;
        LeftTail = False;
        KnownVariance = true;
        PowerKind = DisjunctivePower;
        SerialGate = 0;
        ParallelGate = 0;
        SizeRatio = 1;
        McClearCounts();
    }
    void TearDown() override {
        KnownVariance = false;
        SerialGate = 0;
        ParallelGate = 0;
    }

    // So many means, each of them tested; H1 as given.
    static void EachMean(const std::vector<f32>& means) {
        McStandardContrasts(static_cast<i16>(means.size()));
        for (std::size_t i = 0; i < means.size(); ++i)
            H1Means(static_cast<int>(i) + 1) = means[i];
        McMarkNulls();
    }

    static void Families(const std::vector<i16>& numbers, i16 method) {
        McSetUpFamilies({numbers}, {0.05F}, method);
        McAllCrit({Large});
    }

    static McDecision Decide(const std::vector<f32>& statistics, i16 mode = UnderH1) {
        Array1<f32> z(1, static_cast<int>(statistics.size()));
        for (std::size_t i = 0; i < statistics.size(); ++i)
            z(static_cast<int>(i) + 1) = statistics[i];
        return McRunOne(z, 1, Large, mode);
    }

    static std::vector<bool> Rejected(const std::vector<f32>& statistics) {
        const McDecision decision = Decide(statistics);
        std::vector<bool> rejected;
        for (i16 test = 1; test <= NoOfTests; ++test)
            rejected.push_back(decision.Rejected(test));
        return rejected;
    }
};

using Flags = std::vector<bool>;

// --- Single decisions
// -----------------------------------------------------------------------------

TEST_F(Procedures, BonferroniLooksAtEachTestAlone) {
    EachMean({1, 1, 1});
    Families({1, 1, 1}, Adjust::Bonferroni); // 2.128 each
    EXPECT_EQ(Rejected({2.2F, 1.9F, 2.5F}), (Flags{true, false, true}));
}

TEST_F(Procedures, ASequenceEndsAtTheFirstAcceptance) {
    EachMean({1, 1, 1});
    Families({1, 1, 1}, Adjust::Sequence); // 1.645 each
    EXPECT_EQ(Rejected({1.7F, 1.6F, 9}), (Flags{true, false, false}));
    EXPECT_EQ(Rejected({1.7F, 1.7F, 1.7F}), (Flags{true, true, true}));
}

TEST_F(Procedures, HolmStepsDownFromTheLargestStatistic) {
    EachMean({1, 1, 1});
    Families({1, 1, 1}, Adjust::Holm); // 2.128, 1.960, 1.645
    EXPECT_EQ(Rejected({1.7F, 2.2F, 2.0F}), (Flags{true, true, true}));
    EXPECT_EQ(Rejected({1.7F, 2.2F, 1.9F}), (Flags{false, true, false}));
    EXPECT_EQ(Rejected({2.1F, 2.1F, 2.1F}), (Flags{false, false, false}));
}

TEST_F(Procedures, HochbergRejectsAllIfTheSmallestStatisticIsSignificant) {
    EachMean({1, 1, 1});
    Families({1, 1, 1}, Adjust::Hochberg); // 1.645, 1.960, 2.128
    EXPECT_EQ(Rejected({1.65F, 1.66F, 1.67F}), (Flags{true, true, true}));
    EXPECT_EQ(Rejected({1.6F, 2.0F, 1.97F}), (Flags{false, true, true}));
    EXPECT_EQ(Rejected({1.6F, 2.0F, 1.9F}), (Flags{false, false, false}));
}

TEST_F(Procedures, WeightsShareTheLevel) {
    EachMean({1, 1});
    McSetUpFamilies({{1, 1}}, {0.05F}, Adjust::Weighted);
    FamilyWeight(1)(1, 1) = 1;
    FamilyWeight(2)(1, 1) = 0;
    McAllCrit({Large});
    EXPECT_EQ(Rejected({1.66F, 50}), (Flags{true, false}));
    // However large its statistic is.
    EXPECT_EQ(Rejected({1.66F, 1e30F}), (Flags{true, false}));
}

TEST_F(Procedures, ASerialGateStopsAtAnAcceptedTest) {
    EachMean({1, 1, 1, 1});
    SerialGate = 1;
    Families({1, 1, 2, 2}, Adjust::Bonferroni); // 1.960
    EXPECT_EQ(Rejected({2, 1.9F, 9, 9}), (Flags{true, false, false, false}));
    EXPECT_EQ(Rejected({2, 2, 2, 1}), (Flags{true, true, true, false}));
}

// Without a weight at the second analysis the first hypothesis can't be rejected there, but what
// the first analysis rejected opens the gate.
TEST_F(Procedures, AGateStaysOpenWithoutAWeight) {
    EachMean({1, 1});
    SerialGate = 1;
    McSetUpFamilies({{1, 2}, {1, 2}}, {0.025F, 0.025F}, Adjust::Weighted);
    for (i16 k = 1; k <= 2; ++k)
        for (i16 f = 1; f <= 2; ++f)
            FamilyWeight(1)(f, k) = k == 2 && f == 1 ? 0 : 1;
    McAllCrit({Large, Large});
    const auto last = [](f32 first) {
        Array1<f32> z(1, 2);
        z(1) = first;
        McRunOne(z, 1, Large, UnderH1);
        z(1) = 0;
        z(2) = 9;
        return McRunOne(z, 2, Large, UnderH1);
    };
    ClearFloatFaults();
    EXPECT_TRUE(last(9).Rejected(1));
    EXPECT_TRUE(last(9).Rejected(2));
    EXPECT_FALSE(HasFloatFault());
    EXPECT_FALSE(last(0).Rejected(1));
    EXPECT_FALSE(last(0).Rejected(2));
}

// One of two rejected hands on half of the level: 2.241 where 1.960 is that of all of it.
TEST_F(Procedures, AParallelGateHandsOnTheLevelOfWhatWasRejected) {
    EachMean({1, 1, 1, 1});
    ParallelGate = 1;
    Families({1, 1, 2, 2}, Adjust::Bonferroni);
    EXPECT_EQ(Rejected({1, 1, 9, 9}), (Flags{false, false, false, false}));
    EXPECT_EQ(Rejected({2, 1, 2.2F, 2.3F}), (Flags{true, false, false, true}));
    EXPECT_EQ(Rejected({2, 2, 2.2F, 2.3F}), (Flags{true, true, true, true}));
}

// --- What is judged
// -------------------------------------------------------------------------------

TEST_F(Procedures, APowerIsThatOfItsDefinition) {
    EachMean({1, 1, 0});
    EXPECT_EQ(NoOfFalseNull, 2);
    EXPECT_TRUE(TrueNull(3));
    Families({1, 1, 1}, Adjust::Bonferroni);
    EXPECT_EQ(Decide({9, 0, 0}).Result, 0);
    EXPECT_EQ(Decide({0, 0, 9}).Result, 1);
    EXPECT_EQ(Decide({0, 0, 9}, UnderH0).Result, 0);
    EXPECT_EQ(Decide({9, 9, 0}, UnderH0).Result, 1);
    EXPECT_TRUE(Decide({9, 0, 0}).Stop);
    PowerKind = ConjunctivePower;
    EXPECT_EQ(Decide({9, 0, 9}).Result, 1);
    EXPECT_EQ(Decide({9, 9, 0}).Result, 0);
    EXPECT_FALSE(Decide({9, 9, 0}).Stop);
    EXPECT_TRUE(Decide({9, 9, 9}).Stop);
    PowerKind = AveragePower;
    EXPECT_EQ(Decide({9, 0, 9}).Result, -50);
    EXPECT_EQ(Decide({9, 9, 9}).Result, -100);
    EXPECT_FALSE(Decide({9, 9, 9}).Stop);
}

TEST_F(Procedures, WithoutAFalseNullNothingCountsAsPower) {
    EachMean({0, 0});
    EXPECT_EQ(NoOfFalseNull, 0);
    Families({1, 1}, Adjust::Bonferroni);
    for (const i16 power : {DisjunctivePower, ConjunctivePower, AveragePower}) {
        PowerKind = power;
        EXPECT_EQ(Decide({9, 9}).Result, 1);
    }
}

TEST_F(Procedures, AveragePowerHasNoInterimAnalyses) {
    PowerKind = AveragePower;
    EXPECT_TRUE(McCheckPowerKind(0));
    EXPECT_FALSE(McCheckPowerKind(1));
    EXPECT_EQ(Cancelled, True);
    EXPECT_EQ(platform.Texts().back(),
              "Average Power Is Calculated Only When No Interim Analyses.");
}

TEST_F(Procedures, TenPairsAreTheMost) {
    TestNo = 139;
    EXPECT_TRUE(McStandardContrasts(5));
    EXPECT_EQ(NoOfTests, 10);
    EXPECT_EQ(Contrast(1, 10), 0);
    EXPECT_EQ(Contrast(4, 10), 1);
    EXPECT_EQ(Contrast(5, 10), -1);
    EXPECT_FALSE(McStandardContrasts(6));
    EXPECT_EQ(Cancelled, True);
    EXPECT_EQ(platform.Texts().back(), "Number of Pair-wise Comparisons Exceeds 10.");
}

TEST_F(Procedures, NineCombinationsOfAnalysesAndFamiliesAreTheMost) {
    EachMean({1, 1, 1});
    const std::vector<i16> three{1, 2, 3};
    EXPECT_TRUE(McSetUpFamilies({three, three, three}, {0.05F, 0.05F, 0.05F}, 1));
    EXPECT_FALSE(
        McSetUpFamilies({three, three, three, {1, 1, 1}}, {0.05F, 0.05F, 0.05F, 0.05F}, 1));
    EXPECT_EQ(platform.Texts().back(),
              "Number of Combinations of Interim and Final Analyses and Families Within an "
              "Analysis Must Not Exceed 9.");
}

TEST_F(Procedures, AreShownWithTheSharesOfTheirRejections) {
    EachMean({1, 1, 0});
    Families({1, 1, 1}, Adjust::Bonferroni);
    for (const f32 z : {9.0F, 9.0F, 9.0F, 0.0F})
        Decide({z, 0, 9});
    const McTable single = McShowResult(1);
    EXPECT_EQ(single.Heads, (std::vector<std::string>{""}));
    EXPECT_EQ(single.Rows,
              (std::vector<std::vector<std::string>>{{"0.7500"}, {"0.0000"}, {"0.0000"}}));
    McClearCounts();
    SerialGate = 1;
    Families({1, 2, 2}, Adjust::Bonferroni);
    Decide({9, 9, 0});
    const McTable gated = McShowResult(1);
    EXPECT_EQ(gated.Heads,
              (std::vector<std::string>{"Final      /Family1", "Final      /Family2", "Over-All"}));
    EXPECT_EQ(gated.Rows[0], (std::vector<std::string>{"1.0000", "     --", "1.0000"}));
    EXPECT_EQ(gated.Rows[1], (std::vector<std::string>{"     --", "1.0000", "1.0000"}));
    EXPECT_EQ(gated.Rows[2], (std::vector<std::string>{"     --", "     --", "     --"}));
}

TEST_F(Procedures, ACovarianceIsFactoredOrRefused) {
    const Array2<f64> covariance = McCovariance(1, 3, 2, 0.5);
    EXPECT_EQ(covariance(1, 3), 1);
    Array2<f64> factor;
    ASSERT_TRUE(McCholesky(covariance, factor));
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= i; ++j) {
            f64 product = 0;
            for (int l = 1; l <= j; ++l)
                product += factor(i, l) * factor(j, l);
            EXPECT_NEAR(product, covariance(i, j), 1e-12);
        }
    EXPECT_FALSE(McCholesky(McCovariance(0, 3, 1, -0.9), factor));
}

// --- Against the closed test
// ----------------------------------------------------------------------

// A hypothesis is rejected if every intersection that it is part of is: R. Marcus, E. Peritz and
// K. R. Gabriel, Biometrika 63, 1976, 655-660.
template <class LocalTest>
Flags ClosedTest(const std::vector<f32>& z, LocalTest&& rejects) {
    Flags rejected(z.size(), true);
    for (unsigned subset = 1; subset < 1U << z.size(); ++subset) {
        std::vector<f32> part;
        for (std::size_t i = 0; i < z.size(); ++i)
            if ((subset >> i & 1U) != 0)
                part.push_back(z[i]);
        std::sort(part.begin(), part.end(), std::greater<>());
        if (rejects(part))
            continue;
        for (std::size_t i = 0; i < z.size(); ++i)
            if ((subset >> i & 1U) != 0)
                rejected[i] = false;
    }
    return rejected;
}

f32 PointOf(f64 share) {
    return McTailValue(Single((1 - f64{Single(1 - f64{0.05F})}) / share), Large);
}

TEST_F(Procedures, HolmAndHochbergAreTheirClosedTestsOnEveryDataSet) {
    EachMean({1, 1, 1, 0, 0});
    Rnd(-17);
    Randomize(17);
    const auto holm = [](const std::vector<f32>& part) {
        return part.front() > PointOf(static_cast<f64>(part.size()));
    };
    const auto hochberg = [](const std::vector<f32>& part) {
        for (std::size_t j = 0; j < part.size(); ++j)
            if (part[j] > PointOf(static_cast<f64>(part.size() - j)))
                return true;
        return false;
    };
    int differing = 0;
    for (int set = 0; set < 3000; ++set) {
        std::vector<f32> z;
        RandSample.ReDim(0, 5);
        RandNormal();
        for (int i = 1; i <= 5; ++i)
            z.push_back(RandSample(i) + (i <= 3 ? 1.8F : 0.5F));
        Families({1, 1, 1, 1, 1}, Adjust::Holm);
        differing += Rejected(z) == ClosedTest(z, holm) ? 0 : 1;
        Families({1, 1, 1, 1, 1}, Adjust::Hochberg);
        differing += Rejected(z) == ClosedTest(z, hochberg) ? 0 : 1;
    }
    EXPECT_EQ(differing, 0);
}

// --- Against simulations of other origin
// ----------------------------------------------------------

struct Shares {
    f64 Error = 0;
    f64 Disjunctive = 0;
    f64 Conjunctive = 0;
    f64 Average = 0;
};

// Of so many data sets, drawn group by group or as vectors.
Shares Simulate(const std::vector<f64>& means, f64 n, f64 rho, f32 df, int runs) {
    const auto k = static_cast<i16>(means.size());
    const Array2<f64> covariance = McCovariance(0, k, 1, rho);
    Array2<f64> factor;
    EXPECT_TRUE(McCholesky(covariance, factor));
    Array1<f32> z(1, NoOfTests);
    Shares shares;
    for (int run = 0; run < runs; ++run) {
        RandSample.ReDim(0, k);
        RandNormal();
        std::vector<f64> drawn;
        for (i16 i = 1; i <= k; ++i) {
            f64 x = 0;
            for (i16 j = 1; j <= i; ++j)
                x += factor(i, j) * f64{RandSample(j)};
            drawn.push_back(means[static_cast<std::size_t>(i - 1)] + x / std::sqrt(n));
        }
        if (KnownVariance) {
            McVectorStatistics(drawn, covariance, n, z);
        } else {
            RandSample.ReDim(0, 1);
            RandChi2(df);
            McGroupStatistics(drawn, std::vector<f64>(drawn.size(), n), f64{RandSample(1)}, z);
        }
        const McDecision decision = McRunOne(z, 1, df, UnderH1);
        shares.Error += decision.TrueRejected > 0 ? 1 : 0;
        shares.Disjunctive += decision.FalseRejected > 0 ? 1 : 0;
        if (NoOfFalseNull > 0) {
            shares.Conjunctive += decision.FalseRejected == NoOfFalseNull ? 1 : 0;
            shares.Average += static_cast<f64>(decision.FalseRejected) / NoOfFalseNull;
        }
    }
    for (f64* share : {&shares.Error, &shares.Disjunctive, &shares.Conjunctive, &shares.Average})
        *share /= runs;
    return shares;
}

template <class Number>
std::vector<Number> NumbersOf(const std::string& text) {
    std::vector<Number> numbers;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');)
        numbers.push_back(static_cast<Number>(ParseNumber(part)));
    return numbers;
}

TEST_F(Procedures, HaveTheErrorAndThePowersOfSimulationsOfOtherOrigin) {
    constexpr int runs = 20000;
    constexpr f64 theirs = 100000;
    const auto near = [](f64 share, const std::string& text) {
        const f64 exact = ParseNumber(text);
        const f64 variance = MaxOf(exact * (1 - exact), 0.0005);
        return std::fabs(share - exact) <=
               4.5 * std::sqrt(variance * (1.0 / runs + 1.0 / theirs)) + 0.0015;
    };
    const auto rows = ReadTsv("procedures.tsv");
    EXPECT_GE(rows.size(), 30U);
    Rnd(-4);
    Randomize(4);
    for (const auto& row : rows) {
        TestNo = ToI16(ParseNumber(row[0]));
        NoOfTails = ToI16(ParseNumber(row[1]));
        const i16 gate = ToI16(ParseNumber(row[3]));
        SerialGate = gate == 1 ? 1 : 0;
        ParallelGate = gate == 2 ? 1 : 0;
        const auto k = ToI16(ParseNumber(row[5]));
        const f64 n = ParseNumber(row[6]);
        KnownVariance = TestNo >= 142;
        const f32 df = KnownVariance ? Large : Single(k * (n - 1));
        McStandardContrasts(k);
        const auto means = NumbersOf<f64>(row[7]);
        const std::vector<f64> none(means.size(), 0);
        McSetUpFamilies({NumbersOf<i16>(row[4])}, {0.05F}, ToI16(ParseNumber(row[2])));
        McAllCrit({df});
        H1Means.Fill(0);
        McMarkNulls();
        const f64 rho = ParseNumber(row[8]);
        const Shares null = Simulate(none, n, rho, df, runs);
        for (i16 i = 1; i <= k; ++i)
            H1Means(i) = Single(means[static_cast<std::size_t>(i - 1)]);
        McMarkNulls();
        const Shares real = Simulate(means, n, rho, df, runs);
        const std::string design = "test " + row[0] + ", tails " + row[1] + ", method " + row[2] +
                                   ", gate " + row[3] + ", families " + row[4];
        EXPECT_TRUE(near(null.Error, row[10])) << design << ": " << null.Error << " " << row[10];
        EXPECT_TRUE(near(real.Error, row[11])) << design << ": " << real.Error << " " << row[11];
        EXPECT_TRUE(near(real.Disjunctive, row[12])) << design << ": " << real.Disjunctive;
        EXPECT_TRUE(near(real.Conjunctive, row[13])) << design << ": " << real.Conjunctive;
        EXPECT_TRUE(near(real.Average, row[14])) << design << ": " << real.Average;
        // Never above the level, but for what the simulation itself is uncertain.
        constexpr f64 level = 0.05;
        EXPECT_LE(null.Error, level + 3.5 * std::sqrt(level * (1 - level) / runs)) << design;
        EXPECT_LE(real.Error, level + 3.5 * std::sqrt(level * (1 - level) / runs)) << design;
    }
}

} // namespace
} // namespace quorvanta::checks
