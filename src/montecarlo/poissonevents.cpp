#include "montecarlo/poissonevents.h"

#include "core/general.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

namespace quorvanta {

// In parts, none of which has more events than a generator can count.
f64 DrawEvents(f64 mean) {
    constexpr f64 eventsOfPart = 1000;
    if (mean <= 0)
        return 0;
    const f64 parts = Int(mean / eventsOfPart) + 1;
    RandSample.ReDim(0, ToI16(parts));
    RandPoisson(Single(mean / parts));
    f64 events = 0;
    for (const f32 drawn : RandSample.Raw().subspan(1))
        events += f64{drawn};
    return events;
}

} // namespace quorvanta
