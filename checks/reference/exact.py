#!/usr/bin/env python3
"""Writes exact.csv: exact values of the distribution functions, and how far a formula may be off.

Values are computed with mpmath at 30 digits, or with scipy in 64 bits where a sum or an integral of
the non-central distributions is needed; arguments are 32-bit floats, so that the program sees the
very same numbers. A line "[function; range; bound]" opens a section. A row is: function, arguments,
exact value, tolerance.

The tolerance is the error bound that was published with the formula, where there is one, and
otherwise the deviation of the formula itself, evaluated without any rounding to 32 bits
(stepwise.py with its rounding points switched off), at the same point; to which comes what the
rounding points can add, estimated here from the sizes of the rounded values and never from the
program's results. Sections that are marked "not bounded" show known weak corners.

    python3 exact.py > ../data/exact.csv      (Python 3, mpmath, numpy, scipy; takes some minutes)
"""
import math
from fractions import Fraction

import numpy as np
from mpmath import mp, mpf
from scipy import integrate, optimize, special

import stepwise
from stepwise import R as round32

formula = stepwise
stepwise.R = float  # from here on stepwise evaluates the formulas without rounding points

mp.dps = 30
U = 2.0 ** -24  # half a unit of the last place of a 32-bit float at 1
NORCDF = 7.5e-8  # Abramowitz and Stegun 7.1.26: 1.5e-7 for erf
NORINV = 4.5e-4  # 26.2.23
NORTAIL = 1.5e-7  # 26.2.19


# --- exact functions --------------------------------------------------------------------------
def ncdf(x):
    return mp.ncdf(mpf(x))


def npdf(x):
    return mp.npdf(mpf(x))


def ninv(p):
    return mp.sqrt(2) * mp.erfinv(2 * mpf(p) - 1)


def ibeta(x, a, b):
    if x <= 0:
        return mpf(0)
    if x >= 1:
        return mpf(1)
    return mp.betainc(mpf(a), mpf(b), 0, mpf(x), regularized=True)


def bpdf(x, a, b):
    x, a, b = mpf(x), mpf(a), mpf(b)
    return mp.exp((a - 1) * mp.log(x) + (b - 1) * mp.log(1 - x) + mp.loggamma(a + b)
                  - mp.loggamma(a) - mp.loggamma(b))


def tcdf(t, df):
    half = ibeta(mpf(df) / (mpf(df) + mpf(t) ** 2), mpf(df) / 2, mpf(1) / 2) / 2
    return half if t < 0 else 1 - half


def tpdf(t, df):
    t, df = mpf(t), mpf(df)
    return (mp.gamma((df + 1) / 2) / mp.sqrt(df * mp.pi) / mp.gamma(df / 2)
            * (1 + t * t / df) ** (-(df + 1) / 2))


def chi2cdf(x, df):
    return mp.gammainc(mpf(df) / 2, 0, mpf(x) / 2, regularized=True) if x > 0 else mpf(0)


def chi2pdf(x, df):
    x, df = mpf(x), mpf(df)
    return x ** (df / 2 - 1) * mp.exp(-x / 2) / 2 ** (df / 2) / mp.gamma(df / 2)


def fcdf(f, df1, df2):
    f, df1, df2 = mpf(f), mpf(df1), mpf(df2)
    return ibeta(df1 * f / (df1 * f + df2), df1 / 2, df2 / 2)


def fpdf(f, df1, df2):
    f, df1, df2 = mpf(f), mpf(df1), mpf(df2)
    x = df1 * f / (df1 * f + df2)
    return bpdf(x, df1 / 2, df2 / 2) * df1 * df2 / (df1 * f + df2) ** 2


def invert(cdf, pdf, p, start):
    """Newton steps from a 64-bit quantile."""
    x = mpf(start)
    for _ in range(4):
        x -= (cdf(x) - mpf(p)) / pdf(x)
    return x


def tinv(p, df):
    return invert(lambda x: tcdf(x, df), lambda x: tpdf(x, df), p, special.stdtrit(df, float(p)))


def chi2inv(p, df):
    return invert(lambda x: chi2cdf(x, df), lambda x: chi2pdf(x, df), p,
                  2 * special.gammaincinv(df / 2, float(p)))


def finv(p, df1, df2):
    return invert(lambda x: fcdf(x, df1, df2), lambda x: fpdf(x, df1, df2), p,
                  special.fdtri(df1, df2, float(p)))


def mixture(h, cdf):
    total = 0.0
    for i in range(400):
        total += math.exp(i * math.log(h) - h - math.lgamma(i + 1)) * cdf(i) if h > 0 else (
            cdf(0) if i == 0 else 0.0)
    return total


def ncchi2(x, df, lam):
    return mixture(lam / 2, lambda i: special.gammainc(df / 2 + i, x / 2))


def ncf(f, df1, df2, lam):
    w = f * df1 / (f * df1 + df2)
    return mixture(lam / 2, lambda i: special.betainc(df1 / 2 + i, df2 / 2, w))


def nct(t, df, delta):
    logc = -(df / 2 - 1) * math.log(2) - math.lgamma(df / 2)
    s = math.sqrt(df)

    def integrand(u):  # u is the chi variable, around sqrt(df)
        return special.ndtr(t * u / s - delta) * math.exp(logc + (df - 1) * math.log(u) - u * u / 2)

    low, high = max(1e-12, s - 12), s + 12
    return integrate.quad(integrand, low, high, epsabs=1e-13, epsrel=1e-12, limit=400,
                          points=[s])[0]


# --- what the rounding points can add ---------------------------------------------------------
def beta_rounding(x, a, b):
    """Of BetaInc(x, a, b), x exact."""
    x = max(x, round32(1e-5))
    mirrored = (a + 1) / (a + b + 2) < x
    result = U
    if mirrored:
        result += float(bpdf(x, a, b)) * U if x < 1 else 0
        x, a, b = max(1 - x, round32(1e-5)), b, a
    value = float(ibeta(x, a, b))
    logs = [formula.log_gamma_star(v) for v in (a + b, a + 1, b)]
    exponent = logs[0] - logs[1] - logs[2]
    # LogGammaStar: its result and its product of up to ten factors; then the exponent.
    relative = U * (sum(abs(v) for v in logs) + 3 * 20 + abs(exponent))
    # The fraction, at 20 roundings, and the three steps back from a + 2, b + 2.
    amplified = ((a + b) * (a + b + 1) * (a + b + 2) * (a + b + 3) * (x * (1 - x)) ** 2
                 / ((a + 1) * (a + 2) * b * (b + 1)))
    k1 = (a + b) * x / (a + 1)
    k2 = (a + b + 1) * x / (a + 2)
    relative += U * (20 * amplified
                     + 2 * k1 * k2 * (a + 2) / b * ((a + b + 2) * (1 - x) / (b + 1) + 1) + 10)
    return result + value * relative


def clamped(a, b):
    """True where the factor 1/B(a, b) passes the clamp at exp(75)."""
    return math.lgamma(a + b) - math.lgamma(a + 1) - math.lgamma(b) + 0.92 > 75


def floored(f, df1, df2):
    """True where FCdf asks the beta function for an argument within 1e-5 of 0 or 1."""
    return not 1e-5 < f * df1 / (f * df1 + df2) < 1 - 1e-5


def fcdf_rounding(f, df1, df2):
    if df1 > 10 and df2 > 10 and (df1 > 100 or df2 > 100):
        return normal_rounding(6)
    x = df2 / (f * df1 + df2)
    return 2 * U + beta_rounding(x, df2 / 2, df1 / 2) + float(bpdf(x, df2 / 2, df1 / 2)) * x * U


def normal_rounding(z):
    """Of NorCdf at an argument of about z that was rounded itself: z phi(z) is 0.25 at most."""
    return NORCDF + 3 * U


def f_tail_rounding(df1, df2, f):
    """Of FTail in mode 1: the finite sums once more, with what each rounding can add."""
    x = df2 / (df1 * f + df2)
    y = math.sqrt(1 - x)
    e1 = 2 * (df1 // 2) - df1 + 2
    e2 = 2 * (df2 // 2) - df2 + 2
    p, term = {1: (1 - 2 / math.pi * math.atan(y / math.sqrt(x)), y * math.sqrt(x) / math.pi),
               2: (x, (1 - x) * x), 3: (math.sqrt(x), (1 - x) * math.sqrt(x) / 2),
               0: (1 - y, y * x / 2)}[2 * e1 - e2]
    error = U * (p + 1)  # of the start, which is a difference from 1 at the worst
    roundings = 3
    cut = 0.0
    for sign, first, last, factor in ((-1, e2, df2, e1), (1, e1, df1, df2)):
        share = x if sign < 0 else 1 - x
        i = first
        while i < last:
            if abs(2 * term / i) < 1e-5 * p:
                cut = 2e-5 * p
                break
            p += sign * 2 * term / i
            error += U * (p + roundings * 2 * term / i)
            term *= (factor / i + 1) * share
            roundings += 3
            i += 2
    # x itself is rounded, and the argument f.
    return error + cut + 2 * U * float(fpdf(f, df1, df2)) * (f + df2 / df1)


def chi2cdf_rounding(x, df):
    if df > 21:
        return normal_rounding(0)
    y = x / df
    return fcdf_rounding(y, df, 10000.0) + float(fpdf(y, df, 10000.0)) * y * U


# --- output -----------------------------------------------------------------------------------
def section(function, what, bound):
    print(f"[{function}; {what}; {bound}]")


def row(name, *args, exact, tolerance):
    print(",".join([name] + [f"{v:.9g}" for v in args] + [mp.nstr(mpf(exact), 17),
                                                         f"{float(tolerance):.8g}"]))


def deviation(approximate, exact):
    return abs(float(mpf(approximate) - mpf(exact)))


def floats(*values):
    return [round32(v) for v in values]


P_MID = floats(0.001, 0.005, 0.01, 0.025, 0.05, 0.1, 0.2, 0.35, 0.45, 0.55, 0.7, 0.8, 0.9, 0.95,
               0.975, 0.99, 0.995, 0.999)
P_ALL = floats(1e-5, 5e-5, 2e-4) + P_MID + floats(0.9998, 0.99995, 0.99999)


def normal():
    section("NorCdf", "x from -9.99 to 9.99", "Abramowitz and Stegun 7.1.26, 7.5e-8, and rounding")
    for i in range(-333, 334):
        x = round32(0.03 * i)
        row("NorCdf", x, exact=ncdf(x), tolerance=NORCDF + 2 * U)
    section("NorDensity", "x from -9.9 to 9.9", "rounding")
    for i in range(-66, 67):
        x = round32(0.15 * i)
        d = float(npdf(x))
        row("NorDensity", x, exact=npdf(x), tolerance=d * (U * (1.01 + x * x / 2)) + 1e-38)
    section("NorInv", "p from 1e-15 to 1 - 6e-8", "Abramowitz and Stegun 26.2.23, 4.5e-4")
    for i in range(1, 200):
        p = round32(i / 200)
        row("NorInv", p, exact=ninv(p), tolerance=NORINV + 2 * U)
    for e in (1e-15, 1e-12, 1e-10, 1e-8, 1e-6, 1e-5, 1e-4, 1e-3):
        for p in floats(e, 1 - e):
            if p < 1:
                row("NorInv", p, exact=ninv(p), tolerance=NORINV + 10 * U)
    section("NorTail1", "z from -7 to 7", "Abramowitz and Stegun 26.2.19, 1.5e-7, and rounding")
    for i in range(-140, 141):
        z = round32(0.05 * i)
        p = float(1 - ncdf(abs(z)))
        row("NorTail1", z, exact=1 - ncdf(z), tolerance=NORTAIL + U + p * 16 * 2 * U)
    section("NorTail2", "p from 0.001 to 0.999", "the truncated polynomial itself, and rounding")
    for p in P_MID + floats(0.4999, 0.02, 0.03, 0.004, 0.96):
        z = -ninv(p)
        tolerance = deviation(formula.nor_tail2(p), z) + 8 * U * (1 + abs(float(z)))
        row("NorTail2", p, exact=z, tolerance=tolerance + 5e-6 * (p in floats(
            0.05, 0.025, 0.01, 0.005)))
    section("NorTail2", "p from 1e-5 to 0.001", "the truncated polynomial itself, and rounding")
    for p in floats(1e-5, 2e-5, 5e-5, 1e-4, 2e-4, 5e-4, 8e-4):
        z = -ninv(p)
        row("NorTail2", p, exact=z, tolerance=deviation(formula.nor_tail2(p), z) + 8 * U * 6)


def gamma_beta():
    section("LogGammaStar", "x from 0.5 to 10000", "first term left out, and rounding")
    for x in floats(0.5, 0.75, 1, 1.5, 2, 3.3, 5, 7.7, 10, 12.5, 20, 56, 100.5, 500, 1234.5, 5000,
                    10000):
        v = mp.loggamma(x) - mp.log(2 * mp.pi) / 2
        row("LogGammaStar", x, exact=v, tolerance=1 / (1680 * max(x, 10) ** 7)
            + U * (abs(float(v)) + 20))
    section("Factorial", "n to 140", "relative: half the distance of the bounds of Robbins (1955)")
    for n in range(0, 141, 1):
        v = mp.factorial(n)
        half = (1 / (12 * n) - 1 / (12 * n + 1)) / 2 if n > 50 else 2 ** -52
        row("Factorial", n, exact=v, tolerance=half * float(v))
    section("GammaFn", "x from 0.01 to 169", "relative: first term left out, 1/(1260 (x + 2)^5)")
    for x in (0.01, 0.05, 0.1, 0.25, 0.5, 0.75, 1.0, 1.25, 1.5, 2.0, 2.5, 3.0, 4.5, 6.0, 10.0, 15.5,
              30.0, 60.5, 100.0, 169.0):
        v = mp.gamma(x)
        row("GammaFn", x, exact=v, tolerance=float(v) * (1 / (1260 * (x + 2) ** 5) + 1e-9
                                                         + 1e-15 * x * math.log(x + 3)))
    xs = floats(1e-5, 0.001, 0.01, 0.05, 0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9, 0.97, 0.995, 0.9999)
    grid = [(a, b) for a in floats(0.5, 1, 1.5, 2.5, 5, 10, 25, 50, 250, 499.5)
            for b in floats(0.5, 1, 2, 5.5, 15, 50, 250, 499.5)]
    section("BetaInc", "a and b from 0.5 to 499.5, 1/B(a, b) below exp(75)", "rounding")
    for a, b in grid:
        if not clamped(a, b):
            for x in xs:
                exact = ibeta(x, a, b)
                row("BetaInc", x, a, b, exact=exact,
                    tolerance=deviation(formula.beta_inc(x, a, b), exact) + beta_rounding(x, a, b))
    section("BetaInc", "1/B(a, b) above exp(75)", "not bounded: the factor is cut off")
    for a, b in grid:
        if clamped(a, b):
            for x in floats(0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9):
                row("BetaInc", x, a, b, exact=ibeta(x, a, b), tolerance=math.inf)


def student():
    dfs = floats(1, 1.5, 2, 3, 4.5, 7, 10, 20.5, 30, 60, 120, 400, 998)
    ts = floats(-8, -4, -3, -2.2, -1.5, -0.9, -0.4, -0.15, 0.15, 0.3, 0.7, 1.2, 1.7, 1.98, 2.5, 3.5,
                5, 9)
    section("TCdf", "df from 1 to 998, t from 0.15 to 9 and -9 to -0.15", "rounding of the beta function")
    for df in dfs:
        for t in ts:
            exact = tcdf(t, df)
            x = df / (t * t + df)
            tolerance = (2 * U + beta_rounding(x, df / 2, 0.5)
                         + float(bpdf(x, df / 2, 0.5)) * x * U) / 2 + U
            row("TCdf", t, df, exact=exact,
                tolerance=deviation(formula.t_cdf(t, df), exact) + tolerance)
    section("TCdf", "t^2 below 1e-5 df", "not bounded: the floor of the beta function")
    for df in dfs:
        for w in (0.0, 0.0005, -0.0005, 0.001, -0.003):
            t = round32(w * math.sqrt(df))
            row("TCdf", t, df, exact=tcdf(t, df), tolerance=math.inf)

    def t_tolerance(p, df, exact):
        z = stepwise.nor_inv(p)
        s = z * z
        slope = abs(formula_t(z + 1e-5, df) - formula_t(z - 1e-5, df)) / 2e-5
        return (deviation(formula_t(float(ninv(p)), df), exact) + NORINV * slope
                + U * 8 * (1 + abs(float(exact))) * (1 + s))

    def formula_t(z, df):
        s = z * z
        g1 = (s + 1) / 4
        g2 = ((5 * s + 16) * s + 3) / 96
        g3 = (((3 * s + 19) * s + 17) * s - 15) / 384
        g4 = ((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160
        return z * (1 + (g1 + (g2 + (g3 + g4 / df) / df) / df) / df)

    for what, some in (("df = 1", [1.0]), ("df from 1.5 to 2", floats(1.5, 2)),
                       ("df from 3 to 7", floats(3, 4.5, 7)),
                       ("df from 10 to 998", floats(10, 20.5, 30, 60, 120, 400, 998))):
        section("TInv", what + ", p from 0.001 to 0.999",
                "Abramowitz and Stegun 26.7.5 itself, with 4.5e-4 for the normal quantile"
                if some != [1.0] else "rounding of pi")
        for df in some:
            for p in P_MID:
                exact = tinv(p, df)
                tolerance = (t_tolerance(p, df, exact) if df > 1 else
                             abs(float(exact)) * (2 * U + 3e-10 / (math.pi * min(p, 1 - p))))
                row("TInv", p, df, exact=exact, tolerance=tolerance)
    for what, some, ts in (
            ("df from 2 to 5", floats(2, 3, 5), None),
            ("df from 10 to 30", floats(10, 15.5, 30), None),
            ("df from 60 to 998", floats(60, 120, 998), None)):
        section("NcTCdf", what + ", delta from 0 to 6",
                "Abramowitz and Stegun 26.7.10 itself, 7.5e-8 and rounding")
        for df in some:
            for delta in floats(0, 0.5, 1.3, 2.1, 2.8, 3.5, 4.5, 6):
                for t in floats(-2.1, 0.5, 1.65, 1.98, 2.3, 3, 5, 8):
                    exact = nct(t, df, delta)
                    z = (t * (1 - 1 / (4 * df)) - delta) / math.sqrt(1 + t * t / (2 * df))
                    row("NcTCdf", t, df, delta, exact=exact,
                        tolerance=deviation(ncdf(z), exact) + normal_rounding(z))


def chi_square():
    whole = floats(1, 2, 3, 4, 5, 7, 8, 10, 15, 20, 33, 40)
    xs_of = lambda df: [round32(float(chi2inv(p, df))) for p in (0.001, 0.05, 0.3, 0.6, 0.9, 0.95,
                                                                0.99, 0.9999)]
    section("Chi2Tail1", "whole df to 40", "rounding, and 1.5e-7 of the normal tail for odd df")
    for df in whole:
        for x in xs_of(df):
            exact = 1 - chi2cdf(x, df)
            p = float(exact)
            tail = 0.0
            if df % 2 == 1:
                q = float(2 * (1 - ncdf(math.sqrt(x))))
                tail = 2 * (NORTAIL + q * 16 * 2 * U)
            row("Chi2Tail1", df, x, exact=exact, tolerance=tail + p * U * (df + 6))
    section("Chi2Tail1", "df from 41 to 1000", "Wilson and Hilferty itself, 1.5e-7 and rounding")
    for df in floats(41, 60, 100, 400, 1000):
        for x in xs_of(df):
            exact = 1 - chi2cdf(x, df)
            h = 2 / (9 * df)
            z = ((x / df) ** (1 / 3) - (1 - h)) / math.sqrt(h)
            row("Chi2Tail1", df, x, exact=exact,
                tolerance=deviation(1 - ncdf(z), exact) + NORTAIL + 20 * U)
    section("Chi2Tail1", "broken df from 1.5 to 9.5", "not bounded: steps over a broken df")
    for df in floats(1.5, 2.5, 3.5, 4.25, 5.75, 7.5, 9.5):
        for x in xs_of(df):
            row("Chi2Tail1", df, x, exact=1 - chi2cdf(x, df), tolerance=math.inf)

    def quantile_tolerance(x, df, p):
        if df <= 2:
            return deviation(formula.chi2_tail2(df, p), x) + 20 * U * (1 + float(x)) + 2e-5 * (
                df == 1)
        tail = (2 * (NORTAIL + 0.5 * 32 * U) if df % 2 == 1 else 0) + U * (df + 6) * p
        return 2e-5 * (1 + float(x)) + tail / float(chi2pdf(x, df))

    section("Chi2Tail2", "whole df to 10, p from 0.001 to 0.999",
            "1e-5 of the bisection, and the tail's own")
    for df in floats(1, 2, 3, 4, 5, 7, 8, 10):
        for p in P_MID:
            if df == 1 and p < 0.002:
                continue
            x = chi2inv(1 - mpf(p), df)
            row("Chi2Tail2", df, p, exact=x, tolerance=quantile_tolerance(x, df, p))
    for what, some in (("df from 0.5 to 3", floats(0.5, 1, 2, 3)),
                       ("df from 4 to 21", floats(4, 5.5, 8, 12.3, 16, 21)),
                       ("df from 21.5 to 1000", floats(21.5, 30, 60.5, 200, 1000))):
        section("Chi2Cdf", what, "the formula itself (F with 10000 df, above 21 Wilson and "
                "Hilferty), and rounding")
        for df in some:
            for x in xs_of(df):
                if x >= 0.1:
                    exact = chi2cdf(x, df)
                    row("Chi2Cdf", x, df, exact=exact, tolerance=deviation(
                        formula.chi2_cdf(x, df), exact) + chi2cdf_rounding(x, df))
    section("Chi2Cdf", "x below 0.1, df from 0.5 to 4", "not bounded: the floor of the beta function")
    for df in floats(0.5, 1, 2, 4):
        for x in floats(0.0001, 0.01, 0.05, 0.099):
            row("Chi2Cdf", x, df, exact=chi2cdf(x, df), tolerance=math.inf)
    section("Chi2Inv", "whole df to 10", "1e-5 of the bisection, and the tail's own")
    for df in floats(1, 2, 3, 4, 5, 7, 8, 10):
        for p in P_MID:
            if df > 2 or p < 0.998:
                q = round32(1 - p)
                x = chi2inv(p, df)
                row("Chi2Inv", p, df, exact=x, tolerance=quantile_tolerance(x, df, q)
                    + 2 * U / float(chi2pdf(x, df)))
    section("Chi2Inv", "df from 12 to 1000", "Abramowitz and Stegun 26.5.22 itself, with 4.5e-4 "
            "for the normal quantile")
    for df in floats(12, 15, 20.5, 40, 100, 400, 1000):
        for p in P_MID:
            x = chi2inv(p, df)
            slope = deviation(chi2inv(p * 0.999, df), x) / (0.001 * p) * float(npdf(ninv(p)))
            row("Chi2Inv", p, df, exact=x, tolerance=deviation(
                formula.chi2_inv(p, df), x) + 20 * U * float(x) + 2 * U * slope / float(
                    npdf(ninv(p))))
    section("Chi2Inv", "broken df from 1.5 to 11", "not bounded: steps over a broken df")
    for df in floats(1.5, 2.5, 3.5, 4.25, 5.75, 7.5, 9.5, 10.5):
        for p in floats(0.01, 0.05, 0.5, 0.95, 0.99):
            row("Chi2Inv", p, df, exact=chi2inv(p, df), tolerance=math.inf)

    def nc_section(what, cases):
        section("NcChi2Cdf", what, "the formula itself, and rounding")
        for df, lam in cases:
            for p in (0.05, 0.2, 0.5, 0.8, 0.95):
                x = round32(optimize.brentq(lambda x: ncchi2(x, df, lam) - p, 1e-6, 5000))
                if x < 0.1:
                    continue
                exact = ncchi2(x, df, lam)
                rounding = (chi2cdf_rounding(x, df + lam / 2) if df > 10 or lam > 50 else
                            mixture(lam / 2, lambda i: chi2cdf_rounding(x, df + 2 * i)
                                    if i < 60 else 0.0))
                row("NcChi2Cdf", x, df, lam, exact=exact, tolerance=deviation(
                    formula.ncchi2_cdf(x, df, lam), exact) + rounding + 4 * U)

    nc_section("df to 10, lambda to 50, x from 0.1",
               [(d, l) for d in floats(1, 2, 4.5, 10) for l in floats(0.5, 5, 20, 50)])
    nc_section("df above 10 or lambda above 50",
               [(d, l) for d in floats(11, 20, 60) for l in floats(2, 12, 40)]
               + [(d, l) for d in floats(1, 4) for l in floats(51, 80)])


def fisher():
    def cases(dfs1, dfs2):
        return [(a, b) for a in floats(*dfs1) for b in floats(*dfs2)]

    def fs_of(df1, df2):
        return [round32(float(finv(p, df1, df2))) for p in (0.05, 0.4, 0.8, 0.95, 0.99)]

    section("FTail1", "one df 10 at most, the other to 500",
            "1e-5 of the upper tail where a sum is cut, and rounding")
    for df1, df2 in cases((1, 2, 3, 6, 10), (1, 2, 5, 10, 31, 100, 500)) + cases(
            (15, 60, 500), (1, 2, 5, 10)):
        for f in fs_of(df1, df2):
            exact = 1 - fcdf(f, df1, df2)
            row("FTail1", df1, df2, f, exact=exact, tolerance=deviation(
                formula.f_tail1(df1, df2, f), exact) + f_tail_rounding(df1, df2, f))
    section("FTail1", "both df above 30, or df1 from 600 to 999 with df2 = 10",
            "not bounded: 32 bits cancel in the first sum")
    for df1, df2 in cases((31, 60), (31, 100, 500)) + cases((600, 999), (10,)):
        for f in fs_of(df1, df2):
            row("FTail1", df1, df2, f, exact=1 - fcdf(f, df1, df2), tolerance=math.inf)
    section("FTail2", "one df 10 at most, p from 0.001 to 0.9", "1e-5 of the bisection, and the tail's own")
    quantile_cases = cases((1, 2, 3, 6, 10), (2, 5, 10, 31, 100, 500)) + cases((15, 60), (2, 5, 10))

    def quantile_tolerance(f, df1, df2, p):
        f = float(f)
        tail = deviation(formula.f_tail1(df1, df2, f), p) + f_tail_rounding(df1, df2, f)
        return 2e-5 * (f + df2 / df1) + tail / float(fpdf(f, df1, df2))

    for df1, df2 in quantile_cases:
        for p in floats(0.001, 0.005, 0.01, 0.025, 0.05, 0.1, 0.3, 0.6, 0.9):
            f = finv(1 - mpf(p), df1, df2)
            row("FTail2", df1, df2, p, exact=f, tolerance=quantile_tolerance(f, df1, df2, p))
    section("FTail2", "both df above 30", "Paulson's form itself, and rounding")
    for df1, df2 in cases((31, 60, 150), (31, 100, 500)):
        for p in floats(0.001, 0.01, 0.05, 0.3, 0.9):
            f = finv(1 - mpf(p), df1, df2)
            row("FTail2", df1, df2, p, exact=f, tolerance=deviation(
                formula.f_tail2(df1, df2, p), f) + 60 * U * float(f))
    section("FCdf", "beta form", "rounding of the beta function")
    for df1, df2 in cases((1, 2, 3.5, 6, 10, 11, 40), (1, 2, 5.5, 10, 31, 100)) + cases(
            (1, 2, 6), (500, 999)):
        for f in fs_of(df1, df2):
            if not floored(f, df1, df2):
                exact = fcdf(f, df1, df2)
                row("FCdf", f, df1, df2, exact=exact, tolerance=deviation(
                    formula.f_cdf(f, df1, df2), exact) + fcdf_rounding(f, df1, df2))
    section("FCdf", "f below 1e-5 df2 / df1 or above 1e5 df2 / df1",
            "not bounded: the floor of the beta function")
    for df1, df2 in cases((1, 2, 6), (100, 500, 999)):
        for share in (0.05e-5, 0.5e-5, 0.95e-5, 2e5):
            f = round32(share * df2 / df1)
            row("FCdf", f, df1, df2, exact=fcdf(f, df1, df2), tolerance=math.inf)
    section("FCdf", "both df above 10, one above 100", "Paulson's form itself, 7.5e-8 and rounding")
    for df1, df2 in cases((11, 20, 60.5, 101, 300), (101, 150.5, 1000)):
        for f in fs_of(df1, df2):
            exact = fcdf(f, df1, df2)
            row("FCdf", f, df1, df2, exact=exact, tolerance=deviation(
                formula.f_cdf(f, df1, df2), exact) + fcdf_rounding(f, df1, df2))
    section("FInv", "whole df, one of them 10 at most", "1e-5 of the bisection, and the tail's own")
    for df1, df2 in quantile_cases:
        for p in floats(0.1, 0.4, 0.7, 0.9, 0.95, 0.975, 0.99, 0.999):
            f = finv(p, df1, df2)
            row("FInv", p, df1, df2, exact=f, tolerance=quantile_tolerance(f, df1, df2, 1 - p)
                + 2 * U / float(fpdf(f, df1, df2)))
    section("FInv", "one df 10 at most, the other from 1000 to 5000", "not bounded: cut to 999")
    for df1, df2 in cases((1, 3, 10), (1000, 5000)):
        for p in floats(0.9, 0.95, 0.99, 0.999):
            row("FInv", p, df1, df2, exact=finv(p, df1, df2), tolerance=math.inf)
    section("FInv", "both df above 10, p from 0.001 to 0.999",
            "Abramowitz and Stegun 26.5.22 itself, and rounding")
    for df1, df2 in cases((11, 20, 60, 150), (11, 20, 100, 1000)):
        for p in P_MID:
            f = finv(p, df1, df2)
            row("FInv", p, df1, df2, exact=f, tolerance=deviation(
                formula.f_inv(p, [df1], [df2]), f) + 60 * U * float(f))
    section("FInv", "broken df", "the formula itself with its interpolation, and 2e-5 of the "
            "bisection")
    for df1, df2 in ((2.5, 20), (3, 47.25), (7.75, 33.5), (12, 60.25), (15.5, 60.25)):
        for p in floats(0.05, 0.5, 0.9, 0.95, 0.99):
            f = finv(p, df1, df2)
            row("FInv", p, df1, df2, exact=f, tolerance=deviation(
                formula.f_inv(p, [df1], [df2]), f) + 2e-5 * (float(f) + df2 / df1)
                + 60 * U * float(f) + U * 200 / float(fpdf(f, df1, df2)))

    def ncf_row(f, df1, df2, lam):
        exact = ncf(f, df1, df2, lam)
        w = f * df1 / (f * df1 + df2)
        if (df1 > 10 and df2 > 10) or lam > 50:
            nu = (lam + df1) ** 2 / (2 * lam + df1)
            rounding = fcdf_rounding(f * df1 / (lam + df1), nu, df2) + 8 * U
        else:
            rounding = mixture(lam / 2, lambda i: beta_rounding(w, df1 / 2 + i, df2 / 2)
                               + float(bpdf(w, df1 / 2 + i, df2 / 2)) * w * U if i < 60 else 0.0)
        row("NcFCdf", f, df1, df2, lam, exact=exact, tolerance=deviation(
            formula.ncf_cdf(f, df1, df2, lam), exact) + rounding + 4 * U)

    def power_section(what, some, percent=5):
        section("NcFCdf", f"{what}, f at the {percent:g} % critical value, lambda for powers of 0.5 to "
                "0.95", "the formula itself, and rounding of the beta function")
        for df1, df2 in some:
            f = round32(special.fdtri(df1, df2, 1 - percent / 100))
            for power in (0.5, 0.8, 0.9, 0.95):
                lam = round32(optimize.brentq(lambda v: 1 - ncf(f, df1, df2, v) - power, 0.1, 300))
                ncf_row(f, df1, df2, lam)

    power_section("df1 to 10, df2 to 100", cases((1, 2, 5, 10), (10, 20, 100)))
    power_section("df1 to 10, df2 from 200 to 999", cases((1, 2, 5, 10), (200, 500, 999)))
    for percent in (1, 0.1):
        power_section("df1 to 10, df2 from 200 to 999", cases((1, 2, 5, 10), (200, 500, 999)), percent)
    power_section("both df above 10", cases((11, 20, 60), (20, 100, 500, 5000)))

    def nc_section(what, some):
        section("NcFCdf", what, "the formula itself, and rounding of the beta function")
        for df1, df2, lam in some:
            for p in (0.05, 0.1, 0.2, 0.5, 0.9):
                f = round32(optimize.brentq(lambda f: ncf(f, df1, df2, lam) - p, 1e-6, 5000))
                ncf_row(f, df1, df2, lam)

    nc_section("df1 to 10, df2 to 100, lambda to 20, any f",
               [(a, b, l) for a in floats(1, 2, 5, 10) for b in floats(5, 20, 100)
                for l in floats(1, 5, 12, 20)])
    nc_section("df1 to 10, df2 from 200 to 999, lambda to 20, any f",
               [(a, b, l) for a in floats(1, 2, 5, 10) for b in floats(200, 500, 999)
                for l in floats(1, 5, 12, 20)])
    nc_section("df1 to 10, df2 from 200 to 999, lambda from 30 to 50, any f",
               [(a, b, l) for a in floats(1, 5, 10) for b in floats(200, 999)
                for l in floats(30, 50)])
    nc_section("both df above 10, or lambda above 50, any f",
               [(a, b, l) for a in floats(11, 20, 60) for b in floats(20, 100, 500)
                for l in floats(5, 15, 40)] + [(a, b, 60.0) for a in floats(2, 5)
                                               for b in floats(20, 100, 500)])


def families():
    section("GammaCdf", "shape from 0.25 to 50", "1e-5 of the integrator, and 1/(1260 (g + 2)^5) "
            "of the gamma function")
    for g in floats(0.25, 0.5, 0.9, 1, 1.5, 2, 2.5, 3, 5.5, 10, 20, 50):
        for p in (0.001, 0.05, 0.3, 0.5, 0.8, 0.95, 0.999):
            x = round32(2.5 * special.gammaincinv(g, p))
            exact = mp.gammainc(g, 0, mpf(x) / mpf(2.5), regularized=True)
            row("GammaCdf", x, 2.5, g, exact=exact,
                tolerance=1e-5 + float(exact) / (1260 * (g + 2) ** 5) + 2 * U)


def discrete():
    ps = floats(1e-4, 0.003, 0.05, 0.2, 0.5, 0.7, 0.95, 0.9999)

    def density(n, x, p):
        return mp.binomial(n, x) * mpf(p) ** x * (1 - mpf(p)) ** (n - x)

    def counts(n, p):
        """Around the middle, at the ends and at a half."""
        mean, sd = n * p, math.sqrt(n * p * (1 - p))
        some = {0, 1, n // 2, n // 2 + 1, n - 1, n} | {round(mean + z * sd) for z in (-3, -1, 0, 1, 3)}
        return sorted(x for x in some if 0 <= x <= n)

    def sum_tolerance(values):
        """Of a sum of terms in 32 bits, each of them rounded."""
        total, tolerance = mpf(0), 0.0
        for value in values:
            total += value
            tolerance += U * float(value + total)
        return tolerance + 1e-11 * float(total) + 2 * U

    def cdf(values, x, n):
        """Exact value and tolerance of a distribution function summed from the nearer end."""
        exact = sum(values[:x + 1], mpf(0))
        side = values[:x + 1] if x <= n / 2 else values[:x:-1]
        return exact, sum_tolerance(side)

    sizes = (1, 2, 5, 17, 60, 61, 150, 400, 1000)
    section("BinDensity", "n to 1000, p from 1e-4 to 0.9999", "rounding")
    for n in sizes:
        for p in ps:
            for x in counts(n, p):
                exact = density(n, x, p)
                row("BinDensity", n, x, p, exact=exact, tolerance=float(exact) * (U + 1e-11) + 1e-38)
    section("BinDensity", "n from 1029 to 32767", "rounding, and 1e-10 of the logarithms")
    for n in (1029, 1030, 5000, 32767):
        for p in ps:
            for x in counts(n, p):
                exact = density(n, x, p)
                row("BinDensity", n, x, p, exact=exact,
                    tolerance=float(exact) * (U + 1e-9) + 1e-38)
    section("BinCdf", "n to 1000, p from 1e-4 to 0.9999", "rounding of terms and sums")
    for n in sizes:
        for p in ps:
            values = [density(n, x, p) for x in range(n + 1)]
            for x in counts(n, p):
                exact, tolerance = cdf(values, x, n)
                row("BinCdf", n, x, p, exact=exact, tolerance=tolerance)

    def hyper(popsize, n, x, marked):
        return mp.binomial(marked, x) * mp.binomial(popsize - marked, n - x) / mp.binomial(popsize, n)

    section("HyperDensity", "populations to 1000", "64 bits: 1e-11, relative")
    populations = [(popsize, n, p) for popsize, n in ((10, 4), (60, 25), (200, 150), (1000, 30),
                                                      (1000, 500)) for p in floats(0.02, 0.3, 0.5, 0.9)]
    for popsize, n, p in populations:
        marked = round(p * popsize)
        for x in counts(n, p):
            exact = hyper(popsize, n, x, marked)
            row("HyperDensity", popsize, n, x, p, exact=exact, tolerance=1e-11 * float(exact))
    section("HyperDensity", "populations from 1030 to 32767", "1e-9 of the logarithms, relative")
    for popsize, n, p in ((1030, 515, 0.5), (5000, 1200, 0.3), (32767, 16000, 0.7)):
        marked = round(round32(p) * popsize)
        for x in counts(n, p):
            exact = hyper(popsize, n, x, marked)
            row("HyperDensity", popsize, n, x, round32(p), exact=exact,
                tolerance=1e-9 * float(exact) + 1e-300)
    section("HyperCdf", "populations to 1000", "rounding of terms and sums")
    for popsize, n, p in populations:
        marked = round(p * popsize)
        values = [hyper(popsize, n, x, marked) for x in range(n + 1)]
        for x in counts(n, p):
            exact, tolerance = cdf(values, x, n)
            row("HyperCdf", popsize, n, x, p, exact=exact, tolerance=tolerance)

    def poisson(x, lam):
        return mp.exp(-mpf(lam)) * mpf(lam) ** x / mp.factorial(x)

    def poisson_cdf(x, lam):
        return mp.gammainc(x + 1, mpf(lam), mp.inf, regularized=True)

    lams = floats(0.2, 1, 3.3, 9, 17, 30, 48)
    section("PoissonDensity", "x to 50, lambda to 75", "rounding")
    for lam in lams + [round32(75)]:
        for x in (0, 1, 2, 5, 10, 17, 30, 44, 50):
            exact = poisson(x, lam)
            row("PoissonDensity", x, lam, exact=exact, tolerance=float(exact) * (U + 1e-11) + 1e-38)
    section("PoissonDensity", "x from 51 to 300", "Wilson and Hilferty itself, twice 7.5e-8 and rounding")
    for lam in floats(30, 51, 75, 120, 250):
        for x in (51, 60, 75, 100, 150, 300):
            exact = poisson(x, lam)
            row("PoissonDensity", x, lam, exact=exact, tolerance=deviation(
                formula.poisson_density(x, lam), exact) + 2 * normal_rounding(0))
    section("PoissonCdf", "lambda from 0.2 to 250", "chi-square's own")
    for lam in lams + floats(75, 250):
        for x in (0, 1, 3, 8, 10, 20, 50, 100, 250):
            exact = poisson_cdf(x, lam)
            row("PoissonCdf", x, lam, exact=exact, tolerance=deviation(
                formula.poisson_cdf(float(x), lam), exact)
                + chi2cdf_rounding(2 * lam, 2 * x + 2.0) + U)

    def smirnov(n, d):
        """Birnbaum and Tingey (1951), P(D+ < d)."""
        d = mpf(d)
        return 1 - sum((mp.binomial(n, j) * (1 - d - mpf(j) / n) ** (n - j) * d
                        * (d + mpf(j) / n) ** (j - 1) for j in range(n) if 1 - d - mpf(j) / n > 0),
                       mpf(0))

    def exact_sum_tolerance(n, d):
        """What 32 bits can add: the bounds are rounded, which the binomial coefficients magnify, and
        so is each sum of the recursion. An error in making c(j) spreads to the later ones by the
        recursion itself; its weight in the result comes from solving that backwards."""
        m = max(1, math.floor((1 - d) * n - 1e-5))
        b = [mpf(max(0.0, round32(1 - (j / n + d)))) for j in range(m + 1)]

        def terms(over, count):
            return [math.comb(over, i) * b[i] ** (over - i) * c[i] for i in range(count) if b[i] > 0]

        c = []
        for j in range(m + 1):
            c.append(1 - sum(terms(j, j), mpf(0)))
        bounds = abs(1 - sum(terms(n, m + 1)) - smirnov(n, d))
        weight = [math.comb(n, j) * b[j] ** (n - j) * (b[j] > 0) for j in range(m + 1)]
        for j in range(m, -1, -1):
            for i in range(j):
                weight[i] -= math.comb(j, i) * b[i] ** (j - i) * weight[j]
        # c(j) is a difference from 1 of a sum of j terms, none of its partial sums above 1.
        sums = sum(abs(weight[j]) * (j + 1) for j in range(1, m + 1))
        return float(bounds + U * (sums + m + 2))

    section("KolSmiCdf", "n to 50", "rounding of the sums")
    for n in (1, 2, 3, 4, 5, 8, 12, 20, 30, 40, 50):
        for q in (0.2, 0.5, 0.8, 0.9, 0.95, 0.99, 0.999):
            d = round32(math.sqrt(-math.log(1 - q) / 2 / n))
            if d < 1:
                row("KolSmiCdf", n, d, exact=smirnov(n, d), tolerance=exact_sum_tolerance(n, d))
    section("KolSmiCdf", "n from 51 to 1000", "the limit itself, and rounding")
    for n in (51, 100, 300, 1000):
        for q in (0.2, 0.5, 0.8, 0.9, 0.95, 0.99, 0.999):
            d = round32(math.sqrt(-math.log(1 - q) / 2 / n))
            exact = smirnov(n, d)
            row("KolSmiCdf", n, d, exact=exact, tolerance=deviation(
                formula.kol_smi_cdf(float(n), d), exact) + 20 * U)

    def compositions(n, k):
        if k == 1:
            yield (n,)
            return
        for i in range(n + 1):
            for rest in compositions(n - i, k - 1):
                yield (i,) + rest

    def discrete_smirnov(n, d, side, probs):
        """P(D < d) by summing the multinomial distribution over all samples; fractions."""
        steps = np.cumsum(probs)
        total = mpf(0)
        for counts in compositions(n, len(probs)):
            seen, distance = 0, Fraction(0)
            for count, step in zip(counts, steps):
                seen += count
                gap = Fraction(seen, n) - step
                distance = max(distance, gap if side else -gap)
            if distance < d:
                weight = Fraction(math.factorial(n))
                for count, share in zip(counts, probs):
                    weight = weight * share ** count / math.factorial(count)
                total += mpf(weight.numerator) / weight.denominator
        return total

    section("KolSmiDiscreteCdf", "n to 12, 3 and 4 categories", "rounding of d and of the proportions")
    tables = ([Fraction(1, 4)] * 4, [Fraction(1, 10), Fraction(2, 10), Fraction(3, 10), Fraction(4, 10)],
              [Fraction(1, 2), Fraction(1, 3), Fraction(1, 6)])
    for n in (2, 3, 4, 5, 8, 12):
        for probs in tables:
            for d in (Fraction(1, 10), Fraction(1, 4), Fraction(3, 10), Fraction(1, 3), Fraction(1, 2),
                      Fraction(3, 5)):
                for side in (0, 1):
                    row("KolSmiDiscreteCdf", n, round32(float(d)), side,
                        *[round32(float(v)) for v in probs],
                        exact=discrete_smirnov(n, d, side, probs), tolerance=40 * n * U)

    section("KolSmiInv", "n to 50", "1e-5 of the search, and the sum's own")
    for n in (2, 5, 10, 20, 35, 50):
        for q in floats(0.5, 0.8, 0.9, 0.95, 0.99):
            d = mpf(optimize.brentq(lambda v: float(smirnov(n, v)) - q, 0.01, 0.9999, xtol=1e-13))
            slope = (smirnov(n, d + mpf("1e-8")) - smirnov(n, d)) * 10 ** 8
            row("KolSmiInv", n, q, exact=d,
                tolerance=1e-5 + exact_sum_tolerance(n, float(d)) / float(slope))
    section("KolSmiTwoCdf", "two-sided, against the limit", "1e-4 where the series is cut")
    for n1, n2 in ((20, 30), (100, 150), (16000, 16000)):
        root = math.sqrt(n1 * n2 / (n1 + n2))
        for v in (0.3, 0.5, 0.7, 0.9, 1.1, 1.3581, 1.6276, 2):
            d = round32(v / root)
            x = mpf(d) * mp.sqrt(mpf(n1) * n2 / (n1 + n2))
            exact = 1 - 2 * sum(((-1) ** (i - 1) * mp.exp(-2 * i * i * x * x) for i in range(1, 60)),
                                mpf(0))
            row("KolSmiTwoCdf", n1, n2, d, 0, exact=exact, tolerance=2e-4 if v < 0.6 else 2e-4 * 0.1
                if v < 0.8 else 4 * U)


if __name__ == "__main__":
    print("# Exact values computed by checks/reference/exact.py (mpmath, scipy): "
          "function, arguments, value, tolerance.")
    normal()
    gamma_beta()
    student()
    chi_square()
    fisher()
    families()
    discrete()
