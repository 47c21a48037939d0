#include "tests/parexp.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/precision.h"
#include "tests/lists/samples.h"
#include "tests/precisioneq.h"
#include "tests/scalestatistic.h"

namespace quorvanta {

namespace {

// By ParListNo.
constexpr i16 LocationParList = 0;
constexpr i16 ScaleLocationKnown = 1;

SampleValues sizes;
i16 scale;

// The location is estimated by the smallest observation, which is too large by an error of which
// 2 n error / scale is chi-square with 2 df: never too small, so that the error allowed in both
// directions is the one allowed upward. The interval lies below the estimate; a single limit is the
// lower one.
f64 LocationRoot() {
    const f64 unit = f64{Single(ParValue(scale))} / (2 * f64{sizes.First()});
    const auto distance = [unit](f64 p) { return unit * f64{Chi2Inv(Single(p), 2)}; };
    if (!IsInterval())
        return distance(1 - ParValue(0)) - ParValue(1);
    const f64 level{PrecisionLevel()};
    return WidthEq(-distance(1 - level), distance(level));
}

} // namespace

void PAREXP::SetupTest() {
    if (ParListNo == LocationParList)
        FixSamples(OneSample);
    else
        OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    OfferForms(SizeKinds);
}

void PAREXP::SetParList() {
    if (ParListNo == LocationParList) {
        StartPrecisionList(Precision::Absolute);
        scale = AddPar(Kind::Scale);
        sizes = AddSizes();
        return;
    }
    StartPrecisionList(Precision::Relative);
    sizes = AddSizes();
    AddWidthProbability();
}

bool PAREXP::CheckPar() {
    return sizes.Check();
}

void PAREXP::SearchLimits(f64& lower, f64& upper) {
    sizes.Narrow(lower, upper);
}

// 2 n estimate / scale is chi-square with 2 n df, with 2 (n - 1) where the location is estimated
// (B. Epstein and M. Sobel, Annals of Mathematical Statistics 25, 1954, 373-381).
f64 PAREXP::RootFunction() {
    if (ParListNo == LocationParList)
        return LocationRoot();
    return ScalePrecisionEq(StatisticOf(sizes, 2, ParListNo == ScaleLocationKnown), 1, 1);
}

} // namespace quorvanta
