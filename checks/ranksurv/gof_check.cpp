// The tests of goodness of fit: what their grid asks and refuses, what derives from it, edges and
// sentences.
//
// Values of other origin are those that checks/reference/gof.py prints.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/search.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/randdist.h"
#include "output/statement.h"
#include "ranksurv/testkolsmi.h"
#include "support/grid_fixture.h"
#include "support/properties.h"

#include <string>
#include <utility>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 menuTable = 110;
constexpr i16 menuDiscrete = 260;
constexpr i16 menuContinuous = 261;

// Values are shown with seven significant digits or decimals.
constexpr f64 shown = 1e-6;

class GoodnessOfFit : public GridFixture {
  protected:
    static void Start(i16 menuNo, const std::string& categories) {
        AnalysisChoice choice;
        choice.MenuNo = menuNo;
        choice.NoOfSamples = OneSample;
        choice.NoOfTails = TwoSided;
        checks::Start(choice, {{Kind::NoOfCategories, categories}});
    }
};

TEST_F(GoodnessOfFit, IsATwoSidedTestOfOneSample) {
    for (const i16 menuNo : {menuTable, menuDiscrete, menuContinuous}) {
        NewTest(menuNo);
        EXPECT_EQ(NoOfSamples, OneSample);
        EXPECT_EQ(NoOfTails, TwoSided);
        EXPECT_EQ(NoOfCheck, 0);
        EXPECT_EQ(NoOfIntPar, 0);
        AcceptOptions();
        const std::vector<i16> kinds{Kind::SignificanceLevel, Kind::Power, Kind::NonCentrality,
                                     Kind::NoOfCategories, Kind::Size};
        ASSERT_EQ(NoOfPar, 4);
        for (i16 i = 0; i <= NoOfPar; ++i)
            EXPECT_EQ(ParKind(i), kinds[static_cast<std::size_t>(i)]);
        EXPECT_TRUE(IsBluePar(2));
        EXPECT_FALSE(IsBluePar(3));
        EXPECT_FALSE(IsBluePar(4));
    }
}

// --- The grid -----------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, AsksForTheProportionsUnderBothHypotheses) {
    Start(menuTable, "5");
    Derive(Kind::NonCentrality,
           {{"0.1", "0.2", "0.4", "0.2", "0.1"}, {"0.2", "0.2", "0.2", "0.2", "0.2"}});
    ASSERT_EQ(asked.size(), 1U);
    const Grid& grid = asked.back();
    EXPECT_EQ(grid.Title, "Proportion");
    EXPECT_EQ(grid.Rows, 2);
    EXPECT_EQ(grid.Columns, 5);
    EXPECT_EQ(GridHeadOf(grid.RowHeads, 2, 1), "H0: ");
    EXPECT_EQ(GridHeadOf(grid.RowHeads, 2, 2), "H1: ");
    EXPECT_EQ(GridHeadOf(grid.ColumnHeads, 5, 1), "Category No 1");
    EXPECT_EQ(GridHeadOf(grid.ColumnHeads, 5, 5), "Category No 5");
    EXPECT_EQ(grid.RowSum, 1);
    EXPECT_NEAR(Value(Kind::NonCentrality), 0.3, shown);
}

TEST_F(GoodnessOfFit, DerivesTheSameFromAnyOfItsMenus) {
    for (const i16 menuNo : {menuTable, menuDiscrete, menuContinuous}) {
        Start(menuNo, "4");
        Derive(Kind::NonCentrality,
               {{"0.5625", "0.1875", "0.1875", "0.0625"}, {"0.5", "0.2", "0.2", "0.1"}});
        EXPECT_NEAR(Value(Kind::NonCentrality), 0.03111111111111112, shown);
    }
}

// What one subject contributes: the size that the window shows is not asked for.
TEST_F(GoodnessOfFit, HasAnEffectWithoutASize) {
    Start(menuTable, "2");
    Type(Kind::Size, "-");
    Derive(Kind::NonCentrality, {{"0.5", "0.5"}, {"0.6", "0.4"}});
    EXPECT_NEAR(Value(Kind::NonCentrality), 0.04, shown); // 2 (0.1)^2/0.5
}

TEST_F(GoodnessOfFit, RefusesProportionsOutside0To1) {
    Start(menuTable, "2");
    const auto refusal = [this](const Rows& rows) { return Refusal(Kind::NonCentrality, rows); };
    EXPECT_EQ(refusal({{"0", "1"}, {"0.5", "0.5"}}),
              "H0: Probability in Cell  (1,1)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"-0.1", "1.1"}, {"0.5", "0.5"}}),
              "H0: Probability in Cell  (1,1)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"0.5", "0.5"}, {"0.5", "1"}}),
              "H1: Probability in Cell  (2,2)  Must Be > 0 and < 1");
    EXPECT_EQ(refusal({{"0.5", "0.5"}, {"0", "0.5"}}),
              "H1: Probability in Cell  (2,1)  Must Be > 0 and < 1");
    EXPECT_EQ(Value(Kind::NonCentrality), 0.3) << "the value stays";
}

TEST_F(GoodnessOfFit, RefusesRowsThatDoNotAddUp) {
    Start(menuTable, "3");
    const auto refusal = [this](const Rows& rows) { return Refusal(Kind::NonCentrality, rows); };
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.4"}, {"0.2", "0.3", "0.5"}}),
              "H0: Sum of Proportions in Row 1 Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.6"}, {"0.2", "0.3", "0.5"}}),
              "H0: Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.5"}, {"0.2", "0.3", "0.1"}}),
              "H1: Sum of Proportions in Row 2 Must Equal 1.");
    EXPECT_EQ(refusal({{"0.2", "0.3", "0.5"}, {"0.9", "0.3", "0.1"}}),
              "H1: Sum of Proportions in Row 2> 1. Must Equal 1.");
    EXPECT_EQ(Value(Kind::NonCentrality), 0.3) << "the value stays";
}

// Other messages, and those of another grid, have no caption.
TEST_F(GoodnessOfFit, CaptionsStandBeforeItsOwnMessagesOnly) {
    Start(menuTable, "2");
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.5", "0.6"}, {"0.5", "0.5"}}),
              "H0: Sum of Proportions in Row 1> 1. Must Equal 1.");
    EXPECT_EQ(Refusal(Kind::NonCentrality, {{"0.5", "0.5"}, {"0.5", ""}}), "A Value Is Missing.");
    Type(Kind::NoOfCategories, "11");
    GetFromTable(PositionOf(Kind::NonCentrality));
    EXPECT_EQ(platform.Messages.back().Text,
              "Number of Categories Has To Be Less Than or Equal to 10.");
}

// --- Edges --------------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, WithoutEffectThePowerIsTheLevel) {
    constexpr f64 distribution = 1e-3; // of chi-square up to 21 degrees of freedom
    for (const char* categories : {"2", "5", "10"})
        for (const char* level : {"0.01", "0.05", "0.2"}) {
            Start(menuTable, categories);
            Type(Kind::SignificanceLevel, level);
            Type(Kind::NonCentrality, "0");
            Solve(Kind::Power);
            EXPECT_NEAR(ParValue(1), ReadNumber(level), distribution)
                << categories << " at " << level;
        }
}

TEST_F(GoodnessOfFit, EqualProportionsAreNoEffect) {
    Start(menuTable, "3");
    Derive(Kind::NonCentrality, {{"0.2", "0.3", "0.5"}, {"0.2", "0.3", "0.5"}});
    EXPECT_EQ(Value(Kind::NonCentrality), 0);
}

// --- Sentences ----------------------------------------------------------------------------------

TEST_F(GoodnessOfFit, SentencesNameTheHypotheses) {
    Start(menuTable, "4");
    Solve(Kind::Size);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 37, the power is 0.80 when testing the null hypothesis H0: "
              "non-centrality parameter = 0 (proportions as stated) against H1: non-centrality "
              "parameter = 0.3. The test used is Chi-square test, 1 x C table, Goodness Of Fit at "
              "the significance level 0.05. The calculation is based on the assumption that the "
              "number of categories is 4.");
    Start(menuDiscrete, "4");
    Solve(Kind::Power);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the power is 0.71 when testing the null hypothesis H0: "
              "non-centrality parameter = 0 (proportions as stated) against H1: non-centrality "
              "parameter = 0.3. The test used is Goodness of Fit test, Chi-square test, Discrete "
              "Distribution at the significance level 0.05. The calculation is based on the "
              "assumption that the number of categories is 4.");
    Start(menuContinuous, "4");
    Solve(Kind::NonCentrality);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the non-centrality parameter under H1 is 0.36328 for a "
              "power of 0.80 when testing the null hypothesis H0: non-centrality parameter = 0 "
              "(proportions as stated) against H1: non-centrality parameter = 0.36328. The test "
              "used is Goodness of Fit test, Chi-square test, Continuous Distribution at the "
              "significance level 0.05. The calculation is based on the assumption that the number "
              "of categories is 4.");
}

// --- Kolmogorov-Smirnov -------------------------------------------------------------------------

constexpr i16 menuKolSmi = 263;
constexpr i16 testDiscrete = 108;

class KolmogorovSmirnov : public GridFixture {
  protected:
    static AnalysisChoice Choice(i16 tails, std::vector<DistrRow> distributions = {}) {
        AnalysisChoice choice;
        choice.MenuNo = menuKolSmi;
        choice.NoOfSamples = OneSample;
        choice.NoOfTails = tails;
        choice.Distributions = std::move(distributions);
        return choice;
    }

    f64 PowerOf(const AnalysisChoice& choice, const std::string& n) {
        checks::Start(choice, {{Kind::Size, n}});
        Solve(Kind::Power);
        return ParValue(1);
    }

    // The user chooses a distribution in the dialog: its code and parameters.
    void Choosing(const DistrRow& distr) {
        platform.DistrChoices.emplace_back([this, distr] {
            headings.push_back(ShiftHeading());
            SimDistrNo = distr.Code;
            ShiftPar1 = distr.Par1;
            ShiftPar2 = distr.Par2;
            return true;
        });
    }

    std::vector<std::string> headings;
};

TEST_F(KolmogorovSmirnov, HasLevelPowerAndSize) {
    NewTest(menuKolSmi);
    EXPECT_EQ(NoOfSamples, OneSample);
    ChooseTails(TwoOneSided);
    EXPECT_NE(NoOfTails, TwoOneSided);
    AcceptOptions();
    ASSERT_EQ(NoOfPar, 2);
    EXPECT_EQ(ParKind(2), Kind::Size);
    EXPECT_EQ(UnknownParNo, 1);
    EXPECT_EQ(XParNo, 2);
    EXPECT_EQ(ZParNo, 0);
    EXPECT_TRUE(IsBluePar(1));
    EXPECT_FALSE(IsBluePar(2));
}

TEST_F(KolmogorovSmirnov, WithoutDistanceThePowerIsTheLevel) {
    for (const char* n : {"3", "40", "50", "51", "300", "1000", "2000"})
        for (const i16 tails : {OneSided, TwoSided}) {
            const AnalysisChoice same = Choice(tails, {{SimLogistic, 1, 2}, {SimLogistic, 1, 2}});
            EXPECT_NEAR(PowerOf(same, n), 0.05, 3e-5) << n << ", tails " << tails;
        }
}

// The mirror image: the tail turned and the distributions turned about 0.
TEST_F(KolmogorovSmirnov, TheMirrorImageHasTheSamePower) {
    const AnalysisChoice right = Choice(OneSided, {{SimNormal, 0, 1}, {SimNormal, 0.4F, 1.5F}});
    AnalysisChoice left = Choice(OneSided, {{SimNormal, 0, 1}, {SimNormal, -0.4F, 1.5F}});
    left.Left = true;
    for (const char* n : {"5", "50", "200"})
        EXPECT_NEAR(PowerOf(right, n), PowerOf(left, n), 1e-9) << n;
}

TEST_F(KolmogorovSmirnov, TheOneSidedTestLooksForLargerObservations) {
    const AnalysisChoice larger = Choice(OneSided, {{SimNormal, 0, 1}, {SimNormal, 1, 1}});
    AnalysisChoice left = larger;
    left.Left = true;
    EXPECT_GT(PowerOf(larger, "30"), 0.99);
    EXPECT_LT(PowerOf(left, "30"), 0.01);
}

// Only the distance counts: both distributions moved, stretched or bent alike.
TEST_F(KolmogorovSmirnov, ThePowerIsTheSameOnAnyScale) {
    const f64 normal = PowerOf(Choice(TwoSided, {{SimNormal, 0, 1}, {SimNormal, 0.5F, 1}}), "40");
    EXPECT_NEAR(PowerOf(Choice(TwoSided, {{SimNormal, 10, 4}, {SimNormal, 12, 4}}), "40"), normal,
                1e-7);
    const f64 lives =
        PowerOf(Choice(TwoSided, {{SimExponential, 0, 1}, {SimExponential, 0, 2}}), "40");
    EXPECT_NEAR(PowerOf(Choice(TwoSided, {{SimWeibull, 1, 3}, {SimWeibull, 1, 6}}), "40"), lives,
                1e-7);
    EXPECT_NEAR(PowerOf(Choice(TwoSided, {{SimWeibull, 2, 1}, {SimWeibull, 2, 1.4142136F}}), "40"),
                lives, 1e-6);
}

// --- Its distributions --------------------------------------------------------------------------

TEST_F(KolmogorovSmirnov, ThePowerDerivesFromTwoDistributions) {
    checks::Start(Choice(TwoSided), {{Kind::Size, "100"}});
    Choosing({SimNormal, 0, 1});
    Choosing({SimNormal, 0.3F, 1});
    GetFromTable(PowerParNo);
    EXPECT_EQ(headings, (std::vector<std::string>{"Null Distribution (H0:)",
                                                  "Alternative Distribution (H1:)"}));
    EXPECT_NEAR(Value(Kind::Power), 0.736462, 3e-4);
    EXPECT_EQ(NoOfDistr(), 2);
    EXPECT_EQ(DistrLabel(1), "H0: ");
    EXPECT_EQ(DistrLabel(2), "H1: ");
}

TEST_F(KolmogorovSmirnov, ACancelLeavesEverythingAsItWas) {
    checks::Start(Choice(TwoSided), {});
    const std::string before = ParText(Kind::Power);
    Choosing({SimNormal, 0, 1});
    GetFromTable(PowerParNo);
    EXPECT_EQ(ParText(Kind::Power), before);
    EXPECT_EQ(NoOfDistr(), 0);
}

TEST_F(KolmogorovSmirnov, WithoutASizeThereIsNoPowerToDerive) {
    checks::Start(Choice(TwoSided), {});
    ParText(Kind::Size) = "-";
    Choosing({SimNormal, 0, 1});
    Choosing({SimNormal, 1, 1});
    GetFromTable(PowerParNo);
    ASSERT_FALSE(platform.Messages.empty());
    EXPECT_EQ(platform.Messages.back().Text, "Power Can't Be Calculated from These Tables.");
}

// As long as nothing is chosen, the start values.
TEST_F(KolmogorovSmirnov, StartsWithAShiftOfTheNormalDistribution) {
    const f64 start = PowerOf(Choice(TwoSided), "60");
    EXPECT_EQ(start, PowerOf(Choice(TwoSided, {{SimNormal, 0, 1}, {SimNormal, 0.3F, 1}}), "60"));
}

// A file may hold anything.
TEST_F(KolmogorovSmirnov, WhatIsNoDistributionCantBeCalculated) {
    for (const DistrRow& broken : {DistrRow{SimNormal, 0, -1}, DistrRow{SimGamma, 1, 1},
                                   DistrRow{SimChi2, 1.5F, 1}, DistrRow{SimPoisson, 2, 1}}) {
        checks::Start(Choice(TwoSided, {{SimNormal, 0, 1}, broken}), {});
        platform.Messages.clear();
        Solve(Kind::Power);
        ASSERT_EQ(platform.Messages.size(), 1U) << broken.Code;
        EXPECT_EQ(platform.Messages.back().Text, "Can't Be Calculated.");
    }
}

// --- A discrete null ----------------------------------------------------------------------------

// Less often than a continuous null, which the critical distance is made for.
TEST_F(KolmogorovSmirnov, OfADiscreteNullItRejectsNoMoreOftenThanTheLevel) {
    checks::Start(Choice(TwoSided, {{SimPoisson, 4, 1}, {SimPoisson, 4, 1}}), {});
    TestNo = testDiscrete;
    for (const f64 n : {5.0, 30.0, 100.0}) {
        ParValue(2) = n;
        ParValue(1) = 0;
        const f64 rejects = TESTKOLSMI::RootFunction();
        EXPECT_LT(rejects, 0.05) << n;
        EXPECT_GT(rejects, 0.001) << n;
    }
}

TEST_F(KolmogorovSmirnov, OfADiscreteNullItSeesAnotherOne) {
    checks::Start(Choice(TwoSided, {{SimBinomial, 10, 0.5F}, {SimBinomial, 10, 0.6F}}), {});
    TestNo = testDiscrete;
    f64 former = 0;
    for (const f64 n : {10.0, 30.0, 100.0, 300.0, 2000.0}) {
        ParValue(2) = n;
        ParValue(1) = 0;
        const f64 power = TESTKOLSMI::RootFunction();
        EXPECT_GT(power, former) << n;
        former = power;
    }
    EXPECT_GT(former, 0.999);
}

TEST_F(KolmogorovSmirnov, SentencesNameTheDistributions) {
    const std::vector<DistrRow> rows{{SimNormal, 10, 2}, {SimWeibull, 2, 12}};
    const auto sentence = [this, &rows](i16 tails, bool left, const char* n) {
        AnalysisChoice choice = Choice(tails, rows);
        choice.Left = left;
        checks::Start(choice, {{Kind::Size, n}});
        Solve(Kind::Power);
        return SumStatement();
    };
    const std::string hypotheses =
        " when testing the null hypothesis H0: Normal Distribution, m = 10, s = 2 against H1: "
        "Weibull Distribution, g = 2, s = 12";
    const std::string test = " The test used is Goodness of Fit test, Kolmogorov-Smirnov test, ";
    EXPECT_EQ(sentence(TwoSided, false, "30"), "With a sample size of 30, the power is 0.94" +
                                                   hypotheses + "." + test +
                                                   "two-sided, at the significance level 0.05.");
    EXPECT_EQ(sentence(OneSided, false, "30"), "With a sample size of 30, the power is 0.78" +
                                                   hypotheses + " (larger observations)." + test +
                                                   "one-sided, at the significance level 0.05.");
    EXPECT_EQ(sentence(OneSided, true, "30"), "With a sample size of 30, the power is 0.70" +
                                                  hypotheses + " (smaller observations)." + test +
                                                  "one-sided, at the significance level 0.05.");
    EXPECT_EQ(sentence(TwoSided, false, "1500"),
              "With a sample size of 1500, the power is above 0.99" + hypotheses + "." + test +
                  "two-sided, at the significance level 0.05. With more than 1000 subjects, the "
                  "power is that of the limit for large samples, not of the exact test.");
}

} // namespace
} // namespace quorvanta::checks
