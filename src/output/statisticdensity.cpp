#include "output/statisticdensity.h"

#include "core/general.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr f64 Pi = 3.1415926535897932;

// The mean of f(j) over a Poisson distribution of j with this mean, from its middle to where
// nothing is left.
template <class Function>
f64 PoissonMean(f64 mean, const Function& f) {
    if (mean <= 0)
        return f(0.0);
    constexpr f64 spread = 8; // standard deviations
    const f64 reach = spread * std::sqrt(mean) + 2 * spread;
    f64 sum = 0;
    for (f64 j = MaxOf(0, std::floor(mean - reach)); j <= mean + reach; ++j)
        sum += std::exp(j * std::log(mean) - mean - std::lgamma(j + 1)) * f(j);
    return sum;
}

f64 CentralChiSquare(f64 x, f64 df) {
    const f64 half = df / 2;
    return std::exp((half - 1) * std::log(x / 2) - x / 2 - std::lgamma(half)) / 2;
}

} // namespace

f64 StudentDensity(f64 t, f64 df, f64 delta) {
    // u is the standard deviation over its true value: df u^2 is chi-square. Simpson's rule, twelve
    // standard deviations of u to either side.
    constexpr int steps = 240;
    constexpr f64 reach = 12;
    const f64 sd = 1 / std::sqrt(2 * df);
    const f64 low = MaxOf(0, 1 - reach * sd);
    const f64 high = 1 + reach * sd;
    const f64 h = (high - low) / steps;
    const f64 constant = std::log(2.0) + df / 2 * std::log(df / 2) - std::lgamma(df / 2);
    f64 sum = 0;
    for (int i = 0; i <= steps; ++i) {
        const f64 u = low + i * h;
        if (u <= 0)
            continue;
        const f64 z = t * u - delta;
        const f64 value =
            u * std::exp(constant + (df - 1) * std::log(u) - df * u * u / 2 - z * z / 2);
        sum += (i == 0 || i == steps ? 1 : i % 2 == 1 ? 4 : 2) * value;
    }
    return sum * h / 3 / std::sqrt(2 * Pi);
}

f64 ChiSquareDensity(f64 x, f64 df, f64 lambda) {
    if (x <= 0)
        return 0;
    return PoissonMean(lambda / 2, [=](f64 j) { return CentralChiSquare(x, df + 2 * j); });
}

f64 FDensity(f64 x, f64 df1, f64 df2, f64 lambda) {
    if (x <= 0)
        return 0;
    const f64 r = df1 / df2;
    const f64 b = df2 / 2;
    return PoissonMean(lambda / 2, [=](f64 j) {
        const f64 a = df1 / 2 + j;
        const f64 logBeta = std::lgamma(a) + std::lgamma(b) - std::lgamma(a + b);
        return std::exp(a * std::log(r) + (a - 1) * std::log(x) - (a + b) * std::log1p(r * x) -
                        logBeta);
    });
}

} // namespace quorvanta
