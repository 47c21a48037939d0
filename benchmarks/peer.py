#!/usr/bin/python3
"""What SciPy takes for tasks that the benchmarks of the program have: processor time for one of
them, as a user of the package would write it: its distributions, its root search, its tests over
whole arrays.

Prints lines "task<TAB>seconds<TAB>result<TAB>how". Needs Python 3 with numpy and scipy.
"""
import subprocess
import sys
import time

import numpy as np
import scipy
from scipy import optimize, stats

REPETITIONS = 5


def t_power(n, effect, sd, level):
    df = 2 * n - 2
    shift = effect / sd * np.sqrt(n / 2)
    critical = stats.t.isf(level / 2, df)
    return stats.nct.sf(critical, df, shift) + stats.nct.cdf(-critical, df, shift)


def t_size(effect=0.5, sd=1.0, level=0.05, power=0.8):
    return optimize.brentq(lambda n: t_power(n, effect, sd, level) - power, 2, 5000)


def t_table():
    for sd in (0.8, 0.9, 1.0, 1.1, 1.2):
        for k in range(100):
            size = t_size(0.3 + 0.005 * k, sd)
    return size


def anova_size(groups=4, effect=0.25, level=0.05, power=0.8):
    def residual(n):
        df1, df2 = groups - 1, groups * (n - 1)
        critical = stats.f.isf(level, df1, df2)
        return stats.ncf.sf(critical, df1, df2, groups * n * effect ** 2) - power
    return optimize.brentq(residual, 2, 1e4)


def design_size(looks=5, level=0.05, power=0.9, effect=0.5):
    """One mean, two-sided, boundaries of O'Brien and Fleming."""
    times = np.arange(1, looks + 1) / looks
    correlation = np.sqrt(np.minimum.outer(times, times) / np.maximum.outer(times, times))

    def stays_within(bounds, drift):
        normal = stats.multivariate_normal(drift * np.sqrt(times), correlation)
        return normal.cdf(bounds, lower_limit=-bounds)

    constant = optimize.brentq(
        lambda c: 1 - level - stays_within(c / np.sqrt(times), 0), 1, 4, xtol=1e-5)
    drift = optimize.brentq(
        lambda d: 1 - power - stays_within(constant / np.sqrt(times), d), 1, 6, xtol=1e-5)
    return (drift / effect) ** 2


def tukey():
    return stats.studentized_range.ppf(0.95, 4, 30) / np.sqrt(2)


def fisher_power(n=50, p1=0.1, p2=0.4, level=0.05):
    first = stats.binom.pmf(np.arange(n + 1), n, p1)
    second = stats.binom.pmf(np.arange(n + 1), n, p2)
    return sum(first[x] * second[y] for x in range(n + 1) for y in range(n + 1)
               if stats.fisher_exact([[x, n - x], [y, n - y]])[1] <= level)


def simulate(studies, size, shift, test):
    """Studies under H0 and under H1; the share that rejects under H1."""
    rng = np.random.default_rng(1)
    for difference in (0, shift):
        first = rng.standard_normal((studies, size))
        second = rng.standard_normal((studies, size)) + difference
        p = test(first, second)
    return np.mean(p <= 0.05)


def t_tests(studies=20000):
    return simulate(studies, 20, 0.9, lambda a, b: stats.ttest_ind(a, b, axis=1).pvalue)


def rank_tests(studies=20000):
    return simulate(studies, 30, 0.75,
                    lambda a, b: stats.mannwhitneyu(a, b, axis=1, method='asymptotic').pvalue)


def clock(task):
    """Median processor time in seconds, and the result."""
    times = []
    for _ in range(REPETITIONS):
        start = time.process_time()
        result = task()
        times.append(time.process_time() - start)
    return sorted(times)[REPETITIONS // 2], result


def start():
    """The wall time of a process that is ready to work."""
    begun = time.perf_counter()
    subprocess.run([sys.executable, '-c', 'from scipy import optimize, stats'], check=True)
    return time.perf_counter() - begun


def main():
    tasks = [('t-size', t_size, 1, 'nct and brentq'),
             ('t-table', t_table, 1, 'nct and brentq'),
             ('anova-size', anova_size, 1, 'ncf and brentq'),
             ('design-size', design_size, 1, 'multivariate_normal and brentq'),
             ('tukey', tukey, 1, 'studentized_range.ppf'),
             ('fisher-power', fisher_power, 1, 'fisher_exact over all tables'),
             ('t-replicate', t_tests, 20000, 'ttest_ind over arrays'),
             ('rank-replicate', rank_tests, 20000, 'mannwhitneyu over arrays')]
    print(f'# SciPy {scipy.__version__}, NumPy {np.__version__}, Python {sys.version.split()[0]}')
    for name, task, count, how in tasks:
        seconds, result = clock(task)
        print(f'{name}\t{seconds / count:.3g}\t{result:.6g}\t{how}', flush=True)
    begun = sorted(start() for _ in range(REPETITIONS))[REPETITIONS // 2]
    print(f'start\t{begun:.3g}\t-\timport of scipy.stats, wall time')


if __name__ == '__main__':
    main()
