// TESTLOGRANK: the log-rank test of two groups with exponential survival times, and the tests of
// one or two hazards by maximum likelihood: accrual, losses, study time, and in their place the
// number of events or the time at risk.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTLOGRANK {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);

    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
};

// The approach of a survival test, by its test number; 0 for any other test.
enum HazardKind : i16 {
    NoHazardKind = 0,
    SchoenfeldKind = 1,
    FreedmanKind = 2,
    NonInferiorityKind = 3,
    LachinFoulkesKind = 4,   // log-rank test by the difference of hazards
    GeorgeDesuKind = 5,      // by the logarithms of hazards, pooled under H0
    RubensteinKind = 6,      // by the logarithms of hazards, not pooled
    MlLachinFoulkesKind = 7, // the same three as tests of exponential survival
    MlGeorgeDesuKind = 8,
    MlRubensteinKind = 9,
    SimulatedStrataKind = 10
};
HazardKind HazardApproach(i16 testNo);

// The chosen forms, as the current parameter list was built from them.
extern i16 LRHazardKind;
extern i16 LRInputMedian;      // 1: survival is entered as medians
extern i16 LRInputIncidence;   // 1: as incidences in one unit of time
extern i16 LRParBase;          // position of the first parameter after the hazards
extern i16 LRLossKind;         // 1: one loss rate serves all, 0: each group has its own
extern i16 LRSecondHazardMode; // second hazard as value (0), difference (1), ratio (2)
enum GivenQuantity : i16 { GivenSize, GivenEvents, GivenTimeAtRisk };
extern i16 LRGiven;

// The accrual model, by its number in ranksurv/accrual.h.
i16 LRAccrualKind();

// Asymptotic variance of the hazard estimate per patient: lambda^2 over the probability of an
// event, with the accrual and study time of the current list. lambda > 0, the hazard of losses
// eta >= 0.
f32 HazardVar(f32 lambda, f32 eta);

// Standard error of lambda2 - lambda1 under H0, for the difference of two hazards by maximum
// likelihood: pooled where group 1 has no losses. A loss rate turns the pooling off, deliberately.
f32 PooledSE(f32 n1, f32 n2, f32 lambda1, f32 lambda2, f32 eta1, f32 eta2);

// The hazard of a survival parameter in the form of input of the current list: above 0, incidences
// below 1.
f32 HazardFromInput(f32 value);

} // namespace quorvanta
