#!/usr/bin/env python3
"""Counts the evaluations of the root search for three plans of the unpaired t-test.

Written from the published formulas (Brent 1973 with its step acceptance in 32 bits against the
larger bound; Abramowitz and Stegun 7.1.26, 26.2.23, 26.7.5, 26.7.10), not from the program's
code. Needs Python 3 with numpy.
"""
import math
import numpy as np

f32 = np.float32


def nor_cdf(x):
    x = float(f32(x))
    a = abs(x)
    if a >= 10:
        return f32(1 if x > 0 else 0)
    t = float(f32(1 / (1 + 0.2316419 * a)))
    q = float(f32(((1.061405429 * t - 1.453152027) * t + 1.421413741) * t - 0.284496736))
    e = math.exp(-x * x / 2)
    s = 1 - (q * t + 0.254829592) * (t * e)
    sign = (x > 0) - (x < 0)
    return f32((s * sign + 1) / 2)


def nor_inv(p):
    p = float(f32(p))
    m = 0.5 - abs(0.5 - p)
    t = float(f32(math.sqrt(-2 * math.log(m))))
    n = (0.010328 * t + 0.802853) * t + 2.515517
    d = ((0.001308 * t + 0.189269) * t + 1.432788) * t + 1
    sign = (p > 0.5) - (p < 0.5)
    return f32((t - n / d) * sign)


def t_inv(p, df):
    z, df = float(nor_inv(p)), float(f32(df))
    s = float(f32(z * z))
    g1 = float(f32((s + 1) / 4))
    g2 = float(f32(((5 * s + 16) * s + 3) / 96))
    g3 = float(f32((((3 * s + 19) * s + 17) * s - 15) / 384))
    g4 = float(f32(((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160))
    return f32(z * ((((g4 / df + g3) / df + g2) / df + g1) / df + 1))


def nct_cdf(t, df, delta):
    t, df, delta = float(f32(t)), float(f32(df)), float(f32(delta))
    return float(nor_cdf((t * (1 - 1 / (4 * df)) - delta) / math.sqrt(1 + t * t / (2 * df))))


class Plan:
    """Two-sided, difference and size ratio 1 entered; unknown: 'n' or 'd'."""

    def __init__(self, alpha, power, d, sd, n, unknown):
        self.values = dict(alpha=alpha, power=power, d=d, sd=sd, n=n)
        self.unknown = unknown
        self.evaluations = 0

    def __call__(self, x):
        self.evaluations += 1
        v = dict(self.values)
        v[self.unknown] = x
        n1 = float(f32(v['n']))
        n2 = float(f32(n1 * 1.0))
        se = float(f32(float(f32(v['sd'])) * math.sqrt(1 / n1 + 1 / n2)))
        df = float(f32(n1 + n2 - 2))
        delta = float(f32(float(f32(v['d'])) - 0.0))
        t = float(t_inv(1 - float(f32(v['alpha'])) / 2, df))
        shift = delta / se
        return 1 - nct_cdf(t, df, shift) + nct_cdf(-t, df, shift) - v['power']


def find_root(f, x1, x2, tol=1e-5, max_iter=500):
    eps, e, d, c = 1e-10, 0.0, 0.0, 0.0
    a, b = x1, x2
    fa = f(a)
    fb = f(b)
    fc = fb
    for _ in range(max_iter):
        if fc * fb > 0:
            c, fc, d = a, fa, b - a
            e = d
        if abs(fc) < abs(fb):
            a, b, c = b, c, b
            fa, fb, fc = fb, fc, fb
        tol1 = 2 * eps * abs(b) + 0.5 * tol
        xm = 0.5 * (c - b)
        if abs(xm) <= tol1 or fb == 0:
            break
        step = False
        if abs(e) >= tol1 and abs(fa) > abs(fb):
            s = fb / fa
            if a == c:
                p, q = 2 * xm * s, 1 - s
            else:
                q, r = fa / fc, fb / fc
                p = s * (2 * xm * q * (q - r) - (b - a) * (r - 1))
                q = (q - 1) * (r - 1) * (s - 1)
            if p > 0:
                q = -q
            p = abs(p)
            bound = f32(abs(e * q))
            other = f32(3 * xm * q - abs(tol1 * q))
            if other > bound:
                bound = other
            if f32(2 * p) < bound:
                e, d = d, p / q
                step = True
        if not step:
            d = xm
            e = d
        a, fa = b, fb
        b += d if abs(d) > tol1 else (tol1 if xm >= 0 else -tol1)
        fb = f(b)
    return b, fb


for plan, low, high in (
        (Plan(0.05, 0.8, 0.5, 1, None, 'n'), 3.0, 99999.0),
        (Plan(0.01, 0.9, 1.2, 2, None, 'n'), 3.0, 99999.0),
        (Plan(0.05, 0.8, None, 1, 30, 'd'), 0.0, 99999.0)):
    root, residual = find_root(plan, low, high)
    print(plan.unknown, plan.values, 'evaluations', plan.evaluations, 'root %.9g' % root,
          'residual %.3g' % residual)
