#include "tests/lists/precision.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"

namespace quorvanta {

namespace {

i16 widthProbability;

} // namespace

bool IsEstimation() {
    return IsTest == False && ProcedureNo != ProcedureTest;
}

bool IsInterval() {
    return IsTest == False && ProcedureNo == ProcedureInterval;
}

bool IsTwoSidedPrecision() {
    return IsInterval() ? Ticked(Check::TwoSidedInterval) : NoOfTails == TwoSided;
}

void OfferPrecision() {
    if (IsInterval()) {
        OfferTails({TwoSided});
        TailsShown = false;
        OfferChecks({Check::TwoSidedInterval});
    } else {
        OfferTails({OneSided, TwoSided});
    }
}

void StartPrecisionList(Precision precision) {
    const bool relative = precision == Precision::Relative;
    StartParList();
    widthProbability = 0;
    if (IsInterval()) {
        AddPar(Kind::ConfidenceLevel);
        AddPar(relative ? Kind::RelativeWidth : Kind::IntervalWidth);
        return;
    }
    AddPar(Kind::ErrorLevel);
    if (NoOfTails == OneSided)
        AddPar(relative ? Kind::UpperRelativeError : Kind::UpperAbsoluteError);
    else
        AddPar(relative ? Kind::RelativeError : Kind::AbsoluteError);
}

void AddWidthProbability() {
    if (IsInterval())
        widthProbability = AddPar(Kind::WidthProbability);
}

f64 WidthProbability() {
    return ParValue(widthProbability);
}

f32 PrecisionLevel() {
    const f64 level{Single(ParValue(0))};
    const f64 outside = IsInterval() ? 1 - level : level;
    return Single(1 - (IsTwoSidedPrecision() ? outside / 2 : outside));
}

} // namespace quorvanta
