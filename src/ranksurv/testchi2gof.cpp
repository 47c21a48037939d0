#include "ranksurv/testchi2gof.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/chi2power.h"
#include "tests/lists/hypotheses.h"

#include <cmath>

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

namespace {

Array1<f32> simulatedNull; // (1..k) the proportions
Array1<f32> simulatedTruth;

// Those of the table; without one, equal proportions under H0, and under H1 as many larger as
// smaller ones, which have the non-centrality that was typed. False where it is too large for that.
bool FindProportions() {
    const i16 k = ToI16(ParValue(categories));
    simulatedNull.ReDim(1, k);
    simulatedTruth.ReDim(1, k);
    const Array2<f32>& p = GridData(ProportionsStore);
    if (HasGridData == True && p.HighBound1() == AlternativeRow && p.HighBound2() == k) {
        for (i16 j = 1; j <= k; ++j) {
            simulatedNull(j) = p(NullRow, j);
            simulatedTruth(j) = p(AlternativeRow, j);
        }
        return true;
    }
    const f64 equal = 1.0 / k;
    const i16 pairs = static_cast<i16>(k / 2);
    const f64 distance = std::sqrt(ParValue(nonCentrality) * equal / (2.0 * pairs));
    for (i16 j = 1; j <= k; ++j) {
        const f64 sign = j > 2 * pairs ? 0 : j % 2 == 0 ? 1 : -1;
        simulatedNull(j) = Single(equal);
        simulatedTruth(j) = Single(equal + sign * distance);
    }
    return distance < equal;
}

} // namespace

void TESTCHI2GOF::GetSimPar() {
    if (FindProportions())
        return;
    ShowMessage("Proportion Has No Value.");
    Cancelled = True;
}

// The counts of the categories are kept in Value.
void TESTCHI2GOF::SimSample(i16 n1, i16 /*n2*/, bool isH1) {
    const int k = simulatedNull.HighBound();
    if (SimStudy.Value.HighBound() < k)
        SimStudy.Value.ReDim(1, k);
    RandSample.ReDim(0, k);
    RandMultinomial(n1, isH1 ? simulatedTruth : simulatedNull);
    for (int j = 1; j <= k; ++j)
        SimStudy.Value(j) += RandSample(j);
}

// K. Pearson, Philosophical Magazine 50, 1900, 157-175. A category that H0 does not expect counts
// as one of 1e-5, so that a single observation rejects.
f32 TESTCHI2GOF::SimTest(i16 n1, i16 /*n2*/) {
    if (n1 == 0)
        return 1;
    constexpr f32 unexpected = 1e-5F;
    const int k = simulatedNull.HighBound();
    f32 sum = 0;
    for (int j = 1; j <= k; ++j) {
        const f32 p0 = simulatedNull(j) == 0 ? unexpected : simulatedNull(j);
        const f64 expected = f64{p0} * n1;
        const f64 excess = f64{SimStudy.Value(j)} - expected;
        sum = Single(f64{sum} + excess * excess / expected);
    }
    return Single(1 - f64{Chi2Cdf(sum, static_cast<f32>(k - 1))});
}

} // namespace quorvanta
