#include "tests/testmlr.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/anovaeq.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

namespace {

i16 tested;     // p, the coefficients tested
i16 withAll;    // multiple correlation of the outcome with all covariates
i16 withOthers; // the same with the q others
i16 covariates; // p + q
i16 size;

// Subjects beyond the covariates that leave one residual degree of freedom beside the mean.
constexpr f64 LeastExcess = 2;

f64 Entered(i16 parNo) {
    return f64{Single(ParValue(parNo))};
}

// Without other covariates there is no correlation with them.
f64 LargestWithOthers() {
    return ParValue(tested) < ParValue(covariates) ? ParValue(withAll) : 0;
}

// A correlation with others needs at least one other.
f64 LeastOthers() {
    return ParValue(withOthers) > 0 ? 1 : 0;
}

bool IsUnknown(i16 parNo) {
    return UnknownParNo == parNo;
}

bool CheckAtMost(i16 parNo, f64 largest) {
    return CheckRange(parNo, ParMin(ParKind(parNo)), largest);
}

} // namespace

void TESTMLR::SetupTest() {
    FixSamples(OneSample);
    OfferTails({TwoSided});
}

void TESTMLR::SetParList() {
    StartTestList();
    tested = AddPar(Kind::TestedCoefficients);
    withAll = AddPar(Kind::CorrelationWithAll);
    withOthers = AddPar(Kind::CorrelationWithOthers);
    covariates = AddPar(Kind::NoOfCovariates);
    size = AddPar(Kind::Size);
}

bool TESTMLR::CheckPar() {
    const bool countsKnown = !IsUnknown(tested) && !IsUnknown(covariates);
    if (countsKnown && !CheckAtMost(tested, ParValue(covariates)))
        return false;
    if (countsKnown && !IsUnknown(withAll) && !IsUnknown(withOthers) &&
        !CheckAtMost(withOthers, LargestWithOthers()))
        return false;
    return IsUnknown(covariates) || IsUnknown(size) ||
           CheckRange(size, ParValue(covariates) + LeastExcess, ParMax(ParKind(size)));
}

void TESTMLR::SearchLimits(f64& lower, f64& upper) {
    if (IsUnknown(tested)) {
        upper = MinOf(upper, ParValue(covariates) - LeastOthers());
    } else if (IsUnknown(covariates)) {
        lower = MaxOf(lower, ParValue(tested) + LeastOthers());
        upper = MinOf(upper, ParValue(size) - LeastExcess);
    } else if (IsUnknown(withAll)) {
        lower = MaxOf(lower, ParValue(withOthers));
    } else if (IsUnknown(withOthers)) {
        upper = MinOf(upper, LargestWithOthers());
    } else if (IsUnknown(size)) {
        lower = MaxOf(lower, ParValue(covariates) + LeastExcess);
    }
}

// For fixed covariates (J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd
// edition, 1988, chapter 9, who has df1 + df2 + 1 in the place of n; C. Gatsonis and A. R. Sampson,
// Psychological Bulletin 106, 1989, 516-524).
f64 TESTMLR::RootFunction() {
    const f64 n = Entered(size);
    const f64 all = Entered(withAll);
    const f64 others = Entered(withOthers);
    const f64 lambda = (all * all - others * others) * n / (1 - all * all);
    return FTestEq(Single(Entered(tested)), Single(n - Entered(covariates) - 1), Single(lambda));
}

} // namespace quorvanta
