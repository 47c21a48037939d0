#include "output/statement_estimation.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/records.h"
#include "multcomp/family.h"
#include "output/statement_labels.h"
#include "output/statement_simulation.h"
#include "output/statement_words.h"

#include <cstddef>
#include <string>

namespace quorvanta {

namespace {

constexpr i16 NoPar = -1;

// A confidence level in per cent.
std::string LevelText(i16 parNo) {
    return NumberInFull(100 * NominalLevel(parNo));
}

// "width", "relative width"; the value of a one-sided interval is the distance to its one limit.
std::string WidthPhrase(i16 parNo) {
    return LabelSays(ParLabel(ParKind(parNo)), Says::Relative) ? "relative width" : "width";
}

std::string WidthText(i16 parNo) {
    return ParValueText(parNo) + (IsOneSidedInterval() ? " from the estimate to the limit" : "");
}

// The position of the probability that the interval is as narrow as wanted.
i16 WidthProbabilityParNo() {
    for (i16 i = PowerParNo + 1; i <= NoOfPar; ++i)
        if (IsPowerKind(ParKind(i)))
            return i;
    return NoPar;
}

std::string InDistribution() {
    const std::string distribution = DistributionPhrase();
    return " in " + SumArticle(distribution) + " " + distribution;
}

// How probable an error of the estimate is.
std::string AccuracyClause(SumUsed& used) {
    constexpr i16 probability = 0;
    constexpr i16 margin = 1;
    used.Add(probability);
    used.Add(margin);
    const std::string error = ParPhrase(margin);
    return "the probability is " + ParValueText(probability) +
           (NoOfTails == OneSided ? " to overestimate the " : " to over/under estimate the ") +
           ComparedParameterPhrase() + InDistribution() + " by " + SumArticleLabel(error) + error +
           " of more than " + ParValueText(margin);
}

// A family of intervals: that all of them cover, and are narrow, is one event.
std::string FamilyClause(SumUsed& used) {
    constexpr i16 level = 0;
    constexpr i16 probability = 1;
    constexpr i16 width = 2;
    for (const i16 parNo : {level, probability, width})
        used.Add(parNo);
    return "the probability is " + ParValueText(probability) + " that all simultaneous two-sided " +
           LevelText(level) + "% confidence intervals cover and have a width less than " +
           ParValueText(width);
}

std::string FamilySentence() {
    constexpr std::string_view families[] = {"the differences of the means from that of a control",
                                             "the differences of all pairs of means",
                                             "the differences of each mean from the best"};
    return " The confidence intervals are calculated for " +
           std::string(families[static_cast<std::size_t>(MultCompKind())]) +
           " in a one-way analysis of variance. The procedure used is " +
           AdjustMethodName(AdjustMethod) + ".";
}

} // namespace

std::string ParameterPhrase() {
    const auto names = DistrParList(DistrNo);
    const auto n = static_cast<std::size_t>(ParListNo);
    return ParListNo >= 0 && n < names.size() ? SumPhrase(names[n]) : "";
}

std::string ComparedParameterPhrase(std::string_view kind) {
    const std::string parameter = std::string(kind) + ParameterPhrase();
    if (NoOfSamples != TwoSamples)
        return parameter;
    // Spreads are compared by their ratio, and so is whatever has a relative error or width.
    const bool isRatio = LabelSays(ParLabel(ParKind(1)), Says::Relative) ||
                         ParameterPhrase().starts_with("standard deviation");
    return (isRatio ? "ratio between two samples of " : "difference between two samples in ") +
           parameter;
}

std::string DistributionPhrase() {
    return SumPhrase(DistrName);
}

bool IsOneSidedInterval() {
    for (i16 i = 0; i < NoOfCheck; ++i)
        if (CheckList(i) == Check::TwoSidedInterval)
            return CheckValue(Check::TwoSidedInterval) == 0;
    return false;
}

std::string SumIntervalClause(SumUsed& used) {
    constexpr i16 level = 0;
    constexpr i16 width = 1;
    used.Add(level);
    used.Add(width);
    const std::string interval =
        std::string(IsOneSidedInterval() ? "a one-sided " : "a two-sided ") + LevelText(level);
    const std::string measure = WidthPhrase(width);
    const i16 probability = WidthProbabilityParNo();
    if (probability == NoPar)
        return interval + " % confidence interval will have " + SumArticleLabel(measure) + measure +
               " of " + WidthText(width);
    used.Add(probability);
    const std::string lessThan = " confidence interval with " + SumArticleLabel(measure) + measure +
                                 " less than " + WidthText(width);
    if (CurrentWindowKind() == SimulationWindow)
        return interval + "%" + lessThan;
    return "the probability is " + ParValueText(probability) + " to get " + interval + "%" +
           lessThan;
}

std::string EstimationClause(SumUsed& used) {
    if (IsMultCompInterval())
        return FamilyClause(used);
    if (ProcedureNo == ProcedureEstimate)
        return AccuracyClause(used);
    if (!IsSimulation())
        return SumIntervalClause(used);
    const std::string estimates = EstimatesClause(used);
    return estimates + " for " + SumIntervalClause(used);
}

std::string EstimatedSentence() {
    if (IsMultCompInterval())
        return FamilySentence();
    if (ProcedureNo == ProcedureEstimate && !IsTableOrGraph())
        return "";
    return std::string(" The ") +
           (ProcedureNo == ProcedureEstimate ? "estimate" : "confidence interval") +
           " is calculated for " + (NoOfSamples == TwoSamples ? "the " : "") +
           ComparedParameterPhrase("the parameter ") + InDistribution() + ".";
}

} // namespace quorvanta
