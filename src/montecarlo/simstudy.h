// One simulated study: what the generators of the test modules add to, and their statistics read.
//
// A test that can be simulated has, beside its other operations,
//   GetSimPar()                once before the run: reads the parameters into the values below;
//   SimSample(n1, n2, isH1)    draws n1 and n2 new subjects under H0 or H1 and adds them to
//                              SimStudy;
//   SimTest(n1, n2)            the p-value from all data so far, n1 and n2 being the sizes so
//                              far; 1 where a group is empty;
// and an interval analysis has SimInterval() in place of the last two, which draws a sample and
// says in SimStudy whether its interval covers the true value and whether it is narrow enough.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

namespace quorvanta {

// The record of one simulated study, empty at the start of each.
struct SimStudyRecord {
    f32 Sum1 = 0, Sum2 = 0, Sum3 = 0, Sum4 = 0, Sum5 = 0, Sum6 = 0; // running sums of a test
    f32 Sum7 = 0, Sum8 = 0, Sum9 = 0, Sum10 = 0, Sum11 = 0;
    Array1<f32> Value{1, 0}; // (1..n) pooled values
    Array1<f32> Group{1, 0}; // (1..n) the group of each value
    f32 Min1 = 99999;
    f32 Min2 = 99999;
    i16 Stop = 0; // -1: the trial ends after this analysis

    // The results of an interval analysis.
    bool Covers = false;   // the interval holds the true value
    bool IsNarrow = false; // it is as narrow as was asked for

    // All of it as above; the arrays keep their memory.
    void Reset();
};

extern SimStudyRecord SimStudy;

// The analysis within a study, 1..K.
extern i16 SimStage;

// Prepared values: locations and scales of the groups, the limits of two one-sided tests.
extern f32 SimLoc1;
extern f32 SimLoc2;
extern f32 SimScale1;
extern f32 SimScale2;
extern f32 SimLoLimit;
extern f32 SimHiLimit;

// (0..K) the sizes of the groups at each analysis, cumulated, and its study time where the analyses
// are made at times; 0 at 0. The run fills them from the sizes that are entered, before GetSimPar,
// which may change them.
extern Array1<i16> SimSize1;
extern Array1<i16> SimSize2;
extern Array1<f32> SimTime;

// (0..K) a p-value below RejectP(k) rejects H0 at analysis k, one above AcceptP(k) accepts it. Of
// an interval analysis RejectP(1) is the confidence level.
extern Array1<f32> RejectP;
extern Array1<f32> AcceptP;

extern i16 IsIntervalSim;   // -1: the analysis is a confidence interval
extern i16 IsEquivInterval; // -1: a test through an interval that is judged against limits

// n1 and n2 new subjects: draws of the family of SimDistrNo, in group 1 times s1, in group 2 times
// s2 plus d.
void SimTwoSamples(i16 n1, i16 n2, f32 d, f32 s1, f32 s2);

// n new subjects of one group: draws of that family, times scale, plus location.
void SimOneSample(i16 n, f32 group, f32 location, f32 scale);

// n new pairs of a bivariate normal distribution with correlation rho: their first members go to
// Value, the second ones to Group.
void SimPairs(i16 n, f32 rho);

} // namespace quorvanta
