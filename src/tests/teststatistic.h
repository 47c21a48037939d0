// The statistic of a test: its distribution under H0 and under H1, as the power equations know it
// while they work out a power. For a picture of it; no value depends on what is noted here.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The family of a statistic, and what sets H1 apart from H0 in it.
enum class StatisticLaw {
    None,
    Normal,        // an effect, less a correction: location and standard error
    Student,       // t: non-centrality
    ChiSquare,     // non-centrality
    FRatio,        // non-centrality
    VarianceShare, // degrees of freedom times estimate over H0 value, chi-square: a factor
    VarianceRatio, // F: a factor
    Exponential,   // the distance of a smallest observation, in its own means: location
    Binomial,      // a count of n: the proportion
    Hypergeometric // the same from a population
};

// Of two one-sided tests the first values belong to the left limit, which is rejected to its right,
// the Right ones to the right limit; else those are not in use.
struct TestStatistic {
    StatisticLaw Law = StatisticLaw::None;
    f64 Df1 = 0; // degrees of freedom; of a count the size
    f64 Df2 = 0; // of a denominator; of a count the size of the population
    f64 Null = 0;
    f64 NullRight = 0; // proportions under H0; of no other law
    f64 Truth = 0;     // location, non-centrality, factor or proportion under H1
    f64 TruthRight = 0;
    f64 NullError = 1; // of an effect that is normal: its standard errors under H0
    f64 NullErrorRight = 1;
    f64 TruthError = 1; // and under H1
};

// What the last power equation noted that was worked out.
extern TestStatistic NotedStatistic;

} // namespace quorvanta
