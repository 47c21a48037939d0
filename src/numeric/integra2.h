// The double integral of the critical values of multiple comparisons (the module INTEGRA2).
#pragma once

#include "core/types.h"

namespace quorvanta {

// The weight, in thirds of the step, of point i of a composite Simpson rule of `intervals`
// intervals, an even number.
constexpr f64 SimpsonWeight(int i, int intervals) {
    if (i == 0 || i == intervals)
        return 1.0;
    return i % 2 == 1 ? 4.0 : 2.0;
}

// The integral of f(x, s) over x from a to b and s from 0 to sUpper, by Simpson's composite rule
// (Abramowitz and Stegun 25.4.6) in both directions: 2n intervals of x, and 2m intervals of s for
// each of them. Exact for f of at most third degree in x and in s.
template <class Function>
f64 NestedSimpson(Function&& f, f64 a, f64 b, i16 n, f64 sUpper, i16 m) {
    const int outer = 2 * n;
    const int inner = 2 * m;
    const f64 xStep = (b - a) / outer;
    const f64 sStep = sUpper / inner;
    f64 outerSum = 0;
    for (int i = 0; i <= outer; ++i) {
        const f64 x = a + i * xStep;
        f64 innerSum = 0;
        for (int j = 0; j <= inner; ++j)
            innerSum += SimpsonWeight(j, inner) * f(x, j * sStep);
        outerSum += SimpsonWeight(i, outer) * innerSum;
    }
    return outerSum * xStep / 3.0 * sStep / 3.0;
}

} // namespace quorvanta
