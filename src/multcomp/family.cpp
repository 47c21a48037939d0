#include "multcomp/family.h"

#include "core/analysis_state.h"

#include <cstddef>

namespace quorvanta {

namespace {

constexpr i16 FirstTestNo = 135; // ControlInterval; the others follow in order
constexpr i16 LastTestNo = 145;  // NormalLinearTest
constexpr i16 BlocksTestNo = 377;

bool IsMultiple() {
    return IsTest == True &&
           ((TestNo >= FirstTestNo && TestNo <= LastTestNo) || TestNo == BlocksTestNo);
}

std::string WeightedOrJointName(i16 kind) {
    switch (kind) {
    case Comparison::ControlInterval:
        return "Dunnett";
    case Comparison::PairwiseInterval:
        return "Tukey";
    case Comparison::BestInterval:
        return "Constrained MCB";
    default:
        return "Weighted  Bonferroni";
    }
}

std::string JointOrScheffeName(i16 kind) {
    switch (kind) {
    case Comparison::ControlTest:
        return "Dunnett";
    case Comparison::PairwiseTest:
        return "Tukey";
    case Comparison::EachMeanTest:
        return "Studentized Maximum Modulus";
    default:
        return "Scheffe";
    }
}

} // namespace

i16 MultCompKind() {
    if (!IsMultiple())
        return 0;
    return TestNo == BlocksTestNo ? Comparison::BlocksTest : static_cast<i16>(TestNo - FirstTestNo);
}

bool IsMultCompInterval() {
    return IsMultiple() && MultCompKind() <= Comparison::BestInterval;
}

bool IsMultCompTest() {
    return IsMultiple() && MultCompKind() >= Comparison::ControlTest &&
           MultCompKind() != Comparison::BlocksTest;
}

bool IsMultivariate() {
    return MultCompKind() >= Comparison::NormalControlTest;
}

f64 NoOfComparisons(f64 k, f64 combinations) {
    switch (MultCompKind()) {
    case Comparison::PairwiseInterval:
    case Comparison::PairwiseTest:
    case Comparison::NormalPairwiseTest:
        return k * (k - 1) / 2;
    case Comparison::EachMeanTest:
    case Comparison::NormalEachMeanTest:
        return k;
    case Comparison::LinearTest:
    case Comparison::NormalLinearTest:
    case Comparison::BlocksTest:
        return combinations;
    default:
        return k - 1;
    }
}

std::vector<std::string> AdjustMethodNames() {
    const i16 kind = MultCompKind();
    if (!IsMultiple() || kind == Comparison::BlocksTest)
        return {};
    std::vector<std::string> names{WeightedOrJointName(kind), "Bonferroni", "Sidak",
                                   JointOrScheffeName(kind)};
    if (!IsMultCompInterval())
        names.insert(names.end(), {"Sequence", "Holm", "Hochberg"});
    return names;
}

void FixMethod() {
    if (AdjustMethod < 0 || AdjustMethod >= static_cast<i16>(AdjustMethodNames().size()))
        AdjustMethod = 0;
}

std::string AdjustMethodName(i16 method) {
    const std::vector<std::string> names = AdjustMethodNames();
    return method >= 0 && method < static_cast<i16>(names.size())
               ? names[static_cast<std::size_t>(method)]
               : "";
}

} // namespace quorvanta
