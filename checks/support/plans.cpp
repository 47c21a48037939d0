#include "support/plans.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/form.h"
#include "core/kinds.h"
#include "core/values.h"
#include "support/number.h"
#include "support/tsv.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quorvanta::checks {

namespace {

void Add(Values& values, const Values& more) {
    for (const auto& [kind, text] : more)
        values[kind] = text;
}

// --- Choices ----------------------------------------------------------------------------------

bool Has(const AnalysisChoice& choice, i16 checkKind) {
    return std::find(choice.Checks.begin(), choice.Checks.end(), checkKind) != choice.Checks.end();
}

i16 Option(const AnalysisChoice& choice, i16 group) {
    const auto found = choice.Groups.find(group);
    return found == choice.Groups.end() ? i16{0} : found->second;
}

bool IsOdds(const AnalysisChoice& choice) {
    return Has(choice, Check::Odds) || (choice.MenuNo < 0 && choice.ParListNo == 1);
}

// --- Tests of means ---------------------------------------------------------------------------

// About as much to show to the right as to the left, in every form.
Values PlanOfMeans(const AnalysisChoice& choice) {
    const bool equivalence = choice.NoOfTails == TwoOneSided;
    const bool left = choice.Left;
    Values values{{Kind::SignificanceLevel, "0.05"},
                  {Kind::Power, "0.8"},
                  {Kind::TestConfidenceLevel, "0.9"},
                  {Kind::ProbabilityWithinLimits, "0.8"},
                  {Kind::H0Mean2Minus1, "0"},
                  {Kind::H0Mean, "1"},
                  {Kind::H0MeanOfDifference, "1"},
                  {Kind::H1Mean1, "1"},
                  {Kind::MeanLeftLimit, "-0.6"},
                  {Kind::MeanRightLimit, "0.6"},
                  {Kind::MedianLeftLimit, "0.6"},
                  {Kind::MedianRightLimit, "1.6"},
                  {Kind::RatioLeftLimit, "0.75"},
                  {Kind::RatioRightLimit, "1.3333"},
                  {Kind::MeanNonInferiorityLimit, "0"},
                  {Kind::RatioNonInferiorityLimit, "1"},
                  {Kind::H0Median2Over1, "1"},
                  {Kind::H1Median1, "1"},
                  {Kind::Sd, "1"},
                  {Kind::SdOfDifference, "1"},
                  {Kind::Sd1, "1"},
                  {Kind::Sd2, "1.2"},
                  {Kind::Sd2Minus1, "0.2"},
                  {Kind::Sd2Over1, "1.2"},
                  {Kind::Shape, "0.6"},
                  {Kind::LogSd, equivalence ? "0.3" : "0.6"},
                  {Kind::CoefficientOfVariation, "0.3"},
                  {Kind::Size1, "50"},
                  {Kind::Size2, "50"},
                  {Kind::Size2Minus1, "0"},
                  {Kind::Size2Over1, "1"},
                  {Kind::Size, "30"},
                  {Kind::SequenceSize1, "30"},
                  {Kind::SequenceSize2, "30"},
                  {Kind::SequenceSize2Minus1, "0"},
                  {Kind::SequenceSize2Over1, "1"},
                  {Kind::DegreesOfFreedom, "20"},
                  {Kind::NoOfGroups, "4"}};
    const Values effects = equivalence ? (left ? Values{{Kind::H1Mean2Minus1, "-0.05"},
                                                        {Kind::H1Mean2, "0.95"},
                                                        {Kind::H1Mean2Over1, "0.95"},
                                                        {Kind::H1MeanOfDifference, "-0.05"},
                                                        {Kind::H1Median2Over1, "0.97"},
                                                        {Kind::H1Median2, "0.97"}}
                                               : Values{{Kind::H1Mean2Minus1, "0.05"},
                                                        {Kind::H1Mean2, "1.05"},
                                                        {Kind::H1Mean2Over1, "1.05"},
                                                        {Kind::H1MeanOfDifference, "0.05"},
                                                        {Kind::H1Median2Over1, "1.03"},
                                                        {Kind::H1Median2, "1.03"}})
                                       : (left ? Values{{Kind::H1Mean2Minus1, "-0.5"},
                                                        {Kind::H1Mean2, "0.5"},
                                                        {Kind::H1Mean2Over1, "0.5"},
                                                        {Kind::H1MeanOfDifference, "0.5"},
                                                        {Kind::H1MeanOfDifferenceMinusH0, "-0.5"},
                                                        {Kind::H1MeanOfDifferenceOverH0, "0.5"},
                                                        {Kind::H1Median2Over1, "0.7"},
                                                        {Kind::H1Median2, "0.7"}}
                                               : Values{{Kind::H1Mean2Minus1, "0.5"},
                                                        {Kind::H1Mean2, "1.5"},
                                                        {Kind::H1Mean2Over1, "1.5"},
                                                        {Kind::H1MeanOfDifference, "1.5"},
                                                        {Kind::H1MeanOfDifferenceMinusH0, "0.5"},
                                                        {Kind::H1MeanOfDifferenceOverH0, "1.5"},
                                                        {Kind::H1Median2Over1, "1.4"},
                                                        {Kind::H1Median2, "1.4"}});
    for (const auto& [kind, text] : effects)
        values[kind] = text;
    return values;
}

// --- Parameters of distributions --------------------------------------------------------------

void AddAllSizes(Values& values, const std::string& size) {
    for (const i16 kind :
         std::initializer_list<i16>{Kind::Size, Kind::SizeFrom4, Kind::Size1, Kind::Size2,
                                    Kind::PoissonSize, Kind::PoissonSize1, Kind::PoissonSize2,
                                    Kind::StudyTime, Kind::StudyTime1, Kind::StudyTime2})
        values[kind] = size;
    Add(values, {{Kind::Size2Minus1, "0"},
                 {Kind::Size2Over1, "1"},
                 {Kind::StudyTime2Minus1, "0"},
                 {Kind::StudyTime2Over1, "1"}});
}

// What no hypothesis speaks of.
Values Nuisance() {
    return {{Kind::SignificanceLevel, "0.05"},
            {Kind::Sd, "1"},
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
    AddAllSizes(values, choice.DistrNo == DistrExponential && choice.ParListNo == 0 ? "12" : "30");
    // Means, of one sample and of two; Poisson counts and rates have means above 0.
    const bool counts = choice.DistrNo == DistrPoisson;
    const f64 null = counts ? 0.5 : 1;
    AddHypotheses(
        values,
        {Kind::H0Mean, Kind::H1Mean1, Kind::H0PoissonMean, Kind::H1PoissonMean1, Kind::H0Rate,
         Kind::H1Rate1},
        null,
        {Kind::H1Mean, Kind::H1Mean2, Kind::H1PoissonMean, Kind::H1PoissonMean2, Kind::H1Rate,
         Kind::H1Rate2},
        {Kind::H1MeanMinusH0, Kind::H1Mean2Minus1, Kind::H1RateMinusH0, Kind::H1Rate2Minus1},
        {Kind::H1MeanOverH0, Kind::H1Mean2Over1, Kind::H1RateOverH0, Kind::H1Rate2Over1},
        counts ? (left ? 0.25 : 0.9) : (left ? 0.5 : 1.5));
    Add(values, {{Kind::H0Mean2Minus1, "0"},
                 {Kind::H0Rate2Minus1, "0"},
                 {Kind::H0Median2Over1, "1"},
                 {Kind::H0Sd2Over1, "1"},
                 {Kind::H0Scale2Over1, "1"}});
    // Medians, deviations, scales.
    AddHypotheses(
        values,
        {Kind::H0Median, Kind::H1Median1, Kind::H0Sd, Kind::H1Sd1, Kind::H0Scale, Kind::H1Scale1},
        1,
        {Kind::H1Median, Kind::H1Median2, Kind::H1Sd, Kind::H1Sd2, Kind::H1Scale, Kind::H1Scale2},
        {Kind::H1MedianMinusH0, Kind::H1SdMinusH0, Kind::H1ScaleMinusH0},
        {Kind::H1MedianOverH0, Kind::H1Median2Over1, Kind::H1SdOverH0, Kind::H1Sd2Over1,
         Kind::H1ScaleOverH0, Kind::H1Scale2Over1},
        left ? 0.7 : 1.5);
    AddHypotheses(values, {Kind::H0Location}, 1, {Kind::H1Location}, {Kind::H1LocationMinusH0},
                  {Kind::H1LocationOverH0}, left ? 0.8 : 1.2);
    AddHypotheses(values, {Kind::H0Proportion}, 0.4, {Kind::H1Proportion},
                  {Kind::H1ProportionMinusH0}, {Kind::H1ProportionOverH0}, left ? 0.2 : 0.6);
    AddHypotheses(values, {Kind::H0Correlation}, 0.3, {Kind::H1Correlation},
                  {Kind::H1CorrelationMinusH0}, {Kind::H1CorrelationOverH0}, left ? -0.1 : 0.6);
    AddHypotheses(values, {Kind::H0Slope}, 0.1, {Kind::H1Slope}, {Kind::H1SlopeMinusH0},
                  {Kind::H1SlopeOverH0}, left ? -0.3 : 0.5);
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
    AddAllSizes(values, location ? "10" : (counts || !one ? "80" : "30"));
    Add(values, {{Kind::MeanLeftLimit, counts ? "-0.3" : "-0.6"},
                 {Kind::MeanRightLimit, counts ? "0.3" : "0.6"},
                 {Kind::RateDifferenceLeftLimit, "-0.3"},
                 {Kind::RateDifferenceRightLimit, "0.3"},
                 {Kind::PoissonMeanLeftLimit, "0.2"},
                 {Kind::PoissonMeanRightLimit, "0.8"},
                 {Kind::RateLeftLimit, "0.2"},
                 {Kind::RateRightLimit, "0.8"}});
    AddHypotheses(values, {Kind::H1Mean1, Kind::H1PoissonMean1, Kind::H1Rate1}, 0.5,
                  {Kind::H1Mean2, Kind::H1PoissonMean2, Kind::H1Rate2},
                  {Kind::H1Mean2Minus1, Kind::H1Rate2Minus1},
                  {Kind::H1Mean2Over1, Kind::H1Rate2Over1}, left ? 0.45 : 0.55);
    Add(values, {{Kind::MedianLeftLimit, "0.6"},
                 {Kind::MedianRightLimit, "1.6667"},
                 {Kind::SdLeftLimit, "0.6"},
                 {Kind::SdRightLimit, "1.6667"},
                 {Kind::ScaleLeftLimit, "0.6"},
                 {Kind::ScaleRightLimit, "1.6667"}});
    AddHypotheses(
        values, {Kind::H1Median1, Kind::H1Sd1, Kind::H1Scale1}, 1,
        {Kind::H1Median, Kind::H1Median2, Kind::H1Sd, Kind::H1Sd2, Kind::H1Scale, Kind::H1Scale2},
        {}, {Kind::H1Median2Over1, Kind::H1Sd2Over1, Kind::H1Scale2Over1}, left ? 0.9 : 1.1);
    for (const i16 kind : std::initializer_list<i16>{Kind::H1Mean, Kind::H1Slope})
        values[kind] = left ? "-0.05" : "0.05";
    for (const i16 kind : std::initializer_list<i16>{Kind::H1PoissonMean, Kind::H1Rate})
        values[kind] = left ? "0.4" : "0.52"; // the variance grows with the mean
    Add(values, {{Kind::LocationLeftLimit, "-0.5"},
                 {Kind::LocationRightLimit, "0.5"},
                 {Kind::H1Location, left ? "-0.05" : "0.05"},
                 {Kind::ProportionLeftLimit, "0.3"},
                 {Kind::ProportionRightLimit, "0.7"},
                 {Kind::H1Proportion, left ? "0.48" : "0.52"},
                 {Kind::CorrelationLeftLimit, "0.1"},
                 {Kind::CorrelationRightLimit, "0.7"},
                 {Kind::H1Correlation, left ? "0.4" : "0.5"}});
    return values;
}

// --- Tests of proportions: plans in which every parameter has a solution ------------------------

// The same number of subjects, and of the population, in each form.
void AddSizes(Values& values, const std::string& size) {
    Add(values, {{Kind::Size, size},
                 {Kind::Size1, size},
                 {Kind::Size2, size},
                 {Kind::Size2Minus1, "0"},
                 {Kind::Size2Over1, "1"}});
}

// Two effects on the proportion scale, one of them for each direction.
Values Effect(bool left) {
    if (left)
        return {{Kind::H0Proportion, "0.5"},
                {Kind::H1Proportion, "0.3"},
                {Kind::H1ProportionMinusH0, "-0.2"},
                {Kind::H1ProportionOverH0, "0.6"},
                {Kind::H0Odds, "1"},
                {Kind::H1Odds, "0.4286"},
                {Kind::H1OddsMinusH0, "-0.5714"},
                {Kind::H1OddsOverH0, "0.4286"},
                {Kind::H1Proportion1, "0.5"},
                {Kind::H1Proportion2, "0.3"},
                {Kind::H1Proportion2Minus1, "-0.2"},
                {Kind::H1Proportion2Over1, "0.6"},
                {Kind::H1Odds1, "1"},
                {Kind::H1Odds2, "0.4286"},
                {Kind::H1Odds2Minus1, "-0.5714"},
                {Kind::H1Odds2Over1, "0.4286"}};
    return {{Kind::H0Proportion, "0.3"},        {Kind::H1Proportion, "0.5"},
            {Kind::H1ProportionMinusH0, "0.2"}, {Kind::H1ProportionOverH0, "1.6667"},
            {Kind::H0Odds, "0.4286"},           {Kind::H1Odds, "1"},
            {Kind::H1OddsMinusH0, "0.5714"},    {Kind::H1OddsOverH0, "2.3333"},
            {Kind::H1Proportion1, "0.3"},       {Kind::H1Proportion2, "0.5"},
            {Kind::H1Proportion2Minus1, "0.2"}, {Kind::H1Proportion2Over1, "1.6667"},
            {Kind::H1Odds1, "0.4286"},          {Kind::H1Odds2, "1"},
            {Kind::H1Odds2Minus1, "0.5714"},    {Kind::H1Odds2Over1, "2.3333"}};
}

// One or two proportions. Where a relation is kept and its base sought, the target lies between the
// power here and that at the mirror point.
Values PlanOfProportions(const AnalysisChoice& choice) {
    Values values = Effect(choice.Left);
    Add(values, {{Kind::Population, "500"},
                 {Kind::Population1, "500"},
                 {Kind::Population2, "500"},
                 {Kind::Population2Minus1, "0"},
                 {Kind::Population2Over1, "1"}});
    const bool two = choice.NoOfSamples == TwoSamples;
    const bool isFinite = choice.MenuNo < 0 && choice.DistrNo == DistrHypergeometric;
    if (choice.NoOfTails != TwoOneSided) {
        const bool oneSided = choice.NoOfTails == OneSided;
        if (!two)
            AddSizes(values, IsOdds(choice) ? (oneSided ? "46" : "60") : (oneSided ? "31" : "40"));
        else if (IsOdds(choice))
            AddSizes(values, oneSided ? "88" : "112");
        else
            AddSizes(values, isFinite ? (oneSided ? "57" : "72") : (oneSided ? "63" : "80"));
        return values;
    }
    Add(values, {{Kind::ProportionLeftLimit, "0.35"},
                 {Kind::ProportionRightLimit, "0.65"},
                 {Kind::H1Proportion, "0.5"},
                 {Kind::H1Odds, "1"},
                 {Kind::ProportionDifferenceLeftLimit, "-0.2"},
                 {Kind::ProportionDifferenceRightLimit, "0.2"},
                 {Kind::H1Proportion1, "0.3"},
                 {Kind::H1Odds1, "0.4286"}});
    if (choice.Left)
        Add(values, {{Kind::H1Proportion2, "0.29"},
                     {Kind::H1Proportion2Minus1, "-0.01"},
                     {Kind::H1Proportion2Over1, "0.95"},
                     {Kind::H1Odds2, "0.41"},
                     {Kind::H1Odds2Minus1, "-0.02"},
                     {Kind::H1Odds2Over1, "0.95"}});
    else
        Add(values, {{Kind::H1Proportion2, "0.31"},
                     {Kind::H1Proportion2Minus1, "0.01"},
                     {Kind::H1Proportion2Over1, "1.05"},
                     {Kind::H1Odds2, "0.45"},
                     {Kind::H1Odds2Minus1, "0.02"},
                     {Kind::H1Odds2Over1, "1.05"}});
    AddSizes(values, two ? (isFinite ? "78" : "93") : (isFinite ? "88" : "140"));
    return values;
}

Values PlanOfFisher(const AnalysisChoice& choice) {
    Values values = {{Kind::H1Proportion1, "0.2"},
                     {Kind::H1Proportion2, "0.6"},
                     {Kind::H1Proportion2Minus1, "0.4"},
                     {Kind::H1Proportion2Over1, "3"},
                     {Kind::H1Odds1, "0.25"},
                     {Kind::H1Odds2, "1.5"},
                     {Kind::H1Odds2Minus1, "1.25"},
                     {Kind::H1Odds2Over1, "6"}};
    if (choice.Left)
        values = {{Kind::H1Proportion1, "0.6"},
                  {Kind::H1Proportion2, "0.2"},
                  {Kind::H1Proportion2Minus1, "-0.4"},
                  {Kind::H1Proportion2Over1, "0.3333"},
                  {Kind::H1Odds1, "1.5"},
                  {Kind::H1Odds2, "0.25"},
                  {Kind::H1Odds2Minus1, "-1.25"},
                  {Kind::H1Odds2Over1, "0.1667"}};
    AddSizes(values, IsOdds(choice) ? "28" : "22");
    return values;
}

Values PlanOfMcNemar(const AnalysisChoice& choice) {
    return {{Kind::H1Proportion10Plus01, "0.4"},
            {Kind::DiagonalDifference, choice.Left ? "-0.2" : "0.2"},
            {Kind::Size, "80"}};
}

Values PlanOfPairs(const AnalysisChoice& choice) {
    if (choice.NoOfTails == TwoOneSided && choice.Left)
        return {{Kind::ProportionDifferenceLeftLimit, "-0.1"},
                {Kind::ProportionDifferenceRightLimit, "0.1"},
                {Kind::H1Proportion1, "0.5"},
                {Kind::H1Proportion2, "0.48"},
                {Kind::H1Proportion2Minus1, "-0.02"},
                {Kind::H1Proportion2Over1, "0.96"},
                {Kind::H1Proportion11, "0.39"},
                {Kind::H1Proportion10Plus01, "0.2"},
                {Kind::H1Proportion10Over01, "1.2222"},
                {Kind::Size, "230"}};
    if (choice.NoOfTails == TwoOneSided)
        return {{Kind::ProportionDifferenceLeftLimit, "-0.1"},
                {Kind::ProportionDifferenceRightLimit, "0.1"},
                {Kind::H1Proportion1, "0.5"},
                {Kind::H1Proportion2, "0.52"},
                {Kind::H1Proportion2Minus1, "0.02"},
                {Kind::H1Proportion2Over1, "1.04"},
                {Kind::H1Proportion11, "0.41"},
                {Kind::H1Proportion10Plus01, "0.2"},
                {Kind::H1Proportion10Over01, "1.2222"},
                {Kind::Size, "230"}};
    constexpr i16 nonInferiority = 833;
    const bool ratios =
        Option(choice, Group::Proportion2) == 2 && Option(choice, Group::Discordant) == 2;
    const std::string pairs =
        Has(choice, Check::TwoSidedInterval) ? (ratios ? "84" : "94") : (ratios ? "63" : "74");
    if (choice.MenuNo == nonInferiority && choice.Left)
        return {{Kind::ProportionNonInferiorityLimit, "0.1"},
                {Kind::H1Proportion1, "0.8"},
                {Kind::H1Proportion2, "0.78"},
                {Kind::H1Proportion2Minus1, "-0.02"},
                {Kind::H1Proportion2Over1, "0.975"},
                {Kind::H1Proportion11, "0.69"},
                {Kind::H1Proportion10Plus01, "0.2"},
                {Kind::Size, pairs},
                {Kind::H1Proportion10Over01, "1.2222"}};
    if (choice.MenuNo == nonInferiority)
        return {{Kind::ProportionNonInferiorityLimit, "-0.1"},
                {Kind::H1Proportion1, "0.8"},
                {Kind::H1Proportion2, "0.82"},
                {Kind::H1Proportion2Minus1, "0.02"},
                {Kind::H1Proportion2Over1, "1.025"},
                {Kind::H1Proportion11, "0.71"},
                {Kind::H1Proportion10Plus01, "0.2"},
                {Kind::Size, pairs},
                {Kind::H1Proportion10Over01, "1.2222"}};
    const std::string size = choice.NoOfTails == OneSided ? "87" : "110";
    if (choice.Left)
        return {{Kind::H1Proportion1, "0.55"},        {Kind::H1Proportion2, "0.4"},
                {Kind::H1Proportion2Minus1, "-0.15"}, {Kind::H1Proportion2Over1, "0.72727"},
                {Kind::H1Proportion11, "0.3"},        {Kind::H1Proportion10Plus01, "0.35"},
                {Kind::H1Proportion10Over01, "2.5"},  {Kind::Size, size}};
    return {{Kind::H1Proportion1, "0.4"},        {Kind::H1Proportion2, "0.55"},
            {Kind::H1Proportion2Minus1, "0.15"}, {Kind::H1Proportion2Over1, "1.375"},
            {Kind::H1Proportion11, "0.3"},       {Kind::H1Proportion10Plus01, "0.35"},
            {Kind::H1Proportion10Over01, "2.5"}, {Kind::Size, size}};
}

Values PlanOfNonInferiority(const AnalysisChoice& choice) {
    Values values = {{Kind::ProportionNonInferiorityLimit, choice.Left ? "0.1" : "-0.1"},
                     {Kind::H1Proportion1, "0.8"},
                     {Kind::H1Proportion2, "0.8"},
                     {Kind::H1Proportion2Minus1, "0"},
                     {Kind::H1Proportion2Over1, "1"}};
    AddSizes(values, "150");
    return values;
}

Values PlanOfProportionTest(const AnalysisChoice& choice) {
    switch (choice.MenuNo) {
    case 70:
        return PlanOfMcNemar(choice);
    case 100:
        return PlanOfFisher(choice);
    case 80:
    case 803:
    case 833:
        return PlanOfPairs(choice);
    case 832:
        return PlanOfNonInferiority(choice);
    default:
        return PlanOfProportions(choice);
    }
}

// --- All ----------------------------------------------------------------------------------------

// Menu numbers: t-tests, crossover designs and tests of medians, of equivalence and of
// non-inferiority; chi-square and exact tests of proportions, of pairs, of equivalence and of
// non-inferiority.
constexpr std::initializer_list<i16> meansMenus{0, 1, 230, 231, 800, 801, 810, 811, 830, 831};
constexpr std::initializer_list<i16> coxMenus{470, 471};
constexpr i16 meansDesignMenu = 600;
constexpr i16 proportionsDesignMenu = 620;
constexpr std::initializer_list<i16> proportionsMenus{70, 80, 100, 111, 802, 803, 832, 833};

// Analyses of variance of repeated measurements, Hotelling's test, multivariate ones.
constexpr std::initializer_list<i16> repeatedMenus{20, 21, 30, 31, 40, 41};
constexpr i16 repeatedBetweenMenu = 21;
constexpr i16 multivariateBetweenMenu = 41;

bool IsIn(const AnalysisChoice& choice, std::initializer_list<i16> menus) {
    return std::ranges::find(menus, choice.MenuNo) != menus.end();
}

bool IsTestOfMeans(const AnalysisChoice& choice) {
    return IsIn(choice, meansMenus);
}

bool IsTestOfProportions(const AnalysisChoice& choice) {
    return IsIn(choice, proportionsMenus) ||
           (choice.MenuNo < 0 && choice.ProcedureNo == ProcedureTest &&
            (choice.DistrNo == DistrBinomial || choice.DistrNo == DistrHypergeometric));
}

// A column of plan_values.tsv: the direction of the choice.
Values PlanOfTheTable(const AnalysisChoice& choice) {
    const std::size_t column = choice.NoOfTails == TwoOneSided ? 3 : (choice.Left ? 2 : 1);
    Values values;
    for (const auto& row : ReadTsv("plan_values.tsv"))
        values[static_cast<i16>(std::stoi(row[0]))] = row[column];
    // A coefficient under H0 stands beside that of the other regressions.
    if (IsIn(choice, coxMenus) && choice.Left)
        values[Kind::H1Slope] = "-0.6";
    return values;
}

// Repeated measurements show more with fewer subjects, and the multivariate test has two groups.
Values PlanOfRepeated(const AnalysisChoice& choice) {
    Values values = PlanOfTheTable(choice);
    Add(values, {{Kind::LevelsA, "2"}});
    if (choice.MenuNo == repeatedBetweenMenu) {
        const std::string effect =
            Option(choice, Group::TestedBetweenOrWithin) == 0 ? "0.2" : "0.12";
        Add(values, {{Kind::LevelsA, "3"},
                     {Kind::Size1, "10"},
                     {Kind::Size2, "10"},
                     {Kind::SdOfMeans, effect},
                     {Kind::AnyMeanDifference, effect},
                     {Kind::MinMeanDifference, effect}});
    }
    return values;
}

// Tests of exponential survival: other tests share their limits, of Poisson means and of medians,
// with other truths. Most patients have the event in the study, so that an effect shows. No
// incidence is where the power turns.
constexpr std::initializer_list<i16> exponentialMenus{150, 151, 152, 402, 403, 404, 630, 804, 834};

Values PlanOfExponentialSurvival(const AnalysisChoice& choice) {
    Values values = PlanOfTheTable(choice);
    Add(values, {{Kind::PoissonMeanLeftLimit, "0.7"},
                 {Kind::PoissonMeanRightLimit, "1.5"},
                 {Kind::RateLeftLimit, "0.35"},
                 {Kind::RateRightLimit, "0.7"},
                 {Kind::H0Incidence, choice.Left ? "0.6" : "0.45"},
                 {Kind::H1Incidence, choice.Left ? "0.4" : "0.65"},
                 {Kind::H1IncidenceOverH0, choice.Left ? "0.6667" : "1.4"}});
    if (choice.NoOfTails == TwoOneSided)
        Add(values, {{Kind::H1Incidence, "0.51"},
                     {Kind::H1Incidence1, "0.3"},
                     {Kind::H1Incidence2, "0.31"},
                     {Kind::H1Incidence2Over1, "1.03333"}});
    else if (choice.Left)
        Add(values, {{Kind::H1Median1, "1"},
                     {Kind::H1Median2, "0.6"},
                     {Kind::H1Median2Over1, "0.6"},
                     {Kind::RatioNonInferiorityLimit, "1.1"}});
    return values;
}

// Simultaneous confidence intervals, a little wider than those of the true deviation: wider for all
// pairs than for a control, and for those of every contrast.
constexpr std::initializer_list<i16> intervalFamilyMenus{730, 731, 732};
constexpr i16 pairwiseIntervalMenu = 731;

Values PlanOfIntervalFamily(const AnalysisChoice& choice) {
    constexpr i16 scheffe = 3;
    const bool isWide = choice.MenuNo == pairwiseIntervalMenu || choice.Method == scheffe;
    return {{Kind::ConfidenceLevel, "0.95"},
            {Kind::CoverageAndWidthProbability, "0.8"},
            {Kind::IntervalWidth, isWide ? "1.5" : "1.3"},
            {Kind::Sd, "1"},
            {Kind::LevelsA, "4"},
            {Kind::Size1, "30"},
            {Kind::SizeK, "30"},
            {Kind::SizeKMinus1, "0"},
            {Kind::SizeKOver1, "1"},
            {Kind::SizePerGroup, "30"}};
}

Values TextsOf(const AnalysisChoice& choice) {
    if (IsIn(choice, intervalFamilyMenus))
        return PlanOfIntervalFamily(choice);
    if (IsTestOfMeans(choice))
        return PlanOfMeans(choice);
    if (IsIn(choice, repeatedMenus))
        return PlanOfRepeated(choice);
    if (IsIn(choice, exponentialMenus))
        return PlanOfExponentialSurvival(choice);
    if (choice.MenuNo == proportionsDesignMenu)
        return PlanOfProportions(choice);
    const bool isMeansDesign = choice.MenuNo == meansDesignMenu;
    if (choice.MenuNo >= 0 && !isMeansDesign)
        return PlanOfTheTable(choice);
    if (!isMeansDesign && choice.ProcedureNo != ProcedureTest)
        return PlanOfPrecision("50");
    return choice.NoOfTails == TwoOneSided ? PlanOfEquivalence(choice) : PlanOfTest(choice);
}

// --- What has no solution -----------------------------------------------------------------------

// The H0 value of a location whose difference from H1 is kept, and of a scale whose ratio is kept,
// doesn't count.
std::set<i16> WithoutInfluence(const AnalysisChoice& choice) {
    std::set<i16> kinds;
    const bool hasVarianceOfItsMean = choice.DistrNo == DistrPoisson;
    if (Option(choice, Group::H1Mean) == AsDifference && !hasVarianceOfItsMean)
        kinds.insert(Kind::H0Mean);
    if (Option(choice, Group::H1MeanOfDifference) == AsDifference)
        kinds.insert(Kind::H0MeanOfDifference);
    if (Option(choice, Group::H1Median) == AsRatio)
        kinds.insert(Kind::H0Median);
    if (Option(choice, Group::H1Sd) == AsRatio)
        kinds.insert(Kind::H0Sd);
    if (Option(choice, Group::H1Scale) == AsRatio)
        kinds.insert(Kind::H0Scale);
    if (Option(choice, Group::H1Location) == AsDifference)
        kinds.insert(Kind::H0Location);
    if (Option(choice, Group::H1Slope) == AsDifference)
        kinds.insert(Kind::H0Slope);
    // What the study was planned for doesn't count where a trial is foreseen without it.
    if (Option(choice, Group::SlopeProjection) != 0)
        kinds.insert({Kind::H1Mean, Kind::H1MeanMinusH0, Kind::H1MeanOverH0, Kind::H1Mean1,
                      Kind::H1Mean2, Kind::H1Mean2Minus1, Kind::H1Mean2Over1, Kind::H1Proportion,
                      Kind::H1ProportionMinusH0, Kind::H1ProportionOverH0, Kind::H1Proportion1,
                      Kind::H1Proportion2, Kind::H1Proportion2Minus1, Kind::H1Proportion2Over1,
                      Kind::H1HazardRatio});
    // The hazards are those of the table, whatever it is called for.
    constexpr i16 piecewiseLifeTable = 394;
    if (choice.MenuNo == piecewiseLifeTable)
        kinds.insert(Kind::NoOfIntervals);
    // What the strata were is known with their grids alone.
    if (choice.MenuNo >= 420 && choice.MenuNo <= 423)
        kinds.insert(
            {Kind::NoOfStrata, Kind::AccrualRate, Kind::AccrualTime, Kind::TotalStudyTime});
    // Two hazards with a kept ratio: their size is in the number of events.
    constexpr i16 givenEvents = 1;
    const bool isPlainHazard = !Has(choice, Check::Incidences) && !Has(choice, Check::Medians);
    const bool isDifference = choice.MenuNo == 150 || choice.MenuNo == 402;
    if (Option(choice, Group::Given) == givenEvents &&
        !(isDifference && choice.NoOfTails == TwoOneSided)) {
        if (isPlainHazard && Option(choice, Group::Rate2) == AsRatio)
            kinds.insert(Kind::H1Rate1);
        if (Has(choice, Check::Medians) && Option(choice, Group::Median2) == AsDifference)
            kinds.insert(Kind::H1Median1);
        if (isPlainHazard && Option(choice, Group::H1Rate) == AsRatio)
            kinds.insert(Kind::H0Rate);
        if (Has(choice, Check::Medians) && Option(choice, Group::H1Median) == AsRatio)
            kinds.insert(Kind::H0Median);
    }
    // The variances are entered, or derived from a grid with so many categories, before.
    constexpr i16 generalKappa = 514;
    if (choice.MenuNo == generalKappa) {
        kinds.insert(Kind::NoOfCategories);
        if (Option(choice, Group::H1Kappa) == AsDifference)
            kinds.insert(Kind::H0Kappa);
    }
    return kinds;
}

} // namespace

Values PlanOfPrecision(const std::string& size) {
    Values values = Nuisance();
    AddAllSizes(values, size);
    return values;
}

f64 PowerOf(const AnalysisChoice& choice, const Values& values) {
    ValidationCase plan;
    static_cast<AnalysisChoice&>(plan) = choice;
    SetUp(choice);
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != 1 && values.count(ParKind(i)) != 0)
            plan.Values[ParKind(i)] = values.at(ParKind(i));
    plan.UnknownKind = ParKind(1);
    const f64 power = SolveCase(plan);
    EXPECT_NE(power, NoValue) << Describe(choice);
    return power;
}

Values PlanOf(const AnalysisChoice& choice) {
    if (IsTestOfProportions(choice))
        return PlanOfProportionTest(choice);
    if (choice.MenuNo == proportionsDesignMenu && choice.NoOfTails == TwoOneSided)
        return PlanOfProportions(choice);
    Values values = TextsOf(choice);
    const f64 power = PowerOf(choice, values);
    values[ParKind(1)] = NumberText(power, 17);
    return values;
}

bool IsExact(const AnalysisChoice& choice) {
    constexpr i16 fisher = 100;
    constexpr i16 sign = 370;
    return choice.MenuNo == fisher || choice.MenuNo == sign ||
           (Has(choice, Check::Exact) && !Has(choice, Check::ArcSine)) ||
           (choice.MenuNo == 70 && !Has(choice, Check::FirstOrder) &&
            !Has(choice, Check::SecondOrder));
}

// An exact power jumps where a critical value does: with the level and with what holds under H0,
// and with any proportion of a population, which is a whole number of items. Paired proportions
// matter by their difference alone unless the concordant pairs are given.
std::set<i16> Unsolvable(const AnalysisChoice& choice) {
    std::set<i16> kinds = WithoutInfluence(choice);
    if (IsExact(choice))
        kinds.insert({Kind::SignificanceLevel, Kind::H0Proportion, Kind::H0Odds,
                      Kind::ProportionLeftLimit, Kind::ProportionRightLimit});
    if (IsExact(choice) && choice.MenuNo < 0 && choice.DistrNo == DistrHypergeometric)
        kinds.insert({Kind::H1Proportion, Kind::H1ProportionMinusH0, Kind::H1ProportionOverH0});
    const bool isPaired = choice.MenuNo == 80 || choice.MenuNo == 803 || choice.MenuNo == 833;
    if (isPaired && Option(choice, Group::Proportion2) == 1 &&
        Option(choice, Group::Discordant) != 0)
        kinds.insert(Kind::H1Proportion1);
    // What the standard deviation of a linear combination is derived with; and there are two
    // groups.
    if (IsIn(choice, repeatedMenus) && Has(choice, Check::LinearCombination))
        kinds.insert({Kind::Sd, Kind::Correlation, Kind::WithinLevels});
    if (choice.MenuNo == multivariateBetweenMenu)
        kinds.insert(Kind::LevelsA);
    return kinds;
}

Growth GrowthOf(const AnalysisChoice& choice) {
    if (IsTestOfMeans(choice) || choice.MenuNo == meansDesignMenu)
        return {1e-4, 6};
    // Half a subject of a handful outweighs all else: added on the right, it is lost again with the
    // next subject.
    if (IsTestOfProportions(choice) || choice.MenuNo == proportionsDesignMenu)
        return {1e-6,
                Has(choice, Check::Correction) && choice.NoOfTails == TwoOneSided ? 10.0 : 0.0};
    // Where the formula for chi-square and F changes, at 10, 21 and 100 df. A handful of subjects
    // may estimate the deviation as next to nothing, and thereby give a very small interval more
    // often than a dozen; and the normal approximation of t is not made for them.
    return {0.001, 12};
}

} // namespace quorvanta::checks
