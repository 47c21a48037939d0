#include "groupseq/interim.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/form.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/platform.h"
#include "core/values.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "numeric/rounding.h"
#include "output/format.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

i16 InterimUnit;
i16 TimeFromSize;
i16 Size1Index;
i16 Size2Index;

namespace {

constexpr i16 FractionStore = 2; // of one column
constexpr i16 LevelStore = 1;
constexpr i16 RejectColumn = 1;
constexpr i16 AcceptColumn = 2;

StudyClock studyClock;
Array1<f32> interimTimes; // (1..K) where they are fixed

i16 InterimAnalyses() {
    return std::clamp<i16>(NoOfInterim, 0, InterimSize1Text.HighBound);
}

// --- Grids --------------------------------------------------------------------------------------

GridCheck FractionCells() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving) {
        const f32 fraction = cells.Value(row, column);
        if (fraction > 0 && fraction < 1)
            return true;
        ShowMessage("Information Fraction Must Be > 0 and < 1.");
        return false;
    };
}

GridCheck LevelCells() {
    return [](const GridCells& cells, i16 row, i16 column, Leaving) {
        const f32 level = cells.Value(row, column);
        if (level >= 0 && level <= 1)
            return true;
        ShowMessage(column == RejectColumn ? "Probability To Reject H0 Is Outside (0, 1)."
                                           : "Probability To Accept H0 Is Outside (0, 1).");
        return false;
    };
}

Grid FractionGrid() {
    return {.Store = FractionStore,
            .Rows = InterimAnalyses(),
            .Columns = 1,
            .RowHeads = "Interim Analysis",
            .ColumnHeads = TimeFromSize == 1 ? "Fraction of Time" : "Information Fraction",
            .Check = FractionCells()};
}

Grid LevelGrid() {
    std::string heads;
    for (i16 k = 1; k <= InterimAnalyses(); ++k)
        heads += std::to_string(k) + ",";
    return {.Store = LevelStore,
            .Rows = static_cast<i16>(InterimAnalyses() + 1),
            .Columns = 2,
            .RowHeads = heads + "Final",
            .ColumnHeads = "Reject H0 if p<,Accept H0 if p>",
            .Check = LevelCells()};
}

// Equal steps, in three decimals, until the user has entered others for as many analyses.
void StartFractions() {
    const Grid grid = FractionGrid();
    if (IsFilled(grid))
        return;
    Array2<f32>& cells = GridData(FractionStore);
    cells.ReDim(0, grid.Rows, 0, 1);
    for (i16 k = 1; k <= grid.Rows; ++k)
        cells(k, 1) = Single(ReadNumber(Format(f64(k) / (grid.Rows + 1), "0.000")));
}

void StartLevels() {
    const Grid grid = LevelGrid();
    if (IsFilled(grid))
        return;
    Array2<f32>& cells = GridData(LevelStore);
    cells.ReDim(0, grid.Rows, 0, 2);
    for (i16 k = 1; k <= grid.Rows; ++k) {
        cells(k, RejectColumn) = Single(ParValue(LevelParNo));
        cells(k, AcceptColumn) = 1;
    }
}

void TakeLevels() {
    for (i16 k = 1; k <= InterimAnalyses() + 1; ++k) {
        RejectH0Text(k - 1) = Str(GridFigure(LevelStore, k, RejectColumn));
        AcceptH0Text(k - 1) = Str(GridFigure(LevelStore, k, AcceptColumn));
    }
}

void ReadUnit() {
    const bool isLogrank = GsKindOfTest() == GsLogrank;
    InterimUnit = isLogrank ? ChosenOption(Group::Given) : i16{0};
    TimeFromSize = isLogrank && Ticked(Check::FixedInterimTimes) ? 1 : 0;
}

// --- Sizes --------------------------------------------------------------------------------------

bool IsFirstSize(SizeRole role) {
    switch (role) {
    case SizeRole::Single:
    case SizeRole::First:
    case SizeRole::FirstSequence:
    case SizeRole::Exposure:
    case SizeRole::TimeAtRisk:
    case SizeRole::FirstExposure:
        return true;
    default:
        return false;
    }
}

bool IsSecondSize(SizeRole role) {
    return role != SizeRole::None && !IsFirstSize(role);
}

// A total has its parts in it, so that a ratio beside it is none of its own.
bool IsTotal(i16 kind) {
    return kind == Kind::TotalSize || kind == Kind::Events || kind == Kind::TimeAtRisk;
}

void FindSizes() {
    Size1Index = 0;
    Size2Index = 0;
    // When a share of the information is there does not follow from the size.
    if (HasInterimTimes())
        return;
    for (i16 i = 2; i <= NoOfPar; ++i) {
        const i16 kind = ParKind(i);
        if (Size1Index == 0 && (IsTotal(kind) || IsFirstSize(SizeRoleOf(kind))))
            Size1Index = i;
        else if (Size1Index != 0 && Size2Index == 0 && !IsTotal(ParKind(Size1Index)) &&
                 IsSecondSize(SizeRoleOf(kind)))
            Size2Index = i;
    }
}

// --- Times --------------------------------------------------------------------------------------

f64 ShareAt(f64 time, bool isH1) {
    const f64 whole = studyClock.Information(studyClock.StudyTime, isH1);
    return whole > 0 ? studyClock.Information(time, isH1) / whole : time / studyClock.StudyTime;
}

// The time at which this share of the information is there, by bisection: it only rises.
f64 TimeOf(f64 share, bool isH1) {
    f64 early = 0;
    f64 late = studyClock.StudyTime;
    constexpr int cuts = 50;
    for (int i = 0; i < cuts; ++i) {
        const f64 middle = (early + late) / 2;
        (ShareAt(middle, isH1) < share ? early : late) = middle;
    }
    return late;
}

// The shares of the study time that were entered become shares of the information. The first look
// has some of it, however early.
void TurnTimesToFractions() {
    interimTimes.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 time = f64{IntTime(k)} * studyClock.StudyTime;
        interimTimes(k) = Single(time);
        constexpr f64 least = 1e-5;
        if (k < NoOfAnal)
            IntTime(k) = Single(std::clamp(ShareAt(time, true), least, 1.0));
    }
}

bool HasClock() {
    return HasInterimTimes() && studyClock.Information && studyClock.StudyTime > 0;
}

void WriteTimes() {
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 share{IntTime(k)};
        const auto text = [](f64 time) { return Format(time, "0.####"); };
        if (TimeFromSize == 1) {
            InterimSize1Text(k - 1) = text(f64{interimTimes(k)});
            InterimSize2Text(k - 1) = "";
            continue;
        }
        for (const bool isH1 : {true, false})
            (isH1 ? InterimSize1Text : InterimSize2Text)(k - 1) =
                text(k == NoOfAnal ? studyClock.StudyTime : TimeOf(share, isH1));
    }
}

std::string SizeText(f64 size, bool isWhole) {
    return Format(size, isWhole ? "0" : "0.####");
}

} // namespace

i16 GsKindOfTest() {
    constexpr i16 proportions = 126;
    constexpr i16 logrank = 127;
    switch (IsTest == True ? TestNo : i16{0}) {
    case StudentDesign:
        return GsStudent;
    case proportions:
        return GsProportions;
    case logrank:
        return GsLogrank;
    default:
        return GsMeans;
    }
}

bool HasInterimTimes() {
    return GsKindOfTest() == GsLogrank && InterimUnit == 0;
}

void SetStudyClock(StudyClock of) {
    studyClock = std::move(of);
}

f64 InterimSizeOf(i16 k, bool isH1) {
    const f64 size1 = ReadNumber(InterimSize1Text(k - 1));
    const f64 size2 = ReadNumber(InterimSize2Text(k - 1));
    if (HasInterimTimes())
        return isH1 || TimeFromSize == 1 ? size1 : size2;
    return NoOfSamples == MoreSamples ? size1 + (NoOfGroupsOfDesign() - 1) * size2 : size1 + size2;
}

void GsReadDesign() {
    ReadUnit();
    ReadBoundChoice();
    FindSizes();
}

f64 NoOfGroupsOfDesign() {
    for (i16 i = 2; i <= NoOfPar; ++i)
        if (ParKind(i) == Kind::NoOfGroups)
            return ParValue(i);
    return 2;
}

void GsReadFractions() {
    ReadUnit();
    const i16 interim = InterimAnalyses();
    NoOfAnal = static_cast<i16>(interim + 1);
    IntTime.ReDim(1, NoOfAnal);
    const bool isEntered = interim > 0 && IsFilled(FractionGrid());
    for (i16 k = 1; k <= interim; ++k)
        IntTime(k) = isEntered ? GridData(FractionStore)(k, 1) : Single(f64(k) / f64(NoOfAnal));
    IntTime(NoOfAnal) = 1;
    if (TimeFromSize == 1 && HasClock())
        TurnTimesToFractions();
}

void GsSearchLimits(f64& lower, f64& upper) {
    constexpr f64 most = 0.49;
    if (UnknownParNo == LevelParNo)
        upper = MaxOf(lower, MinOf(upper, NoOfTails == TwoSided ? 2 * most : most));
}

bool GsSetUpInterim() {
    SetStudyClock({});
    ReadUnit();
    if (InterimAnalyses() == 0)
        return true;
    const FixedArray<i16, 1, 2> types = SimDistrOption;
    const FixedArray<f32, 1, 2> pars = SimDistrPar1;
    const FixedArray<Array2<f32>, 1, NumberStores> stores = GridData;
    const auto giveUp = [&] {
        SimDistrOption = types;
        SimDistrPar1 = pars;
        GridData = stores;
        Cancelled = False;
        return false;
    };
    if (!ShowBoundaries())
        return giveUp();
    const bool isUserDefined = BoundType == BoundUserDefined;
    StartFractions();
    std::vector<Grid> grids;
    if (isUserDefined) {
        StartLevels();
        grids.push_back(LevelGrid());
    }
    grids.push_back(FractionGrid());
    if (!ShowGrids(grids, ""))
        return giveUp();
    GsReadFractions();
    if (!isUserDefined)
        return true;
    TakeLevels();
    WriteInterimSizes();
    ThePlatform().Show(FloatingWindow::InterimParameters);
    return false;
}

void WriteInterimSizes() {
    FindSizes();
    if (HasClock())
        return WriteTimes();
    const bool isWhole = Size1Index != 0 && IsCountKind(ParKind(Size1Index));
    const f64 size1 = Size1Index == 0 ? 0 : ParValue(Size1Index);
    f64 size2 = 0;
    if (Size2Index != 0)
        size2 = FromForm(SizeFormOf(ParKind(Size2Index)), size1, ParValue(Size2Index));
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 fraction = k == NoOfAnal ? 1 : f64{IntTime(k)};
        InterimSize1Text(k - 1) = Size1Index == 0 ? "" : SizeText(fraction * size1, isWhole);
        InterimSize2Text(k - 1) = Size2Index == 0 ? "" : SizeText(fraction * size2, isWhole);
    }
}

bool ReadInterimLevels() {
    LevelReject.ReDim(1, NoOfAnal);
    LevelAccept.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        const f64 reject = ReadNumber(RejectH0Text(k - 1));
        const f64 accept = ReadNumber(AcceptH0Text(k - 1));
        if (reject < 0 || reject > 1) {
            ShowMessage("Probability To Reject H0 Is Outside (0, 1).");
            return false;
        }
        if (accept < 0 || accept > 1) {
            ShowMessage("Probability To Accept H0 Is Outside (0, 1).");
            return false;
        }
        LevelReject(k) = Single(reject == 0 ? ParValue(LevelParNo) : reject);
        LevelAccept(k) = Single(accept == 0 ? 1 : accept);
    }
    return true;
}

namespace {

using TextsOfSizes = FixedArray<std::string, 0, 5>;

// An analysis without a text has no range, and none after it has.
void Widen(std::vector<Range>& ranges, const TextsOfSizes& texts) {
    for (i16 k = 1; k <= NoOfAnal && HasValue(texts(k - 1)); ++k) {
        const auto at = static_cast<std::size_t>(k - 1);
        const f64 value = ReadNumber(texts(k - 1));
        if (at == ranges.size())
            ranges.push_back({value, value});
        ranges[at] = {MinOf(ranges[at].Min, value), MaxOf(ranges[at].Max, value)};
    }
}

} // namespace

// The texts of the analysis stay what the user entered.
void GsNoteDesign(DesignRanges& ranges) {
    TextsOfSizes* const shown[] = {&RejectH0Text, &AcceptH0Text, &InterimSize1Text,
                                   &InterimSize2Text};
    std::vector<Range>* const widened[] = {&ranges.Reject, &ranges.Accept, &ranges.Size1,
                                           &ranges.Size2};
    const TextsOfSizes entered[] = {*shown[0], *shown[1], *shown[2], *shown[3]};
    WriteInterimLevels();
    WriteInterimSizes();
    for (std::size_t i = 0; i < std::size(shown); ++i) {
        Widen(*widened[i], *shown[i]);
        *shown[i] = entered[i];
    }
}

void WriteInterimLevels() {
    const auto text = [](f32 level) { return Format(f64{level}, FormatBySize(f64{level})); };
    for (i16 k = 1; k <= NoOfAnal; ++k) {
        RejectH0Text(k - 1) = text(LevelReject(k));
        AcceptH0Text(k - 1) = text(LevelAccept(k));
    }
}

} // namespace quorvanta
