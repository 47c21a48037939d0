#include "tests/lists/repeated.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "numeric/matmultmat.h"
#include "numeric/rounding.h"
#include "tests/lists/anovagrids.h"
#include "tests/lists/turningpoint.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace quorvanta {

namespace {

// Stores of the grids; those of an effect's means are 1 and 4.
constexpr i16 SdStore = 2;
constexpr i16 MeanStore = 3;
constexpr i16 CovarianceStore = 5;
constexpr i16 CorrelationStore = 6;
constexpr i16 CoefficientStore = 7;

// Of F-tests, by type of effect: they have no limits.
constexpr EffectKinds TypeKinds[]{{Kind::SdOfMeans, NoKind, NoKind},
                                  {Kind::AnyMeanDifference, NoKind, NoKind},
                                  {Kind::MinMeanDifference, NoKind, NoKind}};
constexpr EffectKinds DistanceKinds{Kind::MahalanobisDistance, NoKind, NoKind};
constexpr EffectKinds CombinationKinds{Kind::ContrastMean, Kind::MeanLeftLimit,
                                       Kind::MeanRightLimit};

constexpr const char* LevelHead = "Within Factor Level";
constexpr const char* GroupHead = "Factor A Level";

// Of Group::CorrelationMatrix.
constexpr i16 AutoCorrelationOption = static_cast<i16>(CorrelationStructure::AutoCorrelation);

RepeatedList current;

// --- Matrices from the stores -------------------------------------------------------------------

Array2<f64> Stored(i16 store) {
    const Array2<f32>& cells = GridData(store);
    Array2<f64> values(1, cells.HighBound1(), 1, cells.HighBound2());
    for (int i = 1; i <= cells.HighBound1(); ++i)
        for (int j = 1; j <= cells.HighBound2(); ++j)
            values(i, j) = GridFigure(store, static_cast<i16>(i), static_cast<i16>(j));
    return values;
}

bool EntersCovariances() {
    return Ticked(Check::CovarianceMatrix);
}

Array2<f64> EnteredCovariance() {
    if (EntersCovariances())
        return Stored(CovarianceStore);
    Array2<f64> s = Stored(CorrelationStore);
    const Array2<f64> sd = Stored(SdStore);
    for (int i = 1; i <= s.HighBound1(); ++i)
        for (int j = 1; j <= s.HighBound2(); ++j)
            s(i, j) *= sd(i, 1) * sd(j, 1);
    return s;
}

// Of k measurements; that of compound symmetry is not entered in a grid.
Array2<f64> CovarianceOf(i16 k) {
    if (!current.Errors.HasCorrelation())
        return EnteredCovariance();
    Array2<f64> s;
    f32 eps = 0;
    f32 bias = 0;
    RepCsMatrix(k, current.Errors.Sd(), current.Errors.Correlation(), s, eps, bias);
    return s;
}

// --- The effect of means
// --------------------------------------------------------------------------

// The means that the tested effect is about: of the levels alone, of the groups alone, or of all
// cells.
TestedMeans MeansOfEffect() {
    if (current.Groups == 0)
        return {.Levels = current.Levels, .Head = LevelHead};
    if (current.Levels == 0)
        return {.Levels = current.Groups, .Head = GroupHead};
    constexpr MatrixEffect parts[]{MatrixEffect::Rows, MatrixEffect::Columns,
                                   MatrixEffect::Interaction};
    return {.Levels = current.Groups,
            .Head = GroupHead,
            .Columns = current.Levels,
            .Part = parts[static_cast<int>(Tested())]};
}

// --- Linear combinations ------------------------------------------------------------------------

// The sum over the groups; of two groups with one set of coefficients the second minus the first.
f64 CombinationMean() {
    const Array2<f64> c = Stored(CoefficientStore);
    const Array2<f64> m = Stored(MeanStore);
    const bool isDifference = c.HighBound1() < m.HighBound1();
    f64 sum = 0;
    for (int i = 1; i <= m.HighBound1(); ++i)
        for (int j = 1; j <= m.HighBound2(); ++j) {
            const f64 sign = isDifference && i == 1 ? -1 : 1;
            sum += sign * c(isDifference ? 1 : i, j) * m(i, j);
        }
    return sum;
}

// With one subject in each group.
f64 CombinationSd() {
    const Array2<f64> c = Stored(CoefficientStore);
    const int k = c.HighBound2();
    const Array2<f64> s = CovarianceOf(static_cast<i16>(k));
    f64 variance = 0;
    for (int group = 1; group <= c.HighBound1(); ++group)
        for (int i = 1; i <= k; ++i)
            for (int j = 1; j <= k; ++j)
                variance += c(group, i) * s(i, j) * c(group, j);
    return variance > 0 ? std::sqrt(variance) : NoValue;
}

// --- Mahalanobis distance -----------------------------------------------------------------------

// What the distance measures, as a column: the means of one group, or what two rows differ by. Of
// the levels in two groups it is their sum, since the equation divides by the 4 that this makes.
Array2<f64> MeanDifference() {
    const Array2<f64> m = Stored(MeanStore);
    const bool isSum = current.OfContrasts && Tested() == TestedFactor::Within;
    Array2<f64> x(1, m.HighBound2(), 1, 1);
    for (int j = 1; j <= m.HighBound2(); ++j)
        x(j, 1) = m.HighBound1() == 1 ? m(1, j) : m(2, j) + (isSum ? m(1, j) : -m(1, j));
    return x;
}

f64 DistanceOfMeans() {
    const Array2<f64> x = MeanDifference();
    const Array2<f64> s = EnteredCovariance();
    if (!current.OfContrasts)
        return SquaredDistance(x, s);
    const i16 k = static_cast<i16>(s.HighBound1());
    Array2<f64> c;
    OrthoPolyContrasts(k, c);
    Array2<f64> contrasts;
    MatMultMat(c, x, contrasts);
    return SquaredDistance(contrasts, ContrastCovariance(s, k));
}

// --- The grids ----------------------------------------------------------------------------------

// The groups of the layout, 1 where there is one.
std::optional<i16> Rows() {
    switch (current.Rows) {
    case MeanRows::One:
        return i16{1};
    case MeanRows::LevelsOfFactor:
        return GridLines(current.Groups, 2, current.MaxGroups);
    default:
        return i16{2};
    }
}

std::string RowHeads(const std::string& ofOne) {
    switch (current.Rows) {
    case MeanRows::One:
        return ofOne;
    case MeanRows::Hypotheses:
        return "H0: Mean,H1: Mean";
    case MeanRows::TwoGroups:
        return "Group 1,Group 2";
    default:
        return GroupHead;
    }
}

Grid MeanGrid(i16 rows, i16 columns) {
    return {.Store = MeanStore,
            .Rows = rows,
            .Columns = columns,
            .Title = current.Rows == MeanRows::LevelsOfFactor ? "Mean Matrix, AxB" : "Mean",
            .RowHeads = RowHeads(" Mean"),
            .ColumnHeads = LevelHead,
            .Start = current.Rows == MeanRows::Hypotheses ? "0" : ""};
}

// A difference of two groups has the same coefficients in both.
Grid CoefficientGrid(i16 rows, i16 columns) {
    const bool ofFactor = current.Rows == MeanRows::LevelsOfFactor;
    return {.Store = CoefficientStore,
            .Rows = ofFactor ? rows : i16{1},
            .Columns = columns,
            .Title = "Linear Comb.",
            .RowHeads = ofFactor ? RowHeads("") : "Linear Comb.",
            .ColumnHeads = LevelHead};
}

Grid MatrixGrid(i16 store, i16 k, const std::string& title, GridCheck check) {
    return {.Store = store,
            .Rows = k,
            .Columns = k,
            .Title = title,
            .RowHeads = LevelHead,
            .ColumnHeads = LevelHead,
            .Check = std::move(check),
            .Symmetric = true,
            .Diagonal = store == CorrelationStore ? "1" : ""};
}

std::vector<Grid> CovarianceGrids(i16 k) {
    if (EntersCovariances())
        return {MatrixGrid(CovarianceStore, k, "Covariance Matrix", CovarianceMatrix())};
    return {MatrixGrid(CorrelationStore, k, "Correlation Matrix", CorrelationMatrix()),
            {.Store = SdStore,
             .Rows = k,
             .Columns = 1,
             .Title = "Standard Deviation",
             .RowHeads = LevelHead,
             .ColumnHeads = "Standard Deviation",
             .Check = DeviationCells()}};
}

bool IsErrorKind(i16 kind) {
    return kind == Kind::WithinError || kind == Kind::Epsilon || kind == Kind::EpsilonBias ||
           kind == Kind::BetweenError;
}

bool IsCombinationPar(i16 parNo) {
    return current.CombinationSd != 0 &&
           (parNo == current.CombinationSd || parNo == current.Hypothesis.TruthParNo());
}

bool IsEffectPar(i16 parNo) {
    return parNo == current.Hypothesis.TruthParNo() && !IsCombinationPar(parNo) &&
           ParKind(parNo) != Kind::MahalanobisDistance;
}

std::vector<Grid> CombinationGrids(i16 rows, i16 columns) {
    std::vector<Grid> grids{CoefficientGrid(rows, columns), MeanGrid(rows, columns)};
    if (current.Errors.HasCorrelation())
        return current.Errors.HasValues() ? grids : std::vector<Grid>{};
    for (Grid& grid : CovarianceGrids(columns))
        grids.push_back(std::move(grid));
    return grids;
}

std::vector<Grid> DistanceGrids(i16 rows, i16 columns) {
    std::vector<Grid> grids{MeanGrid(rows, columns)};
    for (Grid& grid : CovarianceGrids(columns))
        grids.push_back(std::move(grid));
    return grids;
}

f64 ErrorOf(i16 kind) {
    const Array2<f64> s = EnteredCovariance();
    if (kind == Kind::WithinError)
        return f64{RepErrorTerm(s)};
    if (kind == Kind::BetweenError)
        return f64{RepBetweenErrorTerm(s)};
    f32 eps = Single(NoValue);
    f32 bias = Single(NoValue);
    RepEpsilon(s, static_cast<i16>(s.HighBound1()), eps, bias);
    return f64{kind == Kind::Epsilon ? eps : bias};
}

} // namespace

TestedFactor Tested() {
    return static_cast<TestedFactor>(ChosenOption(Group::TestedBetweenOrWithin));
}

bool IsLinearCombination() {
    return Ticked(Check::LinearCombination);
}

// --- ErrorList ----------------------------------------------------------------------------------

CorrelationStructure ErrorList::Structure() {
    return static_cast<CorrelationStructure>(ChosenOption(Group::CorrelationMatrix));
}

void ErrorList::Add(bool between) {
    if (Structure() != CorrelationStructure::General) {
        sd_ = AddPar(Kind::Sd);
        correlation_ = AddPar(Kind::Correlation);
    } else if (between) {
        between_ = AddPar(Kind::BetweenError);
    } else {
        within_ = AddPar(Kind::WithinError);
        AddPar(Kind::Epsilon);
        AddPar(Kind::EpsilonBias);
    }
}

void ErrorList::AddOfCombination() {
    if (Structure() == CorrelationStructure::CompoundSymmetry)
        Add(false);
}

bool ErrorList::Check(i16 levels) const {
    if (!HasCorrelation() || Structure() != CorrelationStructure::CompoundSymmetry ||
        UnknownParNo == correlation_ || UnknownParNo == levels)
        return true;
    return CheckRange(correlation_,
                      MaxOf(ParMin(Kind::Correlation), SmallestCorrelation(ParValue(levels))),
                      ParMax(Kind::Correlation));
}

void ErrorList::Narrow(f64& lower, f64& upper, i16 levels) const {
    if (!HasCorrelation() || Structure() != CorrelationStructure::CompoundSymmetry)
        return;
    if (UnknownParNo == correlation_)
        lower = MaxOf(lower, SmallestCorrelation(ParValue(levels)));
    if (UnknownParNo == levels)
        upper = MinOf(upper, MostLevels(ParValue(correlation_)));
}

ErrorTerms ErrorList::At(f32 k) const {
    if (HasCorrelation())
        return ErrorTermsOf(Structure(), k, Sd(), Correlation());
    ErrorTerms errors;
    if (between_ != 0) {
        errors.Between = Single(ParValue(between_));
        return errors;
    }
    errors.Within = Single(ParValue(within_));
    errors.Eps = Single(ParValue(within_ + 1));
    errors.Bias = Single(ParValue(within_ + 2));
    return errors;
}

bool ErrorList::HasValues() const {
    return HasGridValue(sd_, ParMin(Kind::Sd), ParMax(Kind::Sd)) &&
           HasGridValue(correlation_, ParMin(Kind::Correlation), ParMax(Kind::Correlation));
}

bool ErrorList::HasUnknown() const {
    return HasCorrelation() && (UnknownParNo == sd_ || UnknownParNo == correlation_);
}

f32 ErrorList::Sd() const {
    return Single(ParValue(sd_));
}

f32 ErrorList::Correlation() const {
    return Single(ParValue(correlation_));
}

// --- RepeatedTest -------------------------------------------------------------------------------

bool RepeatedTest::IsTablePar(i16 parNo) {
    return parNo >= 0 && parNo <= NoOfPar &&
           (IsCombinationPar(parNo) || parNo == current.Hypothesis.TruthParNo() ||
            IsErrorKind(ParKind(parNo)));
}

std::vector<Grid> RepeatedTest::TableGrids(i16 parNo) {
    if (IsEffectPar(parNo))
        return MeansGrids(MeansOfEffect());
    const auto rows = Rows();
    const auto columns = rows ? GridLines(current.Levels) : std::nullopt;
    if (!columns)
        return {};
    if (IsCombinationPar(parNo))
        return CombinationGrids(*rows, *columns);
    return IsErrorKind(ParKind(parNo)) ? CovarianceGrids(*columns) : DistanceGrids(*rows, *columns);
}

f32 RepeatedTest::CalcTablePar(i16 parNo) {
    const i16 kind = ParKind(parNo);
    if (IsErrorKind(kind))
        return Single(ErrorOf(kind));
    if (kind == Kind::MahalanobisDistance)
        return Single(DistanceOfMeans());
    if (IsEffectPar(parNo))
        return Single(EffectFromGrids(MeansOfEffect(), current.Type));
    return Single(kind == Kind::ContrastMean ? CombinationMean() : CombinationSd());
}

void RepeatedTest::Offer(i16 samples) {
    FixSamples(samples);
    OfferChecks({Check::LinearCombination, Check::CovarianceMatrix});
    if (IsLinearCombination())
        OfferTails({OneSided, TwoSided, TwoOneSided});
    else
        OfferTails({TwoSided});
}

void RepeatedTest::OfferCorrelationMatrix() {
    OfferGroups({Group::CorrelationMatrix});
    if (IsLinearCombination())
        DisableOption(Group::CorrelationMatrix, AutoCorrelationOption);
}

void RepeatedTest::StartWithEffect() {
    StartTestList();
    current = {};
    current.Type = static_cast<AnovaEffectType>(ChosenOption(Group::EffectSize));
    current.Hypothesis = AddHypotheses(TypeKinds[static_cast<int>(current.Type)]);
}

void RepeatedTest::StartWithDistance(bool ofContrasts) {
    StartTestList();
    current = {};
    current.OfContrasts = ofContrasts;
    current.Hypothesis = AddHypotheses(DistanceKinds);
}

void RepeatedTest::StartWithCombination() {
    StartTestList();
    current = {};
    current.Hypothesis = AddHypotheses(CombinationKinds);
    current.CombinationSd = AddPar(Kind::ContrastSd);
}

void RepeatedTest::AddLevels() {
    current.Levels = AddPar(Kind::WithinLevels);
}

void RepeatedTest::AddGroups(MeanRows rows) {
    current.Groups = AddPar(Kind::LevelsA);
    current.Rows = rows;
}

RepeatedList& RepeatedTest::List() {
    return current;
}

bool RepeatedTest::CheckList() {
    return current.Hypothesis.Check() && current.Errors.Check(current.Levels);
}

void RepeatedTest::NarrowList(f64& lower, f64& upper, f64 (*residual)()) {
    current.Hypothesis.Narrow(lower, upper);
    if (IsLinearCombination() && (current.Errors.HasUnknown() || UnknownParNo == current.Levels)) {
        upper = lower;
        return;
    }
    current.Errors.Narrow(lower, upper, current.Levels);
    if (IsLayoutKind(ParKind(UnknownParNo)) && lower < upper)
        StartAtHighestPower(lower, upper, residual);
}

f32 RepeatedTest::Effect() {
    return Single(current.Hypothesis.Truth());
}

f32 RepeatedTest::Groups() {
    return Single(ParValue(current.Groups));
}

f32 RepeatedTest::Levels() {
    return Single(ParValue(current.Levels));
}

f64 RepeatedTest::CombinationEq(f64 perMean, f32 df) {
    const Hypotheses& limits = current.Hypothesis;
    const f32 sd = Single(ParValue(current.CombinationSd));
    if (NoOfTails != TwoOneSided)
        return RepContrastPower(perMean, df, Effect(), sd, 0, 0);
    const f64 mean{Effect()};
    return RepContrastPower(perMean, df, Effect(), sd, Single(mean - f64{limits.Left()}),
                            Single(f64{limits.Right()} - mean));
}

} // namespace quorvanta
