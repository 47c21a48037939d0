// The simulation of the parametric tests of means, proportions and tables: shares of rejected
// studies against exact ones of other origin, and what there is no table of.
#include "core/dispatch.h"
#include "core/grids.h"
#include "core/kinds.h"
#include "montecarlo/simnormal.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simtable.h"
#include "numeric/probdist_discrete.h"
#include "numeric/rnd.h"
#include "support/grid_filling.h"
#include "support/simulation_fixture.h"
#include "support/statistics.h"
#include "support/validation.h"
#include "tests/powereq.h"
#include "tests/simproportions.h"
#include "tests/testchi2.h"
#include "tests/testfisher.h"
#include "tests/testmcn.h"
#include "tests/testpairbin.h"
#include "tests/teststuart.h"
#include "tests/teststud.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quorvanta::checks {
namespace {

constexpr i16 menuUnpaired = 0;
constexpr i16 menuPaired = 1;
constexpr i16 menuMcNemar = 70;
constexpr i16 menuPairedProportions = 80;
constexpr i16 menuStuart = 90;
constexpr i16 menuFisher = 100;
constexpr i16 menuChi2 = 111;
constexpr i16 menuMantelHaenszel = 120;
constexpr i16 menuTrend = 130;

// Of 99.9 % of all samples the share lies so many standard errors around the true one.
constexpr f64 Quantile999 = 3.2905;
// The same of the shares of all cases together.
constexpr f64 QuantileOfAll999 = 4.7;

class ParametricSimulation : public SimulationFixture {
  protected:
    void SetUp() override {
        SimulationFixture::SetUp();
        NewWindow(SimulationWindow);
    }
    void TearDown() override { SimNo = 0; }

    // Replicates without the display.
    static void Replicate(i32 replicates, f64 seed) {
        MaxNoOfSimText = std::to_string(replicates);
        SeedText = std::to_string(static_cast<i32>(seed));
        SimStart();
    }

    static i32 Rejections(const Array1<i32>& counts) { return counts(NoOfInterim + 1); }

    static void ExpectShare(i32 count, i32 replicates, f64 expected, f64 error, const char* what,
                            f64 quantile = Quantile999) {
        const f64 p = static_cast<f64>(count) / replicates;
        const f64 se = std::sqrt(expected * (1 - expected) / replicates + error * error);
        EXPECT_NEAR(p, expected, quantile * se + 1e-9) << what;
    }

    static void ExpectRejections(i32 replicates, f64 size, f64 power, f64 error,
                                 f64 quantile = Quantile999) {
        ASSERT_EQ(SimNo, replicates);
        ExpectShare(Rejections(CountRejectH0), replicates, size, error, "under H0", quantile);
        ExpectShare(Rejections(CountRejectH1), replicates, power, error, "under H1", quantile);
    }

    // Opens a test with values for some of its kinds.
    void Open(i16 menuNo, const std::map<i16, std::string>& values,
              const std::function<void()>& choose = nullptr) {
        NewTest(menuNo);
        if (choose)
            choose();
        AcceptOptions();
        for (const auto& [kind, text] : values)
            Type(kind, text);
        platform.Messages.clear();
    }

    // Prepares the simulation of the open analysis and starts a study of which nothing is drawn.
    static void StartStudy() {
        Run1();
        SimStudy.Reset();
        SimStage = 1;
    }

  private:
    static void Run1() { Replicate(1, 1); }
};

// Shares of rejections under H0 and H1 of the tables below, by checks/reference/simulated.py.
struct Shares {
    f64 Size;
    f64 Power;
};
constexpr Shares filledTrend{0.0512564, 0.7768975};
constexpr Shares filledStrata{0.0514099, 0.6379475};
constexpr Shares filledMargins{0.0529588, 0.5251508};

std::vector<SimulationCase> Cases() {
    return ReadSimulationCases(CHECK_DATA_DIR "/simulation/parametric.tsv");
}

// The size of the tests of counts is not the nominal one; the table has how far it is away.
TEST_F(ParametricSimulation, RejectAsOftenAsTheExactTest) {
    const i32 replicates = DrawsOf(100000);
    f64 seed = 1;
    for (const SimulationCase& row : Cases()) {
        SetUpWithValues(row);
        SCOPED_TRACE(row.Analysis + " " + Describe(row) + " tails " +
                     std::to_string(row.NoOfTails) + " row " + std::to_string(seed));
        Replicate(replicates, seed++);
        ExpectRejections(replicates, row.Size, row.Power, row.Error);
        ASSERT_TRUE(platform.Messages.empty()) << platform.Messages.back().Text;
    }
}

// A study whose first analysis rejects and accepts nothing is the study without it.
TEST_F(ParametricSimulation, AStudyInPartsIsTheSameStudy) {
    const i32 replicates = DrawsOf(40000);
    f64 seed = 1001;
    for (const SimulationCase& row : Cases()) {
        SetUpWithValues(row);
        NoOfInterim = 1;
        RejectH0Text(0) = ParKind(0) == Kind::TestConfidenceLevel ? "1" : "0.000000001";
        SCOPED_TRACE(row.Analysis + " " + Describe(row));
        Replicate(replicates, seed++);
        RejectH0Text(0) = "";
        ExpectRejections(replicates, row.Size, row.Power, row.Error, QuantileOfAll999);
        NoOfInterim = 0;
    }
}

// S. J. Pocock, Biometrika 64, 1977, 191-199: with a nominal level of 0.0221 at each of three
// analyses the level is 0.05.
TEST_F(ParametricSimulation, RepeatedTestsHaveThePublishedLevel) {
    NewDistribution(0);
    ChooseSamples(TwoSamples);
    ChooseTails(TwoSided);
    ChooseInterim(2);
    AcceptOptions();
    Type(Kind::Size1, "30");
    Type(Kind::Size2, "30");
    for (i16 k = 0; k < 3; ++k)
        RejectH0Text(k) = "0.0221";
    const i32 replicates = DrawsOf(200000);
    Replicate(replicates, 77);
    ExpectShare(CountRejectH0(4), replicates, 0.05, 0.0001, "over all");
    ExpectShare(CountRejectH0(1), replicates, 0.0221, 0, "first");
}

// --- Every option that is offered ----------------------------------------------------------------

// A simulation window is never empty where the menus offer it.
TEST_F(ParametricSimulation, EveryTestThatTheWindowIsOfferedForHasOne) {
    constexpr i16 menus[] = {0,   1,   70,  80,  90,  100, 111, 120, 130,
                             800, 801, 802, 810, 811, 830, 831, 832};
    for (const i16 menuNo : menus) {
        const AnalysisKey key{.IsTest = True, .TestNo = TestNoOfMenu(menuNo)};
        EXPECT_TRUE(HasSimWindow(menuNo) && HasSimulation(key)) << menuNo;
    }
    constexpr std::pair<i16, i16> parameters[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {4, 0},
                                                  {4, 1}, {5, 0}, {6, 0}, {6, 1}};
    for (const auto& [distrNo, parListNo] : parameters) {
        AnalysisKey key;
        key.IsTest = False;
        key.DistrNo = distrNo;
        key.ParListNo = parListNo;
        key.ProcedureNo = ProcedureTest;
        EXPECT_TRUE(HasSimulation(key)) << distrNo << " " << parListNo;
    }
}

// --- p-values ------------------------------------------------------------------------------------

struct Tails {
    Tails(i16 tails, bool left) {
        NoOfTails = tails;
        LeftTail = left ? True : False;
    }
};

TEST_F(ParametricSimulation, ZeroStandardErrorsHaveTheirPValues) {
    for (const i16 tails : {OneSided, TwoSided, TwoOneSided}) {
        const Tails chosen(tails, false);
        EXPECT_EQ(NorPValue(1, 0, 0, -1, 1, 0), 0);
        EXPECT_EQ(TPValue(1, 0, 0, -1, 1, 10), 0);
        EXPECT_EQ(NullErrorPValue(1, 0, 2, 0, 0, 0), 1);
    }
}

// From R: pt(2.1, 12, lower = FALSE), and 1 - pt and pt at the limits.
TEST_F(ParametricSimulation, TPValuesAreThoseOfStudentsT) {
    {
        const Tails right(OneSided, false);
        EXPECT_NEAR(TPValue(2.1F, 0, 1, 0, 0, 12), 0.0287725, 2e-6);
    }
    {
        const Tails left(OneSided, true);
        EXPECT_NEAR(TPValue(2.1F, 0, 1, 0, 0, 12), 1 - 0.0287725, 2e-6);
    }
    {
        const Tails two(TwoSided, false);
        EXPECT_NEAR(TPValue(-2.1F, 0, 1, 0, 0, 12), 2 * 0.0287725, 4e-6);
    }
    {
        const Tails between(TwoOneSided, false);
        EXPECT_NEAR(TPValue(0.5F, 0, 1, -1.6F, 4, 12), 0.0287725, 2e-6);
        EXPECT_NEAR(TPValue(0.5F, 0, 1, -4, 2.6F, 12), 0.0287725, 2e-6);
    }
}

// The correction takes no more than there is: a p-value above 1 would accept H0 where nothing does.
TEST_F(ParametricSimulation, ACorrectionLeavesAPValueOfOneAtMost) {
    const Tails two(TwoSided, false);
    EXPECT_EQ(NorPValue(0.25F, 0, 1, 0, 0, 0.5F), 1);
    EXPECT_NEAR(NorPValue(2.5F, 0, 1, 0, 0, 0.5F), 0.0455003, 1e-6);
    EXPECT_NEAR(NorPValue(-2.5F, 0, 1, 0, 0, 0.5F), 0.0455003, 1e-6);
}

TEST_F(ParametricSimulation, LimitsHaveTheirOwnStandardErrors) {
    const Tails between(TwoOneSided, false);
    EXPECT_NEAR(NullErrorPValue(0, -2, 9, 1, 1, 0), 0.0227501, 1e-6);
    EXPECT_NEAR(NullErrorPValue(0, -9, 4, 1, 2, 0), 0.0227501, 1e-6);
    EXPECT_NEAR(NullErrorPValue(0, -2.5F, 9, 1, 1, 0.5F), 0.0227501, 1e-6);
    EXPECT_NEAR(NullErrorPValue(0, -9, 2.5F, 1, 1, 0.5F), 0.0227501, 1e-6);
}

// binom.test(7, 10, 0.5): 0.3438 two-sided, 0.1719 greater, 0.9453 less.
TEST_F(ParametricSimulation, BinomialPValuesAreExact) {
    const f64 greater = 176.0 / 1024;
    const f64 less = 968.0 / 1024;
    {
        const Tails right(OneSided, false);
        EXPECT_NEAR(BinPValue(10, 7, 0.5F, 0, 0), greater, 1e-6);
        EXPECT_EQ(BinPValue(10, 0, 0.5F, 0, 0), 1);
        EXPECT_EQ(BinPValue(0, 0, 0.5F, 0, 0), 1) << "nothing observed";
    }
    {
        const Tails left(OneSided, true);
        EXPECT_NEAR(BinPValue(10, 7, 0.5F, 0, 0), less, 1e-6);
        EXPECT_EQ(BinPValue(10, 10, 0.5F, 0, 0), 1);
    }
    {
        const Tails two(TwoSided, false);
        EXPECT_NEAR(BinPValue(10, 7, 0.5F, 0, 0), 2 * greater, 1e-6);
        EXPECT_EQ(BinPValue(10, 5, 0.5F, 0, 0), 1) << "twice the smaller tail, but 1 at most";
    }
    {
        const Tails between(TwoOneSided, false);
        EXPECT_NEAR(BinPValue(10, 7, 0.1F, 0.5F, 0.9F), greater, 1e-6);
        const f64 below = 1 - std::pow(0.9, 10) - 10 * 0.1 * std::pow(0.9, 9) -
                          45 * 0.01 * std::pow(0.9, 8); // three failures or more
        EXPECT_NEAR(BinPValue(10, 7, 0, 0.1F, 0.9F), below, 1e-6);
    }
}

// --- Small and degenerate studies
// -----------------------------------------------------------------

TEST_F(ParametricSimulation, AnEmptyGroupTellsNothing) {
    for (const SimulationCase& row : Cases()) {
        SetUpWithValues(row);
        StartStudy();
        SCOPED_TRACE(row.Analysis);
        ASSERT_EQ(SimSize1.HighBound(), 1);
        SimSize1(1) = SimSize2(1) = 0;
        // A rate has a study time and no subjects.
        if (PositionOf(Kind::StudyTime) >= 0 || PositionOf(Kind::StudyTime1) >= 0)
            continue;
        f32 p = 0;
        SimStage = 0;
        SelGetSimPar();
        SelSimStatistic(p, 1);
        EXPECT_EQ(p, 1);
        if (NoOfSamples != TwoSamples || PositionOf(Kind::TotalSize) >= 0)
            continue;
        for (const bool firstIsEmpty : {true, false}) {
            SimSize1(1) = firstIsEmpty ? i16{0} : i16{10};
            SimSize2(1) = firstIsEmpty ? i16{10} : i16{0};
            SimStage = 0;
            SelSimStatistic(p, 1);
            EXPECT_EQ(p, 1);
        }
    }
    ClearFloatFaults();
}

// Sizes below what a parameter allows come from interim analyses.
TEST_F(ParametricSimulation, TheSmallestStudiesHaveAPValue) {
    for (const SimulationCase& row : Cases()) {
        SetUpWithValues(row);
        StartStudy();
        SCOPED_TRACE(row.Analysis);
        for (const i16 n1 : {i16{1}, i16{2}, i16{3}})
            for (const i16 n2 : {i16{1}, i16{2}}) {
                SimSize1(1) = n1;
                SimSize2(1) = n2;
                SelGetSimPar();
                for (int i = 0; i < 50; ++i) {
                    f32 p = -1;
                    SimStage = 0;
                    SelSimStatistic(p, static_cast<i16>(i % 2));
                    ASSERT_TRUE(p >= 0 && p <= 1) << p;
                }
                ThrowIfFloatFault();
            }
    }
}

// Sums of two groups, as their observations would leave them.
void SetNormals(std::initializer_list<f64> first, std::initializer_list<f64> second) {
    const auto sum = [](std::initializer_list<f64> values) {
        return static_cast<f32>(std::accumulate(values.begin(), values.end(), 0.0));
    };
    const auto squares = [](std::initializer_list<f64> values) {
        return static_cast<f32>(
            std::inner_product(values.begin(), values.end(), values.begin(), 0.0));
    };
    SimStudy.Sum1 = SimStudy.Sum3 = sum(first);
    SimStudy.Sum2 = SimStudy.Sum4 = sum(second);
    SimStudy.Sum5 = squares(first);
    SimStudy.Sum6 = squares(second);
}

// t.test(c(1, 3), c(4, 6), var.equal = TRUE): t = -2.1213, df = 2, p = 0.1679; var.equal = FALSE of
// c(1, 2, 3, 4), c(10, 14): t = -4.5204, p = 0.1051.
TEST_F(ParametricSimulation, SmallSamplesHaveTheTTestOfTheTextbook) {
    Open(menuUnpaired, {}, [] { ChooseTails(TwoSided); });
    StartStudy();
    SetNormals({1, 3}, {4, 6});
    EXPECT_NEAR(TESTSTUD::SimTest(2, 2), 0.1679, 2e-4);
    SetNormals({1}, {4});
    EXPECT_EQ(TESTSTUD::SimTest(1, 1), 1) << "no degrees of freedom";
    SetNormals({2, 2}, {2, 2});
    EXPECT_EQ(TESTSTUD::SimTest(2, 2), 0) << "no variance";

    Open(menuUnpaired, {}, [this] {
        ChooseTails(TwoSided);
        Tick(Check::Satterthwaite);
    });
    StartStudy();
    SetNormals({1, 2, 3, 4}, {10, 14});
    EXPECT_NEAR(TESTSTUD::SimTest(4, 2), 0.10515, 2e-4);
    EXPECT_EQ(TESTSTUD::SimTest(4, 1), 1);
    SetNormals({2, 2}, {2, 2});
    EXPECT_EQ(TESTSTUD::SimTest(2, 2), 0) << "no variance";
    ThrowIfFloatFault();
}

// Large means cost no digits of the variance.
TEST_F(ParametricSimulation, TheVarianceOfLargeMeansIsRight) {
    Open(menuPaired, {{Kind::H0MeanOfDifference, "100000"},
                      {Kind::H1MeanOfDifference, "100001"},
                      {Kind::SdOfDifference, "1"},
                      {Kind::Size, "16"}});
    const i32 replicates = DrawsOf(40000);
    Replicate(replicates, 5);
    ExpectShare(CountRejectH0(1), replicates, 0.05, 0.002, "under H0");
}

TEST_F(ParametricSimulation, TablesWithoutVarianceHaveThePValueOne) {
    for (const bool corrected : {false, true}) {
        Open(menuChi2, {}, [this, corrected] {
            ChooseTails(TwoSided);
            Tick(Check::Correction, corrected);
        });
        StartStudy();
        EXPECT_EQ(TESTCHI2::SimTest(20, 10), 1) << "no successes";
        SimStudy.Sum1 = 20;
        SimStudy.Sum2 = 10;
        EXPECT_EQ(TESTCHI2::SimTest(20, 10), 1) << "nothing but successes";
    }
    Open(menuFisher, {}, [] { ChooseTails(TwoSided); });
    StartStudy();
    for (const i16 n : {i16{20}, i16{60}}) {
        SimStudy.Sum1 = SimStudy.Sum2 = 0;
        EXPECT_EQ(TESTFISHER::SimTest(n, n), 1) << "no successes";
        SimStudy.Sum1 = SimStudy.Sum2 = n;
        EXPECT_EQ(TESTFISHER::SimTest(n, n), 1) << "nothing but successes";
    }
    ThrowIfFloatFault();
}

// The tea of R. A. Fisher, The Design of Experiments, 1935: fisher.test of (3, 1; 1, 3) gives
// 0.2429 one-sided and 0.4857 two-sided, of (4, 0; 0, 4) 1/70.
TEST_F(ParametricSimulation, FishersTestIsThatOfTheTea) {
    Open(menuFisher, {}, [] { ChooseTails(TwoSided); });
    StartStudy();
    SimStudy.Sum1 = 1;
    SimStudy.Sum2 = 3;
    EXPECT_NEAR(TESTFISHER::SimTest(4, 4), 0.4857143, 1e-6);
    Open(menuFisher, {}, [] { ChooseTails(OneSided); });
    StartStudy();
    SimStudy.Sum1 = 1;
    SimStudy.Sum2 = 3;
    EXPECT_NEAR(TESTFISHER::SimTest(4, 4), 0.2428571, 1e-6);
    SimStudy.Sum1 = 0;
    SimStudy.Sum2 = 4;
    EXPECT_NEAR(TESTFISHER::SimTest(4, 4), 1.0 / 70, 1e-6);
}

TEST_F(ParametricSimulation, PairsThatAgreeHaveThePValueOne) {
    for (const i16 menuNo : {menuMcNemar, menuPairedProportions}) {
        Open(menuNo, {});
        StartStudy();
        SimStudy.Value.ReDim(1, 2);
        f32 p = 0;
        p = menuNo == menuMcNemar ? TESTMCN::SimTest(20, 0) : TESTPAIRBIN::SimTest(20, 0);
        EXPECT_EQ(p, 1);
    }
    Open(menuStuart, {{Kind::NoOfCategories, "3"}});
    StartStudy();
    SimStudy.Value.ReDim(1, 9);
    EXPECT_EQ(TESTSTUART::SimTest(20, 0), 1);
    ThrowIfFloatFault();
}

// A. Stuart, Biometrika 42, 1955, 412-416: vision of 7477 women, chi-square 11.96 with 3 df; by
// pchisq 0.00753.
TEST_F(ParametricSimulation, StuartsTestIsThatOfThePublishedTable) {
    Open(menuStuart, {{Kind::NoOfCategories, "4"}});
    StartStudy();
    constexpr f32 vision[] = {1520, 266, 124,  66,  234, 1512, 432, 78,
                              117,  362, 1772, 205, 36,  82,   179, 492};
    SimStudy.Value.ReDim(1, 16);
    std::copy(std::begin(vision), std::end(vision), SimStudy.Value.Raw().begin());
    EXPECT_NEAR(TESTSTUART::SimTest(7477, 0), 0.00753, 5e-5);
    // Another category that nobody enters or leaves changes nothing but the degrees of freedom:
    // pchisq(11.957, 4, lower = FALSE) = 0.01768.
    Open(menuStuart, {{Kind::NoOfCategories, "5"}});
    StartStudy();
    SimStudy.Value.ReDim(1, 25);
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j)
            SimStudy.Value((i - 1) * 5 + j) = vision[(i - 1) * 4 + j - 1];
    EXPECT_NEAR(TESTSTUART::SimTest(7477, 0), 0.01768, 1e-4);
}

// --- Tables that are filled
// -----------------------------------------------------------------------

class FilledTables : public ParametricSimulation {
  protected:
    // The user fills the grid of the parameter.
    void Fill(i16 kind, const GridRowTexts& rows) {
        platform.GridFillings.emplace_back([rows] { return FillCurrentGrid(rows); });
        GetFromTable(PositionOf(kind));
        ASSERT_TRUE(platform.Messages.empty()) << platform.Messages.back().Text;
    }
};

// Exact shares by checks/reference/simulated.py.
TEST_F(FilledTables, TheTrendIsThatOfTheGroups) {
    Open(menuTrend, {{Kind::NoOfGroups, "3"}, {Kind::TotalSize, "60"}},
         [] { ChooseTails(TwoSided); });
    Fill(Kind::H1Trend, {{"0.2", "0.35", "0.6"}, {"0", "1", "3"}, {"0.5", "0.25", "0.25"}});
    const i32 replicates = DrawsOf(100000);
    Replicate(replicates, 41);
    ExpectRejections(replicates, filledTrend.Size, filledTrend.Power, 0);
}

TEST_F(FilledTables, TheStrataAreThoseOfTheTable) {
    for (const bool asOddsRatio : {false, true}) {
        Open(menuMantelHaenszel, {{Kind::NoOfStrata, "2"}, {Kind::TotalSize, "60"}},
             [this, asOddsRatio] {
                 ChooseTails(TwoSided);
                 Tick(Check::OddsRatio, asOddsRatio);
             });
        const std::string second1 = asOddsRatio ? "4" : "0.5";
        const std::string second2 = asOddsRatio ? "4" : "0.8";
        Fill(Kind::H1SumOfDifferences,
             {{"0.2", second1, "10", "20"}, {"0.5", second2, "20", "10"}});
        const i32 replicates = DrawsOf(100000);
        Replicate(replicates, 42);
        ExpectRejections(replicates, filledStrata.Size, filledStrata.Power, 0);
    }
}

TEST_F(FilledTables, TheMarginsAreThoseOfTheTable) {
    Open(menuStuart, {{Kind::NoOfCategories, "2"}, {Kind::Size, "60"}});
    Fill(Kind::NonCentrality, {{"0.3", "0.25"}, {"0.1", "0.35"}});
    const i32 replicates = DrawsOf(100000);
    Replicate(replicates, 43);
    ExpectRejections(replicates, filledMargins.Size, filledMargins.Power, 0);
}

TEST_F(FilledTables, WhatNoTableHasIsRefused) {
    Open(menuStuart, {{Kind::NoOfCategories, "4"}, {Kind::NonCentrality, "0.7"}});
    Replicate(10, 1);
    EXPECT_EQ(LastMessage(), "No Table of So Many Categories Has This Non-centrality.");
    EXPECT_EQ(OutputReady, False);
    Open(menuTrend,
         {{Kind::NoOfGroups, "3"}, {Kind::H1Trend, "0.5"}, {Kind::LevelVariance, "0.6"}});
    Replicate(10, 1);
    EXPECT_EQ(LastMessage(), "The Trend Leaves No Proportions Between 0 and 1.");
    EXPECT_EQ(OutputReady, False);
    for (const auto& [difference, variance] :
         {std::pair{"0.1", "0.07"}, std::pair{"0.2", "0.05"}}) {
        Open(menuMantelHaenszel,
             {{Kind::H1SumOfDifferences, difference}, {Kind::H0SumOfVariances, variance}});
        Replicate(10, 1);
        EXPECT_EQ(LastMessage(), "Difference and Variance Leave No Proportions Between 0 and 1.");
        EXPECT_EQ(OutputReady, False);
    }
}

// --- Allocation ----------------------------------------------------------------------------------

TEST_F(ParametricSimulation, SubjectsAreSharedOutToWithinOne) {
    SimSize1 = CellsOf<i16>({0, 7, 8, 33, 100});
    const std::vector<f64> parts{0.5, 0.17, 0.03, 0.3};
    Allocation allocation;
    allocation.Prepare(parts);
    for (SimStage = 1; SimStage <= 4; ++SimStage) {
        int all = 0;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            all += allocation.Size(i);
            EXPECT_GE(allocation.NewOnes(i), 0);
            EXPECT_LE(std::fabs(allocation.Size(i) - parts[i] * SimSize1(SimStage)), 1);
        }
        EXPECT_EQ(all, SimSize1(SimStage));
    }
}

} // namespace
} // namespace quorvanta::checks
