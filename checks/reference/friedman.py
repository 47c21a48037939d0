#!/usr/bin/python3
"""Rates of rejection of Friedman's test, simulated with numpy from the observations themselves; p-values
by scipy.stats.friedmanchisquare's formula. Written to checks/data/simulated/friedman.tsv.

Columns: structure of the correlation (0 equal, 1 r^|i-j|, 2 the matrix of the last column), treatments,
true means, standard deviation, correlation, blocks, level, rate under H0 (equal means), rate under H1,
covariance matrix (row after row; - where there is none).

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import numpy as np
from scipy import stats

RUNS = 200000
SEED = 20261122
MATRIX = ((4, 1, 0.5), (1, 2, 0.2), (0.5, 0.2, 1))

DESIGNS = [
    (0, (0, 0.3, 0.6), 1, 0.3, 20), (0, (0, 0.3, 0.6), 1, 0.7, 10), (0, (0, 0, 0, 1), 2, 0.2, 30),
    (0, (0, 0.5), 1, 0.5, 25), (0, (0, 0.1, 0.2, 0.3, 0.4, 0.5), 1, -0.1, 15),
    (1, (0, 0.4, 0.4, 0.8), 1, 0.6, 20), (1, (1, 0, 1), 1.5, -0.5, 40),
    (2, (0, 0.5, 1), 0, 0, 25), (2, (0, 0, 0.3), 0, 0, 60)]


def covariance(structure, k, sd, rho):
    if structure == 2:
        return np.array(MATRIX)
    i = np.arange(k)
    apart = np.abs(i[:, None] - i)
    return sd ** 2 * (np.where(apart == 0, 1, rho) if structure == 0 else float(rho) ** apart)


def rate(rng, means, cov, n):
    k = len(means)
    factor = np.linalg.cholesky(cov)
    rejected = done = 0
    while done < RUNS:
        runs = min(20000, RUNS - done)
        x = rng.standard_normal((runs, n, k)) @ factor.T + np.array(means)
        sums = (x.argsort(axis=2).argsort(axis=2) + 1).sum(axis=1)
        q = 12 / (n * k * (k + 1)) * ((sums - n * (k + 1) / 2) ** 2).sum(axis=1)
        rejected += (stats.chi2.sf(q, k - 1) < 0.05).sum()
        done += runs
    return rejected / RUNS


def main():
    rng = np.random.default_rng(SEED)
    with open('checks/data/simulated/friedman.tsv', 'w', encoding='utf-8') as out:
        out.write('Structure\tTreatments\tMeans\tSd\tCorrelation\tBlocks\tLevel\tH0\tH1\tMatrix\n')
        for structure, means, sd, rho, n in DESIGNS:
            k = len(means)
            cov = covariance(structure, k, sd, rho)
            matrix = ','.join(f'{x:g}' for row in MATRIX for x in row) if structure == 2 else '-'
            rates = [rate(rng, (0,) * k, cov, n), rate(rng, means, cov, n)]
            out.write('\t'.join(map(str, (structure, k, ','.join(map(str, means)), sd, rho, n, 0.05,
                                          *(f'{x:.5f}' for x in rates), matrix))) + '\n')


if __name__ == '__main__':
    main()
