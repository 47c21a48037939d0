#include "tests/chi2power.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"
#include "tests/teststatistic.h"

namespace quorvanta {

namespace {

// From here on nothing changes any more: a test with so much to show always rejects. A
// non-centrality that no 32-bit number holds is one of these.
constexpr f64 LargestLambda = 1e10;

f64 PowerAt(f32 df, f32 lambda) {
    const f32 critical = Chi2Inv(Single(1 - f64{SignificanceLevel()}), df);
    return 1 - f64{NcChi2Cdf(critical, df, lambda)};
}

} // namespace

f64 Chi2PowerEq(f64 df, f64 lambda) {
    const f32 d = Single(df);
    const f32 l = Single(MinOf(lambda, LargestLambda));
    NotedStatistic = {.Law = StatisticLaw::ChiSquare, .Df1 = f64{d}, .Truth = f64{l}};
    const f64 part{FracPart(d)};
    if (part == 0)
        return PowerAt(d, l) - ParValue(1);
    const f32 whole = Single(Int(f64{d}));
    return (1 - part) * PowerAt(whole, l) + part * PowerAt(whole + 1, l) - ParValue(1);
}

} // namespace quorvanta
