// TESTSTUD: Student's t-tests of one or two means, unpaired and paired, with equal or unequal
// standard deviations; on the log scale, of medians of lognormal distributions.
#pragma once

#include "core/types.h"

namespace quorvanta {

class SampleValues;

struct TESTSTUD {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// Power of a t statistic for NoOfTails and LeftTail, minus the power entered, by the normal
// approximation of the non-central t distribution. delta is the effect, se its standard error,
// deltaLow and deltaHigh the distances to the limits of two one-sided tests.
f64 TPowerEq(f32 delta, f32 se, f32 deltaLow, f32 deltaHigh, f32 df);

// Degrees of freedom of the estimate of a standard deviation that the samples share: their own,
// entered, or those of an analysis of variance with more groups than are compared. entry is the
// position of what is entered, or 0.
f32 CommonSdDf(const SampleValues& sizes, i16 entry);

// Degrees of freedom of the test with unequal standard deviations (Satterthwaite, 1946).
f32 SatterthwaiteDf(f32 sd1, f32 sd2, f32 n1, f32 n2);

// p-value of a t statistic for NoOfTails and LeftTail: the estimate, its H0 value (or the two
// limits) and its standard error. 0 if se <= 0.
f32 TPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 df);

} // namespace quorvanta
