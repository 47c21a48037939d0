// The root finder: one real unknown, no derivative, no start value, no bracketing phase.
#pragma once

#include "core/analysis_state.h"
#include "core/types.h"

#include <cmath>

namespace quorvanta {

inline constexpr f64 RootTolerance = 1e-5;
inline constexpr i16 RootIterations = 500;

// The |f| up to which a found root counts as one.
inline constexpr f64 RootResidual = 0.001;

// Is that found root the mark of a search that ran to the end of a scaled range? Its decimals don't
// count.
constexpr bool IsRangeEndMark(f64 root) {
    for (const i32 mark : RangeEndMarks)
        if (root >= mark && root < mark + 1)
            return true;
    return false;
}

// Finds x in x1..x2 with f(x) = 0 by Brent's method (R. P. Brent, Algorithms for Minimization
// without Derivatives, 1973, chapter 4). On return root and fRoot hold the last point and its
// function value, iterations the passes made. There is no test for a change of sign: a search
// without one ends with a large |fRoot|, which is for the caller to test.
//
// When Cancelled is set after the first evaluation the outputs stay as they were; when it is set
// later fRoot is 99999 and root stays.
//
// Differs from the published method in one place, deliberately: an interpolation step is accepted
// against the larger of its two bounds, in 32 bits, where Brent takes the smaller. That accepts
// more interpolation steps and fixes the number of evaluations.
template <class Function>
void FindRootOf(Function&& f, f64 x1, f64 x2, f64 tol, i16 maxIter, i16& iterations, f64& root,
                f64& fRoot) {
    constexpr f64 Eps = 1e-10;
    f64 E = 0;
    f64 D = 0;
    f64 A = x1;
    f64 B = x2;
    f64 C = 0;
    f64 FA = f(A);
    if (Cancelled == True)
        return;
    f64 FB = f(B);
    f64 FC = FB;
    iterations = 0;
    for (i16 iter = 1; iter <= maxIter; ++iter) {
        iterations = iter;
        if (FC * FB > 0) {
            C = A;
            FC = FA;
            D = B - A;
            E = D;
        }
        if (std::fabs(FC) < std::fabs(FB)) {
            A = B;
            B = C;
            C = A;
            FA = FB;
            FB = FC;
            FC = FA;
        }
        const f64 Tol1 = 2 * Eps * std::fabs(B) + 0.5 * tol;
        const f64 Xm = 0.5 * (C - B);
        if (std::fabs(Xm) <= Tol1 || FB == 0)
            break;
        bool interpolated = false;
        if (std::fabs(E) >= Tol1 && std::fabs(FA) > std::fabs(FB)) {
            const f64 S = FB / FA;
            f64 P = 0;
            f64 Q = 0;
            if (A == C) {
                P = 2 * Xm * S;
                Q = 1 - S;
            } else {
                Q = FA / FC;
                const f64 R = FB / FC;
                P = S * (2 * Xm * Q * (Q - R) - (B - A) * (R - 1));
                Q = (Q - 1) * (R - 1) * (S - 1);
            }
            if (P > 0)
                Q = -Q;
            P = std::fabs(P);
            f32 bound = static_cast<f32>(std::fabs(E * Q));
            const f32 other = static_cast<f32>(3 * Xm * Q - std::fabs(Tol1 * Q));
            if (other > bound)
                bound = other;
            if (static_cast<f32>(2 * P) < bound) {
                E = D;
                D = P / Q;
                interpolated = true;
            }
        }
        if (!interpolated) {
            D = Xm;
            E = D;
        }
        A = B;
        FA = FB;
        if (std::fabs(D) > Tol1)
            B += D;
        else
            B += Xm >= 0 ? Tol1 : -Tol1;
        FB = f(B);
        if (Cancelled == True) {
            fRoot = NoValue;
            return;
        }
    }
    fRoot = FB;
    root = B;
}

} // namespace quorvanta
