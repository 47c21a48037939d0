// Linear programming: the largest value that a sum takes under linear conditions.
#pragma once

#include "core/types.h"

#include <optional>
#include <vector>

namespace quorvanta {

// The conditions a x = b, x >= 0: a has a row for each b, all rows of the same length, b >= 0.
struct LinearConditions {
    std::vector<std::vector<f64>> A;
    std::vector<f64> B;
};

// The largest weights x under the conditions, which have to bound it; nothing if no x meets them,
// to 1e-9. Conditions that follow from the others do no harm.
//
// The simplex method in two phases (G. B. Dantzig, Linear Programming and Extensions, 1963), with
// the rule of R. G. Bland (Mathematics of Operations Research 2, 1977, 103-107), which never
// goes round in circles. For dozens of variables, not for thousands.
std::optional<f64> LargestSum(const std::vector<f64>& weights, const LinearConditions& conditions);

} // namespace quorvanta
