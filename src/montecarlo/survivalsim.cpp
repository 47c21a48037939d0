#include "montecarlo/survivalsim.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "montecarlo/simstudy.h"
#include "numeric/fastlog.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace quorvanta {

SurvivalPlan SimSurvival;

namespace {

// The study so far, by stratum, and work arrays, all of which keep their memory.
struct Drawn {
    i16 Size = 0;
    SurvivalRecord Record;
};
std::vector<Drawn> drawn;
SurvivalRecord added;
SeenSurvival seen;

template <class T>
void Append(Array1<T>& to, int before, std::span<const T> more) {
    to.ReDimPreserve(before + static_cast<int>(more.size()));
    std::ranges::copy(more, to.Raw().begin() + before);
}

// The uniform entry times of a table's accrual time, moved to where the table has them.
void EnterByTable(SurvivalRecord& record) {
    const auto& ends = SimSurvival.AccrualEnds;
    const auto& accrued = SimSurvival.Accrued;
    for (f32& entry : record.Entry.Raw()) {
        const f64 share = f64{entry} / f64{SimSurvival.AccrualTime};
        std::size_t row = 0;
        while (row + 1 < ends.size() && share > accrued[row])
            ++row;
        const f64 before = row == 0 ? 0 : accrued[row - 1];
        const f64 begin = row == 0 ? 0 : ends[row - 1];
        const f64 part = accrued[row] > before ? (share - before) / (accrued[row] - before) : 1;
        entry = Single(begin + MinOf(1, part) * (ends[row] - begin));
    }
}

void Draw(const SurvivalStratum& stratum, i16 n1, i16 n2, bool isH1, SurvivalRecord& record) {
    const SurvivalPlan& plan = SimSurvival;
    record.ReDim(n1 + n2);
    if (plan.DistrNo == SimPiecewise)
        SimSurvivalPiecewise(n1, n2, plan.Table.Starts, plan.Table.Null, plan.Table.Hazard1,
                             plan.Table.Hazard2, isH1, plan.Table.Loss1, plan.Table.Loss2,
                             plan.AccrualTime, plan.AccrualShape, record);
    else
        SimSurvivalTwoGroups(n1, n2, isH1 ? stratum.Scale1 : stratum.NullScale1,
                             isH1 ? stratum.Scale2 : stratum.NullScale2, 1, stratum.Loss1,
                             stratum.Loss2, plan.AccrualTime, plan.AccrualShape, record);
    if (!plan.AccrualEnds.empty())
        EnterByTable(record);
}

f32 TimeOfAnalysis() {
    const f32 time = SimTime.HighBound() >= SimStage ? SimTime(SimStage) : 0;
    return time > 0 ? time : SimSurvival.StudyTime;
}

// Of the F distribution. Without an event in a group nothing is known of its hazard.
f32 FPValue(const FRatio& ratio) {
    if (ratio.Df1 == 0 || ratio.Df2 == 0)
        return 1;
    const bool isTime = SimSurvival.Direction < 0;
    const f32 f = isTime ? Single(1 / f64{ratio.F}) : ratio.F;
    const f64 below{FCdf(f, isTime ? ratio.Df2 : ratio.Df1, isTime ? ratio.Df1 : ratio.Df2)};
    if (NoOfTails == TwoSided)
        return Single(2 * MinOf(below, 1 - below));
    return Single(LeftTail == True ? below : 1 - below);
}

// An estimate of the effect with its variance, against H0 and the limits.
f32 EffectPValue(f64 effect, f64 variance) {
    const SurvivalPlan& plan = SimSurvival;
    if (!(variance > 0))
        return 1;
    return NorPValue(Single(plan.Direction * effect), plan.Null, Single(std::sqrt(variance)),
                     plan.Left, plan.Right, 0);
}

f32 RatePValue() {
    const EventCounts counts = CountEvents(seen);
    const bool isRatio = SimSurvival.Method == SurvivalMethod::LogRateRatio;
    const RateEffect effect = SimSurvival.Samples == OneSample
                                  ? (isRatio ? LogRate(counts) : Rate(counts))
                                  : (isRatio ? LogRateRatio(counts) : RateDifference(counts));
    return EffectPValue(effect.X, effect.V);
}

// Scores and variances of the strata add up.
f32 ScorePValue() {
    SurvivalScore sum;
    const f32 time = TimeOfAnalysis();
    for (const Drawn& stratum : drawn) {
        seen.CutAt(time, stratum.Size, stratum.Record);
        const SurvivalScore score = SurvivalStat(seen);
        sum.S += score.S;
        sum.V += score.V;
    }
    SimStudy.Sum1 = Single(sum.S);
    SimStudy.Sum2 = Single(sum.V);
    if (SimSurvival.Null != 0 || NoOfTails == TwoOneSided)
        return EffectPValue(sum.V > 0 ? sum.S / sum.V : 0, sum.V > 0 ? 1 / sum.V : 0);
    const f64 z = sum.V > 0 ? sum.S / std::sqrt(sum.V) : 0;
    return NorPValue(Single(SimSurvival.Direction * z), 0, 1, 0, 0, 0);
}

} // namespace

SurvivalMethod SurvivalMethodOf(i16 testNo) {
    const auto isIn = [testNo](i16 first, i16 last) { return testNo >= first && testNo <= last; };
    constexpr i16 exponentialF = 95;
    if (isIn(26, 30))
        return SurvivalMethod::LifeTable;
    if (isIn(85, 89))
        return SurvivalMethod::Gehan;
    if (isIn(90, 94))
        return SurvivalMethod::CoxMantel;
    if (isIn(95, 99))
        return testNo == exponentialF ? SurvivalMethod::CoxF : SurvivalMethod::CoxFHazard;
    if (isIn(100, 104))
        return SurvivalMethod::Peto;
    if (testNo == 203)
        return SurvivalMethod::RateDifference;
    if (isIn(204, 205) || testNo == 77 || testNo == 84)
        return SurvivalMethod::LogRateRatio;
    return SurvivalMethod::LogRank;
}

void SimSurvivalSample(i16 n1, i16 n2, bool isH1) {
    SimDistrNo = SimSurvival.DistrNo;
    SimDistrPar = SimSurvival.Shape;
    const auto& strata = SimSurvival.Strata;
    drawn.resize(strata.size());
    for (std::size_t i = 0; i < strata.size(); ++i) {
        const bool isOne = strata.size() == 1;
        const i16 new1 = isOne ? n1 : strata[i].N1;
        const i16 new2 = isOne ? n2 : strata[i].N2;
        Drawn& stratum = drawn[i];
        if (SimStage <= 1) {
            Draw(strata[i], new1, new2, isH1, stratum.Record);
            stratum.Size = static_cast<i16>(new1 + new2);
            continue;
        }
        if (n1 + n2 < 1)
            continue;
        Draw(strata[i], new1, new2, isH1, added);
        Append<f32>(stratum.Record.Entry, stratum.Size, added.Entry.Raw());
        Append<f32>(stratum.Record.Time, stratum.Size, added.Time.Raw());
        Append<f32>(stratum.Record.Group, stratum.Size, added.Group.Raw());
        Append<i16>(stratum.Record.Status, stratum.Size, added.Status.Raw());
        stratum.Size = ToI16(static_cast<f64>(stratum.Size + new1 + new2));
    }
}

f32 SimSurvivalTest(i16 n1, i16 n2) {
    if (n1 == 0 || (n2 == 0 && SimSurvival.Samples != OneSample))
        return 1;
    switch (SimSurvival.Method) {
    case SurvivalMethod::CoxF:
    case SurvivalMethod::CoxFHazard:
    case SurvivalMethod::LogRateRatio:
    case SurvivalMethod::RateDifference:
        seen.CutAt(TimeOfAnalysis(), drawn[0].Size, drawn[0].Record);
        break;
    default:
        return ScorePValue();
    }
    if (SimSurvival.Method == SurvivalMethod::CoxF)
        return FPValue(CoxFStat(seen, TimeScale::Time));
    if (SimSurvival.Method == SurvivalMethod::CoxFHazard)
        return FPValue(CoxFStat(seen, TimeScale::Hazard));
    return RatePValue();
}

SurvivalScore SurvivalStat(const SeenSurvival& record) {
    switch (SimSurvival.Method) {
    case SurvivalMethod::Gehan:
        return GehanZ(record);
    case SurvivalMethod::CoxMantel:
        return CoxMantelZ(record);
    case SurvivalMethod::Peto:
        return PetoZ(record);
    case SurvivalMethod::LifeTable:
        return LifeTableZ(record, SimSurvival.IntervalStarts);
    default:
        return LogRankZ(record);
    }
}

} // namespace quorvanta
