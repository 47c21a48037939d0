// A table or graph: the unknown solved at every point of its axes.
#pragma once

#include "core/types.h"

#include <optional>

namespace quorvanta {

// Steps along x that a table or graph may have.
inline constexpr i16 MaxSteps = 100;

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

} // namespace quorvanta
