// Critical values of a design, and the probabilities of crossing them.
#pragma once

#include "core/types.h"

namespace quorvanta {

// The probability of crossing under a drift, summed over all analyses; 0 when the user cancels.
// scale is the standard error of the effect when all information is there. Fills Info, the grids,
// ExitUpp and ExitLow.
//
// The flag matters for the power family, and for its lower boundary alone: set, the result is the
// probability of ending below it. While CritReady is 0 the boundaries follow from the constants.
f32 GsExitProb(f32 drift, f32 scale, bool flag);

// The constant C1 with P(crossing) = target under H0. 99999 if there is none, or when the user
// cancels.
f32 GsSolveConst(f32 target);

// The constants C1 and C2 of the power family: P(crossing above) = target under H0, P(ending
// below) = PowerTarget under DesignTheta. The result is C2; both, and the boundaries, belong
// together. 99999 if there are none, or when the user cancels.
f32 GsSolveTwoConst(f32 target);

// Critical values of the design for a one-sided error of 1 - target: boundaries, constants, exit
// probabilities under H0, and but for type 8 the nominal levels. For type 8 these are the user's,
// in LevelReject and LevelAccept, and target becomes the error that results. The same design as
// the last time is not solved again. False when the user cancels.
bool GsCritValues(f32& target);

// Were critical values solved since the last call of this? The cache of a power needs to know.
bool GsCritValuesAreNew();

// The next calculation starts from nothing.
void ForgetCritValues();

// A calculation with steps that may take long: its display appears when it does, and goes with the
// value. While one is open, further ones belong to it.
class GsProgressOpen {
  public:
    explicit GsProgressOpen(const char* caption);
    ~GsProgressOpen();
    GsProgressOpen(const GsProgressOpen&) = delete;
    GsProgressOpen& operator=(const GsProgressOpen&) = delete;
};

// One step of it; true once the user has cancelled.
bool GsProgressStep();

} // namespace quorvanta
