#include "groupseq/boundaries.h"

#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/general.h"
#include "core/platform.h"
#include "core/root.h"
#include "groupseq/groupseq.h"
#include "groupseq/recursion.h"
#include "groupseq/spending.h"
#include "numeric/nonlineq.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace quorvanta {

namespace {

// --- Boundaries of one run ----------------------------------------------------------------------

// t^(delta - 1/2), the shape of types 0 to 2 and 9.
f64 Shape(i16 k) {
    return std::pow(f64{IntTime(k)}, f64{BoundDelta} - 0.5);
}

// With two one-sided tests a bound that both can't cross at this analysis counts for nothing.
void RemoveUnreachableBound(i16 k) {
    const f64 root = std::sqrt(f64{IntTime(k)});
    if (NoOfTails == TwoOneSided && f64{MarginSum} / (2 * f64{SdValue} / root) < f64{UppBound(k)})
        UppBound(k) = BoundAboveAll;
}

// Both boundaries of the power family (S. Pampallona and A. A. Tsiatis, Journal of Statistical
// Planning and Inference 42, 1994, 19-35), and the information that its constants make.
void SetPowerFamilyBounds(i16 k) {
    const f64 length =
        DesignTheta == 0 ? NoValue : (f64{BoundC2} + f64{BoundC1}) / f64{DesignTheta};
    const f64 variance = (1 / length) * (1 / length) / f64{IntTime(k)};
    Info(k) = Single(1 / variance);
    constexpr f32 highest = 10;
    UppBound(k) = MinSingle(Single(Shape(k) * f64{BoundC1}), highest);
    const f64 low = f64{DesignTheta} * std::sqrt(1 / variance) - Shape(k) * f64{BoundC2};
    LowBound(k) =
        NoOfTails == TwoSided && low <= 0 ? BoundBelowAll : MinSingle(Single(low), UppBound(k));
}

void SetBounds(i16 k, f64 scale) {
    Info(k) = Single(1 / (scale * scale / f64{IntTime(k)}));
    switch (BoundType) {
    case BoundPocock:
    case BoundOBrienFleming:
    case BoundWangTsiatis:
        if (CritReady == False)
            UppBound(k) = Single(Shape(k) * f64{BoundC1});
        break;
    case BoundHaybittlePeto: {
        constexpr f32 interimBound = 3;
        UppBound(k) = k < NoOfAnal ? interimBound : BoundC1;
        // At the end the constant itself is searched for: a trial is no bound that stays.
        if (k < NoOfAnal)
            RemoveUnreachableBound(k);
        break;
    }
    case BoundUserDefined:
        break;
    case BoundPowerFamily:
        if (CritReady == False)
            SetPowerFamilyBounds(k);
        break;
    default:
        if (k == NoOfAnal)
            UppBound(k) = BoundC1;
    }
}

// --- The sums of one run ------------------------------------------------------------------------

struct FirstExits {
    f32 Upper;
    f32 Lower;
};

FirstExits ExitsOfFirst() {
    const f64 shift = f64{Theta} * std::sqrt(f64{Info(1)});
    return {Single(1 - f64{NorCdf(Single(f64{UppBound(1)} - shift))}),
            NorCdf(Single(f64{LowBound(1)} - shift))};
}

// The exits of all analyses into the array, with their total; first is that of analysis 1.
template <class ExitAt>
f32 SumExits(Array1<f32>& exits, f32 first, ExitAt exitAt) {
    f32 total = first;
    exits(0) = first;
    for (i16 k = 2; k <= NoOfAnal; ++k) {
        exits(k - 1) = exitAt(k);
        total = Single(f64{total} + f64{exits(k - 1)});
    }
    exits(NoOfAnal) = total;
    return total;
}

f32 EitherExit(i16 k) {
    const f64 upper{GsUpperExit(k)};
    return Single(upper + (NoOfTails == TwoSided ? f64{GsLowerExit(k)} : 0));
}

// --- Progress -----------------------------------------------------------------------------------

constexpr i32 ProgressBar = 10;

class Progress {
  public:
    void Open(const char* caption) {
        if (++depth_ > 1)
            return;
        caption_ = caption;
        start_ = ThePlatform().Timer();
        steps_ = 0;
    }

    void Close() {
        if (--depth_ == 0)
            Hide();
    }

    // A display appears when the calculation has become long, and not beside that of a table.
    void Step() {
        const FloatFaultsApart apart;
        constexpr f64 patience = 1;
        if (!shown_ && depth_ > 0 && Calculating == False &&
            ThePlatform().Timer() - start_ > patience)
            Show();
        if (shown_) {
            if (++steps_ > ProgressBar) {
                ThePlatform().ShowProgress(ProgressBar, caption_);
                steps_ = 1;
            }
            ThePlatform().StepProgress();
        }
        if (Calculating == True)
            ThePlatform().DoEvents();
    }

    void Hide() {
        if (!shown_)
            return;
        shown_ = false;
        Calculating = False;
        ThePlatform().HideProgress();
    }

  private:
    void Show() {
        shown_ = true;
        Calculating = True;
        ThePlatform().ShowProgress(ProgressBar, caption_);
    }

    int depth_ = 0;
    const char* caption_ = "";
    f64 start_ = 0;
    i32 steps_ = 0;
    bool shown_ = false;
};

Progress progress;

// --- Constants ----------------------------------------------------------------------------------

bool IsRangeEnd(f64 root) {
    const f64 whole = std::trunc(root);
    return std::any_of(std::begin(RangeEndMarks), std::end(RangeEndMarks),
                       [whole](i32 mark) { return whole == mark; });
}

// The mark of no value in the place of a constant whose equation does not hold.
f32 Checked(f64 root, f64 residual) {
    return !(std::fabs(residual) <= RootResidual) || IsRangeEnd(root) ? Single(NoValue)
                                                                      : Single(root);
}

f64 GsOneConstResidual(f64 c, f32 target) {
    BoundC1 = Single(c);
    return f64{GsExitProb(0, 1, false)} - f64{target};
}

void GsTwoConstResidual(const Array1<f64>& c, Array1<f64>& g) {
    BoundC1 = Single(c(1));
    BoundC2 = Single(c(2));
    g(1) = f64{GsExitProb(0, 1, false)};
    g(2) = f64{GsExitProb(DesignTheta, SdValue, true)};
}

// --- The cache ----------------------------------------------------------------------------------

// What decides the boundaries.
struct DesignInputs {
    i16 Analyses = 0;
    i16 Samples = 0;
    i16 Tails = 0;
    i16 TestKind = 0;
    i16 Type = 0;
    f32 Target = 0;
    f32 FamilyPar = 0;
    f32 Delta = 0;
    f32 PowerTarget = 0;
    f32 Sd = 0;
    f32 MarginSum = 0;
    f32 Drift = 0;
    f32 FirstSize = 0; // on which the degrees of freedom of a spending function depend
    Array1<f32> Fractions{};
    Array1<f32> Reject{};
    Array1<f32> Accept{};

    friend bool operator==(const DesignInputs&, const DesignInputs&) = default;
};

// The last design whose critical values stand, and these.
struct GsCacheRecord {
    DesignInputs Inputs;
    f32 C1 = 0;
    f32 C2 = 0;
    f32 ResultingTarget = 0;
    Array1<f32> Upp;
    Array1<f32> Low;
    Array1<f32> UppH0;
    Array1<f32> LowH0;
    Array1<f32> Reject;
    Array1<f32> Accept;
};

std::optional<GsCacheRecord> GsCache;
bool critValuesAreNew = false;

// Scale, drift and margins count only where the boundaries depend on them: a search for a size
// would solve the constants anew at each trial.
DesignInputs CurrentInputs(f32 target) {
    DesignInputs inputs{.Analyses = NoOfAnal,
                        .Samples = NoOfSamples,
                        .Tails = NoOfTails,
                        .TestKind = GsTestKind,
                        .Type = BoundType,
                        .Target = target,
                        .FamilyPar = FamilyPar,
                        .Delta = BoundDelta,
                        .Fractions = IntTime};
    const bool isPowerFamily = BoundType == BoundPowerFamily;
    const bool isEquivalence = NoOfTails == TwoOneSided;
    if (isPowerFamily) {
        inputs.PowerTarget = PowerTarget;
        inputs.Drift = DesignTheta;
    }
    if (isPowerFamily || (BoundType == BoundHaybittlePeto && isEquivalence))
        inputs.Sd = SdValue;
    if (isEquivalence)
        inputs.MarginSum = MarginSum;
    if (BoundType == BoundLanDeMetsOBrienFleming && GsTestKind == GsStudent)
        inputs.FirstSize = CumSize(1);
    if (BoundType == BoundUserDefined) {
        inputs.Target = 0;
        inputs.Reject = LevelReject;
        inputs.Accept = LevelAccept;
    }
    return inputs;
}

void Recall(const GsCacheRecord& record, f32& target) {
    BoundC1 = record.C1;
    BoundC2 = record.C2;
    target = record.ResultingTarget;
    UppBound = record.Upp;
    LowBound = record.Low;
    ExitUppH0 = record.UppH0;
    ExitLowH0 = record.LowH0;
    LevelReject = record.Reject;
    LevelAccept = record.Accept;
    ExitUpp.ReDim(0, NoOfAnal);
    ExitLow.ReDim(0, NoOfAnal);
}

// --- Critical values by type --------------------------------------------------------------------

void SetUserBounds() {
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const auto bound = [](f32 level) {
            if (NoOfTails != TwoSided)
                return -NorInv(level);
            return level <= 0.5F ? -NorInv(Single(f64{level} / 2))
                                 : NorInv(Single((1 - f64{level}) / 2));
        };
        UppBound(k) = bound(LevelReject(k));
        LowBound(k) = bound(LevelAccept(k));
    }
}

// Each analysis spends what its time adds: the bound of analysis k is the constant of a design that
// ends there.
void SpendError(f32 alpha) {
    const i16 last = NoOfAnal;
    const auto spentAt = [alpha](i16 k) {
        return f64{k == 0 ? 0.0F : GsSpend(IntTime(k), alpha, BoundType)};
    };
    const f32 first = Single(spentAt(1) - spentAt(0));
    UppBound(1) = NorInv(Single(1 - f64{MaxSingle(Single(ProbabilityFloor), first)}));
    BoundC1 = UppBound(1);
    ExitUpp(0) = first;
    ExitUpp(last) = first;
    f32 spent = first;
    for (i16 k = 2; k <= last && Cancelled == False; ++k) {
        NoOfAnal = k;
        const f32 increment = Single(spentAt(k) - spentAt(static_cast<i16>(k - 1)));
        spent = Single(f64{spent} + f64{increment});
        UppBound(k) = GsSolveConst(spent);
        LowBound(k) = BoundBelowAll;
    }
    NoOfAnal = last;
}

void Fold(Array1<f32>& exits) {
    for (i16 i = 0; i <= NoOfAnal; ++i)
        GsFoldTwoSided(exits(i));
}

f32 NominalLevelOf(f32 bound) {
    f32 level = Single(1 - f64{NorCdf(bound)});
    GsFoldTwoSided(level);
    return MaxSingle(level, Single(ProbabilityFloor));
}

void KeepNullExits() {
    ExitUppH0 = ExitUpp;
    Fold(ExitUppH0);
    if (BoundType != BoundPowerFamily)
        ExitLowH0 = ExitLow;
    Fold(ExitLowH0);
    if (BoundType == BoundUserDefined)
        return;
    LevelReject.ReDim(1, NoOfAnal);
    LevelAccept.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        LevelReject(k) = NominalLevelOf(UppBound(k));
        LevelAccept(k) = NominalLevelOf(LowBound(k));
    }
}

} // namespace

GsProgressOpen::GsProgressOpen(const char* caption) {
    progress.Open(caption);
}

GsProgressOpen::~GsProgressOpen() {
    progress.Close();
}

bool GsProgressStep() {
    if (Cancelled == False)
        progress.Step();
    if (Cancelled == False)
        return false;
    progress.Hide();
    return true;
}

f32 GsExitProb(f32 drift, f32 scale, bool flag) {
    if (GsProgressStep())
        return 0;
    Theta = drift;
    Info.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k)
        SetBounds(k, f64{scale});
    if (BoundType == BoundPowerFamily)
        LowBound(NoOfAnal) = UppBound(NoOfAnal);
    const FirstExits first = ExitsOfFirst();
    GsStdGrid(GridFineness);
    for (i16 k = 1; k <= NoOfAnal; ++k)
        GsPrepareStage(k);
    if (BoundType < BoundUserDefined)
        return SumExits(ExitUpp, Single(f64{first.Upper} + f64{first.Lower}), EitherExit);
    if (BoundType == BoundUserDefined) {
        const f32 total = SumExits(ExitUpp, first.Upper, GsUpperExit);
        SumExits(ExitLow, first.Lower, GsLowerExit);
        return total;
    }
    if (flag)
        return SumExits(ExitLow, first.Lower, GsLowerExit);
    const f32 total = SumExits(ExitUpp, first.Upper, GsUpperExit);
    if (Theta == 0)
        SumExits(ExitLowH0, first.Lower, GsLowerExit);
    return total;
}

f32 GsSolveConst(f32 target) {
    constexpr f64 least = 1e-5;
    constexpr f64 most = 8;
    i16 iterations = 0;
    f64 root = NoValue;
    f64 residual = NoValue;
    FindRootOf([target](f64 c) { return GsOneConstResidual(c, target); }, least, most,
               RootTolerance, RootIterations, iterations, root, residual);
    // Bounds and constant belong together: the search may end on a point before its last one.
    if (Cancelled == False && Single(root) != BoundC1)
        residual = GsOneConstResidual(root, target);
    return Cancelled == True ? Single(NoValue) : Checked(root, residual);
}

f32 GsSolveTwoConst(f32 target) {
    constexpr i16 n = 2;
    constexpr f64 least = 1e-5;
    constexpr f64 most = 5;
    const auto both = [](f64 first, f64 second) {
        Array1<f64> pair(1, n);
        pair(1) = first;
        pair(2) = second;
        return pair;
    };
    const Array1<f64> rhs = both(f64{target}, f64{PowerTarget});
    Array1<f64> solution;
    SolveSystem(n, GsTwoConstResidual, both(2.5, 1), both(least, least), both(most, most),
                RootTolerance, RootIterations, rhs, solution);
    if (Cancelled == True)
        return Single(NoValue);
    // Once more at the solution: bounds and constants belong together.
    Array1<f64> sides(1, n);
    GsTwoConstResidual(solution, sides);
    if (Cancelled == True)
        return Single(NoValue);
    BoundC1 = Checked(solution(1), sides(1) - rhs(1));
    return Checked(solution(2), sides(2) - rhs(2));
}

bool GsCritValues(f32& target) {
    const GsProgressOpen open("Calculation of Critical Values");
    if (BoundType == BoundPocock)
        BoundDelta = 0.5F;
    else if (BoundType == BoundOBrienFleming)
        BoundDelta = 0;
    else if (BoundType == BoundWangTsiatis || BoundType == BoundPowerFamily)
        BoundDelta = FamilyPar;
    PowerTarget = Single(1 - ParValue(PowerParNo));
    const DesignInputs inputs = CurrentInputs(target);
    const bool isForced = UnknownParNo == PowerParNo && NoOfTails == TwoOneSided;
    if (GsCache && !isForced && GsCache->Inputs == inputs) {
        Recall(*GsCache, target);
        return true;
    }
    GsCache.reset();
    critValuesAreNew = true;
    for (Array1<f32>* exits : {&LowBound, &UppBound, &ExitUpp, &ExitLow, &ExitUppH0, &ExitLowH0})
        exits->ReDim(0, NoOfAnal);
    std::ranges::fill(LowBound.Raw(), BoundBelowAll);
    const f32 alpha = Single(1 - f64{target});
    if (BoundType == BoundUserDefined) {
        SetUserBounds();
        target = GsExitProb(0, 1, false);
    } else if (BoundType == BoundPowerFamily) {
        BoundC2 = GsSolveTwoConst(alpha);
    } else if (BoundType <= BoundHaybittlePeto) {
        BoundC1 = GsSolveConst(alpha);
    } else {
        SpendError(alpha);
    }
    if (Cancelled == True)
        return false;
    KeepNullExits();
    GsCache = GsCacheRecord{inputs,   BoundC1,   BoundC2,   target,      UppBound,
                            LowBound, ExitUppH0, ExitLowH0, LevelReject, LevelAccept};
    return true;
}

bool GsCritValuesAreNew() {
    const bool areNew = critValuesAreNew;
    critValuesAreNew = false;
    return areNew;
}

void ForgetCritValues() {
    GsCache.reset();
}

} // namespace quorvanta
