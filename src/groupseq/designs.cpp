#include "groupseq/designs.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/platform.h"
#include "core/root.h"
#include "groupseq/boundaries.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "groupseq/interim.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

f64 Refused() {
    Cancelled = True;
    return NoValue;
}

f64 Alpha() {
    return f64{Single(ParValue(LevelParNo))};
}

// Sides of the level: with two tails each has half of it.
f64 Sides() {
    return NoOfTails == TwoSided ? 2 : 1;
}

// While this lives a power family of two one-sided tests is one of two tails.
class TailsApart {
  public:
    ~TailsApart() { NoOfTails = tails_; }
    TailsApart() = default;
    TailsApart(const TailsApart&) = delete;
    TailsApart& operator=(const TailsApart&) = delete;

  private:
    i16 tails_ = NoOfTails;
};

// --- Sizes --------------------------------------------------------------------------------------

f32 DegreesOfFreedom(i16 k) {
    return Single(f64{CumSize(k)} - 1 - (NoOfSamples == TwoSamples ? 1 : 0));
}

bool RefuseOrder(const std::string& what, i16 k) {
    const bool isTime = what.empty();
    ShowMessage(isTime ? "Time for Interim Analysis" + std::to_string(k - 1) +
                             " Is Larger Than for Interim Analysis" + std::to_string(k) + "."
                       : what + " at Interim Analysis" + std::to_string(k - 1) +
                             " Is Larger Than at Interim Analysis" + std::to_string(k) + ".");
    return false;
}

// The sizes as they are shown, read back and added up; false after a message.
bool ReadSizes() {
    CumSize.ReDim(1, NoOfAnal);
    f64 before1 = 0;
    f64 before2 = 0;
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 size1 = ReadNumber(InterimSize1Text(k - 1));
        const f64 size2 = ReadNumber(InterimSize2Text(k - 1));
        if (size1 < before1)
            return RefuseOrder(HasInterimTimes() ? "" : "Sample Size 1", k);
        if (size2 < before2)
            return RefuseOrder(HasInterimTimes() ? "" : "Sample Size 2", k);
        before1 = size1;
        before2 = size2;
        CumSize(k) = Single(InterimSizeOf(k, true));
    }
    return true;
}

// --- The stored power ---------------------------------------------------------------------------

struct PowerInputs {
    GsEffect Effect;
    i16 LeftTail = 0;
    bool Flag = false;
    bool ByStudent = false;
    f32 LastSize = 0;
    f64 Level = 0;
};

bool AreSame(const PowerInputs& a, const PowerInputs& b) {
    const auto& x = a.Effect;
    const auto& y = b.Effect;
    return x.Delta == y.Delta && x.Sd == y.Sd && x.SdFixed == y.SdFixed &&
           x.MarginLow == y.MarginLow && x.MarginUpp == y.MarginUpp && x.SdLow == y.SdLow &&
           x.SdUpp == y.SdUpp && x.Delta0 == y.Delta0 && a.LeftTail == b.LeftTail &&
           a.Flag == b.Flag && a.ByStudent == b.ByStudent && a.LastSize == b.LastSize &&
           a.Level == b.Level;
}

struct DriftAndScale {
    f32 Drift = 0;
    f32 Scale = 1;
};

// The run that the power comes from; with two one-sided tests that at the nearer limit, and beside
// it that at the other one.
struct PowerRun {
    DriftAndScale Test;
    i16 Tails = OneSided;
    DriftAndScale Other{};
};

struct StoredPower {
    PowerInputs Inputs;
    f64 Power = 0;
    PowerRun Run;
    Array1<f32> Upp;
    Array1<f32> Low;
    Array1<f32> UppBounds;
    Array1<f32> LowBounds;
};

std::optional<StoredPower> stored;
PowerRun lastRun;

// --- Power by tails -----------------------------------------------------------------------------

bool ByStudent() {
    return GsTestKind == GsStudent && UnknownParNo != PowerParNo;
}

f64 PowerAt(f64 drift, f32 scale, bool flag) {
    lastRun = {{Single(drift), scale}, NoOfTails};
    return ByStudent() ? GsTPower(Single(drift), scale, flag)
                       : f64{GsExitProb(Single(drift), scale, flag)};
}

// An interim bound that both one-sided tests can't cross counts for nothing. The final one stays:
// the power would be the same for all sizes too small, and no size be found.
void RemoveUnreachableBounds() {
    for (i16 k = 1; k < NoOfAnal; ++k) {
        const f64 root = std::sqrt(f64{IntTime(k)});
        if (f64{MarginSum} / (2 * f64{SdValue} / root) < f64{UppBound(k)})
            UppBound(k) = BoundAboveAll;
    }
}

// Either test by itself, as on the normal scale: with the nearer limit alone, a size that is solved
// for would not have its power.
f64 StudentEquivalencePower(const GsEffect& effect, bool flag) {
    DesignTheta = effect.MarginLow;
    const f64 left = GsTPower(effect.MarginLow, effect.SdLow, flag);
    DesignTheta = effect.MarginUpp;
    return left + GsTPower(effect.MarginUpp, effect.SdUpp, flag) - 1;
}

f64 EquivalencePower(const GsEffect& effect, bool flag) {
    RemoveUnreachableBounds();
    lastRun = {{effect.MarginLow, effect.SdLow}, NoOfTails, {effect.MarginUpp, effect.SdUpp}};
    if (effect.MarginLow >= effect.MarginUpp)
        std::swap(lastRun.Test, lastRun.Other);
    if (ByStudent())
        return StudentEquivalencePower(effect, flag);
    const f64 delta0{effect.Delta0};
    const f64 left{GsExitProb(Single(f64{effect.MarginLow} - delta0), effect.SdLow, flag)};
    const Array1<f32> leftExits = ExitUpp;
    const f64 right{GsExitProb(Single(f64{effect.MarginUpp} + delta0), effect.SdUpp, flag)};
    for (i16 i = 0; i <= NoOfAnal; ++i) {
        const f64 sum = f64{ExitUpp(i)} + f64{leftExits(i)};
        constexpr f64 nearlyOne = 0.999;
        ExitUpp(i) = Single(sum >= nearlyOne ? sum - 1 : sum);
    }
    return left + right - 1;
}

f64 PowerByTails(const GsEffect& effect, bool flag) {
    const f64 delta{effect.Delta};
    const f64 delta0{effect.Delta0};
    if (NoOfTails == TwoOneSided)
        return EquivalencePower(effect, flag);
    // A correction takes from the effect whichever tail it lies in, as in a fixed test.
    if (NoOfTails == OneSided)
        return PowerAt((LeftTail == True ? -delta : delta) - delta0, effect.Sd, flag);
    // The two-sided boundaries of the user and of the power family have their own lower ones.
    if (BoundType < BoundUserDefined)
        for (i16 k = 1; k <= NoOfAnal; ++k)
            LowBound(k) = -UppBound(k);
    DesignTheta = Single(std::fabs(delta0 + delta));
    // One that is larger than the effect leaves none.
    return PowerAt(MaxOf(0, std::fabs(delta) - delta0), effect.Sd, flag);
}

// What a fixed design needs for the power p at the level of a tail.
f64 FixedInformation(f64 p, f64 alpha, f64 drift) {
    const f64 quantiles = f64{NorInv(Single(p))} + f64{NorInv(Single(1 - alpha / Sides()))};
    const f64 distance = drift + ProbabilityFloor;
    return quantiles * quantiles / (distance * distance);
}

// The shift of Student's statistic at the share of the information that a fixed design needs: none
// where no information is needed, or no effect is there.
f64 StudentShift(f64 drift, f64 information, f64 scale, f64 fixed) {
    if (fixed <= 0 || drift == 0)
        return 0;
    return drift / (scale * std::sqrt(information / fixed));
}

f64 NoncentralT(f64 t, f32 df, f64 shift) {
    return f64{NcTCdf(Single(t), df, Single(shift))};
}

f64 StudentPower(f64 critical, f32 df, f64 shift) {
    if (NoOfTails == TwoSided)
        return 1 - (NoncentralT(critical, df, shift) - NoncentralT(-critical, df, shift));
    return 1 - NoncentralT(critical, df, shift);
}

} // namespace

// J. Whitehead, The Design and Analysis of Sequential Clinical Trials, revised 2nd edition, 1997;
// C. Jennison and B. W. Turnbull, Group Sequential Methods with Applications to Clinical Trials,
// 2000, chapters 2 to 5 and 7.
f64 GsPowerCalc(const GsEffect& given, bool flag) {
    GsEffect effect = given;
    GsTestKind = GsKindOfTest();
    ReadBoundChoice();
    if (BoundType == BoundPowerFamily &&
        (UnknownParNo == LevelParNo || UnknownParNo == PowerParNo)) {
        ShowMessage("Significance Level and Power Can't Be Calculated in Power Family.");
        return Refused();
    }
    SdValue = effect.SdFixed;
    effect.MarginLow = MaxSingle(0, effect.MarginLow);
    effect.MarginUpp = MaxSingle(0, effect.MarginUpp);
    MarginSum = Single(f64{effect.MarginLow} + f64{effect.MarginUpp});
    const TailsApart tails;
    if (BoundType == BoundPowerFamily && NoOfTails == TwoOneSided) {
        NoOfTails = TwoSided;
        effect.Delta = MinSingle(effect.MarginLow, effect.MarginUpp);
    }
    DesignTheta = Single(std::fabs(f64{effect.Delta}) - f64{effect.Delta0});
    GsReadFractions();
    CritReady = False;
    WriteInterimSizes();
    if (!ReadSizes())
        return Refused();
    if (BoundType == BoundUserDefined && !ReadInterimLevels())
        return Refused();
    f32 target = Single(1 - Alpha() / Sides());
    if (!GsCritValues(target))
        return NoValue;
    // The user's own levels need no constant.
    if ((BoundType != BoundUserDefined && f64{BoundC1} == NoValue) ||
        (BoundType == BoundPowerFamily && f64{BoundC2} == NoValue))
        return NoValue;
    CritReady = True;
    const PowerInputs inputs{effect,      LeftTail,          flag,
                             ByStudent(), CumSize(NoOfAnal), ByStudent() ? Alpha() : 0};
    if (!GsCritValuesAreNew() && stored && AreSame(stored->Inputs, inputs)) {
        ExitUpp = stored->Upp;
        ExitLow = stored->Low;
        UppBound = stored->UppBounds;
        LowBound = stored->LowBounds;
        lastRun = stored->Run;
        return stored->Power;
    }
    stored.reset();
    const f64 power = PowerByTails(effect, flag);
    if (Cancelled == True)
        return NoValue;
    stored = StoredPower{inputs, power, lastRun, ExitUpp, ExitLow, UppBound, LowBound};
    return power;
}

f64 GsPowerCalc(f32 delta, f32 sd, f32 sdFixed, f32 marginLow, f32 marginUpp, f32 sdLow, f32 sdUpp,
                f32 delta0, bool flag) {
    return GsPowerCalc({delta, sd, sdFixed, marginLow, marginUpp, sdLow, sdUpp, delta0}, flag);
}

f64 GsTPower(f32 drift, f32 scale, bool flag) {
    const f64 alpha = Alpha();
    const f64 p = MinDouble(f64{GsExitProb(drift, scale, flag)}, f64{0.9999899864F});
    const f64 shift = StudentShift(f64{drift}, f64{Info(NoOfAnal)}, f64{scale},
                                   FixedInformation(p, alpha, f64{DesignTheta}));
    const f32 df = DegreesOfFreedom(NoOfAnal);
    const f64 critical{TInv(Single(1 - alpha / Sides()), df)};
    // A power below the level is one on the other side of H0: squares don't tell.
    const bool isBelow = p < alpha / Sides();
    const f64 power = StudentPower(critical, df, isBelow ? -std::fabs(shift) : shift);
    ExitUpp(NoOfAnal) = Single(power);
    return power;
}

f64 GsInfoRatio(f32 drift, f32 scale, f32 alpha) {
    f32 target = Single(1 - f64{alpha} / Sides());
    CritReady = False;
    if (!GsCritValues(target))
        return NoValue;
    CritReady = True;
    if (NoOfTails == TwoOneSided) {
        const DriftAndScale& test = lastRun.Test;
        const DriftAndScale& other = lastRun.Other;
        const f64 p = f64{GsExitProb(test.Drift, test.Scale, false)} +
                      f64{GsExitProb(other.Drift, other.Scale, false)} - 1;
        const f64 size = GsSizeSolve(p - ProbabilityFloor, f64{alpha}, test.Drift, other.Drift,
                                     test.Scale, other.Scale);
        return size == NoValue ? NoValue : 1 / size;
    }
    const f64 p = MinDouble(f64{GsExitProb(drift, scale, false)}, f64{0.9999899864F});
    return f64{Info(NoOfAnal)} / FixedInformation(p, f64{alpha}, f64{drift});
}

f64 GsSizeSolve(f64 power, f64 alpha, f32 marginLow, f32 marginUpp, f32 sdLow, f32 sdUpp) {
    const f64 quantile{NorInv(Single(1 - alpha))};
    const f64 low = f64{marginLow} / f64{sdLow};
    const f64 upp = f64{marginUpp} / f64{sdUpp};
    const auto excess = [&](f64 size) {
        const f64 root = std::sqrt(size);
        return f64{NorCdf(Single(low * root - quantile))} +
               f64{NorCdf(Single(upp * root - quantile))} - 1 - power;
    };
    constexpr f64 least = 1e-5;
    constexpr f64 most = 1e4;
    constexpr f64 tolerance = 1e-5;
    constexpr i16 longest = 500;
    constexpr f64 largestResidual = 0.001;
    i16 iterations = 0;
    f64 size = NoValue;
    f64 residual = NoValue;
    FindRootOf(excess, least, most, tolerance, longest, iterations, size, residual);
    return std::fabs(residual) > largestResidual ? NoValue : size;
}

// --- What is shown ------------------------------------------------------------------------------

namespace {

std::vector<GsColumn> columns; // of the analyses, and behind them of all

// The design as it stands, while parts of it are worked with.
struct DesignApart {
    Array1<f32> Time = IntTime;
    Array1<f32> Upp = UppBound;
    Array1<f32> Low = LowBound;
    Array1<f32> UppH0 = ExitUppH0;
    Array1<f32> LowH0 = ExitLowH0;
    Array1<f32> UppH1 = ExitUpp;
    Array1<f32> LowH1 = ExitLow;
    Array1<f32> Reject = LevelReject;
    Array1<f32> Accept = LevelAccept;
    f32 C1 = BoundC1;
    f32 C2 = BoundC2;
    i16 Analyses = NoOfAnal;
    i16 Tails = NoOfTails;

    void BringBack() const {
        IntTime = Time;
        UppBound = Upp;
        LowBound = Low;
        ExitUppH0 = UppH0;
        ExitLowH0 = LowH0;
        ExitUpp = UppH1;
        ExitLow = LowH1;
        LevelReject = Reject;
        LevelAccept = Accept;
        BoundC1 = C1;
        BoundC2 = C2;
        NoOfAnal = Analyses;
        NoOfTails = Tails;
        CritReady = True;
    }
};

// The first k analyses as a design that ends with the last of them.
void EndAt(i16 k, const DesignApart& whole) {
    NoOfAnal = k;
    IntTime.ReDim(1, k);
    for (i16 i = 1; i <= k; ++i)
        IntTime(i) = Single(f64{whole.Time(i)} / f64{whole.Time(k)});
    if (BoundType == BoundUserDefined) {
        LevelReject = whole.Reject;
        LevelAccept = whole.Accept;
        LevelReject.ReDimPreserve(k);
        LevelAccept.ReDimPreserve(k);
    }
}

// The power that a test has by analysis k at the information of which a fixed one needs that ratio.
f64 StudentPowerOf(const DriftAndScale& test, i16 k, f64 spent, f64 ratio,
                   const DesignApart& whole) {
    const f64 scale{test.Scale};
    const f64 information = f64{whole.Time(k)} / (scale * scale);
    const f64 shift = f64{test.Drift} * std::sqrt(information / ratio);
    const f32 df = DegreesOfFreedom(k);
    return StudentPower(f64{TInv(Single(1 - spent / Sides()), df)}, df, shift);
}

// The power reached by analysis k on the scale of t, for the error spent by then. Two one-sided
// tests reach together what both of them reach.
f64 StudentPowerBy(i16 k, f64 spent, const DesignApart& whole) {
    if (spent <= ProbabilityFloor)
        return 0;
    EndAt(k, whole);
    const f64 ratio = GsInfoRatio(lastRun.Test.Drift, lastRun.Test.Scale, Single(spent));
    if (ratio == NoValue || !(ratio > 0))
        return 0;
    const f64 power = StudentPowerOf(lastRun.Test, k, spent, ratio, whole);
    return lastRun.Tails == TwoOneSided
               ? MaxOf(0, power + StudentPowerOf(lastRun.Other, k, spent, ratio, whole) - 1)
               : power;
}

// Bounds and stopping probabilities on the scale of t. Where a bound can't be crossed nothing
// stops.
void TurnToStudent() {
    const DesignApart whole;
    const auto isReached = [&whole](i16 k) { return whole.Upp(k) < BoundAboveAll; };
    std::vector<f64> powers;
    f64 spent = 0;
    for (i16 k = 1; k <= whole.Analyses; ++k) {
        spent += f64{whole.UppH0(k - 1)};
        const f64 before = powers.empty() ? 0 : powers.back();
        powers.push_back(isReached(k) ? StudentPowerBy(k, spent, whole) : before);
    }
    whole.BringBack();
    f64 before = 0;
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 power = powers[static_cast<std::size_t>(k - 1)];
        ExitUpp(k - 1) = Single(power - before);
        before = power;
        if (isReached(k))
            UppBound(k) = TInv(Single(1 - f64{LevelReject(k)} / Sides()), DegreesOfFreedom(k));
    }
    ExitUpp(NoOfAnal) = Single(before);
}

f32 CellOf(const Array1<f32>& values, i16 i) {
    return i >= values.LowBound() && i <= values.HighBound() ? values(i) : 0.0F;
}

GsColumn ColumnFrom(i16 k) {
    const bool isOverAll = k > NoOfAnal;
    const auto at = static_cast<i16>(k - 1);
    GsColumn column;
    column.UppH0 = CellOf(ExitUppH0, at);
    column.UppH1 = CellOf(ExitUpp, at);
    if (GsHasLowerBound()) {
        column.LowH0 = CellOf(ExitLowH0, at);
        column.LowH1 = CellOf(ExitLow, at);
    }
    if (isOverAll)
        return column;
    column.Upp = CellOf(UppBound, k);
    column.Low = CellOf(LowBound, k);
    column.Reject = CellOf(LevelReject, k);
    column.Accept = CellOf(LevelAccept, k);
    column.Fraction = CellOf(IntTime, k);
    column.Size = CellOf(CumSize, k);
    column.SizeH0 = Single(InterimSizeOf(k, false));
    return column;
}

} // namespace

bool GsHasLowerBound() {
    return BoundType >= BoundUserDefined;
}

bool GsWorkOut() {
    columns.clear();
    if (UppBound.HighBound() != NoOfAnal || CritReady == False)
        return false;
    {
        const TailsApart tails;
        NoOfTails = lastRun.Tails;
        if (BoundType == BoundPowerFamily) {
            const Array1<f32> upper = ExitUpp;
            GsExitProb(lastRun.Test.Drift, lastRun.Test.Scale, true);
            ExitUpp = upper;
        }
        if (GsTestKind == GsStudent)
            TurnToStudent();
    }
    stored.reset(); // bounds and exits are no longer those of the run
    for (i16 k = 1; k <= NoOfAnal + 1; ++k)
        columns.push_back(ColumnFrom(k));
    return true;
}

GsColumn GsColumnOf(i16 k) {
    return columns.at(static_cast<std::size_t>(k - 1));
}

f64 GsAverageSize(bool isH1) {
    f64 average = 0;
    f64 stopped = 0;
    const auto last = static_cast<std::size_t>(NoOfAnal - 1);
    for (std::size_t k = 0; k < last; ++k) {
        const GsColumn& column = columns.at(k);
        const f64 p =
            isH1 ? f64{column.UppH1} + f64{column.LowH1} : f64{column.UppH0} + f64{column.LowH0};
        average += f64{isH1 ? column.Size : column.SizeH0} * p;
        stopped += p;
    }
    const GsColumn& final = columns.at(last);
    return average + f64{isH1 ? final.Size : final.SizeH0} * (1 - stopped);
}

const char* GsAverageCaption() {
    if (GsKindOfTest() == GsLogrank)
        return InterimUnit == 0   ? "Average  Study Time"
               : InterimUnit == 1 ? "Average No of Events"
                                  : "Average Time at Risk";
    return Size1Index == 0 || IsCountKind(ParKind(Size1Index)) ? "Average   Sample Size"
                                                               : "Average  Total Size";
}

} // namespace quorvanta
