#include "tests/lists/proportions.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/turningpoint.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr OneSampleKinds OddsKinds{Group::H1Odds,
                                   Kind::H0Odds,
                                   {Kind::H1Odds, Kind::H1OddsMinusH0, Kind::H1OddsOverH0},
                                   Kind::ProportionLeftLimit,
                                   Kind::ProportionRightLimit};
constexpr TwoSampleKinds ProportionsKinds{
    Group::Proportion2,
    Kind::H0Proportion2Minus1,
    NoKind,
    Kind::H1Proportion1,
    {Kind::H1Proportion2, Kind::H1Proportion2Minus1, Kind::H1Proportion2Over1},
    Kind::ProportionDifferenceLeftLimit,
    Kind::ProportionDifferenceRightLimit};
constexpr TwoSampleKinds TwoOddsKinds{Group::Odds2,
                                      NoKind,
                                      NoKind,
                                      Kind::H1Odds1,
                                      {Kind::H1Odds2, Kind::H1Odds2Minus1, Kind::H1Odds2Over1},
                                      Kind::ProportionDifferenceLeftLimit,
                                      Kind::ProportionDifferenceRightLimit};

const OneSampleKinds& KindsOfOne(bool odds) {
    return odds ? OddsKinds : OneProportionKinds;
}

const TwoSampleKinds& KindsOfTwo(bool odds) {
    return odds ? TwoOddsKinds : ProportionsKinds;
}

EffectScale ScaleOf(bool odds) {
    return odds ? EffectScale::Odds : EffectScale::Proportion;
}

// The base at which the proportion and the one in relation to it add up to 1.
f64 MirrorPoint(const ProportionList& list) {
    const f64 kept = ParValue(list.Hypothesis.TruthParNo());
    // In a design the standard error is that of the true proportion alone: largest at a half.
    if (IsGroupSeq == True && !list.Hypothesis.HasTwo())
        return 0.5 - kept;
    if (list.Hypothesis.TruthForm() == AsDifference)
        return list.Odds ? (std::sqrt(kept * kept + 4) - kept) / 2 : (1 - kept) / 2;
    return list.Odds ? 1 / std::sqrt(kept) : 1 / (1 + kept);
}

// The variance is largest in the middle, so the power has two values on both sides of it, but where
// an effect that grows all the way outweighs that: a ratio of proportions, and a difference of odds
// (it shrinks), under equal proportions.
bool IsMirrored(const ProportionList& list) {
    if (list.Paired)
        return false;
    const bool equalUnderH0 =
        NoOfTails != TwoOneSided && (!list.Hypothesis.HasTwo() || list.Hypothesis.H0() == 0);
    return !equalUnderH0 || (list.Hypothesis.TruthForm() == AsDifference) != list.Odds;
}

f32 AsProportion(const ProportionList& list, f32 entered) {
    return list.Odds ? OddsToProp(entered) : entered;
}

} // namespace

bool ProportionList::Check() const {
    return Hypothesis.Check();
}

void ProportionList::Narrow(f64& lower, f64& upper, f64 (*residual)()) const {
    Hypothesis.Narrow(lower, upper);
    if (Hypothesis.BaseIsUnknown() && Hypothesis.TruthForm() != AsValue && IsMirrored(*this))
        KeepOneSide(lower, upper, MirrorPoint(*this), SideOfTail(), residual);
}

void OfferProportions(bool odds) {
    if (NoOfSamples == OneSample)
        OfferForms(KindsOfOne(odds));
    else
        OfferForms(KindsOfTwo(odds));
}

void OfferPairedProportions() {
    OfferForms(ProportionsKinds);
}

ProportionList AddProportions(bool odds, NullDifference null) {
    ProportionList list;
    list.Odds = odds;
    if (NoOfSamples == OneSample) {
        list.Hypothesis = AddHypotheses(KindsOfOne(odds), ScaleOf(odds));
        return list;
    }
    TwoSampleKinds kinds = KindsOfTwo(odds);
    if (null == NullDifference::Zero)
        kinds.H0 = 0;
    list.Hypothesis = AddHypotheses(kinds, ScaleOf(odds));
    return list;
}

ProportionList AddPairedProportions() {
    ProportionList list;
    list.Paired = true;
    list.Hypothesis = AddHypotheses(ProportionsKinds, EffectScale::Proportion);
    return list;
}

ProportionValues ReadProportions(const ProportionList& list) {
    const Hypotheses& hypothesis = list.Hypothesis;
    ProportionValues values;
    values.Null = hypothesis.H0();
    if (NoOfTails == TwoOneSided)
        values.Right = hypothesis.Right();
    if (hypothesis.HasTwo()) {
        values.P1 = AsProportion(list, hypothesis.First());
        values.P2 = AsProportion(list, hypothesis.Second());
        return values;
    }
    values.P1 = AsProportion(list, Single(hypothesis.Truth()));
    // Limits are proportions even where the rest is entered as odds.
    if (NoOfTails != TwoOneSided)
        values.Null = AsProportion(list, values.Null);
    return values;
}

f32 OddsToProp(f32 odds) {
    return Single(odds / (f64{odds} + 1));
}

} // namespace quorvanta
