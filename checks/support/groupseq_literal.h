// The recursion of group sequential designs step by step, one number after the other and nothing
// kept: what the program's is compared with, bit for bit, and against what its speed is measured.
// Boundaries and information come from the program's state.
#pragma once

#include "core/analysis_state.h"
#include "core/general.h"
#include "groupseq/groupseq.h"
#include "numeric/probdist.h"
#include "numeric/rounding.h"

#include <array>
#include <cmath>

namespace quorvanta::literal {

struct Recursion {
    static constexpr int Rows = 192;
    f32 Drift = 0;
    std::array<f32, 96> Base{};
    std::array<f32, 97> X{};
    int First = 1;
    int Last = 1;
    std::array<int, 11> Size{};
    std::array<std::array<f32, Rows>, 11> Z{};
    std::array<std::array<f32, Rows>, 11> W{};
    std::array<std::array<f32, Rows>, 11> H{};

    static f64 D(int k) {
        const f64 last{Info(NoOfAnal)};
        const f32 least = Single(f64{0.00001F} * (last < 1 ? last : 1));
        return f64{MaxSingle(least, Single(f64{Info(k)} - f64{Info(k - 1)}))};
    }

    void StdGrid(int r) {
        for (int i = 1; i <= r - 1; ++i)
            Base[static_cast<std::size_t>(i)] = Single(-3 - 4 * std::log(f64(r) / i));
        for (int i = r; i <= 5 * r; ++i)
            Base[static_cast<std::size_t>(i)] = Single((3.0 * (i - r) / 2) / r - 3);
        for (int i = 5 * r + 1; i <= 6 * r - 1; ++i)
            Base[static_cast<std::size_t>(i)] = Single(3 + 4 * std::log(f64(r) / (6 * r - i)));
    }

    void TrimGrid(int r, f32 a, f32 b, f32 information) {
        const f32 shift = Single(f64{Drift} * std::sqrt(f64{information}));
        First = 1;
        Last = 6 * r - 1;
        std::size_t n = 0;
        for (int i = 1; i <= 6 * r - 1; ++i) {
            const f32 x = Single(f64{shift} + f64{Base[static_cast<std::size_t>(i)]});
            if (x > a)
                X[++n] = x;
            else
                First = i;
            if (x >= b) {
                Last = i;
                break;
            }
        }
        X[1] = a;
        X[static_cast<std::size_t>(Last - First + 1)] = b;
    }

    void MidPoints(int k) {
        const auto s = static_cast<std::size_t>(k);
        Size[s] = 2 * (Last - First + 1) - 1;
        const auto n = static_cast<std::size_t>(Size[s]);
        for (std::size_t j = 1; j <= n; j += 2)
            Z[s][j] = X[(j + 1) / 2];
        for (std::size_t j = 2; j < n; j += 2)
            Z[s][j] = Single((f64{Z[s][j - 1]} + f64{Z[s][j + 1]}) / 2);
    }

    void Weights(int k) {
        const auto s = static_cast<std::size_t>(k);
        const auto n = static_cast<std::size_t>(Size[s]);
        const auto z = [&](std::size_t j) { return f64{Z[s][j]}; };
        W[s].fill(0);
        if (n < 3)
            return;
        W[s][1] = Single((z(3) - z(1)) / 6);
        for (std::size_t j = 3; j + 2 <= n; j += 2)
            W[s][j] = Single((z(j + 2) - z(j - 2)) / 6);
        for (std::size_t j = 2; j < n; j += 2)
            W[s][j] = Single(4 * (z(j + 1) - z(j - 1)) / 6);
        W[s][n] = Single((z(n) - z(n - 2)) / 6);
    }

    f32 Density(int k, f32 x, f32 y) const {
        if (k == 1)
            return NorDensity(Single(f64{x} - f64{Drift} * std::sqrt(f64{Info(1)})));
        const f64 d = D(k);
        const f32 step = Single((f64{y} * std::sqrt(f64{Info(k)}) -
                                 f64{x} * std::sqrt(f64{Info(k - 1)}) - d * f64{Drift}) /
                                std::sqrt(d));
        return Single(f64{NorDensity(step)} * std::sqrt(f64{Info(k)} / d));
    }

    f32 UpperProb(int k, f32 x, f32 b) const {
        const f64 d = D(k);
        return NorCdf(Single((d * f64{Drift} + f64{x} * std::sqrt(f64{Info(k - 1)}) -
                              f64{b} * std::sqrt(f64{Info(k)})) /
                             std::sqrt(d)));
    }

    f32 DensityAt(int k, int j) {
        const auto s = static_cast<std::size_t>(k);
        const auto t = static_cast<std::size_t>(j);
        if (k == 1)
            return H[s][t] = Single(f64{Density(1, Z[s][t], 0)} * f64{W[s][t]});
        f32 sum = 0;
        for (std::size_t i = 1; i <= static_cast<std::size_t>(Size[s - 1]); ++i)
            sum = Single(f64{sum} +
                         f64{W[s][t]} * f64{H[s - 1][i]} * f64{Density(k, Z[s - 1][i], Z[s][t])});
        return H[s][t] = sum;
    }

    f32 UpperExit(int k) {
        const auto s = static_cast<std::size_t>(k - 1);
        f32 sum = 0;
        for (int j = 1; j <= Size[s]; ++j) {
            const f64 p{UpperProb(k, Z[s][static_cast<std::size_t>(j)], UppBound(k))};
            sum = Single(f64{sum} + p * f64{DensityAt(k - 1, j)});
        }
        return sum;
    }

    f32 LowerExit(int k) {
        const auto s = static_cast<std::size_t>(k - 1);
        f32 sum = 0;
        for (int j = 1; j <= Size[s]; ++j) {
            const f64 p{UpperProb(k, Z[s][static_cast<std::size_t>(j)], LowBound(k))};
            sum = Single(f64{sum} + (1 - p) * f64{DensityAt(k - 1, j)});
        }
        return sum;
    }
};

// Upper and lower exits of all analyses, and what the sums make of them.
struct Exits {
    Array1<f32> Upper{1, NoOfAnal};
    Array1<f32> Lower{1, NoOfAnal};
};

inline Exits ExitProbs(f32 drift, bool wantsLower) {
    Recursion recursion;
    recursion.Drift = drift;
    Exits exits;
    const f64 shift = f64{drift} * std::sqrt(f64{Info(1)});
    exits.Upper(1) = Single(1 - f64{NorCdf(Single(f64{UppBound(1)} - shift))});
    exits.Lower(1) = NorCdf(Single(f64{LowBound(1)} - shift));
    recursion.StdGrid(16);
    for (int k = 1; k <= NoOfAnal; ++k) {
        recursion.TrimGrid(16, LowBound(k), UppBound(k), Info(k));
        recursion.MidPoints(k);
        recursion.Weights(k);
        if (k == 1)
            continue;
        exits.Upper(k) = recursion.UpperExit(k);
        if (wantsLower)
            exits.Lower(k) = recursion.LowerExit(k);
    }
    return exits;
}

// The total over either boundary, as designs with one critical value at each analysis have it.
inline f32 EitherTotal(f32 drift, bool twoSided) {
    const Exits exits = ExitProbs(drift, twoSided);
    f32 total = Single(f64{exits.Upper(1)} + f64{exits.Lower(1)});
    for (int k = 2; k <= NoOfAnal; ++k)
        total = Single(f64{total} +
                       f64{Single(f64{exits.Upper(k)} + (twoSided ? f64{exits.Lower(k)} : 0))});
    return total;
}

} // namespace quorvanta::literal
