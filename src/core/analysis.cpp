#include "core/analysis.h"

#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/driver.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/setup.h"
#include "core/showpar.h"

#include <algorithm>

namespace quorvanta {

Array1<AnalysisRecord> Analysis;
Array1<AnalysisStatus> AnalysisState;
FixedArray<i16, 0, 3> FormCount;

namespace {

constexpr i16 outputTitles = 16;

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

bool IsListed(i16 parNo) {
    return parNo >= 0 && parNo <= NoOfPar;
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

// The part of a grid store that fits the record.
template <class Cell, class Store>
void StoreGrid(const Array2<Cell>& grid, Store& stored, int rows, int columns) {
    stored.Fill(Cell());
    for (int i = 0; i <= std::min(grid.HighBound1(), rows); ++i)
        for (int j = 0; j <= std::min(grid.HighBound2(), columns); ++j)
            stored(i, j) = grid(i, j);
}

template <class Cell, class Store>
void LoadGrid(Array2<Cell>& grid, const Store& stored, int rows, int columns) {
    grid.ReDim(0, rows, 0, columns);
    for (int i = 0; i <= rows; ++i)
        for (int j = 0; j <= columns; ++j)
            grid(i, j) = stored(i, j);
}

void StoreGrids(AnalysisRecord& record) {
    StoreGrid(GridData1, record.GridData1, 10, 10);
    StoreGrid(GridData2, record.GridData2, 10, 1);
    StoreGrid(GridData3, record.GridData3, 10, 10);
    StoreGrid(GridData4, record.GridData4, 10, 10);
    StoreGrid(GridData5, record.GridData5, 10, 10);
    StoreGrid(GridData6, record.GridData6, 10, 10);
    StoreGrid(GridData7, record.GridData7, 10, 10);
    StoreGrid(GridData8, record.GridData8, 10, 10);
    StoreGrid(GridData9, record.GridData9, 10, 10);
    StoreGrid(GridData10, record.GridData10, 10, 11);
}

// Brings back the store of one grid with the bounds of the grid.
void LoadGridStore(const AnalysisRecord& record, int grid) {
    const int rows = std::clamp<int>(record.GridRows(grid), 0, 10);
    const int columns = std::clamp<int>(record.GridCols(grid), 0, 10);
    switch (record.GridKind(grid)) {
    case 1:
        return LoadGrid(GridData1, record.GridData1, rows, columns);
    case 2:
        return LoadGrid(GridData2, record.GridData2, rows, std::min(columns, 1));
    case 3:
        return LoadGrid(GridData3, record.GridData3, rows, columns);
    case 4:
        return LoadGrid(GridData4, record.GridData4, rows, columns);
    case 5:
        return LoadGrid(GridData5, record.GridData5, rows, columns);
    case 6:
        return LoadGrid(GridData6, record.GridData6, rows, columns);
    case 7:
        return LoadGrid(GridData7, record.GridData7, rows, columns);
    case 8:
        return LoadGrid(GridData8, record.GridData8, rows, columns);
    case 9:
        return LoadGrid(GridData9, record.GridData9, rows, columns);
    case 10:
        return LoadGrid(GridData10, record.GridData10, rows,
                        std::clamp<int>(record.GridCols(grid), 0, 11));
    default:
        return;
    }
}

void StoreTexts(AnalysisRecord& record) {
    record.XKind = ParKind(XParNo);
    record.XminText = ParXminText(record.XKind);
    record.XmaxText = ParXmaxText(record.XKind);
    record.XstepText = ParXstepText(record.XKind);
    record.ZKind = HasZPar() ? ParKind(ZParNo) : i16{0};
    record.ZValuesText = ParZValuesText(record.ZKind);
    record.NoOfPar = NoOfPar;
    record.ParKind = ParKind;
    record.ParText.Fill({});
    for (i16 i = 0; i <= NoOfPar; ++i)
        record.ParText(i) = ParText(ParKind(i));
}

void StoreOutput(AnalysisRecord& record) {
    record.NoOfTitles = static_cast<i16>(std::min<int>(OutTitle.HighBound() + 1, outputTitles));
    record.OutTitle.Fill({});
    for (i16 i = 0; i < record.NoOfTitles; ++i)
        record.OutTitle(i) = OutTitle(i);
    record.OutXAxis = OutXAxis;
    record.OutYAxis = OutYAxis;
    record.OutZLabel = OutZLabel;
    record.OutFontName = OutFontName;
    record.OutFontSize = OutFontSize;
    record.OutFontBold = OutFontBold;
    record.OutCurveWidth = OutCurveWidth;
    record.OutDecimals = OutDecimals;
}

void LoadOutput(const AnalysisRecord& record) {
    const i16 lines = std::clamp<i16>(record.NoOfTitles, 1, outputTitles);
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

void StoreSimulation(AnalysisRecord& record) {
    record.InterimSize1Text = InterimSize1Text;
    record.InterimSize2Text = InterimSize2Text;
    record.RejectH0Text = RejectH0Text;
    record.AcceptH0Text = AcceptH0Text;
    record.MaxNoOfSimText = MaxNoOfSimText;
    record.SeedText = SeedText;
    record.SignEstimateText = SignEstimateText;
    record.PowerEstimateText = PowerEstimateText;
    record.PrAcceptEstimateText = PrAcceptEstimateText;
    record.SampleSizeEstimateText = SampleSizeEstimateText;
    record.SimDistrNo = SimDistrNo;
    record.SimDistrOption = SimDistrOption;
    record.SimDistrPar1 = SimDistrPar1;
    record.SimDistrPar2 = SimDistrPar2;
    record.DistrGraphStyle = DistrGraphStyle;
    record.HasDistrGraph = HasDistrGraph;
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
    StartDriver();
}

std::string ChildCaption(i16 windowKind, i16 windowNo) {
    return std::string(WindowKindCaption(windowKind)) + " " + std::to_string(windowNo);
}

i16 CurrentWindowKind() {
    return AnalysisNo > 0 ? Analysis(AnalysisNo).WindowKind : i16{-1};
}

namespace {

// The record becomes the state, and its window shows it wherever it stands.
void MakeCurrent(i16 n) {
    AnalysisNo = n;
    ChoosingOptions = false;
    ThePlatform().Hide(FloatingWindow::Options);
    const i16 windowKind = Analysis(n).WindowKind;
    const i16 windowNo = Analysis(n).WindowNo;
    CurrentWindowNo(windowKind) = windowNo;
    ThePlatform().Hide(FloatingWindow::Parameters);
    if (Analysis(n).IsGroupSeq == False || windowKind != CalculationWindow)
        for (const auto window :
             {FloatingWindow::InterimParameters, FloatingWindow::SequentialMonitor})
            ThePlatform().Hide(window);
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
    HideOutputs();
}

} // namespace

void HideOutputs() {
    for (const auto window :
         {FloatingWindow::Summary, FloatingWindow::DistrGraph, FloatingWindow::Output})
        ThePlatform().Hide(window);
}

void NewWindow(i16 windowKind) {
    const Switching switching;
    LeaveAnalysis();
    Calculated = False;
    const i16 windowNo = ++FormCount(windowKind);
    CurrentWindowNo(windowKind) = windowNo;
    AnalysisNo = static_cast<i16>(Analysis.HighBound() + 1);
    Analysis.ReDimPreserve(AnalysisNo);
    AnalysisState.ReDimPreserve(AnalysisNo);
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
    for (const auto window :
         {FloatingWindow::Parameters, FloatingWindow::Options, FloatingWindow::Grid})
        ThePlatform().Hide(window);
    if (IsGroupSeq == False)
        for (const auto window :
             {FloatingWindow::InterimParameters, FloatingWindow::SequentialMonitor})
            ThePlatform().Hide(window);
    ThePlatform().RefreshChild();
}

void ClearResult() {
    TableX = {};
    TableY = {};
    ZValues = {};
    TableYMin = GraphYMin = static_cast<f32>(NoValue);
    TableYMax = GraphYMax = -static_cast<f32>(NoValue);
}

void StoreAnalysis() {
    if (AnalysisNo == 0 || ChoosingOptions)
        return;
    AnalysisRecord& record = Analysis(AnalysisNo);
    record.AnalysisFileName = AnalysisFileName;
    record.IsTest = IsTest;
    record.TestNo = TestNo;
    record.TestName = TestName;
    record.DistrNo = DistrNo;
    record.DistrName = DistrName;
    record.ParListName = ParListName;
    record.NoOfSamples = NoOfSamples;
    record.NoOfTails = NoOfTails;
    record.LeftTail = LeftTail;
    record.ParListNo = ParListNo;
    record.ProcedureNo = ProcedureNo;
    record.NoOfInterim = NoOfInterim;
    record.NoOfIntPar = NoOfIntPar;
    record.IntParList.Fill(0);
    for (i16 i = 0; i < NoOfIntPar; ++i)
        record.IntParList(i) = IntParList(i);
    record.IntParValue = IntParValue;
    record.NoOfCheck = NoOfCheck;
    record.CheckList = CheckList;
    record.CheckValue = CheckValue;
    record.UnknownParNo = UnknownParNo;
    record.XParNo = XParNo;
    record.ZParNo = ZParNo;
    StoreTexts(record);
    StoreOutput(record);
    record.HasGridData = HasGridData;
    record.NoOfGrids = NoOfGrids;
    record.GridRows = GridRows;
    record.GridCols = GridCols;
    record.GridTitle = GridTitle;
    record.GridHead = GridHead;
    record.GridFlag = GridFlag;
    record.GridKind = GridKind;
    record.GridName = GridName;
    StoreGrids(record);
    StoreSimulation(record);
    record.IsGroupSeq = IsGroupSeq;
    record.IsMultComp = IsMultComp;
    record.GridTestNo = GridTestNo;

    AnalysisStatus& status = AnalysisState(AnalysisNo);
    status.Calculated = Calculated;
    status.TableX = TableX;
    status.TableY = TableY;
    status.ZValues = ZValues;
    status.TableYKind = TableYKind;
    status.TableYMin = TableYMin;
    status.TableYMax = TableYMax;
}

void LoadAnalysis() {
    const AnalysisRecord& record = Analysis(AnalysisNo);
    LoadChoices(record);
    NewSetup();
    SelSetParList();
    LoadTexts(record);
    LoadOutput(record);
    LoadGrids(record);
    LoadSimulation(record);
    ParListName = record.ParListName;
    HelpContext = static_cast<f32>(HelpDescription());

    const AnalysisStatus& status = AnalysisState(AnalysisNo);
    TableX = status.TableX;
    TableY = status.TableY;
    ZValues = status.ZValues;
    TableYKind = status.TableYKind;
    TableYMin = GraphYMin = status.TableYMin;
    TableYMax = GraphYMax = status.TableYMax;
    // A calculation window without a value has no result; a value that a later change has made
    // stale is none either.
    Calculated = ToFlag(status.Calculated == True && (record.WindowKind != CalculationWindow ||
                                                      HasValue(ParText(ParKind(UnknownParNo)))));
    SetupShowPar();
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

bool QueryCloseChild(i16 analysisNo, i16 closeMode) {
    CloseMode = closeMode;
    if (Calculating == True)
        return false;
    if (AnalysisState(analysisNo).Changed == False)
        return true;
    ChildActivated(analysisNo);
    const Answer answer =
        ThePlatform().MsgBox(Analysis(analysisNo).AnalysisFileName + " Has Been Changed." + CrLf +
                                 CrLf + "Save Analysis?",
                             Buttons::YesNoCancel, Icon::Exclamation, "");
    if (answer != Answer::Yes)
        return answer == Answer::No;
    FileCommand(FileSaveAnalysis);
    // A save that was given up, or failed, leaves the analysis unsaved and so the window open.
    return AnalysisState(analysisNo).Changed == False;
}

void ChildClosed(i16 analysisNo) {
    const Switching switching;
    AnalysisState(analysisNo).Closed = True;
    AnalysisState(analysisNo).Changed = False;
    // What belongs to the window in front stays when one behind it closes.
    if (CloseMode != CloseWithMain && analysisNo == AnalysisNo) {
        HideOutputs();
        for (const auto window : {FloatingWindow::Parameters, FloatingWindow::InterimParameters,
                                  FloatingWindow::SequentialMonitor})
            ThePlatform().Hide(window);
    }
    if (!AnyOpenAnalysis()) {
        ResetRecords();
        ChoosingOptions = false;
        ThePlatform().Hide(FloatingWindow::Options);
        ThePlatform().Hide(FloatingWindow::Grid);
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

void FixParNos() {
    const auto fix = [](i16& parNo, i16 a, i16 b) {
        const auto taken = [a, b](i16 i) { return i == a || i == b; };
        while (parNo >= 0 && (parNo > NoOfPar || taken(parNo)))
            --parNo;
        if (parNo < 0)
            for (parNo = 0; taken(parNo);)
                ++parNo;
    };
    fix(UnknownParNo, XParNo, ZParNo);
    fix(XParNo, UnknownParNo, ZParNo);
    fix(ZParNo, UnknownParNo, XParNo);
}

bool HasZPar() {
    return IsListed(ZParNo);
}

void MarkChanged() {
    if (AnalysisNo > 0)
        AnalysisState(AnalysisNo).Changed = True;
}

} // namespace quorvanta
