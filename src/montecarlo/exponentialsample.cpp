#include "montecarlo/exponentialsample.h"

#include "core/general.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

namespace quorvanta {

void DrawExponentialTimes(i16 n, f32& sum, f32& smallest) {
    if (n < 1)
        return;
    RandSample.ReDim(0, n);
    RandExponential();
    f64 all{sum};
    for (const f32 time : RandSample.Raw().subspan(1)) {
        all += f64{time};
        smallest = MinSingle(smallest, time);
    }
    sum = Single(all);
}

// B. Epstein and M. Sobel, Annals of Mathematical Statistics 25, 1954, 373-381.
ScaleOfTimes EstimateScale(i16 n, f32 sum, f32 smallest, bool locationIsKnown) {
    const f64 size = n;
    const f64 df = 2 * (size - (locationIsKnown ? 0 : 1));
    if (df < 1)
        return {0, df};
    const f64 above = locationIsKnown ? f64{sum} : MaxOf(0, f64{sum} - size * f64{smallest});
    return {2 * above / df, df};
}

} // namespace quorvanta
