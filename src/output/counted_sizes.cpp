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

} // namespace quorvanta
