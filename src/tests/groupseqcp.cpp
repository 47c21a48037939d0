#include "tests/groupseqcp.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/means.h"
#include "tests/lists/proportions.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"
#include "tests/trialvalue.h"

#include <cmath>

namespace quorvanta {

i16 CpOutcome;
i16 CpPredictive;
i16 CpFuture;
i16 CpH1Form;

namespace {

constexpr i16 FirstTest = 400;

// CpFuture
constexpr i16 FutureDesign = 0;
constexpr i16 FutureTrend = 1;

Hypotheses means;
ProportionList proportions;
SampleValues sizes;
i16 hazardRatio;
i16 deviation;
i16 fraction;
i16 observed;  // the first of two proportions, or what was observed
i16 observed2; // the difference of two proportions
i16 events;
i16 sizeRatio;

void ReadTestNo() {
    CpOutcome = static_cast<i16>((TestNo - FirstTest) / 2);
    CpPredictive = ToFlag((TestNo - FirstTest) % 2 == 1);
}

f64 Value(i16 parNo) {
    return f64{Single(ParValue(parNo))};
}

// Effects against H0, by design and as observed, each with its standard error.
struct Look {
    f64 Design;
    f32 DesignSe;
    f64 Observed;
    f32 ObservedSe;
};

// The standard error of an observed mean is that of the design, deliberately: n stands for the size
// of the whole trial there.
Look LookAtMeans() {
    const f64 second = sizes.HasSecond() ? 1 / f64{sizes.Second()} : 0;
    const f32 se = Single(Value(deviation) * std::sqrt(1 / f64{sizes.First()} + second));
    const f64 null{means.H0()};
    return {means.Truth() - null, se, Value(observed) - null, se};
}

f64 BinomialVariance(f64 p, f64 n) {
    return p * (1 - p) / n;
}

Look LookAtProportion() {
    const ProportionValues values = ReadProportions(proportions);
    const f64 null{values.Null};
    const f64 n{sizes.First()};
    const f64 p1{values.P1};
    const f64 seen = Value(observed);
    return {p1 - null, Single(std::sqrt(BinomialVariance(p1, n))), seen - null,
            Single(std::sqrt(BinomialVariance(seen, n)))};
}

Look LookAtProportions() {
    const ProportionValues values = ReadProportions(proportions);
    const f64 null{values.Null};
    const f64 n1{sizes.First()};
    const f64 n2{sizes.Second()};
    const auto se = [n1, n2](f64 p1, f64 p2) {
        return Single(std::sqrt(BinomialVariance(p1, n1) + BinomialVariance(p2, n2)));
    };
    const f64 p1{values.P1};
    const f64 p2{values.P2};
    const f64 seen1 = Value(observed);
    const f64 difference = Value(observed2);
    return {p2 - p1 - null, se(p1, p2), difference - null, se(seen1, seen1 + difference)};
}

// Of the events each group has its share, by the hazards and the sizes.
f32 LogRatioError(f64 ratio, f64 total) {
    const f64 share = 1 / (ratio * Value(sizeRatio) + 1);
    return Single(std::sqrt(1 / (share * total) + 1 / ((1 - share) * total)));
}

Look LookAtHazards() {
    const f64 ratio = Value(hazardRatio);
    const f64 seen = Value(observed);
    const f64 total = Value(events);
    return {std::log(ratio), LogRatioError(ratio, total), std::log(seen),
            LogRatioError(seen, Value(fraction) * total)};
}

Look CurrentLook() {
    if (CpOutcome == CpMeans)
        return LookAtMeans();
    if (CpOutcome == CpHazards)
        return LookAtHazards();
    return NoOfSamples == OneSample ? LookAtProportion() : LookAtProportions();
}

// Where the process stands, B = sqrt(t) Z, and its drift from here on.
struct Process {
    f64 Position;
    f64 Drift;
};

Process CurrentProcess() {
    const Look look = CurrentLook();
    const f64 t = Value(fraction);
    const f64 position = std::sqrt(t) * (look.Observed / f64{look.ObservedSe});
    f64 drift = 0;
    if (CpFuture == FutureDesign)
        drift = (look.Design - ProbabilityFloor) / f64{look.DesignSe};
    else if (CpFuture == FutureTrend)
        drift = position / t;
    return {position, drift};
}

f64 CurrentPosition() {
    return CurrentProcess().Position;
}

f64 CurrentDrift() {
    return CurrentProcess().Drift;
}

void AddLook(i16 kind) {
    fraction = AddPar(Kind::InformationFraction);
    observed = AddPar(kind);
}

bool HasObservedPair() {
    return CpOutcome == CpProportions && NoOfSamples == TwoSamples;
}

// The observed proportion of group 2 is entered as a difference; it is a proportion like the first.
Range ObservedRange() {
    return {ParMin(Kind::ObservedProportion1), ParMax(Kind::ObservedProportion1)};
}

bool PointsToTail(f64 x, f64 (*direction)()) {
    const TrialValue trial(x);
    const f64 value = direction();
    return SearchesLeft() ? value <= 0 : value >= 0;
}

// Keeps the part in which this points to the tail, where the unknown turns it. Beside that part
// there may be no power at all, so that it is kept with more to spare than limits are rounded.
void KeepTail(f64& lower, f64& upper, f64 (*direction)()) {
    if (!(upper > lower))
        return;
    const bool isUpperGood = PointsToTail(upper, direction);
    if (PointsToTail(lower, direction) == isUpperGood)
        return;
    f64 good = isUpperGood ? upper : lower;
    f64 bad = isUpperGood ? lower : upper;
    for (f64 middle = (good + bad) / 2; middle != good && middle != bad; middle = (good + bad) / 2)
        (PointsToTail(middle, direction) ? good : bad) = middle;
    constexpr f64 spare = 1e-12;
    (isUpperGood ? lower : upper) = good + spare * ((isUpperGood ? upper : lower) - good);
}

// The logarithm of the hazard ratio at which its statistic turns, log h sqrt(h r)/(h r + 1) with
// the ratio of the sizes r: beyond it nearly all events are of one group, and the power is lost
// again.
f64 LogOfTurn(f64 logOfSizes) {
    f64 before = 0;
    f64 beyond = 1000;
    constexpr int cuts = 60;
    for (int i = 0; i < cuts; ++i) {
        const f64 middle = (before + beyond) / 2;
        (middle / 2 * std::tanh((middle + logOfSizes) / 2) < 1 ? before : beyond) = middle;
    }
    return before;
}

void KeepBetweenTurns(f64& lower, f64& upper) {
    const f64 logOfSizes = std::log(Value(sizeRatio));
    lower = MaxOf(lower, std::exp(-LogOfTurn(-logOfSizes)));
    upper = MinOf(upper, std::exp(LogOfTurn(logOfSizes)));
}

// The power turns where the standard error is largest, or smallest: of two proportions whose
// difference is kept, and of groups of unequal sizes.
void NarrowTurning(f64& lower, f64& upper) {
    if (CpOutcome == CpHazards && UnknownParNo == sizeRatio)
        KeepOneSideOfTurn(lower, upper, Side::Below, &CpRoot);
    else if (CpOutcome == CpProportions &&
             (proportions.Hypothesis.BaseIsUnknown() || UnknownParNo == observed))
        KeepOneSideOfTurn(lower, upper, SideOfTail(), &CpRoot);
    else if (UnknownParNo == fraction)
        KeepNearestRoot(lower, upper, Side::Below, &CpRoot);
}

// While this lives the analysis is that of a fixed design.
class FixedDesign {
  public:
    FixedDesign() { IsGroupSeq = False; }
    ~FixedDesign() { IsGroupSeq = before_; }
    FixedDesign(const FixedDesign&) = delete;
    FixedDesign& operator=(const FixedDesign&) = delete;

  private:
    i16 before_ = IsGroupSeq;
};

} // namespace

void GROUPSEQCP::SetupTest() {
    ReadTestNo();
    OfferTails({OneSided, TwoSided});
    if (CpOutcome == CpHazards) {
        FixSamples(TwoSamples);
    } else {
        OfferSamples({OneSample, TwoSamples});
        if (CpOutcome == CpProportions)
            OfferProportions(false);
        else if (NoOfSamples == OneSample)
            OfferForms(OneMeanKinds);
        else
            OfferForms(TwoMeansKinds);
        OfferForms(SizeKinds);
    }
    OfferGroups({Group::SlopeProjection});
}

void GROUPSEQCP::SetParList() {
    ReadTestNo();
    CpFuture = ChosenOption(Group::SlopeProjection);
    CpH1Form = AsValue;
    StartParList();
    AddPar(Kind::SignificanceLevel);
    AddPar(CpPredictive == True ? Kind::PredictivePower : Kind::ConditionalPower);
    if (CpOutcome == CpMeans) {
        means = NoOfSamples == OneSample ? AddHypotheses(OneMeanKinds, EffectScale::Plain)
                                         : AddHypotheses(TwoMeansKinds, EffectScale::Plain);
        CpH1Form = means.TruthForm();
        deviation = AddPar(Kind::Sd);
        AddLook(NoOfSamples == OneSample ? Kind::ObservedMean : Kind::ObservedMean2Minus1);
        sizes = AddSizes();
    } else if (CpOutcome == CpProportions) {
        proportions = AddProportions(false, NullDifference::Entered);
        CpH1Form = proportions.Hypothesis.TruthForm();
        AddLook(NoOfSamples == OneSample ? Kind::ObservedProportion : Kind::ObservedProportion1);
        if (HasObservedPair())
            observed2 = AddPar(Kind::ObservedProportion2Minus1);
        sizes = AddSizes();
    } else {
        hazardRatio = AddPar(Kind::H1HazardRatio);
        AddLook(Kind::ObservedHazardRatio);
        events = AddPar(Kind::Events);
        sizeRatio = AddPar(Kind::Size2Over1);
    }
}

bool GROUPSEQCP::CheckPar() {
    if (CpOutcome == CpHazards)
        return true;
    const bool isGood = CpOutcome == CpMeans ? means.Check() : proportions.Check();
    if (!isGood || !sizes.Check())
        return false;
    const Range range = ObservedRange();
    return !HasObservedPair() || CheckPair(observed, observed2, range.Min, range.Max, AsDifference);
}

void GROUPSEQCP::SearchLimits(f64& lower, f64& upper) {
    if (CpOutcome == CpMeans)
        means.NarrowPair(lower, upper);
    else if (CpOutcome == CpProportions)
        proportions.Hypothesis.NarrowPair(lower, upper);
    if (CpOutcome != CpHazards)
        sizes.Narrow(lower, upper);
    if (HasObservedPair()) {
        const Range range = ObservedRange();
        PairLimits(lower, upper, observed, range.Min, range.Max, AsDifference);
    }
    if (CpOutcome == CpHazards && (UnknownParNo == hazardRatio || UnknownParNo == observed))
        KeepBetweenTurns(lower, upper);
    KeepTail(lower, upper, &CurrentDrift);
    if (NoOfTails == TwoSided)
        KeepTail(lower, upper, &CurrentPosition);
    else if (!PointsToTail(lower, &CurrentDrift))
        upper = lower; // away from the tail, wherever the unknown is
    NarrowTurning(lower, upper);
}

f64 GROUPSEQCP::RootFunction() {
    return CpRoot();
}

f64 CpRoot() {
    if (NoOfTails == TwoOneSided)
        return NoValue;
    const FixedDesign fixed;
    auto [position, drift] = CurrentProcess();
    if (NoOfTails == TwoSided) {
        drift = std::fabs(drift);
        position = std::fabs(position);
    } else if (LeftTail == True ? drift > 0 : drift < 0) {
        return NoValue; // away from the tail
    }
    const f64 t = Value(fraction);
    const f64 mean = (1 - t) * drift + position;
    const f64 spread = std::sqrt((1 - t) / (CpPredictive == True ? t : 1));
    return NormalPowerEq({.Effect = Single(mean), .Se0 = 1, .Se1 = Single(spread)});
}

} // namespace quorvanta
