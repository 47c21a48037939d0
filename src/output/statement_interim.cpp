#include "output/statement_interim.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"
#include "core/values.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "output/statement_clauses.h"
#include "output/statement_words.h"

#include <string>
#include <vector>

namespace quorvanta {

namespace {

std::string AnalysisName(i16 k) {
    return k < NoOfAnalyses() ? "at interim " + std::to_string(k) : "at the final analysis";
}

using AnalysisTexts = FixedArray<std::string, 0, 5>;

bool HasLevels(const AnalysisTexts& texts) {
    for (i16 k = 1; k <= NoOfAnalyses(); ++k)
        if (ReadNumber(texts(k - 1)) != 0)
            return true;
    return false;
}

std::string LevelText(const AnalysisTexts& texts, i16 k) {
    return NumberInFull(ReadNumber(texts(k - 1)));
}

std::string RejectSentence() {
    std::vector<std::string> levels;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        // Nothing entered stands for the significance level.
        const bool isEntered = ReadNumber(RejectH0Text(k - 1)) != 0;
        levels.push_back(isEntered ? LevelText(RejectH0Text, k)
                                   : NumberInFull(NominalLevel(LevelParNo)));
    }
    return " The significance levels at the interim and final analysis are " + SumList(levels) +
           " respectively.";
}

// H0 may be accepted at some analyses only: nothing, or 1, is no level at all.
std::string AcceptSentence() {
    std::vector<std::string> levels;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        const f64 level = ReadNumber(AcceptH0Text(k - 1));
        if (level != 0 && level != 1)
            levels.push_back(LevelText(AcceptH0Text, k) + " (" + AnalysisName(k) + ")");
    }
    if (levels.empty())
        return "";
    const bool isOne = levels.size() == 1;
    return " Similarly, the accept H0 level" + SumPlural(static_cast<i32>(levels.size())) +
           (isOne ? " is " : " are ") + SumList(levels) + ".";
}

std::vector<std::string> TextsOfAnalyses(const AnalysisTexts& texts, i16 last) {
    std::vector<std::string> list;
    for (i16 k = 1; k <= last; ++k)
        list.push_back(LevelText(texts, k));
    return list;
}

// Analyses at shares of the information take place at another time if H0 is true.
std::string TimesSentence() {
    std::string text =
        " The analyses occur at " + SumList(TextsOfAnalyses(InterimSize1Text, NoOfAnalyses()));
    if (HasValue(InterimSize2Text(0)))
        text += " under H1, and at " + SumList(TextsOfAnalyses(InterimSize2Text, NoOfAnalyses())) +
                " under H0";
    return text + ".";
}

// What the texts of the sizes count: subjects, or what the log-rank test may be given instead.
std::string CountedName(bool isOne) {
    if (IsGroupSeq == False || GsKindOfTest() != GsLogrank)
        return isOne ? "sample size" : "sample sizes";
    constexpr i16 events = 1;
    if (InterimUnit == events)
        return isOne ? "number of events" : "numbers of events";
    return isOne ? "time at risk" : "times at risk";
}

std::string SizesSentence() {
    const bool isDesign = IsGroupSeq == True && CurrentWindowKind() != SimulationWindow;
    if (isDesign)
        GsReadDesign();
    if ((UsesEventTimes() && !isDesign) || !HasValue(InterimSize1Text(0)))
        return "";
    if (isDesign && HasInterimTimes())
        return TimesSentence();
    const bool isPair = HasValue(InterimSize2Text(0));
    std::vector<std::string> sizes;
    for (i16 k = 1; k < NoOfAnalyses(); ++k) {
        const std::string first = LevelText(InterimSize1Text, k);
        sizes.push_back(isPair ? "(" + first + "," + LevelText(InterimSize2Text, k) + ")" : first);
    }
    const bool isOne = sizes.size() == 1 && !isPair;
    return " The cumulative " + CountedName(isOne) + (isPair ? " (Sample 1, Sample 2)" : "") +
           " at the interim " + (sizes.size() == 1 ? "analysis" : "analyses") +
           (isOne ? " is " : " are ") + SumList(sizes) + ".";
}

} // namespace

std::string InterimSentences() {
    if (NoOfAnalyses() == 1 || IsTableOrGraph() || !HasLevels(RejectH0Text))
        return "";
    return RejectSentence() + AcceptSentence() + SizesSentence();
}

} // namespace quorvanta
