// ParPoisson: test, point estimate and confidence interval of the mean of a Poisson distribution or
// of the rate of events, or of the difference of two. A rate has the study time where a mean has
// the sample size.
#pragma once

#include "core/types.h"

namespace quorvanta {

struct ParPoisson {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);
    static void SimInterval();
};

} // namespace quorvanta
