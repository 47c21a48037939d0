// The index sort against std::stable_sort on the same data, and the matrix routines.
#include "numeric/eigenvalue.h"
#include "numeric/inverse.h"
#include "numeric/rnd.h"
#include "numeric/sortind.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <numeric>

namespace quorvanta {
namespace {

// Values of so many sets in turn that no branch predictor learns them by heart.
constexpr i32 valuesInTurn = 400000;

Array1<f32> RandomValues(i32 n) {
    Array1<f32> values(1, n);
    for (f32& value : values.Raw())
        value = Rnd() - 0.5F;
    return values;
}

template <class Sort>
void MeasureSort(benchmark::State& state, Sort&& sort) {
    const i32 n = static_cast<i32>(state.range(0));
    Rnd(-1.0);
    std::vector<Array1<f32>> sets;
    for (i32 drawn = 0; drawn < valuesInTurn; drawn += n)
        sets.push_back(RandomValues(n));
    Array1<i32> index;
    std::size_t set = 0;
    for (auto _ : state) {
        sort(sets[set], index, n);
        benchmark::DoNotOptimize(index.Raw().data());
        benchmark::ClobberMemory();
        set = (set + 1) % sets.size();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void Sort_SortIndex(benchmark::State& state) {
    MeasureSort(state, [](const Array1<f32>& values, Array1<i32>& index, i32 n) {
        SortIndex(values, index, n);
    });
}

void Sort_StableSort(benchmark::State& state) {
    MeasureSort(state, [](const Array1<f32>& values, Array1<i32>& index, i32 n) {
        index.ReDim(1, n);
        std::iota(index.Raw().begin(), index.Raw().end(), 1);
        const f32* const value = values.Raw().data() - 1;
        std::ranges::stable_sort(index.Raw(), {}, [value](i32 i) { return value[i]; });
    });
}

BENCHMARK(Sort_SortIndex)->Arg(10)->Arg(60)->Arg(80)->Arg(81)->Arg(1000)->Arg(100000);
BENCHMARK(Sort_StableSort)->Arg(10)->Arg(60)->Arg(80)->Arg(81)->Arg(1000)->Arg(100000);

Array2<f64> RandomMatrix(i16 n) {
    Rnd(-2.0);
    Array2<f64> a(1, n, 1, n);
    for (f64& cell : a.Raw())
        cell = Rnd() - 0.5;
    return a;
}

void Matrix_EigenValues(benchmark::State& state) {
    const i16 n = static_cast<i16>(state.range(0));
    const Array2<f64> a = RandomMatrix(n);
    Array1<f64> real;
    Array1<f64> imaginary;
    for (auto _ : state)
        benchmark::DoNotOptimize(EigenValues(n, a, real, imaginary));
}

void Matrix_MatInverse(benchmark::State& state) {
    const i16 n = static_cast<i16>(state.range(0));
    const Array2<f64> a = RandomMatrix(n);
    for (auto _ : state) {
        Array2<f64> inverse = a;
        benchmark::DoNotOptimize(MatInverse(inverse, n));
    }
}

BENCHMARK(Matrix_EigenValues)->Arg(4)->Arg(10);
BENCHMARK(Matrix_MatInverse)->Arg(4)->Arg(10);

} // namespace
} // namespace quorvanta
