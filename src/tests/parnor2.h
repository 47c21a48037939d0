// PARNOR2: tests, point estimates and confidence intervals for the parameters of a bivariate normal
// distribution: the difference of its means, the ratio of its standard deviations, its correlation,
// and the regression of one variable on the other. One sample of pairs.
#pragma once

#include "core/types.h"

namespace quorvanta {

// Mean 2 - mean 1, with unknown standard deviations: Student's t on the differences of the pairs.
struct PARNOR2MEAN {
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

// Standard deviation 2 / standard deviation 1. Two variables have equal deviations if and only if
// their sum and difference are uncorrelated (E. J. G. Pitman 1939 and W. A. Morgan 1939, both
// Biometrika 31): Fisher's z of that correlation.
struct PARNOR2SD {
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

// The correlation coefficient, by Fisher's z (R. A. Fisher, Metron 1, 1921; for intervals D. G.
// Bonett and T. A. Wright, Psychometrika 65, 2000).
struct PARNOR2CORREL {
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

// The regression coefficient, with unknown residual standard deviation: Student's t.
struct PARNOR2REGRESS {
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
