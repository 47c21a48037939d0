// Statistics of two groups of survival times, as a simulated study is judged by them.
//
// One direction for all: a positive Z, and a ratio above 1, says that group 2 has the larger
// hazard. A test whose survival is entered as a time turns it. S and V are a statistic and its
// variance under H0, Z = S/sqrt(V): without a variance, as where all are censored or a group is
// empty, 0.
//
// A study so far is cut at the time of its analysis. An event and a loss at the same time: the
// event comes first. Nothing here depends on the last bits of a library function, so that the
// counts of a simulation are those of every compiler.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "numeric/randdist.h"

#include <span>

namespace quorvanta {

// What is seen of a study at one time: subjects (1..Size).
struct SeenSurvival {
    int Size = 0;
    Array1<f32> Time;  // from entry to the event, the loss or the time of the analysis; 0 or more
    Array1<f32> Group; // 1 or 2
    Array1<i16> Cens;  // 1: without an event

    // The first n subjects of a record at study time t.
    void CutAt(f32 t, i16 n, const SurvivalRecord& record);
};

struct SurvivalScore {
    f32 Z = 0;
    f64 S = 0;
    f64 V = 0;
};

// Log-rank scores 1 - H for an event and -H else, H the cumulated hazard of all (R. Peto and J.
// Peto, Journal of the Royal Statistical Society A 135, 1972, 185-207), with the permutation
// variance.
SurvivalScore LogRankZ(const SeenSurvival& seen);

// How many subjects have an outcome that is clearly smaller, minus how many have one that is
// clearly larger (E. A. Gehan, Biometrika 52, 1965, 203-223; N. Mantel, Biometrics 23, 1967,
// 65-78).
SurvivalScore GehanZ(const SeenSurvival& seen);

// Events of group 2 minus its shares of the risk sets at the times of all (D. R. Cox, Journal of
// the Royal Statistical Society B 34, 1972, 187-220); at a tie each event has the risk set before
// all of them.
SurvivalScore CoxMantelZ(const SeenSurvival& seen);

// Scores S(t) + S(t-) - 1 for an event and S(t) - 1 else, S the survival of all (Peto and Peto
// 1972), with the permutation variance.
SurvivalScore PetoZ(const SeenSurvival& seen);

// The table of intervals that start at these times, the first one at 0 (N. Mantel and W. Haenszel,
// Journal of the National Cancer Institute 22, 1959, 719-748). An outcome at a bound belongs to the
// interval that begins there.
SurvivalScore LifeTableZ(const SeenSurvival& seen, std::span<const f64> starts);

// The mean time per event of group 1 over that of group 2, with 2 e1 and 2 e2 degrees of freedom; e
// the events (D. R. Cox, Biometrika 40, 1953, 354-360). 99999 where group 2 has no time.
struct FRatio {
    f32 F = 0;
    f32 Df1 = 0;
    f32 Df2 = 0;
};
enum class TimeScale {
    Time,  // as it is: exponential survival
    Hazard // the cumulated hazard of all at that time (D. R. Cox, JRSS B 26, 1964, 103-110)
};
FRatio CoxFStat(const SeenSurvival& seen, TimeScale scale);

// Events and times at risk of the groups.
struct EventCounts {
    i32 Events1 = 0;
    i32 Events2 = 0;
    f64 Time1 = 0;
    f64 Time2 = 0;
};
EventCounts CountEvents(const SeenSurvival& seen);

// The estimated effect of exponential survival and its variance; 0 as long as a group has no event.
struct RateEffect {
    f64 X = 0;
    f64 V = 0;
};
// ln((e2/T2)/(e1/T1)), 1/e1 + 1/e2.
RateEffect LogRateRatio(const EventCounts& counts);
// e2/T2 - e1/T1, e1/T1^2 + e2/T2^2.
RateEffect RateDifference(const EventCounts& counts);

} // namespace quorvanta
