// A quantity of one sample, or of each of two samples, of which the second may be entered as such,
// as a difference from the first or as a ratio to it.
#pragma once

#include "core/checksearch.h"
#include "core/kinds.h"
#include "core/types.h"

namespace quorvanta {

// In the kinds of a list: there is none.
inline constexpr i16 NoKind = 0;

// The kinds of such a quantity: of a single sample; with two samples the group of forms, the first
// sample's and the second sample's by form (0: option 1 is the ratio).
struct SampleKinds {
    i16 One;
    i16 Group;
    i16 First;
    i16 Second[3];
};

inline constexpr SampleKinds SizeKinds{
    Kind::Size, Group::Size2, Kind::Size1, {Kind::Size2, Kind::Size2Minus1, Kind::Size2Over1}};
inline constexpr SampleKinds SdKinds{
    Kind::Sd, Group::Sd2, Kind::Sd1, {Kind::Sd2, Kind::Sd2Minus1, Kind::Sd2Over1}};
inline constexpr SampleKinds ShapeKinds{Kind::Shape,
                                        Group::Shape2,
                                        Kind::Shape1,
                                        {Kind::Shape2, Kind::Shape2Minus1, Kind::Shape2Over1}};
// The first group, and each of the others.
inline constexpr SampleKinds GroupSizeKinds{
    NoKind, Group::SizeK, Kind::Size1, {Kind::SizeK, Kind::SizeKMinus1, Kind::SizeKOver1}};

// Offers the forms, where there are two samples.
void OfferForms(const SampleKinds& kinds);

class SampleValues {
  public:
    // The values as the engines see them.
    f32 First() const;
    f32 Second() const;

    // The same with x in the place of the unknown.
    f64 FirstAt(f64 x) const;
    f64 SecondAt(f64 x) const;

    bool HasSecond() const { return second_ != 0; }
    // How it is entered.
    Form SecondForm() const { return form_; }
    bool FirstIsUnknown() const;
    i16 FirstParNo() const { return first_; }
    bool HasUnknown() const;
    bool SecondDependsOnUnknown() const;

    // The range of the kind of the first and of the second value as such.
    Range FirstRange() const;
    Range SecondRange() const;

    // Does the second value lie in its range?
    bool Check() const;
    // Narrows the search so that it does.
    void Narrow(f64& lower, f64& upper) const;

    // The same for both values and ranges of the caller's.
    bool Check(Range first, Range second) const;
    void Narrow(f64& lower, f64& upper, Range first, Range second) const;

  private:
    friend SampleValues AddCommonValue(const SampleKinds& kinds);
    friend SampleValues AddPair(const SampleKinds& kinds);

    i16 first_ = 0;
    i16 second_ = 0; // 0: one sample
    Form form_ = AsValue;
    i16 kind_ = 0; // of the second value as such
};

// Adds the parameter, or the two parameters, for NoOfSamples to the list.
SampleValues AddSampleValues(const SampleKinds& kinds);

// Adds one parameter, whatever NoOfSamples is.
SampleValues AddCommonValue(const SampleKinds& kinds);

// Adds two parameters, whatever NoOfSamples is.
SampleValues AddPair(const SampleKinds& kinds);

// The sizes of the samples; their form is also left in WorkNo.
SampleValues AddSizes(const SampleKinds& kinds = SizeKinds);

// ParValue(position), with x in the place of the unknown.
f64 ValueAt(i16 position, f64 x);

// The same for a value that is entered in a form relative to base.
f64 DependentAt(i16 position, f64 base, Form form, f64 x);

} // namespace quorvanta
