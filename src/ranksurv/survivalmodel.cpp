#include "ranksurv/survivalmodel.h"

#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr f64 Ln2 = 0.693147180559945;

// S(t) = exp(-ln 2 (t/median)^shape).
f64 WeibullAt(f64 t, f64 median, f64 shape) {
    const f64 hazard = Ln2 * ExpClamped(Single(shape * std::log(t / median)));
    return std::exp(-hazard);
}

// Halves the logarithm of the way until 32 bits are reached.
f32 MedianOfGamma(f32 shape) {
    f64 low = std::log(1e-30);
    f64 high = std::log(f64{shape} + 1);
    constexpr int steps = 40;
    for (int i = 0; i < steps; ++i) {
        const f64 middle = (low + high) / 2;
        (GammaCdf(Single(std::exp(middle)), 1, shape) < 0.5F ? low : high) = middle;
    }
    return Single(std::exp(high));
}

// The last one is remembered, since it serves all times of a study.
f64 KnownMedianOfGamma(f64 shape) {
    static f32 knownShape = 0;
    static f32 knownMedian = 0;
    if (Single(shape) != knownShape) {
        knownMedian = MedianOfGamma(Single(shape));
        knownShape = Single(shape);
    }
    return f64{knownMedian};
}

// The scale that gives the gamma distribution its median.
f32 GammaScale(f64 median, f64 shape) {
    return Single(median / KnownMedianOfGamma(shape));
}

// Less than the error of its distribution function is nothing.
f64 GammaAt(f64 t, f64 median, f64 shape) {
    constexpr f64 nothing = 1e-6;
    const f64 rest = 1 - f64{GammaCdf(Single(t), GammaScale(median, shape), Single(shape))};
    return rest > nothing ? rest : 0;
}

} // namespace

f64 SurvivalAtModel(SurvivalModel model, f64 t, f64 median, f64 shape) {
    if (t <= 0)
        return 1;
    switch (model) {
    case WeibullSurvival:
        return WeibullAt(t, median, shape);
    case GammaSurvival:
        return GammaAt(t, median, shape);
    default:
        return f64{NorCdf(Single(-std::log(t / median) / shape))};
    }
}

f64 StandardMedian(SurvivalModel model, f64 shape) {
    switch (model) {
    case WeibullSurvival:
        return std::pow(Ln2, 1 / shape);
    case GammaSurvival:
        return KnownMedianOfGamma(shape);
    default:
        return 1;
    }
}

} // namespace quorvanta
