#include "tests/association.h"

#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/normaltest.h"

#include <cmath>

namespace quorvanta {

// N. R. Draper and H. Smith, Applied Regression Analysis, 2nd edition, 1981, chapter 1.
f32 SlopeError(f64 residualSd, f64 covariateSd, f64 n) {
    return Single(residualSd / std::sqrt(n) / covariateSd);
}

f32 FisherZError(f64 n) {
    return Single(1 / std::sqrt(n - 3));
}

f64 CorrelationTestEq(const Hypotheses& hypotheses, f32 se) {
    const f64 first = hypotheses.HasTwo() ? f64{hypotheses.First()} : 0;
    return NormalTestEq(
        hypotheses,
        [first](f64 truth, f64 null) { return FisherZ(first + truth) - FisherZ(first + null); },
        [se](f64) { return se; }, se);
}

} // namespace quorvanta
