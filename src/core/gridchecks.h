// The checks of the cells of input grids, among which a test chooses. Each shows its message with
// the exclamation icon and refuses the cell.
#pragma once

#include "core/gridtable.h"

#include <initializer_list>
#include <string>

namespace quorvanta {

// All of the checks, one after the other, up to the first that refuses.
GridCheck AllOf(std::initializer_list<GridCheck> checks);

// 0 to 1.
GridCheck ProportionCells();
// Above 0 and below the limit.
GridCheck ProbabilityCells(f64 limit);
// Above 0: a ratio, and whatever else has to be positive.
GridCheck RatioCells();
GridCheck PositiveCells(const std::string& name);
// 0 or above.
GridCheck NonNegativeCells(const std::string& name);
// 0 or above, and below 1.
GridCheck ShareCells(const std::string& name);
GridCheck VarianceCells(); // of the diagonal
GridCheck DeviationCells();
// The check, of one row, or of one column, alone.
GridCheck OfRow(i16 row, GridCheck check);
GridCheck OfColumn(i16 column, GridCheck check);

// Proportions that add up to 1 in each row.
GridCheck RowsOfProportions();
// Figures that add up to this sum in each row, and in each column.
GridCheck RowsAddTo(f64 sum);
GridCheck ColumnsAddTo(f64 sum);
// Probabilities of all cells together add up to 1.
GridCheck CellsAddToOne();
// Each row increases from left to right.
GridCheck IncreasingRows();
// Whole numbers from 1 to the limit.
GridCheck IntegerCells(i16 limit);

// A matrix of variances and covariances, or one of correlations: no two variables correlate beyond
// 1 and, of the whole matrix, no two do when those before them are held fixed, so that it is
// positive definite.
GridCheck CovarianceMatrix();
GridCheck CorrelationMatrix();

} // namespace quorvanta
