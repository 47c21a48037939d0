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
    static void GetSimPar();
    static void SimInterval();
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

// A sample of a simulated study of which count have a property that the share Truth has; Weight
// turns the variance of an observation into that of the share.
struct SampledProportion {
    i16 Size = 0;
    i32 Count = 0;
    f64 Truth = 0;
    f64 Weight = 0;

    f64 Estimate() const { return static_cast<f64>(Count) / Size; }
    f64 Error() const { return Estimate() - Truth; }
    f64 Variance() const { return Estimate() * (1 - Estimate()) * Weight; }
};

// What it says of the precision of a proportion, or of a difference of two.
void JudgeProportion(const SampledProportion& sample);
void JudgeDifference(const SampledProportion& first, const SampledProportion& second);

// The variance is largest in between: where a proportion is the unknown, two have the precision
// that residual asks for, of which the search finds the smaller one.
void NarrowProportions(f64& lower, f64& upper, const SampleValues& proportions,
                       const SampleWeights& weights, f64 (*residual)());

} // namespace quorvanta
