// The solutions of every analysis with every choice of its options, from fixed values, down to the
// last bit: what tells whether a build, or a change that should change nothing, solves alike.
#pragma once

#include "support/properties.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvanta::checks {

// Every analysis of the menus that is served in the kind of window that is open: tests, and
// parameters of distributions by procedure.
std::vector<AnalysisChoice> ServedAnalyses();

// Analysis, samples, tails, direction, check boxes, options: as the tables name a choice.
std::string Joined(const AnalysisChoice& choice);

// A choice and its solutions from several sets of values. A cell holds, for each parameter as the
// unknown, 32 bits mixed of the 64 of the solution; "-" where there is none.
struct SolutionRow {
    std::string Choice; // as Joined
    std::vector<std::string> Cells;
};

// What the cells start from: the catalogue's values, then the sets of plan_values.tsv.
std::vector<std::string> SolutionColumns();

// The solutions of one analysis, over all its choices, or one of so many, and all sets of values.
std::vector<SolutionRow> Solutions(const AnalysisChoice& analysis, std::size_t step = 1);

} // namespace quorvanta::checks
