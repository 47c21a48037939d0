#include "tests/teststuart.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/inverse.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"

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
    return {{.Store = ProbabilitiesStore,
             .Rows = *lines,
             .Columns = *lines,
             .Title = "Probability in Category (X, Y)",
             .RowHeads = "X",
             .ColumnHeads = "Y",
             .Check = AllOf({ProportionCells(), CellsAddToOne()})}};
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

} // namespace quorvanta
