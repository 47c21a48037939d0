#include "core/dispatch.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/module_chain.h"
#include "groupseq/interim.h"
#include "montecarlo/simstudy.h"

namespace quorvanta {

bool HasEquation(const AnalysisKey& key) {
    if (key.IsTest == True && IsSimOnlyTest(key.TestNo))
        return false;
    return WithModule(key, []<class M>() {
        return requires {
            M::RootFunction();
        };
    });
}

bool HasSimulation(const AnalysisKey& key) {
    return WithModule(key, [&key]<class M>() {
        if constexpr (requires { M::CanSimulate(key); })
            return M::CanSimulate(key);
        else
            return requires {
                M::GetSimPar();
            };
    });
}

bool IsServed(const AnalysisKey& key) {
    return HasEquation(key) || HasSimulation(key);
}

bool IsServedIn(const AnalysisKey& key, i16 windowKind) {
    return windowKind == SimulationWindow ? HasSimulation(key) : HasEquation(key);
}

void SelSetupTest() {
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::SetupTest(); })
            M::SetupTest();
    });
}

void SelSetParList() {
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::SetParList(); })
            M::SetParList();
    });
}

bool SelCheckPar() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !CheckRange(i, ParMin(ParKind(i)), ParMax(ParKind(i))))
            return false;
    const bool isGood = WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::CheckPar(); })
            return M::CheckPar();
        else
            return true;
    });
    // A design is asked for what it is made of once its parameters are good.
    const bool isToBeSetUp = IsGroupSeq == True && HasGridData == False;
    return isGood && (!isToBeSetUp || GsSetUpInterim());
}

void SelSearchLimits(f64& lower, f64& upper) {
    WithModule(CurrentKey(), [&lower, &upper]<class M>() {
        if constexpr (requires { M::SearchLimits(lower, upper); })
            M::SearchLimits(lower, upper);
    });
    if (IsGroupSeq == True)
        GsSearchLimits(lower, upper);
}

// A search may end with another value than the solution.
void SelNoteDesign(DesignRanges& ranges) {
    if (IsGroupSeq == False)
        return;
    SelRootFunction();
    GsNoteDesign(ranges);
}

f64 SelRootFunction() {
    return WithModule(CurrentKey(), []<class M>() -> f64 {
        if constexpr (requires { M::RootFunction(); })
            return M::RootFunction();
        else
            return 0;
    });
}

bool SelIsTablePar(i16 parNo) {
    return WithModule(CurrentKey(), [parNo]<class M>() {
        if constexpr (requires { M::IsTablePar(parNo); })
            return M::IsTablePar(parNo);
        else
            return false;
    });
}

std::vector<Grid> SelTableGrids(i16 parNo) {
    return WithModule(CurrentKey(), [parNo]<class M>() -> std::vector<Grid> {
        if constexpr (requires { M::TableGrids(parNo); })
            return M::TableGrids(parNo);
        else
            return {};
    });
}

std::optional<DistrList> SelTableDistr(i16 parNo) {
    return WithModule(CurrentKey(), [parNo]<class M>() -> std::optional<DistrList> {
        if constexpr (requires { M::TableDistr(parNo); })
            return M::TableDistr(parNo);
        else
            return std::nullopt;
    });
}

std::vector<NamedDistr> SelGroupDistr() {
    return WithModule(CurrentKey(), []<class M>() -> std::vector<NamedDistr> {
        if constexpr (requires { M::GroupDistr(); })
            return M::GroupDistr();
        else
            return {};
    });
}

f32 SelCalcTablePar(i16 parNo) {
    return WithModule(CurrentKey(), [parNo]<class M>() -> f32 {
        if constexpr (requires { M::CalcTablePar(parNo); })
            return M::CalcTablePar(parNo);
        else
            return static_cast<f32>(NoValue);
    });
}

void SelRenewTablePars() {
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::RenewTablePars(); })
            M::RenewTablePars();
    });
}

void SelSetLabels() {
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::SetLabels(); })
            M::SetLabels();
    });
}

void SelGetSimPar() {
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::GetSimPar(); })
            M::GetSimPar();
    });
}

void SelSimStatistic(f32& p, i16 IsH1) {
    ++SimStage;
    if (SimStage == 1)
        SimStudy.Reset();
    const i16 n1 = SimSize1(SimStage);
    const i16 n2 = SimSize2(SimStage);
    const i16 new1 = static_cast<i16>(n1 - SimSize1(SimStage - 1));
    const i16 new2 = static_cast<i16>(n2 - SimSize2(SimStage - 1));
    p = WithModule(CurrentKey(), [=]<class M>() -> f32 {
        if constexpr (requires { M::SimTest(n1, n2); }) {
            M::SimSample(new1, new2, IsH1 != 0);
            return M::SimTest(n1, n2);
        } else {
            return 1;
        }
    });
}

void SelSimInterval() {
    ++SimStage;
    SimStudy.Reset();
    WithModule(CurrentKey(), []<class M>() {
        if constexpr (requires { M::SimInterval(); })
            M::SimInterval();
    });
}

i16 SelExactUpTo() {
    return WithModule(CurrentKey(), []<class M>() -> i16 {
        if constexpr (requires { M::ExactUpTo(); })
            return M::ExactUpTo();
        else
            return 0;
    });
}

std::string SelApproximation() {
    return WithModule(CurrentKey(), []<class M>() -> std::string {
        if constexpr (requires { M::Approximation(); })
            return M::Approximation();
        else
            return "";
    });
}

std::string SelHypothesis(i16 row) {
    return WithModule(CurrentKey(), [row]<class M>() -> std::string {
        if constexpr (requires { M::Hypothesis(row); })
            return M::Hypothesis(row);
        else
            return "";
    });
}

} // namespace quorvanta
