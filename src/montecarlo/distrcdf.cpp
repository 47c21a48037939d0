#include "montecarlo/distrcdf.h"

#include "core/general.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvanta {

namespace {

constexpr f64 infinity = std::numeric_limits<f64>::infinity();
constexpr f64 root2 = 1.4142135623730951;
constexpr f64 pi = 3.1415926535897932;
constexpr f64 largestCount = 9999; // of a discrete distribution, and degrees of freedom

// P(Z <= z) of the standard normal distribution.
f64 Normal(f64 z) {
    return std::erfc(-z / root2) / 2;
}

// From NorInv, which is right to 0.0005, by Newton's method. Within 1e-15..1 - 1e-15.
f64 NormalQuantile(f64 p) {
    if (p > 0.5)
        return -NormalQuantile(1 - p);
    constexpr f64 least = 1e-300;
    f64 z = p < 1e-5 ? -std::sqrt(-2 * std::log(std::max(p, least))) : f64{NorInv(Single(p))};
    constexpr int steps = 8;
    for (int i = 0; i < steps; ++i) {
        const f64 density = std::exp(-z * z / 2) / std::sqrt(2 * pi);
        const f64 error = (Normal(z) - p) / density;
        z -= error / (1 + z * error / 2); // Halley's correction
    }
    return z;
}

// P(X <= x) of chi-square with a whole number of degrees of freedom: the sums of M. Abramowitz and
// I. Stegun, Handbook of Mathematical Functions, 1964, 26.4.4 and 26.4.5, from the smallest power.
f64 ChiSquare(f64 x, i32 df) {
    if (x <= 0)
        return 0;
    const bool isEven = df % 2 == 0;
    const f64 half = x / 2;
    const f64 log = std::log(half);
    f64 tail = isEven ? 0 : std::erfc(std::sqrt(half));
    for (f64 a = isEven ? 1 : 1.5; a <= df / 2.0; ++a)
        tail += std::exp((a - 1) * log - half - std::lgamma(a));
    return std::clamp(1 - tail, 0.0, 1.0);
}

// The standard form of a family with location and scale.
f64 StandardCdf(i16 code, f64 z) {
    switch (code) {
    case SimUniform:
        return std::clamp(z + 0.5, 0.0, 1.0);
    case SimExponential:
        return z <= 0 ? 0 : -std::expm1(-z);
    case SimLaplace:
        return z < 0 ? std::exp(z) / 2 : 1 - std::exp(-z) / 2;
    case SimCauchy:
        return 0.5 + std::atan(z) / pi;
    case SimLogistic:
        return 1 / (1 + std::exp(-z));
    case SimExtremeValue:
        return std::exp(-std::exp(-z));
    default:
        return Normal(z);
    }
}

f64 StandardQuantile(i16 code, f64 p) {
    switch (code) {
    case SimUniform:
        return p - 0.5;
    case SimExponential:
        return -std::log1p(-p);
    case SimLaplace:
        return p < 0.5 ? std::log(2 * p) : -std::log(2 * (1 - p));
    case SimCauchy:
        return std::tan(pi * (p - 0.5));
    case SimLogistic:
        return std::log(p / (1 - p));
    case SimExtremeValue:
        return -std::log(-std::log(p));
    default:
        return NormalQuantile(p);
    }
}

// Where the distribution ends.
f64 LowEnd(const DistrRow& distr) {
    switch (distr.Code) {
    case SimUniform:
        return f64{distr.Par1} - f64{distr.Par2} / 2;
    case SimExponential:
        return f64{distr.Par1};
    case SimWeibull:
    case SimLognormal:
    case SimChi2:
        return 0;
    default:
        return -infinity;
    }
}

f64 HighEnd(const DistrRow& distr) {
    return distr.Code == SimUniform ? f64{distr.Par1} + f64{distr.Par2} / 2 : infinity;
}

// By halving, from the approximation of E. B. Wilson and M. M. Hilferty, Proceedings of the
// National Academy of Sciences 17, 1931, 684-688, outward.
f64 ChiSquareQuantile(f64 p, i32 df) {
    const f64 c = 2.0 / (9.0 * df);
    const f64 near = df * std::pow(std::max(0.0, 1 - c + NormalQuantile(p) * std::sqrt(c)), 3);
    f64 low = near;
    f64 high = std::max(near, 1e-9);
    while (low > 0 && ChiSquare(low, df) > p)
        low = low < 1e-12 ? 0 : low / 1.1;
    while (ChiSquare(high, df) < p && high < NoValue)
        high *= 1.1;
    constexpr f64 precision = 1e-12;
    while (high - low > precision * high) {
        const f64 middle = (low + high) / 2;
        (ChiSquare(middle, df) < p ? low : high) = middle;
    }
    return (low + high) / 2;
}

i32 WholeDf(const DistrRow& distr) {
    return ToI32(f64{distr.Par1});
}

f64 LogBinomial(f64 n, f64 x) {
    return std::lgamma(n + 1) - std::lgamma(x + 1) - std::lgamma(n - x + 1);
}

f64 Probability(const DistrRow& distr, i32 x) {
    const f64 first{distr.Par1};
    if (distr.Code == SimPoisson)
        return std::exp(x * std::log(first) - first - std::lgamma(x + 1.0));
    const f64 p{distr.Par2};
    return x > first
               ? 0
               : std::exp(LogBinomial(first, x) + x * std::log(p) + (first - x) * std::log1p(-p));
}

} // namespace

bool IsContinuousDistr(const DistrRow& distr) {
    const f64 first{distr.Par1};
    switch (distr.Code) {
    case SimUniform:
    case SimNormal:
    case SimExponential:
    case SimLaplace:
    case SimCauchy:
    case SimLogistic:
    case SimExtremeValue:
        return distr.Par2 > 0;
    case SimWeibull:
    case SimLognormal:
        return first > 0 && distr.Par2 > 0;
    case SimChi2:
        return first >= 2 && first <= largestCount && first == std::floor(first);
    default:
        return false;
    }
}

bool IsDiscreteDistr(const DistrRow& distr) {
    const f64 first{distr.Par1};
    if (distr.Code == SimPoisson)
        return first > 0 && first <= largestCount;
    return distr.Code == SimBinomial && first >= 1 && first <= largestCount &&
           first == std::floor(first) && distr.Par2 > 0 && distr.Par2 < 1;
}

f64 DistrCdf(const DistrRow& distr, f64 x) {
    const f64 first{distr.Par1};
    const f64 scale{distr.Par2};
    switch (distr.Code) {
    case SimWeibull:
        return x <= 0 ? 0 : -std::expm1(-std::pow(x / scale, first));
    case SimLognormal:
        return x <= 0 ? 0 : Normal(first * std::log(x / scale));
    case SimChi2:
        return ChiSquare(x, WholeDf(distr));
    default:
        return StandardCdf(distr.Code, (x - first) / scale);
    }
}

f64 DistrQuantile(const DistrRow& distr, f64 p) {
    if (p <= 0)
        return LowEnd(distr);
    if (p >= 1)
        return HighEnd(distr);
    const f64 first{distr.Par1};
    const f64 scale{distr.Par2};
    switch (distr.Code) {
    case SimWeibull:
        return scale * std::pow(-std::log1p(-p), 1 / first);
    case SimLognormal:
        return scale * std::exp(NormalQuantile(p) / first);
    case SimChi2:
        return ChiSquareQuantile(p, WholeDf(distr));
    default:
        return first + scale * StandardQuantile(distr.Code, p);
    }
}

std::vector<f64> DistrProportions(const DistrRow& distr, i32 categories) {
    std::vector<f64> proportions;
    f64 sum = 0;
    for (i32 x = 0; x + 1 < categories; ++x) {
        proportions.push_back(Probability(distr, x));
        sum += proportions.back();
    }
    proportions.push_back(std::max(0.0, 1 - sum));
    return proportions;
}

i32 DistrCategories(const DistrRow& distr) {
    const f64 first{distr.Par1};
    constexpr f64 far = 9; // standard deviations
    return ToI32(Int(distr.Code == SimPoisson ? first + far * std::sqrt(first) + 2 * far : first)) +
           1;
}

} // namespace quorvanta
