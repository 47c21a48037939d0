// The parameter list of every test of means, and of medians on the log scale: hypotheses, standard
// deviations, sizes, and the degrees of freedom where they are entered.
#pragma once

#include "core/types.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

namespace quorvanta {

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
