#include "core/analysis_state.h"

namespace quorvanta {

i16 IsTest;
i16 TestNo;
std::string TestName;
i16 DistrNo;
std::string DistrName;
std::string ParListName;
i16 NoOfSamples;
i16 NoOfTails;
i16 OwnSamples;
i16 OwnTails;
i16 LeftTail;
i16 ParListNo;
i16 ProcedureNo;
i16 NoOfInterim;
i16 IsGroupSeq;
i16 IsMultComp;
i16 AdjustMethod;
i16 NoOfPar;
FixedArray<i16, 0, MaxPar> ParKind;
FixedArray<f64, 0, MaxPar> ParValue;
i16 UnknownParNo;
i16 XParNo;
i16 ZParNo;
FixedArray<i16, 0, MaxPar> ParBoxOrder;
FixedArray<std::string, 0, MaxKind> ParLabel;
FixedArray<std::string, 0, MaxKind> ParText;
FixedArray<std::string, 0, MaxKind> ParXminText;
FixedArray<std::string, 0, MaxKind> ParXmaxText;
FixedArray<std::string, 0, MaxKind> ParXstepText;
FixedArray<std::string, 0, MaxKind> ParZValuesText;
FixedArray<f64, 0, MaxKind> ParMin;
FixedArray<f64, 0, MaxKind> ParMax;
i16 NoOfCheck;
FixedArray<i16, 0, 4> CheckList;
FixedArray<std::string, 0, MaxCheckKind> CheckLabel;
FixedArray<i16, 0, MaxCheckKind> CheckValue;
i16 NoOfIntPar;
FixedArray<i16, 0, 3> IntParList;
FixedArray<std::string, 0, MaxGroupKind> IntParCaption;
FixedGrid<std::string, 0, 3, 0, MaxGroupKind> IntParOption;
FixedArray<i16, 0, MaxGroupKind> IntParValue;
FixedArray<bool, 1, 3> SamplesOffered;
FixedArray<bool, 1, 3> TailsOffered;
FixedArray<bool, 0, 4> CheckEnabled;
FixedGrid<bool, 0, 3, 0, 3> IntParOptionEnabled;
bool LeftTailOffered;
bool ChoosingOptions;
bool TailsShown;
bool SamplesShown;
bool InterimShown;
i16 Calculated;
i16 Calculating;
i16 Cancelled;
Array1<f32> TableX;
Array2<f32> TableY;
Array1<f32> ZValues;
i16 TableYKind;
f32 TableYMax;
f32 TableYMin;
f32 GraphYMax;
f32 GraphYMin;
DesignRanges TableDesigns;
Array1<std::string> OutTitle;
FixedArray<std::string, 0, 3> OutXAxis;
FixedArray<std::string, 0, 3> OutYAxis;
std::string OutZLabel;
std::string OutFontName;
std::string OutFontSize;
i16 OutFontBold;
i16 OutCurveWidth;
i16 OutDecimals;
i16 HasGridData;
i16 NoOfGrids;
FixedArray<i16, 0, 7> GridRows;
FixedArray<i16, 0, 7> GridCols;
FixedArray<std::string, 0, 7> GridTitle;
FixedArray<std::string, 0, 7> GridHead;
FixedArray<i16, 0, 7> GridFlag;
FixedArray<i16, 0, 7> GridKind;
std::string GridName;
FixedArray<Array2<f32>, 1, NumberStores> GridData;
Array2<std::string> GridTexts;
i16 GridTestNo;
i16 SimDistrNo;
f32 SimDistrShape;
f32 SimDistrScale;
FixedArray<i16, 1, 2> SimDistrOption;
FixedArray<f32, 1, 2> SimDistrPar1;
FixedArray<f32, 1, 2> SimDistrPar2;
i16 DistrGraphStyle;
i16 HasDistrGraph;
FixedArray<f32, 1, 7> SimAlpha;
FixedArray<f32, 1, 7> SimWeight;
f64 SimMaxValue;
i16 SimRunning;
i16 Paused;
i16 OutputReady;
FixedArray<std::string, 0, 5> InterimSize1Text;
FixedArray<std::string, 0, 5> InterimSize2Text;
FixedArray<std::string, 0, 5> RejectH0Text;
FixedArray<std::string, 0, 5> AcceptH0Text;
std::string MaxNoOfSimText;
std::string SeedText;
FixedArray<std::string, 0, 7> SignEstimateText;
FixedArray<std::string, 0, 7> PowerEstimateText;
FixedArray<std::string, 0, 7> PrAcceptEstimateText;
FixedArray<std::string, 0, 2> SampleSizeEstimateText;
i16 AnalysisNo;
std::string AnalysisFileName;
i16 CalcNo, TableNo, GraphNo, MonteNo;
f32 HelpContext;
i16 CloseMode;
std::string CrLf;
i16 WorkNo;
i16 CascadeLeft, CascadeTop;
FixedArray<bool, 0, 4> GetInfoEnabled;

namespace {

void ResetChoice() {
    IsTest = True;
    TestNo = 0;
    TestName.clear();
    DistrNo = 0;
    DistrName.clear();
    ParListName.clear();
    NoOfSamples = TwoSamples;
    NoOfTails = TwoSided;
    OwnSamples = 0;
    OwnTails = 0;
    LeftTail = False;
    ParListNo = 0;
    ProcedureNo = ProcedureTest;
    NoOfInterim = 0;
    IsGroupSeq = False;
    IsMultComp = False;
    AdjustMethod = 0;
}

void ResetParameters() {
    NoOfPar = 0;
    ParKind.Fill(0);
    ParValue.Fill(0);
    UnknownParNo = 1;
    XParNo = 2;
    ZParNo = 0;
    ParBoxOrder.Fill(0);
}

void ResetKindTables() {
    for (auto* texts :
         {&ParLabel, &ParText, &ParXminText, &ParXmaxText, &ParXstepText, &ParZValuesText})
        texts->Fill({});
    ParMin.Fill(0);
    ParMax.Fill(0);
}

void ResetOptions() {
    NoOfCheck = 0;
    CheckList.Fill(0);
    CheckLabel.Fill({});
    CheckValue.Fill(0);
    NoOfIntPar = 0;
    IntParList.Fill(0);
    IntParCaption.Fill({});
    IntParOption.Fill({});
    IntParValue.Fill(0);
    SamplesOffered.Fill(true);
    TailsOffered.Fill(true);
    CheckEnabled.Fill(true);
    IntParOptionEnabled.Fill(true);
    LeftTailOffered = true;
    ChoosingOptions = false;
    TailsShown = true;
    SamplesShown = true;
    InterimShown = false;
}

void ResetResults() {
    Calculated = False;
    Calculating = False;
    Cancelled = False;
    TableX = {};
    TableY = {};
    ZValues = {};
    TableDesigns = {};
    TableYKind = 0;
    TableYMax = -99999.0F;
    TableYMin = 99999.0F;
    GraphYMax = -99999.0F;
    GraphYMin = 99999.0F;
}

void ResetOutput() {
    OutTitle.ReDim(0, 0);
    OutXAxis.Fill({});
    OutYAxis.Fill({});
    OutZLabel.clear();
    OutFontName = "Arial";
    OutFontSize = "9";
    OutFontBold = 1;
    OutCurveWidth = UsualCurveWidth;
    OutDecimals = AutoDecimals;
}

void ResetGridState() {
    HasGridData = False;
    NoOfGrids = 0;
    GridRows.Fill(0);
    GridCols.Fill(0);
    GridTitle.Fill({});
    GridHead.Fill({});
    GridFlag.Fill(0);
    GridKind.Fill(0);
    GridName.clear();
    ResetGrids();
    GridTestNo = 0;
}

void ResetSimulation() {
    SimDistrNo = 1;
    SimDistrShape = 0.3F;
    SimDistrScale = 1.0F;
    SimDistrOption.Fill(0);
    SimDistrPar1.Fill(0);
    SimDistrPar2.Fill(0);
    DistrGraphStyle = 0;
    HasDistrGraph = False;
    SimAlpha.Fill(0.05F);
    SimWeight.Fill(1.0F);
    SimMaxValue = 99999999.0;
    SimRunning = Paused = OutputReady = False;
    for (auto* texts : {&InterimSize1Text, &InterimSize2Text, &RejectH0Text, &AcceptH0Text})
        texts->Fill({});
    MaxNoOfSimText.clear();
    SeedText.clear();
    for (auto* texts : {&SignEstimateText, &PowerEstimateText, &PrAcceptEstimateText})
        texts->Fill({});
    SampleSizeEstimateText.Fill({});
}

void ResetWindows() {
    AnalysisNo = 0;
    AnalysisFileName.clear();
    CalcNo = TableNo = GraphNo = MonteNo = 0;
    HelpContext = 0;
    CloseMode = 0;
    CrLf = "\r\n";
    WorkNo = 0;
    CascadeLeft = -150;
    CascadeTop = -350;
    GetInfoEnabled.Fill(false);
}

} // namespace

void ResetAnalysisState() {
    ResetChoice();
    ResetParameters();
    ResetKindTables();
    ResetOptions();
    ResetResults();
    ResetOutput();
    ResetGridState();
    ResetSimulation();
    ResetWindows();
}

void ResetGrids() {
    for (i16 store = 1; store <= NumberStores; ++store) {
        const bool holdsFactors = store == 3 || store == 7; // where "nothing entered yet" is 1
        GridData(store).ReDim(0, 1, 0, 1);
        GridData(store)(1, 1) = holdsFactors ? 1.0F : static_cast<f32>(NoValue);
    }
    GridTexts.ReDim(0, 1, 0, 1);
}

} // namespace quorvanta
