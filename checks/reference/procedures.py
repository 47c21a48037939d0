#!/usr/bin/python3
"""Family-wise error and power of procedures of many hypotheses, simulated with numpy from the data
themselves, written to checks/data/procedures.tsv with their standard errors.

Each data set is drawn group by group (or as one vector); p-values are scipy's Student or normal ones;
Holm and Hochberg decide by adjusted p-values, sequences by running maxima of p-values, gates by the
share of the level that the rejected tests of the family before had.

Columns: test number, tails, method, gate (0 none, 1 serial, 2 parallel), families (numbers of the
tests, comma-separated), number of means, size, true means, correlation, level, the family-wise
error with all H0 true, the error among the true ones at these means, disjunctive, conjunctive and
average power.

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import itertools
import numpy as np
from scipy import stats

RUNS = 100000
SEED = 20240915


def contrasts(test, k):
    if test in (138, 142):
        return np.array([[-1] + [1 if j == i else 0 for j in range(1, k)] for i in range(1, k)], float)
    if test in (139, 143):
        rows = []
        for i, j in itertools.combinations(range(k), 2):
            row = [0.0] * k
            row[i], row[j] = 1, -1
            rows.append(row)
        return np.array(rows)
    return np.eye(k)


def p_values(rng, test, tails, k, n, means, rho):
    c = contrasts(test, k)
    mu = np.array(means)
    if test < 142:  # independent groups, pooled deviation
        x = rng.standard_normal((RUNS, k)) / np.sqrt(n) + mu
        df = k * (n - 1)
        s = np.sqrt(rng.chisquare(df, RUNS) / df)
        z = (x @ c.T) / np.sqrt((c ** 2).sum(axis=1) / n) / s[:, None]
        law = stats.t(df)
    else:  # one vector, known covariance
        cov = rho + (1 - rho) * np.eye(k)
        x = rng.multivariate_normal(mu, cov / n, RUNS)
        z = (x @ c.T) / np.sqrt(np.einsum('ij,jk,ik->i', c, cov, c) / n)
        law = stats.norm
    return law.sf(z) if tails == 1 else 2 * law.sf(np.abs(z))


def adjusted(p, method):
    """Adjusted p-values: a test is rejected where its own is at most the level."""
    m = p.shape[1]
    if method in (0, 1):  # equal weights
        return p * m
    if method == 2:
        return 1 - (1 - p) ** m
    if method == 4:
        return np.maximum.accumulate(p, axis=1)
    order = np.argsort(p, axis=1)
    ranked = np.take_along_axis(p, order, axis=1) * (m - np.arange(m))
    if method == 5:
        ranked = np.maximum.accumulate(ranked, axis=1)
    else:
        ranked = np.minimum.accumulate(ranked[:, ::-1], axis=1)[:, ::-1]
    back = np.empty_like(p)
    np.put_along_axis(back, order, ranked, axis=1)
    return back


def decide(p, method, gate, families, alpha):
    rejected = np.zeros(p.shape, bool)
    level = np.full(p.shape[0], alpha)
    for f in sorted(set(families)):
        at = [i for i, g in enumerate(families) if g == f]
        here = (adjusted(p[:, at], method) < level[:, None]) & (level[:, None] > 0)
        rejected[:, at] = here
        if gate == 1:
            level = np.where(here.all(axis=1), level, 0)
        elif gate == 2:
            level = level * here.mean(axis=1)
    return rejected


DESIGNS = []
for method in (0, 1, 2, 4, 5, 6):
    DESIGNS.append((138, 2, method, 0, (1, 1, 1), 4, 20, (0, 0.9, 0.8, 0), 0))
    DESIGNS.append((142, 1, method, 0, (1, 1, 1), 4, 25, (0, 0.7, 0.5, 0), 0.3))
    DESIGNS.append((144, 2, method, 0, (1, 1, 1, 1), 4, 30, (0.5, 0.4, 0, 0.3), 0.5))
for method in (1, 5, 6):
    DESIGNS.append((139, 2, method, 0, (1, 1, 1, 1, 1, 1), 4, 20, (0, 0, 0.8, 0.8), 0))
    DESIGNS.append((144, 2, method, 1, (1, 1, 2, 2), 4, 30, (0.7, 0.6, 0, 0.6), 0.2))
for method in (1, 2):
    DESIGNS.append((138, 2, method, 1, (1, 2, 2), 4, 25, (0, 1.0, 0.8, 0), 0))
for tails in (1, 2):
    DESIGNS.append((144, tails, 1, 2, (1, 1, 2, 2), 4, 30, (0.6, 0, 0.6, 0.5), 0.2))
    DESIGNS.append((142, tails, 1, 2, (1, 1, 2), 4, 40, (0, 0.7, 0, 0.7), 0.4))


def main():
    rng = np.random.default_rng(SEED)
    lines = []
    for test, tails, method, gate, families, k, n, means, rho in DESIGNS:
        alpha = 0.05
        effects = contrasts(test, k) @ np.array(means)
        false = np.abs(effects) > 1e-9
        null = decide(p_values(rng, test, tails, k, n, (0,) * k, rho), method, gate, families, alpha)
        real = decide(p_values(rng, test, tails, k, n, means, rho), method, gate, families, alpha)
        hits = real[:, false]
        numbers = [null.any(axis=1).mean(), real[:, ~false].any(axis=1).mean(),
                   hits.any(axis=1).mean(), hits.all(axis=1).mean(), hits.mean()]
        lines.append('\t'.join(map(str, (
            test, tails, method, gate, ','.join(map(str, families)), k, n,
            ','.join(map(str, means)), rho, alpha, *(f'{x:.5f}' for x in numbers)))))
    with open('checks/data/procedures.tsv', 'w', encoding='utf-8') as out:
        out.write('Test\tTails\tMethod\tGate\tFamilies\tMeans\tSize\tTrueMeans\tCorrelation\tLevel\t'
                  'CompleteNull\tPartialNull\tDisjunctive\tConjunctive\tAverage\n')
        out.writelines(line + '\n' for line in lines)
    print(len(lines), 'designs')


if __name__ == '__main__':
    main()
