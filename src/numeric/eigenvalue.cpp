#include "numeric/eigenvalue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace quorvanta {

namespace {

// Makes v the vector of the reflection I - beta v v' that turns the v given into a multiple of the
// first unit vector, and returns beta; 0, that is no reflection, for a v that is one already (Golub
// and Van Loan, algorithm 5.1.1, scaled against overflow).
f64 Householder(std::span<f64> v) {
    f64 scale = 0;
    for (const f64 x : v.subspan(1))
        scale = std::max(scale, std::fabs(x));
    if (scale == 0)
        return 0;
    scale = std::max(scale, std::fabs(v[0]));
    f64 tail = 0;
    for (f64& x : v)
        x /= scale;
    for (const f64 x : v.subspan(1))
        tail += x * x;
    const f64 head = v[0];
    const f64 norm = std::sqrt(head * head + tail);
    const f64 first = head <= 0 ? head - norm : -tail / (head + norm);
    for (f64& x : v)
        x /= first;
    v[0] = 1.0;
    return 2.0 * first * first / (tail + first * first);
}

// The reflection from the left on the rows from `row` on, within the columns first..last.
void ReflectRows(Array2<f64>& h, std::span<const f64> v, f64 beta, int row, int first, int last) {
    for (int j = first; j <= last; ++j) {
        f64 sum = 0;
        for (int k = 0; k < static_cast<int>(v.size()); ++k)
            sum += v[static_cast<std::size_t>(k)] * h(row + k, j);
        for (int k = 0; k < static_cast<int>(v.size()); ++k)
            h(row + k, j) -= beta * sum * v[static_cast<std::size_t>(k)];
    }
}

// The reflection from the right on the columns from `column` on, within the rows first..last.
void ReflectColumns(Array2<f64>& h, std::span<const f64> v, f64 beta, int column, int first,
                    int last) {
    for (int i = first; i <= last; ++i) {
        f64 sum = 0;
        for (int k = 0; k < static_cast<int>(v.size()); ++k)
            sum += h(i, column + k) * v[static_cast<std::size_t>(k)];
        for (int k = 0; k < static_cast<int>(v.size()); ++k)
            h(i, column + k) -= beta * sum * v[static_cast<std::size_t>(k)];
    }
}

f64 SumOfSizes(const Array2<f64>& a, int n) {
    f64 sum = 0;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            sum += std::fabs(a(i, j));
    return sum;
}

} // namespace

bool EigenValues(i16 n, const Array2<f64>& a, Array1<f64>& real, Array1<f64>& imaginary) {
    real.ReDim(1, n);
    imaginary.ReDim(1, n);
    std::ranges::fill(real.Raw(), NoValue);
    std::ranges::fill(imaginary.Raw(), NoValue);
    if (!std::isfinite(SumOfSizes(a, n)))
        return false;
    Array2<f64> h = a;
    EigenBalance(h, n);
    EigenHessenberg(h, n);
    return EigenQR(h, n, EigenStepsPerRow * n, real, imaginary);
}

void EigenBalance(Array2<f64>& h, int n) {
    constexpr f64 Radix = 2.0;
    constexpr f64 WorthIt = 0.95; // a scaling must bring the norms down at least so far
    for (bool balanced = false; !balanced;) {
        balanced = true;
        for (int i = 1; i <= n; ++i) {
            f64 column = 0;
            f64 row = 0;
            for (int j = 1; j <= n; ++j) {
                if (j == i)
                    continue;
                column += std::fabs(h(j, i));
                row += std::fabs(h(i, j));
            }
            if (column == 0 || row == 0)
                continue;
            const f64 before = column + row;
            f64 factor = 1.0;
            while (column < row / Radix) {
                factor *= Radix;
                column *= Radix * Radix;
            }
            while (column >= row * Radix) {
                factor /= Radix;
                column /= Radix * Radix;
            }
            if ((column + row) / factor >= WorthIt * before)
                continue;
            balanced = false;
            for (int j = 1; j <= n; ++j)
                h(i, j) /= factor;
            for (int j = 1; j <= n; ++j)
                h(j, i) *= factor;
        }
    }
}

void EigenHessenberg(Array2<f64>& h, int n) {
    std::vector<f64> v;
    for (int k = 1; k <= n - 2; ++k) {
        v.clear();
        for (int i = k + 1; i <= n; ++i)
            v.push_back(h(i, k));
        const f64 beta = Householder(v);
        ReflectRows(h, v, beta, k + 1, k, n);
        ReflectColumns(h, v, beta, k + 1, 1, n);
        for (int i = k + 2; i <= n; ++i)
            h(i, k) = 0;
    }
}

namespace {

// First row of the block that ends at row `last` and that no negligible element of the subdiagonal
// cuts through. size stands in where the two diagonal elements are 0.
int BlockStart(const Array2<f64>& h, int last, f64 size) {
    int first = last;
    for (; first > 1; --first) {
        f64 neighbours = std::fabs(h(first - 1, first - 1)) + std::fabs(h(first, first));
        if (neighbours == 0)
            neighbours = size;
        if (std::fabs(h(first, first - 1)) + neighbours == neighbours)
            break;
    }
    return first;
}

// Both eigenvalues of the block of rows and columns i and i + 1.
void SplitPair(const Array2<f64>& h, int i, Array1<f64>& real, Array1<f64>& imaginary) {
    const f64 x = h(i + 1, i + 1);
    const f64 product = h(i, i + 1) * h(i + 1, i);
    const f64 p = 0.5 * (h(i, i) - x);
    const f64 q = p * p + product;
    const f64 z = std::sqrt(std::fabs(q));
    if (q >= 0) {
        const f64 larger = p + std::copysign(z, p);
        real(i) = x + larger;
        real(i + 1) = larger == 0 ? x : x - product / larger;
        imaginary(i) = imaginary(i + 1) = 0;
    } else {
        real(i) = real(i + 1) = x + p;
        imaginary(i) = z;
        imaginary(i + 1) = -z;
    }
}

// The two shifts of a step are the roots of (s - X)(s - Y) = Product.
struct Shifts {
    f64 X;
    f64 Y;
    f64 Product;
};

Shifts ShiftsOf(const Array2<f64>& h, int last, int step) {
    constexpr int Patience = 10;
    if (step == 0 || step % Patience != 0)
        return {h(last, last), h(last - 1, last - 1), h(last, last - 1) * h(last - 1, last)};
    const f64 s = std::fabs(h(last, last - 1)) + std::fabs(h(last - 1, last - 2));
    const f64 x = h(last, last) + 0.75 * s;
    return {x, x, -0.4375 * s * s};
}

// One double step on the block first..last of at least three rows.
void FrancisStep(Array2<f64>& h, int first, int last, const Shifts& shifts) {
    const f64 fromX = shifts.X - h(first, first);
    const f64 fromY = shifts.Y - h(first, first);
    // First column of (H - s1)(H - s2), over h(first + 1, first).
    std::array<f64, 3> bulge{
        (fromX * fromY - shifts.Product) / h(first + 1, first) + h(first, first + 1),
        h(first + 1, first + 1) - h(first, first) - fromX - fromY, h(first + 2, first + 1)};
    for (int k = first; k < last; ++k) {
        const int rows = std::min(3, last - k + 1);
        const auto v = std::span(bulge).first(static_cast<std::size_t>(rows));
        const bool isChased = k > first;
        if (isChased)
            for (int i = 0; i < rows; ++i)
                v[static_cast<std::size_t>(i)] = h(k + i, k - 1);
        const f64 beta = Householder(v);
        ReflectRows(h, v, beta, k, isChased ? k - 1 : k, last);
        ReflectColumns(h, v, beta, k, first, std::min(k + 3, last));
        if (isChased)
            for (int i = 1; i < rows; ++i)
                h(k + i, k - 1) = 0;
    }
}

} // namespace

bool EigenQR(Array2<f64>& h, int n, int maxSteps, Array1<f64>& real, Array1<f64>& imaginary) {
    const f64 size = SumOfSizes(h, n);
    int steps = 0;
    int stepsOfThisOne = 0;
    for (int last = n; last >= 1;) {
        const int first = BlockStart(h, last, size);
        if (first == last) {
            real(last) = h(last, last);
            imaginary(last) = 0;
            last -= 1;
            stepsOfThisOne = 0;
        } else if (first == last - 1) {
            SplitPair(h, first, real, imaginary);
            last -= 2;
            stepsOfThisOne = 0;
        } else {
            if (steps == maxSteps)
                return false;
            FrancisStep(h, first, last, ShiftsOf(h, last, stepsOfThisOne));
            ++steps;
            ++stepsOfThisOne;
        }
    }
    return true;
}

} // namespace quorvanta
