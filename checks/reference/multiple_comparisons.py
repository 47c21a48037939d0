#!/usr/bin/python3
"""Quantiles of multiple comparisons, written to checks/data/multiple_comparisons.tsv, and interval
designs, written to checks/data/validation/multiple_comparisons.tsv and, simulated,
checks/data/validation/multiple_comparisons_simulated.tsv.

Independent of the program: the studentized range is scipy's; the others are integrals over the
exact density of the estimated standard deviation of integrals over the common estimate, by
Gauss-Legendre and Gauss-Hermite rules of 120 and 160 points, which are checked against scipy's
multivariate normal distribution function. The simulated designs draw the data group by
group with numpy and build the intervals from pooled variances.

Rows of the first file: function number of the integral, degrees of freedom, error, groups, size of
a group beside that of the control, quantile, tolerance. The tolerance is what the program's rule
deserves: see `tolerance`, and docs/accuracy.md.

Needs Python 3 with numpy and scipy; run from the repository's root: about four minutes.
"""
import math
import sys
import numpy as np
from scipy import optimize, special, stats

sys.path.insert(0, 'checks/reference')
from cases import HEAD, row  # noqa: E402

DUNNETT, TUKEY, BEST, MODULUS = 3, 4, 5, 9
NODES, WEIGHTS = np.polynomial.hermite_e.hermegauss(160)
WEIGHTS = WEIGHTS / math.sqrt(2 * math.pi)
LEGENDRE_NODES, LEGENDRE_WEIGHTS = np.polynomial.legendre.leggauss(150)
CDF = special.ndtr


def within(func, c, k, r, s):
    """The probability that all comparisons stay within c, given the deviation s."""
    if func == DUNNETT:
        a, b = math.sqrt(r) * NODES, c * math.sqrt(1 + r) * s
        return float(np.sum(WEIGHTS * (CDF(a + b) - CDF(a - b)) ** (k - 1)))
    if func == BEST:
        return float(np.sum(WEIGHTS * CDF(NODES + math.sqrt(2) * c * s) ** (k - 1)))
    if func == MODULUS:
        return float((2 * CDF(c * s) - 1) ** k)
    q = math.sqrt(2) * c * s
    x = 9 * LEGENDRE_NODES
    values = stats.norm.pdf(x) * (CDF(x) - CDF(x - q)) ** (k - 1)
    return float(9 * k * np.sum(LEGENDRE_WEIGHTS * values))


def deviation_density(s, df):
    return 2 * df * s * stats.chi2.pdf(df * s * s, df)


def probability(func, c, k, r, df, limit=None):
    """P(all within c and s below the limit)."""
    if func == TUKEY and limit is None:
        return float(stats.studentized_range.cdf(math.sqrt(2) * c, k, df))
    low = math.sqrt(stats.chi2.ppf(1e-13, df) / df)
    high = math.sqrt(stats.chi2.isf(1e-13, df) / df)
    if limit is not None:
        high = min(high, limit)
        if high <= low:
            return 0.0
    nodes, weights = np.polynomial.legendre.leggauss(120)
    s = (high - low) / 2 * nodes + (high + low) / 2
    values = [within(func, c, k, r, x) for x in s]
    return float((high - low) / 2 * np.sum(weights * deviation_density(s, df) * values))


def quantile(func, k, r, df, alpha):
    if func == TUKEY:
        return float(stats.studentized_range.ppf(1 - alpha, k, df)) / math.sqrt(2)
    return optimize.brentq(lambda c: probability(func, c, k, r, df) - (1 - alpha), 0.05, 60,
                           xtol=1e-10)


def gamma_two_terms(x):
    w = x + 2
    return math.sqrt(2 * math.pi / w) * math.exp((1 - 1 / (30 * w * w)) / (12 * w) +
                                                 w * math.log(w) - w) / (x * (x + 1))


def simpson(points, step):
    weights = np.ones(points)
    weights[1:-1:2] = 4
    weights[2:-1:2] = 2
    return weights * step / 3


def rule_probability(func, c, k, r, df, limit=4.1335):
    """The integral by the program's rule, with exact normal distribution functions: Simpson's rule
    over s up to 4.1335, or the limit of a width, and x from -10 to 10, chi-square up to 100 with a gamma function of two
    terms below 60 df, Fisher's approximation from there on."""
    points = 61 if func == MODULUS else 101
    s = np.linspace(0, limit, points)
    if df < 60:
        x = df * s * s
        with np.errstate(divide='ignore', invalid='ignore'):
            f = x ** (df / 2 - 1) * np.exp(-x / 2) / (2 ** (df / 2) * gamma_two_terms(df / 2))
        f = np.where((x > 0) & (x < 100), f, 0) * 2 * df * s
    else:
        f = math.sqrt(2 * df) * stats.norm.pdf(math.sqrt(2 * df) * s - math.sqrt(2 * df - 1))
    density = f * simpson(points, limit / (points - 1))
    if func == MODULUS:
        return float(np.sum(density * (2 * CDF(c * s) - 1) ** k))
    x = np.linspace(-10, 10, 61)[:, None]
    reach = c * (math.sqrt(1 + r) if func == DUNNETT else math.sqrt(2)) * s[None, :]
    if func == DUNNETT:
        h = (CDF(math.sqrt(r) * x + reach) - CDF(math.sqrt(r) * x - reach)) ** (k - 1)
    elif func == TUKEY:
        h = k * (CDF(x) - CDF(x - reach)) ** (k - 1)
    else:
        h = CDF(x + reach) ** (k - 1)
    inner = np.sum(h * density[None, :], axis=1)
    return float(np.sum(inner * stats.norm.pdf(x[:, 0]) * simpson(61, 1 / 3)))


def tolerance(func, k, r, df, alpha, exact):
    """What the program's rule is off, over the slope of the probability; its normal distribution
    function, of an error of 7.5e-8 in the power k; and the search, to 1e-5."""
    h = 0.01
    slope = (probability(func, exact + h, k, r, df) - probability(func, exact - h, k, r, df)) / 2 / h
    off = 1.2 * abs(rule_probability(func, exact, k, r, df) - (1 - alpha)) + 2 * 7.5e-8 * k
    return off / slope + 2e-5


def check_rules():
    """The rules against scipy's multivariate normal distribution function and published figures."""
    for k, r in ((3, 1.0), (4, 0.5)):
        rho = r / (1 + r)
        cov = np.full((k - 1, k - 1), rho) + (1 - rho) * np.eye(k - 1)
        c = 2.2
        law = stats.multivariate_normal(np.zeros(k - 1), cov, allow_singular=False)
        exact = law.cdf(np.full(k - 1, c), lower_limit=np.full(k - 1, -c))
        assert abs(exact - within(DUNNETT, c, k, r, 1.0)) < 2e-5, (exact, k, r)
    # C. W. Dunnett, Biometrics 20, 1964: two-sided, 5 %, 20 df, 3 treatments: 2.54.
    assert abs(quantile(DUNNETT, 4, 1.0, 20, 0.05) - 2.54) < 0.005
    assert abs(quantile(TUKEY, 3, 1.0, 10, 0.05) * math.sqrt(2) - 3.88) < 0.005
    # The range by the integral over the deviation is scipy's.
    exact = float(stats.studentized_range.cdf(3.5, 4, 12))
    assert abs(probability(TUKEY, 3.5 / math.sqrt(2), 4, 1.0, 12, 99.0) - exact) < 1e-9
    # One comparison is Student's t.
    assert abs(quantile(MODULUS, 1, 1.0, 12, 0.05) - stats.t.ppf(0.975, 12)) < 1e-8
    assert abs(quantile(BEST, 2, 1.0, 12, 0.05) - stats.t.ppf(0.95, 12)) < 1e-8


def write_quantiles():
    lines = []

    def add(func, df, alpha, k, r):
        exact = quantile(func, k, r, df, alpha)
        if 1.0 <= exact <= 4.99:
            lines.append(f'{func}\t{df:g}\t{alpha:g}\t{k}\t{r:g}\t{exact:.8f}\t'
                         f'{tolerance(func, k, r, df, alpha, exact):.6f}')

    for func in (DUNNETT, TUKEY, BEST, MODULUS):
        for df in (4, 10, 20, 30, 45, 55, 59, 60, 90, 120, 180, 250):
            for alpha in (0.05, 0.01):
                for k in (3, 6):
                    add(func, df, alpha, k, 1.0)
        for df, alpha, k in ((3, 0.1, 2), (7.5, 0.05, 4), (25.5, 0.1, 9), (12, 0.2, 10)):
            add(func, df, alpha, k, 1.0)
    for df in (8, 15, 40, 100):
        for r in (0.25, 0.5, 2.0, 4.0):
            add(DUNNETT, df, 0.05, 4, r)
            add(DUNNETT, df, 0.1, 5, r)
    with open('checks/data/multiple_comparisons.tsv', 'w', encoding='utf-8') as out:
        out.write('# Critical values of simultaneous intervals, computed by '
                  'checks/reference/multiple_comparisons.py (numpy, scipy).\n')
        out.write('Function\tDf\tAlpha\tGroups\tRatio\tExact\tTolerance\n')
        out.writelines(line + '\n' for line in lines)
    print(len(lines), 'quantiles')


# --- Interval designs -------------------------------------------------------------------------------

MENUS = {0: 'menu 730', 1: 'menu 731', 2: 'menu 732'}


def comparisons(kind, k):
    return k * (k - 1) / 2 if kind == 1 else k - 1


def critical(kind, method, k, r, df, level):
    m = comparisons(kind, k)
    if method == 1:
        return float(stats.t.isf((1 - level) / 2 / m, df))
    if method == 2:
        return float(stats.t.isf((1 - level ** (1 / m)) / 2, df))
    if method == 3:
        return math.sqrt((k - 1) * stats.f.ppf(level, k - 1, df))
    return quantile((DUNNETT, TUKEY, BEST)[kind], k, r, df, level_error(level))


def level_error(level):
    return 1 - level


def design_probability(kind, method, level, width, sd, k, n, n2):
    r = n2 / n
    df = n + (k - 1) * n2 - k
    c = critical(kind, method, k, r, df, level)
    limit = width / 2 / sd / c / math.sqrt(1 / n + 1 / n2)
    func = (DUNNETT, TUKEY, BEST)[kind]
    return min(probability(func, c, k, r, df, limit), level)


def given(kind, level, prob, width, sd, k, n, n2):
    values = {22: level, 345: prob, 100: width, 2: sd, 238: k}
    values.update({4: n, 149: n2} if kind == 0 else {326: n})
    return values


DESIGNS = [  # kind, level, width, sd, k, n, n2
    (0, 0.95, 1.2, 1.0, 4, 30, 30), (0, 0.95, 1.0, 1.0, 3, 40, 40), (0, 0.99, 2.0, 1.5, 5, 40, 40),
    (0, 0.90, 1.5, 1.0, 4, 20, 10), (0, 0.95, 1.3, 1.0, 6, 40, 20), (0, 0.95, 3.0, 1.0, 2, 6, 6),
    (0, 0.95, 0.9, 1.0, 4, 60, 60), (1, 0.95, 1.4, 1.0, 4, 30, 30), (1, 0.95, 1.8, 1.5, 3, 40, 40),
    (1, 0.99, 2.0, 1.0, 5, 25, 25), (1, 0.90, 3.0, 2.0, 6, 40, 40), (1, 0.95, 4.0, 1.0, 2, 4, 4),
    (1, 0.95, 0.8, 1.0, 5, 110, 110), (2, 0.95, 1.2, 1.0, 4, 30, 30),
    (2, 0.95, 1.0, 1.0, 3, 35, 35), (2, 0.99, 1.7, 1.2, 5, 40, 40), (2, 0.90, 2.0, 2.0, 6, 60, 60),
    (2, 0.95, 2.4, 1.0, 3, 6, 6), (1, 0.95, 1.3, 1.0, 8, 50, 50), (0, 0.95, 1.5, 1.0, 8, 40, 20),
]


def rule_slack(kind, level, width, sd, k, n, n2, exact):
    """What the program's rules make of the critical value and of the width is away from exact."""
    func, r, df = (DUNNETT, TUKEY, BEST)[kind], n2 / n, n + (k - 1) * n2 - k
    c = optimize.brentq(lambda x: rule_probability(func, x, k, r, min(df, 250)) - level, 0.5, 8)
    limit = min(4.1335, width / 2 / sd / c / math.sqrt(1 / n + 1 / n2))
    p = min(rule_probability(func, c, k, r, df, limit), level)
    return 1.2 * abs(p - exact) + 0.0003


def write_designs():
    rows = []
    for kind, level, width, sd, k, n, n2 in DESIGNS:
        p = design_probability(kind, 0, level, width, sd, k, n, n2)
        slack = rule_slack(kind, level, width, sd, k, n, n2, p)
        groups = {18: 0} if kind == 0 else {}
        for unknown in (345, 100, 2, 4 if kind == 0 else 326):
            values = given(kind, level, p, width, sd, k, n, n2)
            exact = p if unknown == 345 else values[unknown]
            if unknown != 345 and not 0.2 < p < level - 0.02:
                continue

            def at(x):
                v = {**values, unknown: x}
                second = v[149] if kind == 0 else v[326]
                first = v[4] if kind == 0 else v[326]
                return design_probability(kind, 0, level, v[100], v[2], k, first, second)
            tol = slack
            if unknown != 345:
                h = 0.01 * exact
                tol = slack / abs((at(exact + h) - at(exact - h)) / (2 * h))
            rows.append(row(MENUS[kind], 3, 2, False, (), groups,
                            {a: round(b, 10) for a, b in values.items() if a != unknown}, unknown,
                            exact, max(tol, 1e-4)))
    with open('checks/data/validation/multiple_comparisons.tsv', 'w', encoding='utf-8') as out:
        out.write('# Exact values computed by checks/reference/multiple_comparisons.py (scipy).\n'
                  + HEAD + '\n')
        out.writelines('\t'.join(r) + '\n' for r in rows)
    print(len(rows), 'designs')


def simulate(rng, kind, level, width, sd, k, n, n2, runs=200000):
    """All intervals cover and are narrower: from data, drawn group by group."""
    df = n + (k - 1) * n2 - k
    c = critical(kind, 0, k, n2 / n, df, level)
    sizes = np.array([n] + [n2] * (k - 1))
    means = rng.standard_normal((runs, k)) * sd / np.sqrt(sizes)
    variance = sum(sd * sd * rng.chisquare(m - 1, runs) for m in sizes) / df
    half = c * np.sqrt(variance * (1 / n + 1 / n2))
    if kind == 0:
        far = np.max(np.abs(means[:, 1:] - means[:, :1]), axis=1)
    elif kind == 1:
        far = np.max(means, axis=1) - np.min(means, axis=1)
    else:  # the differences of the best, say the first group, from the others
        far = np.max(means[:, 1:] - means[:, :1], axis=1)
    good = (far <= half) & (2 * half <= width)
    return good.mean()


def write_simulated():
    rng = np.random.default_rng(20240611)
    rows = []
    runs = 200000
    for kind, level, width, sd, k, n, n2 in DESIGNS:
        p = simulate(rng, kind, level, width, sd, k, n, n2, runs)
        exact = design_probability(kind, 0, level, width, sd, k, n, n2)
        error = math.sqrt(p * (1 - p) / runs)
        assert abs(exact - p) < 4.5 * error, (exact, p, error)
        groups = {18: 0} if kind == 0 else {}
        values = given(kind, level, 0.5, width, sd, k, n, n2)
        del values[345]
        rows.append(row(MENUS[kind], 3, 2, False, (), groups, values, 345, p,
                        4 * error + rule_slack(kind, level, width, sd, k, n, n2, exact)))
    with open('checks/data/validation/multiple_comparisons_simulated.tsv', 'w',
              encoding='utf-8') as out:
        out.write('# Simulated by checks/reference/multiple_comparisons.py (numpy, seed 20240611), '
                  '200000 data sets each.\n' + HEAD + '\n')
        out.writelines('\t'.join(r) + '\n' for r in rows)
    print(len(rows), 'simulated designs')


if __name__ == '__main__':
    check_rules()
    write_quantiles()
    write_designs()
    write_simulated()
