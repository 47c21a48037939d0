#!/usr/bin/env python3
"""Exact values beside the worked simulations of the help.

Powers of the t-test from scipy's non-central t distribution, level and power of the sign test as
sums over its outcomes, the level of the Wilcoxon-Mann-Whitney test from the distribution of its
statistic over all orders (counted by recursion). The power of the latter has no closed form: it is
simulated with numpy.

Needs Python 3 with numpy and scipy.
"""
import math

import numpy as np
from scipy import stats


def t_test(n, effect, alpha=0.05):
    df = 2 * n - 2
    shift = effect / math.sqrt(2 / n)
    t = stats.t.ppf(1 - alpha / 2, df)
    return stats.nct.sf(t, df, shift) + stats.nct.cdf(-t, df, shift)


def sign_test(n, p, alpha=0.05):
    rejects = [x for x in range(n + 1)
               if 2 * min(stats.binom.cdf(x, n, 0.5), stats.binom.sf(x - 1, n, 0.5)) < alpha]
    return sum(stats.binom.pmf(x, n, p) for x in rejects)


def mann_whitney_counts(n1, n2):
    """How many orders have each number of pairs in which the second is the larger."""
    counts = [[None] * (n2 + 1) for _ in range(n1 + 1)]
    for i in range(n1 + 1):
        for j in range(n2 + 1):
            if i == 0 or j == 0:
                counts[i][j] = [1]
                continue
            # The largest of all is of group 1, or of group 2: then it counts i pairs.
            sums = [0] * (i * j + 1)
            for u, c in enumerate(counts[i - 1][j]):
                sums[u] += c
            for u, c in enumerate(counts[i][j - 1]):
                sums[u + i] += c
            counts[i][j] = sums
    return counts[n1][n2]


def wilcoxon_rejects(u, n, alpha=0.05):
    se = math.sqrt(n * n * (2 * n + 1) / 12)
    return np.abs(u - n * n / 2) / se > stats.norm.ppf(1 - alpha / 2)


def wilcoxon_level(n):
    counts = mann_whitney_counts(n, n)
    total = sum(counts)
    return sum(c / total for u, c in enumerate(counts) if wilcoxon_rejects(u, n))


def wilcoxon_power(n, p, studies, rng):
    shift = math.sqrt(2) * stats.norm.ppf(p)
    rejected = 0
    block = 20000
    for _ in range(studies // block):
        both = rng.standard_normal((block, 2 * n))
        both[:, n:] += shift
        ranks = np.argsort(np.argsort(both, axis=1), axis=1) + 1
        u = ranks[:, n:].sum(axis=1) - n * (n + 1) / 2
        rejected += int(wilcoxon_rejects(u, n).sum())
    return rejected / studies


print('t-test, 64 a group, half a standard deviation:', 0.05, t_test(64, 0.5))
print('sign test, 50 subjects, 0.7:', sign_test(50, 0.5), sign_test(50, 0.7))
power = wilcoxon_power(40, 0.7, 1000000, np.random.default_rng(20261122))
print('Wilcoxon, 40 a group, 0.7:', wilcoxon_level(40), power,
      '+-', math.sqrt(power * (1 - power) / 1000000))
