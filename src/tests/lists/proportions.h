// The parameter lists of the tests of one proportion, of two, and of two in pairs; or of odds,
// which are entered in the place of proportions.
#pragma once

#include "core/kinds.h"
#include "core/types.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

// The kinds of one proportion in a test.
inline constexpr OneSampleKinds OneProportionKinds{
    Group::H1Proportion,
    Kind::H0Proportion,
    {Kind::H1Proportion, Kind::H1ProportionMinusH0, Kind::H1ProportionOverH0},
    Kind::ProportionLeftLimit,
    Kind::ProportionRightLimit};

struct ProportionList {
    bool Check() const;

    // Narrows the search for one of the proportions.
    //
    // Where a proportion is sought to which another is entered in relation, the power has the same
    // value twice, on both sides of the point at which the two add up to 1: the search takes the
    // side above that point, or below it when it goes left.
    void Narrow(f64& lower, f64& upper, f64 (*residual)()) const;

    Hypotheses Hypothesis;
    bool Odds = false;   // proportions are entered as odds; a difference and limits never are
    bool Paired = false; // of two measurements of the same subjects
};

// Offers the forms of one proportion, or of two, by NoOfSamples; of two in pairs.
void OfferProportions(bool odds);
void OfferPairedProportions();

// Adds the proportions of one sample, or of two, to the parameter list.
enum class NullDifference { Entered, Zero };
ProportionList AddProportions(bool odds, NullDifference null);
ProportionList AddPairedProportions();

struct ProportionValues {
    f32 Null = 0;  // H0 proportion or difference; with two one-sided tests the left limit
    f32 Right = 0; // the right limit
    f32 P1 = 0;    // H1 proportion; of the first of two samples
    f32 P2 = 0;
};

ProportionValues ReadProportions(const ProportionList& list);

// o/(o + 1), for odds o >= 0.
f32 OddsToProp(f32 odds);

} // namespace quorvanta
