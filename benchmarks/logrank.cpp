// The log-rank test with uniform accrual and losses, solved for its sample size by the driver, and
// by a plain rendering of the same equations on the same search.
#include "../checks/support/scripted_platform.h"
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/option_choice.h"
#include "core/root.h"
#include "core/search.h"
#include "core/setup.h"
#include "numeric/probdist.h"
#include "output/format.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

using namespace quorvanta;

constexpr i16 menuLachinFoulkes = 402;
constexpr i16 menuGeorgeDesu = 403;

void Choose(i16 group, i16 option) {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        if (IntParList(i) == group)
            ChooseIntPar(i, option);
}

// Level 0.05, two-sided, power 0.80, hazards 0.3 and 0.45, losses 0.1 and 0.2, uniform accrual over
// 3 of 5 years, groups of equal size.
void OpenPlan(i16 menuNo) {
    static ScriptedPlatform platform;
    SetPlatform(platform);
    Main();
    FileCommand(CalculationWindow);
    NewTest(menuNo);
    ChooseTails(TwoSided);
    Choose(Group::Size2, 2);
    AcceptOptions();
    const f64 null = menuNo == menuLachinFoulkes ? 0 : 1;
    const f64 values[] = {0.05, 0.80, null, 0.3, 0.45, 0.1, 0.2, 0, 3, 5, 100, 1};
    for (i16 i = 0; i <= NoOfPar; ++i) {
        ParValue(i) = values[i];
        ParText(ParKind(i)) = Str(values[i]);
        if (ParKind(i) == Kind::Size1)
            UnknownParNo = i;
    }
}

namespace plain {

f32 Rounded(f64 x) {
    return static_cast<f32>(x);
}

f64 Exp(f64 x) {
    return std::exp(std::min(f64{Rounded(x)}, 75.0));
}

struct Plan {
    bool IsLog;
    f64 Level = 0.05, Power = 0.80, Hazard1 = 0.3, Hazard2 = 0.45, Loss1 = 0.1, Loss2 = 0.2;
    f64 Accrual = 3, Study = 5, Ratio = 1;

    f64 Variance(f64 hazard, f64 loss) const {
        const f64 c = f64{Rounded(hazard)} + f64{Rounded(loss)};
        const f64 difference = Exp(-c * (Study - Accrual)) - Exp(-c * Study);
        return Rounded(c * f64{Rounded(hazard)} / (1 - difference / (c * Accrual)));
    }

    f64 Error(f64 first, f64 second, f64 n1, f64 n2) const {
        const f64 scale1 = IsLog ? first : 1;
        const f64 scale2 = IsLog ? second : 1;
        return Rounded(std::sqrt(Variance(first, Loss1) / (n1 * scale1 * scale1) +
                                 Variance(second, Loss2) / (n2 * scale2 * scale2)));
    }

    f64 operator()(f64 size) const {
        const f64 n1 = Rounded(size);
        const f64 n2 = Rounded(n1 * Ratio);
        const f64 pooled = Rounded((n1 * Hazard1 + n2 * Hazard2) / (n1 + n2));
        const f64 delta = Rounded(IsLog ? std::log(Hazard2 / Hazard1) : Hazard2 - Hazard1);
        const f64 se0 = Error(pooled, pooled, n1, n2);
        const f64 se1 = Error(Hazard1, Hazard2, n1, n2);
        const f64 z{NorInv(Rounded(1 - f64{Rounded(Level)} / 2))};
        return 1 - f64{NorCdf(Rounded((delta + se0 * z) / se1))} +
               f64{NorCdf(Rounded((delta - se0 * z) / se1))} - Power;
    }
};

f64 Root(const Plan& plan) {
    i16 iterations = 0;
    f64 root = 0;
    f64 residual = 0;
    FindRootOf(plan, ParMin(Kind::Size1), ParMax(Kind::Size1), 1e-5, 500, iterations, root,
               residual);
    return root;
}

} // namespace plain

void SizeByDriver(benchmark::State& state, i16 menuNo) {
    OpenPlan(menuNo);
    for (auto _ : state)
        benchmark::DoNotOptimize(SolveUnknown());
    constexpr f64 rounding = 0.01; // of exponentials in 32 bits, in subjects
    const plain::Plan plan{.IsLog = menuNo != menuLachinFoulkes};
    if (std::fabs(SolveUnknown() - plain::Root(plan)) > rounding)
        state.SkipWithError("not the same size");
}

void SizeByPlainCode(benchmark::State& state, i16 menuNo) {
    plain::Plan plan{.IsLog = menuNo != menuLachinFoulkes};
    for (auto _ : state) {
        benchmark::DoNotOptimize(plan);
        benchmark::DoNotOptimize(plain::Root(plan));
    }
}

BENCHMARK_CAPTURE(SizeByDriver, LachinFoulkes, menuLachinFoulkes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SizeByPlainCode, LachinFoulkes, menuLachinFoulkes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SizeByDriver, GeorgeDesu, menuGeorgeDesu)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SizeByPlainCode, GeorgeDesu, menuGeorgeDesu)->Unit(benchmark::kMicrosecond);

} // namespace
