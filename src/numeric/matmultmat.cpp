#include "numeric/matmultmat.h"

namespace quorvanta {

void MatMultMat(const Array2<f64>& a, const Array2<f64>& b, Array2<f64>& result) {
    if (a.LowBound2() != b.LowBound1() || a.HighBound2() != b.HighBound1())
        throw RunTimeError(Fault::BadIndex);
    result.ReDim(a.LowBound1(), a.HighBound1(), b.LowBound2(), b.HighBound2());
    // The row of b innermost: both it and the row of the result lie in memory order.
    for (int i = a.LowBound1(); i <= a.HighBound1(); ++i)
        for (int k = a.LowBound2(); k <= a.HighBound2(); ++k)
            for (int j = b.LowBound2(); j <= b.HighBound2(); ++j)
                result(i, j) += a(i, k) * b(k, j);
}

void MatTranspose(const Array2<f64>& a, Array2<f64>& result) {
    result.ReDim(a.LowBound2(), a.HighBound2(), a.LowBound1(), a.HighBound1());
    for (int i = result.LowBound1(); i <= result.HighBound1(); ++i)
        for (int j = result.LowBound2(); j <= result.HighBound2(); ++j)
            result(i, j) = a(j, i);
}

void MatIdentity(Array2<f64>& a) {
    for (int i = a.LowBound1(); i <= a.HighBound1(); ++i)
        for (int j = a.LowBound2(); j <= a.HighBound2(); ++j)
            a(i, j) = i == j ? 1.0 : 0.0;
}

} // namespace quorvanta
