// TESTNOR: tests of one or two means with known standard deviations (z-test); on the log scale, of
// medians of lognormal distributions. Also what every test of means shares: its parameter list and
// the reading of it.
#pragma once

#include "core/types.h"

namespace quorvanta {

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

// Where the parameters of the current test of means stand; 0 where there is none.
struct MeansList {
    bool LogScale = false; // locations are medians, the effect is a ratio
    i16 H0 = 0;            // H0 value; with two one-sided tests the left limit, the right one next
    i16 H1 = 0;            // H1 value or effect; the first of two means
    i16 Mean2 = 0;         // the second of two means
    i16 Sd1 = 0;
    i16 Sd2 = 0;
    i16 Size1 = 0;
    i16 Size2 = 0;
    i16 Extra = 0; // entered degrees of freedom or number of groups
};

const MeansList& CurrentMeans();

// What the parameters say: effect, standard error, sizes and standard deviations. On the log scale
// the effect is a difference of natural logarithms.
struct MeansValues {
    f32 Delta = 0;
    f32 DeltaLow = 0;
    f32 DeltaHigh = 0;
    f32 Se = 0;
    f32 Sd1 = 0;
    f32 Sd2 = 0;
    f32 N1 = 0;
    f32 N2 = 0;
};

MeansValues ReadMeans();

// Adds the entry for the degrees of freedom of an estimated standard deviation that is ticked, if
// one is: the degrees of freedom themselves or the number of groups. Answers its position, or 0.
i16 AddDfEntry();

} // namespace quorvanta
