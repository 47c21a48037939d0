#!/usr/bin/env python3
"""Rates of rejection of rank tests, simulated with numpy: checks/data/simulated/rank.tsv.

Independent of the program: PCG64 in the place of its generator, ranks by argsort, scores and moments
from their definitions, p-values from scipy's normal, chi-square and Kolmogorov distributions. The
tests are the ones that the program carries out: normal approximations without a correction.

Needs Python 3 with numpy and scipy. Usage: ranksim.py > ../data/simulated/rank.tsv
"""
import math
import sys

import numpy as np
from scipy import stats

STUDIES = 400000
BLOCK = 20000
SEED = 20261122
RNG = np.random.default_rng(SEED)


def ranks(values):
    order = np.argsort(values, axis=1)
    rank = np.empty_like(order)
    np.put_along_axis(rank, order, np.arange(1, values.shape[1] + 1)[None, :], axis=1)
    return rank


def tail_p(z, tails):
    return 2 * stats.norm.sf(np.abs(z)) if tails == 2 else stats.norm.sf(z)


def linear(score, moments=None, sign=1):
    """A test by the sum of the scores of the second sample."""
    def test(first, second, tails):
        n1, n2 = first.shape[1], second.shape[1]
        n = n1 + n2
        a = np.array([score(i, n) for i in range(1, n + 1)], dtype=float)
        s = a[ranks(np.hstack([first, second])) - 1][:, n1:].sum(axis=1)
        if moments:
            mean, variance = moments(n1, n2)
        else:
            mean = n2 * a.mean()
            variance = n1 * n2 / (n * (n - 1)) * ((a - a.mean()) ** 2).sum()
        return tail_p(sign * (s - mean) / math.sqrt(variance), tails)
    return test


def rank_sum_moments(n1, n2):
    n = n1 + n2
    return n2 * (n + 1) / 2, n1 * n2 * (n + 1) / 12


def siegel_score(i, n):
    return 2 * i - 1 if i <= n / 2 else 2 * (n - i) + 2


def signed_rank(sample, _, tails):
    n = sample.shape[1]
    t = np.where(sample > 0, ranks(np.abs(sample)), 0).sum(axis=1)
    z = (t - n * (n + 1) / 4) / math.sqrt(n * (n + 1) * (2 * n + 1) / 24)
    return tail_p(z, tails)


def kruskal(samples):
    sizes = [s.shape[1] for s in samples]
    n = sum(sizes)
    rank = ranks(np.hstack(samples))
    h = 0
    begin = 0
    for size in sizes:
        h = h + (rank[:, begin:begin + size].sum(axis=1) - size * (n + 1) / 2) ** 2 / size
        begin += size
    return stats.chi2.sf(12 / (n * (n + 1)) * h, len(sizes) - 1)


def jonckheere(samples):
    sizes = [s.shape[1] for s in samples]
    n = sum(sizes)
    pairs = 0
    for j, later in enumerate(samples):
        for earlier in samples[:j]:
            pairs = pairs + (later[:, :, None] > earlier[:, None, :]).sum(axis=(1, 2))
    mean = (n * n - sum(s * s for s in sizes)) / 4
    variance = (n * n * (2 * n + 3) - sum(s * s * (2 * s + 3) for s in sizes)) / 72
    return stats.norm.sf((pairs - mean) / math.sqrt(variance))


def kolmogorov(first, second, tails):
    n1, n2 = first.shape[1], second.shape[1]
    order = np.argsort(np.hstack([first, second]), axis=1)
    steps = np.where(order < n1, 1 / n1, -1 / n2)
    walk = np.cumsum(steps, axis=1)
    root = math.sqrt(n1 * n2 / (n1 + n2))
    if tails == 2:
        return stats.kstwobign.sf(root * np.abs(walk).max(axis=1))
    return np.exp(-2 * (root * np.maximum(walk.max(axis=1), 0)) ** 2)


def spearman(x, y, tails):
    n = x.shape[1]
    d = ranks(x) - ranks(y)
    r = 1 - 6 * (d * d).sum(axis=1) / (n * (n * n - 1))
    t = r * np.sqrt((n - 2) / np.maximum(1 - r * r, 1e-12))
    return 2 * stats.t.sf(np.abs(t), n - 2) if tails == 2 else stats.t.sf(t, n - 2)


def kendall(x, y, tails):
    n = x.shape[1]
    concordant = np.zeros(len(x))
    for i in range(1, n):
        concordant += ((x[:, i:i + 1] > x[:, :i]) == (y[:, i:i + 1] > y[:, :i])).sum(axis=1)
    tau = 2 * concordant / (n * (n - 1) / 2) - 1
    return tail_p(tau / math.sqrt(2 * (2 * n + 5) / (9 * n * (n - 1))), tails)


def pairs(n, rho):
    x = RNG.standard_normal((BLOCK, n))
    return x, rho * x + math.sqrt(1 - rho * rho) * RNG.standard_normal((BLOCK, n))


def rate(p_values, studies=STUDIES):
    rejected = sum(int((p_values() < 0.05).sum()) for _ in range(studies // BLOCK))
    return rejected / studies


def row(menu, samples, tails, groups, values, unknown, p_values):
    p = rate(p_values)
    error = 3.29 * math.sqrt(p * (1 - p) / STUDIES)
    print(f'menu {menu}\t{samples}\t{tails}\t0\t\t{groups}\t{values}\t{unknown}\t{p:.6f}\t{error:.5f}')
    sys.stdout.flush()


def normal(n):
    return RNG.standard_normal((BLOCK, n))


def exponential(n):
    return RNG.standard_exponential((BLOCK, n))


def two_samples(menu, tails, groups, values, test, draw, n1, n2, shift=0.0, scale=1.0):
    text = '0=0.05;' + values + f';4={n1};37={n2}'
    for unknown, (d, s) in enumerate([(0.0, 1.0), (shift, scale)]):
        row(menu, 2, tails, groups, text, unknown, lambda: test(draw(n1), draw(n2) * s + d, tails))


wilcoxon = linear(lambda i, n: i, rank_sum_moments)
scores = linear(lambda i, n: stats.norm.ppf(i / (n + 1)))
siegel = linear(siegel_score, rank_sum_moments, -1)
ansari = linear(lambda i, n: min(i, n + 1 - i), None, -1)
klotz = linear(lambda i, n: stats.norm.ppf(i / (n + 1)) ** 2)
mood = linear(lambda i, n: (i - (n + 1) / 2) ** 2)
conover = linear(lambda i, n: i * i)
savage = linear(lambda i, n: sum(1 / (n - j + 1) for j in range(1, i + 1)) - 1)


def main():
    print(f'''# Rates of rejection in {STUDIES} studies simulated by checks/reference/ranksim.py (numpy, seed {SEED}).
# The tests are normal approximations without a correction: their levels are those of few values.''')
    print('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance')
    shift = math.sqrt(2) * stats.norm.ppf(0.7)
    for tails, n1, n2 in [(2, 30, 30), (1, 10, 20), (2, 8, 8)]:
        two_samples(300, tails, '2=0', '152=0.7', wilcoxon, normal, n1, n2, shift)
    for tails, n1, n2 in [(2, 30, 30), (1, 10, 20)]:
        two_samples(310, tails, '2=0', '62=0.7;2=1', scores, normal, n1, n2, 0.7)
    for menu, test, draw in [(330, siegel, normal), (331, ansari, normal), (332, klotz, normal),
                             (333, mood, normal), (334, conover, exponential),
                             (350, savage, exponential)]:
        for tails, n1, n2 in [(2, 30, 30), (1, 10, 21)]:
            two_samples(menu, tails, '16=0,2=0', '26=1;141=2', test, draw, n1, n2, 0, 2)
    for tails, n1, n2 in [(2, 30, 30), (1, 10, 20)]:
        row(340, 2, tails, '2=0', f'0=0.05;4={n1};37={n2}', 0,
            lambda: kolmogorov(normal(n1), normal(n2), tails))
    move = stats.norm.ppf(0.75) / math.sqrt(2)
    for tails, n in [(2, 40), (1, 12)]:
        text = f'0=0.05;153={stats.norm.cdf(move):.9g};154=0.75;85={n}'
        for unknown, d in enumerate([0.0, move]):
            row(360, 1, tails, '', text, unknown, lambda: signed_rank(normal(n) + d, None, tails))
    for n1, n2 in [(20, 20), (5, 8)]:
        text = f'0=0.05;34=0.4;2=1;17=3;4={n1};149={n2}'
        groups = [n1, n2, n2]
        row(311, 3, 2, '18=0', text, 0, lambda: kruskal([normal(n) for n in groups]))
        row(312, 3, 2, '18=0', text, 0, lambda: jonckheere([normal(n) for n in groups]))
    for tails, n in [(2, 30), (1, 10)]:
        for unknown, rho in enumerate([0.0, 0.5]):
            row(490, 1, tails, '23=0', f'0=0.05;185=0;186=0.5;14={n}', unknown,
                lambda: spearman(*pairs(n, rho), tails))
        for unknown, tau in enumerate([0.0, 0.4]):
            row(491, 1, tails, '52=0', f'0=0.05;331=0.4;14={n}', unknown,
                lambda: kendall(*pairs(n, math.sin(math.pi * tau / 2)), tails))


if __name__ == '__main__':
    main()
