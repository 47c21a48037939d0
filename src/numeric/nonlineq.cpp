#include "numeric/nonlineq.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "numeric/matmultmat.h"

#include <cmath>

namespace quorvanta {

namespace {

constexpr f64 FirstDamping = 0.001;
constexpr f64 MaxDamping = 1e6;
// Lost in the rounding of the scaled matrix, but it keeps a singular one from dividing by 0.
constexpr f64 MinDamping = 1e-20;
constexpr f64 DerivativeStep = 0.01;
constexpr f64 SmallUnknown = 1e-6;
constexpr int MaxSweeps = 10;
constexpr f64 NegligibleProduct = 1e-16;

f64 SumOfSquares(const Array1<f64>& f) {
    f64 sum = 0;
    for (const f64 x : f.Raw())
        sum += x * x;
    return sum;
}

class Marquardt {
  public:
    Marquardt(int n, const EquationSystem& g, const Array1<f64>& rhs) : n_(n), g_(g), rhs_(rhs) {}

    // f = g(x) - rhs; false when Cancelled is set.
    bool Evaluate(const Array1<f64>& x, Array1<f64>& f) const;

    // Prepares Step for the neighbourhood of x, where the residuals are f. False when Cancelled is
    // set or the residuals do not depend on one of the unknowns.
    bool Linearise(const Array1<f64>& x, const Array1<f64>& f);

    // What to take off x, for this damping.
    Array1<f64> Step(f64 damping) const;

  private:
    bool FindJacobian(const Array1<f64>& x);
    bool ScaleNormalEquations(const Array1<f64>& f);
    void Decompose();
    bool Rotate(int j, int k);

    int n_;
    const EquationSystem& g_;
    const Array1<f64>& rhs_;
    Array2<f64> jacobian_{1, n_, 1, n_};
    Array1<f64> scale_{1, n_};          // roots of the diagonal of J'J
    Array1<f64> gradient_{1, n_};       // J'f, scaled
    Array2<f64> columns_{1, n_, 1, n_}; // J'J, scaled; rotated until its columns are orthogonal
    Array2<f64> rotation_{1, n_, 1, n_};
    Array1<f64> singular_{1, n_};
};

bool Marquardt::Evaluate(const Array1<f64>& x, Array1<f64>& f) const {
    g_(x, f);
    for (int i = 1; i <= n_; ++i)
        f(i) -= rhs_(i);
    return Cancelled != True;
}

bool Marquardt::Linearise(const Array1<f64>& x, const Array1<f64>& f) {
    if (!FindJacobian(x) || !ScaleNormalEquations(f))
        return false;
    Decompose();
    return true;
}

bool Marquardt::FindJacobian(const Array1<f64>& x) {
    Array1<f64> above(1, n_);
    Array1<f64> below(1, n_);
    Array1<f64> at = x;
    for (int j = 1; j <= n_; ++j) {
        const f64 h = x(j) == 0 ? DerivativeStep : DerivativeStep * x(j);
        at(j) = x(j) + h;
        if (!Evaluate(at, above))
            return false;
        at(j) = x(j) - h;
        if (!Evaluate(at, below))
            return false;
        at(j) = x(j);
        for (int i = 1; i <= n_; ++i)
            jacobian_(i, j) = (above(i) - below(i)) / 2.0 / h;
    }
    return true;
}

bool Marquardt::ScaleNormalEquations(const Array1<f64>& f) {
    for (int j = 1; j <= n_; ++j) {
        gradient_(j) = 0;
        for (int i = 1; i <= n_; ++i)
            gradient_(j) += jacobian_(i, j) * f(i);
        for (int k = 1; k <= n_; ++k) {
            columns_(j, k) = 0;
            for (int i = 1; i <= n_; ++i)
                columns_(j, k) += jacobian_(i, j) * jacobian_(i, k);
        }
        scale_(j) = std::sqrt(columns_(j, j));
        if (scale_(j) == 0)
            return false;
    }
    for (int j = 1; j <= n_; ++j) {
        gradient_(j) /= scale_(j);
        for (int k = 1; k <= n_; ++k)
            columns_(j, k) /= scale_(j) * scale_(k);
    }
    return true;
}

void Marquardt::Decompose() {
    MatIdentity(rotation_);
    bool rotated = true;
    for (int sweep = 1; rotated && sweep <= MaxSweeps; ++sweep) {
        rotated = false;
        for (int j = 1; j < n_; ++j)
            for (int k = j + 1; k <= n_; ++k)
                rotated = Rotate(j, k) || rotated;
    }
    for (int j = 1; j <= n_; ++j) {
        f64 sum = 0;
        for (int i = 1; i <= n_; ++i)
            sum += columns_(i, j) * columns_(i, j);
        singular_(j) = std::sqrt(sum);
    }
}

// Makes two columns orthogonal; false when they are already.
bool Marquardt::Rotate(int j, int k) {
    f64 product = 0;
    f64 sizeJ = 0;
    f64 sizeK = 0;
    for (int i = 1; i <= n_; ++i) {
        product += columns_(i, j) * columns_(i, k);
        sizeJ += columns_(i, j) * columns_(i, j);
        sizeK += columns_(i, k) * columns_(i, k);
    }
    if (std::fabs(product) <= NegligibleProduct * std::sqrt(sizeJ * sizeK))
        return false;
    const f64 zeta = (sizeK - sizeJ) / (2.0 * product);
    const f64 tangent = std::copysign(1.0, zeta) / (std::fabs(zeta) + std::sqrt(1.0 + zeta * zeta));
    const f64 cosine = 1.0 / std::sqrt(1.0 + tangent * tangent);
    const f64 sine = cosine * tangent;
    for (Array2<f64>* matrix : {&columns_, &rotation_}) {
        for (int i = 1; i <= n_; ++i) {
            const f64 left = (*matrix)(i, j);
            const f64 right = (*matrix)(i, k);
            (*matrix)(i, j) = cosine * left - sine * right;
            (*matrix)(i, k) = sine * left + cosine * right;
        }
    }
    return true;
}

// The scaled matrix is symmetric and not negative: the rotation holds its eigenvectors and the
// singular values are its eigenvalues.
Array1<f64> Marquardt::Step(f64 damping) const {
    Array1<f64> step(1, n_);
    for (int k = 1; k <= n_; ++k) {
        f64 share = 0;
        for (int i = 1; i <= n_; ++i)
            share += rotation_(i, k) * gradient_(i);
        share /= singular_(k) + damping;
        for (int i = 1; i <= n_; ++i)
            step(i) += rotation_(i, k) * share;
    }
    for (int i = 1; i <= n_; ++i)
        step(i) /= scale_(i);
    return step;
}

bool IsWithinTolerance(const Array1<f64>& x, const Array1<f64>& trial, f64 tol) {
    for (int i = x.LowBound(); i <= x.HighBound(); ++i)
        if (!(std::fabs(trial(i) - x(i)) <= tol * std::fabs(trial(i)) + SmallUnknown))
            return false;
    return true;
}

} // namespace

void SolveSystem(i16 n, const EquationSystem& g, const Array1<f64>& start, const Array1<f64>& lower,
                 const Array1<f64>& upper, f64 tol, i16 maxIter, const Array1<f64>& rhs,
                 Array1<f64>& solution) {
    solution = start;
    Marquardt marquardt(n, g, rhs);
    Array1<f64> f(1, n);
    if (!marquardt.Evaluate(solution, f))
        return;
    f64 sum = SumOfSquares(f);
    f64 damping = FirstDamping;
    Array1<f64> trial(1, n);
    Array1<f64> trialF(1, n);
    for (i16 iteration = 1; iteration <= maxIter; ++iteration) {
        if (!marquardt.Linearise(solution, f))
            return;
        for (bool accepted = false; !accepted;) {
            const Array1<f64> step = marquardt.Step(damping);
            for (int i = 1; i <= n; ++i)
                trial(i) = MinOf(MaxOf(solution(i) - step(i), lower(i)), upper(i));
            if (!marquardt.Evaluate(trial, trialF))
                return;
            const f64 trialSum = SumOfSquares(trialF);
            const bool settled = IsWithinTolerance(solution, trial, tol);
            accepted = trialSum < sum;
            if (accepted) {
                solution = trial;
                f = trialF;
                sum = trialSum;
                damping = MaxOf(damping / 100.0, MinDamping);
            } else {
                damping *= 10.0;
            }
            // More damping would only shorten a refused step, so one within the tolerance ends the
            // search as well.
            if (settled || damping > MaxDamping)
                return;
        }
    }
}

} // namespace quorvanta
