// TESTKOLSMI: the Kolmogorov-Smirnov test whether one sample follows a continuous distribution
// (109), or a discrete one (108).
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"
#include "numeric/kolsmicrossing.h"

#include <optional>
#include <string>

namespace quorvanta {

struct TESTKOLSMI {
    static void SetupTest();
    static void SetParList();
    static f64 RootFunction();

    static void GetSimPar();
    static void SimSample(i16 n1, i16 n2, bool isH1);
    static f32 SimTest(i16 n1, i16 n2);

    // The power derives from the two distributions.
    static bool IsTablePar(i16 parNo);
    static std::optional<DistrList> TableDistr(i16 parNo);
    static f32 CalcTablePar(i16 parNo);
    // The distribution under H0 (row 1) or H1 (row 2), in words, with the direction that a
    // one-sided test looks in.
    static std::string Hypothesis(i16 row);

    // The largest sample whose power is calculated from its own distribution.
    static i16 ExactUpTo();
    static const char* Approximation() { return "limit for large samples"; }
};

// The distributions that the test compares: those of the table of distributions, or the start
// values as long as it does not hold two.
struct TestedDistributions {
    DistrRow Null;
    DistrRow Truth;
};
TestedDistributions KolSmiDistributions();

} // namespace quorvanta
