// TESTMULTCOMP: multiple comparisons of means.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <string>
#include <vector>

namespace quorvanta {

// Simultaneous confidence intervals of the comparisons of a one-way analysis of variance: with a
// control, of all pairs, with the best. Asked for is the probability that all of them cover and
// are narrower than a width.
struct TESTMULTCOMPCI {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();
    static void SearchLimits(f64& lower, f64& upper);
    static f64 RootFunction();
};

// Tests of many hypotheses about the means of a one-way analysis of variance or of a multivariate
// normal distribution: against a control, of all pairs, of each mean, of linear combinations. They
// exist as simulations only; multcomp/procedures.h decides.
struct TESTMULTCOMP {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The standard deviation of the means derives from a grid of them. Behind it come those of
    // linear combinations, of the covariances, of families with their methods, and of weights, as
    // far as the choices need them.
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

    // All hypotheses are true (row 1), or one is false (row 2), in words.
    static std::string Hypothesis(i16 row);

    // Asks for the grids unless they stand; Cancelled, after a message or where the user cancels,
    // if nothing can be simulated.
    //
    // Under H1 the means are those of the grid. Under H0 they are as well, if some hypotheses are
    // true there: what is estimated is the error at that state. Where none is true, the means
    // nearest to them for which all are. With random true hypotheses each false one is made true
    // with probability 0.5, once for the whole run, by the means that are nearest.
    static void GetSimPar();

    // Sufficient statistics of n1 new subjects in the first group, or of n1 vectors, and of n2 in
    // each other group.
    static void SimSample(i16 n1, i16 n2, bool isH1);
    // 0 where an error was made under H0, or what the power means has happened under H1, else 1;
    // with average power the rejected share in negative hundredths. 1 where no error can be
    // estimated. Where no hypothesis is false, the power is 1.
    static f32 SimTest(i16 n1, i16 n2);
};

// "serial gatekeeping with Holm for family 1 and Bonferroni for family 2": how the current test
// keeps the error of its hypotheses.
std::string McProcedure();

} // namespace quorvanta
