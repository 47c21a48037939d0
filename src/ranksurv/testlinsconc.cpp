#include "ranksurv/testlinsconc.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/rounding.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr OneSampleKinds ConcordanceKinds{
    Group::H1Concordance,
    Kind::H0Concordance,
    {Kind::H1Concordance, Kind::H1ConcordanceMinusH0, Kind::H1ConcordanceOverH0},
    NoKind,
    NoKind};
// Both hypotheses have shifts of their own.
constexpr SampleKinds LocationKinds{
    NoKind,
    Group::LocationShift,
    Kind::H0LocationShift,
    {Kind::H1LocationShift, Kind::H1LocationShiftMinusH0, Kind::H1LocationShiftOverH0}};
constexpr SampleKinds ScaleKinds{
    NoKind,
    Group::ScaleShift,
    Kind::H0ScaleShift,
    {Kind::H1ScaleShift, Kind::H1ScaleShiftMinusH0, Kind::H1ScaleShiftOverH0}};

// The variance has n - 2 in its denominator.
constexpr f64 LeastSubjects = 3;

Hypotheses hypotheses;
SampleValues locations;
SampleValues scales;
i16 concordance; // under H0; that under H1 is next
i16 subjects;

// What one hypothesis says.
struct Agreement {
    f64 Concordance;
    f64 Location;
    f64 Scale;
};

Agreement UnderH0() {
    return {f64{hypotheses.H0()}, f64{locations.First()}, f64{scales.First()}};
}

Agreement UnderH1() {
    return {hypotheses.Truth(), f64{locations.Second()}, f64{scales.Second()}};
}

// The accuracy that is left for the concordance to be found: a shift that is sought may be none.
f64 LargestAccuracy(f64 location, bool locationIsSought, f64 scale, bool scaleIsSought) {
    return LinAccuracy(locationIsSought ? 0 : location, scaleIsSought ? 1 : scale);
}

f64 LargestAccuracy0() {
    return LargestAccuracy(f64{locations.First()}, locations.FirstIsUnknown(), f64{scales.First()},
                           scales.FirstIsUnknown());
}

f64 LargestAccuracy1() {
    return LargestAccuracy(f64{locations.Second()}, locations.SecondDependsOnUnknown(),
                           f64{scales.Second()}, scales.SecondDependsOnUnknown());
}

// Below 1/v + v + u^2 = 2/r the concordance r is possible; this is the rest for a location shift,
// or for the scale, without end for no concordance.
f64 Room(f64 concordance) {
    constexpr f64 endless = 1e300;
    return concordance > 0 ? 2 / concordance : endless;
}

Range LocationRange(const Agreement& hypothesis) {
    const f64 square = Room(hypothesis.Concordance) - hypothesis.Scale - 1 / hypothesis.Scale;
    return {0, std::sqrt(MaxOf(0, square))};
}

// v and 1/v are solutions both.
Range ScaleRange(const Agreement& hypothesis) {
    const f64 location = hypothesis.Location;
    const f64 half = MaxOf(1, (Room(hypothesis.Concordance) - location * location) / 2);
    const f64 largest = half + std::sqrt((half - 1) * (half + 1));
    return {1 / largest, largest};
}

Range Common(Range a, Range b) {
    return {MaxOf(a.Min, b.Min), MinOf(a.Max, b.Max)};
}

// Narrows the search for a shift under either hypothesis.
void NarrowShift(const SampleValues& shift, f64& lower, f64& upper,
                 Range (*possible)(const Agreement&)) {
    if (!shift.HasUnknown())
        return;
    shift.Narrow(lower, upper, Common(shift.FirstRange(), possible(UnderH0())),
                 Common(shift.SecondRange(), possible(UnderH1())));
    KeepOneBranch(lower, upper, Side::Above, &TESTLINSCONC::RootFunction);
}

// No concordance is larger than its accuracy. A value of the 32 bits that the equation sees counts.
bool CheckConcordances() {
    const i16 kind = Kind::H1Concordance;
    const auto largest = [](f64 accuracy) { return MinOf(ParMax(kind), accuracy); };
    if (UnknownParNo != concordance &&
        !CheckRange(concordance, ParMin(kind), largest(LargestAccuracy0())))
        return false;
    return hypotheses.Check({ParMin(kind), largest(LargestAccuracy1())});
}

f32 StandardError(const Agreement& hypothesis, f64 n) {
    const f64 accuracy = LinAccuracy(hypothesis.Location, hypothesis.Scale);
    // A search may touch the end of what is possible, where rounding decides.
    const f64 rho = MinOf(1, hypothesis.Concordance / accuracy);
    return ErrorOfVariance(LinVar(n, rho, accuracy, hypothesis.Location));
}

} // namespace

void TESTLINSCONC::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferForms(ConcordanceKinds);
    OfferGroups({LocationKinds.Group});
    OfferGroups({ScaleKinds.Group});
}

void TESTLINSCONC::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(ConcordanceKinds, EffectScale::Plain);
    concordance = static_cast<i16>(hypotheses.TruthParNo() - 1);
    locations = AddPair(LocationKinds);
    scales = AddPair(ScaleKinds);
    subjects = AddPar(Kind::NoOfSubjects);
}

bool TESTLINSCONC::CheckPar() {
    if (!locations.Check() || !scales.Check() || !CheckConcordances())
        return false;
    return UnknownParNo == subjects ||
           CheckRange(subjects, LeastSubjects, ParMax(Kind::NoOfSubjects));
}

void TESTLINSCONC::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == subjects)
        lower = LeastSubjects;
    NarrowShift(locations, lower, upper, &LocationRange);
    NarrowShift(scales, lower, upper, &ScaleRange);
    if (UnknownParNo == concordance)
        upper = MinOf(upper, LargestAccuracy0());
    const f64 largest = MinOf(ParMax(Kind::H1Concordance), LargestAccuracy1());
    hypotheses.Narrow(lower, upper, nullptr, {ParMin(Kind::H1Concordance), largest});
    if (hypotheses.BaseIsUnknown() && hypotheses.TruthForm() != AsValue)
        KeepOneBranch(lower, upper, SideOfTail(), &RootFunction);
    else if (hypotheses.TruthIsUnknown())
        KeepOneSideOfTurn(lower, upper, Opposite(SideOfTail()), &RootFunction);
    else if (UnknownParNo == concordance)
        KeepOneSideOfTurn(lower, upper, SideOfTail(), &RootFunction);
}

// L. I. Lin, Biometrics 45, 1989, 255-268; the power: L. I. Lin, Biometrics 48, 1992, 599-604.
f64 TESTLINSCONC::RootFunction() {
    const f64 n{Single(ParValue(subjects))};
    const Agreement h0 = UnderH0();
    const Agreement h1 = UnderH1();
    const f32 delta = Single(FisherZ(h1.Concordance) - FisherZ(h0.Concordance));
    return NormalPowerEq(
        {.Effect = delta, .Se0 = StandardError(h0, n), .Se1 = StandardError(h1, n)});
}

f64 LinAccuracy(f64 u, f64 v) {
    return 2 / (v + 1 / v + u * u);
}

// L. I. Lin, Biometrics 45, 1989, 255-268, with the corrections of Biometrics 56, 2000, 324-325;
// multiplied out by r = rho c, so that no concordance divides nothing by 0.
f64 LinVar(f64 n, f64 rho, f64 c, f64 u) {
    const f64 r = rho * c;
    const f64 rest = 1 - r * r;
    const f64 u2 = u * u;
    const f64 spread = (1 - rho * rho) * c * c / rest;
    const f64 shift = 2 * r * r * (1 - r) * c * u2 / (rest * rest);
    const f64 square = r * r * c * c * u2 * u2 / (2 * rest * rest);
    return MaxOf(0, (spread + shift - square) / (n - 2));
}

} // namespace quorvanta
