// The module DISTRTABLE: the distributions behind the current analysis, for a picture of them. What
// they are follows from the analysis: survival of the groups of a survival test, the distribution
// that was chosen, or the categories that were entered, under H0 and H1; of any other test its
// statistic under H0 and H1, with the critical values.
#pragma once

#include "core/types.h"
#include "output/presentation.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvanta {

struct PlottedDistr {
    std::string Label; // "H0", "H1, left limit", "Group 2"
    std::function<f64(f64)> Cdf;
    std::function<f64(f64)> Density;          // of counts the probability of a whole number
    std::vector<std::pair<f64, f64>> Areas{}; // where its share is an error: alpha or beta
};

enum class DistrTableKind { None, Statistic, Family, Survival };

struct DistrTable {
    DistrTableKind Kind = DistrTableKind::None;
    std::string What{}; // what the x-axis shows: "Time", "Test Statistic (t)"
    bool IsDiscrete = false;
    f64 Low = 0; // where the curves are worth seeing; of counts whole numbers
    f64 High = 1;
    std::vector<PlottedDistr> Distributions{}; // H0 first
    std::vector<f64> CriticalValues{};
};

// The distributions of the current analysis with the values that its texts have; of a table or
// graph those at its first point. None where there is nothing to show.
DistrTable CurrentDistributions();

} // namespace quorvanta
