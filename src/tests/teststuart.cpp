#include "tests/teststuart.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/simtable.h"
#include "numeric/inverse.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 ProbabilitiesStore = 1;

i16 nonCentrality;
i16 categories;
i16 size;

// By how much the first measurement has the category more often than the second.
f64 MarginDifference(const Array2<f32>& p, i16 category) {
    f64 sum = 0;
    for (int k = 1; k <= p.HighBound1(); ++k)
        sum += f64{p(category, k)} - f64{p(k, category)};
    return sum;
}

// The covariance of two of the differences under H0, for one subject.
f64 Covariance(const Array2<f32>& p, i16 i, i16 j) {
    if (i != j)
        return -(f64{p(i, j)} + f64{p(j, i)});
    f64 sum = 0;
    for (int k = 1; k <= p.HighBound1(); ++k)
        if (k != i)
            sum += f64{p(i, k)} + f64{p(k, i)};
    return sum;
}

Grid ProbabilitiesGrid(i16 lines) {
    return {.Store = ProbabilitiesStore,
            .Rows = lines,
            .Columns = lines,
            .Title = "Probability in Category (X, Y)",
            .RowHeads = "X",
            .ColumnHeads = "Y",
            .Check = AllOf({ProportionCells(), CellsAddToOne()}),
            .AddsUp = true};
}

// --- Its simulation ------------------------------------------------------------------------------

Array1<f32> drawnH0; // the cells of a table, row after row
Array1<f32> drawnH1;
Array2<f64> covariances;
Array1<f64> differences;

int CellOf(int i, int j, int k) {
    return (i - 1) * k + j;
}

// The table of k categories that has this non-centrality for each subject where none was filled:
// two measurements that don't depend on each other and have all categories alike, but for the first
// category, which the first measurement has the more often at the cost of each of the others. The
// cells off the diagonal are as large as the non-centrality needs them. Cells below 0 say that it
// is too large for a table.
Array1<f32> PlainTable(int k, f64 lambda) {
    const f64 even = 1.0 / (static_cast<f64>(k) * k);
    const f64 cell = MaxOf(even, lambda / (2.0 * (k - 1)));
    const f64 shift = std::sqrt(lambda * cell / (2.0 * (k - 1)));
    const f64 diagonal = (1 - cell * k * (k - 1)) / k;
    Array1<f32> table(1, k * k);
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j) {
            const f64 moved = cell + (i == 1 ? shift : j == 1 ? -shift : 0);
            table(CellOf(i, j, k)) = Single(i == j ? diagonal : moved);
        }
    return table;
}

Array1<f32> FilledTable(int k) {
    const Array2<f32>& p = GridData(ProbabilitiesStore);
    Array1<f32> table(1, k * k);
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j)
            table(CellOf(i, j, k)) = p(i, j);
    return table;
}

// The same with the average of each two mirrored cells: margins are equal.
Array1<f32> Symmetric(const Array1<f32>& table, int k) {
    Array1<f32> mean(1, k * k);
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j)
            mean(CellOf(i, j, k)) =
                Single((f64{table(CellOf(i, j, k))} + f64{table(CellOf(j, i, k))}) / 2);
    return mean;
}

// Differences of the margins and their covariances of the table that was drawn.
void ReadCounts(int k) {
    const Array1<f32>& counts = SimStudy.Value;
    covariances.ReDim(1, k, 1, k);
    differences.ReDim(1, k);
    for (int i = 1; i <= k; ++i)
        for (int j = 1; j <= k; ++j) {
            if (i == j)
                continue;
            const f64 there{counts(CellOf(i, j, k))};
            const f64 back{counts(CellOf(j, i, k))};
            differences(i) += there - back;
            covariances(i, i) += there + back;
            covariances(i, j) = -(there + back);
        }
}

// d' V^- d with a generalised inverse, by elimination. Pivots of 0 are of categories that follow
// from those before: the last one always, and any that no subject enters or leaves.
f64 QuadraticForm(int k) {
    constexpr f64 zero = 1e-6; // counts are whole, and there are 10 categories at most
    f64 sum = 0;
    for (int pivot = 1; pivot <= k; ++pivot) {
        const f64 variance = covariances(pivot, pivot);
        if (variance < zero)
            continue;
        sum += differences(pivot) * differences(pivot) / variance;
        for (int i = pivot + 1; i <= k; ++i) {
            const f64 factor = covariances(i, pivot) / variance;
            differences(i) -= factor * differences(pivot);
            for (int j = pivot + 1; j <= k; ++j)
                covariances(i, j) -= factor * covariances(pivot, j);
        }
    }
    return sum;
}

int Categories() {
    return ToI32(ParValue(categories));
}

} // namespace

void TESTSTUART::SetupTest() {
    FixSamples(OneSample);
    OfferTails({TwoSided});
}

void TESTSTUART::SetParList() {
    StartTestList();
    nonCentrality = AddPar(Kind::NonCentrality);
    categories = AddPar(Kind::NoOfCategories);
    size = AddPar(Kind::Size);
}

f64 TESTSTUART::RootFunction() {
    const f64 c{Single(ParValue(categories))};
    const f64 lambda = f64{Single(ParValue(size))} * f64{Single(ParValue(nonCentrality))};
    return Chi2PowerEq(c - 1, lambda);
}

bool TESTSTUART::IsTablePar(i16 parNo) {
    return parNo == nonCentrality;
}

std::vector<Grid> TESTSTUART::TableGrids(i16 /*parNo*/) {
    const auto lines = GridLines(categories);
    if (!lines)
        return {};
    return {ProbabilitiesGrid(*lines)};
}

// d' V^-1 d, of all categories but the last, whose difference follows from the others. None where V
// is singular: a category, or several of them, that no subject enters or leaves has nothing to say,
// and the test would have fewer degrees of freedom.
f32 TESTSTUART::CalcTablePar(i16 /*parNo*/) {
    const Array2<f32>& p = GridData(ProbabilitiesStore);
    const i16 k = static_cast<i16>(p.HighBound1() - 1);
    Array2<f64> v(1, k, 1, k);
    for (i16 i = 1; i <= k; ++i)
        for (i16 j = 1; j <= k; ++j)
            v(i, j) = Covariance(p, i, j);
    if (!MatInverse(v, k))
        return Single(NoValue);
    f64 sum = 0;
    for (i16 i = 1; i <= k; ++i)
        for (i16 j = 1; j <= k; ++j)
            sum += MarginDifference(p, i) * v(i, j) * MarginDifference(p, j);
    return Single(sum);
}

// The table that was filled, or one that has the non-centrality that was entered; under H0 the
// symmetric one with the same discordant pairs.
void TESTSTUART::GetSimPar() {
    const int k = Categories();
    const bool isFilled = HasGridData == True && IsFilled(ProbabilitiesGrid(static_cast<i16>(k)));
    drawnH1 = isFilled ? FilledTable(k) : PlainTable(k, ParValue(nonCentrality));
    if (drawnH1(CellOf(1, 1, k)) < 0) {
        ShowMessage("No Table of So Many Categories Has This Non-centrality.");
        Cancelled = True;
        return;
    }
    drawnH0 = Symmetric(drawnH1, k);
}

void TESTSTUART::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    AddToCells(n1, isH1 ? drawnH1 : drawnH0);
}

f32 TESTSTUART::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 < 1)
        return 1;
    const int k = Categories();
    ReadCounts(k);
    return Single(1 - f64{Chi2Cdf(Single(QuadraticForm(k)), static_cast<f32>(k - 1))});
}

} // namespace quorvanta
