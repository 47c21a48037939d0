// PARBIN: point estimates of, and confidence intervals for, a binomial proportion or odds, the
// difference of two proportions or the ratio of two odds.
#pragma once

#include "core/kinds.h"
#include "core/types.h"
#include "tests/lists/samples.h"

namespace quorvanta {

struct PARBIN {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

inline constexpr SampleKinds ProportionKinds{
    Kind::Proportion,
    Group::Proportion2,
    Kind::Proportion1,
    {Kind::Proportion2, Kind::Proportion2Minus1, Kind::Proportion2Over1}};

// What a variance p (1 - p) is divided by turns into a weight of each sample.
struct SampleWeights {
    f64 First = 0;
    f64 Second = 0; // 0: one sample
};

// Standard error of an estimated proportion or a difference of two.
f32 ProportionStandardError(const SampleValues& proportions, const SampleWeights& weights);

// The variance is largest in between: where a proportion is the unknown, two have the precision
// that residual asks for, of which the search finds the smaller one.
void NarrowProportions(f64& lower, f64& upper, const SampleValues& proportions,
                       const SampleWeights& weights, f64 (*residual)());

} // namespace quorvanta
