// The hypotheses of a test as a parameter list holds them: an H0 value, or the two limits of an
// equivalence, and the truth under H1 in the form in which it is entered.
#pragma once

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/types.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"

#include <optional>

namespace quorvanta {

// What the values that are entered, the truth and H0 are to each other.
//
// The middle between two limits, where two one-sided tests have their highest power, lies there on
// this scale. The effect of two samples is a difference; on the scale of logarithms it is a ratio.
// Odds are entered as such, but their effect, and limits, are of proportions.
enum class EffectScale { Plain, Log, FisherZ, Proportion, Odds };

// Kinds of one sample: the group of forms, the H0 value, the H1 value by form, the limits.
struct OneSampleKinds {
    i16 Group;
    i16 H0;
    i16 H1[3];
    i16 Left;
    i16 Right;
};

// Kinds of two samples: the group of forms, the H0 effect (0: it is always 0), the H1 effect that
// option 1 enters itself (0: option 1 enters the second value as a difference), the first sample's
// value, the second sample's by form (0: option 1 is the ratio), the limits.
struct TwoSampleKinds {
    i16 Group;
    i16 H0;
    i16 Effect;
    i16 First;
    i16 Second[3];
    i16 Left;
    i16 Right;
};

// Kinds of an effect that is entered by itself and 0 under H0: the effect, the limits.
struct EffectKinds {
    i16 Effect;
    i16 Left;
    i16 Right;
};

// Offers the forms of the truth. Between two limits there is no single H0 value to which the truth
// of one sample could be related.
void OfferForms(const OneSampleKinds& kinds);
void OfferForms(const TwoSampleKinds& kinds);

class Hypotheses {
  public:
    // Are there two values, of one sample each? Else the truth is one value or effect.
    bool HasTwo() const { return first_ != 0; }
    // How the truth, or the second of two values, is entered.
    Form TruthForm() const { return form_; }

    // The H0 value or effect; an effect of 0 where none is entered.
    f32 H0() const;
    // The limits of two one-sided tests.
    f32 Left() const;
    f32 Right() const;
    // One sample: the true value. Two samples: the true effect, not rounded where it is formed of
    // two values.
    f64 Truth() const;
    // The null value that a simulation under H0 takes for true: H0, between two limits the one that
    // is nearer to the truth on the scale of the effect.
    f64 NullTruth() const;
    // Two samples whose values are entered: these.
    f32 First() const;
    f32 Second() const;
    // The same with x in the place of the unknown.
    f64 FirstAt(f64 x) const;
    f64 SecondAt(f64 x) const;

    // Is the unknown the truth, or one of its two values?
    bool TruthIsUnknown() const;
    // Is it the H0 value, or one of the limits?
    bool NullIsUnknown() const;
    // Is it the second of two values?
    bool SecondIsUnknown() const;
    // Is it what a dependent truth is related to?
    bool BaseIsUnknown() const;
    // The entry of a dependent truth.
    i16 TruthParNo() const { return truth_; }

    // The H0 value at which a test that keeps the difference from it has the least power, where
    // null and true value are equally far from the middle of their scale; NoValue where the unknown
    // is not such a value.
    f64 BaseOfLeastPower(f64 middle) const;

    // Are the limits in order, and is the dependent value in its range?
    bool Check() const;
    // The same with a range of the caller's.
    bool Check(Range truth) const;

    // Narrows the search for a hypothesis: the dependent value stays in its range, and the truth on
    // its side of H0, or between the limits, on one side of their middle.
    void Narrow(f64& lower, f64& upper) const;
    // The same, but between two limits on one side of the truth that has the highest power, where
    // that is not the middle of a scale; and with a range of the caller's.
    void Narrow(f64& lower, f64& upper, f64 (*residual)()) const;
    void Narrow(f64& lower, f64& upper, f64 (*residual)(), Range truth) const;

    // Narrows the search so that the dependent value stays in its range, and nothing else.
    void NarrowPair(f64& lower, f64& upper) const;

    // Narrows the search for the truth, or for one of its two values, to a true effect above this
    // one, or below it.
    void KeepEffect(f64& lower, f64& upper, Side side, f64 effect) const;

  private:
    friend Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale);
    friend Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale);
    friend Hypotheses AddHypotheses(const EffectKinds& kinds);

    // A value of the unknown at which the true effect is what was asked for, and whether the effect
    // grows with the unknown.
    struct EffectPoint {
        f64 At;
        bool Rising;
    };

    void AddNull(i16 h0, i16 left, i16 right);
    f64 Entry(f64 value) const;
    f64 FromEntry(f64 entry) const;
    f64 EffectAbove(f64 value, f64 effect) const;
    f64 EffectBelow(f64 value, f64 effect) const;
    std::optional<EffectPoint> PointOf(f64 effect) const;
    std::optional<EffectPoint> PointOfFirst(f64 effect) const;
    static std::optional<EffectPoint> PointOfRatio(f64 difference, f64 ratio);
    f64 EnteredEffect() const;
    f64 Middle() const;
    Range TruthRange() const;
    void NarrowTruth(f64& lower, f64& upper) const;
    void NarrowTruthAt(f64& lower, f64& upper, f64 (*residual)()) const;
    void NarrowNull(f64& lower, f64& upper) const;

    EffectScale scale_ = EffectScale::Plain;
    i16 h0_ = 0;    // the H0 value; with two limits the left one, the right one next
    i16 first_ = 0; // of two values; 0: the truth is one value
    i16 truth_ = 0; // the true value or effect; the second of two values
    i16 base_ = 0;  // what a dependent truth is related to; 0: nothing
    Form form_ = AsValue;
    i16 kind_ = 0; // of a dependent truth as such
};

Hypotheses AddHypotheses(const OneSampleKinds& kinds, EffectScale scale);
Hypotheses AddHypotheses(const TwoSampleKinds& kinds, EffectScale scale);
Hypotheses AddHypotheses(const EffectKinds& kinds);

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

// Starts a parameter list with significance level and power.
void StartTestList();

// 0.5 ln((1 + r)/(1 - r)) (R. A. Fisher, 1921); r is cut to -0.99999..0.99999.
f64 FisherZ(f64 r);

} // namespace quorvanta
