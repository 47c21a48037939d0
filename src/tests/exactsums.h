// What the exact forms of the tests share: critical values of a discrete statistic, the power with
// them, and the way from whole sizes to the real sizes of a search.
#pragma once

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/types.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"
#include "tests/trialvalue.h"

namespace quorvanta {

// The largest size, or population, of an exact form.
inline constexpr i16 MaxExactSize = 1000;

// The largest x of 0..n whose lower tail, x included, does not exceed the level; -1 if there is
// none. density(x) is P(X = x); the sum and its terms are held in 32 bits.
template <class Density>
i16 CritLow(i16 n, f32 level, const Density& density) {
    f32 sum = 0;
    for (i16 x = 0; x <= n; ++x) {
        sum = Single(f64{sum} + Single(density(x)));
        if (sum > level)
            return static_cast<i16>(x - 1);
    }
    return n;
}

// The smallest x whose upper tail, x included, does not exceed the level; n + 1 if there is none.
template <class Density>
i16 CritHigh(i16 n, f32 level, const Density& density) {
    const auto fromAbove = [n, &density](i16 x) { return density(static_cast<i16>(n - x)); };
    return static_cast<i16>(n - CritLow(n, level, fromAbove));
}

// Probability that an exact test of a statistic on 0..n rejects, for NoOfTails and LeftTail at the
// level of the analysis. left and right are its densities under H0; with two one-sided tests those
// at the two limits, and the power is the probability of the interval from the upper critical value
// at the left limit to the lower one at the right limit, 0 if it is empty. cdf is P(X <= x) under
// H1.
template <class Density, class Cdf>
f32 ExactPower(i16 n, const Density& left, const Density& right, const Cdf& cdf) {
    const f64 alpha = SignificanceLevel();
    const f32 level = Single(NoOfTails == TwoSided ? alpha / 2 : alpha);
    if (NoOfTails == OneSided && LeftTail == True)
        return cdf(CritLow(n, level, left));
    const i16 high = CritHigh(n, level, left);
    const f64 belowHigh = cdf(static_cast<i16>(high - 1));
    if (NoOfTails == OneSided)
        return Single(1 - belowHigh);
    const i16 low = CritLow(n, level, right);
    const f64 upToLow = cdf(low);
    if (NoOfTails == TwoSided)
        return Single(upToLow + (1 - belowHigh));
    return low < high ? 0.0F : Single(upToLow - belowHigh);
}

// f of a whole size; of a size between two whole ones the straight line between them. An exact
// form knows whole sizes only, and with the real size in its powers alone a search would not find
// the size that it looks for.
template <class Function>
f64 AtWholeSize(f64 n, const Function& f) {
    const f64 whole = Int(n);
    const f64 rest = n - whole;
    const f64 value = f(whole);
    return rest == 0 ? value : value + rest * (f(whole + 1) - value);
}

// The same for two sizes: linear on the triangle of whole sizes that they lie in, so on a straight
// line where both grow alike.
template <class Function>
f64 AtWholeSizes(f64 n1, f64 n2, const Function& f) {
    const f64 a = Int(n1);
    const f64 b = Int(n2);
    const f64 u = n1 - a;
    const f64 v = n2 - b;
    const f64 low = MinOf(u, v);
    const f64 high = MaxOf(u, v);
    f64 value = (1 - high) * f(a, b);
    if (low > 0)
        value += low * f(a + 1, b + 1);
    if (high > low)
        value += (high - low) * (u > v ? f(a + 1, b) : f(a, b + 1));
    return value;
}

// The unknown is a size: empties the interval of the search if its least size has the power asked
// for. The power of an exact form goes up and down with the size; from a size that is too small the
// search ends where it rises through the target, and the next whole size has the power, but from
// one that is large enough it may end where the power falls.
template <class Equation>
void StartFromTooSmall(f64& lower, f64& upper, const Equation& equation) {
    if (!(upper > lower))
        return;
    const TrialValue least(lower);
    if (equation() >= 0)
        upper = lower;
}

} // namespace quorvanta
