#include "ranksurv/testrankscale.h"

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/rankscores.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "ranksurv/scalekinds.h"
#include "tests/powereq.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

constexpr i16 TestConover = 49;

Hypotheses hypotheses;
SampleValues sizes;

// Squared ranks are for observations above 0.
DistrList FamilyList() {
    return TestNo == TestConover ? DistrList::ScaleShape : DistrList::ShiftModels;
}

// A larger second scale is a positive distance from the mean; that of low scores at both ends is
// turned over.
enum class AtTheEnds { HighScores, LowScores };

f32 PValue(const RankStatistic& statistic, AtTheEnds ends) {
    const f64 distance = f64{statistic.Sum} - f64{statistic.Mean};
    return NorPValue(Single(ends == AtTheEnds::HighScores ? distance : -distance), 0, statistic.Se,
                     0, 0, 0);
}

bool HasEmptyGroup(i16 n1, i16 n2) {
    return n1 == 0 || n2 == 0;
}

f64 Whole(i32 n) {
    return static_cast<f64>(n);
}

} // namespace

void RankScaleTest::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(ScaleKinds);
    OfferForms(SizeKinds);
}

void RankScaleTest::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(ScaleKinds, EffectScale::Log);
    sizes = AddSizes();
}

bool RankScaleTest::CheckPar() {
    return hypotheses.Check() && sizes.Check();
}

bool RankScaleTest::IsTablePar(i16 parNo) {
    return parNo == hypotheses.TruthParNo();
}

std::optional<DistrList> RankScaleTest::TableDistr(i16 /*parNo*/) {
    return FamilyList();
}

// What is chosen is kept with the scale of the analysis, for what is told of it.
f32 RankScaleTest::CalcTablePar(i16 parNo) {
    GroupDistr();
    return Single(ParValue(parNo));
}

std::vector<NamedDistr> RankScaleTest::GroupDistr() {
    GetSimPar();
    if (!(SimScale2 > 0)) // nothing is entered yet
        return {};
    SelectDistr(SimulatedDistr(SimLoc2, SimScale2));
    StoreDistrRow(1);
    SetNullFromScale();
    return {{"H0", hypotheses.HasTwo() ? SimulatedDistr(SimLoc1, SimScale1) : Distr(1)},
            {"H1", Distr(2)}};
}

void RankScaleTest::GetSimPar() {
    SimulateFamily(FamilyList());
    SimLoc1 = SimLoc2 = 0;
    SimScale1 = hypotheses.HasTwo() ? hypotheses.First() : 1.0F;
    SimScale2 = hypotheses.HasTwo() ? hypotheses.Second() : Single(hypotheses.Truth());
}

void RankScaleTest::SimSample(i16 n1, i16 n2, bool isH1) {
    SimTwoSamples(n1, n2, 0, SimScale1, isH1 ? SimScale2 : SimScale1);
}

// Low scores for the extreme observations, from both ends inward (S. Siegel and J. W. Tukey,
// Journal of the American Statistical Association 55, 1960, 429-445). They are the numbers 1..N,
// with the moments of the rank sum; of an odd N the middle observation has N + 1 in the place of N,
// and the moments stay.
f32 TESTSIEGEL::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) {
        return Whole(rank) <= Whole(n) / 2 ? Whole(2 * rank - 1) : Whole(2 * (n - rank) + 2);
    });
    if (HasEmptyGroup(n1, n2))
        return 1;
    RankStatistic statistic = RankSumMoments(n1, n2);
    statistic.Sum = scores.Statistic(n1, n2).Sum;
    return PValue(statistic, AtTheEnds::LowScores);
}

RankStatistic AnsariMoments(i16 n1, i16 n2) {
    const f64 a{static_cast<f32>(n1)};
    const f64 b{static_cast<f32>(n2)};
    const f64 n = a + b;
    const bool isEven = std::floor(n / 2) == n / 2;
    const f64 mean = isEven ? b * (n + 2) / 4 : b * (n + 1) * (n + 1) / (4 * n);
    const f64 variance = isEven ? a * b * (n + 2) * (n - 2) / (48 * (n - 1))
                                : a * b * (n + 1) * (3 + n * n) / (48 * n * n);
    return {.Sum = 0, .Mean = Single(mean), .Se = Single(std::sqrt(variance))};
}

// A. R. Ansari and R. A. Bradley, Annals of Mathematical Statistics 31, 1960, 1174-1189.
f32 TESTANSARI::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) { return Whole(std::min(rank, n + 1 - rank)); });
    if (HasEmptyGroup(n1, n2))
        return 1;
    RankStatistic statistic = AnsariMoments(n1, n2);
    statistic.Sum = scores.Statistic(n1, n2).Sum;
    return PValue(statistic, AtTheEnds::LowScores);
}

// J. Klotz, Annals of Mathematical Statistics 33, 1962, 498-512.
f32 TESTKLOTZ::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) {
        const f64 z{NorInv(Single(Whole(rank) / Whole(n + 1)))};
        return z * z;
    });
    return HasEmptyGroup(n1, n2) ? 1.0F : PValue(scores.Statistic(n1, n2), AtTheEnds::HighScores);
}

// A. M. Mood, Annals of Mathematical Statistics 25, 1954, 514-522.
f32 TESTMOOD::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32 n) {
        const f64 distance = Whole(rank) - Whole(n + 1) / 2;
        return distance * distance;
    });
    return HasEmptyGroup(n1, n2) ? 1.0F : PValue(scores.Statistic(n1, n2), AtTheEnds::HighScores);
}

// W. J. Conover and R. L. Iman, Communications in Statistics B 7, 1978, 491-513.
f32 TESTCONOVER::SimTest(i16 n1, i16 n2) {
    static RankScores scores([](i32 rank, i32) { return Whole(rank) * Whole(rank); });
    return HasEmptyGroup(n1, n2) ? 1.0F : PValue(scores.Statistic(n1, n2), AtTheEnds::HighScores);
}

} // namespace quorvanta
