#!/usr/bin/env python3
"""Exact values of the worked examples of the help, printed step by step.

Independent of the program: powers come from scipy's normal and non-central t distributions and, for
two one-sided t-tests, from the integral over the distribution of the estimated standard deviation
(Owen 1965; Phillips 1990). Other unknowns are found with Brent's method on the exact power.
help_examples.R confirms them.

Needs Python 3 with scipy.
"""
import math
from scipy import integrate, optimize, stats


def two_sided_t(alpha, ncp, df):
    t = stats.t.ppf(1 - alpha / 2, df)
    return stats.nct.sf(t, df, ncp) + stats.nct.cdf(-t, df, ncp)


def one_sided_t(alpha, ncp, df):
    return stats.nct.sf(stats.t.ppf(1 - alpha, df), df, ncp)


def one_sided_z(alpha, shift):
    return stats.norm.sf(stats.norm.ppf(1 - alpha) - shift)


def tost_t(alpha, low, high, df):
    """low, high: distances of the truth from the limits, in standard errors."""
    t = stats.t.ppf(1 - alpha, df)
    end = (low + high) / (2 * t)

    def integrand(u):
        # u = estimated over true standard deviation: a chi over the root of its df.
        inside = stats.norm.cdf(high - t * u) - stats.norm.cdf(t * u - low)
        return inside * stats.chi.pdf(u * math.sqrt(df), df) * math.sqrt(df)
    width = 12 / math.sqrt(2 * df)
    return integrate.quad(integrand, max(0.0, 1 - width), min(end, 1 + width), limit=400,
                          epsabs=1e-12)[0]


def tost_z(alpha, low, high):
    z = stats.norm.ppf(1 - alpha)
    return stats.norm.cdf(low - z) + stats.norm.cdf(high - z) - 1


def crossover(cv, ratio, n, alpha=0.05):
    """n subjects in each sequence, limits 0.80 and 1.25."""
    se = math.sqrt(math.log(1 + cv * cv)) * math.sqrt(1 / n)
    return tost_t(alpha, math.log(ratio / 0.8) / se, math.log(1.25 / ratio) / se, 2 * n - 2)


def se(sd, n):
    return sd * math.sqrt(2 / n)


def solve(power, target, low, high):
    return optimize.brentq(lambda x: power(x) - target, low, high, xtol=1e-10)


def show(number, *values):
    print(number, *(f'{value:.6g}' for value in values))


show(9301,
     solve(lambda n: two_sided_t(0.05, 10 / se(20, n), 2 * n - 2), 0.80, 3, 1000),
     two_sided_t(0.05, 10 / se(20, 64), 126),
     solve(lambda d: two_sided_t(0.05, d / se(20, 50), 98), 0.80, 1, 30))
show(9302,
     solve(lambda n: two_sided_t(0.05, 2 / 5 * math.sqrt(n), n - 1), 0.90, 3, 1000),
     two_sided_t(0.05, 2 / 5 * math.sqrt(50), 49))
show(9375,
     solve(lambda n: tost_t(0.05, 20 / se(40, n), 20 / se(40, n), 2 * n - 2), 0.90, 10, 1000),
     tost_t(0.05, 24 / se(40, 88), 16 / se(40, 88), 174))
show(9376,
     solve(lambda n: tost_z(0.05, math.log(1.25) / se(0.4, n), math.log(1.25) / se(0.4, n)), 0.90,
           5, 1000),
     solve(lambda r: tost_z(0.05, math.log(1.25) / se(0.4, 60), math.log(r) / se(0.4, 60)), 0.90,
           1.01, 3))
show(9379,
     solve(lambda n: crossover(0.2, 0.95, n), 0.80, 2.5, 1000),
     crossover(0.2, 0.95, 10),
     solve(lambda cv: crossover(cv, 0.95, 14), 0.80, 0.1, 0.5))
show(9380,
     solve(lambda n: crossover(0.25, 1.05, n), 0.90, 2.5, 1000),
     solve(lambda ratio: crossover(0.25, ratio, 18), 0.90, 1.0, 1.2))
show(9382,
     solve(lambda n: one_sided_t(0.025, 5 / se(15, n), 2 * n - 2), 0.90, 5, 1000),
     solve(lambda m: one_sided_t(0.025, -m / se(15, 150), 298), 0.90, -20, -1))
show(9383,
     solve(lambda n: one_sided_z(0.025, math.log(1 / 0.67) / se(0.8, n)), 0.90, 5, 1000),
     one_sided_z(0.025, math.log(0.95 / 0.67) / se(0.8, 84)))
