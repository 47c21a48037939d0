#!/usr/bin/env python3
"""Reference values for repeated measurements: checks/data/validation/repeated.tsv (exact),
checks/data/validation/repeated_simulation.tsv (simulated), checks/data/epsilon.tsv and
checks/data/repeated_grids.tsv.

Independent of the program:
- Covariance matrices are built cell by cell; contrasts come from the singular vectors of the
  centring matrix, not from polynomials (epsilon does not depend on which orthonormal contrasts are
  taken); eigenvalues from numpy.
- The bias of the estimated epsilon is the second-order expansion of E[eps(l^)] for the eigenvalues
  l^ of a Wishart matrix (D. N. Lawley, Biometrika 43, 1956, 128-136: bias and variance of sample
  roots; the form of K. E. Muller and C. N. Barton, JASA 84, 1989, 549-555): the derivatives of eps
  are taken numerically by mpmath.
- The non-centrality is the sum of squares of the true means of a configuration, over the mean
  eigenvalue; Hotelling's is the quadratic form of the means themselves.
- Powers are those of scipy's non-central F and t.
- Simulation draws the data, estimates every covariance matrix and rejects as the test does.

Needs Python 3 with numpy, scipy and mpmath; run from the repository's root. A few minutes.
"""
import math
import mpmath
import numpy as np
from scipy import optimize, stats
from tpowers import t_power, tost_power

ROWS, SIMULATED = [], []
REPLICATES = 200000
SEED = 20240611


# --- Matrices ---------------------------------------------------------------------------------------

def contrasts(k):
    return np.linalg.svd(np.eye(k) - np.full((k, k), 1 / k))[0][:, :k - 1].T


def compound(k, sd, rho):
    return sd * sd * (np.full((k, k), rho) + np.eye(k) * (1 - rho))


def auto(k, sd, rho):
    return sd * sd * np.array([[rho ** abs(i - j) for j in range(k)] for i in range(k)])


def roots_of(s):
    c = contrasts(len(s))
    return np.linalg.eigvalsh(c @ s @ c.T)


def epsilon_of(roots):
    return sum(roots) ** 2 / (len(roots) * sum(r * r for r in roots))


def bias_of(roots):
    """Bias factor of the estimated epsilon; equal roots (to 1e-6 of their mean) leave out their pair."""
    mpmath.mp.dps = 40
    roots = [mpmath.mpf(float(r)) for r in roots / np.mean(roots)]
    m = len(roots)
    if m == 1:
        return 0.0

    def along(i, order):
        def f(x):
            return epsilon_of(roots[:i] + [x] + roots[i + 1:])
        return mpmath.diff(f, roots[i], order)
    total = mpmath.mpf(0)
    for i in range(m):
        total += roots[i] ** 2 * along(i, 2)
        slope = along(i, 1)
        for j in range(m):
            if j != i and abs(roots[i] - roots[j]) > 1e-6:
                total += slope * roots[i] * roots[j] / (roots[i] - roots[j])
    return float(total)


def errors_of(s):
    """Within and between error, epsilon, bias."""
    roots = roots_of(s)
    k = len(s)
    return math.sqrt(np.mean(roots)), math.sqrt(s.sum() / k), epsilon_of(roots), bias_of(roots)


# --- Configurations of means ------------------------------------------------------------------------

def configuration(kind, levels):
    m = np.zeros(levels)
    if kind == 0:
        m = np.arange(levels, dtype=float) ** 1.3
        return (m - m.mean()) / m.std()
    if kind == 1:
        m[0], m[-1] = 0.5, -0.5
        return m
    m[0] = 1
    return m


def within_lost(kind, levels):
    """Sum of squares of the means of one subject for an effect of 1."""
    m = configuration(kind, levels)
    return float(np.sum((m - m.mean()) ** 2))


# --- Powers -----------------------------------------------------------------------------------------

def f_power(alpha, df1, df2, lam):
    return float(stats.ncf.sf(stats.f.ppf(1 - alpha, df1, df2), df1, df2, lam)) if lam > 0 else alpha


def corrected_power(alpha, df1, df2, lam, eps, bias, n):
    e = eps + bias / (n - 1)
    return f_power(alpha, max(df1 * e, 1), max(df2 * e, 1), lam * e)


# --- Rows -------------------------------------------------------------------------------------------

TYPES = (34, 147, 148)
LINEAR_COMBINATION, GENERAL = 14, 2

# What the program's approximations deserve (docs/accuracy.md): sums for F, Patnaik's form above 10
# and 10 degrees of freedom or lambda 50, degrees of freedom cut to 999, critical values interpolated
# between whole degrees of freedom (up to 0.003 between 1 and 2); the non-central t by its normal form.
F_SUMS, F_PATNAIK, T_NORMAL, T_FEW_DF = 0.0005, 0.006, 0.004, 0.04


def f_tolerance(alpha, df1, df2, lam):
    def at(d1, d2):
        return stats.f.ppf(1 - alpha, d1, d2)
    cut1, cut2 = (min(df1, 999), min(df2, 999)) if min(df1, df2) <= 10 else (df1, df2)
    i, j = math.floor(cut1), math.floor(cut2)
    def row(d1):
        return at(d1, j) + (cut2 - j) * (at(d1, j + 1) - at(d1, j))
    critical = row(i) + (cut1 - i) * (row(i + 1) - row(i))
    told = float(stats.ncf.sf(critical, cut1, cut2, lam)) if lam > 0 else alpha
    exact = f_power(alpha, df1, df2, lam)
    return abs(told - exact) + (F_PATNAIK if lam > 48 or (df1 > 10 and df2 > 10) else F_SUMS)


def row(menu, samples, tails, left, checks, groups, values, unknown, power, in_power, bracket=None,
        to=ROWS):
    solved = dict(values)
    if unknown != 1:
        solved[unknown] = optimize.brentq(lambda x: power({**values, unknown: x}) - values[1],
                                          *bracket, xtol=1e-10)
    tolerance = in_power(solved) if callable(in_power) else in_power
    exact = power(solved) if unknown == 1 else solved[unknown]
    if unknown != 1:
        x = solved[unknown]
        h = max(abs(x), 1e-3) * 1e-4
        slope = (power({**values, unknown: x + h}) - power({**values, unknown: x - h})) / (2 * h)
        tolerance = tolerance / abs(slope) + 1e-4
    given = ';'.join(f'{k}={v:g}' for k, v in values.items() if k != unknown)
    to.append([f'menu {menu}', samples, tails, left, ','.join(map(str, checks)),
               ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
               f'{exact:.8g}', f'{tolerance:.2g}'])


def f_row(menu, samples, groups, values, unknown, design, bracket=None):
    """design(values) -> alpha, df1, df2, lambda."""
    row(menu, samples, 2, 0, [], groups, values, unknown, lambda v: f_power(*design(v)),
        lambda v: f_tolerance(*design(v)), bracket)


def t_row(menu, samples, tails, left, groups, values, unknown, design, bracket=None):
    """design(values) -> df, what the standard error is in standard deviations."""
    def power(v):
        df, share = design(v)
        se = v[137] * share
        if tails == 3:
            return tost_power(v[0], (v[247] - v[6]) / se, (v[7] - v[247]) / se, df)
        return t_power(v[0], tails, left, v[247] / se, df)
    row(menu, samples, tails, left, [LINEAR_COMBINATION], groups, values, unknown, power,
        lambda v: T_NORMAL if design(v)[0] > 5 else T_FEW_DF, bracket)


def structure(v, option, levels):
    if option == GENERAL:
        return v.get(251), v.get(253), v.get(249), v.get(252)
    return errors_of((compound, auto)[option](levels, v[2], v[220]))


def mixed(v, option, k):
    """A broken number of levels lies between the whole ones."""
    low = math.floor(k)
    if low == k or option == GENERAL:
        return structure(v, option, round(k))
    a, b = structure(v, option, low), structure(v, option, low + 1)
    return tuple(x + (k - low) * (y - x) for x, y in zip(a, b))


# --- One within factor ------------------------------------------------------------------------------

def one_within(kind, option):
    def design(v):
        k, n = v[256], v[248]
        w, _, eps, bias = mixed(v, option, k)
        if k == round(k):
            lost = within_lost(kind, round(k))
        else:
            lost = (k, 1 / 2, (k - 1) / k)[kind]
        lam = n * lost * (v[TYPES[kind]] / w) ** 2
        e = eps + bias / (n - 1)
        return v[0], max((k - 1) * e, 1), max((k - 1) * (n - 1) * e, 1), lam * e
    return design


def within(kind, option, **other):
    v = {0: 0.05, 1: 0.8, TYPES[kind]: (0.25, 0.7, 0.7)[kind]}
    v.update({251: 0.8, 249: 0.7, 252: -1} if option == GENERAL else {2: 1, 220: 0.5})
    v.update({256: 5, 248: 30})
    v.update({int(name[1:]): x for name, x in other.items()})
    return v


def within_row(kind, option, unknown, bracket=None, at=None, **other):
    """at: the power is that of this value of the unknown, to two decimals."""
    v, design = within(kind, option, **other), one_within(kind, option)
    if at is not None:
        v[1] = round(f_power(*design({**v, unknown: at})), 2)
    f_row(20, 1, {17: kind, 39: option}, v, unknown, design, bracket)


for option in (0, 1, 2):
    for kind in (0, 1, 2):
        within_row(kind, option, 1)
        within_row(kind, option, 1, k256=3, k248=12)
        within_row(kind, option, 248, (6, 3000))
        within_row(kind, option, TYPES[kind], (0.01, 5), k1=0.7)
    within_row(0, option, 1, k256=2, k248=20, **({'k249': 1, 'k252': 0} if option == 2 else {}))
    within_row(0, option, 1, k256=10, k248=60)
    within_row(0, option, 1, k256=10, k248=10)
    within_row(0, option, 1, k0=0.01, k248=100)
    within_row(0, option, 0, (1e-3, 0.9))
within_row(0, 0, 2, (0.1, 20), k1=0.7)
within_row(0, 0, 220, (-0.24, 0.99), k1=0.7)
within_row(0, 1, 220, (0.05, 0.99), k1=0.7)
within_row(0, 0, 256, (5.01, 6.99), at=6.3)
within_row(0, 1, 256, (5.01, 6.99), at=6.3, k220=0.2, k248=100, k34=0.137)
within_row(0, 2, 251, (0.1, 20), k1=0.7)
within_row(0, 2, 249, (0.3, 1), k1=0.8)
within_row(0, 2, 252, (-10, 5), at=-3)
within_row(0, 0, 1, k220=-0.2, k256=4)
within_row(0, 1, 1, k220=-0.4, k256=6)
within_row(0, 1, 1, k220=0.9, k34=0.1, k256=8)
within_row(0, 2, 1, k252=0, k249=0.55)
for option in (0, GENERAL):
    spread = {2: 1, 220: 0.5} if option == 0 else {}
    def combination(**other):
        v = {0: 0.05, 1: 0.8, 247: 0.5, 137: 1, **spread, 256: 5, 248: 30}
        v.update({int(name[1:]): x for name, x in other.items()})
        return v
    def one_group(v):
        return v[248] - 1, 1 / math.sqrt(v[248])
    t_row(20, 1, 2, 0, {39: option}, combination(), 1, one_group)
    t_row(20, 1, 1, 0, {39: option}, combination(), 1, one_group)
    t_row(20, 1, 1, -1, {39: option}, combination(k247=-0.5), 1, one_group)
    t_row(20, 1, 2, 0, {39: option}, combination(), 248, one_group, (3, 3000))
    t_row(20, 1, 2, 0, {39: option}, combination(), 247, one_group, (0.01, 9))
    t_row(20, 1, 3, 0, {39: option}, combination(k6=-0.6, k7=0.6, k247=0.05), 1, one_group)
    t_row(20, 1, 3, 0, {39: option}, combination(k6=-0.5, k7=0.5, k247=0), 248, one_group, (20, 3000))


# --- One within, one between ------------------------------------------------------------------------

A, B, AB = 0, 1, 2


def group_sizes(v):
    n1 = v[4]
    n2 = v[37] if 37 in v else n1 + v[38] if 38 in v else n1 * v[5]
    return [n1] + [n2] * (round(v[238]) - 1)


def groups_lost(kind, sizes):
    """Sum of squares of the group means for an effect of 1, subject by subject."""
    sizes = np.array(sizes, float)
    if kind == 0:
        return float(sizes.sum())
    m = np.zeros(len(sizes))
    if kind == 1:
        # The first group and another apart, the others where these two balance.
        m[0], m[1] = sizes[1] / (sizes[0] + sizes[1]), -sizes[0] / (sizes[0] + sizes[1])
    else:
        m[int(np.argmin(sizes))] = 1
    return float(np.sum(sizes * (m - np.average(m, weights=sizes)) ** 2))


def two_factors(tested, kind, option):
    def design(v):
        a, b = v[238], round(v[256])
        sizes = group_sizes(v)
        total = sum(sizes)
        w, between, eps, bias = structure(v, option, b)
        effect = v[TYPES[kind]]
        if tested == A:
            return v[0], a - 1, total - a, b * groups_lost(kind, sizes) * (effect / between) ** 2
        e = eps + bias / (total - 1)
        if tested == B:
            df1, lost = b - 1, total * within_lost(kind, b)
        else:
            df1, lost = (a - 1) * (b - 1), \
                (total * b, total * b, (a * b - 1) * total / a)[kind]
        return v[0], max(df1 * e, 1), max((b - 1) * (total - a) * e, 1), \
            lost * (effect / w) ** 2 * e
    return design


def two(tested, kind, option, **other):
    v = {0: 0.05, 1: 0.8, TYPES[kind]: (0.25, 0.6, 0.6)[kind]}
    if option != GENERAL:
        v.update({2: 1, 220: 0.4})
    elif tested == A:
        v[253] = 1.3
    else:
        v.update({251: 0.9, 249: 0.8, 252: -1.5})
    v.update({238: 3, 256: 4, 4: 12, 37: 12})
    for name, x in other.items():
        v[int(name[1:])] = x
        if name in ('k38', 'k5'):
            v.pop(37, None)
    return v


def two_row(tested, kind, option, unknown, bracket=None, **other):
    v = two(tested, kind, option, **other)
    form = 0 if 37 in v else 1 if 38 in v else 2
    f_row(21, 3, {43: tested, 39: option, 17: kind, 2: form}, v, unknown,
          two_factors(tested, kind, option), bracket)


for tested in (A, B, AB):
    for option in (0, 1, 2):
        for kind in (0, 1, 2):
            two_row(tested, kind, option, 1)
        two_row(tested, 0, option, 1, k38=6)
        two_row(tested, 0, option, 1, k5=0.5, k4=20)
        two_row(tested, 0, option, 4, (4, 3000), k5=1)
        two_row(tested, 0, option, 34, (0.01, 5), k1=0.7)
    two_row(tested, 0, 0, 1, k238=2, k256=2, k4=15, k37=15)
    two_row(tested, 0, 0, 220, (-0.3, 0.95), k1=0.6, k34=0.25)
    two_row(tested, 0, 1, 1, k220=-0.3, k256=6)
two_row(A, 1, 0, 1, k4=30, k37=10)
two_row(A, 2, 0, 1, k4=10, k37=30)
two_row(A, 2, 0, 1, k4=30, k37=10)


def cells(v):
    return v[238] * (v[326] - 1), 1 / math.sqrt(v[326])


def cell_values(option=GENERAL, **other):
    v = {0: 0.05, 1: 0.8, 247: 0.5, 137: 1, **({2: 1, 220: 0.4} if option == 0 else {}),
         238: 3, 256: 4, 326: 20}
    v.update({int(name[1:]): x for name, x in other.items()})
    return v


for option in (0, GENERAL):
    t_row(21, 3, 2, 0, {39: option}, cell_values(option), 1, cells)
    t_row(21, 3, 1, 0, {39: option}, cell_values(option), 1, cells)
    t_row(21, 3, 1, -1, {39: option}, cell_values(option, k247=-0.5), 1, cells)
    t_row(21, 3, 2, 0, {39: option}, cell_values(option), 326, cells, (3, 3000))
    t_row(21, 3, 3, 0, {39: option}, cell_values(option, k6=-0.6, k7=0.6, k247=0.05), 1, cells)


# --- Hotelling --------------------------------------------------------------------------------------

def one_sample(v):
    p, n = v[256], v[248]
    return v[0], p, n - p, v[254] * n


def two_samples(v):
    p, n1 = v[256], v[4]
    n2 = v[37] if 37 in v else n1 + v[38] if 38 in v else n1 * v[5]
    return v[0], p, n1 + n2 - p - 1, v[254] * n1 * n2 / (n1 + n2)


def distance(size, **other):
    v = {0: 0.05, 1: 0.8, 254: 0.5, 256: 4, **size}
    for name, x in other.items():
        v[int(name[1:])] = x
    return v


ONE = {248: 30}
f_row(30, 1, {}, distance(ONE), 1, one_sample)
f_row(30, 1, {}, distance(ONE, k256=2, k248=8), 1, one_sample)
f_row(30, 1, {}, distance(ONE, k256=10, k248=12), 1, one_sample)
f_row(30, 1, {}, distance(ONE, k0=0.01), 1, one_sample)
f_row(30, 1, {}, distance(ONE, k254=0), 1, one_sample)
f_row(30, 1, {}, distance(ONE), 248, one_sample, (6, 3000))
f_row(30, 1, {}, distance(ONE, k1=0.9, k254=0.1, k256=8), 248, one_sample, (10, 3000))
f_row(30, 1, {}, distance(ONE, k1=0.7), 254, one_sample, (0.01, 9))
f_row(30, 1, {}, distance(ONE, k1=0.7), 256, one_sample, (2, 10))
f_row(30, 1, {}, distance(ONE), 0, one_sample, (1e-3, 0.9))
# R. A. Johnson and D. W. Wichern, Applied Multivariate Statistical Analysis, example 5.2: sweat of 20
# women, T^2 = 9.74, that is a squared distance of 0.48715 in 20 subjects.
f_row(30, 1, {}, distance(ONE, k254=9.743037564 / 20, k256=3, k248=20), 1, one_sample)
for form, other in ((0, {37: 25}), (1, {38: -5}), (2, {5: 1.5})):
    f_row(31, 2, {2: form}, distance({4: 20, **other}), 1, two_samples)
    f_row(31, 2, {2: form}, distance({4: 20, **other}, k256=7), 1, two_samples)
    if form:
        f_row(31, 2, {2: form}, distance({4: 20, **other}), 4, two_samples, (9, 3000))
    f_row(31, 2, {2: form}, distance({4: 20, **other}, k1=0.7), 254, two_samples, (0.01, 9))
f_row(31, 2, {2: 0}, distance({4: 30, 37: 30}, k1=0.65), 37, two_samples, (5, 3000))
f_row(31, 2, {2: 0}, distance({4: 3, 37: 4}, k256=5, k254=20), 1, two_samples)
f_row(31, 2, {2: 0}, distance({4: 30, 37: 30}, k1=0.65), 256, two_samples, (2, 10))


def one_combination(v):
    return v[248] - 1, 1 / math.sqrt(v[248])


def two_combination(v):
    n1 = v[4]
    n2 = v[37] if 37 in v else n1 * v[5]
    return n1 + n2 - 2, math.sqrt(1 / n1 + 1 / n2)


def combined(size, **other):
    v = {0: 0.05, 1: 0.8, 247: 0.5, 137: 1, 256: 4, **size}
    v.update({int(name[1:]): x for name, x in other.items()})
    return v


for menu in (30, 40):
    t_row(menu, 1, 2, 0, {}, combined(ONE), 1, one_combination)
    t_row(menu, 1, 1, 0, {}, combined(ONE), 1, one_combination)
    t_row(menu, 1, 1, -1, {}, combined(ONE, k247=-0.5), 1, one_combination)
    t_row(menu, 1, 2, 0, {}, combined(ONE), 248, one_combination, (3, 3000))
    t_row(menu, 1, 3, 0, {}, combined(ONE, k6=-0.6, k7=0.6, k247=0.05), 1, one_combination)
t_row(31, 2, 2, 0, {2: 0}, combined({4: 40, 37: 60}), 1, two_combination)
t_row(31, 2, 1, 0, {2: 2}, combined({4: 40, 5: 0.5}), 1, two_combination)
t_row(31, 2, 1, -1, {2: 0}, combined({4: 40, 37: 60}, k247=-0.4), 1, two_combination)
t_row(31, 2, 2, 0, {2: 2}, combined({4: 40, 5: 2}), 4, two_combination, (3, 3000))
t_row(31, 2, 3, 0, {2: 0}, combined({4: 60, 37: 60}, k6=-0.6, k7=0.6, k247=0.05), 1, two_combination)


# --- MANOVA of repeated measurements ----------------------------------------------------------------

def multivariate(v):
    k, n = v[256], v[248]
    return v[0], k - 1, n - k + 1, v[254] * n


f_row(40, 1, {}, distance(ONE), 1, multivariate)
f_row(40, 1, {}, distance(ONE, k256=2, k248=10), 1, multivariate)
f_row(40, 1, {}, distance(ONE, k256=10, k248=15), 1, multivariate)
f_row(40, 1, {}, distance(ONE), 248, multivariate, (5, 3000))
f_row(40, 1, {}, distance(ONE, k1=0.7), 254, multivariate, (0.01, 9))
f_row(40, 1, {}, distance(ONE, k1=0.8), 256, multivariate, (2, 10))
# Johnson and Wichern, example 6.2: 19 dogs under 4 treatments, T^2 = 116.
f_row(40, 1, {}, distance(ONE, k254=0.6, k256=4, k248=19), 1, multivariate)


def multivariate_two(v):
    b, n = v[256], v[320]
    return v[0], b - 1, max(n - b + 1, 1), v[254] * n / 4


def groups_alone(kind):
    def design(v):
        half = v[320] / 2
        return v[0], 1, v[320] - 2, groups_lost(kind, [half, half]) * (v[TYPES[kind]] / v[2]) ** 2
    return design


for tested in (B, AB):
    f_row(41, 2, {43: tested}, distance({320: 60}, k238=2), 1, multivariate_two)
    f_row(41, 2, {43: tested}, distance({320: 25}, k238=2, k256=8, k254=1.5), 1, multivariate_two)
    f_row(41, 2, {43: tested}, distance({320: 60}, k238=2), 320, multivariate_two, (6, 3000))
    f_row(41, 2, {43: tested}, distance({320: 60}, k238=2, k1=0.7), 254, multivariate_two, (0.01, 9))
for kind in (0, 1, 2):
    def alone(**other):
        v = {0: 0.05, 1: 0.8, TYPES[kind]: (0.3, 0.6, 0.6)[kind], 2: 1, 238: 2, 320: 70}
        v.update({int(name[1:]): x for name, x in other.items()})
        return v
    f_row(41, 2, {43: A, 17: kind}, alone(), 1, groups_alone(kind))
    f_row(41, 2, {43: A, 17: kind}, alone(), 320, groups_alone(kind), (6, 3000))


def two_groups(v):
    return v[320] - 2, math.sqrt(2 / v[320])


def total(**other):
    v = {0: 0.05, 1: 0.8, 247: 0.5, 137: 1, 238: 2, 256: 4, 320: 70}
    v.update({int(name[1:]): x for name, x in other.items()})
    return v


t_row(41, 2, 2, 0, {}, total(), 1, two_groups)
t_row(41, 2, 1, 0, {}, total(), 1, two_groups)
t_row(41, 2, 1, -1, {}, total(k247=-0.5), 1, two_groups)
t_row(41, 2, 2, 0, {}, total(), 320, two_groups, (5, 3000))
t_row(41, 2, 3, 0, {}, total(k6=-0.6, k7=0.6, k247=0.05, k320=100), 1, two_groups)


# --- Simulation -------------------------------------------------------------------------------------

rng = np.random.default_rng(SEED)
CLOSENESS = {}


def simulated(menu, samples, groups, values, reject, close, note):
    """close: how near the program's formula comes to what is simulated, beside 4 standard errors."""
    share = reject()
    se = math.sqrt(share * (1 - share) / REPLICATES)
    row(menu, samples, 2, 0, [], groups, values, 1, lambda v: share, 4 * se + close, to=SIMULATED)
    CLOSENESS[note] = (share, se)


def batches(size=20000):
    for _ in range(REPLICATES // size):
        yield size


def covariances(x):
    """Of each replicate: x is replicates by subjects by variables; the mean is taken off."""
    d = x - x.mean(axis=1, keepdims=True)
    return np.einsum('rni,rnj->rij', d, d)


def corrected_f(n, mean, s, alpha):
    """The F-test with degrees of freedom corrected by the estimated epsilon: share of rejections."""
    k = len(s)
    c = contrasts(k)
    root = np.linalg.cholesky(c @ s @ c.T)
    def reject():
        hits = 0
        for size in batches():
            y = rng.standard_normal((size, n, k - 1)) @ root.T + c @ mean
            ss = covariances(y)
            trace = np.trace(ss, axis1=1, axis2=2)
            eps = trace ** 2 / ((k - 1) * np.einsum('rij,rij->r', ss, ss))
            f = n * (n - 1) * np.sum(y.mean(axis=1) ** 2, axis=1) / trace
            hits += int(np.sum(stats.f.sf(f, (k - 1) * eps, (k - 1) * (n - 1) * eps) < alpha))
        return hits / REPLICATES
    return reject


def simulate_within(kind, option, close, **other):
    v = within(kind, option, **other)
    k = round(v[256])
    s = (compound, auto)[option](k, v[2], v[220])
    mean = configuration(kind, k) * v[TYPES[kind]]
    simulated(20, 1, {17: kind, 39: option}, v,
              corrected_f(round(v[248]), mean, s, v[0]), close,
              f'one within, structure {option}, {other}')


# Beside the estimate's bias the formula knows nothing of its variance, nor of means that lie along a
# contrast of more than average variance. How near it comes is what the last column says.
simulate_within(0, 0, 0.005, k256=4, k248=20, k34=0.3)
simulate_within(0, 0, 0.005, k256=3, k248=40)
simulate_within(0, 1, 0.04, k256=4, k248=20, k220=0.6, k34=0.25)
simulate_within(0, 1, 0.04, k256=6, k248=25, k220=0.7, k34=0.2)
simulate_within(0, 1, 0.04, k256=8, k248=40, k220=0.4, k34=0.2)


def hotelling(n1, n2, mean, s, alpha):
    p = len(s)
    root = np.linalg.cholesky(s)
    def reject():
        hits = 0
        for size in batches():
            x = rng.standard_normal((size, n1, p)) @ root.T + mean
            if n2 == 0:
                d, ss, df, share = x.mean(axis=1), covariances(x), n1 - 1, n1
            else:
                y = rng.standard_normal((size, n2, p)) @ root.T
                d, ss = x.mean(axis=1) - y.mean(axis=1), covariances(x) + covariances(y)
                df, share = n1 + n2 - 2, n1 * n2 / (n1 + n2)
            t2 = share * df * np.einsum('ri,ri->r', d, np.linalg.solve(ss, d[..., None])[..., 0])
            f = t2 * (df - p + 1) / (df * p)
            hits += int(np.sum(stats.f.sf(f, p, df - p + 1) < alpha))
        return hits / REPLICATES
    return reject


def simulate_hotelling(p, n1, n2, size):
    s = auto(p, 1.3, 0.5) + np.diag(np.arange(p) * 0.2)
    mean = np.linspace(0.1, 0.5, p) * size
    d = float(mean @ np.linalg.solve(s, mean))
    v = {0: 0.05, 1: 0.8, 254: float(f'{d:.6g}'), 256: p}
    v.update({4: n1, 37: n2} if n2 else {248: n1})
    simulated(31 if n2 else 30, 2 if n2 else 1, {2: 0} if n2 else {}, v,
              hotelling(n1, n2, mean, s, 0.05), 0.001, f'Hotelling, {p} variables, {n1} and {n2}')


simulate_hotelling(3, 20, 0, 2)
simulate_hotelling(5, 15, 0, 3)
simulate_hotelling(3, 20, 30, 2)
simulate_hotelling(4, 12, 18, 3)


def corrected_f_of_groups(a, n, means, s, alpha, tested):
    """a groups of n; means: groups by levels. Epsilon is estimated from the pooled covariances."""
    k = len(s)
    c = contrasts(k)
    root = np.linalg.cholesky(c @ s @ c.T)
    def reject():
        hits = 0
        for size in batches():
            y = rng.standard_normal((size, a, n, k - 1)) @ root.T + (means @ c.T)[None, :, None, :]
            within_groups = y.mean(axis=2)
            d = y - within_groups[:, :, None, :]
            ss = np.einsum('rgni,rgnj->rij', d, d)
            trace = np.trace(ss, axis1=1, axis2=2)
            eps = trace ** 2 / ((k - 1) * np.einsum('rij,rij->r', ss, ss))
            grand = within_groups.mean(axis=1)
            if tested == B:
                effect, df = a * n * np.sum(grand ** 2, axis=1), 1
            else:
                effect = n * np.sum((within_groups - grand[:, None, :]) ** 2, axis=(1, 2))
                df = a - 1
            error = a * (n - 1)
            f = effect / df * error / trace
            hits += int(np.sum(stats.f.sf(f, df * (k - 1) * eps, (k - 1) * error * eps) < alpha))
        return hits / REPLICATES
    return reject


def simulate_two(tested, option, close, **other):
    v = two(tested, 0, option, **other)
    a, k, n = v[238], v[256], v[4]
    s = (compound, auto)[option](k, v[2], v[220])
    rising = configuration(0, k) * v[34]
    if tested == B:
        means = np.tile(rising, (a, 1))
    else:
        # The groups rise and fall alike: the deviations have the standard deviation of the effect.
        tilt = configuration(0, a)
        means = np.outer(tilt, rising)
    simulated(21, 3, {43: tested, 39: option, 17: 0, 2: 0}, v,
              corrected_f_of_groups(a, n, means, s, v[0], tested), close,
              f'one within, one between, tested {tested}, structure {option}')


simulate_two(B, 0, 0.01)
simulate_two(AB, 0, 0.01)
simulate_two(B, 1, 0.04, k220=0.6, k256=5, k34=0.15)
simulate_two(AB, 1, 0.04, k220=0.6, k256=5, k34=0.2, k238=2, k4=15, k37=15)


# --- Epsilon ----------------------------------------------------------------------------------------

EPSILON = []


def epsilon_row(name, k, a, b, s):
    w, between, eps, bias = errors_of(s)
    cells = ' '.join(f'{x:.9g}' for x in s.ravel())
    EPSILON.append([name, k, a, b, f'{w:.9g}', f'{between:.9g}', f'{eps:.9g}', f'{bias:.9g}', cells])


matrices = np.random.default_rng(7)
for k in range(2, 11):
    for sd, rho in ((1, 0.3), (0.3, 0.9), (25, -0.09)):
        epsilon_row('CS', k, sd, rho, compound(k, sd, rho))
    for sd, rho in ((1, 0.3), (0.3, 0.9), (25, -0.4), (0.0005, 0.5), (50000, 0.5)):
        epsilon_row('AR', k, sd, rho, auto(k, sd, rho))
    for _ in range(3):
        x = matrices.normal(size=(k, k + 2)) * np.exp(matrices.normal(size=(k, 1)) / 2)
        s = np.round(x @ x.T, 4)
        epsilon_row('general', k, 0, 0, s)


# --- Grids ------------------------------------------------------------------------------------------
#
# name, menu, groups, checks, layout, grids (rows with blanks, lines with "/", grids with "|"), the
# expected values kind=value.

GRIDS = []


def text(rows):
    return '/'.join(' '.join(f'{x:g}' for x in row) for row in np.atleast_2d(rows))


def column(values):
    return '/'.join(f'{x:g}' for x in values)


def grid(name, menu, groups, checks, layout, asked, grids, expected):
    GRIDS.append([name, menu, ','.join(f'{g}={o}' for g, o in groups.items()),
                  ','.join(map(str, checks)), ';'.join(f'{k}={v:g}' for k, v in layout.items()),
                  asked, '|'.join(grids), ';'.join(f'{k}={v:.9g}' for k, v in expected.items())])


def correlation_grids(s):
    sd = np.sqrt(np.diag(s))
    return [text(np.round(s / np.outer(sd, sd), 12)), column(sd)]


def same_scale(sd, r):
    return np.outer(sd, sd) * r


means5 = np.array([1, 1.5, 3, 2.5, 2])
for kind, value in ((0, means5.std()), (1, 2.0), (2, 0.5)):
    grid('means', 20, {17: kind, 39: 0}, [], {256: 5}, TYPES[kind], [column(means5)], {TYPES[kind]: value})
sd4 = np.array([1, 2, 1.5, 3])
r4 = np.array([[1, .5, .3, .1], [.5, 1, .6, .2], [.3, .6, 1, .4], [.1, .2, .4, 1]])
s4 = same_scale(sd4, r4)
w, between, eps, bias = errors_of(s4)
for asked in (251, 249, 252):
    grid('errors', 20, {17: 0, 39: 2}, [], {256: 4}, asked, [text(r4), column(sd4)],
         {251: w, 249: eps, 252: bias})
grid('errors', 20, {17: 0, 39: 2}, [22], {256: 4}, 251, [text(s4)], {251: w, 249: eps, 252: bias})
grid('between', 21, {43: A, 39: 2, 17: 0}, [22], {238: 3, 256: 4}, 253, [text(s4)], {253: between})
grid('between', 21, {43: A, 39: 2, 17: 0}, [], {238: 3, 256: 4}, 253, [text(r4), column(sd4)],
     {253: between})
grid('errors', 21, {43: B, 39: 2, 17: 0}, [22], {238: 3, 256: 4}, 249, [text(s4)],
     {251: w, 249: eps, 252: bias})
m34 = np.array([[1, 2, 3, 4], [2, 2.5, 5, 3], [0, 1, 1, 7]])
inter = m34 - m34.mean(1, keepdims=True) - m34.mean(0, keepdims=True) + m34.mean()
for tested, means in ((A, m34.mean(1)), (B, m34.mean(0))):
    ordered = np.sort(means)
    for kind, value in ((0, means.std()), (1, np.ptp(means)), (2, np.diff(ordered).min())):
        grid('matrix', 21, {43: tested, 39: 0, 17: kind}, [], {238: 3, 256: 4}, TYPES[kind],
             [text(m34)], {TYPES[kind]: value})
for kind, value in ((0, inter.std()), (1, inter.std()), (2, math.sqrt((inter ** 2).sum() / 11))):
    grid('interaction', 21, {43: AB, 39: 0, 17: kind}, [], {238: 3, 256: 4}, TYPES[kind],
         [text(m34)], {TYPES[kind]: value})
c4, m4 = np.array([-1, 0.5, 0.5, 0.25]), np.array([1, 2, 4, 3])
combination_values = {247: c4 @ m4, 137: math.sqrt(c4 @ s4 @ c4)}
for menu in (20, 30, 40):
    groups = {39: 2} if menu == 20 else {}
    for asked in (247, 137):
        grid('combination', menu, groups, [14, 22], {256: 4}, asked, [text(c4), text(m4), text(s4)],
             combination_values)
        grid('combination', menu, groups, [14], {256: 4}, asked,
             [text(c4), text(m4), text(r4), column(sd4)], combination_values)
cs = compound(4, 1.5, 0.4)
grid('combination', 20, {39: 0}, [14], {2: 1.5, 220: 0.4, 256: 4}, 137, [text(c4), text(m4)],
     {247: c4 @ m4, 137: math.sqrt(c4 @ cs @ c4)})
c24, m24 = np.array([[1, -1, 0, 0], [-1, 0, 2, -1]]), np.array([[1, 2, 3, 4], [2, 2.5, 5, 3]])
grid('cells', 21, {39: 2}, [14, 22], {238: 2, 256: 4}, 247, [text(c24), text(m24), text(s4)],
     {247: np.sum(c24 * m24), 137: math.sqrt(sum(c @ s4 @ c for c in c24))})
grid('cells', 41, {}, [14, 22], {238: 2, 256: 4}, 137, [text(c24), text(m24), text(s4)],
     {247: np.sum(c24 * m24), 137: math.sqrt(sum(c @ s4 @ c for c in c24))})
grid('difference', 31, {2: 0}, [14, 22], {256: 4}, 247, [text(c4), text(m24), text(s4)],
     {247: c4 @ (m24[1] - m24[0]), 137: math.sqrt(c4 @ s4 @ c4)})


def squared(x, s):
    return float(x @ np.linalg.solve(s, x))


def squared_contrasts(x, s):
    c = contrasts(len(s))
    return squared(c @ x, c @ s @ c.T)


d = m24[1] - m24[0]
grid('distance', 31, {2: 0}, [22], {256: 4}, 254, [text(m24), text(s4)], {254: squared(d, s4)})
grid('distance', 31, {2: 0}, [], {256: 4}, 254, [text(m24), text(r4), column(sd4)],
     {254: squared(d, s4)})
grid('distance', 40, {}, [], {256: 4}, 254, [text(m4), text(r4), column(sd4)],
     {254: squared_contrasts(m4, s4)})
grid('distance', 41, {43: AB}, [22], {238: 2, 256: 4}, 254, [text(m24), text(s4)],
     {254: squared_contrasts(d, s4)})
grid('distance', 41, {43: B}, [22], {238: 2, 256: 4}, 254, [text(m24), text(s4)],
     {254: 4 * squared_contrasts(m24.mean(0), s4)})
grid('distance of two levels', 40, {}, [22], {256: 2}, 254, ['1 2', '4 1/1 9'],
     {254: 1 / (4 + 9 - 2)})
two_means = np.array([3, 4.5])
for kind, value in ((0, 0.75), (1, 1.5), (2, 1.5)):
    grid('groups', 41, {43: A, 17: kind}, [], {238: 2}, TYPES[kind], [column(two_means)],
         {TYPES[kind]: value})
# Johnson and Wichern, example 5.2: T^2 = 9.74 in 20 women; example 6.2: T^2 = 116 in 19 dogs.
sweat = np.array([[2.879, 10.010, -1.810], [10.010, 199.788, -5.640], [-1.810, -5.640, 3.628]])
sweat_means = np.array([[4, 50, 10], [4.640, 45.400, 9.965]])
t2 = 20 * squared(sweat_means[1] - sweat_means[0], sweat)
assert round(t2, 2) == 9.74
grid('Johnson and Wichern 5.2', 30, {}, [22], {256: 3}, 254, [text(sweat_means), text(sweat)],
     {254: t2 / 20})
dogs = np.array([[2819.29, 3568.42, 2943.49, 2295.35], [3568.42, 7963.14, 5303.98, 4065.44],
                 [2943.49, 5303.98, 6851.32, 4499.63], [2295.35, 4065.44, 4499.63, 4878.99]])
dog_means = np.array([368.21, 404.63, 479.26, 502.89])
t2 = 19 * squared_contrasts(dog_means, dogs)
assert round(t2) == 116


def exact_text(rows):
    return '/'.join(' '.join(f'{x:.10g}' for x in row) for row in np.atleast_2d(rows))


grid('Johnson and Wichern 6.2', 40, {}, [22], {256: 4}, 254,
     [exact_text(dog_means), exact_text(dogs)], {254: t2 / 19})

# D. F. Morrison, Multivariate Statistical Methods, 2nd edition 1976, chapters 4 and 5: four subtests of
# 37 and 12 old people without and with a senile factor, T^2 = 22.05 for equal means and 1.46 for parallel
# profiles.
subtests = np.array([[12.57, 9.57, 11.49, 7.97], [8.75, 5.33, 8.50, 4.75]])
senile = np.array([[11.2553, 9.4042, 7.1489, 3.3830], [9.4042, 13.5318, 7.3830, 2.5532],
                   [7.1489, 7.3830, 11.5744, 2.6170], [3.3830, 2.5532, 2.6170, 5.8085]])
pairs = 37 * 12 / (37 + 12)
equal = squared(subtests[0] - subtests[1], senile)
parallel = squared_contrasts(subtests[0] - subtests[1], senile)
assert round(pairs * equal, 2) == 22.05 and round(pairs * parallel, 2) == 1.46
grid('Morrison, equal means', 31, {2: 0}, [22], {256: 4}, 254,
     [exact_text(subtests), exact_text(senile)], {254: equal})
grid('Morrison, parallel profiles', 41, {43: AB}, [22], {238: 2, 256: 4}, 254,
     [exact_text(subtests), exact_text(senile)], {254: parallel})



# --- Files ------------------------------------------------------------------------------------------

HEAD = ['Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values', 'Unknown', 'Exact',
        'Tolerance']


def write(name, note, head, rows):
    with open(f'checks/data/{name}', 'w') as out:
        if note:
            print(f'# {note}', file=out)
        for line in [head] + rows:
            print('\t'.join(map(str, line)), file=out)


write('validation/repeated.tsv', 'Exact values computed by checks/reference/repeated.py (scipy).',
      HEAD, ROWS)
write('validation/repeated_simulation.tsv',
      f'Simulated by checks/reference/repeated.py (numpy, {REPLICATES} replicates, seed {SEED}): '
      'tolerance 4 standard errors and what the formula leaves out.', HEAD, SIMULATED)
write('epsilon.tsv', '',
      ['structure', 'k', 'sd', 'rho', 'within', 'between', 'epsilon', 'bias', 'cells'], EPSILON)
write('repeated_grids.tsv', '',
      ['name', 'menu', 'groups', 'checks', 'layout', 'asked', 'grids', 'expected'], GRIDS)
print(len(ROWS), 'exact,', len(SIMULATED), 'simulated,', len(EPSILON), 'epsilons,', len(GRIDS), 'grids')
for note, (share, se) in CLOSENESS.items():
    print(f'{share:.4f} ({se:.4f}) {note}')
