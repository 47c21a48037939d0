#include "tests/lists/anovagrids.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/gridchecks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>

namespace quorvanta {

namespace {

// Stores.
constexpr i16 meanMatrixStore = 4;
constexpr i16 contrastStore = 5;
constexpr i16 contrastMeanStore = 6;
constexpr i16 contrastMatrixStore = 8;
constexpr i16 deviationMatrixStore = 9;

// Rows of the means of a contrast.
constexpr i16 meanRow = 1;
constexpr i16 deviationRow = 2;

using Figures = std::vector<f64>;

std::optional<i16> LinesOf(i16 parNo) {
    const i16 kind = ParKind(parNo);
    return GridLines(parNo, ToI16(ParMin(kind)), ToI16(ParMax(kind)));
}

Figures RowOf(i16 store, i16 row) {
    Figures figures;
    for (i16 column = 1; column <= GridData(store).HighBound2(); ++column)
        figures.push_back(GridFigure(store, row, column));
    return figures;
}

// Cell by cell, row after row.
Figures CellsOf(i16 store) {
    Figures figures;
    for (i16 row = 1; row <= GridData(store).HighBound1(); ++row)
        for (const f64 figure : RowOf(store, row))
            figures.push_back(figure);
    return figures;
}

f64 MeanOf(const Figures& figures) {
    return std::accumulate(figures.begin(), figures.end(), 0.0) / static_cast<f64>(figures.size());
}

Figures RowMeans() {
    Figures means;
    for (i16 row = 1; row <= GridData(meanMatrixStore).HighBound1(); ++row)
        means.push_back(MeanOf(RowOf(meanMatrixStore, row)));
    return means;
}

Figures ColumnMeans() {
    const Array2<f32>& cells = GridData(meanMatrixStore);
    Figures means;
    for (i16 column = 1; column <= cells.HighBound2(); ++column) {
        Figures figures;
        for (i16 row = 1; row <= cells.HighBound1(); ++row)
            figures.push_back(GridFigure(meanMatrixStore, row, column));
        means.push_back(MeanOf(figures));
    }
    return means;
}

// What the main effects leave of the cells, row after row.
Figures Residuals() {
    const Figures rows = RowMeans();
    const Figures columns = ColumnMeans();
    const f64 all = MeanOf(rows);
    Figures cells = CellsOf(meanMatrixStore);
    for (std::size_t i = 0; i < cells.size(); ++i)
        cells[i] += all - rows[i / columns.size()] - columns[i % columns.size()];
    return cells;
}

Figures ComparedMeans(const TestedMeans& tested) {
    if (tested.Columns == 0)
        return CellsOf(MeansStore);
    return tested.Part == MatrixEffect::Rows ? RowMeans() : ColumnMeans();
}

f64 WeightedSd(const Figures& means, f64 othersWeight) {
    f64 weights = 1;
    f64 sum = means.front();
    for (std::size_t i = 1; i < means.size(); ++i) {
        weights += othersWeight;
        sum += othersWeight * means[i];
    }
    const auto square = [center = sum / weights](f64 x) { return (x - center) * (x - center); };
    f64 squares = square(means.front());
    for (std::size_t i = 1; i < means.size(); ++i)
        squares += othersWeight * square(means[i]);
    return std::sqrt(squares / weights);
}

f64 SmallestDifference(Figures means) {
    std::ranges::sort(means);
    f64 smallest = std::numeric_limits<f64>::max();
    for (std::size_t i = 1; i < means.size(); ++i)
        smallest = MinOf(smallest, means[i] - means[i - 1]);
    return smallest;
}

f64 InteractionFromGrids(AnovaEffectType type) {
    const Figures residuals = Residuals();
    f64 squares = 0;
    for (const f64 residual : residuals)
        squares += residual * residual;
    const f64 cells = static_cast<f64>(residuals.size());
    return std::sqrt(squares / (type == AnovaEffectType::MinDifference ? cells - 1 : cells));
}

bool IsOfCells(const TestedMeans& tested) {
    return tested.Columns != 0 && tested.Part == MatrixEffect::Interaction;
}

Grid MeanMatrix(i16 rows, i16 columns) {
    return {.Store = meanMatrixStore,
            .Rows = rows,
            .Columns = columns,
            .Title = "Mean Matrix, AxB",
            .RowHeads = "A",
            .ColumnHeads = "B"};
}

// Coefficients, means and standard deviations of a contrast, cell by cell.
struct ContrastFigures {
    Figures Coefficients;
    Figures Means;
    Figures Deviations;
};

ContrastFigures FiguresOf(const TestedMeans& tested) {
    if (IsOfCells(tested))
        return {CellsOf(contrastMatrixStore), CellsOf(meanMatrixStore),
                CellsOf(deviationMatrixStore)};
    return {CellsOf(contrastStore), RowOf(contrastMeanStore, meanRow),
            RowOf(contrastMeanStore, deviationRow)};
}

bool IsNothing(const Figures& coefficients) {
    return std::ranges::all_of(coefficients, [](f64 c) { return c == 0; });
}

} // namespace

std::vector<Grid> MeansGrids(const TestedMeans& tested) {
    const auto levels = LinesOf(tested.Levels);
    if (!levels)
        return {};
    if (tested.Columns != 0) {
        const auto columns = LinesOf(tested.Columns);
        return columns ? std::vector<Grid>{MeanMatrix(*levels, *columns)} : std::vector<Grid>{};
    }
    return {{.Store = MeansStore,
             .Rows = *levels,
             .Columns = 1,
             .Title = "Means",
             .RowHeads = tested.Head,
             .ColumnHeads = " Mean"}};
}

f64 EffectFromGrids(const TestedMeans& tested, AnovaEffectType type) {
    if (IsOfCells(tested))
        return InteractionFromGrids(type);
    const Figures means = ComparedMeans(tested);
    switch (type) {
    case AnovaEffectType::AnyDifference:
        return std::ranges::max(means) - std::ranges::min(means);
    case AnovaEffectType::MinDifference:
        return SmallestDifference(means);
    default:
        return WeightedSd(means, tested.OthersWeight);
    }
}

std::vector<Grid> ContrastGrids(const TestedMeans& tested) {
    const auto levels = LinesOf(tested.Levels);
    if (!levels)
        return {};
    if (!IsOfCells(tested))
        return {{.Store = contrastStore,
                 .Rows = 1,
                 .Columns = *levels,
                 .Title = "Contrast",
                 .RowHeads = "Contrast",
                 .ColumnHeads = tested.Head,
                 .Check = RowsAddTo(0),
                 .RowSum = 0},
                {.Store = contrastMeanStore,
                 .Rows = 2,
                 .Columns = *levels,
                 .Title = "Means and Standard Deviations",
                 .RowHeads = " Mean,Standard Deviation",
                 .ColumnHeads = tested.Head,
                 .Check = InRow(deviationRow, DeviationCells())}};
    const auto columns = LinesOf(tested.Columns);
    if (!columns)
        return {};
    return {{.Store = contrastMatrixStore,
             .Rows = *levels,
             .Columns = *columns,
             .Title = "Contrast",
             .RowHeads = "A",
             .ColumnHeads = "B",
             .Check = AllOf({RowsAddTo(0), ColumnsAddTo(0)}),
             .RowSum = 0},
            MeanMatrix(*levels, *columns),
            {.Store = deviationMatrixStore,
             .Rows = *levels,
             .Columns = *columns,
             .Title = "Standard Deviation",
             .RowHeads = "A",
             .ColumnHeads = "B",
             .Check = DeviationCells()}};
}

// The means count from their average: coefficients that are rounded to a few decimals then cost
// nothing where the means are large.
f64 ContrastFromGrids(const TestedMeans& tested) {
    const ContrastFigures figures = FiguresOf(tested);
    if (IsNothing(figures.Coefficients))
        return NoValue;
    const f64 average = MeanOf(figures.Means);
    f64 contrast = 0;
    for (std::size_t i = 0; i < figures.Means.size(); ++i)
        contrast += figures.Coefficients[i] * (figures.Means[i] - average);
    return contrast;
}

f64 ContrastSdFromGrids(const TestedMeans& tested) {
    const ContrastFigures figures = FiguresOf(tested);
    if (IsNothing(figures.Coefficients))
        return NoValue;
    f64 variance = 0;
    for (std::size_t i = 0; i < figures.Deviations.size(); ++i) {
        const f64 deviation = figures.Coefficients[i] * figures.Deviations[i];
        variance += deviation * deviation;
    }
    return std::sqrt(variance);
}

} // namespace quorvanta
