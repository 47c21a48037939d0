#include "ranksurv/accrual.h"

#include "core/analysis_state.h"
#include "core/checksearch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>

namespace quorvanta {

namespace {

constexpr i16 tableStore = 1;
constexpr i16 endColumn = 1;
constexpr i16 proportionColumn = 2;
constexpr const char* tableTitle = "Proportion of Accrued Patients";
constexpr const char* tableHeads = "End of Interval,Cum. Proportion";

// The shortest accrual; a shorter one is none.
constexpr f32 Instant = 1e-5F;
// A rate this close to 0 is none: accrual is uniform.
constexpr f64 LeastShape = 1e-5;
// No share is 0: a hazard that nothing tells about has a variance all the same.
constexpr f64 LeastShare = 1e-30;

// (1 - exp(-|x|))/|x|: the mean of exp over -|x| to 0. Formed as such, not as the difference of two
// rounded exponentials, of which nothing is left when accrual is short or events are rare.
f64 MeanExp(f64 x) {
    const f64 size = std::fabs(x);
    if (size == 0)
        return 1;
    // From here on nothing cancels, and exp is the faster one.
    constexpr f64 large = 0.5;
    return (size < large ? -std::expm1(-size) : 1 - std::exp(-size)) / size;
}

// The mean of exp(-rate v) where v, the time until accrual ends, has a density in proportion to
// exp(shape v) over 0 to accrual: (shape - rate) and shape are equal to none and to each other
// without being exceptions.
f64 MeanStay(f64 rate, f64 shape, f64 accrual) {
    if (shape == 0)
        return MeanExp(rate * accrual);
    const f64 ratio = MeanExp((shape - rate) * accrual) / MeanExp(shape * accrual);
    if (shape < 0)
        return ratio;
    return ExpClamped(Single(-MinOf(shape, rate) * accrual)) * ratio;
}

// The share of all entries over 0 to accrual that falls into 0 to cut.
f64 ShareEntered(f64 shape, f64 cut, f64 accrual) {
    const f64 uniform = cut / accrual * MeanExp(shape * cut) / MeanExp(shape * accrual);
    return shape >= 0 ? uniform : ExpClamped(Single(shape * (accrual - cut))) * uniform;
}

Grid TableOf(i16 intervals) {
    return {.Store = tableStore,
            .Rows = intervals,
            .Columns = 2,
            .Title = tableTitle,
            .RowHeads = "Interval",
            .ColumnHeads = tableHeads};
}

// A search for a size asks for the same variances with each trial value: those of both groups, and
// of both pooled. The least recent of a few gives way to a new one.
using VarianceOf = std::array<f32, 5>; // hazard, loss; accrual time, study time, accrual rate

template <class Formula>
f32 Remembered(const VarianceOf& values, Formula variance) {
    struct Known {
        VarianceOf Values{-1}; // no hazard
        f32 Variance = 0;
    };
    static std::array<Known, 4> known;
    static std::size_t oldest = 0;
    for (const Known& row : known)
        if (row.Values == values)
            return row.Variance;
    Known& row = known[oldest];
    oldest = (oldest + 1) % known.size();
    row = {values, variance()};
    return row.Variance;
}

// --- What the table must be ---------------------------------------------------------------------

constexpr f64 timeTolerance = 1e-5; // in proportion: two times in 32 bits

bool IsSameTime(f64 a, f64 b) {
    return std::fabs(a - b) <= timeTolerance * MaxOf(1, std::fabs(b));
}

bool Refuse(const std::string& text) {
    ShowMessage(text);
    return false;
}

bool IsLastEnd(f64 end, f64 accrual) {
    return IsSameTime(end, accrual) || Refuse("End of Last Interval Must Be " + Str(accrual));
}

// A cell by itself, and beside the one above it.
bool IsGoodCell(const GridCells& cells, i16 row, i16 column) {
    const std::string name = column == endColumn ? "End of Interval" : "Cum. Proportion";
    const f32 value = cells.Value(row, column);
    if (!(value > 0))
        return Refuse(name + " Must Be > 0.");
    const i16 above = static_cast<i16>(row - 1);
    if (above < 1 || !cells.Has(above, column))
        return true;
    const f32 former = cells.Value(above, column);
    const bool rises = column == endColumn ? value > former : value >= former;
    return rises || Refuse(name + (column == endColumn ? " Must Be > " : " Must Be >= ") +
                           Str(DecimalOf(former)) + ".");
}

// Where the last interval ends, and all patients are there.
GridCheck TableCheck(f64 accrual) {
    return [accrual](const GridCells& cells, i16 row, i16 column, Leaving leaving) {
        if (!IsGoodCell(cells, row, column))
            return false;
        if (row != cells.Rows() || leaving == Leaving::Cell)
            return true;
        if (column == endColumn)
            return IsLastEnd(f64{cells.Value(row, column)}, accrual);
        return std::fabs(f64{cells.Value(row, column)} - 1) <= SumTolerance ||
               Refuse("Cum. Proportion of Last Interval Must Be 1.");
    };
}

f64 TableEnd() {
    return f64{GridData(tableStore)(GridData(tableStore).HighBound1(), endColumn)};
}

} // namespace

void Accrual::Add(bool isTabulated) {
    rate_ = isTabulated ? i16{0} : AddPar(Kind::AccrualRate);
    intervals_ = isTabulated ? AddPar(Kind::AccrualIntervals) : i16{0};
    time_ = AddPar(Kind::AccrualTime);
    study_ = AddPar(Kind::TotalStudyTime);
}

i16 Accrual::Model() const {
    if (intervals_ != 0)
        return TabulatedAccrual;
    return std::fabs(ParValue(rate_)) < LeastShape ? UniformAccrual : ExponentialAccrual;
}

// A table that is not filled stands for nothing. The interval count and the accrual time have to be
// those of the table, unless they are asked for.
bool Accrual::Check() const {
    const bool mayBeCut = intervals_ == 0 && (UnknownParNo == rate_ || Model() != UniformAccrual);
    if (!mayBeCut && UnknownParNo != time_ && UnknownParNo != study_ &&
        !CheckRange(study_, ParValue(time_), ParMax(Kind::TotalStudyTime)))
        return false;
    if (intervals_ == 0)
        return true;
    const Array2<f32>& table = GridData(tableStore);
    const i16 rows = UnknownParNo == intervals_ ? static_cast<i16>(table.HighBound1())
                                                : ToI16(ParValue(intervals_));
    if (HasGridData == False || !IsFilled(TableOf(rows)))
        return Refuse(std::string(tableTitle) + " Has No Value.");
    return UnknownParNo == time_ || IsLastEnd(TableEnd(), ParValue(time_));
}

bool Accrual::HasGridValues() const {
    for (const i16 parNo : {rate_, time_, study_}) {
        const i16 kind = ParKind(parNo);
        if (parNo != 0 && !HasGridValue(parNo, ParMin(kind), ParMax(kind)))
            return false;
    }
    return true;
}

void Accrual::Narrow(f64& lower, f64& upper) const {
    if (intervals_ == 0 && (UnknownParNo == rate_ || Model() != UniformAccrual))
        return;
    if (UnknownParNo == time_)
        upper = MinOf(upper, ParValue(study_));
    else if (UnknownParNo == study_)
        lower = MaxOf(lower, ParValue(time_));
}

// J. M. Lachin and M. A. Foulkes, Biometrics 42, 1986, 507-519.
f64 Accrual::ShareLeaving(f64 rate) const {
    return ShareLeavingBy(rate, StudyTime());
}

std::optional<std::array<f32, 3>> Accrual::Times() const {
    if (intervals_ != 0 || ParValue(time_) == 0)
        return std::nullopt;
    return std::array{Single(ParValue(time_)), Single(ParValue(study_)), Single(ParValue(rate_))};
}

f64 Accrual::StudyTime() const {
    return f64{Single(ParValue(study_))};
}

f64 Accrual::ShareLeavingBy(f64 rate, f64 study) const {
    if (ParValue(time_) == 0)
        ParValue(time_) = f64{Instant};
    const f64 accrual{Single(ParValue(time_))};
    if (accrual <= f64{Instant})
        return 1 - ExpClamped(Single(-rate * (study + f64{Instant})));
    if (intervals_ != 0)
        return MaxOf(LeastShare, TabulatedShare(rate, accrual, study));
    const f64 shape{Single(ParValue(rate_))};
    const f64 entered = std::fabs(shape) < LeastShape ? 0 : shape;
    return quorvanta::ShareLeaving(rate, entered, accrual, study);
}

// Followed for that time are those who have entered that time before the end of the study.
f64 Accrual::ShareFollowed(f64 time) const {
    const f64 accrual{Single(ParValue(time_))};
    const f64 before = f64{Single(ParValue(study_))} - time;
    if (before >= accrual || accrual <= f64{Instant})
        return 1;
    const f64 shape{Single(ParValue(rate_))};
    return before > 0 ? ShareEntered(shape, before, accrual) : 0;
}

f64 Accrual::Certain() const {
    const f64 accrual{Single(ParValue(time_))};
    return f64{Single(ParValue(study_))} - (accrual <= f64{Instant} ? 0 : accrual);
}

// Uniform accrual in each interval. The accrual time, when it is sought, stretches the table.
f64 Accrual::TabulatedShare(f64 rate, f64 accrual, f64 study) const {
    const Array2<f32>& table = GridData(tableStore);
    const f64 stretch = accrual / TableEnd();
    f64 share = 0;
    f64 begin = 0;
    f64 before = 0;
    for (i16 row = 1; row <= table.HighBound1(); ++row) {
        const f64 end = f64{table(row, endColumn)} * stretch;
        const f64 accrued{table(row, proportionColumn)};
        if (study > begin && end > begin)
            share +=
                (accrued - before) * quorvanta::ShareLeaving(rate, 0, end - begin, study - begin);
        begin = end;
        before = accrued;
    }
    return share;
}

void Accrual::Prepare(SurvivalPlan& plan) const {
    plan.AccrualTime = Single(ParValue(time_));
    plan.StudyTime = Single(ParValue(study_));
    plan.AccrualShape = Model() == ExponentialAccrual ? Single(ParValue(rate_)) : 0;
    plan.AccrualEnds.clear();
    plan.Accrued.clear();
    if (intervals_ == 0)
        return;
    const Array2<f32>& table = GridData(tableStore);
    for (i16 row = 1; row <= table.HighBound1(); ++row) {
        plan.AccrualEnds.push_back(f64{table(row, endColumn)});
        plan.Accrued.push_back(f64{table(row, proportionColumn)});
    }
}

bool Accrual::IsTablePar(i16 parNo) const {
    return intervals_ != 0 && parNo == intervals_;
}

std::vector<Grid> Accrual::Grids() const {
    const auto intervals = GridLines(intervals_, 1);
    if (!intervals || !HasGridValue(time_, f64{Instant}, ParMax(Kind::AccrualTime)))
        return {};
    Grid table = TableOf(*intervals);
    table.Check = TableCheck(ParValue(time_));
    return {table};
}

// Of those who leave, lambda/(lambda + eta) have the event. At the very end of the range, where
// nobody does, the variance stays a number of 32 bits.
f32 HazardVariance(const Accrual& accrual, f32 lambda, f32 eta) {
    const auto variance = [&] {
        constexpr f64 largest = 1e30;
        const f64 rate = f64{lambda} + f64{eta};
        return Single(MinOf(largest, rate * f64{lambda} / accrual.ShareLeaving(rate)));
    };
    const auto times = accrual.Times();
    return times ? Remembered({lambda, eta, (*times)[0], (*times)[1], (*times)[2]}, variance)
                 : variance();
}

f64 ShareLeaving(f64 rate, f64 shape, f64 accrual, f64 study) {
    const f64 span = MinOf(accrual, study);
    const f64 entered = span == accrual ? 1 : ShareEntered(shape, span, accrual);
    const f64 stay = ExpClamped(Single(-rate * (study - span))) * MeanStay(rate, shape, span);
    return MaxOf(LeastShare, entered * (1 - stay));
}

} // namespace quorvanta
