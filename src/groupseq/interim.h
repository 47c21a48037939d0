// The analyses of a design: their fractions of the information, sizes and levels, as the user
// enters them and as the windows show them.
#pragma once

#include "core/analysis_state.h"
#include "core/types.h"

#include <functional>

namespace quorvanta {

// The scale of the current test, GsTestKind: by its number.
i16 GsKindOfTest();

// Of the log-rank test: what its fractions are of. 0 study time, 1 events, 2 time at risk.
extern i16 InterimUnit;
// 1: the fractions follow from the interim times.
extern i16 TimeFromSize;

// Positions of the parameters that are the first and the second size; 0: there is none.
extern i16 Size1Index;
extern i16 Size2Index;

// Do the sizes of the current design stand for study times?
bool HasInterimTimes();

// How a study of survival times gathers information: how much it has at a time, in any unit, if H1
// is true or H0; 0 at 0, and rising.
struct StudyClock {
    f64 StudyTime = 0; // of the final analysis
    std::function<f64(f64 time, bool isH1)> Information;
};
// The clock of the calculation that follows; an empty one: none.
void SetStudyClock(StudyClock clock);

// Total sizes, or times, of the analyses as the texts of the interim window show them, (1..K). If
// H0 is true analyses at fractions of the information have times of their own.
f64 InterimSizeOf(i16 k, bool isH1);

// The boundaries, the unit and the sizes of the analysis in front, whatever was calculated last.
void GsReadDesign();
// The number of groups of a test of more than two samples.
f64 NoOfGroupsOfDesign();

// The number of analyses and their fractions, from the grid of the analysis; equal steps where it
// has none. Fractions of the study time become those of the information by the clock.
void GsReadFractions();

// Narrows the search for a level to those that a boundary above 0 can have: below 0.5 on each side.
void GsSearchLimits(f64& lower, f64& upper);

// Asks for all that a design with interim analyses is made of: the boundaries, levels of the user's
// own, the fractions. False when he cancels, with nothing changed, and with levels of his own: then
// the interim window shows, and nothing is calculated yet.
bool GsSetUpInterim();

// Writes the sizes of all analyses into the texts of the interim window: the fraction of the size,
// a whole number where it counts, else with four decimals; or the times at which the information is
// there, if H1 is true and, beside them, if H0 is.
void WriteInterimSizes();

// Reads the user's levels from these texts into LevelReject and LevelAccept; nothing entered stands
// for the level of the test, and for 1. False after a message.
bool ReadInterimLevels();

// Writes the nominal levels of the design into these texts.
void WriteInterimLevels();

// Widens the ranges to the levels and sizes of the design as these texts would show them.
void GsNoteDesign(DesignRanges& ranges);

} // namespace quorvanta
