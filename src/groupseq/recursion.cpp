#include "groupseq/recursion.h"

#include "core/general.h"
#include "groupseq/increments.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace quorvanta {

namespace {

static_assert(MaxGridPoints <= MaxBatch);

// --- What a stage was made for ------------------------------------------------------------------

struct StageInputs {
    f32 Drift = 0;
    f32 Information = 0;
    f32 Low = 0;
    f32 Upp = 0;
    f32 Length = 0; // of the increment; 0 for the first stage

    friend bool operator==(const StageInputs&, const StageInputs&) = default;
};

// Where the inner points of a trimmed grid, those that are neither a boundary nor next to one,
// stand in the whole grid with its midpoints: point j of the stage is number j + Offset there.
struct InnerPoints {
    int First = 1; // in the stage; none if First > Last
    int Last = 0;
    int Offset = 0;
};

// The whole grid of a stage with its midpoints.
using FinePoints = std::array<f32, MaxGridPoints>;

// Densities from the inner points of one stage to those of the next, as far as they were needed.
class DensityMatrix {
  public:
    // Forgets everything where increment or grids are others than before.
    void SetUp(const StageInputs& before, const StageInputs& stage, const FinePoints& from,
               const FinePoints& to) {
        const Key key{stage.Drift, before.Information, stage.Information, stage.Length};
        if (key_ && *key_ == key)
            return;
        key_ = key;
        from_ = &from;
        to_ = &to;
        cells_.resize(std::size_t{MaxGridPoints} * MaxGridPoints);
        known_.fill({});
    }

    // The densities from point i to the points first..last of the whole grids (all from 1): the
    // address of that to the first.
    const f32* Row(const Increment& increment, int i, int first, int last) {
        Known& known = known_[static_cast<std::size_t>(i - 1)];
        if (known.Last < known.First) {
            Fill(increment, i, first, last);
            known = {first, last};
        }
        if (first < known.First) {
            Fill(increment, i, first, known.First - 1);
            known.First = first;
        }
        if (last > known.Last) {
            Fill(increment, i, known.Last + 1, last);
            known.Last = last;
        }
        return Cell(i, first);
    }

  private:
    struct Key {
        f32 Drift;
        f32 Before;
        f32 Information;
        f32 Length;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Known {
        int First = 1;
        int Last = 0;
    };

    f32* Cell(int i, int j) {
        return &cells_[static_cast<std::size_t>((i - 1) * MaxGridPoints + (j - 1))];
    }

    void Fill(const Increment& increment, int i, int first, int last) {
        IncrementDensities(increment, (*from_)[static_cast<std::size_t>(i - 1)],
                           &(*to_)[static_cast<std::size_t>(first - 1)], last - first + 1,
                           Cell(i, first));
    }

    std::optional<Key> key_;
    const FinePoints* from_ = nullptr;
    const FinePoints* to_ = nullptr;
    std::vector<f32> cells_;
    std::array<Known, MaxGridPoints> known_{};
};

struct Stage {
    StageInputs Inputs;
    InnerPoints Inner;
    FinePoints Fine{};
    DensityMatrix FromBefore; // into this stage
    std::optional<f32> UpperExit;
    std::optional<f32> LowerExit;
};

std::array<Stage, MaxAnalyses> stages;
i16 stagesReady = 0; // stages whose grid stands
i16 rowsReady = 0;   // stages whose densities stand

Stage& StageOf(i16 k) {
    if (k < 1 || k > MaxAnalyses)
        throw RunTimeError(Fault::BadIndex);
    return stages[static_cast<std::size_t>(k - 1)];
}

// From stage k on the densities have to be formed anew, and the exits behind them.
void DropRowsFrom(i16 k) {
    rowsReady = std::min(rowsReady, static_cast<i16>(k - 1));
    for (i16 later = k; later <= MaxAnalyses; ++later) {
        StageOf(later).UpperExit.reset();
        StageOf(later).LowerExit.reset();
    }
}

Increment IncrementTo(i16 k) {
    return {Info(k - 1), Info(k), GsIncrement(k), Theta};
}

f32 Shifted(f32 drift, f32 information) {
    return Single(f64{drift} * std::sqrt(f64{information}));
}

void FillFinePoints(f32 shift, FinePoints& fine) {
    for (int j = 0; j < MaxGridPoints; j += 2)
        fine[static_cast<std::size_t>(j)] = Single(f64{shift} + f64{GridBase(j / 2 + 1)});
    for (std::size_t j = 1; j < fine.size(); j += 2)
        fine[j] = Single((f64{fine[j - 1]} + f64{fine[j + 1]}) / 2);
}

// --- The densities of a stage -------------------------------------------------------------------

const f32* Points(const StageGrid& grid, i16 k) {
    return grid.Stage(k).data() + 1;
}

void FirstRow() {
    const int n = GridSize(1);
    std::array<f32, MaxBatch> steps{};
    std::array<f32, MaxBatch> densities{};
    const f64 shift = f64{Theta} * std::sqrt(f64{Info(1)});
    for (int j = 1; j <= n; ++j)
        steps[static_cast<std::size_t>(j - 1)] = Single(f64{GridZ(j, 1)} - shift);
    NorDensities(steps.data(), n, densities.data());
    for (int j = 1; j <= n; ++j)
        GridH(j, 1) = Single(f64{densities[static_cast<std::size_t>(j - 1)]} * f64{GridW(j, 1)});
}

// The sums of all points of stage k side by side, the points of the stage before one after the
// other. What lies between inner points comes from the matrix; the two points at either end, which
// move with the boundaries, are formed here.
void NextRow(i16 k) {
    Stage& stage = StageOf(k);
    const Stage& before = StageOf(static_cast<i16>(k - 1));
    const Increment increment = IncrementTo(k);
    const int sources = GridSize(k - 1);
    const int n = GridSize(k);
    const f32* x = Points(GridZ, static_cast<i16>(k - 1));
    const f32* h = Points(GridH, static_cast<i16>(k - 1));
    const f32* z = Points(GridZ, k);
    const f32* weights = Points(GridW, k);
    f32* sums = GridH.Stage(k).data() + 1;
    std::fill(sums, sums + n, 0.0F);

    const InnerPoints inner = stage.Inner;
    const int lead = std::min(inner.First - 1, n); // points ahead of the inner ones
    const int innerCount = std::max(0, inner.Last - inner.First + 1);
    const int outer = n - innerCount; // before and behind them
    constexpr int MostOuter = 8;
    std::array<std::array<f32, MaxBatch>, MostOuter> toOuter;
    const bool usesMatrix = innerCount > 0 && outer <= MostOuter;
    if (usesMatrix) {
        stage.FromBefore.SetUp(before.Inputs, stage.Inputs, before.Fine, stage.Fine);
        for (int o = 0; o < outer; ++o) {
            const int j = o < lead ? o : o + innerCount;
            IncrementDensitiesFrom(increment, x, z[j], sources,
                                   toOuter[static_cast<std::size_t>(o)].data());
        }
    }
    std::array<f32, MaxBatch> row{};
    for (int i = 1; i <= sources; ++i) {
        const bool isInner = i >= before.Inner.First && i <= before.Inner.Last;
        if (!usesMatrix || !isInner) {
            IncrementDensities(increment, x[i - 1], z, n, row.data());
            AddWeighted(h[i - 1], weights, row.data(), n, sums);
            continue;
        }
        const f32* densities =
            stage.FromBefore.Row(increment, i + before.Inner.Offset, inner.First + inner.Offset,
                                 inner.Last + inner.Offset);
        AddWeighted(h[i - 1], weights + lead, densities, innerCount, sums + lead);
        for (int o = 0; o < outer; ++o) {
            const int j = o < lead ? o : o + innerCount;
            AddWeighted(h[i - 1], weights + j,
                        &toOuter[static_cast<std::size_t>(o)][static_cast<std::size_t>(i - 1)], 1,
                        sums + j);
        }
    }
}

void EnsureRows(i16 k) {
    while (rowsReady < k) {
        if (rowsReady == 0)
            FirstRow();
        else
            NextRow(static_cast<i16>(rowsReady + 1));
        ++rowsReady;
    }
}

// The sum over the points of stage k - 1 of what leaves there beyond the bound, times the density.
template <class Share>
f32 ExitSum(i16 k, f32 bound, Share share) {
    const auto before = static_cast<i16>(k - 1);
    EnsureRows(before);
    const int n = GridSize(before);
    std::array<f32, MaxBatch> upper{};
    IncrementUpperProbs(IncrementTo(k), Points(GridZ, before), bound, n, upper.data());
    const f32* h = Points(GridH, before);
    f32 sum = 0;
    for (int j = 0; j < n; ++j)
        sum = Single(f64{sum} + share(f64{upper[static_cast<std::size_t>(j)]}) * f64{h[j]});
    return sum;
}

} // namespace

void GsStdGrid(i16 r) {
    const f64 fineness = r;
    for (i16 i = 1; i <= r - 1; ++i)
        GridBase(i) = Single(-3 - 4 * std::log(fineness / i));
    for (i16 i = r; i <= 5 * r; ++i)
        GridBase(i) = Single(3.0 * (i - r) / 2 / fineness - 3);
    for (i16 i = static_cast<i16>(5 * r + 1); i <= 6 * r - 1; ++i)
        GridBase(i) = Single(3 + 4 * std::log(fineness / (6 * r - i)));
}

void GsTrimGrid(i16 r, f32 a, f32 b, f32 I) {
    const f32 shift = Shifted(Theta, I);
    GridFirst = 1;
    GridLast = static_cast<i16>(6 * r - 1);
    i16 n = 0;
    for (i16 i = 1; i <= 6 * r - 1; ++i) {
        const f32 x = Single(f64{shift} + f64{GridBase(i)});
        if (x > a)
            GridX(++n) = x;
        else
            GridFirst = i;
        if (x >= b) {
            GridLast = i;
            break;
        }
    }
    GridX(1) = a;
    GridX(GridLast - GridFirst + 1) = b;
}

void GsMidPoints(i16 k) {
    GridSize(k) = static_cast<i16>(2 * (GridLast - GridFirst + 1) - 1);
    for (int j = 1; j <= GridSize(k); j += 2)
        GridZ(j, k) = GridX((j + 1) / 2);
    for (int j = 2; j <= GridSize(k) - 1; j += 2)
        GridZ(j, k) = Single((f64{GridZ(j - 1, k)} + f64{GridZ(j + 1, k)}) / 2);
}

void GsSimpsonWeights(i16 k) {
    const int n = GridSize(k);
    if (n < 3) {
        GridW(1, k) = 0;
        return;
    }
    const auto z = [k](int j) { return f64{GridZ(j, k)}; };
    GridW(1, k) = Single((z(3) - z(1)) / 6);
    for (int j = 3; j <= n - 2; j += 2)
        GridW(j, k) = Single((z(j + 2) - z(j - 2)) / 6);
    for (int j = 2; j <= n - 1; j += 2)
        GridW(j, k) = Single(4 * (z(j + 1) - z(j - 1)) / 6);
    GridW(n, k) = Single((z(n) - z(n - 2)) / 6);
}

f32 GsIncrement(i16 k) {
    const f64 floor = ProbabilityFloor * MinOf(1, f64{Info(NoOfAnal)});
    return MaxSingle(Single(floor), Single(f64{Info(k)} - f64{Info(k - 1)}));
}

f32 GsIncrDensity(i16 k, f32 x, f32 y, f32 drift) {
    if (k == 1)
        return NorDensity(Single(f64{x} - f64{drift} * std::sqrt(f64{Info(1)})));
    return IncrementDensity({Info(k - 1), Info(k), GsIncrement(k), drift}, x, y);
}

f32 GsIncrUpperProb(i16 k, f32 x, f32 b, f32 drift) {
    return IncrementUpperProb({Info(k - 1), Info(k), GsIncrement(k), drift}, x, b);
}

void GsPrepareStage(i16 k) {
    Stage& stage = StageOf(k);
    const StageInputs inputs{Theta, Info(k), LowBound(k), UppBound(k),
                             k == 1 ? 0.0F : GsIncrement(k)};
    if (k <= stagesReady && inputs == stage.Inputs)
        return;
    DropRowsFrom(k);
    stage.Inputs = inputs;
    GsTrimGrid(GridFineness, LowBound(k), UppBound(k), Info(k));
    if (GridZ.Stages() < MaxAnalyses)
        for (StageGrid* grid : {&GridZ, &GridW, &GridH})
            grid->ReDim(MaxAnalyses);
    GsMidPoints(k);
    GsSimpsonWeights(k);
    const f32 shift = Shifted(Theta, Info(k));
    FillFinePoints(shift, stage.Fine);
    // Points at or below the lower boundary were left out.
    const bool isCut = Single(f64{shift} + f64{GridBase(1)}) <= LowBound(k);
    stage.Inner = {3, GridSize(k) - 2, isCut ? 2 * GridFirst : 0};
    stagesReady = std::max(stagesReady, k);
}

f32 GsDensityAt(i16 k, i16 j, f32 drift) {
    if (drift != Theta)
        throw RunTimeError(Fault::InvalidArgument);
    EnsureRows(k);
    return GridH(j, k);
}

f32 GsUpperExit(i16 k) {
    Stage& stage = StageOf(k);
    if (!stage.UpperExit)
        stage.UpperExit = ExitSum(k, UppBound(k), [](f64 upper) { return upper; });
    return *stage.UpperExit;
}

f32 GsLowerExit(i16 k) {
    Stage& stage = StageOf(k);
    if (!stage.LowerExit)
        stage.LowerExit = ExitSum(k, LowBound(k), [](f64 upper) { return 1 - upper; });
    return *stage.LowerExit;
}

} // namespace quorvanta
