// The tests of proportions: their lists, messages, edges and the switches between their forms.
//
// Powers of other origin come from sums over all outcomes in rational arithmetic and from scipy's
// normal distribution, as checks/reference/proportions.py forms them.
#include "core/fault.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/search.h"
#include "core/values.h"
#include "support/analysis_fixture.h"
#include "support/properties.h"
#include "tests/exactsums.h"
#include "tests/proportions.h"
#include "tests/testbin.h"
#include "tests/testfisher.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

constexpr i16 menuMcNemar = 70;
constexpr i16 menuPaired = 80;
constexpr i16 menuFisher = 100;
constexpr i16 menuChi2 = 111;
constexpr i16 menuEquivalence = 802;
constexpr i16 menuPairedEquivalence = 803;
constexpr i16 menuNonInferiority = 832;
constexpr i16 menuPairedNonInferiority = 833;

// What NorInv and NorCdf, and sums in 32 bits, may be away from the exact power.
constexpr f64 normalError = 3e-4;
constexpr f64 sumError = 2e-5;

AnalysisChoice Menu(i16 menuNo, i16 tails, bool left = false) {
    AnalysisChoice choice;
    choice.MenuNo = menuNo;
    choice.NoOfSamples = TwoSamples;
    choice.NoOfTails = tails;
    choice.Left = left;
    return choice;
}

AnalysisChoice Distribution(i16 distrNo, i16 samples, i16 tails, std::vector<i16> checks = {},
                            bool left = false) {
    AnalysisChoice choice;
    choice.DistrNo = distrNo;
    choice.NoOfSamples = samples;
    choice.NoOfTails = tails;
    choice.Left = left;
    choice.Checks = std::move(checks);
    return choice;
}

AnalysisChoice With(AnalysisChoice choice, std::vector<i16> checks,
                    std::map<i16, i16> groups = {}) {
    choice.Checks = std::move(checks);
    choice.Groups = std::move(groups);
    return choice;
}

class ProportionTests : public AnalysisFixture {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }

    // The first option of every group that the choice does not name.
    static void StartAfresh(const AnalysisChoice& choice, const Values& values) {
        IntParValue.Fill(0);
        Start(choice, values);
    }

    // The unrounded solution; 99999 if there is none.
    f64 SolutionOf(const AnalysisChoice& choice, const Values& values, i16 unknown) {
        StartAfresh(choice, values);
        platform.Messages.clear();
        SolveFor(PositionOf(unknown));
        return HasValue(ParText(unknown)) ? ParValue(UnknownParNo) : NoValue;
    }
    f64 PowerOf(const AnalysisChoice& choice, const Values& values) {
        StartAfresh(choice, values);
        return SolutionOf(choice, values, ParKind(1));
    }

    std::vector<i16> ListOf(const AnalysisChoice& choice) {
        StartAfresh(choice, {});
        std::vector<i16> kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        return kinds;
    }

    using Kinds = std::vector<i16>;
};

// --- Parameter lists and options ---------------------------------------------------------------

TEST_F(ProportionTests, ListsOfOneSample) {
    constexpr i16 binomial = DistrBinomial;
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 83}, {1, 40}, {2, 41}})
        EXPECT_EQ(ListOf(With(Distribution(binomial, 1, 2), {}, {{11, option}})),
                  (Kinds{0, 1, 35, kind, 85}));
    EXPECT_EQ(ListOf(Distribution(binomial, 1, 3)), (Kinds{0, 1, 47, 48, 83, 85}));
    AnalysisChoice odds = Distribution(binomial, 1, 1);
    odds.ParListNo = 1;
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 226}, {1, 227}, {2, 228}})
        EXPECT_EQ(ListOf(With(odds, {}, {{34, option}})), (Kinds{0, 1, 225, kind, 85}));
    odds.NoOfTails = TwoOneSided;
    EXPECT_EQ(ListOf(odds), (Kinds{0, 1, 47, 48, 226, 85}));
    EXPECT_EQ(ListOf(Distribution(DistrHypergeometric, 1, 2)), (Kinds{0, 1, 35, 83, 31, 85}));
    EXPECT_EQ(ListOf(Distribution(DistrHypergeometric, 1, 3)), (Kinds{0, 1, 47, 48, 83, 31, 85}));
}

TEST_F(ProportionTests, ListsOfTwoSamples) {
    EXPECT_EQ(ListOf(Menu(menuChi2, 2)), (Kinds{0, 1, 51, 8, 69, 4, 37}));
    EXPECT_EQ(ListOf(With(Menu(menuChi2, 1), {}, {{12, 1}, {2, 1}})),
              (Kinds{0, 1, 51, 8, 52, 4, 38}));
    EXPECT_EQ(ListOf(With(Menu(menuChi2, 3), {}, {{12, 2}, {2, 2}})),
              (Kinds{0, 1, 71, 72, 8, 70, 4, 5}));
    EXPECT_EQ(ListOf(With(Menu(menuChi2, 2), {9}, {{35, 2}, {2, 0}})),
              (Kinds{0, 1, 229, 232, 4, 37}));
    EXPECT_EQ(ListOf(With(Menu(menuFisher, 2), {}, {{12, 0}, {2, 0}})),
              (Kinds{0, 1, 8, 69, 4, 37}));
    EXPECT_EQ(ListOf(With(Menu(menuFisher, 2), {9}, {{35, 1}, {2, 0}})),
              (Kinds{0, 1, 229, 231, 4, 37}));
    EXPECT_EQ(ListOf(With(Distribution(DistrBinomial, 2, 2), {}, {{12, 0}, {2, 0}})),
              (Kinds{0, 1, 51, 8, 69, 4, 37}));
    EXPECT_EQ(ListOf(With(Distribution(DistrHypergeometric, 2, 2), {}, {{12, 0}, {25, 2}, {2, 0}})),
              (Kinds{0, 1, 51, 8, 69, 196, 199, 4, 37}));
    EXPECT_EQ(ListOf(With(Menu(menuEquivalence, 3), {}, {{12, 0}, {2, 0}})),
              (Kinds{321, 318, 71, 72, 8, 69, 4, 37}));
    EXPECT_EQ(ListOf(With(Menu(menuNonInferiority, 1), {}, {{12, 0}, {2, 0}})),
              (Kinds{321, 318, 317, 8, 69, 4, 37}));
}

TEST_F(ProportionTests, ListsOfPairs) {
    EXPECT_EQ(ListOf(Menu(menuMcNemar, 2)), (Kinds{0, 1, 15, 16, 85}));
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 123}, {1, 15}, {2, 336}})
        EXPECT_EQ(ListOf(With(Menu(menuPaired, 2), {}, {{12, 0}, {20, option}})),
                  (Kinds{0, 1, 51, 8, 69, kind, 85}));
    EXPECT_EQ(ListOf(With(Menu(menuPairedEquivalence, 3), {}, {{12, 1}, {20, 1}})),
              (Kinds{321, 318, 71, 72, 8, 52, 15, 85}));
    EXPECT_EQ(ListOf(With(Menu(menuPairedNonInferiority, 1), {36}, {{12, 0}, {20, 1}})),
              (Kinds{321, 318, 317, 8, 69, 15, 85}));
}

TEST_F(ProportionTests, WhatIsOffered) {
    const auto samples = [] {
        return std::vector<bool>{SamplesOffered(1), SamplesOffered(2), SamplesOffered(3)};
    };
    const auto tails = [] {
        return std::vector<bool>{TailsOffered(1), TailsOffered(2), TailsOffered(3)};
    };
    const auto boxes = [] {
        Kinds kinds;
        for (i16 i = 0; i < NoOfCheck; ++i)
            kinds.push_back(CheckList(i));
        return kinds;
    };
    using Bools = std::vector<bool>;
    OpenTest(menuMcNemar);
    EXPECT_EQ(samples(), (Bools{true, false, false}));
    EXPECT_EQ(tails(), (Bools{true, true, false}));
    EXPECT_EQ(boxes(), (Kinds{24, 25, 26}));
    OpenTest(menuPaired);
    EXPECT_EQ(samples(), (Bools{true, false, false}));
    EXPECT_EQ(tails(), (Bools{true, true, true}));
    EXPECT_EQ(boxes(), (Kinds{27, 30, 39}));
    OpenTest(menuFisher);
    EXPECT_EQ(samples(), (Bools{false, true, false}));
    EXPECT_EQ(tails(), (Bools{true, true, false}));
    EXPECT_EQ(boxes(), (Kinds{9}));
    OpenTest(menuChi2);
    EXPECT_EQ(boxes(), (Kinds{1, 9}));
    OpenTest(menuNonInferiority);
    EXPECT_EQ(tails(), (Bools{true, false, false}));
    EXPECT_EQ(boxes(), (Kinds{36, 1, 2}));
    OpenTest(menuPairedEquivalence);
    EXPECT_EQ(samples(), (Bools{true, false, false}));
    EXPECT_EQ(tails(), (Bools{false, false, true}));
    OpenDistribution(DistrBinomial, 0, ProcedureTest);
    ChooseSamples(OneSample);
    EXPECT_EQ(samples(), (Bools{true, true, false}));
    EXPECT_EQ(boxes(), (Kinds{1, 2, 7}));
    ChooseSamples(TwoSamples);
    EXPECT_EQ(boxes(), (Kinds{1, 2}));
    OpenDistribution(DistrHypergeometric, 0, ProcedureTest);
    ChooseSamples(OneSample);
    EXPECT_EQ(boxes(), (Kinds{1, 7}));
}

TEST_F(ProportionTests, FormsOfOneTestExcludeEachOther) {
    const auto excludes = [this](i16 menuNo, i16 first, i16 second) {
        OpenTest(menuNo);
        Tick(first);
        Tick(second);
        EXPECT_EQ(CheckValue(first), 0) << first << " and " << second;
        EXPECT_EQ(CheckValue(second), 1) << first << " and " << second;
        Tick(second, false);
    };
    excludes(menuMcNemar, 24, 25);
    excludes(menuMcNemar, 24, 26);
    excludes(menuMcNemar, 26, 25);
    excludes(menuPaired, 27, 30);
    excludes(menuPaired, 27, 39);
    excludes(menuPaired, 39, 30);
    excludes(menuNonInferiority, 1, 2);
}

TEST_F(ProportionTests, AnExactFormIsNeitherCorrectedNorTransformed) {
    const auto excludes = [this](i16 first, i16 second) {
        Tick(first);
        Tick(second);
        EXPECT_EQ(CheckValue(first), 0) << first << " and " << second;
        EXPECT_EQ(CheckValue(second), 1) << first << " and " << second;
        Tick(second, false);
    };
    OpenDistribution(DistrBinomial, 0, ProcedureTest);
    ChooseSamples(OneSample);
    for (const i16 form : std::initializer_list<i16>{1, 2}) {
        excludes(form, 7);
        excludes(7, form);
    }
    OpenDistribution(DistrHypergeometric, 0, ProcedureTest);
    ChooseSamples(OneSample);
    excludes(1, 7);
    excludes(7, 1);
}

// --- Switches between forms --------------------------------------------------------------------

TEST_F(ProportionTests, ExactBinomialUpTo1000AndNormalAboveWithoutAMessage) {
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H0Proportion, "0.3"},
                        {Kind::H1Proportion, "0.33"}};
    const auto power = [&](const char* n) {
        Values with = values;
        with[Kind::Size] = n;
        return PowerOf(Distribution(DistrBinomial, 1, 1, {7}), with);
    };
    EXPECT_NEAR(power("1000"), 0.6430280655, sumError); // normal: 0.6608
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_NEAR(power("1001"), 0.6611256710, normalError); // exact: 0.6512
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_NEAR(power("1000.5"), (0.6430280655 + 0.6611256710) / 2, normalError);
}

TEST_F(ProportionTests, FisherEnumeratesUpTo50InEachGroup) {
    const auto power = [&](const char* n1, const char* n2) {
        return PowerOf(Menu(menuFisher, 2), {{Kind::SignificanceLevel, "0.05"},
                                             {Kind::H1Proportion1, "0.3"},
                                             {Kind::H1Proportion2, "0.5"},
                                             {4, n1},
                                             {37, n2}});
    };
    EXPECT_NEAR(power("50", "50"), 0.4634623625, sumError);
    EXPECT_NEAR(power("50", "51"), 0.5429435402, normalError); // exact: 0.4588
    EXPECT_NEAR(power("51", "50"), 0.5429435402, normalError);
}

TEST_F(ProportionTests, PopulationAbove1000IsRefusedForExactCalculation) {
    const AnalysisChoice choice = Distribution(DistrHypergeometric, 1, 2, {7});
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::H0Proportion, "0.3"},
                        {Kind::H1Proportion, "0.5"},
                        {Kind::Size, "40"}};
    Values with = values;
    with[Kind::Population] = "1001";
    EXPECT_EQ(PowerOf(choice, with), NoValue);
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{
                                    "Exact Calculation Chosen. Population Size Must Be <= 1000."});
    with[Kind::Population] = "1000";
    EXPECT_NE(PowerOf(choice, with), NoValue);
    EXPECT_TRUE(platform.Messages.empty());
    // Not when the population is sought.
    with = values;
    with[Kind::Power] = "0.74";
    SolutionOf(choice, with, 31);
    for (const std::string& text : platform.Texts())
        EXPECT_EQ(text, "Can't Be Calculated.");
}

// In 32 bits their probabilities add up to 1.0000001 at some sizes.
TEST_F(ProportionTests, ThePowerOfManySubjectsIsOne) {
    const Values pairs{{Kind::SignificanceLevel, "0.05"},
                       {Kind::H1Proportion10Plus01, "0.4"},
                       {Kind::DiagonalDifference, "-0.2"}};
    const Values one{{Kind::SignificanceLevel, "0.05"},
                     {Kind::H0Proportion, "0.5"},
                     {Kind::H1Proportion, "0.3"}};
    const auto expectSolved = [this](const AnalysisChoice& choice, Values values) {
        for (int n = 300; n <= 499; ++n) {
            values[Kind::Size] = std::to_string(n);
            const f64 power = PowerOf(choice, values);
            EXPECT_LE(power, 1) << choice << " of " << n;
            EXPECT_NEAR(power, 1, 1e-3) << choice << " of " << n;
        }
    };
    expectSolved(Menu(menuMcNemar, OneSided, true), pairs);
    expectSolved(Distribution(DistrBinomial, OneSample, OneSided, {Check::Exact}, true), one);
    expectSolved(Distribution(DistrBinomial, OneSample, TwoSided, {Check::Exact}), one);
}

// --- Sizes between whole numbers ---------------------------------------------------------------

TEST_F(ProportionTests, BetweenWholeSizesAnExactPowerIsOnTheStraightLine) {
    const AnalysisChoice binomial = Distribution(DistrBinomial, 1, 1, {7});
    const auto ofBinomial = [&](const char* n) {
        return PowerOf(binomial, {{Kind::SignificanceLevel, "0.05"},
                                  {Kind::H0Proportion, "0.6"},
                                  {Kind::H1Proportion, "0.8"},
                                  {85, n}});
    };
    // The powers fall from 30 to 32 subjects and rise to 33: M. R. Chernick and C. Y. Liu (2002),
    // The American Statistician 56, 149-155.
    EXPECT_NEAR(ofBinomial("30"), 0.7607906187, sumError);
    EXPECT_NEAR(ofBinomial("31"), 0.7300264789, sumError);
    EXPECT_NEAR(ofBinomial("33"), 0.7999636234, sumError);
    EXPECT_NEAR(ofBinomial("30.25"), 0.75 * 0.7607906187 + 0.25 * 0.7300264789, sumError);

    const auto ofFisher = [&](const char* n1, const char* n2) {
        return PowerOf(Menu(menuFisher, 2), {{Kind::SignificanceLevel, "0.05"},
                                             {Kind::H1Proportion1, "0.2"},
                                             {Kind::H1Proportion2, "0.6"},
                                             {4, n1},
                                             {37, n2}});
    };
    EXPECT_NEAR(ofFisher("20.5", "20.5"), (0.6502249209 + 0.6537344765) / 2, sumError);
    EXPECT_NEAR(ofFisher("20", "20.25"), 0.75 * 0.6502249209 + 0.25 * 0.6638651748, sumError);
    EXPECT_NEAR(ofFisher("20.25", "20.75"),
                0.25 * 0.6502249209 + 0.5 * 0.6638651748 + 0.25 * 0.6537344765, sumError);

    EXPECT_NEAR(
        PowerOf(Distribution(DistrHypergeometric, 1, 2, {7}), {{Kind::SignificanceLevel, "0.05"},
                                                               {Kind::H0Proportion, "0.3"},
                                                               {Kind::H1Proportion, "0.5"},
                                                               {Kind::Population, "100"},
                                                               {Kind::Size, "30.5"}}),
        (0.7434538123 + 0.6670934569) / 2, sumError);
    EXPECT_NEAR(PowerOf(Menu(menuMcNemar, 2), {{Kind::SignificanceLevel, "0.05"},
                                               {Kind::H1Proportion10Plus01, "0.5"},
                                               {Kind::DiagonalDifference, "0.2"},
                                               {Kind::Size, "100.5"}}),
                (0.7890281805 + 0.7933794326) / 2, sumError);
}

// The rounded-up size of an exact form has the power; where the least size has it there is none.
TEST_F(ProportionTests, TheSizeOfAnExactFormHasThePowerAskedFor) {
    struct Plan {
        AnalysisChoice Choice;
        i16 Size;
        Values Fixed;
        i16 First;
        i16 Second;
    };
    const Plan plans[] = {
        {Distribution(DistrBinomial, 1, 1, {7}), 85, {}, 35, 83},
        {Distribution(DistrBinomial, 1, 2, {7}), 85, {}, 35, 83},
        {Distribution(DistrHypergeometric, 1, 1, {7}), 85, {{Kind::Population, "500"}}, 35, 83},
        {With(Menu(menuFisher, 2), {}, {{12, 0}, {2, 2}}), 4, {{Kind::Size2Over1, "1"}}, 8, 69},
        {With(Menu(menuFisher, 1), {}, {{12, 0}, {2, 2}}), 4, {{Kind::Size2Over1, "1.5"}}, 8, 69},
        {Menu(menuMcNemar, 2), 85, {}, 16, 15}};
    for (const Plan& plan : plans)
        for (const char* alpha : {"0.01", "0.1"})
            for (const char* power : {"0.7", "0.9"})
                for (f64 first = 0.05; first < 0.7; first += 0.15)
                    for (f64 second = first + 0.15; second < 0.96; second += 0.1) {
                        Values values = plan.Fixed;
                        values.insert({{0, alpha},
                                       {1, power},
                                       {plan.First, std::to_string(first)},
                                       {plan.Second, std::to_string(second)}});
                        const f64 size = SolutionOf(plan.Choice, values, plan.Size);
                        const f64 least = ParMin(plan.Size);
                        const f64 shown = size == NoValue ? least : Int(size - 1e-5) + 1;
                        EXPECT_GE(TryValue(shown), -1e-6) << Describe(plan.Choice) << " " << first
                                                          << " " << second << " " << size;
                    }
}

// Of 20 subjects, P(X >= 10) at 0.5 is 0.5881, and P(X >= 9) 0.7483: no level has a power between
// them. The search ends at the jump, 0.0480, where the equation does not hold.
TEST_F(ProportionTests, ALevelAtWhichAnExactPowerJumpsIsNone) {
    const AnalysisChoice exact = Distribution(DistrBinomial, OneSample, OneSided, {Check::Exact});
    Values values{{Kind::Power, "0.65"},
                  {Kind::H0Proportion, "0.3"},
                  {Kind::H1Proportion, "0.5"},
                  {Kind::Size, "20"}};
    EXPECT_EQ(SolutionOf(exact, values, Kind::SignificanceLevel), NoValue);
    ASSERT_EQ(platform.Messages.size(), 1U);
    EXPECT_TRUE(platform.Messages[0].Text.starts_with("Can't Be Calculated."));
    EXPECT_GT(std::fabs(TryValue(0.0479)), 0.001);
    EXPECT_GT(std::fabs(TryValue(0.0481)), 0.001);
    // A power that there is has its levels.
    values[Kind::Power] = "0.5881";
    const f64 level = SolutionOf(exact, values, Kind::SignificanceLevel);
    EXPECT_GT(level, 0.0479);
    EXPECT_LT(level, 0.1134);
}

// --- Single rules ------------------------------------------------------------------------------

TEST_F(ProportionTests, TheCorrectionOfOneSampleIsHalfASubjectOnEitherSide) {
    const Values right{{Kind::SignificanceLevel, "0.05"},
                       {Kind::H0Proportion, "0.3"},
                       {Kind::H1Proportion, "0.5"},
                       {Kind::Size, "40"}};
    const Values left{{Kind::SignificanceLevel, "0.05"},
                      {Kind::H0Proportion, "0.3"},
                      {Kind::H1Proportion, "0.15"},
                      {Kind::Size, "40"}};
    EXPECT_NEAR(PowerOf(Distribution(DistrBinomial, 1, 1, {1}), right), 0.8062541168, normalError);
    EXPECT_NEAR(PowerOf(Distribution(DistrBinomial, 1, 1), right), 0.8466779821, normalError);
    EXPECT_NEAR(PowerOf(Distribution(DistrBinomial, 1, 1, {1}, true), left), 0.6272096976,
                normalError);
    EXPECT_NEAR(PowerOf(Distribution(DistrBinomial, 1, 1, {}, true), left), 0.7074243669,
                normalError);
}

TEST_F(ProportionTests, ACorrectionLargerThanTheEffectLeavesTheLevel) {
    EXPECT_NEAR(PowerOf(With(Menu(menuChi2, 2), {1}), {{Kind::SignificanceLevel, "0.05"},
                                                       {Kind::H0Proportion2Minus1, "0"},
                                                       {Kind::H1Proportion1, "0.01"},
                                                       {Kind::H1Proportion2, "0.01"},
                                                       {Kind::Size1, "5"},
                                                       {Kind::Size2, "5"}}),
                0.05, normalError);
}

TEST_F(ProportionTests, OnlyEqualProportionsUnderH0ArePooled) {
    const f64 pooled = std::sqrt(0.4 * 0.6 * (1.0 / 50 + 1.0 / 50));
    const f64 unpooled = std::sqrt(0.3 * 0.7 / 50 + 0.5 * 0.5 / 50);
    EXPECT_NEAR(f64{PooledSe(50, 50, 0.3F, 0.5F, 0)}, pooled, 1e-7);
    EXPECT_NEAR(f64{PooledSe(50, 50, 0.3F, 0.5F, 0.1F)}, unpooled, 1e-7);
    // With unequal sizes the pooled proportion is that of all subjects together.
    EXPECT_NEAR(f64{PooledSe(20, 80, 0.3F, 0.5F, 0)},
                std::sqrt(0.46 * 0.54 * (1.0 / 20 + 1.0 / 80)), 1e-7);
}

TEST_F(ProportionTests, ArcSineOfOneHasItsOwnBranch) {
    ClearFloatFaults();
    EXPECT_EQ(ArcSin(1), static_cast<f32>(3.141592654 / 2));
    EXPECT_FALSE(HasFloatFault()) << "1 - x^2 is 0 there";
    EXPECT_NEAR(f64{ArcSin(0.5F)}, std::asin(0.5), 1e-7);
    EXPECT_EQ(ArcSin(0), 0);
}

TEST_F(ProportionTests, ThePairWithADifferenceKeepsTheAverageInsideTheEdges) {
    const auto expectPair = [](const ProportionPair& pair, f64 low, f64 high) {
        EXPECT_NEAR(f64{pair.Low}, low, 1e-6);
        EXPECT_NEAR(f64{pair.High}, high, 1e-6);
    };
    expectPair(ProportionsFromDiff(0.4F, 0.6F, 0.1F), 0.45, 0.55);
    expectPair(ProportionsFromDiff(0.4F, 0.6F, -0.3F), 0.65, 0.35);
    expectPair(ProportionsFromDiff(0.05F, 0.05F, 0.3F), 0.00001, 0.3);
    expectPair(ProportionsFromDiff(0.95F, 0.95F, 0.3F), 0.7, 0.99999);
    expectPair(ProportionsFromDiff(0.05F, 0.05F, -0.3F), 0.3, 0.00001);
    expectPair(ProportionsFromDiff(0.95F, 0.95F, -0.3F), 0.99999, 0.7);
}

TEST_F(ProportionTests, CriticalValuesOfTheBinomialTest) {
    // n = 20, p = 0.3: P(X <= 2) = 0.0355, P(X <= 3) = 0.107; P(X >= 10) = 0.0480, P(X >= 9) =
    // 0.113.
    EXPECT_EQ(BinCritLow(20, 0.05F, 0.3F), 2);
    EXPECT_EQ(BinCritHigh(20, 0.05F, 0.3F), 10);
    // 0.7^3 = 0.343 and 0.3^3 = 0.027: no lower tail is small enough, all of the upper one.
    EXPECT_EQ(BinCritLow(3, 0.05F, 0.3F), -1);
    EXPECT_EQ(BinCritHigh(3, 0.05F, 0.3F), 3);
    EXPECT_EQ(BinCritHigh(3, 0.01F, 0.3F), 4);
    // A level that all outcomes together do not exceed in 32 bits.
    EXPECT_EQ(BinCritLow(3, 1, 0.3F), 3);
    EXPECT_EQ(BinCritHigh(3, 1, 0.3F), 0);
}

TEST_F(ProportionTests, ConditionalProbabilityOfATable) {
    // Fisher's tea tasting: 1, 16, 36, 16, 1 of 70 outcomes.
    for (const auto& [x1, count] : {std::pair<i16, f64>{0, 1}, {1, 16}, {2, 36}, {3, 16}, {4, 1}})
        EXPECT_FLOAT_EQ(FisherCond(4, 4, x1, 4), static_cast<f32>(count / 70));
    EXPECT_EQ(FisherCond(4, 4, 5, 4), 0);
    EXPECT_EQ(FisherCond(4, 4, -1, 4), 0);
}

TEST_F(ProportionTests, FisherIsTheSameFromEitherSide) {
    const f64 right = PowerOf(Menu(menuFisher, 1), {{Kind::SignificanceLevel, "0.05"},
                                                    {Kind::H1Proportion1, "0.2"},
                                                    {Kind::H1Proportion2, "0.6"},
                                                    {Kind::Size1, "15"},
                                                    {Kind::Size2, "22"}});
    const f64 left = PowerOf(Menu(menuFisher, 1, true), {{Kind::SignificanceLevel, "0.05"},
                                                         {Kind::H1Proportion1, "0.6"},
                                                         {Kind::H1Proportion2, "0.2"},
                                                         {Kind::Size1, "22"},
                                                         {Kind::Size2, "15"}});
    EXPECT_GT(right, 0.69);
    EXPECT_NEAR(right, left, sumError);
}

TEST_F(ProportionTests, OddsAreProportionsInAnotherForm) {
    const f64 power = PowerOf(With(Menu(menuFisher, 2), {}, {{12, 0}, {2, 0}}),
                              {{Kind::SignificanceLevel, "0.05"},
                               {Kind::H1Proportion1, "0.2"},
                               {Kind::H1Proportion2, "0.6"},
                               {Kind::Size1, "20"},
                               {Kind::Size2, "20"}});
    const Values odds{{Kind::SignificanceLevel, "0.05"},
                      {Kind::H1Odds1, "0.25"},
                      {Kind::H1Odds2, "1.5"},
                      {Kind::H1Odds2Minus1, "1.25"},
                      {Kind::H1Odds2Over1, "6"},
                      {Kind::Size1, "20"},
                      {Kind::Size2, "20"}};
    for (const auto& [option, kind] : {std::pair<i16, i16>{0, 230}, {1, 231}, {2, 232}}) {
        Values values = odds;
        for (const i16 other : {i16{230}, i16{231}, i16{232}})
            if (other != kind)
                values.erase(other);
        EXPECT_NEAR(PowerOf(With(Menu(menuFisher, 2), {9}, {{35, option}, {2, 0}}), values), power,
                    sumError);
    }
    EXPECT_EQ(OddsToProp(0.25F), 0.2F);
    EXPECT_EQ(OddsToProp(1), 0.5F);
    EXPECT_EQ(OddsToProp(0), 0);
}

TEST_F(ProportionTests, WithoutAnEffectTheTwoSidedPowerIsTheLevel) {
    EXPECT_NEAR(PowerOf(Menu(menuChi2, 2), {{Kind::SignificanceLevel, "0.05"},
                                            {Kind::H0Proportion2Minus1, "0"},
                                            {Kind::H1Proportion1, "0.4"},
                                            {Kind::H1Proportion2, "0.4"},
                                            {Kind::Size1, "60"},
                                            {Kind::Size2, "60"}}),
                0.05, normalError);
}

TEST_F(ProportionTests, ADifferenceUnderH0CountsOnTheArcSineScale) {
    // Equal proportions and a margin of 0.1: the distance is that of the pair 0.7 and 0.6 from 0.
    const f64 a = std::asin(std::sqrt(0.7)) - std::asin(std::sqrt(0.6));
    const f64 se = 0.5 * std::sqrt(2.0 / 200);
    const f64 power = 0.5 * std::erfc(-(a / se - 1.6448536269514722) / std::sqrt(2.0));
    EXPECT_NEAR(
        PowerOf(Distribution(DistrBinomial, 2, 1, {2}), {{Kind::SignificanceLevel, "0.05"},
                                                         {Kind::H0Proportion2Minus1, "-0.1"},
                                                         {Kind::H1Proportion1, "0.65"},
                                                         {Kind::H1Proportion2, "0.65"},
                                                         {Kind::Size1, "200"},
                                                         {Kind::Size2, "200"}}),
        power, normalError);
}

TEST_F(ProportionTests, ACensusDecidesByTheSideOfTheEffect) {
    const auto power = [&](const char* p1, bool left) {
        return PowerOf(Distribution(DistrHypergeometric, 1, 1, {}, left),
                       {{Kind::SignificanceLevel, "0.05"},
                        {Kind::H0Proportion, "0.3"},
                        {83, p1},
                        {Kind::Population, "100"},
                        {Kind::Size, "100"}});
    };
    EXPECT_EQ(power("0.35", false), 1);
    EXPECT_EQ(power("0.25", true), 1);
    EXPECT_EQ(PowerOf(Distribution(DistrHypergeometric, 1, 2), {{Kind::SignificanceLevel, "0.05"},
                                                                {Kind::H0Proportion, "0.3"},
                                                                {Kind::H1Proportion, "0.25"},
                                                                {Kind::Population, "100"},
                                                                {Kind::Size, "100"}}),
              1);
}

TEST_F(ProportionTests, AllDiscordantPairsOfOneKind) {
    // Five pairs of one kind reject one-sided at 5 % (0.5^5 = 0.031); P(M >= 5) of 20 at 0.2.
    constexpr f64 fiveOrMore = 0.3703517361;
    const Values right{{Kind::SignificanceLevel, "0.05"},
                       {Kind::H1Proportion10Plus01, "0.2"},
                       {Kind::DiagonalDifference, "0.2"},
                       {Kind::Size, "20"}};
    const Values left{{Kind::SignificanceLevel, "0.05"},
                      {Kind::H1Proportion10Plus01, "0.2"},
                      {Kind::DiagonalDifference, "-0.2"},
                      {Kind::Size, "20"}};
    EXPECT_NEAR(PowerOf(Menu(menuMcNemar, 1), right), fiveOrMore, sumError);
    EXPECT_NEAR(PowerOf(Menu(menuMcNemar, 1, true), left), fiveOrMore, sumError);
    // The first order form has no variance there: the effect is above the critical value or below.
    const AnalysisChoice firstOrder = With(Menu(menuMcNemar, 1, true), {24});
    EXPECT_EQ(PowerOf(firstOrder, left), 1);
    Values few = left;
    few[85] = "10";
    EXPECT_NEAR(PowerOf(firstOrder, few), 0, 1e-5);
}

TEST_F(ProportionTests, TheRatioOfDiscordantPairsMayBeTakenEitherWay) {
    const AnalysisChoice choice = With(Menu(menuPaired, 2), {}, {{12, 0}, {20, 2}});
    const auto power = [&](const char* ratio) {
        return PowerOf(choice, {{Kind::SignificanceLevel, "0.05"},
                                {Kind::H0Proportion2Minus1, "0"},
                                {Kind::H1Proportion1, "0.4"},
                                {Kind::H1Proportion2, "0.5"},
                                {336, ratio},
                                {Kind::Size, "150"}});
    };
    EXPECT_NEAR(power("2.5"), power("0.4"), 1e-6);
    // s = 0.1 * 3.5/1.5.
    EXPECT_NEAR(power("2.5"),
                PowerOf(With(Menu(menuPaired, 2), {}, {{12, 0}, {20, 1}}),
                        {{Kind::SignificanceLevel, "0.05"},
                         {Kind::H0Proportion2Minus1, "0"},
                         {Kind::H1Proportion1, "0.4"},
                         {Kind::H1Proportion2, "0.5"},
                         {Kind::H1Proportion10Plus01, "0.2333333"},
                         {Kind::Size, "150"}}),
                1e-6);
}

// --- Equivalence and non-inferiority -----------------------------------------------------------

TEST_F(ProportionTests, ATrueDifferenceAtALimitHasAtMostTheLevel) {
    for (const i16 menu : {menuChi2, menuEquivalence}) {
        const f64 power = PowerOf(With(Menu(menu, 3), {}, {{12, 0}, {2, 0}}),
                                  {{Kind::SignificanceLevel, "0.05"},
                                   {Kind::TestConfidenceLevel, "0.9"},
                                   {Kind::ProportionDifferenceLeftLimit, "-0.2"},
                                   {Kind::ProportionDifferenceRightLimit, "0.2"},
                                   {Kind::H1Proportion1, "0.4"},
                                   {Kind::H1Proportion2, "0.6"},
                                   {Kind::Size1, "150"},
                                   {Kind::Size2, "150"}});
        EXPECT_LE(power, 0.05 + normalError);
        EXPECT_GT(power, 0.04);
    }
}

TEST_F(ProportionTests, LimitsInTheWrongOrderAreRefused) {
    EXPECT_EQ(PowerOf(Menu(menuEquivalence, 3), {{Kind::ProportionDifferenceLeftLimit, "0.2"},
                                                 {Kind::ProportionDifferenceRightLimit, "-0.2"}}),
              NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H0: Left Equivalence Limit Has To Be Less "
                                       "Than or Equal to -0.2."});
    EXPECT_EQ(PowerOf(Distribution(DistrBinomial, 1, 3),
                      {{Kind::ProportionLeftLimit, "0.6"}, {Kind::ProportionRightLimit, "0.5"}}),
              NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"H0: Left Equivalence Limit Has To Be Less "
                                       "Than or Equal to 0.5."});
}

TEST_F(ProportionTests, EqualLimitsLeaveNoPower) {
    StartAfresh(Menu(menuChi2, 3), Values{{Kind::SignificanceLevel, "0.05"},
                                          {Kind::ProportionDifferenceLeftLimit, "0.1"},
                                          {Kind::ProportionDifferenceRightLimit, "0.1"},
                                          {Kind::H1Proportion1, "0.5"},
                                          {Kind::H1Proportion2, "0.6"},
                                          {Kind::Size1, "50"},
                                          {Kind::Size2, "50"}});
    EXPECT_EQ(Solve(Kind::Power), "-");
    UnknownParNo = 1;
    EXPECT_LE(TryValue(0), 0);
}

TEST_F(ProportionTests, ATwoSidedIntervalHalvesTheLevel) {
    const Values values{{Kind::TestConfidenceLevel, "0.95"},
                        {Kind::ProportionNonInferiorityLimit, "-0.1"},
                        {Kind::H1Proportion1, "0.8"},
                        {Kind::H1Proportion2, "0.8"},
                        {Kind::Size1, "200"},
                        {Kind::Size2, "200"}};
    // (0.1/0.04 - z) with z of 0.975 and of 0.95.
    EXPECT_NEAR(PowerOf(With(Menu(menuNonInferiority, 1), {36}), values),
                0.5 * std::erfc(-(2.5 - 1.959963985) / std::sqrt(2.0)), normalError);
    EXPECT_NEAR(PowerOf(Menu(menuNonInferiority, 1), values),
                0.5 * std::erfc(-(2.5 - 1.644853627) / std::sqrt(2.0)), normalError);
}

// --- Messages ----------------------------------------------------------------------------------

TEST_F(ProportionTests, MessagesOfTheProportions) {
    const auto says = [&](const AnalysisChoice& choice, const Values& values,
                          const std::string& message) {
        EXPECT_EQ(PowerOf(choice, values), NoValue) << message;
        EXPECT_EQ(platform.Texts(), std::vector<std::string>{message});
    };
    says(With(Menu(menuChi2, 2), {}, {{12, 1}, {2, 0}}),
         {{Kind::H1Proportion1, "0.9"}, {Kind::H1Proportion2Minus1, "0.2"}},
         "H1: Proportion 2 - Proportion 1 Has To Be Less Than or Equal to 0.09999.");
    says(With(Menu(menuChi2, 2), {}, {{12, 2}, {2, 0}}),
         {{Kind::H1Proportion1, "0.5"}, {Kind::H1Proportion2Over1, "2.5"}},
         "H1: Proportion 2 / Proportion 1 Has To Be Less Than or Equal to 1.99998.");
    says(With(Menu(menuChi2, 2), {}, {{12, 0}, {2, 2}}),
         {{Kind::H1Proportion1, "0.5"},
          {Kind::H1Proportion2, "0.6"},
          {Kind::Size1, "30"},
          {Kind::Size2Over1, "0.01"}},
         "Sample Size 2 / Sample Size 1 Has To Be Greater Than or Equal to 0.1.");
    says(With(Distribution(DistrBinomial, 1, 2), {}, {{11, 1}}),
         {{Kind::H0Proportion, "0.3"}, {Kind::H1ProportionMinusH0, "0.8"}},
         "H1:Proportion  -  H0:Proportion Has To Be Less Than or Equal to 0.69999.");
    says(Distribution(DistrHypergeometric, 1, 2),
         {{Kind::H0Proportion, "0.3"},
          {Kind::H1Proportion, "0.5"},
          {Kind::Population, "50"},
          {Kind::Size, "60"}},
         "Sample Size Has To Be Less Than or Equal to 50.");
    says(With(Distribution(DistrHypergeometric, 2, 2), {}, {{12, 0}, {25, 0}, {2, 0}}),
         {{Kind::H1Proportion1, "0.3"},
          {Kind::H1Proportion2, "0.5"},
          {Kind::Population1, "50"},
          {Kind::Population2, "60"},
          {Kind::Size1, "60"},
          {Kind::Size2, "60"}},
         "Sample Size 1 Has To Be Less Than or Equal to 50.");
    says(With(Distribution(DistrHypergeometric, 2, 2), {}, {{12, 0}, {25, 0}, {2, 0}}),
         {{Kind::H1Proportion1, "0.3"},
          {Kind::H1Proportion2, "0.5"},
          {Kind::Population1, "50"},
          {Kind::Population2, "60"},
          {Kind::Size1, "50"},
          {Kind::Size2, "61"}},
         "Sample Size 2 Has To Be Less Than or Equal to 60.");
}

// While one population is the unknown the other one is as small as it is.
TEST_F(ProportionTests, ASampleIsAtMostItsPopulationWhicheverIsTheUnknown) {
    const AnalysisChoice choice =
        With(Distribution(DistrHypergeometric, 2, 2), {}, {{12, 0}, {25, 0}, {2, 0}});
    const auto says = [&](i16 unknown, const char* population1, const char* population2,
                          const std::string& message) {
        EXPECT_EQ(SolutionOf(choice,
                             {{Kind::H1Proportion1, "0.3"},
                              {Kind::H1Proportion2, "0.5"},
                              {196, population1},
                              {197, population2},
                              {Kind::Size1, "60"},
                              {Kind::Size2, "60"}},
                             unknown),
                  NoValue);
        EXPECT_EQ(platform.Texts(), std::vector<std::string>{message});
    };
    const std::string first = "Sample Size 1 Has To Be Less Than or Equal to 50.";
    const std::string second = "Sample Size 2 Has To Be Less Than or Equal to 50.";
    for (const i16 unknown : std::initializer_list<i16>{1, 197, 37})
        says(unknown, "50", "200", first);
    for (const i16 unknown : std::initializer_list<i16>{1, 196, 4})
        says(unknown, "200", "50", second);
}

TEST_F(ProportionTests, MessagesOfThePairs) {
    const auto says = [&](const AnalysisChoice& choice, const Values& values,
                          const std::string& message) {
        EXPECT_EQ(PowerOf(choice, values), NoValue) << message;
        ASSERT_FALSE(platform.Messages.empty()) << message;
        EXPECT_EQ(platform.Messages.front().Text, message);
    };
    says(Menu(menuMcNemar, 2),
         {{Kind::H1Proportion10Plus01, "0.3"}, {Kind::DiagonalDifference, "0.4"}},
         "Diff. of Diagonal Probabilities Has To Be Less Than or Equal to 0.3.");
    says(Menu(menuMcNemar, 2),
         {{Kind::H1Proportion10Plus01, "0.3"}, {Kind::DiagonalDifference, "-0.4"}},
         "Diff. of Diagonal Probabilities Has To Be Greater Than or Equal to -0.3.");
    const AnalysisChoice both = With(Menu(menuPaired, 2), {}, {{12, 0}, {20, 0}});
    says(both,
         {{Kind::H1Proportion1, "0.4"},
          {Kind::H1Proportion2, "0.6"},
          {Kind::H1Proportion11, "0.45"}},
         "H1: Proportion 11 Has To Be Less Than or Equal to 0.4.");
    says(
        both,
        {{Kind::H1Proportion1, "0.7"}, {Kind::H1Proportion2, "0.8"}, {Kind::H1Proportion11, "0.4"}},
        "H1: Proportion 11 Has To Be Greater Than or Equal to 0.499995.");
    const AnalysisChoice sum = With(Menu(menuPaired, 2), {}, {{12, 0}, {20, 1}});
    says(sum,
         {{Kind::H1Proportion1, "0.4"},
          {Kind::H1Proportion2, "0.6"},
          {Kind::H1Proportion10Plus01, "0.1"}},
         "H1: Proportion 10 + Proportion 01 Has To Be Greater Than or Equal to 0.2.");
    says(sum,
         {{Kind::H1Proportion1, "0.1"},
          {Kind::H1Proportion2, "0.2"},
          {Kind::H1Proportion10Plus01, "0.5"}},
         "H1: Proportion 10 + Proportion 01 Has To Be Less Than or Equal to 0.3.");
    says(sum,
         {{Kind::H1Proportion1, "0.8"},
          {Kind::H1Proportion2, "0.9"},
          {Kind::H1Proportion10Plus01, "0.5"}},
         "H1: Proportion 10 + Proportion 01 Has To Be Less Than or Equal to 0.30001.");
    const AnalysisChoice ratio = With(Menu(menuPaired, 2), {}, {{12, 0}, {20, 2}});
    says(ratio,
         {{Kind::H1Proportion1, "0.5"},
          {Kind::H1Proportion2, "0.5"},
          {Kind::H1Proportion10Over01, "2"}},
         "H1: Proportion 2 Has To Be Greater Than or Equal to 0.50001.");
    says(With(Menu(menuPaired, 1, true), {}, {{12, 0}, {20, 2}}),
         {{Kind::H1Proportion1, "0.5"},
          {Kind::H1Proportion2, "0.5"},
          {Kind::H1Proportion10Over01, "2"}},
         "H1: Proportion 2 Has To Be Less Than or Equal to 0.49999.");
    // A tick that is left from a one-sided test has no part in a two-sided one.
    says(With(Menu(menuPaired, 2, true), {}, {{12, 0}, {20, 2}}),
         {{Kind::H1Proportion1, "0.5"},
          {Kind::H1Proportion2, "0.5"},
          {Kind::H1Proportion10Over01, "2"}},
         "H1: Proportion 2 Has To Be Greater Than or Equal to 0.50001.");
    // s = 0.3 at most for a difference of 0.1: a ratio of 2 at least, or 0.5 at most.
    says(ratio,
         {{Kind::H1Proportion1, "0.1"},
          {Kind::H1Proportion2, "0.2"},
          {Kind::H1Proportion10Over01, "1.5"}},
         "H1: Proportion 10 / Proportion 01 Has To Be Greater Than or Equal to 2.");
    says(ratio,
         {{Kind::H1Proportion1, "0.1"},
          {Kind::H1Proportion2, "0.2"},
          {Kind::H1Proportion10Over01, "0.7"}},
         "H1: Proportion 10 / Proportion 01 Has To Be Less Than or Equal to 0.5.");
}

} // namespace
} // namespace quorvanta::checks
