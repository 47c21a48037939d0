#!/usr/bin/env python3
"""Sizes of tests of a regression slope whose power is so low that the program's approximations give
more of it to the least size, written to checks/data/validation/few_df.tsv.

Independent of the program: the power of t is integrated over the distribution of the standard
deviation, in the full precision of Python. The tolerance is how far the size moves when the power
is off by the error of the program's normal approximation of non-central t, 0.012 with 8 to 30
degrees of freedom.

Needs Python 3 alone; run from the repository's root.
"""
import math
from statistics import NormalDist

ERROR = 0.012
normal = NormalDist()


def over_deviation(f, df, steps=2000):
    """The mean of f(s) over the estimates s of a standard deviation of 1 (Simpson's rule)."""
    low, high = max(1e-9, 1 - 9 / math.sqrt(2 * df)), 1 + 9 / math.sqrt(2 * df)
    log_constant = math.log(2) + df / 2 * math.log(df / 2) - math.lgamma(df / 2)
    total = 0.0
    for i in range(steps + 1):
        s = low + (high - low) * i / steps
        density = math.exp(log_constant + (df - 1) * math.log(s) - df * s * s / 2)
        total += (1 if i in (0, steps) else 4 if i % 2 else 2) * f(s) * density
    return total * (high - low) / steps / 3


def bisect(f, low, high):
    for _ in range(60):
        middle = (low + high) / 2
        low, high = (middle, high) if f(middle) < 0 else (low, middle)
    return (low + high) / 2


def power(effect, df, alpha, two_sided):
    level = alpha / 2 if two_sided else alpha
    t = bisect(lambda x: over_deviation(lambda s: normal.cdf(x * s), df) - 1 + level, 0, 100)
    upper = over_deviation(lambda s: 1 - normal.cdf(t * s - effect), df)
    return upper + (over_deviation(lambda s: normal.cdf(-t * s - effect), df) if two_sided else 0)


ROWS = []


def add(analysis, tails, groups, values, lost, standardised):
    def size(target):
        return bisect(lambda n: power(standardised * math.sqrt(n), n - lost, values[0],
                                      tails == 2) - target, 6, 200)
    exact = size(values[1])
    tolerance = max(abs(size(values[1] + e) - exact) for e in (-ERROR, ERROR))
    given = ';'.join(f'{k}={v:.10g}' for k, v in values.items())
    ROWS.append([analysis, 1, tails, 0, '', groups, given, 85, f'{exact:.6g}', f'{tolerance:.2g}'])


def main():
    for analysis in ('distribution 10 3 0', 'menu 170'):
        for target in (0.15, 0.2, 0.25):
            add(analysis, 2, '27=0',
                {0: 0.05, 1: target, 203: 0, 204: 0.3, 212: 1, 213: 1}, 2, 0.3)
        for target in (0.14, 0.17):
            add(analysis, 1, '27=0',
                {0: 0.05, 1: target, 203: 0, 204: 0.2, 212: 1, 213: 1}, 2, 0.2)
    with open('checks/data/validation/few_df.tsv', 'w', encoding='ascii') as out:
        out.write('# Exact values computed by checks/reference/few_df.py.\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\t'
                  'Tolerance\n')
        for row in ROWS:
            out.write('\t'.join(map(str, row)) + '\n')


if __name__ == '__main__':
    main()
