// Curves that are told apart without seeing every colour, on paper without any.
#pragma once

#include "output/surface.h"

#include <span>
#include <vector>

namespace quorvanta {

// The told styles: sixteen colours and five kinds of lines, in turn. The safe ones: seven colours
// that stay apart for those who don't see red or green (M. Okabe and K. Ito, "Color universal
// design: how to make figures and presentations that are friendly to colorblind people", 2008;
// without the yellow, which is hardly seen on white), the same kinds of lines, and a mark for each
// of seven in turn. Two of 35 curves differ in the mark or in the line even where all of them are
// grey.
enum class CurveStyles { Colours, Safe };

// As the user last chose in this run; every picture of curves is drawn so.
extern CurveStyles ChosenCurveStyles;

// The number of a colour for curve j, from 1, of the safe styles.
i16 SafeColour(int j);

// Draws the mark of curve j, around a point, with the pen in use.
void DrawCurveMark(Surface& surface, int j, Point at);

// Where the marks of curve j stand on a line of its points, inches: at points, none closer to the
// one before than a mark needs to be seen alone. The curves begin at different points.
std::vector<Point> CurveMarks(std::span<const Point> line, int j);

} // namespace quorvanta
