// Matrices of the program as matrices of Eigen, the independent implementation of the checks.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "numeric/rnd.h"

#include <Eigen/Dense>

namespace quorvanta::checks {

inline Array2<f64> FromEigen(const Eigen::MatrixXd& m) {
    const int n = static_cast<int>(m.rows());
    Array2<f64> a(1, n, 1, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            a(i + 1, j + 1) = m(i, j);
    return a;
}

inline Eigen::MatrixXd ToEigen(const Array2<f64>& a) {
    const int n = a.HighBound1();
    Eigen::MatrixXd m(n, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            m(i, j) = a(i + 1, j + 1);
    return m;
}

// Uniform on -1..1.
inline f64 RandomElement() {
    return 2.0 * Rnd() - 1.0;
}

inline Eigen::MatrixXd RandomMatrix(int n) {
    return Eigen::MatrixXd::NullaryExpr(n, n, [] { return RandomElement(); });
}

} // namespace quorvanta::checks
