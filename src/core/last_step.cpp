#include "core/last_step.h"

#include "core/analysis_state.h"

#include <utility>

namespace quorvanta {

namespace {

const char* NameOf(StepKind kind) {
    switch (kind) {
    case StepKind::Calculation:
        return "Calculation";
    case StepKind::NewTest:
        return "New Test";
    case StepKind::NewDistribution:
        return "New Distribution";
    case StepKind::Tables:
        return "Value from Tables";
    default:
        return "Options";
    }
}

} // namespace

AnalysisStep BeforeStep(StepKind kind) {
    StoreAnalysis();
    const AnalysisStatus& status = AnalysisState(AnalysisNo);
    return {kind, false, Analysis(AnalysisNo), status, status.Own};
}

void RememberStep(AnalysisStep step) {
    if (AnalysisNo == 0)
        return;
    const bool isChosen = !step.Record.TestName.empty() || !step.Record.DistrName.empty();
    auto& last = AnalysisState(AnalysisNo).LastStep;
    if (isChosen)
        last = std::move(step);
    else
        last.reset();
}

bool CanStepBack() {
    return AnalysisNo > 0 && Calculating == False && !ChoosingOptions &&
           AnalysisState(AnalysisNo).LastStep.has_value();
}

std::string StepBackName() {
    if (!CanStepBack())
        return "Undo";
    const AnalysisStep& last = *AnalysisState(AnalysisNo).LastStep;
    return std::string(last.IsUndone ? "Redo " : "Undo ") + NameOf(last.Kind);
}

} // namespace quorvanta
