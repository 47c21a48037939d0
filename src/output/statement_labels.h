// What a label of the parameter catalogue says of its parameter, for the statements: the one table
// of the parts that are looked for in labels.
#pragma once

#include <string_view>

namespace quorvanta {

enum class Says {
    ConfidenceLevel,
    Relative, // an error or a width in units of the estimate
    Limit,
    Inferiority,
    NoOfCoefficients,
    Difference,
    DifferenceOfTwo,
    Ratio,
    Comparison, // a difference or a quotient
    Place,      // the value at a point of another variable
    Sum,
    Brackets,
    Mean,
    Contrast,
    Distance,
    Proportion,
    Trend,
    Concordance,
    OrderOfSamples, // the probability that the second sample is the larger one
    OrderInSample
};

// Does the label say that, in one of the parts that stand for it? It may have its access-key mark.
bool LabelSays(std::string_view label, Says what);

} // namespace quorvanta
