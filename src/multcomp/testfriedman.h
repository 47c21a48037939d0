// TESTFRIEDMAN: Friedman's rank test of several treatments in blocks, which exists as a simulation
// only. A block is one vector of a multivariate normal distribution, a treatment one of its
// components.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"

#include <vector>

namespace quorvanta {

struct TESTFRIEDMAN {
    static void SetupTest();
    static void SetParList();
    static bool CheckPar();

    // The standard deviation of the means derives from a grid of them; a covariance matrix is
    // entered beside.
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

    // Asks for the covariance matrix where it is entered and was not filled; Cancelled where the
    // user cancels. Means that were not filled are equally spaced with the standard deviation of
    // the list.
    static void GetSimPar();
    // n1 new blocks: all means are equal under H0.
    static void SimSample(i16 n1, i16 n2, bool isH1);
    // The chi-square approximation, without ties; 1 without a block.
    static f32 SimTest(i16 n1, i16 n2);
};

} // namespace quorvanta
