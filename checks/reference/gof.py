#!/usr/bin/env python3
"""Reference values for the tests of goodness of fit, written to checks/data/validation.

  gof.tsv            powers, sizes, effects and levels of the chi-square tests by the exact
                     non-central chi-square distribution of scipy
  gof_published.tsv  sizes of a published table, as printed there
  gof_simulated.tsv  powers of the chi-square test itself: 200,000 tables drawn for each, numpy's
                     PCG64 with the seed named in the row's note. They show how near the
                     large-sample power is; the tolerance holds three standard errors and that
                     distance.

Independent of the program: non-centralities are formed here from the proportions by their
definition.

Needs Python 3 with scipy and numpy; run from the repository's root.
"""
import math
import numpy as np
from scipy import optimize, stats

ROWS = {'gof': [], 'gof_published': [], 'gof_simulated': []}
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

HEADS = {
    'gof': 'Chi-square tests of goodness of fit.',
    'gof_published': 'J. Cohen, A power primer, Psychological Bulletin 112, 1992, 155-159, table '
                     '2, level 0.05, power 0.80, in this order:',
    'gof_simulated': 'Simulated powers of the tests themselves, in this order:',
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
