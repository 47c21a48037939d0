// The road from a request for a value to a number. It owns no statistics: it writes trial values
// into the place of the unknown and finds the zero of the test's equation.
#pragma once

#include "core/types.h"

#include <optional>
#include <string>

namespace quorvanta {

// Steps along x that a table or graph may have.
inline constexpr i16 MaxSteps = 100;

// Forgets what the driver remembers from one calculation to the next.
void StartDriver();

// Stores x in ParValue(UnknownParNo) and returns the equation's residual: the only link between
// the root finder and the tests. A floating-point fault is a RunTimeError.
f64 TryValue(f64 x);

// The solved value of the unknown for the present ParValue, or NoValue.
f64 SolveUnknown();

// A text of the value boxes of the current analysis has changed. Returns the text that the box
// has to show: the first character that no number contains is told and taken out.
std::string TypedParText(i16 parNo, const std::string& text);

// The same rule for a box that holds no parameter value (axis limits, z-values).
std::string CheckTyped(const std::string& text);

// Asks for the input grid of the parameter and puts the value that derives from it into its text;
// nothing for a parameter without a grid, or when the user cancels.
void GetFromTable(i16 parNo);

// Makes parameter i the unknown and solves for it; nothing if its value is already calculated.
void SolveFor(i16 parNo);

// Solves for UnknownParNo from ParText; the result, or "-", goes into ParText of its kind.
void CalcUnknown();

// Calculates TableX, TableY and ZValues from ParText, ParXminText, ParXmaxText, ParXstepText and
// ParZValuesText. Cancelled is -1 afterwards if there is no result; the former one is then still
// in place, since the window goes on showing it.
void CalcRun();

// The texts about the axes of a table or graph.
enum class AxisText { Xmin, Xmax, Xstep, ZValues };

// Where to mend what the last CalcRun was refused for: the text of an axis, or else the value of
// a fixed parameter (-1: none). Empty after a run that began, and after a message that is about no
// single text.
struct RunRefusal {
    std::optional<AxisText> Axis;
    i16 ParNo = -1;
};
const RunRefusal& LastRefusal();

// Tells that there is no solution. Every other time, for a one-sided test, with a hint at the
// direction: the second press of the same button is not nagged. Returns -1.
i16 ShowCantCalculate();

// True if the text stands for a value: neither blank nor "-".
bool HasValue(const std::string& text);

// True if every parameter but the unknown has a value.
bool AllValuesPresent();

// The parameter's value is derived from an input grid: its box is blue.
bool IsBluePar(i16 parNo);

// Kinds that are always derived from a grid while grid data exist.
bool IsGridKind(i16 kind);

} // namespace quorvanta
