// Graphs of a table run (the module XYZPLOT).
#pragma once

#include "core/analysis_state.h"
#include "output/surface.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvanta {

// Draws the current result, a curve for each z-value, with the titles, labels, limits and type of
// the state. False after a message if the surface is too small for a plot between its labels.
bool PlotGraph(Surface& surface);

// Why there can be no plot on the surface: the text of that message; empty if there can be one.
std::string PlotProblem(Surface& surface);

// The scale of one axis.
struct AxisScale {
    f64 Low = 0;
    f64 High = 1;
    f64 FirstTick = 0;
    f64 Step = 1;
    std::string Format; // of the numbers at the ticks
};

// The limits and ticks of an axis whose data lie within low..high: round ones about n steps apart,
// but the typed minimum, maximum and tick where the axis texts (label, minimum, maximum, tick) have
// a number. "Auto", a text that is no number and typed limits that leave no axis don't count.
AxisScale ScaleAxis(f32 low, f32 high, i16 n, const FixedArray<std::string, 0, 3>& axisTexts);

// The limit that a text stands for; nothing for "Auto" and for what is no number.
std::optional<f64> TypedLimit(const std::string& text);

// Colour, style and width of curve j, from 1. Colours cycle through the table of 16 without 7 and
// 15, light grey and white; the styles cycle through all five. Without a chosen width each curve
// is wider than the one before.
Pen CurvePen(i16 j, i16 curveWidth, bool isPrinter);

// The font of the state's settings; a size that is no number within 1..200 is 9 points.
Font OutputFont();

// The text in lines that are no wider than width: broken at blanks, within a word only where it is
// wider than a line. Doubled blanks become single.
std::vector<std::string> BreakLines(const Surface& surface, const std::string& text, f64 width);

} // namespace quorvanta
