#include "core/setup.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/floating_windows.h"
#include "core/last_step.h"
#include "core/menus.h"
#include "core/option_choice.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/showpar.h"
#include "core/values.h"
#include "montecarlo/simulation.h"

#include <string>
#include <utility>

namespace quorvanta {

namespace {

// What it will have been when the options that are being chosen are accepted.
StepKind choosing = StepKind::NewTest;

void Select(const AnalysisKey& key) {
    IsTest = key.IsTest;
    TestNo = key.TestNo;
    DistrNo = key.DistrNo;
    ProcedureNo = key.ProcedureNo;
    ParListNo = key.ParListNo;
}

// A test that exists as a simulation only, asked for in another window: false if the user does not
// want a window for it.
bool EnsureSimulationWindow(const std::string& caption) {
    const Answer answer =
        ThePlatform().MsgBox(caption + " Is Only Available as Monte Carlo Simulation.",
                             Buttons::OkCancel, Icon::Exclamation, "");
    if (answer != Answer::Ok)
        return false;
    FileCommand(SimulationWindow);
    return CurrentWindowKind() == SimulationWindow;
}

// Opens a window for the analysis where the one in front can't show it; false if the user gave up.
bool EnsureWindow(const AnalysisKey& key, const std::string& caption, bool offerSimulation) {
    if (CurrentWindowKind() != SimulationWindow && !HasEquation(key))
        return EnsureSimulationWindow(caption);
    if (AnalysisNo == 0) {
        const auto windowKind = ThePlatform().AskWindowKind(offerSimulation);
        if (!windowKind)
            return false;
        FileCommand(*windowKind);
    }
    // Where a window is asked for, designs have no simulation; one that is open simulates them.
    const bool isSimulated =
        offerSimulation || (key.IsTest == True && IsDesignTest(key.TestNo) && HasSimulation(key));
    if (CurrentWindowKind() != SimulationWindow || isSimulated)
        return AnalysisNo != 0;
    ShowMessage(caption + " Is Not Available as Monte Carlo Simulation.");
    return false;
}

void ShowOptions(StepKind step) {
    ChoosingOptions = true;
    choosing = step;
    HelpContext = static_cast<f32>(HelpDescription());
    NoOfPar = 0;
    Calculated = False;
    OutputReady = False;
    UnknownParNo = 1;
    XParNo = 2;
    ZParNo = 3;
    NewSetup();
    UpdateMenus();
    ThePlatform().RefreshChild();
    ThePlatform().RefreshOptions();
    ThePlatform().Show(FloatingWindow::Options);
}

bool AreSame(const AnalysisKey& a, const AnalysisKey& b) {
    return a.IsTest == b.IsTest &&
           (a.IsTest == True ? a.TestNo == b.TestNo : a.DistrNo == b.DistrNo);
}

// Levels and sizes of the analyses of one test say nothing of another one's.
void ForgetAnalyses() {
    for (auto* texts : {&InterimSize1Text, &InterimSize2Text, &RejectH0Text, &AcceptH0Text})
        texts->Fill({});
}

// The road from an entry of the menus, whose name goes where it belongs, to the options. Nothing of
// the state changes before it is known that they will be shown.
template <class Name>
void NewAnalysis(const AnalysisKey& key, const std::string& caption, bool offerSimulation,
                 Name name) {
    if (!IsServed(key)) {
        ShowNotAvailable(caption);
        return;
    }
    if (AskToStopRun())
        return;
    StoreAnalysis(); // what CancelOptions brings back
    if (!EnsureWindow(key, caption, offerSimulation && HasSimulation(key)))
        return;
    HideWindows(Occasion::NewChoice);
    if (!AreSame(key, CurrentKey()))
        ForgetAnalyses();
    Select(key);
    IsGroupSeq = False;
    IsMultComp = False;
    TestName.clear();
    DistrName.clear();
    name();
    StartTwoSidedInterval();
    ShowOptions(key.IsTest == True ? StepKind::NewTest : StepKind::NewDistribution);
}

// The role goes to the parameter that had it in the former list. One that the new list lacks leaves
// it to the parameter in its place where that is the same list in another form, a difference for a
// value; otherwise the role is as in a new analysis.
void KeepRole(i16& parNo, const AnalysisRecord& former, i16 formerNo) {
    if (formerNo > former.NoOfPar)
        return;
    for (i16 i = 0; i <= NoOfPar; ++i) {
        if (ParKind(i) == former.ParKind(formerNo)) {
            parNo = i;
            return;
        }
    }
    if (NoOfPar == former.NoOfPar)
        parNo = formerNo;
}

void KeepRoles(const AnalysisRecord& former) {
    KeepRole(UnknownParNo, former, former.UnknownParNo);
    if (CurrentWindowKind() == CalculationWindow)
        return MakeUnknown(UnknownParNo);
    KeepRole(XParNo, former, former.XParNo);
    KeepRole(ZParNo, former, former.ZParNo);
}

AnalysisKey KeyOfTest(i16 menuNo) {
    AnalysisKey key = CurrentKey();
    key.IsTest = True;
    key.TestNo = TestNoOfMenu(menuNo);
    return key;
}

AnalysisKey KeyOfDistribution(i16 distrNo) {
    AnalysisKey key = CurrentKey();
    key.IsTest = False;
    key.DistrNo = distrNo;
    return key;
}

} // namespace

bool IsEntryServed(const MenuItem& item) {
    switch (item.Action) {
    case MenuAction::Test:
        return IsServed(KeyOfTest(item.MenuNo));
    case MenuAction::Distribution:
        return IsServed(KeyOfDistribution(item.MenuNo));
    default:
        return true;
    }
}

void NewTest(i16 menuNo) {
    const std::string caption = TestMenuName(menuNo);
    NewAnalysis(KeyOfTest(menuNo), caption, HasSimWindow(menuNo), [menuNo, &caption] {
        TestNo = MenuToTestNo(menuNo);
        TestName = caption;
    });
}

void NewDistribution(i16 distrNo) {
    const std::string caption = DistrMenuName(distrNo);
    NewAnalysis(KeyOfDistribution(distrNo), caption, true, [&caption] { DistrName = caption; });
}

bool CanReopenOptions() {
    return AnalysisNo > 0 && NoOfPar >= 1 && !ChoosingOptions && Calculating == False &&
           IsServed(CurrentKey());
}

void ReopenOptions() {
    if (!CanReopenOptions())
        return;
    StoreAnalysis(); // what CancelOptions brings back
    HideWindows(Occasion::NewChoice);
    ShowOptions(StepKind::Options);
}

void AcceptOptions() {
    AnalysisStep before = BeforeStep(choosing);
    ChoosingOptions = false;
    // A design is asked anew for its boundaries and fractions.
    if (IsGroupSeq == True)
        HasGridData = False;
    SelSetParList();
    ParListName = Headline();
    if (choosing == StepKind::Options)
        KeepRoles(before.Record);
    FixParNos();
    // In a table or graph the text is the value that the parameter has once it is no axis.
    if (CurrentWindowKind() == CalculationWindow)
        ParText(ParKind(UnknownParNo)) = "-";
    HelpContext = static_cast<f32>(HelpDescription());
    Calculated = False;
    OutDecimals = AutoDecimals;
    ClearResult();
    MarkChanged();
    RememberStep(std::move(before));
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
