#include "core/driver.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/floating_windows.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/obstacle.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/search.h"
#include "core/values.h"
#include "output/designresults.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <string>

namespace quorvanta {

namespace {

bool foundNothing = false; // the last search

// A result stands until something changes, and bad values are told once; a search that found
// nothing may be asked again.
bool IsSettled(i16 parNo) {
    return Calculated == True && parNo == UnknownParNo &&
           !(foundNothing && !HasValue(ParText(ParKind(parNo))));
}

// What was asked and found nothing is asked once more: the values from before the first time are
// those to go back to.
bool IsAskedAgain(i16 parNo) {
    const auto& last = AnalysisState(AnalysisNo).LastStep;
    return last && last->Kind == StepKind::Calculation && !last->IsUndone &&
           parNo == UnknownParNo && !HasValue(ParText(ParKind(parNo)));
}

// What was cancelled says nothing more: the user knows, or has been told why.
void TellFailure() {
    if (Cancelled == False) {
        TellObstacle(Obstacle());
        ShowCantCalculate();
    }
    if (IsGroupSeq == True) {
        DropDesign();
        ThePlatform().Hide(FloatingWindow::SequentialMonitor);
        Cancelled = False;
    }
}

// The design is shown with the sizes that the solution stands for: whole subjects.
void ShowDesign(f64 root) {
    const i16 kind = ParKind(UnknownParNo);
    if (IsCountKind(kind))
        ParValue(UnknownParNo) = WholeCount(kind, root);
    const bool isDesign = SelRootFunction() != NoValue;
    ParValue(UnknownParNo) = root;
    Cancelled = False;
    if (!isDesign)
        return;
    GsShowIntPar();
    GsShowResults();
}

} // namespace

void RenewDesign() {
    if (IsGroupSeq == False || Calculated == False || CurrentWindowKind() != CalculationWindow ||
        NoOfPar < 1)
        return;
    ReadParValues();
    ShowDesign(ParValue(UnknownParNo));
}

void MakeUnknown(i16 parNo) {
    UnknownParNo = parNo;
    ZParNo = parNo == 0 ? 1 : 0;
    XParNo = parNo <= 1 ? 2 : 1;
    FixParNos();
}

void SolveFor(i16 parNo) {
    if (IsSettled(parNo))
        return;
    if (!IsAskedAgain(parNo))
        RememberStep(BeforeStep(StepKind::Calculation));
    Cancelled = False;
    Calculated = False;
    MakeUnknown(parNo);
    CalcUnknown();
}

void CalcUnknown() {
    if (Calculated == True || NoOfPar < 1)
        return;
    ForgetObstacle();
    ReadParValues();
    std::string& result = ParText(ParKind(UnknownParNo));
    result = "-";
    ThePlatform().RefreshChild();
    if (IsMultComp == True)
        HasGridData = False;
    foundNothing = false;
    if (!SelCheckPar()) {
        if (IsGroupSeq == False && IsMultComp == False)
            Calculated = True;
        UpdateMenus();
        return;
    }
    const f64 root = SolveUnknown();
    if (root == NoValue) {
        foundNothing = true;
        TellFailure();
    } else {
        ParValue(UnknownParNo) = root;
        result = FormatPar(ParKind(UnknownParNo), root);
        SelRenewTablePars();
        FindDistrGraph();
        MarkChanged();
    }
    Calculated = True;
    HideWindows(Occasion::ResultGone);
    if (root != NoValue && IsGroupSeq == True)
        ShowDesign(root);
    StoreAnalysis();
    ThePlatform().RefreshChild();
    UpdateMenus();
}

} // namespace quorvanta
