#!/usr/bin/env python3
"""True levels of the simulated rank tests at 0.05 in small groups, over all ways to form the groups.

What the help says of them. Under H0 every assignment of the ranks to the groups is as likely as any
other, so that the level is a count: of 10 and 10 for two samples, of three groups of 5 for more. The
p-values are those of the normal, the chi-square and the Kolmogorov approximation, without corrections.

Needs Python 3 with numpy and scipy. Takes seconds.
"""
import itertools
import math

import numpy as np
from scipy import stats

LEVEL = 0.05


def two_groups(n1, n2):
    """One row for each assignment: True where the rank is of group 2."""
    n = n1 + n2
    rows = np.fromiter(itertools.chain.from_iterable(itertools.combinations(range(n), n2)), int).reshape(-1, n2)
    second = np.zeros((len(rows), n), bool)
    second[np.arange(len(rows))[:, None], rows] = True
    return second


def score_tests(n1, n2):
    second = two_groups(n1, n2)
    n = n1 + n2
    i = np.arange(1, n + 1)
    z = stats.norm.ppf(i / (n + 1))
    siegel = np.where(i <= n / 2, 2 * i - 1, 2 * (n - i) + 2)
    for name, a in (('normal scores', z), ('Siegel-Tukey', siegel), ('Ansari-Bradley', np.minimum(i, n + 1 - i)),
                    ('Klotz', z ** 2), ('Mood', (i - (n + 1) / 2) ** 2), ('Conover', i ** 2)):
        a = a.astype(float)
        s = second @ a
        variance = n1 * n2 / (n * (n - 1)) * ((a - a.mean()) ** 2).sum()
        x = (s - n2 * a.mean()) / math.sqrt(variance)
        one, two = stats.norm.sf(x) < LEVEL, 2 * stats.norm.sf(abs(x)) < LEVEL
        print(f'{name} {n1} {n2}: two-sided {two.mean():.4f}, right {one.mean():.4f}, '
              f'left {(stats.norm.cdf(x) < LEVEL).mean():.4f}')


def smirnov(n1, n2):
    """Counts the paths of the difference that stay below the critical distance."""
    def level(bad):
        ways = [[0.0] * (n2 + 1) for _ in range(n1 + 1)]
        for a in range(n1 + 1):
            for b in range(n2 + 1):
                if bad(a / n1 - b / n2):
                    continue
                ways[a][b] = 1.0 if a == b == 0 else (ways[a - 1][b] if a else 0) + (ways[a][b - 1] if b else 0)
        return 1 - ways[n1][n2] / math.comb(n1 + n2, n1)
    root = math.sqrt(n1 * n2 / (n1 + n2))
    two = level(lambda d: stats.kstwobign.sf(root * abs(d)) < LEVEL)
    one = level(lambda d: d > 0 and math.exp(-2 * (root * d) ** 2) < LEVEL)
    print(f'Kolmogorov-Smirnov {n1} {n2}: two-sided {two:.4f}, one-sided {one:.4f}')


def three_groups(n):
    """Kruskal-Wallis, and Jonckheere-Terpstra for increasing groups; n in each of three."""
    total = 3 * n
    reject = np.zeros(2)
    count = 0
    mean, variance = (total ** 2 - 3 * n * n) / 4, (total ** 2 * (2 * total + 3) - 3 * n * n * (2 * n + 3)) / 72
    others = two_groups(n, n)
    for first in itertools.combinations(range(total), n):
        rest = np.array([r for r in range(total) if r not in first])
        group = np.empty((len(others), total), int)
        group[:, list(first)] = 0
        group[:, rest] = others + 1
        ranks = np.arange(1, total + 1)
        h = sum(((group == g) @ ranks - n * (total + 1) / 2) ** 2 / n for g in range(3))
        h = h * 12 / (total * (total + 1))
        before = [np.cumsum(group == g, 1) for g in range(3)]
        pairs = ((group == 1) * before[0]).sum(1) + ((group == 2) * (before[0] + before[1])).sum(1)
        reject += (stats.chi2.sf(h, 2) < LEVEL).sum(), (stats.norm.sf((pairs - mean) / math.sqrt(variance)) < LEVEL).sum()
        count += len(others)
    print(f'three groups of {n}: Kruskal-Wallis {reject[0] / count:.4f}, Jonckheere-Terpstra {reject[1] / count:.4f}')


if __name__ == '__main__':
    score_tests(10, 10)
    for n in (10, 30, 100):
        smirnov(n, n)
    smirnov(29, 31)
    three_groups(5)
