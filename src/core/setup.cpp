#include "core/setup.h"

#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/general.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/showpar.h"

namespace quorvanta {

namespace {

constexpr i16 twoSidedIntervalCheck = 36;

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

bool IsIntervalAnalysis() {
    return IsTest == False && ProcedureNo == ProcedureInterval;
}

// A confidence interval starts two-sided, a test that is stated through one starts one-sided; what
// the user makes of it afterwards stays.
void StartTwoSidedInterval() {
    CheckValue(twoSidedIntervalCheck) = IsIntervalAnalysis() ? 1 : 0;
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

void LayOutOptions() {
    ClearOptions();
    SelSetupTest();
    // Only a test rejects.
    LeftTailOffered = NoOfTails != TwoSided && (IsTest == True || ProcedureNo == ProcedureTest);
    SelSetLabels();
}

void OptionsChanged() {
    Calculated = False;
    LayOutOptions();
    ThePlatform().RefreshOptions();
    UpdateMenus();
}

std::string TailsInWords() {
    if (IsIntervalAnalysis())
        return CheckValue(twoSidedIntervalCheck) == 1 ? "two-sided" : "one-sided";
    switch (NoOfTails) {
    case OneSided:
        return "one-sided";
    case TwoSided:
        return "two-sided";
    default:
        return "two one-sided (equivalence)";
    }
}

bool HasDistributionGraph() {
    const bool hasOnlyGraph = HasDistrGraph == True && HasGridData == False;
    const bool hasNeither = HasDistrGraph == False && HasGridData == False;
    const bool isLeftOut =
        (!IsDiscreteTest() || hasNeither) && !hasOnlyGraph && !HasSurvivalGraph();
    return IsGroupSeq == False && !isLeftOut;
}

} // namespace

bool HasWindowKind(i16 windowKind) {
    return windowKind == CalculationWindow || windowKind == TableWindow ||
           windowKind == GraphWindow;
}

void ShowNotAvailable(const std::string& what) {
    ShowMessage(what + " Is Not Available in This Version.");
}

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

void NewSetup() {
    if (TestNo != GridTestNo && IsMultComp == False) {
        ResetGrids();
        HasGridData = False;
    }
    if (IsTest == False && ParListNo >= static_cast<i16>(DistrParList(DistrNo).size()))
        ParListNo = 0;
    LayOutOptions();
}

void ChooseSamples(i16 noOfSamples) {
    NoOfSamples = noOfSamples;
    OptionsChanged();
}

void ChooseTails(i16 noOfTails) {
    NoOfTails = noOfTails;
    OptionsChanged();
}

void ChooseLeftTail(bool left) {
    LeftTail = ToFlag(left);
    OptionsChanged();
}

void ChooseProcedure(i16 procedureNo) {
    if (procedureNo != ProcedureNo) {
        ProcedureNo = procedureNo;
        StartTwoSidedInterval();
    }
    OptionsChanged();
}

void ChooseParList(i16 parListNo) {
    ParListNo = parListNo;
    OptionsChanged();
}

void ChooseCheck(i16 position, bool ticked) {
    const i16 kind = CheckList(position);
    CheckValue(kind) = ticked ? 1 : 0;
    if (ticked)
        ClearExcludedChecks(kind);
    OptionsChanged();
}

void ChooseIntPar(i16 position, i16 option) {
    IntParValue(IntParList(position)) = option;
    OptionsChanged();
}

void ChooseInterim(i16 noOfInterim) {
    NoOfInterim = noOfInterim;
    OptionsChanged();
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

void UpdateMenus() {
    GetInfoEnabled.Fill(false);
    if (AnalysisNo != 0) {
        for (int i = 0; i <= 2; ++i)
            GetInfoEnabled(i) = true;
        const bool hasResult =
            Calculated == True && NoOfPar >= 1 &&
            (CurrentWindowKind() != CalculationWindow || HasValue(ParText(ParKind(UnknownParNo))));
        GetInfoEnabled(3) = hasResult;
        GetInfoEnabled(4) = hasResult && HasDistributionGraph();
    }
    ThePlatform().RefreshMenus();
}

std::string Headline() {
    std::string text;
    if (IsTest == True) {
        text = TestName;
    } else {
        constexpr const char* procedures[] = {"Test of ", "Point Estimate of ",
                                              "Conf. Interval for "};
        text = procedures[ProcedureNo];
        text += DistrParList(DistrNo)[static_cast<std::size_t>(ParListNo)];
        text += " " + DistrName;
    }
    return text + ", " + TailsInWords() + ".";
}

} // namespace quorvanta
