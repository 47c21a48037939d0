#include "ranksurv/testkolsmitwo.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simdistr.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 TestOfRuns = 113;
constexpr f32 StartShift = 0.3F; // of normal distributions, where none was chosen

SampleValues sizes;
DistrRow null;
DistrRow truth;

bool HasEmptyGroup(i16 n1, i16 n2) {
    return n1 == 0 || n2 == 0;
}

} // namespace

void TwoDistributionsTest::SetupTest() {
    FixSamples(TwoSamples);
    if (TestNo == TestOfRuns)
        OfferTails({OneSided});
    else
        OfferTails({OneSided, TwoSided});
    OfferForms(SizeKinds);
}

void TwoDistributionsTest::SetParList() {
    StartTestList();
    sizes = AddSizes();
}

bool TwoDistributionsTest::CheckPar() {
    return sizes.Check();
}

bool TwoDistributionsTest::IsTablePar(i16 parNo) {
    return parNo == PowerParNo;
}

std::optional<DistrList> TwoDistributionsTest::TableDistr(i16 /*parNo*/) {
    return DistrList::ShiftModels;
}

f32 TwoDistributionsTest::CalcTablePar(i16 parNo) {
    SetNullFromShift();
    return Single(ParValue(parNo));
}

void TwoDistributionsTest::GetSimPar() {
    truth = {SimNormal, StartShift, 1};
    if (NoOfDistr() > 0 && IsOffered(DistrList::ShiftModels, Distr(NoOfDistr()).Code))
        truth = Distr(NoOfDistr());
    null = truth;
    null.Par1 = 0;
}

void TwoDistributionsTest::SimSample(i16 n1, i16 n2, bool isH1) {
    SimDistr(n1, 1, null);
    SimDistr(n2, 2, isH1 ? truth : null);
}

// N. V. Smirnov, Bulletin de l'Universite de Moscou 2, 1939, 3-14. Larger observations of sample 2
// keep its distribution function below that of sample 1. Ties count as a whole.
f32 TESTKOLSMITWO::SimTest(i16 n1, i16 n2) {
    if (HasEmptyGroup(n1, n2))
        return 1;
    static Array1<i32> order; // keeps its memory between replicates
    OrderOfValues(order);
    f64 below = 0; // F1 - F2
    f64 above = 0;
    i32 seen1 = 0;
    i32 seen2 = 0;
    const int n = order.HighBound();
    for (int i = 1; i <= n; ++i) {
        const i32 position = order(i);
        ++(SimStudy.Group(position) == 2.0F ? seen2 : seen1);
        if (i < n && SimStudy.Value(order(i + 1)) == SimStudy.Value(position))
            continue;
        const f64 difference = static_cast<f64>(seen1) / n1 - static_cast<f64>(seen2) / n2;
        below = MaxOf(below, difference);
        above = MaxOf(above, -difference);
    }
    if (NoOfTails == TwoSided)
        return Single(1 - f64{KolSmiTwoCdf(n1, n2, Single(MaxOf(below, above)), 0)});
    const f64 distance = LeftTail == True ? above : below;
    return Single(1 - f64{KolSmiTwoCdf(n1, n2, Single(distance), 1)});
}

// Few runs speak against one distribution (A. Wald and J. Wolfowitz, Annals of Mathematical
// Statistics 11, 1940, 147-162).
f32 TESTWALDWOLF::SimTest(i16 n1, i16 n2) {
    if (HasEmptyGroup(n1, n2))
        return 1;
    const auto groups = GroupsByRank();
    i32 runs = 1;
    for (std::size_t i = 1; i < groups.size(); ++i)
        runs += groups[i] != groups[i - 1] ? 1 : 0;
    const f64 a{static_cast<f32>(n1)};
    const f64 b{static_cast<f32>(n2)};
    const f64 n = a + b;
    const f64 mean = 2 * a * b / n + 1;
    const f64 variance = 2 * a * b * (2 * a * b - n) / (n * n * (n - 1));
    return NorCdf(Single((static_cast<f64>(runs) - mean) / std::sqrt(variance)));
}

} // namespace quorvanta
