// What every simulated statistic counts from one seed: what tells whether a build, or a change that
// should change nothing, simulates alike.
#pragma once

#include <string>
#include <vector>

namespace quorvanta::checks {

// An analysis, and what a short run of it counts: rejections under H0 and H1, acceptances under H1;
// of an interval what covers, what is narrow, and both. "-": no run with these values.
struct CountedRow {
    std::string Choice;
    std::string Counts;
};

// Every analysis that can be simulated, with the first choice of its options for each kind of
// tails, and rank tests and goodness of fit with every distribution that data may follow.
std::vector<CountedRow> SimulatedCounts();

} // namespace quorvanta::checks
