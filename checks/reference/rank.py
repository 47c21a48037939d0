#!/usr/bin/env python3
"""Exact values for the rank tests and the shift models, from scipy:
checks/data/validation/rank.tsv and rank_simulated.tsv, checks/data/shift_models.tsv.

rank.tsv: powers of the statistics as the tests state them, with the exact normal distribution or the
exact binomial one, and sizes and effects from these by a root finder. The published rows are the
sizes that the formulas of Noether, "Sample size determination for some common nonparametric tests",
JASA 82, 1987, 645-647, give, which leave out a term of first order in 1/n, and the example of
Whitehead, "Sample size calculations for ordered categorical data", Statistics in Medicine 12, 1993,
2257-2271.

shift_models.tsv: P(X < Y), P(X > 0) and P(X + X' > 0) of each distribution, by scipy's quadrature;
"-" for one that is not symmetric.

rank_simulated.tsv: shares of simulated studies that reject. The program takes the variance under H0
for that under H1 as well, which these are to show: its power may differ by what the variance of the
simulated statistics makes of it, by APART for steps and skewness of the statistic, and by four
standard errors of the share. That of Savage's test is the power of another statistic with the same
efficiency in large samples, for which OTHER is allowed.

Needs Python 3 with scipy; run from the repository's root.
"""
import math

import numpy as np
from scipy import integrate, stats

from cases import row, solved, write

SEED = 19450612
SIMULATED = 100_000
ROWS, SIMULATIONS = [], []

NORMAL = 3e-4   # a power: NorInv and NorCdf
EXACT = 2e-5    # a power: binomial sums in 32 bits
APART = 0.02
OTHER = 0.04

MW, ORDERED, SAVAGE, SIGNED, SIGN = 'menu 300', 'menu 301', 'menu 350', 'menu 360', 'menu 370'


def add(analysis, samples, tails, left, groups, values, unknown, power, bracket=None, checks=(),
        error=NORMAL):
    ROWS.append(solved(analysis, samples, tails, left, groups, values, unknown, power, error,
                       bracket, checks))


def size2(v):
    return v[37] if 37 in v else v[4] + v[38] if 38 in v else v[4] * v[5]


def size_form(v):
    return {2: 0 if 37 in v else 1 if 38 in v else 2}


def z_power(alpha, tails, left, effect, se0, se1, correction=0.0):
    cdf = stats.norm.cdf
    if tails == 2:
        z = stats.norm.ppf(1 - alpha / 2)
        x = max(abs(effect) - correction, 0)
        return cdf((x - z * se0) / se1) + cdf((-x - z * se0) / se1)
    x = (-effect if left else effect) - correction
    return cdf((x - stats.norm.ppf(1 - alpha) * se0) / se1)


# --- Wilcoxon-Mann-Whitney ------------------------------------------------------------------------

def mann_whitney(tails, left, values, unknown, bracket=None):
    def power(v):
        n1, n2 = v[4], size2(v)
        s = math.sqrt(n1 * n2 * (n1 + n2 + 1) / 12)
        if tails == 3:
            z = stats.norm.ppf(1 - v[0])
            return (stats.norm.cdf((v[152] - v[47]) * n1 * n2 / s - z) +
                    stats.norm.cdf((v[48] - v[152]) * n1 * n2 / s - z) - 1)
        return z_power(v[0], tails, left, n1 * n2 * (v[152] - 0.5), s, s)
    add(MW, 2, tails, left, size_form(values), values, unknown, power, bracket)


base = {0: 0.05, 152: 0.7, 4: 30, 37: 30}
mann_whitney(1, False, base, 1)
mann_whitney(2, False, base, 1)
mann_whitney(1, True, {**base, 152: 0.3}, 1)
mann_whitney(2, False, {**base, 152: 0.25, 37: 20}, 1)
mann_whitney(2, False, {**base, 152: 0.5}, 1)
mann_whitney(1, False, {0: 0.01, 152: 0.6, 4: 200, 37: 100}, 1)
mann_whitney(1, False, {0: 0.05, 152: 0.9, 4: 6, 37: 6}, 1)
mann_whitney(2, False, {0: 0.05, 152: 0.65, 4: 40, 38: 20}, 1)
mann_whitney(2, False, {0: 0.05, 152: 0.65, 4: 40, 5: 1.25}, 1)
mann_whitney(1, False, {0: 0.05, 1: 0.8, 152: 0.65, 5: 1}, 4, (3, 1e4))
mann_whitney(2, False, {0: 0.05, 1: 0.9, 152: 0.6, 5: 2}, 4, (3, 1e4))
mann_whitney(1, True, {0: 0.025, 1: 0.8, 152: 0.35, 38: 10}, 4, (3, 1e4))
mann_whitney(2, False, {0: 0.05, 1: 0.8, 152: 0.7, 4: 30, 37: 30}, 37, (3, 1e4))
mann_whitney(2, False, {0: 0.05, 1: 0.8, 152: 0.7, 4: 40, 37: 40}, 152, (0.51, 0.99))
mann_whitney(1, True, {0: 0.05, 1: 0.8, 152: 0.3, 4: 40, 37: 40}, 152, (0.01, 0.49))
mann_whitney(1, False, {0: 0.05, 1: 0.7, 152: 0.68, 4: 30, 37: 30}, 0, (1e-4, 0.9))
equivalent = {0: 0.05, 47: 0.35, 48: 0.65, 152: 0.52, 4: 80, 37: 80}
mann_whitney(3, False, equivalent, 1)
mann_whitney(3, False, {0: 0.05, 47: 0.3, 48: 0.7, 152: 0.48, 4: 60, 5: 1.5}, 1)
mann_whitney(3, False, {**equivalent, 1: 0.8}, 37, (20, 1e4))
mann_whitney(3, False, {**equivalent, 1: 0.8}, 152, (0.5, 0.649))

# Noether (1987): N = (z_alpha + z_beta)^2/(12 c (1 - c) (p - 1/2)^2), c the share of sample 1.
def published(analysis, left, groups, values, unknown, size):
    """Half a subject is the term that the formula leaves out."""
    ROWS.append(row(analysis, 2 if analysis == MW else 1, 1, left, (), groups, values, unknown, size,
                    0.6))


def noether(level, power):
    return (stats.norm.ppf(1 - level) + stats.norm.ppf(power)) ** 2


for p, level, power, ratio in [(0.7, 0.05, 0.9, 1), (0.6, 0.025, 0.8, 1), (0.65, 0.05, 0.8, 2)]:
    c = 1 / (1 + ratio)
    published(MW, False, {2: 2}, {0: level, 1: power, 152: p, 5: ratio}, 4,
              c * noether(level, power) / (12 * c * (1 - c) * (p - 0.5) ** 2))
# Two-sided at 0.05, power 0.9, p = 0.3: the R package statpsych (D. G. Bonett) prints 44 in each group for its
# size.test.mann.
size = noether(0.025, 0.9) / (6 * 0.2 ** 2)
assert math.ceil(size) == 44
ROWS.append(row(MW, 2, 2, True, (), {2: 2}, {0: 0.05, 1: 0.9, 152: 0.3, 5: 1}, 4, size, 0.6))
# The same: N = (z_alpha + z_beta)^2/(3 (p - 1/2)^2), p = P(X + X' > 0).
for p, level, power in [(0.7, 0.05, 0.9), (0.6, 0.025, 0.8)]:
    published(SIGNED, False, {}, {0: level, 1: power, 153: p, 154: p}, 85,
              noether(level, power) / (3 * (p - 0.5) ** 2))


# --- Ordered categories ---------------------------------------------------------------------------

def ordered_power(v, tails, left, cubes):
    n1, n2 = v[4], size2(v)
    se = math.sqrt(3 * (n1 + n2) / (n1 * n2 * (1 - cubes)))
    return z_power(v[0], tails, left, math.log(v[200]), se, se)


def ordered(tails, left, values, unknown, bracket=None):
    equal = 201 in values
    def power(v):
        return ordered_power(v, tails, left, 1 / v[201] ** 2 if equal else v[202])
    add(ORDERED, 2, tails, left, {26: int(equal), **size_form(values)}, values, unknown, power,
        bracket)


base = {0: 0.05, 200: 2, 202: 0.1, 4: 60, 37: 60}
ordered(1, False, base, 1)
ordered(2, False, base, 1)
ordered(1, True, {**base, 200: 0.5}, 1)
ordered(2, False, {**base, 200: 0.4, 37: 30}, 1)
ordered(2, False, {**base, 200: 1}, 1)
ordered(1, False, {0: 0.025, 200: 3, 201: 5, 4: 25, 38: 10}, 1)
ordered(2, False, {0: 0.05, 200: 1.6, 201: 3, 4: 150, 5: 0.5}, 1)
ordered(1, True, {0: 0.05, 200: 0.6, 201: 10, 4: 80, 37: 80}, 1)
ordered(2, False, {0: 0.05, 200: 6, 201: 2, 4: 10, 37: 12}, 1)
ordered(2, False, {0: 0.05, 1: 0.9, 200: 2, 202: 0.15, 5: 1}, 4, (3, 1e4))
ordered(1, False, {0: 0.05, 1: 0.8, 200: 1.8, 201: 4, 5: 2}, 4, (3, 1e4))
ordered(2, False, {0: 0.05, 1: 0.8, 200: 2, 201: 5, 4: 70, 37: 70}, 200, (1.01, 50))
ordered(1, True, {0: 0.05, 1: 0.8, 200: 0.5, 202: 0.1, 4: 70, 37: 70}, 200, (0.01, 0.99))
ordered(2, False, {0: 0.05, 1: 0.55, 200: 2, 202: 0.1, 4: 65, 37: 65}, 202, (1e-4, 0.9))
ordered(2, False, {0: 0.05, 1: 0.6, 200: 2.1, 201: 3, 4: 60, 37: 60}, 201, (2, 10))
ordered(1, False, {0: 0.05, 1: 0.8, 200: 2, 202: 0.1, 4: 60, 37: 60}, 0, (1e-4, 0.9))

# Whitehead (1993), the example of four categories: control proportions 0.2, 0.5, 0.2, 0.1, log odds
# ratio 0.887, two-sided level 0.05, power 0.90 and equal groups: 94 in each, so a total of 187.
control = np.cumsum([0.2, 0.5, 0.2, 0.1])
odds = math.exp(0.887)
other = control * odds / (control * odds + 1 - control)
averages = (np.diff(control, prepend=0) + np.diff(other, prepend=0)) / 2
CUBES = float((averages ** 3).sum())
ROWS.append(row(ORDERED, 2, 2, False, (), {26: 0, 2: 2},
                {0: 0.05, 1: 0.9, 200: round(odds, 5), 202: round(CUBES, 6), 5: 1}, 4, 93.5, 0.75))


# --- Savage ---------------------------------------------------------------------------------------

def savage(tails, left, values, unknown, bracket=None):
    ratio = 128 in values
    def power(v):
        n1, n2 = v[4], size2(v)
        r1, r2 = (1, 1 / v[128]) if ratio else (1 / v[26], 1 / v[141])
        mean = (n1 * r1 + n2 * r2) / (n1 + n2)
        return z_power(v[0], tails, left, r1 - r2, mean * math.sqrt(1 / n1 + 1 / n2),
                       math.sqrt(r1 * r1 / n1 + r2 * r2 / n2))
    add(SAVAGE, 2, tails, left, {16: int(ratio), **size_form(values)}, values, unknown, power,
        bracket)


base = {0: 0.05, 26: 0.2, 141: 0.35, 4: 40, 37: 40}
savage(1, False, base, 1)
savage(2, False, base, 1)
savage(1, True, {**base, 26: 0.35, 141: 0.2}, 1)
savage(2, False, {**base, 4: 60, 37: 25}, 1)
savage(2, False, {**base, 141: 0.2}, 1)
savage(1, False, {0: 0.025, 128: 2, 4: 30, 38: 15}, 1)
savage(2, False, {0: 0.05, 128: 1.6, 4: 50, 5: 2}, 1)
savage(1, True, {0: 0.05, 128: 0.5, 4: 30, 37: 30}, 1)
savage(2, False, {0: 0.01, 128: 4, 4: 12, 37: 12}, 1)
savage(2, False, {0: 0.05, 1: 0.8, 128: 1.8, 5: 1}, 4, (3, 1e4))
savage(1, False, {0: 0.05, 1: 0.9, 26: 2, 141: 3, 5: 1.5}, 4, (3, 1e4))
savage(2, False, {0: 0.05, 1: 0.8, 128: 1.8, 4: 50, 37: 50}, 128, (1.01, 50))
savage(1, True, {0: 0.05, 1: 0.8, 128: 0.5, 4: 50, 37: 50}, 128, (0.01, 0.99))
savage(2, False, {0: 0.05, 1: 0.8, 26: 2, 141: 3, 4: 50, 37: 50}, 141, (2.01, 50))
savage(2, False, {0: 0.05, 1: 0.8, 26: 2, 141: 3, 4: 50, 37: 50}, 26, (0.1, 2.99))


# --- Signed ranks ---------------------------------------------------------------------------------

def signed_rank(tails, left, values, unknown, bracket=None, corrected=False):
    def power(v):
        n = v[85]
        s = math.sqrt(n * (n + 1) * (2 * n + 1) / 24)
        x = n * (n - 1) * (v[154] - 0.5) / 2 + n * (v[153] - 0.5)
        return z_power(v[0], tails, left, x, s, s, 0.5 if corrected else 0)
    add(SIGNED, 1, tails, left, {}, values, unknown, power, bracket, (1,) if corrected else ())


base = {0: 0.05, 153: 0.7, 154: 0.75, 85: 30}
signed_rank(1, False, base, 1)
signed_rank(2, False, base, 1)
signed_rank(1, True, {**base, 153: 0.3, 154: 0.25}, 1)
signed_rank(2, False, {**base, 153: 0.4, 154: 0.35, 85: 80}, 1)
signed_rank(2, False, {**base, 153: 0.5, 154: 0.5}, 1)
signed_rank(1, False, {**base, 85: 8}, 1, corrected=True)
signed_rank(2, False, {**base, 85: 20}, 1, corrected=True)
signed_rank(1, True, {**base, 153: 0.3, 154: 0.25, 85: 15}, 1, corrected=True)
signed_rank(2, False, {**base, 153: 0.55, 154: 0.57, 85: 300}, 1)
signed_rank(2, False, {**base, 1: 0.8}, 85, (3, 1e4))
signed_rank(1, False, {**base, 1: 0.9, 153: 0.6, 154: 0.65}, 85, (3, 1e4), corrected=True)
signed_rank(2, False, {**base, 1: 0.8}, 154, (0.5, 0.999))
signed_rank(2, False, {**base, 1: 0.65}, 153, (0.5, 0.999))
signed_rank(1, True, {**base, 1: 0.8, 153: 0.3}, 154, (0.01, 0.5))
signed_rank(1, False, {**base, 1: 0.7}, 0, (1e-5, 0.9))


# --- Sign -----------------------------------------------------------------------------------------

def sign(tails, left, values, unknown, bracket=None, corrected=False):
    def whole(v, n):
        law = stats.binom(n, v[153])
        a = v[0] / 2 if tails == 2 else v[0]
        # the largest count whose lower tail has at most the level
        low = int(stats.binom.ppf(a, n, 0.5))
        while low >= 0 and stats.binom.cdf(low, n, 0.5) > a:
            low -= 1
        below, above = law.cdf(low) if low >= 0 else 0.0, law.sf(n - low - 1) if low >= 0 else 0.0
        return below + above if tails == 2 else below if left else above

    def power(v):
        n = v[85]
        if n > 1000:
            return z_power(v[0], tails, left, (v[153] - 0.5) * n, math.sqrt(n / 4),
                           math.sqrt(n * v[153] * (1 - v[153])), 0.5 if corrected else 0)
        k = math.floor(n)
        rest = n - k
        return whole(v, k) if rest == 0 else (1 - rest) * whole(v, k) + rest * whole(v, k + 1)
    exact = values[85] <= 1000 and unknown != 0
    add(SIGN, 1, tails, left, {}, values, unknown, power, bracket, (1,) if corrected else (),
        EXACT if exact else NORMAL)


base = {0: 0.05, 153: 0.7, 85: 30}
sign(1, False, base, 1)
sign(2, False, base, 1)
sign(1, True, {**base, 153: 0.3}, 1)
sign(2, False, {**base, 153: 0.35, 85: 100}, 1)
sign(2, False, {**base, 153: 0.9, 85: 6}, 1)
sign(1, False, {**base, 153: 0.8, 85: 4}, 1)
sign(2, False, {0: 0.01, 153: 0.6, 85: 250}, 1)
sign(1, False, {0: 0.05, 153: 0.54, 85: 1000}, 1)
sign(1, False, {0: 0.05, 153: 0.54, 85: 1001}, 1)
sign(2, False, {0: 0.05, 153: 0.54, 85: 1001}, 1, corrected=True)
sign(1, True, {0: 0.05, 153: 0.47, 85: 1500}, 1, corrected=True)
sign(2, False, {0: 0.05, 153: 0.53, 85: 3000}, 1)
sign(1, False, {**base, 1: 0.8}, 153, (0.5, 0.999))
sign(2, False, {**base, 1: 0.9, 85: 60}, 153, (0.5, 0.999))
sign(1, True, {**base, 1: 0.8, 153: 0.3}, 153, (0.001, 0.5))
sign(2, False, {**base, 1: 0.8, 153: 0.53, 85: 3000}, 85, (1500, 1e4))


# --- Shift models ---------------------------------------------------------------------------------

class Laws:
    """Code: density, distribution function, of the standard form."""
    density = {0: lambda x: 1.0 if abs(x) < 0.5 else 0.0, 1: stats.norm.pdf, 2: stats.expon.pdf,
               3: stats.laplace.pdf, 4: stats.cauchy.pdf, 6: stats.logistic.pdf,
               9: stats.gumbel_r.pdf}
    cdf = {0: lambda x: min(max(x + 0.5, 0.0), 1.0), 1: stats.norm.cdf, 2: stats.expon.cdf,
           3: stats.laplace.cdf, 4: stats.cauchy.cdf, 6: stats.logistic.cdf,
           9: stats.gumbel_r.cdf}
    ends = {0: (-0.5, 0.5), 2: (0, np.inf)}
    symmetric = (0, 1, 3, 4, 6)


def order(code, d):
    """P(X < X' + d): the distribution function at x + d under the density of X', in pieces that
    meet where either of them has a corner."""
    f, F = Laws.density[code], Laws.cdf[code]
    low, high = Laws.ends.get(code, (-np.inf, np.inf))
    corners = sorted({c for c in (-0.5 - d, 0.5 - d, -d, 0.0) if low < c < high})
    points = [low, *corners, high]
    return sum(integrate.quad(lambda x: f(x) * F(x + d), a, b, epsabs=1e-12, epsrel=1e-12,
                              limit=400)[0] for a, b in zip(points, points[1:]))


def shift_models():
    lines = ['Code\tShift\tOrder\tAbove0\tSumAbove0\n']
    for code in Laws.density:
        for d in (-3, -1.2, -0.75, -0.4, -0.1, -0.002, 0, 0.002, 0.05, 0.3, 0.5, 0.8, 1, 1.7, 4):
            above = 1 - Laws.cdf[code](-d)
            pair = (f'{above:.9f}', f'{order(code, 2 * d):.9f}')
            lines.append('\t'.join([str(code), f'{d:g}', f'{order(code, d):.9f}',
                                    *(pair if code in Laws.symmetric else ('-', '-'))]) + '\n')
    with open('checks/data/shift_models.tsv', 'w', encoding='utf-8') as out:
        out.writelines(lines)


# --- Simulations ----------------------------------------------------------------------------------

rng = np.random.default_rng(SEED)

DRAW = {0: lambda size: rng.random(size) - 0.5, 1: lambda size: rng.standard_normal(size),
        2: lambda size: rng.standard_exponential(size), 3: lambda size: rng.laplace(size=size),
        4: lambda size: rng.standard_cauchy(size), 6: lambda size: rng.logistic(size=size),
        9: lambda size: rng.gumbel(size=size)}


def simulated(analysis, samples, tails, left, groups, values, z):
    """z is the statistic, standardised under H0."""
    alpha = values[0]
    if tails == 2:
        out = np.abs(z) > stats.norm.ppf(1 - alpha / 2)
    else:
        out = (-z if left else z) > stats.norm.ppf(1 - alpha)
    share = float(np.mean(out))
    error = math.sqrt(share * (1 - share) / len(out))
    SIMULATIONS.append(row(analysis, samples, tails, left, (), groups, values, 1, share,
                           approximation(analysis, alpha / (1 if tails == 1 else 2), z) + 4 * error))


def approximation(analysis, alpha, z):
    if analysis == SAVAGE:
        return OTHER
    above = abs(float(np.mean(z))) - stats.norm.ppf(1 - alpha)
    return abs(stats.norm.cdf(above / np.std(z)) - stats.norm.cdf(above)) + APART


def in_parts(draw):
    part = 5_000
    return np.concatenate([draw(part) for _ in range(SIMULATED // part)])


def simulate_mann_whitney():
    """Each family with a shift that a power around 0.8 belongs to."""
    for code, d, n1, n2, tails, left in [
            (0, 0.25, 30, 30, 2, False), (1, 0.75, 30, 30, 1, False), (2, 0.7, 25, 40, 2, False),
            (3, -0.9, 40, 40, 1, True), (4, 1.2, 50, 40, 2, False), (6, 1.2, 40, 40, 2, False),
            (9, 0.9, 30, 45, 1, False)]:
        def draw(m):
            both = np.concatenate([DRAW[code]((m, n1)), DRAW[code]((m, n2)) + d], axis=1)
            ranks = both.argsort(1).argsort(1) + 1
            u = ranks[:, n1:].sum(1) - n2 * (n2 + 1) / 2
            return (u - n1 * n2 / 2) / math.sqrt(n1 * n2 * (n1 + n2 + 1) / 12)
        simulated(MW, 2, tails, left, {2: 0},
                  {0: 0.05, 152: round(order(code, d), 6), 4: n1, 37: n2}, in_parts(draw))


def simulate_signed_ranks():
    for code, d, n, tails, left in [(0, 0.16, 30, 2, False), (1, 0.45, 40, 2, False),
                                    (3, 0.5, 40, 1, False), (4, 0.8, 40, 2, False),
                                    (6, -0.8, 40, 1, True)]:
        def draw(m):
            x = DRAW[code]((m, n)) + d
            ranks = np.abs(x).argsort(1).argsort(1) + 1
            w = (ranks * (x > 0)).sum(1)
            return (w - n * (n + 1) / 4) / math.sqrt(n * (n + 1) * (2 * n + 1) / 24)
        p1, p2 = 1 - Laws.cdf[code](-d), order(code, 2 * d)
        simulated(SIGNED, 1, tails, left, {},
                  {0: 0.05, 153: round(p1, 6), 154: round(p2, 6), 85: n}, in_parts(draw))


def simulate_ordered():
    """The Wilcoxon test with the variance of ties; the odds of a category up to each are those of
    the control group times the odds ratio, so that group 2 has the lower ones."""
    for q, ratio, n1, n2, tails, left in [
            ([0.2, 0.5, 0.2, 0.1], 2.4, 90, 90, 2, False), ([0.2] * 5, 2.0, 80, 60, 1, False),
            ([0.1, 0.2, 0.3, 0.25, 0.15], 0.5, 70, 70, 1, True), ([0.5, 0.5], 2.2, 90, 110, 2, False)]:
        c = np.cumsum(q)
        e = np.diff(c * ratio / (c * ratio + 1 - c), prepend=0)
        cubes = float((((np.array(q) * n1 + e * n2) / (n1 + n2)) ** 3).sum())
        total = n1 + n2

        def draw(m):
            a = rng.multinomial(n1, q, m)
            b = rng.multinomial(n2, e / e.sum(), m)
            t = a + b
            mid = np.cumsum(t, 1) - (t - 1) / 2
            w = (b * mid).sum(1)
            variance = n1 * n2 / 12 * (total + 1 - (t ** 3 - t).sum(1) / (total * (total - 1)))
            return -(w - n2 * (total + 1) / 2) / np.sqrt(variance)
        simulated(ORDERED, 2, tails, left, {26: 0, 2: 0},
                  {0: 0.05, 200: ratio, 202: round(cubes, 6), 4: n1, 37: n2}, in_parts(draw))


def simulate_savage():
    """Scores of exponential order statistics."""
    for ratio, n1, n2, tails, left in [(2.0, 40, 40, 2, False), (1.8, 50, 30, 1, False),
                                       (0.5, 40, 40, 1, True)]:
        total = n1 + n2
        scores = np.cumsum(1 / np.arange(total, 0, -1.0))
        variance = n1 * n2 / (total * (total - 1)) * ((scores - scores.mean()) ** 2).sum()

        def draw(m):
            both = np.concatenate([rng.standard_exponential((m, n1)),
                                   ratio * rng.standard_exponential((m, n2))], axis=1)
            ranks = both.argsort(1).argsort(1)
            return (scores[ranks[:, n1:]].sum(1) - n2 * scores.mean()) / math.sqrt(variance)
        simulated(SAVAGE, 2, tails, left, {16: 1, 2: 0}, {0: 0.05, 128: ratio, 4: n1, 37: n2},
                  in_parts(draw))


if __name__ == '__main__':
    write('rank', 'Exact values computed by', 'rank', ROWS)
    shift_models()
    simulate_mann_whitney()
    simulate_signed_ranks()
    simulate_ordered()
    simulate_savage()
    write('rank_simulated',
          f'Shares of {SIMULATED} simulated studies that reject, seed {SEED}, by',
          'rank', SIMULATIONS)
