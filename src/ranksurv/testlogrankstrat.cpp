#include "ranksurv/testlogrankstrat.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/records.h"
#include "numeric/rounding.h"
#include "output/format.h"
#include "ranksurv/accrual.h"
#include "ranksurv/hazards.h"
#include "ranksurv/testlogrank.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"
#include "tests/powereq.h"

#include <cmath>
#include <string>

namespace quorvanta {

namespace {

constexpr i16 strataStore = 1;
constexpr i16 proportionStore = 3;
constexpr i16 hazardStore = 4;
constexpr i16 medianStore = 5;
constexpr i16 incidenceStore = 6;
constexpr i16 effectParNo = 2;

HazardKind approach;
SurvivalInput input;
Accrual accrual;
i16 sd0; // 0: that of H1 serves under H0 too
i16 sd1; // 0: that of H0 serves under H1 too
i16 strata;
i16 total;

bool IsParametric() {
    return approach != SchoenfeldKind;
}

// --- Grids --------------------------------------------------------------------------------------

// The shares add up to 1 in the column that holds them.
Grid StrataGrid(i16 rows) {
    return {.Store = strataStore,
            .Rows = rows,
            .Columns = 2,
            .Title = "Strata",
            .RowHeads = "Stratum",
            .ColumnHeads = "Stratum/Tot.Size,Sample2/Sample1",
            .Check = AllOf({RatioCells(), InColumns(1, 1, ColumnsAddTo(1))})};
}

Grid ProportionsGrid(i16 rows) {
    return {.Store = proportionStore,
            .Rows = rows,
            .Columns = 2,
            .Title = "Survival Proportions",
            .RowHeads = "Stratum",
            .ColumnHeads = "Sample 1,Sample 2",
            .Check = ProbabilityCells(1)};
}

// Each form of input has a store of its own: a hazard is never taken for an incidence.
i16 HazardStore() {
    if (input == SurvivalInput::Median)
        return medianStore;
    return input == SurvivalInput::Incidence ? incidenceStore : hazardStore;
}

Grid HazardsGrid(i16 rows) {
    const bool isIncidence = input == SurvivalInput::Incidence;
    const std::string name = input == SurvivalInput::Median ? "Median"
                             : isIncidence                  ? "Incidence"
                                                            : "Hazard Rate";
    const std::string loss = isIncidence ? "Loss Incidence" : "Loss Rate";
    const GridCheck survival = isIncidence ? ProbabilityCells(1) : PositiveCells(name);
    const GridCheck losses = isIncidence ? ShareCells(loss) : NonNegativeCells(loss);
    return {.Store = HazardStore(),
            .Rows = rows,
            .Columns = 4,
            .Title = name + "s and " + loss + "s",
            .RowHeads = "Stratum",
            .ColumnHeads = name + " 1," + name + " 2," + loss + " 1," + loss + " 2",
            .Check = AllOf({InColumns(1, 1, survival), InColumns(2, 2, survival),
                            InColumns(3, 3, losses), InColumns(4, 4, losses)})};
}

std::vector<Grid> GridsOf(i16 rows) {
    return {StrataGrid(rows), IsParametric() ? HazardsGrid(rows) : ProportionsGrid(rows)};
}

// Are there grids of so many strata?
bool HasStrata(i16 rows) {
    if (HasGridData == False)
        return false;
    for (const Grid& grid : GridsOf(rows))
        if (!IsFilled(grid))
            return false;
    return true;
}

i16 FilledRows() {
    return static_cast<i16>(GridData(strataStore).HighBound1());
}

// --- Strata -------------------------------------------------------------------------------------

// A cell within the range of a kind, in which the equations hold.
f32 CellOf(i16 store, i16 row, i16 column, i16 kind) {
    const f64 value{GridData(store)(row, column)};
    return Single(MaxOf(ParMin(kind), MinOf(ParMax(kind), value)));
}

// The patients of the stratum in each sample, when the study has one.
struct StratumSizes {
    f64 N1;
    f64 N2;
};

StratumSizes SizesOf(i16 row) {
    const f64 share{CellOf(strataStore, row, 1, Kind::Size2Over1)};
    const f64 ratio{CellOf(strataStore, row, 2, Kind::Size2Over1)};
    return {share / (ratio + 1), share * ratio / (ratio + 1)};
}

// D. A. Schoenfeld, Biometrics 39, 1983, 499-503: the information in the events of the stratum.
StratumEffect ProportionalHazards(i16 row) {
    const auto [n1, n2] = SizesOf(row);
    const f64 s1{CellOf(proportionStore, row, 1, Kind::H1Survival1)};
    const f64 s2{CellOf(proportionStore, row, 2, Kind::H1Survival2)};
    const f64 events = n1 * (1 - s1) + n2 * (1 - s2);
    const f64 second = n2 / (n1 + n2);
    const f64 variance = 1 / (events * second * (1 - second));
    return {std::log(std::log(s2) / std::log(s1)), variance, variance};
}

// The equations of one stratum, by approach, as without strata.
StratumEffect ExponentialSurvival(i16 row) {
    const auto [size1, size2] = SizesOf(row);
    const f64 n1 = size1;
    const f64 n2 = size2;
    const OneSampleKinds& kinds = OneSurvivalKinds(input);
    const i16 store = HazardStore();
    const auto hazard = [&](i16 column) {
        return HazardOf(input, CellOf(store, row, column, kinds.H1[AsValue]));
    };
    const auto loss = [&](i16 column) {
        return LossHazardOf(input, CellOf(store, row, column, LossKinds(input).One));
    };
    const f32 lambda1 = hazard(1);
    const f32 lambda2 = hazard(2);
    const bool isLog = approach != LachinFoulkesKind;
    const auto variance = [&, eta1 = loss(3), eta2 = loss(4)](f32 first, f32 second) {
        const f64 scale1 = isLog ? f64{first} : 1;
        const f64 scale2 = isLog ? f64{second} : 1;
        return f64{HazardVariance(accrual, first, eta1)} / (n1 * scale1 * scale1) +
               f64{HazardVariance(accrual, second, eta2)} / (n2 * scale2 * scale2);
    };
    const f64 effect = isLog ? std::log(f64{lambda2} / f64{lambda1}) : f64{lambda2} - f64{lambda1};
    const f64 variance1 = variance(lambda1, lambda2);
    if (approach == RubensteinKind)
        return {effect, variance1, variance1};
    const f32 pooled = Single((n1 * f64{lambda1} + n2 * f64{lambda2}) / (n1 + n2));
    return {effect, variance(pooled, pooled), variance1};
}

// The same differences, and standard deviations, in units of an incidence: what is entered says so.
WeightedEffect AsIncidences(const WeightedEffect& hazards, const std::vector<StratumEffect>& of) {
    f64 difference = 0;
    f64 weights = 0;
    for (i16 row = 1; row <= FilledRows(); ++row) {
        const f64 weight = 1 / of[static_cast<std::size_t>(row - 1)].Variance0;
        const auto incidence = [row](i16 column) {
            return f64{CellOf(incidenceStore, row, column, Kind::H1Incidence)};
        };
        difference += weight * (incidence(2) - incidence(1));
        weights += weight;
    }
    const f64 unit = hazards.Effect == 0 ? 1 : difference / weights / hazards.Effect;
    return {hazards.Effect * unit, hazards.Sd0 * unit, hazards.Sd1 * unit};
}

WeightedEffect FromStrata() {
    std::vector<StratumEffect> effects;
    for (i16 row = 1; row <= FilledRows(); ++row)
        effects.push_back(IsParametric() ? ExponentialSurvival(row) : ProportionalHazards(row));
    const WeightedEffect weighted = WeightedBy(effects);
    const bool asIncidences = approach == LachinFoulkesKind && input == SurvivalInput::Incidence;
    return asIncidences ? AsIncidences(weighted, effects) : weighted;
}

bool IsBlue(i16 parNo) {
    return parNo == effectParNo || (parNo != 0 && (parNo == sd0 || parNo == sd1));
}

f32 ValueOf(i16 parNo, const WeightedEffect& weighted) {
    const f64 value = parNo == effectParNo ? weighted.Effect
                      : parNo == sd0       ? weighted.Sd0
                                           : weighted.Sd1;
    const bool isGood =
        std::isfinite(value) && value >= ParMin(ParKind(parNo)) && value <= ParMax(ParKind(parNo));
    return Single(isGood ? value : NoValue);
}

bool RefuseDerived(i16 parNo) {
    ShowMessage(StripAmpersand(ParLabel(ParKind(parNo))) + " Can't Be Calculated.");
    return false;
}

// Takes what derives from the strata into values and texts. The position of the first that has no
// value, after which none is written; else 0.
i16 WriteDerived() {
    const WeightedEffect weighted = FromStrata();
    for (i16 i = effectParNo; i <= NoOfPar; ++i) {
        if (!IsBlue(i))
            continue;
        const f32 value = ValueOf(i, weighted);
        if (f64{value} == NoValue)
            return i;
        ParValue(i) = f64{value};
        if (!IsTableOrGraph())
            ParText(ParKind(i)) = Format(DecimalOf(value), "#####0.0#####");
    }
    return 0;
}

// What derives from the strata is shown as it is with the accrual and the study time of now. What
// is asked for itself stands by itself from then on, as a value that is typed.
bool RefreshDerived() {
    if (IsBlue(UnknownParNo)) {
        HasGridData = False;
        return true;
    }
    if (UnknownParNo != strata && !HasStrata(ToI16(ParValue(strata))))
        return RefuseDerived(effectParNo);
    const i16 without = WriteDerived();
    return without == 0 || RefuseDerived(without);
}

WeightedEffect CurrentEffect() {
    const auto entered = [](i16 parNo) { return f64{Single(ParValue(parNo))}; };
    if (HasStrata(FilledRows()))
        return FromStrata();
    return {entered(effectParNo), entered(sd0 != 0 ? sd0 : sd1), entered(sd1 != 0 ? sd1 : sd0)};
}

} // namespace

void TESTLOGRANKSTRAT::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    if (HazardApproach(TestNo) != SchoenfeldKind)
        OfferSurvivalInput();
}

void TESTLOGRANKSTRAT::SetParList() {
    approach = HazardApproach(TestNo);
    input = ChosenSurvivalInput();
    StartTestList();
    const bool isDifference = approach == LachinFoulkesKind;
    AddPar(!isDifference                       ? Kind::WeightedLogHazardRatio
           : input == SurvivalInput::Incidence ? Kind::WeightedIncidenceDifference
                                               : Kind::WeightedHazardDifference);
    sd0 = approach == RubensteinKind ? i16{0} : AddPar(Kind::H0WeightedSd);
    sd1 = IsParametric() ? AddPar(Kind::H1WeightedSd) : i16{0};
    strata = AddPar(Kind::NoOfStrata);
    if (IsParametric())
        accrual.Add(false);
    total = AddPar(Kind::TotalSize);
}

bool TESTLOGRANKSTRAT::CheckPar() {
    return (!IsParametric() || accrual.Check()) && (HasGridData == False || RefreshDerived());
}

// The standard deviation under H1 turns where a two-sided test has less power with less of it.
void TESTLOGRANKSTRAT::SearchLimits(f64& lower, f64& upper) {
    if (UnknownParNo == effectParNo)
        LeftTailLimit(lower, upper, 0);
    else if (UnknownParNo == sd1 && sd1 != 0)
        KeepNearestRoot(lower, upper, Side::Below, &RootFunction);
    else if (IsParametric())
        accrual.Narrow(lower, upper);
}

// Proportional hazards: D. A. Schoenfeld, Biometrics 39, 1983, 499-503. Exponential survival: J. M.
// Lachin and M. A. Foulkes, Biometrics 42, 1986, 507-519.
f64 TESTLOGRANKSTRAT::RootFunction() {
    const WeightedEffect weighted = CurrentEffect();
    const f64 root = std::sqrt(f64{Single(ParValue(total))});
    return NormalPowerEq({.Effect = Single(weighted.Effect),
                          .Se0 = Single(weighted.Sd0 / root),
                          .Se1 = Single(weighted.Sd1 / root)});
}

bool TESTLOGRANKSTRAT::IsTablePar(i16 parNo) {
    return IsBlue(parNo);
}

std::vector<Grid> TESTLOGRANKSTRAT::TableGrids(i16) {
    const auto rows = GridLines(strata);
    if (!rows || (IsParametric() && !accrual.HasGridValues()))
        return {};
    return GridsOf(*rows);
}

f32 TESTLOGRANKSTRAT::CalcTablePar(i16 parNo) {
    return ValueOf(parNo, FromStrata());
}

// An accrual or a study time that was sought changes what derives from the strata.
void TESTLOGRANKSTRAT::RenewTablePars() {
    if (!IsBlue(UnknownParNo) && HasStrata(FilledRows()))
        WriteDerived();
}

WeightedEffect WeightedBy(const std::vector<StratumEffect>& strata) {
    f64 weights = 0;
    f64 effect = 0;
    f64 variance1 = 0;
    for (const auto& [stratumEffect, variance0, stratumVariance1] : strata) {
        weights += 1 / variance0;
        effect += stratumEffect / variance0;
        variance1 += stratumVariance1 / (variance0 * variance0);
    }
    return {effect / weights, 1 / std::sqrt(weights), std::sqrt(variance1) / weights};
}

} // namespace quorvanta
