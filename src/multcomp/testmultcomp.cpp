#include "multcomp/testmultcomp.h" // IWYU pragma: associated

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/gridchecks.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/records.h"
#include "montecarlo/simstudy.h"
#include "multcomp/family.h"
#include "multcomp/mccritical.h"
#include "multcomp/normalmodel.h"
#include "multcomp/procedures.h"
#include "numeric/randdist.h"
#include "numeric/rnd.h"
#include "numeric/rounding.h"
#include "output/format.h"
#include "tests/lists/anovagrids.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

// Stores, beside those of the means and the covariances.
constexpr i16 combinationStore = 5;
constexpr i16 familyStore = 6;
constexpr i16 methodStore = 7;
constexpr i16 weightStore = 8;

i16 sdOfMeans;
i16 levels;       // position of the number of groups, or components
i16 combinations; // of the number of linear combinations; 0: there is none
i16 deviation;    // of the standard deviation of groups
NormalModel model;
SampleValues sizes;

bool HasControl() {
    return MultCompKind() == Comparison::ControlTest;
}

bool IsLinear() {
    return MultCompKind() == Comparison::LinearTest ||
           MultCompKind() == Comparison::NormalLinearTest;
}

// --- Families -----------------------------------------------------------------------------------

void ReadChoices() {
    PowerKind = ChosenOption(Group::PowerDefinition);
    SerialGate = Ticked(Check::SerialGatekeeping) ? 1 : 0;
    ParallelGate = Ticked(Check::ParallelGatekeeping) ? 1 : 0;
}

// How many hypotheses there are; false after a message.
bool CountTests(i16 k) {
    if (!McStandardContrasts(k))
        return false;
    if (!IsLinear())
        return true;
    const auto number = GridLines(combinations, ToI16(ParMin(Kind::LinearCombinations)),
                                  ToI16(ParMax(Kind::LinearCombinations)));
    NoOfTests = number.value_or(NoOfTests);
    return number.has_value();
}

// One family where there are no gates, else those of the grid: by analysis and test.
std::vector<std::vector<i16>> FamilyNumbers() {
    std::vector<std::vector<i16>> numbers;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        numbers.emplace_back();
        for (i16 test = 1; test <= NoOfTests; ++test)
            numbers.back().push_back(GateCount() == 0 ? i16{1}
                                                      : ToI16(GridFigure(familyStore, test, k)));
    }
    return numbers;
}

// An analysis and a family in it.
struct AtFamily {
    i16 Analysis;
    i16 Family;
};

// All of them, in the order of the columns of grids.
std::vector<AtFamily> AllFamilies() {
    std::vector<AtFamily> all;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k)
        for (i16 f = 1; f <= NoOfFamilies(k); ++f)
            all.push_back({k, f});
    return all;
}

// The families with the methods of the grid, which gates have, and the weights of theirs.
bool SetUpFamilies(const std::vector<f32>& ofAnalyses) {
    if (!McSetUpFamilies(FamilyNumbers(), ofAnalyses, AdjustMethod))
        return false;
    if (GateCount() == 0)
        return true;
    i16 column = 0;
    for (const AtFamily& at : AllFamilies())
        FamilyMethod(at.Family, at.Analysis) = ToI16(GridFigure(methodStore, 1, ++column));
    return true;
}

std::vector<AtFamily> WeightedFamilies() {
    std::vector<AtFamily> weighted = AllFamilies();
    std::erase_if(weighted, [](const AtFamily& at) {
        return FamilyMethod(at.Family, at.Analysis) != Adjust::Weighted;
    });
    return weighted;
}

// Its position in the family; 0: it is not one of it.
i16 PositionIn(const AtFamily& at, i16 test) {
    for (i16 t = 1; t <= FamilySize(at.Family, at.Analysis); ++t)
        if (FamilyTest(t)(at.Family, at.Analysis) == test)
            return t;
    return 0;
}

void ReadWeights() {
    i16 column = 0;
    for (const AtFamily& at : WeightedFamilies()) {
        ++column;
        for (i16 t = 1; t <= FamilySize(at.Family, at.Analysis); ++t)
            FamilyWeight(t)(at.Family, at.Analysis) =
                Single(GridFigure(weightStore, FamilyTest(t)(at.Family, at.Analysis), column));
    }
}

// --- Grids --------------------------------------------------------------------------------------

// The first group is the control, where there is one.
std::string HeadsOf(i16 k) {
    const i16 kind = MultCompKind();
    if (kind != Comparison::ControlTest && kind != Comparison::NormalControlTest)
        return IsMultivariate() ? "Dimension" : "Factor A";
    std::string heads = "Control";
    for (i16 group = 2; group <= k; ++group)
        heads += ",Factor A " + std::to_string(group);
    return heads;
}

std::string AnalysisHead(i16 k) {
    return k == NoOfAnalyses() ? "Final" : "Interim No " + std::to_string(k);
}

std::string FamilyHead(const AtFamily& at, const std::string& behind) {
    return AnalysisHead(at.Analysis) + ". Family No " + std::to_string(at.Family) + "/" + behind;
}

std::string Listed(const std::vector<std::string>& heads) {
    std::string list;
    for (const std::string& head : heads)
        list += (list.empty() ? "" : ",") + head;
    return list;
}

bool Refuse(const std::string& message) {
    ShowMessage(message);
    return false;
}

// A combination of nothing has no variance.
bool HasCoefficients(const GridCells& cells, i16 row, i16 /*column*/, Leaving leaving) {
    if (leaving != Leaving::Grid && !(leaving == Leaving::Row && cells.HasRow(row)))
        return true;
    for (i16 column = 1; column <= cells.Columns(); ++column)
        if (cells.Value(row, column) != 0)
            return true;
    return Refuse("Coefficients in Row " + std::to_string(row) + " Must Not All Be 0.");
}

Grid CombinationGrid(i16 k) {
    return {.Store = combinationStore,
            .Rows = NoOfTests,
            .Columns = k,
            .Title = "Linear Combinations",
            .RowHeads = "Linear Comb.",
            .ColumnHeads = HeadsOf(k),
            .Check = HasCoefficients};
}

bool IsLastCell(const GridCells& cells, i16 row, i16 column, Leaving leaving) {
    return leaving == Leaving::Grid && row == cells.Rows() && column == cells.Columns();
}

bool HaveRoom(const GridCells& cells, i16 row, i16 column, Leaving leaving) {
    if (!IsLastCell(cells, row, column, leaving))
        return true;
    std::vector<std::vector<i16>> numbers(static_cast<std::size_t>(cells.Columns()));
    for (i16 k = 1; k <= cells.Columns(); ++k)
        for (i16 test = 1; test <= cells.Rows(); ++test)
            numbers[static_cast<std::size_t>(k - 1)].push_back(ToI16(f64{cells.Value(test, k)}));
    return McHaveRoom(numbers);
}

bool IsMethodNumber(const GridCells& cells, i16 row, i16 column, Leaving /*leaving*/) {
    const f32 x = cells.Value(row, column);
    return (x == std::floor(x) && x >= Adjust::Weighted && x <= Adjust::Hochberg) ||
           Refuse("Methods Must Be Integers between 0 and 6.");
}

bool ShareALevel(const GridCells& cells, i16 row, i16 column, Leaving leaving) {
    if (leaving != Leaving::Grid || row != cells.Rows())
        return true;
    f64 sum = 0;
    for (i16 i = 1; i <= cells.Rows(); ++i)
        sum += f64{cells.Value(i, column)};
    return sum <= 1 + SumTolerance ||
           Refuse("Sum of Weights in Column " + std::to_string(column) + " Must Not Exceed 1.");
}

// The weights of the tests in the families that have weights.
std::vector<Grid> WeightGrids() {
    const std::vector<f32> noLevels(static_cast<std::size_t>(NoOfAnalyses()), 0.0F);
    if (!SetUpFamilies(noLevels))
        return {};
    const std::vector<AtFamily> families = WeightedFamilies();
    if (families.empty())
        return {};
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> starts; // by column and row; empty outside of the family
    for (const AtFamily& at : families) {
        heads.push_back(FamilyHead(at, AdjustMethodName(Adjust::Weighted)));
        const std::string equal =
            Format(1.0 / f64{static_cast<f32>(FamilySize(at.Family, at.Analysis))}, "0.######");
        starts.emplace_back();
        for (i16 test = 1; test <= NoOfTests; ++test)
            starts.back().push_back(PositionIn(at, test) == 0 ? "" : equal);
    }
    const auto startOf = [starts](i16 test, i16 column) {
        return starts.at(static_cast<std::size_t>(column - 1))
            .at(static_cast<std::size_t>(test - 1));
    };
    return {{.Store = weightStore,
             .Rows = NoOfTests,
             .Columns = static_cast<i16>(families.size()),
             .Title = "Weight",
             .RowHeads = "Test No",
             .ColumnHeads = Listed(heads),
             .Check = AllOf({NonNegativeCells("Weight"), ShareALevel}),
             .StartOf = startOf,
             .Fixed = [startOf](i16 test, i16 column) {
                 return startOf(test, column).empty() ? std::string("0") : std::string();
             }}};
}

bool HasWeights(const GridCells& methods) {
    for (i16 column = 1; column <= methods.Columns(); ++column)
        if (methods.Has(1, column) && methods.Value(1, column) == Adjust::Weighted)
            return true;
    return false;
}

// The method of each family.
std::vector<Grid> MethodGrids() {
    const std::vector<f32> noLevels(static_cast<std::size_t>(NoOfAnalyses()), 0.0F);
    if (!McSetUpFamilies(FamilyNumbers(), noLevels, AdjustMethod))
        return {};
    std::vector<std::string> heads;
    for (const AtFamily& at : AllFamilies())
        heads.push_back(FamilyHead(at, "Method"));
    std::string names;
    for (i16 method = Adjust::Weighted; method <= Adjust::Hochberg; ++method)
        names += (method == Adjust::Weighted ? " " : ", ") + std::to_string(method) + " " +
                 AdjustMethodName(method);
    return {{.Store = methodStore,
             .Rows = 1,
             .Columns = static_cast<i16>(heads.size()),
             .Title = "Method of Each Family:" + names,
             .RowHeads = "Method",
             .ColumnHeads = Listed(heads),
             .Check = IsMethodNumber,
             .Start = std::to_string(AdjustMethod),
             .Next = WeightGrids,
             .HasNext = HasWeights}};
}

Grid FamilyGrid() {
    std::vector<std::string> heads;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k)
        heads.push_back(AnalysisHead(k));
    return {.Store = familyStore,
            .Rows = NoOfTests,
            .Columns = NoOfAnalyses(),
            .Title = "Family No for Each Test",
            .RowHeads = "Test No",
            .ColumnHeads = Listed(heads),
            .Check = AllOf({IntegerCells(MostFamilies), HaveRoom}),
            .Start = "1",
            .Next = MethodGrids};
}

TestedMeans Means(i16 k) {
    return {.Levels = levels, .Head = HeadsOf(k)};
}

// All that the choices need; none, after a message, where that can't be known.
std::vector<Grid> AllGrids() {
    ReadChoices();
    const auto k = GridLines(levels);
    if (!k || !CountTests(*k))
        return {};
    std::vector<Grid> grids = MeansGrids(Means(*k));
    if (IsLinear())
        grids.push_back(CombinationGrid(*k));
    if (IsMultivariate())
        for (const Grid& grid : NormalModel::Grids(*k, HeadsOf(*k)))
            grids.push_back(grid);
    if (GateCount() > 0)
        grids.push_back(FamilyGrid());
    else if (AdjustMethod == Adjust::Weighted)
        for (const Grid& grid : WeightGrids())
            grids.push_back(grid);
    return grids;
}

bool AreFilled(const std::vector<Grid>& grids) {
    return std::ranges::all_of(grids, [](const Grid& grid) {
        return IsFilled(grid) && (!grid.Next || AreFilled(grid.Next()));
    });
}

// False after a message, or where the user cancels.
bool HaveGrids() {
    const std::vector<Grid> grids = AllGrids();
    if (grids.empty())
        return false;
    if (HasGridData == True && AreFilled(grids))
        return true;
    if (!ShowGrids(grids, ParLabel(Kind::SdOfMeans)))
        return false;
    const f32 sd = TESTMULTCOMP::CalcTablePar(sdOfMeans);
    ParText(Kind::SdOfMeans) = Format(DecimalOf(sd), "#####0.0#####");
    ParValue(sdOfMeans) = ReadNumber(ParText(Kind::SdOfMeans));
    return true;
}

// --- The true state -----------------------------------------------------------------------------

using Vector = std::vector<f64>;

Vector trueMeans; // under H1
Vector nullMeans; // in the data sets under H0
bool isTruthOpen; // hypotheses are still to be made true, by the numbers of the run

Vector CoefficientsOf(i16 test) {
    Vector c;
    for (i16 i = 1; i <= NoOfMeans; ++i)
        c.push_back(f64{Contrast(i, test)});
    return c;
}

f64 Product(const Vector& a, const Vector& b) {
    f64 sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

void TakeOff(Vector& from, const Vector& unit) {
    const f64 share = Product(from, unit);
    for (std::size_t i = 0; i < from.size(); ++i)
        from[i] -= share * unit[i];
}

// The means nearest to these for which the hypotheses hold: their projection (E. Schmidt,
// Mathematische Annalen 63, 1907, 433-476).
Vector WithTrue(Vector means, const std::vector<i16>& tests) {
    constexpr f64 nothing = 1e-9;
    const f64 length = std::sqrt(Product(means, means));
    std::vector<Vector> units;
    for (const i16 test : tests) {
        Vector c = CoefficientsOf(test);
        const f64 whole = std::sqrt(Product(c, c));
        for (int pass = 0; pass < 2; ++pass) // once more for what rounding left
            for (const Vector& unit : units)
                TakeOff(c, unit);
        const f64 left = std::sqrt(Product(c, c));
        if (left <= nothing * whole)
            continue; // it follows from those before
        for (f64& x : c)
            x /= left;
        units.push_back(std::move(c));
    }
    for (const Vector& unit : units)
        TakeOff(means, unit);
    for (f64& mean : means)
        if (std::fabs(mean) <= nothing * length)
            mean = 0;
    return means;
}

void MarkNulls() {
    for (i16 i = 1; i <= NoOfMeans; ++i)
        H1Means(i) = Single(trueMeans[static_cast<std::size_t>(i - 1)]);
    McMarkNulls();
    std::vector<i16> all;
    for (i16 test = 1; test <= NoOfTests; ++test)
        all.push_back(test);
    nullMeans = NoOfFalseNull == NoOfTests ? WithTrue(trueMeans, all) : trueMeans;
}

void MakeSomeTrue() {
    std::vector<i16> holding;
    for (i16 test = 1; test <= NoOfTests; ++test)
        if (TrueNull(test) || Rnd() < 0.5F)
            holding.push_back(test);
    trueMeans = WithTrue(trueMeans, holding);
    MarkNulls();
    isTruthOpen = false;
}

// --- What is drawn ------------------------------------------------------------------------------

// Groups in units of the standard deviation, vectors as L times standard normal ones: what is drawn
// has mean 0, and the true means are added to the estimates only.
using Row = std::array<f64, MostGroups>;
using Square = std::array<Row, MostGroups>;

i16 count;         // of groups or components
Vector sumsSoFar;  // of the draws, by group or component
Vector sizesSoFar; // of the groups
f64 squaresSoFar;  // of all draws of groups
Square crossSoFar; // sums of cross products of vectors
i16 modeNow;       // UnderH0 or UnderH1
Array2<f64> covariance;
Array2<f64> factor; // L
Array1<f32> z;
std::vector<f32> dfs; // by analysis

std::size_t At(i16 i) {
    return static_cast<std::size_t>(i - 1);
}

f64 DrawChi2(f64 df) {
    RandSample.ReDim(0, 1);
    RandChi2(Single(df));
    return f64{RandSample(1)};
}

i16 SizeOfGroup(i16 group, i16 n1, i16 n2) {
    return group == 1 || !HasControl() ? n1 : n2;
}

// The sum of a normal sample and its squares about the mean are independent.
void DrawGroups(i16 n1, i16 n2) {
    RandSample.ReDim(0, count);
    RandNormal();
    f64 df = 0;
    for (i16 i = 1; i <= count; ++i) {
        const f64 n = SizeOfGroup(i, n1, n2);
        if (n < 1)
            continue;
        const f64 x{RandSample(i)};
        sumsSoFar[At(i)] += std::sqrt(n) * x;
        sizesSoFar[At(i)] += n;
        squaresSoFar += x * x;
        df += n - 1;
    }
    if (df > 0)
        squaresSoFar += DrawChi2(df);
}

// The triangular factor of the cross products of n standard normal vectors about their mean: M. S.
// Bartlett, Proceedings of the Royal Society of Edinburgh 53, 1933, 260-283. With fewer vectors
// than components it has fewer columns.
i16 DrawFactor(i16 n, const std::span<const f32>& normals, Square& triangle) {
    const i16 columns = MinInteger(count, static_cast<i16>(n - 1));
    std::size_t next = 0;
    for (i16 j = 1; j <= columns; ++j)
        for (i16 i = static_cast<i16>(j + 1); i <= count; ++i)
            triangle[At(i)][At(j)] = f64{normals[next++]};
    for (i16 j = 1; j <= columns; ++j)
        triangle[At(j)][At(j)] = std::sqrt(DrawChi2(n - j));
    return columns;
}

void DrawVectors(i16 n) {
    if (n < 1)
        return;
    const i16 below = KnownVariance ? i16{0} : static_cast<i16>(count * (count - 1) / 2);
    RandSample.ReDim(0, count + below);
    RandNormal();
    std::array<f32, MostGroups*(MostGroups + 1) / 2> normals{};
    std::ranges::copy(RandSample.Raw().subspan(1), normals.begin());
    const auto own = std::span<const f32>(normals);
    for (i16 i = 1; i <= count; ++i)
        sumsSoFar[At(i)] += std::sqrt(f64{static_cast<f32>(n)}) * f64{own[At(i)]};
    if (KnownVariance)
        return;
    Square triangle;
    const i16 columns = DrawFactor(n, own.subspan(static_cast<std::size_t>(count)), triangle);
    for (i16 i = 1; i <= count; ++i)
        for (i16 j = 1; j <= i; ++j) {
            f64 product = f64{own[At(i)]} * f64{own[At(j)]};
            for (i16 l = 1; l <= MinInteger(j, columns); ++l)
                product += triangle[At(i)][At(l)] * triangle[At(j)][At(l)];
            crossSoFar[At(i)][At(j)] += product;
        }
}

const Vector& MeansNow() {
    return modeNow == UnderH1 ? trueMeans : nullMeans;
}

void GroupStatistics() {
    static Vector means; // keeps its memory between replicates
    means = MeansNow();
    f64 within = squaresSoFar;
    for (std::size_t i = 0; i < means.size(); ++i) {
        means[i] += sumsSoFar[i] / sizesSoFar[i];
        within -= sumsSoFar[i] * sumsSoFar[i] / sizesSoFar[i];
    }
    McGroupStatistics(means, sizesSoFar, MaxOf(within, 0), z);
}

// L M L' for a symmetric M of which the lower half is given.
void Estimate(const Square& m, Array2<f64>& estimate) {
    Square left;
    for (i16 i = 1; i <= count; ++i)
        for (i16 j = 1; j <= count; ++j) {
            f64 sum = 0;
            for (i16 l = 1; l <= i; ++l)
                sum += factor(i, l) * (l >= j ? m[At(l)][At(j)] : m[At(j)][At(l)]);
            left[At(i)][At(j)] = sum;
        }
    for (i16 i = 1; i <= count; ++i)
        for (i16 j = 1; j <= i; ++j) {
            f64 sum = 0;
            for (i16 l = 1; l <= j; ++l)
                sum += left[At(i)][At(l)] * factor(j, l);
            estimate(i, j) = sum;
            estimate(j, i) = sum;
        }
}

void VectorStatistics(i16 n) {
    static Vector means; // both keep their memory between replicates
    static Array2<f64> estimate;
    means = MeansNow();
    const f64 subjects = n;
    for (i16 i = 1; i <= count; ++i)
        for (i16 j = 1; j <= i; ++j)
            means[At(i)] += factor(i, j) * sumsSoFar[At(j)] / subjects;
    if (KnownVariance)
        return McVectorStatistics(means, covariance, subjects, z);
    Square m;
    for (i16 i = 1; i <= count; ++i)
        for (i16 j = 1; j <= i; ++j)
            m[At(i)][At(j)] =
                (crossSoFar[At(i)][At(j)] - sumsSoFar[At(i)] * sumsSoFar[At(j)] / subjects) /
                (subjects - 1);
    if (estimate.HighBound1() != count)
        estimate.ReDim(1, count, 1, count);
    Estimate(m, estimate);
    McVectorStatistics(means, estimate, subjects, z);
}

// --- The set-up ---------------------------------------------------------------------------------

void ReadMeans(i16 k) {
    trueMeans = FiguresOfMeans(k)->Means;
    if (!IsMultivariate())
        for (f64& mean : trueMeans)
            mean /= ParValue(deviation);
}

void ReadCombinations() {
    for (i16 test = 1; test <= NoOfTests; ++test)
        for (i16 i = 1; i <= NoOfMeans; ++i)
            Contrast(i, test) = Single(GridFigure(combinationStore, test, i));
}

// The degrees of freedom of each analysis, at least 1.
void FindDfs() {
    dfs.clear();
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        const f64 n1 = SimSize1(k);
        const f64 others = SizeOfGroup(2, SimSize1(k), SimSize2(k));
        const f64 df = IsMultivariate() ? n1 - 1 : n1 + (count - 1) * others - count;
        dfs.push_back(Single(MaxOf(df, 1)));
    }
}

bool HaveAllCrit() {
    McAllCrit(dfs);
    for (const AtFamily& at : AllFamilies())
        for (i16 t = 1; t <= FamilySize(at.Family, at.Analysis); ++t)
            if (TestCrit(t)(at.Family, at.Analysis) == NoQuantile)
                return Refuse("Critical Values Can't Be Calculated.");
    return true;
}

// Messages say what is missing; false also where the user cancels.
bool SetUp() {
    ReadChoices();
    if (!McCheckPowerKind(static_cast<i16>(NoOfAnalyses() - 1)) || !HaveGrids())
        return false;
    count = NoOfMeans;
    if (IsLinear())
        ReadCombinations();
    std::vector<f32> ofAnalyses;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k)
        ofAnalyses.push_back(RejectP(k));
    if (!SetUpFamilies(ofAnalyses))
        return false;
    ReadWeights();
    KnownVariance = IsMultivariate() && Ticked(Check::CovarianceMatrix);
    SizeRatio = HasControl() ? Single(f64{sizes.Second()} / f64{sizes.First()}) : 1.0F;
    if (IsMultivariate()) {
        covariance = model.Covariance(count).value();
        if (!McCholesky(covariance, factor))
            return Refuse("Invalid Covariance Matrix.");
    }
    FindDfs();
    return HaveAllCrit();
}

} // namespace

void TESTMULTCOMP::SetupTest() {
    FixMethod();
    FixSamples(MoreSamples);
    SamplesShown = false;
    OfferTails({OneSided, TwoSided});
    OfferChecks({Check::RandomTrueH0, Check::SerialGatekeeping, Check::ParallelGatekeeping});
    OfferGroups({Group::PowerDefinition});
    if (IsMultivariate()) {
        OfferChecks({Check::CovarianceMatrix});
        NormalModel::Offer();
    }
    if (HasControl())
        OfferGroups({Group::SizeK});
}

void TESTMULTCOMP::SetParList() {
    StartTestList();
    sdOfMeans = AddPar(Kind::SdOfMeans);
    const auto addCombinations = [] {
        combinations = IsLinear() ? AddPar(Kind::LinearCombinations) : i16{0};
    };
    if (IsMultivariate()) {
        model.Add();
        addCombinations();
        levels = AddPar(Kind::NormalDimension);
        AddPar(Kind::VectorSize);
        return;
    }
    deviation = AddPar(Kind::Sd);
    levels = AddPar(Kind::LevelsA);
    addCombinations();
    sizes = SampleValues();
    if (HasControl())
        sizes = AddPair(GroupSizeKinds);
    else
        AddPar(Kind::SizePerGroup);
}

bool TESTMULTCOMP::CheckPar() {
    if (IsMultivariate())
        return model.Check(levels);
    return !HasControl() || sizes.Check();
}

bool TESTMULTCOMP::IsTablePar(i16 parNo) {
    return parNo == sdOfMeans;
}

std::vector<Grid> TESTMULTCOMP::TableGrids(i16 /*parNo*/) {
    return AllGrids();
}

f32 TESTMULTCOMP::CalcTablePar(i16 /*parNo*/) {
    return Single(EffectFromGrids({.Levels = levels, .Head = {}}, AnovaEffectType::SdOfMeans));
}

std::string McProcedure() {
    const bool isSerial = Ticked(Check::SerialGatekeeping);
    if (!isSerial && !Ticked(Check::ParallelGatekeeping))
        return AdjustMethodName(AdjustMethod);
    const std::string gate = std::string(isSerial ? "serial" : "parallel") + " gatekeeping";
    const Array2<f32>& methods = GridData(methodStore);
    if (HasGridData == False || methods.HighBound1() != 1)
        return gate;
    std::vector<std::string> ofFamilies;
    for (i16 column = 1; column <= methods.HighBound2(); ++column) {
        const std::string name = AdjustMethodName(ToI16(GridFigure(methodStore, 1, column)));
        // With several analyses the columns are families of each of them.
        const std::string text =
            NoOfAnalyses() > 1 ? name : name + " for family " + std::to_string(column);
        if (std::ranges::find(ofFamilies, text) == ofFamilies.end())
            ofFamilies.push_back(text);
    }
    std::string list;
    for (std::size_t i = 0; i < ofFamilies.size(); ++i)
        list += (i == 0 ? "" : i + 1 == ofFamilies.size() ? " and " : ", ") + ofFamilies[i];
    return gate + " with " + list;
}

std::string TESTMULTCOMP::Hypothesis(i16 row) {
    const bool isNull = row == 1;
    const std::string differs = NoOfTails != OneSided ? "different from"
                                : LeftTail == True    ? "below"
                                                      : "above";
    const std::string relation = isNull ? "equal to" : differs;
    switch (MultCompKind()) {
    case Comparison::ControlTest:
    case Comparison::NormalControlTest:
        return (isNull ? "each mean " : "some mean ") + relation + " that of the control";
    case Comparison::PairwiseTest:
    case Comparison::NormalPairwiseTest:
        if (isNull)
            return "all means equal";
        return NoOfTails != OneSided ? "some means different"
                                     : "the first mean of some pair " + differs + " the second";
    case Comparison::EachMeanTest:
    case Comparison::NormalEachMeanTest:
        return (isNull ? "each mean " : "some mean ") + relation + " 0";
    default:
        return (isNull ? "each linear combination " : "some linear combination ") + relation + " 0";
    }
}

void TESTMULTCOMP::GetSimPar() {
    if (!SetUp()) {
        Cancelled = True;
        return;
    }
    ReadMeans(count);
    MarkNulls();
    isTruthOpen = Ticked(Check::RandomTrueH0);
    McClearCounts();
    z.ReDim(1, NoOfTests);
}

void TESTMULTCOMP::SimSample(i16 n1, i16 n2, bool isH1) {
    if (isTruthOpen)
        MakeSomeTrue();
    if (SimStage == 1) {
        sumsSoFar.assign(At(count) + 1, 0.0);
        sizesSoFar.assign(At(count) + 1, 0.0);
        squaresSoFar = 0;
        crossSoFar = {};
    }
    modeNow = isH1 ? UnderH1 : UnderH0;
    if (IsMultivariate())
        DrawVectors(n1);
    else
        DrawGroups(n1, n2);
}

f32 TESTMULTCOMP::SimTest(i16 n1, i16 n2) {
    const i16 subjects = IsMultivariate() ? n1 : MinInteger(n1, SizeOfGroup(2, n1, n2));
    const bool hasError = IsMultivariate() ? KnownVariance || n1 > 1
                                           : n1 + (count - 1) * SizeOfGroup(2, n1, n2) > count;
    if (subjects < 1 || !hasError)
        return 1;
    if (IsMultivariate())
        VectorStatistics(n1);
    else
        GroupStatistics();
    const McDecision decision = McRunOne(z, SimStage, dfs.at(At(SimStage)), modeNow);
    SimStudy.Stop = ToFlag(decision.Stop);
    if (modeNow == UnderH0 || PowerKind != AveragePower)
        return modeNow == UnderH1 && NoOfFalseNull == 0 ? 0.0F : Single(decision.Result);
    if (NoOfFalseNull == 0)
        return -100;
    // Nothing rejected is no p-value of 0.
    return decision.Result < 0 ? Single(decision.Result) : 1.0F;
}

} // namespace quorvanta
