// Simulated studies of survival: subjects who enter over time, have the event, are lost, or are
// seen without either until the analysis; and the p-value of what is seen. The test modules say in
// SimSurvival what their parameters mean for it, and hand their SimSample and SimTest over.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "montecarlo/survivalstat.h"

#include <vector>

namespace quorvanta {

// What a test is carried out with.
enum class SurvivalMethod {
    LogRank,
    Gehan,
    CoxMantel,
    CoxF,       // on times
    CoxFHazard, // on the cumulated hazards at the times
    Peto,
    LifeTable,
    LogRateRatio, // exponential survival by maximum likelihood
    RateDifference
};
// That of a test, by its number.
SurvivalMethod SurvivalMethodOf(i16 testNo);

// Two groups, or one, of one stratum. A scale is a factor on the standard times of the
// distribution.
struct SurvivalStratum {
    f32 NullScale1 = 1, NullScale2 = 1; // under H0
    f32 Scale1 = 1, Scale2 = 1;         // under H1
    f32 Loss1 = 0, Loss2 = 0;           // rates
    i16 N1 = 0, N2 = 0;                 // where there are several strata
};

// Hazards that are constant within intervals, for all of the study.
struct PiecewiseSurvival {
    Array1<f32> Starts; // (1..m), the last one the end of what is drawn
    Array1<f32> Null, Hazard1, Hazard2, Loss1, Loss2;
};

struct SurvivalPlan {
    SurvivalMethod Method = SurvivalMethod::LogRank;
    i16 Samples = 2;
    i16 DistrNo = 2; // as SimDistrNo, with its shape; piecewise: the table
    f32 Shape = 0;
    std::vector<SurvivalStratum> Strata{1};
    PiecewiseSurvival Table;

    f32 AccrualTime = 0;
    f32 AccrualShape = 0;
    std::vector<f64> AccrualEnds; // of a table: ends of its intervals,
    std::vector<f64> Accrued;     // and the shares of the patients by then
    f32 StudyTime = 0;

    std::vector<f64> IntervalStarts; // of a life table

    // -1: survival is entered as a time, so that the larger value is the smaller hazard.
    int Direction = 1;
    // The effect under H0 and the limits of two one-sided tests: logarithms of the hazard ratio, or
    // differences of hazards, times the direction; of one group the same of its hazard.
    f32 Null = 0, Left = 0, Right = 0;
};
extern SurvivalPlan SimSurvival;

// Draws new subjects, n1 and n2 of them or those of the strata, under H0 or H1.
void SimSurvivalSample(i16 n1, i16 n2, bool isH1);

// The p-value of what is seen at the study time, or at that of the analysis where it has one; 1
// where a group is empty, and for exponential survival where one has no event.
//
// A log-rank test of another null hypothesis than equal hazards, or of two limits, judges S/V,
// which estimates the logarithm of the hazard ratio with variance 1/V (S. Yusuf et al., Progress in
// Cardiovascular Diseases 27, 1985, 335-371); for equal hazards this is Z.
f32 SimSurvivalTest(i16 n1, i16 n2);

// The statistic of a record by the current plan: LogRankZ, GehanZ, CoxMantelZ, PetoZ or LifeTableZ.
SurvivalScore SurvivalStat(const SeenSurvival& seen);

} // namespace quorvanta
