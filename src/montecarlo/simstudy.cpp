#include "montecarlo/simstudy.h"

#include "core/general.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>

namespace quorvanta {

SimStudyRecord SimStudy;
i16 SimStage;
f32 SimLoc1;
f32 SimLoc2;
f32 SimScale1;
f32 SimScale2;
f32 SimLoLimit;
f32 SimHiLimit;
Array1<i16> SimSize1;
Array1<i16> SimSize2;
Array1<f32> SimTime;
Array1<f32> RejectP;
Array1<f32> AcceptP;
i16 IsIntervalSim;
i16 IsEquivInterval;

void SimStudyRecord::Reset() {
    Sum1 = Sum2 = Sum3 = Sum4 = Sum5 = Sum6 = Sum7 = Sum8 = Sum9 = Sum10 = Sum11 = 0;
    Value.ReDim(1, 0);
    Group.ReDim(1, 0);
    Min1 = Min2 = 99999;
    Stop = 0;
    Covers = IsNarrow = false;
}

namespace {

// Adds what was drawn, times scale, plus location, to the study.
void AddSample(std::span<const f32> drawn, f32 group, f32 location, f32 scale) {
    const auto before = static_cast<std::size_t>(SimStudy.Value.HighBound());
    const int after = static_cast<int>(before + drawn.size());
    SimStudy.Value.ReDimPreserve(after);
    SimStudy.Group.ReDimPreserve(after);
    const auto values = SimStudy.Value.Raw().subspan(before);
    const f64 s{scale};
    const f64 d{location};
    for (std::size_t i = 0; i < drawn.size(); ++i)
        values[i] = Single(f64{drawn[i]} * s + d);
    std::ranges::fill(SimStudy.Group.Raw().subspan(before), group);
}

} // namespace

void SimOneSample(i16 n, f32 group, f32 location, f32 scale) {
    if (n < 1)
        return;
    RandFromDistrCode(n);
    AddSample(RandSample.Raw().subspan(1), group, location, scale);
}

// Both groups in one call of the generator, which draws one element after the other.
void SimTwoSamples(i16 n1, i16 n2, f32 d, f32 s1, f32 s2) {
    if (n1 < 1 || n2 < 1 || n1 > std::numeric_limits<i16>::max() - n2) {
        SimOneSample(n1, 1, 0, s1);
        SimOneSample(n2, 2, d, s2);
        return;
    }
    RandFromDistrCode(static_cast<i16>(n1 + n2));
    const std::span<const f32> drawn = RandSample.Raw().subspan(1);
    AddSample(drawn.first(static_cast<std::size_t>(n1)), 1, 0, s1);
    AddSample(drawn.subspan(static_cast<std::size_t>(n1)), 2, d, s2);
}

void SimPairs(i16 n, f32 rho) {
    if (n < 1)
        return;
    RandSample.ReDim(0, n);
    RandSample2.ReDim(0, n);
    RandBivNormal(rho);
    const int before = SimStudy.Value.HighBound();
    SimStudy.Value.ReDimPreserve(before + n);
    SimStudy.Group.ReDimPreserve(before + n);
    const auto copy = [before](const Array1<f32>& drawn, Array1<f32>& to) {
        std::ranges::copy(drawn.Raw().subspan(1),
                          to.Raw().subspan(static_cast<std::size_t>(before)).begin());
    };
    copy(RandSample, SimStudy.Value);
    copy(RandSample2, SimStudy.Group);
}

} // namespace quorvanta
