// The location-scale families of PROBDIST.
#include "core/general.h"
#include "numeric/gamma0.h"
#include "numeric/integra1.h"
#include "numeric/probdist.h" // IWYU pragma: associated
#include "numeric/rounding.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr f32 NoDensity = static_cast<f32>(NoValue);
constexpr f32 EdgeLow = static_cast<f32>(ProbabilityFloor);
constexpr f32 EdgeHigh = static_cast<f32>(ProbabilityCeiling);

// exp(-v) through the clamp, v rounded to 32 bits.
f64 ExpMinus(f64 v) {
    return ExpClamped(Single(-v));
}

} // namespace

f32 ExpCdf(f32 x) {
    return x <= 0 ? 0.0F : Single(1 - ExpMinus(f64{x}));
}

f32 ExpDensity(f32 x) {
    if (x == 0)
        return NoDensity;
    return x < 0 ? 0.0F : Single(ExpMinus(f64{x}));
}

f32 ExpInv(f32 q) {
    return Single(-std::log(1 - f64{q}));
}

f32 UniformCdf(f32 x) {
    if (x < -0.5F)
        return 0;
    return x >= 0.5F ? 1.0F : Single(f64{x} + 0.5);
}

f32 UniformDensity(f32 x) {
    return x < -0.5F || x > 0.5F ? 0.0F : 1.0F;
}

f32 UniformInv(f32 q) {
    return Single(f64{q} - 0.5);
}

f32 LaplaceCdf(f32 x) {
    return Single(((1 - ExpMinus(std::fabs(f64{x}))) * Sgn(f64{x}) + 1) / 2);
}

f32 LaplaceDensity(f32 x) {
    return Single(ExpMinus(std::fabs(f64{x})) / 2);
}

f32 LaplaceInv(f32 q) {
    const f64 d = f64{q} - 0.5;
    return Single(-Sgn(d) * std::log(1 - 2 * std::fabs(d)));
}

f32 CauchyCdf(f32 x) {
    return Single(std::atan(f64{x}) / Pi + 0.5);
}

f32 CauchyDensity(f32 x) {
    return Single(1 / Pi / (f64{x} * f64{x} + 1));
}

f32 CauchyInv(f32 q) {
    return Single(std::tan((f64{q} - 0.5) * Pi));
}

f32 LogisticCdf(f32 x) {
    return Single(1 / (1 + ExpMinus(f64{x})));
}

f32 LogisticDensity(f32 x) {
    const f64 e = ExpMinus(f64{x});
    return Single(e / ((1 + e) * (1 + e)));
}

f32 LogisticInv(f32 q) {
    if (q <= 0)
        return -NoDensity;
    if (q >= 1)
        return NoDensity;
    return Single(std::log(f64{q} / (1 - f64{q})));
}

f32 ExtremeCdf(f32 x) {
    return Single(ExpMinus(ExpMinus(f64{x})));
}

f32 ExtremeDensity(f32 x) {
    const f64 e = ExpMinus(f64{x});
    return Single(ExpMinus(e) * e);
}

f32 ExtremeInv(f32 q) {
    if (q <= 0)
        return QuantileBelowAll;
    if (q >= 1)
        return QuantileAboveAll;
    return Single(-std::log(-std::log(f64{q})));
}

namespace {

// (x / s)^g, 99999 at most; x and s above 0. Compared as logarithms, since the power of a large
// ratio may be more than 64 bits hold.
f64 WeibullHazard(f64 x, f64 s, f64 g) {
    const f64 ratio = x / s;
    return g * std::log(ratio) < std::log(NoValue) ? std::pow(ratio, g) : NoValue;
}

} // namespace

f32 WeibullCdf(f32 x, f32 s, f32 g) {
    if (s <= 0)
        return EdgeHigh;
    if (x <= 0)
        return 0;
    const f64 v = WeibullHazard(f64{x}, f64{s}, f64{g});
    return MaxSingle(EdgeLow, Single(1 - ExpMinus(v) - ProbabilityFloor));
}

f32 WeibullDensity(f32 x, f32 s, f32 g) {
    if (s <= 0)
        return 0;
    if (x == 0)
        return NoDensity;
    if (x < 0)
        return 0;
    const f64 survival = ExpMinus(WeibullHazard(f64{x}, f64{s}, f64{g}));
    // The power of x may be more than 64 bits hold where nobody survives.
    if (survival == 0)
        return 0;
    return Single(f64{g} * std::pow(f64{x}, f64{g} - 1) / f64{s} * survival);
}

f32 WeibullInv(f32 q, f32 s, f32 g) {
    const f64 tail = q < 1 ? 1 - f64{q} : 1 - f64{q} + ProbabilityFloor;
    return Single(f64{s} * std::pow(-std::log(tail), 1 / f64{g}));
}

namespace {

// x on the scale of the standard normal.
f32 LognormZ(f32 x, f32 mu, f32 sigma) {
    return Single((std::log(f64{x}) - f64{mu}) / f64{sigma});
}

} // namespace

f32 LognormCdf(f32 x, f32 mu, f32 sigma) {
    if (x <= 0)
        return EdgeLow;
    if (sigma <= 0)
        return EdgeHigh;
    return NorCdf(LognormZ(x, mu, sigma));
}

f32 LognormDensity(f32 x, f32 mu, f32 sigma) {
    if (x <= 0 || sigma <= 0)
        return EdgeLow;
    return Single(f64{NorDensity(LognormZ(x, mu, sigma))} / (f64{x} * f64{sigma}));
}

f32 LognormInv(f32 q, f32 mu, f32 sigma) {
    return Single(ExpClamped(Single(f64{NorInv(q)} * f64{sigma} + f64{mu})));
}

namespace {

// P(X <= u) of the gamma distribution with shape a.
f64 GammaShare(f64 u, f64 a) {
    // The density of a shape below 2 has a corner at 0 that the integrator can't round.
    if (a < 2)
        return GammaShare(u, a + 1) + std::pow(u, a) * std::exp(-u) / GammaFn(a + 1);
    // So far out the rest is below 32 bits, and over a longer way the integrator may step over the
    // peak.
    if (u > a + 10 * std::sqrt(a) + 30)
        return 1;
    const auto density = [a](f64 t) { return t <= 0 ? 0 : std::exp((a - 1) * std::log(t) - t); };
    constexpr i16 maximumSteps = 100;
    return RombergIntegrate(density, 0, u, maximumSteps, 1e-5) / GammaFn(a);
}

} // namespace

f32 GammaCdf(f32 x, f32 s, f32 g) {
    if (x <= 0)
        return 0;
    if (s <= 0)
        return EdgeHigh;
    return Single(GammaShare(f64{x} / f64{s}, f64{g}));
}

f32 GammaDensity(f32 x, f32 s, f32 g) {
    if (s <= 0 || x < 0)
        return 0;
    const f64 ratio = f64{x} / f64{s};
    const f64 r = ExpMinus(ratio) / GammaFn(f64{g}) / f64{s};
    if (g == 1)
        return Single(r);
    if (g <= 1 && x == 0)
        return NoDensity;
    return Single(r * std::pow(ratio, f64{g} - 1));
}

namespace {

// The walk over the intervals of a piecewise exponential distribution up to t.
struct HazardWalk {
    f32 LogSurvival = 0;
    int Interval = 0; // the one of t; past the last cut, one more than there are
};

HazardWalk WalkTo(f32 t, const Array1<f32>& cuts, const Array1<f32>& hazards) {
    HazardWalk walk;
    for (walk.Interval = 1; walk.Interval <= hazards.HighBound(); ++walk.Interval) {
        const int i = walk.Interval;
        const f64 end = MinSingle(t, cuts(i));
        walk.LogSurvival =
            Single(f64{walk.LogSurvival} - (end - f64{cuts(i - 1)}) * f64{hazards(i)});
        if (t < cuts(i))
            break;
    }
    return walk;
}

// The t of the last call of PwExpDensity.
f32 PreviousTime = 0;

} // namespace

f32 PwExpCdf(f32 t, const Array1<f32>& cuts, const Array1<f32>& hazards) {
    if (t <= 0)
        return 0;
    return Single(1 - ExpClamped(WalkTo(t, cuts, hazards).LogSurvival));
}

f32 PwExpDensity(f32 t, const Array1<f32>& cuts, const Array1<f32>& hazards) {
    const f32 previous = PreviousTime;
    PreviousTime = t;
    if (t == 0)
        return NoDensity;
    if (t < 0)
        return 0;
    const HazardWalk walk = WalkTo(t, cuts, hazards);
    for (int i = 1; i < walk.Interval; ++i)
        if (previous < cuts(i))
            return NoDensity;
    if (walk.Interval > hazards.HighBound())
        return 0;
    return Single(f64{hazards(walk.Interval)} * ExpClamped(walk.LogSurvival));
}

} // namespace quorvanta
