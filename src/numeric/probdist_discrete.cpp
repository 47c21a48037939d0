#include "numeric/probdist_discrete.h"

#include "core/general.h"
#include "core/root.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace quorvanta {

namespace {

// Up to here the middle of a row of Pascal's triangle is below 1.8e308.
constexpr i16 LargestPlainRow = 1029;

// How near a running sum of probabilities has to come to a quantile.
constexpr f64 QuantileSlack = 1e-5;

// The rows of Pascal's triangle that were asked for, each up to its middle at most.
std::array<std::vector<f64>, LargestPlainRow + 1> ChooseCache;

f64 ChooseFactor(int n, int i) {
    return (n - i + 1.0) / i;
}

f64 LogChoose(i16 n, i16 k) {
    return std::lgamma(n + 1.0) - std::lgamma(k + 1.0) - std::lgamma(n - k + 1.0);
}

} // namespace

// --- Binomial coefficients --------------------------------------------------------------------

f64 ChooseProduct(i16 n, i16 k) {
    f64 r = 1;
    for (i16 i = 1; i <= k; ++i)
        r = ChooseFactor(n, i) * r;
    return r;
}

f64 Choose(i16 n, i16 k) {
    if (k < 0 || k > n)
        return 0;
    const i16 smaller = MinInteger(k, static_cast<i16>(n - k));
    if (n > LargestPlainRow)
        return ChooseProduct(n, smaller);
    std::vector<f64>& row = ChooseCache[static_cast<std::size_t>(n)];
    if (row.empty())
        row.push_back(1);
    for (int i = static_cast<int>(row.size()); i <= smaller; ++i)
        row.push_back(ChooseFactor(n, i) * row.back());
    return row[static_cast<std::size_t>(smaller)];
}

// --- Binomial ---------------------------------------------------------------------------------

f32 BinDensity(f32 n, i16 x, f32 p) {
    const i16 whole = ToI16(Int(f64{n}));
    if (x < 0 || x > whole)
        return 0;
    const f64 rest = f64{n} - x;
    // Coefficient and powers of a large n would leave 64 bits at opposite ends.
    if (whole > LargestPlainRow && p > 0 && p < 1)
        return Single(
            std::exp(LogChoose(whole, x) + x * std::log(f64{p}) + rest * std::log(1 - f64{p})));
    return Single(Choose(whole, x) * std::pow(f64{p}, x) * std::pow(1 - f64{p}, rest));
}

namespace {

// The distribution function at x of a count of 0 to whole: the sum of the densities up to x when x
// is in the lower half, else of those above x, from the far end, taken from 1.
template <class Density>
f32 SumFromNearerEnd(i16 x, i16 whole, bool lowerHalf, Density&& density) {
    f32 sum = 0;
    if (lowerHalf) {
        for (i16 i = 0; i <= x; ++i)
            sum = Single(f64{sum} + f64{Single(density(i))});
        return sum;
    }
    for (i16 i = whole; i > x; --i)
        sum = Single(f64{sum} + f64{Single(density(i))});
    return Single(1 - f64{sum});
}

// The first x from 0 on whose distribution function reaches q, but 502 at most.
template <class Cdf>
f32 SmallestReaching(f32 q, Cdf&& cdf) {
    i16 x = 0;
    while (x < LastQuantile && f64{cdf(x)} < f64{q} - QuantileSlack)
        ++x;
    return x;
}

} // namespace

f32 BinCdf(f32 n, i16 x, f32 p) {
    if (x < 0)
        return 0;
    if (x > n)
        return 1;
    return SumFromNearerEnd(x, ToI16(Int(f64{n})), x <= n / 2,
                            [n, p](i16 i) { return BinDensity(n, i, p); });
}

f32 BinInv(f32 q, f32 n, f32 p) {
    return SmallestReaching(q, [n, p](i16 x) { return BinCdf(n, x, p); });
}

// --- Hypergeometric ---------------------------------------------------------------------------

f64 HyperDensity(i16 popsize, i16 n, i16 x, f32 p) {
    const i16 marked = ToI16(f64{p} * popsize);
    const i16 unmarked = static_cast<i16>(popsize - marked);
    const i16 rest = static_cast<i16>(n - x);
    if (x < 0 || x > n || x > marked || rest > unmarked)
        return 0;
    if (popsize > LargestPlainRow)
        return std::exp(LogChoose(unmarked, rest) + LogChoose(marked, x) - LogChoose(popsize, n));
    return Choose(unmarked, rest) * Choose(marked, x) / Choose(popsize, n);
}

f32 HyperCdf(i16 popsize, i16 n, i16 x, f32 p) {
    if (x < 0)
        return 0;
    if (x > n)
        return 1;
    return SumFromNearerEnd(x, n, 2 * x <= n,
                            [=](i16 i) { return HyperDensity(popsize, n, i, p); });
}

// --- Poisson ----------------------------------------------------------------------------------

f32 PoissonDensity(i16 x, f32 lambda) {
    if (x < 0)
        return 0;
    if (x == 0)
        return Single(ExpClamped(-lambda));
    if (x <= 50)
        return Single(std::pow(f64{lambda}, x) * ExpClamped(-lambda) / Factorial(x));
    const f32 twice = Single(2 * f64{lambda});
    return Single(f64{Chi2Cdf(twice, Single(2.0 * x))} - f64{Chi2Cdf(twice, Single(2.0 * x + 2))});
}

f32 PoissonCdf(f32 x, f32 lambda) {
    return Single(1 - f64{Chi2Cdf(Single(2 * f64{lambda}), Single(2 * f64{x} + 2))});
}

f32 PoissonInv(f32 q, f32 lambda) {
    return SmallestReaching(q, [lambda](i16 x) { return PoissonCdf(x, lambda); });
}

// --- Tables of category proportions -----------------------------------------------------------

f32 DiscreteCdf(f32 x, const Array1<f32>& probs) {
    const std::span<const f32> shares = probs.Raw();
    if (x < 0)
        return 0;
    if (x >= static_cast<f32>(shares.size()))
        return 1;
    f32 sum = 0;
    for (const f32 share : shares.first(static_cast<std::size_t>(ToI16(f64{x}))))
        sum = Single(f64{sum} + f64{share});
    return sum;
}

i16 DiscreteInv(f32 q, const Array1<f32>& probs) {
    i16 category = 0;
    f32 sum = 0;
    for (const f32 share : probs.Raw()) {
        ++category;
        sum = Single(f64{sum} + f64{share});
        if (f64{sum} > f64{q} - QuantileSlack)
            break;
    }
    return category;
}

// --- Kolmogorov-Smirnov -----------------------------------------------------------------------

namespace {

constexpr i16 LargestExactSample = 50;

// b^exponent, nothing for a bound of 0: with a sample of one the last bound has the exponent 0.
f64 BoundPower(f32 bound, int exponent) {
    return bound > 0 ? std::pow(f64{bound}, exponent) : 0;
}

// The distribution function at d, with the bounds (0) to (m) from bound(t), t = j/n + d, when the
// sample is small enough for an exact sum.
template <class Real, class Bound>
f32 KolSmiOneSided(f32 n, f32 d, Bound&& bound) {
    if (d <= 0)
        return 0;
    if (d >= 1)
        return 1;
    if (n > LargestExactSample)
        return Single(1 - ExpClamped(Single(-2 * f64{n} * f64{d} * f64{d})));
    const i16 whole = ToI16(f64{n});
    const i16 m = MaxInteger(1, ToI16(Int((1 - f64{d}) * whole - 1e-5)));
    std::vector<f32> bounds;
    for (i16 j = 0; j <= m; ++j)
        bounds.push_back(MaxSingle(0, Single(bound(static_cast<f64>(j) / whole + f64{d}))));
    return Single(1 - f64{KolSmiExactSum<Real>(whole, m, bounds)});
}

} // namespace

template <class Real>
Real KolSmiExactSum(i16 n, i16 m, std::span<const f32> bounds) {
    std::vector<Real> c;
    const auto sum = [&c, bounds](i16 over, int terms) {
        Real total = 0;
        for (int i = 0; i < terms; ++i) {
            const std::size_t at = static_cast<std::size_t>(i);
            total =
                static_cast<Real>(f64{total} + Choose(over, static_cast<i16>(i)) *
                                                   BoundPower(bounds[at], over - i) * f64{c[at]});
        }
        return total;
    };
    for (i16 j = 0; j <= m; ++j)
        c.push_back(static_cast<Real>(1 - f64{sum(j, j)}));
    return sum(n, m + 1);
}

template f32 KolSmiExactSum<f32>(i16 n, i16 m, std::span<const f32> bounds);
template f64 KolSmiExactSum<f64>(i16 n, i16 m, std::span<const f32> bounds);

f32 KolSmiCdf(f32 n, f32 d) {
    return KolSmiOneSided<f32>(n, d, [](f64 t) { return 1 - t; });
}

f32 KolSmiDiscreteCdf(f32 n, f32 d, const Array1<f32>& probs, i16 side) {
    // The bound of the continuous null, taken to the step of the null on the side of the sample. An
    // observed distance meets a step exactly, but for the rounding of its 32 bits.
    constexpr f64 equal = 1e-5;
    const auto bound = [&probs, side](f64 t) {
        const f64 w = side != 0 ? 1 - t : t;
        f32 sum = 0;
        for (const f32 share : probs.Raw()) {
            if (std::fabs(w - f64{sum}) <= equal)
                return 1 - t;
            const f32 next = Single(f64{sum} + f64{share});
            if (f64{next} > w + equal)
                return side != 0 ? f64{sum} : 1 - f64{next};
            sum = next;
        }
        return 0.0;
    };
    return KolSmiOneSided<f64>(n, d, bound);
}

f32 KolSmiInv(f32 n, f32 q, i16 /*flag*/) {
    if (n > LargestExactSample)
        return Single(std::sqrt(-std::log(1 - f64{q}) / 2 / f64{n}));
    i16 iterations = 0;
    f64 root = NoValue;
    f64 residual = NoValue;
    FindRootOf([n, q](f64 d) { return f64{KolSmiCdf(n, Single(d))} - f64{q}; }, 0, 1, RootTolerance,
               RootIterations, iterations, root, residual);
    return Single(std::fabs(residual) <= RootResidual ? root : NoValue);
}

f32 KolSmiTwoCdf(i16 n1, i16 n2, f32 d, i16 flag) {
    if (d <= 0)
        return 0;
    const f64 sizes = ToI16(static_cast<f64>(n1) + n2);
    const f64 exponent = -2 * (static_cast<f64>(n1) * n2 / sizes) * f64{d} * f64{d};
    if (flag != 0)
        return Single(1 - ExpClamped(Single(exponent)));
    constexpr int terms = 20;
    constexpr f64 negligible = 0.0001;
    f64 sum = 0;
    f64 term = 1;
    for (int i = 1; i <= terms && term >= negligible; ++i) {
        term = ExpClamped(Single(exponent * i * i));
        sum += i % 2 == 1 ? term : -term;
    }
    // So small a distance that the series has not settled: the distribution function is below
    // 1e-40, and the broken series would rise to 1.
    if (term >= negligible)
        return 0;
    return Single(std::clamp(1 - 2 * sum, 0.0, 1.0));
}

} // namespace quorvanta
