#!/usr/bin/env python3
"""Statistics of records of survival times, written to checks/data/survival_statistics.tsv.

Two published data sets and 30 random records: small and large groups, equal and unequal, times with
and without ties, few and many losses. Every statistic is formed here by its definition, subject by
subject or pair by pair: Gehan's scores by comparing all pairs, the scores of Peto and Peto from the
cumulated hazard or the Kaplan-Meier curve at each subject's time, the life table from its intervals.

Published: remission of leukemia under 6-MP and placebo (Freireich et al. 1963; O - E = 10.25 in Kalbfleisch
and Prentice 1980, Gehan's W = 271 in Gehan 1965); remission of breast cancer (Lee ET and Wang JW,
Statistical Methods for Survival Data Analysis, 3rd edition 2003, chapter 5: W = 18, Var(W) = 57.78).

Needs Python 3 with numpy; run from the repository's root.
"""
import math

import numpy as np

SEED = 20261122
INTERVAL = 0.5


def risk(t, time):
    return (time >= t).sum()


def hazard_at(t, time, cens):
    return sum(((time == u) & (cens == 0)).sum() / risk(u, time)
               for u in np.unique(time[cens == 0]) if u <= t)


def survival_at(t, time, cens, before=False):
    return math.prod(1 - ((time == u) & (cens == 0)).sum() / risk(u, time)
                     for u in np.unique(time[cens == 0]) if (u < t if before else u <= t))


def permutation(scores, group):
    n1, n2 = (group == 1).sum(), (group == 2).sum()
    n = n1 + n2
    return scores[group == 2].sum(), n1 * n2 * (scores ** 2).sum() / (n * (n - 1)) if n > 1 else 0


def log_rank(time, group, cens):
    return permutation(np.array([1 - c - hazard_at(t, time, cens) for t, c in zip(time, cens)]), group)


def peto(time, group, cens):
    return permutation(np.array([
        survival_at(t, time, cens) - 1 + (0 if c else survival_at(t, time, cens, True))
        for t, c in zip(time, cens)]), group)


def larger(i, j, time, cens):
    """Is the outcome of i clearly larger than that of j?"""
    return cens[j] == 0 and (time[i] > time[j] or (time[i] == time[j] and cens[i] == 1))


def gehan(time, group, cens):
    n = len(time)
    scores = np.array([sum(int(larger(i, j, time, cens)) - int(larger(j, i, time, cens)) for j in range(n))
                       for i in range(n)])
    n1, n2 = (group == 1).sum(), (group == 2).sum()
    return scores[group == 1].sum(), n1 * n2 * (scores ** 2).sum() / (n * (n - 1)) if n > 1 else 0


def cox_mantel(time, group, cens):
    u, v = 0.0, 0.0
    for t in np.unique(time[cens == 0]):
        d = (time == t) & (cens == 0)
        p = ((time >= t) & (group == 2)).sum() / risk(t, time)
        u += (d & (group == 2)).sum() - d.sum() * p
        v += d.sum() * p * (1 - p)
    return u, v


def life_table(time, group, cens):
    u = v = 0.0
    for j in range(int(time.max() / INTERVAL) + 1):
        here = (time >= j * INTERVAL) & (time < (j + 1) * INTERVAL)
        n, d = [], []
        for g in (1, 2):
            n.append(((time >= j * INTERVAL) & (group == g)).sum() - (here & (group == g) & (cens == 1)).sum() / 2)
            d.append((here & (group == g) & (cens == 0)).sum())
        total, events = sum(n), sum(d)
        if total > 0:
            u += d[0] - events * n[0] / total
        if total > 1:
            v += events * (total - events) / (total - 1) * n[0] * n[1] / total ** 2
    return -u, v


def rates(time, group, cens):
    e = [((group == g) & (cens == 0)).sum() for g in (1, 2)]
    return e + [time[group == g].sum() for g in (1, 2)]


def ratio(time, group, cens, scores):
    values = np.array([hazard_at(t, time, cens) for t in time]) if scores else time
    e1, e2, t1, t2 = rates(values, group, cens)
    return (t1 / (e1 + 1e-5)) / (t2 / (e2 + 1e-5)) if t2 > 0 else 99999


def effects(time, group, cens):
    e1, e2, t1, t2 = rates(time, group, cens)
    if not e1 or not e2:
        return 0, 0, 0, 0
    return math.log((e2 / t2) / (e1 / t1)), 1 / e1 + 1 / e2, e2 / t2 - e1 / t1, e1 / t1 ** 2 + e2 / t2 ** 2


LEUKEMIA = ([6, 6, 6, 7, 10, 13, 16, 22, 23, 6, 9, 10, 11, 17, 19, 20, 25, 32, 32, 34, 35],
            [0] * 9 + [1] * 12,
            [1, 1, 2, 2, 3, 4, 4, 5, 5, 8, 8, 8, 8, 11, 11, 12, 12, 15, 17, 22, 23], [0] * 21)
BREAST = ([23, 16, 18, 20, 24], [0, 1, 1, 1, 1], [15, 18, 19, 19, 20], [0] * 5)


def published(data):
    t1, c1, t2, c2 = data
    return (np.array(t1 + t2, float), np.array([1] * len(t1) + [2] * len(t2)), np.array(c1 + c2))


def random(rng, k):
    n1, n2 = (2, 2) if k == 0 else (1, 40) if k == 1 else tuple(rng.integers(2, 90, 2))
    n = n1 + n2
    time = rng.exponential(size=n) * np.where(np.arange(n) < n1, 1, rng.uniform(0.4, 2.5))
    loss = rng.exponential(size=n) / (0.001, 0.2, 1, 3)[k % 4]
    cens = (loss < time).astype(int)
    time = np.minimum(time, loss)
    if k % 3 == 0:
        time = np.ceil(time * 5) / 5
    return np.float32(time).astype(float), np.array([1] * n1 + [2] * n2), cens


def main():
    rng = np.random.default_rng(SEED)
    records = [('leukemia', published(LEUKEMIA)), ('breast', published(BREAST))]
    records += [(f'random {k}', random(rng, k)) for k in range(30)]
    names = ['LogRank', 'Gehan', 'CoxMantel', 'Peto', 'LifeTable']
    with open('checks/data/survival_statistics.tsv', 'w') as f:
        f.write('\t'.join(['Record', 'Times', 'Groups', 'Censored'] + [n + p for n in names for p in 'SV']
                          + ['FTime', 'FHazard', 'LogRatio', 'LogRatioV', 'Difference', 'DifferenceV'])
                + '\n')
        for name, r in records:
            values = [x for s in (log_rank, gehan, cox_mantel, peto, life_table) for x in s(*r)]
            values += [ratio(*r, False), ratio(*r, True), *effects(*r)]
            f.write('\t'.join([name, ' '.join(f'{t:.9g}' for t in r[0]), ' '.join(map(str, r[1])),
                               ' '.join(map(str, r[2]))] + [f'{v:.12g}' for v in values]) + '\n')
            if name in ('leukemia', 'breast'):
                print(name, dict(zip([n + p for n in names for p in 'SV'], values)))


main()
