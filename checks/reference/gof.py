#!/usr/bin/env python3
"""Reference values for the tests of goodness of fit, written to checks/data/validation.

  gof.tsv            powers, sizes, effects and levels of the chi-square tests by the exact
                     non-central chi-square distribution of scipy
  gof_published.tsv  sizes of a published table, as printed there
  gof_simulated.tsv  powers of the chi-square test itself: 200,000 tables drawn for each, numpy's
                     PCG64 with the seed named in the row's note. They show how near the
                     large-sample power is; the tolerance holds three standard errors and that
                     distance.
  kolsmi.tsv         powers, sizes and levels of the Kolmogorov-Smirnov test: Steck's determinant
                     in 120 digits, critical distances by scipy's ksone
  kolsmi_simulated.tsv  its powers: 200,000 samples drawn for each (100,000 of 2000 and more), with
                     the same critical distances; the tolerance holds four standard errors

Independent of the program: non-centralities are formed here from the proportions by their
definition, distributions are scipy's, and the determinant is another way than the program's
(G. P. Steck, Annals of Mathematical Statistics 42, 1971, 1-11).

Needs Python 3 with scipy, numpy and mpmath; run from the repository's root.
"""
import itertools
import math
from fractions import Fraction
import mpmath
import numpy as np
from scipy import optimize, stats

ROWS = {'gof': [], 'gof_published': [], 'gof_simulated': [], 'kolsmi': [], 'kolsmi_simulated': []}
NOTES = {table: [] for table in ROWS}

SUM = 0.001       # non-central chi-square as a Poisson mixture, df to 10 and lambda to 50
PATNAIK = 0.009   # elsewhere, by Patnaik's two moments (docs/accuracy.md)
REPLICATES = 200000
NEAR = 0.025      # the statistic varies otherwise under H1 than a non-central chi-square does
TABLE, DISCRETE, CONTINUOUS = 110, 260, 261  # menus


def number(v):
    return f'{float(v):.9g}'


def add(table, menu, values, unknown, exact, tolerance, note=None):
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    ROWS[table].append(['menu %d' % menu, 1, 2, 0, '', '', given, unknown, f'{float(exact):.9g}',
                        f'{tolerance:.3g}'])
    if note:
        NOTES[table].append(note)


# --- Chi-square: 250 the non-centrality of a subject, 201 categories, 85 subjects -----------------

def power_of(v):
    """Of a broken number of categories, as a search ends at it, on the straight line."""
    def at(k):
        return stats.ncx2.sf(stats.chi2.isf(v[0], k - 1), k - 1, v[250] * v[85]) \
            if v[250] * v[85] > 0 else v[0]
    low = math.floor(v[201])
    part = v[201] - low
    return at(low) if part == 0 else (1 - part) * at(low) + part * at(low + 1)


def chi2(menu, values, unknown=1, bracket=None):
    if unknown == 1:
        error = SUM if values[250] * values[85] <= 50 else PATNAIK
        add('gof', menu, values, 1, power_of(values), error)
        return
    def f(x):
        return power_of({**values, unknown: x}) - values[1]
    x = optimize.brentq(f, *bracket, xtol=1e-12)
    solved = {**values, unknown: x}
    error = SUM if solved[250] * solved[85] <= 50 else PATNAIK
    h = 1e-4 * abs(x)
    add('gof', menu, values, unknown, x, error * 2 * h / abs(f(x + h) - f(x - h)) + 2e-5)


def non_centrality(p0, p1):
    return sum((b - a) ** 2 / a for a, b in zip(p0, p1))


for k, w, n in ((2, 0.09, 87), (2, 0.01, 500), (3, 0.05, 200), (3, 0.8, 8), (4, 0.1, 100),
                (5, 0.02, 700), (6, 0.3, 30), (8, 0.15, 120), (10, 0.3, 25), (10, 1.5, 3),
                (10, 0.01, 1500), (7, 0.0005, 30000), (4, 0.0, 100), (10, 0.0, 50)):
    chi2(TABLE, {0: 0.05, 250: w, 201: k, 85: n})
for k, w, n, alpha in ((3, 0.12, 90, 0.01), (5, 0.2, 60, 0.001), (9, 0.08, 150, 0.1),
                       (6, 0.6, 150, 0.05)):
    chi2(DISCRETE, {0: alpha, 250: w, 201: k, 85: n})
    chi2(CONTINUOUS, {0: alpha, 250: w, 201: k, 85: n})
for k, w, power in ((2, 0.09, 0.8), (3, 0.25, 0.9), (4, 0.05, 0.8), (5, 0.01, 0.95),
                    (7, 0.3, 0.7), (10, 0.1, 0.8), (10, 2.0, 0.8)):
    chi2(TABLE, {0: 0.05, 1: power, 250: w, 201: k}, 85, (1, 1e5))
chi2(DISCRETE, {0: 0.01, 1: 0.9, 250: 0.15, 201: 4}, 85, (1, 1e5))
chi2(CONTINUOUS, {0: 0.1, 1: 0.8, 250: 0.04, 201: 8}, 85, (1, 1e5))
for k, n, power in ((2, 50, 0.8), (4, 150, 0.9), (10, 300, 0.8), (5, 10, 0.5)):
    chi2(TABLE, {0: 0.05, 1: power, 201: k, 85: n}, 250, (1e-4, 10))
chi2(DISCRETE, {0: 0.01, 1: 0.8, 201: 3, 85: 80}, 250, (1e-4, 10))
chi2(CONTINUOUS, {0: 0.05, 1: 0.95, 201: 6, 85: 500}, 250, (1e-4, 10))
chi2(TABLE, {0: 0.05, 1: 0.8, 250: 0.2, 201: 4, 85: 40}, 0, (1e-4, 0.9))
chi2(CONTINUOUS, {0: 0.05, 1: 0.9, 250: 0.1, 201: 5, 85: 90}, 0, (1e-4, 0.9))
chi2(TABLE, {0: 0.05, 1: 0.75, 250: 0.1, 201: 4, 85: 120}, 201, (2, 10))
chi2(DISCRETE, {0: 0.05, 1: 0.6, 250: 0.2, 201: 4, 85: 50}, 201, (2, 10))

# J. Cohen, A power primer, Psychological Bulletin 112, 1992, 155-159, table 2.
PRIMER = {1: (785, 87), 2: (964, 107, 39), 3: (1090, 121, 44), 4: (1194, 133, 48),
          5: (1283, 143, 51), 6: (1362, 151, 54)}
for df, sizes in PRIMER.items():
    for w, n in zip((0.1, 0.3, 0.5), sizes):
        values = {0: 0.05, 1: 0.8, 250: w * w, 201: df + 1}
        exact = optimize.brentq(lambda x: power_of({**values, 85: x}) - 0.8, 2, 1e5)
        assert abs(exact - n) <= 1
        slope = power_of({**values, 85: exact + 0.5}) - power_of({**values, 85: exact - 0.5})
        add('gof_published', TABLE, values, 85, n, 1 + SUM / slope, f'{df} df, w = {w}: {n}')


def simulate(menu, p0, p1, n, seed, near):
    counts = np.random.default_rng(seed).multinomial(n, p1, REPLICATES)
    expected = n * np.asarray(p0)
    statistic = ((counts - expected) ** 2 / expected).sum(axis=1)
    power = float((statistic > stats.chi2.isf(0.05, len(p0) - 1)).mean())
    error = math.sqrt(power * (1 - power) / REPLICATES)
    add('gof_simulated', menu, {0: 0.05, 250: non_centrality(p0, p1), 201: len(p0), 85: n}, 1,
        power, near + 3 * error,
        f'H0 {tuple(p0)}, H1 {tuple(p1)}, {n} subjects: seed {seed}, standard error {error:.2g}')


EQUAL = (0.25,) * 4
MENDEL = (0.5625, 0.1875, 0.1875, 0.0625)  # 9 : 3 : 3 : 1
simulate(TABLE, EQUAL, (0.3, 0.3, 0.2, 0.2), 200, 25001, NEAR)
simulate(TABLE, MENDEL, (0.5, 0.2, 0.2, 0.1), 300, 25002, NEAR)
simulate(TABLE, (0.5, 0.3, 0.2), (0.4, 0.3, 0.3), 150, 25003, NEAR)
simulate(TABLE, (0.2,) * 5, (0.25, 0.25, 0.2, 0.15, 0.15), 400, 25004, NEAR)
simulate(DISCRETE, (0.1,) * 10, (0.13, 0.12, 0.11, 0.1, 0.1, 0.1, 0.1, 0.09, 0.08, 0.07), 500,
         25005, NEAR)
simulate(CONTINUOUS, (0.125,) * 8, (0.09, 0.11, 0.13, 0.15, 0.15, 0.14, 0.12, 0.11), 600, 25006,
         NEAR)

# --- Kolmogorov-Smirnov -------------------------------------------------------------------------

UNIFORM, NORMAL, EXPONENTIAL, LAPLACE, CAUCHY, WEIBULL, LOGISTIC = range(7)
LOGNORMAL, EXTREME, CHI_SQUARE = 8, 9, 15
KS = 263
EXACT = 3e-4  # KolSmiInv finds a distance to 1e-5


def distribution(code, a, b):
    """As the program's dialog names the parameters."""
    return {UNIFORM: lambda: stats.uniform(a - b / 2, b), NORMAL: lambda: stats.norm(a, b),
            EXPONENTIAL: lambda: stats.expon(a, b), LAPLACE: lambda: stats.laplace(a, b),
            CAUCHY: lambda: stats.cauchy(a, b), WEIBULL: lambda: stats.weibull_min(a, scale=b),
            LOGISTIC: lambda: stats.logistic(a, b), CHI_SQUARE: lambda: stats.chi2(a),
            LOGNORMAL: lambda: stats.lognorm(1 / a, scale=b),
            EXTREME: lambda: stats.gumbel_r(a, b)}[code]()


def sides(tails, left):
    """Rejected where the sample's distribution function lies above the null, below it."""
    return tails == 2 or left, tails == 2 or not left


def steck(low, high):
    """P(low(i) < U(i) < high(i) for all i) of uniform order statistics: a determinant with ones
    below the diagonal and zeros below those, column by column."""
    n = len(low)
    low, high = ([mpmath.mpf(x) for x in bounds] for bounds in (low, high))
    factorial = [mpmath.factorial(k) for k in range(n + 1)]
    minors = [mpmath.mpf(1)]
    for k in range(1, n + 1):
        total = mpmath.mpf(0)
        for i in range(1, k + 1):
            d = high[i - 1] - low[k - 1]
            if d > 0:
                total += (-1) ** (k - i) * d ** (k - i + 1) / factorial[k - i + 1] * minors[i - 1]
        minors.append(total)
    return float(factorial[n] * minors[n])


def ks_power(n, level, tails, left, null, truth):
    d = stats.ksone.isf(level / tails, n)
    above, below = sides(tails, left)
    at = lambda p: float(truth.cdf(null.ppf(p)))
    low = [at(i / n - d) if above and i / n > d else 0.0 for i in range(1, n + 1)]
    high = [at((i - 1) / n + d) if below and (i - 1) / n + d < 1 else 1.0 for i in range(1, n + 1)]
    if any(a >= b for a, b in zip(low, high)):
        return 1.0
    with mpmath.workdps(120):
        return 1 - steck(low, high)


def ks_row(table, tails, left, pair, values, unknown, exact, tolerance, note=None):
    codes = ' '.join(f'{code} {a:g} {b:g}' for code, a, b in pair)
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    ROWS[table].append([f'menu {KS} {codes}', 1, tails, '-1' if left else '0', '', '', given,
                        unknown, f'{exact:.9g}', f'{tolerance:.3g}'])
    if note:
        NOTES[table].append(note)


def ks(tails, left, pair, n, level=0.05):
    power = ks_power(n, level, tails, left, *(distribution(*d) for d in pair))
    ks_row('kolsmi', tails, left, pair, {0: level, 85: n}, 1, power, EXACT)


def ks_size(tails, left, pair, target, least, level=0.05):
    """On the straight line between the whole sizes where the power passes the target."""
    laws = [distribution(*d) for d in pair]
    n = least
    while (b := ks_power(n + 1, level, tails, left, *laws)) < target:
        n += 1
    a = ks_power(n, level, tails, left, *laws)
    assert a < target <= b
    ks_row('kolsmi', tails, left, pair, {0: level, 1: target}, 85, n + (target - a) / (b - a),
           2 * EXACT / (b - a))


def ks_level(tails, left, pair, target, n):
    laws = [distribution(*d) for d in pair]
    f = lambda level: ks_power(n, level, tails, left, *laws) - target
    level = optimize.brentq(f, 1e-3, 0.5, xtol=1e-9)
    slope = (f(1.01 * level) - f(0.99 * level)) / (0.02 * level)
    ks_row('kolsmi', tails, left, pair, {1: target, 85: n}, 0, level, EXACT / slope + 2e-5)


SHIFT = ((NORMAL, 0, 1), (NORMAL, 0.5, 1))
BACK = ((NORMAL, 0, 1), (NORMAL, -0.5, 1))
WIDER = ((NORMAL, 10, 2), (NORMAL, 10, 4))
FLAT = ((UNIFORM, 0, 1), (UNIFORM, 0.25, 0.5))
LIVES = ((EXPONENTIAL, 0, 1), (EXPONENTIAL, 0, 2))
TAILS = ((NORMAL, 0, 1), (CAUCHY, 0, 1))
for pair in (SHIFT, BACK, WIDER, FLAT, LIVES, TAILS, ((LAPLACE, 0, 1), (LOGISTIC, 0.5, 1)),
             ((WEIBULL, 1, 3), (WEIBULL, 2, 3)), ((LOGNORMAL, 2, 1), (LOGNORMAL, 1.5, 1.5)),
             ((EXTREME, 0, 1), (NORMAL, 0.5772, 1.2825)), ((CHI_SQUARE, 4, 1), (CHI_SQUARE, 6, 1)),
             ((EXPONENTIAL, 0, 1), (NORMAL, 1, 1)), ((NORMAL, 0, 1), (NORMAL, 0, 1))):
    ks(2, False, pair, 25)
    ks(1, False, pair, 20)
    ks(1, True, pair, 20)
for n in (3, 5, 10, 50, 60):
    ks(2, False, SHIFT, n)
    ks(1, False, LIVES, n)
    ks(1, True, BACK, n)
for level in (0.001, 0.01, 0.1, 0.3):
    ks(2, False, SHIFT, 30, level)
    ks(1, False, WIDER, 30, level)
    ks(1, True, FLAT, 30, level)
ks_size(2, False, SHIFT, 0.8, 30)
ks_size(1, False, SHIFT, 0.8, 20)
ks_size(1, True, BACK, 0.9, 30)
ks_size(2, False, LIVES, 0.9, 20)
ks_size(1, False, LIVES, 0.6, 5, 0.01)
ks_level(2, False, SHIFT, 0.8, 30)
ks_level(1, True, BACK, 0.9, 25)
START = ((NORMAL, 0, 1), (NORMAL, 0.3, 1))  # as long as nothing is chosen
ks(2, False, START, 100)
ks_size(2, False, START, 0.8, 110)


def simulate_ks(tails, left, pair, n, seed, level=0.05):
    null, truth = (distribution(*d) for d in pair)
    d = stats.ksone.isf(level / tails, n)
    above, below = sides(tails, left)
    rng = np.random.default_rng(seed)
    replicates = REPLICATES if n < 2000 else REPLICATES // 2
    i = np.arange(1, n + 1) / n
    rejected = done = 0
    while done < replicates:
        count = min(replicates - done, max(1, 2_000_000 // n))
        f = null.cdf(truth.ppf(np.sort(rng.random((count, n)), axis=1)))
        largest = np.zeros(count)
        if above:
            largest = np.maximum(largest, (i - f).max(axis=1))
        if below:
            largest = np.maximum(largest, (f - i + 1 / n).max(axis=1))
        rejected += int((largest > d).sum())
        done += count
    power = rejected / replicates
    error = math.sqrt(power * (1 - power) / replicates)
    ks_row('kolsmi_simulated', tails, left, pair, {0: level, 85: n}, 1, power, EXACT + 4 * error,
           f'{n} subjects: {replicates} samples, seed {seed}, standard error {error:.2g}')


simulate_ks(2, False, SHIFT, 30, 109001)
simulate_ks(2, False, ((NORMAL, 0, 1), (NORMAL, 0.3, 1)), 100, 109002)
simulate_ks(1, False, ((NORMAL, 0, 1), (NORMAL, 0.2, 1)), 100, 109003)
simulate_ks(1, True, ((NORMAL, 0, 1), (NORMAL, -0.2, 1)), 150, 109004)
simulate_ks(2, False, ((NORMAL, 0, 1), (NORMAL, 0, 1.3)), 200, 109005)
simulate_ks(1, True, ((UNIFORM, 0, 1), (UNIFORM, 0, 1.15)), 120, 109006)
simulate_ks(2, False, ((UNIFORM, 0.5, 1), (UNIFORM, 0.55, 1)), 60, 109007)
simulate_ks(2, False, ((EXPONENTIAL, 0, 1), (EXPONENTIAL, 0, 1.25)), 150, 109008)
simulate_ks(1, False, ((EXPONENTIAL, 0, 1), (WEIBULL, 1.2, 1)), 250, 109009)
simulate_ks(2, False, ((LOGISTIC, 0, 1), (NORMAL, 0, 1.8138)), 500, 109010, 0.1)
simulate_ks(2, False, ((NORMAL, 0, 1), (NORMAL, 0.08, 1)), 1000, 109011)
simulate_ks(1, False, ((CHI_SQUARE, 5, 1), (LOGNORMAL, 1.5, 4.2)), 80, 109012)
simulate_ks(2, False, ((NORMAL, 0, 1), (NORMAL, 0.06, 1)), 2000, 109013)
simulate_ks(1, True, ((EXPONENTIAL, 0, 1), (EXPONENTIAL, 0, 0.95)), 2500, 109014)


def discrete(n, d, null, truth):
    """P(D > d) above, below and on either side: all counts of n observations."""
    p0, p1 = ([Fraction(p).limit_denominator(1000) for p in law] for law in (null, truth))
    result = [Fraction(0)] * 3
    for counts in itertools.product(range(n + 1), repeat=len(p0) - 1):
        if sum(counts) > n:
            continue
        counts = (*counts, n - sum(counts))
        probability = Fraction(math.factorial(n))
        for x, p in zip(counts, p1):
            probability *= p ** x / Fraction(math.factorial(x))
        distances = [Fraction(sum(counts[:j]), n) - sum(p0[:j]) for j in range(1, len(p0))]
        above, below = max(distances) > d, max(-x for x in distances) > d
        for k, rejects in enumerate((above, below, above or below)):
            result[k] += probability * rejects
    return [float(p) for p in result]


HEADS = {
    'gof': 'Chi-square tests of goodness of fit.',
    'gof_published': 'J. Cohen, A power primer, Psychological Bulletin 112, 1992, 155-159, table '
                     '2, level 0.05, power 0.80, in this order:',
    'gof_simulated': 'Simulated powers of the tests themselves, in this order:',
    'kolsmi': 'Kolmogorov-Smirnov test of one sample.',
    'kolsmi_simulated': 'Kolmogorov-Smirnov test of one sample, simulated, in this order:',
}
for table, rows in ROWS.items():
    with open(f'checks/data/validation/{table}.tsv', 'w') as out:
        out.write(f'# Written by checks/reference/gof.py. {HEADS[table]}\n')
        for note in NOTES[table]:
            out.write(f'# - {note}\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\t'
                  'Tolerance\n')
        for row in rows:
            out.write('\t'.join(map(str, row)) + '\n')
    print(table, len(rows), 'cases')

# What checks/ranksurv/gof_check.cpp holds.
print('9:3:3:1', non_centrality(MENDEL, (0.5, 0.2, 0.2, 0.1)))
print('five', non_centrality((0.1, 0.2, 0.4, 0.2, 0.1), (0.2, 0.2, 0.2, 0.2, 0.2)))

# What checks/numeric/kolsmicrossing_check.cpp holds.
THREE = ('0.2', '0.3', '0.5'), ('0.4', '0.3', '0.3')
FOUR = ('0.1', '0.2', '0.3', '0.4'), ('0.25', '0.25', '0.25', '0.25')
print('three categories, 10', discrete(10, Fraction('0.25'), *THREE))
print('three categories, 10, d met', discrete(10, Fraction('0.2'), *THREE))
print('four categories, 12', discrete(12, Fraction('0.22'), *FOUR))
print('four categories, 12, no effect', discrete(12, Fraction('0.22'), FOUR[0], FOUR[0]))
for n in (5, 20, 60):
    with mpmath.workdps(120):
        share = lambda p: p * p
        d = 0.2
        low = [share(max(0, i / n - d)) for i in range(1, n + 1)]
        high = [share(min(1, (i - 1) / n + d)) for i in range(1, n + 1)]
        print('squares', n, 1 - steck(low, [1] * n), 1 - steck([0] * n, high), 1 - steck(low, high))
