#include "tests/hypotheses.h"

#include "core/general.h"
#include "core/options.h"

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
    return static_cast<f32>(ParValue(h0_));
}

f32 Hypotheses::Left() const {
    return H0();
}

f32 Hypotheses::Right() const {
    return static_cast<f32>(ParValue(h0_ + 1));
}

f64 Hypotheses::Truth() const {
    if (base_ == 0)
        return f64{static_cast<f32>(ParValue(truth_))};
    if (first_ == 0)
        return f64{ParDep(truth_, H0(), form_)};
    const f64 first{First()};
    const f64 second{Second()};
    return scale_ == EffectScale::Log ? second / first : second - first;
}

f32 Hypotheses::First() const {
    return static_cast<f32>(ParValue(first_));
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

bool Hypotheses::Check() const {
    if (NoOfTails == TwoOneSided && !CheckPairs(h0_))
        return false;
    return base_ == 0 || CheckPair(base_, truth_, ParMin(kind_), ParMax(kind_), form_);
}

// A quantity that has the sign of truth minus target and is linear in the unknown's value x,
// whichever parameter that is and in whatever form it is entered.
f64 Hypotheses::Excess(f64 x, f64 target) const {
    if (base_ == 0)
        return ValueAt(truth_, x) - target;
    const f64 base = ValueAt(base_, x);
    const f64 truth = DependentAt(truth_, base, form_, x);
    if (first_ == 0)
        return truth - target;
    return scale_ == EffectScale::Log ? truth - target * base : truth - base - target;
}

// Keeps the truth above (or below) the target, a function of the unknown's value.
template <class Target>
void Hypotheses::Keep(f64& lower, f64& upper, bool above, Target&& target) const {
    const f64 at0 = Excess(0, target(0.0));
    const f64 slope = Excess(1, target(1.0)) - at0;
    if (slope == 0)
        return;
    if ((slope > 0) == above)
        lower = MaxOf(lower, -at0 / slope);
    else
        upper = MinOf(upper, -at0 / slope);
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
    if (base_ != 0)
        PairLimits(lower, upper, base_, ParMin(kind_), ParMax(kind_), form_);
    const auto entered = [](i16 position) {
        return [position](f64 x) { return ValueAt(position, x); };
    };
    if (NoOfTails != TwoOneSided) {
        Keep(lower, upper, !SearchesLeft(), entered(h0_));
        return;
    }
    const i16 right = static_cast<i16>(h0_ + 1);
    Keep(lower, upper, true, entered(h0_));
    Keep(lower, upper, false, entered(right));
    if (UnknownParNo != h0_ && UnknownParNo != right)
        Keep(lower, upper, !SearchesLeft(), [middle = Middle()](f64) { return middle; });
}

void Hypotheses::AddNull(i16 h0, i16 left, i16 right) {
    if (NoOfTails == TwoOneSided) {
        h0_ = AddPar(left);
        AddPar(right);
    } else {
        h0_ = AddPar(h0);
    }
}

Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale) {
    Hypotheses list;
    list.scale_ = scale;
    list.AddNull(kinds.H0, kinds.Left, kinds.Right);
    if (NoOfTails == TwoOneSided) {
        list.truth_ = AddPar(kinds.H1[0]);
        return list;
    }
    list.base_ = list.h0_;
    list.form_ = ChosenOption(kinds.Group);
    list.kind_ = kinds.H1[0];
    list.truth_ = AddPar(kinds.H1[list.form_]);
    return list;
}

Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale) {
    Hypotheses list;
    list.scale_ = scale;
    list.AddNull(kinds.H0, kinds.Left, kinds.Right);
    const i16 form = ChosenOption(kinds.Group);
    if (form == AsDifference && kinds.Effect != 0) {
        list.truth_ = AddPar(kinds.Effect);
        return list;
    }
    list.form_ = form;
    list.kind_ = kinds.Second[0];
    list.first_ = list.base_ = AddPar(kinds.First);
    list.truth_ = AddPar(kinds.Second[form]);
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
    constexpr i16 kindAlpha = 0;
    constexpr i16 kindPower = 1;
    StartParList();
    AddPar(kindAlpha);
    AddPar(kindPower);
}

f64 FisherZ(f64 r) {
    constexpr f64 edge = 0.99999;
    const f64 inside = MaxOf(-edge, MinOf(edge, r));
    return 0.5 * std::log((1 + inside) / (1 - inside));
}

} // namespace quorvanta
