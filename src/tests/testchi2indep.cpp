#include "tests/testchi2indep.h"

#include "core/analysis_state.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

namespace {

constexpr i16 ProbabilitiesStore = 1;

i16 nonCentrality;
i16 xCategories;
i16 yCategories;
i16 size;

f64 RowProbability(const Array2<f32>& p, i16 i) {
    f64 sum = 0;
    for (int j = 1; j <= p.HighBound2(); ++j)
        sum += f64{p(i, j)};
    return sum;
}

f64 ColumnProbability(const Array2<f32>& p, i16 j) {
    f64 sum = 0;
    for (int i = 1; i <= p.HighBound1(); ++i)
        sum += f64{p(i, j)};
    return sum;
}

} // namespace

void TESTCHI2INDEP::SetupTest() {
    FixSamples(OneSample);
    OfferTails({TwoSided});
}

void TESTCHI2INDEP::SetParList() {
    StartTestList();
    nonCentrality = AddPar(Kind::NonCentrality);
    xCategories = AddPar(Kind::NoOfXCategories);
    yCategories = AddPar(Kind::NoOfYCategories);
    size = AddPar(Kind::Size);
}

// W. C. Guenther, The American Statistician 31, 1977, 83-85.
f64 TESTCHI2INDEP::RootFunction() {
    const f64 rows{Single(ParValue(xCategories))};
    const f64 columns{Single(ParValue(yCategories))};
    const f64 lambda = f64{Single(ParValue(size))} * f64{Single(ParValue(nonCentrality))};
    return Chi2PowerEq((rows - 1) * (columns - 1), lambda);
}

bool TESTCHI2INDEP::IsTablePar(i16 parNo) {
    return parNo == nonCentrality;
}

std::vector<Grid> TESTCHI2INDEP::TableGrids(i16 /*parNo*/) {
    const auto rows = GridLines(xCategories);
    const auto columns = rows ? GridLines(yCategories) : std::nullopt;
    if (!columns)
        return {};
    return {{.Store = ProbabilitiesStore,
             .Rows = *rows,
             .Columns = *columns,
             .Title = "Probability in Category (X, Y)",
             .RowHeads = "X",
             .ColumnHeads = "Y",
             .Check = AllOf({ProbabilityCells(1), CellsAddToOne()}),
             .AddsUp = true}};
}

// The sum over all cells of (p - e)^2/e, where e is the product of the margins.
f32 TESTCHI2INDEP::CalcTablePar(i16 /*parNo*/) {
    const Array2<f32>& p = GridData(ProbabilitiesStore);
    f64 sum = 0;
    for (i16 i = 1; i <= p.HighBound1(); ++i)
        for (i16 j = 1; j <= p.HighBound2(); ++j) {
            const f64 expected = RowProbability(p, i) * ColumnProbability(p, j);
            const f64 d = f64{p(i, j)} - expected;
            sum += d * d / expected;
        }
    return Single(sum);
}

} // namespace quorvanta
