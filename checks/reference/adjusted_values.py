#!/usr/bin/python3
"""Critical values of single hypotheses under each method of adjustment, written to
checks/data/adjusted_values.tsv: quantiles of Student's t, of the normal, the F and the chi-square
distribution by scipy, and those of the joint distributions by the integrals of
multiple_comparisons.py.

Columns: test number, tails, method, rank of the hypothesis, size of the family, number of groups,
degrees of freedom, whether the variance is known (1), error of the family, level of the hypothesis
(of the weighted method), critical value, tolerance.

The one-sided comparison with a control is exact here; the program takes the two-sided value of
twice the error (0.0006 from 20 degrees of freedom on).

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import math
import sys
import numpy as np
from scipy import optimize, stats

sys.path.insert(0, 'checks/reference')
from multiple_comparisons import (CDF, MODULUS, NODES, TUKEY, DUNNETT, WEIGHTS,  # noqa: E402
                                  deviation_density, quantile, tolerance)

ROWS = []


def tail(p, df, known):
    return float(stats.norm.isf(p) if known else stats.t.isf(p, df))


def dunnett_one_sided(k, df, alpha):
    low, high = (math.sqrt(q / df) for q in (stats.chi2.ppf(1e-13, df), stats.chi2.isf(1e-13, df)))
    x, w = np.polynomial.legendre.leggauss(120)
    s = (high - low) / 2 * x + (high + low) / 2

    def miss(c):
        inner = [float(np.sum(WEIGHTS * CDF(NODES + math.sqrt(2) * c * u) ** (k - 1))) for u in s]
        return (high - low) / 2 * np.sum(w * deviation_density(s, df) * inner) - (1 - alpha)
    return optimize.brentq(miss, 0.1, 30)


def add(test, tails, method, rank, m, k, df, known, alpha, weighted=0.0):
    if method == 0:
        exact = tail(weighted / tails, df, known)
    elif method == 1:
        exact = tail(alpha / m / tails, df, known)
    elif method == 2:
        exact = tail((1 - (1 - alpha) ** (1 / m)) / tails, df, known)
    elif method == 4:
        exact = tail(alpha / tails, df, known)
    elif method == 5:
        exact = tail(alpha / (m - rank + 1) / tails, df, known)
    elif method == 6:
        exact = tail(alpha / rank / tails, df, known)
    elif test == 138:
        exact = quantile(DUNNETT, k, 1.0, df, alpha) if tails == 2 else \
            dunnett_one_sided(k, df, alpha)
    elif test == 139:
        exact = quantile(TUKEY, k, 1.0, df, alpha)
    elif test == 140:
        exact = quantile(MODULUS, m, 1.0, df, alpha)
    else:
        level = 1 - (2 if tails == 1 else 1) * alpha
        exact = math.sqrt(m * stats.f.ppf(level, m, df)) if test == 141 else \
            math.sqrt(stats.chi2.ppf(level, m))
    # The normal quantile is 4.5e-4 off at most, the t quantile's expansion 1e-3 at 10 df.
    slack = 0.0006 if known else 0.002
    if method == 3:
        slack = 0.004 * exact
        if test in (138, 139, 140):
            func = {138: DUNNETT, 139: TUKEY, 140: MODULUS}[test]
            slack = tolerance(func, m if test == 140 else k, 1.0, df, alpha, exact) + (
                0.0006 if test == 138 and tails == 1 else 0)
    ROWS.append([test, tails, method, rank, m, k, df, int(known), alpha, weighted,
                 f'{exact:.8f}', f'{slack:.6f}'])


for tails in (1, 2):
    for test, m, k in ((138, 3, 4), (139, 6, 4), (140, 4, 4), (141, 5, 4)):
        for df in (20, 100):
            for method in (1, 2, 3, 4):
                if (test, method, tails) == (139, 3, 1):
                    continue  # a range has no sides
                add(test, tails, method, 1, m, k, df, False, 0.05)
            for rank in (1, 2, m):
                add(test, tails, 5, rank, m, k, df, False, 0.05)
                add(test, tails, 6, rank, m, k, df, False, 0.05)
            for weighted in (0.01, 0.025):
                add(test, tails, 0, 1, m, k, df, False, 0.05, weighted)
    for test, m, k in ((142, 3, 4), (143, 6, 4), (144, 4, 4), (145, 5, 4), (377, 5, 4)):
        for method in (1, 2, 3, 4):
            add(test, tails, method, 1, m, k, 30, True, 0.025)
        for rank in (1, m):
            add(test, tails, 5, rank, m, k, 30, True, 0.025)
            add(test, tails, 6, rank, m, k, 30, True, 0.025)
        add(test, tails, 0, 1, m, k, 30, True, 0.025, 0.01)

with open('checks/data/adjusted_values.tsv', 'w', encoding='utf-8') as out:
    out.write('# Critical values of adjusted tests, computed by '
              'checks/reference/adjusted_values.py (scipy).\n')
    out.write('Test\tTails\tMethod\tRank\tFamily\tGroups\tDf\tKnown\tError\tWeighted\tExact\t'
              'Tolerance\n')
    out.writelines('\t'.join(map(str, r)) + '\n' for r in ROWS)
print(len(ROWS), 'critical values')
