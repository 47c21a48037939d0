#include "ranksurv/testchi2gof.h"

#include "core/analysis_state.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

namespace {

constexpr i16 ProportionsStore = 1;
constexpr i16 NullRow = 1;
constexpr i16 AlternativeRow = 2;

i16 nonCentrality;
i16 categories;
i16 size;

} // namespace

void TESTCHI2GOF::SetupTest() {
    FixSamples(OneSample);
    OfferTails({TwoSided});
}

void TESTCHI2GOF::SetParList() {
    StartTestList();
    nonCentrality = AddPar(Kind::NonCentrality);
    categories = AddPar(Kind::NoOfCategories);
    size = AddPar(Kind::Size);
}

// W. C. Guenther, The American Statistician 31, 1977, 83-85; J. Cohen, Statistical Power Analysis
// for the Behavioral Sciences, 2nd edition, 1988, 7.2.
f64 TESTCHI2GOF::RootFunction() {
    const f64 k{Single(ParValue(categories))};
    const f64 lambda = f64{Single(ParValue(nonCentrality))} * f64{Single(ParValue(size))};
    return Chi2PowerEq(k - 1, lambda);
}

bool TESTCHI2GOF::IsTablePar(i16 parNo) {
    return parNo == nonCentrality;
}

std::vector<Grid> TESTCHI2GOF::TableGrids(i16 /*parNo*/) {
    const auto columns = GridLines(categories);
    if (!columns)
        return {};
    return {{.Store = ProportionsStore,
             .Rows = AlternativeRow,
             .Columns = *columns,
             .Title = "Proportion",
             .RowHeads = "H0: ,H1: ",
             .ColumnHeads = "Category No",
             .Check =
                 WithRowCaptions({"H0:", "H1:"}, AllOf({ProbabilityCells(1), RowsOfProportions()})),
             .RowSum = 1}};
}

// The sum over the categories of (p1 - p0)^2/p0.
f32 TESTCHI2GOF::CalcTablePar(i16 /*parNo*/) {
    const Array2<f32>& p = GridData(ProportionsStore);
    f64 sum = 0;
    for (i16 j = 1; j <= p.HighBound2(); ++j) {
        const f64 p0{p(NullRow, j)};
        const f64 d = f64{p(AlternativeRow, j)} - p0;
        sum += d * d / p0;
    }
    return Single(sum);
}

} // namespace quorvanta
