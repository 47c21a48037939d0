#!/usr/bin/env python3
"""Writes root_search.csv: the trial points of the root finder on functions of plain arithmetic.

The search is written down a second time here, independently of the C++ code, with numpy.float32 for
the comparison of an interpolation step with its bounds. The column "published" is the number of
evaluations that Brent's own rule (the smaller bound, in 64 bits) takes: where it differs from the
number of points, the rule is seen at work.

    python3 root_search.py > ../data/root_search.csv      (Python 3, numpy)
"""
import numpy as np

f32 = np.float32


def search(f, x1, x2, tol, max_iter, published=False):
    points = []

    def value(x):
        points.append(x)
        return f(x)

    eps = 1.0e-10
    e = d = 0.0
    a, b = x1, x2
    fa = value(a)
    fb = value(b)
    fc = fb
    c = 0.0
    passes = 0
    for passes in range(1, max_iter + 1):
        if fc * fb > 0:
            c, fc = a, fa
            d = b - a
            e = d
        if abs(fc) < abs(fb):
            a, b, c = b, c, b
            fa, fb, fc = fb, fc, fb
        tol1 = 2 * eps * abs(b) + 0.5 * tol
        xm = 0.5 * (c - b)
        if abs(xm) <= tol1 or fb == 0:
            break
        bisect = True
        if abs(e) >= tol1 and abs(fa) > abs(fb):
            s = fb / fa
            if a == c:
                p = 2 * xm * s
                q = 1 - s
            else:
                q = fa / fc
                r = fb / fc
                p = s * (2 * xm * q * (q - r) - (b - a) * (r - 1))
                q = (q - 1) * (r - 1) * (s - 1)
            if p > 0:
                q = -q
            p = abs(p)
            if published:
                accept = 2 * p < min(3 * xm * q - abs(tol1 * q), abs(e * q))
            else:
                bound = f32(abs(e * q))
                other = f32(3 * xm * q - abs(tol1 * q))
                if other > bound:
                    bound = other
                accept = f32(2 * p) < bound
            if accept:
                e = d
                d = p / q
                bisect = False
        if bisect:
            d = xm
            e = d
        a, fa = b, fb
        if abs(d) > tol1:
            b = b + d
        elif xm >= 0:
            b = b + tol1
        else:
            b = b - tol1
        fb = value(b)
    return points, passes, b, fb


CASES = {
    # x^3 - 2x - 5: Wallis' equation, root 2.0945514815423265
    "wallis": (lambda x: (x * x - 2) * x - 5, 0.0, 10.0),
    # a power curve in a sample size: steep, then flat
    "saturating": (lambda x: x / (x + 25.0) - 0.8, 3.0, 99999.0),
    # a triple root, on which interpolation is slow
    "triple": (lambda x: (x - 0.3) * (x - 0.3) * (x - 0.3), 0.0, 5.0),
    # no change of sign
    "parabola": (lambda x: x * x + 1.0, -1.0, 2.0),
    # no change of sign either, but a zero outside the limits
    "outside": (lambda x: x, 0.5, 2.0),
}


def main():
    print("# Written by root_search.py: case, passes, published, then the trial points.")
    for name, (f, x1, x2) in CASES.items():
        points, passes, _, _ = search(f, x1, x2, 1.0e-5, 500)
        published, _, _, _ = search(f, x1, x2, 1.0e-5, 500, published=True)
        print(",".join([name, str(passes), str(len(published))] + [repr(p) for p in points]))


if __name__ == "__main__":
    main()
