#!/usr/bin/env python3
"""Exact values of the worked examples of the help, printed step by step.

Independent of the program: powers come from scipy's normal and non-central t distributions and, for
two one-sided t-tests, from the integral over the distribution of the estimated standard deviation
(Owen 1965; Phillips 1990). Those of exact tests are sums over all outcomes, their rejection regions
found in integers. Other unknowns are found with Brent's method on the exact power.
help_examples.R confirms them.

Needs Python 3 with numpy and scipy.
"""
import math
from fractions import Fraction
import numpy as np
from scipy import integrate, optimize, stats

import conditional_power
import lifetable
import sequential_trials


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
def f_power(alpha, df1, df2, factor, effect):
    """factor: the non-centrality of an effect of 1."""
    return stats.ncf.sf(stats.f.ppf(1 - alpha, df1, df2), df1, df2, factor * effect ** 2)


def squares(error_df, t, effect):
    return lambda r: f_power(0.05, t - 1, error_df(t, r), r * t / 2, effect)


show(9303,
     solve(lambda n: f_power(0.01, 3, 4 * n - 4, 4 * n, 39.5285 / 25), 0.90, 2, 50),
     f_power(0.01, 3, 8, 12, 39.5285 / 25), f_power(0.01, 3, 12, 16, 39.5285 / 25))
show(9304,
     solve(lambda n: f_power(0.05, 6, 12 * (n - 1), 12 * n, 0.5 / 1.2), 0.90, 2, 50),
     f_power(0.05, 6, 84, 96, 0.5 / 1.2))
show(9305,
     solve(lambda n: f_power(0.05, 2, 12 * n - 5, 2 * n, 10 / 12), 0.80, 1, 50),
     f_power(0.05, 2, 67, 12, 10 / 12))
show(9307, f_power(0.05, 4, 12, 2.5, 8 / 3.2),
     solve(lambda e: f_power(0.05, 4, 12, 2.5, e / 3.2), 0.80, 1, 30))
own = squares(lambda t, r: (t - 1) * (r * (t - 1) - 1), 4, 6 / 5)
show(9308, solve(own, 0.80, 2, 50), own(6))
random = squares(lambda t, r: (t - 1) * (r - 1), 3, 1)
show(9309, solve(random, 0.80, 2, 50), random(6))
show(9311, solve(lambda b: f_power(0.05, 3, 3 * (b - 1), b / 2, 2), 0.80, 2, 50),
     f_power(0.05, 3, 15, 3, 2))
show(9312, solve(lambda c: f_power(0.05, 2, 8 * (c - 1), 3 * c / 2, 1), 0.80, 2, 50),
     f_power(0.05, 2, 56, 12, 1))
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


# --- Proportions ------------------------------------------------------------------------------

def exact_tail(weights, level):
    """How many of the first weights together stay within the level."""
    total = sum(weights)
    count = s = 0
    for w in weights:
        s += w
        if s > level * total:
            break
        count += 1
    return count


def binomial(n, p):
    return stats.binom.pmf(range(n + 1), n, p)


def fisher(n, p1, p2, level=Fraction(5, 100)):
    """Two-sided, n in each group."""
    f1, f2 = binomial(n, p1), binomial(n, p2)
    power = 0
    for t in range(2 * n + 1):
        first = max(0, t - n)
        weights = [math.comb(n, x) * math.comb(n, t - x) for x in range(first, min(n, t) + 1)]
        joint = [f1[first + i] * f2[t - first - i] for i in range(len(weights))]
        low, high = exact_tail(weights, level / 2), exact_tail(weights[::-1], level / 2)
        power += sum(joint[:low]) + sum(joint[len(joint) - high:])
    return power


def mcnemar(n, s, d, level=Fraction(5, 100)):
    """Two-sided; all that counts lies below 200 discordant pairs here."""
    r = (s + d) / (2 * s)
    power = 0
    for m in range(1, 200):
        k = exact_tail([math.comb(m, x) for x in range(m + 1)], level / 2)
        given = stats.binom.cdf(k - 1, m, r) + stats.binom.sf(m - k, m, r)
        power += stats.binom.pmf(m, n, s) * given
    return power


def between_whole(power, target, n):
    """Where the straight line from n to n + 1 crosses the target."""
    a, b = power(n), power(n + 1)
    assert a < target <= b
    return n + (target - a) / (b - a)


def unpooled(p1, p2, n):
    return math.sqrt((p1 * (1 - p1) + p2 * (1 - p2)) / n)


def two_proportions(n, p1, p2, alpha=0.05):
    z = stats.norm.ppf(1 - alpha / 2)
    pooled = unpooled((p1 + p2) / 2, (p1 + p2) / 2, n)
    return stats.norm.cdf((abs(p2 - p1) - z * pooled) / unpooled(p1, p2, n))


def tost_proportions(n, p1, p2, limit, alpha=0.05):
    z = stats.norm.ppf(1 - alpha)
    mean, d, s1 = (p1 + p2) / 2, p2 - p1, unpooled(p1, p2, n)
    s0 = unpooled(mean - limit / 2, mean + limit / 2, n)
    return stats.norm.cdf((d + limit - z * s0) / s1) + stats.norm.cdf((limit - d - z * s0) / s1) - 1


def likeliest_sum(s, d, d0):
    """p10 + p01 at the maximum of the likelihood under p10 - p01 = d0."""
    def loss(q):
        a, b = q + max(d0, 0), q - min(d0, 0)
        return -((s + d) / 2 * math.log(a) + (s - d) / 2 * math.log(b) +
                 (1 - s) * math.log(1 - a - b))
    top = (1 - abs(d0)) / 2
    return 2 * optimize.minimize_scalar(loss, bounds=(1e-12, top - 1e-12), method='bounded',
                                        options={'xatol': 1e-13}).x + abs(d0)


def pairs_shift(n, s, d, d0, alpha):
    """Score form: the probability that the difference is shown to lie above d0."""
    se0 = math.sqrt((likeliest_sum(s, d, d0) - d0 * d0) / n)
    return stats.norm.cdf((d - d0 - stats.norm.ppf(1 - alpha) * se0) / math.sqrt((s - d * d) / n))


def tost_pairs(n, s, d, limit, alpha=0.05):
    return pairs_shift(n, s, d, -limit, alpha) + pairs_shift(n, s, -d, -limit, alpha) - 1


show(9320,
     between_whole(lambda n: fisher(n, 0.2, 0.6), 0.80, 26),
     fisher(27, 0.2, 0.6),
     solve(lambda p: fisher(20, 0.2, p), 0.80, 0.3, 0.95))
show(9321,
     between_whole(lambda n: mcnemar(n, 0.15, 0.05), 0.90, 651),
     solve(lambda d: mcnemar(500, 0.15, d), 0.90, 0.02, 0.10))
show(9322,
     solve(lambda n: two_proportions(n, 0.4, 0.3), 0.90, 3, 10000),
     two_proportions(400, 0.4, 0.3))
show(9377,
     solve(lambda n: tost_proportions(n, 0.8, 0.8, 0.15), 0.80, 10, 1000),
     tost_proportions(120, 0.8, 0.83, 0.15))
show(9384,
     solve(lambda n: one_sided_z(0.025, 0.1 / unpooled(0.85, 0.85, n)), 0.80, 10, 1000),
     solve(lambda m: one_sided_z(0.025, -m / unpooled(0.85, 0.85, 150)), 0.80, -0.5, -0.01))
show(9421,
     *(solve(lambda n: pairs_shift(n, s, 0.1, 0, 0.025), 0.80, 3, 10000) for s in (0.2, 0.3)))
show(9422,
     solve(lambda n: tost_pairs(n, 0.15, 0, 0.1), 0.90, 10, 1000),
     tost_pairs(181, 0.15, 0.02, 0.1))
show(9423,
     *(solve(lambda n: pairs_shift(n, s, 0, -0.1, 0.025), 0.80, 10, 1000) for s in (0.18, 0.25)))


# --- Parameters of distributions ---------------------------------------------------------------

def z(p):
    return stats.norm.ppf(p)


def lognormal_width_probability(n, shape, width, level):
    """Relative width of the interval for a median, shape estimated."""
    half = stats.t.ppf((1 + level) / 2, n - 1) * shape / math.sqrt(n)
    return stats.chi2.cdf((n - 1) * (math.asinh(width / 2) / half) ** 2, n - 1)


def life_test(n, ratio, alpha=0.05):
    """Power to see a mean life that is ratio times the one under H0, n failures."""
    return stats.chi2.cdf(stats.chi2.ppf(alpha, 2 * n) / ratio, 2 * n)


def finite_error(n, p, N, quantile):
    return quantile * math.sqrt(p * (1 - p) / n * (N - n) / (N - 1))


def two_rates(time, l1, l2, alpha=0.05):
    """Two-sided, the same time in each group."""
    se1 = math.sqrt((l1 + l2) / time)
    shift = abs(l2 - l1)
    return stats.norm.cdf(shift / se1 - z(1 - alpha / 2)) + \
        stats.norm.cdf(-shift / se1 - z(1 - alpha / 2))


def correlation_width(n, r, level):
    h = z((1 + level) / 2) / math.sqrt(n - 3)
    return math.tanh(math.atanh(r) + h) - math.tanh(math.atanh(r) - h)


covariate = 4 / 15 / math.sqrt(1 - 0.6 ** 2)
show(9431,
     solve(lambda n: f_power(0.05, 2, 3 * n - 4, 3 * n, covariate), 0.90, 3, 500),
     f_power(0.05, 2, 176, 180, covariate))
# --- Repeated measurements ----------------------------------------------------------------------

def auto_correlation(k, sd, rho):
    return sd ** 2 * np.array([[rho ** abs(i - j) for j in range(k)] for i in range(k)])


def roots_of_contrasts(s):
    """Eigenvalues among any orthonormal contrasts: those of the centred matrix but for one 0."""
    k = len(s)
    centre = np.eye(k) - 1 / k
    return np.linalg.eigvalsh(centre @ s @ centre)[1:]


def epsilon_and_bias(roots):
    m = len(roots)
    a, b = roots.sum(), (roots ** 2).sum()
    first = 2 / m * (a / b - a * a * roots / b ** 2)
    second = 2 / m * (4 * roots ** 2 * a * a / b ** 3 + 1 / b - 4 * roots * a / b ** 2 - a * a / b ** 2)
    bias = (second * roots ** 2).sum()
    for i in range(m):
        for j in range(m):
            if abs(roots[i] - roots[j]) > 1e-6:
                bias += first[i] * roots[i] * roots[j] / (roots[i] - roots[j])
    return a * a / b / m, bias


def one_within(n, k, sd, rho, effect, alpha=0.05):
    roots = roots_of_contrasts(auto_correlation(k, sd, rho))
    eps, bias = epsilon_and_bias(roots / roots.mean())
    e = eps + bias / (n - 1)
    return f_power(alpha, (k - 1) * e, (k - 1) * (n - 1) * e, n * k * effect ** 2 / roots.mean() * e, 1)


def interaction(n, a, b, sd, rho, effect, alpha=0.05):
    """n in each group, equal correlations: epsilon 1, its bias that of equal roots."""
    e = 1 + 2 * (1 / (b - 1) - 1) / (a * n - 1)
    lam = a * n * b * (effect / sd) ** 2 / (1 - rho)
    return f_power(alpha, (a - 1) * (b - 1) * e, (b - 1) * (a * n - a) * e, lam * e, 1)


def hotelling(n, p, d, alpha=0.05):
    return f_power(alpha, p, n - p, d * n, 1)


def hotelling_two(n, p, d, alpha=0.05):
    return f_power(alpha, p, 2 * n - p - 1, d * n / 2, 1)


def two_groups_interaction(total, b, d, alpha=0.05):
    return f_power(alpha, b - 1, total - b + 1, d * total / 4, 1)


show(9313,
     solve(lambda n: one_within(n, 4, 12, 0.6, 3), 0.90, 5, 500), one_within(39, 4, 12, 0.6, 3))
show(9314,
     solve(lambda n: interaction(n, 2, 4, 8, 0.5, 1.5), 0.80, 5, 500),
     interaction(21, 2, 4, 8, 0.5, 1.5))
show(9315, solve(lambda n: hotelling(n, 3, 0.487), 0.90, 5, 500), hotelling(20, 3, 0.487))
show(9316, solve(lambda n: hotelling_two(n, 4, 1), 0.90, 5, 500), hotelling_two(25, 4, 1))
show(9317, solve(lambda n: hotelling(n, 3, 0.8), 0.90, 5, 500), hotelling(18, 3, 0.8))
show(9318,
     solve(lambda n: two_groups_interaction(n, 4, 0.8), 0.80, 6, 500),
     two_groups_interaction(60, 4, 0.8))


show(9801, (2 * z(0.975) / 1) ** 2, 2 * z(0.975) / math.sqrt(16))
show(9802,
     solve(lambda n: lognormal_width_probability(n, 0.6, 0.4, 0.95), 0.90, 10, 1000),
     lognormal_width_probability(40, 0.6, 0.4, 0.95))
show(9803, solve(lambda n: life_test(n, 0.5), 0.95, 2, 200), life_test(20, 0.5))
show(9805, z(0.975) ** 2 * 0.2 * 0.8 / 0.05 ** 2, z(0.975) * math.sqrt(0.2 * 0.8 / 150))
show(9806,
     -solve(lambda n: -finite_error(-n, 0.3, 600, z(0.975)), -0.05, -599, -3),
     finite_error(150, 0.3, 600, z(0.975)))
show(9807, solve(lambda t: two_rates(t, 0.5, 0.35), 0.90, 3, 10000), two_rates(300, 0.5, 0.35))
show(9809,
     -solve(lambda n: -finite_error(-n, 0.5, 3200, z(1 - 0.0455 / 2)), -0.05, -3199, -3),
     finite_error(200, 0.5, 3200, z(1 - 0.0455 / 2)))
show(9811,
     -solve(lambda n: -correlation_width(-n, 0.5, 0.95), -0.2, -10000, -5),
     correlation_width(100, 0.5, 0.95))


# --- Regression, correlation, crossover designs -------------------------------------------------

def slope_power(n, slope=2.0, residual=14.0, sd=2.0):
    return two_sided_t(0.05, slope * sd * math.sqrt(n) / residual, n - 2)


def f_power(n, p, m, a, b):
    df2 = n - m - 1
    effect = (a * a - b * b) / (1 - a * a)
    return stats.ncf.sf(stats.f.ppf(0.95, p, df2), p, df2, n * effect)


def wald(alpha, two_sided, b, se0, se1):
    z = stats.norm.ppf(1 - (alpha / 2 if two_sided else alpha))
    other = stats.norm.cdf((-abs(b) - z * se0) / se1) if two_sided else 0
    return stats.norm.cdf((abs(b) - z * se0) / se1) + other


def hsieh(n, p, ratio, r):
    """One-sided 0.05, normal covariate."""
    b = math.log(ratio)
    e1 = math.exp(-b * b / 4)
    d = (1 + (1 + b * b) * math.exp(5 * b * b / 4)) / (1 + e1)
    unit = math.sqrt((1 + 2 * p * d) / (p * (1 - r * r) * n))
    return wald(0.05, False, b, unit, e1 * unit)


def hsieh_binary(n, p, ratio, x, r):
    """Two-sided 0.05, binary covariate."""
    v0, v1 = 1 / (1 - x) + 1 / x, 1 / (1 - x) + 1 / (x * ratio)
    r1 = v1 * x * (1 - x) * ratio**2 / (1 - x + x * ratio)**2
    d = (math.sqrt(v0) + r1 * math.sqrt(v1)) / (math.sqrt(v0) + math.sqrt(v1))
    unit = math.sqrt((1 + 2 * p * d) / (p * (1 - r * r) * n))
    return wald(0.05, True, math.log(ratio), math.sqrt(v0) * unit, math.sqrt(v1) * unit)


def signorini(n, rate, ratio, time, r=0.0, phi=1.0):
    """Two-sided 0.05, normal covariate."""
    b = math.log(ratio)
    v0 = phi / ((1 - r * r) * n * time * rate)
    return wald(0.05, True, b, math.sqrt(v0), math.sqrt(v0 / math.exp(b * b / 2)))


def rate_ratio(n, rate, ratio, x, time, phi=1.0):
    """One-sided 0.05, binary covariate."""
    v0 = phi / (rate * x * (1 - x) * n * time)
    v1 = phi * (1 / rate / (1 - x) + 1 / (rate * ratio) / x) / (n * time)
    return wald(0.05, False, math.log(ratio), math.sqrt(v0), math.sqrt(v1))


def correlation(n, null, truth):
    shift = (math.atanh(truth) - math.atanh(null)) * math.sqrt(n - 3)
    return wald(0.05, True, shift, 1, 1)


def two_way(n, effect, sd, model):
    """n subjects in each sequence, two-sided 0.05."""
    df = 2 * n - 2 if model == 2 else 4 * n - 3
    return two_sided_t(0.05, effect / (sd * math.sqrt(2 / n * (1 if model == 0 else 0.5))), df)


show(9355,
     solve(slope_power, 0.90, 5, 300),
     slope_power(100),
     solve(lambda b: slope_power(100, b), 0.90, 0.1, 5))
show(9356,
     solve(lambda n: f_power(n, 3, 7, math.sqrt(0.3), math.sqrt(0.2)), 0.80, 12, 1000),
     f_power(100, 3, 7, math.sqrt(0.3), math.sqrt(0.2)))
show(9357,
     solve(lambda n: hsieh(n, 0.07, 1.5, 0), 0.80, 5, 9999),
     solve(lambda n: hsieh(n, 0.07, 1.5, 0.25), 0.80, 5, 9999),
     hsieh(500, 0.07, 1.5, 0.25))
show(9358,
     solve(lambda n: hsieh_binary(n, 0.2, 2.2, 0.4, 0.3), 0.80, 5, 9999),
     hsieh_binary(300, 0.2, 2.2, 0.4, 0.3))
show(9359,
     solve(lambda n: signorini(n, 0.5, 1.25, 1, 0.3), 0.90, 5, 9999),
     signorini(300, 0.5, 1.25, 1, 0.3),
     signorini(300, 0.5, 1.25, 1, 0.3, 1.5))
show(9360,
     solve(lambda n: rate_ratio(n, 0.85, 1.3, 0.5, 1), 0.95, 5, 9999),
     solve(lambda n: rate_ratio(n, 0.85, 1.3, 0.5, 1, 1.4), 0.95, 5, 9999),
     rate_ratio(800, 0.85, 1.3, 0.5, 1, 1.4))
show(9362,
     solve(lambda n: correlation(n, 0, 0.3), 0.80, 5, 999),
     correlation(120, 0, 0.3),
     solve(lambda r: correlation(120, 0, r), 0.90, 0.01, 0.9))
show(9370,
     solve(lambda n: two_way(n, 0.15, 0.32, 2), 0.90, 3, 300),
     two_way(55, 0.15, 0.32, 2),
     solve(lambda n: two_way(n, 0.15, 0.48, 0), 0.90, 100, 300))
show(9371,
     solve(lambda n: two_way(n, math.log(1.25), 0.32, 2), 0.90, 3, 200),
     two_way(16, math.log(1.25), 0.32, 2),
     math.exp(solve(lambda d: two_way(16, d, 0.32, 2), 0.90, 0.01, 1)))


# --- Contingency tables, strata, trends ---------------------------------------------------------

def chi2_power(alpha, df, lam):
    return stats.ncx2.sf(stats.chi2.isf(alpha, df), df, lam)


def homogeneity(p):
    """Cohen's w of groups of equal size."""
    average = [sum(column) / len(p) for column in zip(*p)]
    return math.sqrt(sum((x - m) ** 2 / m for row in p for x, m in zip(row, average)) / len(p))


def independence(p):
    rows, columns = [sum(row) for row in p], [sum(column) for column in zip(*p)]
    return sum((x - r * c) ** 2 / (r * c) for row, r in zip(p, rows) for x, c in zip(row, columns))


def marginal_homogeneity(p):
    """Stuart (1955), three categories: d' V^-1 d with the inverse of a 2 x 2 matrix."""
    d = [sum(p[i]) - sum(row[i] for row in p) for i in range(2)]
    v = [sum(p[i]) + sum(row[i] for row in p) - 2 * p[i][i] for i in range(2)]
    c = -(p[0][1] + p[1][0])
    return (d[0] ** 2 * v[1] - 2 * d[0] * d[1] * c + d[1] ** 2 * v[0]) / (v[0] * v[1] - c * c)


def strata_sums(strata, odds_ratio):
    """Groups of equal size in strata (p1, part of all subjects)."""
    a = b = c = 0
    for p1, t in strata:
        o = odds_ratio * p1 / (1 - p1)
        p2 = o / (1 + o)
        p = (p1 + p2) / 2
        a += t / 4 * (p2 - p1)
        b += t / 4 * p * (1 - p)
        c += t / 8 * (p1 * (1 - p1) + p2 * (1 - p2))
    return a, b, c


def trend_sums(p, x):
    """Groups of equal size."""
    k = len(p)
    m = sum(x) / k
    return (sum((xi - m) * pi for xi, pi in zip(x, p)) / k, sum(p) / k,
            sum((xi - m) ** 2 * pi * (1 - pi) for xi, pi in zip(x, p)) / k,
            sum((xi - m) ** 2 for xi in x) / k)


def two_sided_normal(alpha, delta, se0, se1, correction=0):
    q = stats.norm.isf(alpha / 2)
    d = abs(delta) - correction
    return stats.norm.cdf((d - q * se0) / se1) + stats.norm.sf((d + q * se0) / se1)


def trend_power(n, a, p, c, b):
    return two_sided_normal(0.05, a, math.sqrt(p * (1 - p) * b / n), math.sqrt(c / n))


def strata_power(n, a, b, c, correction=0.0):
    return two_sided_normal(0.05, a, math.sqrt(b / n), math.sqrt(c / n), correction / n)


W = round(homogeneity(((0.5, 0.3, 0.2), (0.4, 0.3, 0.3), (0.3, 0.3, 0.4))), 7)
show(9323, W, solve(lambda n: chi2_power(0.05, 4, 3 * n * W ** 2), 0.80, 3, 1000),
     chi2_power(0.05, 4, 3 * 80 * W ** 2))
SUMS = [round(x, 7) for x in strata_sums(((0.1, 0.3), (0.2, 0.3), (0.4, 0.4)), 2)]
show(9324, *SUMS, solve(lambda n: strata_power(n, *SUMS, 0.5), 0.80, 3, 10000),
     strata_power(400, *SUMS, 0.5))
TERMS = [round(x, 7) for x in trend_sums((0.05, 0.08, 0.12, 0.2), (0, 1, 2, 3))]
show(9325, *TERMS, solve(lambda n: trend_power(n, *TERMS), 0.85, 3, 10000),
     trend_power(300, *TERMS))
LAMBDA = round(marginal_homogeneity(((0.25, 0.1, 0.05), (0.05, 0.25, 0.1), (0.02, 0.05, 0.13))), 7)
show(9406, LAMBDA, solve(lambda n: chi2_power(0.05, 2, n * LAMBDA), 0.80, 3, 1000),
     chi2_power(0.05, 2, 200 * LAMBDA))
LAMBDA = round(independence(((0.15, 0.15, 0.1), (0.15, 0.2, 0.25))), 7)
show(9411, LAMBDA, solve(lambda n: chi2_power(0.05, 2, n * LAMBDA), 0.80, 3, 1000),
     chi2_power(0.05, 2, 200 * LAMBDA))


# --- General crossover designs ------------------------------------------------------------------

def williams_t(n):
    """Four treatments, carryover, variance 0.55 due to the design (crossover.py)."""
    return two_sided_t(0.05, 0.5 / (0.8 * math.sqrt(0.55 / n)), 12 * n - 9)


def williams_tost(n):
    e = 0.25 * math.sqrt(0.3333333 / n)
    return tost_t(0.05, math.log(0.95 / 0.8) / e, math.log(1.25 / 0.95) / e, 12 * n - 4)


show(9372, solve(williams_t, 0.90, 2, 100), williams_t(12))
show(9373, solve(williams_tost, 0.90, 2, 100), williams_tost(5))


# --- Goodness of fit ----------------------------------------------------------------------------

def goodness(p0, p1, power, other):
    """Size for the power, and power of another size, with the effect as the window shows it."""
    effect = round(sum((b - a) ** 2 / a for a, b in zip(p0, p1)), 7)
    df = len(p0) - 1

    def of(n):
        return stats.ncx2.sf(stats.chi2.isf(0.05, df), df, n * effect)
    return effect, solve(of, power, 3, 1e4), of(other)


show(9326, *goodness((0.5625, 0.1875, 0.1875, 0.0625), (0.5, 0.2, 0.2, 0.1), 0.80, 300))
show(9407, *goodness((0.135, 0.271, 0.271, 0.18, 0.143), (0.2, 0.26, 0.22, 0.15, 0.17), 0.90, 400))
show(9408, *goodness((0.125,) * 8, (0.09, 0.11, 0.13, 0.15, 0.15, 0.14, 0.12, 0.11), 0.80, 300))


# --- Survival -----------------------------------------------------------------------------------

def piecewise_power(n):
    """The life-table test of lifetable.py, hazards of the table of the example."""
    table = ((0, .2, .2, .05, .05), (1, .4, .2, .05, .05), (3, .3, .25, .05, .05))
    return lifetable.power(lifetable.PIECEWISE, None, 2, False, {
        0: .05, lifetable.INTERVALS: table, lifetable.ACCRUAL_RATE: 0, lifetable.ACCRUAL: 2,
        lifetable.STUDY: 5, lifetable.N1: n, lifetable.N2: n})


def equivalent_survival(n, hazard=.3, loss=.05, accrual=2, study=5):
    """Two one-sided tests of the hazard ratio, each group with the same probability of an event."""
    c = hazard + loss
    event = integrate.quad(lambda s: hazard / c * -math.expm1(-c * (study - s)) / accrual, 0, accrual,
                           epsabs=1e-13)[0]
    error = math.sqrt(2 / (n * event))
    return tost_z(0.05, math.log(1 / 0.75) / error, math.log(1.33) / error)


show(9331, solve(piecewise_power, 0.80, 20, 500), piecewise_power(100))
show(9378, solve(equivalent_survival, 0.80, 10, 5000), equivalent_survival(400))


# --- Conditional and predictive power -----------------------------------------------------------

def conditional_example(number, look, values, tails, left, future, isPredictive, unknown, low, high,
                        target, **change):
    """The power, an unknown at another power, and the power with a change."""
    def power(**more):
        return conditional_power.power(look, {**values, **more}, tails, left, future, isPredictive)
    show(number, power(), solve(lambda x: power(**{unknown: x}), target, low, high),
         power(**change) if change else math.nan)


pressure = dict(alpha=0.025, null=0, truth=5, sd=12, t=0.5, seen=3, n=120, n2=120)
conditional_example(9701, conditional_power.means_look, pressure, 1, False, 0, False, 'seen', 0.01, 9, 0.5,
                    seen=3 * math.sqrt(0.5))
conditional_example(9702, conditional_power.means_look, pressure, 1, False, 1, True, 'seen', 0.01, 9, 0.5,
                    seen=3 * math.sqrt(0.5))
response = dict(alpha=0.05, null=0.2, truth=0.35, t=0.5, seen=0.25, n=80)
conditional_example(9703, conditional_power.proportion_look, response, 1, False, 0, False, 'seen', 0.15, 0.5,
                    0.2)
relapse = dict(alpha=0.05, null=0, p1=0.3, p2=0.45, t=0.6, seen1=0.32, difference=0.1, n=150, n2=150)
conditional_example(9704, conditional_power.proportions_look, relapse, 2, False, 1, True, 'difference', 0.001,
                    0.5, 0.8)
survival = dict(alpha=0.025, hr=0.7, t=0.4, seen=0.85, events=300, ratio=1)
conditional_example(9705, conditional_power.hazards_look, survival, 1, True, 0, False, 'seen', 0.3, 1.6, 0.2)
conditional_example(9706, conditional_power.hazards_look, survival, 1, True, 1, True, 'seen', 0.3, 0.999, 0.2)


# --- Group sequential designs -------------------------------------------------------------------

def sequential(n, effect, sd, t, kind, samples, alpha=0.05):
    """Two-sided, by exact integration: normal data with a known standard deviation."""
    upp = sequential_trials.bounds(kind, 0, t, alpha, 2)
    drift = effect / (sd * math.sqrt(samples / n))
    return sum(sequential_trials.exact(None, upp, t, drift, 2, False)[0])


def sequential_t(n, *design, alpha=0.05):
    """Student's test at the end, with the non-centrality of the fixed test that has the same normal power."""
    samples = design[-1]
    z = stats.norm.ppf(1 - alpha / 2)
    return two_sided_t(alpha, z + stats.norm.ppf(sequential(n, *design)), samples * (n - 1))


fifths = (0.2, 0.4, 0.6, 0.8, 1)
show(9425, solve(lambda n: sequential(n, 10, 20, fifths, sequential_trials.OBRIEN, 2), 0.90, 10, 500),
     sequential(100, 8, 20, fifths, sequential_trials.OBRIEN, 2))
thirds = (0.333333, 0.666667, 1)
show(47, solve(lambda n: sequential_t(n, 10, 20, thirds, sequential_trials.OBRIEN, 2), 0.80, 10, 300),
     sequential(65, 10, 20, thirds, sequential_trials.OBRIEN, 2),
     solve(lambda d: sequential_t(50, d, 20, thirds, sequential_trials.OBRIEN, 2), 0.80, 5, 20))
show(48, solve(lambda n: sequential_t(n, 5, 10, (0.5, 1), sequential_trials.POCOCK, 1), 0.90, 10, 300),
     solve(lambda d: sequential_t(40, d, 10, (0.5, 1), sequential_trials.POCOCK, 1), 0.90, 3, 10))
