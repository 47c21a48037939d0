#include "tests/lists/hypotheses.h"

#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

void OfferForms(const OneSampleKinds& kinds) {
    if (NoOfTails != TwoOneSided)
        OfferGroups({kinds.Group});
}

void OfferForms(const TwoSampleKinds& kinds) {
    OfferGroups({kinds.Group});
}

f32 Hypotheses::H0() const {
    return h0_ == 0 ? 0.0F : Single(ParValue(h0_));
}

f32 Hypotheses::Left() const {
    return H0();
}

f32 Hypotheses::Right() const {
    return Single(ParValue(h0_ + 1));
}

f64 Hypotheses::Truth() const {
    if (base_ == 0)
        return f64{Single(ParValue(truth_))};
    if (first_ == 0)
        return f64{ParDep(truth_, H0(), form_)};
    const f64 first{First()};
    const f64 second{Second()};
    return scale_ == EffectScale::Log ? second / first : second - first;
}

f64 Hypotheses::NullTruth() const {
    if (NoOfTails != TwoOneSided)
        return f64{H0()};
    return f64{Truth() > Middle() ? Right() : Left()};
}

f32 Hypotheses::First() const {
    return Single(ParValue(first_));
}

f32 Hypotheses::Second() const {
    return ParDep(truth_, First(), form_);
}

f64 Hypotheses::FirstAt(f64 x) const {
    return ValueAt(first_, x);
}

f64 Hypotheses::SecondAt(f64 x) const {
    return DependentAt(truth_, FirstAt(x), form_, x);
}

f64 Hypotheses::BaseOfLeastPower(f64 middle) const {
    if (UnknownParNo != h0_ || base_ != h0_ || form_ != AsDifference)
        return NoValue;
    return middle - ParValue(truth_) / 2;
}

bool Hypotheses::TruthIsUnknown() const {
    return UnknownParNo == truth_ || (HasTwo() && UnknownParNo == first_);
}

bool Hypotheses::NullIsUnknown() const {
    return h0_ != 0 &&
           (UnknownParNo == h0_ || (NoOfTails == TwoOneSided && UnknownParNo == h0_ + 1));
}

bool Hypotheses::SecondIsUnknown() const {
    return HasTwo() && UnknownParNo == truth_;
}

bool Hypotheses::BaseIsUnknown() const {
    return base_ != 0 && UnknownParNo == base_;
}

// The kind of an effect that is entered itself has its own range anyway.
Range Hypotheses::TruthRange() const {
    return {ParMin(kind_), ParMax(kind_)};
}

bool Hypotheses::Check() const {
    return Check(TruthRange());
}

bool Hypotheses::Check(Range truth) const {
    if (NoOfTails == TwoOneSided && !CheckPairs(h0_))
        return false;
    return base_ == 0 || CheckPair(base_, truth_, truth.Min, truth.Max, form_);
}

// A value as it is entered; a proportion outside 0 to 1 is the end of the scale.
f64 Hypotheses::Entry(f64 value) const {
    if (scale_ != EffectScale::Odds)
        return value;
    if (value <= 0)
        return 0;
    return value >= 1 ? ParMax(kind_) : value / (1 - value);
}

f64 Hypotheses::FromEntry(f64 entry) const {
    return scale_ == EffectScale::Odds ? entry / (entry + 1) : entry;
}

// The entry that lies above, or below, another one by an effect.
f64 Hypotheses::EffectAbove(f64 entry, f64 effect) const {
    return scale_ == EffectScale::Log ? entry * effect : Entry(FromEntry(entry) + effect);
}

f64 Hypotheses::EffectBelow(f64 entry, f64 effect) const {
    return scale_ == EffectScale::Log ? entry / effect : Entry(FromEntry(entry) - effect);
}

// Nothing where the effect does not follow from the unknown alone.
std::optional<Hypotheses::EffectPoint> Hypotheses::PointOf(f64 effect) const {
    if (base_ == 0)
        return EffectPoint{Entry(effect), true};
    if (HasTwo() && UnknownParNo == first_)
        return PointOfFirst(effect);
    const f64 base = ParValue(base_);
    if (form_ == AsRatio && base == 0)
        return std::nullopt;
    const f64 truth = HasTwo() ? EffectAbove(base, effect) : effect;
    return EffectPoint{InForm(form_, base, truth), form_ != AsRatio || base > 0};
}

std::optional<Hypotheses::EffectPoint> Hypotheses::PointOfFirst(f64 effect) const {
    const f64 second = ParValue(truth_);
    if (form_ == AsValue)
        return EffectPoint{EffectBelow(second, effect), false};
    if (scale_ == EffectScale::Log)
        return form_ == AsDifference ? PointOfRatio(second, effect) : std::nullopt;
    const bool isProduct = form_ == AsRatio && scale_ != EffectScale::Odds && second != 1;
    if (!isProduct)
        return std::nullopt;
    return EffectPoint{effect / (second - 1), second > 1};
}

// The first value from which this difference is this ratio: 1 + difference/first. There is none for
// a ratio on the other side of 1.
std::optional<Hypotheses::EffectPoint> Hypotheses::PointOfRatio(f64 difference, f64 ratio) {
    if (!(difference * (ratio - 1) > 0))
        return std::nullopt;
    return EffectPoint{difference / (ratio - 1), difference < 0};
}

// The true value or effect, on the scale on which the null value or the limits are entered.
f64 Hypotheses::EnteredEffect() const {
    const f64 entry = ParValue(truth_);
    if (!HasTwo())
        return NoOfTails == TwoOneSided ? FromEntry(entry) : entry;
    const f64 first = ParValue(first_);
    if (scale_ == EffectScale::Log)
        return FromForm(form_, first, entry) / first;
    if (scale_ == EffectScale::Plain)
        return ExcessOverBase(form_, first, entry);
    return FromEntry(FromForm(form_, first, entry)) - FromEntry(first);
}

f64 Hypotheses::Middle() const {
    const f64 left = ParValue(h0_);
    const f64 right = ParValue(h0_ + 1);
    if (scale_ == EffectScale::Log)
        return std::sqrt(left * right);
    if (scale_ == EffectScale::FisherZ)
        return std::tanh((FisherZ(left) + FisherZ(right)) / 2);
    return (left + right) / 2;
}

void Hypotheses::Narrow(f64& lower, f64& upper) const {
    Narrow(lower, upper, nullptr, TruthRange());
}

void Hypotheses::Narrow(f64& lower, f64& upper, f64 (*residual)()) const {
    Narrow(lower, upper, residual, TruthRange());
}

void Hypotheses::Narrow(f64& lower, f64& upper, f64 (*residual)(), Range truth) const {
    if (base_ != 0)
        PairLimits(lower, upper, base_, truth.Min, truth.Max, form_);
    if (TruthIsUnknown() && NoOfTails == TwoOneSided && residual != nullptr)
        NarrowTruthAt(lower, upper, residual);
    else if (TruthIsUnknown())
        NarrowTruth(lower, upper);
    else if (h0_ != 0)
        NarrowNull(lower, upper);
}

void Hypotheses::NarrowPair(f64& lower, f64& upper) const {
    const auto [least, most] = TruthRange();
    if (base_ != 0)
        PairLimits(lower, upper, base_, least, most, form_);
}

void Hypotheses::KeepEffect(f64& lower, f64& upper, Side side, f64 effect) const {
    const auto point = PointOf(effect);
    if (!point)
        return;
    if ((side == Side::Above) == point->Rising)
        lower = MaxOf(lower, point->At);
    else
        upper = MinOf(upper, point->At);
}

// Two one-sided tests: from the middle of the limits, where the power is highest, to one of them.
// The difference of two correlations has no middle of its own: where the power is highest depends
// on the correlations.
void Hypotheses::NarrowTruth(f64& lower, f64& upper) const {
    if (NoOfTails != TwoOneSided) {
        KeepEffect(lower, upper, SideOfTail(), h0_ == 0 ? 0 : ParValue(h0_));
        return;
    }
    const f64 left = ParValue(h0_);
    const f64 right = ParValue(h0_ + 1);
    const bool whole = HasTwo() && scale_ == EffectScale::FisherZ;
    KeepEffect(lower, upper, Side::Above, SearchesLeft() || whole ? left : Middle());
    KeepEffect(lower, upper, Side::Below, SearchesLeft() && !whole ? Middle() : right);
}

// The highest power between the limits, wherever it is.
void Hypotheses::NarrowTruthAt(f64& lower, f64& upper, f64 (*residual)()) const {
    KeepEffect(lower, upper, Side::Above, ParValue(h0_));
    KeepEffect(lower, upper, Side::Below, ParValue(h0_ + 1));
    KeepOneSide(lower, upper, HighestPoint(lower, upper, residual), SideOfTail(), residual);
}

// The mirror image. A null value to which the truth is entered in relation has no side of the
// truth: a difference from it stays where it is, and a ratio to it turns with its sign, where it
// can have two. With two tails a ratio to what is never negative is the one that was entered, on
// whichever side.
void Hypotheses::NarrowNull(f64& lower, f64& upper) const {
    if (NoOfTails == TwoOneSided) {
        if (UnknownParNo == h0_)
            upper = MinOf(upper, EnteredEffect());
        else if (UnknownParNo == h0_ + 1)
            lower = MaxOf(lower, EnteredEffect());
    } else if (UnknownParNo == h0_) {
        const bool hasSigns = (scale_ == EffectScale::Plain || scale_ == EffectScale::FisherZ) &&
                              (NoOfTails == OneSided || (lower < 0 && upper > 0));
        if (base_ != h0_ || form_ == AsValue)
            RightTailLimit(lower, upper, EnteredEffect());
        else if (form_ == AsRatio && hasSigns && ParValue(truth_) > 1)
            LeftTailLimit(lower, upper, 0);
        else if (form_ == AsRatio && hasSigns)
            RightTailLimit(lower, upper, 0);
    }
}

void Hypotheses::AddNull(i16 h0, i16 left, i16 right) {
    if (NoOfTails == TwoOneSided) {
        h0_ = AddPar(left);
        AddPar(right);
    } else if (h0 != 0) {
        h0_ = AddPar(h0);
    }
}

Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale) {
    Hypotheses list;
    list.scale_ = scale;
    list.kind_ = kinds.H1[0];
    list.AddNull(kinds.H0, kinds.Left, kinds.Right);
    if (NoOfTails == TwoOneSided) {
        list.truth_ = AddPar(list.kind_);
        return list;
    }
    list.base_ = list.h0_;
    list.form_ = ChosenForm(kinds.Group);
    list.truth_ = AddPar(kinds.H1[list.form_]);
    return list;
}

Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale) {
    Hypotheses list;
    list.scale_ = scale;
    list.AddNull(kinds.H0, kinds.Left, kinds.Right);
    list.form_ = ChosenForm(kinds.Group);
    if (list.form_ == AsDifference && kinds.Effect != 0) {
        list.truth_ = AddPar(kinds.Effect);
        return list;
    }
    // Of two forms the second one is the ratio.
    if (list.form_ == AsDifference && kinds.Second[AsDifference] == NoKind)
        list.form_ = AsRatio;
    list.kind_ = kinds.Second[0];
    list.first_ = list.base_ = AddPar(kinds.First);
    list.truth_ = AddPar(kinds.Second[list.form_]);
    return list;
}

Hypotheses AddHypotheses(const EffectKinds& kinds) {
    Hypotheses list;
    list.AddNull(NoKind, kinds.Left, kinds.Right);
    list.truth_ = AddPar(kinds.Effect);
    return list;
}

void SampleTest::Offer(const SampleTestKinds& kinds) {
    OfferSamples({OneSample, TwoSamples});
    if (NoOfSamples == OneSample) {
        OfferForms(kinds.One);
        return;
    }
    OfferForms(kinds.Two);
    OfferForms(kinds.Sizes);
}

void SampleTest::Build(const SampleTestKinds& kinds) {
    StartTestList();
    Hypothesis = NoOfSamples == OneSample ? AddHypotheses(kinds.One, kinds.Scale)
                                          : AddHypotheses(kinds.Two, kinds.Scale);
    Sizes = AddSizes(kinds.Sizes);
}

bool SampleTest::Check() const {
    return Hypothesis.Check() && Sizes.Check();
}

void SampleTest::Narrow(f64& lower, f64& upper) const {
    Hypothesis.Narrow(lower, upper);
    Sizes.Narrow(lower, upper);
}

void StartTestList() {
    StartParList();
    AddPar(Kind::SignificanceLevel);
    AddPar(Kind::Power);
}

f64 FisherZ(f64 r) {
    constexpr f64 edge = 0.99999;
    const f64 inside = MaxOf(-edge, MinOf(edge, r));
    return 0.5 * std::log((1 + inside) / (1 - inside));
}

} // namespace quorvanta
