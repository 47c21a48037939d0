#include "montecarlo/simdistr.h"

#include "montecarlo/simstudy.h"
#include "numeric/randdist.h"

namespace quorvanta {

namespace {

bool HasShape(i16 code) {
    return code == SimWeibull || code == SimLognormal || code == SimGamma || code == SimChi2;
}

} // namespace

void SimDistr(i16 n, f32 group, const DistrRow& distr) {
    SimulateDistr(distr);
    const bool hasScale = distr.Code != SimChi2;
    SimOneSample(n, group, HasShape(distr.Code) ? 0.0F : distr.Par1, hasScale ? distr.Par2 : 1.0F);
}

} // namespace quorvanta
