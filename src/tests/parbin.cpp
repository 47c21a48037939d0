#include "tests/parbin.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/root.h"
#include "montecarlo/simstudy.h"
#include "numeric/fastlog.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "tests/exactsums.h"
#include "tests/lists/precision.h"
#include "tests/lists/proportions.h"
#include "tests/lists/turningpoint.h"
#include "tests/precisioneq.h"
#include "tests/simprecision.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace quorvanta {

namespace {

constexpr SampleKinds OddsKinds{
    Kind::Odds, Group::Odds2, Kind::Odds1, {Kind::Odds2, Kind::Odds2Minus1, Kind::Odds2Over1}};

SampleValues parameters; // proportions or odds
SampleValues sizes;

bool IsOdds() {
    return ParListNo == 1;
}

const SampleKinds& Kinds() {
    return IsOdds() ? OddsKinds : ProportionKinds;
}

SampleWeights Weights() {
    return {1 / f64{sizes.First()}, sizes.HasSecond() ? 1 / f64{sizes.Second()} : 0};
}

// Standard error of the logarithm of the odds, or of the odds ratio (B. Woolf, On estimating the
// relation between blood group and disease, Annals of Human Genetics 19, 1955).
f32 LogOddsStandardError() {
    const auto variance = [](f64 odds, f64 weight) {
        return weight * (1 + odds) * (1 + odds) / odds;
    };
    const SampleWeights weights = Weights();
    const f64 first = variance(f64{parameters.First()}, weights.First);
    return Single(std::sqrt(
        sizes.HasSecond() ? first + variance(f64{parameters.Second()}, weights.Second) : first));
}

// That standard error is smallest in between: of two odds of the same precision the search finds
// the smaller.
void NarrowOdds(f64& lower, f64& upper) {
    if (!parameters.HasUnknown())
        return;
    const SampleWeights weights = Weights();
    // How fast the variance grows with the unknown; itself growing.
    const auto slope = [&weights](f64 x) {
        const auto of = [](f64 odds, f64 growth, f64 weight) {
            return growth * weight * (1 - 1 / (odds * odds));
        };
        const f64 first =
            of(parameters.FirstAt(x), parameters.FirstAt(1) - parameters.FirstAt(0), weights.First);
        if (!sizes.HasSecond())
            return first;
        return first + of(parameters.SecondAt(x), parameters.SecondAt(1) - parameters.SecondAt(0),
                          weights.Second);
    };
    if (slope(lower) >= 0 || slope(upper) <= 0)
        return;
    i16 iterations = 0;
    f64 rest = 0;
    f64 turn = upper;
    FindRootOf(slope, lower, upper, RootTolerance, RootIterations, iterations, turn, rest);
    KeepOneSide(lower, upper, turn, Side::Below, &PARBIN::RootFunction);
}

// The exact limits (C. J. Clopper and E. S. Pearson, Biometrika 26, 1934) are the proportions at
// which the tail from the observed count outward has the probability outside.
f64 UpperLimit(i16 n, i16 count, f64 outside) {
    if (count >= n)
        return 1;
    const auto excess = [=](f64 p) { return BinCdf(n, count, Single(p)) - outside; };
    constexpr f64 tolerance = 1e-7;
    i16 iterations = 0;
    f64 rest = 0;
    f64 limit = 1;
    FindRootOf(excess, 0, 1, tolerance, RootIterations, iterations, limit, rest);
    return limit;
}

f64 LowerLimit(i16 n, i16 count, f64 outside) {
    return 1 - UpperLimit(n, static_cast<i16>(n - count), outside);
}

// The exact interval of a sample in which the proportion is the one entered; between the two whole
// counts next to it on a straight line.
f64 ExactWidthEq() {
    const f64 outside = 1 - f64{PrecisionLevel()};
    const f64 p = parameters.First();
    return AtWholeSize(sizes.First(), [=](f64 wholeSize) {
        const i16 n = ToI16(wholeSize);
        return AtWholeSize(wholeSize * p, [=](f64 wholeCount) {
            const i16 count = ToI16(wholeCount);
            const f64 estimate = wholeCount / wholeSize;
            return WidthEq(estimate - LowerLimit(n, count, outside),
                           UpperLimit(n, count, outside) - estimate);
        });
    });
}

// --- Its simulation ------------------------------------------------------------------------------

// The exact limits by count, where they were formed already.
struct ExactLimits {
    f64 Lower = NoValue;
    f64 Upper = 0;
};
std::vector<ExactLimits> exactLimits;

bool IsExact(f32 n) {
    return Ticked(Check::Exact) && n <= MaxExactSize;
}

const ExactLimits& LimitsOf(i16 n, i16 count) {
    ExactLimits& limits = exactLimits[static_cast<std::size_t>(count)];
    if (limits.Lower == NoValue) {
        const f64 outside = 1 - f64{PrecisionLevel()};
        limits = {LowerLimit(n, count, outside), UpperLimit(n, count, outside)};
    }
    return limits;
}

// The proportion of a sample as it was entered.
f64 ProportionOf(f32 parameter) {
    return f64{IsOdds() ? OddsToProp(parameter) : parameter};
}

i16 DrawCount(i16 n, f64 p) {
    RandSample.ReDim(0, 1);
    RandBinomial(n, Single(p));
    return ToI16(f64{RandSample(1)});
}

// What a count says of the logarithm of the odds.
struct LogOdds {
    f64 Value = 0;
    f64 Variance = 0; // 0: a count of none or of all says nothing
};

LogOdds LogOddsOf(i16 n, i16 count) {
    if (count == 0 || count == n)
        return {};
    const f64 x = count;
    const f64 rest = n - count;
    return {FastLog(x / rest), 1 / x + 1 / rest};
}

// A table with an empty cell has no interval.
void JudgeOdds(i16 count1, i16 count2) {
    const LogOdds first = LogOddsOf(SimSize1(1), count1);
    const LogOdds second = sizes.HasSecond() ? LogOddsOf(SimSize2(1), count2) : first;
    if (first.Variance == 0 || second.Variance == 0)
        return JudgeNoData();
    const f64 truth1 = FastLog(f64{parameters.First()});
    if (!sizes.HasSecond())
        return JudgeLogNormal(first.Value - truth1, std::sqrt(first.Variance));
    const f64 truth2 = FastLog(f64{parameters.Second()});
    JudgeLogNormal(second.Value - first.Value - (truth2 - truth1),
                   std::sqrt(first.Variance + second.Variance));
}

void JudgeProportions(i16 count1, i16 count2) {
    const SampledProportion first{SimSize1(1), count1, f64{parameters.First()}, 1.0 / SimSize1(1)};
    if (IsExact(SimSize1(1))) {
        const ExactLimits& limits = LimitsOf(SimSize1(1), count1);
        const f64 estimate = first.Estimate();
        return JudgeInterval(first.Error(), estimate - limits.Lower, limits.Upper - estimate);
    }
    if (!sizes.HasSecond())
        return JudgeProportion(first);
    JudgeDifference(first, {SimSize2(1), count2, f64{parameters.Second()}, 1.0 / SimSize2(1)});
}

} // namespace

void JudgeProportion(const SampledProportion& sample) {
    JudgeNormal(sample.Error(), std::sqrt(sample.Variance()));
}

void JudgeDifference(const SampledProportion& first, const SampledProportion& second) {
    JudgeNormal(second.Error() - first.Error(), std::sqrt(first.Variance() + second.Variance()));
}

f32 ProportionStandardError(const SampleValues& proportions, const SampleWeights& weights) {
    const f64 p1{proportions.First()};
    const f64 first = p1 * (1 - p1) * weights.First;
    if (!proportions.HasSecond())
        return Single(std::sqrt(first));
    const f64 p2{proportions.Second()};
    return Single(std::sqrt(first + p2 * (1 - p2) * weights.Second));
}

void NarrowProportions(f64& lower, f64& upper, const SampleValues& proportions,
                       const SampleWeights& weights, f64 (*residual)()) {
    if (!proportions.HasUnknown())
        return;
    const f64 turn = TurningPoint([&](f64 x) {
        const f64 p1 = proportions.FirstAt(x);
        const f64 first = p1 * (1 - p1) * weights.First;
        if (!proportions.HasSecond())
            return first;
        const f64 p2 = proportions.SecondAt(x);
        return first + p2 * (1 - p2) * weights.Second;
    });
    KeepOneSide(lower, upper, turn, Side::Below, residual);
}

void PARBIN::SetupTest() {
    OfferSamples({OneSample, TwoSamples});
    OfferPrecision();
    if (IsInterval() && NoOfSamples == OneSample && !IsOdds())
        OfferChecks({Check::Exact});
    OfferForms(Kinds());
    OfferForms(SizeKinds);
}

void PARBIN::SetParList() {
    StartPrecisionList(IsOdds() ? Precision::Relative : Precision::Absolute);
    parameters = AddSampleValues(Kinds());
    sizes = AddSizes();
}

bool PARBIN::CheckPar() {
    return parameters.Check() && sizes.Check();
}

void PARBIN::SearchLimits(f64& lower, f64& upper) {
    parameters.Narrow(lower, upper);
    sizes.Narrow(lower, upper);
    if (IsOdds())
        NarrowOdds(lower, upper);
    else
        NarrowProportions(lower, upper, parameters, Weights(), &RootFunction);
}

f64 PARBIN::RootFunction() {
    if (IsOdds())
        return LogPrecisionEq(LogOddsStandardError());
    if (IsExact(sizes.First()))
        return ExactWidthEq();
    return NormalPrecisionEq(ProportionStandardError(parameters, Weights()));
}

void PARBIN::GetSimPar() {
    exactLimits.assign(static_cast<std::size_t>(SimSize1(1)) + 1, {});
}

void PARBIN::SimInterval() {
    const i16 n1 = SimSize1(1);
    const i16 n2 = SimSize2(1);
    if (n1 < 1 || (sizes.HasSecond() && n2 < 1))
        return JudgeNoData();
    const i16 count1 = DrawCount(n1, ProportionOf(parameters.First()));
    const i16 count2 =
        sizes.HasSecond() ? DrawCount(n2, ProportionOf(parameters.Second())) : i16{0};
    if (IsOdds())
        JudgeOdds(count1, count2);
    else
        JudgeProportions(count1, count2);
}

} // namespace quorvanta
