// Families of comparisons: what each analysis of multiple comparisons compares, and the methods by
// which it may keep the error of a whole family.
#pragma once

#include "core/types.h"

#include <string>
#include <vector>

namespace quorvanta {

// What the family is, in the order of the menus. Intervals come first: what is above
// PairwiseInterval is no interval of pairs, and from ControlTest on there are tests.
namespace Comparison {

inline constexpr i16 ControlInterval = 0;
inline constexpr i16 PairwiseInterval = 1;
inline constexpr i16 BestInterval = 2;
inline constexpr i16 ControlTest = 3;
inline constexpr i16 PairwiseTest = 4;
inline constexpr i16 EachMeanTest = 5;
inline constexpr i16 LinearTest = 6;
inline constexpr i16 NormalControlTest = 7; // from here on components of a multivariate normal
inline constexpr i16 NormalPairwiseTest = 8;
inline constexpr i16 NormalEachMeanTest = 9;
inline constexpr i16 NormalLinearTest = 10;
inline constexpr i16 BlocksTest = 11; // one hypothesis: no method of adjustment

} // namespace Comparison

// How the error of a family is kept.
namespace Adjust {

inline constexpr i16 Joint = 0; // of an interval the joint distribution, of tests weights
inline constexpr i16 Weighted = 0;
inline constexpr i16 Bonferroni = 1;
inline constexpr i16 Sidak = 2;
inline constexpr i16 JointOrScheffe = 3;
inline constexpr i16 Sequence = 4;
inline constexpr i16 Holm = 5;
inline constexpr i16 Hochberg = 6;

} // namespace Adjust

// The family of the current test; 0 for any other test.
i16 MultCompKind();

bool IsMultCompInterval();
// Tests of a family of hypotheses.
bool IsMultCompTest();
// Components of one multivariate normal distribution, not independent groups.
bool IsMultivariate();

// The number of comparisons among k groups or dimensions; of linear combinations, their number.
// Broken for a broken k.
f64 NoOfComparisons(f64 k, f64 combinations = 0);

// The names of the methods to choose from, by AdjustMethod: none for an analysis without.
std::vector<std::string> AdjustMethodNames();
// The method of another analysis gives way to the first one where this analysis has none such.
void FixMethod();
// The name of one of them.
std::string AdjustMethodName(i16 method);

} // namespace quorvanta
