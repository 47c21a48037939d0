// The tests of Cox regression: their lists, edges and equations.
#include "core/kinds.h"
#include "output/statement.h"
#include "ranksurv/testcox.h"
#include "support/number.h"
#include "support/solving_fixture.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

using Kinds = std::vector<i16>;

constexpr i16 menuContinuous = 470;
constexpr i16 menuBinary = 471;
constexpr i16 asCoefficient = 0;
constexpr i16 asRatio = 1;
// What the approximation of the normal quantile may be away from a power.
constexpr f64 normalError = 2e-4;

AnalysisChoice Of(i16 menuNo, i16 tails, i16 option) {
    return MenuChoice(menuNo, OneSample, tails, {{Group::HazardEffect, option}});
}

AnalysisChoice OfEvents(i16 menuNo, i16 tails, i16 option) {
    return MenuChoice(menuNo, OneSample, tails, {{Group::HazardEffect, option}}, {Check::Events});
}

class Cox : public SolvingFixture {};

const Values& Plan() {
    static const Values values{{Kind::SignificanceLevel, "0.05"},
                               {Kind::Power, "0.8"},
                               {Kind::H1Slope, "0.5"},
                               {Kind::H1HazardRatio, "1.6487213"},
                               {Kind::CovariateSd, "0.9"},
                               {Kind::ProportionAtX1, "0.6"},
                               {Kind::H1Survival1, "0.5"},
                               {Kind::CorrelationOfCovariates, "0.3"},
                               {Kind::Events, "70"},
                               {Kind::SizeFrom4, "120"}};
    return values;
}

Values With(Values values, const Values& others) {
    for (const auto& [kind, text] : others)
        values[kind] = text;
    return values;
}

TEST_F(Cox, Lists) {
    for (const auto& [option, effect] : {std::pair<i16, i16>{0, 204}, {1, 264}}) {
        EXPECT_EQ(ListOf(Of(menuContinuous, 2, option)), (Kinds{0, 1, effect, 213, 353, 25, 14}));
        EXPECT_EQ(ListOf(OfEvents(menuContinuous, 1, option)), (Kinds{0, 1, effect, 213, 25, 99}));
        EXPECT_EQ(ListOf(Of(menuBinary, 1, option)), (Kinds{0, 1, effect, 353, 259, 25, 14}));
        EXPECT_EQ(ListOf(OfEvents(menuBinary, 2, option)), (Kinds{0, 1, effect, 259, 25, 99}));
    }
}

TEST_F(Cox, AHazardRatioOf1HasTheLevelAsItsPower) {
    for (const i16 menu : {menuContinuous, menuBinary})
        for (const i16 tails : {OneSided, TwoSided}) {
            const Values none = With(Plan(), {{Kind::H1HazardRatio, "1"},
                                              {Kind::H1Slope, "0"},
                                              {Kind::SignificanceLevel, "0.03"}});
            for (const auto& choice :
                 {Of(menu, tails, asRatio), Of(menu, tails, asCoefficient),
                  OfEvents(menu, tails, asRatio), OfEvents(menu, tails, asCoefficient)})
                EXPECT_NEAR(PowerOf(choice, none), 0.03, normalError) << choice;
        }
}

TEST_F(Cox, ACoefficientIsTheLogarithmOfAHazardRatio) {
    for (const i16 menu : {menuContinuous, menuBinary}) {
        EXPECT_NEAR(PowerOf(Of(menu, 2, asCoefficient), Plan()),
                    PowerOf(Of(menu, 2, asRatio), Plan()), 1e-6);
        EXPECT_NEAR(std::log(SolutionOf(Of(menu, 1, asRatio), Plan(), Kind::H1HazardRatio)),
                    SolutionOf(Of(menu, 1, asCoefficient), Plan(), Kind::H1Slope), 1e-4);
    }
}

// Exposed and not exposed exchanged, the tail turned.
TEST_F(Cox, MirrorImage) {
    const Values mirrored = With(Plan(), {{Kind::H1Slope, "-0.5"}, {Kind::ProportionAtX1, "0.4"}});
    EXPECT_NEAR(PowerOf(OfEvents(menuBinary, 1, asCoefficient), Plan()),
                PowerOf(LeftOf(OfEvents(menuBinary, 1, asCoefficient)), mirrored), 1e-6);
    EXPECT_NEAR(PowerOf(Of(menuContinuous, 1, asCoefficient), Plan()),
                PowerOf(LeftOf(Of(menuContinuous, 1, asCoefficient)), mirrored), 1e-6);
    // The survival of the others: 0.5 to the power of exp 0.5.
    const Values survivors =
        With(mirrored, {{Kind::H1Survival1, NumberText(std::pow(0.5, std::exp(0.5)), 12)}});
    EXPECT_NEAR(PowerOf(Of(menuBinary, 1, asCoefficient), Plan()),
                PowerOf(LeftOf(Of(menuBinary, 1, asCoefficient)), survivors), 1e-6);
}

// The events that follow from the survival of the study, entered as such.
TEST_F(Cox, EventsFollowFromTheSurvivalOfTheStudy) {
    EXPECT_NEAR(PowerOf(Of(menuContinuous, 2, asRatio), Plan()),
                PowerOf(OfEvents(menuContinuous, 2, asRatio), With(Plan(), {{Kind::Events, "60"}})),
                1e-6);
    const f64 share = 0.4 * 0.5 + 0.6 * (1 - std::pow(0.5, 1.6487213));
    EXPECT_NEAR(PowerOf(Of(menuBinary, 2, asRatio), Plan()),
                PowerOf(OfEvents(menuBinary, 2, asRatio),
                        With(Plan(), {{Kind::Events, NumberText(120 * share, 12)}})),
                1e-6);
}

TEST_F(Cox, ShareOfEvents) {
    EXPECT_NEAR(CoxEventShare(0.5, 0.6, 2), 0.4 * 0.5 + 0.6 * 0.75, 1e-15);
    EXPECT_NEAR(CoxEventShare(0.5, 0.6, 1), 0.5, 1e-15);
    EXPECT_NEAR(CoxEventShare(0.7, 0.2, 0), 0.8 * 0.3, 1e-15);
    EXPECT_NEAR(CoxEventShare(0.7, 0.2, 1e30), 0.8 * 0.3 + 0.2, 1e-15);
    EXPECT_NEAR(CoxEventShare(0.99999, 0.99999, 1e-5), 1.9999e-10, 1e-13);
}

// Of the two shares with this power the larger one.
TEST_F(Cox, TheLargerShareOfExposedIsFound) {
    const f64 share = SolutionOf(OfEvents(menuBinary, 2, asRatio),
                                 With(Plan(), {{Kind::H1HazardRatio, "2.2"}, {Kind::Events, "70"}}),
                                 Kind::ProportionAtX1);
    EXPECT_GT(share, 0.5);
    const Values found = With(
        Plan(), {{Kind::H1HazardRatio, "2.2"}, {Kind::ProportionAtX1, NumberText(1 - share, 12)}});
    EXPECT_NEAR(PowerOf(OfEvents(menuBinary, 2, asRatio), found), 0.8, 2e-4);
}

TEST_F(Cox, AnEffectIsSoughtOnTheSideOfTheTail) {
    for (const i16 menu : {menuContinuous, menuBinary}) {
        EXPECT_GT(SolutionOf(Of(menu, 1, asCoefficient), Plan(), Kind::H1Slope), 0);
        EXPECT_GT(SolutionOf(Of(menu, 2, asRatio), Plan(), Kind::H1HazardRatio), 1);
        EXPECT_LT(SolutionOf(LeftOf(Of(menu, 1, asCoefficient)), Plan(), Kind::H1Slope), 0);
        EXPECT_LT(SolutionOf(LeftOf(Of(menu, 1, asRatio)), Plan(), Kind::H1HazardRatio), 1);
    }
}

TEST_F(Cox, Statements) {
    const auto statement = [this](const AnalysisChoice& choice, i16 unknown) {
        EXPECT_NE(SolutionOf(choice, Plan(), unknown), NoValue);
        return SumStatement();
    };
    EXPECT_EQ(
        statement(Of(menuContinuous, 2, asRatio), Kind::SizeFrom4),
        "With a sample size of 86, the power is 0.80 when testing the null hypothesis H0: hazard "
        "ratio = 1 against H1: hazard ratio = 1.6487213 and survival proportion 1 = 0.5. The test "
        "used is Cox Regression, Continuous covariate test, two-sided, at the significance level "
        "0.05. The calculation is based on the assumptions that the standard deviation for "
        "covariate is 0.9 and the multiple correlation coefficient of x1 with x2 to xp is 0.3.");
    EXPECT_EQ(
        statement(OfEvents(menuContinuous, 1, asCoefficient), Kind::Events),
        "With a total number of events of 34, the power is 0.80 when testing the null hypothesis "
        "H0: regression coefficient = 0 against H1: regression coefficient = 0.5. The test used is "
        "Cox Regression, Continuous covariate test, one-sided, at the significance level 0.05. The "
        "calculation is based on the assumptions that the standard deviation for covariate is 0.9 "
        "and the multiple correlation coefficient of x1 with x2 to xp is 0.3.");
    EXPECT_EQ(statement(Of(menuBinary, 2, asCoefficient), Kind::Power),
              "With a sample size of 120, the power is 0.51 when testing the null hypothesis H0: "
              "regression coefficient = 0 against H1: regression coefficient = 0.5 and survival "
              "proportion 1 = 0.5. The test used is Cox Regression, Binary covariate test, "
              "two-sided, at the significance level 0.05. The calculation is based on the "
              "assumptions that the proportion of sample with x1 = 1 is 0.6 and the multiple "
              "correlation coefficient of x1 with x2 to xp is 0.3.");
    EXPECT_EQ(
        statement(OfEvents(menuBinary, 1, asRatio), Kind::Events),
        "With a total number of events of 114, the power is 0.80 when testing the null hypothesis "
        "H0: hazard ratio = 1 against H1: hazard ratio = 1.6487213. The test used is Cox "
        "Regression, Binary covariate test, one-sided, at the significance level 0.05. The "
        "calculation is based on the assumptions that the proportion of sample with x1 = 1 is 0.6 "
        "and the multiple correlation coefficient of x1 with x2 to xp is 0.3.");
}

} // namespace
} // namespace quorvanta::checks
