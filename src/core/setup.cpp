#include "core/setup.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/floating_windows.h"
#include "core/menus.h"
#include "core/option_choice.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/showpar.h"
#include "core/values.h"

namespace quorvanta {

namespace {

// The numbers that select a module, given back when the choice comes to nothing.
class Selection {
  public:
    void Restore() const {
        IsTest = isTest_;
        TestNo = testNo_;
        DistrNo = distrNo_;
        IsGroupSeq = isGroupSeq_;
        IsMultComp = isMultComp_;
    }

  private:
    i16 isTest_ = IsTest;
    i16 testNo_ = TestNo;
    i16 distrNo_ = DistrNo;
    i16 isGroupSeq_ = IsGroupSeq;
    i16 isMultComp_ = IsMultComp;
};

void SelectTest(i16 menuNo) {
    IsGroupSeq = False;
    IsMultComp = False;
    IsTest = True;
    TestNo = MenuToTestNo(menuNo);
}

void SelectDistribution(i16 distrNo) {
    IsGroupSeq = False;
    IsMultComp = False;
    IsTest = False;
    DistrNo = distrNo;
}

// Opens a window if none is open; false if the user gave up.
bool EnsureWindow(bool offerSimulation) {
    if (AnalysisNo != 0)
        return true;
    const auto windowKind = ThePlatform().AskWindowKind(offerSimulation);
    if (!windowKind)
        return false;
    FileCommand(*windowKind);
    return AnalysisNo != 0;
}

void ShowOptions() {
    ChoosingOptions = true;
    StartTwoSidedInterval();
    HelpContext = static_cast<f32>(HelpDescription());
    NoOfPar = 0;
    Calculated = False;
    UnknownParNo = 1;
    XParNo = 2;
    ZParNo = 3;
    NewSetup();
    UpdateMenus();
    ThePlatform().RefreshChild();
    ThePlatform().RefreshOptions();
    ThePlatform().Show(FloatingWindow::Options);
}

void HideFloatingWindows() {
    for (const auto window :
         {FloatingWindow::Parameters, FloatingWindow::InterimParameters,
          FloatingWindow::SequentialMonitor, FloatingWindow::Grid, FloatingWindow::Options})
        ThePlatform().Hide(window);
    HideOutputs();
}

} // namespace

void NewTest(i16 menuNo) {
    const Selection former;
    SelectTest(menuNo);
    const bool isServed = SelHasModule();
    former.Restore();
    if (!isServed) {
        ShowNotAvailable(TestMenuName(menuNo));
        return;
    }
    StoreAnalysis(); // what CancelOptions brings back
    HideFloatingWindows();
    if (!EnsureWindow(HasSimWindow(menuNo)))
        return;
    SelectTest(menuNo);
    TestName = TestMenuName(menuNo);
    DistrName.clear();
    ShowOptions();
}

void NewDistribution(i16 distrNo) {
    const Selection former;
    SelectDistribution(distrNo);
    const bool isServed = SelHasModule();
    former.Restore();
    if (!isServed) {
        ShowNotAvailable(DistrMenuName(distrNo));
        return;
    }
    StoreAnalysis(); // what CancelOptions brings back
    HideFloatingWindows();
    if (!EnsureWindow(true))
        return;
    SelectDistribution(distrNo);
    DistrName = DistrMenuName(distrNo);
    TestName.clear();
    ShowOptions();
}

void AcceptOptions() {
    ChoosingOptions = false;
    SelSetParList();
    ParListName = Headline();
    FixParNos();
    // In a table or graph the text is the value that the parameter has once it is no axis.
    if (CurrentWindowKind() == CalculationWindow)
        ParText(ParKind(UnknownParNo)) = "-";
    HelpContext = static_cast<f32>(HelpDescription());
    Calculated = False;
    OutDecimals = AutoDecimals;
    ClearResult();
    MarkChanged();
    ThePlatform().Hide(FloatingWindow::Options);
    ThePlatform().RefreshChild();
    SetupShowPar();
    if (CurrentWindowKind() == CalculationWindow && AllValuesPresent())
        CalcUnknown();
    StoreAnalysis();
    UpdateMenus();
}

void CancelOptions() {
    ThePlatform().Hide(FloatingWindow::Options);
    if (AnalysisNo != 0)
        SwitchAnalysis(AnalysisNo);
    UpdateMenus();
}

} // namespace quorvanta
