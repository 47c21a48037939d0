#include "output/distrtable.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/records.h"
#include "core/values.h"
#include "montecarlo/distrcdf.h"
#include "montecarlo/shiftmodel.h"
#include "montecarlo/survivalsim.h"
#include "numeric/probdist.h"
#include "numeric/probdist_discrete.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "output/statisticdensity.h"
#include "ranksurv/survivalmodel.h"
#include "tests/exactsums.h"
#include "tests/powereq.h"
#include "tests/teststatistic.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace quorvanta {

namespace {

constexpr f64 Everything = std::numeric_limits<f64>::infinity();

using Curve = std::function<f64(f64)>;

// --- The statistic -------------------------------------------------------------------------------

// A distribution by its distribution function and its density.
struct Law {
    Curve Cdf;
    Curve Density;
};

// Those of a statistic under H0 and H1.
struct StatisticLaws {
    std::string Name;
    Curve NullQuantile; // as the test takes its critical values from it
    Law Null;
    Law Truth;
    Law TruthRight; // two one-sided tests: under H1 at the right limit
};

Law NormalLaw(f64 mean, f64 sd) {
    return {[mean, sd](f64 x) { return std::erfc(-(x - mean) / sd / std::sqrt(2.0)) / 2; },
            [mean, sd](f64 x) {
                const f64 z = (x - mean) / sd;
                return std::exp(-z * z / 2) / sd / std::sqrt(2 * std::numbers::pi);
            }};
}

// In standard errors of H0, so that H0 is standard normal.
StatisticLaws NormalLaws(const TestStatistic& s) {
    return {"Test Statistic (z)", [](f64 p) { return f64{NorInv(Single(p))}; }, NormalLaw(0, 1),
            NormalLaw(s.Truth / s.NullError, s.TruthError / s.NullError),
            NormalLaw(s.TruthRight / s.NullErrorRight, s.TruthError / s.NullErrorRight)};
}

StatisticLaws StudentLaws(const TestStatistic& s) {
    const f32 df = Single(s.Df1);
    const auto noncentral = [df](f64 delta) -> Law {
        return {[df, delta](f64 t) { return f64{NcTCdf(Single(t), df, Single(delta))}; },
                [df, delta](f64 t) { return StudentDensity(t, f64{df}, delta); }};
    };
    const Law central{[df](f64 t) { return f64{TCdf(Single(t), df)}; },
                      [df](f64 t) { return StudentDensity(t, f64{df}, 0); }};
    return {"Test Statistic (t)", [df](f64 p) { return f64{TInv(Single(p), df)}; }, central,
            noncentral(s.Truth), noncentral(s.TruthRight)};
}

// A statistic that is not negative.
Curve FromZero(Curve cdf) {
    return [cdf = std::move(cdf)](f64 x) { return x <= 0 ? 0 : cdf(x); };
}

StatisticLaws ChiSquareLaws(const TestStatistic& s) {
    const f32 df = Single(s.Df1);
    const f32 lambda = Single(s.Truth);
    const Law null{FromZero([df](f64 x) { return f64{Chi2Cdf(Single(x), df)}; }),
                   [df](f64 x) { return ChiSquareDensity(x, f64{df}, 0); }};
    const Law truth{FromZero([df, lambda](f64 x) { return f64{NcChi2Cdf(Single(x), df, lambda)}; }),
                    [df, lambda](f64 x) { return ChiSquareDensity(x, f64{df}, f64{lambda}); }};
    return {"Test Statistic (Chi-square)",
            [df](f64 p) { return f64{Chi2Inv(Single(p), df)}; },
            null,
            truth,
            {}};
}

// The quantile caps small and large degrees of freedom in its arguments; these have been.
Curve FQuantile(f32 df1, f32 df2) {
    return [df1, df2](f64 p) {
        f32 capped1 = df1;
        f32 capped2 = df2;
        return f64{FInv(Single(p), capped1, capped2)};
    };
}

StatisticLaws FLaws(const TestStatistic& s) {
    const f32 df1 = Single(s.Df1);
    const f32 df2 = Single(s.Df2);
    const f32 lambda = Single(s.Truth);
    const auto noncentral = [=](f64 x) {
        f32 held = lambda;
        return f64{NcFCdf(Single(x), df1, df2, held)};
    };
    const Law null{FromZero([=](f64 x) { return f64{FCdf(Single(x), df1, df2)}; }),
                   [=](f64 x) { return FDensity(x, f64{df1}, f64{df2}, 0); }};
    const Law truth{FromZero(noncentral),
                    [=](f64 x) { return FDensity(x, f64{df1}, f64{df2}, f64{lambda}); }};
    return {"Test Statistic (F)", FQuantile(df1, df2), null, truth, {}};
}

// Under H1 the statistic is smaller by a factor.
StatisticLaws VarianceLaws(const TestStatistic& s) {
    const bool isRatio = s.Law == StatisticLaw::VarianceRatio;
    const f32 df1 = Single(s.Df1);
    const f32 df2 = Single(s.Df2);
    const Law null = isRatio ? Law{FromZero([=](f64 x) { return f64{FCdf(Single(x), df1, df2)}; }),
                                   [=](f64 x) { return FDensity(x, f64{df1}, f64{df2}, 0); }}
                             : Law{FromZero([=](f64 x) { return f64{Chi2Cdf(Single(x), df1)}; }),
                                   [=](f64 x) { return ChiSquareDensity(x, f64{df1}, 0); }};
    const auto scaled = [&null](f64 factor) -> Law {
        return {[null, factor](f64 x) { return null.Cdf(factor * x); },
                [null, factor](f64 x) { return factor * null.Density(factor * x); }};
    };
    const Curve quantile =
        isRatio ? FQuantile(df1, df2) : Curve([=](f64 p) { return f64{Chi2Inv(Single(p), df1)}; });
    return {isRatio ? "Test Statistic (F)" : "Test Statistic (Chi-square)", quantile, null,
            scaled(s.Truth), scaled(s.TruthRight)};
}

StatisticLaws ExponentialLaws(const TestStatistic& s) {
    const auto from = [](f64 start) -> Law {
        return {[start](f64 x) { return x <= start ? 0 : -std::expm1(start - x); },
                [start](f64 x) { return x < start ? 0 : std::exp(start - x); }};
    };
    return {"Test Statistic (smallest observation)", [](f64 p) { return -std::log1p(-p); }, from(0),
            from(s.Truth), from(s.TruthRight)};
}

StatisticLaws LawsOf(const TestStatistic& s) {
    switch (s.Law) {
    case StatisticLaw::Normal:
        return NormalLaws(s);
    case StatisticLaw::Student:
        return StudentLaws(s);
    case StatisticLaw::ChiSquare:
        return ChiSquareLaws(s);
    case StatisticLaw::FRatio:
        return FLaws(s);
    case StatisticLaw::VarianceShare:
    case StatisticLaw::VarianceRatio:
        return VarianceLaws(s);
    default:
        return ExponentialLaws(s);
    }
}

// The x below which a share p lies, by halving.
f64 QuantileOf(const Curve& cdf, f64 p) {
    f64 low = -1;
    f64 high = 1;
    constexpr f64 farthest = 1e7;
    while (cdf(low) > p && low > -farthest)
        low *= 2;
    while (cdf(high) < p && high < farthest)
        high *= 2;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const f64 middle = (low + high) / 2;
        (cdf(middle) < p ? low : high) = middle;
    }
    return (low + high) / 2;
}

bool RejectsLeft() {
    return NoOfTails != OneSided || LeftTail == True;
}

bool RejectsRight() {
    return NoOfTails != OneSided || LeftTail == False;
}

// A test of several differences at once rejects large values alone, whatever the tails are.
bool IsOneTailed(StatisticLaw law) {
    return law == StatisticLaw::FRatio || law == StatisticLaw::ChiSquare;
}

bool IsFromZero(StatisticLaw law) {
    return IsOneTailed(law) || law == StatisticLaw::VarianceShare ||
           law == StatisticLaw::VarianceRatio;
}

bool IsUsable(const TestStatistic& s) {
    const bool isTwo = NoOfTails == TwoOneSided && !IsOneTailed(s.Law);
    if (s.Law == StatisticLaw::Normal)
        return s.NullError > 0 && s.TruthError > 0 && (!isTwo || s.NullErrorRight > 0);
    const bool hasDf = s.Law == StatisticLaw::Exponential || s.Df1 > 0;
    return hasDf && std::isfinite(s.Truth) && (!isTwo || std::isfinite(s.TruthRight));
}

DistrTable StatisticTable(const TestStatistic& s) {
    DistrTable table{.Kind = DistrTableKind::Statistic};
    const StatisticLaws laws = LawsOf(s);
    table.What = laws.Name;
    const bool isOneTailed = IsOneTailed(s.Law);
    const bool isTwo = NoOfTails == TwoOneSided && !isOneTailed;
    const f64 alpha{SignificanceLevel()};
    const f64 tail = NoOfTails == TwoSided && !isOneTailed ? alpha / 2 : alpha;
    // Two one-sided tests: the one of the left limit rejects above upper, that of the right limit
    // below lower.
    const f64 upper = laws.NullQuantile(1 - tail);
    const f64 lower = laws.NullQuantile(tail);
    const bool rejectsLeft = !isOneTailed && RejectsLeft();
    const bool rejectsRight = isOneTailed || RejectsRight();

    PlottedDistr null{"H0", laws.Null.Cdf, laws.Null.Density};
    if (rejectsLeft) {
        table.CriticalValues.push_back(lower);
        null.Areas.emplace_back(-Everything, lower);
    }
    if (rejectsRight) {
        table.CriticalValues.push_back(upper);
        null.Areas.emplace_back(upper, Everything);
    }
    table.Distributions.push_back(std::move(null));
    if (isTwo) {
        table.Distributions.push_back(
            {"H1, left limit", laws.Truth.Cdf, laws.Truth.Density, {{-Everything, upper}}});
        table.Distributions.push_back({"H1, right limit",
                                       laws.TruthRight.Cdf,
                                       laws.TruthRight.Density,
                                       {{lower, Everything}}});
    } else {
        table.Distributions.push_back(
            {"H1",
             laws.Truth.Cdf,
             laws.Truth.Density,
             {{rejectsLeft ? lower : -Everything, rejectsRight ? upper : Everything}}});
    }

    table.Low = Everything;
    table.High = -Everything;
    constexpr f64 seen = 0.0005; // a share on either side is left out
    for (const PlottedDistr& distr : table.Distributions) {
        table.Low = MinOf(table.Low, IsFromZero(s.Law) ? 0 : QuantileOf(distr.Cdf, seen));
        table.High = MaxOf(table.High, QuantileOf(distr.Cdf, 1 - seen));
    }
    return table;
}

bool IsCount(StatisticLaw law) {
    return law == StatisticLaw::Binomial || law == StatisticLaw::Hypergeometric;
}

// A count, with the critical values of the exact test: the probability of each, and their sums.
PlottedDistr CountDistr(std::string label, const TestStatistic& s, f64 p) {
    const i16 n = ToI16(s.Df1);
    const auto probability = [=](i16 x) {
        return s.Law == StatisticLaw::Binomial ? f64{BinDensity(n, x, Single(p))}
                                               : HyperDensity(ToI16(s.Df2), n, x, Single(p));
    };
    std::vector<f64> upTo;
    f64 sum = 0;
    for (i16 x = 0; x <= n; ++x)
        upTo.push_back(sum += probability(x));
    const auto at = [upTo](f64 x) {
        const f64 whole = MinOf(std::floor(x), static_cast<f64>(upTo.size()) - 1);
        return whole < 0 ? 0 : upTo[static_cast<std::size_t>(whole)];
    };
    const auto density = [probability, n](f64 x) {
        return x < 0 || x > n ? 0 : probability(ToI16(x));
    };
    return {std::move(label), at, density};
}

DistrTable CountTable(const TestStatistic& s) {
    DistrTable table{.Kind = DistrTableKind::Statistic};
    table.What = "Number of Successes";
    table.IsDiscrete = true;
    const i16 n = ToI16(s.Df1);
    const bool isTwo = NoOfTails == TwoOneSided;
    const f64 alpha{SignificanceLevel()};
    const f32 tail = Single(NoOfTails == TwoSided ? alpha / 2 : alpha);
    PlottedDistr left = CountDistr(isTwo ? "H0, left limit" : "H0", s, s.Null);
    PlottedDistr right = CountDistr("H0, right limit", s, s.NullRight);
    PlottedDistr truth = CountDistr("H1", s, s.Truth);
    // Bounds lie halfway between two counts.
    const f64 high = CritHigh(n, tail, left.Density) - 0.5;
    const f64 low = CritLow(n, tail, (isTwo ? right : left).Density) + 0.5;
    if (RejectsRight()) {
        table.CriticalValues.push_back(high);
        left.Areas.emplace_back(high, Everything);
    }
    if (RejectsLeft()) {
        table.CriticalValues.push_back(low);
        (isTwo ? right : left).Areas.emplace_back(-Everything, low);
    }
    if (isTwo)
        truth.Areas = {{-Everything, high}, {low, Everything}};
    else
        truth.Areas = {{RejectsLeft() ? low : -Everything, RejectsRight() ? high : Everything}};
    table.Distributions.push_back(std::move(left));
    if (isTwo)
        table.Distributions.push_back(std::move(right));
    table.Distributions.push_back(std::move(truth));

    constexpr f64 seen = 0.0005;
    table.Low = n;
    table.High = 0;
    for (const PlottedDistr& distr : table.Distributions)
        for (i16 x = 0; x <= n; ++x)
            if (distr.Cdf(x) > seen && distr.Cdf(x - 1) < 1 - seen) {
                table.Low = MinOf(table.Low, x);
                table.High = MaxOf(table.High, x);
            }
    return table;
}

// The equation is asked once, with the values as they stand.
TestStatistic StatisticOfAnalysis() {
    NotedStatistic = {};
    if (SelCheckPar())
        SelRootFunction();
    return NotedStatistic;
}

// --- Families ------------------------------------------------------------------------------------

// Is the value of a parameter one that a distribution was chosen for?
bool HasFamily() {
    if (NoOfDistr() == 0)
        return false;
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (SelIsTablePar(i) && SelTableDistr(i))
            return true;
    return false;
}

bool AllValuesAreThere() {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (i != UnknownParNo && !(ParValue(i) < NoValue))
            return false;
    return true;
}

// H0 first. Of a shift model H0 is the same distribution with location 0.
std::vector<NamedDistr> FamilyRows() {
    if (AllValuesAreThere() && SelCheckPar())
        if (auto groups = SelGroupDistr(); !groups.empty())
            return groups;
    const DistrRow last = Distr(NoOfDistr());
    if (NoOfDistr() > 1)
        return {{"H0", Distr(1)}, {"H1", last}};
    const bool isShift = IsOffered(DistrList::ShiftModels, last.Code);
    if (isShift && IsContinuousDistr({last.Code, 0, last.Par2}))
        return {{"H0", {last.Code, 0, last.Par2}}, {"H1", last}};
    return {{"H1", last}};
}

PlottedDistr FamilyDistr(const std::string& label, const DistrRow& row) {
    if (IsContinuousDistr(row))
        return {label, [row](f64 x) { return DistrCdf(row, x); },
                [row](f64 x) { return DistrDensity(row, x); }};
    const std::vector<f64> shares = DistrProportions(row, DistrCategories(row));
    const auto density = [shares](f64 x) {
        return x < 0 || x >= static_cast<f64>(shares.size()) ? 0
                                                             : shares[static_cast<std::size_t>(x)];
    };
    const auto cdf = [shares](f64 x) {
        f64 sum = 0;
        for (std::size_t i = 0; i < shares.size() && static_cast<f64>(i) <= x; ++i)
            sum += shares[i];
        return sum;
    };
    return {label, cdf, density};
}

bool HasScale(const NamedDistr& row) {
    return row.second.Par2 > 0 && f64{row.second.Par2} < NoValue;
}

DistrTable FamilyTable() {
    DistrTable table{.Kind = DistrTableKind::Family};
    table.What = "x-value";
    const std::vector<NamedDistr> rows = FamilyRows();
    if (!std::ranges::all_of(rows, HasScale))
        return {};
    table.IsDiscrete = IsDiscreteDistr(rows.back().second);
    table.Low = Everything;
    table.High = -Everything;
    for (const auto& [label, row] : rows) {
        if (table.IsDiscrete ? !IsDiscreteDistr(row) : !IsContinuousDistr(row))
            return {};
        table.Distributions.push_back(FamilyDistr(label, row));
        // The tails of the Cauchy distribution would leave nothing of its middle.
        const f64 seen = row.Code == SimCauchy ? 0.03 : 0.002;
        const f64 low = table.IsDiscrete ? 0 : DistrQuantile(row, seen);
        const f64 high = table.IsDiscrete ? DistrCategories(row) - 1 : DistrQuantile(row, 1 - seen);
        table.Low = MinOf(table.Low, low);
        table.High = MaxOf(table.High, high);
    }
    if (!table.IsDiscrete) { // so that a density that jumps is seen to come from 0
        const f64 margin = (table.High - table.Low) / 20;
        table.Low -= margin;
        table.High += margin;
    }
    return table;
}

// The proportions of categories that were entered: a row for H0 and, where there is one, for H1.
DistrTable CategoryTable() {
    constexpr i16 store = 1;
    const Array2<f32>& shares = GridData(store);
    DistrTable table{.Kind = DistrTableKind::Family};
    table.What = "Category";
    table.IsDiscrete = true;
    table.Low = 1;
    table.High = shares.HighBound2();
    for (i16 row = 1; row <= MinInteger(static_cast<i16>(shares.HighBound1()), 2); ++row) {
        std::vector<f64> p;
        for (i16 i = 1; i <= shares.HighBound2(); ++i)
            p.push_back(f64{shares(row, i)});
        const auto density = [p](f64 x) {
            return x < 1 || x > static_cast<f64>(p.size()) ? 0 : p[static_cast<std::size_t>(x) - 1];
        };
        const auto cdf = [p](f64 x) {
            f64 sum = 0;
            for (std::size_t i = 0; i < p.size() && static_cast<f64>(i + 1) <= x; ++i)
                sum += p[i];
            return sum;
        };
        table.Distributions.push_back({row == 1 ? "H0" : "H1", cdf, density});
    }
    return table;
}

// --- Survival ------------------------------------------------------------------------------------

using SurvivalCurve = std::function<f64(f64)>; // P(T > t)

SurvivalCurve ScaledSurvival(f32 scale) {
    const f64 s{scale};
    const i16 code = SimSurvival.DistrNo;
    if (code == SimExponential)
        return [s](f64 t) { return std::exp(-t / s); };
    const auto model = static_cast<SurvivalModel>(code);
    const f64 drawn{SimSurvival.Shape};
    const f64 shape = model == LognormalSurvival ? 1 / drawn : drawn;
    const f64 median = s * StandardMedian(model, shape);
    return [=](f64 t) { return SurvivalAtModel(model, t, median, shape); };
}

// Hazards that are constant between the starts; the last one goes on.
SurvivalCurve PiecewiseSurvivalCurve(const Array1<f32>& starts, const Array1<f32>& hazards) {
    return [starts, hazards](f64 t) {
        f64 cumulated = 0;
        const int rows = starts.HighBound() - 1; // the last start is the end
        for (int i = 1; i <= rows; ++i) {
            const f64 begin{starts(i)};
            const f64 end = i < rows ? f64{starts(i + 1)} : Everything;
            if (t > begin)
                cumulated += f64{hazards(i)} * (MinOf(t, end) - begin);
        }
        return std::exp(-cumulated);
    };
}

// A difference quotient.
Curve DensityOf(const Curve& cdf, f64 step) {
    return [cdf, step](f64 x) { return MaxOf(0, (cdf(x + step) - cdf(x - step)) / (2 * step)); };
}

void AddSurvival(DistrTable& table, std::string label, const SurvivalCurve& survival) {
    const auto cdf = [survival](f64 t) { return t <= 0 ? 0 : 1 - survival(t); };
    table.Distributions.push_back({std::move(label), cdf, nullptr});
}

void AddStratum(DistrTable& table, const SurvivalStratum& stratum, const std::string& name) {
    if (SimSurvival.Samples == OneSample) {
        AddSurvival(table, name + "H0", ScaledSurvival(stratum.NullScale1));
        AddSurvival(table, name + "H1", ScaledSurvival(stratum.Scale1));
        return;
    }
    AddSurvival(table, name + "Group 1", ScaledSurvival(stratum.Scale1));
    AddSurvival(table, name + "Group 2", ScaledSurvival(stratum.Scale2));
    if (stratum.NullScale2 != stratum.Scale1)
        AddSurvival(table, name + "Group 2, H0", ScaledSurvival(stratum.NullScale2));
}

// Where the last survivors go; or the end of the study, if that is later than half of it.
f64 EndOfSurvival(const DistrTable& table) {
    f64 end = 0;
    for (const PlottedDistr& distr : table.Distributions)
        end = MaxOf(end, QuantileOf(distr.Cdf, 0.95));
    const f64 study{SimSurvival.StudyTime};
    return study > end / 2 ? MinOf(study, 2 * end) : end;
}

DistrTable SurvivalTable() {
    DistrTable table{.Kind = DistrTableKind::Survival};
    table.What = "Time";
    Cancelled = False;
    SelGetSimPar();
    if (std::exchange(Cancelled, False) != False)
        return {};
    if (SimSurvival.DistrNo == SimPiecewise) {
        const PiecewiseSurvival& hazards = SimSurvival.Table;
        AddSurvival(table, "Group 1", PiecewiseSurvivalCurve(hazards.Starts, hazards.Hazard1));
        AddSurvival(table, "Group 2", PiecewiseSurvivalCurve(hazards.Starts, hazards.Hazard2));
    } else {
        const auto& strata = SimSurvival.Strata;
        for (std::size_t i = 0; i < strata.size(); ++i)
            AddStratum(table, strata[i],
                       strata.size() > 1 ? "Stratum " + std::to_string(i + 1) + ", " : "");
    }
    table.Low = 0;
    table.High = EndOfSurvival(table);
    for (PlottedDistr& distr : table.Distributions)
        distr.Density = DensityOf(distr.Cdf, table.High / 2000);
    return table;
}

// The values of a table or graph at its first point.
void TakeFirstPoint() {
    if (!TableX.Raw().empty())
        ParValue(XParNo) = f64{TableX(1)};
    if (!ZValues.Raw().empty() && ZParNo >= 0 && ZParNo <= NoOfPar)
        ParValue(ZParNo) = f64{ZValues(1)};
    if (!TableY.Raw().empty() && HasCellValue(TableY(1, 1)))
        ParValue(UnknownParNo) = f64{TableY(1, 1)};
}

bool IsAboutSurvival() {
    return IsTest == True && HasSurvivalGraph();
}

DistrTable DistributionsOfValues() {
    if (CurrentWindowKind() == TableWindow || CurrentWindowKind() == GraphWindow)
        TakeFirstPoint();
    if (IsAboutSurvival())
        return SelCheckPar() ? SurvivalTable() : DistrTable{};
    if (HasFamily())
        return FamilyTable();
    if (IsDiscreteTest() && HasGridData == True && !GridData(1).Raw().empty())
        return CategoryTable();
    const TestStatistic statistic = StatisticOfAnalysis();
    if (statistic.Law == StatisticLaw::None || !IsUsable(statistic))
        return {};
    return IsCount(statistic.Law) ? CountTable(statistic) : StatisticTable(statistic);
}

} // namespace

DistrTable CurrentDistributions() {
    if (AnalysisNo == 0 || NoOfPar < 1)
        return {};
    const auto solved = ParValue;
    ReadParValues();
    const DistrTable table = DistributionsOfValues();
    ParValue = solved;
    return table;
}

} // namespace quorvanta
