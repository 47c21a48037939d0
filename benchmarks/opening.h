// What benchmarks of searches choose and find in the open analysis.
#pragma once

#include "core/analysis_state.h"
#include "core/option_choice.h"

namespace quorvanta {

inline void Choose(i16 group, i16 option) {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        if (IntParList(i) == group)
            ChooseIntPar(i, option);
}

// The kind has to be in the list.
inline i16 PositionOf(i16 kind) {
    i16 i = 0;
    while (ParKind(i) != kind)
        ++i;
    return i;
}

} // namespace quorvanta
