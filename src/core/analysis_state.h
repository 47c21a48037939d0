// The state of the current analysis: one flat set of global values that every engine works on.
//
// A window never hands values to an engine and no engine reads another analysis: what is current
// stands here, and the record of each open analysis (core/analysis.h) is a passive copy of it.
#pragma once

#include "core/checked_array.h"
#include "core/form.h"
#include "core/types.h"

#include <string>

namespace quorvanta {

// --- What is analysed -------------------------------------------------------------------------

extern i16 IsTest;              // -1: a hypothesis test; 0: a parameter of a distribution
extern i16 TestNo;              // test number of the catalogue
extern std::string TestName;    // test name from the menu path
extern i16 DistrNo;             // distribution of a parameter analysis
extern std::string DistrName;   // its name
extern std::string ParListName; // the analysis in words: the headline
extern i16 NoOfSamples;         // 1 one sample, 2 two samples, 3 more than two
extern i16 NoOfTails;           // 1 one-sided, 2 two-sided, 3 two one-sided
extern i16 OwnSamples;          // the own choice of the user where the analysis forces another;
extern i16 OwnTails;            // 0: the choice made is the own one
extern i16 LeftTail;            // -1: reject in the left tail
extern i16 ParListNo;           // parameter chosen in the distribution's list
extern i16 ProcedureNo;         // 0 test, 1 point estimate, 2 confidence interval
extern i16 NoOfInterim;         // interim analyses of a group sequential simulation, 0 to 5
extern i16 IsGroupSeq;          // -1: group sequential design
extern i16 IsMultComp;          // -1: multiple comparison analysis
extern i16 AdjustMethod;        // how the error of its family is kept (multcomp/family.h)

// NoOfSamples
inline constexpr i16 OneSample = 1;
inline constexpr i16 TwoSamples = 2;
inline constexpr i16 MoreSamples = 3;
// NoOfTails
inline constexpr i16 OneSided = 1;
inline constexpr i16 TwoSided = 2;
inline constexpr i16 TwoOneSided = 3;
// ProcedureNo
inline constexpr i16 ProcedureTest = 0;
inline constexpr i16 ProcedureEstimate = 1;
inline constexpr i16 ProcedureInterval = 2;
// DistrNo
inline constexpr i16 DistrNormal = 0;
inline constexpr i16 DistrLognormal = 1;
inline constexpr i16 DistrExponential = 2;
inline constexpr i16 DistrBinomial = 4;
inline constexpr i16 DistrHypergeometric = 5;
inline constexpr i16 DistrPoisson = 6;
inline constexpr i16 DistrFinitePopulation = 8;
inline constexpr i16 DistrBivariateNormal = 10;

// --- Its parameters ---------------------------------------------------------------------------

// The first two of every analysis: the level of significance, confidence or error, and the power,
// or the error or width in its place.
inline constexpr i16 LevelParNo = 0;
inline constexpr i16 PowerParNo = 1;

extern i16 NoOfPar;                            // highest parameter index
extern FixedArray<i16, 0, MaxPar> ParKind;     // kind of each parameter
extern FixedArray<f64, 0, MaxPar> ParValue;    // value of each parameter
extern i16 UnknownParNo;                       // the parameter that is solved for
extern i16 XParNo;                             // the parameter on the x-axis
extern i16 ZParNo;                             // the parameter with z-values
extern FixedArray<i16, 0, MaxPar> ParBoxOrder; // order of the boxes of a table or graph

// --- Tables by parameter kind; they outlive analyses ------------------------------------------

extern FixedArray<std::string, 0, MaxKind> ParLabel;
extern FixedArray<std::string, 0, MaxKind> ParText; // the value's text; "-" or blank: no value
extern FixedArray<std::string, 0, MaxKind> ParXminText;
extern FixedArray<std::string, 0, MaxKind> ParXmaxText;
extern FixedArray<std::string, 0, MaxKind> ParXstepText;
extern FixedArray<std::string, 0, MaxKind> ParZValuesText;
extern FixedArray<f64, 0, MaxKind> ParMin;
extern FixedArray<f64, 0, MaxKind> ParMax;

// --- Options ----------------------------------------------------------------------------------

inline constexpr i16 MaxCheckKind = 39;
inline constexpr i16 MaxGroupKind = 58;

extern i16 NoOfCheck;                   // active check boxes
extern FixedArray<i16, 0, 4> CheckList; // their kinds
extern FixedArray<std::string, 0, MaxCheckKind> CheckLabel;
extern FixedArray<i16, 0, MaxCheckKind> CheckValue; // 1 ticked, 0 not
extern i16 NoOfIntPar;                              // active groups of interchangeable parameters
extern FixedArray<i16, 0, 3> IntParList;            // their kinds
extern FixedArray<std::string, 0, MaxGroupKind> IntParCaption;
extern FixedGrid<std::string, 0, 3, 0, MaxGroupKind> IntParOption;
extern FixedArray<i16, 0, MaxGroupKind> IntParValue; // chosen option of each group

// What the current test lets the user choose; the option window draws it.
extern FixedArray<bool, 1, 3> SamplesOffered;           // by NoOfSamples
extern FixedArray<bool, 1, 3> TailsOffered;             // by NoOfTails
extern FixedArray<bool, 0, 4> CheckEnabled;             // by position in CheckList
extern FixedGrid<bool, 0, 3, 0, 3> IntParOptionEnabled; // option, position in IntParList
extern bool LeftTailOffered;
extern bool ChoosingOptions; // the option window is open
extern bool TailsShown;      // false: the analysis has no choice of tails
extern bool SamplesShown;    // false: it has no choice of samples
extern bool InterimShown;    // true: it has a choice of interim analyses

// --- Runs and results -------------------------------------------------------------------------

extern i16 Calculated;  // -1: the current window shows a valid result
extern i16 Calculating; // -1: a run is in progress
extern i16 Cancelled;   // -1: stop the current operation

extern Array1<f32> TableX;  // (1..n)
extern Array2<f32> TableY;  // (1..n, 1..nz)
extern Array1<f32> ZValues; // (1..nz)
extern i16 TableYKind;      // parameter kind of its values
extern f32 TableYMax;
extern f32 TableYMin;
extern f32 GraphYMax;
extern f32 GraphYMin;

// The levels and sizes of the analyses of a design, over all designs of a table or graph: each from
// the lowest to the highest, the first analysis first. Empty for anything else; sizes that there
// are none of are empty as well.
struct DesignRanges {
    std::vector<Range> Reject;
    std::vector<Range> Accept;
    std::vector<Range> Size1;
    std::vector<Range> Size2;
};
extern DesignRanges TableDesigns;

// --- Titles, axes and type of a table or graph ------------------------------------------------

inline constexpr const char* AutoLimit = "Auto";

extern Array1<std::string> OutTitle;           // (0..lines - 1)
extern FixedArray<std::string, 0, 3> OutXAxis; // label, minimum, maximum, tick
extern FixedArray<std::string, 0, 3> OutYAxis;
extern std::string OutZLabel;
extern std::string OutFontName;
extern std::string OutFontSize;
extern i16 OutFontBold;   // 1 bold
extern i16 OutCurveWidth; // of a graph; of a table, the columns of a block
extern i16 OutDecimals;   // -1 automatic

inline constexpr i16 UsualCurveWidth = 4;
inline constexpr i16 AutoDecimals = -1;

// --- Input grids ------------------------------------------------------------------------------

extern i16 HasGridData;
extern i16 NoOfGrids;
extern FixedArray<i16, 0, 7> GridRows;
extern FixedArray<i16, 0, 7> GridCols;
extern FixedArray<std::string, 0, 7> GridTitle;
extern FixedArray<std::string, 0, 7> GridHead;
extern FixedArray<i16, 0, 7> GridFlag;
extern FixedArray<i16, 0, 7> GridKind; // 1 to 10: the store that holds the grid
extern std::string GridName;
inline constexpr i16 NumberStores = 9;                    // the stores 1 to 9
inline constexpr i16 TextStore = 10;                      // the one after them
extern FixedArray<Array2<f32>, 1, NumberStores> GridData; // their cells
extern Array2<std::string> GridTexts;                     // its cells
extern i16 GridTestNo;                                    // the test that the grid data belong to

// Every store with bounds 0..1, 0..1 and in its cell (1,1) the mark of a grid never filled: 99999,
// 1 in the stores 3 and 7, an empty text in the text store.
void ResetGrids();

// --- Simulation -------------------------------------------------------------------------------

extern i16 SimDistrNo; // distribution code
extern f32 SimDistrShape;
extern f32 SimDistrScale;
extern FixedArray<i16, 1, 2> SimDistrOption;
extern FixedArray<f32, 1, 2> SimDistrPar1;
extern FixedArray<f32, 1, 2> SimDistrPar2;
extern i16 DistrGraphStyle;
extern i16 HasDistrGraph;
extern FixedArray<f32, 1, 7> SimAlpha;
extern FixedArray<f32, 1, 7> SimWeight;
extern f64 SimMaxValue;

// How the run of a simulation window stands.
extern i16 SimRunning;  // -1: from its start to its end
extern i16 Paused;      // -1: no replicates are drawn
extern i16 OutputReady; // -1: the current window shows the estimates of a run that has ended

// Texts of the interim parameters and of a simulation window.
extern FixedArray<std::string, 0, 5> InterimSize1Text;
extern FixedArray<std::string, 0, 5> InterimSize2Text;
extern FixedArray<std::string, 0, 5> RejectH0Text;
extern FixedArray<std::string, 0, 5> AcceptH0Text;
extern std::string MaxNoOfSimText;
extern std::string SeedText;
extern FixedArray<std::string, 0, 7> SignEstimateText;
extern FixedArray<std::string, 0, 7> PowerEstimateText;
extern FixedArray<std::string, 0, 7> PrAcceptEstimateText;
extern FixedArray<std::string, 0, 2> SampleSizeEstimateText; // H0, H1, number of simulations

// --- Windows and the rest ---------------------------------------------------------------------

extern i16 AnalysisNo; // the current record; 0: none is open
extern std::string AnalysisFileName;
extern i16 CalcNo, TableNo, GraphNo, MonteNo; // current window of each kind
extern f32 HelpContext;                       // help number of the current analysis
extern i16 CloseMode;                         // why the window is being closed
extern std::string CrLf;                      // line break of messages
extern i16 WorkNo;                            // scratch: a chosen option or a parameter's position
extern i16 CascadeLeft, CascadeTop;           // position of the last window opened
extern FixedArray<bool, 0, 4> GetInfoEnabled; // entries of "Current Analysis"

// Everything above as it stands when the program starts, the catalogues left empty.
void ResetAnalysisState();

} // namespace quorvanta
