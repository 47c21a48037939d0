// A plan for every analysis and every choice of its options: values in which there is something to
// show, so that a walk over the whole menu asks questions that have answers.
#pragma once

#include "support/properties.h"

#include <set>

namespace quorvanta::checks {

// The values of the plan. Tests of means and of proportions and the parameters of distributions
// have plans made for them; any other analysis takes those of plan_values.tsv. With the power,
// error or width that follows from the others, but for tests of proportions, whose power is 0.8: an
// exact power is that of many values. The state then holds the analysis.
Values PlanOf(const AnalysisChoice& choice);

// The plan of an estimate with so many subjects, or so much time.
Values PlanOfPrecision(const std::string& size);

// What follows from the values for the power, the error or the width. The state then holds the
// analysis.
f64 PowerOf(const AnalysisChoice& choice, const Values& values);

// Kinds that the plan can't be solved for: the equation does not depend on them, or jumps in them.
std::set<i16> Unsolvable(const AnalysisChoice& choice);

// The power grows in steps: a critical value is a whole number of subjects.
bool IsExact(const AnalysisChoice& choice);

// How far the power may fall while a size grows, and from which size on that is asked: what the
// approximations of the analysis deserve.
struct Growth {
    f64 Slack;
    f64 From;
};
Growth GrowthOf(const AnalysisChoice& choice);

} // namespace quorvanta::checks
