// The general integrator (module INTEGRA1): Romberg's scheme on trapezoid sums.
#pragma once

#include "core/types.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvanta {

// The trapezoid estimate of the integral of f over a to b with n panels.
template <class Integrand>
f64 TrapezoidSum(Integrand&& f, f64 a, f64 b, i16 n) {
    const f64 h = (b - a) / n;
    const f64 ends = f(a) + f(b);
    f64 inner = 0;
    f64 x = a;
    for (i16 i = 1; i < n; ++i) {
        x += h;
        inner += f(x);
    }
    return (b - a) * (2 * inner + ends) / (2 * n);
}

// The integral of f over a to b (W. Romberg 1955): trapezoid sums with 1, 2, 4, ... panels, each
// row of the table extrapolated with the factors 4, 16, 64, ...
//
// Ends when the corner of the table has moved by no more than tolerance, relative to an integral
// above 1 and absolute below, after 6 rows at least: a peak between the few first abscissas would
// look like convergence. It also ends at maximumSteps rows, and before the number of panels leaves
// 16 bits; the last estimate is then the result, without a word.
template <class Integrand>
f64 RombergIntegrate(Integrand&& f, f64 a, f64 b, i16 maximumSteps, f64 tolerance) {
    constexpr int leastRows = 6;
    constexpr int mostRows = 15; // 16384 panels
    std::array<f64, mostRows> above{};
    std::array<f64, mostRows> row{};
    const int rows = std::min<int>(maximumSteps, mostRows);
    f64 estimate = 0;
    for (int i = 0; i < rows; ++i) {
        row[0] = TrapezoidSum(f, a, b, static_cast<i16>(1 << i));
        f64 r = 4;
        for (std::size_t j = 1; j <= static_cast<std::size_t>(i); ++j) {
            row[j] = (r * row[j - 1] - above[j - 1]) / (r - 1);
            r *= 4;
        }
        const f64 before = estimate;
        estimate = row[static_cast<std::size_t>(i)];
        if (i + 1 >= leastRows &&
            std::fabs(estimate - before) <= tolerance * std::max(1.0, std::fabs(estimate)))
            break;
        above = row;
    }
    return estimate;
}

} // namespace quorvanta
