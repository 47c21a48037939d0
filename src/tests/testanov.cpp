#include "tests/testanov.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/samplemoments.h"
#include "montecarlo/simstudy.h"
#include "numeric/rounding.h"
#include "output/counted_sizes.h"
#include "tests/lists/samples.h"
#include "tests/studenttest.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace quorvanta {

namespace {

constexpr i16 TestAncova = 130;

i16 covariate; // position of its correlation with the outcome; 0: no covariate
i16 groups;
i16 perGroup; // position of the size of all groups of a contrast
SampleValues sizes;

bool HasCovariate() {
    return covariate != 0;
}

// The size of the others beside the first group's follows from its entry alone, or from both.
bool OthersWeightIsKnown() {
    const auto hasValue = [](i16 parNo) {
        return HasGridValue(parNo, ParMin(ParKind(parNo)), ParMax(ParKind(parNo)));
    };
    const i16 first = static_cast<i16>(groups + 1);
    const i16 others = static_cast<i16>(first + 1);
    return hasValue(others) && (sizes.SecondForm() == AsRatio || hasValue(first));
}

f64 OthersWeight() {
    return sizes.SecondForm() == AsRatio ? ParValue(groups + 2)
                                         : f64{sizes.Second()} / f64{sizes.First()};
}

AnovaDesign Design(bool isContrast) {
    const f32 k = Single(ParValue(groups));
    const f32 n1 = isContrast ? Single(ParValue(perGroup)) : sizes.First();
    AnovaDesign design = OneWayDesign(k, n1, isContrast ? n1 : sizes.Second());
    if (HasCovariate())
        design.Df2 = Single(f64{design.Df2} - 1); // its regression coefficient
    return design;
}

// --- Its simulation ------------------------------------------------------------------------------

// What the groups are drawn with, by group.
std::vector<f64> means; // under H1
std::vector<f64> deviations;
std::vector<f64> coefficients; // none: no contrast
f64 shiftH0 = 0;               // what H0 adds to each mean for each unit of its coefficient

std::vector<PairMoments> samples; // covariate and outcome so far

i16 SimulatedGroups() {
    return ToI16(CountedSize(ParValue(groups)));
}

bool IsAsShown(f64 value, f32 entered) {
    constexpr f64 asShown = 1e-6;
    return std::fabs(value - f64{entered}) <= asShown * MaxOf(1, std::fabs(value));
}

f64 SumOfSquares(const std::vector<f64>& figures) {
    return std::inner_product(figures.begin(), figures.end(), figures.begin(), 0.0);
}

void DrawWith(LevelFigures&& figures) {
    means = std::move(figures.Means);
    const f64 average =
        std::accumulate(means.begin(), means.end(), 0.0) / static_cast<f64>(means.size());
    for (f64& mean : means)
        mean -= average;
    coefficients = std::move(figures.Coefficients);
    deviations = std::move(figures.Deviations);
}

void PrepareMeans(const AnovaEffect& effect, i16 k) {
    const f64 n1 = SimSize1(SimSize1.HighBound());
    const f64 nk = SimSize2(SimSize2.HighBound());
    auto filled = FiguresOfMeans(k);
    const TestedMeans tested{.Levels = groups, .Head = {}, .OthersWeight = nk / n1};
    if (filled && IsAsShown(EffectFromGrids(tested, effect.Type()), effect.Value()))
        DrawWith(std::move(*filled));
    else
        DrawWith({OneWayMeans(k, n1, nk, effect.Type(), f64{effect.Value()}), {}, {}});
    deviations.assign(means.size(), f64{effect.Sd()});
}

void PrepareContrast(const AnovaEffect& effect, i16 k) {
    const TestedMeans tested{.Levels = groups, .Head = {}};
    auto filled = FiguresOfContrast(k);
    if (filled && IsAsShown(ContrastFromGrids(tested), effect.Value()) &&
        IsAsShown(ContrastSdFromGrids(tested), effect.Sd())) {
        DrawWith(std::move(*filled));
    } else {
        coefficients.assign(static_cast<std::size_t>(k), 0.0);
        coefficients[0] = 1;
        coefficients[1] = -1;
        means.assign(coefficients.size(), 0.0);
        means[0] = f64{effect.Value()} / 2;
        means[1] = -means[0];
        deviations.assign(coefficients.size(), f64{effect.Sd()} / std::sqrt(2.0));
    }
    shiftH0 = (effect.Hypothesis().NullTruth() - f64{effect.Value()}) / SumOfSquares(coefficients);
}

f64 MeanOfGroup(std::size_t group, bool isH1) {
    if (isH1)
        return means[group];
    return coefficients.empty() ? 0 : means[group] + shiftH0 * coefficients[group];
}

// n new subjects of a group; the covariate is standard normal in all groups.
PairMoments DrawGroup(std::size_t group, i16 n, bool isH1) {
    PairMoments drawn;
    if (HasCovariate()) {
        drawn = DrawPairMoments(n, Single(ParValue(covariate)));
    } else {
        drawn.Second = DrawNormalMoments(n);
        drawn.First.Size = drawn.Second.Size;
    }
    drawn.Second = drawn.Second.Scaled(deviations[group], MeanOfGroup(group, isH1));
    drawn.Products *= deviations[group];
    return drawn;
}

// All groups as they are, and each from its own mean.
struct Pooled {
    PairMoments All;
    PairMoments Within;
};

Pooled PoolGroups() {
    Pooled pooled;
    for (const PairMoments& sample : samples) {
        pooled.All.Add(sample);
        pooled.Within.First.Squares += sample.First.Squares;
        pooled.Within.Second.Squares += sample.Second.Squares;
        pooled.Within.Products += sample.Products;
    }
    return pooled;
}

// The contrast of the adjusted means, on the error of all groups.
f32 ContrastPValue(const Hypotheses& hypotheses, const PairMoments& within, f64 df) {
    const f64 slope = within.Slope();
    f64 contrast = 0;
    f64 imbalance = 0; // of the covariate
    f64 perVariance = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const f64 c = coefficients[i];
        contrast += c * (samples[i].Second.Mean - slope * samples[i].First.Mean);
        imbalance += c * samples[i].First.Mean;
        perVariance += c * c / samples[i].Second.Size;
    }
    if (within.First.Squares > 0)
        perVariance += imbalance * imbalance / within.First.Squares;
    const f64 error = df >= 1 ? within.Residual() / df : 0;
    return StudentPValue(hypotheses, contrast, std::sqrt(error * perVariance), df);
}

} // namespace

void TESTANOV::SetupTest() {
    if (TestNo == TestAncova)
        AnovaEffect::Offer({Check::Contrast}, {});
    else
        AnovaEffect::Offer({Check::Contrast}, {}, {OneSided, TwoSided, TwoOneSided});
    if (!Ticked(Check::Contrast))
        OfferGroups({Group::SizeK});
}

void TESTANOV::SetParList() {
    StartAnovaList();
    covariate = TestNo == TestAncova ? AddPar(Kind::CovariateCorrelation) : i16{0};
    groups = AddPar(Kind::NoOfGroups);
    WorkNo = ChosenOption(Group::SizeK);
    if (Effect().IsContrast())
        perGroup = AddPar(Kind::SizePerGroup);
    else
        sizes = AddPair(GroupSizeKinds);
}

bool TESTANOV::CheckPar() {
    return Effect().Check() && (Effect().IsContrast() || sizes.Check());
}

// The power is the same for a correlation and its negative: the search takes the positive one.
void TESTANOV::SearchLimits(f64& lower, f64& upper) {
    AnovaTest::SearchLimits(lower, upper);
    if (!Effect().IsContrast())
        sizes.Narrow(lower, upper);
    if (HasCovariate() && UnknownParNo == covariate)
        lower = MaxOf(lower, 0);
}

// A covariate takes its share off the variance of the error: W. G. Cochran, Biometrics 13, 1957,
// 261-281.
f64 TESTANOV::RootFunction() {
    const AnovaDesign design = Design(Effect().IsContrast());
    if (!HasCovariate())
        return Effect().PowerEq(design);
    const f64 rho{Single(ParValue(covariate))};
    return Effect().PowerEq(design, Single(f64{Effect().Sd()} * std::sqrt(1 - rho * rho)));
}

// The standard deviation of the means weights each with the size of its group.
std::vector<Grid> TESTANOV::TableGrids(i16 parNo) {
    return IsWeighted() && !OthersWeightIsKnown() ? std::vector<Grid>{}
                                                  : AnovaTest::TableGrids(parNo);
}

TestedMeans TESTANOV::Tested() {
    return {.Levels = groups, .Head = "Group", .OthersWeight = IsWeighted() ? OthersWeight() : 1};
}

bool TESTANOV::IsWeighted() {
    return !Effect().IsContrast() && Effect().Type() == AnovaEffectType::SdOfMeans;
}

void TESTANOV::GetSimPar() {
    const i16 k = SimulatedGroups();
    shiftH0 = 0;
    if (Effect().IsContrast())
        PrepareContrast(Effect(), k);
    else
        PrepareMeans(Effect(), k);
    samples.assign(means.size(), {});
}

void TESTANOV::SimSample(i16 n1, i16 n2, bool isH1) {
    if (SimStage == 1)
        std::ranges::fill(samples, PairMoments());
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i].Add(DrawGroup(i, i == 0 || Effect().IsContrast() ? n1 : n2, isH1));
}

// H. Scheffe, The Analysis of Variance, 1959, chapters 3 and 6.
f32 TESTANOV::SimTest(i16 n1, i16 n2) {
    const bool isContrast = Effect().IsContrast();
    if (n1 == 0 || (n2 == 0 && !isContrast))
        return 1;
    const Pooled pooled = PoolGroups();
    const f64 k = static_cast<f64>(samples.size());
    const f64 df = pooled.All.Second.Size - k - (HasCovariate() ? 1 : 0);
    if (isContrast)
        return ContrastPValue(Effect().Hypothesis(), pooled.Within, df);
    const f64 within = pooled.Within.Residual();
    return FTestPValue(MaxOf(0, pooled.All.Residual() - within), within, k - 1, df);
}

} // namespace quorvanta
