#include "ranksurv/lifetable.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/trialvalue.h"

#include <cmath>

namespace quorvanta {

namespace {

// A cumulated hazard beyond this leaves nobody.
constexpr f64 EndlessHazard = 75;

// A chance to be still at risk that no study notices.
constexpr f64 Nobody = 1e-15;

// The largest share that leaves anybody.
constexpr f64 AlmostAll = 0.9999999999999999;

// The end of an interval this close to that of the study, in its lengths, is the end of the study.
constexpr f64 SameTime = 1e-5;

f64 Within01(f64 x) {
    return MaxOf(0, MinOf(1, x));
}

// -ln(1 - p).
f64 Hazard(f64 p) {
    return p < 1 ? MinOf(EndlessHazard, -std::log1p(-p)) : EndlessHazard;
}

// The mean of a smooth function over low..high, by the rule of Gauss and Legendre for five points
// (Abramowitz and Stegun 1964, table 25.4).
template <class Function>
f64 Mean(f64 low, f64 high, Function&& f) {
    constexpr f64 nodes[] = {0.538469310105683, 0.906179845938664};
    constexpr f64 weights[] = {0.478628670499366, 0.236926885056189};
    constexpr f64 centralWeight = 0.568888888888889;
    const f64 middle = (low + high) / 2;
    const f64 half = (high - low) / 2;
    f64 sum = centralWeight * f(middle);
    for (int i = 0; i < 2; ++i)
        sum += weights[i] * (f(middle - half * nodes[i]) + f(middle + half * nodes[i]));
    return sum / 2;
}

// One interval of one group: patients leave at constant hazards in it, cumulated over all of it.
struct Exits {
    f64 Event;
    f64 Loss;

    f64 Total() const { return Event + Loss; }
    f64 Share() const { return -std::expm1(-Total()); }

    // The share with an event seen, of those at risk at the start, where followed(u) are followed
    // beyond the part u of the interval; smooth but for a corner at u = corner. The integral over
    // the share that has left, y = 1 - exp(-c u), of what is followed then: finite for any hazard.
    template <class Function>
    f64 Seen(Function&& followed, f64 corner) const {
        const f64 c = Total();
        if (!(c > 0))
            return 0;
        const auto atShare = [c, &followed](f64 y) {
            return followed(-std::log1p(-MinOf(y, AlmostAll)) / c);
        };
        const f64 all = Share();
        const f64 split = MinOf(all, -std::expm1(-c * corner));
        return Event / c *
               (split * Mean(0, split, atShare) + (all - split) * Mean(split, all, atShare));
    }
};

} // namespace

std::vector<IntervalChances> IntervalProbs(const std::vector<f64>& bounds,
                                           const std::function<f64(f64)>& survival,
                                           f64 lossHazard) {
    std::vector<IntervalChances> chances;
    f64 before = 1;
    for (std::size_t j = 1; j < bounds.size(); ++j) {
        // An approximation may rise by its error where it should fall.
        const f64 after = before > 0 ? MinOf(before, Within01(survival(bounds[j]))) : 0;
        const f64 loss = MinOf(EndlessHazard, lossHazard * (bounds[j] - bounds[j - 1]));
        chances.push_back({before > 0 ? 1 - after / before : 1, -std::expm1(-loss)});
        before = after;
    }
    return chances;
}

// In interval j, of length h from t, with A the chance still to be at risk and F(v) the share
// followed for v or longer, A F(t) are at risk at the start. Events at the constant hazard a/h and
// losses at b/h, c = a + b, leave
//   D = A a/h times the integral of exp(-c u/h) F(t + u) over u = 0..h
// with an event that is seen, and A exp(-c) F(t + h) at risk at the next start. All others
// withdraw: those lost, and those whose follow-up ends in the interval. That is what the half of an
// interval stands for that patients who are entering are followed on the average.
std::vector<IntervalShare> LifeTableShares(const std::vector<f64>& bounds,
                                           const std::vector<IntervalChances>& chances,
                                           const std::function<f64(f64)>& followed, f64 certain) {
    std::vector<IntervalShare> shares;
    f64 atRisk = 1;
    for (std::size_t j = 0; j < chances.size(); ++j) {
        if (atRisk < Nobody) {
            shares.push_back({});
            continue;
        }
        const f64 start = bounds[j];
        const f64 length = bounds[j + 1] - start;
        const Exits exits{Hazard(chances[j].Event), Hazard(chances[j].Loss)};
        const f64 entering = atRisk * followed(start);
        const f64 events =
            atRisk *
            (certain >= bounds[j + 1]
                 ? followed(start) * (exits.Total() > 0 ? exits.Event / exits.Total() : 0) *
                       exits.Share()
                 : exits.Seen([&](f64 u) { return followed(start + u * length); },
                              Within01((certain - start) / length)));
        atRisk *= (1 - chances[j].Event) * (1 - chances[j].Loss);
        const f64 withdrawn = MaxOf(0, entering - events - atRisk * followed(bounds[j + 1]));
        shares.push_back({entering - withdrawn / 2, events});
    }
    return shares;
}

// N. Mantel and W. Haenszel, Journal of the National Cancer Institute 22, 1959, 719-748; N. Mantel,
// Cancer Chemotherapy Reports 50, 1966, 163-170; the expectations over intervals as E. Lakatos,
// Biometrics 44, 1988, 229-241, has them.
//
// With risk sets n1 and n2 of n the statistic sums U = d1 - d n1/n and the hypergeometric variance
// V = d (n - d) n1 n2/(n^2 (n - 1)). Over the binomial distribution of d, with p = E(d)/n, the
// expectation of d (n - d) is n (n - 1) p (1 - p), so that the n - 1 cancels: the unconditional
// variance is n1 n2/n p (1 - p). It is in proportion to the sizes, and has no pole where an
// interval is expected to have one patient.
MantelHaenszel ExpectedSums(const std::vector<IntervalShare>& group1,
                            const std::vector<IntervalShare>& group2, f64 n1, f64 n2) {
    MantelHaenszel sums;
    for (std::size_t j = 0; j < group1.size(); ++j) {
        const f64 risk1 = n1 * group1[j].AtRisk;
        const f64 risk2 = n2 * group2[j].AtRisk;
        const f64 risk = risk1 + risk2;
        if (!(risk1 > 0 && risk2 > 0))
            continue;
        const f64 d1 = n1 * group1[j].Events;
        const f64 d2 = n2 * group2[j].Events;
        const f64 p = MinOf(1, (d1 + d2) / risk);
        sums.U += (d1 * risk2 - d2 * risk1) / risk;
        sums.V += risk1 / risk * risk2 * p * (1 - p);
    }
    return sums;
}

std::vector<f64> IntervalBounds(f64 length, f64 study) {
    std::vector<f64> bounds{0};
    for (f64 j = 1; j < MaxLifeTableIntervals && j * length < study - SameTime * length; ++j)
        bounds.push_back(j * length);
    bounds.push_back(study);
    return bounds;
}

void LifeTableStudy::Add(bool hasLength) {
    accrual_.Add(false);
    study_ = NoOfPar;
    length_ = hasLength ? AddPar(Kind::IntervalLength) : i16{0};
    sizes_ = AddSizes();
    sizesParNo_ = static_cast<i16>(NoOfPar - 1);
}

f64 LifeTableStudy::Study() const {
    return f64{Single(ParValue(study_))};
}

bool LifeTableStudy::Check() const {
    if (!accrual_.Check() || !sizes_.Check())
        return false;
    return length_ == 0 || UnknownParNo == length_ || UnknownParNo == study_ ||
           CheckRange(length_, ParValue(study_) / MaxLifeTableIntervals,
                      ParMax(Kind::IntervalLength));
}

void LifeTableStudy::Narrow(f64& lower, f64& upper) const {
    accrual_.Narrow(lower, upper);
    sizes_.Narrow(lower, upper);
    if (length_ == 0)
        return;
    if (UnknownParNo == length_)
        lower = MaxOf(lower, ParValue(study_) / MaxLifeTableIntervals);
    else if (UnknownParNo == study_)
        upper = MinOf(upper, ParValue(length_) * MaxLifeTableIntervals);
}

void LifeTableStudy::PrepareSimulation(SurvivalPlan& plan) const {
    accrual_.Prepare(plan);
    if (length_ != 0)
        plan.IntervalStarts = Bounds();
}

bool LifeTableStudy::HasTurningUnknown() const {
    return UnknownParNo > PowerParNo && UnknownParNo < sizesParNo_;
}

std::vector<f64> LifeTableStudy::Bounds() const {
    return IntervalBounds(f64{Single(ParValue(length_))}, Study());
}

std::vector<f64> LifeTableStudy::Bounds(const std::vector<f64>& starts) const {
    std::vector<f64> bounds;
    for (const f64 start : starts)
        if (start < Study())
            bounds.push_back(start);
    bounds.push_back(Study());
    return bounds;
}

// Everything of the list but level, power and sizes.
std::vector<f64> LifeTableStudy::PreparedFrom() const {
    std::vector<f64> values{static_cast<f64>(TestNo)};
    for (i16 i = PowerParNo + 1; i < sizesParNo_; ++i) {
        values.push_back(ParKind(i));
        values.push_back(ParValue(i));
    }
    return values;
}

void LifeTableStudy::Prepare(const std::vector<f64>& bounds, const Chances& chances) {
    const std::vector<f64> from = PreparedFrom();
    // What a table holds isn't among the values.
    if (length_ != 0 && from == preparedFrom_)
        return;
    const auto followed = [this](f64 t) { return accrual_.ShareFollowed(t); };
    for (const i16 group : {i16{1}, i16{2}})
        shares_[group - 1] = LifeTableShares(bounds, chances(group), followed, accrual_.Certain());
    preparedFrom_ = from;
}

f64 LifeTableStudy::PowerEq(bool isTime) const {
    const MantelHaenszel sums =
        ExpectedSums(shares_[0], shares_[1], f64{sizes_.First()}, f64{sizes_.Second()});
    const f32 se = ErrorAboveZero(std::sqrt(sums.V));
    return NormalPowerEq({.Effect = Single(isTime ? sums.U : -sums.U), .Se0 = se, .Se1 = se});
}

bool IsLifeTableTest() {
    return SurvivalMethodOf(TestNo) == SurvivalMethod::LifeTable;
}

SurvivalPlan PlanOfTest() {
    SurvivalPlan plan;
    plan.Method = SurvivalMethodOf(TestNo);
    return plan;
}

// A ratio or a difference entered beside a first value that is sought says itself on which side the
// second one is.
void NarrowEffect(const SampleValues& effect, f64& lower, f64& upper) {
    effect.Narrow(lower, upper);
    if (effect.FirstIsUnknown() && effect.SecondForm() == AsValue)
        RightTailLimit(lower, upper, f64{effect.Second()});
    else if (effect.HasUnknown() && !effect.FirstIsUnknown())
        LeftTailLimit(lower, upper,
                      InForm(effect.SecondForm(), effect.FirstAt(0), effect.FirstAt(0)));
}

namespace {

f64 ResidualAt(f64 x, f64 (*residual)()) {
    const TrialValue trial(x);
    return residual();
}

// With too little power at both limits, far apart: ends the search behind the highest power. A
// search by proportion finds it, where hazards without measure, of which intervals tell next to
// nothing, take up nearly all of the way and have a small peak of their own.
void EndBehindHighest(f64 lower, f64& upper, f64 (*residual)()) {
    constexpr f64 steps = 60;
    constexpr f64 farApart = 1000;
    if (!(lower > 0 && upper > farApart * lower) || ResidualAt(lower, residual) >= 0 ||
        ResidualAt(upper, residual) >= 0)
        return;
    const auto point = [=](f64 k) { return lower * std::pow(upper / lower, k / steps); };
    f64 best = 0;
    f64 highest = ResidualAt(lower, residual);
    for (f64 k = 1; k < steps; ++k)
        if (const f64 at = ResidualAt(point(k), residual); at > highest) {
            best = k;
            highest = at;
        }
    upper = point(best + 1);
}

} // namespace

void KeepNearNoEffect(const SampleValues& effect, const LifeTableStudy& study, f64& lower,
                      f64& upper, f64 (*residual)()) {
    if (!study.HasTurningUnknown())
        return;
    const bool isSecond = effect.HasUnknown() && !effect.FirstIsUnknown();
    const bool isFirst = effect.FirstIsUnknown() && effect.SecondForm() == AsValue;
    const Side near = isSecond ? Opposite(SideOfTail()) : isFirst ? SideOfTail() : Side::Below;
    if (near == Side::Below)
        EndBehindHighest(lower, upper, residual);
    KeepOneSideOfTurn(lower, upper, near, residual);
}

} // namespace quorvanta
