// The tests of slopes and correlations, of multiple, logistic and Poisson regression, and of
// two-way crossover designs: edge cases, parameter lists, refused values.
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/options.h"
#include "output/statement.h"
#include "support/analysis_fixture.h"

#include <cmath>
#include <initializer_list>
#include <map>

namespace quorvanta::checks {
namespace {

// What the approximations of the normal, t and F quantiles may cost a power.
constexpr f64 quantileError = 0.0005;

constexpr i16 Simple = 170;
constexpr i16 Multiple = 171;
constexpr i16 LogisticContinuous = 180;
constexpr i16 LogisticBinary = 181;
constexpr i16 PoissonContinuous = 190;
constexpr i16 PoissonBinary = 191;
constexpr i16 Pearson = 210;
constexpr i16 Additive = 230;
constexpr i16 Multiplicative = 231;
constexpr i16 Bioequivalence = 810;

// Options of the groups that are not forms of a quantity.
constexpr i16 AsProbability = 0;
constexpr i16 AsOddsRatio = 1;
constexpr i16 AsRate = 0;
constexpr i16 AsRateRatio = 1;
constexpr i16 ConstantRates = 0;
constexpr i16 GammaRates = 1;

using Texts = std::map<i16, std::string>;

class Regression : public AnalysisFixture {
  protected:
    // Opens a test with these tails and options, all boxes cleared but these.
    void Choose(i16 menuNo, i16 tails, const std::map<i16, i16>& groups = {},
                std::initializer_list<i16> ticked = {}, i16 samples = OneSample) {
        OpenTest(menuNo);
        if (SamplesOffered(samples))
            ChooseSamples(samples);
        if (TailsOffered(tails))
            ChooseTails(tails);
        ChooseLeftTail(false);
        for (i16 i = 0; i < NoOfCheck; ++i)
            ChooseCheck(i, false);
        for (const i16 kind : ticked)
            Tick(kind);
        for (const auto& [group, option] : groups)
            Pick(group, option);
        AcceptOptions();
        platform.Messages.clear();
    }

    void TypeAll(const Texts& texts) {
        for (const auto& [kind, text] : texts)
            Type(kind, text);
    }

    // The power at these values, unrounded.
    f64 PowerAt(const Texts& texts) {
        TypeAll(texts);
        Calculated = False;
        Solve(Kind::Power);
        EXPECT_EQ(platform.Texts(), std::vector<std::string>());
        return ParValue(PowerParNo);
    }

    // Solves for a kind; the message that comes instead.
    std::string Refusal(const Texts& texts, i16 unknownKind) {
        TypeAll(texts);
        platform.Messages.clear();
        Calculated = False;
        EXPECT_EQ(Solve(unknownKind), "-");
        return platform.Messages.empty() ? "" : platform.Messages.front().Text;
    }

    f64 Solution(const Texts& texts, i16 unknownKind) {
        TypeAll(texts);
        Calculated = False;
        Solve(unknownKind);
        return ParValue(UnknownParNo);
    }

    static std::vector<i16> Kinds() {
        std::vector<i16> kinds;
        for (i16 i = 0; i <= NoOfPar; ++i)
            kinds.push_back(ParKind(i));
        return kinds;
    }
};

using List = std::vector<i16>;

// Between two limits each power below the highest belongs to two correlations; the first one is
// sought where the second is larger in relation to it, or with the box for the left tail where it
// is smaller.
TEST_F(Regression, TheFirstOfTwoCorrelationsIsSoughtOnItsSideOfThePeak) {
    for (const bool isLeft : {false, true}) {
        Choose(Pearson, TwoOneSided, {{Group::Correlation2, AsValue}, {Group::Size2, AsRatio}}, {},
               TwoSamples);
        LeftTail = isLeft ? True : False;
        const f64 power = PowerAt({{Kind::CorrelationLeftLimit, "-0.3"},
                                   {Kind::CorrelationRightLimit, "0.3"},
                                   {Kind::H1Correlation1, "0.45"},
                                   {Kind::H1Correlation2, "0.5"},
                                   {Kind::Size1From4, "150"},
                                   {Kind::Size2Over1, "1"}});
        const std::string first = Solve(Kind::H1Correlation1);
        if (isLeft)
            EXPECT_GT(ReadNumber(first), 0.46);
        else
            EXPECT_NEAR(ReadNumber(first), 0.45, 1e-4);
        EXPECT_NEAR(PowerAt({{Kind::H1Correlation1, first}}), power, 1e-4);
    }
    LeftTail = False;
}

// --- Simple regression ------------------------------------------------------------------------

TEST_F(Regression, ListsOfSlopes) {
    Choose(Simple, TwoSided, {{Group::H1Slope, AsRatio}});
    EXPECT_EQ(Kinds(), (List{0, 1, 203, 206, 212, 213, 85}));
    Choose(Simple, TwoOneSided);
    EXPECT_EQ(Kinds(), (List{0, 1, 6, 7, 204, 212, 213, 85}));
    Choose(Simple, OneSided,
           {{Group::Slope2, AsDifference}, {Group::Sd2, AsRatio}, {Group::Size2, AsDifference}}, {},
           TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 207, 210, 212, 214, 222, 4, 38}));
    Choose(Simple, TwoSided,
           {{Group::Slope2, AsRatio}, {Group::Sd2, AsDifference}, {Group::Size2, AsValue}}, {},
           TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 207, 208, 211, 212, 214, 221, 4, 37}));
    Choose(Simple, TwoOneSided,
           {{Group::Slope2, AsValue}, {Group::Sd2, AsValue}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 6, 7, 208, 209, 212, 214, 215, 4, 5}));
}

TEST_F(Regression, EachFormOfTwoSlopesSaysTheSame) {
    const auto power = [this](i16 form, const Texts& slopes) {
        Choose(Simple, TwoSided,
               {{Group::Slope2, form}, {Group::Sd2, AsValue}, {Group::Size2, AsRatio}}, {},
               TwoSamples);
        Texts texts = slopes;
        texts.merge(Texts{{Kind::H0Slope2Minus1, "0.25"},
                          {Kind::ResidualSd, "1"},
                          {Kind::CovariateSd1, "1"},
                          {Kind::CovariateSd2, "0.75"},
                          {Kind::Size1, "40"},
                          {Kind::Size2Over1, "1.5"}});
        return PowerAt(texts);
    };
    const f64 byDifference = power(AsDifference, {{Kind::H1Slope2Minus1, "1"}});
    EXPECT_EQ(power(AsValue, {{Kind::H1Slope1, "0.5"}, {Kind::H1Slope2, "1.5"}}), byDifference);
    EXPECT_EQ(power(AsRatio, {{Kind::H1Slope1, "0.5"}, {Kind::H1Slope2Over1, "3"}}), byDifference);
}

// One sample has the same power as the test of the regression of two normal variables.
TEST_F(Regression, WithoutASlopeThePowerIsTheLevel) {
    Choose(Simple, TwoSided, {{Group::H1Slope, AsValue}});
    const Texts values{{Kind::H0Slope, "0.4"},
                       {Kind::H1Slope, "0.4"},
                       {Kind::ResidualSd, "1"},
                       {Kind::CovariateSd, "1"},
                       {Kind::Size, "50"}};
    EXPECT_NEAR(PowerAt(values), 0.05, quantileError);
    Choose(Simple, OneSided, {{Group::H1Slope, AsValue}});
    EXPECT_NEAR(PowerAt(values), 0.05, quantileError);
}

// A search, or a value that no catalogue checks, may go below three subjects in a sample.
TEST_F(Regression, TwoSlopesHaveAResidualDegreeOfFreedomAtAnySize) {
    Choose(Simple, TwoSided,
           {{Group::Slope2, AsDifference}, {Group::Sd2, AsRatio}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    PowerAt({{Kind::Size1, "3"}, {Kind::Size2Over1, "1"}});
    ParValue(PowerParNo) = 0;
    const f64 atThree = SelRootFunction();
    EXPECT_TRUE(std::isfinite(atThree));
    ParValue(PositionOf(Kind::Size1)) = 1;
    EXPECT_EQ(SelRootFunction(), atThree);
}

// A slope in n subjects has n - 2 degrees of freedom: with as many, and the same standard error, it
// has the power of two slopes with n1 + n2 - 4, and of a two-way design's models.
TEST_F(Regression, DegreesOfFreedomOfTwoSlopesAndOfTwoWayDesigns) {
    const auto ofOneSlope = [this](f64 se, int df) {
        Choose(Simple, TwoSided, {{Group::H1Slope, AsValue}});
        return PowerAt({{Kind::H0Slope, "0"},
                        {Kind::H1Slope, "1"},
                        {Kind::ResidualSd, std::to_string(se * std::sqrt(df + 2.0))},
                        {Kind::CovariateSd, "1"},
                        {Kind::Size, std::to_string(df + 2)}});
    };
    Choose(Simple, TwoSided,
           {{Group::Slope2, AsDifference}, {Group::Sd2, AsRatio}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    const f64 ofTwo = PowerAt({{Kind::H0Slope2Minus1, "0"},
                               {Kind::H1Slope2Minus1, "1"},
                               {Kind::ResidualSd, "0.5"},
                               {Kind::CovariateSd1, "1"},
                               {Kind::CovariateSd2Over1, "1"},
                               {Kind::Size1, "5"},
                               {Kind::Size2Over1, "1"}});
    constexpr f64 typed = 1e-5;
    EXPECT_NEAR(ofTwo, ofOneSlope(0.5 * std::sqrt(0.4), 6), typed);
    const auto ofDesign = [this](i16 model) {
        Choose(Additive, TwoSided,
               {{Group::Mean2, AsDifference},
                {Group::Parameterization, model},
                {Group::SequenceSize2, AsRatio}});
        return PowerAt({{Kind::H0Mean2Minus1, "0"},
                        {Kind::H1Mean2Minus1, "1"},
                        {Kind::Sd, "0.6"},
                        {Kind::SequenceSize1, "4"},
                        {Kind::SequenceSize2Over1, "1"}});
    };
    EXPECT_NEAR(ofDesign(0), ofOneSlope(0.6 * std::sqrt(0.5), 13), typed);
    EXPECT_NEAR(ofDesign(1), ofOneSlope(0.3, 13), typed);
    EXPECT_NEAR(ofDesign(2), ofOneSlope(0.3, 6), typed);
}

TEST_F(Regression, ACovariateWithoutVariationIsRefused) {
    Choose(Simple, TwoSided,
           {{Group::Slope2, AsDifference}, {Group::Sd2, AsDifference}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_EQ(Refusal({{Kind::CovariateSd1, "1"}, {Kind::CovariateSd2Minus1, "-1"}}, Kind::Power),
              "Std.Dev.Cov.2 - Std.Dev.Cov.1 Has To Be Greater Than or Equal to -0.99999.");
}

TEST_F(Regression, LimitsOfSlopesInTheWrongOrderAreRefused) {
    Choose(Simple, TwoOneSided);
    EXPECT_EQ(Refusal({{Kind::MeanLeftLimit, "0.5"}, {Kind::MeanRightLimit, "0.4"}}, Kind::Size),
              "H0: Left Equivalence Limit Has To Be Less Than or Equal to 0.4.");
}

TEST_F(Regression, SlopesMirrorEachOther) {
    const Texts values{{Kind::H0Slope, "0"},
                       {Kind::H1Slope, "0.5"},
                       {Kind::ResidualSd, "1"},
                       {Kind::CovariateSd, "1"},
                       {Kind::Size, "20"}};
    Choose(Simple, OneSided, {{Group::H1Slope, AsValue}});
    const f64 right = PowerAt(values);
    LeftTail = True;
    EXPECT_NEAR(PowerAt({{Kind::H1Slope, "-0.5"}}), right, 1e-6);
    EXPECT_LT(PowerAt({{Kind::H1Slope, "0.5"}}), 0.001);
    LeftTail = False;
}

// --- Multiple regression ----------------------------------------------------------------------

TEST_F(Regression, WithoutAPartOfTheirOwnCoefficientsArePowerlessBeyondTheLevel) {
    Choose(Multiple, TwoSided);
    EXPECT_EQ(Kinds(), (List{0, 1, 268, 265, 266, 267, 85}));
    Texts values{{Kind::TestedCoefficients, "2"},
                 {Kind::NoOfCovariates, "5"},
                 {Kind::CorrelationWithAll, "0.4"},
                 {Kind::CorrelationWithOthers, "0.4"},
                 {Kind::Size, "60"}};
    EXPECT_NEAR(PowerAt(values), 0.05, quantileError);
    values[Kind::SignificanceLevel] = "0.01";
    EXPECT_NEAR(PowerAt(values), 0.01, quantileError);
}

TEST_F(Regression, MultipleCorrelationsThatContradictEachOtherAreRefused) {
    Choose(Multiple, TwoSided);
    EXPECT_EQ(Refusal({{Kind::CorrelationWithAll, "0.3"}, {Kind::CorrelationWithOthers, "0.5"}},
                      Kind::Size),
              "Mult. Corr. of Y with Xp+1 to Xp+q Has To Be Less Than or Equal to 0.3.");
    EXPECT_EQ(Refusal({{Kind::CorrelationWithAll, "0.5"},
                       {Kind::CorrelationWithOthers, "0.3"},
                       {Kind::TestedCoefficients, "5"},
                       {Kind::NoOfCovariates, "5"}},
                      Kind::Size),
              "Mult. Corr. of Y with Xp+1 to Xp+q Has To Be Less Than or Equal to 0.");
}

TEST_F(Regression, MoreCoefficientsThanCovariatesAreRefused) {
    Choose(Multiple, TwoSided);
    EXPECT_EQ(Refusal({{Kind::TestedCoefficients, "6"}, {Kind::NoOfCovariates, "5"}}, Kind::Size),
              "H0: No (p) of Regr.Coeff. = 0 Has To Be Less Than or Equal to 5.");
}

TEST_F(Regression, TooFewSubjectsForTheCovariatesAreRefused) {
    Choose(Multiple, TwoSided);
    EXPECT_EQ(Refusal({{Kind::NoOfCovariates, "5"}, {Kind::Size, "6"}}, Kind::Power),
              "Sample Size Has To Be Greater Than or Equal to 7.");
}

TEST_F(Regression, TheSizeOfAMultipleRegressionLeavesAResidualDegreeOfFreedom) {
    Choose(Multiple, TwoSided);
    const Texts values{{Kind::TestedCoefficients, "3"},
                       {Kind::NoOfCovariates, "8"},
                       {Kind::CorrelationWithAll, "0.9"},
                       {Kind::CorrelationWithOthers, "0.3"}};
    TypeAll(values);
    ReadParValues();
    UnknownParNo = PositionOf(Kind::Size);
    f64 lower = 3;
    f64 upper = 99999;
    SelSearchLimits(lower, upper);
    EXPECT_EQ(lower, 10);
    ParValue(PositionOf(Kind::Size)) = 9.5;
    UnknownParNo = PositionOf(Kind::NoOfCovariates);
    lower = 1;
    upper = 10;
    SelSearchLimits(lower, upper);
    EXPECT_EQ(lower, 3 + 1) << "a correlation with others needs one";
    EXPECT_EQ(upper, 7.5);
    UnknownParNo = PositionOf(Kind::TestedCoefficients);
    lower = 1;
    upper = 10;
    SelSearchLimits(lower, upper);
    EXPECT_EQ(upper, 8 - 1);
}

// --- Logistic regression ----------------------------------------------------------------------

TEST_F(Regression, AnOddsRatioOfOneHasThePowerOfTheLevel) {
    for (const i16 menuNo : std::initializer_list<i16>{LogisticContinuous, LogisticBinary})
        for (const i16 tails : {OneSided, TwoSided}) {
            Choose(menuNo, tails, {{Group::EventEffect, AsOddsRatio}});
            EXPECT_NEAR(PowerAt({{Kind::H1OddsRatio, "1"}, {Kind::Size, "200"}}), 0.05,
                        quantileError);
        }
}

TEST_F(Regression, ListsOfLogisticRegression) {
    Choose(LogisticContinuous, TwoSided, {{Group::EventEffect, AsProbability}});
    EXPECT_EQ(Kinds(), (List{0, 1, 20, 21, 25, 85}));
    Choose(LogisticContinuous, TwoSided, {{Group::EventEffect, AsOddsRatio}});
    EXPECT_EQ(Kinds(), (List{0, 1, 20, 200, 25, 85}));
    Choose(LogisticBinary, OneSided, {{Group::EventEffect, AsProbability}});
    EXPECT_EQ(Kinds(), (List{0, 1, 257, 258, 259, 25, 85}));
    EXPECT_FALSE(TailsOffered(TwoOneSided));
}

// Odds of 0.25 and 1.
TEST_F(Regression, ProbabilitiesAndOddsRatioSayTheSame) {
    for (const i16 menuNo : std::initializer_list<i16>{LogisticContinuous, LogisticBinary}) {
        const bool binary = menuNo == LogisticBinary;
        const i16 p1 = binary ? Kind::H1EventAtX0 : Kind::H1EventAtMean;
        const i16 p2 = binary ? Kind::H1EventAtX1 : Kind::H1EventAtMeanPlusSd;
        Choose(menuNo, TwoSided, {{Group::EventEffect, AsProbability}});
        const f64 byProbability = PowerAt({{p1, "0.2"}, {p2, "0.5"}, {Kind::Size, "40"}});
        Choose(menuNo, TwoSided, {{Group::EventEffect, AsOddsRatio}});
        EXPECT_NEAR(PowerAt({{p1, "0.2"}, {Kind::H1OddsRatio, "4"}, {Kind::Size, "40"}}),
                    byProbability, 1e-6);
    }
}

// Other covariates that explain half of the variance cost half of the subjects.
TEST_F(Regression, CorrelatedCovariatesCostSubjects) {
    Choose(LogisticBinary, TwoSided, {{Group::EventEffect, AsOddsRatio}});
    Texts values{{Kind::H1EventAtX0, "0.2"},
                 {Kind::H1OddsRatio, "2"},
                 {Kind::ProportionAtX1, "0.4"},
                 {Kind::CorrelationOfCovariates, "0"},
                 {Kind::Size, "200"}};
    const f64 alone = PowerAt(values);
    values[Kind::CorrelationOfCovariates] = std::to_string(std::sqrt(0.5));
    values[Kind::Size] = "400";
    EXPECT_NEAR(PowerAt(values), alone, 1e-5);
}

// The approximation for a normal covariate loses its power again with odds ratios beyond all
// measure: at 99999 there is none.
TEST_F(Regression, TheSmallerOfTwoOddsRatiosIsFound) {
    Choose(LogisticContinuous, TwoSided, {{Group::EventEffect, AsOddsRatio}});
    const Texts values{{Kind::Power, "0.8"},
                       {Kind::H1EventAtMean, "0.3"},
                       {Kind::CorrelationOfCovariates, "0"},
                       {Kind::Size, "250"}};
    const f64 ratio = Solution(values, Kind::H1OddsRatio);
    EXPECT_GT(ratio, 1.3);
    EXPECT_LT(ratio, 1.7);
    EXPECT_LT(PowerAt({{Kind::H1OddsRatio, "99999"}}), 1e-6);
}

// The standard error under H1 underflows, which would be taken for certainty.
TEST_F(Regression, AnEffectBeyondAllMeasureIsNoCertainty) {
    Choose(LogisticContinuous, OneSided, {{Group::EventEffect, AsProbability}});
    EXPECT_LT(PowerAt({{Kind::H1EventAtMean, "0.00001"},
                       {Kind::H1EventAtMeanPlusSd, "0.99999"},
                       {Kind::Size, "100"}}),
              1e-6);
}

TEST_F(Regression, TheLargerProportionWithTheCovariateIsFound) {
    Choose(LogisticBinary, TwoSided, {{Group::EventEffect, AsOddsRatio}});
    const Texts values{{Kind::Power, "0.7"},
                       {Kind::H1EventAtX0, "0.2"},
                       {Kind::H1OddsRatio, "2"},
                       {Kind::CorrelationOfCovariates, "0"},
                       {Kind::Size, "500"}};
    const f64 larger = Solution(values, Kind::ProportionAtX1);
    EXPECT_GT(larger, 0.5);
    EXPECT_LT(larger, 1);
    EXPECT_NEAR(PowerAt({}), 0.7, 0.001);
}

TEST_F(Regression, EventsAreSoughtOnTheSideOfTheTail) {
    Choose(LogisticBinary, OneSided, {{Group::EventEffect, AsProbability}});
    const Texts values{{Kind::Power, "0.8"},
                       {Kind::H1EventAtX0, "0.4"},
                       {Kind::ProportionAtX1, "0.5"},
                       {Kind::Size, "300"}};
    EXPECT_GT(Solution(values, Kind::H1EventAtX1), 0.4);
    LeftTail = True;
    const f64 fewer = Solution(values, Kind::H1EventAtX1);
    EXPECT_LT(fewer, 0.4);
    EXPECT_GT(fewer, 0.2) << "the nearer one";
    Type(Kind::H1EventAtX1, "0.3");
    EXPECT_GT(Solution({}, Kind::H1EventAtX0), 0.3);
    LeftTail = False;
}

// --- Poisson regression -----------------------------------------------------------------------

TEST_F(Regression, ListsOfPoissonRegression) {
    Choose(PoissonContinuous, TwoSided, {{Group::RateEffect, AsRate}});
    EXPECT_EQ(Kinds(), (List{0, 1, 260, 261, 25, 170, 85}));
    Choose(PoissonContinuous, TwoSided, {{Group::RateEffect, AsRateRatio}},
           {Check::Overdispersion});
    EXPECT_EQ(Kinds(), (List{0, 1, 260, 368, 25, 170, 85, 367}));
    Choose(PoissonBinary, TwoSided,
           {{Group::RateEffect, AsRate}, {Group::RateDistribution, ConstantRates}},
           {Check::Overdispersion});
    EXPECT_EQ(Kinds(), (List{0, 1, 262, 263, 259, 25, 170, 85, 367}));
    Choose(PoissonBinary, OneSided,
           {{Group::RateEffect, AsRateRatio}, {Group::RateDistribution, GammaRates}},
           {Check::Overdispersion, Check::VarianceOfH1});
    EXPECT_EQ(Kinds(), (List{0, 1, 262, 368, 259, 25, 170, 85, 329}));
}

// Rates that differ between subjects overdisperse their counts; the variance for a continuous
// covariate knows none.
TEST_F(Regression, GammaDistributedRatesGoWithOverdispersionAndABinaryCovariate) {
    const auto gammaOffered = [this](i16 menuNo, bool overdispersion) {
        OpenTest(menuNo);
        Tick(Check::Overdispersion, overdispersion);
        for (i16 i = 0; i < NoOfIntPar; ++i)
            if (IntParList(i) == Group::RateDistribution)
                return IntParOptionEnabled(GammaRates, i);
        return false;
    };
    EXPECT_TRUE(gammaOffered(PoissonBinary, true));
    EXPECT_FALSE(gammaOffered(PoissonBinary, false));
    EXPECT_FALSE(gammaOffered(PoissonContinuous, true));
}

TEST_F(Regression, NoOverdispersionIsThePlainPoissonRegression) {
    for (const i16 menuNo : std::initializer_list<i16>{PoissonContinuous, PoissonBinary}) {
        const Texts values{{Kind::H1RateRatio, "1.3"}, {Kind::StudyTime, "2"}, {Kind::Size, "150"}};
        Choose(menuNo, TwoSided, {{Group::RateEffect, AsRateRatio}});
        const f64 plain = PowerAt(values);
        EXPECT_GT(plain, 0.1);
        Choose(menuNo, TwoSided, {{Group::RateEffect, AsRateRatio}}, {Check::Overdispersion});
        EXPECT_EQ(PowerAt({{Kind::Overdispersion, "1"}}), plain);
        EXPECT_LT(PowerAt({{Kind::Overdispersion, "2"}}), plain);
    }
    Choose(PoissonBinary, TwoSided,
           {{Group::RateEffect, AsRateRatio}, {Group::RateDistribution, ConstantRates}});
    const f64 plain = PowerAt({});
    Choose(PoissonBinary, TwoSided,
           {{Group::RateEffect, AsRateRatio}, {Group::RateDistribution, GammaRates}},
           {Check::Overdispersion});
    EXPECT_EQ(PowerAt({{Kind::GammaShape, "0"}}), plain);
    EXPECT_LT(PowerAt({{Kind::GammaShape, "1"}}), plain);
}

// Twice the overdispersion takes twice the subjects.
TEST_F(Regression, OverdispersionCostsSubjects) {
    Choose(PoissonBinary, TwoSided, {{Group::RateEffect, AsRateRatio}}, {Check::Overdispersion});
    const f64 once =
        PowerAt({{Kind::H1RateRatio, "1.3"}, {Kind::Overdispersion, "1"}, {Kind::Size, "100"}});
    EXPECT_NEAR(PowerAt({{Kind::Overdispersion, "2"}, {Kind::Size, "200"}}), once, 1e-6);
}

// The exact normal power: (ln 1.5 - 1.644854 se)/se with se = sqrt((1/0.5 + 1/0.75)/100) in a
// one-sided test of 200 subjects with a year each, half of them exposed: 0.7186.
TEST_F(Regression, VarianceUnderH1CanServeUnderH0) {
    Choose(PoissonBinary, OneSided, {{Group::RateEffect, AsRateRatio}}, {Check::VarianceOfH1});
    const Texts values{{Kind::H1RateAtX0, "0.5"},     {Kind::H1RateRatio, "1.5"},
                       {Kind::ProportionAtX1, "0.5"}, {Kind::CorrelationOfCovariates, "0"},
                       {Kind::StudyTime, "1"},        {Kind::Size, "200"}};
    constexpr f64 se = 0.18257418583505536;
    const f64 z = std::log(1.5) / se - 1.6448536269514722;
    const f64 exact = 0.5 * std::erfc(-z / std::sqrt(2.0));
    EXPECT_NEAR(PowerAt(values), exact, quantileError);
    Choose(PoissonBinary, OneSided, {{Group::RateEffect, AsRateRatio}});
    EXPECT_LT(PowerAt(values), exact - 0.005) << "the variance under H0 is larger";
}

TEST_F(Regression, RatesAndTheirRatioSayTheSame) {
    Choose(PoissonBinary, TwoSided, {{Group::RateEffect, AsRate}});
    const f64 byRate = PowerAt({{Kind::H1RateAtX0, "0.5"},
                                {Kind::H1RateAtX1, "0.75"},
                                {Kind::StudyTime, "2"},
                                {Kind::Size, "90"}});
    Choose(PoissonBinary, TwoSided, {{Group::RateEffect, AsRateRatio}});
    EXPECT_EQ(PowerAt({{Kind::H1RateRatio, "1.5"}}), byRate);
}

// --- Correlations -----------------------------------------------------------------------------

TEST_F(Regression, ListsOfCorrelations) {
    Choose(Pearson, TwoSided, {{Group::H1Correlation, AsDifference}});
    EXPECT_EQ(Kinds(), (List{0, 1, 185, 187, 14}));
    Choose(Pearson, TwoOneSided);
    EXPECT_EQ(Kinds(), (List{0, 1, 194, 195, 186, 14}));
    Choose(Pearson, OneSided, {{Group::Correlation2, AsRatio}, {Group::Size2, AsValue}}, {},
           TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 189, 190, 193, 39, 42}));
    Choose(Pearson, TwoOneSided, {{Group::Correlation2, AsDifference}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 194, 195, 190, 192, 39, 5}));
}

TEST_F(Regression, ACorrelationOfOneIsRefused) {
    Choose(Pearson, TwoSided, {{Group::H1Correlation, AsValue}});
    EXPECT_EQ(Refusal({{Kind::H1Correlation, "1"}}, Kind::Power),
              "H1: Correlation Coefficient Has To Be Less Than or Equal to 0.99999.");
    EXPECT_EQ(Refusal({{Kind::H1Correlation, "-1"}}, Kind::Power),
              "H1: Correlation Coefficient Has To Be Greater Than or Equal to -0.99999.");
    Choose(Pearson, TwoSided, {{Group::Correlation2, AsDifference}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_EQ(
        Refusal({{Kind::H1Correlation1, "0.5"}, {Kind::H1Correlation2Minus1, "0.5"}}, Kind::Power),
        "H1: Corr.Coeff.2 - Corr.Coeff.1 Has To Be Less Than or Equal to 0.49999.");
}

TEST_F(Regression, TwoSamplesOfThreeHaveAFiniteStandardError) {
    Choose(Pearson, TwoSided, {{Group::Correlation2, AsValue}, {Group::Size2, AsValue}}, {},
           TwoSamples);
    PowerAt({{Kind::H1Correlation1, "0.1"}, {Kind::H1Correlation2, "0.9"}});
    ParValue(PositionOf(Kind::Size1From4)) = 3;
    ParValue(PositionOf(Kind::Size2From4)) = 3;
    ParValue(PowerParNo) = 0;
    EXPECT_NEAR(SelRootFunction(), 0.05, 0.01) << "a standard error of sqrt(2/0.00001)";
    ParValue(PositionOf(Kind::Size1From4)) = 1;
    EXPECT_NEAR(SelRootFunction(), 0.05, 0.01);
}

TEST_F(Regression, EqualCorrelationsHaveThePowerOfTheLevel) {
    Choose(Pearson, TwoSided, {{Group::Correlation2, AsRatio}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_NEAR(PowerAt({{Kind::H0Correlation2Minus1, "0"},
                         {Kind::H1Correlation1, "0.5"},
                         {Kind::H1Correlation2Over1, "1"}}),
                0.05, quantileError);
}

// The limits of a difference are taken from the first correlation, so the middle depends on it.
TEST_F(Regression, AnEquivalentCorrelationIsSoughtFromItsOwnMiddle) {
    Choose(Pearson, TwoOneSided, {{Group::Correlation2, AsValue}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    const Texts values{{Kind::Power, "0.8"},
                       {Kind::CorrelationLeftLimit, "-0.25"},
                       {Kind::CorrelationRightLimit, "0.25"},
                       {Kind::H1Correlation1, "0.4"},
                       {Kind::Size1From4, "400"},
                       {Kind::Size2Over1, "1"}};
    const f64 middle = std::tanh((std::atanh(0.15) + std::atanh(0.65)) / 2);
    const f64 upper = Solution(values, Kind::H1Correlation2);
    EXPECT_GT(upper, middle);
    LeftTail = True;
    const f64 lower = Solution(values, Kind::H1Correlation2);
    LeftTail = False;
    EXPECT_LT(lower, middle);
    EXPECT_NEAR(std::atanh(upper) - std::atanh(middle), std::atanh(middle) - std::atanh(lower),
                1e-4);
}

TEST_F(Regression, TheFirstOfTwoCorrelationsIsSoughtOnTheOtherSide) {
    Choose(Pearson, OneSided, {{Group::Correlation2, AsValue}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    EXPECT_LT(Solution({{Kind::Power, "0.8"},
                        {Kind::H1Correlation2, "0.5"},
                        {Kind::Size1From4, "100"},
                        {Kind::Size2Over1, "1"}},
                       Kind::H1Correlation1),
              0.5);
}

// --- Two-way crossover ------------------------------------------------------------------------

TEST_F(Regression, ListsOfCrossoverDesigns) {
    Choose(Additive, TwoSided, {{Group::Mean2, AsDifference}, {Group::SequenceSize2, AsRatio}});
    EXPECT_EQ(NoOfSamples, TwoSamples);
    EXPECT_EQ(Kinds(), (List{0, 1, 61, 62, 2, 322, 325}));
    Choose(Additive, OneSided, {{Group::Mean2, AsRatio}, {Group::SequenceSize2, AsValue}});
    EXPECT_EQ(Kinds(), (List{0, 1, 61, 86, 88, 2, 322, 323}));
    Choose(Additive, TwoOneSided, {{Group::Mean2, AsValue}, {Group::SequenceSize2, AsDifference}});
    EXPECT_EQ(Kinds(), (List{0, 1, 6, 7, 86, 87, 2, 322, 324}));
    Choose(Multiplicative, TwoSided, {{Group::Median2, 1}, {Group::SequenceSize2, AsRatio}});
    EXPECT_EQ(Kinds(), (List{0, 1, 93, 96, 155, 322, 325}));
    Choose(Multiplicative, TwoOneSided, {{Group::Median2, 0}, {Group::SequenceSize2, AsValue}});
    EXPECT_EQ(Kinds(), (List{0, 1, 29, 30, 94, 95, 155, 322, 323}));
}

// With carryover the variance is twice as large, as that of two parallel groups with more df.
TEST_F(Regression, CarryoverCostsHalfOfTheSubjects) {
    const auto power = [this](i16 model, const std::string& n) {
        Choose(Additive, TwoSided,
               {{Group::Mean2, AsDifference},
                {Group::Parameterization, model},
                {Group::SequenceSize2, AsRatio}});
        return PowerAt({{Kind::H0Mean2Minus1, "0"},
                        {Kind::H1Mean2Minus1, "0.3"},
                        {Kind::Sd, "1"},
                        {Kind::SequenceSize1, n},
                        {Kind::SequenceSize2Over1, "1"}});
    };
    EXPECT_NEAR(power(0, "400"), power(1, "200"), 0.001) << "but for the degrees of freedom";
    EXPECT_GT(power(1, "6"), power(2, "6")) << "2(n1 + n2) - 3 df, and n1 + n2 - 2";
    EXPECT_GT(power(1, "20"), power(0, "20"));
}

TEST_F(Regression, MediansAndTheirRatioSayTheSame) {
    const auto power = [this](i16 option, const Texts& medians) {
        Choose(Multiplicative, TwoSided,
               {{Group::Median2, option},
                {Group::Parameterization, 2},
                {Group::SequenceSize2, AsRatio}});
        Texts texts = medians;
        texts.merge(Texts{{Kind::H0Median2Over1, "1.1"},
                          {Kind::LogSd, "0.4"},
                          {Kind::SequenceSize1, "20"},
                          {Kind::SequenceSize2Over1, "1"}});
        return PowerAt(texts);
    };
    EXPECT_NEAR(power(0, {{Kind::H1Median1, "4"}, {Kind::H1Median2, "6"}}),
                power(1, {{Kind::H1Median2Over1, "1.5"}}), 1e-6);
}

// Bioequivalence is the model with sequences of the multiplicative design.
TEST_F(Regression, BioequivalenceIsOneOfItsModels) {
    const Texts values{{Kind::RatioLeftLimit, "0.8"},  {Kind::RatioRightLimit, "1.25"},
                       {Kind::H1Median2Over1, "0.95"}, {Kind::LogSd, "0.2"},
                       {Kind::SequenceSize1, "14"},    {Kind::SequenceSize2Over1, "1"}};
    Choose(Multiplicative, TwoOneSided,
           {{Group::Median2, 1}, {Group::Parameterization, 2}, {Group::SequenceSize2, AsRatio}});
    const f64 power = PowerAt(values);
    Choose(Bioequivalence, TwoOneSided,
           {{Group::Median2, 1}, {Group::LogSd, 0}, {Group::SequenceSize2, AsRatio}});
    EXPECT_NEAR(PowerAt(values), power, 1e-6);
}

TEST_F(Regression, ASequenceOfNobodyIsRefused) {
    Choose(Additive, TwoSided,
           {{Group::Mean2, AsDifference}, {Group::SequenceSize2, AsDifference}});
    EXPECT_EQ(Refusal({{Kind::SequenceSize1, "5"}, {Kind::SequenceSize2Minus1, "-4"}}, Kind::Power),
              "Sample Size Seq. 2 - Seq. 1 Has To Be Greater Than or Equal to -2.");
}

// --- Statements -------------------------------------------------------------------------------

TEST_F(Regression, StatementOfTwoSlopes) {
    Choose(Simple, OneSided,
           {{Group::Slope2, AsDifference}, {Group::Sd2, AsRatio}, {Group::Size2, AsRatio}}, {},
           TwoSamples);
    // 50.1507 in each sample by scipy's non-central t.
    Solution({{Kind::Power, "0.8"},
              {Kind::H0Slope2Minus1, "0"},
              {Kind::H1Slope2Minus1, "0.5"},
              {Kind::ResidualSd, "1"},
              {Kind::CovariateSd1, "1"},
              {Kind::CovariateSd2Over1, "1"},
              {Kind::Size2Over1, "1"}},
             Kind::Size1);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 102 (51 in sample 1 and 51 in sample 2), the power is "
              "0.80 when testing the null hypothesis H0: regression coefficient 2 - regression "
              "coefficient 1 = 0 against H1: regression coefficient 2 - regression coefficient 1 = "
              "0.5. The test used is Linear Regression, Simple test, one-sided, at the "
              "significance level 0.05. The calculation is based on the assumptions that the "
              "residual standard deviation is 1, the standard deviation for covariate 1 is 1 and "
              "the standard deviation for covariate 2 / standard deviation for covariate 1 is 1.");
}

TEST_F(Regression, StatementOfRates) {
    Choose(PoissonBinary, TwoSided,
           {{Group::RateEffect, AsRateRatio}, {Group::RateDistribution, ConstantRates}},
           {Check::Overdispersion});
    PowerAt({{Kind::H1RateAtX0, "0.85"},
             {Kind::H1RateRatio, "1.3"},
             {Kind::ProportionAtX1, "0.5"},
             {Kind::CorrelationOfCovariates, "0"},
             {Kind::StudyTime, "1"},
             {Kind::Size, "600"},
             {Kind::Overdispersion, "1.5"}});
    // 0.687 by scipy's normal distribution.
    EXPECT_EQ(SumStatement(),
              "With a sample size of 600, the power is 0.69 when testing the null hypothesis H0: "
              "rate ratio = 1 against H1: rate at x1=0 = 0.85 and rate ratio = 1.3. The test used "
              "is Poisson Regression, Binary covariate test, two-sided, at the significance level "
              "0.05. The calculation is based on the assumptions that the proportion of sample "
              "with x1 = 1 is 0.5, the multiple correlation coefficient of x1 with x2 to xp is 0, "
              "the study time is 1 and the overdispersion adjustment is 1.5.");
}

TEST_F(Regression, StatementOfEquivalentTreatments) {
    Choose(Multiplicative, TwoOneSided,
           {{Group::Median2, 1}, {Group::Parameterization, 2}, {Group::SequenceSize2, AsRatio}});
    // 9.18 in each sequence (Diletti, Hauschke and Steinijans 1991: 20 subjects).
    Solution({{Kind::Power, "0.8"},
              {Kind::RatioLeftLimit, "0.8"},
              {Kind::RatioRightLimit, "1.25"},
              {Kind::H1Median2Over1, "0.95"},
              {Kind::LogSd, "0.198"},
              {Kind::SequenceSize2Over1, "1"}},
             Kind::SequenceSize1);
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 20 (10 in sequence 1 and 10 in sequence 2), the power "
              "is 0.80 when testing the null hypothesis H0: non-equivalence, with left equivalence "
              "limit = 0.8 and right equivalence limit = 1.25, against H1: median 2 / median 1 = "
              "0.95 (equivalence). The test used is Two-way Crossover Design, Muliplicative Model "
              "test, as two one-sided tests, at the significance level 0.05. The calculation is "
              "based on the assumption that the residual standard deviation (natural log scale) is "
              "0.198.");
}

TEST_F(Regression, StatementOfCorrelations) {
    Choose(Pearson, TwoSided, {{Group::H1Correlation, AsDifference}});
    // 84.9 by scipy's normal distribution.
    Solution(
        {{Kind::Power, "0.8"}, {Kind::H0Correlation, "0"}, {Kind::H1CorrelationMinusH0, "0.3"}},
        Kind::SizeFrom4);
    EXPECT_EQ(SumStatement(),
              "With a sample size of 85, the power is 0.80 when testing the null hypothesis H0: "
              "correlation coefficient = 0 against H1: correlation coefficient = 0.3. The test "
              "used is Pearson's Correlation test, two-sided, at the significance level 0.05.");
}

} // namespace
} // namespace quorvanta::checks
