// GROUPSEQCP: conditional and predictive power, seen from an interim look: the chance that a trial
// ends in rejection, given what has been observed so far.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct GROUPSEQCP {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// The outcome, by the test number.
inline constexpr i16 CpMeans = 0;
inline constexpr i16 CpProportions = 1;
inline constexpr i16 CpHazards = 2;

extern i16 CpOutcome;
extern i16 CpPredictive; // -1: predictive power
extern i16 CpFuture;     // what is assumed for the rest of the trial: 0 design, 1 trend, 2 null
extern i16 CpH1Form;     // how H1 is entered

// The equation: the power from the current values minus ParValue(1); 99999 where the drift points
// away from the tail of a one-sided test, and for two one-sided tests, which have none. Whatever
// the analysis is, the rest of the trial has one analysis only.
//
// Conditional power: J. M. Lan and J. Wittes, Biometrics 44, 1988, 579-585; predictive power: D. J.
// Spiegelhalter, L. S. Freedman and P. R. Blackburn, Controlled Clinical Trials 7, 1986, 8-17.
f64 CpRoot();

} // namespace quorvanta
