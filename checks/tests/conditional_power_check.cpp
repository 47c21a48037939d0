// Conditional and predictive power: parameter lists, edge cases, refused values, both directions.
// Exact values: the normal distribution of the last increment, by the complementary error function.
#include "core/dispatch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/search.h"
#include "output/statement.h"
#include "support/solving_fixture.h"
#include "tests/groupseqcp.h"

#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <string>
#include <vector>

namespace quorvanta::checks {
namespace {

constexpr i16 CondMeans = 601;
constexpr i16 PredMeans = 602;
constexpr i16 CondProportions = 621;
constexpr i16 PredProportions = 622;
constexpr i16 CondHazards = 631;
constexpr i16 PredHazards = 632;

// Options of the slope projection.
constexpr i16 Design = 0;
constexpr i16 Trend = 1;
constexpr i16 Null = 2;

// What the approximation of the normal quantile may cost a power.
constexpr f64 quantileError = 0.0006;

f64 Phi(f64 z) {
    return std::erfc(-z / std::numbers::sqrt2) / 2;
}

constexpr f64 z025 = 1.959963984540054; // exact upper quantiles

// One sample of means: 1 in 100 subjects is a standard error of 0.1.
const Values& OneMean() {
    static const Values values{{Kind::SignificanceLevel, "0.025"},
                               {Kind::H0Mean, "1"},
                               {Kind::H1Mean, "1.3"},
                               {Kind::Sd, "1"},
                               {Kind::InformationFraction, "0.5"},
                               {Kind::ObservedMean, "1.2"},
                               {Kind::Size, "100"}};
    return values;
}

const Values& Hazards() {
    static const Values values{{Kind::SignificanceLevel, "0.025"},
                               {Kind::H1HazardRatio, "1.5"},
                               {Kind::InformationFraction, "0.5"},
                               {Kind::ObservedHazardRatio, "1.4"},
                               {Kind::Events, "200"},
                               {Kind::Size2Over1, "1"}};
    return values;
}

Values With(Values values, const Values& more) {
    for (const auto& [kind, text] : more)
        values[kind] = text;
    return values;
}

class ConditionalPower : public SolvingFixture {
  protected:
    static AnalysisChoice Means(i16 future, i16 tails = OneSided, i16 menu = CondMeans) {
        return MenuChoice(menu, OneSample, tails,
                          {{Group::H1Mean, AsValue}, {Group::SlopeProjection, future}});
    }
    static AnalysisChoice Ratio(i16 future, i16 tails = OneSided, i16 menu = CondHazards) {
        return MenuChoice(menu, TwoSamples, tails, {{Group::SlopeProjection, future}});
    }
    // What a user reads who asks for the first time.
    std::string FirstMessageOf(const AnalysisChoice& choice, const Values& values) {
        Start(choice, values);
        StartSearch();
        platform.Messages.clear();
        EXPECT_EQ(Solve(Kind::ConditionalPower), "-");
        return platform.Messages.empty() ? "" : platform.Messages.back().Text;
    }
    f64 Cond(const AnalysisChoice& choice, const Values& values) {
        return SolutionOf(choice, values, Kind::ConditionalPower);
    }
    f64 Pred(const AnalysisChoice& choice, const Values& values) {
        return SolutionOf(choice, values, Kind::PredictivePower);
    }
};

TEST_F(ConditionalPower, ListsOfOneSample) {
    for (const i16 form : {AsValue, AsDifference, AsRatio}) {
        constexpr i16 means[] = {58, 59, 60};
        constexpr i16 proportions[] = {83, 40, 41};
        EXPECT_EQ(ListOf(MenuChoice(CondMeans, OneSample, OneSided, {{Group::H1Mean, form}})),
                  (Kinds{0, 361, 57, means[form], 2, 358, 359, 85}));
        EXPECT_EQ(CpH1Form, form);
        EXPECT_EQ(ListOf(MenuChoice(PredMeans, OneSample, TwoSided, {{Group::H1Mean, form}})),
                  (Kinds{0, 366, 57, means[form], 2, 358, 359, 85}));
        EXPECT_EQ(
            ListOf(MenuChoice(CondProportions, OneSample, TwoSided, {{Group::H1Proportion, form}})),
            (Kinds{0, 361, 35, proportions[form], 358, 363, 85}));
        EXPECT_EQ(
            ListOf(MenuChoice(PredProportions, OneSample, OneSided, {{Group::H1Proportion, form}})),
            (Kinds{0, 366, 35, proportions[form], 358, 363, 85}));
    }
}

TEST_F(ConditionalPower, ListsOfTwoSamples) {
    constexpr i16 seconds[] = {37, 38, 5};
    for (const i16 form : {AsValue, AsDifference, AsRatio}) {
        const i16 second = seconds[form];
        const std::map<i16, i16> sizes{{Group::Size2, form}};
        const auto means = [&](i16 h1) {
            return ListOf(MenuChoice(CondMeans, TwoSamples, TwoSided,
                                     {{Group::Mean2, h1}, {Group::Size2, form}}));
        };
        EXPECT_EQ(means(AsDifference), (Kinds{0, 361, 61, 62, 2, 358, 360, 4, second}));
        EXPECT_EQ(means(AsValue), (Kinds{0, 361, 61, 86, 87, 2, 358, 360, 4, second}));
        EXPECT_EQ(means(AsRatio), (Kinds{0, 361, 61, 86, 88, 2, 358, 360, 4, second}));
        constexpr i16 h1[] = {69, 52, 70};
        EXPECT_EQ(ListOf(MenuChoice(PredProportions, TwoSamples, OneSided,
                                    {{Group::Proportion2, form}, {Group::Size2, form}})),
                  (Kinds{0, 366, 51, 8, h1[form], 358, 365, 364, 4, second}));
    }
    EXPECT_EQ(ListOf(MenuChoice(CondHazards, TwoSamples, OneSided)),
              (Kinds{0, 361, 264, 358, 362, 99, 5}));
    EXPECT_EQ(ListOf(MenuChoice(PredHazards, TwoSamples, OneSided)),
              (Kinds{0, 366, 264, 358, 362, 99, 5}));
}

TEST_F(ConditionalPower, TheTestNumberSaysOutcomeAndPower) {
    const std::map<i16, std::pair<i16, i16>> expected{{CondMeans, {CpMeans, False}},
                                                      {PredMeans, {CpMeans, True}},
                                                      {CondProportions, {CpProportions, False}},
                                                      {PredProportions, {CpProportions, True}},
                                                      {CondHazards, {CpHazards, False}},
                                                      {PredHazards, {CpHazards, True}}};
    for (const auto& [menu, what] : expected)
        for (const i16 future : {Design, Trend, Null}) {
            Start(MenuChoice(menu, TwoSamples, OneSided, {{Group::SlopeProjection, future}}), {});
            EXPECT_EQ(CpOutcome, what.first) << menu;
            EXPECT_EQ(CpPredictive, what.second) << menu;
            EXPECT_EQ(CpFuture, future) << menu;
            EXPECT_FALSE(TailsOffered(TwoOneSided)) << menu;
        }
}

// B = sqrt(0.5) 2, the design's drift 3.
TEST_F(ConditionalPower, TakesTheDriftThatIsChosen) {
    const f64 b = std::sqrt(0.5) * 2;
    const f64 v = std::sqrt(0.5);
    EXPECT_NEAR(Cond(Means(Design), OneMean()), Phi((b + 1.5 - z025) / v), quantileError);
    EXPECT_NEAR(Cond(Means(Trend), OneMean()), Phi((2 * b - z025) / v), quantileError);
    EXPECT_NEAR(Cond(Means(Null), OneMean()), Phi((b - z025) / v), quantileError);
}

// A variance of 1 at half of the information.
TEST_F(ConditionalPower, PredictivePowerWithTheNullSlopeHasTheMeanOfB) {
    EXPECT_NEAR(Pred(Means(Null, OneSided, PredMeans), OneMean()), Phi(std::sqrt(0.5) * 2 - z025),
                quantileError);
}

TEST_F(ConditionalPower, NoDriftPointsNowhere) {
    const Values nothingSeen = With(OneMean(), {{Kind::ObservedMean, "1"}});
    const f64 v = std::sqrt(0.5);
    for (const i16 future : {Trend, Null})
        for (const bool left : {false, true}) {
            AnalysisChoice choice = Means(future);
            choice.Left = left;
            EXPECT_NEAR(Cond(choice, nothingSeen), Phi(-z025 / v), quantileError) << future;
        }
    // The design's drift is 0.00001 below what is entered: no effect at all points to the left.
    const Values noEffect = With(OneMean(), {{Kind::H1Mean, "1"}});
    EXPECT_EQ(Cond(Means(Design), noEffect), NoValue);
    EXPECT_NE(Cond(LeftOf(Means(Design)), noEffect), NoValue);
}

TEST_F(ConditionalPower, ADriftAwayFromTheTailHasNoPower) {
    const std::string hint = "Can't Be Calculated. Please Check if TickBox 'Reject in Left Tail' "
                             "Should Be ";
    EXPECT_EQ(FirstMessageOf(LeftOf(Means(Design)), OneMean()), hint + "UnTicked.");
    const Values below = With(OneMean(), {{Kind::H1Mean, "0.8"}, {Kind::ObservedMean, "0.9"}});
    EXPECT_EQ(FirstMessageOf(Means(Design), below), hint + "Ticked.");
    EXPECT_EQ(FirstMessageOf(Means(Trend), below), hint + "Ticked.");
    EXPECT_EQ(CpRoot(), NoValue);
    // What has been seen may point away: it is the drift that counts.
    EXPECT_NEAR(Cond(Means(Design), With(OneMean(), {{Kind::ObservedMean, "0.9"}})),
                Phi((-std::sqrt(0.5) + 1.5 - z025) / std::sqrt(0.5)), quantileError);
    EXPECT_NE(Cond(Means(Design, TwoSided), below), NoValue);
}

// The mirror image of the study has the same power in the other tail.
TEST_F(ConditionalPower, IsTheSameInEitherTail) {
    const Values mirrored = With(OneMean(), {{Kind::H1Mean, "0.7"}, {Kind::ObservedMean, "0.8"}});
    for (const i16 future : {Trend, Null})
        EXPECT_NEAR(Cond(LeftOf(Means(future)), mirrored), Cond(Means(future), OneMean()), 1e-5);
    EXPECT_NEAR(Cond(LeftOf(Means(Design)), mirrored), Cond(Means(Design), OneMean()), 1e-4);
    const Values inverse = With(
        Hazards(), {{Kind::H1HazardRatio, "0.6666667"}, {Kind::ObservedHazardRatio, "0.7142857"}});
    EXPECT_NEAR(Cond(LeftOf(Ratio(Design)), inverse), Cond(Ratio(Design), Hazards()), 1e-4);
}

// Both count without their signs, each by itself.
TEST_F(ConditionalPower, TwoTailsTakeDriftAndPositionWithoutSigns) {
    const f64 b = std::sqrt(0.5) * 2;
    const f64 v = std::sqrt(0.5);
    const f64 expected = Phi((b + 1.5 - z025) / v) + Phi((-b - 1.5 - z025) / v);
    for (const char* truth : {"1.3", "0.7"})
        for (const char* seen : {"1.2", "0.8"})
            EXPECT_NEAR(
                Cond(Means(Design, TwoSided), With(OneMean(), {{Kind::SignificanceLevel, "0.05"},
                                                               {Kind::H1Mean, truth},
                                                               {Kind::ObservedMean, seen}})),
                expected, quantileError)
                << truth << " " << seen;
}

// Close to its end the trial is decided: B alone says how.
TEST_F(ConditionalPower, AtTheEndNearlyAllIsDecided) {
    for (const i16 menu : {CondMeans, PredMeans}) {
        const i16 kind = menu == CondMeans ? Kind::ConditionalPower : Kind::PredictivePower;
        const Values end = With(OneMean(), {{Kind::InformationFraction, "0.99999"}});
        EXPECT_NEAR(SolutionOf(Means(Trend, OneSided, menu), end, kind), 1, 1e-4);
        EXPECT_NEAR(SolutionOf(Means(Trend, OneSided, menu),
                               With(end, {{Kind::ObservedMean, "1.19"}}), kind),
                    0, 1e-4);
        EXPECT_EQ(platform.Texts(), std::vector<std::string>());
    }
}

// The events so far are the fraction of all; groups share them by hazards and sizes. With equal
// groups and a ratio h, the standard error of its logarithm is (h + 1)/sqrt(h m).
TEST_F(ConditionalPower, HazardsCountTheEventsSoFar) {
    const auto error = [](f64 h, f64 m) { return (h + 1) / std::sqrt(h * m); };
    const f64 b = std::sqrt(0.5) * std::log(1.4) / error(1.4, 100);
    const f64 theta = std::log(1.5) / error(1.5, 200);
    EXPECT_NEAR(Cond(Ratio(Design), Hazards()), Phi((b + 0.5 * theta - z025) / std::sqrt(0.5)),
                quantileError);
    EXPECT_NEAR(Pred(Ratio(Trend, OneSided, PredHazards), Hazards()), Phi(2 * b - z025),
                quantileError);
}

// Far from 1 a hazard ratio leaves one group without events, and the power falls again.
TEST_F(ConditionalPower, FindsTheHazardRatioThatIsNearerToNoEffect) {
    const Values asked = With(Hazards(), {{Kind::ConditionalPower, "0.9"}, {Kind::Events, "60"}});
    const f64 design = SolutionOf(Ratio(Design), asked, Kind::H1HazardRatio);
    EXPECT_GT(design, 1);
    EXPECT_LT(design, 11);
    const f64 seen = SolutionOf(Ratio(Design), asked, Kind::ObservedHazardRatio);
    EXPECT_GT(seen, 1);
    EXPECT_LT(seen, 11);
    const Values below = With(asked, {{Kind::H1HazardRatio, "0.7"}});
    const f64 small = SolutionOf(LeftOf(Ratio(Design)), below, Kind::ObservedHazardRatio);
    EXPECT_LT(small, 1);
    EXPECT_GT(small, 0.09);
    // Beyond its peak no hazard ratio reaches this.
    EXPECT_EQ(SolutionOf(Ratio(Design), With(asked, {{Kind::Events, "4"}}), Kind::H1HazardRatio),
              NoValue);
}

TEST_F(ConditionalPower, RefusesASecondSizeOutsideItsLimits) {
    const AnalysisChoice choice =
        MenuChoice(CondMeans, TwoSamples, OneSided,
                   {{Group::Mean2, AsDifference}, {Group::Size2, AsDifference}});
    EXPECT_EQ(
        MessageOf(choice, {{Kind::Size1, "10"}, {Kind::Size2Minus1, "-9"}}, Kind::ConditionalPower),
        "Sample Size 2 - Sample Size 1 Has To Be Greater Than or Equal to -7.");
}

TEST_F(ConditionalPower, RefusesProportionsThatAreNone) {
    const AnalysisChoice one =
        MenuChoice(CondProportions, OneSample, OneSided, {{Group::H1Proportion, AsDifference}});
    EXPECT_EQ(MessageOf(one, {{Kind::H0Proportion, "0.4"}, {Kind::H1ProportionMinusH0, "0.7"}},
                        Kind::ConditionalPower),
              "H1:Proportion  -  H0:Proportion Has To Be Less Than or Equal to 0.59999.");
    const AnalysisChoice two =
        MenuChoice(CondProportions, TwoSamples, OneSided, {{Group::Proportion2, AsDifference}});
    EXPECT_EQ(
        MessageOf(two,
                  {{Kind::ObservedProportion1, "0.5"}, {Kind::ObservedProportion2Minus1, "0.6"}},
                  Kind::ConditionalPower),
        "Observed Prop.2 - Prop.1 Has To Be Less Than or Equal to 0.49999.");
    EXPECT_EQ(MessageOf(one, {{Kind::InformationFraction, "1"}}, Kind::ConditionalPower),
              "Information Fraction Has To Be Less Than or Equal to 0.99999.");
}

// With the trend or no effect H1 has no influence: it has no solution, and changes nothing.
TEST_F(ConditionalPower, WithoutTheDesignH1IsOutOfPlay) {
    for (const i16 future : {Trend, Null}) {
        EXPECT_EQ(Cond(Means(future), OneMean()),
                  Cond(Means(future), With(OneMean(), {{Kind::H1Mean, "-3"}})));
        EXPECT_EQ(SolutionOf(Means(future), OneMean(), Kind::H1Mean), NoValue);
    }
}

TEST_F(ConditionalPower, TwoOneSidedTestsHaveNone) {
    Start(Means(Design), OneMean());
    NoOfTails = TwoOneSided;
    EXPECT_EQ(CpRoot(), NoValue);
    NoOfTails = OneSided;
    EXPECT_NE(CpRoot(), NoValue);
}

TEST_F(ConditionalPower, LeavesTheKindOfAnalysisAlone) {
    Start(Means(Design), OneMean());
    const f64 fixed = CpRoot();
    IsGroupSeq = True;
    EXPECT_EQ(CpRoot(), fixed);
    EXPECT_EQ(IsGroupSeq, True);
}

TEST_F(ConditionalPower, IsSaidInASentence) {
    Cond(Means(Design), OneMean());
    EXPECT_EQ(SumStatement(),
              "With a sample size of 100, the conditional power is 0.91 when testing the null "
              "hypothesis H0: mean = 1 against H1: mean = 1.3. The test used is a test of normal "
              "distribution means, one-sided, at the significance level 0.025. The rest of the "
              "trial is assumed to have the effect under H1. The calculation is based on the "
              "assumptions that the standard deviation is 1, the information fraction is 0.5 and "
              "the observed mean is 1.2.");
    Pred(Means(Trend, TwoSided, PredMeans), OneMean());
    EXPECT_EQ(SumStatement(),
              "With a sample size of 100, the predictive power is 0.72 when testing the null "
              "hypothesis H0: mean = 1 against H1: mean = 1.3. The test used is a test of normal "
              "distribution means, two-sided, at the significance level 0.025. The rest of the "
              "trial is assumed to go on as observed so far. The calculation is based on the "
              "assumptions that the standard deviation is 1, the information fraction is 0.5 and "
              "the observed mean is 1.2.");
    Cond(LeftOf(Ratio(Null)), Hazards());
    EXPECT_EQ(SumStatement(),
              "With a total number of events of 200, the conditional power is below 0.01 when "
              "testing the null hypothesis H0: hazard ratio = 1 against H1: hazard ratio = 1.5. "
              "The test used is a logrank test, one-sided, at the significance level 0.025. The "
              "rest of the trial is assumed to show no effect. The calculation is based on the "
              "assumptions that the information fraction is 0.5, the observed hazard ratio is 1.4 "
              "and the sample size 2 / sample size 1 is 1.");
    const f64 size = SolutionOf(MenuChoice(CondProportions, TwoSamples, TwoSided,
                                           {{Group::Proportion2, AsValue},
                                            {Group::Size2, AsRatio},
                                            {Group::SlopeProjection, Design}}),
                                {{Kind::H1Proportion1, "0.3"},
                                 {Kind::H1Proportion2, "0.5"},
                                 {Kind::ObservedProportion1, "0.35"},
                                 {Kind::ObservedProportion2Minus1, "0.1"}},
                                Kind::Size1);
    EXPECT_NE(size, NoValue);
    EXPECT_EQ(
        SumStatement(),
        "With a total sample size of 174 (87 in sample 1 and 87 in sample 2), the conditional "
        "power is 0.80 when testing the null hypothesis H0: proportion 2 - proportion 1 = 0 "
        "against H1: proportion 1 = 0.3 and proportion 2 = 0.5. The test used is a test of "
        "proportions, two-sided, at the significance level 0.05. The rest of the trial is "
        "assumed to have the effect under H1. The calculation is based on the assumptions "
        "that the information fraction is 0.3, the observed proportion 1 is 0.35 and the "
        "observed proportion 2 - proportion 1 is 0.1.");
}

} // namespace
} // namespace quorvanta::checks
