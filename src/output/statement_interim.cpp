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

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace quorvanta {

namespace {

std::string AnalysisName(i16 k) {
    return k < NoOfAnalyses() ? "at interim " + std::to_string(k) : "at the final analysis";
}

using AnalysisTexts = FixedArray<std::string, 0, 5>;
using Ranges = std::vector<Range>;

Ranges Entered(const AnalysisTexts& texts) {
    Ranges ranges;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        const f64 value = ReadNumber(texts(k - 1));
        ranges.push_back({value, value});
    }
    return ranges;
}

// Sizes of a second sample only where there is one.
Ranges EnteredSizes(const AnalysisTexts& texts) {
    return HasValue(texts(0)) ? Entered(texts) : Ranges{};
}

// No level at all is no design. Nothing entered at one analysis stands for the significance level.
DesignRanges EnteredDesign() {
    DesignRanges design;
    for (const Range& level : Entered(RejectH0Text)) {
        const f64 nominal = NominalLevel(LevelParNo);
        design.Reject.push_back(level.Min == 0 ? Range{nominal, nominal} : level);
    }
    if (std::ranges::all_of(Entered(RejectH0Text), [](const Range& r) { return r.Min == 0; }))
        design.Reject.clear();
    design.Accept = Entered(AcceptH0Text);
    design.Size1 = EnteredSizes(InterimSize1Text);
    design.Size2 = EnteredSizes(InterimSize2Text);
    return design;
}

// The designs of a table or graph have levels and sizes from the lowest to the highest.
std::string RangeText(const Range& range) {
    const std::string low = NumberInFull(range.Min);
    const std::string high = NumberInFull(range.Max);
    return low == high ? low : low + " to " + high;
}

std::vector<std::string> Texts(const Ranges& ranges) {
    std::vector<std::string> list;
    for (const Range& range : ranges)
        list.push_back(RangeText(range));
    return list;
}

std::string RejectSentence(const Ranges& levels) {
    return " The significance levels at the interim and final analysis are " +
           SumList(Texts(levels)) + " respectively.";
}

// H0 may be accepted at some analyses only: nothing, or 1, is no level at all.
std::string AcceptSentence(const Ranges& accept) {
    std::vector<std::string> levels;
    for (std::size_t i = 0; i < accept.size(); ++i)
        if (accept[i].Max != 0 && accept[i].Min != 1)
            levels.push_back(RangeText(accept[i]) + " (" + AnalysisName(static_cast<i16>(i + 1)) +
                             ")");
    if (levels.empty())
        return "";
    const bool isOne = levels.size() == 1;
    return " Similarly, the accept H0 level" + SumPlural(static_cast<i32>(levels.size())) +
           (isOne ? " is " : " are ") + SumList(levels) + ".";
}

// Analyses at shares of the information take place at another time if H0 is true.
std::string TimesSentence(const DesignRanges& design) {
    std::string text = " The analyses occur at " + SumList(Texts(design.Size1));
    if (!design.Size2.empty())
        text += " under H1, and at " + SumList(Texts(design.Size2)) + " under H0";
    return text + ".";
}

// What the sizes count: subjects, or what the log-rank test may be given instead.
std::string CountedName(bool isOne) {
    if (IsGroupSeq == False || GsKindOfTest() != GsLogrank)
        return isOne ? "sample size" : "sample sizes";
    constexpr i16 events = 1;
    if (InterimUnit == events)
        return isOne ? "number of events" : "numbers of events";
    return isOne ? "time at risk" : "times at risk";
}

std::string SizesSentence(const DesignRanges& design) {
    const bool isDesign = IsGroupSeq == True && CurrentWindowKind() != SimulationWindow;
    if (isDesign)
        GsReadDesign();
    if ((UsesEventTimes() && !isDesign) || design.Size1.empty())
        return "";
    if (isDesign && HasInterimTimes())
        return TimesSentence(design);
    const bool isPair = !design.Size2.empty();
    std::vector<std::string> sizes;
    for (std::size_t i = 0; i + 1 < design.Size1.size(); ++i) {
        const std::string first = RangeText(design.Size1[i]);
        sizes.push_back(isPair ? "(" + first + "," + RangeText(design.Size2[i]) + ")" : first);
    }
    const bool isOne = sizes.size() == 1 && !isPair;
    return " The cumulative " + CountedName(isOne) + (isPair ? " (Sample 1, Sample 2)" : "") +
           " at the interim " + (sizes.size() == 1 ? "analysis" : "analyses") +
           (isOne ? " is " : " are ") + SumList(sizes) + ".";
}

} // namespace

std::string InterimSentences() {
    if (NoOfAnalyses() == 1)
        return "";
    const DesignRanges design = IsTableOrGraph() ? TableDesigns : EnteredDesign();
    if (design.Reject.empty())
        return "";
    return RejectSentence(design.Reject) + AcceptSentence(design.Accept) + SizesSentence(design);
}

} // namespace quorvanta
