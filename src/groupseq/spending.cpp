#include "groupseq/spending.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "groupseq/groupseq.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <cmath>

namespace quorvanta {

namespace {

// 2 - 2 F(F^-1(1 - alpha/2) / sqrt(t)): F the normal distribution, or that of t.
f64 SpentLikeOBrienFleming(f64 t, f64 alpha) {
    const f32 p = Single(1 - alpha / 2);
    const f64 root = std::sqrt(t);
    if (GsTestKind != GsStudent)
        return 2 - 2 * f64{NorCdf(Single(f64{NorInv(p)} / root))};
    const f32 df = Single(f64{CumSize(1)} - 1 - (NoOfSamples == TwoSamples ? 1 : 0));
    return 2 - 2 * f64{TCdf(Single(f64{TInv(p, df)} / root), df)};
}

// Up to rounding, no more than all of it.
f32 AtMost(f64 spent, f32 alpha) {
    return MinSingle(Single(spent), alpha);
}

} // namespace

// Types 4 and 5: K. K. G. Lan and D. L. DeMets, Biometrika 70, 1983, 659-663. Type 6: I. K. Hwang,
// W. J. Shih and J. S. DeCani, Statistics in Medicine 9, 1990, 1439-1445. Type 7: K. Kim and D. L.
// DeMets, Biometrika 74, 1987, 149-154.
f32 GsSpend(f32 t, f32 alpha, i16 boundType) {
    if (t <= 0)
        return 0;
    const f64 fraction{t};
    const f64 all{alpha};
    switch (boundType) {
    case BoundLanDeMetsPocock:
        return AtMost(all * std::log(1 + (std::exp(1.0) - 1) * fraction), alpha);
    case BoundLanDeMetsOBrienFleming:
        return AtMost(SpentLikeOBrienFleming(fraction, all), alpha);
    case BoundGammaFamily:
        if (FamilyPar == 0)
            return Single(fraction * all);
        return Single(all * (1 - ExpClamped(Single(-f64{FamilyPar} * fraction))) /
                      (1 - ExpClamped(-FamilyPar)));
    case BoundRhoFamily:
        return AtMost(std::pow(fraction, f64{FamilyPar}) * all, alpha);
    default:
        return 0;
    }
}

void GsFoldTwoSided(f32& x) {
    if (NoOfTails == TwoSided)
        x = MinSingle(1, Single(x <= 0.5F ? 2 * f64{x} : 2 * f64{x} - 1));
}

} // namespace quorvanta
