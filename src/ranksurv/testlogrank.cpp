#include "ranksurv/testlogrank.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/records.h"
#include "groupseq/interim.h"
#include "montecarlo/simstudy.h"
#include "montecarlo/survivalsim.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "output/formatpar.h"
#include "ranksurv/accrual.h"
#include "ranksurv/groupsizes.h"
#include "ranksurv/hazards.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>

// Kinds 4 and 7: J. M. Lachin and M. A. Foulkes, Biometrics 42, 1986, 507-519, and J. M. Lachin,
// Controlled Clinical Trials 2, 1981, 93-113. Kinds 5 and 8: S. L. George and M. M. Desu, Journal
// of Chronic Diseases 27, 1974, 15-24. Kinds 6 and 9: L. V. Rubinstein, M. H. Gail and T. J.
// Santner, Journal of Chronic Diseases 34, 1981, 469-479.

namespace quorvanta {

i16 LRHazardKind;
i16 LRInputMedian;
i16 LRInputIncidence;
i16 LRParBase;
i16 LRLossKind;
i16 LRSecondHazardMode;
i16 LRGiven;

namespace {

SurvivalInput input;
Hypotheses hypotheses;
SampleValues losses;
Accrual accrual;
SampleValues oneSize; // of one sample
i16 oneTotal;         // of one sample: events, time at risk
GroupSizes sizes;     // of two

constexpr i16 NullParNo = 2;

bool IsRatioTest() {
    return LRHazardKind != LachinFoulkesKind && LRHazardKind != MlLachinFoulkesKind;
}

bool IsMaximumLikelihood() {
    return TestNo >= 203 && TestNo <= 205;
}

bool IsIntervalMember() {
    return TestNo == 77 || TestNo == 84;
}

// Patients, or what replaces them: no accrual, losses or study time then. A study that is simulated
// has patients.
bool IsGivenOffered() {
    return !IsIntervalMember() && CurrentWindowKind() != SimulationWindow;
}
bool SizeIsChosen() {
    return !IsGivenOffered() || IntParValue(Group::Given) == GivenSize;
}

i16 FirstParNo() {
    return NullParNo + (NoOfTails == TwoOneSided ? 2 : 1);
}

f32 Root(f64 variance) {
    return Single(std::sqrt(variance));
}

// --- The null hypothesis ------------------------------------------------------------------------

Form NullForm() {
    return IsRatioTest() ? AsRatio : AsDifference;
}

// A difference of hazards may be any; a ratio, and what medians and incidences are compared with,
// leads to a second value that has to be one.
bool HasNullRange() {
    return NoOfSamples == TwoSamples && (IsRatioTest() || input != SurvivalInput::Hazard);
}

Range SecondRange() {
    const i16 kind = TwoSurvivalKinds(input, IsRatioTest()).Second[AsValue];
    return {ParMin(kind), ParMax(kind)};
}

// The hazard that a null value or a limit stands for: of the only group, or of group 2 beside the
// true one of group 1.
f64 NullHazard(f32 null) {
    if (NoOfSamples == OneSample)
        return f64{HazardFromInput(null)};
    const f64 second = FromForm(NullForm(), f64{hypotheses.First()}, f64{null});
    if (!HasNullRange())
        return second;
    const auto [least, most] = SecondRange();
    return f64{HazardFromInput(Single(MinOf(most, MaxOf(least, second))))};
}

// How far the truth lies above a null value on the scale of the test. A longer median is a lower
// hazard, so there it is how far the hazard lies below.
f32 AboveNull(f32 hazard, f32 null) {
    const f64 nullHazard = NullHazard(null);
    const f64 above = IsRatioTest() ? std::log(f64{hazard} / nullHazard) : f64{hazard} - nullHazard;
    return Single(LRInputMedian == 1 ? -above : above);
}

bool CheckNull(i16 parNo) {
    const auto [least, most] = SecondRange();
    return CheckPair(FirstParNo(), parNo, least, most, NullForm());
}

// A sum and a product have their two sides in either order.
void NarrowNull(f64& lower, f64& upper, i16 parNo) {
    const i16 first = FirstParNo();
    if (UnknownParNo != parNo && UnknownParNo != first)
        return;
    const f64 partner = ParValue(UnknownParNo == parNo ? first : parNo);
    const auto [least, most] = InForm(NullForm(), partner, SecondRange());
    lower = MaxOf(lower, least);
    upper = MinOf(upper, most);
}

// The hazard under H0; of two one-sided tests that of the limit nearer to the truth, where it is
// the hardest to keep the level.
f64 SimulatedNullHazard(f64 truth) {
    if (NoOfTails != TwoOneSided)
        return NullHazard(hypotheses.H0());
    const f64 left = NullHazard(hypotheses.Left());
    const f64 right = NullHazard(hypotheses.Right());
    return std::fabs(std::log(truth / left)) < std::fabs(std::log(truth / right)) ? left : right;
}

// --- Standard errors ----------------------------------------------------------------------------

struct Errors {
    f32 Se0;
    f32 Se1;
};

// The logarithm of a hazard has the standard error of the hazard over the hazard.
Errors OneSampleErrors(f64 lambda0, f64 lambda) {
    f64 variance0 = 0;
    f64 variance1 = 0;
    if (LRGiven == GivenSize) {
        const f64 n{oneSize.First()};
        const f32 eta = LossHazardOf(input, losses.First());
        variance1 = f64{HazardVar(Single(lambda), eta)} / n;
        variance0 =
            LRHazardKind == MlRubensteinKind ? variance1 : f64{HazardVar(Single(lambda0), eta)} / n;
    } else {
        const f64 total{Single(ParValue(oneTotal))};
        variance0 = lambda0 * (LRGiven == GivenEvents ? lambda0 : 1) / total;
        variance1 = lambda * (LRGiven == GivenEvents ? lambda : 1) / total;
    }
    if (!IsRatioTest())
        return {Root(variance0), Root(variance1)};
    const f32 se1 = Single(std::sqrt(variance1) / lambda);
    if (LRHazardKind == MlRubensteinKind)
        return {se1, se1};
    return {Single(std::sqrt(variance0) / lambda0), se1};
}

Errors ErrorsOfSizes(f32 lambda1, f32 lambda2) {
    const f32 n1 = sizes.First();
    const f32 n2 = sizes.Second();
    const f32 eta1 = LossHazardOf(input, losses.First());
    const f32 eta2 = LossHazardOf(input, losses.Second());
    const auto variance = [=](f32 first, f32 second, f64 scale1, f64 scale2) {
        return f64{HazardVar(first, eta1)} / (f64{n1} * scale1 * scale1) +
               f64{HazardVar(second, eta2)} / (f64{n2} * scale2 * scale2);
    };
    const f64 scale1 = IsRatioTest() ? f64{lambda1} : 1;
    const f64 scale2 = IsRatioTest() ? f64{lambda2} : 1;
    const f32 se1 = Root(variance(lambda1, lambda2, scale1, scale2));
    if (LRHazardKind == MlLachinFoulkesKind)
        return {PooledSE(n1, n2, lambda1, lambda2, eta1, eta2), se1};
    if (LRHazardKind == RubensteinKind || LRHazardKind == MlRubensteinKind)
        return {se1, se1};
    const f32 pooled =
        Single((f64{n1} * f64{lambda1} + f64{n2} * f64{lambda2}) / (f64{n1} + f64{n2}));
    const f64 scale = IsRatioTest() ? f64{pooled} : 1;
    return {Root(variance(pooled, pooled, scale, scale)), se1};
}

// Of the events that both groups have in total each has those that its hazard brings about.
Errors ErrorsOfEvents(f64 lambda1, f64 lambda2) {
    const f64 share1 = 1 / (lambda2 / lambda1 * sizes.Ratio() + 1);
    const f64 events1 = share1 * sizes.Total();
    const f64 events2 = (1 - share1) * sizes.Total();
    const f32 se = IsRatioTest() ? Root(1 / events1 + 1 / events2)
                                 : Root(lambda1 * lambda1 / events1 + lambda2 * lambda2 / events2);
    return {se, se};
}

Errors ErrorsOfTimes(f64 lambda1, f64 lambda2) {
    const f64 time1{sizes.First()};
    const f64 time2{sizes.Second()};
    const f64 pooled = (lambda1 + lambda2 * sizes.Ratio()) / (1 + sizes.Ratio());
    if (!IsRatioTest())
        return {Root(pooled / time2 + pooled / time1), Root(lambda1 / time1 + lambda2 / time2)};
    const f32 se1 = Root(1 / (time1 * lambda1) + 1 / (time2 * lambda2));
    if (LRHazardKind == RubensteinKind || LRHazardKind == MlRubensteinKind)
        return {se1, se1};
    return {Root(1 / (time2 * pooled) + 1 / (time1 * pooled)), se1};
}

Errors TwoSampleErrors(f32 lambda1, f32 lambda2) {
    if (LRGiven == GivenSize)
        return ErrorsOfSizes(lambda1, lambda2);
    return LRGiven == GivenEvents ? ErrorsOfEvents(f64{lambda1}, f64{lambda2})
                                  : ErrorsOfTimes(f64{lambda1}, f64{lambda2});
}

// --- Equations ----------------------------------------------------------------------------------

f64 PowerEq(f32 hazard, const Errors& errors, f32 se0Right) {
    const f32 above = AboveNull(hazard, hypotheses.H0());
    NormalStatistic statistic{.Effect = above, .Se0 = errors.Se0, .Se1 = errors.Se1};
    if (NoOfTails == TwoOneSided) {
        statistic.AboveLeft = above;
        statistic.BelowRight = -AboveNull(hazard, hypotheses.Right());
        statistic.Se0Left = errors.Se0;
        statistic.Se0Right = se0Right;
    }
    return NormalPowerEq(statistic);
}

// With two one-sided tests the standard error under the left limit serves there and the one under
// H1 at the right limit, deliberately.
f64 RootOneSample() {
    const f32 lambda0 = HazardFromInput(hypotheses.H0());
    const f32 lambda = HazardFromInput(Single(hypotheses.Truth()));
    const Errors errors = OneSampleErrors(f64{lambda0}, f64{lambda});
    return PowerEq(lambda, errors, errors.Se1);
}

// The information on the logarithm of a ratio by a time of the study: that of the events until
// then. Only the shares count.
f64 InformationBy(f64 time, f64 lambda1, f64 lambda2) {
    const auto variance = [time](f64 lambda, f32 loss, f32 n) {
        const f64 rate = lambda + f64{loss};
        return rate / (lambda * accrual.ShareLeavingBy(rate, time) * f64{n});
    };
    return time > 0 ? 1 / (variance(lambda1, LossHazardOf(input, losses.First()), sizes.First()) +
                           variance(lambda2, LossHazardOf(input, losses.Second()), sizes.Second()))
                    : 0;
}

// Analyses of a design take place when so much information is there, or at times that are fixed.
void SetClock(f64 lambda1, f64 lambda2) {
    if (LRGiven != GivenSize)
        return SetStudyClock({});
    const f64 null2 = SimulatedNullHazard(lambda2);
    SetStudyClock({accrual.StudyTime(), [=](f64 time, bool isH1) {
                       return InformationBy(time, lambda1, isH1 ? lambda2 : null2);
                   }});
}

// Here it is the same at both limits, so that groups exchanged and limits turned change nothing.
f64 RootTwoSamples() {
    const f32 lambda1 = HazardFromInput(hypotheses.First());
    const f32 lambda2 = HazardFromInput(hypotheses.Second());
    const Errors errors = TwoSampleErrors(lambda1, lambda2);
    if (IsGroupSeq == True)
        SetClock(f64{lambda1}, f64{lambda2});
    return PowerEq(lambda2, errors, errors.Se0);
}

// --- Parameter list -----------------------------------------------------------------------------

void AddPatients() {
    losses = AddSampleValues(LossKinds(input));
    accrual.Add(Ticked(Check::UserDefinedAccrual));
    if (NoOfSamples == OneSample)
        oneSize = AddSizes();
    else if (Ticked(Check::TotalSize))
        sizes.AddTotal(Kind::TotalSize, Kind::Size2Over1);
    else
        sizes.AddEach();
}

// No loss at all is the only one with a pooled standard error: what is sought has none.
void NarrowPoolingLoss(f64& lower) {
    constexpr f64 least = 1e-5;
    if (LRHazardKind == MlLachinFoulkesKind && NoOfSamples == TwoSamples && losses.FirstIsUnknown())
        lower = MaxOf(lower, least);
}

void AddEventsOrTime() {
    const bool isTime = LRGiven == GivenTimeAtRisk;
    const i16 total = isTime ? Kind::TimeAtRisk : Kind::Events;
    if (NoOfSamples == OneSample)
        oneTotal = AddPar(total);
    else
        sizes.AddTotal(total, isTime ? Kind::StudyTime2Over1 : Kind::Size2Over1);
}

// Far from H0 the power may fall again: with a lower hazard there are fewer events. The solution
// next to H0 is the one that is asked for. Where a relation is kept and its base sought, the power
// may turn as well: the larger solution, or the smaller one when the search goes left.
void NarrowHypotheses(f64& lower, f64& upper, f64 (*residual)()) {
    const bool isRelated = hypotheses.BaseIsUnknown() && hypotheses.TruthForm() != AsValue;
    if (isRelated && NoOfTails == TwoOneSided) {
        hypotheses.NarrowPair(lower, upper);
        hypotheses.KeepEffect(lower, upper, Side::Above, f64{hypotheses.Left()});
        hypotheses.KeepEffect(lower, upper, Side::Below, f64{hypotheses.Right()});
    } else if (isRelated) {
        hypotheses.Narrow(lower, upper);
    }
    if (isRelated) {
        KeepNearestRoot(lower, upper, SideOfTail(), residual);
        return;
    }
    hypotheses.Narrow(lower, upper, residual);
    if (!hypotheses.TruthIsUnknown() || NoOfTails == TwoOneSided)
        return;
    const bool falls = hypotheses.BaseIsUnknown();
    KeepNearestRoot(lower, upper, SearchesLeft() == falls ? Side::Below : Side::Above, residual);
}

// --- Simulation ---------------------------------------------------------------------------------

// The effect of a hazard, beside that of group 1 where there are two, on the scale of the
// statistic: that of a log-rank test is the logarithm of a ratio. A longer median is a lower
// hazard.
f32 EffectOf(f64 hazard) {
    const f64 first = NoOfSamples == OneSample ? 1 : f64{HazardFromInput(hypotheses.First())};
    const f64 base = NoOfSamples == OneSample ? 0 : first;
    const f64 effect =
        LRHazardKind == MlLachinFoulkesKind ? hazard - base : std::log(hazard / first);
    return Single(LRInputMedian == 1 ? -effect : effect);
}

// A difference below H0 may leave group 2 no hazard to draw from.
bool HasNullHazards() {
    for (i16 i = NullParNo; i < FirstParNo(); ++i)
        if (!(NullHazard(Single(ParValue(i))) > 0)) {
            ShowMessage("Hazard Rate 2 under H0 Must Be > 0.");
            return false;
        }
    return true;
}

// Sizes that are entered as a total and a ratio.
void TakeSizes() {
    const i16 n1 = ToI16(WholeCount(Kind::Size1, f64{sizes.First()}));
    const i16 n2 = ToI16(WholeCount(Kind::Size2, f64{sizes.Second()}));
    for (int k = 1; k <= SimSize1.HighBound(); ++k) {
        SimSize1(k) = n1;
        SimSize2(k) = n2;
    }
}

} // namespace

void TESTLOGRANK::SetupTest() {
    if (IsMaximumLikelihood())
        OfferSamples({OneSample, TwoSamples});
    else
        FixSamples(TwoSamples);
    LRHazardKind = HazardApproach(TestNo);
    OfferSurvivalInput();
    // The grids of a design are its fractions and levels.
    const i16 own = IsGroupSeq == True ? Check::FixedInterimTimes : Check::UserDefinedAccrual;
    OfferChecks({own});
    if (NoOfSamples == TwoSamples)
        OfferChecks({Check::TotalSize});
    const SurvivalInput chosen = ChosenSurvivalInput();
    if (NoOfSamples == OneSample)
        OfferForms(OneSurvivalKinds(chosen));
    else
        OfferForms(TwoSurvivalKinds(chosen, IsRatioTest()));
    if (SizeIsChosen()) {
        OfferForms(LossKinds(chosen));
        if (!Ticked(Check::TotalSize))
            OfferForms(SizeKinds);
    } else {
        DisableCheck(own);
        if (NoOfSamples == TwoSamples)
            DisableCheck(Check::TotalSize);
    }
    if (IsGivenOffered())
        OfferGroups({Group::Given});
}

void TESTLOGRANK::SetParList() {
    input = ChosenSurvivalInput();
    LRHazardKind = HazardApproach(TestNo);
    LRInputMedian = input == SurvivalInput::Median ? 1 : 0;
    LRInputIncidence = input == SurvivalInput::Incidence ? 1 : 0;
    LRGiven = SizeIsChosen() ? i16{GivenSize} : ChosenOption(Group::Given);
    StartTestList();
    hypotheses = NoOfSamples == OneSample
                     ? AddHypotheses(OneSurvivalKinds(input), EffectScale::Plain)
                     : AddHypotheses(TwoSurvivalKinds(input, IsRatioTest()),
                                     IsRatioTest() ? EffectScale::Log : EffectScale::Plain);
    LRSecondHazardMode = hypotheses.TruthForm();
    LRLossKind = NoOfSamples == OneSample ? 1 : 0;
    LRParBase = static_cast<i16>(NoOfPar + 1);
    if (LRGiven == GivenSize)
        AddPatients();
    else
        AddEventsOrTime();
}

bool TESTLOGRANK::CheckPar() {
    if (!hypotheses.Check())
        return false;
    if (HasNullRange())
        for (i16 i = NullParNo; i < FirstParNo(); ++i)
            if (!CheckNull(i))
                return false;
    if (LRGiven == GivenSize && (!losses.Check() || !accrual.Check()))
        return false;
    return NoOfSamples == OneSample || sizes.Check();
}

void TESTLOGRANK::SearchLimits(f64& lower, f64& upper) {
    if (HasNullRange())
        for (i16 i = NullParNo; i < FirstParNo(); ++i)
            NarrowNull(lower, upper, i);
    NarrowHypotheses(lower, upper, &RootFunction);
    if (LRGiven == GivenSize) {
        losses.Narrow(lower, upper);
        accrual.Narrow(lower, upper);
        NarrowPoolingLoss(lower);
    }
    if (NoOfSamples == TwoSamples)
        sizes.Narrow(lower, upper, &RootFunction);
}

f64 TESTLOGRANK::RootFunction() {
    return NoOfSamples == OneSample ? RootOneSample() : RootTwoSamples();
}

void TESTLOGRANK::GetSimPar() {
    if (!HasNullHazards()) {
        Cancelled = True;
        return;
    }
    const bool isOne = NoOfSamples == OneSample;
    SurvivalPlan plan;
    plan.Method = SurvivalMethodOf(TestNo);
    plan.Samples = NoOfSamples;
    plan.DistrNo = SimExponential;
    plan.Direction = LRInputMedian == 1 ? -1 : 1;
    const f64 truth{HazardFromInput(isOne ? Single(hypotheses.Truth()) : hypotheses.Second())};
    const f64 null = SimulatedNullHazard(truth);
    SurvivalStratum& groups = plan.Strata.front();
    if (isOne) {
        groups.NullScale1 = Single(1 / null);
        groups.Scale1 = Single(1 / truth);
    } else {
        groups.NullScale1 = groups.Scale1 = Single(1 / f64{HazardFromInput(hypotheses.First())});
        groups.NullScale2 = Single(1 / null);
        groups.Scale2 = Single(1 / truth);
        groups.Loss2 = LossHazardOf(input, losses.Second());
        TakeSizes();
    }
    groups.Loss1 = LossHazardOf(input, losses.First());
    accrual.Prepare(plan);
    if (NoOfTails == TwoOneSided) {
        plan.Left = EffectOf(NullHazard(hypotheses.Left()));
        plan.Right = EffectOf(NullHazard(hypotheses.Right()));
    } else {
        plan.Null = EffectOf(null);
    }
    SimSurvival = plan;
}

void TESTLOGRANK::SimSample(i16 n1, i16 n2, bool isH1) {
    SimSurvivalSample(n1, n2, isH1);
}

f32 TESTLOGRANK::SimTest(i16 n1, i16 n2) {
    return SimSurvivalTest(n1, n2);
}

bool TESTLOGRANK::IsTablePar(i16 parNo) {
    return LRGiven == GivenSize && accrual.IsTablePar(parNo);
}

std::vector<Grid> TESTLOGRANK::TableGrids(i16) {
    return accrual.Grids();
}

// The table is for the number of its intervals, which stays as it is.
f32 TESTLOGRANK::CalcTablePar(i16 parNo) {
    return Single(ParValue(parNo));
}

HazardKind HazardApproach(i16 testNo) {
    switch (testNo) {
    case 179:
    case 200:
        return SchoenfeldKind;
    case 36:
        return FreedmanKind;
    case 201:
        return NonInferiorityKind;
    case 31:
    case 85:
    case 90:
    case 95:
    case 100:
    case 180:
    case 331:
        return LachinFoulkesKind;
    case 181:
    case 202:
        return GeorgeDesuKind;
    case 37:
    case 127:
    case 182:
        return RubensteinKind;
    case 203:
        return MlLachinFoulkesKind;
    case 204:
        return MlGeorgeDesuKind;
    case 205:
    case 77:
    case 84:
        return MlRubensteinKind;
    case 183:
    case 184:
    case 185:
    case 186:
    case 187:
        return SimulatedStrataKind;
    default:
        return NoHazardKind;
    }
}

i16 LRAccrualKind() {
    return accrual.Model();
}

f32 HazardVar(f32 lambda, f32 eta) {
    return HazardVariance(accrual, lambda, eta);
}

f32 PooledSE(f32 n1, f32 n2, f32 lambda1, f32 lambda2, f32 eta1, f32 eta2) {
    const f32 pooled =
        Single((f64{n1} * f64{lambda1} + f64{n2} * f64{lambda2}) / (f64{n1} + f64{n2}));
    const bool isPooled = eta1 == 0;
    return Root(f64{HazardVar(isPooled ? pooled : lambda1, eta1)} / f64{n1} +
                f64{HazardVar(isPooled ? pooled : lambda2, eta2)} / f64{n2});
}

f32 HazardFromInput(f32 value) {
    return HazardOf(input, value);
}

} // namespace quorvanta
