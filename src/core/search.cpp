#include "core/search.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/root.h"
#include "montecarlo/shiftmodel.h"
#include "tests/teststatistic.h"

#include <cmath>
#include <optional>
#include <string>

namespace quorvanta {

namespace {

// A probability that the equation yields directly.
bool UnknownIsPower() {
    return IsPowerKind(ParKind(UnknownParNo));
}

bool IsRoot(f64 residual) {
    return std::fabs(residual) <= RootResidual;
}

// How far outside its limits a root may lie, where that can't turn it into something else: a level
// of 0 or 1 is none.
constexpr f64 Slack = 1e-5;

// A search without a change of sign may end on a zero outside its interval, which is no solution.
// The power alone may lie outside the range in which it is searched: 0.999999 is a fact.
bool IsWithin(f64 root, f64 lower, f64 upper) {
    if (UnknownIsPower())
        return root >= 0 && root <= 1;
    return root >= (lower > 0 ? lower : lower - Slack) &&
           root <= (upper < 1 ? upper : upper + Slack);
}

// One search, within the limits of the unknown.
class Search {
  public:
    Search(f64 lower, f64 upper) : lower_(lower), upper_(upper) {}

    f64 Root() {
        FindRootOf([this](f64 x) { return Try(x); }, lower_, upper_, RootTolerance, RootIterations,
                   iterations_, root_, residual_);
        if (Cancelled == False && !IsRoot(residual_) && HasSignChange())
            GoOn();
        if (!IsRoot(residual_))
            return NoValue;
        if (UnknownIsPower())
            TakeRoundingOff();
        else
            MoveToLimit();
        return IsWithin(root_, lower_, upper_) ? root_ : NoValue;
    }

  private:
    f64 Try(f64 x) {
        const f64 residual = TryValue(x);
        if (x == lower_)
            atLower_ = residual;
        if (x == upper_)
            atUpper_ = residual;
        (residual < 0 ? negative_ : positive_) = x;
        return residual;
    }

    bool HasSignChange() const {
        const auto isInside = [this](std::optional<f64> x) {
            return x && *x >= lower_ && *x <= upper_;
        };
        return isInside(negative_) && isInside(positive_);
    }

    // An equation that is steep close to 0, such as that of a small level, is not solved where its
    // trial values are as close as the tolerance asks: on between the last two of opposite sign,
    // until they are close in proportion to their size.
    void GoOn() {
        constexpr f64 relativeOnly = 0;
        FindRootOf(TryValue, *negative_, *positive_, relativeOnly, RootIterations, iterations_,
                   root_, residual_);
    }

    // An exact power is a sum of probabilities, each rounded to 32 bits: 1 may come out
    // as 1.0000001.
    void TakeRoundingOff() {
        if (root_ > 1 && root_ <= 1 + Slack)
            root_ = 1;
    }

    // A root next to a limit without slack: the limit is one itself.
    void MoveToLimit() {
        if (lower_ > 0 && root_ < lower_ && root_ >= lower_ - Slack && IsRoot(atLower_))
            root_ = lower_;
        if (upper_ < 1 && root_ > upper_ && root_ <= upper_ + Slack && IsRoot(atUpper_))
            root_ = upper_;
    }

    f64 lower_;
    f64 upper_;
    f64 atLower_ = NoValue;
    f64 atUpper_ = NoValue;
    std::optional<f64> negative_; // the last trial value of each sign
    std::optional<f64> positive_;
    i16 iterations_ = 0;
    f64 root_ = NoValue;
    f64 residual_ = NoValue;
};

bool hintDue = false;

} // namespace

void StartSearch() {
    hintDue = false;
    ClearVaryingPars();
}

f64 TryValue(f64 x) {
    // A run that shows its progress is cancelled between two evaluations, however long they take.
    if (Calculating == True) {
        const FloatFaultsApart apart;
        ThePlatform().DoEvents();
    }
    ParValue(UnknownParNo) = x;
    const f64 residual = SelRootFunction();
    ThrowIfFloatFault();
    return residual;
}

f64 FindUnknown() {
    NotedStatistic = {};
    const i16 kind = ParKind(UnknownParNo);
    f64 lower = ParMin(kind);
    f64 upper = ParMax(kind);
    // An unknown without a value reads as 0, by which an equation may divide where it can't be 0.
    f64& unknown = ParValue(UnknownParNo);
    if (unknown == 0 && (lower > 0 || upper < 0))
        unknown = lower > 0 ? lower : upper;
    ClearFloatFaults();
    SelSearchLimits(lower, upper);
    ThrowIfFloatFault();
    if (!(upper > lower))
        return NoValue;
    try {
        return Search(lower, upper).Root();
    } catch (const RunTimeError&) {
        // Outside its limits an equation need not hold, and a search that got there has failed.
        const f64 trial = ParValue(UnknownParNo);
        if (trial >= lower && trial <= upper)
            throw;
        return NoValue;
    }
}

f64 SolveUnknown() {
    const f64 root = FindUnknown();
    if (std::fabs(static_cast<f32>(root)) == static_cast<f32>(NoValue) || IsRangeEndMark(root))
        return NoValue;
    return root;
}

void FindDistrGraph() {
    const bool hasStatistic = NotedStatistic.Law != StatisticLaw::None;
    HasDistrGraph = hasStatistic || NoOfDistr() > 0 ? True : False;
}

i16 ShowCantCalculate() {
    hintDue = !hintDue;
    std::string text = "Can't Be Calculated";
    if (CurrentWindowKind() > CalculationWindow)
        text += " For Any x-value";
    text += ".";
    if (NoOfTails == OneSided && hintDue)
        text += std::string(" Please Check if TickBox 'Reject in Left Tail' Should Be ") +
                (LeftTail == True ? "UnTicked" : "Ticked") + ".";
    ShowMessage(text);
    return True;
}

} // namespace quorvanta
