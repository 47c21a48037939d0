// New subjects of a simulated study whose distribution is a row of the table of distributions.
#pragma once

#include "core/types.h"
#include "montecarlo/shiftmodel.h"

namespace quorvanta {

// n new subjects of a group from a continuous row: of a family with a shape its draws times the
// scale, of any other times the scale plus the location.
void SimDistr(i16 n, f32 group, const DistrRow& distr);

} // namespace quorvanta
