// Input grids (the module GridTable): the tables of figures that a parameter's value is derived
// from, as a test asks for them and as the user fills them. A window that shows one only draws what
// stands here and reports what is typed.
//
// A test has three operations for it, each about one parameter: IsTablePar says whether it derives
// from grids, TableGrids which grids these are (none, after a message, where that can't be known
// now), and CalcTablePar derives the value from the stores once they are filled; NoValue if none
// follows from them. A value that derives from a distribution instead has TableDistr in the place
// of TableGrids: the list to choose it from (montecarlo/shiftmodel.h). Where a derived value
// follows other parameters, RenewTablePars writes it anew after a solution.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvanta {

inline constexpr i16 MaxGrids = 7;      // of an analysis
inline constexpr i16 MaxGridLines = 10; // rows, and columns, of a grid

// How near to what they must be the figures of a row add up: three thirds with five decimals do.
inline constexpr f64 SumTolerance = 2e-5;

// The cells of a grid while they are filled.
class GridCells {
  public:
    explicit GridCells(const Array2<std::string>& texts) : texts_(texts) {}

    i16 Rows() const { return static_cast<i16>(texts_.HighBound1()); }
    i16 Columns() const { return static_cast<i16>(texts_.HighBound2()); }
    // Is the cell filled?
    bool Has(i16 row, i16 column) const;
    // Its number, as the store will hold it; 0 for a cell that is not filled, the largest one for a
    // number that is too large for the store.
    f32 Value(i16 row, i16 column) const;
    // Are all cells of the row filled, and what do those that are add up to?
    bool HasRow(i16 row) const;
    f64 RowSum(i16 row) const;
    // And all cells that are filled?
    f64 Sum() const;

  private:
    const Array2<std::string>& texts_;
};

// What the user leaves when a check is asked: a cell, with it its row, or the whole grid; nothing
// where a text only comes in, and no check is asked. What can
// only be told of a row, or of the grid, is not told before it is left, so that every cell of it
// stays within reach.
enum class Leaving { Nothing, Cell, Row, Grid };

// Is what stands in the cell acceptable? Shows its message and answers false if not. It is asked
// for cells that are filled only. Those to choose from: core/gridchecks.h.
using GridCheck = std::function<bool(const GridCells& cells, i16 row, i16 column, Leaving leaving)>;

// One input grid, as a test asks for it.
//
// Heads are words, set apart by commas: one for each line, or a single one that is numbered where
// there are several lines ("Group" heads "Group 1", "Group 2").
struct Grid {
    i16 Store = 1; // 1 to 9 hold numbers, 10 texts; store 2 has one column
    i16 Rows = 0;  // 1 to 10
    i16 Columns = 0;
    std::string Title{}; // the line above the cells
    std::string RowHeads{};
    std::string ColumnHeads{};
    GridCheck Check = nullptr;   // none: any number will do
    bool Symmetric = false;      // a cell and its mirror image are the same
    std::string Diagonal = "";   // of a symmetric grid: what it holds, if it is not to be entered
    std::optional<f64> RowSum{}; // what a row has to add up to: its sum is shown beside it
    i16 RowOfSum = 0;            // the only row that has to; 0: each
    bool AddsUp = false;         // all cells together have to: their sum is shown below
    std::string Start = "";      // of a cell that was never filled
    // The same for each cell by itself, in the place of Start; and what a cell holds that is not to
    // be entered, empty for all others.
    std::function<std::string(i16 row, i16 column)> StartOf = nullptr;
    std::function<std::string(i16 row, i16 column)> Fixed = nullptr;
    // The grids that follow, where only what was filled in says which; and, where there may be
    // none, whether with these cells there are any.
    std::function<std::vector<Grid>()> Next = nullptr;
    std::function<bool(const GridCells&)> HasNext = nullptr;
};

// --- What a test asks ---------------------------------------------------------------------------

// The number of lines of a grid that a parameter counts: rounded, 2 to 10 or within other limits.
// Nothing where that can't be known, after a message: the parameter has no value, is an axis of a
// table or graph, or is outside the limits.
std::optional<i16> GridLines(i16 parNo, i16 min = 2, i16 max = MaxGridLines);

// Has the parameter one value, within these limits? Answers false after a message, as above.
bool HasGridValue(i16 parNo, f64 min, f64 max);

// Lets the user fill the grids, one after the other, for a parameter of that label. False when he
// cancels: the stores stay as they were. Otherwise they hold what was entered, and the grids belong
// to the current analysis.
bool ShowGrids(const std::vector<Grid>& grids, const std::string& label);

// Was a grid of that store filled, with this number of lines?
bool IsFilled(const Grid& grid);

// The grids count no longer for the current analysis, since a value that derives from them is
// another one now. Their figures stay for the next time.
void DropGrids();

// The shortest decimal number that the 32 bits stand for: 33.3, not 33.299999. Finite numbers only.
f64 DecimalOf(f32 value);

// What was typed into a cell of a filled grid.
f64 GridFigure(i16 store, i16 row, i16 column);

// --- The grid that is being filled --------------------------------------------------------------

extern Array2<std::string> GridText; // its cells: (1..rows, 1..columns)
extern i16 GridNo;                   // its place in the sequence, from 1

const Grid& CurrentGrid();
bool GridIsLast();
std::string GridCaption();   // of the window
std::string GridOkCaption(); // of its button, as the cells stand: "&Next", "C&alculate"

// The head of the line of that number.
std::string GridHeadOf(const std::string& heads, i16 lines, i16 line);

// A cell that can't be entered: the diagonal of a correlation matrix, what is fixed.
bool IsLockedCell(i16 row, i16 column);

// A text that was typed goes into the cell, a comma in it as a decimal point, and into its mirror
// image. False if a check refuses it as the user leaves for there: the text is kept all the same.
bool GridOK(i16 row, i16 column, const std::string& text, Leaving leaving);

// Every cell of the row becomes empty.
void ClearGridRow(i16 row);

// All cells without the heads: lines set apart by line breaks, cells by tabs.
std::string GridAsText();

// "Sum: 0.9" for a row that has to add up to something; empty for any other, and for a sum that no
// store can hold.
std::string RowSumText(i16 row);
// The same of all cells of a grid that adds up.
std::string GridSumText();

// Checks every cell once more, row by row: the first that is refused, after its message. Nothing if
// all are good: the stores hold the figures.
struct GridCell {
    i16 Row = 0;
    i16 Column = 0;
};
std::optional<GridCell> AcceptGrid();

// --- Grids that are filled ----------------------------------------------------------------------

// The grids of the current analysis as they were filled, for a look at them: heads, and the texts
// of the cells.
struct FilledGrid {
    std::string Title;
    std::string RowHeads;
    std::string ColumnHeads;
    Array2<std::string> Cells; // (1..rows, 1..columns)
};
std::vector<FilledGrid> FilledGrids();

} // namespace quorvanta
