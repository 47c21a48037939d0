#include "output/statement_clauses.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/number_text.h"
#include "core/records.h"
#include "core/values.h"
#include "multcomp/family.h"
#include "output/counted_sizes.h"
#include "output/format.h"
#include "output/formatpar.h"
#include "output/statement_labels.h"
#include "output/statement_words.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 FirstDesignParNo = 2;

// --- Sizes --------------------------------------------------------------------------------------

i16 FindKind(i16 kind) {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (ParKind(i) == kind)
            return i;
    return NoPar;
}

// A power that two decimals would show as a certainty is told as what it is beyond.
std::string PowerText(f64 power) {
    constexpr const char* picture = "0.00";
    const std::string text = Format(power, picture);
    if (text == Format(1, picture))
        return "above 0.99";
    return text == Format(0, picture) ? "below 0.01" : text;
}

bool HasText(i16 parNo) {
    return HasValue(ParText(ParKind(parNo)));
}

std::string SingleSize(i16 parNo) {
    return SumPhrase(ParLabel(ParKind(parNo))) + " of " +
           NumberInFull(CountedSize(ParNumber(parNo))) + std::string(UnitOf(parNo));
}

// The second size in its own terms, whatever form it is entered in.
SizePair ExposurePair(i16 first, i16 second) {
    const f64 t = ParNumber(first);
    return {t, FromForm(SizeFormOf(ParKind(second)), t, ParNumber(second))};
}

// "total ... of 60 (30 in sample 1 and 30 in sample 2)".
std::string PairText(std::string_view total, f64 sum, const SizePair& pair,
                     std::string_view afterFirst, std::string_view afterSecond) {
    return std::string(total) + NumberInFull(sum) + " (" + NumberInFull(pair.First) +
           std::string(afterFirst) + NumberInFull(pair.Second) + std::string(afterSecond);
}

constexpr std::string_view TotalSize = "total sample size of ";

std::string PairClause(i16 first, i16 second) {
    switch (SizeRoleOf(ParKind(first))) {
    case SizeRole::FirstSequence: {
        const SizePair n = CountedPair(first, second);
        return PairText(TotalSize, n.First + n.Second, n, " in sequence 1 and ", " in sequence 2)");
    }
    case SizeRole::FirstExposure: {
        const SizePair t = ExposurePair(first, second);
        return PairText("total exposure time of ", t.First + t.Second, t, " in sample 1 and ",
                        " in sample 2)");
    }
    default: {
        const SizePair n = CountedPair(first, second);
        return PairText(TotalSize, n.First + n.Second, n, " in sample 1 and ", " in sample 2)");
    }
    }
}

// The first group and k - 1 others; empty if the number of groups is not to be had.
std::string GroupsClause(i16 first, i16 second) {
    const i16 groups = FindKind(Kind::NoOfGroups);
    if (groups == NoPar || !HasText(groups))
        return "";
    const SizePair n = CountedPair(first, second);
    const f64 others = CountedSize(ParNumber(groups)) - 1;
    return PairText(TotalSize, n.First + others * n.Second, n, " in group 1 and ",
                    " in each other group)");
}

} // namespace

// --- The parameters of the current analysis -----------------------------------------------------

bool IsHypothesisTest() {
    return IsTest == True ? !IsMultCompInterval() : ProcedureNo == ProcedureTest;
}

bool IsConfidenceLevel() {
    return LabelSays(ParLabel(ParKind(LevelParNo)), Says::ConfidenceLevel);
}

bool HasNoSingleValue(i16 parNo) {
    if (IsTableOrGraph())
        return parNo == XParNo || parNo == UnknownParNo || (HasZPar() && parNo == ZParNo);
    return CurrentWindowKind() == SimulationWindow && !HasText(parNo);
}

f64 ParNumber(i16 parNo) {
    return ReadNumber(ParText(ParKind(parNo)));
}

std::string NumberInFull(f64 x) {
    return Format(x, "0.###############");
}

std::string ParValueText(i16 parNo) {
    const f64 number = ParNumber(parNo);
    if (parNo == PowerParNoOfTest())
        return parNo == UnknownParNo ? PowerText(number) : Format(number, "0.00#############");
    const std::string unit(UnitOf(parNo));
    if (parNo != UnknownParNo || CurrentWindowKind() != CalculationWindow)
        return NumberInFull(number) + unit;
    // Of the unknown alone: a population of 99999 that the user typed is a population of 99999.
    const std::string text(Trimmed(ParText(ParKind(parNo))));
    return (number == NoValue ? SumNormalise(text) : text) + unit;
}

std::string UnknownText(f64 x) {
    return UnknownParNo == PowerParNoOfTest() ? PowerText(x) : FormatPar(ParKind(UnknownParNo), x);
}

std::string_view UnitOf(i16 parNo) {
    return ParKind(parNo) == Kind::Size && IsPaired() ? " pairs" : "";
}

Range ExtentOf(i16 parNo) {
    if (!HasNoSingleValue(parNo) || !IsTableOrGraph())
        return {ParNumber(parNo), ParNumber(parNo)};
    if (parNo == UnknownParNo)
        return {f64{TableYMin}, f64{TableYMax}};
    const i16 kind = ParKind(parNo);
    if (parNo == XParNo)
        return {ReadNumber(ParXminText(kind)), ReadNumber(ParXmaxText(kind))};
    Range extent{ParNumber(parNo), ParNumber(parNo)};
    bool isFirst = true;
    for (const std::string& word : Words(ParZValuesText(kind))) {
        const f64 z = ReadNumber(word);
        extent = isFirst ? Range{z, z} : Range{MinOf(extent.Min, z), MaxOf(extent.Max, z)};
        isFirst = false;
    }
    return extent;
}

std::vector<std::string> ZValueTexts() {
    std::vector<std::string> values;
    for (const std::string& word : Words(ParZValuesText(ParKind(ZParNo))))
        values.push_back(NumberInFull(ReadNumber(word)));
    return values;
}

i16 PowerParNoOfTest() {
    if (IsTest == False && ProcedureNo != ProcedureTest)
        return NoPar;
    return IsPowerKind(ParKind(PowerParNo)) ? PowerParNo : NoPar;
}

std::string StatementLabel(i16 parNo) {
    return ParKind(parNo) == Kind::DiagonalDifference ? "H1: Proportion 10 - Proportion 01"
                                                      : StripAmpersand(ParLabel(ParKind(parNo)));
}

std::string ParPhrase(i16 parNo) {
    if (ParKind(parNo) == Kind::ProbabilityWithinLimits)
        return "probability of " + WithinLimitsPhrase();
    const std::string label = StatementLabel(parNo);
    std::string name = SumPhrase(SumNameAfterH(label));
    if (name == SumPhrase(label) || LabelSays(label, Says::Limit))
        return name;
    const std::string under = " under " + label.substr(0, 2);
    const std::size_t h0 = name.find("H0: ");
    if (h0 == std::string::npos)
        return name + under;
    // "H1: mean - H0: mean": the sign stands between two blanks.
    constexpr std::size_t sign = 3;
    constexpr std::size_t prefix = 4;
    return name.substr(0, h0 - sign) + under + name.substr(h0 - sign, sign) +
           name.substr(h0 + prefix) + " under H0";
}

std::string WithArticle(const std::string& phrase) {
    return phrase.starts_with("any ") ? phrase : "the " + phrase;
}

std::string_view IsOrAre(std::string_view phrase) {
    const bool isOdds = phrase.starts_with("odds") && !Contains(phrase, "ratio") &&
                        !Contains(phrase, " - ") && !Contains(phrase, " / ");
    return isOdds || phrase.starts_with("degrees of") ? " are " : " is ";
}

f64 NominalLevel(i16 parNo) {
    if (CurrentWindowKind() != SimulationWindow || NoOfInterim > 0)
        return ParNumber(parNo);
    const f64 entered = ReadNumber(RejectH0Text(0));
    return entered != 0 ? entered : ParNumber(parNo);
}

std::string WithinLimitsPhrase() {
    if (NoOfTails == TwoOneSided)
        return "a confidence interval within the equivalence limits";
    return std::string("a confidence interval ") + (LeftTail == True ? "below" : "above") +
           " the non-inferiority limit";
}

// --- Clauses ------------------------------------------------------------------------------------

f64 LargestSample() {
    const i16 first = FindSize({SizeRole::Single, SizeRole::First, SizeRole::FirstSequence});
    if (first == NoPar || !HasText(first))
        return 0;
    const f64 n1 = CountedSize(ExtentOf(first).Max);
    const i16 second = FindSecondSize(SizeRoleOf(ParKind(first)));
    if (second == NoPar || !HasText(second))
        return n1;
    return MaxOf(n1, CountedSize(FromForm(SizeFormOf(ParKind(second)), n1, ExtentOf(second).Max)));
}

std::string SumSampleClause(SumUsed& used) {
    i16 first = FindSize({SizeRole::Single, SizeRole::First, SizeRole::FirstSequence});
    if (first == NoPar)
        first = FindSize({SizeRole::TimeAtRisk, SizeRole::FirstExposure, SizeRole::Exposure});
    if (first == NoPar || !HasText(first))
        return "";
    const SizeRole role = SizeRoleOf(ParKind(first));
    const i16 second = FindSecondSize(role);
    std::string clause;
    if (second != NoPar && HasText(second))
        clause = SizeRoleOf(ParKind(second)) == SizeRole::EachOther ? GroupsClause(first, second)
                                                                    : PairClause(first, second);
    else if (role == SizeRole::Exposure || role == SizeRole::FirstExposure)
        clause = "total exposure time of " + ParValueText(first);
    else if (role == SizeRole::TimeAtRisk)
        clause = "total time at risk of " + ParValueText(first);
    else
        clause = SingleSize(first);
    if (clause.empty())
        return "";
    used.Add(first);
    if (second != NoPar)
        used.Add(second);
    return clause;
}

std::string SumGroupClause(SumUsed& used) {
    std::vector<i16> layout;
    for (i16 i = FirstDesignParNo; i <= NoOfPar; ++i)
        if (IsLayoutKind(ParKind(i)) && !used.Has(i) && HasText(i))
            layout.push_back(i);
    if (layout.empty())
        return "";
    for (const i16 i : layout)
        used.Add(i);
    return " For the design, " + SumValueList(layout) + ".";
}

std::string SumValueList(const std::vector<i16>& parNos) {
    std::vector<std::string> items;
    for (const i16 i : parNos) {
        const std::string phrase = ParPhrase(i);
        items.push_back(WithArticle(phrase) + std::string(IsOrAre(phrase)) + ParValueText(i));
    }
    return SumList(items);
}

} // namespace quorvanta
