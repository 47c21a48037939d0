// The input grids of the analyses of variance: the means of the effect that is tested, by level or
// by cell, and for a contrast its coefficients and the standard deviations beside them.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"
#include "tests/anovaeq.h"

#include <string>
#include <vector>

namespace quorvanta {

// The store of the means of one factor, in its only row.
inline constexpr i16 MeansStore = 1;

// What of a matrix of means is tested: the main effect of the factor of its rows, that of its
// columns, or their interaction.
enum class MatrixEffect { Rows, Columns, Interaction };

// The means behind the tested effect.
struct TestedMeans {
    i16 Levels = 0;   // position of the number of levels that are compared, or of the rows
    std::string Head; // of one of them
    i16 Columns = 0;  // where all cells have a mean, position of the number of columns; else 0
    MatrixEffect Part = MatrixEffect::Rows;
    f64 OthersWeight = 1; // of each mean but the first, beside the first one's
};

// The grids of means; none, after a message, where the number of levels is not known.
std::vector<Grid> MeansGrids(const TestedMeans& tested);

// The effect of these means, from the filled grids. Main effects: the standard deviation of the
// means, weighted; the largest difference of any two; the smallest one. The interaction: the root
// of the sum of squares of what the two main effects leave of the cells, over their number; for the
// smallest difference over one cell less. So lambda is that of the means themselves for the first
// type and for all of the interaction, and not larger for the others of a balanced design.
f64 EffectFromGrids(const TestedMeans& tested, AnovaEffectType type);

// The same for a contrast, of levels or of all cells: its coefficients have to add up to 0, and
// those of an interaction in each row and column.
std::vector<Grid> ContrastGrids(const TestedMeans& tested);

// The contrast of the means, and its standard deviation in single observations, one at each mean.
// NoValue if all coefficients are 0.
f64 ContrastFromGrids(const TestedMeans& tested);
f64 ContrastSdFromGrids(const TestedMeans& tested);

} // namespace quorvanta
