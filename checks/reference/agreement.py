#!/usr/bin/env python3
"""Reference values for the tests of agreement and of rank correlation, written to
checks/data/validation/agreement.tsv, agreement_published.tsv and agreement_simulated.tsv.

Independent of the program. Intraclass correlation and Cronbach's alpha: scipy's F distribution; two
independent alphas: the distribution of a product of two F, by quadrature. Kappas: variances by the
delta method with numerical derivatives of the coefficient with respect to the cells of the table,
and for general ratings scipy's linear programming. Spearman: scipy's non-central t distribution.
Other unknowns are found with Brent's method.

The tests themselves are simulated: SIMULATED replicates of samples from the distribution in question,
each judged as the test does it, with the variance under H0 where the test takes that. The program's
large-sample power may differ from these by a term of first order in 1/sqrt(n), the skewness of
the estimate (Edgeworth), for which SKEW/sqrt(n) is allowed, and by four standard errors of the
simulated share.

Needs Python 3 with scipy; run from the repository's root.
"""
import math

import numpy as np
from scipy import optimize, stats

from cases import row, solved, write

SEED = 20240617
SIMULATED = 200_000
SKEW = 0.35
ROWS, SIMULATIONS = [], []

NORMAL = 3e-4   # a power: NorInv and NorCdf
F = 2e-3        # a power: FInv and FCdf
STUDENT = 4e-3  # a power: the normal approximation of the non-central t distribution
PRODUCT = 5e-3  # a power: one F for a product of two

ICC, ALPHA, KAPPA, COHEN, GENERAL, LIN, SPEARMAN, KENDALL = (
    'menu 510', 'menu 511', 'menu 512', 'menu 513', 'menu 514', 'menu 515', 'menu 490', 'menu 491')


def add(*case, **options):
    ROWS.append(solved(*case, **options))


def by_form(values, base, kinds):
    """The dependent quantity, entered as one of the kinds: value, difference, ratio."""
    value, difference, ratio = kinds
    if value in values:
        return values[value]
    return base + values[difference] if difference in values else base * values[ratio]


# --- F ------------------------------------------------------------------------------------------

def scale_power(alpha, tails, left, null, right, cdf, quantile):
    """null, right: null ratio over true ratio."""
    if tails == 3:
        return cdf(right * quantile(alpha)) - cdf(null * quantile(1 - alpha))
    if tails == 2:
        return cdf(null * quantile(alpha / 2)) + 1 - cdf(null * quantile(1 - alpha / 2))
    return cdf(null * quantile(alpha)) if left else 1 - cdf(null * quantile(1 - alpha))


def f_power(alpha, tails, left, null, right, df1, df2):
    return scale_power(alpha, tails, left, null, right, lambda x: stats.f.cdf(x, df1, df2),
                       lambda p: stats.f.ppf(p, df1, df2))


def intraclass(tails, left, values, unknown, bracket=None, group=0):
    def power(v):
        k, n = v[223], v[224]
        f = lambda rho: (1 + (k - 1) * rho) / (1 - rho)
        if tails == 3:
            null, right, truth = v[47], v[48], v[32]
        else:
            null = right = v[28]
            truth = by_form(v, null, (32, 109, 144))
        return f_power(v[0], tails, left, f(null) / f(truth), f(right) / f(truth), n - 1,
                       n * (k - 1))
    add(ICC, 1, tails, left, {} if tails == 3 else {33: group}, values, unknown, power, F, bracket)


base = {0: 0.05, 28: 0.6, 32: 0.8, 223: 3, 224: 30}
intraclass(1, False, base, 1)
intraclass(2, False, base, 1)
intraclass(1, True, {**base, 28: 0.8, 32: 0.6}, 1)
intraclass(1, False, {**base, 28: 0, 32: 0.3, 224: 8}, 1)
intraclass(2, False, {**base, 223: 20, 28: 0.3, 32: 0.5}, 1)
intraclass(2, False, {**base, 223: 2, 224: 200, 28: 0.7, 32: 0.8}, 1)
intraclass(1, False, {**base, 1: 0.8}, 224, (2, 1e4))
intraclass(2, False, {**base, 1: 0.9, 28: 0.4, 32: 0.6, 223: 2}, 224, (2, 1e4))
intraclass(1, False, {**base, 1: 0.8, 224: 25}, 223, (1.5, 1e3))
intraclass(2, False, {**base, 1: 0.8}, 32, (0.61, 0.99))
intraclass(1, True, {**base, 1: 0.8}, 32, (0.01, 0.59))
intraclass(2, False, {**base, 1: 0.8}, 28, (0.01, 0.79))
intraclass(1, False, {**base, 1: 0.7}, 0, (1e-4, 0.9))
intraclass(1, False, {0: 0.05, 1: 0.8, 28: 0.4, 109: 0.2, 223: 4}, 224, (2, 1e4), 1)
intraclass(2, False, {0: 0.05, 1: 0.8, 28: 0.4, 144: 1.6, 223: 4}, 224, (2, 1e4), 2)
# A difference that is kept has least power between two smaller and larger coefficients.
intraclass(1, False, {0: 0.05, 1: 0.675, 109: 0.2, 223: 4, 224: 30}, 28, (0.25, 0.39), 1)
equivalent = {0: 0.05, 47: 0.5, 48: 0.9, 32: 0.75, 223: 3, 224: 60}
intraclass(3, False, equivalent, 1)
intraclass(3, False, {**equivalent, 1: 0.8}, 224, (5, 1e4))
intraclass(3, False, {**equivalent, 1: 0.8}, 32, (0.78, 0.89))


def alpha_one(tails, left, values, unknown, bracket=None, group=0):
    def power(v):
        k, n = v[280], v[224]
        if tails == 3:
            null, right, truth = v[47], v[48], v[272]
        else:
            null = right = v[271]
            truth = by_form(v, null, (272, 273, 274))
        ratio = lambda h: (1 - truth) / (1 - h)
        return f_power(v[0], tails, left, ratio(null), ratio(right), n - 1, (n - 1) * (k - 1))
    add(ALPHA, 1, tails, left, {} if tails == 3 else {44: group}, values, unknown, power, F,
        bracket)


base = {0: 0.05, 271: 0.7, 272: 0.8, 280: 10, 224: 60}
alpha_one(1, False, base, 1)
alpha_one(2, False, base, 1)
alpha_one(1, True, {**base, 271: 0.8, 272: 0.7}, 1)
alpha_one(2, False, {**base, 280: 2}, 1)
alpha_one(1, False, {**base, 271: 0.3, 224: 8, 272: 0.8, 280: 5}, 1)
alpha_one(2, False, {**base, 280: 40, 224: 150}, 1)
alpha_one(1, False, {**base, 1: 0.8}, 224, (4, 1e4))
alpha_one(2, False, {**base, 1: 0.9, 272: 0.85}, 224, (4, 1e4))
alpha_one(1, False, {**base, 1: 0.65, 224: 60}, 280, (2, 1e3))
alpha_one(2, False, {**base, 1: 0.8}, 272, (0.71, 0.99))
alpha_one(1, True, {**base, 1: 0.8}, 272, (0.01, 0.69))
alpha_one(1, False, {**base, 1: 0.8}, 271, (0.01, 0.79))
alpha_one(1, False, {0: 0.05, 1: 0.8, 271: 0.5, 273: 0.2, 280: 5}, 224, (4, 1e4), 1)
alpha_one(2, False, {0: 0.05, 1: 0.8, 271: 0.5, 274: 1.5, 280: 5}, 224, (4, 1e4), 2)
equivalent = {0: 0.05, 47: 0.6, 48: 0.85, 272: 0.75, 280: 10, 224: 150}
alpha_one(3, False, equivalent, 1)
alpha_one(3, False, {**equivalent, 1: 0.8}, 224, (10, 1e4))
alpha_one(3, False, {**equivalent, 1: 0.6}, 272, (0.76, 0.84))

NODES, WEIGHTS = np.polynomial.legendre.leggauss(200)


def product_cdf(w, n1, k1, n2, k2):
    """P(F(n2 - 1, (n2 - 1)(k2 - 1)) F((n1 - 1)(k1 - 1), n1 - 1) <= w)."""
    z = 6.5 * NODES
    other = stats.f.ppf(stats.norm.cdf(z), (n1 - 1) * (k1 - 1), n1 - 1)
    return float(np.sum(6.5 * WEIGHTS * stats.norm.pdf(z) *
                        stats.f.cdf(w / other, n2 - 1, (n2 - 1) * (k2 - 1))))


def product_quantile(p, *sizes):
    return math.exp(optimize.brentq(lambda x: product_cdf(math.exp(x), *sizes) - p, -12, 12,
                                    xtol=1e-9))


def alpha_two(tails, left, values, unknown, bracket=None, options=(0, 0, 0)):
    """The exact test: with the quantiles of the product itself."""
    def power(v):
        a1 = v[276]
        a2 = by_form(v, a1, (277, 278, 279))
        k1, n1 = v[281], v[4]
        k2 = by_form(v, k1, (282, 283, 284))
        n2 = by_form(v, n1, (37, 38, 5))
        null, right = (v[71], v[72]) if tails == 3 else (v[275], v[275])
        ratio = lambda d: (1 - a2) / (1 - a1 - d)
        sizes = (n1, k1, n2, k2)
        return scale_power(v[0], tails, left, ratio(null), ratio(right),
                           lambda x: product_cdf(x, *sizes), lambda p: product_quantile(p, *sizes))
    add(ALPHA, 2, tails, left, dict(zip((45, 46, 2), options)), values, unknown, power, PRODUCT,
        bracket)


base = {0: 0.05, 275: 0, 276: 0.7, 277: 0.85, 281: 10, 282: 10, 4: 60, 37: 60}
alpha_two(1, False, base, 1)
alpha_two(2, False, base, 1)
alpha_two(1, True, {**base, 277: 0.5}, 1)
alpha_two(2, False, {**base, 4: 40, 37: 80, 281: 5, 282: 20}, 1)
alpha_two(2, False, {**base, 281: 2, 282: 2, 276: 0.5, 277: 0.8}, 1)
alpha_two(1, False, {**base, 4: 8, 37: 8, 276: 0.3, 277: 0.85, 281: 5, 282: 5}, 1)
alpha_two(1, True, {**base, 4: 12, 37: 30, 276: 0.8, 277: 0.4}, 1)
alpha_two(2, False, {**base, 4: 200, 37: 200, 277: 0.78, 281: 30, 282: 30}, 1)
alpha_two(1, False, {**base, 275: 0.05}, 1)
alpha_two(2, False, {0: 0.05, 1: 0.8, 275: 0, 276: 0.7, 278: 0.15, 281: 10, 283: 2, 5: 1.5}, 4,
          (4, 1e3), (1, 1, 2))
alpha_two(1, False, {0: 0.05, 1: 0.8, 275: 0, 276: 0.6, 279: 1.3, 281: 10, 284: 1.5, 38: 10}, 4,
          (4, 1e3), (2, 2, 1))
alpha_two(2, False, {**base, 1: 0.8}, 277, (0.71, 0.99))
alpha_two(3, False, {0: 0.05, 71: -0.15, 72: 0.15, 276: 0.7, 277: 0.7, 281: 10, 282: 10, 4: 150,
                     37: 150}, 1)


def alpha_same(tails, left, values, unknown, bracket=None, option=0):
    """Formula of the variance of the logarithm; the test itself is simulated below."""
    def power(v):
        a1, k, n, rho = v[276], v[280], v[224], v[220]
        a2 = by_form(v, a1, (277, 278, 279))
        df = 1 + 1 / ((1 - rho * rho) / (n - 2) + 1 / ((n - 1) * (k - 1) - 1))
        null, right = (v[71], v[72]) if tails == 3 else (v[275], v[275])
        ratio = lambda d: (1 - a2) / (1 - a1 - d)
        return f_power(v[0], tails, left, ratio(null), ratio(right), df, df)
    add(ALPHA, 2, tails, left, {45: option}, values, unknown, power, F, bracket, (20,))


base = {0: 0.05, 275: 0, 276: 0.7, 277: 0.85, 280: 10, 220: 0.5, 224: 40}
alpha_same(1, False, base, 1)
alpha_same(2, False, base, 1)
alpha_same(2, False, {**base, 220: -0.8, 280: 4}, 1)
alpha_same(1, True, {**base, 277: 0.5}, 1)
alpha_same(2, False, {**base, 1: 0.8}, 224, (4, 1e3))
alpha_same(2, False, {**base, 1: 0.8, 224: 40}, 220, (0.0, 0.99))
alpha_same(3, False, {0: 0.05, 71: -0.15, 72: 0.15, 276: 0.7, 277: 0.7, 280: 10, 220: 0.5,
                      224: 120}, 1)


# --- Normal -------------------------------------------------------------------------------------

def z_power(alpha, tails, left, low, se_low, se1, high=0.0, se_high=1.0):
    """low: truth minus null value or left limit; high: right limit minus truth."""
    z = stats.norm.ppf(1 - alpha / (2 if tails == 2 else 1))
    above = stats.norm.cdf((low - z * se_low) / se1)
    below = stats.norm.cdf((-low - z * se_low) / se1)
    if tails == 3:
        return above + stats.norm.cdf((high - z * se_high) / se1) - 1
    if tails == 2:
        return stats.norm.cdf((abs(low) - z * se_low) / se1) + \
            stats.norm.cdf((-abs(low) - z * se_low) / se1)
    return below if left else above


def delta_variance(coefficient, cells):
    """Variance of the coefficient of multinomial cells, times n: numerical derivatives."""
    cells = np.asarray(cells, dtype=float)
    slopes = np.empty(cells.size)
    step = 1e-5
    for i in range(cells.size):
        near = [cells.copy() for _ in range(4)]
        for p, h in zip(near, (step, -step, 2 * step, -2 * step)):
            p.flat[i] += h
        a, b, c, d = map(coefficient, near)
        slopes[i] = (8 * (a - b) - (c - d)) / (12 * step)
    p = cells.ravel()
    return float(np.sum(p * slopes ** 2) - np.sum(p * slopes) ** 2)


def kappa_cells(kappa, pi):
    q = pi * (1 - pi)
    return np.array([pi * pi + kappa * q, 2 * q * (1 - kappa), (1 - pi) ** 2 + kappa * q])


def intraclass_kappa(cells):
    # A table that sums to 1 only: positive and negative ratings are counted apart.
    p, q = cells[0] + cells[1] / 2, cells[2] + cells[1] / 2
    total = p + q
    return 1 - (cells[1] / total) / (2 * (p / total) * (q / total))


def kappa_values(v, tails):
    if tails == 3:
        return v[47], v[48], v[292]
    return v[291], v[291], by_form(v, v[291], (292, 293, 294))


def kappa_power(v, tails, left, variance):
    null, right, truth = kappa_values(v, tails)
    se = lambda k: math.sqrt(variance(k) / v[224])
    return z_power(v[0], tails, left, truth - null, se(null), se(truth), right - truth, se(right))


def kappa(tails, left, values, unknown, bracket=None, group=0):
    def power(v):
        return kappa_power(v, tails, left,
                           lambda k: delta_variance(intraclass_kappa, kappa_cells(k, v[102])))
    add(KAPPA, 1, tails, left, {48: group}, values, unknown, power, NORMAL, bracket)


base = {0: 0.05, 291: 0.4, 292: 0.6, 102: 0.3, 224: 100}
kappa(1, False, base, 1)
kappa(2, False, base, 1)
kappa(1, True, {**base, 292: 0.1}, 1)
kappa(2, False, {**base, 291: 0, 292: 0.3, 102: 0.1, 224: 150}, 1)
kappa(1, True, {**base, 291: 0.1, 292: -0.2}, 1)
kappa(2, False, {**base, 1: 0.8}, 224, (3, 1e4))
kappa(1, False, {**base, 1: 0.9, 102: 0.5}, 224, (3, 1e4))
kappa(2, False, {**base, 1: 0.8}, 292, (0.41, 0.95))
kappa(1, True, {**base, 1: 0.8}, 292, (-0.3, 0.39))
kappa(2, False, {**base, 1: 0.8}, 291, (-0.3, 0.59))
kappa(1, False, {**base, 1: 0.5}, 102, (0.02, 0.4999))
# A proportion next to 0 and one of 0.5 have more power than those between; a kappa next to 1 has less.
kappa(2, False, {**base, 1: 0.63, 291: 0, 292: 0.3, 224: 60}, 102, (0.2, 0.4999))
kappa(2, False, {**base, 1: 0.06, 224: 8}, 102, (0.2, 0.4999))
kappa(1, False, {0: 0.1, 1: 0.11, 291: 0.5, 102: 0.1, 224: 12}, 292, (0.5, 0.7))
kappa(1, False, {0: 0.05, 1: 0.055, 291: 0.5, 102: 0.3, 224: 5}, 292, (0.5, 0.6))
kappa(1, True, {0: 0.1, 1: 0.75, 291: 0.2, 102: 0.5, 224: 2}, 292, (-0.95, -0.5))
kappa(1, True, {0: 0.001, 1: 0.06, 291: 0.6, 102: 0.02, 224: 50000}, 292, (0.55, 0.59))
kappa(1, False, {0: 0.05, 1: 0.8, 291: 0.3, 293: 0.3, 102: 0.4}, 224, (3, 1e4), 1)
kappa(2, False, {0: 0.05, 1: 0.8, 291: 0.3, 294: 2, 102: 0.4}, 224, (3, 1e4), 2)


def cohen_cells(k, a, b):
    chance = a * b + (1 - a) * (1 - b)
    agreed = chance + (1 - chance) * k
    both = (agreed + a + b - 1) / 2
    return np.array([[both, a - both], [b - both, 1 - a - b + both]])


def cohens_kappa(table):
    table = table / table.sum()
    chance = float(table.sum(1) @ table.sum(0))
    return (np.trace(table) - chance) / (1 - chance)


def cohen(tails, left, values, unknown, bracket=None, groups=(0, 0)):
    def power(v):
        a = v[103]
        b = by_form(v, a, (104, 105, 106))
        return kappa_power(v, tails, left,
                           lambda k: delta_variance(cohens_kappa, cohen_cells(k, a, b)))
    add(COHEN, 1, tails, left, {12: groups[1]} if tails == 3 else dict(zip((48, 12), groups)),
        values, unknown, power, NORMAL, bracket)


base = {0: 0.05, 291: 0.4, 292: 0.6, 103: 0.3, 104: 0.35, 224: 100}
cohen(1, False, base, 1)
cohen(2, False, base, 1)
cohen(1, True, {**base, 292: 0.1}, 1)
cohen(2, False, {**base, 103: 0.1, 104: 0.12, 291: 0, 292: 0.3}, 1)
cohen(1, True, {**base, 291: 0.1, 292: -0.25}, 1)
cohen(2, False, {**base, 103: 0.5, 104: 0.5, 1: 0.8}, 224, (3, 1e4))
cohen(1, False, {**base, 1: 0.9}, 224, (3, 1e4))
cohen(2, False, {**base, 1: 0.8}, 292, (0.41, 0.85))
cohen(2, False, {**base, 1: 0.8}, 291, (-0.3, 0.59))
cohen(1, False, {0: 0.05, 1: 0.8, 291: 0.3, 293: 0.3, 103: 0.4, 105: 0.1}, 224, (3, 1e4), (1, 1))
cohen(2, False, {0: 0.05, 1: 0.8, 291: 0.3, 294: 2, 103: 0.4, 106: 0.9}, 224, (3, 1e4), (2, 2))
equivalent = {0: 0.05, 47: 0.4, 48: 0.8, 292: 0.62, 103: 0.4, 104: 0.42, 224: 150}
cohen(3, False, equivalent, 1)
cohen(3, False, {**equivalent, 1: 0.8}, 224, (10, 1e4))


def largest_variance(k, first, second):
    """Flack et al. 1988: largest variance of kappa over all tables with these margins."""
    first, second = np.array(first), np.array(second)
    size = len(first)
    chance = float(first @ second)
    i, j = np.indices((size, size))
    weights = np.where(i == j, (1 - (first[i] + second[j]) * (1 - k)) ** 2,
                       ((second[i] + first[j]) * (1 - k)) ** 2).ravel()
    rows = [(i == m).ravel() for m in range(size)] + [(j == m).ravel() for m in range(size)] + \
        [(i == j).ravel()]
    sides = [*first, *second, (1 - chance) * k + chance]
    found = optimize.linprog(-weights, A_eq=np.array(rows, dtype=float), b_eq=sides)
    table = found.x.reshape(size, size)
    return delta_variance(cohens_kappa, np.maximum(table, 0)), table


def general(tails, left, values, unknown, bracket=None, group=0):
    def power(v):
        truth = by_form(v, v[291], (292, 293, 294))
        return z_power(v[0], tails, left, truth - v[291], math.sqrt(v[337] / v[224]),
                       math.sqrt(v[338] / v[224]))
    add(GENERAL, 1, tails, left, {48: group}, values, unknown, power, NORMAL, bracket)


base = {0: 0.05, 291: 0.4, 292: 0.6, 337: 0.9, 338: 0.8, 224: 100}
general(1, False, base, 1)
general(2, False, base, 1)
general(1, True, {**base, 292: 0.1}, 1)
general(2, False, {**base, 1: 0.8}, 224, (3, 1e4))
general(2, False, {**base, 1: 0.8}, 292, (0.41, 0.95))
general(1, False, {**base, 1: 0.8}, 337, (0.1, 4))
general(1, False, {**base, 1: 0.8}, 338, (0.01, 4))
general(2, False, {**base, 1: 0.9, 292: 0.7}, 338, (0.1, 2))
# Of an effect short of the critical value more variance means more power, and little of it none.
general(2, False, {0: 0.001, 1: 0.46, 291: 0.3, 292: 0.85, 337: 0.3, 224: 9}, 338, (1, 4))
general(2, False, {0: 0.001, 1: 0.463, 291: 0.3, 293: 0.584, 337: 0.3, 224: 9}, 338, (0.1, 1), 1)
general(2, False, {0: 0.05, 1: 0.9, 291: 0.3, 293: 0.2, 337: 1, 338: 1.2}, 224, (3, 1e4), 1)
general(1, False, {0: 0.05, 1: 0.8, 291: 0.3, 294: 2, 337: 1, 338: 1.2}, 224, (3, 1e4), 2)


def accuracy(u, v):
    return 2 / (v + 1 / v + u * u)


def lin_se(r, u, v, n):
    """L. I. Lin 1989 with the corrections of 2000, as printed."""
    rho = r / accuracy(u, v)
    w = 1 - r * r
    return math.sqrt(((1 - rho ** 2) * r ** 2 / (w * rho ** 2) +
                      2 * r ** 3 * (1 - r) * u ** 2 / (rho * w ** 2) -
                      r ** 4 * u ** 4 / (2 * rho ** 2 * w ** 2)) / (n - 2))


def lin(tails, left, values, unknown, bracket=None, groups=(0, 0, 0)):
    def power(v):
        r0, u0, v0 = v[295], v[299], v[303]
        r1 = by_form(v, r0, (296, 297, 298))
        u1 = by_form(v, u0, (300, 301, 302))
        v1 = by_form(v, v0, (304, 305, 306))
        return z_power(v[0], tails, left, math.atanh(r1) - math.atanh(r0),
                       lin_se(r0, u0, v0, v[224]), lin_se(r1, u1, v1, v[224]))
    add(LIN, 1, tails, left, dict(zip((49, 50, 51), groups)), values, unknown, power, NORMAL,
        bracket)


base = {0: 0.05, 295: 0.7, 296: 0.85, 299: 0.2, 300: 0.1, 303: 1.1, 304: 1, 224: 60}
lin(1, False, base, 1)
lin(2, False, base, 1)
lin(1, True, {**base, 296: 0.5}, 1)
lin(2, False, {**base, 295: 0.9, 296: 0.95, 299: 0.1, 300: 0, 303: 1}, 1)
lin(1, False, {**base, 299: 0.8, 300: 0.5, 303: 0.8, 304: 1.2}, 1)
lin(1, False, {**base, 1: 0.8}, 224, (4, 1e4))
lin(2, False, {**base, 1: 0.9, 299: 0, 300: 0, 303: 1}, 224, (4, 1e4))
lin(1, False, {**base, 1: 0.8}, 296, (0.701, 0.98))
lin(2, False, {**base, 1: 0.8}, 295, (0.01, 0.849))
# A concordance next to its accuracy has less power than a smaller one of few subjects.
lin(2, False, {0: 0.01, 1: 0.0615, 295: 0.25, 299: 0.5, 300: 0.3, 303: 0.7, 304: 1.4, 224: 3}, 296,
    (0.8, 0.874))
lin(2, False, {0: 0.1, 1: 0.33, 296: 0.8, 299: 1, 300: 0.1, 303: 1, 304: 1, 224: 3}, 295,
    (0.56, 0.64))
# Two-sided, with less concordance under H1 than under H0 whatever that is.
lin(2, False, {0: 0.05, 1: 0.9, 298: 0.9, 299: 0, 300: 0.3, 303: 1, 304: 1.4, 224: 400}, 295,
    (0.3, 0.98), (2, 0, 0))
lin(1, False, {0: 0.05, 1: 0.8, 295: 0.7, 297: 0.1, 299: 0.2, 301: -0.1, 303: 1, 305: 0.1}, 224,
    (4, 1e4), (1, 1, 1))
lin(2, False, {0: 0.05, 1: 0.8, 295: 0.6, 298: 1.3, 299: 0.2, 302: 0.5, 303: 1.2, 306: 0.9}, 224,
    (4, 1e4), (2, 2, 2))


def rho_of(r):
    return 6 / math.pi * math.asin(r / 2)


def spearman(tails, left, values, unknown, bracket=None, group=0):
    def power(v):
        n = v[14]
        if tails == 3:
            low, high, truth = rho_of(v[194]), rho_of(v[195]), rho_of(v[186])
        else:
            low = high = rho_of(v[185])
            truth = rho_of(by_form(v, v[185], (186, 187, 188)))
        per = math.sqrt((n - 2) / (1 - truth ** 2))
        df = n - 2
        t = stats.t.ppf(1 - v[0] / (2 if tails == 2 else 1), df)
        ncp = (truth - low) * per
        if tails == 3:
            return stats.nct.cdf(-t, df, (truth - high) * per) - stats.nct.cdf(t, df, ncp)
        if tails == 2:
            return stats.nct.sf(t, df, ncp) + stats.nct.cdf(-t, df, ncp)
        return stats.nct.cdf(-t, df, ncp) if left else stats.nct.sf(t, df, ncp)
    add(SPEARMAN, 1, tails, left, {} if tails == 3 else {23: group}, values, unknown, power,
        STUDENT, bracket)


base = {0: 0.05, 185: 0, 186: 0.4, 14: 40}
spearman(1, False, base, 1)
spearman(2, False, base, 1)
spearman(1, True, {**base, 186: -0.4}, 1)
spearman(2, False, {**base, 185: 0.2, 186: 0.6}, 1)
spearman(2, False, {**base, 14: 200, 186: 0.2}, 1)
spearman(1, False, {**base, 1: 0.8}, 14, (5, 1e4))
spearman(2, False, {**base, 1: 0.9, 186: 0.3}, 14, (5, 1e4))
spearman(2, False, {**base, 1: 0.8}, 186, (0.01, 0.95))
spearman(2, False, {0: 0.05, 1: 0.8, 185: 0.1, 187: 0.4}, 14, (5, 1e4), 1)
spearman(1, False, {0: 0.05, 1: 0.8, 185: 0.2, 188: 2.5}, 14, (5, 1e4), 2)
spearman(3, False, {0: 0.05, 194: -0.3, 195: 0.3, 186: 0, 14: 120}, 1)
spearman(3, False, {0: 0.05, 1: 0.8, 194: -0.3, 195: 0.3, 186: 0.05}, 14, (20, 1e4))


def kendall(tails, left, values, unknown, bracket=None):
    kind = 315 if 315 in values else 331
    def power(v):
        n = v[14]
        tau = 2 * v[315] - 1 if kind == 315 else v[331]
        se = math.sqrt(2 * (2 * n + 5) / (9 * n * (n - 1)))
        return z_power(v[0], tails, left, tau, se, se)
    add(KENDALL, 1, tails, left, {52: int(kind == 315)}, values, unknown, power, NORMAL, bracket)


kendall(1, False, {0: 0.05, 331: 0.3, 14: 30}, 1)
kendall(2, False, {0: 0.05, 331: 0.3, 14: 30}, 1)
kendall(1, True, {0: 0.05, 331: -0.25, 14: 40}, 1)
kendall(2, False, {0: 0.05, 315: 0.65, 14: 40}, 1)
kendall(1, True, {0: 0.025, 315: 0.4, 14: 100}, 1)
kendall(2, False, {0: 0.05, 1: 0.8, 331: 0.3}, 14, (4, 1e4))
kendall(1, False, {0: 0.05, 1: 0.9, 315: 0.6}, 14, (4, 1e4))
kendall(2, False, {0: 0.05, 1: 0.8, 331: 0.3, 14: 50}, 331, (0.01, 0.9))
kendall(1, True, {0: 0.05, 1: 0.8, 315: 0.4, 14: 50}, 315, (0.1, 0.49))

# --- Published ----------------------------------------------------------------------------------

PUBLISHED, NOTES = [], []


def published(note, analysis, tails, left, groups, values, unknown, printed, tolerance, exact):
    """A figure as it is printed, which the exact one here has to be, too."""
    assert abs(exact - printed) <= tolerance, (note, exact)
    NOTES.append(note)
    PUBLISHED.append(row(analysis, 1, tails, left, (), groups, values, unknown, printed, tolerance))


def published_alphas():
    for truth, n, tails, printed, tolerance in [(0.75, 100, 1, 0.351177, 1e-3),
                                                (0.75, 100, 2, 0.248619, 1e-3),
                                                (0.8, 100, 1, 0.860, 1.5e-3),
                                                (0.75, 200, 1, 0.546, 1.5e-3)]:
        ratio = (1 - truth) / (1 - 0.7)
        published(f"C. Zaiontz, Real Statistics Using Excel, Cronbach's alpha power, example 1: 0.7 "
                  f"against {truth}, 10 items, {n} subjects, {'one' if tails == 1 else 'two'}-sided: "
                  f'{printed}',
                  ALPHA, tails, False, {44: 0},
                  {0: 0.05, 271: 0.7, 272: truth, 280: 10, 224: n}, 1, printed, tolerance,
                  f_power(0.05, tails, False, ratio, ratio, n - 1, 9 * (n - 1)))


def z_size(k0, k1, var0, var1, power):
    """One-sided, 0.05: the closed form for the size."""
    return ((stats.norm.ppf(0.95) * math.sqrt(var0) + stats.norm.ppf(power) * math.sqrt(var1)) /
            (k1 - k0)) ** 2


def published_kappas():
    """Sizes are whole numbers, rounded up."""
    variance = lambda k: delta_variance(cohens_kappa, cohen_cells(k, 0.5, 0.5))
    size = z_size(0.85, 0.7, variance(0.85), variance(0.7), 0.8)
    note = ('M. Gamer, J. Lemon, I. Fellows and P. Singh, R package irr, N.cohen.kappa (A. B. Cantor '
            '1996), example: 0.7 when it is 0.85 under H0, half of the ratings positive: 96')
    values = {0: 0.05, 1: 0.8, 291: 0.85, 292: 0.7}
    published(note, COHEN, 1, True, {48: 0, 12: 0}, {**values, 103: 0.5, 104: 0.5}, 224, 96, 1, size)
    # Raters with the same margins: both kappas have the same variance.
    assert abs(variance(0.7) - delta_variance(intraclass_kappa, kappa_cells(0.7, 0.5))) < 1e-6
    published(note + ', as an intraclass kappa', KAPPA, 1, True, {48: 0}, {**values, 102: 0.5}, 224,
              96, 1, size)
    for margins, k0, k1, power, printed in [((0.2, 0.25, 0.55), 0.4, 0.6, 0.8, 101),
                                            ((0.2, 0.25, 0.55), 0.4, 0.6, 0.9, 136),
                                            ((0.2, 0.05, 0.2, 0.05, 0.2, 0.3), 0.1, 0.5, 0.8, 18)]:
        var0, var1 = (largest_variance(k, margins, margins)[0] for k in (k0, k1))
        published('R package irr, N2.cohen.kappa (V. F. Flack, A. A. Afifi, P. A. Lachenbruch and H. '
                  f'J. A. Schouten 1988), example: {k0} against {k1}, margins {margins}, power '
                  f'{power}: {printed}', GENERAL, 1, False, {48: 0},
                  {0: 0.05, 1: power, 291: k0, 292: k1, 337: var0, 338: var1, 201: len(margins)},
                  224, printed, 1, z_size(k0, k1, var0, var1, power))


# --- Simulations --------------------------------------------------------------------------------

rng = np.random.default_rng(SEED)


def simulated(analysis, samples, tails, left, checks, groups, values, rejected, n):
    share = float(np.mean(rejected))
    error = math.sqrt(share * (1 - share) / len(rejected))
    SIMULATIONS.append(row(analysis, samples, tails, left, checks, groups, values, 1, share,
                           SKEW / math.sqrt(n) + 4 * error))


def rejects(alpha, tails, left, z):
    if tails == 2:
        return np.abs(z) > stats.norm.ppf(1 - alpha / 2)
    return -z > stats.norm.ppf(1 - alpha) if left else z > stats.norm.ppf(1 - alpha)


def simulate_kappas():
    for k0, k1, pi, n, tails, left in [(0.4, 0.6, 0.3, 100, 2, False), (0.4, 0.6, 0.5, 60, 1, False),
                                       (0.5, 0.2, 0.3, 150, 1, True)]:
        counts = rng.multinomial(n, kappa_cells(k1, pi), SIMULATED) / n
        p = counts[:, 0] + counts[:, 1] / 2
        spread = 2 * p * (1 - p)
        estimate = np.where(spread > 0, 1 - counts[:, 1] / np.maximum(spread, 1e-9), 1)
        se = math.sqrt(delta_variance(intraclass_kappa, kappa_cells(k0, pi)) / n)
        simulated(KAPPA, 1, tails, left, (), {48: 0}, {0: 0.05, 291: k0, 292: k1, 102: pi, 224: n},
                  rejects(0.05, tails, left, (estimate - k0) / se), n)
    for k0, k1, a, b, n, tails, left in [(0.4, 0.6, 0.3, 0.35, 100, 2, False),
                                         (0.0, 0.3, 0.2, 0.3, 80, 1, False),
                                         (0.6, 0.3, 0.5, 0.45, 80, 1, True)]:
        counts = rng.multinomial(n, cohen_cells(k1, a, b).ravel(), SIMULATED) / n
        first, second = counts[:, 0] + counts[:, 1], counts[:, 0] + counts[:, 2]
        chance = first * second + (1 - first) * (1 - second)
        estimate = (counts[:, 0] + counts[:, 3] - chance) / (1 - chance)
        se = math.sqrt(delta_variance(cohens_kappa, cohen_cells(k0, a, b)) / n)
        simulated(COHEN, 1, tails, left, (), {48: 0, 12: 0},
                  {0: 0.05, 291: k0, 292: k1, 103: a, 104: b, 224: n},
                  rejects(0.05, tails, left, (estimate - k0) / se), n)


def in_parts(size, draw):
    part = 10_000
    return np.concatenate([draw(part) for _ in range(size // part)])


def simulate_lin():
    for r0, r1, u0, u1, v0, v1, n, tails, left in [
            (0.7, 0.85, 0.2, 0.1, 1.1, 1.0, 60, 2, False), (0.9, 0.95, 0.1, 0.0, 1.0, 1.0, 80, 1, False),
            (0.8, 0.6, 0.2, 0.5, 1.0, 1.2, 80, 1, True)]:
        rho = r1 / accuracy(u1, v1)

        def draw(m):
            x = rng.standard_normal((m, n))
            y = rho * x + math.sqrt(1 - rho * rho) * rng.standard_normal((m, n))
            x = x * math.sqrt(v1) + u1  # product of the deviations 1, ratio v
            y = y / math.sqrt(v1)
            dx, dy = x - x.mean(1, keepdims=True), y - y.mean(1, keepdims=True)
            r = 2 * (dx * dy).mean(1) / ((dx ** 2).mean(1) + (dy ** 2).mean(1) +
                                         (x.mean(1) - y.mean(1)) ** 2)
            return (np.arctanh(r) - math.atanh(r0)) / lin_se(r0, u0, v0, n)
        simulated(LIN, 1, tails, left, (), {49: 0, 50: 0, 51: 0},
                  {0: 0.05, 295: r0, 296: r1, 299: u0, 300: u1, 303: v0, 304: v1, 224: n},
                  rejects(0.05, tails, left, in_parts(SIMULATED, draw)), n)


def normal_pairs(m, n, r):
    x = rng.standard_normal((m, n))
    return x, r * x + math.sqrt(1 - r * r) * rng.standard_normal((m, n))


def simulate_rank_correlations():
    for r, n, tails, left in [(0.4, 40, 2, False), (0.3, 80, 1, False), (-0.5, 25, 1, True)]:
        def draw(m):
            x, y = normal_pairs(m, n, r)
            ranks = [z.argsort(1).argsort(1) for z in (x, y)]
            s = 1 - 6 * ((ranks[0] - ranks[1]) ** 2).sum(1) / (n * (n * n - 1))
            return s * np.sqrt((n - 2) / (1 - s * s))
        t = in_parts(SIMULATED, draw)
        limit = stats.t.ppf(1 - 0.05 / tails, n - 2)
        out = np.abs(t) > limit if tails == 2 else (-t > limit if left else t > limit)
        simulated(SPEARMAN, 1, tails, left, (), {23: 0}, {0: 0.05, 185: 0, 186: r, 14: n}, out, n)
    # Kendall's tau of a normal distribution is 2/pi asin r (Sheppard).
    for tau, n, tails, left in [(0.3, 30, 2, False), (0.2, 60, 1, False), (-0.3, 25, 1, True)]:
        r = math.sin(math.pi / 2 * tau)
        first, second = np.triu_indices(n, 1)

        def draw(m):
            x, y = normal_pairs(m, n, r)
            score = np.zeros(m)
            for i, j in zip(first, second):
                score += np.sign((x[:, i] - x[:, j]) * (y[:, i] - y[:, j]))
            return score
        statistic = in_parts(SIMULATED, draw) / (n * (n - 1) / 2)
        se = math.sqrt(2 * (2 * n + 5) / (9 * n * (n - 1)))
        simulated(KENDALL, 1, tails, left, (), {52: 0}, {0: 0.05, 331: tau, 14: n},
                  rejects(0.05, tails, left, statistic / se), n)


def simulate_same_subjects():
    """Parallel items of two tests of the same subjects: alpha = k c/(1 + (k - 1) c), c the variance
    of the true score; the true scores of the tests correlate so that the observed ones have rho."""
    for a1, a2, k, n, rho, tails, left in [(0.7, 0.85, 10, 40, 0.5, 2, False),
                                           (0.8, 0.6, 5, 50, 0.3, 1, True),
                                           (0.6, 0.8, 4, 30, 0.6, 1, False)]:
        share = [a / (k - (k - 1) * a) for a in (a1, a2)]
        true = rho / math.sqrt(a1 * a2)
        assert abs(true) <= 1

        def draw(m):
            x, y = normal_pairs(m, n, true)
            alphas = []
            for score, c in zip((x, y), share):
                items = math.sqrt(c) * score[:, :, None] + \
                    math.sqrt(1 - c) * rng.standard_normal((m, n, k))
                total = items.sum(2).var(1, ddof=1)
                parts = items.var(1, ddof=1).sum(1)
                alphas.append(k / (k - 1) * (1 - parts / total))
            return (1 - alphas[0]) / (1 - alphas[1])
        w = in_parts(SIMULATED // 2, lambda m: np.concatenate([draw(1000) for _ in range(m // 1000)]))
        df = 1 + 1 / ((1 - rho * rho) / (n - 2) + 1 / ((n - 1) * (k - 1) - 1))
        quantile = lambda p: stats.f.ppf(p, df, df)
        if tails == 2:
            out = (w < quantile(0.025)) | (w > quantile(0.975))
        else:
            out = w < quantile(0.05) if left else w > quantile(0.95)
        simulated(ALPHA, 2, tails, left, (20,), {45: 0},
                  {0: 0.05, 275: 0, 276: a1, 277: a2, 280: k, 220: rho, 224: n}, out, n)


if __name__ == '__main__':
    write('agreement', 'Exact values computed by', 'agreement', ROWS)
    published_alphas()
    published_kappas()
    write('agreement_published', 'Published examples, as printed there, in this order, written by',
          'agreement', PUBLISHED, NOTES)
    simulate_kappas()
    simulate_lin()
    simulate_rank_correlations()
    simulate_same_subjects()
    write('agreement_simulated',
          f'Shares of {SIMULATED} simulated studies that reject (half as many for alphas), seed '
          f'{SEED}, by', 'agreement', SIMULATIONS)
