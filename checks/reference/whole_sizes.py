#!/usr/bin/env python3
"""Sample sizes below 30 of intervals and of tests and estimates of a standard deviation or a scale,
written to checks/data/whole_sizes.tsv: the least whole size that has the probability asked for.

Independent of the program: the distribution functions are the finite sums and the series of the
incomplete gamma function (M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964,
26.7.3, 26.7.4, 6.5.29) in the full precision of Python, their quantiles found by bisection. A
request is kept where the answer does not depend on the errors of the published formulas that the
program uses instead: where no size below the answer reaches the probability, and the answer does,
whichever way they err. At a whole size all degrees of freedom are whole.

Needs Python 3 alone; run from the repository's root.
"""
import math
from functools import lru_cache
from statistics import NormalDist

NOR_INV = 4.5e-4  # error of 26.2.23
CDF = 0.0015  # error of the chi-square distribution function through F with 10000 df
BISECTION = 6e-4  # error of a chi-square quantile up to 10 df, relative

normal = NormalDist()


def chi2_cdf(x, df):
    if x <= 0:
        return 0.0
    a, half = df / 2, x / 2
    term = total = 1 / a
    k = 0
    while term > 1e-17 * total:
        k += 1
        term *= half / (a + k)
        total += term
    return min(1.0, total * math.exp(-half + a * math.log(half) - math.lgamma(a)))


def t_cdf(t, df):
    theta = math.atan(t / math.sqrt(df))
    c, s = math.cos(theta), math.sin(theta)
    if df % 2 == 0:
        term = total = 1.0
        for i in range(2, df - 1, 2):
            term *= (i - 1) / i * c * c
            total += term
        return 0.5 + s * total / 2
    total = 0.0
    if df > 1:
        term = total = c
        for i in range(3, df - 1, 2):
            term *= (i - 1) / i * c * c
            total += term
    return 0.5 + (theta + s * total) / math.pi


def bisect(f, low, high):
    for _ in range(200):
        middle = (low + high) / 2
        low, high = (middle, high) if f(middle) < 0 else (low, middle)
    return high


def cornish_fisher(z, df):  # 26.7.5
    s = z * z
    g = [(s + 1) / 4, ((5 * s + 16) * s + 3) / 96, (((3 * s + 19) * s + 17) * s - 15) / 384,
         ((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160]
    return z * (1 + sum(c / df ** (i + 1) for i, c in enumerate(g)))


@lru_cache(maxsize=None)
def t_quantile(p, df, e):
    exact = bisect(lambda t: t_cdf(t, df) - p, 0, 1e4)
    if df == 1:  # the Cauchy quantile has a closed form
        return exact * (1 + e * 1e-5)
    z = normal.inv_cdf(p)
    slope = (cornish_fisher(z + 1e-4, df) - cornish_fisher(z, df)) / 1e-4
    return exact + e * (abs(cornish_fisher(z, df) - exact) + NOR_INV * slope)


def f_26_5_22(z, d1, d2):
    g, h = (z * z - 3) / 6, 2 / (1 / (d1 - 1) + 1 / (d2 - 1))
    return math.exp(2 * (z * math.sqrt(h + g) / h -
                         (1 / (d1 - 1) - 1 / (d2 - 1)) * (g + 5 / 6 - 2 / (3 * h))))


@lru_cache(maxsize=None)
def chi2_quantile(p, df, e):
    exact = bisect(lambda x: chi2_cdf(x, df) - p, 0, 1000)
    if df <= 10:
        return exact * (1 + e * BISECTION)
    # Above, the program takes df over a quantile of F with very many df.
    z = normal.inv_cdf(1 - p)
    published = df / f_26_5_22(z, 999999, df)
    moved = df / f_26_5_22(z + NOR_INV, 999999, df)
    return exact + e * (abs(published - exact) + abs(moved - published))


# --- The probability of a size ------------------------------------------------------------------

def small_deviation(ratio, df):
    """An estimated deviation is at most so many times the true one."""
    return chi2_cdf(df * ratio * ratio, df)


def mean_width(level, width, se, df, e):
    return small_deviation(width / (2 * t_quantile((1 + level) / 2, df, e) * se), df)


def deviation_width(level, width, df, e):
    """Relative width of the interval of a standard deviation."""
    long, short = ((df / chi2_quantile(p, df, s)) ** 0.5
                   for p, s in (((1 - level) / 2, e), ((1 + level) / 2, -e)))
    return small_deviation(width / (long - short), df)


def deviation_test(alpha, ratio, df, e):
    return 1 - chi2_cdf(chi2_quantile(1 - alpha, df, e) / ratio ** 2, df)


def deviation_test_left(alpha, ratio, df, e):
    return chi2_cdf(chi2_quantile(alpha, df, e) / ratio ** 2, df)


def scale_test(alpha, ratio, df, e):
    return 1 - chi2_cdf(chi2_quantile(1 - alpha, df, e) / ratio, df)


def deviation_error(error, df, _):
    return chi2_cdf((1 + error) * df, df) - chi2_cdf((1 - error) * df, df)


ROWS = []


def add(analysis, samples, tails, left, checks, groups, values, unknown, target, probability,
        least=3):
    """probability(n, e): of the size n, with quantiles that err by e = -1 or 1 their error."""
    sure = lambda n: min(probability(n, e) for e in (-1, 1)) - CDF > target
    short = lambda n: max(probability(n, e) for e in (-1, 1)) + CDF < target
    n = least
    while n < 30 and short(n):
        n += 1
    if n == least or n == 30 or not sure(n):
        return
    given = ';'.join(f'{k}={v:.10g}' for k, v in values.items())
    ROWS.append([analysis, samples, tails, left, checks, groups, given, unknown, n, 0])


def steps(first, last, step):
    return [round(first + i * step, 6) for i in range(round((last - first) / step) + 1)]


def build():
    for p in (0.5, 0.7, 0.8, 0.95):
        for level in (0.9, 0.95):
            for w in steps(0.7, 3, 0.1):
                v = {22: level, 100: w, 2: 1, 101: p}
                add('distribution 0 1 2', 1, 2, 0, '36', '', v, 85, p,
                    lambda n, e: mean_width(level, w, n ** -0.5, n - 1, e))
                v = {22: level, 100: w, 2: 1, 5: 1, 101: p}
                add('distribution 0 1 2', 2, 2, 0, '36', '2=2', v, 4, p,
                    lambda n, e: mean_width(level, w, (2 / n) ** 0.5, 2 * n - 2, e))
                v = {22: level, 100: w, 216: 1, 217: 1.2, 220: 0.3, 101: p}
                sd = (1 + 1.44 - 2 * 0.3 * 1.2) ** 0.5
                add('distribution 10 0 2', 1, 2, 0, '36', '29=0', v, 85, p,
                    lambda n, e: mean_width(level, w, sd * n ** -0.5, n - 1, e))
                v = {22: level, 100: w, 212: 1, 213: 1, 101: p}
                add('distribution 10 3 2', 1, 2, 0, '36', '', v, 85, p,
                    lambda n, e: mean_width(level, w, n ** -0.5, n - 2, e))
                v = {22: level, 145: w, 27: 0.6, 101: p}
                add('distribution 1 1 2', 1, 2, 0, '36', '', v, 85, p,
                    lambda n, e: mean_width(level, 2 * math.asinh(w / 2), 0.6 * n ** -0.5, n - 1,
                                            e))
                v = {22: level, 145: w, 101: p}
                add('distribution 0 3 2', 1, 2, 0, '36', '', v, 85, p,
                    lambda n, e: deviation_width(level, w, n - 1, e))
                add('distribution 0 2 2', 1, 2, 0, '36', '', v, 85, p,
                    lambda n, e: deviation_width(level, w, n, e))
        for ratio in steps(1.4, 3, 0.1):
            v = {0: 0.05, 1: p, 110: 1, 111: ratio}
            add('distribution 0 3 0', 1, 1, 0, '', '3=0', v, 85, p,
                lambda n, e: deviation_test(0.05, ratio, n - 1, e))
            add('distribution 0 2 0', 1, 1, 0, '', '3=0', v, 85, p,
                lambda n, e: deviation_test(0.05, ratio, n, e))
            v = {0: 0.05, 1: p, 142: 1, 124: ratio}
            add('distribution 2 1 0', 1, 1, 0, '', '15=0', v, 85, p,
                lambda n, e: scale_test(0.05, ratio, 2 * n, e))
        for ratio in steps(0.3, 0.7, 0.05):
            v = {0: 0.05, 1: p, 110: 1, 111: ratio}
            add('distribution 0 3 0', 1, 1, -1, '', '3=0', v, 85, p,
                lambda n, e: deviation_test_left(0.05, ratio, n - 1, e))
    for level in (0.1, 0.2, 0.3, 0.4):
        for error in steps(0.3, 0.95, 0.05):
            add('distribution 0 3 1', 1, 2, 0, '', '', {143: level, 23: error}, 85, 1 - level,
                lambda n, e: deviation_error(error, n - 1, e))


def main():
    build()
    with open('checks/data/whole_sizes.tsv', 'w', encoding='ascii') as out:
        out.write('# Written by checks/reference/whole_sizes.py. Exact: the whole size.\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\t'
                  'Tolerance\n')
        for row in ROWS:
            out.write('\t'.join(map(str, row)) + '\n')


if __name__ == '__main__':
    main()
