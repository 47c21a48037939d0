#!/usr/bin/env python3
"""Exact reference values for the tests of means, written to checks/data/validation/means.tsv.

Independent of the program: powers come from scipy's non-central t distribution and, for two
one-sided t-tests, from the integral over the distribution of the estimated standard deviation
(Owen 1965; Phillips 1990). Other unknowns are found with Brent's method on the exact power.

Needs Python 3 with scipy; run from the repository's root.
"""
import math
from scipy import stats, optimize
from tpowers import t_power, tost_power

ROWS = []


def z_power(alpha, tails, left, shift):
    if tails == 2:
        z = stats.norm.ppf(1 - alpha / 2)
        return stats.norm.sf(z - shift) + stats.norm.cdf(-z - shift)
    z = stats.norm.ppf(1 - alpha)
    return stats.norm.cdf(-z - shift) if left else stats.norm.sf(z - shift)


def z_tost(alpha, low, high):
    z = stats.norm.ppf(1 - alpha)
    return stats.norm.cdf(low - z) + stats.norm.cdf(high - z) - 1


def satterthwaite(s1, s2, n1, n2):
    a, b = s1 * s1 / n1, s2 * s2 / n2
    return (a + b) ** 2 / (a * a / (n1 - 1) + b * b / (n2 - 1))


def add(menu, samples, tails, left, checks, groups, values, unknown, power, bracket, tolerance,
        power_kind=1):
    """values: {kind: value}; power(values) is the exact power without the target."""
    target = values.get(power_kind)
    if unknown == power_kind:
        exact = power(values)
    else:
        def f(x):
            trial = dict(values)
            trial[unknown] = x
            return power(trial) - target
        exact = optimize.brentq(f, *bracket, xtol=1e-10)
    given = ';'.join(f'{k}={v:g}' for k, v in values.items() if k != unknown)
    ROWS.append([menu, samples, tails, left, ','.join(map(str, checks)),
                 ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
                 f'{exact:.8g}', f'{tolerance:g}'])


SIZE = 0.5      # a sample size, in subjects
POWER = 0.004   # a power


def unpaired(tails, left, values, unknown, bracket=None, tolerance=SIZE, extra=None):
    """Kinds: 61 H0 difference, 62 H1 difference, 2 sd, 4 size 1, 5 size ratio."""
    def power(v):
        n1, n2 = v[4], v[4] * v[5]
        se = v[2] * math.sqrt(1 / n1 + 1 / n2)
        df = n1 + n2 - 2
        if extra == 0:
            df = v[36]
        if extra == 5:
            df = (n1 - 1) + (n2 - 1) * (v[17] - 1)
        return t_power(v[0], tails, left, (v[62] - v[61]) / se, df)
    add('menu 0', 2, tails, left, [] if extra is None else [extra], {1: 1, 2: 2}, values, unknown,
        power, bracket, tolerance)


def base(**changes):
    v = {0: 0.05, 1: 0.8, 61: 0, 62: 0.5, 2: 1, 4: 64, 5: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


# Unpaired t-test.
unpaired(2, 0, base(), 4, (3, 1e4))
unpaired(2, 0, base(k1=0.9), 4, (3, 1e4))
unpaired(2, 0, base(k0=0.01), 4, (3, 1e4))
unpaired(2, 0, base(k62=1), 4, (3, 1e4))
unpaired(2, 0, base(k62=0.2), 4, (3, 1e4))
unpaired(2, 0, base(k62=0.1, k1=0.95), 4, (3, 1e5), 2)
unpaired(2, 0, base(k5=2), 4, (3, 1e4))
unpaired(2, 0, base(k5=0.5), 4, (6, 1e4))
unpaired(2, 0, base(k61=0.2, k62=0.8), 4, (3, 1e4))
unpaired(2, 0, base(k2=2.5, k62=1.5), 4, (3, 1e4))
unpaired(2, 0, base(), 1, tolerance=POWER)
unpaired(2, 0, base(k4=20), 1, tolerance=POWER)
unpaired(2, 0, base(k4=10, k62=1.2), 1, tolerance=POWER)
unpaired(2, 0, base(k4=100, k62=0.3), 1, tolerance=POWER)
unpaired(2, 0, base(k4=30), 62, (0.01, 5), 0.005)
unpaired(2, 0, base(k4=30), 2, (0.01, 5), 0.005)
unpaired(2, 0, base(k4=50), 0, (1e-5, 0.9), 0.005)
unpaired(2, 0, base(k4=40), 61, (-3, 0.4999), 0.005)
unpaired(1, 0, base(), 4, (3, 1e4))
unpaired(1, 0, base(k0=0.025, k1=0.9), 4, (3, 1e4))
unpaired(1, -1, base(k62=-0.5), 4, (3, 1e4))
unpaired(1, -1, base(k62=-0.5, k4=40), 1, tolerance=POWER)
unpaired(1, 0, base(k61=-0.3, k62=0), 4, (3, 1e4))
unpaired(1, 0, base(k4=25), 62, (0.01, 5), 0.005)
unpaired(2, 0, base(k36=30), 4, (3, 1e4), SIZE, 0)
unpaired(2, 0, base(k36=12, k4=30), 1, None, POWER, 0)
unpaired(2, 0, base(k17=4), 4, (3, 1e4), SIZE, 5)
unpaired(2, 0, base(k17=3, k4=15, k62=1), 1, None, POWER, 5)

# Groups of an ANOVA with sizes unlike each other: the first has n1 subjects, each other one n2.
unpaired(2, 0, base(k17=5, k4=3, k5=3, k62=1.6), 1, None, POWER, 5)
unpaired(1, 0, base(k17=4, k4=12, k5=0.25, k62=1.6), 1, None, POWER, 5)


def welch(tails, left, values, unknown, bracket=None, tolerance=SIZE):
    """Unequal standard deviations, on the t distribution with Satterthwaite's degrees of freedom.
    Kinds: 216 sd 1, 217 sd 2."""
    def power(v):
        n1, n2 = v[4], v[4] * v[5]
        se = math.sqrt(v[216] ** 2 / n1 + v[217] ** 2 / n2)
        return t_power(v[0], tails, left, (v[62] - v[61]) / se,
                       satterthwaite(v[216], v[217], n1, n2))
    add('menu 0', 2, tails, left, [16], {1: 1, 29: 0, 2: 2}, values, unknown, power, bracket,
        tolerance)


def welch_base(**changes):
    v = {0: 0.05, 1: 0.8, 61: 0, 62: 1, 216: 1, 217: 2, 4: 40, 5: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


welch(2, 0, welch_base(), 4, (4, 1e4))
welch(2, 0, welch_base(k217=1.5), 4, (4, 1e4))
welch(2, 0, welch_base(k5=2), 4, (4, 1e4))
welch(2, 0, welch_base(k1=0.9), 4, (4, 1e4))
welch(2, 0, welch_base(), 1, tolerance=POWER)
welch(2, 0, welch_base(k4=15), 1, tolerance=POWER)
welch(1, 0, welch_base(), 4, (4, 1e4))
welch(1, -1, welch_base(k62=-1), 4, (4, 1e4))
welch(2, 0, welch_base(k4=30), 62, (0.05, 9), 0.01)
welch(2, 0, welch_base(k4=30), 217, (0.1, 9), 0.01)


def paired(tails, left, values, unknown, bracket=None, tolerance=SIZE):
    """Kinds: 157 H0 mean, 158 H1 mean, 3 sd of the difference, 85 size."""
    def power(v):
        return t_power(v[0], tails, left, (v[158] - v[157]) / v[3] * math.sqrt(v[85]), v[85] - 1)
    add('menu 1', 1, tails, left, [], {21: 0}, values, unknown, power, bracket, tolerance)


def paired_base(**changes):
    v = {0: 0.05, 1: 0.8, 157: 0, 158: 0.5, 3: 1, 85: 30}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


paired(2, 0, paired_base(), 85, (3, 1e4))
paired(2, 0, paired_base(k1=0.9), 85, (3, 1e4))
paired(2, 0, paired_base(k158=0.3), 85, (3, 1e4))
paired(2, 0, paired_base(k0=0.01), 85, (3, 1e4))
paired(1, 0, paired_base(), 85, (3, 1e4))
paired(1, -1, paired_base(k158=-0.5), 85, (3, 1e4))
paired(2, 0, paired_base(), 1, tolerance=POWER)
paired(2, 0, paired_base(k85=50, k158=0.3), 1, tolerance=POWER)
paired(2, 0, paired_base(), 158, (0.01, 5), 0.006)
paired(2, 0, paired_base(), 3, (0.05, 9), 0.006)


def equivalence(values, unknown, bracket=None, tolerance=SIZE, menu=0):
    """Two one-sided unpaired t-tests. Kinds: 6, 7 limits, 62 true difference."""
    level, power_kind = (0, 1) if menu == 0 else (321, 318)
    def power(v):
        n1, n2 = v[4], v[4] * v[5]
        se = v[2] * math.sqrt(1 / n1 + 1 / n2)
        alpha = v[0] if menu == 0 else (1 - v[321]) / 2
        return tost_power(alpha, (v[62] - v[6]) / se, (v[7] - v[62]) / se, n1 + n2 - 2)
    add(f'menu {menu}', 2, 3, 0, [], {1: 1, 2: 2}, values, unknown, power, bracket, tolerance,
        power_kind)


def tost_base(**changes):
    v = {0: 0.05, 1: 0.8, 6: -0.4, 7: 0.4, 62: 0, 2: 1, 4: 110, 5: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


def ci_base(**changes):
    v = {321: 0.9, 318: 0.8, 6: -0.4, 7: 0.4, 62: 0, 2: 1, 4: 110, 5: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


equivalence(tost_base(), 4, (3, 1e4))
equivalence(tost_base(k62=0.1), 4, (3, 1e4))
equivalence(tost_base(k1=0.9), 4, (3, 1e4))
equivalence(tost_base(k6=-0.5, k7=0.3), 4, (3, 1e4))
equivalence(tost_base(), 1, tolerance=POWER)
equivalence(tost_base(k62=0.1, k4=150), 1, tolerance=POWER)
equivalence(tost_base(k4=120), 2, (0.2, 2), 0.006)
equivalence(ci_base(), 4, (3, 1e4), SIZE, 800)
equivalence(ci_base(k321=0.95), 4, (3, 1e4), SIZE, 800)
equivalence(ci_base(k4=150), 318, None, POWER, 800)


def bioequivalence(values, unknown, bracket=None, tolerance=SIZE, menu=810, cv=True):
    """Two-period crossover. Kinds: 29, 30 limits, 96 ratio, 156 coefficient of variation (155 log
    scale sd), 322 size of sequence 1, 325 size ratio."""
    power_kind = 1 if menu == 810 else 318
    def power(v):
        n1, n2 = v[322], v[322] * v[325]
        s = math.sqrt(math.log(v[156] ** 2 + 1)) if cv else v[155]
        se = s * math.sqrt((1 / n1 + 1 / n2) / 2)
        alpha = v[0] if menu == 810 else (1 - v[321]) / 2
        t = math.log(v[96])
        return tost_power(alpha, (t - math.log(v[29])) / se, (math.log(v[30]) - t) / se,
                          n1 + n2 - 2)
    add(f'menu {menu}', 2, 3, 0, [], {10: 1, 19: 1 if cv else 0, 53: 2}, values, unknown, power,
        bracket, tolerance, power_kind)


def be_base(**changes):
    v = {0: 0.05, 1: 0.8, 29: 0.8, 30: 1.25, 96: 1.05, 156: 0.3, 322: 20, 325: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


bioequivalence(be_base(), 322, (3, 1e4))
bioequivalence(be_base(k156=0.2, k96=1), 322, (3, 1e4))
bioequivalence(be_base(k96=0.95), 322, (3, 1e4))
bioequivalence(be_base(k1=0.9), 322, (3, 1e4))
bioequivalence(be_base(k322=24), 1, tolerance=POWER)
bioequivalence(be_base(k322=24), 156, (0.05, 0.6), 0.004)
ci = be_base()
ci = {321: 0.9, 318: 0.8, **{k: x for k, x in ci.items() if k > 1}}
bioequivalence(ci, 322, (3, 1e4), SIZE, 811)


def noninferiority(tails_of_interval, values, unknown, bracket=None, tolerance=SIZE):
    """Lower confidence limit above the non-inferiority limit. Kinds: 330 limit, 62 difference."""
    def power(v):
        n1, n2 = v[4], v[4] * v[5]
        se = v[2] * math.sqrt(1 / n1 + 1 / n2)
        return t_power((1 - v[321]) / tails_of_interval, 1, 0, (v[62] - v[330]) / se, n1 + n2 - 2)
    add('menu 830', 2, 1, 0, [36] if tails_of_interval == 2 else [], {1: 1, 2: 2}, values, unknown,
        power, bracket, tolerance, 318)


def ni_base(**changes):
    v = {321: 0.95, 318: 0.8, 330: -0.3, 62: 0, 2: 1, 4: 150, 5: 1}
    v.update({int(k[1:]): x for k, x in changes.items()})
    return v


noninferiority(2, ni_base(), 4, (3, 1e4))
noninferiority(1, ni_base(), 4, (3, 1e4))
noninferiority(2, ni_base(k62=0.1), 4, (3, 1e4))
noninferiority(2, ni_base(), 318, tolerance=POWER)


def median_ratio(menu, tails, values, unknown, bracket=None, tolerance=SIZE):
    """Known shape. Kinds: 96 ratio, 27 shape; limits 97, 98 or 319."""
    def power(v):
        n1, n2 = v[4], v[4] * v[5]
        se = v[27] * math.sqrt(1 / n1 + 1 / n2)
        t = math.log(v[96])
        if tails == 3:
            return z_tost((1 - v[321]) / 2, (t - math.log(v[97])) / se, (math.log(v[98]) - t) / se)
        return z_power(1 - v[321], 1, 0, (t - math.log(v[319])) / se)
    add(f'menu {menu}', 2, tails, 0, [], {10: 1, 2: 2}, values, unknown, power, bracket, tolerance,
        318)


mr = {321: 0.9, 318: 0.8, 97: 0.8, 98: 1.25, 96: 1, 27: 0.3, 4: 40, 5: 1}
median_ratio(801, 3, mr, 4, (3, 1e4))
median_ratio(801, 3, {**mr, 96: 1.05}, 4, (3, 1e4))
median_ratio(801, 3, {**mr, 4: 50}, 318, tolerance=POWER)
mn = {321: 0.95, 318: 0.8, 319: 0.8, 96: 1, 27: 0.4, 4: 40, 5: 1}
median_ratio(831, 1, mn, 4, (3, 1e4))
median_ratio(831, 1, {**mn, 4: 60}, 318, tolerance=POWER)


def parameter(analysis, samples, tails, groups, values, unknown, effect, se, df, bracket=None,
              tolerance=SIZE, left=0):
    """Parameters of distributions: effect(values, kind of the null value or limit) and its standard
    error; df None where the deviations are known."""
    null, low, high = NULL_AND_LIMITS[analysis.split()[1], samples]
    def power(v):
        shift = lambda kind: effect(v, kind) / se(v)
        if tails == 3:
            distances = shift(low), -shift(high)
            return z_tost(v[0], *distances) if df is None else tost_power(v[0], *distances, df(v))
        return z_power(v[0], tails, left, shift(null)) if df is None else \
            t_power(v[0], tails, left, shift(null), df(v))
    add(analysis, samples, tails, left, [], groups, values, unknown, power, bracket, tolerance)


# Kinds of the null value and the limits, by distribution and samples: means (0), medians (1), means
# and slopes of a bivariate normal distribution (10).
NULL_AND_LIMITS = {('0', 1): (57, 6, 7), ('0', 2): (61, 6, 7), ('1', 1): (89, 97, 98),
                   ('1', 2): (93, 97, 98), ('10', 1): (61, 6, 7)}


def one_location(log, known, tails, values, unknown, bracket=None, tolerance=SIZE, left=0):
    """One mean, or one median on the log scale. Kinds: 58, 90 truth, 2, 27 deviation, 85 size."""
    truth, sd = (90, 27) if log else (58, 2)
    scale = math.log if log else lambda x: x
    parameter(f'distribution {int(log)} {0 if known else 1} 0', 1, tails,
              {} if tails == 3 else {9 if log else 0: 0}, values, unknown,
              lambda v, kind: scale(v[truth]) - scale(v[kind]),
              lambda v: v[sd] / math.sqrt(v[85]), None if known else lambda v: v[85] - 1, bracket,
              tolerance, left)


def two_locations(log, known, tails, values, unknown, bracket=None, tolerance=SIZE, left=0):
    """A difference of means, or a ratio of medians on the log scale. Kinds: 62, 96 truth; 216, 219
    or 50, 108 known deviation and its ratio, 2 or 27 a common unknown one; 4 size 1, 5 ratio."""
    truth, common, first, ratio = (96, 27, 50, 108) if log else (62, 2, 216, 219)
    scale = math.log if log else lambda x: x
    groups = {10 if log else 1: 1, 2: 2}
    if known:
        groups[31 if log else 29] = 2
    def se(v):
        s1, s2 = (v[first], v[first] * v[ratio]) if known else (v[common], v[common])
        return math.sqrt(s1 ** 2 / v[4] + s2 ** 2 / (v[4] * v[5]))
    parameter(f'distribution {int(log)} {0 if known else 1} 0', 2, tails, groups, values, unknown,
              lambda v, kind: scale(v[truth]) - scale(v[kind]), se,
              None if known else lambda v: v[4] + v[4] * v[5] - 2, bracket, tolerance, left)


# The same as parameters of the normal and lognormal distributions. A z-test errs by the quantile
# alone.
Z_SIZE, Z_POWER = 0.06, 3e-4
for known, size, accuracy in ((True, Z_SIZE, Z_POWER), (False, SIZE, POWER)):
    mean = {0: 0.05, 1: 0.8, 57: 1, 58: 1.5, 2: 1, 85: 30}
    one_location(False, known, 1, mean, 85, (3, 1e4), size)
    one_location(False, known, 2, mean, 85, (3, 1e4), size)
    one_location(False, known, 1, {**mean, 58: 0.6}, 1, None, accuracy, -1)
    one_location(False, known, 3, {0: 0.05, 1: 0.8, 6: -0.6, 7: 0.6, 58: 0.1, 2: 1, 85: 40}, 1, None,
                 accuracy)
    deviations = {216: 1, 219: 1.5} if known else {2: 1.2}
    means = {0: 0.05, 1: 0.8, 61: 0.1, 62: 0.7, **deviations, 4: 60, 5: 1.5}
    two_locations(False, known, 1, means, 4, (3, 1e4), size)
    two_locations(False, known, 2, means, 4, (3, 1e4), size)
    two_locations(False, known, 1, {**means, 62: -0.5}, 1, None, accuracy, -1)
    two_locations(False, known, 3, {0: 0.05, 1: 0.8, 6: -0.6, 7: 0.7, 62: 0.1, **deviations, 4: 60,
                                    5: 1.5}, 1, None, accuracy)
    median = {0: 0.05, 1: 0.8, 89: 2, 90: 2.6, 27: 0.5, 85: 30}
    one_location(True, known, 1, median, 85, (3, 1e4), size)
    one_location(True, known, 2, median, 85, (3, 1e4), size)
    one_location(True, known, 1, {**median, 90: 1.6}, 1, None, accuracy, -1)
    one_location(True, known, 3, {0: 0.05, 1: 0.8, 97: 1.5, 98: 2.5, 90: 2, 27: 0.5, 85: 40}, 1,
                 None, accuracy)
    shapes = {50: 0.5, 108: 1.4} if known else {27: 0.6}
    medians = {0: 0.05, 1: 0.8, 93: 1.1, 96: 1.5, **shapes, 4: 60, 5: 1.5}
    two_locations(True, known, 1, medians, 4, (3, 1e4), size)
    two_locations(True, known, 2, medians, 4, (3, 1e4), size)
    two_locations(True, known, 1, {**medians, 96: 0.9}, 1, None, accuracy, -1)
    two_locations(True, known, 3, {0: 0.05, 1: 0.8, 97: 0.75, 98: 1.4, 96: 1.05, **shapes, 4: 60,
                                   5: 1.5}, 1, None, accuracy)


def paired_equivalence(values, unknown, bracket=None, tolerance=SIZE):
    """Two one-sided paired t-tests. Kinds: 6, 7 limits, 158 true mean of the differences."""
    def power(v):
        se = v[3] / math.sqrt(v[85])
        return tost_power(v[0], (v[158] - v[6]) / se, (v[7] - v[158]) / se, v[85] - 1)
    add('menu 1', 1, 3, 0, [], {}, values, unknown, power, bracket, tolerance)


paired_tost = {0: 0.05, 1: 0.8, 6: -0.5, 7: 0.5, 158: 0.05, 3: 1, 85: 40}
paired_equivalence(paired_tost, 85, (5, 1e4))
paired_equivalence(paired_tost, 1, None, POWER)


def bivariate_deviation(v):
    s2 = v[216] * v[219]
    return math.sqrt(v[216] ** 2 + s2 ** 2 - 2 * v[220] * v[216] * s2)


# Two one-sided tests of the means and of the slope of a bivariate normal distribution: kinds 216,
# 219 deviations, 220 correlation; 204 slope, 212 residual deviation, 213 that of the covariate.
parameter('distribution 10 0 0', 1, 3, {1: 1, 29: 2},
          {0: 0.05, 1: 0.8, 6: -0.5, 7: 0.5, 62: 0.05, 216: 1, 219: 1.2, 220: 0.5, 85: 50}, 1,
          lambda v, kind: v[62] - v[kind], lambda v: bivariate_deviation(v) / math.sqrt(v[85]),
          lambda v: v[85] - 1, None, POWER)
parameter('distribution 10 3 0', 1, 3, {},
          {0: 0.05, 1: 0.8, 6: -0.4, 7: 0.5, 204: 0.1, 212: 1, 213: 1.1, 85: 60}, 1,
          lambda v, kind: v[204] - v[kind], lambda v: v[212] / v[213] / math.sqrt(v[85]),
          lambda v: v[85] - 2, None, POWER)

with open('checks/data/validation/means.tsv', 'w') as out:
    out.write('# Exact values computed by checks/reference/means.py (scipy).\n')
    out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
    for row in ROWS:
        out.write('\t'.join(map(str, row)) + '\n')
print(len(ROWS), 'cases')
