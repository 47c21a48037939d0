#include "core/step_back.h"

#include "core/analysis.h"
#include "core/analysis_state.h"
#include "core/floating_windows.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"

#include <utility>

namespace quorvanta {

void StepBack() {
    if (!CanStepBack())
        return;
    StoreAnalysis();
    AnalysisRecord& record = Analysis(AnalysisNo);
    AnalysisStatus& status = AnalysisState(AnalysisNo);
    AnalysisStep& step = *status.LastStep;
    std::swap(record, step.Record);
    std::swap(static_cast<AnalysisResult&>(status), step.Result);
    std::swap(status.Own, step.Own);
    record.AnalysisFileName = step.Record.AnalysisFileName; // it may have been saved since
    step.IsUndone = !step.IsUndone;
    HideWindows(Occasion::ResultGone);
    LoadAnalysis();
    MarkChanged();
    UpdateMenus();
    ThePlatform().ShowStatus(step.IsUndone ? "Undone; once more does it again." : "Done again.");
}

} // namespace quorvanta
