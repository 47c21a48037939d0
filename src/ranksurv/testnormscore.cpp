#include "ranksurv/testnormscore.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/powereq.h"

namespace quorvanta {

namespace {

i16 shift;
i16 scale;
SampleValues sizes;

} // namespace

void TESTNORMSCORE::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(SizeKinds);
}

void TESTNORMSCORE::SetParList() {
    StartTestList();
    shift = AddPar(Kind::H1Mean2Minus1);
    scale = AddPar(Kind::Sd);
    sizes = AddSizes();
}

bool TESTNORMSCORE::CheckPar() {
    return sizes.Check();
}

bool TESTNORMSCORE::IsTablePar(i16 parNo) {
    return parNo == shift;
}

std::optional<DistrList> TESTNORMSCORE::TableDistr(i16 /*parNo*/) {
    return DistrList::ShiftModels;
}

f32 TESTNORMSCORE::CalcTablePar(i16 parNo) {
    return Single(ParValue(parNo));
}

std::vector<NamedDistr> TESTNORMSCORE::GroupDistr() {
    GetSimPar();
    return {{"H0", SimulatedDistr(SimLoc1, SimScale1)}, {"H1", SimulatedDistr(SimLoc2, SimScale2)}};
}

void TESTNORMSCORE::GetSimPar() {
    SimulateFamily(DistrList::ShiftModels);
    SimLoc1 = 0;
    SimLoc2 = Single(ParValue(shift));
    SimScale1 = SimScale2 = Single(ParValue(scale));
}

void TESTNORMSCORE::SimSample(i16 n1, i16 n2, bool isH1) {
    SimTwoSamples(n1, n2, isH1 ? SimLoc2 : SimLoc1, SimScale1, SimScale2);
}

// The scores of B. L. van der Waerden, Indagationes Mathematicae 14, 1952, 453-458.
f32 TESTNORMSCORE::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) {
        return f64{NorInv(Single(static_cast<f64>(rank) / static_cast<f64>(n + 1)))};
    });
    if (n1 == 0 || n2 == 0)
        return 1;
    const RankStatistic statistic = scores.Statistic(n1, n2);
    return NorPValue(statistic.Sum, statistic.Mean, statistic.Se, 0, 0, 0);
}

} // namespace quorvanta
