// Group sequential designs: how a test of the catalogue, whose power equation hands its arguments
// over, becomes one, and what is shown of it.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Effect and standard errors of a test as its fixed design has them at the full size.
struct GsEffect {
    f32 Delta = 0;     // H1 minus H0
    f32 Sd = 0;        // its standard error under H1
    f32 SdFixed = 0;   // the same for the scale of the design
    f32 MarginLow = 0; // two one-sided tests: how far the truth lies above the left limit
    f32 MarginUpp = 0; // and below the right one
    f32 SdLow = 0;     // standard errors where the truth is a limit
    f32 SdUpp = 0;
    f32 Delta0 = 0; // what is taken off the effect: a continuity correction
};

// The power of the design of the current analysis, NoOfInterim analyses before the final one: a
// probability; 99999, with Cancelled set, after a message or when the user cancels. The flag asks
// for the lower boundary of the power family.
f64 GsPowerCalc(const GsEffect& effect, bool flag = false);

// The same with the members of the record one by one, in its order.
f64 GsPowerCalc(f32 delta, f32 sd, f32 sdFixed, f32 marginLow, f32 marginUpp, f32 sdLow, f32 sdUpp,
                f32 delta0, bool flag);

// The power of Student's test by the information that the design needs more than a fixed one, with
// the degrees of freedom of its last size; ExitUpp(K) as well.
f64 GsTPower(f32 drift, f32 scale, bool flag);

// How much more information a design of NoOfAnal analyses needs than a fixed one of the same power
// at the level alpha. With two one-sided tests drift and scale are those at the limits of the last
// power that was calculated, and the fixed design has both of them as well. 99999 if there is none.
f64 GsInfoRatio(f32 drift, f32 scale, f32 alpha);

// The information at which two one-sided tests at the level alpha, without interim analyses, reject
// together with this power: in multiples of that with the standard errors sdLow and sdUpp, at these
// distances of the truth from the limits, above 0. By the root finder; 99999 if it finds none.
f64 GsSizeSolve(f64 power, f64 alpha, f32 marginLow, f32 marginUpp, f32 sdLow, f32 sdUpp);

// --- What is shown ------------------------------------------------------------------------------

// What frmMonteGroupSeq shows of one analysis or, behind the last, of all of them.
struct GsColumn {
    f32 Upp = 0; // bounds
    f32 Low = 0;
    f32 UppH0 = 0;  // probabilities to stop: H0 rejected though true
    f32 LowH0 = 0;  // accepted
    f32 UppH1 = 0;  // rejected when H1 is true: the power
    f32 LowH1 = 0;  // accepted
    f32 Reject = 0; // nominal levels
    f32 Accept = 0;
    f32 Fraction = 1; // of the information
    f32 Size = 0;     // in total; or the study time, if H1 is true
    f32 SizeH0 = 0;   // if H0 is; that of subjects is the same
};

// Works the design of the solved analysis out: bounds, probabilities, sizes. The parameters have
// their values; the unknown that of the solution. False where it has none.
bool GsWorkOut();

// Of analysis k, from 1 to NoOfAnal; NoOfAnal + 1 for all of them.
GsColumn GsColumnOf(i16 k);

// Does the design have two boundaries, so that upper and lower exits are told apart?
bool GsHasLowerBound();

// The average size, time or number of events, if H0 is true and if H1 is.
f64 GsAverageSize(bool isH1);
// "Average   Sample Size" and its fellows for times and events.
const char* GsAverageCaption();

} // namespace quorvanta
