#!/usr/bin/env python3
"""Reference values for the tests of variances and of exponential parameters and for the point
estimates and confidence intervals of all distributions, written to
checks/data/validation/estimation.tsv.

Independent of the program: every equation is written out here from its source and solved with
scipy's distributions and Brent's method. The tolerance of a case is how far its solution moves when
every quantile and probability is off by the error of the published formula that the program uses
for it (M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964), in the worst
combination of signs, plus the rounding to 32 bits and the 1e-5 of the search.

Needs Python 3 with scipy; run from the repository's root.
"""
import itertools
import math
from scipy import optimize, stats

ROWS = []


class Error:
    """Which way the normal quantile, the other quantiles and the probabilities err: -1, 0, 1, those
    of the lower and of the upper tail each for itself."""

    def __init__(self, z=0, q_lower=0, q_upper=0, p_lower=0, p_upper=0):
        self.z = z
        self.quantile = lambda p: q_lower if p < 0.5 else q_upper
        self.probability = lambda p: p_lower if p < 0.5 else p_upper


EXACT = Error()
SCENARIOS = [Error(*signs) for signs in itertools.product((-1, 1), repeat=5)]

# --- Quantiles and probabilities with the error of the published formula ---------------------

NOR_INV = 4.5e-4  # 26.2.23


def z_(p, e):
    return stats.norm.ppf(p) + e.z * NOR_INV


def cornish_fisher(z, df):  # 26.7.5
    s = z * z
    g = [(s + 1) / 4, ((5 * s + 16) * s + 3) / 96, (((3 * s + 19) * s + 17) * s - 15) / 384,
         ((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160]
    return z * (1 + sum(c / df ** (i + 1) for i, c in enumerate(g)))


def t_(p, df, e):
    exact, z = stats.t.ppf(p, df), stats.norm.ppf(p)
    slope = (cornish_fisher(z + 1e-4, df) - cornish_fisher(z, df)) / 1e-4
    return exact + e.z * (abs(cornish_fisher(z, df) - exact) + NOR_INV * slope)


def nct_cdf(t, df, delta, e):  # 26.7.10
    exact = stats.nct.cdf(t, df, delta)
    normal = stats.norm.cdf((t * (1 - 1 / (4 * df)) - delta) / math.sqrt(1 + t * t / (2 * df)))
    return exact + e.probability(exact) * abs(normal - exact)


def f_26_5_22(p, d1, d2):
    z = stats.norm.ppf(p)
    g, h = (z * z - 3) / 6, 2 / (1 / (d1 - 1) + 1 / (d2 - 1))
    return math.exp(2 * (z * math.sqrt(h + g) / h -
                         (1 / (d1 - 1) - 1 / (d2 - 1)) * (g + 5 / 6 - 2 / (3 * h))))


def f_interpolation_error(p, d1, d2):
    """Between whole degrees of freedom the program interpolates the quantile."""
    whole1, whole2 = math.floor(d1), math.floor(d2)
    w1, w2 = d1 - whole1, d2 - whole2
    low, high = ((1 - w2) * stats.f.ppf(p, d, whole2) + w2 * stats.f.ppf(p, d, whole2 + 1)
                 for d in (whole1, whole1 + 1))
    return abs((1 - w1) * low + w1 * high - stats.f.ppf(p, d1, d2))


def f_quantile_error(p, d1, d2):
    exact, interpolation = stats.f.ppf(p, d1, d2), f_interpolation_error(p, d1, d2)
    if d1 > 10 and d2 > 10:
        slope = (f_26_5_22(p * 1.001, d1, d2) - f_26_5_22(p, d1, d2)) / \
            (stats.norm.ppf(p * 1.001) - stats.norm.ppf(p))
        return interpolation + abs(f_26_5_22(p, d1, d2) - exact) + NOR_INV * abs(slope)
    return interpolation + 2e-5 * (exact + d2 / d1)  # the bisection ends here


def f_quantile(p, d1, d2, e):
    return stats.f.ppf(p, d1, d2) + e.quantile(p) * f_quantile_error(p, d1, d2)


def f_cdf(x, d1, d2, e):
    exact = stats.f.cdf(x, d1, d2)
    if d1 > 10 and d2 > 10 and (d1 > 100 or d2 > 100):  # Paulson
        root = x ** (1 / 3)
        normal = stats.norm.cdf(((1 - 2 / (9 * d2)) * root - (1 - 2 / (9 * d1))) /
                                math.sqrt(2 * root * root / (9 * d2) + 2 / (9 * d1)))
        return exact + e.probability(exact) * abs(normal - exact)
    return exact + e.probability(exact) * 1.1e-4


def chi2_quantile(p, df, e):
    exact = stats.chi2.ppf(p, df)
    if df <= 10:
        whole = math.floor(df)
        between = (1 - (df - whole)) * stats.chi2.ppf(p, whole) + \
            (df - whole) * stats.chi2.ppf(p, whole + 1)
        return exact + e.quantile(p) * (abs(between - exact) + 6e-4 * exact)
    # df over an F quantile with many df, which is not quite a chi-square quantile.
    f = stats.f.ppf(1 - p, 999999, df)
    error = abs(df / f - exact) + exact * f_quantile_error(1 - p, 999999, df) / f
    return exact + e.quantile(p) * error


def chi2_cdf(x, df, e):
    exact = stats.chi2.cdf(x, df)
    if df <= 21:
        return exact + e.probability(exact) * 0.001  # F with 10000 df, 26.6.2
    normal = stats.norm.cdf(((x / df) ** (1 / 3) - (1 - 2 / (9 * df))) / math.sqrt(2 / (9 * df)))
    return exact + e.probability(exact) * abs(normal - exact)  # 26.4.14


# --- Writing a case ---------------------------------------------------------------------------

def add(analysis, samples, tails, groups, values, unknown, residual, bracket, left=0, checks=()):
    """residual(values, error) is 0 at the solution."""
    def solve(e):
        def f(x):
            trial = dict(values)
            trial[unknown] = x
            return residual(trial, e)
        return optimize.brentq(f, *bracket, xtol=1e-12, rtol=1e-14)
    exact = solve(EXACT)
    deviation = 0
    for e in SCENARIOS:
        try:
            deviation = max(deviation, abs(solve(e) - exact))
        except ValueError:
            raise SystemExit(f'no solution with errors: {analysis} {values} {unknown}')
    tolerance = deviation + 2e-5 + 2e-6 * abs(exact)
    given = ';'.join(f'{k}={v:.10g}' for k, v in values.items() if k != unknown)
    ROWS.append([analysis, samples, tails, left, ','.join(map(str, checks)),
                 ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
                 f'{exact:.8g}', f'{tolerance:.2g}'])


def change(values, **changes):
    v = dict(values)
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


SIZE = (2.5, 5e4)
PROBABILITY = (1e-9, 1 - 1e-9)


def sizes(v):
    return v[4], v[4] * v[5]


# --- Power ------------------------------------------------------------------------------------

def scale_power(v, tails, left, cdf, quantile, factor):
    """factor(null) = (null value / true value)^exponent; the statistic is so much smaller."""
    alpha = v[0]

    def below(null, p):
        return cdf(factor(null) * quantile(p))
    if tails == 3:
        return below('right', alpha) - below('left', 1 - alpha)
    if tails == 2:
        return below('null', alpha / 2) + 1 - below('null', 1 - alpha / 2)
    return below('null', alpha) if left else 1 - below('null', 1 - alpha)


def scale_test(distribution, par_list, samples, tails, values, unknown, bracket, left=0):
    """Standard deviations (distribution 0) and exponential scales (2), effects entered as values
    of one sample or as ratio of two."""
    sd = distribution == 0
    exponent = 2 if sd else 1
    per_subject = 1 if sd else 2
    lost = 0 if par_list == (2 if sd else 1) else 1
    if samples == 1:
        kinds = dict(null=110, left=116, right=117, truth=111) if sd else \
            dict(null=142, left=129, right=130, truth=124)
        group = {3 if sd else 15: 0} if tails != 3 else {}
    else:
        kinds = dict(null=114, left=116, right=117, truth=115) if sd else \
            dict(null=127, left=129, right=130, truth=128)
        group = {13 if sd else 16: 1, 2: 2}

    def residual(v, e):
        def factor(null):
            return (v[kinds[null]] / v[kinds['truth']]) ** exponent
        if samples == 1:
            df = per_subject * (v[85] - lost)
            power = scale_power(v, tails, left, lambda x: chi2_cdf(x, df, e),
                                lambda p: chi2_quantile(p, df, e), factor)
        else:
            n1, n2 = sizes(v)
            d1, d2 = per_subject * (n2 - lost), per_subject * (n1 - lost)
            power = scale_power(v, tails, left, lambda x: f_cdf(x, d1, d2, e),
                                lambda p: f_quantile(p, d1, d2, e), factor)
        return power - v[1]
    add(f'distribution {distribution} {par_list} 0', samples, tails, group, values, unknown,
        residual, bracket, left)


def scale_tests():
    one = {0: 0.05, 1: 0.9, 110: 1, 111: 1.5, 85: 30}
    for par_list in (2, 3):
        scale_test(0, par_list, 1, 1, one, 85, SIZE)
        scale_test(0, par_list, 1, 2, one, 85, SIZE)
    scale_test(0, 3, 1, 1, change(one, k111=0.6), 85, SIZE, left=-1)
    scale_test(0, 3, 1, 2, change(one, k111=0.7), 85, SIZE)
    scale_test(0, 3, 1, 1, change(one, k111=2.5), 85, SIZE)
    scale_test(0, 3, 1, 1, one, 1, PROBABILITY)
    scale_test(0, 3, 1, 2, change(one, k111=1.2, k85=100), 1, PROBABILITY)
    scale_test(0, 3, 1, 1, one, 111, (1, 10))
    scale_test(0, 3, 1, 1, one, 110, (0.1, 1.5))
    scale_test(0, 3, 1, 1, change(one, k111=1.3), 0, (1e-6, 0.9))
    tost = {0: 0.05, 1: 0.8, 116: 0.8, 117: 1.25, 111: 1, 85: 200}
    scale_test(0, 3, 1, 3, tost, 85, SIZE)
    scale_test(0, 3, 1, 3, tost, 111, (1, 1.25))
    scale_test(0, 2, 1, 3, change(tost, k111=1.05), 85, SIZE)

    two = {0: 0.05, 1: 0.9, 114: 1, 115: 1.5, 4: 40, 5: 1}
    for ratio in (1, 3, 0.4):
        # Unequal sizes: which of the two degrees of freedom is the numerator's matters.
        scale_test(0, 3, 2, 1, change(two, k5=ratio), 4, (10, 1e4))
        scale_test(0, 3, 2, 1, change(two, k5=ratio, k115=0.6), 4, (10, 1e4), left=-1)
        scale_test(0, 2, 2, 2, change(two, k5=ratio, k115=1.8), 4, (10, 1e4))
    scale_test(0, 3, 2, 1, change(two, k4=12, k5=5, k115=2), 1, PROBABILITY)
    scale_test(0, 3, 2, 1, change(two, k4=60, k5=0.2, k115=2), 1, PROBABILITY)
    scale_test(0, 3, 2, 1, change(two, k4=12, k5=5, k115=0.5), 1, PROBABILITY, left=-1)
    scale_test(0, 3, 2, 2, change(two, k114=1.2, k115=2), 4, (10, 1e4))
    scale_test(0, 3, 2, 1, two, 115, (1, 10))
    scale_test(0, 2, 2, 1, change(two, k5=2), 4, (10, 1e4))
    tost2 = {0: 0.05, 1: 0.8, 116: 0.8, 117: 1.25, 115: 1, 4: 300, 5: 1}
    scale_test(0, 3, 2, 3, tost2, 4, (10, 1e4))
    scale_test(0, 3, 2, 3, change(tost2, k5=2), 4, (10, 1e4))
    scale_test(0, 3, 2, 3, change(tost2, k115=1.04, k5=0.5), 1, PROBABILITY)
    scale_test(0, 2, 2, 3, change(tost2, k115=0.97, k5=1.5), 1, PROBABILITY)

    exponential = {0: 0.05, 1: 0.9, 142: 1, 124: 0.5, 85: 20}
    for par_list in (1, 2):
        scale_test(2, par_list, 1, 1, exponential, 85, SIZE, left=-1)
        scale_test(2, par_list, 1, 2, change(exponential, k124=2), 85, SIZE)
    scale_test(2, 1, 1, 1, change(exponential, k124=1.7), 85, SIZE)
    scale_test(2, 1, 1, 1, change(exponential, k124=1.7, k85=25), 1, PROBABILITY)
    scale_test(2, 2, 1, 1, exponential, 124, (0.05, 1), left=-1)
    scale_test(2, 1, 1, 3, {0: 0.05, 1: 0.8, 129: 0.7, 130: 1.4, 124: 1, 85: 100}, 85, SIZE)
    ratio2 = {0: 0.05, 1: 0.9, 127: 1, 128: 2, 4: 30, 5: 1}
    for ratio in (1, 2.5, 0.5):
        scale_test(2, 1, 2, 1, change(ratio2, k5=ratio), 4, (8, 1e4))
        scale_test(2, 2, 2, 1, change(ratio2, k5=ratio, k128=0.45), 4, (8, 1e4), left=-1)
    scale_test(2, 1, 2, 2, change(ratio2, k5=3), 1, PROBABILITY)
    scale_test(2, 2, 1, 3, {0: 0.05, 1: 0.8, 129: 0.7, 130: 1.4, 124: 1.05, 85: 120}, 1, PROBABILITY)
    scale_test(2, 2, 2, 2, change(ratio2, k5=2), 4, (8, 1e4))
    scale_test(2, 2, 2, 3, {0: 0.05, 1: 0.8, 129: 0.7, 130: 1.4, 128: 1.05, 4: 200, 5: 1.5}, 1,
               PROBABILITY)
    scale_test(2, 1, 2, 3, {0: 0.05, 1: 0.8, 129: 0.7, 130: 1.4, 128: 1, 4: 200, 5: 0.5}, 4,
               (10, 1e4))


def location_test(tails, values, unknown, bracket, left=0):
    """The smallest of n observations from an exponential distribution with scale s: the null
    distribution of n (minimum - location)/s is standard exponential."""
    def residual(v, e):
        def tail_below(null, p):  # P(minimum < null quantile p)
            return stats.expon.cdf(stats.expon.ppf(p) - v[85] * (v[132] - null) / v[146])
        a = v[0]
        if tails == 3:
            power = tail_below(v[136], a) + 1 - tail_below(v[135], 1 - a) - 1
        elif tails == 2:
            power = tail_below(v[131], a / 2) + 1 - tail_below(v[131], 1 - a / 2)
        else:
            power = tail_below(v[131], a) if left else 1 - tail_below(v[131], 1 - a)
        return power - v[1]
    add('distribution 2 0 0', 1, tails, {} if tails == 3 else {14: 0}, values, unknown, residual,
        bracket, left)


def location_tests():
    v = {0: 0.05, 1: 0.9, 131: 0, 132: 0.2, 146: 2, 85: 20}
    location_test(1, v, 85, (1, 1e3))
    location_test(1, change(v, k85=12), 1, PROBABILITY)
    location_test(2, v, 85, (1, 1e3))
    location_test(1, change(v, k132=-0.3), 85, (1, 1000), left=-1)
    location_test(1, change(v, k132=-0.3, k85=5), 1, PROBABILITY, left=-1)
    location_test(1, v, 132, (0, 2))
    location_test(2, change(v, k132=0.1), 0, (1e-6, 0.7))
    location_test(3, {0: 0.05, 1: 0.8, 135: -0.5, 136: 0.5, 132: 0, 146: 1, 85: 10}, 85, (3.5, 1e3))


def normal_power(v, tails, left, distance, se0, se1, e):
    """distance(null) on the scale of the statistic; keys null, left, right."""
    def beyond(null, a):
        return (distance(null) - z_(1 - a, e) * se0(null)) / se1
    cdf = stats.norm.cdf
    if tails == 3:
        low = (distance('left') - z_(1 - v[0], e) * se0('left')) / se1
        high = (-distance('right') - z_(1 - v[0], e) * se0('right')) / se1
        return cdf(low) + cdf(high) - 1
    if tails == 2:
        d, c = abs(distance('null')), z_(1 - v[0] / 2, e) * se0('null')
        return cdf((d - c) / se1) + cdf((-d - c) / se1)
    if left:
        return cdf((-distance('null') - z_(1 - v[0], e) * se0('null')) / se1)
    return cdf(beyond('null', v[0]))


def poisson_test(rate, samples, tails, values, unknown, bracket, left=0):
    """n counts of mean l, or a count over the time t of rate l: variance of the estimate l/n."""
    if samples == 1:
        k = dict(null=63, left=75, right=76, truth=81, n=170) if rate else \
            dict(null=161, left=166, right=167, truth=162, n=163)
        groups = {} if tails == 3 else {4 if rate else 0: 0}
    else:
        k = dict(null=64, left=77, right=78, m1=9, m2=73, n1=171, r=174) if rate else \
            dict(null=61, left=6, right=7, m1=168, m2=169, n1=164, r=5)
        groups = {5: 0, 22: 2} if rate else {1: 0, 2: 2}

    def residual(v, e):
        if samples == 1:
            truth, n = v[k['truth']], v[k['n']]
            return normal_power(v, tails, left, lambda null: truth - v[k[null]],
                                lambda null: math.sqrt(v[k[null]] / n), math.sqrt(truth / n),
                                e) - v[1]
        m1, m2, n1 = v[k['m1']], v[k['m2']], v[k['n1']]
        n2 = n1 * v[k['r']]
        se1 = math.sqrt(m1 / n1 + m2 / n2)
        pooled = (n1 * m1 + n2 * m2) / (n1 + n2)

        def se0(null):
            return math.sqrt(pooled * (1 / n1 + 1 / n2)) if v[k[null]] == 0 else se1
        return normal_power(v, tails, left, lambda null: m2 - m1 - v[k[null]], se0, se1, e) - v[1]
    add(f'distribution 6 {1 if rate else 0} 0', samples, tails, groups, values, unknown, residual,
        bracket, left)


def poisson_tests():
    one = {0: 0.05, 1: 0.9, 161: 0.5, 162: 0.8, 163: 50}
    poisson_test(False, 1, 1, one, 163, (1, 1e4))
    poisson_test(False, 1, 2, one, 163, (1, 1e4))
    poisson_test(False, 1, 1, change(one, k162=0.3), 163, (1, 1e4), left=-1)
    poisson_test(False, 1, 1, one, 162, (0.5, 5))
    poisson_test(False, 1, 3, {0: 0.05, 1: 0.8, 166: 0.3, 167: 0.7, 162: 0.5, 163: 100}, 163,
                 (5, 1e4))
    rate = {0: 0.05, 1: 0.9, 63: 0.3, 81: 0.5, 170: 30}
    poisson_test(True, 1, 1, rate, 170, (1, 1e4))
    poisson_test(True, 1, 2, change(rate, k170=60), 1, PROBABILITY)
    poisson_test(True, 1, 3, {0: 0.05, 1: 0.8, 75: 0.3, 76: 0.7, 81: 0.5, 170: 120}, 1, PROBABILITY)
    two = {0: 0.05, 1: 0.9, 61: 0, 168: 0.5, 169: 0.8, 164: 50, 5: 1}
    poisson_test(False, 2, 2, two, 164, (1, 1e4))
    poisson_test(False, 2, 1, change(two, k5=2), 164, (1, 1e4))
    poisson_test(False, 2, 1, change(two, k61=-0.2, k5=0.5, k169=0.5), 164, (1, 1e4))
    poisson_test(False, 2, 1, change(two, k169=0.3), 164, (1, 1e4), left=-1)
    poisson_test(False, 2, 3, {0: 0.05, 1: 0.8, 6: -0.2, 7: 0.2, 168: 0.5, 169: 0.52, 164: 300,
                               5: 1}, 164, (20, 1e5))
    rates = {0: 0.05, 1: 0.8, 64: 0, 9: 0.3, 73: 0.5, 171: 100, 174: 1}
    poisson_test(True, 2, 2, rates, 171, (1, 1e4))
    poisson_test(True, 2, 1, change(rates, k174=0.5), 171, (1, 1e4))
    poisson_test(True, 2, 2, rates, 73, (0.3, 3))
    poisson_test(True, 2, 3, {0: 0.05, 1: 0.8, 77: -0.2, 78: 0.2, 9: 0.5, 73: 0.52, 171: 150,
                              174: 1.5}, 1, PROBABILITY)


def finite_weight(N, n):
    return (N - n) / (N - 1) / n


def finite_tests():
    def mean(v, e, tails, left):
        se = v[2] * math.sqrt(finite_weight(v[31], v[85]))
        keys = dict(null=57, left=6, right=7)
        return normal_power(v, tails, left, lambda null: v[58] - v[keys[null]], lambda null: se,
                            se, e) - v[1]

    def proportion(v, e, tails, left):
        keys = dict(null=35, left=47, right=48)

        def se(p):
            return math.sqrt(p * (1 - p) * finite_weight(v[31], v[85]))
        return normal_power(v, tails, left, lambda null: v[83] - v[keys[null]],
                            lambda null: se(v[keys[null]]), se(v[83]), e) - v[1]

    def test(which, par_list, tails, values, unknown, bracket, left=0):
        groups = {} if tails == 3 else {0 if par_list == 0 else 11: 0}
        add(f'distribution 8 {par_list} 0', 1, tails, groups, values, unknown,
            lambda v, e: which(v, e, tails, left), bracket, left)

    m = {0: 0.05, 1: 0.9, 57: 0, 58: 0.3, 2: 1, 31: 200, 85: 50}
    test(mean, 0, 1, m, 85, (3, 199.9))
    test(mean, 0, 2, m, 85, (3, 199.9))
    test(mean, 0, 1, change(m, k58=-0.3), 85, (3, 199.9), left=-1)
    test(mean, 0, 2, m, 1, PROBABILITY)
    test(mean, 0, 2, change(m, k85=80), 31, (81, 9e4))
    test(mean, 0, 3, {0: 0.05, 1: 0.8, 6: -0.3, 7: 0.3, 58: 0, 2: 1, 31: 500, 85: 50}, 85,
         (5, 499))
    p = {0: 0.05, 1: 0.8, 35: 0.3, 83: 0.45, 31: 300, 85: 50}
    test(proportion, 1, 1, p, 85, (3, 299.9))
    test(proportion, 1, 2, p, 85, (3, 299.9))
    test(proportion, 1, 1, change(p, k83=0.2), 85, (3, 299.9), left=-1)
    test(proportion, 1, 2, p, 83, (0.3, 0.99))
    test(proportion, 1, 3, {0: 0.05, 1: 0.8, 47: 0.3, 48: 0.7, 83: 0.5, 31: 300, 85: 50}, 85,
         (5, 299))


def bivariate_tests():
    def student_power(v, tails, left, distance, se, df, e):
        if tails == 2:
            t, d = t_(1 - v[0] / 2, df, e), distance('null') / se
            return 1 - nct_cdf(t, df, d, e) + nct_cdf(-t, df, d, EXACT)
        t = t_(1 - v[0], df, e)
        if left:
            return nct_cdf(-t, df, distance('null') / se, e)
        return 1 - nct_cdf(t, df, distance('null') / se, e)

    def means(tails, values, unknown, bracket, left=0):
        def residual(v, e):
            s2 = v[216] * v[219]
            sd = math.sqrt(v[216] ** 2 + s2 ** 2 - 2 * v[220] * v[216] * s2)
            return student_power(v, tails, left, lambda null: v[62] - v[61],
                                 sd / math.sqrt(v[85]), v[85] - 1, e) - v[1]
        add('distribution 10 0 0', 1, tails, {1: 1, 29: 2}, values, unknown, residual, bracket,
            left)

    m = {0: 0.05, 1: 0.9, 61: 0, 62: 0.5, 216: 1, 219: 1.2, 220: 0.5, 85: 60}
    means(2, m, 85, (8, 1e4))
    means(1, m, 85, (8, 1e4))
    means(1, change(m, k62=-0.5), 85, (8, 1e4), left=-1)
    means(2, change(m, k220=-0.3), 1, PROBABILITY)
    means(2, change(m, k85=40), 220, (-0.9, 0.99))
    means(2, m, 62, (0, 3))

    def slopes(tails, values, unknown, bracket, left=0):
        def residual(v, e):
            return student_power(v, tails, left, lambda null: v[204] - v[203],
                                 v[212] / math.sqrt(v[85]) / v[213], v[85] - 2, e) - v[1]
        add('distribution 10 3 0', 1, tails, {27: 0}, values, unknown, residual, bracket, left)

    b = {0: 0.05, 1: 0.9, 203: 0, 204: 0.4, 212: 1, 213: 1, 85: 60}
    slopes(2, b, 85, (8, 1e4))
    slopes(1, change(b, k203=0.1), 85, (8, 1e4))
    slopes(2, change(b, k85=50), 1, PROBABILITY)
    slopes(2, b, 213, (0.1, 10))

    def ratio_z(v, key):
        """Pitman and Morgan: Fisher's z of the correlation of Y - X and Y + X, where Y is variable
        2 over the null ratio and has w times the standard deviation of X."""
        w, r = v[115] / v[key], v[220]
        return math.atanh((w * w - 1) / math.sqrt((1 + w * w) ** 2 - 4 * r * r * w * w))

    def ratio(tails, values, unknown, bracket, left=0):
        keys = dict(null=114, left=116, right=117)

        def residual(v, e):
            se = 1 / math.sqrt(v[14] - 3)
            return normal_power(v, tails, left, lambda null: ratio_z(v, keys[null]),
                                lambda null: se, se, e) - v[1]
        add('distribution 10 1 0', 1, tails, {13: 1}, values, unknown, residual, bracket, left)

    s = {0: 0.05, 1: 0.9, 114: 1, 115: 1.4, 220: 0.5, 14: 60}
    ratio(2, s, 14, (4, 1e4))
    ratio(1, change(s, k220=0), 14, (4, 1e4))
    ratio(1, change(s, k115=0.7, k220=-0.6), 14, (4, 1e4), left=-1)
    ratio(2, s, 1, PROBABILITY)
    ratio(1, s, 115, (1, 5))
    ratio(1, change(s, k14=40), 220, (0, 0.99))
    ratio(3, {0: 0.05, 1: 0.8, 116: 0.8, 117: 1.25, 115: 1, 220: 0.5, 14: 100}, 14, (20, 1e4))

    def correlation(tails, values, unknown, bracket, left=0):
        keys = dict(null=185, left=194, right=195)

        def residual(v, e):
            se = 1 / math.sqrt(v[14] - 3)
            return normal_power(v, tails, left,
                                lambda null: math.atanh(v[186]) - math.atanh(v[keys[null]]),
                                lambda null: se, se, e) - v[1]
        add('distribution 10 2 0', 1, tails, {} if tails == 3 else {23: 0}, values, unknown,
            residual, bracket, left)

    r = {0: 0.05, 1: 0.9, 185: 0, 186: 0.3, 14: 60}
    correlation(2, r, 14, (4, 1e4))
    correlation(1, change(r, k185=0.5, k186=0.7), 14, (4, 1e4))
    correlation(1, change(r, k185=0.5, k186=0.2), 14, (4, 1e4), left=-1)
    correlation(2, r, 1, PROBABILITY)
    correlation(2, r, 186, (0, 0.99))
    correlation(3, {0: 0.05, 1: 0.8, 194: 0.3, 195: 0.7, 186: 0.5, 14: 100}, 14, (20, 1e4))


# --- Precision --------------------------------------------------------------------------------
# Point estimates: kind 143 error level, 18 or 23 error in both directions, 19 or 24 upward.
# Intervals: kind 22 confidence level, 100 or 145 width, 101 probability that a random width is
# smaller; box 36 makes the interval two-sided.

def level(v, two):
    """Probability below the quantile."""
    outside = v[143] if 143 in v else 1 - v[22]
    return 1 - outside / (2 if two else 1)


def normal_precision(se, v, two, e):
    error = z_(level(v, two), e) * se
    if 143 in v:
        return error - v[18 if two else 19]
    return v[100] - error * (2 if two else 1)


def student_precision(se, df, v, two, e):
    error = t_(level(v, two), df, e) * se
    if 143 in v:
        return error - v[18 if two else 19]
    return chi2_cdf(df * (v[100] / error / (2 if two else 1)) ** 2, df, e) - v[101]


def log_precision(se, v, two, e, df=None):
    if 143 in v:
        low = stats.norm.cdf(math.log(1 - v[23]) / se) if two else 0
        return stats.norm.cdf(math.log(1 + v[23 if two else 24]) / se) - low - (1 - v[143])
    if df is None:
        h = z_(level(v, two), e) * se
        return v[145] - (math.exp(h) - math.exp(-h) if two else math.exp(h) - 1)
    h = t_(level(v, two), df, e) * se
    # The half width that an estimated se may have.
    allowed = math.asinh(v[145] / 2) if two else math.log(1 + v[145])
    return chi2_cdf(df * (allowed / h) ** 2, df, e) - v[101]


def scale_precision(cdf, quantile, at_truth, exponent, unit, v, two):
    if 143 in v:
        low = cdf((1 - v[23]) * at_truth) if two else 0
        return cdf((1 + v[23 if two else 24]) * at_truth) - low - (1 - v[143])
    p = level(v, two)
    upper = (at_truth / quantile(1 - p)) ** (1 / exponent)
    lower = (at_truth / quantile(p)) ** (1 / exponent) if two else 1
    width = v[145] if 145 in v else v[100] / unit
    return cdf(at_truth * (width / (upper - lower)) ** exponent) - v[101]


def precision(analysis, samples, groups, residual, values, unknown, bracket, two=True):
    interval = 22 in values
    add(analysis, samples, 2 if two or interval else 1, groups, values, unknown,
        lambda v, e: residual(v, two, e), bracket, checks=[36] if interval and two else [])


def mean_precisions():
    def known(v, two, e):
        se = v[2] / math.sqrt(v[85]) if 85 in v else \
            math.sqrt(v[216] ** 2 / v[4] + (v[216] * v[219]) ** 2 / (v[4] * v[5]))
        return normal_precision(se, v, two, e)

    def unknown_sd(v, two, e):
        if 85 in v:
            se, df = v[2] / math.sqrt(v[85]), v[85] - 1
        else:
            n1, n2 = sizes(v)
            se, df = v[2] * math.sqrt(1 / n1 + 1 / n2), n1 + n2 - 2
        return student_precision(se, df, v, two, e)

    def case(par_list, values, unknown, bracket, two=True):
        procedure = 1 if 143 in values else 2
        samples = 1 if 85 in values else 2
        groups = {} if samples == 1 else {29: 2, 2: 2} if par_list == 0 else {2: 2}
        precision(f'distribution 0 {par_list} {procedure}', samples, groups,
                  known if par_list == 0 else unknown_sd, values, unknown, bracket, two)

    point = {143: 0.05, 18: 0.2, 2: 1, 85: 50}
    upward = {143: 0.05, 19: 0.2, 2: 1, 85: 50}
    for par_list in (0, 1):
        case(par_list, point, 85, SIZE)
        case(par_list, upward, 85, SIZE, two=False)
        case(par_list, point, 18, (1e-3, 10))
        case(par_list, point, 143, (1e-6, 0.9))
        case(par_list, point, 2, (0.01, 10))
    case(0, {143: 0.05, 18: 0.2, 216: 1, 219: 1.5, 4: 50, 5: 2}, 4, SIZE)
    case(0, {143: 0.1, 19: 0.2, 216: 1, 219: 1.5, 4: 50, 5: 0.5}, 4, SIZE, two=False)
    case(1, {143: 0.05, 18: 0.2, 2: 1, 4: 50, 5: 2}, 4, SIZE)
    case(1, {143: 0.05, 19: 0.2, 2: 1, 4: 50, 5: 2}, 4, SIZE, two=False)
    interval = {22: 0.95, 100: 0.4, 2: 1, 85: 50}
    case(0, interval, 85, SIZE)
    case(0, interval, 85, SIZE, two=False)
    case(0, interval, 22, (0.1, 0.999))
    case(0, {22: 0.9, 100: 0.5, 216: 1, 219: 1.5, 4: 50, 5: 2}, 4, SIZE)
    probable = {22: 0.95, 100: 0.4, 2: 1, 85: 100, 101: 0.9}
    case(1, probable, 85, SIZE)
    case(1, probable, 85, SIZE, two=False)
    case(1, change(probable, k100=1.5), 85, SIZE)
    case(1, probable, 101, (-0.5, 1.5))
    case(1, probable, 100, (0.01, 10))
    case(1, {22: 0.95, 100: 0.5, 2: 1, 4: 100, 5: 1.5, 101: 0.8}, 4, SIZE)


def median_precisions():
    def known(v, two, e):
        se = v[27] / math.sqrt(v[85]) if 85 in v else \
            math.sqrt(v[50] ** 2 / v[4] + (v[50] * v[108]) ** 2 / (v[4] * v[5]))
        return log_precision(se, v, two, e)

    def unknown_shape(v, two, e):
        if 85 in v:
            se, df = v[27] / math.sqrt(v[85]), v[85] - 1
        else:
            n1, n2 = sizes(v)
            se, df = v[27] * math.sqrt(1 / n1 + 1 / n2), n1 + n2 - 2
        return log_precision(se, v, two, e, df)

    def case(par_list, values, unknown, bracket, two=True):
        procedure = 1 if 143 in values else 2
        samples = 1 if 85 in values else 2
        groups = {} if samples == 1 else {31: 2, 2: 2} if par_list == 0 else {2: 2}
        precision(f'distribution 1 {par_list} {procedure}', samples, groups,
                  known if par_list == 0 else unknown_shape, values, unknown, bracket, two)

    point = {143: 0.05, 23: 0.1, 27: 0.4, 85: 50}
    for par_list in (0, 1):
        case(par_list, point, 85, SIZE)
        case(par_list, {143: 0.05, 24: 0.1, 27: 0.4, 85: 50}, 85, SIZE, two=False)
    case(0, point, 23, (1e-3, 0.9))
    case(0, {143: 0.05, 23: 0.2, 50: 0.4, 108: 1.5, 4: 50, 5: 2}, 4, SIZE)
    case(0, {143: 0.05, 24: 0.2, 50: 0.4, 108: 1.5, 4: 50, 5: 2}, 4, SIZE, two=False)
    case(1, {143: 0.05, 23: 0.2, 27: 0.4, 4: 50, 5: 2}, 4, SIZE)
    case(1, {143: 0.05, 24: 0.2, 27: 0.4, 4: 50, 5: 2}, 4, SIZE, two=False)
    case(0, {22: 0.95, 145: 0.3, 27: 0.4, 85: 50}, 85, SIZE)
    case(0, {22: 0.95, 145: 0.3, 27: 0.4, 85: 50}, 85, SIZE, two=False)
    case(0, {22: 0.95, 145: 0.3, 50: 0.4, 108: 1.5, 4: 50, 5: 2}, 4, SIZE)
    case(1, {22: 0.95, 145: 0.3, 27: 0.4, 85: 50, 101: 0.9}, 85, SIZE)
    case(1, {22: 0.95, 145: 0.3, 27: 0.4, 85: 50, 101: 0.9}, 85, SIZE, two=False)
    case(1, {22: 0.9, 145: 0.4, 27: 0.4, 4: 50, 5: 1, 101: 0.8}, 4, SIZE)


def scale_precisions():
    def residual(v, two, e, sd, lost):
        exponent, per_subject = (2, 1) if sd else (1, 2)
        unit = v.get(138, 1)
        if 85 in v:
            df = per_subject * (v[85] - lost)
            return scale_precision(lambda x: chi2_cdf(x, df, e),
                                   lambda p: chi2_quantile(p, df, e), df, exponent, unit, v, two)
        n1, n2 = sizes(v)
        d1, d2 = per_subject * (n2 - lost), per_subject * (n1 - lost)
        return scale_precision(lambda x: f_cdf(x, d1, d2, e),
                               lambda p: f_quantile(p, d1, d2, e), 1, exponent, unit, v, two)

    def case(distribution, par_list, values, unknown, bracket, two=True):
        procedure = 1 if 143 in values else 2
        samples = 1 if 85 in values else 2
        lost = 0 if par_list == (2 if distribution == 0 else 1) else 1
        precision(f'distribution {distribution} {par_list} {procedure}', samples,
                  {} if samples == 1 else {2: 2},
                  lambda v, two, e: residual(v, two, e, distribution == 0, lost), values, unknown,
                  bracket, two)

    point = {143: 0.05, 23: 0.3, 85: 100}
    upward = {143: 0.05, 24: 0.3, 85: 100}
    for distribution, par_lists in ((0, (2, 3)), (2, (1, 2))):
        for par_list in par_lists:
            case(distribution, par_list, point, 85, SIZE)
            case(distribution, par_list, upward, 85, (4, 1e4), two=False)
        case(distribution, par_lists[1], point, 143, (1e-6, 0.9))
        case(distribution, par_lists[1], point, 23, (0.01, 0.95))
        for ratio in (1, 3):
            case(distribution, par_lists[1], {143: 0.1, 23: 0.4, 4: 100, 5: ratio}, 4, (8, 1e4))
        for par_list in par_lists:
            case(distribution, par_list, {143: 0.1, 24: 0.4, 4: 100, 5: 0.5}, 4, (20, 1e4),
                 two=False)
        case(distribution, par_lists[0], {143: 0.1, 23: 0.4, 4: 100, 5: 2}, 4, (8, 1e4))
        for par_list in par_lists:
            case(distribution, par_list, {22: 0.95, 145: 0.5, 85: 50, 101: 0.8}, 85, (8, 1e4))
        case(distribution, par_lists[1], {22: 0.9, 145: 0.4, 85: 50, 101: 0.8}, 85, (8, 1e4),
             two=False)
    # The first step of a sample size to a confidence interval that is told for small samples.
    case(0, 3, {22: 0.95, 145: 2.5, 85: 7, 101: 0.8}, 85, (3, 100))
    case(0, 3, {22: 0.95, 100: 0.8, 138: 1.2, 4: 60, 5: 2, 101: 0.8}, 4, (12, 1e4))
    case(0, 3, {22: 0.95, 100: 0.8, 138: 1.2, 4: 60, 5: 2, 101: 0.8}, 100, (0.05, 10))
    case(0, 2, {22: 0.95, 100: 0.8, 138: 1.2, 4: 60, 5: 1.5, 101: 0.8}, 4, (12, 1e4))
    case(2, 1, {22: 0.95, 145: 0.8, 4: 60, 5: 0.5, 101: 0.8}, 4, (12, 1e4))
    case(2, 2, {22: 0.95, 145: 0.8, 4: 60, 5: 0.8, 101: 0.8}, 4, (12, 1e4))


def location_precisions():
    def residual(v, two, e):
        unit = v[146] / v[85]
        if 143 in v:
            return unit * stats.expon.ppf(1 - v[143]) - v[18 if two else 19]
        p = level(v, two)
        return v[100] - unit * (stats.expon.ppf(p) - (stats.expon.ppf(1 - p) if two else 0))
    for two, error in ((True, 18), (False, 19)):
        precision('distribution 2 0 1', 1, {}, residual, {143: 0.05, error: 0.1, 146: 2, 85: 50},
                  85, SIZE, two)
        precision('distribution 2 0 2', 1, {}, residual, {22: 0.95, 100: 0.1, 146: 2, 85: 50}, 85,
                  SIZE, two)


def count_precisions():
    def variance(v, e=None):
        if 102 in v:
            weight = finite_weight(v[31], v[85]) if 31 in v else 1 / v[85]
            return v[102] * (1 - v[102]) * weight
        if 103 in v:
            n1, n2 = sizes(v)
            w1, w2 = 1 / n1, 1 / n2
            if 196 in v:
                w1, w2 = finite_weight(v[196], n1), finite_weight(v[196] * v[199], n2)
            return v[103] * (1 - v[103]) * w1 + v[104] * (1 - v[104]) * w2
        if 175 in v:
            return v[175] / v[163]
        if 176 in v:
            return v[176] / v[164] + v[177] / (v[164] * v[5])
        if 180 in v:
            return v[180] / v[170]
        if 181 in v:
            return v[181] / v[171] + v[182] / (v[171] * v[174])
        return v[2] ** 2 * finite_weight(v[31], v[85])

    def normal(v, two, e):
        return normal_precision(math.sqrt(variance(v)), v, two, e)

    def case(analysis, samples, groups, rest, unknown, bracket):
        for two in (True, False):
            error = 18 if two else 19
            precision(f'distribution {analysis} 1', samples, groups, normal,
                      {143: 0.05, error: 0.1, **rest}, unknown, bracket, two)
        precision(f'distribution {analysis} 2', samples, groups, normal,
                  {22: 0.95, 100: 0.2, **rest}, unknown, bracket)

    case('4 0', 1, {}, {102: 0.3, 85: 100}, 85, SIZE)
    case('4 0', 1, {}, {102: 0.3, 85: 60}, 102, (1e-6, 0.5))
    case('4 0', 2, {12: 0, 2: 2}, {103: 0.3, 104: 0.5, 4: 100, 5: 2}, 4, SIZE)
    case('5 0', 1, {}, {102: 0.3, 31: 400, 85: 100}, 85, (3, 399))
    case('5 0', 2, {12: 0, 25: 2, 2: 2}, {103: 0.3, 104: 0.5, 196: 400, 199: 1.5, 4: 100, 5: 1.2},
         4, (3, 399))
    case('6 0', 1, {}, {175: 0.8, 163: 100}, 163, (1, 1e4))
    case('6 0', 2, {1: 0, 2: 2}, {176: 0.8, 177: 0.5, 164: 100, 5: 2}, 164, (1, 1e4))
    case('6 1', 1, {}, {180: 0.8, 170: 100}, 170, (1, 1e4))
    case('6 1', 2, {5: 0, 22: 2}, {181: 0.8, 182: 0.5, 171: 100, 174: 2}, 171, (1, 1e4))
    case('8 0', 1, {}, {2: 1, 31: 400, 85: 100}, 85, (3, 399))
    case('8 1', 1, {}, {102: 0.4, 31: 400, 85: 50}, 85, (3, 399))

    def odds(v, two, e):
        if 233 in v:
            se = (1 + v[233]) / math.sqrt(v[233] * v[85])
        else:
            n1, n2 = sizes(v)
            se = math.sqrt((1 + v[234]) ** 2 / v[234] / n1 + (1 + v[235]) ** 2 / v[235] / n2)
        return log_precision(se, v, two, e)
    for samples, groups, rest in ((1, {}, {233: 0.5, 85: 100}),
                                  (2, {35: 0, 2: 2}, {234: 0.5, 235: 1.2, 4: 100, 5: 2})):
        n = 85 if samples == 1 else 4
        for two in (True, False):
            precision('distribution 4 1 1', samples, groups, odds,
                      {143: 0.05, 23 if two else 24: 0.3, **rest}, n, SIZE, two)
            precision('distribution 4 1 2', samples, groups, odds,
                      {22: 0.95, 145: 0.6, **rest}, n, SIZE, two)
    precision('distribution 4 1 1', 1, {}, odds, {143: 0.05, 23: 0.3, 233: 0.5, 85: 250}, 233,
              (0.01, 1))


def exact_proportion_precisions():
    """Limits of Clopper and Pearson at the expected count; whole sizes and counts, straight lines
    between them."""
    def between(x, f):
        whole = math.floor(x)
        return f(whole) if whole == x else f(whole) + (x - whole) * (f(whole + 1) - f(whole))

    def upper(n, count, outside):
        return stats.beta.ppf(1 - outside, count + 1, n - count) if count < n else 1.0

    def residual(v, two, e):
        # Sums of up to 500 terms of 32 bits.
        outside = (1 - level(v, two)) * (1 + 2e-5 * e.probability(0))

        def width(n, count):
            if not two:
                return upper(n, count, outside) - count / n
            return upper(n, count, outside) - (1 - upper(n, n - count, outside))
        return v[100] - between(v[85], lambda n: between(n * v[102], lambda x: width(n, x)))

    def case(values, unknown, bracket, two=True):
        add('distribution 4 0 2', 1, 2, {}, values, unknown, lambda v, e: residual(v, two, e),
            bracket, checks=[36, 7] if two else [7])

    v = {22: 0.95, 100: 0.2, 102: 0.3, 85: 50}
    case(v, 85, (3, 999))
    case(v, 85, (3, 999), two=False)
    case(change(v, k102=0.5, k100=0.07), 85, (3, 999))
    case(change(v, k102=0.05, k85=200), 100, (0.001, 1))
    case(change(v, k102=0.01, k85=20), 100, (0.001, 1))
    case(change(v, k85=100), 22, (0.5, 0.9999))
    case(change(v, k85=60), 102, (0.001, 0.5))


def bivariate_precisions():
    def mean(v, two, e):
        s2 = v[216] * v[219]
        sd = math.sqrt(v[216] ** 2 + s2 ** 2 - 2 * v[220] * v[216] * s2)
        return student_precision(sd / math.sqrt(v[85]), v[85] - 1, v, two, e)

    def slope(v, two, e):
        return student_precision(v[212] / math.sqrt(v[85]) / v[213], v[85] - 2, v, two, e)
    m = {216: 1, 219: 1.2, 220: 0.5, 85: 60}
    b = {212: 1, 213: 1.5, 85: 60}
    for par_list, residual, groups, rest in ((0, mean, {29: 2}, m), (3, slope, {}, b)):
        for two in (True, False):
            precision(f'distribution 10 {par_list} 1', 1, groups, residual,
                      {143: 0.05, 18 if two else 19: 0.2, **rest}, 85, SIZE, two)
            precision(f'distribution 10 {par_list} 2', 1, groups, residual,
                      {22: 0.95, 100: 0.5, **rest, 101: 0.8}, 85, SIZE, two)

    def ratio(v, two, e):
        """The interval holds the ratios that the test of Pitman and Morgan does not reject."""
        se, r = 1 / math.sqrt(v[14] - 3), v[220]

        def z_of(w):
            return math.atanh((w * w - 1) / math.sqrt((1 + w * w) ** 2 - 4 * r * r * w * w))
        if 143 in v:
            low = stats.norm.cdf(z_of(1 - v[23]) / se) if two else 0
            return stats.norm.cdf(z_of(1 + v[23 if two else 24]) / se) - low - (1 - v[143])
        h = z_(level(v, two), e) * se
        up = optimize.brentq(lambda w: z_of(w) - h, 1, 1e6)
        return v[100] - v[138] * (up - (1 / up if two else 1))
    for two in (True, False):
        precision('distribution 10 1 1', 1, {}, ratio,
                  {143: 0.05, 23 if two else 24: 0.2, 220: 0.5, 14: 80}, 14, (4, 1e4), two)
        precision('distribution 10 1 2', 1, {}, ratio,
                  {22: 0.95, 100: 0.5, 138: 1.2, 220: 0.5, 14: 80}, 14, (4, 1e4), two)
    precision('distribution 10 1 2', 1, {}, ratio, {22: 0.95, 100: 0.5, 138: 1.2, 220: 0.5, 14: 60},
              220, (0, 0.99))

    def correlation(v, two, e):
        se, z = 1 / math.sqrt(v[14] - 3), math.atanh(v[220])
        if 143 in v:
            low = stats.norm.cdf((math.atanh(v[220] - v[18]) - z) / se) if two else 0
            return stats.norm.cdf((math.atanh(v[220] + v[18 if two else 19]) - z) / se) - low - \
                (1 - v[143])
        h = z_(level(v, two), e) * se
        return v[100] - (math.tanh(z + h) - (math.tanh(z - h) if two else v[220]))
    for two in (True, False):
        precision('distribution 10 2 1', 1, {}, correlation,
                  {143: 0.05, 18 if two else 19: 0.1, 220: 0.5, 14: 80}, 14, (4, 1e4), two)
        precision('distribution 10 2 2', 1, {}, correlation, {22: 0.95, 100: 0.2, 220: 0.5, 14: 80},
                  14, (4, 1e4), two)
    precision('distribution 10 2 2', 1, {}, correlation, {22: 0.95, 100: 0.2, 220: 0.5, 14: 200},
              220, (0, 0.99))


scale_tests()
location_tests()
poisson_tests()
finite_tests()
bivariate_tests()
mean_precisions()
median_precisions()
scale_precisions()
location_precisions()
count_precisions()
bivariate_precisions()
exact_proportion_precisions()

with open('checks/data/validation/estimation.tsv', 'w') as out:
    out.write('# Exact values computed by checks/reference/estimation.py (scipy).\n')
    out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
    for row in ROWS:
        out.write('\t'.join(map(str, row)) + '\n')
print(len(ROWS), 'cases')
