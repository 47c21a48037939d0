#include "numeric/gamma0.h"

#include "numeric/rounding.h"

#include <cmath>

namespace quorvanta {

f64 GammaFn(f64 x) {
    if (x == 0)
        return 0;
    if (x > 0) {
        const f64 w = x + 2;
        return std::sqrt(TwoPi / w) *
               std::exp((1 - 1 / (30 * w * w)) / (12 * w) + w * std::log(w) - w) / (x * (x + 1));
    }
    f64 y = x;
    int steps = 0;
    while (y <= 0) {
        y += 1;
        ++steps;
    }
    f64 gamma = GammaFn(y);
    for (int i = 0; i < steps; ++i)
        gamma /= x + i;
    return gamma;
}

} // namespace quorvanta
