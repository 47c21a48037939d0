#include "numeric/inverse.h"

#include <cmath>

namespace quorvanta {

namespace {

struct Pivot {
    int Row = 0;
    int Column = 0;
    f64 Size = 0; // absolute value; 0 when nothing but zeros and NaN is left
};

// Partner of a row: the column it was exchanged with, 0 before; and the other way round.
using Partners = Array1<int>;

Pivot LargestLeft(const Array2<f64>& a, int n, const Partners& columnOf, const Partners& rowOf) {
    Pivot largest;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            if (columnOf(i) == 0 && rowOf(j) == 0 && std::fabs(a(i, j)) > largest.Size)
                largest = {i, j, std::fabs(a(i, j))};
    return largest;
}

// Of the equations y = a x, solves row r for x(c) and puts it into the others: y(r) and x(c)
// change sides.
void Exchange(Array2<f64>& a, int n, int r, int c) {
    const f64 reciprocal = 1.0 / a(r, c);
    for (int j = 1; j <= n; ++j)
        if (j != c)
            a(r, j) *= -reciprocal;
    for (int i = 1; i <= n; ++i) {
        if (i == r)
            continue;
        const f64 factor = a(i, c);
        for (int j = 1; j <= n; ++j)
            if (j != c)
                a(i, j) += factor * a(r, j);
        a(i, c) = factor * reciprocal;
    }
    a(r, c) = reciprocal;
}

} // namespace

bool MatInverse(Array2<f64>& a, i16 n) {
    Partners columnOf(1, n);
    Partners rowOf(1, n);
    for (int step = 1; step <= n; ++step) {
        const Pivot pivot = LargestLeft(a, n, columnOf, rowOf);
        if (pivot.Size < PivotLimit)
            return false;
        Exchange(a, n, pivot.Row, pivot.Column);
        columnOf(pivot.Row) = pivot.Column;
        rowOf(pivot.Column) = pivot.Row;
    }
    // Now row r stands for x(columnOf(r)) and column c for y(rowOf(c)).
    const Array2<f64> exchanged = a;
    for (int r = 1; r <= n; ++r)
        for (int c = 1; c <= n; ++c)
            a(columnOf(r), rowOf(c)) = exchanged(r, c);
    return true;
}

} // namespace quorvanta
