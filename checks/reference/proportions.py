#!/usr/bin/env python3
"""Exact reference values for the tests of proportions, written to checks/data/validation.

  proportions.tsv         normal and arc-sine forms (scipy's normal distribution)
  proportions_exact.tsv   exact forms, by enumeration in rational arithmetic
  proportions_paired.tsv  paired proportions
  proportions_published.tsv  examples of textbooks and journals, as printed there

Independent of the program: the forms are those of the publications named below, the exact powers
are sums over all outcomes in integers and fractions, and an unknown is found by Brent's method on
the exact power. Sizes of exact tests are those at which the straight line between the powers of
two neighbouring sizes crosses the target; only sizes with a single such crossing are taken.

Needs Python 3 with scipy; run from the repository's root.
"""
import math
from fractions import Fraction as F
from functools import lru_cache
from scipy import stats, optimize

ROWS = {'proportions': [], 'proportions_exact': [], 'proportions_paired': [],
        'proportions_published': []}

NOTES = {table: [] for table in ROWS}

POWER = 0.0003   # the error of NorInv, 4.5e-4, times the normal density, and of NorCdf
EFFECT = 0.0005  # the same in an effect or a level
SUM = 2e-5       # 32-bit sums


def size_tolerance(n):
    """NorInv's error moves a size by 2 * 4.5e-4/(z alpha + z beta) of itself."""
    return 5e-4 * n + 0.01


def number(v):
    return f'{float(v):.10g}'


def add(table, analysis, samples, tails, left, checks, groups, values, unknown, exact, tolerance,
        note=None):
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    row = [analysis, samples, tails, left, ','.join(map(str, checks)),
           ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
           f'{float(exact):.9g}', f'{tolerance:.3g}']
    ROWS[table].append(row)
    if note:
        NOTES[table].append(note)


def solve(power, values, unknown, bracket, power_kind=1):
    """The value of the unknown at which the power is the one among the values."""
    if unknown == power_kind:
        return power(values)
    def f(x):
        return power({**values, unknown: x}) - values[power_kind]
    return optimize.brentq(f, *bracket, xtol=1e-12)


def tolerance_of(unknown, exact):
    if unknown in (4, 85, 37, 31, 196):
        return size_tolerance(exact)
    return POWER if unknown in (1, 318) else EFFECT


# --- Normal forms -------------------------------------------------------------------------------

def nor_power(alpha, tails, left, delta, se0, se1, low=None, high=None, se_low=None, se_high=None,
              correction=0):
    if tails == 3:
        z = stats.norm.ppf(1 - alpha)
        return stats.norm.cdf((low - correction - z * se_low) / se1) + \
            stats.norm.cdf((high + correction - z * se_high) / se1) - 1
    if tails == 2:
        z = stats.norm.ppf(1 - alpha / 2)
        x = abs(delta) - correction
        return stats.norm.sf((x + z * se0) / se1) + stats.norm.cdf((x - z * se0) / se1)
    z = stats.norm.ppf(1 - alpha)
    if left:
        return stats.norm.cdf((-delta - correction - z * se0) / se1)
    return stats.norm.cdf((delta - correction - z * se0) / se1)


def level(values):
    """Tests stated through a confidence interval have its level in the place of alpha."""
    return values[0] if 0 in values else None


def odds_to_p(odds):
    return odds / (1 + odds)


def second(base, entry, mode):
    return entry if mode == 0 else (base + entry if mode == 1 else base * entry)


def one_sample(tails, left, values, unknown, bracket=None, mode=0, odds=False, checks=(),
               population=False, tolerance=None):
    """One proportion. Variance p0 q0/n under H0, p1 q1/n under H1 (Fleiss 1981, chapter 1);
    arc-sine form: Cohen 1988, chapter 6. Kinds: 35 or 225 H0, 83, 40, 41 or 226 to 228 H1, 47 and
    48 limits, 31 population size, 85 size."""
    h1 = (226, 227, 228)[mode] if odds else (83, 40, 41)[mode]
    def power(v):
        n = v[85]
        f = (v[31] - n) / (v[31] - 1) if population else 1
        if tails == 3:
            p0, low, high = None, v[47], v[48]
            p1 = odds_to_p(v[h1]) if odds else v[h1]
        else:
            h0 = v[225] if odds else v[35]
            p1, p0 = second(h0, v[h1], mode), h0
            if odds:
                p0, p1 = odds_to_p(p0), odds_to_p(p1)
        if 2 in checks:
            a = lambda p: math.asin(math.sqrt(p))
            se = 0.5 / math.sqrt(n)
            if tails == 3:
                return nor_power(v[0], 3, left, 0, se, se, a(p1) - a(low), a(high) - a(p1), se, se)
            return nor_power(v[0], tails, left, a(p1) - a(p0), se, se)
        se = lambda p: math.sqrt(p * (1 - p) * f / n)
        correction = 0.5 / n if 1 in checks else 0
        if tails == 3:
            return nor_power(v[0], 3, left, 0, 0, se(p1), p1 - low, high - p1, se(low), se(high),
                             correction)
        return nor_power(v[0], tails, left, p1 - p0, se(p0), se(p1), correction=correction)
    distr = 5 if population else 4
    groups = {} if tails == 3 else {34 if odds else 11: mode}
    exact = solve(power, values, unknown, bracket)
    add('proportions', f'distribution {distr} {1 if odds else 0} 0', 1, tails, left, checks, groups,
        values, unknown, exact, tolerance or tolerance_of(unknown, exact))


def pair_with(p1, p2, d):
    """The pair with difference d and the average of p1 and p2, kept inside 1e-5 .. 0.99999."""
    low, high = (p1 + p2 - d) / 2, (p1 + p2 + d) / 2
    if d >= 0:
        if low < 1e-5:
            low, high = 1e-5, d
        if high > 0.99999:
            low, high = 1 - d, 0.99999
    else:
        if high < 1e-5:
            low, high = -d, 1e-5
        if low > 0.99999:
            low, high = 0.99999, 1 + d
    return low, high


def two_sample_power(v, tails, left, alpha, p1, p2, d0, limits, n1, n2, checks, f1=1, f2=1):
    """Pooled variance under a difference of 0 (Fleiss 1981, chapter 3), unpooled under another
    one (Blackwelder 1982), correction as Casagrande, Pike and Smith (1978)."""
    if 2 in checks:
        a = lambda p: math.asin(math.sqrt(p))
        gap = lambda d: a(pair_with(p1, p2, d)[1]) - a(pair_with(p1, p2, d)[0])
        se = 0.5 * math.sqrt(1 / n1 + 1 / n2)
        t = a(p2) - a(p1)
        if tails == 3:
            return nor_power(alpha, 3, left, 0, se, se, t - gap(limits[0]), gap(limits[1]) - t, se,
                             se)
        return nor_power(alpha, tails, left, t - gap(d0), se, se)
    def unpooled(a, b):
        return math.sqrt(a * (1 - a) * f1 / n1 + b * (1 - b) * f2 / n2)
    def null_se(a, b, d):
        if d != 0:
            return unpooled(a, b)
        p = (n1 * a + n2 * b) / (n1 + n2)
        return math.sqrt(p * (1 - p) * (f1 / n1 + f2 / n2))
    correction = (1 / n1 + 1 / n2) / 2 if 1 in checks else 0
    se1 = unpooled(p1, p2)
    if tails == 3:
        low, high = limits
        return nor_power(alpha, 3, left, 0, 0, se1, p2 - p1 - low, high - (p2 - p1),
                         null_se(*pair_with(p1, p2, low), low),
                         null_se(*pair_with(p1, p2, high), high), correction)
    return nor_power(alpha, tails, left, p2 - p1 - d0, null_se(p1, p2, d0), se1,
                     correction=correction)


def two_samples(analysis, tails, left, values, unknown, bracket=None, mode=0, size_mode=2,
                odds=False, checks=(), power_kind=1, population=False, table='proportions',
                tolerance=None, note=None, exact=None):
    """Two proportions. Kinds: 51 H0 difference, 71 and 72 limits, 317 non-inferiority limit, 8
    proportion 1, 69, 52, 70 proportion 2, 229 to 232 the odds, 4 size 1, 37, 38, 5 size 2, 196 and
    197 population sizes."""
    k1, k2 = (229, (230, 231, 232)[mode]) if odds else (8, (69, 52, 70)[mode])
    size2 = (37, 38, 5)[size_mode]
    def power(v):
        p1, p2 = v[k1], second(v[k1], v[k2], mode)
        if odds:
            p1, p2 = odds_to_p(p1), odds_to_p(p2)
        n1, n2 = v[4], second(v[4], v[size2], size_mode)
        if 0 in v:
            alpha = v[0]
        else:
            alpha = (1 - v[321]) / (2 if tails == 3 or 36 in checks else 1)
        f1 = f2 = 1
        if population:
            f1, f2 = (v[196] - n1) / (v[196] - 1), (v[197] - n2) / (v[197] - 1)
        d0 = v.get(51, v.get(317, 0))
        return two_sample_power(v, tails, left, alpha, p1, p2, d0, (v.get(71), v.get(72)), n1, n2,
                                checks, f1, f2)
    groups = {35 if odds else 12: mode, 2: size_mode}
    if population:
        groups[25] = 0
    found = solve(power, values, unknown, bracket, power_kind)
    if exact is not None:
        assert abs(found - exact) <= 1, (found, exact)
        found = exact
    add(table, analysis, 2, tails, left, checks, groups, values, unknown, found,
        tolerance or tolerance_of(unknown, found), note)


def base(defaults, **changes):
    v = dict(defaults)
    for k, x in changes.items():
        v[int(k[1:])] = x
    return v


ONE = {0: 0.05, 1: 0.8, 35: 0.3, 83: 0.5, 85: 50}
one_sample(2, 0, base(ONE), 85, (3, 1e4))
one_sample(2, 0, base(ONE, k1=0.9, k83=0.4), 85, (3, 1e4))
one_sample(2, 0, base(ONE, k35=0.5, k83=0.3, k85=60), 1)
one_sample(1, 0, base(ONE), 85, (3, 1e4))
one_sample(1, -1, base(ONE, k35=0.3, k83=0.15), 85, (3, 1e4))
one_sample(1, -1, base(ONE, k35=0.3, k83=0.15, k85=40), 1)
one_sample(2, 0, base(ONE, k85=80), 83, (0.31, 0.99))
one_sample(2, 0, base(ONE, k85=40), 35, (0.01, 0.499))
one_sample(2, 0, base(ONE, k85=30), 0, (1e-5, 0.9))
one_sample(2, 0, base(ONE), 85, (3, 1e4), checks=(1,))
one_sample(1, -1, base(ONE, k35=0.3, k83=0.15, k85=60), 1, checks=(1,))
one_sample(2, 0, base(ONE), 85, (3, 1e4), checks=(2,))
one_sample(1, 0, base(ONE, k85=35), 1, checks=(2,))
one_sample(1, 0, base(ONE, k85=35), 83, (0.31, 0.99), checks=(2,))
one_sample(2, 0, {0: 0.05, 1: 0.8, 35: 0.3, 40: 0.15, 85: 50}, 85, (3, 1e4), mode=1)
one_sample(2, 0, {0: 0.05, 1: 0.8, 35: 0.3, 41: 1.5, 85: 60}, 41, (1.01, 3), mode=2,
           tolerance=0.002)
one_sample(2, 0, {0: 0.05, 1: 0.8, 225: 1, 226: 2, 85: 50}, 85, (3, 1e4), odds=True)
one_sample(1, 0, {0: 0.05, 1: 0.8, 225: 0.5, 228: 2.5, 85: 60}, 1, mode=2, odds=True)
one_sample(1, 0, {0: 0.05, 1: 0.8, 225: 0.5, 227: 0.6, 85: 60}, 85, (3, 1e4), mode=1, odds=True)
EQ1 = {0: 0.05, 1: 0.8, 47: 0.4, 48: 0.6, 83: 0.5, 85: 250}
one_sample(3, 0, base(EQ1), 85, (20, 1e4))
one_sample(3, 0, base(EQ1, k83=0.53), 1)
one_sample(3, 0, base(EQ1, k83=0.53), 1, checks=(2,))
one_sample(3, 0, {0: 0.05, 1: 0.8, 47: 0.4, 48: 0.6, 226: 1.1, 85: 300}, 1, odds=True)

FINITE = {0: 0.05, 1: 0.8, 35: 0.3, 83: 0.5, 31: 200, 85: 40}
one_sample(2, 0, base(FINITE), 85, (3, 199), population=True)
one_sample(2, 0, base(FINITE), 1, population=True)
one_sample(1, 0, base(FINITE, k83=0.42), 85, (3, 199), population=True)
one_sample(1, -1, base(FINITE, k83=0.2, k85=80), 1, population=True)
one_sample(2, 0, base(FINITE), 83, (0.31, 0.99), population=True)
one_sample(2, 0, base(FINITE), 1, population=True, checks=(1,))
# 43.5 subjects of an endless population: an error e there is 23 e in the population size.
one_sample(2, 0, base(FINITE, k85=36), 31, (44, 1e5), population=True,
           tolerance=23 * size_tolerance(43.5))
one_sample(3, 0, {0: 0.05, 1: 0.8, 47: 0.4, 48: 0.6, 83: 0.5, 31: 400, 85: 150}, 85, (20, 399),
           population=True)

TWO = {0: 0.05, 1: 0.8, 51: 0, 8: 0.5, 69: 0.7, 4: 90, 5: 1}
CHI2, BIN = 'menu 111', 'distribution 4 0 0'
two_samples(CHI2, 2, 0, base(TWO), 4, (3, 1e5))
two_samples(CHI2, 2, 0, base(TWO, k1=0.9), 4, (3, 1e5))
two_samples(CHI2, 2, 0, base(TWO, k8=0.1, k69=0.2, k5=2), 4, (3, 1e5))
two_samples(CHI2, 2, 0, base(TWO, k8=0.1, k69=0.2, k5=0.5, k4=300), 1)
two_samples(CHI2, 2, 0, base(TWO), 1)
two_samples(CHI2, 2, 0, base(TWO), 69, (0.51, 0.99))
two_samples(CHI2, 2, 0, base(TWO), 8, (0.01, 0.69))
two_samples(CHI2, 2, 0, base(TWO, k4=60), 0, (1e-5, 0.9))
two_samples(CHI2, 2, 0, base(TWO, k4=80), 5, (0.1, 50), tolerance=0.003)
two_samples(CHI2, 1, 0, base(TWO), 4, (3, 1e5))
two_samples(CHI2, 1, -1, base(TWO, k8=0.4, k69=0.25), 4, (3, 1e5))
two_samples(CHI2, 2, 0, base(TWO), 4, (3, 1e5), checks=(1,))
two_samples(CHI2, 2, 0, base(TWO), 1, checks=(1,))
two_samples(CHI2, 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 52: 0.2, 4: 90, 5: 1}, 52, (0.01, 0.5),
            mode=1)
two_samples(CHI2, 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 70: 1.4, 4: 150, 5: 1}, 70, (1.01, 2.4),
            mode=2, tolerance=0.002)
two_samples(CHI2, 2, 0, {0: 0.05, 1: 0.8, 229: 1, 232: 2.5, 4: 100, 5: 1}, 4, (3, 1e5), mode=2,
            odds=True, checks=(9,))
two_samples(CHI2, 2, 0, {0: 0.05, 1: 0.8, 229: 0.5, 230: 1, 4: 100, 37: 80}, 1, mode=0, size_mode=0,
            odds=True, checks=(9,))
two_samples(CHI2, 1, 0, {0: 0.05, 1: 0.8, 229: 0.5, 231: 0.5, 4: 100, 38: 20}, 4, (3, 1e5), mode=1,
            size_mode=1, odds=True, checks=(9,))
two_samples(CHI2, 1, 0, base(TWO, k51=-0.1, k8=0.65, k69=0.65), 4, (3, 1e5))
two_samples(CHI2, 1, 0, base(TWO, k51=-0.1, k8=0.65, k69=0.65, k4=200), 51, (-0.5, 0))
two_samples(CHI2, 3, 0, {0: 0.05, 1: 0.8, 71: -0.15, 72: 0.15, 8: 0.6, 69: 0.6, 4: 200, 5: 1}, 4,
            (40, 1e5))
two_samples(CHI2, 3, 0, {0: 0.05, 1: 0.8, 71: -0.15, 72: 0.15, 8: 0.6, 69: 0.63, 4: 200, 5: 1}, 1)
two_samples(CHI2, 3, 0, {0: 0.05, 1: 0.8, 71: -0.15, 72: 0.15, 8: 0.6, 69: 0.63, 4: 300, 5: 1}, 1,
            checks=(1,))
two_samples(BIN, 2, 0, base(TWO), 4, (3, 1e5), checks=(2,))
two_samples(BIN, 1, 0, base(TWO, k4=60), 1, checks=(2,))
two_samples(BIN, 1, 0, base(TWO, k51=-0.1, k8=0.65, k69=0.65), 4, (3, 1e5), checks=(2,))
two_samples(BIN, 3, 0, {0: 0.05, 1: 0.8, 71: -0.15, 72: 0.15, 8: 0.6, 69: 0.62, 4: 250, 5: 1}, 1,
            checks=(2,))
two_samples(BIN, 2, 0, base(TWO), 1, checks=(1,))
two_samples('distribution 4 1 0', 2, 0, {0: 0.05, 1: 0.8, 229: 1, 232: 2.5, 4: 100, 5: 1}, 4,
            (3, 1e5), mode=2, odds=True)

two_samples('distribution 4 1 0', 1, 0, {0: 0.05, 1: 0.8, 229: 0.5, 230: 1, 4: 100, 5: 1}, 4,
            (3, 1e5), odds=True)
two_samples('distribution 4 1 0', 3, 0,
            {0: 0.05, 1: 0.8, 71: -0.15, 72: 0.15, 229: 1, 230: 1.1, 4: 250, 5: 1}, 1, odds=True)

HYPER = {0: 0.05, 1: 0.8, 51: 0, 8: 0.3, 69: 0.5, 196: 300, 197: 400, 4: 80, 5: 1}
two_samples('distribution 5 0 0', 2, 0, base(HYPER), 4, (3, 299), population=True)
two_samples('distribution 5 0 0', 2, 0, base(HYPER), 1, population=True)
two_samples('distribution 5 0 0', 1, 0, base(HYPER, k51=-0.1, k69=0.3), 4, (3, 299),
            population=True)

two_samples('distribution 5 0 0', 3, 0,
            {0: 0.05, 1: 0.8, 71: -0.2, 72: 0.2, 8: 0.3, 69: 0.32, 196: 300, 197: 400, 4: 80, 5: 1},
            1, population=True)

EQ2 = {321: 0.9, 318: 0.8, 71: -0.2, 72: 0.2, 8: 0.7, 69: 0.7, 4: 90, 5: 1}
two_samples('menu 802', 3, 0, base(EQ2), 4, (20, 1e5), power_kind=318)
two_samples('menu 802', 3, 0, base(EQ2, k321=0.95), 4, (20, 1e5), power_kind=318)
two_samples('menu 802', 3, 0, base(EQ2, k69=0.73, k4=150), 318, power_kind=318)
NI2 = {321: 0.95, 318: 0.8, 317: -0.1, 8: 0.8, 69: 0.8, 4: 200, 5: 1}
two_samples('menu 832', 1, 0, base(NI2), 4, (3, 1e5), power_kind=318)
two_samples('menu 832', 1, 0, base(NI2), 4, (3, 1e5), power_kind=318, checks=(36,))
two_samples('menu 832', 1, 0, base(NI2, k69=0.83), 318, power_kind=318, checks=(36,))
two_samples('menu 832', 1, 0, base(NI2, k4=250), 317, (-0.5, 0), power_kind=318, checks=(36,))

# --- Exact forms --------------------------------------------------------------------------------

def rational(x):
    """The decimal number as it is entered."""
    return F(number(x))


@lru_cache(maxsize=None)
def binomial(n, p):
    """P(X = x) times the common denominator b^n of p = a/b, and that denominator."""
    a, b = p.numerator, p.denominator
    return [math.comb(n, x) * a ** x * (b - a) ** (n - x) for x in range(n + 1)], b ** n


@lru_cache(maxsize=None)
def hypergeometric(population, n, p):
    marked = round(p * population)
    rest = population - marked
    return [math.comb(marked, x) * math.comb(rest, n - x) if 0 <= n - x <= rest else 0
            for x in range(n + 1)], math.comb(population, n)


def crit_low(weights, total, alpha):
    s = 0
    for x, w in enumerate(weights):
        s += w
        if s > alpha * total:
            return x - 1
    return len(weights) - 1


def crit_high(weights, total, alpha):
    return len(weights) - 1 - crit_low(weights[::-1], total, alpha)


def exact_power(family, tails, left, alpha, null, right, truth):
    """family(p): the weights and their total. null is the H0 proportion or the left limit."""
    w0, t0 = family(null)
    w1, t1 = family(truth)
    if tails == 3:
        wr, tr = family(right)
        return F(sum(w1[crit_high(w0, t0, alpha):crit_low(wr, tr, alpha) + 1]), t1)
    if tails == 2:
        low, high = crit_low(w0, t0, alpha / 2), crit_high(w0, t0, alpha / 2)
        return F(sum(w1[:low + 1]) + sum(w1[high:]), t1)
    if left:
        return F(sum(w1[:crit_low(w0, t0, alpha) + 1]), t1)
    return F(sum(w1[crit_high(w0, t0, alpha):]), t1)


def crossing(power, target, largest):
    """The size at which the line between the powers of neighbouring sizes crosses the target, if
    there is one only."""
    powers = [float(power(n)) for n in range(3, largest + 1)]
    found = [i + 3 + (target - a) / (b - a)
             for i, (a, b) in enumerate(zip(powers, powers[1:])) if (a < target) != (b < target)]
    assert len(found) == 1, found
    return found[0]


def exact_one(tails, left, values, unknown, bracket=None, population=False, largest=None,
              note=None, table='proportions_exact'):
    alpha = rational(values[0])
    def power_at(n, truth, pop=None):
        if population:
            family = lambda p: hypergeometric(pop, n, p)
        else:
            family = lambda p: binomial(n, p)
        null = rational(values[35 if tails != 3 else 47])
        right = None if tails != 3 else rational(values[48])
        return exact_power(family, tails, left, alpha, null, right, truth)
    pop = values.get(31)
    if unknown == 1:
        exact, tolerance = power_at(values[85], rational(values[83]), pop), SUM
    elif unknown == 85:
        exact = crossing(lambda n: power_at(n, rational(values[83]), pop), values[1], largest)
        tolerance = 0.005
    elif unknown == 31:
        grid = range(largest[0], largest[1] + 1)
        powers = [float(power_at(values[85], rational(values[83]), n)) for n in grid]
        found = [n + (values[1] - a) / (b - a) for n, a, b in zip(grid, powers, powers[1:])
                 if (a < values[1]) != (b < values[1])]
        assert len(found) == 1, found
        exact, tolerance = found[0], 0.1
    else:
        n = values[85]
        def f(x):
            return float(power_at(n, F(x).limit_denominator(10 ** 9), pop)) - values[1]
        exact = optimize.brentq(f, *bracket, xtol=1e-9)
        tolerance = 5e-5
    distr = 5 if population else 4
    add(table, f'distribution {distr} 0 0', 1, tails, left, [7], {} if tails == 3 else {11: 0},
        values, unknown, exact, tolerance, note)


E1 = {0: 0.05, 1: 0.8, 35: 0.3, 83: 0.5, 85: 30}
for n in (10, 25, 30, 40, 61, 100, 999, 1000):
    exact_one(1, 0, base(E1, k85=n, k83=0.5 if n < 200 else 0.33), 1)
for n in (20, 50, 150):
    exact_one(1, -1, base(E1, k85=n, k83=0.15), 1)
for n in (15, 35, 60, 61, 200, 1000):
    exact_one(2, 0, base(E1, k85=n, k83=0.5 if n < 200 else 0.35), 1)
exact_one(2, 0, base(E1, k35=0.5, k83=0.2, k85=22), 1)
exact_one(1, 0, base(E1, k0=0.01, k85=45), 1)
exact_one(1, 0, base(E1, k85=40), 83, (0.31, 0.9))
exact_one(2, 0, base(E1, k85=40, k1=0.9), 83, (0.31, 0.9))
exact_one(1, -1, base(E1, k85=60), 83, (0.01, 0.29))
exact_one(1, 0, base(E1, k35=0.1, k83=0.4, k1=0.9), 85, largest=60)
exact_one(1, 0, base(E1, k35=0.2, k83=0.4, k1=0.95), 85, largest=120)
exact_one(1, -1, base(E1, k35=0.5, k83=0.2, k1=0.95), 85, largest=60)
exact_one(2, 0, base(E1, k35=0.1, k83=0.5, k1=0.95), 85, largest=60)
E3 = {0: 0.05, 1: 0.8, 47: 0.4, 48: 0.6, 83: 0.5, 85: 250}
for n in (60, 100, 250):
    exact_one(3, 0, base(E3, k85=n), 1)
exact_one(3, 0, base(E3, k83=0.53, k85=300), 1)

H1 = {0: 0.05, 1: 0.8, 35: 0.3, 83: 0.5, 31: 100, 85: 30}
for pop, n in ((50, 20), (100, 30), (200, 40), (500, 45), (1000, 60), (1000, 500)):
    exact_one(2, 0, base(H1, k31=pop, k85=n, k83=0.5 if n < 500 else 0.34), 1, population=True)
exact_one(1, 0, base(H1, k31=100, k85=25), 1, population=True)
exact_one(1, -1, base(H1, k31=80, k85=30, k83=0.1), 1, population=True)
exact_one(3, 0, {0: 0.05, 1: 0.8, 47: 0.4, 48: 0.6, 83: 0.5, 31: 200, 85: 110}, 1, population=True)
exact_one(1, 0, base(H1, k35=0.2, k83=0.4, k31=50, k1=0.9), 85, population=True, largest=49)
exact_one(1, 0, base(H1, k35=0.3, k83=0.6, k31=100, k1=0.9), 85, population=True, largest=99)


@lru_cache(maxsize=None)
def fisher_region(n1, n2, alpha, tails, left):
    """The tables (x1, x2) at which Fisher's test rejects: each tail given the total, at most alpha
    (alpha/2 in each of two)."""
    region = set()
    for t in range(n1 + n2 + 1):
        xs = range(max(0, t - n2), min(n1, t) + 1)
        weights = [math.comb(n1, x) * math.comb(n2, t - x) for x in xs]
        total = math.comb(n1 + n2, t)
        a = alpha / 2 if tails == 2 else alpha
        if tails == 2 or not left:
            region.update((xs[i], t - xs[i]) for i in range(crit_low(weights, total, a) + 1))
        if tails == 2 or left:
            region.update((xs[i], t - xs[i])
                          for i in range(crit_high(weights, total, a), len(xs)))
    return region


def fisher_power(n1, n2, p1, p2, alpha, tails, left):
    w1, t1 = binomial(n1, p1)
    w2, t2 = binomial(n2, p2)
    return F(sum(w1[x1] * w2[x2] for x1, x2 in fisher_region(n1, n2, alpha, tails, left)), t1 * t2)


def fisher(tails, left, values, unknown, bracket=None, odds=False, largest=50):
    k1, k2 = (229, 230) if odds else (8, 69)
    alpha = rational(values[0])
    prob = (lambda k: rational(values[k]) / (1 + rational(values[k]))) if odds else \
        (lambda k: rational(values[k]))
    def size2(n):
        m = n * rational(values[5])
        assert m.denominator == 1
        return int(m)
    if unknown == 1:
        exact = fisher_power(values[4], size2(values[4]), prob(k1), prob(k2), alpha, tails, left)
        tolerance = SUM
    elif unknown == 4:
        exact = crossing(lambda n: fisher_power(n, size2(n), prob(k1), prob(k2), alpha, tails, left),
                         values[1], largest)
        tolerance = 0.005
    else:
        def f(x):
            p = {k1: prob(k1) if unknown != k1 else None, k2: prob(k2) if unknown != k2 else None}
            p[unknown] = F(x).limit_denominator(10 ** 6)
            return float(fisher_power(values[4], size2(values[4]), p[k1], p[k2], alpha, tails,
                                      left)) - values[1]
        exact = optimize.brentq(f, *bracket, xtol=1e-7)
        tolerance = 5e-5
    add('proportions_exact', 'menu 100', 2, tails, left, [9] if odds else [],
        {35 if odds else 12: 0, 2: 2}, values, unknown, exact, tolerance)


FISHER = {0: 0.05, 1: 0.8, 8: 0.2, 69: 0.6, 4: 20, 5: 1}
for n in (5, 10, 20, 35, 50):
    fisher(2, 0, base(FISHER, k4=n), 1)
fisher(1, 0, base(FISHER, k4=15), 1)
fisher(1, 0, base(FISHER, k4=50, k8=0.3, k69=0.5), 1)
fisher(1, -1, base(FISHER, k4=25, k8=0.7, k69=0.3), 1)
fisher(2, 0, base(FISHER, k4=12, k5=2), 1)
fisher(2, 0, base(FISHER, k4=40, k5=0.5), 1)
fisher(2, 0, {0: 0.05, 1: 0.8, 229: 0.25, 230: 1.5, 4: 20, 5: 1}, 1, odds=True)
fisher(2, 0, base(FISHER, k0=0.01, k4=30), 1)
fisher(2, 0, base(FISHER), 4)
fisher(2, 0, base(FISHER, k8=0.1, k69=0.4, k1=0.9), 4)
fisher(1, 0, base(FISHER, k1=0.9), 4)
fisher(1, -1, base(FISHER, k8=0.7, k69=0.4), 4)
fisher(2, 0, base(FISHER, k4=30), 69, (0.21, 0.99))
fisher(1, 0, base(FISHER, k4=30), 8, (0.01, 0.59))

# --- Paired proportions -------------------------------------------------------------------------

@lru_cache(maxsize=None)
def sign_power(m, tails, left, alpha, r):
    return exact_power(lambda p: binomial(m, p), tails, left, alpha, F(1, 2), None, r)


def sign_power_large(m, tails, left, alpha, r):
    """The normal form with the correction of half a pair, from 200 discordant pairs on."""
    return nor_power(float(alpha), tails, left, (float(r) - 0.5) * m, math.sqrt(m / 4),
                     math.sqrt(float(r) * (1 - float(r)) * m), correction=0.5)


def mcnemar_power(n, s, d, alpha, tails, left):
    """Exact unconditional power of the test that is exact given the number of discordant pairs."""
    s, d = rational(s), rational(d)
    r = (s + d) / (2 * s)
    power = 0.0
    for m in range(1, n + 1):
        weight = stats.binom.pmf(m, n, float(s))
        if weight < 1e-14:
            continue
        given = float(sign_power(m, tails, left, rational(alpha), r)) if m < 200 else \
            sign_power_large(m, tails, left, alpha, r)
        power += weight * given
    return power


def mcnemar(tails, left, values, unknown, bracket=None, checks=(), largest=None, tolerance=None,
            table='proportions_paired', note=None, exact=None):
    """McNemar's test. Kinds: 15 p10 + p01, 16 p10 - p01, 85 pairs. First and second order:
    Miettinen (1968)."""
    def power(v):
        s, d, n = v[15], v[16], v[85]
        if 24 in checks or 25 in checks:
            var = s - d * d / s if 24 in checks else s - d * d * (3 + s) / (4 * s)
            return nor_power(v[0], tails, left, d, math.sqrt(s / n), math.sqrt(var / n))
        return mcnemar_power(n, s, d, v[0], tails, left)
    if unknown == 85 and not (24 in checks or 25 in checks):
        found, tol = crossing(lambda n: power({**values, 85: n}), values[1], largest), 0.01
    else:
        found = solve(power, values, unknown, bracket)
        exact_sum = unknown == 1 and not (24 in checks or 25 in checks) and values[85] * values[15] < 120
        tol = SUM if exact_sum else tolerance_of(unknown, found)
    if exact is not None:
        assert abs(found - exact) <= 1, (found, exact)
        found = exact
    add(table, 'menu 70', 1, tails, left, checks, {}, values, unknown, found, tolerance or tol, note)


MCN = {0: 0.05, 1: 0.8, 15: 0.5, 16: 0.2, 85: 100}
mcnemar(2, 0, base(MCN), 1)
mcnemar(2, 0, base(MCN, k85=30, k16=0.3), 1, checks=(26,))
mcnemar(1, 0, base(MCN, k85=60), 1)
mcnemar(1, -1, base(MCN, k85=80, k15=0.4, k16=-0.2), 1)
mcnemar(2, 0, base(MCN, k85=500, k15=0.3, k16=0.09), 1)
mcnemar(2, 0, base(MCN, k85=700, k15=0.5, k16=0.08), 1)
mcnemar(1, 0, base(MCN, k85=1000, k15=0.4, k16=0.05), 1)
mcnemar(1, -1, base(MCN, k85=900, k15=0.5, k16=-0.06), 1)
mcnemar(2, 0, base(MCN, k15=0.4, k16=0.3), 85, largest=120)
mcnemar(1, 0, base(MCN, k15=0.3, k16=0.2), 85, largest=200)
mcnemar(2, 0, base(MCN, k85=120), 16, (0.01, 0.49), tolerance=1e-4)
for check in (24, 25):
    mcnemar(2, 0, base(MCN), 85, (3, 1e5), checks=(check,))
    mcnemar(1, -1, base(MCN, k15=0.3, k16=-0.1), 85, (3, 1e5), checks=(check,))
    mcnemar(2, 0, base(MCN, k85=150, k15=0.4), 1, checks=(check,))
    mcnemar(2, 0, base(MCN, k85=150), 16, (0.01, 0.49), checks=(check,))
    mcnemar(2, 0, base(MCN, k85=150), 15, (0.21, 0.99), checks=(check,))


def restricted_sum(p10, p01, d0):
    """p10 + p01 that maximises the large-sample likelihood under p10 - p01 = d0, found by
    maximising it, not by a formula."""
    rest = 1 - p10 - p01
    def loss(q):   # q: the smaller cell
        a, b = (q + d0, q) if d0 >= 0 else (q, q - d0)
        return -(p10 * math.log(a) + p01 * math.log(b) + rest * math.log(1 - a - b))
    top = (1 - abs(d0)) / 2
    q = optimize.minimize_scalar(loss, bounds=(1e-12, top - 1e-12), method='bounded',
                                 options={'xatol': 1e-13}).x
    return 2 * q + abs(d0)


def paired(analysis, tails, left, values, unknown, bracket=None, mode=0, third=0, checks=(),
           power_kind=1, tolerance=None):
    """The difference of paired proportions. Variance under H1 s - d^2 (Connor 1987), under H0 by
    unrestricted maximum likelihood s - d0^2 (Lu and Bean 1995; the default), by the score form
    (Nam 1997, Tango 1998: 27), or as under H1 (39). Kinds: 123 p11, 15 p10 + p01, 336 p10/p01."""
    k2 = (69, 52, 70)[mode]
    k3 = (123, 15, 336)[third]
    def power(v):
        p1, p2 = v[8], second(v[8], v[k2], mode)
        d, n = p2 - p1, v[85]
        if third == 0:
            s = p1 + p2 - 2 * v[k3]
        elif third == 1:
            s = v[k3]
        else:   # p10/p01 is the ratio, p10 - p01 = d
            s = abs(d) * (v[k3] + 1) / abs(v[k3] - 1)
        def se0(d0):
            if 39 in checks:
                var = s - d * d
            elif 27 in checks:
                var = restricted_sum((s + d) / 2, (s - d) / 2, d0) - d0 * d0
            else:
                var = s - d0 * d0
            return math.sqrt(var / n)
        alpha = v[0] if 0 in v else (1 - v[321]) / (2 if tails == 3 or 36 in checks else 1)
        se1 = math.sqrt((s - d * d) / n)
        if tails == 3:
            return nor_power(alpha, 3, left, 0, 0, se1, d - v[71], v[72] - d, se0(v[71]),
                             se0(v[72]))
        d0 = v.get(51, v.get(317))
        return nor_power(alpha, tails, left, d - d0, se0(d0), se1)
    exact = solve(power, values, unknown, bracket, power_kind)
    add('proportions_paired', analysis, 1, tails, left, checks, {12: mode, 20: third}, values,
        unknown, exact, tolerance or tolerance_of(unknown, exact))


PAIR = {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 69: 0.55, 123: 0.3, 85: 120}
paired('menu 80', 2, 0, base(PAIR), 85, (3, 1e5))
paired('menu 80', 2, 0, base(PAIR), 1)
paired('menu 80', 1, 0, base(PAIR), 85, (3, 1e5), checks=(27,))
paired('menu 80', 1, -1, base(PAIR, k8=0.55, k69=0.4), 1, checks=(30,))
paired('menu 80', 2, 0, base(PAIR), 85, (3, 1e5), checks=(39,))
paired('menu 80', 2, 0, base(PAIR, k85=150), 69, (0.401, 0.8))
paired('menu 80', 2, 0, base(PAIR, k85=150), 123, (0.02, 0.39))
NPAIR = {0: 0.05, 1: 0.8, 51: -0.1, 8: 0.8, 69: 0.8, 15: 0.2, 85: 120}
for checks in ((), (27,), (39,)):
    paired('menu 80', 1, 0, base(NPAIR), 85, (3, 1e5), third=1, checks=checks)
paired('menu 80', 1, 0, base(NPAIR, k69=0.83, k85=80), 1, third=1, checks=(27,))
paired('menu 80', 1, -1, base(NPAIR, k51=0.1), 85, (3, 1e5), third=1, checks=(27,))
paired('menu 80', 1, 0, base(NPAIR, k85=150), 51, (-0.4, 0), third=1, checks=(27,))
paired('menu 80', 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 52: 0.1, 336: 2, 85: 300}, 85, (3, 1e5),
       mode=1, third=2)
paired('menu 80', 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 70: 1.25, 336: 0.5, 85: 300}, 1, mode=2,
       third=2)
paired('menu 80', 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.4, 52: 0.1, 336: 2, 85: 250}, 336, (1.3, 50),
       mode=1, third=2, tolerance=0.005)
TPAIR = {0: 0.05, 1: 0.8, 71: -0.1, 72: 0.1, 8: 0.7, 69: 0.7, 15: 0.2, 85: 200}
for checks in ((), (27,), (39,)):
    paired('menu 80', 3, 0, base(TPAIR), 85, (20, 1e5), third=1, checks=checks)
paired('menu 80', 3, 0, base(TPAIR, k69=0.72), 1, third=1, checks=(27,))
CPAIR = {321: 0.9, 318: 0.8, 71: -0.1, 72: 0.1, 8: 0.7, 69: 0.7, 15: 0.2, 85: 200}
paired('menu 803', 3, 0, base(CPAIR), 85, (20, 1e5), third=1, power_kind=318)
paired('menu 803', 3, 0, base(CPAIR, k69=0.71), 318, third=1, power_kind=318, checks=(27,))
IPAIR = {321: 0.95, 318: 0.8, 317: -0.1, 8: 0.7, 69: 0.7, 15: 0.2, 85: 150}
paired('menu 833', 1, 0, base(IPAIR), 85, (3, 1e5), third=1, power_kind=318, checks=(36, 27))
paired('menu 833', 1, 0, base(IPAIR), 85, (3, 1e5), third=1, power_kind=318)
paired('menu 833', 1, 0, base(IPAIR), 318, third=1, power_kind=318, checks=(36,))

# --- Published examples -------------------------------------------------------------------------
# The values are those of the publications; two_samples and mcnemar assert that their formulas come
# within one subject of them, exact_one computes what is not printed.

two_samples(CHI2, 2, 0, {0: 0.01, 1: 0.95, 51: 0, 8: 0.6, 69: 0.7, 4: 800, 5: 1}, 4, (3, 1e5),
            checks=(1,), table='proportions_published', tolerance=1, exact=827,
            note='J. L. Fleiss, Statistical Methods for Rates and Proportions, 2nd ed. 1981, '
                 'chapter 3 and table A.3: 827 in each group')
two_samples(CHI2, 1, 0, {0: 0.05, 1: 0.8, 51: -0.1, 8: 0.65, 69: 0.85, 4: 25, 5: 1}, 4, (3, 1e5),
            table='proportions_published', tolerance=1, exact=25,
            note='S. C. Chow, J. Shao and H. Wang, Sample Size Calculations in Clinical Research, '
                 '2003, chapter 4, non-inferiority: 25 in each group')
for h, n in ((0.2, 392), (0.5, 63), (0.8, 25)):
    p2 = round(math.sin(math.pi / 4 + h / 2) ** 2, 9)
    two_samples(BIN, 2, 0, {0: 0.05, 1: 0.8, 51: 0, 8: 0.5, 69: p2, 4: n, 5: 1}, 4, (3, 1e5),
                checks=(2,), table='proportions_published', tolerance=1, exact=n,
                note='J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd ed. '
                     f'1988, table 6.4.1, effect size h = {h}: {n} in each group')
mcnemar(2, 0, {0: 0.05, 1: 0.9, 15: 0.15, 16: 0.05, 85: 600}, 85, (3, 1e5), checks=(24,),
        table='proportions_published', tolerance=1, exact=602,
        note='B. Rosner, Fundamentals of Biostatistics, chapter 10, two regimens of chemotherapy, '
             '15 % discordant pairs, two thirds of them in favour of one: 602 pairs')
PHASE2 = 'R. P. A\'Hern (2001), Statistics in Medicine 20, 859-866, single-stage phase II design: '
for p0, p1, n, r in ((0.05, 0.2, 27, 4), (0.1, 0.3, 25, 6), (0.2, 0.4, 35, 12), (0.3, 0.5, 39, 17)):
    size, power = [float(sum(F(w, t) for w in ws[r:])) for ws, t in
                   (binomial(n, rational(p0)), binomial(n, rational(p1)))]
    assert size <= 0.05 and power >= 0.8, (size, power)
    exact_one(1, 0, {0: 0.05, 1: 0.8, 35: p0, 83: p1, 85: n}, 1, table='proportions_published',
              note=f'{PHASE2}{n} patients, {r} responses')

HEADS = {
    'proportions': 'Normal and arc-sine forms of the tests of proportions.',
    'proportions_exact': 'Exact forms of the tests of proportions.',
    'proportions_paired': 'Tests of paired proportions.',
    'proportions_published': 'Published examples, the sizes as printed there, in this order:',
}
for table, rows in ROWS.items():
    with open(f'checks/data/validation/{table}.tsv', 'w') as out:
        out.write(f'# Written by checks/reference/proportions.py. {HEADS[table]}\n')
        for note in NOTES[table]:
            out.write(f'# - {note}\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\t'
                  'Tolerance\n')
        for row in rows:
            out.write('\t'.join(map(str, row)) + '\n')
    print(table, len(rows), 'cases')
