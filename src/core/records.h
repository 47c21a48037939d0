// The records of the open analyses, which the state of the current one is copied into.
#pragma once

#include "core/analysis_state.h"
#include "core/checked_array.h"
#include "core/types.h"

#include <optional>
#include <string>

namespace quorvanta {

// Lines of the title of a table or graph that a record has room for.
inline constexpr i16 OutputTitles = 16;

// The highest row of the stores of grids, and their highest columns, in a record and in its file.
inline constexpr int GridStoreRows = 10;
constexpr int GridStoreColumns(int store) {
    return store == 2 ? 1 : store == TextStore ? 11 : 10;
}

// Of the flags of the grids, the one without a grid: the method of adjustment of multiple
// comparisons.
inline constexpr int MethodFlag = 0;

// One analysis as it is kept while another is current, and as it stands in its file: the fields
// stand in the order of the file. The globals that they mirror have the same names.
struct AnalysisRecord {
    i16 WindowKind = 0;
    i16 WindowNo = 0;
    std::string AnalysisFileName; // window caption or file name
    i16 IsTest = 0;
    i16 TestNo = 0;
    std::string TestName;
    i16 DistrNo = 0;
    std::string DistrName;
    std::string ParListName;
    i16 NoOfSamples = 0;
    i16 NoOfTails = 0;
    i16 LeftTail = 0;
    i16 ParListNo = 0;
    i16 ProcedureNo = 0;
    i16 NoOfInterim = 0;
    i16 NoOfIntPar = 0;
    FixedArray<i16, 0, 4> IntParList;
    FixedArray<i16, 0, 58> IntParValue;
    i16 NoOfCheck = 0;
    FixedArray<i16, 0, 4> CheckList;
    FixedArray<i16, 0, 39> CheckValue;
    i16 UnknownParNo = 0;
    i16 XParNo = 0;
    i16 ZParNo = 0;
    i16 XKind = 0;
    i16 ZKind = 0;
    std::string XminText;
    std::string XmaxText;
    std::string XstepText;
    std::string ZValuesText;
    i16 NoOfPar = 0;
    FixedArray<i16, 0, 12> ParKind;
    FixedArray<std::string, 0, 12> ParText;
    i16 NoOfTitles = 0;
    FixedArray<std::string, 0, 15> OutTitle;
    FixedArray<std::string, 0, 3> OutXAxis;
    FixedArray<std::string, 0, 3> OutYAxis;
    std::string OutZLabel;
    std::string OutFontName;
    std::string OutFontSize;
    i16 OutFontBold = 0;
    i16 OutCurveWidth = 0;
    i16 OutDecimals = 0;
    i16 HasGridData = 0;
    i16 NoOfGrids = 0;
    FixedArray<i16, 0, 7> GridRows;
    FixedArray<i16, 0, 7> GridCols;
    FixedArray<std::string, 0, 7> GridTitle;
    FixedArray<std::string, 0, 7> GridHead;
    FixedArray<i16, 0, 7> GridFlag;
    FixedArray<i16, 0, 7> GridKind;
    std::string GridName;
    FixedArray<FixedGrid<f32, 0, 10, 0, 10>, 1, NumberStores> GridData;
    FixedGrid<std::string, 0, 10, 0, 11> GridTexts;
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
    i16 IsGroupSeq = 0;
    i16 IsMultComp = 0;
    i16 SimDistrNo = 0;
    FixedArray<i16, 1, 2> SimDistrOption;
    FixedArray<f32, 1, 2> SimDistrPar1;
    FixedArray<f32, 1, 2> SimDistrPar2;
    i16 DistrGraphStyle = 0;
    i16 HasDistrGraph = 0;
    i16 GridTestNo = 0;

    friend bool operator==(const AnalysisRecord&, const AnalysisRecord&) = default;
};

// The title and the labels that a table or graph was given when it was last calculated.
struct DefaultTexts {
    std::string Title;
    std::string X;
    std::string Y;
    std::string Z;
};

// The result of an analysis. That of a table or graph run is not part of the file, but belongs to
// its window as long as that is open.
struct AnalysisResult {
    i16 Calculated = False;
    Array1<f32> TableX;
    Array2<f32> TableY;
    Array1<f32> ZValues;
    DesignRanges TableDesigns;
    i16 TableYKind = 0;
    f32 TableYMin = 0;
    f32 TableYMax = 0;
    DefaultTexts FormerDefaults;
    // What the user has made of a statement, and the statement that it was made of.
    std::string OwnStatement;
    std::string OwnStatementOf;
};

// The user's own choices where the analysis forces others (see OwnSamples); they are not part of
// the file.
struct OwnChoices {
    i16 Samples = 0;
    i16 Tails = 0;
};

// What a step of the user was.
enum class StepKind { Calculation, NewTest, NewDistribution, Options, Tables };

// An analysis as it was before a step; once the step is undone, as it was after it.
struct AnalysisStep {
    StepKind Kind = StepKind::Calculation;
    bool IsUndone = false;
    AnalysisRecord Record;
    AnalysisResult Result;
    OwnChoices Own;
};

// What is known of an analysis beside its record.
struct AnalysisStatus : AnalysisResult {
    i32 Opening = 0;     // which of all windows that were ever opened is its own
    i16 Changed = False; // -1: differs from its file
    i16 Closed = False;  // -1: the window has been closed
    std::string Path;    // of its file; empty: it was neither opened from one nor saved
    OwnChoices Own;
    std::optional<AnalysisStep> LastStep;
};

// Records by number; 0 is never a real analysis.
extern Array1<AnalysisRecord> Analysis;
extern Array1<AnalysisStatus> AnalysisState;

// Windows ever opened of each kind since all were closed: the number of the next is one more.
extern FixedArray<i16, 0, 3> FormCount;

// Which of all windows that were ever opened is that of the analysis; 0 if it has none. What
// outlives an analysis knows it by this: its number is given again once all windows are closed.
i32 OpeningOf(i16 analysisNo);

// Kind of the current analysis' window; -1 when none is open.
i16 CurrentWindowKind();

// The interim analyses and the final one of the current analysis; 1 without any.
i16 NoOfAnalyses();

// True if the current window shows a table or graph.
bool IsTableOrGraph();

// Writes the state into the record of the current analysis. Does nothing when none is open, nor
// while options are being chosen: until they are accepted the record keeps what the window held.
void StoreAnalysis();

// Drops the result of a table or graph run: what the window shows is not of this analysis.
void ClearResult();

// Drops the estimates of a simulation: they are not of these values any more.
void ClearEstimates();

// Moves UnknownParNo, then XParNo, then ZParNo downward until each lies within the list and
// differs from the other two; one that finds no place takes the lowest free index. In a list too
// short for three, ZParNo ends one past the list: there is no z parameter.
void FixParNos();

// True if the current list has a parameter for z-values.
bool HasZPar();

// The current analysis differs from its file.
void MarkChanged();

} // namespace quorvanta
