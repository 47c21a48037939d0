#include "ranksurv/testcohengeneral.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/values.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"
#include "numeric/simplex.h"
#include "ranksurv/kappas.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>
#include <numeric>

namespace quorvanta {

namespace {

constexpr i16 MarginStore = 1;
constexpr i16 Raters = 2;
constexpr i16 NullKappa = 2; // the position; that under H1 is next

Hypotheses hypotheses;
i16 nullVariance; // per subject; that under H1 is next
i16 categories;
i16 subjects;

// Any kappa between total disagreement and agreement: what margins allow is known with their grid
// alone.
constexpr Range AnyKappa{-1, 1};

// Proportions that add up to 1 in a few decimals only are made to do so.
std::vector<f64> MarginsOf(i16 rater) {
    const Array2<f32>& store = GridData(MarginStore);
    std::vector<f64> margins;
    for (i16 i = 1; i <= store.HighBound2(); ++i)
        margins.push_back(f64{store(rater, i)});
    const f64 sum = std::accumulate(margins.begin(), margins.end(), 0.0);
    for (f64& margin : margins)
        margin /= sum;
    return margins;
}

f32 StandardError(i16 variance) {
    return ErrorOfVariance(f64{Single(ParValue(variance))} / f64{Single(ParValue(subjects))});
}

f64 Effect() {
    return hypotheses.Truth() - f64{hypotheses.H0()};
}

// The variance under H1 with the least power of a two-sided test: more of it makes less of the tail
// that an effect beyond the critical value fills, but more of the other one. NoValue where the
// effect lies short of it.
f64 LeastPowerfulVariance() {
    const f64 z{NorInv(Single(1 - f64{SignificanceLevel()} / 2))};
    const f64 effect = std::fabs(Effect());
    const f64 critical = z * f64{StandardError(nullVariance)};
    if (effect <= critical)
        return NoValue;
    // phi(x/s) x = phi(y/s) y with x and y the distances to the two critical values.
    const f64 square = 2 * effect * critical / std::log((effect + critical) / (effect - critical));
    return square * f64{Single(ParValue(subjects))};
}

f64 Chance(const RaterMargins& margins) {
    return std::inner_product(margins.First.begin(), margins.First.end(), margins.Second.begin(),
                              0.0);
}

} // namespace

void TESTCOHENGENERAL::SetupTest() {
    FixSamples(OneSample);
    OfferTails({OneSided, TwoSided});
    OfferForms(KappaKinds);
}

void TESTCOHENGENERAL::SetParList() {
    StartTestList();
    hypotheses = AddHypotheses(KappaKinds, EffectScale::Plain);
    nullVariance = AddPar(Kind::H0KappaVariance);
    AddPar(Kind::H1KappaVariance);
    categories = AddPar(Kind::NoOfCategories);
    subjects = AddPar(Kind::NoOfSubjects);
}

bool TESTCOHENGENERAL::CheckPar() {
    return CheckKappas(hypotheses, AnyKappa);
}

void TESTCOHENGENERAL::SearchLimits(f64& lower, f64& upper) {
    NarrowKappas(hypotheses, lower, upper, AnyKappa, &RootFunction);
    if (UnknownParNo == nullVariance + 1 && NoOfTails == TwoSided)
        KeepOneSide(lower, upper, LeastPowerfulVariance(), Side::Below, &RootFunction);
}

// J. L. Fleiss, J. Cohen and B. S. Everitt, Psychological Bulletin 72, 1969, 323-327.
f64 TESTCOHENGENERAL::RootFunction() {
    return NormalPowerEq({.Effect = Single(Effect()),
                          .Se0 = StandardError(nullVariance),
                          .Se1 = StandardError(static_cast<i16>(nullVariance + 1))});
}

bool TESTCOHENGENERAL::IsTablePar(i16 parNo) {
    return ParKind(parNo) == Kind::H0KappaVariance || ParKind(parNo) == Kind::H1KappaVariance;
}

std::vector<Grid> TESTCOHENGENERAL::TableGrids(i16) {
    const auto columns = GridLines(categories);
    if (!columns)
        return {};
    return {{.Store = MarginStore,
             .Rows = Raters,
             .Columns = *columns,
             .Title = "Marginal Proportions of the Raters",
             .RowHeads = "Rater",
             .ColumnHeads = "Category",
             .Check = RowsOfProportions(),
             .RowSum = 1}};
}

f32 TESTCOHENGENERAL::CalcTablePar(i16 parNo) {
    const RaterMargins margins{MarginsOf(1), MarginsOf(2)};
    // One category of both raters leaves nothing to agree on.
    if (1 - Chance(margins) < SumTolerance)
        return static_cast<f32>(NoValue);
    const bool underH0 = parNo == nullVariance;
    for (i16 i = NullKappa; i <= (underH0 ? NullKappa : hypotheses.TruthParNo()); ++i)
        if (!HasValue(ParText(ParKind(i))))
            return static_cast<f32>(NoValue);
    const Range range = CohenRange(margins);
    const f64 kappa = underH0 ? f64{hypotheses.H0()} : hypotheses.Truth();
    const i16 entry = underH0 ? NullKappa : hypotheses.TruthParNo();
    const Form form = underH0 ? AsValue : hypotheses.TruthForm();
    if (kappa < range.Min || kappa > range.Max) {
        const auto [least, largest] = InForm(form, f64{hypotheses.H0()}, range);
        CheckRange(entry, least, largest);
        return static_cast<f32>(NoValue);
    }
    return Single(LargestCohenVar(kappa, margins));
}

Range CohenRange(const RaterMargins& margins) {
    const f64 chance = Chance(margins);
    f64 least = 0;
    f64 largest = 0;
    for (std::size_t i = 0; i < margins.First.size(); ++i) {
        const f64 a = margins.First[i];
        const f64 b = margins.Second[i];
        least += MaxOf(0, a + b - 1);
        largest += MinOf(a, b);
    }
    return {(least - chance) / (1 - chance), (largest - chance) / (1 - chance)};
}

// The margins and kappa fix the share of agreement but not the cells. The variance of J. L. Fleiss,
// J. Cohen and B. S. Everitt (1969) is linear in these: its largest value is found by linear
// programming (V. F. Flack, A. A. Afifi, P. A. Lachenbruch and H. J. A. Schouten, Psychometrika 53,
// 1988, 321-325).
f64 LargestCohenVar(f64 kappa, const RaterMargins& margins) {
    const auto& [first, second] = margins;
    const std::size_t k = first.size();
    const f64 chance = Chance(margins);
    const f64 left = 1 - kappa;
    std::vector<f64> weights(k * k);
    LinearConditions conditions{std::vector(2 * k + 1, std::vector<f64>(k * k)),
                                std::vector<f64>(2 * k + 1)};
    for (std::size_t i = 0; i < k; ++i) {
        conditions.B[i] = first[i];
        conditions.B[k + i] = second[i];
        for (std::size_t j = 0; j < k; ++j) {
            const std::size_t cell = i * k + j;
            const f64 slope =
                i == j ? 1 - (first[i] + second[i]) * left : (second[i] + first[j]) * left;
            weights[cell] = slope * slope;
            conditions.A[i][cell] = 1;
            conditions.A[k + j][cell] = 1;
            conditions.A[2 * k][cell] = i == j ? 1 : 0;
        }
    }
    conditions.B[2 * k] = MaxOf(0, (1 - chance) * kappa + chance);
    const auto largest = LargestSum(weights, conditions);
    if (!largest)
        return NoValue;
    const f64 mean = kappa - chance * left;
    return MaxOf(0, *largest - mean * mean) / ((1 - chance) * (1 - chance));
}

} // namespace quorvanta
