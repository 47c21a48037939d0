// The operations of the test modules, each handed to the module of the current analysis.
#pragma once

#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "core/gridtable.h"
#include "core/types.h"
#include "montecarlo/shiftmodel.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvanta {

// What this version can do with an analysis: solve it by an equation, try it out by a simulation.
bool HasEquation(const AnalysisKey& key);
bool HasSimulation(const AnalysisKey& key);

// One of the two: the analysis can be opened.
bool IsServed(const AnalysisKey& key);
// The one that a window of that kind shows.
bool IsServedIn(const AnalysisKey& key, i16 windowKind);

// One dispatcher for each operation of a test module. An operation that the module leaves out
// does nothing and answers 0 (true for the check, which then has nothing to object to).
void SelSetupTest();
void SelSetParList();
bool SelCheckPar();
void SelSearchLimits(f64& lower, f64& upper);
f64 SelRootFunction();
// Widens these ranges to what the design of the values as they stand has; nothing without a design.
void SelNoteDesign(DesignRanges& ranges);
bool SelIsTablePar(i16 parNo);
std::vector<Grid> SelTableGrids(i16 parNo);
std::optional<DistrList> SelTableDistr(i16 parNo);
// The distributions of the groups where a family alone is chosen and the analysis' own values give
// their locations and scales, H0 first; empty for other analyses.
std::vector<NamedDistr> SelGroupDistr();
f32 SelCalcTablePar(i16 parNo);
void SelRenewTablePars();
void SelSetLabels();

// The simulated studies of montecarlo/simstudy.h. SelSimStatistic goes on to the next analysis of a
// study, or starts one after SimStage = 0: draws its new subjects with IsH1 = 0 under H0, with 1
// under H1, and gives the p-value of all so far.
void SelGetSimPar();
void SelSimStatistic(f32& p, i16 IsH1);
void SelSimInterval();

// The largest sample up to which the power of the current analysis is exact, where it is an
// approximation beyond; 0 where there is no such border.
i16 SelExactUpTo();
// What it is beyond: "normal approximation".
std::string SelApproximation();

// What the current analysis says by its distributions: that under H0 (row 1) or H1 (row 2), in
// words. Empty where the parameters say it.
std::string SelHypothesis(i16 row);

} // namespace quorvanta
