// TESTNOR: tests of one or two means with known standard deviations (z-test); on the log scale, of
// medians of lognormal distributions. Also what every test of means shares: what the parameters of
// its list say.
#pragma once

#include "core/types.h"
#include "tests/locationeffect.h"

namespace quorvanta {

class SampleValues;
struct MeansList;

struct TESTNOR {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
};

// The chosen forms, as the current parameter list was built from them.
extern i16 NorH1Mode;  // H1 entered as value (0), difference (1), ratio (2)
extern i16 NorSd2Mode; // second standard deviation: value (0), difference (1), ratio (2)
extern i16 NorUneqSd;  // 1: the two groups have standard deviations of their own

// The parameter list of the current test of means.
const MeansList& CurrentMeans();

// What the parameters say: effect and standard error.
struct MeansValues : LocationEffect {
    f32 Se = 0;
};

MeansValues ReadMeans();

// Standard error of a mean, or of a difference of two, from the standard deviations of the samples
// or a common one.
f32 MeanStandardError(const SampleValues& deviations, const SampleValues& sizes);

// The parts of the simulation that do not depend on how the variance is known. What is simulated,
// prepared for it: the locations under H0 and H1, and the standard deviations.
void PrepareMeans();
// One sample has the location itself; of two the first one has the mean 0 and the second one the
// difference.
struct SimMeans {
    f32 First;
    f32 Second;
};
SimMeans MeansOf(bool isH1);
// Is a sample of the study empty?
bool HasEmptySample(i16 n1, i16 n2);
// The mean of the one sample, or the difference of the two means, none of them empty.
f32 SimEstimate(i16 n1, i16 n2);

} // namespace quorvanta
