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

} // namespace quorvanta
