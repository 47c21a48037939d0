// TESTLOGRANKNONPARAM: the log-rank test under proportional hazards, after Schoenfeld and after
// Freedman, from survival proportions at the end of the study; no model of survival is needed.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct TESTLOGRANKNONPARAM {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// The chosen forms, as the current parameter list was built from them.
extern i16 NPGivenSurvival; // 1: the effect is that of two survival proportions, 0: a hazard ratio
extern i16 NPGivenEvents;   // 1: the number of events is entered, 0: patients are
extern i16 NPMethod;        // 1: Schoenfeld, 2: Freedman

} // namespace quorvanta
