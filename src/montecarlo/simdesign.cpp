#include "montecarlo/simdesign.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/obstacle.h"
#include "core/platform.h"
#include "core/search.h"
#include "core/values.h"
#include "groupseq/boundaries.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "groupseq/spending.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "output/designresults.h"

namespace quorvanta {

namespace {

// The power family is made for a power, which no other simulation asks for: while this lives, the
// unknown is another parameter.
class PowerGiven {
  public:
    PowerGiven() {
        if (BoundType == BoundPowerFamily)
            UnknownParNo = NoOfPar;
    }
    ~PowerGiven() { UnknownParNo = before_; }
    PowerGiven(const PowerGiven&) = delete;
    PowerGiven& operator=(const PowerGiven&) = delete;

  private:
    i16 before_ = UnknownParNo;
};

bool HasDesign() {
    ForgetObstacle();
    ReadBoundChoice();
    if (BoundType == BoundPowerFamily && !HasValue(ParText(ParKind(PowerParNo)))) {
        ShowMessage(StripAmpersand(ParLabel(ParKind(PowerParNo))) + " Has No Value.");
        return false;
    }
    const PowerGiven given;
    if (SelRootFunction() != NoValue)
        return true;
    if (Cancelled == False) {
        TellObstacle(std::string(NoBoundaries));
        ShowCantCalculate();
    }
    return false;
}

// The p-value of a statistic that lies on the bound. The level that is shown of it is 0.00001 at
// least, and an effect may well take a trial across a bound beyond that.
f32 LevelOf(f32 bound) {
    f32 level = Single(1 - f64{NorCdf(bound)});
    GsFoldTwoSided(level);
    return level;
}

f32 RejectLevel(i16 k) {
    return BoundType == BoundUserDefined ? LevelReject(k) : LevelOf(UppBound(k));
}

f32 AcceptLevel(i16 k) {
    if (BoundType == BoundUserDefined)
        return LevelAccept(k);
    return BoundType == BoundPowerFamily ? LevelOf(LowBound(k)) : 1.0F;
}

} // namespace

void SimReadDesign() {
    if (!HasDesign()) {
        Cancelled = True;
        return;
    }
    RejectP.ReDim(0, NoOfAnal);
    AcceptP.ReDim(0, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        RejectP(k) = RejectLevel(k);
        AcceptP(k) = AcceptLevel(k);
    }
    GsShowIntPar();
    GsShowResults();
}

bool SimHasTwoClocks() {
    return IsGroupSeq == True && HasInterimTimes() && TimeFromSize == 0;
}

} // namespace quorvanta
