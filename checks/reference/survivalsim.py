#!/usr/bin/env python3
"""Sizes and powers of simulated survival tests, written to checks/data/simulated/survival.tsv.

Independent of the program: entry, survival and loss of each patient are drawn with numpy, cut at the end of
the study, and judged by the statistics as checks/reference/survivalstat.py defines them, here for whole
blocks of studies at once (times do not tie). Each row is a rate of rejection: Unknown 0 under H0, to be
seen beside the nominal level, Unknown 1 under H1. The tolerance is 3.29 standard errors of the rate here;
that of the run that is compared comes to it.

Under H0 group 2 has the survival of group 1; of two one-sided tests it lies at the limit nearer to H1.
Tests of exponential survival compare the logarithms of the estimated hazards, or the hazards, by their
estimated standard errors; Cox's F is that of times for exponential survival, else that of the cumulated
hazards; life tables have the intervals of their list, or of their table.

--strata prints those of a stratified log-rank test.

Needs Python 3 with numpy and scipy; run from the repository's root. Takes minutes.
"""
import math
import os
import sys

import numpy as np
from scipy import stats

SEED = 20261123
REPLICATES = 200_000
BLOCK = 5_000
LEVEL, N1, N2 = 0, 4, 37
ROWS = []
NOTE = '''# What the sizes say: log-rank, Gehan and Peto keep 0.05 within 0.002 from 60 subjects a group on, with 40 and
# 120 in one tail 0.054; Cox-Mantel, whose variance is not that of the ranks, has 0.052 to 0.054; Cox's F on
# times 0.053 with 60 a group and 0.060 with 12, on cumulated hazards 0.048 and 0.043; the life table with
# intervals of a year and more 0.045; a hazard ratio of 1.3 under H0 of a log-rank test 0.046.
'''


def entries(rng, shape, v):
    g, a = v.get(33, 0), v[10]
    u = rng.random(shape)
    if 343 in v:
        return np.interp(u, [0] + [p for _, p in v[343]], [0] + [e for e, _ in v[343]])
    return u * a if g == 0 else -np.log1p(u * np.expm1(-g * a)) / g


def piecewise(rng, shape, starts, hazards):
    """Inversion of the cumulated hazard."""
    e = rng.exponential(size=shape)
    at = np.concatenate(([0], np.cumsum(np.diff(starts) * np.array(hazards[:-1]))))
    j = np.searchsorted(at, e, side='right') - 1
    h = np.array(hazards, float)[j]
    with np.errstate(divide='ignore', invalid='ignore'):
        return np.where(h > 0, np.array(starts, float)[j] + (e - at[j]) / h, np.inf)


def times(rng, shape, model, group, v):
    if model == 'exponential':
        return rng.exponential(size=shape) / group
    if model == 'weibull':
        return group * (rng.exponential(size=shape) / math.log(2)) ** (1 / v[329])
    if model == 'gamma':
        return group * rng.gamma(v[329], size=shape) / stats.gamma.ppf(0.5, v[329])
    if model == 'lognormal':
        return group * np.exp(v[27] * rng.standard_normal(shape))
    starts = [r[0] for r in v[316]]
    return piecewise(rng, shape, starts, [r[group] for r in v[316]])


def losses(rng, shape, model, group, v):
    if model == 'piecewise':
        return piecewise(rng, shape, [r[0] for r in v[316]], [r[2 + group] for r in v[316]])
    rate = v.get({1: 13, 2: 45}[group], 0)
    return rng.exponential(size=shape) / rate if rate > 0 else np.full(shape, np.inf)


def studies(rng, model, first, second, v):
    time, event, there = [], [], []
    for group, n, survival in ((1, v[N1], first), (2, v[N2], second)):
        shape = (BLOCK, n)
        entry = entries(rng, shape, v)
        t, lost = times(rng, shape, model, survival, v), losses(rng, shape, model, group, v)
        follow = v[11] - entry
        seen = np.minimum(np.minimum(t, lost), follow)
        time.append(np.where(follow > 0, seen, np.inf))  # not yet there: behind all others
        event.append((t <= lost) & (t < follow) & (follow > 0))
        there.append(follow > 0)
    second = np.concatenate([np.zeros((BLOCK, v[N1]), bool), np.ones((BLOCK, v[N2]), bool)], 1)
    return np.concatenate(time, 1), np.concatenate(event, 1), np.concatenate(there, 1), second


def ordered(time, event, there, second):
    order = np.argsort(time, 1)
    take = lambda x: np.take_along_axis(x, order, 1)
    event, there, second = take(event), take(there), take(second)
    risk = there[:, ::-1].cumsum(1)[:, ::-1]
    return event, there, second, np.maximum(risk, 1)


def permutation(scores, there, second):
    n2, n = (there & second).sum(1), there.sum(1)
    q = (scores ** 2 * there).sum(1)
    v = (n - n2) * n2 * q / (n * (n - 1))
    return (scores * (second & there)).sum(1), v


def score(method, data, v):
    time, event, there, second = data
    if method == 'lifetable':
        return life_table(data, v)
    e, th, s2, r = ordered(*data)
    if method == 'logrank':
        h = (e / r).cumsum(1)
        return permutation(e - h, th, s2)
    if method == 'gehan':
        before = e.cumsum(1)
        return permutation(-np.where(e, before - 1 - (r - 1), before), th, s2)
    if method == 'peto':
        s = np.cumprod(1 - e / r, 1)
        minus = np.concatenate((np.ones((len(s), 1)), s[:, :-1]), 1)
        return permutation(np.where(e, s + minus - 1, s - 1), th, s2)
    r2 = (th & s2)[:, ::-1].cumsum(1)[:, ::-1]
    p = r2 / r
    return (e * (s2 - p)).sum(1), (e * p * (1 - p)).sum(1)


def life_table(data, v):
    time, event, there, second = data
    if 316 in v:
        starts = [r[0] for r in v[316]]
    else:
        starts = [j * v[12] for j in range(math.ceil(v[11] / v[12] - 1e-9))]
    u = variance = 0
    at = [(there & (second == g)).sum(1).astype(float) for g in (False, True)]
    for j, start in enumerate(starts):
        end = starts[j + 1] if j + 1 < len(starts) else np.inf
        here = there & (time >= start) & (time < end)
        d = [(here & event & (second == g)).sum(1) for g in (False, True)]
        w = [(here & ~event & (second == g)).sum(1) for g in (False, True)]
        n1, n2 = at[0] - w[0] / 2, at[1] - w[1] / 2
        n, total = n1 + n2, d[0] + d[1]
        with np.errstate(divide='ignore', invalid='ignore'):
            u = u + np.where(n > 0, d[0] - total * n1 / n, 0)
            variance = variance + np.where(n > 1, total * (n - total) / (n - 1) * n1 * n2 / n ** 2, 0)
        at = [a - x - y for a, x, y in zip(at, d, w)]
    return -u, variance


def counts(data):
    time, event, there, second = data
    t = np.where(there, time, 0)
    e1, e2 = (event & ~second).sum(1), (event & second).sum(1)
    return e1, e2, (t * ~second).sum(1), (t * second).sum(1)


def rejects(z, tails, left, level):
    if tails == 2:
        return abs(z) > stats.norm.ppf(1 - level / 2)
    return (-z if left else z) > stats.norm.ppf(1 - level)


def decisions(method, data, tails, left, level, direction, null, limits, v):
    if method in ('f', 'fhazard'):
        if method == 'f':
            e1, e2, t1, t2 = counts(data)
        else:
            e, th, s2, r = ordered(*data)
            h = (e / r).cumsum(1) * th
            e1, e2, t1, t2 = (e & ~s2).sum(1), (e & s2).sum(1), (h * ~s2).sum(1), (h * s2).sum(1)
        with np.errstate(divide='ignore', invalid='ignore'):
            f = (t1 / e1) / (t2 / e2)
            below = stats.f.cdf(f, 2 * e1, 2 * e2)
        good = (e1 > 0) & (e2 > 0)
        if direction < 0:
            below = 1 - below
        p = {2: 2 * np.minimum(below, 1 - below), 1: below if left else 1 - below}[tails]
        return good & (p < level)
    if method in ('ratio', 'difference'):
        e1, e2, t1, t2 = counts(data)
        with np.errstate(divide='ignore', invalid='ignore'):
            if method == 'ratio':
                x, var = np.log((e2 / t2) / (e1 / t1)), 1 / e1 + 1 / e2
            else:
                x, var = e2 / t2 - e1 / t1, e1 / t1 ** 2 + e2 / t2 ** 2
        good = (e1 > 0) & (e2 > 0)
    else:
        s, var = score(method, data, v)
        with np.errstate(divide='ignore', invalid='ignore'):
            x, var = s / var, 1 / var
        good = np.isfinite(var)
    with np.errstate(divide='ignore', invalid='ignore'):
        if tails == 3:
            c = stats.norm.ppf(1 - level)
            root = np.sqrt(var)
            return good & ((direction * x - limits[0]) / root > c) & ((limits[1] - direction * x) / root > c)
        return good & rejects((direction * x - null) / np.sqrt(var), tails, left, level)


def add(menu, method, model, v, groups, second_kind, option, tails=2, left=False, checks='', direction=1,
        given_level=0.05, null_ratio=1, limits=None, level_kind=LEVEL, shown_level=None):
    """second_kind: how group 2's survival is entered; option: 0 value, 2 ratio."""
    rng = np.random.default_rng([SEED, menu, tails, int(left), len(ROWS)])
    if model == 'piecewise':
        pairs = [(1, 1), (1, 2)]
    else:
        first_kind = 94 if 94 in v else 9
        first = v[first_kind]
        second = v[second_kind] if option == 0 else first * v[second_kind]
        null = first * null_ratio
        if limits:
            ratio = second / first
            null = first * min(limits, key=lambda l: abs(math.log(ratio / l)))
        rate = (lambda x: math.log(2) / x) if model == 'exponential' and 94 in v else (lambda x: x)
        pairs = [(rate(first), rate(null)), (rate(first), rate(second))]
    bounds = [math.log(l) for l in limits] if limits else None
    for unknown, (a, b) in zip((0, 1), pairs):
        rejected = sum(decisions(method, studies(rng, model, a, b, v), tails, left, given_level, direction,
                                 math.log(null_ratio), bounds, v).sum() for _ in range(REPLICATES // BLOCK))
        p = rejected / REPLICATES
        given = {level_kind: shown_level or given_level, **v}
        values = ';'.join(f'{k}={text(k, x)}' for k, x in given.items())
        ROWS.append([f'menu {menu}', '2', str(tails), '-1' if left else '0', checks,
                     ','.join(f'{g}={o}' for g, o in groups.items()), values, str(unknown), f'{p:.6g}',
                     f'{3.29 * math.sqrt(max(p * (1 - p), 1e-6) / REPLICATES):.3g}'])
        print(ROWS[-1], flush=True)


def text(kind, x):
    if kind in (316, 343):
        return ' '.join(':'.join(f'{y:g}' for y in r) for r in x)
    return f'{x:g}'


STUDY = {13: .05, 45: .1, 33: 0, 10: 2, 11: 5}
SMALL = {N1: 25, N2: 25}
TABLE = ((0, .2, .1, .05, .02), (1, .4, .2, .1, .1), (3, .3, .3, .05, .05))


def main():
    # Log-rank tests and exponential survival, entered as hazards.
    hazards = {9: .3, 73: .5, **STUDY, N1: 80, N2: 80}
    forms = {5: 0, 8: 0, 2: 0}
    add(402, 'logrank', 'exponential', {64: 0, **hazards}, forms, 73, 0)
    add(402, 'logrank', 'exponential', {64: 0, **hazards, 33: 1, N1: 40, N2: 120}, forms, 73, 0, 1)
    add(402, 'logrank', 'exponential', {64: 0, 9: .3, 73: .18, 13: .05, 45: .1,
                                        343: ((1, .2), (2, 1)), 10: 2, 11: 5, N1: 70, N2: 70},
        forms, 73, 0, 1, True, '28')
    add(404, 'logrank', 'exponential', {332: 1, **hazards}, forms, 73, 0)
    add(404, 'logrank', 'exponential', {332: 1.3, **hazards, 73: .6, N1: 120, N2: 120}, forms,
        73, 0, 1, null_ratio=1.3)
    add(404, 'logrank', 'exponential', {29: .7, 30: 1.4, **hazards, 73: .3, N1: 300, N2: 300},
        forms, 73, 0, 3, limits=(.7, 1.4))
    add(150, 'difference', 'exponential', {64: 0, **hazards}, forms, 73, 0)
    add(151, 'ratio', 'exponential', {332: 1, **hazards}, forms, 73, 0, 1)
    add(152, 'ratio', 'exponential', {332: 1, **hazards}, forms, 73, 0)
    add(152, 'ratio', 'exponential', {332: 1, **hazards, **SMALL}, forms, 73, 0)
    add(804, 'ratio', 'exponential', {29: .7, 30: 1.4, **hazards, 73: .3, N1: 300, N2: 300}, forms, 73, 0, 3,
        limits=(.7, 1.4), level_kind=321, shown_level=.9)
    add(834, 'ratio', 'exponential', {319: .8, **hazards, 73: .35, N1: 150, N2: 150}, forms, 73, 0, 1,
        null_ratio=.8, level_kind=321, shown_level=.95)
    # Every statistic by every model.
    medians = {94: 1.5, 95: 2.4, **STUDY}
    size = {N1: 60, N2: 60}
    for menu, method in ((405, 'logrank'), (430, 'gehan'), (440, 'coxmantel'), (450, 'f'), (460, 'peto'),
                         (390, 'lifetable')):
        length = {12: .5} if menu == 390 else {}
        def order(v, shape=None):
            shown = {k: x for k, x in v.items() if k in (94, 95, 9, 73)}
            return {**shown, **(shape or {}), **STUDY, **length, **size}
        add(menu, method, 'exponential', order({9: .3, 73: .55}), forms, 73, 0)
        by_median = {10: 0, 8: 0, 2: 0}
        add(menu, method, 'exponential', order(medians), by_median, 95, 0, 1, checks='12', direction=-1)
        other = 'fhazard' if method == 'f' else method
        for k, (model, shape) in enumerate((('weibull', {329: 1.8}), ('gamma', {329: 2.5}),
                                            ('lognormal', {27: .8}))):
            add(menu + k + 1, other, model, order(medians, shape), by_median, 95, 0, direction=-1)
        add(menu + 4, other, 'piecewise', {316: TABLE, 33: 0, 10: 2, 11: 5, N1: 90, N2: 90}, {2: 0}, None, 0)
    # Small groups.
    for menu, method in ((405, 'logrank'), (430, 'gehan'), (440, 'coxmantel'), (450, 'f'), (460, 'peto'),
                         (451, 'fhazard')):
        v = {**({9: .3, 73: .9} if menu != 451 else {94: 1.5, 95: 4, 329: 1}), **STUDY, N1: 12, N2: 12}
        add(menu, method, 'exponential' if menu != 451 else 'weibull', v,
            forms if menu != 451 else {10: 0, 8: 0, 2: 0}, 73 if menu != 451 else 95, 0,
            direction=1 if menu != 451 else -1)
    os.makedirs('checks/data/simulated', exist_ok=True)
    with open('checks/data/simulated/survival.tsv', 'w') as f:
        f.write(f'# Rates of rejection in {REPLICATES} studies simulated by checks/reference/survivalsim.py '
                f'(numpy, seed {SEED}).\n')
        f.write(NOTE)
        f.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
        f.writelines('\t'.join(r) + '\n' for r in ROWS)


def strata():
    """The stratified log-rank test of two strata: level and power."""
    rng = np.random.default_rng(5)
    rejected, drawn = [0, 0], 150_000
    for _ in range(drawn // BLOCK):
        for h in (0, 1):
            s = variance = 0
            for a, b, loss1, loss2, n1, n2 in ((.2, .35, .05, 0, 32, 32), (.5, .85, .1, .1, 32, 64)):
                v = {33: 0, 10: 2, 11: 5, 13: loss1, 45: loss2, N1: n1, N2: n2}
                score_s, score_v = score('logrank', studies(rng, 'exponential', a, b if h else a, v), v)
                s, variance = s + score_s, variance + score_v
            rejected[h] += (abs(s / np.sqrt(variance)) > stats.norm.ppf(0.975)).sum()
    print([r / drawn for r in rejected])


if __name__ == '__main__':
    if '--strata' in sys.argv:
        strata()
    else:
        main()
