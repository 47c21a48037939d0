#include "core/search.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/dispatch.h"
#include "core/fault.h"
#include "core/platform.h"
#include "core/records.h"
#include "core/root.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

namespace quorvanta {

namespace {

// A search without a change of sign may end on a zero outside its interval, which is no solution.
// The power alone may lie outside the range in which it is searched: 0.999999 is a fact.
bool IsWithin(f64 root, f64 lower, f64 upper) {
    constexpr f64 slack = 1e-5;
    if (IsPowerKind(ParKind(UnknownParNo)))
        return root >= 0 && root <= 1;
    return root >= lower - slack && root <= upper + slack;
}

bool IsRangeEndMark(f64 root) {
    const f64 whole = std::trunc(root);
    return std::any_of(std::begin(RangeEndMarks), std::end(RangeEndMarks),
                       [whole](i32 mark) { return whole == mark; });
}

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
    const i16 kind = ParKind(UnknownParNo);
    f64 lower = ParMin(kind);
    f64 upper = ParMax(kind);
    SelSearchLimits(lower, upper);
    if (!(upper > lower))
        return NoValue;
    ClearFloatFaults();
    i16 iterations = 0;
    f64 root = NoValue;
    f64 residual = NoValue;
    try {
        FindRootOf(TryValue, lower, upper, RootTolerance, RootIterations, iterations, root,
                   residual);
    } catch (const RunTimeError&) {
        // Outside its limits an equation need not hold, and a search that got there has failed.
        const f64 trial = ParValue(UnknownParNo);
        if (trial >= lower && trial <= upper)
            throw;
        return NoValue;
    }
    if (!(std::fabs(residual) <= RootResidual) || !IsWithin(root, lower, upper))
        return NoValue;
    return root;
}

f64 SolveUnknown() {
    const f64 root = FindUnknown();
    if (std::fabs(static_cast<f32>(root)) == static_cast<f32>(NoValue) || IsRangeEndMark(root))
        return NoValue;
    return root;
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
