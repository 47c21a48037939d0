#include "output/titles.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"

#include <algorithm>

namespace quorvanta {

namespace {

DefaultTexts CurrentDefaults() {
    const auto label = [](i16 parNo) { return StripAmpersand(ParLabel(ParKind(parNo))); };
    return {ParListName, label(XParNo), label(UnknownParNo), HasZPar() ? label(ZParNo) : ""};
}

template <class Texts>
bool HasText(const Texts& texts) {
    return std::ranges::any_of(texts.Raw(), [](const std::string& text) { return !text.empty(); });
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
    // A table or graph that was never drawn has no texts yet. One that was drawn has limits, even
    // if the user has emptied its title and labels.
    const bool wasDrawn = HasText(OutTitle) || HasText(OutXAxis) || HasText(OutYAxis);
    AnalysisState(AnalysisNo).FormerDefaults = wasDrawn ? CurrentDefaults() : DefaultTexts{};
}

std::vector<std::string> CurrentTitle() {
    const bool isOwn =
        HasText(OutTitle) && AnalysisState(AnalysisNo).FormerDefaults.Title == ParListName;
    if (CurrentWindowKind() == CalculationWindow && !isOwn)
        return {ParListName};
    return {OutTitle.Raw().begin(), OutTitle.Raw().end()};
}

void TakeTitle(const std::vector<std::string>& lines) {
    if (CurrentWindowKind() == CalculationWindow) {
        AnalysisState(AnalysisNo).FormerDefaults.Title = ParListName;
        if (lines == std::vector{ParListName}) {
            OutTitle.ReDim(0, 0);
            return;
        }
    }
    OutTitle.ReDim(0, lines.empty() ? 0 : static_cast<int>(lines.size()) - 1);
    std::ranges::copy(lines, OutTitle.Raw().begin());
}

} // namespace quorvanta
