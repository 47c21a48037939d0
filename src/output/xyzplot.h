// Graphs of a table run (the module XYZPLOT).
#pragma once

#include "output/presentation.h"
#include "output/surface.h"

#include <string>
#include <vector>

namespace quorvanta {

// Draws a result, a curve for each z-value, and a legend in the plot where no curve runs or else
// beside it. False after a message if the surface is too small for a plot between its labels. Draws
// nothing while there is no result.
bool PlotGraph(Surface& surface, const Presentation& graph);

// Why there can be no plot on the surface: the text of that message; empty if there can be one.
std::string PlotProblem(Surface& surface, const Presentation& graph);

// The scale of one axis.
struct AxisScale {
    f64 Low = 0;
    f64 High = 1;
    f64 FirstTick = 0;
    f64 Step = 1;
    std::string Format; // of the numbers at the ticks
};

// The limits and ticks of an axis for data within a range: round ones about n steps apart, but the
// typed minimum, maximum and tick where the axis texts (label, minimum, maximum, tick) have
// a number. "Auto", a text that is no number and typed limits that leave no axis don't count.
AxisScale ScaleAxis(ValueRange data, i16 n, const FixedArray<std::string, 0, 3>& axisTexts);

// Colour, style and width of curve j, from 1. Colours cycle through the table of 16 without 7 and
// 15, light grey and white; the styles cycle through all five. Without a chosen width each curve
// is wider than the one before.
Pen CurvePen(i16 j, i16 curveWidth, bool isPrinter);

// The text in lines that are no wider than width: broken at blanks, within a word only where it is
// wider than a line. Doubled blanks become single.
std::vector<std::string> BreakLines(const Surface& surface, const std::string& text, f64 width);

} // namespace quorvanta
