#include "output/counted_sizes.h"

#include "core/analysis_state.h"
#include "core/form.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/number_text.h"
#include "output/format.h"
#include "output/formatpar.h"

#include <algorithm>

namespace quorvanta {

namespace {

constexpr i16 FirstDesignParNo = 2;

f64 NumberOf(i16 parNo) {
    return ReadNumber(ParText(ParKind(parNo)));
}

// The number of groups of the analysis; 0 where it is none of its parameters.
f64 NoOfGroups() {
    for (i16 i = FirstDesignParNo; i <= NoOfPar; ++i)
        if (ParKind(i) == Kind::NoOfGroups || ParKind(i) == Kind::LevelsA)
            return CountedSize(NumberOf(i));
    return 0;
}

} // namespace

i16 FindSize(std::initializer_list<SizeRole> roles) {
    for (i16 i = FirstDesignParNo; i <= NoOfPar; ++i)
        if (std::ranges::find(roles, SizeRoleOf(ParKind(i))) != roles.end())
            return i;
    return NoPar;
}

i16 FindSecondSize(SizeRole role) {
    switch (role) {
    case SizeRole::First:
        return FindSize({SizeRole::Second, SizeRole::EachOther});
    case SizeRole::FirstSequence:
        return FindSize({SizeRole::SecondSequence});
    case SizeRole::FirstExposure:
        return FindSize({SizeRole::SecondExposure});
    default:
        return NoPar;
    }
}

f64 CountedSize(f64 size) {
    return Val(FormatPar(Kind::Size, size));
}

SizePair CountedPair(i16 first, i16 second) {
    const f64 n = CountedSize(NumberOf(first));
    return {n, CountedSize(FromForm(SizeFormOf(ParKind(second)), n, NumberOf(second)))};
}

SizePair CountedSizes() {
    const i16 first = FindSize({SizeRole::Single, SizeRole::First, SizeRole::FirstSequence});
    if (first == NoPar)
        return {0, 0};
    const i16 second = FindSecondSize(SizeRoleOf(ParKind(first)));
    return second == NoPar ? SizePair{CountedSize(NumberOf(first)), 0} : CountedPair(first, second);
}

SizePair CountedGroups() {
    const i16 first = FindSize({SizeRole::Single, SizeRole::First});
    const f64 groups = NoOfGroups();
    if (first == NoPar || groups < 1)
        return {1, 1};
    if (ParKind(first) == Kind::SizePerGroup)
        return {groups, 0};
    const i16 second = FindSecondSize(SizeRoleOf(ParKind(first)));
    const bool isOfAllOthers =
        second != NoPar && SizeRoleOf(ParKind(second)) == SizeRole::EachOther;
    return {1, isOfAllOthers ? groups - 1 : 1};
}

} // namespace quorvanta
