#!/usr/bin/env python3
"""Reference values for general crossover designs, written to checks/data/validation/crossover.tsv.

Independent of the program: the model of each design is written out with a column for every subject,
period, treatment and carryover effect, and solved by least squares (numpy's lstsq and pinv, which
work on singular values). Powers are those of scipy's non-central F and t (tpowers.py).

Designs: the two-way design; the complete Williams squares of three and four treatments (E. J.
Williams, Australian Journal of Scientific Research A 2, 1949, 149-168); Balaam's design (L. N.
Balaam, Biometrics 24, 1968, 61-73); a two-treatment design in three periods and a switch-back (B.
Jones and M. G. Kenward, Design and Analysis of Cross-Over Trials, 2nd ed. 2003, chapter 3); a
two-way design with a measured washout.

Needs Python 3 with scipy and numpy; run from the repository's root.
"""
import math
import numpy as np
from scipy import optimize, stats
from tpowers import t_power, tost_power

DESIGNS = {
    'AB/BA': [[1, 2], [2, 1]],
    'Balaam': [[1, 1], [2, 2], [1, 2], [2, 1]],
    'ABB/BAA': [[1, 2, 2], [2, 1, 1]],
    'ABA/BAB': [[1, 2, 1], [2, 1, 2]],
    'Williams 3': [[1, 2, 3], [2, 3, 1], [3, 1, 2], [1, 3, 2], [2, 1, 3], [3, 2, 1]],
    'Williams 4': [[1, 4, 2, 3], [2, 1, 3, 4], [3, 2, 4, 1], [4, 3, 1, 2]],
    'washout': [[1, 0, 2], [2, 0, 1]],
    'Latin square 10': [[(i + j) % 10 + 1 for j in range(10)] for i in range(10)],
    'Williams 10': [[(i + (j + 1) // 2 * (1 if j % 2 else -1)) % 10 + 1 for j in range(10)]
                    for i in range(10)],
}

ROWS = []
NOTES = []
F_POWER = 0.0015   # non-central F as a Poisson mixture (docs/accuracy.md)
T_POWER = 0.004    # the normal approximation of non-central t


def model(design, carryover, n=2):
    """Columns of subjects, periods, washout and carryover, and those of treatments."""
    g, p = len(design), len(design[0])
    t = max(map(max, design))
    nuisance, treatments = [], []
    for subject in range(g * n):
        sequence = design[subject // n]
        for period, treatment in enumerate(sequence):
            row = np.zeros(g * n + p + 1 + t)
            row[subject] = row[g * n + period] = 1
            row[g * n + p] = treatment == 0
            before = sequence[period - 1] if period else 0
            if carryover and before:
                row[g * n + p + before] = 1
            nuisance.append(row)
            treatments.append(np.eye(t)[treatment - 1] if treatment else np.zeros(t))
    return np.array(nuisance), np.array(treatments), n


def distance(design, carryover, means):
    """Sum of squares of the treatments' means that the other effects leave, for one subject in each
    sequence."""
    z, x, n = model(design, carryover)
    y = x @ np.array(means, float)
    z = np.column_stack([z, x.sum(axis=1)])
    rest = y - z @ np.linalg.lstsq(z, y, rcond=None)[0]
    return rest @ rest / n


def variance(design, carryover, weights):
    """Of the least squares estimate; None where it isn't determined."""
    z, x, n = model(design, carryover)
    full = np.column_stack([z, x])
    c = np.concatenate([np.zeros(z.shape[1]), weights])
    inverse = np.linalg.pinv(full.T @ full)
    if np.abs(inverse @ (full.T @ full) @ c - c).max() > 1e-9:
        return None
    return c @ inverse @ c * n


def error_df(design, carryover, n):
    """Observations less the rank of the model."""
    z, x, _ = model(design, carryover, n)
    return len(z) - np.linalg.matrix_rank(np.column_stack([z, x]))


def number(v):
    return f'{float(v):.9g}'


def add(menu, tails, values, unknown, exact, tolerance, left=0, checks=(), note=''):
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    ROWS.append([f'menu {menu}', 3, tails, left, ','.join(map(str, checks)), '', given, unknown,
                 f'{float(exact):.9g}', f'{tolerance:.3g}'])
    NOTES.append(note.replace('[', '(').replace(']', ')'))  # Markdown takes [1](2) for a link


def solve(power, values, unknown, bracket, error):
    if unknown == 1:
        return power(values), error
    def f(x):
        return power({**values, unknown: x}) - values[1]
    x = optimize.brentq(f, *bracket, xtol=1e-12)
    h = 1e-4 * abs(x)
    return x, error * 2 * h / abs(f(x + h) - f(x - h))


def shape(name, carryover, n):
    design = DESIGNS[name]
    g, p, t = len(design), len(design[0]), max(map(max, design))
    def df(v):
        return g * v[289] * (p - 1) - (p - 1) - (t - 1) * (2 if carryover else 1)
    assert df({289: n}) == error_df(design, carryover, n) or name == 'washout', name
    return {285: g, 286: p, 288: t, 289: n}, df, t


def overall(name, means, sd, n, unknown=1, carryover=False, log=False, bracket=None, power=0.8,
            alpha=0.05):
    sizes, df, t = shape(name, carryover, n)
    scaled = np.log(means) if log else means
    kind = 155 if log else 212
    values = {0: alpha, 1: power, 254: distance(DESIGNS[name], carryover, scaled), kind: sd, **sizes}
    def f(v):
        lam = v[289] * v[254] / v[kind] ** 2
        return stats.ncf.sf(stats.f.isf(v[0], t - 1, df(v)), t - 1, df(v), lam)
    exact, tolerance = solve(f, values, unknown, bracket, F_POWER)
    add(241 if log else 240, 2, values, unknown, exact, tolerance,
        checks=(17,) if carryover else (), note=f'{name}, means {list(means)}')


def combination(name, weights, truth, sd, n, tails=2, left=False, limits=None, unknown=1,
                carryover=False, log=False, bracket=None, power=0.8, error=T_POWER):
    sizes, df, _ = shape(name, carryover, n)
    kind, sd_kind, low, high = (290, 155, 29, 30) if log else (247, 212, 6, 7)
    values = {0: 0.05, 1: power, kind: truth, sd_kind: sd,
              287: variance(DESIGNS[name], carryover, weights), **sizes}
    if limits:
        values.update({low: limits[0], high: limits[1]})
    scale = math.log if log else float
    def f(v):
        se = v[sd_kind] * math.sqrt(v[287] / v[289])
        x = scale(v[kind])
        if tails == 3:
            return tost_power(v[0], (x - scale(v[low])) / se, (scale(v[high]) - x) / se, df(v))
        return t_power(v[0], tails, left, x / se, df(v))
    exact, tolerance = solve(f, values, unknown, bracket, error)
    add(241 if log else 240, tails, values, unknown, exact, tolerance, left=-1 if left else 0,
        checks=(14, 17) if carryover else (14,), note=f'{name}, weights {list(weights)}')


M3, M4 = (1, 1.3, 1.8), (1, 1.2, 1.1, 1.6)
overall('AB/BA', (1, 1.5), 0.7, 10)
overall('Williams 3', M3, 1, 5)
overall('Williams 3', M3, 1, 5, carryover=True)
overall('Williams 4', M4, 0.6, 6)
overall('Williams 4', M4, 0.6, 6, carryover=True)
overall('Balaam', (1, 1.8), 0.8, 8)
overall('Balaam', (1, 1.8), 0.8, 12, carryover=True)
overall('ABB/BAA', (1, 1.5), 0.7, 8, carryover=True)
overall('Latin square 10', [1 + 0.05 * i for i in range(10)], 0.5, 4)
overall('Williams 10', [1 + 0.05 * i for i in range(10)], 0.5, 4, carryover=True)
overall('Williams 4', M4, 0.6, 6, 289, bracket=(2, 1e4))
overall('Williams 3', M3, 1, 6, 289, carryover=True, bracket=(2, 1e4), power=0.9)
overall('Williams 4', M4, 0.6, 6, 254, bracket=(1e-3, 50))
overall('Williams 4', M4, 0.6, 6, 212, bracket=(1e-2, 5))
overall('Williams 3', (1, 1.2, 1.5), 0.4, 5, log=True)
overall('Williams 4', (1, 1.1, 1.2, 1.4), 0.3, 5, log=True, carryover=True)
overall('Williams 3', (1, 1.2, 1.5), 0.4, 5, 289, log=True, bracket=(2, 1e4))

combination('AB/BA', (-1, 1), 0.5, 0.7, 16)
combination('AB/BA', (-1, 1), 0.5, 0.7, 16, tails=1)
combination('AB/BA', (-1, 1), -0.5, 0.7, 16, tails=1, left=True)
combination('Williams 3', (-1, 0.5, 0.5), 0.5, 1, 8)
combination('Williams 3', (-1, 0, 1), 0.6, 1, 8, carryover=True)
combination('Williams 4', (-1, 0, 0, 1), 0.5, 0.8, 12, tails=1)
combination('Williams 4', (-1, 1, 0, 0), 0.5, 0.8, 14, carryover=True)
combination('Balaam', (-1, 1), 0.7, 0.8, 20)
combination('Balaam', (-1, 1), 0.7, 0.8, 40, carryover=True)
combination('ABB/BAA', (-1, 1), 0.4, 0.6, 20, carryover=True)
combination('ABA/BAB', (-1, 1), 0.4, 0.6, 20)
combination('washout', (-1, 1), 0.4, 0.6, 20)
combination('Williams 10', [-1] + [0] * 8 + [1], 0.4, 0.5, 5, carryover=True)
combination('Williams 4', (-1, 0, 0, 1), 0.5, 0.8, 12, unknown=289, bracket=(2, 1e4))
combination('Williams 3', (-1, 0, 1), 0.6, 1, 8, unknown=289, bracket=(2, 1e4), power=0.9,
            carryover=True)
combination('Williams 4', (-1, 0, 0, 1), 0.5, 0.8, 12, unknown=247, bracket=(1e-3, 5))
combination('Williams 4', (-1, 0, 0, 1), 0.5, 0.8, 12, unknown=287, bracket=(1e-3, 20))
combination('Williams 4', (-1, 0, 0, 1), 0.03, 0.5, 20, tails=3, limits=(-0.3, 0.3))
combination('Williams 3', (-1, 0, 1), 0, 0.5, 20, tails=3, limits=(-0.35, 0.35), unknown=289,
            bracket=(5, 1e4))
combination('AB/BA', (-1, 1), 1.4, 0.35, 12, log=True)
combination('Williams 3', (-1, 0, 1), 0.75, 0.35, 9, log=True, tails=1, left=True)
combination('Williams 3', (-1, 0, 1), 1.3, 0.35, 9, log=True, unknown=290, bracket=(1.01, 5))
combination('Williams 3', (-1, 0, 1), 0.8, 0.35, 9, log=True, tails=1, left=True, unknown=290,
            bracket=(0.1, 0.99))
combination('Williams 3', (-1, 0, 1), 1.3, 0.35, 9, log=True, tails=1, unknown=289,
            bracket=(2, 1e4))
combination('AB/BA', (-1, 1), 0.95, 0.25, 14, log=True, tails=3, limits=(0.8, 1.25))
combination('Williams 4', (-1, 0, 0, 1), 1.05, 0.3, 16, log=True, tails=3, limits=(0.8, 1.25))
combination('Williams 4', (-1, 0, 0, 1), 1.05, 0.3, 16, log=True, tails=3, limits=(0.8, 1.25),
            unknown=289, bracket=(5, 1e4), carryover=True)

with open('checks/data/validation/crossover.tsv', 'w') as out:
    out.write('# Written by checks/reference/crossover.py. General crossover designs, in this '
              'order:\n')
    for note in NOTES:
        out.write(f'# - {note}\n')
    out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
    for row in ROWS:
        out.write('\t'.join(map(str, row)) + '\n')
print(len(ROWS), 'cases')


# What checks/tests/crossover_check.cpp holds the grids against.
def show(name, weights, means):
    for carryover in (False, True):
        print(name, 'with carryover' if carryover else '',
              variance(DESIGNS[name], carryover, weights),
              distance(DESIGNS[name], carryover, means))


show('AB/BA', (-1, 1), (1, 1.5))
show('Balaam', (-1, 1), (1, 1.5))
show('ABB/BAA', (-1, 1), (1, 1.5))
show('ABA/BAB', (-1, 1), (1, 1.5))
show('Williams 3', (-1, 0.5, 0.5), M3)
show('Williams 4', (-1, 0, 0, 1), M4)
show('washout', (-1, 1), (1, 1.5))
show('Williams 10', [-1] + [0] * 8 + [1], [1 + 0.05 * i for i in range(10)])
