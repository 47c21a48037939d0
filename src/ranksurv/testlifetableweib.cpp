#include "ranksurv/testlifetableweib.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/survivalsim.h"
#include "numeric/rounding.h"
#include "ranksurv/hazards.h"
#include "ranksurv/lifetable.h"
#include "ranksurv/survivalmodel.h"
#include "tests/lists/hypotheses.h"

namespace quorvanta {

namespace {

constexpr SampleKinds MedianKinds{
    NoKind, Group::Median2, Kind::H1Median1, {Kind::H1Median2, NoKind, Kind::H1Median2Over1}};

SampleValues medians;
i16 shape;
SampleValues losses;
LifeTableStudy study;

// Each family of tests has its models in this order; in front of them, but for log-rank tests that
// are simulated, stands exponential survival.
SurvivalModel Model() {
    constexpr SurvivalModel models[] = {WeibullSurvival, GammaSurvival, LognormalSurvival};
    for (const int first : {27, 32, 86, 91, 96, 101})
        if (TestNo >= first && TestNo < first + 3)
            return models[TestNo - first];
    return LognormalSurvival;
}

} // namespace

void TESTLIFETABLEWEIB::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(MedianKinds);
    OfferForms(LossKinds(SurvivalInput::Median));
    OfferForms(SizeKinds);
}

void TESTLIFETABLEWEIB::SetParList() {
    StartTestList();
    medians = AddPair(MedianKinds);
    shape = AddPar(Model() == LognormalSurvival ? Kind::Shape : Kind::GammaShape);
    losses = AddPair(LossKinds(SurvivalInput::Median));
    study.Add(IsLifeTableTest());
}

bool TESTLIFETABLEWEIB::CheckPar() {
    if (Model() != LognormalSurvival && UnknownParNo != shape &&
        !CheckRange(shape, LeastSurvivalShape, ParMax(Kind::GammaShape)))
        return false;
    return medians.Check() && losses.Check() && study.Check();
}

void TESTLIFETABLEWEIB::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == shape && Model() != LognormalSurvival)
        lower = MaxOf(lower, LeastSurvivalShape);
    NarrowEffect(medians, lower, upper);
    losses.Narrow(lower, upper);
    study.Narrow(lower, upper);
    KeepNearNoEffect(medians, study, lower, upper, &RootFunction);
}

f64 TESTLIFETABLEWEIB::RootFunction() {
    const std::vector<f64> bounds = study.Bounds();
    study.Prepare(bounds, [&bounds](i16 group) {
        const f64 median{group == 1 ? medians.First() : medians.Second()};
        const f64 lossHazard{group == 1 ? losses.First() : losses.Second()};
        const f64 form{Single(ParValue(shape))};
        const auto survival = [median, form](f64 t) {
            return SurvivalAtModel(Model(), t, median, form);
        };
        return IntervalProbs(bounds, survival, lossHazard);
    });
    return study.PowerEq(true);
}

// H0 is that group 2 has the median of group 1.
void TESTLIFETABLEWEIB::GetSimPar() {
    SurvivalPlan plan = PlanOfTest();
    const f64 form{Single(ParValue(shape))};
    plan.DistrNo = Model();
    plan.Shape = Single(Model() == LognormalSurvival ? 1 / form : form);
    plan.Direction = -1;
    const f64 standard = StandardMedian(Model(), form);
    const auto scale = [standard](f32 median) { return Single(f64{median} / standard); };
    SurvivalStratum& groups = plan.Strata.front();
    groups.NullScale1 = groups.NullScale2 = groups.Scale1 = scale(medians.First());
    groups.Scale2 = scale(medians.Second());
    groups.Loss1 = losses.First();
    groups.Loss2 = losses.Second();
    study.PrepareSimulation(plan);
    SimSurvival = plan;
}

void TESTLIFETABLEWEIB::SimSample(i16 n1, i16 n2, bool isH1) {
    SimSurvivalSample(n1, n2, isH1);
}

f32 TESTLIFETABLEWEIB::SimTest(i16 n1, i16 n2) {
    return SimSurvivalTest(n1, n2);
}

} // namespace quorvanta
