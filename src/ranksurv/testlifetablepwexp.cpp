#include "ranksurv/testlifetablepwexp.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "montecarlo/survivalsim.h"
#include "numeric/randdist.h"
#include "numeric/rounding.h"
#include "output/format.h"
#include "ranksurv/lifetable.h"
#include "tests/lists/hypotheses.h"
#include "tests/lists/turningpoint.h"

#include <cmath>
#include <string>

namespace quorvanta {

namespace {

constexpr i16 IntervalStore = 1;
enum Column : i16 { StartColumn = 1, HazardColumn = 2, LossColumn = 4, Columns = 5 };
constexpr const char* TableTitle = "Hazard and Loss Rates";
constexpr const char* TableHeads =
    "Interval Start,Hazard Rate 1,Hazard Rate 2,Loss Rate 1,Loss Rate 2";

i16 intervals;
LifeTableStudy study;

const Array2<f32>& Table() {
    return GridData(IntervalStore);
}

bool Refuse(const std::string& message) {
    ShowMessage(message);
    return false;
}

std::string HeadOf(i16 column) {
    return GridHeadOf(TableHeads, Columns, column);
}

// The first interval starts at 0, each other one after the one above it.
bool IsGoodStart(const GridCells& cells, i16 row) {
    const f32 start = cells.Value(row, StartColumn);
    if (row == 1)
        return start == 0 || Refuse("First Interval Start Must Be 0.");
    const i16 above = static_cast<i16>(row - 1);
    const f32 before = cells.Has(above, StartColumn) ? cells.Value(above, StartColumn) : 0;
    return start > before ||
           Refuse(HeadOf(StartColumn) + " Must Be > " + Str(DecimalOf(before)) + ".");
}

bool IsGoodCell(const GridCells& cells, i16 row, i16 column, Leaving) {
    if (column == StartColumn)
        return IsGoodStart(cells, row);
    const f32 rate = cells.Value(row, column);
    if (column >= LossColumn)
        return rate >= 0 || Refuse(HeadOf(column) + " Must Be >= 0.");
    return rate > 0 || Refuse(HeadOf(column) + " Must Be > 0.");
}

Grid TableOf(i16 rows) {
    return {.Store = IntervalStore,
            .Rows = rows,
            .Columns = Columns,
            .Title = TableTitle,
            .RowHeads = "Time Interval",
            .ColumnHeads = TableHeads,
            .Check = &IsGoodCell};
}

std::vector<f64> Starts() {
    std::vector<f64> starts;
    for (i16 row = 1; row <= Table().HighBound1(); ++row)
        starts.push_back(f64{Table()(row, StartColumn)});
    return starts;
}

// The chances of a group in the intervals that the study reaches.
std::vector<IntervalChances> ChancesOf(i16 group, const std::vector<f64>& bounds) {
    std::vector<IntervalChances> chances;
    for (std::size_t j = 1; j < bounds.size(); ++j) {
        const f64 length = bounds[j] - bounds[j - 1];
        const auto stays = [=](Column column) {
            const f64 rate{Table()(static_cast<i16>(j), static_cast<i16>(column + group - 1))};
            return ExpClamped(Single(-rate * length));
        };
        chances.push_back({1 - stays(HazardColumn), 1 - stays(LossColumn)});
    }
    return chances;
}

} // namespace

void TESTLIFETABLEPWEXP::SetupTest() {
    FixSamples(TwoSamples);
    OfferTails({OneSided, TwoSided});
    OfferForms(SizeKinds);
}

void TESTLIFETABLEPWEXP::SetParList() {
    StartTestList();
    intervals = AddPar(Kind::NoOfIntervals);
    study.Add(false);
}

// The number of intervals has to be that of the table, unless it is asked for.
bool TESTLIFETABLEPWEXP::CheckPar() {
    const i16 rows = UnknownParNo == intervals ? static_cast<i16>(Table().HighBound1())
                                               : ToI16(ParValue(intervals));
    if (HasGridData == False || !IsFilled(TableOf(rows)))
        return Refuse(std::string(TableTitle) + " Have No Values.");
    return study.Check();
}

void TESTLIFETABLEPWEXP::SearchLimits(f64& lower, f64& upper) {
    study.Narrow(lower, upper);
    if (study.HasTurningUnknown())
        KeepOneSideOfTurn(lower, upper, Side::Below, &RootFunction);
}

f64 TESTLIFETABLEPWEXP::RootFunction() {
    const std::vector<f64> bounds = study.Bounds(Starts());
    study.Prepare(bounds, [&bounds](i16 group) { return ChancesOf(group, bounds); });
    return study.PowerEq(false);
}

// H0 is that group 2 has the hazards of group 1. The last hazard goes on to the end of the study,
// which ends the last interval: what is drawn beyond is not seen.
void TESTLIFETABLEPWEXP::GetSimPar() {
    SurvivalPlan plan = PlanOfTest();
    plan.DistrNo = SimPiecewise;
    study.PrepareSimulation(plan);
    const int rows = Table().HighBound1();
    const auto column = [rows](Column of, f32 end) {
        Array1<f32> cells(1, rows + 1);
        for (i16 row = 1; row <= rows; ++row)
            cells(row) = Table()(row, of);
        cells(rows + 1) = end;
        return cells;
    };
    const f32 lastStart = Table()(static_cast<i16>(rows), StartColumn);
    plan.Table.Starts = column(StartColumn, MaxSingle(lastStart, plan.StudyTime));
    plan.Table.Null = plan.Table.Hazard1 = column(HazardColumn, 0);
    plan.Table.Hazard2 = column(static_cast<Column>(HazardColumn + 1), 0);
    plan.Table.Loss1 = column(LossColumn, 0);
    plan.Table.Loss2 = column(static_cast<Column>(LossColumn + 1), 0);
    plan.IntervalStarts = Starts();
    SimSurvival = plan;
}

void TESTLIFETABLEPWEXP::SimSample(i16 n1, i16 n2, bool isH1) {
    SimSurvivalSample(n1, n2, isH1);
}

f32 TESTLIFETABLEPWEXP::SimTest(i16 n1, i16 n2) {
    return SimSurvivalTest(n1, n2);
}

bool TESTLIFETABLEPWEXP::IsTablePar(i16 parNo) {
    return parNo == intervals;
}

std::vector<Grid> TESTLIFETABLEPWEXP::TableGrids(i16) {
    const auto rows = GridLines(intervals, 1);
    return rows ? std::vector<Grid>{TableOf(*rows)} : std::vector<Grid>{};
}

// The table is for the number of its intervals, which stays as it is.
f32 TESTLIFETABLEPWEXP::CalcTablePar(i16 parNo) {
    return Single(ParValue(parNo));
}

} // namespace quorvanta
