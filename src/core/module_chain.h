// The module SELLIST: the one chain from the numbers of an analysis to the module that serves it. A
// new test has its line here, and nothing else in the program names it.
#pragma once

#include "core/analysis_key.h"
#include "core/analysis_state.h"
#include "multcomp/testfriedman.h"
#include "multcomp/testmultcomp.h"
#include "ranksurv/testchi2gof.h"
#include "ranksurv/testcohen.h"
#include "ranksurv/testcohengeneral.h"
#include "ranksurv/testcox.h"
#include "ranksurv/testcron.h"
#include "ranksurv/testkappa.h"
#include "ranksurv/testkendall.h"
#include "ranksurv/testkolsmi.h"
#include "ranksurv/testkolsmitwo.h"
#include "ranksurv/testkruskal.h"
#include "ranksurv/testlifetable.h"
#include "ranksurv/testlifetablepwexp.h"
#include "ranksurv/testlifetableweib.h"
#include "ranksurv/testlinsconc.h"
#include "ranksurv/testlogrank.h"
#include "ranksurv/testlogranknoninf.h"
#include "ranksurv/testlogranknonparam.h"
#include "ranksurv/testlogrankstrat.h"
#include "ranksurv/testmw.h"
#include "ranksurv/testnormscore.h"
#include "ranksurv/testrankscale.h"
#include "ranksurv/testreliab.h"
#include "ranksurv/testsavage.h"
#include "ranksurv/testsign.h"
#include "ranksurv/testspear.h"
#include "ranksurv/testsurvsim.h"
#include "ranksurv/testwsign.h"
#include "tests/groupseqcp.h"
#include "tests/parbin.h"
#include "tests/parexp.h"
#include "tests/parfinite.h"
#include "tests/parhyper.h"
#include "tests/parnor2.h"
#include "tests/parnorm.h"
#include "tests/parpoisson.h"
#include "tests/testanov.h"
#include "tests/testanov2w.h"
#include "tests/testanova3w.h"
#include "tests/testanovalatin.h"
#include "tests/testanovarandblock.h"
#include "tests/testanovarepmeas1b1w.h"
#include "tests/testanovarepmeas1w.h"
#include "tests/testbin.h"
#include "tests/testbioeq.h"
#include "tests/testca.h"
#include "tests/testchi2.h"
#include "tests/testchi2indep.h"
#include "tests/testchi2rxc.h"
#include "tests/testcorrel.h"
#include "tests/testequiv.h"
#include "tests/testexploc.h"
#include "tests/testexpscale.h"
#include "tests/testfisher.h"
#include "tests/testhotelling1.h"
#include "tests/testhyper.h"
#include "tests/testlnorm.h"
#include "tests/testlogistic.h"
#include "tests/testmanovarepmeas1b1w.h"
#include "tests/testmanovarepmeas1w.h"
#include "tests/testmcn.h"
#include "tests/testmh.h"
#include "tests/testmlr.h"
#include "tests/testpairbin.h"
#include "tests/testporegr.h"
#include "tests/testregr.h"
#include "tests/tests2.h"
#include "tests/teststuart.h"
#include "tests/teststud.h"
#include "tests/xover.h"
#include "tests/xover2way.h"

namespace quorvanta {

// Serves the analyses that no module exists for.
struct NoModule {};

// The module of a test of a parameter, or of its estimate or interval.
template <class Test, class Estimation, class Operation>
auto WithEither(const AnalysisKey& key, Operation operation) {
    return key.ProcedureNo == ProcedureTest ? operation.template operator()<Test>()
                                            : operation.template operator()<Estimation>();
}

// The selection chain of the parameters of distributions.
template <class Operation>
auto WithParameterModule(const AnalysisKey& key, Operation operation) {
    switch (key.DistrNo) {
    case DistrNormal:
        switch (key.ParListNo) {
        case 0:
            return WithEither<TESTNOR, PARNORM>(key, operation);
        case 1:
            return WithEither<TESTSTUD, PARNORM>(key, operation);
        default:
            return WithEither<TESTS2, PARNORM>(key, operation);
        }
    case DistrLognormal:
        return key.ParListNo == 0 ? WithEither<TESTLNORM, PARLNORM>(key, operation)
                                  : WithEither<TESTLSTU, PARLNORM>(key, operation);
    case DistrExponential:
        return key.ParListNo == 0 ? WithEither<TESTEXPLOC, PAREXP>(key, operation)
                                  : WithEither<TESTEXPSCALE, PAREXP>(key, operation);
    case DistrBinomial:
        return WithEither<TESTBIN, PARBIN>(key, operation);
    case DistrHypergeometric:
        return WithEither<TESTHYPER, PARHYPER>(key, operation);
    case DistrPoisson:
        return operation.template operator()<ParPoisson>();
    case DistrFinitePopulation:
        return key.ParListNo == 0 ? operation.template operator()<PARFINNOR>()
                                  : operation.template operator()<PARFINITE>();
    case DistrBivariateNormal:
        switch (key.ParListNo) {
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

// The one selection chain: hands the operation the module that serves the analysis.
template <class Operation>
auto WithModule(const AnalysisKey& key, Operation operation) {
    if (key.IsTest == False)
        return WithParameterModule(key, operation);
    switch (key.TestNo) {
    case 0:
    case 1:
    case 125:
        return operation.template operator()<TESTSTUD>();
    case 124:
        return operation.template operator()<TESTNOR>();
    case 126:
        return operation.template operator()<TESTBIN>();
    case 2:
    case 130:
        return operation.template operator()<TESTANOV>();
    case 3:
        return operation.template operator()<TESTANOV2W>();
    case 4:
        return operation.template operator()<TESTANOVA3W>();
    case 6:
        return operation.template operator()<TESTANOVALATIN>();
    case 7:
        return operation.template operator()<TESTANOVALATINREPL>();
    case 8:
        return operation.template operator()<TESTANOVALATINREPLRAND>();
    case 10:
        return operation.template operator()<TESTANOVARANDBLOCK>();
    case 11:
        return operation.template operator()<TESTANOVARANDBLOCK2W>();
    case 12:
        return operation.template operator()<TESTANOVAREPMEAS1W>();
    case 13:
        return operation.template operator()<TESTANOVAREPMEAS1B1W>();
    case 14:
    case 15:
        return operation.template operator()<TESTHOTELLING1>();
    case 16:
        return operation.template operator()<TESTMANOVAREPMEAS1W>();
    case 17:
        return operation.template operator()<TESTMANOVAREPMEAS1B1W>();
    case 19:
        return operation.template operator()<TESTFISHER>();
    case 20:
    case 117:
        return operation.template operator()<TESTMCN>();
    case 21:
        return operation.template operator()<TESTCHI2>();
    case 22:
        return operation.template operator()<TESTCHI2RXC>();
    case 23:
        return operation.template operator()<TESTMH>();
    case 24:
        return operation.template operator()<TESTCA>();
    case 25:
    case 106:
    case 107:
        return operation.template operator()<TESTCHI2GOF>();
    case 41:
    case 42:
        return operation.template operator()<TESTMW>();
    case 43:
        return operation.template operator()<TESTNORMSCORE>();
    case 44:
        return operation.template operator()<TESTKRUSKAL>();
    case 45:
        return operation.template operator()<TESTSIEGEL>();
    case 46:
        return operation.template operator()<TESTANSARI>();
    case 47:
        return operation.template operator()<TESTKLOTZ>();
    case 48:
        return operation.template operator()<TESTMOOD>();
    case 49:
        return operation.template operator()<TESTCONOVER>();
    case 50:
        return operation.template operator()<TESTSAVAGE>();
    case 51:
        return operation.template operator()<TESTWSIGN>();
    case 52:
        return operation.template operator()<TESTSIGN>();
    case 54:
        return operation.template operator()<TESTREGR>();
    case 55:
        return operation.template operator()<TESTMLR>();
    case 56:
    case 57:
        return operation.template operator()<TESTLOGISTIC>();
    case 58:
    case 59:
        return operation.template operator()<TESTPOREGR>();
    case 61:
        return operation.template operator()<TESTCORREL>();
    case 69:
        return operation.template operator()<XOVER2WAY>();
    case 70:
        return operation.template operator()<XOVER2WAYLOG>();
    case 26:
        return operation.template operator()<TESTLIFETABLE>();
    case 27:
    case 28:
    case 29:
        return operation.template operator()<TESTLIFETABLEWEIB>();
    case 30:
        return operation.template operator()<TESTLIFETABLEPWEXP>();
    case 331:
    case 85:
    case 90:
    case 95:
    case 100:
        return operation.template operator()<TESTSURVSIM<TESTLIFETABLE>>();
    case 32:
    case 33:
    case 34:
    case 86:
    case 87:
    case 88:
    case 91:
    case 92:
    case 93:
    case 96:
    case 97:
    case 98:
    case 101:
    case 102:
    case 103:
        return operation.template operator()<TESTLOGRANKWEIB>();
    case 35:
    case 89:
    case 94:
    case 99:
    case 104:
        return operation.template operator()<TESTLOGRANKPWEXP>();
    case 38:
    case 39:
        return operation.template operator()<TESTCOX>();
    case 31:
    case 37:
    case 127:
    case 202:
    case 203:
    case 204:
    case 205:
        return operation.template operator()<TESTLOGRANK>();
    case 36:
    case 200:
        return operation.template operator()<TESTLOGRANKNONPARAM>();
    case 62:
        return operation.template operator()<TESTSPEAR>();
    case 63:
        return operation.template operator()<TESTKENDALL>();
    case 64:
        return operation.template operator()<TESTRELIAB>();
    case 65:
        return operation.template operator()<TESTCRON>();
    case 66:
        return operation.template operator()<TESTKAPPA>();
    case 67:
        return operation.template operator()<TESTLINSCONC>();
    case 71:
        return operation.template operator()<XOVER>();
    case 72:
        return operation.template operator()<XOVERLOG>();
    case 74:
    case 81:
        return operation.template operator()<TESTEQUIV<TESTSTUD>>();
    case 75:
    case 82:
        return operation.template operator()<TESTEQUIV<TESTLNORM>>();
    case 76:
    case 83:
        return operation.template operator()<TESTEQUIV<TESTBIN>>();
    case 77:
    case 84:
        return operation.template operator()<TESTEQUIV<TESTLOGRANK>>();
    case 78:
        return operation.template operator()<TESTBIOEQ>();
    case 79:
        return operation.template operator()<TESTEQUIV<TESTBIOEQ>>();
    case 105:
        return operation.template operator()<TESTSTUART>();
    case 108:
    case 109:
        return operation.template operator()<TESTKOLSMI>();
    case 110:
        return operation.template operator()<TESTCHI2INDEP>();
    case 111:
        return operation.template operator()<TESTKOLSMITWO>();
    case 112:
        return operation.template operator()<TESTJONCKTERP>();
    case 113:
        return operation.template operator()<TESTWALDWOLF>();
    case 118:
        return operation.template operator()<TESTCOHEN>();
    case 119:
        return operation.template operator()<TESTCOHENGENERAL>();
    case 120:
        return operation.template operator()<TESTPAIRBIN>();
    case 121:
    case 122:
        return operation.template operator()<TESTEQUIV<TESTPAIRBIN>>();
    case 135:
    case 136:
    case 137:
        return operation.template operator()<TESTMULTCOMPCI>();
    case 138:
    case 139:
    case 140:
    case 141:
    case 142:
    case 143:
    case 144:
    case 145:
        return operation.template operator()<TESTMULTCOMP>();
    case 179:
    case 180:
    case 181:
    case 182:
        return operation.template operator()<TESTLOGRANKSTRAT>();
    case 183:
        return operation.template operator()<TESTLOGRANKSTRATSIM>();
    case 201:
        return operation.template operator()<TESTLOGRANKNONINF>();
    case 377:
        return operation.template operator()<TESTFRIEDMAN>();
    case 400:
    case 401:
    case 402:
    case 403:
    case 404:
    case 405:
        return operation.template operator()<GROUPSEQCP>();
    default:
        return operation.template operator()<NoModule>();
    }
}

} // namespace quorvanta
