#include "core/records.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"

#include <algorithm>

namespace quorvanta {

namespace {

// The part of a grid store that fits the record.
template <class Cell, class Store>
void StoreGrid(const Array2<Cell>& grid, Store& stored, int columns) {
    stored.Fill(Cell());
    for (int i = 0; i <= std::min(grid.HighBound1(), GridStoreRows); ++i)
        for (int j = 0; j <= std::min(grid.HighBound2(), columns); ++j)
            stored(i, j) = grid(i, j);
}

void StoreGrids(AnalysisRecord& record) {
    record.HasGridData = HasGridData;
    record.NoOfGrids = NoOfGrids;
    record.GridRows = GridRows;
    record.GridCols = GridCols;
    record.GridTitle = GridTitle;
    record.GridHead = GridHead;
    record.GridFlag = GridFlag;
    record.GridFlag(MethodFlag) = IsMultComp == True ? AdjustMethod : i16{0};
    record.GridKind = GridKind;
    record.GridName = GridName;
    record.GridTestNo = GridTestNo;
    for (i16 store = 1; store <= NumberStores; ++store)
        StoreGrid(GridData(store), record.GridData(store), GridStoreColumns(store));
    StoreGrid(GridTexts, record.GridTexts, GridStoreColumns(TextStore));
}

void StoreChoices(AnalysisRecord& record) {
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
    record.IsGroupSeq = IsGroupSeq;
    record.IsMultComp = IsMultComp;
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
    record.NoOfTitles = static_cast<i16>(std::min<int>(OutTitle.HighBound() + 1, OutputTitles));
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

void StoreResult(AnalysisResult& result) {
    result.Calculated = Calculated;
    result.TableX = TableX;
    result.TableY = TableY;
    result.ZValues = ZValues;
    result.TableDesigns = TableDesigns;
    result.TableYKind = TableYKind;
    result.TableYMin = TableYMin;
    result.TableYMax = TableYMax;
}

} // namespace

Array1<AnalysisRecord> Analysis;
Array1<AnalysisStatus> AnalysisState;
FixedArray<i16, 0, 3> FormCount;

i32 OpeningOf(i16 analysisNo) {
    return analysisNo <= AnalysisState.HighBound() ? AnalysisState(analysisNo).Opening : 0;
}

i16 CurrentWindowKind() {
    return AnalysisNo > 0 ? Analysis(AnalysisNo).WindowKind : i16{-1};
}

i16 NoOfAnalyses() {
    return IsGroupSeq == True || CurrentWindowKind() == SimulationWindow
               ? static_cast<i16>(NoOfInterim + 1)
               : i16{1};
}

bool IsTableOrGraph() {
    return CurrentWindowKind() == TableWindow || CurrentWindowKind() == GraphWindow;
}

void StoreAnalysis() {
    if (AnalysisNo == 0 || ChoosingOptions)
        return;
    AnalysisRecord& record = Analysis(AnalysisNo);
    StoreChoices(record);
    StoreTexts(record);
    StoreOutput(record);
    StoreGrids(record);
    StoreSimulation(record);
    StoreResult(AnalysisState(AnalysisNo));
    AnalysisState(AnalysisNo).Own = {OwnSamples, OwnTails};
}

void ClearResult() {
    TableX = {};
    TableY = {};
    ZValues = {};
    TableDesigns = {};
    TableYMin = GraphYMin = static_cast<f32>(NoValue);
    TableYMax = GraphYMax = -static_cast<f32>(NoValue);
    ClearEstimates();
}

void ClearEstimates() {
    for (auto* texts : {&SignEstimateText, &PowerEstimateText, &PrAcceptEstimateText})
        texts->Fill({});
    SampleSizeEstimateText.Fill({});
    OutputReady = False;
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
    return ZParNo >= 0 && ZParNo <= NoOfPar;
}

void MarkChanged() {
    if (AnalysisNo > 0)
        AnalysisState(AnalysisNo).Changed = True;
}

} // namespace quorvanta
