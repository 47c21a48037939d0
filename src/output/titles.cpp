#include "output/titles.h"

#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/general.h"

#include <algorithm>

namespace quorvanta {

namespace {

DefaultTexts CurrentDefaults() {
    const auto label = [](i16 parNo) { return StripAmpersand(ParLabel(ParKind(parNo))); };
    return {ParListName, label(XParNo), label(UnknownParNo), HasZPar() ? label(ZParNo) : ""};
}

void RenewAxis(FixedArray<std::string, 0, 3>& axis, const std::string& label) {
    axis.Fill(AutoLimit);
    axis(0) = label;
}

} // namespace

void BuildDefaultTitles() {
    DefaultTexts& former = AnalysisState(AnalysisNo).FormerDefaults;
    const DefaultTexts now = CurrentDefaults();
    if (now.Title != former.Title) {
        OutTitle.ReDim(0, 0);
        OutTitle(0) = now.Title;
    }
    if (now.X != former.X)
        RenewAxis(OutXAxis, now.X);
    if (now.Y != former.Y)
        RenewAxis(OutYAxis, now.Y);
    if (now.Z != former.Z)
        OutZLabel = now.Z;
    former = now;
}

void TakeTitlesFromFile() {
    // A table or graph that was never drawn has no texts yet.
    const bool wasDrawn = !OutXAxis(0).empty() || !OutYAxis(0).empty() || !OutTitle(0).empty();
    AnalysisState(AnalysisNo).FormerDefaults = wasDrawn ? CurrentDefaults() : DefaultTexts{};
}

} // namespace quorvanta
