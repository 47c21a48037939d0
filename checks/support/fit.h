// Do draws follow a distribution? Judged at a level where a false alarm is one in a million,
// against distributions in closed form that owe nothing to the program.
#pragma once

#include "core/types.h"

#include <functional>
#include <span>
#include <vector>

namespace quorvanta::checks {

// Level of every judgement here, and the normal quantile that belongs to it on two sides
// (R: qnorm(1 - 5e-7)).
inline constexpr f64 FalseAlarm = 1.0e-6;
inline constexpr f64 FalseAlarmZ = 4.891638;

// P(Z <= x), from std::erfc.
f64 NormalCdf(f64 x);

// P(X <= x) for a gamma variable of the shape a, by the power series of the incomplete gamma
// function (Abramowitz and Stegun 6.5.29), all of whose terms are positive.
f64 GammaCdf(f64 a, f64 x);

struct Moments {
    f64 Mean;
    f64 Variance;
    f64 ExcessKurtosis; // sets the standard error of the variance
};

// Mean and variance of the draws within FalseAlarmZ standard errors of those expected.
void ExpectMoments(std::span<const f32> draws, const Moments& expected);

// The Kolmogorov-Smirnov statistic and the chi-square statistic over 1000 cells of equal
// probability against the distribution function.
void ExpectContinuousFit(std::span<const f32> draws, const std::function<f64(f64)>& cdf);

// Probabilities of the counts 0, 1, 2, ...
using CountProbabilities = std::vector<f64>;

Moments MomentsOf(const CountProbabilities& probabilities);

// The chi-square statistic over the counts, those of less than ten expected draws taken together.
void ExpectCountFit(std::span<const f32> draws, const CountProbabilities& probabilities);

// A share of successes among trials within FalseAlarmZ standard errors of its probability.
void ExpectShare(int successes, int trials, f64 probability);

// |z| within FalseAlarmZ.
void ExpectNearZero(f64 z);

} // namespace quorvanta::checks
