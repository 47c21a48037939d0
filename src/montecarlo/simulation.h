// Monte Carlo simulation: the loop that repeats the current test on freshly drawn studies, first
// with H0 true, then with H1 true, and estimates what it counts. The window that shows it is
// frmMonte, which draws the texts of core/analysis_state.h; the dialog is frmShowIntPar.
//
// A plain test is the case of one analysis, K = NoOfAnalyses() = 1; with interim analyses a study
// goes on until it rejects or accepts H0, or until the last one.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "multcomp/mctable.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvanta {

extern i32 SimNo;           // the current replicate, the divisor of every estimate
extern i32 MaxNoOfSim;      // the run stops when SimNo reaches it
extern std::string SimSeed; // empty: from the clock

// Replicates that rejected H0 at analysis k when H0 or H1 was true (0..K+1, the last one over all),
// and that accepted it (0..K). Of an interval analysis: those that cover the true value
// (CountRejectH0), that are narrow enough (CountRejectH1), and both (CountAcceptH1).
extern Array1<i32> CountRejectH0;
extern Array1<i32> CountRejectH1;
extern Array1<i32> CountAcceptH0;
extern Array1<i32> CountAcceptH1;

// Unlimited: no maximum was entered.
inline constexpr i32 MostSimulations = 99999999;

// Reads the dialog and runs the simulation, if the values allow it; a message says what does not.
void SimStart();

// The whole run, from the reset of the counts to the release of the windows.
void SimRun();

// Of a plain test, fills RejectP and AcceptP from the dialog: nothing, or 0, is the significance
// level and 1. Sets Cancelled, after a message, at a probability outside 0..1.
void SimReadLimits();

// Every estimate anew, as texts.
void SimUpdateDisplay();

// What the average over the studies is one of: "Average  Total Size", of times "Average  Study
// Time", of a design as its window has it.
const char* SimAverageCaption();

// "Lower   Estimate   Upper": each to four decimals in the picture, the lower one at least 0.
std::string SimInterval(f32 estimate, f32 halfWidth, const std::string& picture);

// Replicates between two displays, from the whole seconds that the first 100 took.
i32 SimUpdateInterval(i32 elapsed);

// Pauses the run, or goes on with it.
void SimPause();

// Ends the run at its next turn; what the exit button and a refused close do.
void SimStop();

// Asks whether an ongoing run is to be ended for what the user wants instead; Yes ends it. False if
// there is no run.
bool AskToStopRun();

// The seconds that a run with a maximum has still to go, at its speed so far; -1 where nothing is
// known of that: no run, no maximum, the first replicates.
f64 SimSecondsLeft();

// The estimate of the power so far as it developed: up to 200 points of one run.
struct SimPoint {
    i32 SimNo;
    f32 Power;
    f32 HalfWidth;
};
const std::vector<SimPoint>& SimHistory();

// How often each hypothesis of a multiple comparison was rejected in that run, once it is over: no
// rows for any other analysis.
const McTable& SimRejections();

// The number of the analysis whose run that is; 0 before the first, and when all windows were
// closed since.
i16 SimAnalysis();

} // namespace quorvanta
