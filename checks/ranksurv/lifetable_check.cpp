// The life-table tests: their lists, edges, expectations, reductions and messages.
//
// Figures of other origin come from scipy, as checks/reference/lifetable.py forms them; by formula
// and by simulation they are in checks/data/validation.
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "output/statement.h"
#include "ranksurv/lifetable.h"
#include "ranksurv/survivalmodel.h"
#include "support/number.h"
#include "support/solving_fixture.h"

#include <cmath>

namespace quorvanta::checks {
namespace {

using Kinds = std::vector<i16>;

constexpr i16 menuExponential = 390;
constexpr i16 menuWeibull = 391;
constexpr i16 menuGamma = 392;
constexpr i16 menuLognormal = 393;
constexpr i16 menuPiecewise = 394;
// What the approximation of the normal quantile may be away from a power.
constexpr f64 normalError = 2e-4;

AnalysisChoice Exponential(i16 tails, std::vector<i16> ticked = {}) {
    return MenuChoice(menuExponential, TwoSamples, tails, {}, std::move(ticked));
}

AnalysisChoice Of(i16 menuNo, i16 tails) {
    return MenuChoice(menuNo, TwoSamples, tails);
}

const Values& Plan() {
    static const Values values{{Kind::SignificanceLevel, "0.05"},
                               {Kind::Power, "0.8"},
                               {Kind::H1Rate1, "0.5"},
                               {Kind::H1Rate2, "0.8"},
                               {Kind::H1Incidence1, "0.3"},
                               {Kind::H1Incidence2, "0.45"},
                               {Kind::H1Median1, "1.5"},
                               {Kind::H1Median2, "2.4"},
                               {Kind::GammaShape, "1"},
                               {Kind::Shape, "0.8"},
                               {Kind::LossRate1, "0.1"},
                               {Kind::LossRate2, "0.2"},
                               {Kind::LossIncidence1, "0.1"},
                               {Kind::LossIncidence2, "0.2"},
                               {Kind::AccrualRate, "0.5"},
                               {Kind::AccrualTime, "2"},
                               {Kind::TotalStudyTime, "5"},
                               {Kind::IntervalLength, "0.5"},
                               {Kind::Size1, "60"},
                               {Kind::Size2, "80"},
                               {Kind::NoOfIntervals, "3"}};
    return values;
}

Values With(Values values, const Values& others) {
    for (const auto& [kind, text] : others)
        values[kind] = text;
    return values;
}

class LifeTable : public SolvingFixture {
  protected:
    // The power of the piecewise test with this table.
    f64 PiecewisePower(const AnalysisChoice& choice, const Values& values,
                       const IntervalTable& table) {
        Start(choice, With(values, {{316, std::to_string(table.size())}}));
        FillIntervals(table);
        SolveFor(PositionOf(Kind::Power));
        return ParValue(PowerParNo);
    }
};

TEST_F(LifeTable, Lists) {
    for (const auto& [option, second] : {std::pair<i16, i16>{0, 73}, {1, 65}, {2, 74}})
        EXPECT_EQ(ListOf(MenuChoice(menuExponential, 2, 1, {{5, option}, {8, 0}, {2, 0}})),
                  (Kinds{0, 1, 9, second, 13, 45, 33, 10, 11, 12, 4, 37}));
    for (const auto& [option, second] : {std::pair<i16, i16>{0, 79}, {1, 68}, {2, 80}})
        EXPECT_EQ(ListOf(MenuChoice(menuExponential, 2, 2, {{7, option}, {30, 1}, {2, 2}},
                                    {Check::Incidences})),
                  (Kinds{0, 1, 53, second, 119, 121, 33, 10, 11, 12, 4, 5}));
    for (const auto& [option, second] : {std::pair<i16, i16>{0, 95}, {1, 96}}) {
        EXPECT_EQ(ListOf(MenuChoice(menuExponential, 2, 2, {{10, option}, {8, 2}, {2, 1}},
                                    {Check::Medians})),
                  (Kinds{0, 1, 94, second, 13, 49, 33, 10, 11, 12, 4, 38}));
        for (const i16 menu : {menuWeibull, menuGamma})
            EXPECT_EQ(ListOf(MenuChoice(menu, 2, 1, {{10, option}, {8, 1}, {2, 0}})),
                      (Kinds{0, 1, 94, second, 329, 13, 46, 33, 10, 11, 12, 4, 37}));
        EXPECT_EQ(ListOf(MenuChoice(menuLognormal, 2, 1, {{10, option}, {8, 0}, {2, 0}})),
                  (Kinds{0, 1, 94, second, 27, 13, 45, 33, 10, 11, 12, 4, 37}));
    }
    EXPECT_EQ(ListOf(MenuChoice(menuPiecewise, 2, 2, {{2, 2}})),
              (Kinds{0, 1, 316, 33, 10, 11, 4, 5}));
}

// --- What is expected in an interval ------------------------------------------------------------

TEST_F(LifeTable, ChancesInAnInterval) {
    const auto chances = IntervalProbs(
        {0, 1, 3}, [](f64 t) { return std::exp(-0.5 * t); }, 0.2);
    ASSERT_EQ(chances.size(), 2U);
    EXPECT_NEAR(chances[0].Event, 1 - std::exp(-0.5), 1e-14);
    EXPECT_NEAR(chances[0].Loss, 1 - std::exp(-0.2), 1e-14);
    EXPECT_NEAR(chances[1].Event, 1 - std::exp(-1.0), 1e-14);
    EXPECT_NEAR(chances[1].Loss, 1 - std::exp(-0.4), 1e-14);
}

// Nobody is left, and a survival function that rises by an error of approximation.
TEST_F(LifeTable, ChancesWhereNobodyIsLeft) {
    const auto gone = IntervalProbs(
        {0, 1, 2}, [](f64) { return 0.0; }, 1e9);
    EXPECT_EQ(gone[0].Event, 1);
    EXPECT_EQ(gone[1].Event, 1);
    EXPECT_EQ(gone[1].Loss, 1);
    const auto rising = IntervalProbs(
        {0, 1, 2}, [](f64 t) { return 0.5 + t * 1e-6; }, 0);
    EXPECT_EQ(rising[1].Event, 0);
}

// An interval with all at risk censored: n' = n/2 and no event.
TEST_F(LifeTable, AnIntervalInWhichAllAreCensored) {
    const auto followed = [](f64 t) { return t > 0 ? 0.0 : 1.0; };
    const auto shares = LifeTableShares({0, 1}, {{0, 0}}, followed, 0);
    EXPECT_DOUBLE_EQ(shares[0].AtRisk, 0.5);
    EXPECT_DOUBLE_EQ(shares[0].Events, 0);
    const MantelHaenszel sums = ExpectedSums(shares, shares, 50, 70);
    EXPECT_EQ(sums.U, 0);
    EXPECT_EQ(sums.V, 0);
}

TEST_F(LifeTable, AnIntervalWithOneGroupAddsNothing) {
    const std::vector<IntervalShare> both{{0.8, 0.2}, {0.4, 0.1}};
    const std::vector<IntervalShare> one{{0.7, 0.3}, {0, 0}};
    const MantelHaenszel first = ExpectedSums({both[0]}, {one[0]}, 50, 60);
    const MantelHaenszel sums = ExpectedSums(both, one, 50, 60);
    EXPECT_EQ(sums.U, first.U);
    EXPECT_EQ(sums.V, first.V);
    EXPECT_NEAR(first.U, (10 * 42.0 - 18 * 40.0) / 82, 1e-12);
    EXPECT_NEAR(first.V, 40.0 * 42 / 82 * (28.0 / 82) * (54.0 / 82), 1e-12);
}

// The mean of the hypergeometric variance over the binomial distribution of the events, added up:
// with one patient in the interval there is none, and the unconditional variance stands for it.
TEST_F(LifeTable, TheVarianceIsTheExpectationOfThatOfTheStatistic) {
    constexpr int n = 12;
    constexpr f64 n1 = 5;
    constexpr f64 p = 0.3;
    f64 mean = 0;
    f64 probability = std::pow(1 - p, n);
    for (int d = 0; d <= n; ++d) {
        mean += probability * d / n * (n - d) / (n - 1) * n1 / n * (n - n1);
        probability *= (n - d) / (d + 1.0) * p / (1 - p);
    }
    const MantelHaenszel sums = ExpectedSums({{1, p}}, {{1, p}}, n1, n - n1);
    EXPECT_NEAR(sums.V, mean, 1e-12);
    EXPECT_NEAR(sums.U, 0, 1e-12);
}

// Everybody followed throughout: each loss counts as a half, and as many have the event as leave by
// it where two hazards compete.
TEST_F(LifeTable, LossesCountAsAHalf) {
    const f64 a = 0.5;
    const f64 b = 0.2;
    const auto certain = [](f64) { return 1.0; };
    const auto shares = LifeTableShares({0, 1}, {{1 - std::exp(-a), 1 - std::exp(-b)}}, certain, 1);
    const f64 leaving = 1 - std::exp(-a - b);
    EXPECT_NEAR(shares[0].Events, a / (a + b) * leaving, 1e-14);
    EXPECT_NEAR(shares[0].AtRisk, 1 - b / (a + b) * leaving / 2, 1e-14);
}

// Uniform follow-up over the interval: the integral by hand, D = a (1 - (1 - exp(-a))/a)/a.
TEST_F(LifeTable, PatientsWhoEnterDuringAnIntervalAreFollowedForAPartOfIt) {
    for (const f64 a : {1e-6, 0.1, 0.7, 2.0}) {
        const auto shares = LifeTableShares(
            {0, 1}, {{-std::expm1(-a), 0}}, [](f64 t) { return 1 - t; }, 0);
        EXPECT_NEAR(shares[0].Events / a, (a + std::expm1(-a)) / (a * a), 2e-5) << a;
        EXPECT_NEAR(shares[0].AtRisk, 1 - (1 - shares[0].Events) / 2, 1e-12) << a;
    }
}

TEST_F(LifeTable, IntervalsEndWithTheStudy) {
    EXPECT_EQ(IntervalBounds(2, 5), (std::vector<f64>{0, 2, 4, 5}));
    EXPECT_EQ(IntervalBounds(2.5, 5), (std::vector<f64>{0, 2.5, 5}));
    EXPECT_EQ(IntervalBounds(9, 5), (std::vector<f64>{0, 5}));
    // In 32 bits 50 lengths of 0.1 are a little more than 5, or a little less.
    EXPECT_EQ(IntervalBounds(f64{0.1F}, 5).size(), 51U);
    EXPECT_EQ(IntervalBounds(1e-9, 5).size(), 301U);
}

// --- Survival models ----------------------------------------------------------------------------

TEST_F(LifeTable, HalfOfThePatientsSurviveTheMedian) {
    for (const SurvivalModel model : {WeibullSurvival, GammaSurvival, LognormalSurvival})
        for (const f64 shape : {0.05, 0.7, 1.0, 3.5, 40.0}) {
            EXPECT_NEAR(SurvivalAtModel(model, 2.5, 2.5, shape), 0.5, 2e-5)
                << model << ' ' << shape;
            EXPECT_EQ(SurvivalAtModel(model, 0, 2.5, shape), 1);
        }
}

// weibull_min, gamma and lognorm of scipy.
TEST_F(LifeTable, Survival) {
    EXPECT_NEAR(SurvivalAtModel(WeibullSurvival, 3, 1.5, 2), 0.0625, 1e-6);
    EXPECT_NEAR(SurvivalAtModel(GammaSurvival, 3, 1.5, 1), 0.25, 2e-5);
    EXPECT_NEAR(SurvivalAtModel(LognormalSurvival, 3, 1.5, std::log(2.0)), 0.158655254, 1e-5);
}

// --- Equal groups, mirror images, reductions ----------------------------------------------------

TEST_F(LifeTable, EqualGroupsHaveTheLevelAsTheirPower) {
    const Values equal = With(Plan(), {{Kind::H1Rate2, "0.5"},
                                       {Kind::LossRate2, "0.1"},
                                       {Kind::H1Incidence2, "0.3"},
                                       {Kind::LossIncidence2, "0.1"},
                                       {Kind::H1Median2, "1.5"}});
    for (const i16 tails : {OneSided, TwoSided}) {
        for (const std::vector<i16>& ticked :
             {std::vector<i16>{}, {Check::Incidences}, {Check::Medians}})
            EXPECT_NEAR(PowerOf(Exponential(tails, ticked), equal), 0.05, normalError);
        for (const i16 menu : {menuWeibull, menuGamma, menuLognormal})
            EXPECT_NEAR(PowerOf(Of(menu, tails), equal), 0.05, normalError);
        EXPECT_NEAR(PiecewisePower(Of(menuPiecewise, tails), equal,
                                   {{0, 0.5, 0.5, 0, 0}, {2, 0.1, 0.1, 0.3, 0.3}}),
                    0.05, normalError);
    }
}

TEST_F(LifeTable, GroupsExchangedAndTheTailTurned) {
    const Values exchanged = With(Plan(), {{Kind::H1Rate1, "0.8"},
                                           {Kind::H1Rate2, "0.5"},
                                           {Kind::H1Incidence1, "0.45"},
                                           {Kind::H1Incidence2, "0.3"},
                                           {Kind::H1Median1, "2.4"},
                                           {Kind::H1Median2, "1.5"},
                                           {Kind::LossRate1, "0.2"},
                                           {Kind::LossRate2, "0.1"},
                                           {Kind::LossIncidence1, "0.2"},
                                           {Kind::LossIncidence2, "0.1"},
                                           {Kind::Size1, "80"},
                                           {Kind::Size2, "60"}});
    const auto expectMirrored = [&](const AnalysisChoice& choice) {
        const f64 power = PowerOf(choice, Plan());
        EXPECT_GT(power, 0.1) << choice;
        EXPECT_NEAR(PowerOf(LeftOf(choice), exchanged), power, 1e-6) << choice;
    };
    for (const std::vector<i16>& ticked :
         {std::vector<i16>{}, {Check::Incidences}, {Check::Medians}})
        expectMirrored(Exponential(1, ticked));
    for (const i16 menu : {menuWeibull, menuGamma, menuLognormal})
        expectMirrored(Of(menu, 1));
    EXPECT_NEAR(PiecewisePower(Of(menuPiecewise, 1), Plan(),
                               {{0, 0.2, 0.4, 0.1, 0}, {2, 0.3, 0.6, 0, 0.1}}),
                PiecewisePower(LeftOf(Of(menuPiecewise, 1)), exchanged,
                               {{0, 0.4, 0.2, 0, 0.1}, {2, 0.6, 0.3, 0.1, 0}}),
                1e-6);
}

// A longer median is a lower hazard: the same study, in the other tail.
TEST_F(LifeTable, MediansTurnTheDirection) {
    const Values values = With(Plan(), {{Kind::H1Rate1, "0.5"},
                                        {Kind::H1Rate2, "0.8"},
                                        {Kind::H1Median1, NumberText(std::log(2) / 0.5, 12)},
                                        {Kind::H1Median2, NumberText(std::log(2) / 0.8, 12)}});
    EXPECT_NEAR(PowerOf(Exponential(1), values),
                PowerOf(LeftOf(Exponential(1, {Check::Medians})), values), 1e-6);
    const Values incidences =
        With(values, {{Kind::H1Incidence1, NumberText(1 - std::exp(-0.5), 12)},
                      {Kind::H1Incidence2, NumberText(1 - std::exp(-0.8), 12)},
                      {Kind::LossIncidence1, NumberText(1 - std::exp(-0.1), 12)},
                      {Kind::LossIncidence2, NumberText(1 - std::exp(-0.2), 12)}});
    EXPECT_NEAR(PowerOf(Exponential(1), values),
                PowerOf(Exponential(1, {Check::Incidences}), incidences), 1e-6);
}

TEST_F(LifeTable, OfShapeOneAreExponential) {
    for (const i16 tails : {OneSided, TwoSided}) {
        const f64 power = PowerOf(Exponential(tails, {Check::Medians}), Plan());
        EXPECT_NEAR(PowerOf(Of(menuWeibull, tails), Plan()), power, 1e-6);
        EXPECT_NEAR(PowerOf(Of(menuGamma, tails), Plan()), power, 1e-4);
    }
}

TEST_F(LifeTable, PiecewiseWithEqualHazardsIsExponential) {
    const IntervalTable table{
        {0, 0.5, 0.8, 0.1, 0.2}, {2, 0.5, 0.8, 0.1, 0.2}, {4, 0.5, 0.8, 0.1, 0.2}};
    for (const char* shape : {"0", "0.5"}) {
        const Values values = With(Plan(), {{Kind::IntervalLength, "2"}, {33, shape}});
        EXPECT_NEAR(PiecewisePower(Of(menuPiecewise, 2), values, table),
                    PowerOf(Exponential(2), values), 1e-6);
    }
    // Intervals that start when the study is over don't count.
    IntervalTable longer = table;
    longer.push_back({6, 9, 0.1, 0, 0});
    EXPECT_EQ(PiecewisePower(Of(menuPiecewise, 2), Plan(), longer),
              PiecewisePower(Of(menuPiecewise, 2), Plan(), table));
}

TEST_F(LifeTable, VeryShortAccrualIsNearlyNone) {
    const Values values = With(Plan(), {{Kind::IntervalLength, "0.01"}, {Kind::AccrualTime, "0"}});
    EXPECT_NEAR(PowerOf(Exponential(2), values),
                PowerOf(Exponential(2), With(values, {{Kind::AccrualTime, "0.0001"}})), 1e-4);
}

// --- Searches -----------------------------------------------------------------------------------

// A search for a size takes what it once knew of the intervals; nothing of an earlier analysis.
TEST_F(LifeTable, WhatIsRememberedIsThatOfTheAnalysis) {
    const f64 hazards = PowerOf(Exponential(2), Plan());
    const f64 incidences = PowerOf(Exponential(2, {Check::Incidences}), Plan());
    const f64 weibull = PowerOf(Of(menuWeibull, 2), With(Plan(), {{Kind::GammaShape, "2"}}));
    const f64 gamma = PowerOf(Of(menuGamma, 2), With(Plan(), {{Kind::GammaShape, "2"}}));
    EXPECT_NE(weibull, gamma);
    EXPECT_EQ(PowerOf(Exponential(2), Plan()), hazards);
    EXPECT_EQ(PowerOf(Exponential(2, {Check::Incidences}), Plan()), incidences);
    EXPECT_EQ(PowerOf(Of(menuWeibull, 2), With(Plan(), {{Kind::GammaShape, "2"}})), weibull);
}

// Of the hazards with this power at a ratio the smaller one, although intervals tell nothing of
// hazards without measure.
TEST_F(LifeTable, TheSmallerHazardIsFound) {
    const AnalysisChoice choice = MenuChoice(menuExponential, 2, 2, {{5, 2}, {8, 2}, {2, 2}});
    const Values values{{Kind::SignificanceLevel, "0.05"},
                        {Kind::Power, "0.85"},
                        {Kind::H1Rate2Over1, "1.7"},
                        {Kind::LossRate1, "0.05"},
                        {Kind::LossRate2Over1, "1"},
                        {Kind::AccrualRate, "0"},
                        {Kind::AccrualTime, "2"},
                        {Kind::TotalStudyTime, "6"},
                        {Kind::IntervalLength, "0.5"},
                        {Kind::Size1, "100"},
                        {Kind::Size2Over1, "1"}};
    EXPECT_NEAR(SolutionOf(choice, values, Kind::H1Rate1), 0.193583, 3e-4);
}

// --- Messages -----------------------------------------------------------------------------------

TEST_F(LifeTable, TooManyIntervalsAreRefused) {
    EXPECT_EQ(
        MessageOf(Exponential(2), With(Plan(), {{Kind::IntervalLength, "0.016"}}), Kind::Power),
        "Time Interval Length Has To Be Greater Than or Equal to 0.016667.");
    EXPECT_NE(PowerOf(Exponential(2), With(Plan(), {{Kind::IntervalLength, "0.017"}})), NoValue);
}

TEST_F(LifeTable, AStudyThatEndsBeforeUniformAccrualIsRefused) {
    EXPECT_EQ(MessageOf(Exponential(2),
                        With(Plan(), {{Kind::AccrualRate, "0"}, {Kind::AccrualTime, "6"}}),
                        Kind::Power),
              "Total Study Time Has To Be Greater Than or Equal to 6.");
    EXPECT_NE(
        PowerOf(Exponential(2), With(Plan(), {{Kind::AccrualRate, "1"}, {Kind::AccrualTime, "6"}})),
        NoValue);
}

TEST_F(LifeTable, AShapeWithoutAMedianIsRefused) {
    for (const i16 menu : {menuWeibull, menuGamma})
        EXPECT_EQ(MessageOf(Of(menu, 2), With(Plan(), {{Kind::GammaShape, "0.01"}}), Kind::Power),
                  "Shape Has To Be Greater Than or Equal to 0.02.");
}

class LifeTableGrid : public LifeTable {
  protected:
    // Fills the grid row by row; does it accept that?
    bool Fill(const std::vector<std::vector<std::string>>& rows) {
        bool accepted = false;
        Start(Of(menuPiecewise, 2), With(Plan(), {{316, std::to_string(rows.size())}}));
        platform.Messages.clear();
        platform.GridFillings.emplace_back([&] {
            for (std::size_t i = 0; i < rows.size(); ++i)
                for (std::size_t j = 0; j < rows[i].size(); ++j)
                    GridOK(static_cast<i16>(i + 1), static_cast<i16>(j + 1), rows[i][j],
                           Leaving::Nothing);
            accepted = !AcceptGrid().has_value();
            return accepted;
        });
        GetFromTable(PositionOf(Kind::NoOfIntervals));
        return accepted;
    }
    std::string Refusal(const std::vector<std::vector<std::string>>& rows) {
        EXPECT_FALSE(Fill(rows));
        return platform.Messages.empty() ? "" : platform.Messages.front().Text;
    }
};

TEST_F(LifeTableGrid, TheTableGivesTheHazards) {
    ASSERT_TRUE(Fill({{"0", "0.5", "0.8", "0.1", "0.2"}, {"2", "0.5", "0.8", "0.1", "0.2"}}));
    EXPECT_TRUE(IsBluePar(PositionOf(Kind::NoOfIntervals)));
    EXPECT_EQ(ParText(Kind::NoOfIntervals), "2") << "a number of intervals, not 2.0";
    SolveFor(PositionOf(Kind::Power));
    const f64 power = ParValue(PowerParNo);
    EXPECT_EQ(power, PiecewisePower(Of(menuPiecewise, 2), Plan(),
                                    {{0, 0.5, 0.8, 0.1, 0.2}, {2, 0.5, 0.8, 0.1, 0.2}}));
}

TEST_F(LifeTableGrid, Messages) {
    EXPECT_EQ(Refusal({{"1", "0.5", "0.8", "0", "0"}}), "First Interval Start Must Be 0.");
    EXPECT_EQ(Refusal({{"0", "0.5", "0.8", "0", "0"}, {"0", "0.5", "0.8", "0", "0"}}),
              "Interval Start Must Be > 0.");
    EXPECT_EQ(Refusal({{"0", "0", "0.8", "0", "0"}}), "Hazard Rate 1 Must Be > 0.");
    EXPECT_EQ(Refusal({{"0", "0.5", "-1", "0", "0"}}), "Hazard Rate 2 Must Be > 0.");
    EXPECT_EQ(Refusal({{"0", "0.5", "0.8", "-1", "0"}}), "Loss Rate 1 Must Be >= 0.");
    EXPECT_EQ(Refusal({{"0", "0.5", "0.8", "0", "-0.1"}}), "Loss Rate 2 Must Be >= 0.");
}

TEST_F(LifeTableGrid, WithoutATableThereIsNoPower) {
    Start(Of(menuPiecewise, 2), With(Plan(), {{Kind::NoOfIntervals, "4"}}));
    HasGridData = False;
    platform.Messages.clear();
    SolveFor(PositionOf(Kind::Power));
    EXPECT_EQ(platform.Texts(), std::vector<std::string>{"Hazard and Loss Rates Have No Values."});
}

// --- Statements ---------------------------------------------------------------------------------

TEST_F(LifeTable, Statements) {
    const auto statement = [this](const AnalysisChoice& choice, i16 unknown) {
        EXPECT_NE(SolutionOf(choice, Plan(), unknown), NoValue);
        return SumStatement();
    };
    EXPECT_EQ(statement(Exponential(2), Kind::Size1),
              "With a total sample size of 210 (130 in sample 1 and 80 in sample 2), the power is "
              "0.80 when testing the null hypothesis H0: hazard rate 2 = hazard rate 1 against H1: "
              "hazard rate 1 = 0.5 and hazard rate 2 = 0.8. The test used is Life Table test "
              "(Mantel-Haenszel), Exponential distribution, two-sided, at the significance level "
              "0.05. The calculation is based on the assumptions that the loss rate 1 is 0.1, the "
              "loss rate 2 is 0.2, the accrual rate is 0.5, the accrual time is 2, the total study "
              "time is 5 and the time interval length is 0.5.");
    EXPECT_EQ(
        statement(Exponential(1, {Check::Medians}), Kind::Power),
        "With a total sample size of 140 (60 in sample 1 and 80 in sample 2), the power is 0.70 "
        "when testing the null hypothesis H0: median 2 = median 1 against H1: median 1 = 1.5 and "
        "median 2 = 2.4. The test used is Life Table test (Mantel-Haenszel), Exponential "
        "distribution, one-sided, at the significance level 0.05. The calculation is based on the "
        "assumptions that the loss rate 1 is 0.1, the loss rate 2 is 0.2, the accrual rate is 0.5, "
        "the accrual time is 2, the total study time is 5 and the time interval length is 0.5.");
    EXPECT_EQ(statement(Of(menuWeibull, 2), Kind::Power),
              "With a total sample size of 140 (60 in sample 1 and 80 in sample 2), the power is "
              "0.59 when testing the null hypothesis H0: median 2 = median 1 against H1: median 1 "
              "= 1.5 and median 2 = 2.4. The test used is Life Table test (Mantel-Haenszel), "
              "Weibull distribution, two-sided, at the significance level 0.05. The calculation is "
              "based on the assumptions that the shape is 1, the loss rate 1 is 0.1, the loss rate "
              "2 is 0.2, the accrual rate is 0.5, the accrual time is 2, the total study time is 5 "
              "and the time interval length is 0.5.");
    EXPECT_EQ(
        statement(Of(menuLognormal, 1), Kind::Power),
        "With a total sample size of 140 (60 in sample 1 and 80 in sample 2), the power is 0.90 "
        "when testing the null hypothesis H0: median 2 = median 1 against H1: median 1 = 1.5 and "
        "median 2 = 2.4. The test used is Life Table test (Mantel-Haenszel), Lognormal "
        "distribution, one-sided, at the significance level 0.05. The calculation is based on the "
        "assumptions that the shape (standard deviation on the natural log scale) is 0.8, the loss "
        "rate 1 is 0.1, the loss rate 2 is 0.2, the accrual rate is 0.5, the accrual time is 2, "
        "the total study time is 5 and the time interval length is 0.5.");
    PiecewisePower(Of(menuPiecewise, 2), Plan(), {{0, 0.2, 0.4, 0.1, 0}, {2, 0.3, 0.6, 0, 0.1}});
    EXPECT_EQ(SumStatement(),
              "With a total sample size of 140 (60 in sample 1 and 80 in sample 2), the power is "
              "0.82 when testing the null hypothesis H0: equal hazard rates against H1: different "
              "hazard rates. The test used is Life Table test (Mantel-Haenszel), Piecewise "
              "Exponential distribution, two-sided, at the significance level 0.05. The "
              "calculation is based on the assumptions that the number of intervals is 2, the "
              "accrual rate is 0.5, the accrual time is 2 and the total study time is 5.");
}

} // namespace
} // namespace quorvanta::checks
