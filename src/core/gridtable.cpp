#include "core/gridtable.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <sstream>

namespace quorvanta {

Array2<std::string> GridText;
i16 GridNo;

namespace {

// The grids that are being filled, and for what.
std::vector<Grid> sequence;
std::string asked;

// What a cancel brings back.
struct GridState {
    i16 HasData = HasGridData;
    i16 Count = NoOfGrids;
    FixedArray<i16, 0, 7> Rows = GridRows;
    FixedArray<i16, 0, 7> Cols = GridCols;
    FixedArray<std::string, 0, 7> Title = GridTitle;
    FixedArray<std::string, 0, 7> Head = GridHead;
    FixedArray<i16, 0, 7> Flag = GridFlag;
    FixedArray<i16, 0, 7> Kind = GridKind;
    FixedArray<Array2<f32>, 1, NumberStores> Data = GridData;
    Array2<std::string> Texts = GridTexts;

    void BringBack() const {
        HasGridData = HasData;
        NoOfGrids = Count;
        GridRows = Rows;
        GridCols = Cols;
        GridTitle = Title;
        GridHead = Head;
        GridFlag = Flag;
        GridKind = Kind;
        GridData = Data;
        GridTexts = Texts;
    }
};

// The shortest text that is read as the same 32-bit number, without an exponent: the cells take
// none.
std::string CellText(f32 value) {
    std::array<char, 64> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return {text.data(), end.ptr};
}

std::string SumText(f64 sum) {
    if (std::abs(sum) >= f64{std::numeric_limits<f32>::max()})
        return "";
    return "Sum: " + CellText(static_cast<f32>(sum));
}

bool HoldsNumber(const std::string& text) {
    return text.find_first_of("0123456789") != std::string::npos;
}

bool IsTooLarge(const std::string& text) {
    return !IsReadable(text) || std::abs(ReadNumber(text)) > f64{std::numeric_limits<f32>::max()};
}

std::string WithPoints(std::string text) {
    std::ranges::replace(text, ',', '.');
    return text;
}

// --- Stores -------------------------------------------------------------------------------------

template <class Cell>
bool Covers(const Array2<Cell>& store, i16 row, i16 column) {
    return row <= store.HighBound1() && column <= store.HighBound2();
}

// A store with bounds 0..1, 0..1 was never filled where its only cell holds the mark of that.
bool WasFilled(const Array2<std::string>& store) {
    return store.HighBound1() > 1 || store.HighBound2() > 1;
}

bool WasFilled(const Array2<f32>& store) {
    if (store.HighBound1() == 1 && store.HighBound2() == 1)
        return f64{store(1, 1)} != NoValue && store(1, 1) != 1;
    return store.HighBound1() > 1 || store.HighBound2() > 1;
}

std::string StoredText(i16 store, i16 row, i16 column, const std::string& otherwise) {
    if (store == TextStore)
        return WasFilled(GridTexts) && Covers(GridTexts, row, column) ? GridTexts(row, column)
                                                                      : otherwise;
    const Array2<f32>& cells = GridData(store);
    return WasFilled(cells) && Covers(cells, row, column) ? CellText(cells(row, column))
                                                          : otherwise;
}

// What a cell holds that is not to be entered.
std::string FixedText(const Grid& grid, i16 row, i16 column) {
    if (row == column && !grid.Diagonal.empty())
        return grid.Diagonal;
    return grid.Fixed ? grid.Fixed(row, column) : "";
}

void FillFromStore(const Grid& grid) {
    GridText.ReDim(1, grid.Rows, 1, grid.Columns);
    for (i16 row = 1; row <= grid.Rows; ++row)
        for (i16 column = 1; column <= grid.Columns; ++column) {
            const std::string start = grid.StartOf ? grid.StartOf(row, column) : grid.Start;
            const std::string fixed = FixedText(grid, row, column);
            GridText(row, column) =
                fixed.empty() ? StoredText(grid.Store, row, column, start) : fixed;
        }
}

void WriteToStore(const Grid& grid) {
    if (grid.Store == TextStore)
        GridTexts.ReDim(0, grid.Rows, 0, grid.Columns);
    else
        GridData(grid.Store).ReDim(0, grid.Rows, 0, grid.Columns);
    const GridCells cells(GridText);
    for (i16 row = 1; row <= grid.Rows; ++row) {
        for (i16 column = 1; column <= grid.Columns; ++column) {
            if (grid.Store == TextStore)
                GridTexts(row, column) = GridText(row, column);
            else
                GridData(grid.Store)(row, column) = cells.Value(row, column);
        }
    }
}

// The grid's place among those of the analysis: that of its store, or a new one.
i16 PlaceOf(i16 store) {
    for (i16 n = 1; n <= NoOfGrids; ++n)
        if (GridKind(n) == store)
            return n;
    return ++NoOfGrids;
}

void EnterGrid(const Grid& grid) {
    if (HasGridData == False)
        NoOfGrids = 0;
    HasGridData = True;
    const i16 n = PlaceOf(grid.Store);
    GridRows(n) = grid.Rows;
    GridCols(n) = grid.Columns;
    GridTitle(n) = grid.Title;
    GridHead(n) = grid.RowHeads + ";" + grid.ColumnHeads;
    GridFlag(n) = grid.Symmetric ? i16{1} : i16{0};
    GridKind(n) = grid.Store;
}

// --- Checks -------------------------------------------------------------------------------------

bool PassesCheck(i16 row, i16 column, Leaving leaving) {
    const GridCells cells(GridText);
    if (!cells.Has(row, column))
        return true;
    if (IsTooLarge(GridText(row, column))) {
        ShowMessage("Number in Cell  (" + std::to_string(row) + "," + std::to_string(column) +
                    ")  Is Too Large.");
        return false;
    }
    const GridCheck& check = CurrentGrid().Check;
    return !check || check(cells, row, column, leaving);
}

bool IsComplete(i16 row, i16 column) {
    if (CurrentGrid().Store == TextStore || GridCells(GridText).Has(row, column))
        return true;
    ThePlatform().MsgBox("A Value Is Missing.", Buttons::Ok, Icon::Exclamation, "Can't Calculate.");
    return false;
}

std::vector<std::string> WordsOf(const std::string& heads) {
    std::vector<std::string> words;
    std::istringstream list(heads);
    for (std::string word; std::getline(list, word, ',');)
        words.push_back(word);
    return words;
}

} // namespace

// --- GridCells ----------------------------------------------------------------------------------

bool GridCells::Has(i16 row, i16 column) const {
    return HoldsNumber(texts_(row, column));
}

f32 GridCells::Value(i16 row, i16 column) const {
    if (!Has(row, column))
        return 0;
    const std::string& text = texts_(row, column);
    return IsTooLarge(text) ? std::numeric_limits<f32>::max() : static_cast<f32>(ReadNumber(text));
}

bool GridCells::HasRow(i16 row) const {
    for (i16 column = 1; column <= Columns(); ++column)
        if (!Has(row, column))
            return false;
    return true;
}

f64 GridCells::RowSum(i16 row) const {
    f64 sum = 0;
    for (i16 column = 1; column <= Columns(); ++column)
        sum += f64{Value(row, column)};
    return sum;
}

f64 GridCells::Sum() const {
    f64 sum = 0;
    for (i16 row = 1; row <= Rows(); ++row)
        sum += RowSum(row);
    return sum;
}

// --- What a test asks ---------------------------------------------------------------------------

bool HasGridValue(i16 parNo, f64 min, f64 max) {
    if (IsTableOrGraph() && (parNo == UnknownParNo || parNo == XParNo || parNo == ZParNo)) {
        ShowMessage("Can't Be Calculated When " + StripAmpersand(ParLabel(ParKind(parNo))) +
                    " Is the X-, Y-, or Z-axis.");
        return false;
    }
    return CheckRange(parNo, min, max);
}

std::optional<i16> GridLines(i16 parNo, i16 min, i16 max) {
    if (!HasGridValue(parNo, min, max))
        return std::nullopt;
    return ToI16(ParValue(parNo));
}

bool ShowGrids(const std::vector<Grid>& grids, const std::string& label) {
    const GridState former;
    sequence = grids;
    asked = label;
    for (GridNo = 1; GridNo <= static_cast<i16>(sequence.size()); ++GridNo) {
        FillFromStore(CurrentGrid());
        if (!ThePlatform().AskGrid()) {
            former.BringBack();
            return false;
        }
        EnterGrid(CurrentGrid());
        if (!CurrentGrid().Next)
            continue;
        const std::vector<Grid> next = CurrentGrid().Next();
        sequence.insert(sequence.end(), next.begin(), next.end());
    }
    GridName = TestName;
    GridTestNo = TestNo;
    return true;
}

bool IsFilled(const Grid& grid) {
    const bool fits = grid.Store == TextStore
                          ? GridTexts.HighBound1() == grid.Rows &&
                                GridTexts.HighBound2() == grid.Columns && WasFilled(GridTexts)
                          : GridData(grid.Store).HighBound1() == grid.Rows &&
                                GridData(grid.Store).HighBound2() == grid.Columns &&
                                WasFilled(GridData(grid.Store));
    return fits && GridTestNo == TestNo;
}

void DropGrids() {
    HasGridData = False;
    ThePlatform().Hide(FloatingWindow::Grid);
}

f64 DecimalOf(f32 value) {
    return ReadNumber(CellText(value));
}

f64 GridFigure(i16 store, i16 row, i16 column) {
    return DecimalOf(GridData(store)(row, column));
}

// --- The grid that is being filled --------------------------------------------------------------

const Grid& CurrentGrid() {
    return sequence.at(static_cast<std::size_t>(GridNo - 1));
}

bool GridIsLast() {
    if (GridNo < static_cast<i16>(sequence.size()))
        return false;
    const Grid& grid = CurrentGrid();
    return !grid.Next || (grid.HasNext && !grid.HasNext(GridCells(GridText)));
}

std::string GridCaption() {
    return asked.empty() ? TestName : "Calculation of " + StripAmpersand(asked);
}

std::string GridOkCaption() {
    return GridIsLast() ? "C&alculate" : "&Next";
}

std::string GridHeadOf(const std::string& heads, i16 lines, i16 line) {
    const std::vector<std::string> words = WordsOf(heads);
    if (words.empty())
        return std::to_string(line);
    if (words.size() == 1 && lines > 1)
        return words.front() + " " + std::to_string(line);
    return line <= static_cast<i16>(words.size()) ? words[static_cast<std::size_t>(line - 1)] : "";
}

bool IsLockedCell(i16 row, i16 column) {
    return !FixedText(CurrentGrid(), row, column).empty();
}

bool GridOK(i16 row, i16 column, const std::string& text, Leaving leaving) {
    if (!IsLockedCell(row, column)) {
        GridText(row, column) = WithPoints(text);
        if (CurrentGrid().Symmetric)
            GridText(column, row) = GridText(row, column);
    }
    return leaving == Leaving::Nothing || PassesCheck(row, column, leaving);
}

void ClearGridRow(i16 row) {
    for (i16 column = 1; column <= CurrentGrid().Columns; ++column) {
        if (IsLockedCell(row, column))
            continue;
        GridText(row, column).clear();
        if (CurrentGrid().Symmetric)
            GridText(column, row).clear();
    }
}

std::string GridAsText() {
    std::string text;
    for (i16 row = 1; row <= CurrentGrid().Rows; ++row)
        for (i16 column = 1; column <= CurrentGrid().Columns; ++column)
            text += GridText(row, column) + (column < CurrentGrid().Columns ? "\t" : "\n");
    return text;
}

std::string RowSumText(i16 row) {
    const Grid& grid = CurrentGrid();
    if (!grid.RowSum || (grid.RowOfSum != 0 && grid.RowOfSum != row))
        return "";
    return SumText(GridCells(GridText).RowSum(row));
}

std::string GridSumText() {
    return CurrentGrid().AddsUp ? SumText(GridCells(GridText).Sum()) : "";
}

std::optional<GridCell> AcceptGrid() {
    for (i16 row = 1; row <= CurrentGrid().Rows; ++row)
        for (i16 column = 1; column <= CurrentGrid().Columns; ++column)
            if (!IsComplete(row, column) || !PassesCheck(row, column, Leaving::Grid))
                return GridCell{row, column};
    WriteToStore(CurrentGrid());
    return std::nullopt;
}

// --- Grids that are filled ----------------------------------------------------------------------

std::vector<FilledGrid> FilledGrids() {
    std::vector<FilledGrid> grids;
    if (HasGridData == False)
        return grids;
    for (i16 n = 1; n <= NoOfGrids; ++n) {
        if (GridKind(n) < 1 || GridKind(n) > TextStore)
            continue;
        const std::string& heads = GridHead(n);
        const auto end = std::min(heads.find(';'), heads.size());
        FilledGrid grid{GridTitle(n), heads.substr(0, end),
                        end < heads.size() ? heads.substr(end + 1) : "",
                        Array2<std::string>(1, GridRows(n), 1, GridCols(n))};
        for (i16 row = 1; row <= GridRows(n); ++row)
            for (i16 column = 1; column <= GridCols(n); ++column)
                grid.Cells(row, column) = StoredText(GridKind(n), row, column, "");
        grids.push_back(std::move(grid));
    }
    return grids;
}

} // namespace quorvanta
