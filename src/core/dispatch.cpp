#include "core/dispatch.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "tests/parbin.h"
#include "tests/parexp.h"
#include "tests/parfinite.h"
#include "tests/parhyper.h"
#include "tests/parnor2.h"
#include "tests/parnorm.h"
#include "tests/parpoisson.h"
#include "tests/testbin.h"
#include "tests/testbioeq.h"
#include "tests/testchi2.h"
#include "tests/testequiv.h"
#include "tests/testexploc.h"
#include "tests/testexpscale.h"
#include "tests/testfisher.h"
#include "tests/testhyper.h"
#include "tests/testlnorm.h"
#include "tests/testmcn.h"
#include "tests/testpairbin.h"
#include "tests/tests2.h"
#include "tests/teststud.h"

namespace quorvanta {

namespace {

// Serves the analyses that no module exists for.
struct NoModule {};

// The module of a test of a parameter, or of its estimate or interval.
template <class Test, class Estimation, class Operation>
auto WithEither(Operation operation) {
    return ProcedureNo == ProcedureTest ? operation.template operator()<Test>()
                                        : operation.template operator()<Estimation>();
}

// The selection chain of the parameters of distributions.
template <class Operation>
auto WithParameterModule(Operation operation) {
    switch (DistrNo) {
    case DistrNormal:
        switch (ParListNo) {
        case 0:
            return WithEither<TESTNOR, PARNORM>(operation);
        case 1:
            return WithEither<TESTSTUD, PARNORM>(operation);
        default:
            return WithEither<TESTS2, PARNORM>(operation);
        }
    case DistrLognormal:
        return ParListNo == 0 ? WithEither<TESTLNORM, PARLNORM>(operation)
                              : WithEither<TESTLSTU, PARLNORM>(operation);
    case DistrExponential:
        return ParListNo == 0 ? WithEither<TESTEXPLOC, PAREXP>(operation)
                              : WithEither<TESTEXPSCALE, PAREXP>(operation);
    case DistrBinomial:
        return WithEither<TESTBIN, PARBIN>(operation);
    case DistrHypergeometric:
        return WithEither<TESTHYPER, PARHYPER>(operation);
    case DistrPoisson:
        return operation.template operator()<ParPoisson>();
    case DistrFinitePopulation:
        return ParListNo == 0 ? operation.template operator()<PARFINNOR>()
                              : operation.template operator()<PARFINITE>();
    case DistrBivariateNormal:
        switch (ParListNo) {
        case 0:
            return operation.template operator()<PARNOR2MEAN>();
        case 1:
            return operation.template operator()<PARNOR2SD>();
        case 2:
            return operation.template operator()<PARNOR2CORREL>();
        default:
            return operation.template operator()<PARNOR2REGRESS>();
        }
    default:
        return operation.template operator()<NoModule>();
    }
}

// The one selection chain: from the numbers of the current analysis to its module.
template <class Operation>
auto WithModule(Operation operation) {
    if (IsTest == False)
        return WithParameterModule(operation);
    switch (TestNo) {
    case 0:
    case 1:
    case 125:
        return operation.template operator()<TESTSTUD>();
    case 19:
        return operation.template operator()<TESTFISHER>();
    case 20:
    case 117:
        return operation.template operator()<TESTMCN>();
    case 21:
        return operation.template operator()<TESTCHI2>();
    case 74:
    case 75:
    case 76:
    case 77:
    case 79:
    case 81:
    case 82:
    case 83:
    case 84:
    case 121:
    case 122:
        return operation.template operator()<TESTEQUIV>();
    case 78:
        return operation.template operator()<TESTBIOEQ>();
    case 120:
        return operation.template operator()<TESTPAIRBIN>();
    default:
        return operation.template operator()<NoModule>();
    }
}

} // namespace

bool SelHasModule() {
    return WithModule([]<class M>() {
        if constexpr (requires { M::IsServed(); })
            return M::IsServed();
        else
            return requires {
                M::RootFunction();
            };
    });
}

void SelSetupTest() {
    WithModule([]<class M>() {
        if constexpr (requires { M::SetupTest(); })
            M::SetupTest();
    });
}

void SelSetParList() {
    WithModule([]<class M>() {
        if constexpr (requires { M::SetParList(); })
            M::SetParList();
    });
}

bool SelCheckPar() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !CheckRange(i, ParMin(ParKind(i)), ParMax(ParKind(i))))
            return false;
    return WithModule([]<class M>() {
        if constexpr (requires { M::CheckPar(); })
            return M::CheckPar();
        else
            return true;
    });
}

void SelSearchLimits(f64& lower, f64& upper) {
    WithModule([&lower, &upper]<class M>() {
        if constexpr (requires { M::SearchLimits(lower, upper); })
            M::SearchLimits(lower, upper);
    });
}

f64 SelRootFunction() {
    return WithModule([]<class M>() -> f64 {
        if constexpr (requires { M::RootFunction(); })
            return M::RootFunction();
        else
            return 0;
    });
}

bool SelIsTablePar(i16 parNo) {
    return WithModule([parNo]<class M>() {
        if constexpr (requires { M::IsTablePar(parNo); })
            return M::IsTablePar(parNo);
        else
            return false;
    });
}

f32 SelCalcTablePar() {
    return WithModule([]<class M>() -> f32 {
        if constexpr (requires { M::CalcTablePar(); })
            return M::CalcTablePar();
        else
            return 0;
    });
}

void SelSetLabels() {
    WithModule([]<class M>() {
        if constexpr (requires { M::SetLabels(); })
            M::SetLabels();
    });
}

} // namespace quorvanta
