#!/usr/bin/env python3
"""Reference values for the tests of Cox regression, written to checks/data/validation:

  cox.tsv            the equations of Hsieh and Lavori (2000) and of Schoenfeld (1983) in double
                     precision, with the normal distribution of scipy
  cox_published.tsv  their examples, as printed
  cox_simulated.tsv  powers of Wald's test itself in simulated studies (--simulate)

A tolerance is how far the unknown moves when the power is off by what docs/accuracy.md says of the
normal quantile.

The simulations draw the covariate and exponential survival times, end each study at the time that
the survival entered belongs to, fit the model by Newton's method and count the tests that reject.
Their tolerance is four of their standard errors and the first term that a normal approximation
leaves out, of the order of one over the root of the expected events: 1/4 of it.

Needs Python 3 with numpy and scipy; run from the repository's root. --simulate takes minutes.
"""
import math
import sys

import numpy as np
from scipy import optimize, stats

CONTINUOUS, BINARY = 470, 471
EFFECT_GROUP = 57
COEFFICIENT, RATIO, SD, SURVIVAL, Q, R, EVENTS, SIZE = 204, 264, 213, 353, 259, 25, 99, 14
SEED = 20261122
REPLICATES = 100_000
ROWS = {'cox': [], 'cox_published': []}


def z_power(alpha, tails, left, z):
    if tails == 2:
        c = stats.norm.ppf(1 - alpha / 2)
        return stats.norm.cdf(abs(z) - c) + stats.norm.sf(abs(z) + c)
    return stats.norm.cdf((-z if left else z) - stats.norm.ppf(1 - alpha))


def power(menu, tails, left, v):
    beta = v[COEFFICIENT] if COEFFICIENT in v else math.log(v[RATIO])
    if EVENTS in v:
        events = v[EVENTS]
    elif menu == CONTINUOUS:
        events = v[SIZE] * (1 - v[SURVIVAL])
    else:
        events = v[SIZE] * ((1 - v[Q]) * (1 - v[SURVIVAL]) +
                            v[Q] * (1 - v[SURVIVAL] ** math.exp(beta)))
    variance = v[SD] ** 2 if menu == CONTINUOUS else v[Q] * (1 - v[Q])
    z = beta * math.sqrt(events * variance * (1 - v[R] ** 2))
    return z_power(v[0], tails, left, z)


def row(menu, tails, left, v, unknown, exact, tolerance):
    checks = '4' if EVENTS in v or unknown == EVENTS else ''
    option = 0 if COEFFICIENT in v or unknown == COEFFICIENT else 1
    given = ';'.join(f'{k}={x:.10g}' for k, x in v.items() if k != unknown)
    return [f'menu {menu}', 1, tails, -1 if left else 0, checks, f'{EFFECT_GROUP}={option}', given,
            unknown, f'{exact:.9g}', f'{tolerance:.3g}']


def add(menu, tails, v, unknown=1, bracket=None, left=False, printed=None):
    """The power v[1] is not needed when it is the unknown."""
    error = 4.5e-4 * 0.4 + 1e-5  # of the quantile, times the normal density
    if unknown == 1:
        exact, tolerance = power(menu, tails, left, v), error
    else:
        def root(target):
            return optimize.brentq(lambda x: power(menu, tails, left, {**v, unknown: x}) - target,
                                   *bracket, xtol=1e-13)
        exact = root(v[1])
        tolerance = max(abs(root(v[1] + s * error) - exact) for s in (-1, 1)) + 2e-5
    table = 'cox'
    if printed is not None:
        assert abs(exact - printed) < 1, (exact, printed)
        table, exact, tolerance = 'cox_published', printed, 1
    ROWS[table].append(row(menu, tails, left, v, unknown, exact, tolerance))


def continuous():
    for tails in (1, 2):
        for left in ((False, True) if tails == 1 else (False,)):
            s = -1 if left else 1
            add(CONTINUOUS, tails, {0: .05, COEFFICIENT: s * .4, SD: .8, R: .3, EVENTS: 90}, left=left)
            add(CONTINUOUS, tails, {0: .01, RATIO: math.exp(s * .25), SD: 2, R: 0, SURVIVAL: .7,
                                    SIZE: 150}, left=left)
    add(CONTINUOUS, 2, {0: .05, COEFFICIENT: -.3, SD: 1.5, R: .5, SURVIVAL: .2, SIZE: 60})
    add(CONTINUOUS, 2, {0: .05, COEFFICIENT: 0, SD: 1, R: 0, EVENTS: 50})
    base = {0: .05, 1: .8, RATIO: 1.4, SD: .7, R: .4, SURVIVAL: .6, SIZE: 400}
    for unknown, bracket in ((SIZE, (4, 9e4)), (RATIO, (1.0001, 99)), (SD, (1e-4, 50)),
                             (R, (0, .99)), (SURVIVAL, (1e-4, .999)), (0, (1e-5, .5))):
        add(CONTINUOUS, 2, {**base, **({R: 0, SIZE: 900} if unknown == R else {})}, unknown, bracket)
    left = {0: .025, 1: .9, COEFFICIENT: -.5, SD: 1, R: .2, EVENTS: 60}
    for unknown, bracket in ((EVENTS, (3, 9e4)), (COEFFICIENT, (-20, -1e-4))):
        add(CONTINUOUS, 1, left, unknown, bracket, left=True)


def binary():
    for tails in (1, 2):
        for left in ((False, True) if tails == 1 else (False,)):
            s = -1 if left else 1
            add(BINARY, tails, {0: .05, RATIO: math.exp(s * .6), Q: .4, R: .2, EVENTS: 120}, left=left)
            add(BINARY, tails, {0: .01, COEFFICIENT: s * .8, Q: .7, R: 0, SURVIVAL: .55, SIZE: 140},
                left=left)
    add(BINARY, 2, {0: .05, RATIO: .5, Q: .5, R: 0, SURVIVAL: .3, SIZE: 120})
    add(BINARY, 2, {0: .05, RATIO: 1, Q: .3, R: .1, SURVIVAL: .5, SIZE: 300})
    add(BINARY, 2, {0: .1, COEFFICIENT: 2.5, Q: .05, R: 0, SURVIVAL: .999, SIZE: 2000})
    base = {0: .05, 1: .85, RATIO: 1.8, Q: .6, R: .3, SURVIVAL: .5, SIZE: 250}
    for unknown, bracket in ((SIZE, (4, 9e4)), (RATIO, (1.0001, 99)), (SURVIVAL, (1e-4, .999)),
                             (0, (1e-5, .5))):
        add(BINARY, 2, base, unknown, bracket)
    add(BINARY, 2, {**base, SIZE: 280}, Q, (.5, .999))
    add(BINARY, 2, {**base, SIZE: 300}, R, (0, .999))
    left = {0: .025, 1: .9, COEFFICIENT: -.7, Q: .4, R: 0, SURVIVAL: .25, SIZE: 150}
    for unknown, bracket in ((SIZE, (4, 9e4)), (COEFFICIENT, (-3, -1e-4))):
        add(BINARY, 1, left, unknown, bracket, left=True)
    events = {0: .05, 1: .8, RATIO: 1.7, Q: .6, R: .1, EVENTS: 150}
    for unknown, bracket in ((EVENTS, (3, 9e4)), (Q, (.5, .999)), (RATIO, (1.001, 90))):
        add(BINARY, 2, events, unknown, bracket)


def published():
    # Hsieh and Lavori (2000), section 3: blood urea nitrogen in multiple myeloma; 64 deaths.
    add(CONTINUOUS, 1, {0: .05, 1: .8, COEFFICIENT: 1, SD: .3126, R: 0}, EVENTS, (3, 1e4), printed=64)
    # Collett (2003), Modelling Survival Data in Medical Research, example 10.1: chronic active
    # hepatitis, a hazard ratio of 0.57 by the formula of Schoenfeld (1983); 133 deaths.
    add(BINARY, 2, {0: .05, 1: .9, RATIO: .57, Q: .5, R: 0}, EVENTS, (3, 1e4), printed=133)


# --- Simulation ---------------------------------------------------------------------------------

def wald(x, time, event):
    """Wald's z of each study of a row, for one covariate without ties; Newton's method."""
    order = np.argsort(-time, axis=1)
    x = np.take_along_axis(x, order, 1)
    d = np.take_along_axis(event, order, 1)
    beta = np.zeros(len(x))
    for _ in range(12):
        w = np.exp(beta[:, None] * x)
        s0 = np.cumsum(w, 1)
        mean = np.cumsum(w * x, 1) / s0
        square = np.cumsum(w * x * x, 1) / s0
        score = (d * (x - mean)).sum(1)
        information = np.maximum((d * (square - mean ** 2)).sum(1), 1e-9)
        beta = np.clip(beta + np.clip(score / information, -1, 1), -8, 8)
    return beta * np.sqrt(information)


def simulated():
    rng = np.random.default_rng(SEED)
    rows = []
    plans = [(CONTINUOUS, 1, False, {0: .05, COEFFICIENT: .3, SD: 1, R: 0, SURVIVAL: .6, SIZE: 200}),
             (CONTINUOUS, 2, False, {0: .05, RATIO: .8, SD: 1, R: 0, SURVIVAL: .4, SIZE: 250}),
             (BINARY, 2, False, {0: .05, RATIO: 1.5, Q: .5, R: 0, SURVIVAL: .4, SIZE: 250}),
             (BINARY, 1, True, {0: .05, RATIO: .6, Q: .4, R: 0, SURVIVAL: .3, SIZE: 150})]
    for menu, tails, left, v in plans:
        n = v[SIZE]
        beta = v[COEFFICIENT] if COEFFICIENT in v else math.log(v[RATIO])
        end = -math.log(v[SURVIVAL])  # with hazard 1 at the covariate's 0
        rejected = 0
        for _ in range(REPLICATES // 2000):
            shape = (2000, n)
            if menu == CONTINUOUS:
                x = rng.normal(0, v[SD], shape)
            else:
                x = np.tile((np.arange(n) < round(n * v[Q])).astype(float), (2000, 1))
            time = rng.exponential(size=shape) * np.exp(-beta * x)
            z = wald(x, np.minimum(time, end) + 1e-12 * rng.random(shape), time < end)
            c = stats.norm.ppf(1 - v[0] / tails)
            rejected += ((abs(z) if tails == 2 else -z if left else z) > c).sum()
        share = rejected / REPLICATES
        events = n * (1 - v[SURVIVAL])
        se = math.sqrt(share * (1 - share) / REPLICATES)
        print(menu, v, share, power(menu, tails, left, v), flush=True)
        rows.append(row(menu, tails, left, v, 1, share, 4 * se + .25 / math.sqrt(events)))
    return rows


def write(name, head, rows):
    with open(f'checks/data/validation/{name}.tsv', 'w') as f:
        f.write(head + '\n')
        f.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
        f.writelines('\t'.join(map(str, r)) + '\n' for r in rows)


if '--simulate' in sys.argv:
    write('cox_simulated', f'# Simulated by checks/reference/cox.py --simulate (numpy, {REPLICATES} '
          f'replicates, seed {SEED}).', simulated())
else:
    continuous()
    binary()
    published()
    write('cox', '# Exact values computed by checks/reference/cox.py (scipy).', ROWS['cox'])
    write('cox_published', '# Published examples; checks/reference/cox.py has their sources.',
          ROWS['cox_published'])
