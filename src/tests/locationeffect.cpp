#include "tests/locationeffect.h"

#include "core/analysis_state.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"

#include <cmath>

namespace quorvanta {

namespace {

// A location as the equation sees it.
f32 Location(f32 value, bool logScale) {
    return logScale ? Single(std::log(f64{value})) : value;
}

f32 Difference(f32 a, f32 b) {
    return Single(f64{a} - f64{b});
}

// The true location of one sample, the true effect of two.
f32 TrueLocation(const Hypotheses& hypotheses, bool logScale) {
    if (hypotheses.HasTwo())
        return Difference(Location(hypotheses.Second(), logScale),
                          Location(hypotheses.First(), logScale));
    return Location(Single(hypotheses.Truth()), logScale);
}

} // namespace

Locations ReadLocations(const Hypotheses& hypotheses, bool logScale) {
    Locations locations;
    locations.Truth = TrueLocation(hypotheses, logScale);
    locations.Null = Location(hypotheses.H0(), logScale);
    if (NoOfTails == TwoOneSided)
        locations.Right = Location(hypotheses.Right(), logScale);
    return locations;
}

LocationEffect ReadLocationEffect(const Hypotheses& hypotheses, bool logScale) {
    const auto [null, right, truth] = ReadLocations(hypotheses, logScale);
    LocationEffect effect;
    if (NoOfTails == TwoOneSided) {
        effect.DeltaLow = Difference(truth, null);
        effect.DeltaHigh = Difference(right, truth);
    } else {
        effect.Delta = Difference(truth, null);
    }
    return effect;
}

} // namespace quorvanta
