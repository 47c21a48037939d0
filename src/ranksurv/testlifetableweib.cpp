#include "ranksurv/testlifetableweib.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
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

SurvivalModel Model() {
    constexpr i16 weibullTestNo = 27;
    constexpr i16 gammaTestNo = 28;
    if (TestNo == weibullTestNo)
        return WeibullSurvival;
    return TestNo == gammaTestNo ? GammaSurvival : LognormalSurvival;
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
    study.Add(true);
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

} // namespace quorvanta
