// The state behind frmShowIntPar: the levels and sizes of the analyses of a simulation, one row for
// each, the parameters, and how long and from which seed it runs; of a group sequential design that
// is calculated the levels and sizes alone, which follow from it. The window only draws it.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta {

// Its columns.
enum class IntColumn { RejectH0, AcceptH0, Size1, Size2 };
inline constexpr IntColumn IntColumns[] = {IntColumn::RejectH0, IntColumn::AcceptH0,
                                           IntColumn::Size1, IntColumn::Size2};
inline constexpr i16 MaxIntRows = 6;

// True if the current analysis has the window, and its list of parameters.
bool HasIntPar();

// Is there a number of simulations to be entered, and a seed?
bool HasIntRun();

// Its rows, one for each analysis, and what stands before a row: "Interim Analysis 1".
i16 IntRows();
std::string IntRowHead(i16 row);

// False for a column that the analysis has not: an estimate accepts nothing, one sample has no
// second size.
bool HasIntColumn(IntColumn column);
// Its caption, by the kind of the sizes.
std::string IntColumnCaption(IntColumn column);

// What stands in a cell. The sizes of the last row are those of the parameters, and can't be typed.
// Of a design only levels of the user's own can.
std::string IntCellText(IntColumn column, i16 row);
bool IsIntCellOpen(IntColumn column, i16 row);
// What counts where nothing is typed.
std::string IntCellDefault(IntColumn column, i16 row);

// The text as it was accepted.
std::string TypedIntCell(IntColumn column, i16 row, const std::string& text);
std::string TypedMaxNoOfSim(const std::string& text);
std::string TypedSeed(const std::string& text);

// The parameter in the box of that number, from 0; -1 if there is none. The power, which is what a
// simulation estimates, has one only where the distributions are chosen in it. Those of a design
// have their own window.
i16 IntPar(i16 box);

// Runs the simulation, or calculates the design; one that is calculated is shown again.
void StartIntPar();

} // namespace quorvanta
