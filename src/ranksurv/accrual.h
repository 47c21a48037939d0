// How patients enter a study of survival times, and how long they are followed: the parameters
// accrual rate (or the number of intervals of a table), accrual time and study time.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"
#include "montecarlo/survivalsim.h"

#include <array>
#include <optional>
#include <vector>

namespace quorvanta {

// The accrual model.
inline constexpr i16 UniformAccrual = 1; // or none: all patients are there from the start
inline constexpr i16 ExponentialAccrual = 2;
inline constexpr i16 TabulatedAccrual = 3;

class Accrual {
  public:
    // Adds the three parameters to the list. A table stands in the place of the rate.
    void Add(bool isTabulated);

    // Is accrual over when the study ends, and is the table, if there is one, that of this accrual
    // time? Only exponential accrual may be cut off.
    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    // Have the parameters one value each, so that a grid can be evaluated with them?
    bool HasGridValues() const;

    // The model of the values as they are now.
    i16 Model() const;

    // The share of the patients who leave the study before its end, by an event or as lost to
    // follow-up, when they leave at this total rate, above 0. Above 0.
    f64 ShareLeaving(f64 rate) const;
    // The same by a time before the end, of all who enter until then or later.
    f64 ShareLeavingBy(f64 rate, f64 time) const;
    f64 StudyTime() const;

    // Without a table: the share of the patients whom the study follows for this time or longer, if
    // they stay; and the time up to which that is the share of all who enter.
    f64 ShareFollowed(f64 time) const;
    f64 Certain() const;

    // Accrual time, study time and accrual rate, of which all shares follow; none where there is a
    // table, or an accrual time of 0 that is still to become the shortest.
    std::optional<std::array<f32, 3>> Times() const;

    // Accrual and study time of the simulated studies.
    void Prepare(SurvivalPlan& plan) const;

    // The table of accrual, for the number of its intervals.
    bool IsTablePar(i16 parNo) const;
    std::vector<Grid> Grids() const;

  private:
    f64 TabulatedShare(f64 rate, f64 accrual, f64 study) const;

    i16 rate_ = 0;      // the shape g of exponential accrual; 0: a table
    i16 intervals_ = 0; // of the table; 0: none
    i16 time_ = 0;      // accrual time
    i16 study_ = 0;     // study time
};

// Asymptotic variance of the estimate of a hazard lambda > 0, per patient: lambda^2 over the
// probability of an event, with losses at the rate eta >= 0.
f32 HazardVariance(const Accrual& accrual, f32 lambda, f32 eta);

// The share that leaves until the study ends at time study, when patients enter over the times from
// 0 to accrual with a density in proportion to exp(-shape s), and leave at this total rate. Where
// the study ends first, those who have not yet entered count as staying.
f64 ShareLeaving(f64 rate, f64 shape, f64 accrual, f64 study);

} // namespace quorvanta
