// The hypotheses of a test as a parameter list holds them: an H0 value, or the two limits of an
// equivalence, and the truth under H1 in the form in which it is entered.
#pragma once

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/types.h"
#include "tests/powereq.h"
#include "tests/samplevalues.h"

namespace quorvanta {

// What truth and H0 are to each other: the middle between two limits, where two one-sided tests
// have their highest power, lies there on this scale; and the effect of two samples is a difference
// or, on the scale of logarithms, a ratio.
enum class EffectScale { Plain, Log, FisherZ };

// Kinds of one sample: the group of forms, the H0 value, the H1 value by form, the limits.
struct OneSampleKinds {
    i16 Group;
    i16 H0;
    i16 H1[3];
    i16 Left;
    i16 Right;
};

// Kinds of two samples: the group of forms, the H0 effect, the H1 effect that option 1 enters
// itself (0: option 1 enters the second value as a difference), the first sample's value, the
// second sample's by form, the limits.
struct TwoSampleKinds {
    i16 Group;
    i16 H0;
    i16 Effect;
    i16 First;
    i16 Second[3];
    i16 Left;
    i16 Right;
};

// Offers the forms of the truth. Between two limits there is no single H0 value to which the truth
// of one sample could be related.
void OfferForms(const OneSampleKinds& kinds);
void OfferForms(const TwoSampleKinds& kinds);

class Hypotheses {
  public:
    // The H0 value or effect.
    f32 H0() const;
    // The limits of two one-sided tests.
    f32 Left() const;
    f32 Right() const;
    // One sample: the true value. Two samples: the true effect, not rounded where it is formed of
    // two values.
    f64 Truth() const;
    // Two samples whose values are entered: these.
    f32 First() const;
    f32 Second() const;
    // The same with x in the place of the unknown.
    f64 FirstAt(f64 x) const;
    f64 SecondAt(f64 x) const;

    // Are the limits in order, and is the dependent value in its range?
    bool Check() const;

    // Narrows the search for a hypothesis: the dependent value stays in its range, and the truth on
    // its side of H0, or between the limits, on one side of their middle.
    void Narrow(f64& lower, f64& upper) const;

  private:
    friend Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale);
    friend Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale);

    void AddNull(i16 h0, i16 left, i16 right);
    f64 Excess(f64 x, f64 target) const;
    template <class Target>
    void Keep(f64& lower, f64& upper, bool above, Target&& target) const;
    f64 Middle() const;

    EffectScale scale_ = EffectScale::Plain;
    i16 h0_ = 0;    // the H0 value; with two limits the left one, the right one next
    i16 first_ = 0; // of two values; 0: the truth is one value
    i16 truth_ = 0; // the true value or effect; the second of two values
    i16 base_ = 0;  // what a dependent truth is related to; 0: nothing
    i16 form_ = AsValue;
    i16 kind_ = 0; // of a dependent truth as such
};

Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale);
Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale);

// The whole list of a test without further parameters: level, power, hypotheses, sizes.
struct SampleTestKinds {
    EffectScale Scale;
    OneSampleKinds One;
    TwoSampleKinds Two;
    SampleKinds Sizes;
};

struct SampleTest {
    static void Offer(const SampleTestKinds& kinds);
    void Build(const SampleTestKinds& kinds);
    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    Hypotheses Hypothesis;
    SampleValues Sizes;
};

// Power minus the power entered of a test whose statistic is normal: distance tells how far a true
// value is above a null value on the scale of the statistic, se0 its standard error under a null
// value, se1 that under the truth.
template <class Distance, class NullError>
f64 NormalTestEq(const Hypotheses& list, Distance&& distance, NullError&& se0, f32 se1) {
    const f64 truth = list.Truth();
    const f64 left{list.H0()};
    const f64 right = NoOfTails == TwoOneSided ? f64{list.Right()} : left;
    const f32 above = static_cast<f32>(distance(truth, left));
    return NorPowerEq(above, se0(left), se1, above, static_cast<f32>(-distance(truth, right)),
                      se0(left), se0(right), 0);
}

// The distance on the scale of the values themselves.
constexpr f64 PlainDistance(f64 truth, f64 null) {
    return truth - null;
}

// Starts a parameter list with significance level and power.
void StartTestList();

// 0.5 ln((1 + r)/(1 - r)) (R. A. Fisher, 1921); r is cut to -0.99999..0.99999.
f64 FisherZ(f64 r);

} // namespace quorvanta
