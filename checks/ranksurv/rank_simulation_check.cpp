// The simulated rank tests: their statistics on data whose values are known from textbooks or by
// hand, their edges, and how often they reject.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/shiftmodel.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "ranksurv/testchi2gof.h"
#include "ranksurv/testkendall.h"
#include "ranksurv/testkolsmi.h"
#include "ranksurv/testkolsmitwo.h"
#include "ranksurv/testkruskal.h"
#include "ranksurv/testmw.h"
#include "ranksurv/testnormscore.h"
#include "ranksurv/testrankscale.h"
#include "ranksurv/testsavage.h"
#include "ranksurv/testspear.h"
#include "ranksurv/testwsign.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/validation.h"
#include "tests/powereq.h"
#include "tests/simproportions.h"

#include <bit>
#include <cmath>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 menuWilcoxon = 300;
constexpr i16 menuNormalScores = 310;
constexpr i16 menuKruskal = 311;
constexpr i16 menuJonckheere = 312;
constexpr i16 menuSiegel = 330;
constexpr i16 menuAnsari = 331;
constexpr i16 menuKlotz = 332;
constexpr i16 menuMood = 333;
constexpr i16 menuConover = 334;
constexpr i16 menuSavage = 350;
constexpr i16 menuSignedRank = 360;
constexpr i16 menuSign = 370;
constexpr i16 menuKolSmi = 263;
constexpr i16 menuGoodnessOfFit = 110;
constexpr i16 menuSpearman = 490;
constexpr i16 menuKendall = 491;
constexpr i16 testDiscrete = 108;

// A study with these values, group 1 and then group 2.
void SetStudy(const std::vector<f32>& first, const std::vector<f32>& second) {
    SimStudy.Reset();
    const auto add = [](const std::vector<f32>& values, f32 group) {
        for (const f32 value : values) {
            const int n = SimStudy.Value.HighBound() + 1;
            SimStudy.Value.ReDimPreserve(n);
            SimStudy.Group.ReDimPreserve(n);
            SimStudy.Value(n) = value;
            SimStudy.Group(n) = group;
        }
    };
    add(first, 1);
    add(second, 2);
}

class RankSimulation : public SimulationFixture {
  protected:
    f64 Share(const Array1<i32>& counts) { return static_cast<f64>(counts(1)) / SimNo; }
    // What a share of n may be away from p, in 99.9 of 100 cases.
    static f64 Within(f64 p, i32 n) { return 3.3 * std::sqrt(p * (1 - p) / n); }
};

// --- Ranks ---------------------------------------------------------------------------------------

// Equal values have the ranks of their order, not the mean of these.
TEST_F(RankSimulation, TiesHaveTheRanksOfTheirOrder) {
    SetStudy({5, 5, 5}, {5, 5});
    EXPECT_EQ(RankSumOfGroup2(), 9.0F);
    SetStudy({0.0F}, {-0.0F});
    EXPECT_EQ(RankSumOfGroup2(), 2.0F);
}

TEST_F(RankSimulation, AnEmptyGroupIsNoRejection) {
    SetStudy({}, {1, 2, 3});
    EXPECT_EQ(TESTMW::SimTest(0, 3), 1.0F);
    EXPECT_EQ(TESTMW::SimTest(3, 0), 1.0F);
    for (const auto& test : {&TESTSIEGEL::SimTest, &TESTANSARI::SimTest, &TESTKLOTZ::SimTest,
                             &TESTMOOD::SimTest, &TESTCONOVER::SimTest, &TESTNORMSCORE::SimTest,
                             &TESTSAVAGE::SimTest, &TESTKRUSKAL::SimTest, &TESTJONCKTERP::SimTest,
                             &TESTKOLSMITWO::SimTest, &TESTWALDWOLF::SimTest}) {
        EXPECT_EQ(test(0, 3), 1.0F);
        EXPECT_EQ(test(3, 0), 1.0F);
    }
    EXPECT_EQ(TESTWSIGN::SimTest(0, 0), 1.0F);
    EXPECT_EQ(TESTSPEAR::SimTest(0, 0), 1.0F);
    EXPECT_EQ(TESTKENDALL::SimTest(0, 0), 1.0F);
}

TEST_F(RankSimulation, AnsariBradleyHasTheMeanOfItsParity) {
    EXPECT_FLOAT_EQ(AnsariMoments(2, 2).Mean, 3.0F);
    EXPECT_FLOAT_EQ(AnsariMoments(3, 2).Mean, 3.6F);
}

// Moments against those of all assignments of 3 of 7 ranks to group 2, counted one by one.
TEST_F(RankSimulation, MomentsAreThoseOfAllAssignments) {
    const auto moments = [](f64 (*score)(int, int), int n, int n2) {
        f64 sum = 0;
        f64 squares = 0;
        int count = 0;
        for (unsigned set = 0; set < (1U << n); ++set) {
            if (std::popcount(set) != n2)
                continue;
            f64 s = 0;
            for (int i = 1; i <= n; ++i)
                s += (set >> (i - 1) & 1U) != 0 ? score(i, n) : 0;
            sum += s;
            squares += s * s;
            ++count;
        }
        const f64 mean = sum / count;
        return std::pair(mean, std::sqrt(squares / count - mean * mean));
    };
    const auto ranks = moments([](int i, int) { return f64(i); }, 7, 3);
    EXPECT_NEAR(RankSumMoments(4, 3).Mean, ranks.first, 1e-5);
    EXPECT_NEAR(RankSumMoments(4, 3).Se, ranks.second, 1e-5);
    const auto ends = [](int i, int n) { return f64(std::min(i, n + 1 - i)); };
    EXPECT_NEAR(AnsariMoments(4, 3).Mean, moments(ends, 7, 3).first, 1e-5);
    EXPECT_NEAR(AnsariMoments(4, 3).Se, moments(ends, 7, 3).second, 1e-5);
    EXPECT_NEAR(AnsariMoments(5, 3).Mean, moments(ends, 8, 3).first, 1e-5);
    EXPECT_NEAR(AnsariMoments(5, 3).Se, moments(ends, 8, 3).second, 1e-5);
    SetStudy({1, 2, 3, 4}, {5, 6, 7});
    RankScores squares([](i32 rank, i32) { return static_cast<f64>(rank) * rank; });
    const auto exact = moments([](int i, int) { return f64(i * i); }, 7, 3);
    const RankStatistic statistic = squares.Statistic(4, 3);
    EXPECT_EQ(statistic.Sum, 25.0F + 36.0F + 49.0F);
    EXPECT_NEAR(statistic.Mean, exact.first, 1e-4);
    EXPECT_NEAR(statistic.Se, exact.second, 1e-4);
}

// --- Statistics by hand --------------------------------------------------------------------------

// W = 2 + 4 + 5 + 6 = 17, m = 4 (7 + 1)/2 = 16, s^2 = 3 4 8/12 = 8: z = 0.35355.
TEST_F(RankSimulation, WilcoxonByHand) {
    OpenSimulation(menuWilcoxon);
    SetStudy({1.1F, 3.3F, 7.7F}, {2.2F, 4.4F, 5.5F, 6.6F});
    EXPECT_NEAR(TESTMW::SimTest(3, 4), 0.723674, 1e-5);
}

// N = 10: the scores in the order of the values are 1 3 5 7 9 10 8 6 4 2.
TEST_F(RankSimulation, SiegelTukeyScoresGoInFromBothEnds) {
    NoOfTails = OneSided;
    LeftTail = False;
    SetStudy({3, 4, 5, 6, 7}, {1, 2, 8, 9, 10}); // group 2 is the wider one
    // Sum 1 + 3 + 6 + 4 + 2 = 16, mean 27.5, variance 5 5 11/12: z = 2.40227.
    EXPECT_NEAR(TESTSIEGEL::SimTest(5, 5), 0.008147, 2e-5);
    SetStudy({1, 2, 8, 9, 10}, {3, 4, 5, 6, 7});
    EXPECT_NEAR(TESTSIEGEL::SimTest(5, 5), 1 - 0.008147, 2e-5);
}

// N = 5: the scores are 1 3 6 4 2, the middle one being N + 1, with the moments of 1..5.
TEST_F(RankSimulation, SiegelTukeyOfAnOddNumberHasItsMiddleScore) {
    NoOfTails = OneSided;
    LeftTail = False;
    SetStudy({3, 4}, {1, 2, 5});
    // Sum 1 + 3 + 2 = 6, mean 3 6/2 = 9, variance 2 3 6/12 = 3: z = -1.73205, and low scores say
    // that group 2 is the wider one.
    EXPECT_NEAR(TESTSIEGEL::SimTest(2, 3), 0.041632, 2e-5);
    SetStudy({1, 5}, {2, 3, 4});
    // Sum 3 + 6 + 4 = 13: z = 2.30940.
    EXPECT_NEAR(TESTSIEGEL::SimTest(2, 3), 0.989539, 2e-5);
}

// Distances from 0, ranked: -0.5, -1, 1.5, 2.5, 3.5, 4. T+ = 3 + 4 + 5 + 6 = 18, mean 6 7/4 = 10.5,
// variance 6 7 13/24 = 22.75: z = 1.57243.
TEST_F(RankSimulation, SignedRankByHand) {
    OpenSimulation(menuSignedRank);
    SetStudy({1.5F, -0.5F, 2.5F, 3.5F, -1, 4}, {});
    NoOfTails = TwoSided;
    EXPECT_NEAR(TESTWSIGN::SimTest(6, 0), 0.115851, 2e-5);
    NoOfTails = OneSided;
    LeftTail = True;
    EXPECT_NEAR(TESTWSIGN::SimTest(6, 0), 1 - 0.115851 / 2, 2e-5);
    LeftTail = False;
}

// The first members of pairs are in Value, the second ones in Group.
void SetPairs(const std::vector<f32>& first, const std::vector<f32>& second) {
    SetStudy(first, {});
    std::ranges::copy(second, SimStudy.Group.Raw().begin());
}

// Ranks 1..5 beside 2 1 4 3 5: r = 1 - 6 4/(5 24) = 0.8, and t = 0.8 (3/0.36)^0.5 = 2.30940 with 3
// degrees of freedom.
TEST_F(RankSimulation, SpearmanByHand) {
    OpenSimulation(menuSpearman);
    NoOfTails = TwoSided;
    SetPairs({1, 2, 3, 4, 5}, {20, 10, 40, 30, 50});
    EXPECT_NEAR(TESTSPEAR::SimTest(5, 0), 0.104088, 5e-4);
    SetPairs({1, 2, 3, 4, 5}, {-20, -10, -40, -30, -50});
    EXPECT_NEAR(TESTSPEAR::SimTest(5, 0), 0.104088, 5e-4) << "the other direction";
    // A perfect correlation is held a little below 1.
    SetPairs({1, 2, 3, 4, 5}, {1, 2, 3, 4, 5});
    EXPECT_LT(TESTSPEAR::SimTest(5, 0), 0.001F);
    EXPECT_EQ(TESTSPEAR::SimTest(2, 0), 1.0F);
}

// 2 of the 10 pairs of pairs are discordant: tau = 0.6, with a standard error of
// (2 15/(9 5 4))^0.5; the count of 8 has mean 5 and standard error (4 5 15/72)^0.5. Both have
// z = 1.46969.
TEST_F(RankSimulation, KendallByHand) {
    for (const i16 option : {i16{0}, i16{1}}) {
        NewWindow(SimulationWindow);
        NewTest(menuKendall);
        ChooseIntPar(0, option);
        AcceptOptions();
        NoOfTails = TwoSided;
        SetPairs({1, 2, 3, 4, 5}, {20, 10, 40, 30, 50});
        EXPECT_NEAR(TESTKENDALL::SimTest(5, 0), 0.141645, 2e-5) << option;
    }
}

// A standard normal null at 0.5, 1, 1.5 and 2: the sample lies up to 0.691462 below it, at the
// first, and 0.022750 above, at the last (P of Birnbaum and Tingey 1951, from scipy).
TEST_F(RankSimulation, KolmogorovSmirnovOfOneSampleByHand) {
    OpenSimulation(menuKolSmi);
    Run("1", "1");
    SetStudy({1.5F, 0.5F, 2, 1}, {});
    NoOfTails = TwoSided;
    EXPECT_NEAR(TESTKOLSMI::SimTest(4, 0), 0.019234, 2e-4);
    NoOfTails = OneSided;
    LeftTail = False;
    EXPECT_NEAR(TESTKOLSMI::SimTest(4, 0), 0.009617, 1e-4) << "larger observations";
    LeftTail = True;
    EXPECT_NEAR(TESTKOLSMI::SimTest(4, 0), 0.975662, 1e-4) << "smaller observations";
    LeftTail = False;
    EXPECT_EQ(TESTKOLSMI::SimTest(0, 0), 1.0F);
}

// A Poisson null with mean 2 has P(X <= 1) = 0.406006, and of four observations of 2 and more none
// is there: the sample lies so far below the null. Of all samples of four, enumerated, 0.185778
// have such a distance.
TEST_F(RankSimulation, KolmogorovSmirnovOfADiscreteNullByHand) {
    OpenSimulation(menuKolSmi);
    TestNo = testDiscrete;
    Run("1", "1");
    SetStudy({2, 3, 2, 5}, {});
    NoOfTails = OneSided;
    LeftTail = False;
    EXPECT_NEAR(TESTKOLSMI::SimTest(4, 0), 0.185778, 1e-4);
}

// Counts 30, 20, 25 and 25 where 25 each are expected: 50/25 = 2, with 3 degrees of freedom.
TEST_F(RankSimulation, GoodnessOfFitByHand) {
    OpenSimulation(menuGoodnessOfFit);
    Type(Kind::NoOfCategories, "4");
    Type(Kind::NonCentrality, "0.1");
    Run("1", "1");
    SetStudy({30, 20, 25, 25}, {});
    EXPECT_NEAR(TESTCHI2GOF::SimTest(100, 0), 0.572407, 1e-3);
    SetStudy({25, 25, 25, 25}, {});
    EXPECT_NEAR(TESTCHI2GOF::SimTest(100, 0), 1, 1e-6);
    EXPECT_EQ(TESTCHI2GOF::SimTest(0, 0), 1.0F);
}

// A category of which H0 says that it does not occur counts as one of 1e-5: a single observation in
// it makes (1 - 1e-5 n)^2/(1e-5 n), 998 of 100, and rejects.
TEST_F(RankSimulation, AnObservationWhereNoneIsExpectedRejects) {
    OpenSimulation(menuGoodnessOfFit);
    Type(Kind::NoOfCategories, "3");
    Type(Kind::NonCentrality, "0.1");
    HasGridData = True;
    GridData(1).ReDim(0, 2, 0, 3);
    GridData(1)(1, 1) = GridData(1)(1, 2) = 0.5F;
    for (int j = 1; j <= 3; ++j)
        GridData(1)(2, j) = j == 3 ? 0.2F : 0.4F;
    Run("200", "1");
    EXPECT_EQ(CountRejectH1(1), 200) << "none of the samples was without one";
    EXPECT_LT(CountRejectH0(1), 30);
    SetStudy({50, 49, 1}, {});
    EXPECT_EQ(TESTCHI2GOF::SimTest(100, 0), 0.0F);
    SetStudy({60, 40, 0}, {});
    // 100/50 + 100/50 + 1e-3 with two degrees of freedom.
    EXPECT_NEAR(TESTCHI2GOF::SimTest(100, 0), std::exp(-4.001 / 2), 1e-3);
}

TEST_F(RankSimulation, KruskalWallisByHand) {
    OpenSimulation(menuKruskal);
    Type(Kind::NoOfGroups, "3");
    Run("1", "1");
    SetStudy({2.9F, 3.0F, 2.5F, 2.6F, 3.2F}, {});
    const auto add = [](std::vector<f32> values, f32 group) {
        for (const f32 value : values) {
            const int n = SimStudy.Value.HighBound() + 1;
            SimStudy.Value.ReDimPreserve(n);
            SimStudy.Group.ReDimPreserve(n);
            SimStudy.Value(n) = value;
            SimStudy.Group(n) = group;
        }
    };
    add({3.8F, 2.7F, 4.0F, 2.4F, 3.9F}, 2);
    add({2.8F, 3.4F, 3.7F, 2.2F, 2.0F}, 3);
    // Rank sums 36, 51 and 33 of the samples of 5: H = 12/(15 16) (16 + 121 + 49)/5 = 1.86, and
    // with two degrees of freedom the upper tail is exp(-H/2). Chi2Cdf is its own approximation.
    EXPECT_NEAR(TESTKRUSKAL::SimTest(5, 5), std::exp(-1.86 / 2), 1e-3);
}

TEST_F(RankSimulation, JonckheereCountsPairsInOrder) {
    OpenSimulation(menuJonckheere);
    Type(Kind::NoOfGroups, "3");
    Run("1", "1");
    SetStudy({1, 2}, {3, 4});
    for (const f32 value : {5.0F, 6.0F}) {
        const int n = SimStudy.Value.HighBound() + 1;
        SimStudy.Value.ReDimPreserve(n);
        SimStudy.Group.ReDimPreserve(n);
        SimStudy.Value(n) = value;
        SimStudy.Group(n) = 3;
    }
    // All 12 pairs, mean (36 - 12)/4 = 6, variance (36 15 - 3 28)/72 = 6.3333: z = 2.38416.
    EXPECT_NEAR(TESTJONCKTERP::SimTest(2, 2), 0.008559, 2e-5);
}

// Jonckheere and Terpstra's test looks for locations that rise with the groups: those of the grid,
// where it was filled.
TEST_F(RankSimulation, LocationsOfTheGridAreSimulated) {
    const auto power = [this](const GridRowTexts& means) {
        OpenSimulation(menuJonckheere);
        Type(Kind::NoOfGroups, "3");
        platform.GridFillings.emplace_back([means] { return FillCurrentGrid(means); });
        GetFromTable(PositionOf(Kind::SdOfMeans));
        EXPECT_TRUE(platform.GridFillings.empty());
        Run("2000", "7");
        return Share(CountRejectH1);
    };
    EXPECT_GT(power({{"0"}, {"0"}, {"1"}}), 0.8);
    EXPECT_LT(power({{"1"}, {"0"}, {"0"}}), 0.01);
}

// Larger observations of sample 2 have a small one-sided p-value, and in the left tail a large one.
TEST_F(RankSimulation, KolmogorovSmirnovLooksInTheDirectionOfAllOthers) {
    OpenSimulation(menuNormalScores);
    SetStudy({1, 2, 3, 4, 5, 6}, {4.5F, 7, 8, 9, 10, 11});
    NoOfTails = OneSided;
    LeftTail = False;
    const f32 right = TESTKOLSMITWO::SimTest(6, 6);
    EXPECT_LT(right, 0.05F);
    EXPECT_LT(TESTNORMSCORE::SimTest(6, 6), 0.05F);
    LeftTail = True;
    EXPECT_GT(TESTKOLSMITWO::SimTest(6, 6), 0.5F);
    EXPECT_GT(TESTNORMSCORE::SimTest(6, 6), 0.5F);
    NoOfTails = TwoSided;
    LeftTail = False;
    // D = 5/6 - 0 at 6: 1 - 1/6 = 5/6, n1 n2/(n1 + n2) = 3: the one-sided limit is
    // exp(-2 3 (5/6)^2) = 0.0155.
    EXPECT_NEAR(right, std::exp(-6.0 * 25 / 36), 1e-4);
}

TEST_F(RankSimulation, KolmogorovSmirnovPassesOverTies) {
    NoOfTails = TwoSided;
    SetStudy({1, 1, 1}, {1, 1, 1});
    EXPECT_EQ(TESTKOLSMITWO::SimTest(3, 3), 1.0F);
    // Among the ones and twos that both have, 1/6 is the largest distance, whatever the order in
    // which they are counted: one after the other it would be 4/6.
    SetStudy({1, 1, 1, 1, 2, 2}, {1, 1, 1, 2, 2, 2});
    const f32 tied = TESTKOLSMITWO::SimTest(6, 6);
    EXPECT_NEAR(tied, 1 - KolSmiTwoCdf(6, 6, 1.0F / 6, 0), 1e-6);
    SetStudy({1, 1, 1, 2, 2, 2}, {1, 1, 1, 1, 2, 2});
    EXPECT_EQ(TESTKOLSMITWO::SimTest(6, 6), tied);
}

// Runs aa b a bb in the order: 4 runs, n1 = n2 = 3: mean 4, so p is a half.
TEST_F(RankSimulation, WaldWolfowitzCountsRuns) {
    SetStudy({1, 2, 4}, {3, 5, 6});
    EXPECT_NEAR(TESTWALDWOLF::SimTest(3, 3), 0.5, 1e-6);
}

TEST_F(RankSimulation, OrderedCategories) {
    // Agresti-like 2 x 3 table by hand: S = sum over group 2 of (below - above).
    Array1<f32> first(1, 3);
    Array1<f32> second(1, 3);
    first(1) = 5;
    first(2) = 10;
    first(3) = 5;
    second(1) = 10;
    second(2) = 6;
    second(3) = 4;
    // S = -15 10 + (5 - 5) 6 + 15 4 = -90; D = ((0.375)^3 + (0.4)^3 + (0.225)^3) = 0.128125;
    // v = 20 20 40 (1 - D)/3.
    const f64 d = 0.375 * 0.375 * 0.375 + 0.4 * 0.4 * 0.4 + 0.225 * 0.225 * 0.225;
    EXPECT_NEAR(OrderedZ(first, second), 90 / std::sqrt(16000 * (1 - d) / 3), 1e-5);
}

// Two of ten at 0.5: P(X <= 2) = 56/1024.
TEST_F(RankSimulation, ExactBinomialPValues) {
    NoOfTails = OneSided;
    LeftTail = True;
    EXPECT_NEAR(BinPValue(10, 2, 0.5F, 0, 0), 56.0 / 1024, 1e-6);
    LeftTail = False;
    EXPECT_NEAR(BinPValue(10, 8, 0.5F, 0, 0), 56.0 / 1024, 1e-6);
    NoOfTails = TwoSided;
    EXPECT_NEAR(BinPValue(10, 2, 0.5F, 0, 0), 112.0 / 1024, 1e-6);
    EXPECT_EQ(BinPValue(10, 5, 0.5F, 0, 0), 1.0F);
    NoOfTails = TwoOneSided;
    // Of the two tests against 0.3 and 0.7 the larger p-value: P(X >= 5 | 0.3) = 0.150268.
    EXPECT_NEAR(BinPValue(10, 5, 0.5F, 0.3F, 0.7F), 0.150268, 1e-5);
    NoOfTails = TwoSided;
}

// --- How often they reject -----------------------------------------------------------------------

// The level, and the power, of every rank test as its approximation carries it out, against those
// of another program (checks/reference/ranksim.py). A rate may be off by 3.29 standard errors of
// both runs: one check in a thousand fails, and the seed is one that does not.
TEST_F(RankSimulation, HaveTheRatesOfAnotherProgram) {
    const i32 replicates = DrawsOf(100000);
    NewWindow(SimulationWindow);
    int rows = 0;
    for (const ValidationCase& row :
         ReadValidation(std::string(CHECK_DATA_DIR) + "/simulated/rank.tsv")) {
        ++rows;
        SetUpWithValues(row);
        Run(std::to_string(replicates), "2024");
        SCOPED_TRACE(row.Analysis + " " + Describe(row) + ", tails " +
                     std::to_string(row.NoOfTails));
        ASSERT_EQ(SimNo, replicates) << LastMessage();
        const bool isNull = row.UnknownKind == Kind::SignificanceLevel;
        EXPECT_NEAR(Share(isNull ? CountRejectH0 : CountRejectH1), row.Exact,
                    std::hypot(Within(row.Exact, replicates), row.Tolerance));
    }
    EXPECT_EQ(rows, 52);
}

// Against the equation, which the approximations leave 0.02 away at this size.
TEST_F(RankSimulation, PowersAreThoseOfTheEquations) {
    OpenSimulation(menuSign);
    Type(Kind::H1ProbabilityAbove0, "0.7");
    Type(Kind::Size, "40");
    Run("20000", "5");
    // Binomial: P(X <= 13) + P(X >= 27) of 40 at 0.5 is 0.0385, and at 0.7 0.7032.
    EXPECT_NEAR(Share(CountRejectH0), 0.03848, Within(0.04, 20000));
    EXPECT_NEAR(Share(CountRejectH1), 0.70319, Within(0.7, 20000));
}

TEST_F(RankSimulation, ATypedProbabilityIsTheOneSimulated) {
    OpenSimulation(menuWilcoxon);
    Type(Kind::H1ProbabilityOfOrder, "0.76025"); // a normal shift of 1
    Type(Kind::Size1, "10");
    Run("1", "1");
    EXPECT_NEAR(SimLoc2, 1, 1e-3);
}

TEST_F(RankSimulation, SurvivesTheSmallestSamples) {
    for (const i16 menu : {menuWilcoxon, menuNormalScores, menuSiegel, menuAnsari, menuKlotz,
                           menuMood, menuConover, menuSavage}) {
        OpenSimulation(menu);
        Type(Kind::Size1, "3");
        if (PositionOf(Kind::Size2) >= 0)
            Type(Kind::Size2, "3");
        Run("200", "1");
        EXPECT_TRUE(platform.Messages.empty()) << LastMessage();
        EXPECT_EQ(SimNo, 200) << TestName;
    }
}

TEST_F(RankSimulation, DirectionsAgree) {
    for (const i16 menu : {menuWilcoxon, menuNormalScores, menuSiegel, menuAnsari, menuKlotz,
                           menuMood, menuConover, menuSavage}) {
        NewWindow(SimulationWindow);
        NewTest(menu);
        ChooseTails(OneSided);
        ChooseLeftTail(false);
        AcceptOptions();
        for (const auto& [kind, text] :
             std::initializer_list<std::pair<i16, const char*>>{{Kind::H1ProbabilityOfOrder, "0.8"},
                                                                {Kind::H1Mean2Minus1, "1"},
                                                                {Kind::Sd, "1"},
                                                                {Kind::H1Scale1, "1"},
                                                                {Kind::H1Scale2, "2.5"},
                                                                {Kind::H1Scale2Over1, "2.5"},
                                                                {Kind::Size1, "30"}})
            if (PositionOf(kind) >= 0)
                Type(kind, text);
        Run("400", "3");
        EXPECT_GT(Share(CountRejectH1), 0.5) << TestName;
    }
}

} // namespace
} // namespace quorvanta::checks
