// Events of a simulated study in all of its time, or in all of its subjects.
#pragma once

#include "core/types.h"

namespace quorvanta {

// A study with more takes too long for a simulation.
inline constexpr f64 MostEvents = 1e6;

// A Poisson count with this mean, 0..MostEvents.
f64 DrawEvents(f64 mean);

} // namespace quorvanta
