#include "tests/testfisher.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "montecarlo/simstudy.h"
#include "numeric/probdist_discrete.h"
#include "tests/exactsums.h"
#include "tests/powereq.h"
#include "tests/proportions.h"
#include "tests/simproportions.h"

#include <vector>

namespace quorvanta {

i16 FisherOdds;
i16 FisherH1Mode;

namespace {

ProportionList list;
SampleValues sizes;

std::vector<f32> Densities(i16 n, f32 p) {
    std::vector<f32> densities;
    for (i16 x = 0; x <= n; ++x)
        densities.push_back(BinDensity(n, x, p));
    return densities;
}

// All tables with n1 and n2 subjects.
class Tables {
  public:
    Tables(i16 n1, i16 n2, f32 p1, f32 p2)
        : n1_(n1), n2_(n2), density1_(Densities(n1, p1)), density2_(Densities(n2, p2)) {}

    // Probability of the tables whose conditional tail does not exceed the level: the tail of few
    // events in group 1 (step 1), which speaks for a larger proportion 2, or of many (step -1).
    f32 Tail(f32 level, i16 step) const {
        f32 power = 0;
        for (i16 t = 0; t <= n1_ + n2_; ++t) {
            const i16 low = MaxInteger(0, static_cast<i16>(t - n2_));
            const i16 high = MinInteger(n1_, t);
            f32 tail = 0;
            for (i16 x1 = step > 0 ? low : high; x1 >= low && x1 <= high;
                 x1 = static_cast<i16>(x1 + step)) {
                tail = Single(f64{tail} + FisherCond(n1_, n2_, x1, t));
                if (tail > level)
                    break;
                power = Single(f64{power} + Probability(x1, static_cast<i16>(t - x1)));
            }
        }
        return power;
    }

  private:
    f32 Probability(i16 x1, i16 x2) const {
        return Single(f64{density1_[static_cast<std::size_t>(x1)]} *
                      density2_[static_cast<std::size_t>(x2)]);
    }

    i16 n1_;
    i16 n2_;
    std::vector<f32> density1_;
    std::vector<f32> density2_;
};

// The power of the exact test (B. M. Bennett and P. Hsu, Biometrika 47, 1960, 393-398).
f64 ExactEq(const ProportionValues& values, i16 n1, i16 n2) {
    const Tables tables(n1, n2, values.P1, values.P2);
    const f64 alpha = SignificanceLevel();
    f64 power = 0;
    if (NoOfTails == TwoSided) {
        const f32 level = Single(alpha / 2);
        power = Single(f64{tables.Tail(level, 1)} + tables.Tail(level, -1));
    } else {
        power = tables.Tail(Single(alpha), LeftTail == True ? i16{-1} : i16{1});
    }
    return power - ParValue(1);
}

// --- Its simulation ------------------------------------------------------------------------------

ProportionValues simulated;
SimProportions drawn;
const int TablesOfAnalysis = (TESTFISHER::ExactUpTo() + 1) * (TESTFISHER::ExactUpTo() + 1);
PValueTable exactPValues; // by analysis and successes in the two groups

// Few successes in group 1, given those in both, speak for a larger proportion 2. The terms are
// added from the end of the tail, as the equation adds them.
f32 FisherPValue(i16 n1, i16 x1, i16 n2, i16 x2) {
    const i16 t = static_cast<i16>(x1 + x2);
    if (t == 0 || t == n1 + n2)
        return 1;
    const auto tail = [=](i16 x, i16 step) {
        f32 sum = FisherCond(n1, n2, x, t);
        for (; x != x1; sum = Single(f64{sum} + FisherCond(n1, n2, x, t)))
            x = static_cast<i16>(x + step);
        return sum;
    };
    return PValueOfTails(tail(MaxInteger(0, static_cast<i16>(t - n2)), 1),
                         tail(MinInteger(n1, t), -1));
}

} // namespace

void TESTFISHER::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::Odds});
    OfferProportions(Ticked(Check::Odds));
    OfferForms(SizeKinds);
}

void TESTFISHER::SetParList() {
    FisherOdds = Ticked(Check::Odds) ? 1 : 0;
    StartTestList();
    list = AddProportions(FisherOdds == 1, NullDifference::Zero);
    FisherH1Mode = list.Hypothesis.TruthForm();
    sizes = AddSizes();
}

bool TESTFISHER::CheckPar() {
    return list.Check() && sizes.Check();
}

void TESTFISHER::SearchLimits(f64& lower, f64& upper) {
    list.Narrow(lower, upper, RootFunction);
    sizes.Narrow(lower, upper);
    if (sizes.HasUnknown())
        StartFromTooSmall(lower, upper, RootFunction);
}

f64 TESTFISHER::RootFunction() {
    const ProportionValues values = ReadProportions(list);
    const f32 n1 = sizes.First();
    const f32 n2 = sizes.Second();
    if (Int(n1) > ExactUpTo() || Int(n2) > ExactUpTo())
        return ArcSineEq(values, n1, n2);
    return AtWholeSizes(n1, n2, [&values](f64 whole1, f64 whole2) {
        if (whole1 > ExactUpTo() || whole2 > ExactUpTo())
            return ArcSineEq(values, Single(whole1), Single(whole2));
        return ExactEq(values, ToI16(whole1), ToI16(whole2));
    });
}

void TESTFISHER::GetSimPar() {
    simulated = ReadProportions(list);
    drawn = TwoProportionsToSimulate(simulated);
    exactPValues.Prepare(static_cast<std::size_t>((SimSize1.HighBound() + 1) * TablesOfAnalysis));
}

void TESTFISHER::SimSample(i16 n1, i16 n2, bool isH1) {
    AddSuccesses(n1, n2, drawn.At(isH1));
}

f32 TESTFISHER::SimTest(i16 n1, i16 n2) {
    if (n1 < 1 || n2 < 1)
        return 1;
    const TwoCounts counts = CountsOfStudy(n1, n2);
    if (n1 > ExactUpTo() || n2 > ExactUpTo())
        return ArcSinePValue(simulated, counts);
    const i16 x1 = static_cast<i16>(counts.X1);
    const i16 x2 = static_cast<i16>(counts.X2);
    const int number = SimStage * TablesOfAnalysis + x1 * (ExactUpTo() + 1) + x2;
    return exactPValues.At(static_cast<std::size_t>(number),
                           [=] { return FisherPValue(n1, x1, n2, x2); });
}

f32 FisherCond(i16 n1, i16 n2, i16 x1, i16 t) {
    return Single(Choose(n1, x1) * Choose(n2, static_cast<i16>(t - x1)) /
                  Choose(static_cast<i16>(n1 + n2), t));
}

} // namespace quorvanta
