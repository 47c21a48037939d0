#!/usr/bin/env python3
"""Reference values for the life-table test of Mantel and Haenszel, written to
checks/data/validation:

  lifetable.tsv            expectations over the intervals in double precision: survival by scipy's
                           distributions, the events of each interval by its adaptive quadrature
  lifetable_simulated.tsv  powers of the test itself in simulated studies (--simulate)

In an interval of length h from t, patients leave at constant hazards: for the event at that which
leaves S(t + h)/S(t). Followed for v or longer are F(v) of them: those who enter that time before the
end of the study. At risk at the start are A F(t); A h1 times the integral of exp(-(h1 + h2) u) F(t + u)
have the event; A' F(t + h) are at risk at the next start; the others withdraw, and count as a half.

A tolerance is how far the unknown moves when the power is off by what docs/accuracy.md says of the
normal quantile; for gamma and lognormal survival the distribution function adds its own error.

The simulations draw entry, survival and loss of each patient, form the table of intervals, cut at the
end of the study, and count how often the statistic with its hypergeometric variance rejects. The
equation has the variance of the statistic for both hypotheses, and the power of a normal statistic:
their tolerance is four standard errors and 1/4 over the root of the expected events, the order of the
first term that is left out (cf. checks/reference/cox.py).

Needs Python 3 with numpy and scipy; run from the repository's root. --simulate takes minutes.
"""
import math
import sys

import numpy as np
from scipy import integrate, optimize, stats

LEVEL, POWER, N1, N2 = 0, 1, 4, 37
ACCRUAL_RATE, ACCRUAL, STUDY, LENGTH, INTERVALS = 33, 10, 11, 12, 316
EXPONENTIAL, WEIBULL, GAMMA, LOGNORMAL, PIECEWISE = 390, 391, 392, 393, 394
HAZARD, INCIDENCE, MEDIAN = 'hazard', 'incidence', 'median'
SECOND = {HAZARD: (73, 65, 74), INCIDENCE: (79, 68, 80), MEDIAN: (95, None, 96)}
FIRST = {HAZARD: 9, INCIDENCE: 53, MEDIAN: 94}
GROUP = {HAZARD: 5, INCIDENCE: 7, MEDIAN: 10}
CHECKS = {HAZARD: '', INCIDENCE: '3', MEDIAN: '12'}
LOSS = {HAZARD: (13, (45, 46, 49), 8), INCIDENCE: (119, (120, 121, 122), 30)}
LOSS[MEDIAN] = LOSS[HAZARD]
SIZE2 = (37, 38, 5)
SEED = 20261123
REPLICATES = 100_000
ROWS = []


def pair(v, first, seconds):
    """Both values, and the option of the group in which the second one is entered."""
    for option, kind in enumerate(seconds):
        if kind in v:
            a = v[first]
            return a, (v[kind], a + v[kind], a * v[kind])[option], option
    raise KeyError(seconds)


def rate(form, x):
    return {HAZARD: x, MEDIAN: math.log(2) / x, INCIDENCE: -math.log1p(-x) if form == INCIDENCE else 0}[form]


def survival(menu, form, v, x):
    if menu == EXPONENTIAL:
        h = rate(form, x)
        return lambda t: np.exp(-h * t)
    if menu == WEIBULL:
        return stats.weibull_min(v[329], scale=x / math.log(2) ** (1 / v[329])).sf
    if menu == GAMMA:
        return stats.gamma(v[329], scale=x / stats.gamma.ppf(.5, v[329])).sf
    return stats.lognorm(v[27], scale=x).sf


def groups(menu, form, v):
    """Bounds; for each group its size, cumulated hazards of events and of losses by interval."""
    n1, n2, size_option = pair(v, N1, SIZE2)
    end = v[STUDY]
    if menu == PIECEWISE:
        table = v[INTERVALS]
        bounds = [r[0] for r in table if r[0] < end] + [end]
        h = np.diff(bounds)
        m = len(h)
        result = [(n, h * [r[1 + g] for r in table[:m]], h * [r[3 + g] for r in table[:m]])
                  for g, n in enumerate((n1, n2))]
        return bounds, result, {2: size_option}
    x1, x2, option = pair(v, FIRST[form], SECOND[form])
    loss1, losses, loss_group = LOSS[form]
    l1, l2, loss_option = pair(v, loss1, losses)
    length = v[LENGTH]
    m = math.ceil(end / length - 1e-9)
    bounds = [j * length for j in range(m)] + [end]
    result = []
    for n, x, loss in ((n1, x1, l1), (n2, x2, l2)):
        s = survival(menu, form, v, x)(np.array(bounds))
        result.append((n, -np.log(s[1:] / s[:-1]),
                       np.diff(bounds) * (rate(INCIDENCE, loss) if form == INCIDENCE else loss)))
    return bounds, result, {GROUP[form]: min(option, 1) if form == MEDIAN else option,
                            loss_group: loss_option, 2: size_option}


def follow_up(v):
    g, r, end = v[ACCRUAL_RATE], v[ACCRUAL], v[STUDY]
    if r == 0:
        return lambda t: 1.0
    def entered(s):
        s = min(max(s, 0), r)
        return s / r if g == 0 else math.expm1(-g * s) / math.expm1(-g * r)
    return lambda t: entered(end - t)


def sums(menu, form, v):
    bounds, data, _ = groups(menu, form, v)
    f = follow_up(v)
    corner = v[STUDY] - v[ACCRUAL]
    at_risk, events = [], []
    for n, a, b in data:
        chance, risk_j, d_j = 1.0, [], []
        for j in range(len(a)):
            t, h = bounds[j], bounds[j + 1] - bounds[j]
            c = a[j] + b[j]
            points = [corner] if t < corner < t + h else None
            d = chance * a[j] / h * integrate.quad(lambda s: math.exp(-c * (s - t) / h) * f(s), t, t + h,
                                                   points=points, epsabs=1e-13, epsrel=1e-12)[0]
            after = chance * math.exp(-c)
            w = chance * f(t) - d - after * f(t + h)
            risk_j.append(n * (chance * f(t) - w / 2))
            d_j.append(n * d)
            chance = after
        at_risk.append(np.array(risk_j))
        events.append(np.array(d_j))
    n = at_risk[0] + at_risk[1]
    d = events[0] + events[1]
    u = (events[0] - d * at_risk[0] / n).sum()
    p = d / n
    return u, (at_risk[0] * at_risk[1] / n * p * (1 - p)).sum(), d.sum()


def power(menu, form, tails, left, v):
    u, variance, _ = sums(menu, form, v)
    z = (u if form == MEDIAN else -u) / math.sqrt(variance)
    if tails == 2:
        c = stats.norm.ppf(1 - v[LEVEL] / 2)
        return stats.norm.cdf(abs(z) - c) + stats.norm.sf(abs(z) + c)
    return stats.norm.cdf((-z if left else z) - stats.norm.ppf(1 - v[LEVEL]))


def text(kind, x):
    if kind == INTERVALS:
        return ' '.join(':'.join(f'{y:g}' for y in r) for r in x)
    return f'{x:.10g}'


def row(menu, form, tails, left, v, unknown, exact, tolerance):
    options = groups(menu, form, {**v, unknown: exact})[2]
    given = ';'.join(f'{k}={text(k, x)}' for k, x in v.items() if k != unknown)
    return [f'menu {menu}', 2, tails, -1 if left else 0,
            CHECKS[form] if menu == EXPONENTIAL else '',
            ','.join(f'{g}={o}' for g, o in sorted(options.items())), given, unknown, f'{exact:.9g}',
            f'{tolerance:.3g}']


def add(menu, form, tails, v, unknown=POWER, bracket=None, left=False):
    error = 4.5e-4 * 0.4 + 1e-5
    if menu in (GAMMA, LOGNORMAL):
        error += 2e-4
    if unknown == POWER:
        exact, tolerance = power(menu, form, tails, left, v), error
    else:
        def root(target):
            return optimize.brentq(
                lambda x: power(menu, form, tails, left, {**v, unknown: x}) - target, *bracket,
                xtol=1e-10)
        exact = root(v[POWER])
        tolerance = max(abs(root(v[POWER] + s * error) - exact) for s in (-1, 1)) + 2e-5
    ROWS.append(row(menu, form, tails, left, v, unknown, exact, tolerance))


STUDY_PLAN = {ACCRUAL_RATE: 0, ACCRUAL: 2, STUDY: 5, LENGTH: .5}
TABLE = ((0, .2, .1, .05, 0), (1, .4, .25, .1, .1), (3, .3, .3, 0, .05))


def exponential():
    hazards = {LEVEL: .05, 9: .5, 73: .8, 13: .1, 45: .2, **STUDY_PLAN, N1: 60, N2: 80}
    add(EXPONENTIAL, HAZARD, 1, hazards)
    add(EXPONENTIAL, HAZARD, 2, hazards)
    add(EXPONENTIAL, HAZARD, 1, {**hazards, 73: .3}, left=True)
    add(EXPONENTIAL, HAZARD, 2, {**hazards, 73: .3})
    for change in ({ACCRUAL_RATE: 1}, {ACCRUAL_RATE: -1}, {ACCRUAL: 0}, {ACCRUAL: 5}, {LENGTH: 3},
                   {LENGTH: 10}, {LENGTH: .05}, {LENGTH: .7, ACCRUAL: 1.3}, {13: 0, 45: 0},
                   {9: 5, 73: 8}, {ACCRUAL_RATE: 1, ACCRUAL: 8, STUDY: 6}):
        add(EXPONENTIAL, HAZARD, 2, {**hazards, **change})
    add(EXPONENTIAL, HAZARD, 2, {LEVEL: .01, 9: .1, 65: .1, 13: .02, 46: .03, ACCRUAL_RATE: .3,
                                 ACCRUAL: 3, STUDY: 8, LENGTH: 1, N1: 150, 38: 50})
    add(EXPONENTIAL, HAZARD, 1, {LEVEL: .05, 9: .4, 74: .6, 13: .1, 49: 1.5, **STUDY_PLAN, N1: 70,
                                 5: 1.5}, left=True)
    add(EXPONENTIAL, INCIDENCE, 2, {LEVEL: .05, 53: .3, 79: .5, 119: .05, 120: .1, **STUDY_PLAN,
                                    N1: 60, N2: 60})
    add(EXPONENTIAL, INCIDENCE, 1, {LEVEL: .05, 53: .3, 80: .6, 119: .05, 121: .02, **STUDY_PLAN,
                                    N1: 90, 5: 1}, left=True)
    add(EXPONENTIAL, MEDIAN, 1, {LEVEL: .05, 94: 1.2, 95: 2, 13: .1, 45: .1, **STUDY_PLAN, N1: 60,
                                 N2: 60})
    add(EXPONENTIAL, MEDIAN, 2, {LEVEL: .05, 94: 3, 96: .6, 13: .05, 49: 2, **STUDY_PLAN, N1: 80,
                                 38: 20})
    plan = {LEVEL: .05, POWER: .85, 9: .3, 74: 1.7, 13: .05, 49: 1, ACCRUAL_RATE: 0, ACCRUAL: 2,
            STUDY: 6, LENGTH: .5, N1: 70, 5: 1}
    for unknown, bracket in ((N1, (3, 5000)), (74, (1.001, 20)), (9, (1e-3, 1)), (LEVEL, (1e-5, .6)),
                             (STUDY, (2.1, 60)), (5, (.05, 50))):
        change = {} if unknown == N1 else {N1: 100}
        add(EXPONENTIAL, HAZARD, 2, {**plan, **change}, unknown, bracket)


def models():
    for menu, kind, shapes in ((WEIBULL, 329, (.6, 1, 2.5)), (GAMMA, 329, (.5, 1, 4)),
                               (LOGNORMAL, 27, (.4, 1, 2))):
        for k, shape in enumerate(shapes):
            base = {LEVEL: .05, 94: 1.5, 95: 2.4, kind: shape, 13: .05, 45: .1, **STUDY_PLAN, N1: 70,
                    N2: 60}
            add(menu, MEDIAN, 1, base)
            add(menu, MEDIAN, 2, {**base, LENGTH: .25 + k, ACCRUAL_RATE: k - 1})
            add(menu, MEDIAN, 1, {**base, 95: 1}, left=True)
        ratio = {LEVEL: .05, POWER: .8, 94: 2, 96: 1.5, kind: shapes[2], 13: .1, 46: 0, **STUDY_PLAN,
                 N1: 60, 5: 1}
        add(menu, MEDIAN, 2, ratio, N1, (3, 9000))
        add(menu, MEDIAN, 2, {**ratio, N1: 90}, 96, (1.001, 9))


def piecewise():
    base = {LEVEL: .05, INTERVALS: TABLE, ACCRUAL_RATE: 0, ACCRUAL: 2, STUDY: 5, N1: 150, N2: 120}
    add(PIECEWISE, HAZARD, 2, base)
    add(PIECEWISE, HAZARD, 1, base, left=True)
    swapped = tuple((r[0], r[2], r[1], r[4], r[3]) for r in TABLE)
    add(PIECEWISE, HAZARD, 1, {**base, INTERVALS: swapped})
    add(PIECEWISE, HAZARD, 2, {**base, STUDY: 2.5, ACCRUAL: 1})
    add(PIECEWISE, HAZARD, 2, {LEVEL: .05, POWER: .9, INTERVALS: TABLE, ACCRUAL_RATE: .5, ACCRUAL: 2,
                               STUDY: 5, N1: 150, 5: 1.5}, N1, (3, 9000))


# --- Simulation ---------------------------------------------------------------------------------

def draw(rng, menu, form, v, g, shape):
    """Survival times of a group."""
    if menu == PIECEWISE:
        table = v[INTERVALS]
        target = rng.exponential(size=shape)
        return piecewise_time([r[0] for r in table], [r[1 + g] for r in table], target)
    x = pair(v, FIRST[form], SECOND[form])[g]
    if menu == EXPONENTIAL:
        return rng.exponential(1 / rate(form, x), shape)
    if menu == WEIBULL:
        return x / math.log(2) ** (1 / v[329]) * rng.weibull(v[329], shape)
    if menu == GAMMA:
        return rng.gamma(v[329], x / stats.gamma.ppf(.5, v[329]), shape)
    return rng.lognormal(math.log(x), v[27], shape)


def piecewise_time(starts, rates, target):
    cumulated = np.concatenate(([0], np.cumsum(np.diff(starts) * rates[:-1])))
    j = np.searchsorted(cumulated, target, side='right') - 1
    with np.errstate(divide='ignore', invalid='ignore'):
        time = np.array(starts)[j] + (target - cumulated[j]) / np.array(rates)[j]
    return np.where(np.array(rates)[j] > 0, time, np.inf)


def loss_time(rng, menu, form, v, g, shape):
    target = rng.exponential(size=shape)
    if menu == PIECEWISE:
        table = v[INTERVALS]
        return piecewise_time([r[0] for r in table], [r[3 + g] for r in table], target)
    first, seconds, _ = LOSS[form]
    loss = pair(v, first, seconds)[g]
    loss = rate(INCIDENCE, loss) if form == INCIDENCE else loss
    return target / loss if loss > 0 else np.full(shape, np.inf)


def counts(index, flag, m):
    """Per study and interval."""
    k = len(index)
    flat = (np.arange(k)[:, None] * m + index)[flag]
    return np.bincount(flat, minlength=k * m).reshape(k, m)


def simulate(menu, form, tails, left, v):
    rng = np.random.default_rng(SEED + menu)
    bounds, data, _ = groups(menu, form, v)
    m = len(bounds) - 1
    batch, rejected = 2000, 0
    c = stats.norm.ppf(1 - v[LEVEL] / tails)
    for _ in range(REPLICATES // batch):
        at, d, w = [], [], []
        for g, (n, _, _) in enumerate(data):
            shape = (batch, int(n))
            time = draw(rng, menu, form, v, g, shape)
            lost = loss_time(rng, menu, form, v, g, shape)
            q = rng.random(shape)
            r, k = v[ACCRUAL], v[ACCRUAL_RATE]
            entry = q * r if k == 0 else -np.log1p(q * math.expm1(-k * r)) / k
            censored = np.minimum(lost, v[STUDY] - entry)
            event = time <= censored
            index = np.clip(np.searchsorted(bounds, np.minimum(time, censored), side='right') - 1, 0,
                            m - 1)
            d.append(counts(index, event, m))
            w.append(counts(index, ~event, m))
            gone = np.cumsum(d[-1] + w[-1], 1)
            at.append(n - np.concatenate((np.zeros((batch, 1)), gone[:, :-1]), 1))
        r1, r2 = at[0] - w[0] / 2, at[1] - w[1] / 2
        n, total = r1 + r2, d[0] + d[1]
        with np.errstate(divide='ignore', invalid='ignore'):
            u = np.where(n > 0, d[0] - total * r1 / n, 0).sum(1)
            variance = np.where(n > 1, total / n * (n - total) / (n - 1) * r1 / n * r2, 0).sum(1)
            z = np.where(variance > 0, u / np.sqrt(variance), 0)
        if form != MEDIAN:
            z = -z
        rejected += ((abs(z) if tails == 2 else -z if left else z) > c).sum()
    share = rejected / REPLICATES
    se = math.sqrt(share * (1 - share) / REPLICATES)
    events = sums(menu, form, v)[2]
    print(menu, tails, left, v, f'simulated {share:.4f}, equation '
          f'{power(menu, form, tails, left, v):.4f}, events {events:.1f}', flush=True)
    return row(menu, form, tails, left, v, POWER, share, 4 * se + .25 / math.sqrt(events))


def simulated():
    plan = {**STUDY_PLAN, N1: 100, N2: 100}
    hazards = {LEVEL: .05, 9: .4, 73: .6, 13: .1, 45: .1, **plan}
    rows = [simulate(EXPONENTIAL, HAZARD, 2, False, hazards),
            simulate(EXPONENTIAL, HAZARD, 2, False, {**hazards, 73: .4}),
            simulate(EXPONENTIAL, HAZARD, 2, False, {**hazards, N1: 60, N2: 140, LENGTH: 1}),
            simulate(EXPONENTIAL, HAZARD, 1, True, {**hazards, 73: .28, ACCRUAL_RATE: 1}),
            simulate(EXPONENTIAL, MEDIAN, 2, False, {LEVEL: .05, 94: 1.5, 96: 1.5, 13: .05, 49: 2,
                                                     **plan, LENGTH: .25})]
    for menu, kind, shape in ((WEIBULL, 329, 2), (WEIBULL, 329, .7), (GAMMA, 329, 2.5),
                              (LOGNORMAL, 27, .8)):
        rows.append(simulate(menu, MEDIAN, 2, False, {
            LEVEL: .05, 94: 1.5, 95: 2 if shape != .7 else 2.4, kind: shape, 13: .05, 45: .05, **plan}))
    base = {LEVEL: .05, INTERVALS: TABLE, ACCRUAL_RATE: 0, ACCRUAL: 2, STUDY: 5, N1: 120, N2: 120}
    rows.append(simulate(PIECEWISE, HAZARD, 1, True, base))
    rows.append(simulate(PIECEWISE, HAZARD, 2, False, {**base, N1: 150, N2: 100, ACCRUAL_RATE: -1}))
    return rows


def write(name, head, rows):
    with open(f'checks/data/validation/{name}.tsv', 'w') as f:
        f.write(head + '\n')
        f.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
        f.writelines('\t'.join(map(str, r)) + '\n' for r in rows)


if __name__ == '__main__':
    if '--simulate' in sys.argv:
        write('lifetable_simulated', '# Simulated by checks/reference/lifetable.py --simulate (numpy, '
              f'{REPLICATES} replicates, seed {SEED} plus menu number).', simulated())
    else:
        exponential()
        models()
        piecewise()
        write('lifetable', '# Exact values computed by checks/reference/lifetable.py (scipy).', ROWS)
