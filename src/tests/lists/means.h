// The parameter list of every test of means, and of medians on the log scale: hypotheses, standard
// deviations, sizes, and the degrees of freedom where they are entered.
#pragma once

#include "core/kinds.h"
#include "core/types.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

// The kinds of one mean in a test, and of two.
inline constexpr OneSampleKinds OneMeanKinds{
    Group::H1Mean,
    Kind::H0Mean,
    {Kind::H1Mean, Kind::H1MeanMinusH0, Kind::H1MeanOverH0},
    Kind::MeanLeftLimit,
    Kind::MeanRightLimit};
inline constexpr TwoSampleKinds TwoMeansKinds{Group::Mean2,
                                              Kind::H0Mean2Minus1,
                                              Kind::H1Mean2Minus1,
                                              Kind::H1Mean1,
                                              {Kind::H1Mean2, NoKind, Kind::H1Mean2Over1},
                                              Kind::MeanLeftLimit,
                                              Kind::MeanRightLimit};
// The kinds of two standard deviations in a test of their ratio.
inline constexpr TwoSampleKinds TwoSdsKinds{Group::H1Sd2,
                                            Kind::H0Sd2Over1,
                                            Kind::H1Sd2Over1,
                                            Kind::H1Sd1,
                                            {Kind::H1Sd2, NoKind, NoKind},
                                            Kind::SdLeftLimit,
                                            Kind::SdRightLimit};

struct MeansList {
    // Offers the forms that the current numbers of samples and tails leave.
    static void Offer();
    void Build();
    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    bool LogScale = false; // locations are medians, the effect is a ratio
    Hypotheses Hypothesis;
    SampleValues Deviations; // of each group, or of all
    SampleValues Sizes;
    i16 DfEntry = 0; // position of the entered degrees of freedom or number of groups; 0: none
};

// Adds the entry for the degrees of freedom of an estimated standard deviation that is ticked, if
// one is: the degrees of freedom themselves or the number of groups. Answers its position, or 0.
i16 AddDfEntry();

} // namespace quorvanta
