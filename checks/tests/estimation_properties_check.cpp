// The parameters of all distributions, as test, point estimate and confidence interval, with every
// choice of their options. (The tests of proportions have plans of their own.)
#include "core/dispatch.h"
#include "core/kinds.h"
#include "support/analysis_fixture.h"
#include "support/number.h"
#include "support/properties.h"

#include <cmath>
#include <set>

namespace quorvanta::checks {
namespace {

std::vector<AnalysisChoice> Analyses() {
    std::vector<AnalysisChoice> analyses;
    for (const i16 distrNo : std::initializer_list<i16>{0, 1, 2, 4, 5, 6, 8, 10})
        for (std::size_t i = 0; i < DistrParList(distrNo).size(); ++i)
            for (const i16 procedure : {ProcedureTest, ProcedureEstimate, ProcedureInterval}) {
                AnalysisChoice analysis;
                analysis.DistrNo = distrNo;
                analysis.ParListNo = static_cast<i16>(i);
                analysis.ProcedureNo = procedure;
                const bool isTestOfProportions =
                    procedure == ProcedureTest &&
                    (distrNo == DistrBinomial || distrNo == DistrHypergeometric);
                if (!isTestOfProportions)
                    analyses.push_back(analysis);
            }
    return analyses;
}

std::string NameOf(const AnalysisChoice& analysis) {
    const char* procedures[] = {"Test", "Estimate", "Interval"};
    std::string name = DistrMenuName(analysis.DistrNo) + std::to_string(analysis.ParListNo) +
                       procedures[analysis.ProcedureNo];
    std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
    return name;
}

// --- Plans ------------------------------------------------------------------------------------

void Add(Values& values, const Values& more) {
    for (const auto& [kind, text] : more)
        values[kind] = text;
}

void AddSizes(Values& values, const std::string& size) {
    for (const i16 kind : std::initializer_list<i16>{85, 14, 4, 37, 163, 164, 165, 170, 171, 172})
        values[kind] = size;
    Add(values, {{Kind::Size2Minus1, "0"},
                 {Kind::Size2Over1, "1"},
                 {Kind::StudyTime2Minus1, "0"},
                 {Kind::StudyTime2Over1, "1"}});
}

// What no hypothesis speaks of.
Values Nuisance() {
    return {{Kind::Sd, "1"},
            {Kind::Sd1, "1"},
            {Kind::Sd2, "1.2"},
            {Kind::Sd2Minus1, "0.2"},
            {Kind::Sd2Over1, "1.2"},
            {Kind::Shape, "0.6"},
            {Kind::Shape1, "0.6"},
            {Kind::Shape2, "0.7"},
            {Kind::Shape2Minus1, "0.1"},
            {Kind::Shape2Over1, "1.1667"},
            {Kind::DegreesOfFreedom, "20"},
            {Kind::NoOfGroups, "4"},
            {Kind::Scale, "2"},
            {Kind::Population, "500"},
            {Kind::Population1, "500"},
            {Kind::Population2, "600"},
            {Kind::Population2Minus1, "100"},
            {Kind::Population2Over1, "1.2"},
            {Kind::ResidualSd, "1"},
            {Kind::CovariateSd, "1"},
            {Kind::Correlation, "0.3"},
            {Kind::TrueSd2Over1, "1.2"},
            {Kind::Proportion, "0.3"},
            {Kind::Proportion1, "0.3"},
            {Kind::Proportion2, "0.4"},
            {Kind::Proportion2Minus1, "0.1"},
            {Kind::Proportion2Over1, "1.3333"},
            {Kind::PoissonMean, "0.5"},
            {Kind::PoissonMean1, "0.5"},
            {Kind::PoissonMean2, "0.8"},
            {Kind::PoissonMean2Minus1, "0.3"},
            {Kind::PoissonMean2Over1, "1.6"},
            {Kind::Rate, "0.5"},
            {Kind::Rate1, "0.5"},
            {Kind::Rate2, "0.8"},
            {Kind::Rate2Minus1, "0.3"},
            {Kind::Rate2Over1, "1.6"},
            {Kind::Odds, "0.5"},
            {Kind::Odds1, "0.5"},
            {Kind::Odds2, "0.8"},
            {Kind::Odds2Minus1, "0.3"},
            {Kind::Odds2Over1, "1.6"},
            {Kind::ErrorLevel, "0.05"},
            {Kind::ConfidenceLevel, "0.9"},
            {Kind::WidthProbability, "0.8"}};
}

std::string Text(f64 value) {
    return NumberText(value, 6);
}

// A quantity under H0 and H1, in all three forms.
void AddHypotheses(Values& values, std::initializer_list<i16> nullKinds, f64 null,
                   std::initializer_list<i16> valueKinds,
                   std::initializer_list<i16> differenceKinds,
                   std::initializer_list<i16> ratioKinds, f64 truth) {
    for (const i16 kind : nullKinds)
        values[kind] = Text(null);
    for (const i16 kind : valueKinds)
        values[kind] = Text(truth);
    for (const i16 kind : differenceKinds)
        values[kind] = Text(truth - null);
    for (const i16 kind : ratioKinds)
        values[kind] = Text(truth / null);
}

// A test that has about as much to show to the right as to the left.
Values PlanOfTest(const AnalysisChoice& choice) {
    const bool left = choice.Left;
    Values values = Nuisance();
    AddSizes(values, choice.DistrNo == DistrExponential && choice.ParListNo == 0 ? "12" : "30");
    // Means, of one sample and of two; Poisson counts and rates have means above 0.
    const bool counts = choice.DistrNo == DistrPoisson;
    const f64 null = counts ? 0.5 : 1;
    AddHypotheses(values, {57, 86, 161, 168, 63, 9}, null, {58, 87, 162, 169, 81, 73},
                  {59, 62, 43, 65}, {60, 88, 44, 74},
                  counts ? (left ? 0.25 : 0.9) : (left ? 0.5 : 1.5));
    Add(values, {{Kind::H0Mean2Minus1, "0"},
                 {Kind::H0Rate2Minus1, "0"},
                 {Kind::H0Median2Over1, "1"},
                 {Kind::H0Sd2Over1, "1"},
                 {Kind::H0Scale2Over1, "1"}});
    // Medians, deviations, scales.
    AddHypotheses(values, {89, 94, 110, 139, 142, 26}, 1, {90, 95, 111, 140, 124, 141},
                  {91, 112, 125}, {92, 96, 113, 115, 126, 128}, left ? 0.7 : 1.5);
    AddHypotheses(values, {131}, 1, {132}, {133}, {134}, left ? 0.8 : 1.2);
    AddHypotheses(values, {35}, 0.4, {83}, {40}, {41}, left ? 0.2 : 0.6);
    AddHypotheses(values, {185}, 0.3, {186}, {187}, {188}, left ? -0.1 : 0.6);
    AddHypotheses(values, {203}, 0.1, {204}, {205}, {206}, left ? -0.3 : 0.5);
    return values;
}

// An equivalence whose truth lies a little to one side of the middle.
Values PlanOfEquivalence(const AnalysisChoice& choice) {
    const bool left = choice.Left;
    Values values = PlanOfTest(choice);
    // Large enough to show it, too small to be certain of either half.
    const bool location = choice.DistrNo == DistrExponential && choice.ParListNo == 0;
    const bool counts = choice.DistrNo == DistrPoisson;
    const bool one = choice.NoOfSamples == OneSample;
    AddSizes(values, location ? "10" : (counts || !one ? "80" : "30"));
    Add(values, {{6, counts ? "-0.3" : "-0.6"},
                 {7, counts ? "0.3" : "0.6"},
                 {Kind::RateDifferenceLeftLimit, "-0.3"},
                 {Kind::RateDifferenceRightLimit, "0.3"},
                 {Kind::PoissonMeanLeftLimit, "0.2"},
                 {Kind::PoissonMeanRightLimit, "0.8"},
                 {Kind::RateLeftLimit, "0.2"},
                 {Kind::RateRightLimit, "0.8"}});
    AddHypotheses(values, {86, 168, 9}, 0.5, {87, 169, 73}, {62, 65}, {88, 74}, left ? 0.45 : 0.55);
    Add(values, {{Kind::MedianLeftLimit, "0.6"},
                 {Kind::MedianRightLimit, "1.6667"},
                 {Kind::SdLeftLimit, "0.6"},
                 {Kind::SdRightLimit, "1.6667"},
                 {Kind::ScaleLeftLimit, "0.6"},
                 {Kind::ScaleRightLimit, "1.6667"}});
    AddHypotheses(values, {94, 139, 26}, 1, {90, 95, 111, 140, 124, 141}, {}, {96, 115, 128},
                  left ? 0.9 : 1.1);
    for (const i16 kind : std::initializer_list<i16>{58, 204})
        values[kind] = left ? "-0.05" : "0.05";
    for (const i16 kind : std::initializer_list<i16>{162, 81})
        values[kind] = left ? "0.4" : "0.52"; // the variance grows with the mean
    Add(values, {{Kind::LocationLeftLimit, "-0.5"},
                 {Kind::LocationRightLimit, "0.5"},
                 {132, left ? "-0.05" : "0.05"},
                 {Kind::ProportionLeftLimit, "0.3"},
                 {Kind::ProportionRightLimit, "0.7"},
                 {83, left ? "0.48" : "0.52"},
                 {Kind::CorrelationLeftLimit, "0.1"},
                 {Kind::CorrelationRightLimit, "0.7"},
                 {186, left ? "0.4" : "0.5"}});
    return values;
}

Values PlanOfPrecision() {
    Values values = Nuisance();
    AddSizes(values, "50");
    return values;
}

// What follows from the values for the power, the error or the width.
ValidationCase Solved(const AnalysisChoice& choice, const Values& values) {
    ValidationCase plan;
    static_cast<AnalysisChoice&>(plan) = choice;
    SetUp(choice);
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != 1 && values.count(ParKind(i)) != 0)
            plan.Values[ParKind(i)] = values.at(ParKind(i));
    if (choice.ProcedureNo == ProcedureTest)
        plan.Values[0] = "0.05";
    plan.UnknownKind = ParKind(1);
    plan.Exact = SolveCase(plan);
    EXPECT_NE(plan.Exact, NoValue) << Describe(choice);
    return plan;
}

// The plan with the power, error or width that follows from it: so each parameter has a solution.
Values PlanOf(const AnalysisChoice& choice) {
    Values values = PlanOfPrecision();
    if (choice.ProcedureNo == ProcedureTest)
        values = choice.NoOfTails == TwoOneSided ? PlanOfEquivalence(choice) : PlanOfTest(choice);
    ValidationCase plan = Solved(choice, values);
    plan.Values[plan.UnknownKind] = NumberText(plan.Exact, 17);
    return plan.Values;
}

i16 Option(const AnalysisChoice& choice, i16 group) {
    const auto found = choice.Groups.find(group);
    return found == choice.Groups.end() ? i16{-1} : found->second;
}

// The H0 value of a location whose difference from H1 is kept, and of a scale whose ratio is kept,
// doesn't count.
std::set<i16> WithoutInfluence(const AnalysisChoice& choice) {
    std::set<i16> kinds;
    const bool hasVarianceOfItsMean = choice.DistrNo == DistrPoisson;
    if (Option(choice, 0) == 1 && !hasVarianceOfItsMean)
        kinds.insert(57);
    if (Option(choice, 9) == 2)
        kinds.insert(89);
    if (Option(choice, 3) == 2)
        kinds.insert(110);
    if (Option(choice, 15) == 2)
        kinds.insert(142);
    if (Option(choice, 14) == 1)
        kinds.insert(131);
    if (Option(choice, 27) == 1)
        kinds.insert(203);
    return kinds;
}

class EstimationProperties : public AnalysisFixture,
                             public ::testing::WithParamInterface<AnalysisChoice> {
  protected:
    void SetUp() override {
        AnalysisFixture::SetUp();
        FileCommand(CalculationWindow);
    }
};

TEST_P(EstimationProperties, EachUnknownIsSolvedFromTheStartValuesOrNotAndToldSo) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectSolvesOrSaysWhy(choice, {}, platform);
}

TEST_P(EstimationProperties, EachUnknownOfASoundPlanIsSolved) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        ExpectAllSolve(choice, PlanOf(choice), platform, WithoutInfluence(choice));
}

TEST_P(EstimationProperties, WhatIsSolvedGivesBackTheOldResult) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        EXPECT_GE(ExpectRoundTrip(choice, PlanOf(choice)), 2) << Describe(choice);
}

TEST_P(EstimationProperties, NoFaultInsideTheLimits) {
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        ExpectSafeInsideLimits(choice, {});
        ExpectSafeInsideLimits(choice, PlanOf(choice));
    }
}

TEST_P(EstimationProperties, ErrorsAndWidthsFallWithTheSampleSize) {
    if (GetParam().ProcedureNo == ProcedureTest)
        return;
    for (const AnalysisChoice& choice : AllChoices(GetParam())) {
        f64 former = NoValue;
        for (const char* size : {"50", "100", "200", "400"}) {
            Values values = PlanOfPrecision();
            AddSizes(values, size);
            const f64 result = Solved(choice, values).Exact;
            EXPECT_LT(result, former) << Describe(choice) << " at " << size;
            former = result;
        }
    }
}

// More subjects, or more time, never mean a smaller power or a smaller probability of a narrow
// interval.
TEST_P(EstimationProperties, MoreSubjectsNeverMeanLess) {
    // A handful of subjects may estimate the deviation as next to nothing, and thereby give a very
    // small interval more often than a dozen; and the normal approximation of t is not made for
    // them.
    constexpr f64 dozen = 12;
    // Where the formula for chi-square and F changes, at 10, 21 and 100 df.
    constexpr f64 change = 0.001;
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        for (const i16 kind : std::initializer_list<i16>{85, 14, 4, 163, 164, 170, 171})
            ExpectMonotoneIn(kind, choice, PlanOf(choice), change, dozen);
}

TEST_P(EstimationProperties, SmallSizesAreFound) {
    for (const AnalysisChoice& choice : AllChoices(GetParam()))
        for (const i16 kind : std::initializer_list<i16>{85, 14, 4, 163, 164, 170, 171})
            ExpectSmallSizesFound(kind, choice, PlanOf(choice));
}

INSTANTIATE_TEST_SUITE_P(Parameters, EstimationProperties, ::testing::ValuesIn(Analyses()),
                         [](const auto& info) { return NameOf(info.param); });

} // namespace
} // namespace quorvanta::checks
