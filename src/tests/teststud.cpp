#include "tests/teststud.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/options.h"
#include "core/records.h"
#include "numeric/probdist.h"
#include "tests/powereq.h"
#include "tests/testnor.h"
#include "tests/turningpoint.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 checkDf = 0;
constexpr i16 checkGroups = 5;
constexpr i16 checkSatterthwaite = 16;

f64 Wide(f32 x) {
    return static_cast<f64>(x);
}

f64 NoncentralT(f64 t, f32 df, f64 delta) {
    return Wide(NcTCdf(static_cast<f32>(t), df, static_cast<f32>(delta)));
}

f32 DegreesOfFreedom(const MeansValues& values) {
    if (NorUneqSd == 1)
        return SatterthwaiteDf(values.Sd1, values.Sd2, values.N1, values.N2);
    return CommonSdDf(values.N1, values.N2, CurrentMeans().Extra);
}

// In a simulation the degrees of freedom are those of the simulated data.
bool IsSimulation() {
    return CurrentWindowKind() == SimulationWindow;
}

void OfferTwoSampleChecks() {
    OfferChecks({checkDf, checkGroups, checkSatterthwaite});
    if (IsSimulation() || Ticked(checkSatterthwaite)) {
        DisableCheck(checkDf);
        DisableCheck(checkGroups);
    }
}

} // namespace

void TESTSTUD::SetupTest() {
    switch (CurrentVariant()) {
    case TestVariant::PTT:
        FixSamples(OneSample);
        if (!IsSimulation())
            OfferChecks({checkDf});
        break;
    case TestVariant::GSTT:
        break;
    case TestVariant::UNPTT:
        FixSamples(TwoSamples);
        OfferTwoSampleChecks();
        break;
    default:
        if (NoOfSamples == OneSample)
            OfferChecks({checkDf, checkGroups});
        else
            OfferTwoSampleChecks();
    }
    TESTNOR::SetupTest();
}

void TESTSTUD::SetParList() {
    TESTNOR::SetParList();
}

bool TESTSTUD::CheckPar() {
    return TESTNOR::CheckPar();
}

void TESTSTUD::SearchLimits(f64& lower, f64& upper) {
    TESTNOR::SearchLimits(lower, upper);
    if (UnknownParNo == CurrentMeans().Size1)
        StartWherePowerRises(lower, upper, &RootFunction);
}

f64 TESTSTUD::RootFunction() {
    const MeansValues values = ReadMeans();
    return TPowerEq(values.Delta, values.Se, values.DeltaLow, values.DeltaHigh,
                    DegreesOfFreedom(values));
}

f64 TPowerEq(f32 delta, f32 se, f32 deltaLow, f32 deltaHigh, f32 df) {
    const f64 alpha = Wide(SignificanceLevel());
    const f64 shift = Wide(delta) / Wide(se);
    f64 power = 0;
    if (NoOfTails == TwoSided) {
        const f64 t = Wide(TInv(static_cast<f32>(1 - alpha / 2), df));
        power = 1 - NoncentralT(t, df, shift) + NoncentralT(-t, df, shift);
    } else {
        const f64 t = Wide(TInv(static_cast<f32>(1 - alpha), df));
        if (NoOfTails == TwoOneSided)
            power = NoncentralT(-t, df, -Wide(deltaHigh) / Wide(se)) -
                    NoncentralT(t, df, Wide(deltaLow) / Wide(se));
        else if (LeftTail == True)
            power = NoncentralT(-t, df, shift);
        else
            power = 1 - NoncentralT(t, df, shift);
    }
    return power - ParValue(1);
}

f32 CommonSdDf(f32 n1Single, f32 n2Single, i16 entry) {
    const f64 n1 = Wide(n1Single);
    const f64 n2 = Wide(n2Single);
    if (entry != 0) {
        const f64 entered = Wide(static_cast<f32>(ParValue(entry)));
        if (Ticked(checkDf))
            return static_cast<f32>(entered);
        // Group 1 has n1 subjects, each of the others n2.
        return static_cast<f32>(NoOfSamples == OneSample ? (n1 - 1) * entered
                                                         : (n1 - 1) + (n2 - 1) * (entered - 1));
    }
    return static_cast<f32>(NoOfSamples == OneSample ? n1 - 1 : n1 + n2 - 2);
}

f32 SatterthwaiteDf(f32 sd1, f32 sd2, f32 n1, f32 n2) {
    const f32 a = static_cast<f32>(Wide(sd1) * Wide(sd1) / Wide(n1));
    const f32 b = static_cast<f32>(Wide(sd2) * Wide(sd2) / Wide(n2));
    const f64 va = Wide(a);
    const f64 vb = Wide(b);
    return static_cast<f32>((va + vb) * (va + vb) /
                            (va * va / (Wide(n1) - 1) + vb * vb / (Wide(n2) - 1)));
}

f32 TPValue(f32 mean, f32 m0, f32 se, f32 low, f32 high, f32 df) {
    const auto cdf = [se, df](f64 distance) {
        return Wide(TCdf(static_cast<f32>(distance / Wide(se)), df));
    };
    const f64 d = Wide(mean) - Wide(m0);
    if (NoOfTails == TwoOneSided) {
        const f64 left = 1 - cdf(Wide(mean) - Wide(low));
        const f64 right = cdf(Wide(mean) - Wide(high));
        return static_cast<f32>(left > right ? left : right);
    }
    if (NoOfTails == TwoSided)
        return static_cast<f32>(2 * (1 - cdf(std::fabs(d))));
    return static_cast<f32>(LeftTail == True ? cdf(d) : 1 - cdf(d));
}

} // namespace quorvanta
