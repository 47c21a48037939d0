// The life-table test of Mantel and Haenszel as a plan sees it: what is expected in the intervals
// of the study, and the power that follows; and what the lists of all its survival models share.
#pragma once

#include "core/types.h"
#include "montecarlo/survivalsim.h"
#include "ranksurv/accrual.h"
#include "tests/lists/samples.h"

#include <functional>
#include <vector>

namespace quorvanta {

// The chances of a patient at risk at the start of an interval and followed to its end: of an event
// if nobody were lost, of a loss if there were no events. 0 to 1.
struct IntervalChances {
    f64 Event = 0;
    f64 Loss = 0;
};

// The same for one group, over the intervals between these bounds (the first one 0, rising): from
// its survival function, 1 at 0 and not rising, and the hazard of losses, 0 or more.
std::vector<IntervalChances> IntervalProbs(const std::vector<f64>& bounds,
                                           const std::function<f64(f64)>& survival, f64 lossHazard);

// What is expected of one patient of a group in one interval: to be in the risk set, where those
// who withdraw count as a half, and to have the event there. 0 to 1, no more events than at risk.
struct IntervalShare {
    f64 AtRisk = 0;
    f64 Events = 0;
};

// The same for all intervals between these bounds; followed(t) is the share of the patients that
// the study follows for t or longer, if nothing happens to them: smooth but for a corner at
// certain, up to where it is as at 0.
std::vector<IntervalShare> LifeTableShares(const std::vector<f64>& bounds,
                                           const std::vector<IntervalChances>& chances,
                                           const std::function<f64(f64)>& followed, f64 certain);

// Expectations of the sums of Mantel and Haenszel.
struct MantelHaenszel {
    f64 U = 0; // events of group 1, minus those expected without a difference of the groups
    f64 V = 0; // its variance; 0 or more
};

// From the shares of both groups, over the same intervals, with groups of these sizes.
MantelHaenszel ExpectedSums(const std::vector<IntervalShare>& group1,
                            const std::vector<IntervalShare>& group2, f64 n1, f64 n2);

// The ends of intervals of that length, from 0 up to the study time, which cuts the last one.
std::vector<f64> IntervalBounds(f64 length, f64 study);

// Intervals that a life table may have: a shorter length than that of so many is refused.
inline constexpr i16 MaxLifeTableIntervals = 300;

// Two groups of one survival model, and the study: the end of the list of a life-table test.
class LifeTableStudy {
  public:
    // Adds accrual, study time, the length of the intervals unless a table has them, and sizes.
    void Add(bool hasLength);

    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    // Accrual and study time of the simulated studies.
    void PrepareSimulation(SurvivalPlan& plan) const;

    // Is the unknown anything but level, power and sizes, so that the power may turn with it?
    bool HasTurningUnknown() const;

    // Its intervals; a table's own, which start at these times, cut at the end of the study.
    std::vector<f64> Bounds() const;
    std::vector<f64> Bounds(const std::vector<f64>& starts) const;

    // The shares of both groups, by the chances of either. They are remembered as long as nothing
    // that they follow from changes: a search for a size needs them once.
    using Chances = std::function<std::vector<IntervalChances>(i16 group)>;
    void Prepare(const std::vector<f64>& bounds, const Chances& chances);

    // Power minus the power entered. A survival that is entered as a time, which is longer with
    // fewer events, turns the direction.
    f64 PowerEq(bool isTime) const;

  private:
    f64 Study() const;
    std::vector<f64> PreparedFrom() const;

    Accrual accrual_;
    i16 study_ = 0;
    i16 length_ = 0; // 0: a table has the intervals
    SampleValues sizes_;
    i16 sizesParNo_ = 0;
    std::vector<f64> preparedFrom_;
    std::vector<IntervalShare> shares_[2];
};

// Is it a life-table test, whose list has the length of the intervals? Other tests of the same
// survival models are only simulated.
bool IsLifeTableTest();
// The plan of a simulated study of the test, without its groups.
SurvivalPlan PlanOfTest();

// --- The effect ---------------------------------------------------------------------------------

// Keeps the search for one of two survival parameters on its side of the other.
void NarrowEffect(const SampleValues& effect, f64& lower, f64& upper);
// Then keeps the search on one side of where the power turns: near to no effect.
void KeepNearNoEffect(const SampleValues& effect, const LifeTableStudy& study, f64& lower,
                      f64& upper, f64 (*residual)());

} // namespace quorvanta
