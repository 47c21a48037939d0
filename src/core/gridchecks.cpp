#include "core/gridchecks.h"

#include "core/platform.h"
#include "output/format.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

// What stands before the message of the check that is being asked.
std::string caption;

bool Refuse(const std::string& message) {
    ShowMessage(caption + message);
    return false;
}

// A number as it stands behind a word that has no blank after it.
std::string After(f64 x) {
    return " " + Str(x);
}

std::string CellName(i16 row, i16 column) {
    return "Cell  (" + std::to_string(row) + "," + std::to_string(column) + ")";
}

// A check of the figure in a cell, whatever is left.
template <class IsGood, class Words>
GridCheck CellCheck(IsGood isGood, Words words) {
    return [isGood, words](const GridCells& cells, i16 row, i16 column, Leaving) {
        return isGood(cells.Value(row, column)) || Refuse(words(row, column));
    };
}

// A row is told about where it is left, and in the last look at the grid at its last cell.
bool IsLeft(const GridCells& cells, i16 row, i16 column, Leaving leaving) {
    return leaving == Leaving::Row ? cells.HasRow(row)
                                   : leaving == Leaving::Grid && column == cells.Columns();
}

bool Differs(f64 a, f64 b) {
    return std::abs(a - b) > SumTolerance;
}

bool IsLastCell(const GridCells& cells, i16 row, i16 column) {
    return row == cells.Rows() && column == cells.Columns();
}

bool HasNumber(const GridCells& cells, i16 number) {
    for (i16 i = 1; i <= cells.Rows(); ++i)
        for (i16 j = 1; j <= cells.Columns(); ++j)
            if (cells.Value(i, j) == static_cast<f32>(number))
                return true;
    return false;
}

bool HasAllNumbers(const GridCells& cells, i16 last) {
    for (i16 number = 1; number <= last; ++number)
        if (!HasNumber(cells, number))
            return false;
    return true;
}

// --- Covariance matrices ------------------------------------------------------------------------

constexpr f64 LargestCorrelation = 1;

bool RefuseCorrelation(i16 row, i16 column, f64 correlation) {
    const std::string value = Format(correlation, "#####0.0#####");
    return Refuse("Invalid Covariance Matrix. Correlation Coefficient (" + std::to_string(row) +
                  ", " + std::to_string(column) + " ) Will Be " + value);
}

// The correlation that the entry at (i, j) gives, with the variances that stand on the diagonal;
// 0 as long as they don't.
f64 CorrelationAt(const GridCells& cells, i16 i, i16 j) {
    if (!cells.Has(i, j) || !cells.Has(i, i) || !cells.Has(j, j))
        return 0;
    const f64 variances = f64{cells.Value(i, i)} * f64{cells.Value(j, j)};
    return variances > 0 ? f64{cells.Value(i, j)} / std::sqrt(variances) : 0;
}

bool IsGoodPair(const GridCells& cells, i16 i, i16 j) {
    const f64 correlation = CorrelationAt(cells, i, j);
    return i == j || std::abs(correlation) <= LargestCorrelation ||
           RefuseCorrelation(i, j, correlation);
}

// A variance is part of every pair of its row; in the last look each pair is told of at its own
// cell.
bool HasGoodPairs(const GridCells& cells, i16 row, i16 column, Leaving leaving) {
    if (row != column || leaving == Leaving::Grid)
        return IsGoodPair(cells, row, column);
    for (i16 j = 1; j <= cells.Columns(); ++j)
        if (!IsGoodPair(cells, row, j))
            return false;
    return true;
}

// Symmetric elimination of the variables before the row: what is left of a pair is their covariance
// with those held fixed. A variable of which nothing is left is a sum of those before it. The pairs
// of those before it are known to be good.
bool IsGoodPartialPair(const GridCells& cells, i16 row, i16 column) {
    const i16 k = cells.Rows();
    Array2<f64> left(1, k, 1, k);
    for (i16 i = 1; i <= k; ++i)
        for (i16 j = 1; j <= k; ++j)
            left(i, j) = f64{cells.Value(i, j)};
    for (i16 p = 1; p < row; ++p)
        for (i16 i = static_cast<i16>(p + 1); i <= k; ++i)
            for (i16 j = static_cast<i16>(p + 1); j <= k; ++j)
                left(i, j) -= left(i, p) * left(p, j) / left(p, p);
    constexpr f64 nothing = 1e-6;
    const f64 partial = left(row, column) / std::sqrt(left(row, row) * left(column, column));
    return std::abs(partial) < 1 - nothing || RefuseCorrelation(row, column, partial);
}

bool HasVariance(const GridCells& cells, i16 i) {
    return cells.Has(i, i) && cells.Value(i, i) > 0;
}

// In the last look each pair is told of at its own cell, above the diagonal; a variance that is
// still missing is told of later.
GridCheck MatrixCheck() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        if (!HasGoodPairs(cells, row, column, leaving))
            return false;
        return leaving != Leaving::Grid || row >= column || !HasVariance(cells, column) ||
               IsGoodPartialPair(cells, row, column);
    };
}

} // namespace

GridCheck AllOf(std::initializer_list<GridCheck> checks) {
    return [list = std::vector<GridCheck>(checks)](const GridCells& cells, i16 row, i16 column,
                                                   Leaving leaving) {
        for (const GridCheck& check : list)
            if (!check(cells, row, column, leaving))
                return false;
        return true;
    };
}

GridCheck InRow(i16 only, GridCheck check) {
    return [only, check = std::move(check)](const GridCells& cells, i16 row, i16 column,
                                            Leaving leaving) {
        return row != only || check(cells, row, column, leaving);
    };
}

GridCheck InColumns(i16 first, i16 last, GridCheck check) {
    return [first, last, check = std::move(check)](const GridCells& cells, i16 row, i16 column,
                                                   Leaving leaving) {
        return column < first || column > last || check(cells, row, column, leaving);
    };
}

GridCheck WithRowCaptions(std::vector<std::string> captions, GridCheck check) {
    return [captions = std::move(captions), check = std::move(check)](
               const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        caption = captions.at(static_cast<std::size_t>(row - 1)) + " ";
        const bool isGood = check(cells, row, column, leaving);
        caption.clear();
        return isGood;
    };
}

GridCheck ProportionCells() {
    return CellCheck([](f32 x) { return x >= 0 && x <= 1; },
                     [](i16 row, i16 column) {
                         return "Proportion in " + CellName(row, column) +
                                "  Must Be >= 0 and <= 1.";
                     });
}

GridCheck ProbabilityCells(f64 limit) {
    return CellCheck([limit](f32 x) { return x > 0 && f64{x} < limit; },
                     [limit](i16 row, i16 column) {
                         return "Probability in " + CellName(row, column) + "  Must Be > 0 and <" +
                                After(limit);
                     });
}

GridCheck PositiveCells(const std::string& name) {
    return CellCheck([](f32 x) { return x > 0; },
                     [name](i16 row, i16 column) {
                         return name + " in " + CellName(row, column) + "  Must Be > 0.";
                     });
}

GridCheck NonNegativeCells(const std::string& name) {
    return CellCheck([](f32 x) { return x >= 0; },
                     [name](i16 row, i16 column) {
                         return name + " in " + CellName(row, column) + "  Must Be >= 0.";
                     });
}

GridCheck ShareCells(const std::string& name) {
    return CellCheck([](f32 x) { return x >= 0 && x < 1; },
                     [name](i16 row, i16 column) {
                         return name + " in " + CellName(row, column) + "  Must Be >= 0 and < 1.";
                     });
}

GridCheck RatioCells() {
    return PositiveCells("Ratio");
}

GridCheck DeviationCells() {
    return PositiveCells("Standard Deviation");
}

GridCheck VarianceCells() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving) {
        return row != column || cells.Value(row, column) > 0 ||
               Refuse("Variance in " + CellName(row, column) + "  Must Be > 0.");
    };
}

GridCheck RowsOfProportions() {
    return AllOf(
        {ProportionCells(), [](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
             const f64 sum = cells.RowSum(row);
             const bool isLeft = IsLeft(cells, row, column, leaving);
             if ((isLeft || !cells.HasRow(row)) && sum > 1 + SumTolerance)
                 return Refuse("Sum of Proportions in Row" + After(f64{static_cast<f32>(row)}) +
                               "> 1. Must Equal 1.");
             if (isLeft && Differs(sum, 1))
                 return Refuse("Sum of Proportions in Row" + After(f64{static_cast<f32>(row)}) +
                               " Must Equal 1.");
             return true;
         }});
}

GridCheck RowsAddTo(f64 required) {
    return [required](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        return !IsLeft(cells, row, column, leaving) || !Differs(cells.RowSum(row), required) ||
               Refuse("Sum of Numbers in Row" + After(f64{static_cast<f32>(row)}) +
                      " Must Be =" + After(required));
    };
}

// A column is complete with its last row, and told about when the whole grid is left.
GridCheck ColumnsAddTo(f64 required) {
    return [required](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        if (leaving != Leaving::Grid || row != cells.Rows())
            return true;
        f64 sum = 0;
        for (i16 i = 1; i <= cells.Rows(); ++i)
            sum += f64{cells.Value(i, column)};
        return !Differs(sum, required) ||
               Refuse("Sum of Numbers in Column" + After(f64{static_cast<f32>(column)}) +
                      " Must Be =" + After(required));
    };
}

GridCheck CellsAddToOne() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        if (leaving != Leaving::Grid || !IsLastCell(cells, row, column))
            return true;
        return !Differs(cells.Sum(), 1) || Refuse("Sum of Probabilities Must Equal 1.");
    };
}

GridCheck IncreasingRows() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        if (!IsLeft(cells, row, column, leaving))
            return true;
        for (i16 j = 2; j <= cells.Columns(); ++j)
            if (!(cells.Value(row, j) > cells.Value(row, static_cast<i16>(j - 1))))
                return Refuse("Numbers in Row" + After(f64{static_cast<f32>(row)}) +
                              " Must Be Strictly Increasing.");
        return true;
    };
}

GridCheck IntegerCells(i16 limit) {
    return [limit](const GridCells& cells, i16 row, i16 column, Leaving) {
        const f32 x = cells.Value(row, column);
        const bool isGood = x == std::floor(x) && x >= 1 && x <= static_cast<f32>(limit);
        return isGood || Refuse("Numbers in Row" + After(f64{static_cast<f32>(row)}) +
                                " Must Be Integers between 1 and" + After(limit));
    };
}

GridCheck TreatmentCells(i16 treatments) {
    const auto isNumber = [treatments](f32 x) {
        return x == std::floor(x) && x >= 0 && x <= static_cast<f32>(treatments);
    };
    const auto words = [treatments](i16, i16) {
        return "Improper Treatment Numbers. Must Be 1,...," + After(treatments);
    };
    return AllOf({CellCheck(isNumber, words),
                  [treatments](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
                      const bool isEnd = leaving == Leaving::Grid && IsLastCell(cells, row, column);
                      return !isEnd || HasAllNumbers(cells, treatments) ||
                             Refuse("Treatment Numbers Must Be Consecutive up to" +
                                    After(treatments) + " and  Washout = 0.");
                  }});
}

GridCheck CovarianceMatrix() {
    return AllOf({VarianceCells(), MatrixCheck()});
}

GridCheck CorrelationMatrix() {
    return MatrixCheck();
}

} // namespace quorvanta
