#!/usr/bin/env python3
"""Exact reference values for the tests of slopes, correlations, multiple, logistic and Poisson
regression and two-way crossover designs, written to checks/data/validation:

  regression.tsv            non-central t and F of scipy, and the published normal equations
  regression_published.tsv  examples of textbooks and journals, as printed there
  regression_simulated.tsv  powers of the tests themselves in simulated data (--simulate)

Independent of the program: powers of t-tests are those of scipy's non-central t, of two one-sided
t-tests the integral over the distribution of the estimated standard deviation (Owen 1965; Phillips
1990), of the F-test those of its non-central F. Logistic and Poisson regression and correlations
have the normal equations of the publications named below in double precision. An unknown is found
with Brent's method on the power.

A tolerance is how far the unknown moves when the power is off by what docs/accuracy.md says of the
approximation that it comes from: non-central t, non-central F, or the normal quantile.

The simulations fit the model to each of 200000 sets of data and count the Wald tests that reject
with the variance that the test assumes. Their tolerance is four of their standard errors and the
first term that a normal approximation leaves out, of the order of one over the root of the expected
events: 1/4 of it, since the coefficient of that term, (x^2 - 1) phi(x) / 6 times the skewness, and
the difference between the information expected and observed are below that. The equations for
logistic regression are made for rare events: they have the factor 1 + 2 p d for the variance where
1/(1 - p) would be exact without effect, too much by p d to first order; that for a binary covariate
also takes p, the probability without the covariate, for that of all subjects under H0. What the
power gains when the variance is smaller by this much is allowed, and only in this direction would
it show in a plan: its studies are too large, not too small.

Needs Python 3 with numpy and scipy; run from the repository's root. --simulate takes minutes.
"""
import math
import sys
import warnings

import numpy as np
from scipy import integrate, optimize, stats

ROWS = {'regression': [], 'regression_published': []}
NOTES = []


def number(v):
    return f'{float(v):.10g}'


# --- What the program's approximations may cost a power -----------------------------------------

def t_error(df):
    """Non-central t by Abramowitz and Stegun 26.7.10 (docs/accuracy.md, NcTCdf)."""
    return 0.0007 if df >= 60 else 0.007 if df >= 10 else 0.02 if df >= 5 else 0.04


def z_error(ratio=1.0):
    """4.5e-4 of the normal quantile, times the normal density; ratio is se0/se1."""
    return 4.5e-4 * 0.4 * max(1.0, ratio) * 1.5 + 1e-5


F_ERROR = 0.0015  # NcFCdf 1.1e-3 at critical values, and the critical value's own
BROKEN_DF = 0.014  # FInv between two whole degrees of freedom, up to 8 of them; relative


def row(table, menu, samples, tails, left, checks, groups, values, unknown, exact, tolerance):
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    ROWS[table].append([f'menu {menu}', samples, tails, left, ','.join(map(str, checks)),
                        ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
                        f'{float(exact):.9g}', f'{tolerance:.3g}'])


def add(menu, samples, tails, left, checks, groups, values, unknown, power, error, bracket=None,
        table='regression', printed=None):
    """power and error are functions of the values by kind."""
    def root(target):
        def f(x):
            return power({**values, unknown: x}) - target
        if not f(bracket[0]) * f(bracket[1]) < 0:
            raise ValueError(f'no root of {menu} {values} in {bracket}')
        return optimize.brentq(f, *bracket, xtol=1e-13)
    if unknown == 1:
        exact = power(values)
        tolerance = error(values)
    else:
        exact = root(values[1])
        e = error({**values, unknown: exact})
        tolerance = max(abs(root(values[1] + s * e) - exact) for s in (-1, 1)) + 2e-5
    if printed is not None:
        assert math.ceil(exact) == printed, (exact, printed)
        exact, tolerance = printed, 1
    row(table, menu, samples, tails, left, checks, groups, values, unknown, exact, tolerance)


# --- t and normal powers ------------------------------------------------------------------------

def t_power(alpha, tails, left, ncp, df):
    if tails == 2:
        t = stats.t.ppf(1 - alpha / 2, df)
        return stats.nct.sf(t, df, ncp) + stats.nct.cdf(-t, df, ncp)
    t = stats.t.ppf(1 - alpha, df)
    return stats.nct.cdf(-t, df, ncp) if left else stats.nct.sf(t, df, ncp)


def tost_power(alpha, low, high, df):
    t = stats.t.ppf(1 - alpha, df)
    end = (low + high) / (2 * t)
    if end <= 0:
        return 0.0

    def integrand(u):
        inside = stats.norm.cdf(high - t * u) - stats.norm.cdf(t * u - low)
        return inside * stats.chi.pdf(u * math.sqrt(df), df) * math.sqrt(df)
    width = 9 / math.sqrt(2 * df)
    low_u, high_u = max(0, 1 - width), min(end, 1 + width)
    return integrate.quad(integrand, low_u, high_u, limit=200)[0] if high_u > low_u else 0.0


def z_power(alpha, tails, left, delta, se0, se1):
    if tails == 2:
        z = stats.norm.ppf(1 - alpha / 2)
        return stats.norm.cdf((abs(delta) - z * se0) / se1) + \
            stats.norm.sf((abs(delta) + z * se0) / se1)
    z = stats.norm.ppf(1 - alpha)
    return stats.norm.cdf(((-delta if left else delta) - z * se0) / se1)


def z_tost(alpha, low, high, se):
    z = stats.norm.ppf(1 - alpha)
    return stats.norm.cdf(low / se - z) + stats.norm.cdf(high / se - z) - 1


def second(base, entry, mode):
    return entry if mode == 0 else base + entry if mode == 1 else base * entry


def size2(v, mode, first=4, kinds=(37, 38, 5)):
    return second(v[first], v[kinds[mode]], mode)


# --- Simple regression --------------------------------------------------------------------------

def slope(tails, left, form, values, unknown, bracket=None):
    """One sample. t with n - 2 df; standard error s/(sx sqrt(n)) (Draper and Smith 1981)."""
    def pieces(v):
        se = v[212] / v[213] / math.sqrt(v[85])
        if tails == 3:
            return se, v[204] - v[6], v[7] - v[204]
        return se, second(v[203], v[204 + form], form) - v[203], 0

    def power(v):
        se, delta, high = pieces(v)
        df = v[85] - 2
        if tails == 3:
            return tost_power(v[0], delta / se, high / se, df)
        return t_power(v[0], tails, left, delta / se, df)
    add(170, 1, tails, left, (), {} if tails == 3 else {27: form}, values, unknown, power,
        lambda v: t_error(v[85] - 2), bracket)


def slopes(tails, left, form, sd_form, size_form, values, unknown, bracket=None):
    """Two samples with a pooled residual variance, n1 + n2 - 4 df."""
    def pieces(v):
        n1, n2 = v[4], size2(v, size_form)
        sx2 = second(v[214], v[(215, 221, 222)[sd_form]], sd_form)
        se = v[212] * math.sqrt(1 / (n1 * v[214]**2) + 1 / (n2 * sx2**2))
        b = v[210] if form == 1 else second(v[208], v[(209, 0, 211)[form]], form) - v[208]
        return se, b, n1 + n2 - 4

    def power(v):
        se, b, df = pieces(v)
        if tails == 3:
            return tost_power(v[0], (b - v[6]) / se, (v[7] - b) / se, df)
        return t_power(v[0], tails, left, (b - v[207]) / se, df)
    add(170, 2, tails, left, (), {28: form, 29: sd_form, 2: size_form}, values, unknown, power,
        lambda v: t_error(pieces(v)[2]), bracket)


def simple_regression():
    v = {0: 0.05, 1: 0.8, 203: 0, 204: 0.3, 212: 1, 213: 1}
    slope(2, 0, 0, v, 85, (5, 1000))
    slope(1, 0, 0, v, 85, (5, 1000))
    slope(1, -1, 0, {**v, 204: -0.3}, 85, (5, 1000))
    slope(2, 0, 0, {**v, 0: 0.01, 1: 0.9}, 85, (5, 1000))
    slope(2, 0, 0, {**v, 204: 1.2}, 85, (5, 1000))
    slope(2, 0, 0, {**v, 204: 0.06, 212: 2}, 85, (5, 99999))
    slope(2, 0, 0, {**v, 85: 70}, 1)
    slope(2, 0, 0, {**v, 204: 1, 85: 12}, 1)
    slope(1, 0, 0, {**v, 204: 0.7, 212: 0.5, 213: 0.4, 85: 25}, 1)
    slope(2, 0, 1, {0: 0.05, 1: 0.8, 203: 1.5, 205: 0.4, 212: 2, 213: 1.5}, 85, (5, 1000))
    slope(2, 0, 2, {0: 0.05, 1: 0.8, 203: 1.5, 206: 1.3, 212: 2, 213: 1.5}, 85, (5, 1000))
    slope(1, -1, 2, {0: 0.05, 203: 1.5, 206: 0.7, 212: 2, 213: 1.5, 85: 60}, 1)
    slope(2, 0, 0, {**v, 85: 80}, 204, (1e-6, 3))
    slope(1, -1, 0, {**v, 85: 80}, 204, (-3, -1e-6))
    slope(2, 0, 0, {**v, 85: 80}, 212, (0.2, 10))
    slope(2, 0, 0, {**v, 85: 80}, 213, (0.01, 5))
    slope(2, 0, 0, {**v, 85: 80}, 0, (1e-5, 0.9))
    slope(1, 0, 0, {**v, 204: 0.5, 85: 80}, 203, (-3, 0.49999))
    e = {0: 0.05, 1: 0.8, 6: -0.4, 7: 0.4, 204: 0, 212: 1, 213: 1}
    slope(3, 0, 0, e, 85, (20, 500))
    slope(3, 0, 0, {**e, 204: 0.1, 85: 90}, 1)
    slope(3, 0, 0, {**e, 85: 120}, 204, (0, 0.4))
    slope(3, -1, 0, {**e, 85: 120}, 204, (-0.4, 0))
    t = {0: 0.05, 1: 0.8, 207: 0, 210: 0.5, 212: 1, 214: 1, 222: 1, 5: 1}
    slopes(2, 0, 1, 2, 2, t, 4, (5, 1000))
    slopes(1, 0, 1, 2, 2, t, 4, (5, 1000))
    slopes(1, -1, 1, 2, 2, {**t, 210: -0.5}, 4, (5, 1000))
    slopes(2, 0, 1, 2, 2, {**t, 222: 1.5, 5: 2}, 4, (5, 1000))
    slopes(2, 0, 1, 2, 2, {**t, 222: 0.6, 5: 0.5}, 4, (5, 1000))
    slopes(2, 0, 1, 2, 2, {**t, 4: 40}, 1)
    slopes(2, 0, 1, 2, 2, {**t, 210: 1.5, 4: 8}, 1)
    slopes(2, 0, 1, 2, 2, {**t, 207: 0.2, 210: 0.8, 4: 40}, 1)
    m = {0: 0.05, 1: 0.8, 207: 0, 208: 0.3, 209: 0.9, 212: 1.2, 214: 0.8, 215: 1.1, 37: 50}
    slopes(2, 0, 0, 0, 0, m, 4, (5, 5000))
    slopes(2, 0, 0, 0, 0, {**m, 4: 60}, 209, (0.300001, 3))
    slopes(2, 0, 0, 0, 0, {**m, 4: 60}, 208, (-3, 0.899999))
    slopes(2, 0, 0, 0, 0, {**m, 4: 60}, 37, (5, 5000))
    slopes(2, 0, 0, 0, 0, {**m, 4: 60}, 215, (0.1, 9))
    d = {0: 0.05, 1: 0.8, 207: 0, 208: 0.5, 211: 2, 212: 1.2, 214: 0.8, 221: 0.3, 38: 20}
    slopes(1, 0, 2, 1, 1, d, 4, (5, 5000))
    slopes(1, 0, 2, 1, 1, {**d, 4: 50}, 1)
    slopes(1, 0, 2, 1, 1, {**d, 4: 50}, 207, (-3, 0.49))
    q = {0: 0.05, 1: 0.8, 6: -0.5, 7: 0.5, 210: 0.05, 212: 1, 214: 1, 222: 1, 5: 1}
    slopes(3, 0, 1, 2, 2, q, 4, (20, 500))
    slopes(3, 0, 1, 2, 2, {**q, 222: 1.3, 5: 1.5, 4: 70}, 1)
    slopes(3, 0, 1, 2, 2, {**q, 4: 120}, 210, (0, 0.5))
    slopes(3, 0, 0, 0, 0, {0: 0.05, 1: 0.8, 6: -0.5, 7: 0.5, 208: 1, 209: 1.05, 212: 1, 214: 1,
                           215: 1.2, 37: 100}, 4, (20, 900))


# --- Multiple regression ------------------------------------------------------------------------

def f_power(alpha, p, m, a, b, n, off=1.0):
    """Fixed covariates: lambda = n (A^2 - B^2)/(1 - A^2) (Cohen 1988, chapter 9)."""
    if a == b:
        return alpha
    df2 = n - m - 1
    effect = (a * a - b * b) / (1 - a * a)
    return stats.ncf.sf(off * stats.f.ppf(1 - alpha, p, df2), p, df2, n * effect)


def multiple(values, unknown, bracket=None, table='regression', printed=None):
    def power(v):
        return f_power(v[0], v[268], v[267], v[265], v[266], v[85])

    def error(v):
        df2 = v[85] - v[267] - 1
        if df2 == int(df2):
            # Degrees of freedom are cut to 999.
            return F_ERROR + (0.002 if df2 > 999 else 0)
        # Between whole degrees of freedom the critical value is interpolated (FInv, broken df).
        off = BROKEN_DF * min(1, 8 / df2)
        return F_ERROR + abs(f_power(v[0], v[268], v[267], v[265], v[266], v[85], 1 + off) -
                             power(v))
    add(171, 1, 2, 0, (), {}, values, unknown, power, error, bracket, table, printed)


def multiple_regression():
    v = {0: 0.05, 1: 0.8, 268: 3, 265: 0.5, 266: 0.3, 267: 5}
    multiple(v, 85, (8, 2000))
    multiple({**v, 268: 1}, 85, (8, 2000))
    multiple({**v, 268: 1, 267: 1, 266: 0, 265: 0.3}, 85, (4, 2000))
    multiple({**v, 268: 10, 267: 10, 266: 0, 265: 0.4}, 85, (13, 2000))
    multiple({**v, 268: 5, 266: 0, 265: 0.9}, 85, (8, 2000))
    multiple({**v, 0: 0.01, 1: 0.95}, 85, (8, 2000))
    multiple({**v, 265: 0.25, 266: 0.2, 268: 2}, 85, (8, 2000))
    for n in (10, 20, 40, 80):
        multiple({**v, 85: n}, 1)
    multiple({**v, 265: 0.8, 85: 12}, 1)
    multiple({**v, 268: 4, 267: 9, 265: 0.35, 266: 0.2, 85: 150}, 1)
    multiple({**v, 265: 0.3, 266: 0.28, 85: 900}, 1)
    multiple({**v, 265: 0.1, 266: 0.05, 85: 2000}, 1)
    multiple({**v, 265: 0.4, 266: 0.4, 85: 60}, 1)
    multiple({**v, 85: 60}, 265, (0.3001, 0.95))
    multiple({**v, 85: 60}, 266, (0, 0.4999))
    multiple({**v, 85: 60}, 0, (1e-5, 0.9))


# --- Logistic regression ------------------------------------------------------------------------

def logistic_pieces(binary, v, form):
    """F. Y. Hsieh 1989, Statistics in Medicine 8, 795-802, after A. S. Whittemore 1981; n times
    the variance of the coefficient is (1 + 2 p1 d)/(p1 (1 - R^2)) in units of se0, se1."""
    p1 = v[257 if binary else 20]
    effect = v[200] if form == 1 else v[258 if binary else 21]
    ratio = effect if form == 1 else effect / (1 - effect) * (1 - p1) / p1
    b = math.log(ratio)
    if binary:
        x = v[259]
        v0 = 1 / (1 - x) + 1 / x
        v1 = 1 / (1 - x) + 1 / (x * ratio)
        # Whittemore's correction under H1, for a covariate that is 1 with probability x.
        r1 = v1 * x * (1 - x) * ratio**2 / (1 - x + x * ratio)**2
        d = (math.sqrt(v0) + r1 * math.sqrt(v1)) / (math.sqrt(v0) + math.sqrt(v1))
        se0, se1 = math.sqrt(v0), math.sqrt(v1)
    else:
        se0, se1 = 1, math.exp(-b * b / 4)
        d = (1 + (1 + b * b) * math.exp(5 * b * b / 4)) / (1 + math.exp(-b * b / 4))
    unit = math.sqrt((1 + 2 * p1 * d) / (p1 * (1 - v[25]**2) * v[85]))
    return b, se0 * unit, se1 * unit


def logistic(binary, tails, left, form, values, unknown, bracket=None, table='regression',
             printed=None):
    def power(v):
        return z_power(v[0], tails, left, *logistic_pieces(binary, v, form))

    def error(v):
        _, se0, se1 = logistic_pieces(binary, v, form)
        return z_error(se0 / se1)
    add(181 if binary else 180, 1, tails, left, (), {32: form}, values, unknown, power, error,
        bracket, table, printed)


def logistic_regression():
    c = {0: 0.05, 1: 0.8, 20: 0.3, 200: 1.6, 25: 0}
    logistic(False, 2, 0, 1, c, 85, (5, 9999))
    logistic(False, 1, 0, 1, c, 85, (5, 9999))
    logistic(False, 1, -1, 1, {**c, 200: 0.6}, 85, (5, 9999))
    logistic(False, 2, 0, 1, {**c, 25: 0.4}, 85, (5, 9999))
    logistic(False, 2, 0, 1, {**c, 20: 0.05, 200: 1.3, 0: 0.01, 1: 0.9}, 85, (5, 99999))
    logistic(False, 2, 0, 1, {**c, 85: 150}, 1)
    logistic(False, 1, 0, 1, {**c, 85: 60, 25: 0.6}, 1)
    logistic(False, 2, 0, 1, {**c, 200: 1, 85: 150}, 1)
    p = {0: 0.05, 1: 0.9, 20: 0.2, 21: 0.3, 25: 0.2}
    logistic(False, 2, 0, 0, p, 85, (5, 9999))
    logistic(False, 1, -1, 0, {**p, 21: 0.12}, 85, (5, 9999))
    logistic(False, 2, 0, 0, {**p, 85: 300}, 21, (0.200001, 0.5))
    logistic(False, 2, 0, 0, {**p, 85: 300}, 20, (0.1, 0.299999))
    logistic(False, 2, 0, 1, {**c, 85: 250}, 200, (1.0001, 2.5))
    logistic(False, 1, -1, 1, {**c, 85: 250}, 200, (0.4, 0.9999))
    logistic(False, 2, 0, 1, {**c, 85: 250}, 20, (0.001, 0.9))
    logistic(False, 2, 0, 1, {**c, 85: 250}, 25, (0, 0.99))
    b = {0: 0.05, 1: 0.8, 257: 0.2, 200: 2, 259: 0.4, 25: 0}
    logistic(True, 2, 0, 1, b, 85, (5, 9999))
    logistic(True, 1, 0, 1, {**b, 25: 0.3}, 85, (5, 9999))
    logistic(True, 1, -1, 1, {**b, 200: 0.5, 257: 0.4}, 85, (5, 9999))
    logistic(True, 2, 0, 1, {**b, 259: 0.1}, 85, (5, 9999))
    logistic(True, 2, 0, 1, {**b, 259: 0.8, 257: 0.02, 200: 3}, 85, (5, 9999))
    logistic(True, 2, 0, 1, {**b, 85: 300}, 1)
    logistic(True, 1, -1, 1, {**b, 200: 0.6, 85: 400}, 1)
    logistic(True, 2, 0, 0, {0: 0.05, 1: 0.8, 257: 0.2, 258: 0.35, 259: 0.5, 25: 0.1}, 85,
             (5, 9999))
    logistic(True, 2, 0, 0, {0: 0.05, 1: 0.8, 257: 0.2, 259: 0.5, 25: 0.1, 85: 400}, 258,
             (0.20001, 0.6))
    logistic(True, 2, 0, 1, {**b, 85: 600}, 259, (0.5, 0.99))
    logistic(True, 2, 0, 1, {**b, 85: 400}, 0, (1e-5, 0.9))


# --- Poisson regression -------------------------------------------------------------------------

def poisson_pieces(binary, v, form, checks, gamma):
    """D. F. Signorini 1991, Biometrika 78, 446-450, with the inverse of the covariate's part that
    the others leave; for a binary covariate the variance of a log rate ratio."""
    r0 = v[262 if binary else 260]
    effect = v[368] if form == 1 else v[263 if binary else 261]
    q = effect if form == 1 else effect / r0
    b = math.log(q)
    phi = v[367] if 37 in checks and not gamma else 1
    k = v[329] if gamma else 0
    subjects = (1 - v[25]**2) * v[85] * v[170]
    if binary:
        x = v[259]
        of0, of1 = 1 / r0 + k, 1 / (r0 * q) + k
        v0 = of0 / (x * (1 - x) * subjects)
        v1 = of0 / ((1 - x) * subjects) + of1 / (x * subjects)
    else:
        v0 = 1 / (r0 * subjects)
        v1 = v0 / math.exp(b * b / 2)
    if 39 in checks:
        v0 = v1
    return b, math.sqrt(phi * v0), math.sqrt(phi * v1)


def poisson(binary, tails, left, form, checks, gamma, values, unknown, bracket=None):
    def power(v):
        return z_power(v[0], tails, left, *poisson_pieces(binary, v, form, checks, gamma))

    def error(v):
        _, se0, se1 = poisson_pieces(binary, v, form, checks, gamma)
        return z_error(se0 / se1)
    add(191 if binary else 190, 1, tails, left, checks, {40: form, 58: 1 if gamma else 0}, values,
        unknown, power, error, bracket)


def poisson_regression():
    c = {0: 0.05, 1: 0.8, 260: 0.85, 368: 1.3, 25: 0, 170: 1}
    poisson(False, 2, 0, 1, (), False, c, 85, (5, 9999))
    poisson(False, 1, 0, 1, (), False, {**c, 1: 0.95}, 85, (5, 9999))
    poisson(False, 1, -1, 1, (), False, {**c, 368: 0.75}, 85, (5, 9999))
    poisson(False, 2, 0, 1, (), False, {**c, 25: 0.5, 170: 2.5}, 85, (5, 9999))
    poisson(False, 2, 0, 1, (37,), False, {**c, 367: 1.8}, 85, (5, 9999))
    poisson(False, 2, 0, 1, (39,), False, {**c, 368: 2}, 85, (5, 9999))
    poisson(False, 2, 0, 1, (37, 39), False, {**c, 367: 3, 85: 300}, 1)
    poisson(False, 2, 0, 0, (), False, {0: 0.05, 260: 0.5, 261: 0.6, 25: 0.1, 170: 3, 85: 150}, 1)
    poisson(False, 2, 0, 0, (), False, {0: 0.05, 1: 0.9, 260: 0.5, 25: 0.1, 170: 3, 85: 150}, 261,
            (0.50001, 2))
    poisson(False, 2, 0, 1, (), False, {**c, 85: 120}, 170, (0.01, 99))
    poisson(False, 2, 0, 1, (), False, {**c, 85: 200}, 368, (1.001, 5))
    poisson(False, 2, 0, 1, (37,), False, {**c, 85: 200}, 367, (1, 50))
    b = {0: 0.05, 1: 0.8, 262: 0.85, 368: 1.3, 259: 0.5, 25: 0, 170: 1}
    poisson(True, 1, 0, 1, (), False, {**b, 1: 0.95}, 85, (5, 9999))
    poisson(True, 2, 0, 1, (), False, b, 85, (5, 9999))
    poisson(True, 1, -1, 1, (), False, {**b, 368: 0.7, 259: 0.3}, 85, (5, 9999))
    poisson(True, 2, 0, 1, (37,), False, {**b, 367: 1.5, 259: 0.2}, 85, (5, 9999))
    poisson(True, 2, 0, 1, (37,), True, {**b, 329: 0.6}, 85, (5, 9999))
    poisson(True, 2, 0, 1, (37,), True, {**b, 329: 0.6, 170: 2.5, 25: 0.3, 85: 400}, 1)
    poisson(True, 2, 0, 1, (39,), False, {**b, 368: 2, 259: 0.25}, 85, (5, 9999))
    poisson(True, 1, -1, 1, (37, 39), True, {**b, 368: 0.6, 329: 1.2, 85: 350}, 1)
    poisson(True, 2, 0, 0, (), False, {0: 0.05, 1: 0.8, 262: 1.5, 263: 1, 259: 0.4, 25: 0,
                                       170: 2}, 85, (5, 9999))
    poisson(True, 2, 0, 1, (37,), True, {**b, 368: 1.6, 85: 300}, 329, (0, 20))
    poisson(True, 2, 0, 1, (), False, {**b, 368: 1.4, 85: 500}, 259, (0.5, 0.9999))


# --- Correlations -------------------------------------------------------------------------------

def correlation(tails, left, form, values, unknown, bracket=None):
    """Fisher's z, 1/sqrt(n - 3) (Fisher 1921)."""
    def pieces(v):
        se = 1 / math.sqrt(v[14] - 3)
        if tails == 3:
            r = v[186]
            return se, math.atanh(r) - math.atanh(v[194]), math.atanh(v[195]) - math.atanh(r)
        return se, math.atanh(second(v[185], v[186 + form], form)) - math.atanh(v[185]), 0

    def power(v):
        se, delta, high = pieces(v)
        if tails == 3:
            return z_tost(v[0], delta, high, se)
        return z_power(v[0], tails, left, delta, se, se)
    add(210, 1, tails, left, (), {} if tails == 3 else {23: form}, values, unknown, power,
        lambda v: z_error(), bracket)


def correlations(tails, left, form, size_form, values, unknown, bracket=None):
    def power(v):
        n1, n2 = v[39], size2(v, size_form, 39, (42, 38, 5))
        se = math.sqrt(1 / (n1 - 3) + 1 / (n2 - 3))
        r1 = v[190]
        z2 = math.atanh(second(r1, v[191 + form], form))
        if tails == 3:
            return z_tost(v[0], z2 - math.atanh(r1 + v[194]), math.atanh(r1 + v[195]) - z2, se)
        return z_power(v[0], tails, left, z2 - math.atanh(r1 + v[189]), se, se)
    add(210, 2, tails, left, (), {24: form, 2: size_form}, values, unknown, power,
        lambda v: z_error(), bracket)


def correlation_tests():
    v = {0: 0.05, 1: 0.8, 185: 0, 186: 0.3}
    correlation(2, 0, 0, v, 14, (4, 9999))
    correlation(1, 0, 0, {**v, 185: 0.5, 186: 0.7}, 14, (4, 9999))
    correlation(1, -1, 0, {**v, 185: 0.5, 186: 0.2}, 14, (4, 9999))
    correlation(2, 0, 0, {**v, 186: 0.9, 14: 8}, 1)
    correlation(2, 0, 0, {**v, 186: 0.05, 14: 5000}, 1)
    correlation(2, 0, 1, {0: 0.01, 1: 0.9, 185: 0.2, 187: 0.3}, 14, (4, 9999))
    correlation(2, 0, 2, {0: 0.05, 1: 0.8, 185: 0.4, 188: 1.5}, 14, (4, 9999))
    correlation(2, 0, 0, {**v, 14: 100}, 186, (1e-6, 0.99))
    correlation(1, -1, 0, {**v, 14: 100}, 186, (-0.99, -1e-6))
    correlation(2, 0, 0, {**v, 186: 0.5, 14: 100}, 185, (-0.9, 0.4999))
    e = {0: 0.05, 1: 0.8, 194: 0.3, 195: 0.8, 186: 0.6}
    correlation(3, 0, 0, e, 14, (10, 999))
    correlation(3, 0, 0, {**e, 14: 60}, 1)
    correlation(3, 0, 0, {**e, 14: 90}, 186, (0.6, 0.8))
    t = {0: 0.05, 1: 0.8, 189: 0, 190: 0.3, 191: 0.6, 42: 120}
    correlations(2, 0, 0, 0, t, 39, (10, 99999))
    correlations(1, 0, 0, 0, {**t, 39: 100}, 191, (0.30001, 0.95))
    correlations(1, 0, 0, 0, {**t, 39: 100}, 190, (-0.9, 0.5999))
    correlations(2, 0, 0, 0, {**t, 39: 100}, 1)
    d = {0: 0.05, 1: 0.8, 189: 0, 190: 0.2, 192: 0.4, 5: 1}
    correlations(2, 0, 1, 2, d, 39, (5, 9999))
    correlations(2, 0, 1, 2, {**d, 5: 2, 189: 0.1}, 39, (5, 9999))
    correlations(1, -1, 1, 2, {**d, 192: -0.4, 39: 40}, 1)
    correlations(2, 0, 2, 1, {0: 0.05, 1: 0.9, 189: 0, 190: 0.3, 193: 2, 38: 15}, 39, (5, 9999))
    correlations(2, 0, 1, 2, {**d, 190: 0.2, 192: 0.5, 39: 6}, 1)
    q = {0: 0.05, 1: 0.8, 194: -0.25, 195: 0.25, 190: 0.4, 191: 0.42, 5: 1}
    correlations(3, 0, 0, 2, q, 39, (20, 9999))
    correlations(3, 0, 0, 2, {**q, 39: 200, 5: 1.5}, 1)
    correlations(3, -1, 1, 1, {0: 0.05, 194: -0.3, 195: 0.2, 190: 0.1, 192: -0.05, 38: 30,
                               39: 250}, 1)
    correlations(3, 0, 0, 2, {**q, 39: 400}, 191, (0.43, 0.65))


# --- Two-way crossover --------------------------------------------------------------------------

def crossover(log, tails, left, form, model, size_form, values, unknown, bracket=None):
    """t-test of the treatment effect from n1 and n2 subjects in the sequences (Jones and Kenward
    2003, chapter 2). model 0: with carryover, 1: with interaction, 2: with sequences."""
    sd = 155 if log else 2

    def of(x):
        return math.log(x) if log else x

    def pieces(v):
        n1, n2 = v[322], size2(v, size_form, 322, (323, 324, 325))
        se = v[sd] * math.sqrt((1 / n1 + 1 / n2) * (1 if model == 0 else 0.5))
        df = n1 + n2 - 2 if model == 2 else 2 * (n1 + n2) - 3
        if log:
            effect = of(v[96]) if form == 1 else of(v[95]) - of(v[94])
        else:
            effect = v[62] if form == 1 else second(v[86], v[(87, 0, 88)[form]], form) - v[86]
        return se, effect, df

    def power(v):
        se, effect, df = pieces(v)
        if tails == 3:
            low, high = (29, 30) if log else (6, 7)
            return tost_power(v[0], (effect - of(v[low])) / se, (of(v[high]) - effect) / se, df)
        return t_power(v[0], tails, left, (effect - of(v[93 if log else 61])) / se, df)
    add(231 if log else 230, 2, tails, left, (), {10 if log else 1: form, 47: model,
                                                  53: size_form}, values, unknown, power,
        lambda v: t_error(pieces(v)[2]), bracket)


def crossovers():
    v = {0: 0.05, 1: 0.8, 61: 0, 62: 0.5, 2: 1, 325: 1}
    for model in (0, 1, 2):
        crossover(False, 2, 0, 1, model, 2, v, 322, (4, 999))
        crossover(False, 1, 0, 1, model, 2, v, 322, (4, 999))
        crossover(False, 2, 0, 1, model, 2, {**v, 62: 1.5, 322: 6}, 1)
        crossover(False, 2, 0, 1, model, 2, {**v, 322: 20, 325: 2}, 1)
    crossover(False, 1, -1, 1, 2, 2, {**v, 62: -0.5}, 322, (4, 999))
    crossover(False, 2, 0, 1, 2, 2, {**v, 325: 0.5}, 322, (6, 999))
    crossover(False, 2, 0, 1, 2, 2, {**v, 322: 30}, 62, (1e-6, 1))
    crossover(False, 2, 0, 1, 2, 2, {**v, 322: 30}, 2, (0.4, 4))
    m = {0: 0.05, 1: 0.9, 61: 0.1, 86: 2, 87: 2.6, 2: 0.8, 323: 15}
    crossover(False, 2, 0, 0, 2, 0, m, 322, (4, 999))
    crossover(False, 2, 0, 0, 1, 0, {**m, 322: 20}, 87, (2.100001, 5))
    crossover(False, 1, 0, 2, 0, 1, {0: 0.05, 1: 0.8, 61: 0, 86: 2, 88: 1.3, 2: 0.8, 324: 4}, 322,
              (4, 999))
    e = {0: 0.05, 1: 0.8, 6: -0.4, 7: 0.4, 62: 0.05, 2: 1, 325: 1}
    for model in (0, 1, 2):
        crossover(False, 3, 0, 1, model, 2, e, 322, (20, 999))
    crossover(False, 3, 0, 1, 2, 2, {**e, 322: 60}, 1)
    crossover(False, 3, -1, 1, 2, 2, {**e, 322: 80}, 62, (-0.4, 0))
    g = {0: 0.05, 1: 0.8, 93: 1, 96: 1.25, 155: 0.35, 325: 1}
    for model in (0, 1, 2):
        crossover(True, 2, 0, 1, model, 2, g, 322, (4, 999))
        crossover(True, 1, 0, 1, model, 2, {**g, 322: 18}, 1)
    crossover(True, 1, -1, 1, 2, 2, {**g, 96: 0.8}, 322, (4, 999))
    crossover(True, 2, 0, 1, 2, 2, {**g, 322: 25}, 96, (1.00001, 3))
    crossover(True, 2, 0, 0, 2, 0, {0: 0.05, 1: 0.8, 93: 1.1, 94: 4, 95: 6, 155: 0.4, 323: 20},
              322, (4, 999))
    crossover(True, 2, 0, 0, 2, 1, {0: 0.05, 93: 1, 94: 4, 95: 3, 155: 0.4, 324: 5, 322: 20}, 1)
    b = {0: 0.05, 1: 0.8, 29: 0.8, 30: 1.25, 96: 0.95, 155: 0.2, 325: 1}
    for model in (0, 1, 2):
        crossover(True, 3, 0, 1, model, 2, b, 322, (5, 999))
    crossover(True, 3, 0, 1, 2, 2, {**b, 322: 12}, 1)
    crossover(True, 3, 0, 1, 2, 2, {**b, 322: 14}, 155, (0.05, 0.5))
    crossover(True, 3, 0, 0, 2, 2, {0: 0.05, 29: 0.8, 30: 1.25, 94: 10, 95: 9.6, 155: 0.25,
                                    325: 1, 322: 20}, 1)


# --- Published ----------------------------------------------------------------------------------

def published():
    NOTES.append('J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd ed. 1988, '
                 'example 9.1: five covariates, R^2 = 0.10, 95 subjects: power 0.67')
    row('regression_published', 171, 1, 2, 0, (), {}, {0: 0.05, 268: 5, 265: math.sqrt(0.1),
                                                       266: 0, 267: 5, 85: 95}, 1, 0.67, 0.01)
    NOTES.append('F. Y. Hsieh (1989), Statistics in Medicine 8, 795-802, example: 7 % events at '
                 'the mean, odds ratio 1.5, one-sided 0.05, power 0.80: 614 subjects')
    logistic(False, 1, 0, 1, {0: 0.05, 1: 0.8, 20: 0.07, 200: 1.5, 25: 0}, 85, (50, 9999),
             'regression_published', 614)
    NOTES.append('the same with a multiple correlation of 0.25: 655 subjects')
    logistic(False, 1, 0, 1, {0: 0.05, 1: 0.8, 20: 0.07, 200: 1.5, 25: 0.25}, 85, (50, 9999),
             'regression_published', 655)
    primer = ('J. Cohen, A power primer, Psychological Bulletin 112, 1992, 155-159, table 2, level '
              '0.05, power 0.80: ')
    for r, n in ((0.1, 783), (0.3, 85)):
        NOTES.append(f'{primer}r = {r}: {n}')
        row('regression_published', 210, 1, 2, 0, (), {23: 0}, {0: 0.05, 1: 0.8, 185: 0, 186: r}, 14,
            n, 1)
    for q, n in ((0.1, 1573), (0.3, 177), (0.5, 66)):
        NOTES.append(f'{primer}two correlations with q = {q}: {n} in each sample')
        row('regression_published', 210, 2, 2, 0, (), {24: 0, 2: 2},
            {0: 0.05, 1: 0.8, 189: 0, 190: 0, 191: math.tanh(q), 5: 1}, 39, n, 1)
    # Cohen took his sizes from tables of power: the exact ones are up to four larger.
    for k, sizes in ((2, (481, 67, 30)), (3, (547, 76, 34)), (5, (645, 91, 42)), (8, (757, 107, 50))):
        for f2, n in zip((0.02, 0.15, 0.35), sizes):
            NOTES.append(f'{primer}{k} covariates, f^2 = {f2}: {n}')
            row('regression_published', 171, 1, 2, 0, (), {},
                {0: 0.05, 1: 0.8, 268: k, 265: math.sqrt(f2 / (1 + f2)), 266: 0, 267: k}, 85, n,
                1.5 + n * 0.007)
    for d, n in ((0.2, 393), (0.5, 64), (0.8, 26)):
        NOTES.append(f'{primer}means of two groups, d = {d}: {n} in each, as a slope on a covariate '
                     'of two values')
        row('regression_published', 170, 1, 2, 0, (), {27: 0},
            {0: 0.05, 1: 0.8, 203: 0, 204: d, 212: 1, 213: 0.5}, 85, 2 * n, 2)
    # A Wald test, whose standard error is that under H1.
    poisson = {0: 0.05, 262: 2.798, 368: 0.8938, 259: 0.53, 25: 0, 170: 1}
    web = 'Z. Zhang and Y. Yuan, R package WebPower, wp.poisson, example: rate ratio 0.8938, '
    for n, power in ((800, 0.7324097), (1200, 0.8849241), (4406, 0.9999789)):
        NOTES.append(f'{web}{n} subjects: power {power}')
        row('regression_published', 191, 1, 2, 0, (39,), {40: 1, 58: 0}, {**poisson, 85: n}, 1, power,
            z_error())
    NOTES.append(f'{web}power 0.8: 943.2628 subjects')
    row('regression_published', 191, 1, 2, 0, (39,), {40: 1, 58: 0}, {**poisson, 1: 0.8}, 85,
        943.2628, 1)
    labes = ('D. Labes, H. Schütz and B. Lang, R package PowerTOST, power.TOST: ratio 0.95 within 0.8 '
             'and 1.25, coefficient of variation 30 %, 40 subjects: 0.8158453')
    sd = math.sqrt(math.log(1.09))
    model = {47: 2, 53: 2}
    NOTES.append(labes)
    row('regression_published', 231, 2, 3, 0, (), {10: 1, **model},
        {0: 0.05, 29: 0.8, 30: 1.25, 96: 0.95, 155: sd, 322: 20, 325: 1}, 1, 0.8158453, t_error(38))
    NOTES.append(labes + ', as differences of logarithms')
    row('regression_published', 230, 2, 3, 0, (), {1: 1, **model},
        {0: 0.05, 6: math.log(0.8), 7: math.log(1.25), 62: math.log(0.95), 2: sd, 322: 20, 325: 1}, 1,
        0.8158453, t_error(38))
    NOTES.append(labes + ', as a general crossover design')
    row('regression_published', 241, 3, 3, 0, (14,), {},
        {0: 0.05, 29: 0.8, 30: 1.25, 290: 0.95, 155: sd, 287: 1, 285: 2, 286: 2, 288: 2, 289: 20}, 1,
        0.8158453, t_error(38))
    diletti = ('E. Diletti, D. Hauschke and V. W. Steinijans, International Journal of Clinical '
               'Pharmacology, Therapy and Toxicology 29, 1991, 1-8: ratio 0.95, power 0.80, '
               'coefficient of variation ')
    for percent, n in ((20, 20), (25, 28), (30, 40)):
        NOTES.append(f'{diletti}{percent} %: {n} subjects')
        row('regression_published', 231, 2, 3, 0, (), {10: 1, **model},
            {0: 0.05, 1: 0.8, 29: 0.8, 30: 1.25, 96: 0.95,
             155: math.sqrt(math.log(1 + (percent / 100) ** 2)), 325: 1}, 322, n / 2, 1)


# --- Simulation ---------------------------------------------------------------------------------

REPLICATES = 200000


def newton(x, y, mean, weight, steps=12):
    """Coefficients and Wald z of the slope in a two-parameter model, for each row of x and y."""
    b0 = np.log(np.maximum(y.mean(axis=1), 1e-3))
    if mean is logistic_mean:
        p = np.clip(y.mean(axis=1), 1e-3, 1 - 1e-3)
        b0 = np.log(p / (1 - p))
    b1 = np.zeros(len(y))
    for _ in range(steps):
        mu = mean(b0[:, None] + b1[:, None] * x)
        w = weight(mu)
        r = y - mu
        g0, g1 = r.sum(axis=1), (r * x).sum(axis=1)
        i00, i01, i11 = w.sum(axis=1), (w * x).sum(axis=1), (w * x * x).sum(axis=1)
        det = i00 * i11 - i01**2
        s0, s1 = (i11 * g0 - i01 * g1) / det, (i00 * g1 - i01 * g0) / det
        b0, b1 = b0 + np.clip(s0, -1, 1), b1 + np.clip(s1, -1, 1)
        if max(np.abs(s0).max(), np.abs(s1).max()) < 1e-9:
            break
    return b1 / np.sqrt(i00 / det)


def logistic_mean(eta):
    return 1 / (1 + np.exp(-eta))


def share(z, alpha, tails):
    if tails == 2:
        return (np.abs(z) > stats.norm.ppf(1 - alpha / 2)).mean()
    return (z > stats.norm.ppf(1 - alpha)).mean()


def continuous_z(rng, n, intercept, slope_, family):
    chunk = max(1, 2_000_000 // n)
    zs = []
    for start in range(0, REPLICATES, chunk):
        rows = min(chunk, REPLICATES - start)
        x = rng.standard_normal((rows, n))
        eta = intercept + slope_ * x
        if family == 'logistic':
            y = (rng.random((rows, n)) < logistic_mean(eta)).astype(float)
            zs.append(newton(x, y, logistic_mean, lambda m: m * (1 - m)))
        else:
            y = rng.poisson(np.exp(eta)).astype(float)
            zs.append(newton(x, y, np.exp, lambda m: m))
    return np.concatenate(zs)


def simulate():
    rng = np.random.default_rng(20261122)
    rows = []

    def keep(menu, tails, checks, groups, values, z, events, rare=0.0):
        power = share(z, values[0], tails)
        se = math.sqrt(power * (1 - power) / REPLICATES)
        given = ';'.join(f'{k}={number(v)}' for k, v in values.items())
        rows.append([f'menu {menu}', 1, tails, 0, ','.join(map(str, checks)),
                     ','.join(f'{g}={o}' for g, o in groups.items()), given, 1, f'{power:.6g}',
                     f'{4 * se + 0.25 / math.sqrt(events) + rare:.3g}'])
        print(rows[-1], 'standard error', f'{se:.2g}', flush=True)

    def rare_events(binary, tails, values, excess):
        """What the power gains when the variance is smaller."""
        b, se0, se1 = logistic_pieces(binary, values, 1)
        root = math.sqrt(1 + excess)
        return z_power(values[0], tails, 0, b, se0 / root, se1 / root) - \
            z_power(values[0], tails, 0, b, se0, se1)

    for n, p, ratio, tails in ((150, 0.3, 1.6, 2), (400, 0.1, 1.6, 2), (1500, 0.07, 1.3, 1),
                               (2500, 0.3, 1.12, 2)):
        z = continuous_z(rng, n, math.log(p / (1 - p)), math.log(ratio), 'logistic')
        values = {0: 0.05, 20: p, 200: ratio, 25: 0, 85: n}
        b = math.log(ratio)
        d = (1 + (1 + b * b) * math.exp(5 * b * b / 4)) / (1 + math.exp(-b * b / 4))
        keep(180, tails, (), {32: 1}, values, z, n * p, rare_events(False, tails, values, p * d))
    for n, p, ratio, x, tails in ((300, 0.2, 2, 0.4, 2), (2000, 0.05, 1.7, 0.5, 2)):
        n1 = round(n * x)
        p1 = ratio * p / (1 - p + ratio * p)
        # A half is added to each cell, which keeps an empty one finite.
        a = rng.binomial(n1, p1, REPLICATES) + 0.5
        c = rng.binomial(n - n1, p, REPLICATES) + 0.5
        b, d = n1 + 1 - a, n - n1 + 1 - c
        z = np.log(a * d / b / c) / np.sqrt(1 / a + 1 / b + 1 / c + 1 / d)
        values = {0: 0.05, 257: p, 200: ratio, 259: x, 25: 0, 85: n}
        keep(181, tails, (), {32: 1}, values, z, n * p,
             rare_events(True, tails, values, p + ((1 - x) * p + x * p1) / p - 1))
    for n, r, ratio, time, tails in ((120, 0.85, 1.3, 1, 2), (60, 0.5, 1.25, 5, 1),
                                     (1000, 0.5, 1.13, 1, 2)):
        z = continuous_z(rng, n, math.log(r * time), math.log(ratio), 'poisson')
        keep(190, tails, (39,), {40: 1, 58: 0}, {0: 0.05, 260: r, 368: ratio, 25: 0, 170: time,
                                                 85: n}, z, n * r * time)
    for n, r, ratio, x, time, phi, k, tails in ((500, 0.85, 1.3, 0.5, 1, 1, 0, 2),
                                                (600, 0.85, 1.3, 0.5, 1, 1.5, 0, 2),
                                                (700, 0.85, 1.35, 0.4, 1, 1, 0.6, 2)):
        n1 = round(n * x)
        sums = []
        for size, rate in ((n1, r * ratio * time), (n - n1, r * time)):
            if k > 0:      # gamma distributed rates of variance k times the square of their mean
                y = rng.poisson(rng.gamma(size / k, rate * k, REPLICATES))
            elif phi > 1:  # negative binomial sums of variance phi times their mean
                y = rng.poisson(rng.gamma(size * rate / (phi - 1), phi - 1, REPLICATES))
            else:
                y = rng.poisson(size * rate, REPLICATES)
            sums.append((size, np.maximum(y, 0.5)))
        (m1, y1), (m0, y0) = sums
        b = np.log(y1 / m1) - np.log(y0 / m0)
        z = b / np.sqrt(phi * (1 / y1 + 1 / y0) + k / m1 + k / m0)
        checks = (37, 39) if phi > 1 or k > 0 else (39,)
        values = {0: 0.05, 262: r, 368: ratio, 259: x, 25: 0, 170: time, 85: n}
        if k > 0:
            values[329] = k
        elif phi > 1:
            values[367] = phi
        keep(191, tails, checks, {40: 1, 58: 1 if k > 0 else 0}, values, z, n * r * time)
    return rows


HEAD = 'Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n'


def write(name, title, rows, notes=()):
    with open(f'checks/data/validation/{name}.tsv', 'w', encoding='utf-8') as f:
        f.write(f'# Written by checks/reference/regression.py. {title}\n')
        for note in notes:
            f.write(f'# - {note}\n')
        f.write(HEAD)
        for r in rows:
            f.write('\t'.join(map(str, r)) + '\n')


def main():
    # scipy's non-central t far outside where a root lies.
    warnings.simplefilter('ignore', RuntimeWarning)
    if '--simulate' in sys.argv:
        write('regression_simulated',
              f'Shares of {REPLICATES} simulated sets of data in which the Wald test rejects.',
              simulate())
        return
    simple_regression()
    multiple_regression()
    logistic_regression()
    poisson_regression()
    correlation_tests()
    crossovers()
    published()
    write('regression', 'Slopes, correlations, multiple, logistic and Poisson regression, '
          'crossover designs.', ROWS['regression'])
    write('regression_published', 'Published examples, as printed there, in this order:',
          ROWS['regression_published'], NOTES)
    print({k: len(v) for k, v in ROWS.items()})


if __name__ == '__main__':
    main()
