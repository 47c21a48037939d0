// Reference cases: an analysis, its values, one unknown, and the exact solution of other origin.
//
// A row of a validation file of checks/data/validation reads, column by column:
//   Analysis   "menu 0", or "distribution 0 1 2": number, parameter list index, procedure; of a
//              test that is about distributions "menu 263 1 0 1 1 0.5 2": code and two parameters
//              of the one under H0, and of that under H1; of multiple comparisons "menu 730 method
//              1"
//   Samples, Tails, Left (-1 or 0)
//   Checks     kinds of the ticked check boxes, comma-separated
//   Groups     group=option, comma-separated
//   Values     kind=text, semicolon-separated; a number of accrual intervals with their table,
//              "1:0.3 2:1": ends of the intervals, each with the proportion accrued by then; one of
//              intervals of hazards with theirs, "0:0.3:0.5:0:0 2:0.4:0.5:0:0": their rows
//   Unknown    kind of the unknown
//   Exact      its exact value
//   Tolerance  what our approximations may differ, absolutely
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <array>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::validation {

// An analysis of the catalogue with one choice of all that it offers.
struct AnalysisChoice {
    i16 MenuNo = -1; // -1: a parameter analysis
    i16 DistrNo = 0;
    i16 ParListNo = 0;
    i16 ProcedureNo = 0;
    i16 NoOfSamples = 0;
    i16 NoOfTails = 0;
    bool Left = false;
    std::vector<i16> Checks;
    std::map<i16, i16> Groups;
    i16 Method = 0;                        // of adjustment, of multiple comparisons
    std::vector<DistrRow> Distributions{}; // H0, H1: none, the start values
};

// Opens the analysis and leaves its options to choose from. A window must be open.
void Open(const AnalysisChoice& choice);

// Opens the analysis, makes the choice and accepts it. Throws std::runtime_error if the analysis
// has no such check box or group.
void SetUp(const AnalysisChoice& choice);

// A table of accrual: the end of each interval, and the proportion of the patients accrued by then.
using AccrualTable = std::vector<std::pair<f64, f64>>;

// Fills the table of the current analysis, as its grid does. SetUp fills one of five intervals that
// end at 2, for analyses that ask for it.
void FillAccrual(const AccrualTable& table);

// A table of hazards: start of the interval, hazards of both groups, loss rates of both.
using IntervalTable = std::vector<std::array<f64, 5>>;

// Fills the table of the current analysis. SetUp fills one of five intervals.
void FillIntervals(const IntervalTable& table);

// A choice with values for its parameters.
struct CaseWithValues : AnalysisChoice {
    std::string Analysis;
    std::map<i16, std::string> Values;
};

// Opens the analysis, makes the choice and types the values.
void SetUpWithValues(const CaseWithValues& values);

struct ValidationCase : CaseWithValues {
    i16 UnknownKind = 0;
    f64 Exact = 0;
    f64 Tolerance = 0;
};

// The cases of a validation file; lines that begin with "#" are comments. Throws
// std::runtime_error if the file is missing or a row can't be read.
std::vector<ValidationCase> ReadValidation(std::istream& file);
std::vector<ValidationCase> ReadValidation(const std::string& path);

// A case of a simulation: in the place of the last three columns "Size" and "Power", the shares of
// studies that reject under H0 and H1, and "Error", the standard error of both.
struct SimulationCase : CaseWithValues {
    f64 Size = 0;
    f64 Power = 0;
    f64 Error = 0;
};

std::vector<SimulationCase> ReadSimulationCases(const std::string& path);

// Sets up the analysis of the case in the state, solves it, and returns the unrounded solution;
// 99999 if there is none. An analysis must be open. Throws std::runtime_error if the analysis has
// no such option or parameter.
f64 SolveCase(const ValidationCase& validation);

// The analysis in words with its values, of the analysis in the state.
std::string Describe(const CaseWithValues& values);
// Its values alone: "Power 0.8; Standard Deviation 1".
std::string ValuesOf(const CaseWithValues& values);

} // namespace quorvanta::validation
