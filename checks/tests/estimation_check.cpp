// Tests of variances and of exponential parameters, and the precision of estimates: parameter
// lists, edge cases, limits of the search, messages, published examples.
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "core/values.h"
#include "numeric/probdist.h"
#include "support/analysis_fixture.h"
#include "support/tsv.h"
#include "support/validation.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/scalestatistic.h"

#include <cmath>
#include <sstream>

namespace quorvanta::checks {
namespace {

class Estimation : public AnalysisFixture {
  protected:
    // Opens an analysis, its options still open.
    void Open(i16 distrNo, i16 parListNo, i16 procedureNo, i16 samples = OneSample,
              i16 tails = TwoSided) {
        OpenDistribution(distrNo, parListNo, procedureNo);
        ChooseSamples(samples);
        ChooseTails(tails);
        ChooseLeftTail(false);
    }

    void Put(i16 kind, f64 value) {
        ASSERT_GE(PositionOf(kind), 0) << kind;
        ParText(kind) = std::to_string(value);
        ParValue(PositionOf(kind)) = value;
    }

    // The power at ParValue, which a target of 0 leaves alone.
    static f64 PowerNow() {
        ParValue(1) = 0;
        return SelRootFunction();
    }

    // Types the values and solves for the unknown: the value before it is rounded to be shown.
    f64 SolveWith(const std::map<i16, std::string>& values, i16 unknown) {
        for (const auto& [kind, text] : values)
            Type(kind, text);
        Calculated = False;
        return HasValue(Solve(unknown)) ? ParValue(PositionOf(unknown)) : NoValue;
    }
};

// --- Parameter lists --------------------------------------------------------------------------

std::vector<i16> Numbers(const std::string& text, char separator) {
    std::vector<i16> numbers;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, separator);)
        numbers.push_back(static_cast<i16>(std::stoi(word)));
    return numbers;
}

AnalysisChoice ChoiceOf(const std::vector<std::string>& row) {
    const std::vector<i16> analysis = Numbers(row[0], ' ');
    AnalysisChoice choice;
    choice.DistrNo = analysis[0];
    choice.ParListNo = analysis[1];
    choice.ProcedureNo = analysis[2];
    choice.NoOfSamples = static_cast<i16>(std::stoi(row[1]));
    choice.NoOfTails = static_cast<i16>(std::stoi(row[2]));
    choice.Checks = Numbers(row[3], ',');
    std::istringstream groups(row[4]);
    for (std::string group; std::getline(groups, group, ',');) {
        const std::vector<i16> option = Numbers(group, '=');
        choice.Groups[option[0]] = option[1];
    }
    return choice;
}

TEST_F(Estimation, TheParametersOfEachAnalysisInTheirOrder) {
    FileCommand(CalculationWindow);
    for (const auto& row : ReadTsv("parameter_lists.tsv")) {
        checks::SetUp(ChoiceOf(row));
        std::vector<i16> kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        EXPECT_EQ(kinds, Numbers(row[5], ' '))
            << row[0] << ", samples " << row[1] << ", tails " << row[2] << ", checks " << row[3]
            << ", groups " << row[4];
    }
}

TEST_F(Estimation, OneAndTwoSamplesWhereThereAreTwo) {
    const auto samplesOf = [this](i16 distrNo, i16 parListNo, i16 procedureNo) {
        OpenDistribution(distrNo, parListNo, procedureNo);
        std::vector<i16> samples;
        for (const i16 n : {OneSample, TwoSamples, MoreSamples})
            if (SamplesOffered(n))
                samples.push_back(n);
        return samples;
    };
    const std::vector<i16> one{OneSample};
    const std::vector<i16> both{OneSample, TwoSamples};
    for (const i16 procedure : {ProcedureTest, ProcedureEstimate, ProcedureInterval})
        for (const i16 distrNo : std::initializer_list<i16>{0, 1, 2, 4, 5, 6, 8, 10})
            for (std::size_t i = 0; i < DistrParList(distrNo).size(); ++i) {
                const bool single = distrNo == DistrFinitePopulation ||
                                    distrNo == DistrBivariateNormal ||
                                    (distrNo == DistrExponential && i == 0);
                EXPECT_EQ(samplesOf(distrNo, static_cast<i16>(i), procedure), single ? one : both)
                    << distrNo << " " << i << " " << procedure;
            }
}

TEST_F(Estimation, APointEstimateErrsInOneDirectionOrInBoth) {
    for (const i16 distrNo : std::initializer_list<i16>{0, 1, 2, 4, 5, 6, 8, 10}) {
        OpenDistribution(distrNo, 0, ProcedureTest);
        ChooseTails(TwoOneSided);
        ChooseProcedure(ProcedureEstimate);
        EXPECT_TRUE(TailsOffered(OneSided) && TailsOffered(TwoSided));
        EXPECT_FALSE(TailsOffered(TwoOneSided)) << "an estimate has no limits to lie between";
        EXPECT_EQ(NoOfTails, TwoSided);
        EXPECT_TRUE(TailsShown);
    }
}

TEST_F(Estimation, AnIntervalHasNoTailsToChooseFrom) {
    for (const i16 distrNo : std::initializer_list<i16>{0, 1, 2, 4, 5, 6, 8, 10}) {
        OpenDistribution(distrNo, 0, ProcedureTest);
        ChooseTails(OneSided);
        ChooseProcedure(ProcedureInterval);
        EXPECT_EQ(NoOfTails, TwoSided);
        EXPECT_FALSE(TailsOffered(OneSided) || TailsOffered(TwoOneSided));
        EXPECT_FALSE(TailsShown);
        EXPECT_EQ(CheckList(0), 36);
        EXPECT_EQ(CheckValue(Check::TwoSidedInterval), 1);
    }
}

TEST_F(Estimation, OnlyTheIntervalOfOneProportionHasExactLimits) {
    const auto offersExact = [this](i16 parListNo, i16 procedureNo, i16 samples) {
        Open(DistrBinomial, parListNo, procedureNo, samples);
        for (i16 i = 0; i < NoOfCheck; ++i)
            if (CheckList(i) == 7)
                return true;
        return false;
    };
    EXPECT_TRUE(offersExact(0, ProcedureInterval, OneSample));
    EXPECT_FALSE(offersExact(0, ProcedureInterval, TwoSamples));
    EXPECT_FALSE(offersExact(0, ProcedureEstimate, OneSample));
    EXPECT_FALSE(offersExact(1, ProcedureInterval, OneSample));
}

// --- Tests of scale parameters ----------------------------------------------------------------

TEST_F(Estimation, WithoutAnEffectTheTestOfAScaleKeepsItsLevel) {
    for (const i16 distrNo : {DistrNormal, DistrExponential})
        for (const i16 tails : {OneSided, TwoSided}) {
            Open(distrNo, distrNo == DistrNormal ? 3 : 2, ProcedureTest, OneSample, tails);
            AcceptOptions();
            Put(Kind::SignificanceLevel, 0.05);
            Put(distrNo == DistrNormal ? 110 : 142, 2);
            Put(distrNo == DistrNormal ? 111 : 124, 2);
            for (const f64 n : {5.0, 12.0, 40.0}) {
                Put(Kind::Size, n);
                // The quantile and the distribution function are approximated apart.
                EXPECT_NEAR(PowerNow(), 0.05, 0.002) << n;
                ParValue(1) = 0;
            }
        }
}

// The two chi-square routines, one after the other: what is left of the level is theirs to say.
TEST_F(Estimation, WithoutAnEffectAVarianceHasItsQuantileAndItsDistribution) {
    Open(DistrNormal, 3, ProcedureTest, OneSample, OneSided);
    AcceptOptions();
    Put(Kind::H0Sd, 2);
    Put(Kind::H1Sd, 2);
    for (const f32 level : {0.01F, 0.05F, 0.2F})
        for (const f32 n : {2.0F, 6.0F, 11.0F, 12.0F, 41.0F, 300.0F}) {
            Put(Kind::Size, f64{n});
            Put(Kind::SignificanceLevel, f64{level});
            ParValue(0) = f64{level};
            const f32 df = n - 1;
            LeftTail = True;
            EXPECT_NEAR(PowerNow(), f64{Chi2Cdf(Chi2Inv(level, df), df)}, 2e-6)
                << level << " " << n;
            LeftTail = False;
            EXPECT_NEAR(PowerNow(), 1 - f64{Chi2Cdf(Chi2Inv(1 - level, df), df)}, 2e-6)
                << level << " " << n;
        }
}

TEST_F(Estimation, AKnownMeanIsWorthOneObservation) {
    const auto power = [this](i16 parListNo, f64 n) {
        Open(DistrNormal, parListNo, ProcedureTest, OneSample, OneSided);
        AcceptOptions();
        Put(Kind::SignificanceLevel, 0.05);
        Put(Kind::H0Sd, 1);
        Put(Kind::H1Sd, 1.5);
        Put(Kind::Size, n);
        return PowerNow();
    };
    EXPECT_EQ(power(2, 19), power(3, 20));
    EXPECT_GT(power(2, 20), power(3, 20));
}

TEST_F(Estimation, ALocationAboveTheNullOneIsNeverSeenInTheLeftTail) {
    Open(DistrExponential, 0, ProcedureTest, OneSample, OneSided);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Location, 0);
    Put(Kind::Scale, 1);
    Put(Kind::Size, 10);
    LeftTail = True;
    Put(Kind::H1Location, 0.5); // the true location is larger than under H0: exp(-n d/s) is above 1
    EXPECT_EQ(PowerNow(), 0);
    LeftTail = False;
    Put(Kind::H1Location, 0.5);
    EXPECT_EQ(PowerNow(), 1) << "0.05 exp(5) is more than 1";
    Put(Kind::H1Location, 0.1);
    EXPECT_NEAR(PowerNow(), 0.05 * std::exp(1), 1e-6);
}

TEST_F(Estimation, AnExponentialScaleWithoutDegreesOfFreedom) {
    Open(DistrExponential, 2, ProcedureTest, OneSample, OneSided);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Scale, 1);
    Put(Kind::H1Scale, 1.2);
    Put(Kind::Size, 1);
    EXPECT_EQ(Chi2Cdf(5, 0), 1.0F);
    EXPECT_EQ(PowerNow(), 0) << "1 - P(X <= x) = 1 - 1 with 0 df";
    LeftTail = True;
    EXPECT_EQ(PowerNow(), 1);
    LeftTail = False;
}

// The numerator of F is the variance of sample 2: with unequal sizes the exchange of the two is
// seen. R: 1 - pf(qf(0.95, 59, 11) / 4, 59, 11) and 1 - pf(qf(0.95, 11, 59) / 4, 11, 59).
TEST_F(Estimation, TheSizesBelongToTheirSamples) {
    Open(DistrNormal, 3, ProcedureTest, TwoSamples, OneSided);
    Pick(Group::H1Sd2, 1);
    Pick(Group::Size2, 0);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Sd2Over1, 1);
    Put(Kind::H1Sd2Over1, 2);
    Put(Kind::Size1, 12);
    Put(Kind::Size2, 60);
    EXPECT_NEAR(PowerNow(), 0.8791074, 0.003);
    Put(Kind::Size1, 60);
    Put(Kind::Size2, 12);
    EXPECT_NEAR(PowerNow(), 0.9029151, 0.001);
}

TEST_F(Estimation, TwoDeviationsSayTheSameAsTheirRatio) {
    Open(DistrNormal, 3, ProcedureTest, TwoSamples, TwoSided);
    Pick(Group::H1Sd2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    const f64 byRatio = SolveWith({{Kind::Power, "0.9"},
                                   {Kind::H0Sd2Over1, "1.1"},
                                   {Kind::H1Sd2Over1, "1.6"},
                                   {Kind::Size2Over1, "1.5"}},
                                  Kind::Size1);
    Open(DistrNormal, 3, ProcedureTest, TwoSamples, TwoSided);
    Pick(Group::H1Sd2, 0);
    AcceptOptions();
    EXPECT_NEAR(SolveWith({{Kind::Power, "0.9"},
                           {Kind::H0Sd2Over1, "1.1"},
                           {Kind::H1Sd1, "2"},
                           {Kind::H1Sd2, "3.2"},
                           {Kind::Size2Over1, "1.5"}},
                          Kind::Size1),
                byRatio, 1e-4);
}

TEST_F(Estimation, EachFormOfAnH1DeviationSaysTheSame) {
    f64 size = 0;
    const char* entries[] = {"3", "1", "1.5"};
    for (const i16 form : std::initializer_list<i16>{0, 1, 2}) {
        Open(DistrNormal, 3, ProcedureTest, OneSample, TwoSided);
        Pick(Group::H1Sd, form);
        AcceptOptions();
        const i16 kind = static_cast<i16>(111 + form);
        const f64 solution =
            SolveWith({{Kind::Power, "0.9"}, {Kind::H0Sd, "2"}, {kind, entries[form]}}, Kind::Size);
        if (form == 0)
            size = solution;
        EXPECT_NEAR(solution, size, 1e-4);
    }
}

// --- Search limits ----------------------------------------------------------------------------

TEST_F(Estimation, AnEffectIsSoughtOnTheSideOfTheTail) {
    const auto solve = [this](i16 tails, bool left, i16 unknown) {
        Open(DistrNormal, 3, ProcedureTest, OneSample, tails);
        ChooseLeftTail(left);
        Pick(Group::H1Sd, 0);
        AcceptOptions();
        return SolveWith({{Kind::Power, "0.8"},
                          {Kind::H0Sd, "2"},
                          {Kind::H1Sd, left ? "1.5" : "2.5"},
                          {Kind::Size, "60"}},
                         unknown);
    };
    EXPECT_GT(solve(OneSided, false, 111), 2);
    EXPECT_GT(solve(TwoSided, false, 111), 2);
    EXPECT_LT(solve(OneSided, true, 111), 2);
    EXPECT_LT(solve(OneSided, false, 110), 2.5) << "mirrored for the H0 value";
    EXPECT_GT(solve(OneSided, true, 110), 1.5);
}

// A difference stays below 0 wherever the H0 value goes, so that no side of it is to be kept. The
// solution is that of the chi-square distribution by checks/reference/standard_deviation.py; the
// formula of its quantiles leaves 0.2 %.
TEST_F(Estimation, ANullValueIsFoundForADifferenceBelowIt) {
    Open(DistrNormal, 3, ProcedureTest, OneSample, TwoSided);
    Pick(Group::H1Sd, AsDifference);
    AcceptOptions();
    EXPECT_NEAR(SolveWith({{Kind::Power, "0.8"}, {Kind::H1SdMinusH0, "-0.3"}, {Kind::Size, "30"}},
                          Kind::H0Sd),
                0.9252782, 2e-3);
}

TEST_F(Estimation, AnEquivalentRatioIsSoughtFromTheMiddleUpwardOrDownward) {
    Open(DistrNormal, 3, ProcedureTest, TwoSamples, TwoOneSided);
    Pick(Group::H1Sd2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    const std::map<i16, std::string> values{{Kind::Power, "0.7"},
                                            {Kind::SdLeftLimit, "0.8"},
                                            {Kind::SdRightLimit, "1.25"},
                                            {Kind::Size1, "250"},
                                            {Kind::Size2Over1, "1"}};
    const f64 upper = SolveWith(values, Kind::H1Sd2Over1);
    EXPECT_GT(upper, 1);
    EXPECT_LT(upper, 1.25);
    LeftTail = True;
    const f64 lower = SolveWith(values, Kind::H1Sd2Over1);
    LeftTail = False;
    EXPECT_NEAR(lower * upper, 1, 1e-3) << "symmetric on the scale of logarithms";
}

TEST_F(Estimation, OfTwoProportionsTheSmallerIsFound) {
    Open(DistrBinomial, 0, ProcedureEstimate);
    AcceptOptions();
    const f64 p = SolveWith(
        {{Kind::ErrorLevel, "0.05"}, {Kind::AbsoluteError, "0.1"}, {Kind::Size, "60"}}, 102);
    EXPECT_LT(p, 0.5);
    Type(Kind::Proportion, std::to_string(1 - p));
    EXPECT_NEAR(ReadNumber(Solve(Kind::AbsoluteError)), 0.1, 1e-4)
        << "the other one has the same precision";
}

TEST_F(Estimation, TheOtherProportionIsFoundWhereTheSmallerDoesNotExist) {
    Open(DistrBinomial, 0, ProcedureEstimate, TwoSamples, OneSided);
    Pick(Group::Proportion2, 1);
    Pick(Group::Size2, 2);
    AcceptOptions();
    const f64 p1 = SolveWith({{Kind::ErrorLevel, "0.02"},
                              {Kind::UpperAbsoluteError, "0.146"},
                              {Kind::Proportion2Minus1, "0.614"},
                              {Kind::Size1, "66"},
                              {Kind::Size2Over1, "0.375"}},
                             Kind::Proportion1);
    EXPECT_NEAR(p1, 0.345, 0.01);
}

TEST_F(Estimation, ARateIsFoundOnEitherSideOfTheTurnOfItsPower) {
    Open(DistrPoisson, 1, ProcedureTest, TwoSamples, OneSided);
    Pick(Group::Rate2, 2);
    Pick(Group::StudyTime2, 2);
    AcceptOptions();
    const std::map<i16, std::string> values{{Kind::SignificanceLevel, "0.05"},
                                            {Kind::H0Rate2Minus1, "-0.3"},
                                            {Kind::H1Rate2Over1, "1.2"},
                                            {Kind::StudyTime1, "15"},
                                            {Kind::StudyTime2Over1, "1"}};
    std::map<i16, std::string> plan = values;
    plan[9] = "2.5";
    plan[1] = std::to_string(SolveWith(plan, 1));
    EXPECT_NEAR(SolveWith(plan, 9), 2.5, 0.01) << "above it, where the effect grows";
    EXPECT_LT(SolveWith(values, Kind::Power), 1);
}

TEST_F(Estimation, ThePositiveCorrelationIsFound) {
    Open(DistrBivariateNormal, 2, ProcedureInterval);
    AcceptOptions();
    const f64 r = SolveWith(
        {{Kind::ConfidenceLevel, "0.95"}, {Kind::IntervalWidth, "0.2"}, {Kind::SizeFrom4, "200"}},
        220);
    EXPECT_GT(r, 0);
    Type(Kind::Correlation, std::to_string(-r));
    EXPECT_NEAR(ReadNumber(Solve(Kind::IntervalWidth)), 0.2, 1e-4);
}

TEST(TurningPoints, OfAFunctionOfTheSecondDegree) {
    EXPECT_DOUBLE_EQ(TurningPoint([](f64 x) { return 3 * (x - 0.25) * (x - 0.25) - 7; }), 0.25);
    EXPECT_EQ(TurningPoint([](f64 x) { return 3 * x - 7; }), NoValue);
}

TEST(TurningPoints, TheSearchKeepsToTheSideWithAChangeOfSign) {
    UnknownParNo = 2;
    ParValue(2) = 42;
    // Zeros at 1 and 5, turning at 3.
    const auto residual = +[] { return (ParValue(2) - 1) * (ParValue(2) - 5); };
    f64 lower = 0;
    f64 upper = 10;
    KeepOneSide(lower, upper, 3, Side::Below, residual);
    EXPECT_EQ(lower, 0);
    EXPECT_EQ(upper, 3);
    upper = 10;
    KeepOneSide(lower, upper, 3, Side::Above, residual);
    EXPECT_EQ(lower, 3);
    EXPECT_EQ(upper, 10);
    lower = 2; // no zero between here and the turn
    KeepOneSide(lower, upper, 3, Side::Below, residual);
    EXPECT_EQ(lower, 3);
    EXPECT_EQ(upper, 10);
    lower = 4; // the turn is outside
    KeepOneSide(lower, upper, 3, Side::Below, residual);
    EXPECT_EQ(lower, 4);
    EXPECT_EQ(ParValue(2), 42);
}

TEST_F(Estimation, TheSearchForASizeStartsWhereThePowerRises) {
    ParKind(2) = 85;
    UnknownParNo = 2;
    ParValue(2) = 42;
    const auto start = [](f64 (*residual)(), f64 upper) {
        f64 lower = 3;
        StartWherePowerRises(lower, upper, residual);
        return lower;
    };
    static f64 asked = 0;
    const auto valley = [] { return std::fabs(ParValue(2) - 6) / 10 - asked; };
    asked = 0.2;
    EXPECT_EQ(start(valley, 100), 5) << "0.3, 0.2 and 0.1: the first that is too small";
    asked = 0.05;
    EXPECT_EQ(start(valley, 100), 6);
    asked = 0.4;
    EXPECT_EQ(start(valley, 100), 3) << "the least size is too small";
    asked = 0.2;
    EXPECT_EQ(start(valley, 7), 3) << "so is the largest";
    asked = -0.1;
    EXPECT_EQ(start(valley, 100), 3) << "every size is large enough";
    EXPECT_EQ(ParValue(2), 42);
}

TEST_F(Estimation, ASizeIsFoundThoughTheLeastOneSeemsToHaveMorePower) {
    Open(DistrNormal, 1, ProcedureTest, OneSample, TwoSided);
    Pick(Group::H1Mean, 0);
    AcceptOptions();
    platform.Messages.clear();
    // The powers of 3 to 5 subjects are 0.107, 0.101 and 0.139.
    const std::map<i16, std::string> values{{Kind::SignificanceLevel, "0.01"},
                                            {Kind::H0Mean, "0"},
                                            {Kind::H1Mean, "1"},
                                            {Kind::Sd, "1"}};
    std::map<i16, std::string> with = values;
    with[Kind::Power] = "0.105";
    const f64 size = SolveWith(with, 85);
    EXPECT_GT(size, 4);
    EXPECT_LT(size, 5);
    EXPECT_TRUE(platform.Messages.empty());
}

// --- Messages ---------------------------------------------------------------------------------

TEST_F(Estimation, ASampleIsAtMostItsPopulation) {
    Open(DistrHypergeometric, 0, ProcedureEstimate);
    AcceptOptions();
    platform.Messages.clear();
    EXPECT_EQ(SolveWith({{Kind::AbsoluteError, "0.1"},
                         {Kind::Proportion, "0.3"},
                         {Kind::Population, "100"},
                         {Kind::Size, "101"}},
                        Kind::AbsoluteError),
              NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{"Sample Size Has To Be Less Than or Equal to 100."});
    EXPECT_LT(SolveWith({{Kind::AbsoluteError, "0.02"}, {Kind::Size, "50"}}, Kind::Size), 100);
    EXPECT_GE(SolveWith({{Kind::AbsoluteError, "0.05"}, {Kind::Size, "90"}}, Kind::Population), 90);
}

TEST_F(Estimation, ASecondSampleIsAtMostItsPopulation) {
    Open(DistrHypergeometric, 0, ProcedureEstimate, TwoSamples);
    Pick(Group::Proportion2, 0);
    Pick(Group::Population2, 0);
    Pick(Group::Size2, 2);
    AcceptOptions();
    platform.Messages.clear();
    EXPECT_EQ(SolveWith({{Kind::Proportion1, "0.3"},
                         {Kind::Proportion2, "0.4"},
                         {Kind::Population1, "200"},
                         {Kind::Population2, "90"},
                         {Kind::Size1, "50"},
                         {Kind::Size2Over1, "2"}},
                        Kind::AbsoluteError),
              NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "Sample Size 2 / Sample Size 1 Has To Be Less Than or Equal to 1.8."});
}

// While one population is the unknown the other one is as small as it is.
TEST_F(Estimation, ASampleIsAtMostItsPopulationWhicheverIsTheUnknown) {
    const std::map<i16, std::string> values{
        {Kind::AbsoluteError, "0.1"}, {Kind::Proportion1, "0.3"}, {Kind::Proportion2, "0.4"},
        {Kind::Population1, "50"},    {Kind::Population2, "200"}, {Kind::Size1, "60"},
        {Kind::Size2, "60"}};
    const auto says = [&](i16 unknown, std::map<i16, std::string> changed,
                          const std::string& message) {
        Open(DistrHypergeometric, 0, ProcedureEstimate, TwoSamples);
        Pick(Group::Proportion2, 0);
        Pick(Group::Population2, 0);
        Pick(Group::Size2, 0);
        AcceptOptions();
        platform.Messages.clear();
        changed.insert(values.begin(), values.end());
        EXPECT_EQ(SolveWith(changed, unknown), NoValue);
        EXPECT_EQ(platform.Texts(), std::vector<std::string>{message});
    };
    const std::string first = "Sample Size 1 Has To Be Less Than or Equal to 50.";
    const std::string second = "Sample Size 2 Has To Be Less Than or Equal to 50.";
    says(18, {}, first);
    says(197, {}, first);
    says(37, {}, first);
    says(18, {{Kind::Population1, "200"}, {Kind::Population2, "50"}}, second);
    says(196, {{Kind::Population1, "200"}, {Kind::Population2, "50"}}, second);
    says(4, {{Kind::Population1, "200"}, {Kind::Population2, "50"}}, second);
}

TEST_F(Estimation, ASecondPopulationOfNobodyIsRefused) {
    Open(DistrHypergeometric, 0, ProcedureEstimate, TwoSamples);
    Pick(Group::Population2, AsDifference);
    Pick(Group::Size2, AsValue);
    AcceptOptions();
    platform.Messages.clear();
    EXPECT_EQ(SolveWith({{Kind::Population1, "400"},
                         {Kind::Population2Minus1, "-400"},
                         {Kind::Size1, "50"},
                         {Kind::Size2, "50"}},
                        Kind::AbsoluteError),
              NoValue);
    ASSERT_EQ(platform.Messages.size(), 1U);
    EXPECT_TRUE(platform.Messages[0].Text.starts_with("Popul. Size 2 - Popul. Size 1 Has To Be "))
        << platform.Messages[0].Text;
}

TEST_F(Estimation, ASoughtSecondSampleIsAtMostItsPopulation) {
    Open(DistrHypergeometric, 0, ProcedureEstimate, TwoSamples);
    Pick(Group::Proportion2, AsValue);
    Pick(Group::Population2, AsValue);
    Pick(Group::Size2, AsValue);
    AcceptOptions();
    Put(Kind::Population1, 200);
    Put(Kind::Population2, 90);
    Put(Kind::Size1, 50);
    UnknownParNo = PositionOf(Kind::Size2);
    f64 lower = ParMin(Kind::Size2);
    f64 upper = ParMax(Kind::Size2);
    SelSearchLimits(lower, upper);
    EXPECT_EQ(upper, 90);
    UnknownParNo = PositionOf(Kind::Population2);
    Put(Kind::Size2, 120);
    lower = ParMin(Kind::Population2);
    upper = ParMax(Kind::Population2);
    SelSearchLimits(lower, upper);
    EXPECT_EQ(lower, 120);
    UnknownParNo = PositionOf(Kind::Population1);
    lower = ParMin(Kind::Population1);
    upper = ParMax(Kind::Population1);
    SelSearchLimits(lower, upper);
    EXPECT_EQ(lower, 50);
}

// Nor does a population that is sought limit its sample by what its box held before.
TEST_F(Estimation, ASoughtPopulationIsAtLeastItsSample) {
    for (const bool first : {true, false})
        for (const i16 form : {AsValue, AsDifference, AsRatio}) {
            Open(DistrHypergeometric, 0, ProcedureEstimate, TwoSamples);
            Pick(Group::Proportion2, AsValue);
            Pick(Group::Population2, form);
            Pick(Group::Size2, AsValue);
            AcceptOptions();
            platform.Messages.clear();
            const i16 second = std::array{Kind::Population2, Kind::Population2Minus1,
                                          Kind::Population2Over1}[static_cast<std::size_t>(form)];
            std::map<i16, std::string> values{
                {Kind::AbsoluteError, "0.1"},  {Kind::Proportion1, "0.3"},
                {Kind::Proportion2, "0.4"},    {Kind::Population1, "400"},
                {Kind::Population2, "400"},    {Kind::Population2Minus1, "0"},
                {Kind::Population2Over1, "1"}, {Kind::Size1, "120"},
                {Kind::Size2, "120"}};
            std::erase_if(values, [](const auto& value) { return PositionOf(value.first) < 0; });
            const i16 unknown = first ? Kind::Population1 : second;
            values[unknown] = first || form == AsValue ? "10" : "0.001";
            const f64 found = SolveWith(values, unknown);
            ASSERT_NE(found, NoValue) << first << " " << form;
            const f64 population = first || form == AsValue
                                       ? found
                                       : (form == AsDifference ? 400 + found : 400 * found);
            EXPECT_GE(population, 120 - 1e-4) << first << " " << form;
            EXPECT_TRUE(platform.Messages.empty());
        }
}

TEST_F(Estimation, ANegativeH1DeviationIsRefused) {
    Open(DistrNormal, 3, ProcedureTest, OneSample, OneSided);
    Pick(Group::H1Sd, 1);
    AcceptOptions();
    platform.Messages.clear();
    EXPECT_EQ(SolveWith({{Kind::H0Sd, "1"}, {Kind::H1SdMinusH0, "-1"}}, Kind::Power), NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "H1: Std.Dev. -  H0: Std.Dev. Has To Be Greater Than or Equal to -0.99999."});
}

TEST_F(Estimation, LimitsInTheWrongOrderAreRefused) {
    Open(DistrExponential, 1, ProcedureTest, OneSample, TwoOneSided);
    AcceptOptions();
    platform.Messages.clear();
    EXPECT_EQ(
        SolveWith({{Kind::ScaleLeftLimit, "1.5"}, {Kind::ScaleRightLimit, "1.2"}}, Kind::Power),
        NoValue);
    EXPECT_EQ(platform.Texts(),
              std::vector<std::string>{
                  "H0: Left Equivalence Limit Has To Be Less Than or Equal to 1.2."});
}

// --- Precision --------------------------------------------------------------------------------

TEST_F(Estimation, TheErrorOfAMeanIsTheNormalQuantileTimesItsStandardError) {
    Open(DistrNormal, 0, ProcedureEstimate);
    AcceptOptions();
    // NorInv(0.975) is 1.9603955 where 1.959964 is exact.
    EXPECT_NEAR(SolveWith({{Kind::ErrorLevel, "0.05"}, {Kind::Sd, "10"}, {Kind::Size, "100"}},
                          Kind::AbsoluteError),
                1.9603955, 1e-6);
    EXPECT_EQ(ParText(Kind::AbsoluteError), "1.9604");
}

TEST_F(Estimation, WithTheBoxClearedAnIntervalHasOneLimit) {
    Open(DistrNormal, 0, ProcedureInterval);
    AcceptOptions();
    const f64 two =
        SolveWith({{Kind::ConfidenceLevel, "0.95"}, {Kind::Sd, "10"}, {Kind::Size, "100"}},
                  Kind::IntervalWidth);
    EXPECT_NEAR(two, 2 * static_cast<f64>(NorInv(0.975F)), 1e-5);
    Open(DistrNormal, 0, ProcedureInterval);
    Tick(Check::TwoSidedInterval, false);
    AcceptOptions();
    const f64 one =
        SolveWith({{Kind::ConfidenceLevel, "0.95"}, {Kind::Sd, "10"}, {Kind::Size, "100"}},
                  Kind::IntervalWidth);
    EXPECT_NEAR(one, static_cast<f64>(NorInv(0.95F)), 1e-5);
    EXPECT_EQ(ParListName,
              "Conf. Interval for mean (std.dev. known) Normal Distribution, one-sided.");
}

TEST_F(Estimation, AWidthFarAboveTheExpectedOneIsCertain) {
    Open(DistrNormal, 1, ProcedureInterval);
    AcceptOptions();
    EXPECT_EQ(SolveWith({{Kind::ConfidenceLevel, "0.95"},
                         {Kind::IntervalWidth, "5"},
                         {Kind::Sd, "1"},
                         {Kind::Size, "50"}},
                        Kind::WidthProbability),
              1);
    EXPECT_EQ(ParText(Kind::WidthProbability), "1");
    EXPECT_EQ(SolveWith({{Kind::IntervalWidth, "0.01"}}, Kind::WidthProbability), 0)
        << "and one far below never happens";
}

TEST_F(Estimation, EnteredDegreesOfFreedomReplaceThoseOfTheSample) {
    const auto error = [this](i16 check, i16 kind, const std::string& text) {
        Open(DistrNormal, 1, ProcedureEstimate);
        if (check >= 0)
            Tick(check);
        AcceptOptions();
        std::map<i16, std::string> values{
            {Kind::ErrorLevel, "0.05"}, {Kind::Sd, "1"}, {Kind::Size, "10"}};
        if (kind >= 0)
            values[kind] = text;
        return SolveWith(values, Kind::AbsoluteError);
    };
    const f64 own = error(-1, -1, "");
    // R: qt(0.975, 9) / sqrt(10), qt(0.975, 36) / sqrt(10)
    EXPECT_NEAR(own, 0.7153569, 0.0003);
    EXPECT_NEAR(error(0, 36, "9"), own, 1e-6);
    EXPECT_NEAR(error(5, 17, "4"), 0.6413396, 0.0003) << "4 groups of 10 have 36 df";
}

TEST_F(Estimation, TheShapeOfALognormalNeedNotBeKnownForItsMedian) {
    f64 errors[2];
    for (const i16 parListNo : std::initializer_list<i16>{0, 1}) {
        Open(DistrLognormal, parListNo, ProcedureEstimate);
        AcceptOptions();
        errors[parListNo] =
            SolveWith({{Kind::ErrorLevel, "0.05"}, {Kind::Shape, "0.5"}, {Kind::Size, "40"}},
                      Kind::RelativeError);
    }
    EXPECT_EQ(errors[0], errors[1]);
}

TEST_F(Estimation, ExactLimitsOfAProportion) {
    Open(DistrBinomial, 0, ProcedureInterval);
    Tick(Check::Exact);
    AcceptOptions();
    // C. J. Clopper and E. S. Pearson: 10 of 20 have the limits 0.2719578 and 0.7280422 (R:
    // binom.test(10, 20)); 0 of 20 the limits 0 and 0.1684335.
    EXPECT_NEAR(
        SolveWith({{Kind::ConfidenceLevel, "0.95"}, {Kind::Proportion, "0.5"}, {Kind::Size, "20"}},
                  Kind::IntervalWidth),
        0.4560844, 1e-5);
    EXPECT_NEAR(SolveWith({{Kind::Proportion, "0.00001"}}, Kind::IntervalWidth), 0.1684335, 1e-4);
}

TEST_F(Estimation, AboveAThousandTheLimitsOfAProportionAreNormal) {
    const auto width = [this](bool exact, const std::string& n) {
        Open(DistrBinomial, 0, ProcedureInterval);
        Tick(Check::Exact, exact);
        AcceptOptions();
        return SolveWith({{Kind::ConfidenceLevel, "0.95"}, {Kind::Proportion, "0.3"}, {85, n}},
                         Kind::IntervalWidth);
    };
    EXPECT_GT(width(true, "1000"), width(false, "1000") + 0.0005);
    EXPECT_EQ(width(true, "1001"), width(false, "1001"));
    EXPECT_TRUE(platform.Messages.empty());
}

TEST_F(Estimation, ACensusHasNoError) {
    Open(DistrFinitePopulation, 0, ProcedureTest, OneSample, OneSided);
    ChooseLeftTail(true);
    Pick(Group::H1Mean, 0);
    AcceptOptions();
    EXPECT_EQ(SolveWith({{Kind::SignificanceLevel, "0.05"},
                         {Kind::H0Mean, "0"},
                         {Kind::H1Mean, "-0.1"},
                         {Kind::Sd, "1"},
                         {Kind::Population, "50"},
                         {Kind::Size, "50"}},
                        Kind::Power),
              1);
    Open(DistrFinitePopulation, 0, ProcedureEstimate);
    AcceptOptions();
    Put(Kind::ErrorLevel, 0.05);
    Put(Kind::Sd, 1);
    Put(Kind::Population, 50);
    Put(Kind::Size, 50);
    ParValue(1) = 0;
    EXPECT_EQ(SelRootFunction(), 0);
}

TEST_F(Estimation, AnEstimateOfACorrelationLeavesNoRoomAboveOne) {
    Open(DistrBivariateNormal, 2, ProcedureEstimate, OneSample, OneSided);
    AcceptOptions();
    Put(Kind::ErrorLevel, 0.05);
    Put(Kind::Correlation, 0.95);
    Put(Kind::SizeFrom4, 10);
    Put(Kind::UpperAbsoluteError, 0.06);
    EXPECT_NEAR(SelRootFunction(), 0.05, 1e-6) << "1 - (1 - level)";
}

// The quantile of chi-square climbs in steps over broken degrees of freedom; a size is found all
// the same, and power grows with it.
TEST_F(Estimation, ThePowerOfAFewSubjectsGrowsWithoutSteps) {
    Open(DistrNormal, 3, ProcedureTest, OneSample, OneSided);
    Pick(Group::H1Sd, 0);
    AcceptOptions();
    Put(Kind::SignificanceLevel, 0.05);
    Put(Kind::H0Sd, 1);
    Put(Kind::H1Sd, 3);
    f64 former = 0;
    for (f64 n = 3; n <= 11; n += 0.125) {
        Put(Kind::Size, n);
        const f64 power = PowerNow();
        EXPECT_GT(power, former) << n;
        former = power;
    }
}

TEST(ScaleStatistics, QuantileAndDistributionFunction) {
    ScaleStatistic chi2(9);
    EXPECT_NEAR(chi2.Quantile(0.95), 16.918978, 0.002); // R: qchisq(0.95, 9)
    EXPECT_NEAR(chi2.Cdf(16.918978), 0.95, 0.001);
    EXPECT_EQ(chi2.AtTruth(), 9);
    EXPECT_EQ(chi2.Cdf(1e300), 1) << "what 32 bits can't hold";
    ScaleStatistic f(8, 12);
    EXPECT_NEAR(f.Quantile(0.95), 2.848565, 0.001); // R: qf(0.95, 8, 12)
    EXPECT_NEAR(f.Cdf(2.848565), 0.95, 2e-4);
    EXPECT_EQ(f.AtTruth(), 1);
    ScaleStatistic broken(4.5F);
    EXPECT_NEAR(broken.Quantile(0.95), (9.487729 + 11.0705) / 2, 0.002);
}

// Where one df is small the quantile cuts the other one at 999, and the distribution function that
// follows takes it from there.
TEST(ScaleStatistics, TheDfThatTheQuantileCutsCountForTheProbability) {
    ScaleStatistic many(50000, 4);
    ScaleStatistic cut(999, 4);
    const f64 before = many.Cdf(2);
    ASSERT_NE(before, cut.Cdf(2));
    EXPECT_EQ(many.Quantile(0.9), cut.Quantile(0.9));
    EXPECT_EQ(many.Cdf(2), cut.Cdf(2));
}

TEST(FisherZ, IsCutAtTheEdges) {
    EXPECT_DOUBLE_EQ(FisherZ(0), 0);
    EXPECT_NEAR(FisherZ(0.5), 0.5493061, 1e-7);
    EXPECT_EQ(FisherZ(1), FisherZ(0.99999));
    EXPECT_EQ(FisherZ(-2), FisherZ(-0.99999));
}

// --- Published examples -----------------------------------------------------------------------

struct Published {
    const char* Source;
    const char* Analysis;
    i16 Samples;
    i16 Tails;
    bool Left;
    std::vector<i16> Checks;
    std::map<i16, i16> Groups;
    std::map<i16, std::string> Values;
    i16 Unknown;
    f64 Size; // rounded up
};

// B. Epstein and M. Sobel, Journal of the American Statistical Association 48, 1953: failures until
// a life test with both risks 0.05 tells the mean life from a smaller one.
Published LifeTest(const char* shorterLife, f64 failures) {
    return {"Epstein and Sobel",
            "2 1 0",
            OneSample,
            OneSided,
            true,
            {},
            {{15, 0}},
            {{Kind::SignificanceLevel, "0.05"},
             {Kind::Power, "0.95"},
             {Kind::H0Scale, "1"},
             {124, shorterLife}},
            85,
            failures};
}

// D. G. Bonett and T. A. Wright, Psychometrika 65, 2000: 95% intervals of a correlation.
Published CorrelationWidth(const char* correlation, const char* width, f64 pairs) {
    return {"Bonett and Wright",
            "10 2 2",
            OneSample,
            TwoSided,
            false,
            {36},
            {},
            {{Kind::ConfidenceLevel, "0.95"}, {100, width}, {220, correlation}},
            14,
            pairs};
}

std::vector<Published> PublishedExamples() {
    return {
        LifeTest("0.66667", 67),
        LifeTest("0.5", 23),
        LifeTest("0.33333", 10),
        LifeTest("0.2", 5),
        CorrelationWidth("0.1", "0.1", 1507),
        CorrelationWidth("0.3", "0.1", 1274),
        CorrelationWidth("0.4", "0.1", 1086),
        CorrelationWidth("0.5", "0.1", 867),
        CorrelationWidth("0.6", "0.1", 633),
        CorrelationWidth("0.7", "0.1", 404),
        CorrelationWidth("0.8", "0.1", 205),
        CorrelationWidth("0.1", "0.2", 378),
        CorrelationWidth("0.3", "0.2", 320),
        CorrelationWidth("0.5", "0.2", 219),
        CorrelationWidth("0.7", "0.3", 49),
        {"D. C. Montgomery and G. C. Runger, Applied Statistics and Probability for Engineers, 3rd "
         "edition, 2003, example 8-2",
         "0 0 2",
         OneSample,
         TwoSided,
         false,
         {36},
         {},
         {{Kind::ConfidenceLevel, "0.95"}, {Kind::IntervalWidth, "1"}, {Kind::Sd, "1"}},
         85,
         16},
        {"W. G. Cochran, Sampling Techniques, 3rd edition, 1977, section 4.4: a proportion on an "
         "island of 3200, two standard errors",
         "8 1 1",
         OneSample,
         TwoSided,
         false,
         {},
         {},
         {{Kind::ErrorLevel, "0.0455"},
          {Kind::AbsoluteError, "0.05"},
          {Kind::Proportion, "0.5"},
          {Kind::Population, "3200"}},
         85,
         356},
        {"S. Lemeshow et al., Adequacy of Sample Size in Health Studies, 1990, example 1.1: a "
         "prevalence of 0.20 within 0.05",
         "4 0 1",
         OneSample,
         TwoSided,
         false,
         {},
         {},
         {{Kind::ErrorLevel, "0.05"}, {Kind::AbsoluteError, "0.05"}, {Kind::Proportion, "0.2"}},
         85,
         246},
        {"S. B. Hulley et al., Designing Clinical Research, 4th edition, 2013, appendix 6C: a "
         "correlation of 0.30",
         "10 2 0",
         OneSample,
         TwoSided,
         false,
         {},
         {{23, 0}},
         {{Kind::SignificanceLevel, "0.05"},
          {Kind::Power, "0.8"},
          {Kind::H0Correlation, "0"},
          {Kind::H1Correlation, "0.3"}},
         14,
         85},
        {"S. B. Hulley et al., the same table: a correlation of 0.40",
         "10 2 0",
         OneSample,
         TwoSided,
         false,
         {},
         {{23, 0}},
         {{Kind::SignificanceLevel, "0.05"},
          {Kind::Power, "0.8"},
          {Kind::H0Correlation, "0"},
          {Kind::H1Correlation, "0.4"}},
         14,
         47},
    };
}

TEST_F(Estimation, PublishedExamples) {
    FileCommand(CalculationWindow);
    for (const Published& example : PublishedExamples()) {
        const std::vector<i16> analysis = Numbers(example.Analysis, ' ');
        ValidationCase plan;
        plan.DistrNo = analysis[0];
        plan.ParListNo = analysis[1];
        plan.ProcedureNo = analysis[2];
        plan.NoOfSamples = example.Samples;
        plan.NoOfTails = example.Tails;
        plan.Left = example.Left;
        plan.Checks = example.Checks;
        plan.Groups = example.Groups;
        plan.Values = example.Values;
        plan.UnknownKind = example.Unknown;
        const f64 size = SolveCase(plan);
        // The quantile of the normal distribution is off by 4.5e-4, a size that is proportional to
        // its square by 5e-4 of itself; that may be just enough for one more.
        EXPECT_LE(size, example.Size + 5e-4 * example.Size) << example.Source;
        EXPECT_GT(size, example.Size - 1) << example.Source;
    }
}

} // namespace
} // namespace quorvanta::checks
