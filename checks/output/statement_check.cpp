// Whole statements. Each is set up as a user would, or, where its test has no module yet, by the
// parameter list that the test will have; the result is either checked against a value of other
// origin before it is expected in the text, or it is that value, entered by the check.
#include "core/analysis.h"
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/number_text.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/run.h"
#include "core/setup.h"
#include "core/values.h"
#include "output/format.h"
#include "output/statement.h"
#include "output/statement_simulation.h"
#include "support/analysis_fixture.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace quorvanta {
namespace {

using Kinds = std::initializer_list<i16>;
using Texts = std::map<i16, std::string>;

class Statement : public checks::AnalysisFixture {
  protected:
    // An analysis of these kinds with these texts, solved for one of them.
    void Analyse(i16 unknownKind, Kinds kinds, const Texts& texts) {
        StartParList();
        for (const i16 kind : kinds)
            AddPar(kind);
        for (const auto& [kind, text] : texts) {
            ASSERT_GE(PositionOf(kind), 0) << "kind " << kind << " is not in the list";
            ParText(kind) = text;
        }
        UnknownParNo = PositionOf(unknownKind);
        ASSERT_GE(UnknownParNo, 0);
        Calculated = True;
    }

    void AnalyseTest(i16 menuNo, i16 noOfSamples, i16 noOfTails, i16 unknownKind, Kinds kinds,
                     const Texts& texts) {
        Open(CalculationWindow);
        IsTest = True;
        TestNo = MenuToTestNo(menuNo);
        TestName = TestMenuName(menuNo);
        NoOfSamples = noOfSamples;
        NoOfTails = noOfTails;
        Analyse(unknownKind, kinds, texts);
    }

    void AnalyseParameter(i16 distrNo, i16 parListNo, i16 procedureNo, i16 noOfSamples,
                          i16 noOfTails, i16 unknownKind, Kinds kinds, const Texts& texts) {
        Open(CalculationWindow);
        IsTest = False;
        DistrNo = distrNo;
        DistrName = DistrMenuName(distrNo);
        ParListNo = parListNo;
        ProcedureNo = procedureNo;
        NoOfSamples = noOfSamples;
        NoOfTails = noOfTails;
        Analyse(unknownKind, kinds, texts);
    }

    void TypeAll(const Texts& texts) {
        for (const auto& [kind, text] : texts)
            Type(kind, text);
    }

    // The unpaired t-test with H1 as a difference, its values entered.
    void OpenUnpairedTTest(i16 noOfTails, const Texts& texts) {
        OpenTest(0);
        ChooseTails(noOfTails);
        Pick(Group::Mean2, 1);
        AcceptOptions();
        TypeAll(texts);
    }

    // The axes of a table or graph; without z-values it has one curve.
    static void Over(i16 xKind, const std::string& min, const std::string& max,
                     const std::string& step, i16 zKind = 0, const std::string& zValues = "") {
        XParNo = PositionOf(xKind);
        ParXminText(xKind) = min;
        ParXmaxText(xKind) = max;
        ParXstepText(xKind) = step;
        ZParNo = zValues.empty() ? static_cast<i16>(NoOfPar + 1) : PositionOf(zKind);
        if (!zValues.empty())
            ParZValuesText(zKind) = zValues;
    }

    // The lowest and the highest value that a run would have found.
    static void Found(f32 lowest, f32 highest) {
        TableYMin = lowest;
        TableYMax = highest;
    }

    // A window of that kind, unless one is open.
    static void Open(i16 windowKind) {
        if (AnalysisNo == 0)
            NewWindow(windowKind);
    }

    // The F- and chi-square tests have no choice of tails.
    static void OfferTwoTailsOnly() { OfferTails({TwoSided}); }

    // A result of the driver, which has to lie near its exact value.
    void ExpectResult(const std::string& text, f64 exact, f64 tolerance) {
        EXPECT_NEAR(Val(text), exact, tolerance);
    }
};

// --- Tests of means, through the driver ---------------------------------------------------------

// Exact power of the noncentral t-distribution, R 4.2.2: power.t.test(n = 64, delta = 0.5, sd = 1):
// 0.80146; two decimals are told.
TEST_F(Statement, UnpairedTTestPower) {
    OpenUnpairedTTest(
        TwoSided,
        {{Kind::H1Mean2Minus1, "0.5"}, {Kind::Sd, "1"}, {Kind::Size1, "64"}, {Kind::Size2, "64"}});
    ExpectResult(Solve(Kind::Power), 0.80146, 0.003);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 128 (64 in sample 1 and 64 in sample 2), the power is "
              "0.80 when testing the null hypothesis H0: mean 2 - mean 1 = 0 against H1: mean 2 - "
              "mean 1 = 0.5. The test used is Student's t-test, Unpaired, two-sided, at the "
              "significance level 0.05. The calculation is based on the assumption that the "
              "standard deviation is 1.");
}

// power.t.test(delta = 0.5, sd = 1, power = 0.9, alternative = "one.sided"): n = 69.198, so 70 in
// each group. The size is told once, as the size; the result is the power that it was wanted for.
TEST_F(Statement, UnpairedTTestSampleSizeIsToldOnce) {
    OpenTest(0);
    ChooseTails(OneSided);
    Pick(Group::Mean2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    TypeAll({{Kind::Power, "0.9"},
             {Kind::H1Mean2Minus1, "0.5"},
             {Kind::Sd, "1"},
             {Kind::Size2Over1, "1"}});
    EXPECT_EQ(Solve(Kind::Size1), "70");
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 140 (70 in sample 1 and 70 in sample 2), the power is "
              "0.90 when testing the null hypothesis H0: mean 2 - mean 1 = 0 against H1: mean 2 - "
              "mean 1 = 0.5. The test used is Student's t-test, Unpaired, one-sided, at the "
              "significance level 0.05. The calculation is based on the assumption that the "
              "standard deviation is 1.");
}

// power.t.test(n = 30, power = 0.8, sd = 1): delta = 0.73563. The two means under H1 are told as
// they are entered, the second one is the result.
TEST_F(Statement, UnpairedTTestEffect) {
    OpenTest(0);
    ChooseTails(TwoSided);
    Pick(Group::Mean2, 0);
    AcceptOptions();
    TypeAll({{Kind::Power, "0.8"},
             {Kind::H1Mean1, "10"},
             {Kind::Sd, "1"},
             {Kind::Size1, "30"},
             {Kind::Size2, "30"}});
    const std::string mean2 = Solve(Kind::H1Mean2);
    ExpectResult(mean2, 10.73563, 0.005);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 60 (30 in sample 1 and 30 in sample 2), the mean 2 "
              "under H1 is " +
                  mean2 +
                  " for a power of 0.80 when testing the null hypothesis H0: mean 2 - mean 1 = 0 "
                  "against H1: mean 1 = 10 and mean 2 = " +
                  mean2 +
                  ". The test used is Student's t-test, Unpaired, two-sided, at the significance "
                  "level 0.05. The calculation is based on the assumption that the standard "
                  "deviation is 1.");
}

// power.t.test(n = 30, power = 0.8, delta = 0.5, sd = NULL): sd = 0.67969.
TEST_F(Statement, UnpairedTTestStandardDeviation) {
    OpenUnpairedTTest(TwoSided, {{Kind::Power, "0.8"},
                                 {Kind::H1Mean2Minus1, "0.5"},
                                 {Kind::Size1, "30"},
                                 {Kind::Size2, "30"}});
    const std::string sd = Solve(Kind::Sd);
    ExpectResult(sd, 0.67969, 0.005);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 60 (30 in sample 1 and 30 in sample 2), the standard "
              "deviation is " +
                  sd +
                  " for a power of 0.80 when testing the null hypothesis H0: mean 2 - mean 1 = 0 "
                  "against H1: mean 2 - mean 1 = 0.5. The test used is Student's t-test, "
                  "Unpaired, two-sided, at the significance level 0.05.");
}

// power.t.test(n = 64, delta = 0.5, sd = 1, power = 0.9, sig.level = NULL): 0.12512. The solved
// level is both the result and the level of the test.
TEST_F(Statement, UnpairedTTestSignificanceLevel) {
    OpenUnpairedTTest(TwoSided, {{Kind::Power, "0.9"},
                                 {Kind::H1Mean2Minus1, "0.5"},
                                 {Kind::Sd, "1"},
                                 {Kind::Size1, "64"},
                                 {Kind::Size2, "64"}});
    const std::string level = Solve(Kind::SignificanceLevel);
    ExpectResult(level, 0.12512, 0.003);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 128 (64 in sample 1 and 64 in sample 2), the "
              "significance level is " +
                  level +
                  " for a power of 0.90 when testing the null hypothesis H0: mean 2 - mean 1 = 0 "
                  "against H1: mean 2 - mean 1 = 0.5. The test used is Student's t-test, "
                  "Unpaired, two-sided, at the significance level " +
                  level +
                  ". The calculation is based on the assumption that the standard deviation is "
                  "1.");
}

// power.t.test(delta = 0.5, sd = 1, power = 0.8, type = "paired"): n = 33.367, so 34 pairs. The H1
// value is entered as a difference of 0.5 from the H0 value 1.25: in absolute terms 1.75.
TEST_F(Statement, PairedTTestTellsH1InAbsoluteTerms) {
    OpenTest(1);
    ChooseTails(TwoSided);
    Pick(Group::H1MeanOfDifference, 1);
    AcceptOptions();
    TypeAll({{Kind::Power, "0.8"},
             {Kind::H0MeanOfDifference, "1.25"},
             {Kind::H1MeanOfDifferenceMinusH0, "0.5"},
             {Kind::SdOfDifference, "1"}});
    EXPECT_EQ(Solve(Kind::Size), "34");
    EXPECT_EQ(
        SumStatement(),
        "With a sample size of 34 pairs, the power is 0.80 when testing the null hypothesis "
        "H0: mean of difference = 1.25 against H1: mean of difference = 1.75. The test used is "
        "Student's t-test, Paired, two-sided, at the significance level 0.05. The "
        "calculation is based on the assumption that the standard deviation of difference "
        "is 1.");
}

// Two one-sided t-tests, true difference 0.1, limits -0.5 and 0.5, 70 per group: 0.73157, by
// integration over the distribution of the standard deviation in R.
TEST_F(Statement, UnpairedTTestEquivalence) {
    OpenUnpairedTTest(TwoOneSided, {{Kind::MeanLeftLimit, "-0.5"},
                                    {Kind::MeanRightLimit, "0.5"},
                                    {Kind::H1Mean2Minus1, "0.1"},
                                    {Kind::Sd, "1"},
                                    {Kind::Size1, "70"},
                                    {Kind::Size2, "70"}});
    ExpectResult(Solve(Kind::Power), 0.73157, 0.003);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 140 (70 in sample 1 and 70 in sample 2), the power is "
              "0.73 when testing the null hypothesis H0: non-equivalence, with left equivalence "
              "limit = -0.5 and right equivalence limit = 0.5, against H1: mean 2 - mean 1 = 0.1 "
              "(equivalence). The test used is Student's t-test, Unpaired, as two one-sided "
              "tests, at the significance level 0.05. The calculation is based on the assumption "
              "that the standard deviation is 1.");
}

// The same at a confidence level of 0.90, which is two one-sided tests at 0.05.
TEST_F(Statement, EquivalenceByConfidenceInterval) {
    OpenTest(800);
    Pick(Group::Mean2, 1);
    AcceptOptions();
    TypeAll({{Kind::TestConfidenceLevel, "0.90"},
             {Kind::MeanLeftLimit, "-0.5"},
             {Kind::MeanRightLimit, "0.5"},
             {Kind::H1Mean2Minus1, "0.1"},
             {Kind::Sd, "1"},
             {Kind::Size1, "70"},
             {Kind::Size2, "70"}});
    ExpectResult(Solve(Kind::ProbabilityWithinLimits), 0.73157, 0.003);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 140 (70 in sample 1 and 70 in sample 2), the "
              "probability of a confidence interval within the equivalence limits is 0.73 when "
              "testing the null hypothesis H0: non-equivalence, with left equivalence limit = "
              "-0.5 and right equivalence limit = 0.5, against H1: mean 2 - mean 1 = 0.1 "
              "(equivalence). The test used is a test of equivalence by a two-sided confidence "
              "interval for the difference of means (t-distribution), at the confidence level "
              "0.9. The calculation is based on the assumption that the standard deviation is "
              "1.");
    ParText(Kind::ProbabilityWithinLimits) = "0.73";
    UnknownParNo = PositionOf(Kind::Sd);
    EXPECT_NE(SumStatement().find("the standard deviation is 1 for a probability of 0.73 of a "
                                  "confidence interval within the equivalence limits when testing"),
              std::string::npos);
}

// Non-inferiority, limit -0.5, no true difference, 50 per group, at a level of 0.95. One-sided:
// 1 - pt(qt(0.95, 98), 98, ncp = 0.5 / sqrt(2/50)) = 0.79894 in R; with the box ticked the interval
// is two-sided: 1 - pt(qt(0.975, 98), 98, ...) = 0.69689.
TEST_F(Statement, NonInferiorityByConfidenceInterval) {
    for (const bool isTwoSided : {false, true}) {
        OpenTest(830);
        Pick(Group::Mean2, 1);
        Tick(Check::TwoSidedInterval, isTwoSided);
        AcceptOptions();
        TypeAll({{Kind::TestConfidenceLevel, "0.95"},
                 {Kind::MeanNonInferiorityLimit, "-0.5"},
                 {Kind::H1Mean2Minus1, "0"},
                 {Kind::Sd, "1"},
                 {Kind::Size1, "50"},
                 {Kind::Size2, "50"}});
        ExpectResult(Solve(Kind::ProbabilityWithinLimits), isTwoSided ? 0.69689 : 0.79894, 0.003);
        const std::string power = isTwoSided ? "0.70" : "0.80";
        const std::string sides = isTwoSided ? "two" : "one";
        EXPECT_EQ(SumStatement(),
                  "With a total sample size of 100 (50 in sample 1 and 50 in sample 2), the "
                  "probability of a confidence interval above the non-inferiority limit is " +
                      power +
                      " when testing the null hypothesis H0: inferiority, with non-inferiority "
                      "limit = -0.5, against H1: mean 2 - mean 1 = 0 (non-inferiority). The test "
                      "used is a test of non-inferiority by a " +
                      sides +
                      "-sided confidence interval for the difference of means (t-distribution), "
                      "at the confidence level 0.95. The calculation is based on the assumption "
                      "that the standard deviation is 1.");
    }
}

// Two one-sided tests on the log scale, CV 0.2, 12 per sequence, true ratio 1, limits 0.8 and 1.25:
// 0.96719, by integration in R.
TEST_F(Statement, Bioequivalence) {
    OpenTest(810);
    Pick(Group::Median2, 1);
    Pick(Group::LogSd, 1);
    AcceptOptions();
    TypeAll({{Kind::RatioLeftLimit, "0.8"},
             {Kind::RatioRightLimit, "1.25"},
             {Kind::H1Median2Over1, "1"},
             {Kind::CoefficientOfVariation, "0.2"},
             {Kind::SequenceSize1, "12"},
             {Kind::SequenceSize2, "12"}});
    ExpectResult(Solve(Kind::Power), 0.96719, 0.003);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 24 (12 in sequence 1 and 12 in sequence 2), the power "
              "is 0.97 when testing the null hypothesis H0: non-equivalence, with left "
              "equivalence limit = 0.8 and right equivalence limit = 1.25, against H1: median 2 / "
              "median 1 = 1 (equivalence). The test used is a test of bioequivalence in a two-way "
              "crossover design, as two one-sided tests, at the significance level 0.05. The "
              "calculation is based on the assumption that the coefficient of variation is 0.2.");
}

// --- Tables and graphs --------------------------------------------------------------------------

// A table of the t-test's power over the difference 0.3 to 0.7, for 20, 64 and 100 subjects per
// group. Smallest: power.t.test(n = 20, delta = 0.3) = 0.1521; largest: n = 100, delta = 0.7:
// 0.99854, which two decimals would make a certainty.
TEST_F(Statement, TableOfThePower) {
    NewWindow(TableWindow);
    OpenTest(0);
    ChooseTails(TwoSided);
    Pick(Group::Mean2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    TypeAll({{Kind::Sd, "1"}});
    UnknownParNo = PositionOf(Kind::Power);
    Over(62, "0.3", "0.7", "0.1", 4, "20 64 100");
    CalcRun();
    ASSERT_EQ(Calculated, True);
    EXPECT_NEAR(static_cast<f64>(TableYMin), 0.1521, 0.003);
    EXPECT_NEAR(static_cast<f64>(TableYMax), 0.99854, 0.003);
    EXPECT_EQ(SumStatement(),
              "With mean 2 - mean 1 under H1 ranging from 0.3 to 0.7 and with sample size 1 set "
              "to 20, 64 and 100, the power will be ranging from 0.15 to above 0.99 when "
              "testing the null hypothesis H0: mean 2 - mean 1 = 0 against H1: mean 2 - mean 1 "
              "from 0.3 to 0.7. The test used "
              "is Student's t-test, Unpaired, two-sided, at the significance level 0.05. The "
              "calculation is based on the assumptions that the standard deviation is 1 and the "
              "sample size 2 / sample size 1 is 1.");
}

// A graph of the sample size over the power 0.8 to 0.9. power.t.test(delta = 0.5, sd = 1):
// n = 63.766 and 85.031 per group, rounded up. The power varies, and so the result has none.
TEST_F(Statement, GraphOfTheSampleSize) {
    NewWindow(GraphWindow);
    OpenTest(0);
    ChooseTails(TwoSided);
    Pick(Group::Mean2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    TypeAll({{Kind::H1Mean2Minus1, "0.5"}, {Kind::Sd, "1"}});
    UnknownParNo = PositionOf(Kind::Size1);
    Over(1, "0.8", "0.9", "0.02", 0, "0.05");
    CalcRun();
    ASSERT_EQ(Calculated, True);
    EXPECT_NEAR(static_cast<f64>(TableYMin), 63.766, 0.2);
    EXPECT_NEAR(static_cast<f64>(TableYMax), 85.031, 0.2);
    EXPECT_EQ(SumStatement(),
              "With power ranging from 0.8 to 0.9 and with significance level set to 0.05, the "
              "sample size 1 will be ranging from 64 to 86 when testing the null hypothesis H0: "
              "mean 2 - mean 1 = 0 against H1: mean 2 - mean 1 = 0.5. The test used is Student's "
              "t-test, Unpaired, two-sided. The calculation is based on the assumptions that the "
              "standard deviation is 1 and the sample size 2 / sample size 1 is 1.");
}

// The whole table has one value; the power was entered and belongs to the result.
TEST_F(Statement, TableOfAConstant) {
    NewWindow(TableWindow);
    AnalyseTest(370, OneSample, TwoSided, 85, {0, 1, 153, 85}, {{Kind::Power, "0.85"}});
    Over(153, "0.7", "0.9", "0.1");
    Found(28, 28);
    EXPECT_EQ(SumStatement(),
              "With Prob (sample > 0) under H1 ranging from 0.7 to 0.9, the sample size will be 28 "
              "for a power of 0.85 when testing the null hypothesis H0: Prob (sample > 0) = 0.5 "
              "(median 0) against H1: Prob (sample > 0) from 0.7 to 0.9. The test used is Sign "
              "test, two-sided, at "
              "the significance level 0.05.");
}

// An equivalence limit varies: it has a range.
TEST_F(Statement, GraphOverAnEquivalenceLimit) {
    NewWindow(GraphWindow);
    AnalyseTest(0, TwoSamples, TwoOneSided, 1, {0, 1, 6, 7, 62, 2, 4, 37},
                {{Kind::H1Mean2Minus1, "0"}});
    Over(7, "0.3", "0.5", "0.1", 2, "0.3  0.4");
    Found(0.501F, 0.999F);
    EXPECT_EQ(
        SumStatement(),
        "With right equivalence limit ranging from 0.3 to 0.5 and with standard deviation "
        "set to 0.3 and 0.4, the power will be ranging from 0.50 to above 0.99 when testing the "
        "null hypothesis H0: non-equivalence, with left equivalence limit = -0.4 and right "
        "equivalence limit from 0.3 to 0.5, against H1: mean 2 - mean 1 = 0 (equivalence). The "
        "test used is "
        "Student's t-test, Unpaired, as two one-sided tests, at the significance level 0.05. "
        "The calculation is based on the assumptions that the sample size 1 is 30 and the "
        "sample size 2 is 30.");
}

// Whatever of the alternative varies is told with its values, by axis, z-values or result.
TEST_F(Statement, TheAlternativeOfATableIsWhole) {
    NewWindow(TableWindow);
    const Kinds kinds = {0, 1, 61, 62, 2, 4, 37};
    AnalyseTest(0, TwoSamples, TwoSided, 62, kinds, {{Kind::H0Mean2Minus1, "0"}});
    Over(2, "1", "2", "0.5");
    Found(4, 10);
    EXPECT_NE(SumStatement().find("H0: mean 2 - mean 1 = 0 against H1: mean 2 - mean 1 from 4 to "
                                  "10. The test"),
              std::string::npos);
    AnalyseTest(0, TwoSamples, TwoSided, 1, kinds, {{Kind::H0Mean2Minus1, "0"}});
    Over(2, "1", "2", "0.5", 62, "4 7 10");
    EXPECT_NE(SumStatement().find("against H1: mean 2 - mean 1 = 4, 7 or 10. The test"),
              std::string::npos);
    Over(61, "-1", "1", "0.5", 2, "4");
    EXPECT_NE(SumStatement().find("H0: mean 2 - mean 1 from -1 to 1 against H1: mean 2 - mean 1 ="),
              std::string::npos);
}

// An H1 value that is entered as a difference or a ratio varies in absolute terms, with its base.
TEST_F(Statement, TheAlternativeOfATableIsAbsolute) {
    NewWindow(GraphWindow);
    const auto alternative = [] {
        const std::string text = SumStatement();
        const std::size_t from = text.find("against H1: ");
        return from == std::string::npos ? text : text.substr(from, text.find(". ", from) - from);
    };
    AnalyseParameter(DistrNormal, 0, ProcedureTest, OneSample, TwoSided, 1, {0, 1, 57, 59, 2, 85},
                     {{Kind::H0Mean, "100"}, {Kind::H1MeanMinusH0, "3"}});
    Found(0.1F, 0.9F);
    Over(59, "4", "10", "2");
    EXPECT_EQ(alternative(), "against H1: mean from 104 to 110");
    Over(57, "90", "110", "10");
    EXPECT_EQ(alternative(), "against H1: mean from 93 to 113");
    Over(57, "90", "110", "10", 59, "2 5");
    EXPECT_EQ(alternative(), "against H1: mean from 92 to 115");
    UnknownParNo = PositionOf(Kind::H1MeanMinusH0);
    Over(2, "1", "2", "1");
    Found(0.1F, 0.3F);
    EXPECT_EQ(alternative(), "against H1: mean from 100.1 to 100.3");
    AnalyseParameter(DistrNormal, 0, ProcedureTest, OneSample, TwoSided, 1, {0, 1, 57, 60, 2, 85},
                     {{Kind::H0Mean, "-20"}});
    Over(60, "1.1", "1.5", "0.1");
    EXPECT_EQ(alternative(), "against H1: mean from -30 to -22");
}

// --- Parameters of distributions ----------------------------------------------------------------

// Known standard deviation 0.3, n = 30: P(|mean - estimate| > 0.1) = 2 (1 - Phi(0.1 sqrt(30) /
// 0.3)) = 0.06789.
TEST_F(Statement, PointEstimateOfAMean) {
    AnalyseParameter(DistrNormal, 0, ProcedureEstimate, OneSample, TwoSided, 143, {143, 18, 2, 85},
                     {{Kind::ErrorLevel, "0.06789"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the probability is 0.06789 to over/under estimate the "
              "mean (standard deviation known) in a normal distribution by an absolute error of "
              "more than 0.1. The calculation is based on the assumption that the standard "
              "deviation is 0.3.");
}

// One side of the same: half the probability. Nothing is said of underestimating.
TEST_F(Statement, OneSidedPointEstimateOfAMean) {
    AnalyseParameter(DistrNormal, 0, ProcedureEstimate, OneSample, OneSided, 143, {143, 19, 2, 85},
                     {{Kind::ErrorLevel, "0.03394"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the probability is 0.03394 to overestimate the mean "
              "(standard deviation known) in a normal distribution by an upper absolute error of "
              "more than 0.1. The calculation is based on the assumption that the standard "
              "deviation is 0.3.");
}

// Two samples are compared, by their ratio where the error is relative. "An" before a vowel.
TEST_F(Statement, PointEstimateOfARatioOfScales) {
    AnalyseParameter(DistrExponential, 1, ProcedureEstimate, TwoSamples, TwoSided, 143,
                     {143, 23, 4, 38},
                     {{Kind::ErrorLevel, "0.1"},
                      {Kind::RelativeError, "0.25"},
                      {Kind::Size1, "50"},
                      {Kind::Size2Minus1, "10"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 110 (50 in sample 1 and 60 in sample 2), the "
              "probability is 0.1 to over/under estimate the ratio between two samples of scale "
              "(location known) in an exponential distribution by a relative error of more than "
              "0.25.");
}

// Width 2 x 1.95996 x 0.3 / sqrt(30) = 0.2147.
TEST_F(Statement, ConfidenceIntervalOfKnownWidth) {
    AnalyseParameter(DistrNormal, 0, ProcedureInterval, OneSample, TwoSided, 100, {22, 100, 2, 85},
                     {{Kind::IntervalWidth, "0.2147"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, a two-sided 95 % confidence interval will have a width of "
              "0.2147. The confidence interval is calculated for the parameter mean (standard "
              "deviation known) in a normal distribution. The calculation is based on the "
              "assumption that the standard deviation is 0.3.");
}

// Unknown standard deviation: P(width < 0.25) = P(chi-square(29) < 29 (0.25 / (2 t s / sqrt n))^2)
// = 0.82958 with t = qt(0.975, 29).
TEST_F(Statement, ConfidenceIntervalOfProbableWidth) {
    AnalyseParameter(DistrNormal, 1, ProcedureInterval, OneSample, TwoSided, 101,
                     {22, 100, 2, 85, 101},
                     {{Kind::IntervalWidth, "0.25"}, {Kind::WidthProbability, "0.82958"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the probability is 0.82958 to get a two-sided 95% "
              "confidence interval with a width less than 0.25. The confidence interval is "
              "calculated for the parameter mean (standard deviation unknown) in a normal "
              "distribution. The calculation is based on the assumption that the standard "
              "deviation is 0.3.");
}

// Two samples, standard deviations 0.3 and 0.4, 40 and 50 subjects:
// 2 x 3.29053 sqrt(0.09/40 + 0.16/50) = 0.48584. The percentage of 0.999 is 99.9.
TEST_F(Statement, ConfidenceIntervalOfADifference) {
    AnalyseParameter(DistrNormal, 0, ProcedureInterval, TwoSamples, TwoSided, 4,
                     {22, 100, 216, 217, 4, 37},
                     {{Kind::ConfidenceLevel, "0.999"},
                      {Kind::IntervalWidth, "0.48584"},
                      {Kind::Sd2, "0.4"},
                      {Kind::Size1, "40"},
                      {Kind::Size2, "50"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 90 (40 in sample 1 and 50 in sample 2), a two-sided "
              "99.9 % confidence interval will have a width of 0.48584. The confidence interval is "
              "calculated for the difference between two samples in the parameter mean (standard "
              "deviation known) in a normal distribution. The calculation is based on the "
              "assumptions that the standard deviation 1 is 0.3 and the standard deviation 2 is "
              "0.4.");
}

// Of a one-sided interval the width goes from the estimate to the one limit.
TEST_F(Statement, OneSidedConfidenceInterval) {
    Open(CalculationWindow);
    OfferChecks({36});
    CheckValue(36) = 0;
    AnalyseParameter(DistrBinomial, 0, ProcedureInterval, OneSample, TwoSided, 100,
                     {22, 100, 102, 85},
                     {{Kind::ConfidenceLevel, "0.975"}, {Kind::IntervalWidth, "0.15"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, a one-sided 97.5 % confidence interval will have a width "
              "of 0.15 from the estimate to the limit. The confidence interval is calculated for "
              "the parameter proportion in a binomial distribution. The calculation is based on "
              "the assumption that the proportion is 0.3.");
    CheckValue(36) = 1;
    EXPECT_NE(SumStatement().find("a two-sided 97.5 % confidence interval will have a width of"),
              std::string::npos);
}

TEST_F(Statement, TableOfAnIntervalsWidth) {
    NewWindow(TableWindow);
    AnalyseParameter(DistrPoisson, 0, ProcedureInterval, OneSample, TwoSided, 100,
                     {22, 100, 175, 163}, {});
    Over(163, "10", "50", "0.1", 175, "0.5 2");
    // lowest: 2 x 1.96 sqrt(0.5 / 50); highest: 2 x 1.96 sqrt(2 / 10)
    Found(0.392F, 1.753F);
    EXPECT_EQ(SumStatement(),
              "With sample size ranging from 10 to 50 and with mean set to 0.5 and 2, the width of "
              "interval (w) will be ranging from 0.392 to 1.753. The confidence interval is "
              "calculated for the parameter mean in a Poisson distribution. The calculation is "
              "based on the assumption that the confidence level is 0.95.");
}

TEST_F(Statement, TableOfAnEstimatesError) {
    NewWindow(TableWindow);
    AnalyseParameter(DistrNormal, 0, ProcedureEstimate, OneSample, TwoSided, 18, {143, 18, 2, 85},
                     {});
    Over(85, "10", "50", "0.1");
    Found(0.0832F, 0.1859F);
    EXPECT_EQ(SumStatement(),
              "With sample size ranging from 10 to 50, the absolute error will be ranging from "
              "0.0832 to 0.1859. The estimate is calculated for the parameter mean (standard "
              "deviation known) in a normal distribution. The calculation is based on the "
              "assumptions that the error level is 0.05 and the standard deviation is 0.3.");
}

// A test of a parameter has no test name; it is told by its parameter and distribution. The H1
// value is entered as a ratio 1.5 of 0.3: 0.45.
TEST_F(Statement, TestOfAProportion) {
    AnalyseParameter(DistrBinomial, 0, ProcedureTest, OneSample, OneSided, 1, {0, 1, 35, 41, 85},
                     {{Kind::Power, "0.7549"},
                      {Kind::H0Proportion, "0.3"},
                      {Kind::H1ProportionOverH0, "1.5"},
                      {Kind::Size, "60"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 60, the power is 0.75 when testing the null hypothesis H0: "
              "proportion = 0.3 against H1: proportion = 0.45. The test used is a test of the "
              "parameter proportion in a binomial distribution, one-sided, at the significance "
              "level 0.05.");
}

// Observation times in place of subjects: 40 and 1.5 x 40 = 60.
TEST_F(Statement, TestOfTwoRates) {
    AnalyseParameter(DistrPoisson, 1, ProcedureTest, TwoSamples, TwoSided, 1,
                     {0, 1, 64, 9, 73, 171, 174},
                     {{Kind::Power, "0.912"},
                      {Kind::H0Rate2Minus1, "0"},
                      {Kind::H1Rate1, "0.25"},
                      {Kind::H1Rate2, "0.5"},
                      {Kind::StudyTime1, "40"},
                      {Kind::StudyTime2Over1, "1.5"}});
    EXPECT_EQ(SumStatement(),
              "With a total exposure time of 100 (40 in sample 1 and 60 in sample 2), the power is "
              "0.91 when testing the null hypothesis H0: hazard rate 2 - hazard rate 1 = 0 against "
              "H1: hazard rate 1 = 0.25 and hazard rate 2 = 0.5. The test used is a test of the "
              "parameter hazard rate in a Poisson distribution, two-sided, at the significance "
              "level 0.05.");
}

// --- Tests without an entered null hypothesis ---------------------------------------------------

// Odds without an H0 entry: no effect is that they are equal. "Odds are".
TEST_F(Statement, TestOfTwoOdds) {
    AnalyseParameter(
        DistrBinomial, 1, ProcedureTest, TwoSamples, TwoSided, 230, {0, 1, 229, 230, 4, 37},
        {{Kind::H1Odds1, "1"}, {Kind::H1Odds2, "2.123"}, {Kind::Size1, "90"}, {Kind::Size2, "90"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 180 (90 in sample 1 and 90 in sample 2), the odds 2 "
              "under H1 are 2.123 for a power of 0.80 when testing the null hypothesis H0: odds 2 "
              "= odds 1 against H1: odds 1 = 1 and odds 2 = 2.123. The test used is a test of the "
              "parameter odds in a binomial distribution, two-sided, at the significance level "
              "0.05.");
}

TEST_F(Statement, FisherTest) {
    AnalyseTest(100, TwoSamples, TwoSided, 4, {0, 1, 8, 69, 4, 5},
                {{Kind::Power, "0.9"},
                 {Kind::H1Proportion1, "0.2"},
                 {Kind::H1Proportion2, "0.6"},
                 {Kind::Size1, "34"},
                 {Kind::Size2Over1, "1.5"}});
    EXPECT_EQ(
        SumStatement(),
        "With a total sample size of 85 (34 in sample 1 and 51 in sample 2), the power is "
        "0.90 when testing the null hypothesis H0: proportion 2 = proportion 1 against H1: "
        "proportion 1 = 0.2 and proportion 2 = 0.6. The test used is Fisher's Exact test, "
        "two-sided, at the significance level 0.05. With more than 50 subjects in a sample, the "
        "power is that of the normal approximation on the arc-sine scale, not of the exact "
        "test.");
}

// McNemar's test compares the discordant cells: their difference is the effect, their sum what it
// is calculated with.
TEST_F(Statement, McNemarTest) {
    AnalyseTest(70, OneSample, TwoSided, 85, {0, 1, 15, 16, 85},
                {{Kind::Power, "0.8"},
                 {Kind::H1Proportion10Plus01, "0.4"},
                 {Kind::DiagonalDifference, "0.2"},
                 {Kind::Size, "79"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 79 pairs, the power is 0.80 when testing the null hypothesis "
              "H0: proportion 10 = proportion 01 against H1: proportion 10 - proportion 01 = 0.2. "
              "The test used is McNemar test, two-sided, at the significance level 0.05. The "
              "calculation is based on the assumption that the proportion 10 + proportion 01 under "
              "H1 is 0.4.");
    ParText(Kind::DiagonalDifference) = "0.25";
    UnknownParNo = PositionOf(Kind::DiagonalDifference);
    EXPECT_NE(SumStatement().find("the proportion 10 - proportion 01 under H1 is 0.25 for a power "
                                  "of 0.80 when testing the null hypothesis H0: proportion 10 = "
                                  "proportion 01 against H1: proportion 10 - proportion 01 = 0.25"),
              std::string::npos);
    UnknownParNo = PositionOf(Kind::H1Proportion10Plus01);
    EXPECT_NE(SumStatement().find("the proportion 10 + proportion 01 under H1 is 0.4 for a power"),
              std::string::npos);
}

// 50 subjects in each group are enumerated; from 51 on it is an approximation, and says so.
TEST_F(Statement, FisherTestSaysWhereItIsNotExact) {
    constexpr const char* approximation = "normal approximation on the arc-sine scale";
    OpenTest(100);
    AcceptOptions();
    TypeAll({{Kind::Size1, "50"}, {Kind::Size2, "50"}});
    Solve(Kind::Power);
    EXPECT_EQ(SumStatement().find(approximation), std::string::npos);
    EXPECT_EQ(HeadlineNote(), "");
    TypeAll({{Kind::Size2, "51"}});
    EXPECT_EQ(HeadlineNote(), "") << "there is no result";
    Solve(Kind::Power);
    EXPECT_EQ(HeadlineNote(),
              "More than 50 per group: normal approximation on the arc-sine scale, not exact.");
    EXPECT_NE(SumStatement().find(approximation), std::string::npos);

    // The second size by its ratio, and over an axis.
    Pick(Group::Size2, 2);
    AcceptOptions();
    TypeAll({{Kind::Size1, "40"}, {Kind::Size2Over1, "1.25"}});
    Solve(Kind::Power);
    EXPECT_EQ(HeadlineNote(), "");
    TypeAll({{Kind::Size2Over1, "1.26"}});
    Solve(Kind::Power);
    EXPECT_NE(HeadlineNote(), "");
    NewWindow(TableWindow);
    AnalyseTest(100, TwoSamples, TwoSided, 1, {0, 1, 8, 69, 4, 37},
                {{Kind::Size1, "20"}, {Kind::Size2, "20"}});
    Over(4, "20", "50", "10");
    Found(0.2F, 0.7F);
    EXPECT_EQ(SumStatement().find(approximation), std::string::npos);
    Over(4, "20", "60", "10");
    EXPECT_NE(SumStatement().find(approximation), std::string::npos);
    Over(8, "0.1", "0.2", "0.1", 37, "20 80 40");
    EXPECT_NE(SumStatement().find(approximation), std::string::npos);
    OpenTest(90);
    AcceptOptions();
    EXPECT_EQ(HeadlineNote(), "");
}

// Three groups with a standard deviation of the means of 0.3, sd 1, 30 per group: lambda = 90 x
// 0.09, 1 - pf(qf(0.95, 2, 87), 2, 87, 8.1) = 0.70733 in R. An F-test has one direction.
TEST_F(Statement, OneWayANOVA) {
    AnalyseTest(10, MoreSamples, TwoSided, 1, {0, 1, 34, 2, 17, 4, 151},
                {{Kind::Power, "0.70733"},
                 {Kind::SdOfMeans, "0.3"},
                 {Kind::Sd, "1"},
                 {Kind::NoOfGroups, "3"},
                 {Kind::Size1, "30"},
                 {Kind::SizeKOver1, "1"}});
    OfferTwoTailsOnly();
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 90 (30 in group 1 and 30 in each other group), the "
              "power is 0.71 when testing the null hypothesis H0: standard deviation of means = 0 "
              "(equal means) against H1: standard deviation of means = 0.3. For the design, the "
              "number of groups is 3. The test used is ANOVA, One-way, fixed effects test at the "
              "significance level 0.05. The calculation is based on the assumption that the "
              "standard deviation is 1.");
}

// A first group of 40 and three others of half that size: 40 + 3 x 20 = 100. H1 has one difference,
// H0 has all of them.
TEST_F(Statement, OneWayANOVAWithALargerFirstGroup) {
    AnalyseTest(10, MoreSamples, TwoSided, 147, {0, 1, 147, 2, 17, 4, 151},
                {{Kind::AnyMeanDifference, "0.654"},
                 {Kind::NoOfGroups, "4"},
                 {Kind::Size1, "40"},
                 {Kind::SizeKOver1, "0.5"}});
    OfferTwoTailsOnly();
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 100 (40 in group 1 and 20 in each other group), any "
              "(mean i - mean j) under H1 is 0.654 for a power of 0.80 when testing the null "
              "hypothesis H0: all (mean i - mean j) = 0 (equal means) against H1: any (mean i - "
              "mean j) = 0.654. For the design, the number of groups is 4. The test used is ANOVA, "
              "One-way, fixed effects test at the significance level 0.05. The calculation is "
              "based on the assumption that the standard deviation is 0.3.");
}

TEST_F(Statement, ThreeWayANOVA) {
    AnalyseTest(12, MoreSamples, TwoSided, 1, {0, 1, 34, 2, 238, 239, 243, 328},
                {{Kind::Power, "0.95"},
                 {Kind::LevelsA, "3"},
                 {Kind::LevelsB, "4"},
                 {Kind::LevelsC, "2"},
                 {Kind::AdditiveSizePerCell, "5"}});
    OfferTwoTailsOnly();
    EXPECT_EQ(
        SumStatement(),
        "With a sample size per cell of 5, the power is 0.95 when testing the null hypothesis "
        "H0: standard deviation of means = 0 (equal means) against H1: standard deviation of "
        "means = 0.1. For the design, the number of A-factor levels is 3, the number of "
        "B-factor levels is 4 and the number of C-factor levels is 2. The test used is "
        "ANOVA, Three-way, fixed effects, additive test at the significance level 0.05. The "
        "calculation is based on the assumption that the standard deviation is 0.3.");
}

// Schoenfeld (1981): 4 (1.95996 + 1.28155)^2 / ln(0.5)^2 = 87.48, so 88 events. A ratio without
// effect is 1, not 0.
TEST_F(Statement, LogRankTestInEvents) {
    AnalyseTest(400, TwoSamples, TwoSided, 99, {0, 1, 264, 99, 5},
                {{Kind::Power, "0.9"}, {Kind::H1HazardRatio, "0.5"}, {Kind::Events, "88"}});
    EXPECT_EQ(SumStatement(),
              "With a total number of events of 88, the power is 0.90 when testing the null "
              "hypothesis H0: hazard ratio = 1 against H1: hazard ratio = 0.5. The test used is "
              "Log-rank test, Non-Parametric Approach, Proportional Hazards (Schoenfeld), "
              "two-sided, at the significance level 0.05. The calculation is based on the "
              "assumption that the sample size 2 / sample size 1 is 1.");
}

// Accrual, follow-up and losses are assumptions; the accrual time is what was solved for.
TEST_F(Statement, LogRankTestAccrualTime) {
    AnalyseTest(403, TwoSamples, OneSided, 10, {0, 1, 332, 9, 74, 13, 45, 33, 10, 11, 4, 37},
                {{Kind::H0Rate2Over1, "1"},
                 {Kind::H1Rate1, "0.3"},
                 {Kind::H1Rate2Over1, "0.6"},
                 {Kind::AccrualTime, "2.345"},
                 {Kind::Size1, "80"},
                 {Kind::Size2, "80"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 160 (80 in sample 1 and 80 in sample 2), the accrual "
              "time is 2.345 for a power of 0.80 when testing the null hypothesis H0: hazard rate "
              "2 / hazard rate 1 = 1 against H1: hazard rate 1 = 0.3 and hazard rate 2 / hazard "
              "rate 1 = 0.6. The test used is Log-rank test, Parametric Approach, LOG(Hazard) "
              "approach (George - Desu), one-sided, at the significance level 0.05. The "
              "calculation is based on the assumptions that the loss rate 1 is 0, the loss rate 2 "
              "is 0, the accrual rate is 0 and the total study time is 5.");
}

// "et. al." ends no sentence.
TEST_F(Statement, ATestNameWithAPoint) {
    AnalyseTest(404, TwoSamples, TwoSided, 1, {0, 1, 332, 9, 73, 347, 174},
                {{Kind::Power, "0.8"}, {Kind::H0Rate2Over1, "1"}, {Kind::TimeAtRisk, "250.5"}});
    EXPECT_NE(SumStatement().find("With a total time at risk of 250.5, the power is 0.80"),
              std::string::npos);
    EXPECT_NE(SumStatement().find("The test used is Log-rank test, Parametric Approach, "
                                  "LOG(Hazard) approach (Rubenstein et al.), two-sided, at the "
                                  "significance level 0.05. The calculation"),
              std::string::npos);
}

// H0 values that stand after the H1 value hold under H0, but are no hypothesis of their own.
TEST_F(Statement, MantelHaenszelTest) {
    AnalyseTest(120, TwoSamples, TwoSided, 1, {0, 1, 307, 308, 309, 310, 320},
                {{Kind::Power, "0.88"},
                 {Kind::H1SumOfDifferences, "0.4"},
                 {Kind::H0SumOfVariances, "0.2"},
                 {Kind::H1SumOfVariances, "0.25"},
                 {Kind::TotalSize, "200"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 200, the power is 0.88 when testing the null hypothesis "
              "H0: sum of differences in proportions = 0 (equal distributions) and sum of "
              "variances of proportions = 0.2 against H1: sum of differences in proportions = 0.4 "
              "and sum of variances of proportions = 0.25. The test used is "
              "Mantel-Haenszel test, two-sided, at the significance level 0.05. The calculation is "
              "based on the assumption that the number of strata is 4.");
}

TEST_F(Statement, MultipleRegressionCountsCoefficients) {
    AnalyseTest(171, OneSample, TwoSided, 1, {0, 1, 268, 265, 266, 267, 85},
                {{Kind::Power, "0.93"}, {Kind::TestedCoefficients, "3"}, {Kind::Size, "100"}});
    OfferTwoTailsOnly();
    EXPECT_EQ(SumStatement(),
              "With a sample size of 100, the power is 0.93 when testing the null hypothesis H0: "
              "first 3 regression coefficients equal to 0. The test used is Linear Regression, "
              "Multiple test at the significance level 0.05. The calculation is based on the "
              "assumptions that the multiple correlation coefficient of y with x1 to xp+q is 0.5, "
              "the multiple correlation coefficient of y with xp+1 to xp+q is 0.3 and the total "
              "number (p+q) of covariates is 5.");
    ParText(Kind::TestedCoefficients) = "1";
    EXPECT_NE(SumStatement().find("H0: first regression coefficient equal to 0. The test"),
              std::string::npos);
}

TEST_F(Statement, LogisticRegression) {
    AnalyseTest(180, OneSample, TwoSided, 85, {0, 1, 20, 200, 25, 85},
                {{Kind::Power, "0.8"},
                 {Kind::H1EventAtMean, "0.5"},
                 {Kind::H1OddsRatio, "1.5"},
                 {Kind::CorrelationOfCovariates, "0.2"},
                 {Kind::Size, "199"}});
    EXPECT_EQ(
        SumStatement(),
        "With a sample size of 199, the power is 0.80 when testing the null hypothesis H0: "
        "odds ratio = 1 against H1: Prob (event at mean) = 0.5 and odds ratio = 1.5. The test "
        "used is Logistic Regression, Continuous covariate test, two-sided, at the "
        "significance level 0.05. The calculation is based on the assumption that the "
        "multiple correlation coefficient of x1 with x2 to xp is 0.2.");
}

TEST_F(Statement, RankCorrelation) {
    AnalyseTest(491, OneSample, TwoSided, 315, {0, 1, 315, 14},
                {{Kind::H1ProbabilityOfConcordance, "0.712"}, {Kind::SizeFrom4, "25"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 25, the probability of concordance under H1 is 0.712 for a "
              "power of 0.80 when testing the null hypothesis H0: probability of concordance = 0.5 "
              "(no association) against H1: probability of concordance = 0.712. The test used is "
              "Rank Correlation test, Kendall's Rank Correlation tau, two-sided, at the "
              "significance level 0.05.");
}

// Lin's coefficient: three H0 values, and the H1 values as difference, ratio and value.
TEST_F(Statement, LinsConcordance) {
    AnalyseTest(515, OneSample, OneSided, 224, {0, 1, 295, 297, 299, 302, 303, 304, 224},
                {{Kind::Power, "0.8"},
                 {Kind::H0Concordance, "0.9"},
                 {Kind::H1ConcordanceMinusH0, "0.05"},
                 {Kind::H0LocationShift, "0.1"},
                 {Kind::H1LocationShiftOverH0, "2"},
                 {Kind::H0ScaleShift, "1"},
                 {Kind::H1ScaleShift, "1.1"},
                 {Kind::NoOfSubjects, "117"}});
    EXPECT_EQ(SumStatement(),
              "With a number of subjects of 117, the power is 0.80 when testing the null "
              "hypothesis H0: concordance coefficient = 0.9 and location shift = 0.1 and scale "
              "shift = 1 against H1: concordance coefficient = 0.95 and location shift = 0.2 and "
              "scale shift = 1.1. The test used is Reliability test, Lin's Concordance "
              "Coefficient, one-sided, at the significance level 0.05.");
}

TEST_F(Statement, KolmogorovSmirnovTwoSampleTest) {
    AnalyseTest(340, TwoSamples, TwoSided, 1, {0, 1, 4, 37}, {{Kind::Power, "0.61"}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 60 (30 in sample 1 and 30 in sample 2), the power is "
              "0.61 when testing the null hypothesis H0: equal distributions against H1: different "
              "distributions. The test used is Kolmogorov-Smirnov two-sample test, two-sided, at "
              "the significance level 0.05.");
}

TEST_F(Statement, CrossoverDesign) {
    AnalyseTest(230, TwoSamples, TwoSided, 2, {0, 1, 61, 62, 2, 322, 325},
                {{Kind::H1Mean2Minus1, "0.5"},
                 {Kind::Sd, "0.731"},
                 {Kind::SequenceSize1, "11"},
                 {Kind::SequenceSize2Over1, "0.5"}});
    // 11 and half of it, rounded up: 6.
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 17 (11 in sequence 1 and 6 in sequence 2), the standard "
              "deviation is 0.731 for a power of 0.80 when testing the null hypothesis H0: mean 2 "
              "- mean 1 = 0 against H1: mean 2 - mean 1 = 0.5. The test used is Two-way Crossover "
              "Design, Additive Model test, two-sided, at the significance level 0.05.");
}

// Without a size the sentence begins with the result.
TEST_F(Statement, ADesignWithoutASizeParameter) {
    AnalyseTest(14, MoreSamples, TwoSided, 1, {0, 1, 34, 2, 244}, {{Kind::Power, "0.6"}});
    OfferTwoTailsOnly();
    EXPECT_EQ(SumStatement(),
              "The power is 0.60 when testing the null hypothesis H0: standard deviation of means "
              "= 0 (equal means) against H1: standard deviation of means = 0.1. For the design, "
              "the size of Latin square is 5. The test used is ANOVA, Single Latin Square test at "
              "the significance level 0.05. The calculation is based on the assumption that the "
              "standard deviation is 0.3.");
}

// A test whose hypotheses stand nowhere but in a grid says nothing of them.
TEST_F(Statement, ATestWithoutHypothesesInItsList) {
    AnalyseTest(320, MoreSamples, TwoSided, 1, {0, 1, 85}, {{Kind::Power, "0.77"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the power is 0.77. The test used is Friedman's test, "
              "two-sided, at the significance level 0.05.");
}

// Distributions that are the hypotheses are named.
TEST_F(Statement, ATestOfADistribution) {
    AnalyseTest(263, OneSample, TwoSided, 1, {0, 1, 85}, {{Kind::Power, "0.77"}});
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the power is 0.77 when testing the null hypothesis H0: "
              "Normal Distribution, m = 0, s = 1 against H1: Normal Distribution, m = 0.3, s = 1. "
              "The test used is Goodness of Fit test, Kolmogorov-Smirnov test, two-sided, at the "
              "significance level 0.05.");
}

// --- Simulations --------------------------------------------------------------------------------

// Level and power with their intervals; the level that the test was meant to have is nominal. The
// power of the list is not looked at: the simulation estimates it.
TEST_F(Statement, SimulatedTest) {
    NewWindow(SimulationWindow);
    AnalyseTest(0, TwoSamples, TwoSided, 1, {0, 1, 61, 62, 2, 4, 37},
                {{Kind::Power, "-"},
                 {Kind::H1Mean2Minus1, "0.5"},
                 {Kind::Sd, "1"},
                 {Kind::Size1, "64"},
                 {Kind::Size2, "64"}});
    SignEstimateText(0) = "0.0457   0.0500   0.0543";
    PowerEstimateText(0) = "0.7921   0.8000   0.8079";
    PrAcceptEstimateText(0) = "0.1921   0.2000   0.2079";
    SampleSizeEstimateText(2) = " 10000";
    MaxNoOfSimText = "10000";
    EXPECT_EQ(
        SumStatement(),
        "With a total sample size of 128 (64 in sample 1 and 64 in sample 2), the estimated "
        "actual significance level is 0.0500 (95% CI 0.0457 to 0.0543) and the estimated "
        "power is 0.8000 (95% CI 0.7921 to 0.8079) when testing the null hypothesis H0: mean "
        "2 - mean 1 = 0 against H1: mean 2 - mean 1 = 0.5. The test used is Student's t-test, "
        "Unpaired, two-sided, at the nominal significance level 0.05. The calculation is "
        "based on the assumption that the standard deviation is 1. The number of Monte Carlo "
        "simulations is 10000.");
}

// A simulation that the user ended tells what was done, not what was asked for; a level entered for
// the simulation is the level of its test.
TEST_F(Statement, SimulationEndedEarly) {
    NewWindow(SimulationWindow);
    AnalyseTest(0, TwoSamples, OneSided, 1, {0, 1, 61, 62, 2, 4, 37}, {{Kind::Power, "-"}});
    SignEstimateText(0) = "0.0206   0.0250   0.0294";
    PowerEstimateText(0) = "0.7921   0.8000   0.8079";
    SampleSizeEstimateText(2) = " 4000";
    MaxNoOfSimText = "10000";
    RejectH0Text(0) = "0,025";
    const std::string text = SumStatement();
    EXPECT_NE(text.find("one-sided, at the nominal significance level 0.025."), std::string::npos);
    EXPECT_TRUE(text.ends_with(" The number of Monte Carlo simulations is 4000."));
    SampleSizeEstimateText(2).clear();
    EXPECT_TRUE(SumStatement().ends_with(" The number of Monte Carlo simulations is 10000."));
    MaxNoOfSimText.clear();
    EXPECT_EQ(SumStatement().find("Monte Carlo"), std::string::npos);
}

TEST_F(Statement, SimulatedConfidenceInterval) {
    NewWindow(SimulationWindow);
    AnalyseParameter(DistrNormal, 1, ProcedureInterval, OneSample, TwoSided, 101,
                     {22, 100, 2, 85, 101},
                     {{Kind::IntervalWidth, "0.25"}, {Kind::WidthProbability, "-"}});
    SignEstimateText(0) = "0.9457   0.9500   0.9543";
    PowerEstimateText(0) = "0.8221   0.8295   0.8369";
    PrAcceptEstimateText(0) = "0.7802   0.7882   0.7962";
    SampleSizeEstimateText(2) = " 10000";
    EXPECT_EQ(SumStatement(),
              "With a sample size of 30, the estimated coverage probability is 0.9500 (95% CI "
              "0.9457 to 0.9543), the estimated Prob (interval width < w) is 0.8295 (95% CI 0.8221 "
              "to 0.8369) and the estimated Pr(coverage and width) is 0.7882 (95% CI 0.7802 to "
              "0.7962) for a two-sided 95% confidence interval with a width less than 0.25. The "
              "confidence interval is calculated for the parameter mean (standard deviation "
              "unknown) in a normal distribution. The calculation is based on the assumption that "
              "the standard deviation is 0.3. The number of Monte Carlo simulations is 10000.");
}

TEST_F(Statement, SimulatedEquivalenceByConfidenceInterval) {
    NewWindow(SimulationWindow);
    AnalyseTest(800, TwoSamples, TwoOneSided, 318, {321, 318, 6, 7, 62, 2, 4, 37},
                {{Kind::ProbabilityWithinLimits, "-"}});
    SignEstimateText(0) = "0.0457   0.0500   0.0543";
    PowerEstimateText(0) = "0.7921   0.8000   0.8079";
    EXPECT_NE(SumStatement().find("the estimated Pr(CI within limits | H0 true) is 0.0500 (95% CI "
                                  "0.0457 to 0.0543) and the estimated Pr(CI within limits | H1 "
                                  "true) is 0.8000 (95% CI 0.7921 to 0.8079) when testing the null "
                                  "hypothesis H0: non-equivalence, with"),
              std::string::npos);
    EXPECT_NE(SumStatement().find("at the nominal confidence level 0.9."), std::string::npos);
}

// --- Group sequential designs -------------------------------------------------------------------

class SequentialStatement : public Statement {
  protected:
    void Design(i16 noOfInterim) {
        IsGroupSeq = True;
        NoOfInterim = noOfInterim;
    }
};

// O'Brien and Fleming (1979), 3 analyses, 0.05 two-sided: nominal levels 0.0005, 0.0141 and 0.0451.
TEST_F(SequentialStatement, TellsLevelsAndSizes) {
    AnalyseTest(600, TwoSamples, TwoSided, 4, {0, 1, 61, 62, 216, 217, 4, 37},
                {{Kind::Power, "0.9"},
                 {Kind::H1Mean2Minus1, "0.5"},
                 {Kind::Sd1, "1"},
                 {Kind::Sd2, "1"},
                 {Kind::Size1, "87"},
                 {Kind::Size2, "87"}});
    Design(2);
    RejectH0Text(0) = "0.0005";
    RejectH0Text(1) = "0.0141";
    RejectH0Text(2) = "0.0451";
    for (i16 k = 0; k < 3; ++k)
        InterimSize1Text(k) = InterimSize2Text(k) = std::to_string(29 * (k + 1));
    EXPECT_EQ(
        SumStatement(),
        "With a total sample size of 174 (87 in sample 1 and 87 in sample 2), the power is "
        "0.90 when testing the null hypothesis H0: mean 2 - mean 1 = 0 against H1: mean 2 - "
        "mean 1 = 0.5. The test used is Normal Distribution Means, Design test, two-sided, at "
        "the significance level 0.05, with 2 interim analyses and a final analysis. The "
        "significance levels at the interim and final analysis are 0.0005, 0.0141 and 0.0451 "
        "respectively. The cumulative sample sizes (Sample 1, Sample 2) at the interim "
        "analyses are (29,29) and (58,58). The calculation is based on the assumptions that "
        "the standard deviation 1 is 1 and the standard deviation 2 is 1.");
}

// One interim analysis, one sample, with a level for accepting H0 there and none at the end.
TEST_F(SequentialStatement, TellsOneInterimAnalysisInTheSingular) {
    AnalyseTest(620, OneSample, OneSided, 1, {0, 1, 35, 83, 85},
                {{Kind::Power, "0.853"},
                 {Kind::H0Proportion, "0.3"},
                 {Kind::H1Proportion, "0.5"},
                 {Kind::Size, "44"}});
    Design(1);
    RejectH0Text(0) = "0.0052";
    RejectH0Text(1) = "0.048";
    AcceptH0Text(0) = "0.5";
    AcceptH0Text(1) = "1";
    InterimSize1Text(0) = "22";
    InterimSize1Text(1) = "44";
    EXPECT_EQ(
        SumStatement(),
        "With a sample size of 44, the power is 0.85 when testing the null hypothesis H0: "
        "proportion = 0.3 against H1: proportion = 0.5. The test used is Test of Proportions, "
        "Design, one-sided, at the significance level 0.05, with 1 interim analysis and a "
        "final analysis. The significance levels at the interim and final analysis are "
        "0.0052 and 0.048 respectively. Similarly, the accept H0 level is 0.5 (at interim "
        "1). The cumulative sample size at the interim analysis is 22.");
}

TEST_F(SequentialStatement, TellsSeveralAcceptLevelsAndEstimatesOverAll) {
    NewWindow(SimulationWindow);
    AnalyseTest(630, TwoSamples, OneSided, 1, {0, 1, 332, 9, 73, 99, 5},
                {{Kind::Power, "-"}, {Kind::Events, "90"}});
    Design(2);
    RejectH0Text(0) = "0.005";
    RejectH0Text(1) = ""; // nothing entered stands for the significance level
    RejectH0Text(2) = "0.045";
    AcceptH0Text(0) = "0.5";
    AcceptH0Text(1) = "0.3";
    AcceptH0Text(2) = "0.045";
    SignEstimateText(3) = "0.0457   0.0500   0.0543";
    PowerEstimateText(3) = "0.7921   0.8000   0.8079";
    const std::string text = SumStatement();
    EXPECT_NE(text.find("the estimated power is 0.8000 (95% CI 0.7921 to 0.8079)"),
              std::string::npos);
    EXPECT_NE(text.find("are 0.005, 0.05 and 0.045 respectively. Similarly, the accept H0 levels "
                        "are 0.5 (at interim 1), 0.3 (at interim 2) and 0.045 (at the final "
                        "analysis). The calculation"),
              std::string::npos);
}

// What stands in the size column of a log-rank design are times or events.
TEST_F(SequentialStatement, SaysNothingOfSizesThatAreTimes) {
    AnalyseTest(630, TwoSamples, OneSided, 1, {0, 1, 332, 9, 73, 99, 5}, {{Kind::Events, "90"}});
    Design(1);
    RejectH0Text(0) = "0.005";
    InterimSize1Text(0) = "2.5";
    EXPECT_EQ(SumStatement().find("cumulative"), std::string::npos);
}

TEST_F(SequentialStatement, HasNoMoreThanTheTestWithoutInterimAnalyses) {
    AnalyseTest(620, OneSample, OneSided, 1, {0, 1, 35, 83, 85}, {{Kind::Power, "0.853"}});
    Design(0);
    RejectH0Text(0) = "0.05";
    EXPECT_TRUE(SumStatement().ends_with("Test of Proportions, Design, one-sided, at the "
                                         "significance level 0.05."));
}

// --- Every analysis that there is ---------------------------------------------------------------

void ExpectReadable(const std::string& text) {
    ASSERT_FALSE(text.empty());
    EXPECT_TRUE(text[0] >= 'A' && text[0] <= 'Z') << text;
    EXPECT_TRUE(text.ends_with(".")) << text;
    for (const char* bad : {"  ", " ,", " .", ",,", ",.", "&", " = .", " = ,", " is .", " is ,",
                            "()", "( ", " )", "\n", "H0:m", "H1:m"})
        EXPECT_EQ(text.find(bad), std::string::npos) << '"' << bad << "\" in " << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '('), std::count(text.begin(), text.end(), ')'))
        << text;
}

class EveryStatement : public Statement {
  protected:
    // The statement for the options as they are chosen now, with some result.
    void Read() {
        AcceptOptions();
        if (!HasValue(ParText(ParKind(UnknownParNo))))
            ParText(ParKind(UnknownParNo)) = "0.5";
        const std::string text = SumStatement();
        ExpectReadable(text);
        for (i16 i = 0; i <= NoOfPar; ++i) {
            const std::string label = StripAmpersand(ParLabel(ParKind(i)));
            if (!label.starts_with("H0:") || label.find("No (p)") != std::string::npos)
                continue;
            EXPECT_NE(text.find(" = " + Format(ReadNumber(ParText(ParKind(i))), "0.#####")),
                      std::string::npos)
                << label << " in " << text;
        }
        ++read_;
    }

    // Calls again with each tail and each option of each group that the analysis offers.
    template <class Reopen>
    void ReadAll(Reopen reopen) {
        for (const i16 tails : {OneSided, TwoSided, TwoOneSided}) {
            reopen();
            if (!TailsOffered(tails))
                continue;
            ChooseTails(tails);
            const i16 groups = NoOfIntPar;
            Read();
            for (i16 position = 0; position < groups; ++position)
                for (const i16 option : {i16{0}, i16{1}, i16{2}}) {
                    reopen();
                    ChooseTails(tails);
                    if (position >= NoOfIntPar || !IntParOptionEnabled(option, position))
                        continue;
                    ChooseIntPar(position, option);
                    Read();
                }
        }
    }

    static void CollectTests(std::span<const MenuItem> items, std::vector<i16>& menuNos) {
        for (const MenuItem& item : items) {
            if (item.Action == MenuAction::Test)
                menuNos.push_back(item.MenuNo);
            CollectTests(item.Children, menuNos);
        }
    }

    bool IsServed(i16 menuNo) {
        if (!HasEquation({.IsTest = True, .TestNo = TestNoOfMenu(menuNo)}))
            return false;
        NewTest(menuNo);
        return ChoosingOptions;
    }

    int read_ = 0;
};

TEST_F(EveryStatement, OfATestIsReadable) {
    NewWindow(CalculationWindow);
    std::vector<i16> menuNos;
    CollectTests(MainMenu(), menuNos);
    ASSERT_GT(menuNos.size(), 100U);
    for (const i16 menuNo : menuNos) {
        SCOPED_TRACE(TestMenuName(menuNo));
        if (IsServed(menuNo))
            ReadAll([this, menuNo] { OpenTest(menuNo); });
        CancelOptions();
    }
    EXPECT_GT(read_, 50);
}

TEST_F(EveryStatement, OfAParameterIsReadable) {
    NewWindow(CalculationWindow);
    for (i16 distrNo = DistrNormal; distrNo <= DistrBivariateNormal; ++distrNo)
        for (i16 parListNo = 0; parListNo < static_cast<i16>(DistrParList(distrNo).size());
             ++parListNo)
            for (const i16 procedureNo : {ProcedureTest, ProcedureEstimate, ProcedureInterval})
                for (const i16 samples : {OneSample, TwoSamples}) {
                    NewDistribution(distrNo);
                    if (!ChoosingOptions)
                        continue;
                    const auto reopen = [&] {
                        OpenDistribution(distrNo, parListNo, procedureNo);
                        if (SamplesOffered(samples))
                            ChooseSamples(samples);
                    };
                    SCOPED_TRACE(
                        DistrMenuName(distrNo) + " " +
                        std::string(DistrParList(distrNo)[static_cast<std::size_t>(parListNo)]));
                    ReadAll(reopen);
                    CancelOptions();
                }
    if (read_ == 0)
        GTEST_SKIP() << "no parameter analysis is available";
}

// --- Edited by hand ---------------------------------------------------------------------------

TEST_F(Statement, GoesOutAsItWasEdited) {
    EditStatement("too early");
    EXPECT_EQ(StatementText(), "");
    OpenUnpairedTTest(
        TwoSided,
        {{Kind::H1Mean2Minus1, "0.5"}, {Kind::Sd, "1"}, {Kind::Size1, "64"}, {Kind::Size2, "64"}});
    Solve(Kind::Power);
    const std::string ours = SumStatement();
    EXPECT_EQ(StatementText(), ours);
    EditStatement("My words.\nIn two lines.");
    EXPECT_EQ(StatementText(), "My words.\nIn two lines.");
    EXPECT_EQ(SumStatement(), ours);

    // It belongs to this analysis, and to this result.
    NewWindow(CalculationWindow);
    EXPECT_EQ(StatementText(), "");
    SwitchAnalysis(1);
    EXPECT_EQ(StatementText(), "My words.\nIn two lines.");
    Type(Kind::Size1, "65");
    Solve(Kind::Power);
    EXPECT_EQ(StatementText(), SumStatement());
    Type(Kind::Size1, "64");
    Solve(Kind::Power);
    EXPECT_EQ(StatementText(), "My words.\nIn two lines.") << "the same result again";
    EditStatement(" \n");
    EXPECT_EQ(StatementText(), ours);
}

// --- Edges --------------------------------------------------------------------------------------

// Two H0 entries with an inferiority limit: the comma after the first value stays.
TEST_F(Statement, InferiorityKeepsItsCommaAheadOfASecondH0Value) {
    AnalyseTest(830, TwoSamples, OneSided, 318, {321, 318, 330, 299, 62, 2, 4, 37},
                {{Kind::ProbabilityWithinLimits, "0.9"},
                 {Kind::MeanNonInferiorityLimit, "-0.4"},
                 {Kind::H0LocationShift, "0.2"},
                 {Kind::H1Mean2Minus1, "0"}});
    EXPECT_NE(SumStatement().find("when testing the null hypothesis H0: inferiority, with "
                                  "non-inferiority limit = -0.4, and location shift = 0.2, against "
                                  "H1: mean 2 - mean 1 = 0 (non-inferiority). The test"),
              std::string::npos);
}

TEST_F(Statement, AnUnknownWithoutValueIsWrittenAsZero) {
    AnalyseTest(0, TwoSamples, TwoSided, 2, {0, 1, 61, 62, 2, 4, 37}, {{Kind::Sd, "99999"}});
    EXPECT_NE(SumStatement().find("the standard deviation is 0 for a power of 0.80"),
              std::string::npos);
}

// 99999 that was typed is a number, and a number that ends in it is not touched either.
TEST_F(Statement, EnteredNumbersAreToldInFull) {
    AnalyseParameter(DistrFinitePopulation, 0, ProcedureTest, OneSample, TwoSided, 1,
                     {0, 1, 57, 59, 2, 31, 85},
                     {{Kind::SignificanceLevel, "0.00001"},
                      {Kind::Power, "0.99999"},
                      {Kind::H0Mean, "10000.5"},
                      {Kind::H1MeanMinusH0, ",25"},
                      {Kind::Sd, "0.99999"},
                      {Kind::Population, "99999"}});
    EXPECT_EQ(
        SumStatement(),
        "With a sample size of 30, the power is above 0.99 when testing the null hypothesis "
        "H0: mean = 10000.5 against H1: mean = 10000.75. The test used is a test of the parameter "
        "population mean in a finite population, two-sided, at the significance level "
        "0.00001. The calculation is based on the assumptions that the standard deviation is "
        "0.99999 and the population size is 99999.");
}

// An entered power keeps its digits, two at least; a calculated one has two.
TEST_F(Statement, ThePowerHasTwoDecimals) {
    AnalyseTest(0, TwoSamples, TwoSided, 4, {0, 1, 61, 62, 2, 4, 37}, {{Kind::Power, "0.9"}});
    EXPECT_NE(SumStatement().find("the power is 0.90 when"), std::string::npos);
    ParText(Kind::Power) = "0.975";
    EXPECT_NE(SumStatement().find("the power is 0.975 when"), std::string::npos);
    UnknownParNo = PositionOf(Kind::Power);
    EXPECT_NE(SumStatement().find("the power is 0.98 when"), std::string::npos);
    for (const auto& [power, told] : {std::pair{"0.9949", "0.99"},
                                      {"0.9951", "above 0.99"},
                                      {"1", "above 0.99"},
                                      {"0.0051", "0.01"},
                                      {"0.0049", "below 0.01"}}) {
        ParText(Kind::Power) = power;
        EXPECT_NE(SumStatement().find(std::string("the power is ") + told + " when"),
                  std::string::npos)
            << power;
    }
    // What was asked for is told as it was typed.
    UnknownParNo = PositionOf(Kind::Size1);
    ParText(Kind::Power) = "0.999";
    EXPECT_NE(SumStatement().find("the power is 0.999 when"), std::string::npos);
}

// A size is rounded up, but for a rest of 1e-5 at most.
TEST_F(Statement, SizesAreRoundedUp) {
    AnalyseTest(0, TwoSamples, TwoSided, 1, {0, 1, 61, 62, 2, 4, 5},
                {{Kind::Power, "0.8"}, {Kind::Size1, "30.2"}, {Kind::Size2Over1, "1.1"}});
    // 31, and 34.1 of it.
    EXPECT_NE(SumStatement().find("size of 66 (31 in sample 1 and 35 in sample 2)"),
              std::string::npos);
    ParText(Kind::Size1) = "30.000009";
    ParText(Kind::Size2Over1) = "0.3";
    EXPECT_NE(SumStatement().find("size of 39 (30 in sample 1 and 9 in sample 2)"),
              std::string::npos);
}

TEST_F(Statement, IsEmptyWithoutAResult) {
    EXPECT_EQ(SumStatement(), "");
    NewWindow(CalculationWindow);
    EXPECT_EQ(SumStatement(), "");
    AnalyseTest(0, TwoSamples, TwoSided, 1, {0, 1, 61, 62, 2, 4, 37}, {{Kind::Power, "-"}});
    EXPECT_EQ(SumStatement(), "");
    NewWindow(TableWindow);
    AnalyseTest(0, TwoSamples, TwoSided, 1, {0, 1, 61, 62, 2, 4, 37}, {});
    TableYMin = 99999;
    TableYMax = -99999;
    EXPECT_EQ(SumStatement(), "");
    NewWindow(SimulationWindow);
    AnalyseTest(0, TwoSamples, TwoSided, 1, {0, 1, 61, 62, 2, 4, 37}, {});
    EXPECT_EQ(SumStatement(), "");
}

TEST_F(Statement, MonteCarloEstimatesHaveTwoForms) {
    EXPECT_EQ(SumMonteCI("0.7921   0.8000   0.8079", MonteCI::InTable),
              "0.8000, 95% CI [0.7921 ,0.8079], ");
    EXPECT_EQ(SumMonteCI("0.7921   0.8000   0.8079", MonteCI::InText),
              "0.8000 (95% CI  0.7921 to 0.8079) ");
    EXPECT_EQ(SumMonteCI("", MonteCI::InText), "");
    EXPECT_EQ(SumMonteCI("-", MonteCI::InTable), "-");
}

} // namespace
} // namespace quorvanta
