#include "core/analysis.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/floating_windows.h"
#include "core/menus.h"
#include "core/option_choice.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/search.h"
#include "core/showpar.h"
#include "core/values.h"

#include <algorithm>

namespace quorvanta {

namespace {

i32 openings = 0; // of windows, however often all were closed

void ResetRecords() {
    Analysis.ReDim(0, 0);
    AnalysisState.ReDim(0, 0);
    FormCount.Fill(0);
    AnalysisNo = 0;
    CascadeLeft = -150;
    CascadeTop = -350;
}

i16& CurrentWindowNo(i16 windowKind) {
    switch (windowKind) {
    case TableWindow:
        return TableNo;
    case GraphWindow:
        return GraphNo;
    case SimulationWindow:
        return MonteNo;
    default:
        return CalcNo;
    }
}

// While this lives the current analysis changes, and windows that come to the front do so because
// of it: taken for the user's doing, one of them would write the state into the wrong record.
class Switching {
  public:
    Switching() { ++going_; }
    ~Switching() { --going_; }
    Switching(const Switching&) = delete;
    Switching& operator=(const Switching&) = delete;

    static bool IsGoing() { return going_ > 0; }

  private:
    static inline int going_ = 0;
};

template <class Cell, class Store>
void LoadGrid(Array2<Cell>& grid, const Store& stored, int rows, int columns) {
    grid.ReDim(0, rows, 0, columns);
    for (int i = 0; i <= rows; ++i)
        for (int j = 0; j <= columns; ++j)
            grid(i, j) = stored(i, j);
}

// Brings back the store of one grid with the bounds of the grid.
void LoadGridStore(const AnalysisRecord& record, int grid) {
    const int store = record.GridKind(grid);
    if (store < 1 || store > TextStore)
        return;
    const int rows = std::clamp<int>(record.GridRows(grid), 0, GridStoreRows);
    const int columns = std::clamp<int>(record.GridCols(grid), 0, GridStoreColumns(store));
    if (store == TextStore)
        LoadGrid(GridTexts, record.GridTexts, rows, columns);
    else
        LoadGrid(GridData(store), record.GridData(store), rows, columns);
}

void LoadOutput(const AnalysisRecord& record) {
    const i16 lines = std::clamp<i16>(record.NoOfTitles, 1, OutputTitles);
    OutTitle.ReDim(0, lines - 1);
    for (i16 i = 0; i < lines; ++i)
        OutTitle(i) = record.OutTitle(i);
    OutXAxis = record.OutXAxis;
    OutYAxis = record.OutYAxis;
    OutZLabel = record.OutZLabel;
    OutFontName = record.OutFontName;
    OutFontSize = record.OutFontSize;
    OutFontBold = record.OutFontBold;
    OutCurveWidth = record.OutCurveWidth;
    OutDecimals = record.OutDecimals;
}

void LoadSimulation(const AnalysisRecord& record) {
    InterimSize1Text = record.InterimSize1Text;
    InterimSize2Text = record.InterimSize2Text;
    RejectH0Text = record.RejectH0Text;
    AcceptH0Text = record.AcceptH0Text;
    MaxNoOfSimText = record.MaxNoOfSimText;
    SeedText = record.SeedText;
    SignEstimateText = record.SignEstimateText;
    PowerEstimateText = record.PowerEstimateText;
    PrAcceptEstimateText = record.PrAcceptEstimateText;
    SampleSizeEstimateText = record.SampleSizeEstimateText;
    SimDistrNo = record.SimDistrNo;
    SimDistrOption = record.SimDistrOption;
    SimDistrPar1 = record.SimDistrPar1;
    SimDistrPar2 = record.SimDistrPar2;
    DistrGraphStyle = record.DistrGraphStyle;
    HasDistrGraph = record.HasDistrGraph;
}

// Texts and settings of a table or graph that was never drawn. The type stays as it was chosen
// for the last one.
void ClearOutput() {
    OutTitle.ReDim(0, 0);
    OutXAxis.Fill({});
    OutYAxis.Fill({});
    OutZLabel.clear();
    OutCurveWidth = UsualCurveWidth;
    OutDecimals = AutoDecimals;
}

// What was chosen, before the lists that it leads to are built.
void LoadChoices(const AnalysisRecord& record) {
    AnalysisFileName = record.AnalysisFileName;
    IsTest = record.IsTest;
    TestNo = record.TestNo;
    TestName = record.TestName;
    DistrNo = record.DistrNo;
    DistrName = record.DistrName;
    NoOfSamples = record.NoOfSamples;
    NoOfTails = record.NoOfTails;
    LeftTail = record.LeftTail;
    ParListNo = record.ParListNo;
    ProcedureNo = record.ProcedureNo;
    NoOfInterim = record.NoOfInterim;
    IsGroupSeq = record.IsGroupSeq;
    IsMultComp = record.IsMultComp;
    if (IsMultComp == True)
        AdjustMethod = record.GridFlag(MethodFlag);
    GridTestNo = record.GridTestNo;
    for (i16 i = 0; i < record.NoOfIntPar; ++i)
        IntParValue(record.IntParList(i)) = record.IntParValue(record.IntParList(i));
    for (i16 i = 0; i < record.NoOfCheck; ++i)
        CheckValue(record.CheckList(i)) = record.CheckValue(record.CheckList(i));
}

void LoadTexts(const AnalysisRecord& record) {
    UnknownParNo = record.UnknownParNo;
    XParNo = record.XParNo;
    ZParNo = record.ZParNo;
    FixParNos();
    for (i16 i = 0; i <= std::min(NoOfPar, record.NoOfPar); ++i)
        if (ParKind(i) == record.ParKind(i))
            ParText(ParKind(i)) = record.ParText(i);
    ParXminText(record.XKind) = record.XminText;
    ParXmaxText(record.XKind) = record.XmaxText;
    ParXstepText(record.XKind) = record.XstepText;
    ParZValuesText(record.ZKind) = record.ZValuesText;
}

void LoadGrids(const AnalysisRecord& record) {
    HasGridData = record.HasGridData;
    NoOfGrids = record.NoOfGrids;
    GridRows = record.GridRows;
    GridCols = record.GridCols;
    GridTitle = record.GridTitle;
    GridHead = record.GridHead;
    GridFlag = record.GridFlag;
    GridKind = record.GridKind;
    GridName = record.GridName;
    ResetGrids();
    for (int grid = 0; grid <= 7; ++grid)
        LoadGridStore(record, grid);
}

} // namespace

void Main() {
    ResetAnalysisState();
    ResetRecords();
    SetAllParKinds();
    SetAllIntPar();
    SetAllChecks();
    StartSearch();
}

std::string ChildCaption(i16 windowKind, i16 windowNo) {
    return std::string(WindowKindCaption(windowKind)) + " " + std::to_string(windowNo);
}

namespace {

// The record becomes the state, and its window shows it wherever it stands.
void MakeCurrent(i16 n) {
    AnalysisNo = n;
    ChoosingOptions = false;
    const i16 windowKind = Analysis(n).WindowKind;
    const i16 windowNo = Analysis(n).WindowNo;
    CurrentWindowNo(windowKind) = windowNo;
    HideWindows(Occasion::Switched);
    if (Analysis(n).IsGroupSeq == False || windowKind != CalculationWindow)
        HideWindows(Occasion::NotASequence);
    if (Analysis(n).TestName.empty() && Analysis(n).DistrName.empty()) {
        AnalysisFileName = Analysis(n).AnalysisFileName;
        ClearAnalysis();
    } else {
        LoadAnalysis();
    }
}

// The current analysis goes behind another: options that are being chosen are given up, so that its
// window shows what its record holds.
void LeaveAnalysis() {
    if (ChoosingOptions)
        MakeCurrent(AnalysisNo);
    StoreAnalysis();
    HideWindows(Occasion::ResultGone);
}

} // namespace

void NewWindow(i16 windowKind) {
    const Switching switching;
    LeaveAnalysis();
    Calculated = False;
    const i16 windowNo = ++FormCount(windowKind);
    CurrentWindowNo(windowKind) = windowNo;
    AnalysisNo = static_cast<i16>(Analysis.HighBound() + 1);
    Analysis.ReDimPreserve(AnalysisNo);
    AnalysisState.ReDimPreserve(AnalysisNo);
    AnalysisState(AnalysisNo).Opening = ++openings;
    Analysis(AnalysisNo).WindowKind = windowKind;
    Analysis(AnalysisNo).WindowNo = windowNo;
    AnalysisFileName = ChildCaption(windowKind, windowNo);
    Analysis(AnalysisNo).AnalysisFileName = AnalysisFileName;
    ClearAnalysis();
    CascadeLeft = static_cast<i16>(CascadeLeft + 150);
    CascadeTop = static_cast<i16>(CascadeTop + 350);
    ThePlatform().OpenChild(windowKind, windowNo, AnalysisNo, AnalysisFileName);
    UpdateMenus();
}

void ClearAnalysis() {
    ChoosingOptions = false;
    NoOfPar = 0;
    Calculated = False;
    TestName.clear();
    DistrName.clear();
    ParListName.clear();
    HasDistrGraph = False;
    HasGridData = False;
    ClearResult();
    ClearOutput();
    HideWindows(Occasion::Emptied);
    if (IsGroupSeq == False)
        HideWindows(Occasion::NotASequence);
    ThePlatform().RefreshChild();
}

void LoadAnalysis() {
    const AnalysisRecord& record = Analysis(AnalysisNo);
    const AnalysisStatus& status = AnalysisState(AnalysisNo);
    LoadChoices(record);
    OwnSamples = status.Own.Samples;
    OwnTails = status.Own.Tails;
    NewSetup();
    SelSetParList();
    LoadTexts(record);
    LoadOutput(record);
    LoadGrids(record);
    LoadSimulation(record);
    if (HasGridData == False)
        ThePlatform().Hide(FloatingWindow::Grid);
    ParListName = record.ParListName;
    HelpContext = static_cast<f32>(HelpDescription());

    TableX = status.TableX;
    TableY = status.TableY;
    ZValues = status.ZValues;
    TableDesigns = status.TableDesigns;
    TableYKind = status.TableYKind;
    TableYMin = GraphYMin = status.TableYMin;
    TableYMax = GraphYMax = status.TableYMax;
    // A calculation window without a value has no result; a value that a later change has made
    // stale is none either.
    Calculated = ToFlag(status.Calculated == True && (record.WindowKind != CalculationWindow ||
                                                      HasValue(ParText(ParKind(UnknownParNo)))));
    OutputReady = ToFlag(record.WindowKind == SimulationWindow && Calculated == True);
    SetupShowPar();
    RenewDesign();
    ThePlatform().RefreshChild();
}

void SwitchAnalysis(i16 n) {
    const Switching switching;
    MakeCurrent(n);
    ThePlatform().RaiseChild(Analysis(n).WindowKind, Analysis(n).WindowNo);
}

void ChildActivated(i16 analysisNo) {
    if (Switching::IsGoing() || Calculating == True || analysisNo == AnalysisNo ||
        AnalysisState(analysisNo).Closed == True)
        return;
    LeaveAnalysis();
    SwitchAnalysis(analysisNo);
    UpdateMenus();
}

void ChildClosed(i16 analysisNo) {
    const Switching switching;
    AnalysisState(analysisNo).Closed = True;
    AnalysisState(analysisNo).Changed = False;
    // What belongs to the window in front stays when one behind it closes.
    if (CloseMode != CloseWithMain && analysisNo == AnalysisNo)
        HideWindows(Occasion::Closed);
    if (!AnyOpenAnalysis()) {
        ResetRecords();
        ChoosingOptions = false;
        HideWindows(Occasion::NoneOpen);
    } else if (analysisNo == AnalysisNo) {
        NextOpenAnalysis();
    }
    UpdateMenus();
}

void NextOpenAnalysis() {
    for (i16 n = 1; n <= Analysis.HighBound(); ++n)
        if (AnalysisState(n).Closed == False)
            return SwitchAnalysis(n);
}

bool AnyOpenAnalysis() {
    for (i16 n = 1; n <= Analysis.HighBound(); ++n)
        if (AnalysisState(n).Closed == False)
            return true;
    return false;
}

} // namespace quorvanta
