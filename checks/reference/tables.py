#!/usr/bin/env python3
"""Reference values for the tests of contingency tables and trends, written to
checks/data/validation.

  tables.tsv            powers, sizes and effects by the exact non-central chi-square and normal
                        distributions of scipy, from the table itself
  tables_published.tsv  examples of textbooks and journals, as printed there
  tables_simulated.tsv  powers of the test itself: 200,000 tables drawn for each, numpy's PCG64 with
                        the seed named in the row's note. They show how near the large-sample power
                        is; the tolerance holds three standard errors and that distance.

Independent of the program: non-centralities, trends and sums of strata are formed here from the
tables by the definitions of the publications named below, not from what the program derives.

Needs Python 3 with scipy and numpy; run from the repository's root.
"""
import math
import numpy as np
from scipy import optimize, stats

ROWS = {'tables': [], 'tables_published': [], 'tables_simulated': []}
NOTES = {table: [] for table in ROWS}

NORMAL = 0.0003   # the error of NorInv, 4.5e-4, times the normal density, and of NorCdf
SUM = 0.001       # non-central chi-square as a Poisson mixture, df to 10 and lambda to 50
PATNAIK = 0.009   # elsewhere, by Patnaik's two moments (docs/accuracy.md)

REPLICATES = 200000


def number(v):
    return f'{float(v):.9g}'


def add(table, menu, samples, tails, values, unknown, exact, tolerance, left=0, checks=(),
        groups=None, note=None):
    given = ';'.join(f'{k}={number(v)}' for k, v in values.items() if k != unknown)
    ROWS[table].append(['menu %d' % menu, samples, tails, left, ','.join(map(str, checks)),
                        ','.join(f'{g}={o}' for g, o in (groups or {}).items()), given, unknown,
                        f'{float(exact):.9g}', f'{tolerance:.3g}'])
    if note:
        # Markdown takes [1](2) for a link.
        NOTES[table].append(note.replace('[', '(').replace(']', ')'))


def solved(power, values, unknown, bracket, error, least=0.0):
    """Exact value of the unknown, and what an error of the power moves it by."""
    if unknown == 1:
        return power(values), error
    def f(x):
        return power({**values, unknown: x}) - values[1]
    x = optimize.brentq(f, *bracket, xtol=1e-12)
    h = 1e-4 * abs(x)
    slope = abs(f(x + h) - f(x - h)) / (2 * h)
    return x, error / slope + least


# --- Chi-square tests ---------------------------------------------------------------------------

def chi2_power(alpha, df, lam):
    return stats.ncx2.sf(stats.chi2.isf(alpha, df), df, lam)


def chi2_error(df, lam):
    return SUM if df <= 10 and lam <= 50 else PATNAIK


def rxc_lambda(effect_type, r, n1, nk, e):
    """The least non-centrality of an effect: Lachin (1977), Cohen (1988). Type 0: the groups'
    standard deviation w, lambda = N w^2. Type 1: two groups differ by e in two categories of one
    half each. Type 2: one group differs by e from all others; the one that gives less."""
    total = n1 + (r - 1) * nk
    if effect_type == 0:
        return total * e * e
    if effect_type == 1:
        return 4 * e * e / (1 / n1 + 1 / nk)
    return min(4 * e * e * m * (total - m) / total for m in {n1, nk})


def rxc(effect_type, values, unknown, form=0, bracket=None):
    kind = 240 + effect_type
    size = 149 + form
    def parts(v):
        r, c, n1 = v[17], v[201], v[4]
        nk = (v[size], n1 + v[size], n1 * v[size])[form]
        return (r - 1) * (c - 1), rxc_lambda(effect_type, r, n1, nk, v[kind])
    def power(v):
        return chi2_power(v[0], *parts(v))
    exact, tolerance = solved(power, values, unknown, bracket, chi2_error(*parts(values)))
    add('tables', 112, 3, 2, values, unknown, exact, tolerance, groups={37: effect_type, 18: form})


def one_sample(menu, df, values, unknown, bracket=None, table='tables', exact=None, tolerance=None,
               note=None):
    def power(v):
        return chi2_power(v[0], df(v), v[85] * v[250])
    found, moved = solved(power, values, unknown, bracket,
                          chi2_error(df(values), values[85] * values[250]))
    add(table, menu, 1, 2, values, unknown, found if exact is None else exact,
        moved if tolerance is None else tolerance, note=note)


def independence(values, unknown, **more):
    one_sample(113, lambda v: (v[334] - 1) * (v[335] - 1), values, unknown, **more)


def marginal(values, unknown, **more):
    one_sample(90, lambda v: v[201] - 1, values, unknown, **more)


BASE = {0: 0.05, 1: 0.8, 17: 3, 201: 4, 240: 0.25, 241: 0.3, 242: 0.3, 4: 40, 149: 40, 150: 0,
        151: 1}


def rxc_values(effect_type, form, **changes):
    kinds = (0, 1, 17, 201, 240 + effect_type, 4, 149 + form)
    return {k: changes.get(f'k{k}', BASE[k]) for k in kinds}


for r, c, n1, nk, e in ((2, 2, 40, 40, 0.3), (2, 5, 60, 40, 0.3), (3, 4, 30, 50, 0.25),
                        (5, 2, 20, 20, 0.35), (3, 3, 4, 4, 0.8), (2, 3, 300, 600, 0.1),
                        (6, 3, 25, 20, 0.3)):
    rxc(0, rxc_values(0, 0, k17=r, k201=c, k4=n1, k149=nk, k240=e), 1)
for r, c, n1, nk, e in ((2, 2, 50, 50, 0.3), (4, 3, 60, 40, 0.3), (3, 2, 30, 80, 0.25),
                        (5, 3, 100, 100, 0.2)):
    rxc(1, rxc_values(1, 0, k17=r, k201=c, k4=n1, k149=nk, k241=e), 1)
for r, c, n1, nk, e in ((2, 2, 50, 50, 0.3), (4, 3, 60, 40, 0.3), (3, 2, 30, 80, 0.25),
                        (5, 3, 90, 60, 0.25), (4, 4, 50, 50, 0.2)):
    rxc(2, rxc_values(2, 0, k17=r, k201=c, k4=n1, k149=nk, k242=e), 1)
rxc(0, rxc_values(0, 1, k150=20), 1, form=1)
rxc(1, rxc_values(1, 1, k150=-10), 1, form=1)
rxc(2, rxc_values(2, 1, k150=15), 1, form=1)
rxc(0, rxc_values(0, 2, k151=0.5, k4=80), 1, form=2)
rxc(0, rxc_values(0, 2, k1=0.9), 4, form=2, bracket=(3, 1e4))
rxc(0, rxc_values(0, 2, k1=0.8, k17=5, k201=5, k240=0.3), 4, form=2, bracket=(3, 1e4))
rxc(1, rxc_values(1, 2, k1=0.9, k151=2), 4, form=2, bracket=(3, 1e4))
rxc(2, rxc_values(2, 2, k151=0.5), 4, form=2, bracket=(3, 1e4))
rxc(2, rxc_values(2, 2, k151=1.5), 4, form=2, bracket=(3, 1e4))
rxc(0, rxc_values(0, 0, k4=50, k149=30), 240, bracket=(0.01, 0.99))
rxc(1, rxc_values(1, 0, k4=50, k149=30), 241, bracket=(0.01, 0.99))
rxc(2, rxc_values(2, 0, k4=50, k149=30), 242, bracket=(0.01, 0.99))
rxc(0, rxc_values(0, 0, k0=0.01), 1)
rxc(2, rxc_values(2, 0), 0, bracket=(1e-4, 0.9))

I = {0: 0.05, 1: 0.8, 250: 0.1, 334: 3, 335: 4, 85: 120}
for lam, x, y, n in ((0.1, 2, 2, 80), (0.1, 3, 3, 120), (0.05, 2, 6, 250), (0.2, 4, 4, 60),
                     (0.02, 3, 4, 1000), (0.3, 5, 5, 80)):
    independence({**I, 250: lam, 334: x, 335: y, 85: n}, 1)
independence(I, 85, bracket=(3, 1e5))
independence({**I, 1: 0.95, 250: 0.04, 334: 2, 335: 3}, 85, bracket=(3, 1e5))
independence(I, 250, bracket=(1e-4, 2))
independence({**I, 0: 0.01}, 1)

M = {0: 0.05, 1: 0.8, 250: 0.1, 201: 3, 85: 100}
for lam, c, n in ((0.1, 2, 80), (0.1, 3, 100), (0.05, 4, 200), (0.3, 5, 40), (0.01, 6, 1500),
                  (0.15, 10, 110)):
    marginal({**M, 250: lam, 201: c, 85: n}, 1)
marginal({**M, 1: 0.9}, 85, bracket=(3, 1e5))
marginal({**M, 250: 0.03, 201: 6}, 85, bracket=(3, 1e5))
marginal(M, 250, bracket=(1e-4, 2))

PRIMER = ('J. Cohen, A power primer, Psychological Bulletin 112, 1992, 155-159, table 2, level '
          '0.05, power 0.80: ')
for x, y, w, n in ((2, 2, 0.3, 87), (2, 2, 0.5, 31), (2, 2, 0.1, 785), (2, 3, 0.3, 107),
                   (2, 3, 0.5, 39), (2, 3, 0.1, 964), (2, 4, 0.3, 121), (2, 4, 0.1, 1090),
                   (3, 3, 0.3, 133), (3, 3, 0.5, 48), (3, 3, 0.1, 1194), (2, 6, 0.3, 143),
                   (3, 4, 0.3, 151), (4, 3, 0.1, 1362)):
    # The table is in whole subjects; a thousand of them move by two with the fourth digit of the
    # power.
    independence({**I, 250: w * w, 334: x, 335: y}, 85, bracket=(3, 1e5), exact=n,
                 table='tables_published', tolerance=1 + n * 0.002,
                 note=f'{PRIMER}{(x - 1) * (y - 1)} df, w = {w}: {n}')


# --- Trend and strata ---------------------------------------------------------------------------

def normal_power(alpha, tails, left, delta, se0, se1, correction):
    if tails == 2:
        z = stats.norm.isf(alpha / 2)
        x = max(abs(delta) - correction, 0)
        return stats.norm.cdf((x - z * se0) / se1) + stats.norm.sf((x + z * se0) / se1)
    z = stats.norm.isf(alpha)
    return stats.norm.cdf(((-delta if left else delta) - correction - z * se0) / se1)


def trend_terms(p, x, f):
    """Covariance of level and proportion over the subjects, average proportion, the variance under
    H1 and the variance of the levels (Nam 1987)."""
    p, x, f = map(np.asarray, (p, x, f))
    d = x - (f * x).sum()
    return (f * d * p).sum(), (f * p).sum(), (f * d * d * p * (1 - p)).sum(), (f * d * d).sum()


def trend_power(v, tails, left, spacing):
    se0 = math.sqrt(v[312] * (1 - v[312]) * v[314] / v[320])
    return normal_power(v[0], tails, left, v[311], se0, math.sqrt(v[313] / v[320]),
                        spacing / 2 / v[320])


def trend(tails, p, x, f, n, unknown, left=False, corrected=False, bracket=None, alpha=0.05,
          power=0.8):
    """With the correction the groups are equally large, at equal distances: the spacing follows
    from the variance of their levels."""
    a, average, c, b = trend_terms(p, x, f)
    k = len(p)
    values = {0: alpha, 1: power, 311: a, 312: average, 313: c, 314: b, 17: k, 320: n}
    spacing = x[1] - x[0] if corrected else 0
    exact, tolerance = solved(lambda v: trend_power(v, tails, left, spacing), values, unknown,
                              bracket, NORMAL, least=1e-5)
    add('tables', 130, 3, tails, values, unknown, exact, tolerance, left=-1 if left else 0,
        checks=(1,) if corrected else ())


def strata_terms(strata):
    """Mean and variances of the number of events of group 2 less the one expected, for each
    subject, summed over strata of (p1, p2, n1, n2) (Woolson, Bean and Rojas 1986)."""
    total = sum(s[2] + s[3] for s in strata)
    a = b = c = 0
    for p1, p2, n1, n2 in strata:
        n = n1 + n2
        p = (n1 * p1 + n2 * p2) / n
        a += n1 * n2 / n * (p2 - p1)
        b += n1 * n2 / n * p * (1 - p)
        c += (n1 * n2 / n) ** 2 * (p1 * (1 - p1) / n1 + p2 * (1 - p2) / n2)
    return a / total, b / total, c / total


def strata_power(v, tails, left, corrected):
    return normal_power(v[0], tails, left, v[307], math.sqrt(v[308] / v[320]),
                        math.sqrt(v[309] / v[320]), 0.5 / v[320] if corrected else 0)


def mantel(tails, strata, n, unknown, left=False, corrected=False, odds=False, bracket=None,
           alpha=0.05, power=0.8):
    a, b, c = strata_terms(strata)
    values = {0: alpha, 1: power, 307: a, 308: b, 309: c, 310: len(strata), 320: n}
    exact, tolerance = solved(lambda v: strata_power(v, tails, left, corrected), values, unknown,
                              bracket, NORMAL, least=1e-5)
    add('tables', 120, 2, tails, values, unknown, exact, tolerance, left=-1 if left else 0,
        checks=((1,) if corrected else ()) + ((23,) if odds else ()))


RISING = ((0.1, 0.2, 0.3), (0, 1, 2), (1 / 3,) * 3)
FALLING = ((0.6, 0.5, 0.35, 0.3), (1, 2, 3, 4), (0.25,) * 4)
DOSES = ((0.05, 0.1, 0.15, 0.4), (0, 1, 2, 5), (0.4, 0.3, 0.2, 0.1))
trend(2, *RISING, 150, 1)
trend(1, *RISING, 100, 1)
trend(1, *FALLING, 120, 1, left=True)
trend(2, *DOSES, 200, 1)
trend(2, *RISING, 150, 1, corrected=True)
trend(1, *RISING, 150, 1, corrected=True)
trend(1, *FALLING, 120, 1, left=True, corrected=True)
trend(2, *RISING, 150, 320, bracket=(3, 1e5))
trend(1, *FALLING, 150, 320, left=True, bracket=(3, 1e5), power=0.9)
trend(2, *RISING, 150, 320, corrected=True, bracket=(3, 1e5))
trend(2, *DOSES, 200, 311, bracket=(1e-4, 5))
trend(1, *DOSES, 200, 313, bracket=(1e-3, 50), power=0.9)
trend(2, *DOSES, 200, 314, bracket=(1e-2, 50), power=0.9)
# A proportion has the variance of its complement.
trend(2, *DOSES, 200, 312, bracket=(0.01, 0.5), power=0.87)
# Two tails: a small variance under H1 has as much power as a very large one.
trend(2, *DOSES, 200, 313, bracket=(0.1, 2), power=0.9)
trend(2, *RISING, 90, 313, bracket=(1, 100), corrected=True)
trend(2, *RISING, 99999, 311, bracket=(1e-5, 0.1), alpha=0.001, power=0.99)
trend(1, *RISING, 5, 1, alpha=0.3)

STRATA = ((0.1, 0.3, 1, 1), (0.2, 0.4, 2, 1), (0.4, 0.6, 1, 2))
ODDS = tuple((p, p / (1 - p) * 2 / (1 + p / (1 - p) * 2), n1, n2)
             for p, n1, n2 in ((0.2, 1, 2), (0.4, 1, 1), (0.5, 3, 2), (0.7, 1, 1)))
FEWER = ((0.5, 0.3, 1, 1), (0.4, 0.3, 3, 1))
mantel(2, STRATA, 150, 1)
mantel(1, STRATA, 120, 1)
mantel(2, ODDS, 300, 1, odds=True)
mantel(1, FEWER, 200, 1, left=True)
mantel(2, STRATA, 150, 1, corrected=True)
mantel(1, FEWER, 200, 1, left=True, corrected=True)
mantel(1, ODDS, 300, 1, odds=True, corrected=True)
mantel(2, STRATA, 150, 320, bracket=(3, 1e5))
mantel(2, ODDS, 300, 320, odds=True, bracket=(3, 1e5), power=0.9)
mantel(1, FEWER, 200, 320, left=True, corrected=True, bracket=(3, 1e5))
mantel(2, STRATA, 150, 307, bracket=(1e-4, 0.5))
mantel(1, STRATA, 150, 309, bracket=(1e-3, 0.9), power=0.7)
mantel(2, STRATA, 150, 308, bracket=(1e-3, 0.9), power=0.9)
mantel(2, STRATA, 120, 309, bracket=(1e-3, 0.02), power=0.9)
mantel(2, STRATA, 150, 309, bracket=(1e-3, 0.06), power=0.7, corrected=True)
mantel(2, STRATA, 99999, 307, bracket=(1e-5, 0.1), alpha=0.001, power=0.99)
mantel(1, STRATA, 4, 1, alpha=0.3)

# Two groups are a 2 x 2 table, and so are strata that are all alike: Yates' correction is that of the
# trend with a distance of 1, and that of Mantel and Haenszel.
FLEISS = ('J. L. Fleiss, Statistical Methods for Rates and Proportions, 2nd ed. 1981, chapter 3 and '
          'table A.3, 0.6 against 0.7, two-sided 0.01, power 0.95: 827 in each group; as ')
a, average, c, b = trend_terms((0.6, 0.7), (0, 1), (0.5, 0.5))
add('tables_published', 130, 3, 2,
    {0: 0.01, 1: 0.95, 311: a, 312: average, 313: c, 314: b, 17: 2, 320: 0}, 320, 2 * 827, 2,
    checks=(1,), note=FLEISS + 'a trend of two groups')
a, b, c = strata_terms(((0.6, 0.7, 1, 1), (0.6, 0.7, 1, 1)))
add('tables_published', 120, 2, 2, {0: 0.01, 1: 0.95, 307: a, 308: b, 309: c, 310: 2, 320: 0}, 320,
    2 * 827, 2, checks=(1,), note=FLEISS + 'two strata that are alike')


# Strata of cases and controls, as many of each; 0.9 one-sided.
NAM = ('J.-M. Nam, Biometrics 48, 1992, 389-395, example: odds ratio 3, control proportions 0.75, '
       '0.70, 0.65 and 0.60 in strata of 0.10, 0.40, 0.35 and 0.15, one-sided 0.05, power 0.90: ')
a, b, c = strata_terms(tuple((p, 3 * p / (1 - p + 3 * p), t / 2, t / 2)
                             for p, t in ((0.75, 0.10), (0.70, 0.40), (0.65, 0.35), (0.60, 0.15))))
for n, corrected in ((171, False), (192, True)):
    add('tables_published', 120, 2, 1, {0: 0.05, 1: 0.9, 307: a, 308: b, 309: c, 310: 4, 320: 0},
        320, n, 1, checks=(1,) if corrected else (),
        note=f"{NAM}{n}{', corrected' if corrected else ''}")

# The sizes of the primer for tests with as many degrees of freedom.
for groups, c, w, n in ((2, 2, 0.5, 31), (2, 3, 0.3, 107), (2, 6, 0.3, 143)):
    add('tables_published', 112, 3, 2,
        {0: 0.05, 1: 0.8, 17: groups, 201: c, 240: w, 4: 0, 151: 1}, 4, n / groups,
        (1 + n * 0.002) / groups, groups={37: 0, 18: 2},
        note=f'{PRIMER}{c - 1} df, w = {w}: {n}, as {groups} groups of equal size')
for c, w, n in ((2, 0.5, 31), (3, 0.3, 107), (4, 0.3, 121)):
    marginal({0: 0.05, 1: 0.8, 250: w * w, 201: c, 85: 0}, 85, bracket=(3, 1e5), exact=n,
             table='tables_published', tolerance=1 + n * 0.002,
             note=f'{PRIMER}{c - 1} df, w = {w}: {n}, as margins of {c} categories')


# --- Simulation ---------------------------------------------------------------------------------

def simulated(menu, samples, tails, values, rejected, near, seed, what, **more):
    power = rejected.mean()
    se = math.sqrt(power * (1 - power) / len(rejected))
    add('tables_simulated', menu, samples, tails, values, 1, power, 3 * se + near,
        note=f'seed {seed}: {what}; standard error {se:.1e}', **more)


def simulate_trend(p, x, sizes, seed, near, corrected=False):
    """Cochran (1954), Armitage (1955): sum of (level - mean level) events over its standard
    error."""
    rng = np.random.default_rng(seed)
    p, x, sizes = map(np.asarray, (p, x, sizes))
    n = sizes.sum()
    events = rng.binomial(sizes, p, size=(REPLICATES, len(p)))
    d = x - (sizes * x).sum() / n
    average = events.sum(axis=1) / n
    variance = average * (1 - average) * (sizes * d * d).sum()
    u = np.abs(events @ d) - (np.diff(x).min() / 2 if corrected else 0)
    rejected = (variance > 0) & (u > stats.norm.isf(0.025) * np.sqrt(np.maximum(variance, 1e-12)))
    a, mean, c, b = trend_terms(p, x, sizes / n)
    simulated(130, 3, 2, {0: 0.05, 311: a, 312: mean, 313: c, 314: b, 17: len(p), 320: n}, rejected,
              near, seed, f'trend of {list(p)} at {list(x)}, {list(sizes)} subjects'
              + (', corrected' if corrected else ''), checks=(1,) if corrected else ())


def simulate_strata(strata, seed, near, corrected=False):
    """Mantel and Haenszel (1959), with the hypergeometric variance."""
    rng = np.random.default_rng(seed)
    difference = variance = 0
    for p1, p2, n1, n2 in strata:
        x1 = rng.binomial(n1, p1, REPLICATES)
        x2 = rng.binomial(n2, p2, REPLICATES)
        n, m = n1 + n2, x1 + x2
        difference = difference + x2 - n2 * m / n
        variance = variance + n1 * n2 * m * (n - m) / n ** 2 / (n - 1)
    u = np.abs(difference) - (0.5 if corrected else 0)
    rejected = (variance > 0) & (u > stats.norm.isf(0.025) * np.sqrt(np.maximum(variance, 1e-12)))
    a, b, c = strata_terms(strata)
    simulated(120, 2, 2, {0: 0.05, 307: a, 308: b, 309: c, 310: len(strata),
                          320: sum(s[2] + s[3] for s in strata)}, rejected, near, seed,
              f'strata (p1, p2, n1, n2) {list(strata)}' + (', corrected' if corrected else ''),
              checks=(1,) if corrected else ())


def stuart_terms(p):
    """d' V^-1 d (Stuart 1955)."""
    p = np.asarray(p)
    d = (p.sum(axis=-1) - p.sum(axis=-2))[..., :-1]
    v = -(p + np.swapaxes(p, -1, -2))
    k = p.shape[-1]
    diagonal = p.sum(axis=-1) + p.sum(axis=-2) - 2 * np.diagonal(p, axis1=-2, axis2=-1)
    v[..., range(k), range(k)] = diagonal
    v = v[..., :-1, :-1]
    return (d * np.linalg.solve(v, d[..., None])[..., 0]).sum(axis=-1)


def simulate_stuart(p, n, seed, near):
    rng = np.random.default_rng(seed)
    p = np.asarray(p)
    k = len(p)
    counts = rng.multinomial(n, p.ravel(), REPLICATES).reshape(-1, k, k).astype(float)
    statistic = stuart_terms(counts)
    lam = stuart_terms(p)
    simulated(90, 1, 2, {0: 0.05, 250: lam, 201: k, 85: n}, statistic > stats.chi2.isf(0.05, k - 1),
              near, seed, f'{k} categories, cells {p.round(3).tolist()}, {n} subjects')


def rxc_terms(p, f):
    """Pearson's non-centrality for each subject."""
    p, f = np.asarray(p), np.asarray(f)
    average = f @ p
    return (f[:, None] * (p - average) ** 2 / average).sum()


def simulate_rxc(p, sizes, seed, near):
    rng = np.random.default_rng(seed)
    p, sizes = np.asarray(p), np.asarray(sizes)
    n = sizes.sum()
    counts = np.stack([rng.multinomial(m, q, REPLICATES) for m, q in zip(sizes, p)], axis=1)
    expected = sizes[None, :, None] * counts.sum(axis=1, keepdims=True) / n
    with np.errstate(invalid='ignore', divide='ignore'):
        cells = np.where(expected > 0, (counts - expected) ** 2 / expected, 0)
    df = (p.shape[0] - 1) * (p.shape[1] - 1)
    simulated(112, 3, 2, {0: 0.05, 17: p.shape[0], 201: p.shape[1],
                          240: math.sqrt(rxc_terms(p, sizes / n)), 4: sizes[0], 149: sizes[1]},
              cells.sum(axis=(1, 2)) > stats.chi2.isf(0.05, df), near, seed,
              f'R x C {p.tolist()}, {sizes.tolist()} subjects', groups={37: 0, 18: 0})


def simulate_independence(p, n, seed, near):
    rng = np.random.default_rng(seed)
    p = np.asarray(p)
    counts = rng.multinomial(n, p.ravel(), REPLICATES).reshape(-1, *p.shape)
    expected = counts.sum(axis=2, keepdims=True) * counts.sum(axis=1, keepdims=True) / n
    with np.errstate(invalid='ignore', divide='ignore'):
        cells = np.where(expected > 0, (counts - expected) ** 2 / expected, 0)
    e = np.outer(p.sum(axis=1), p.sum(axis=0))
    df = (p.shape[0] - 1) * (p.shape[1] - 1)
    simulated(113, 1, 2, {0: 0.05, 250: ((p - e) ** 2 / e).sum(), 334: p.shape[0],
                          335: p.shape[1], 85: n},
              cells.sum(axis=(1, 2)) > stats.chi2.isf(0.05, df), near, seed,
              f'X by Y {p.tolist()}, {n} subjects')


LARGE = 0.01  # how near the large-sample power is with a hundred subjects and more
SMALL = 0.02  # and with some dozens of them
simulate_trend((0.1, 0.2, 0.3), (0, 1, 2), (60, 60, 60), 24001, LARGE)
simulate_trend((0.6, 0.5, 0.35, 0.3), (1, 2, 3, 4), (40, 40, 40, 40), 24002, LARGE)
simulate_trend((0.3, 0.5, 0.7), (0, 1, 2), (15, 15, 15), 24003, SMALL)
simulate_trend((0.1, 0.2, 0.3), (0, 1, 2), (60, 60, 60), 24004, LARGE, corrected=True)
simulate_strata(((0.1, 0.3, 40, 40), (0.2, 0.4, 40, 20), (0.4, 0.6, 20, 40)), 23001, LARGE)
simulate_strata(((0.5, 0.3, 80, 80), (0.4, 0.3, 90, 30)), 23002, LARGE)
simulate_strata(((0.5, 0.3, 80, 80), (0.4, 0.3, 90, 30)), 23003, LARGE, corrected=True)
simulate_strata(((0.2, 0.6, 10, 10), (0.3, 0.7, 10, 10)), 23004, SMALL)
simulate_stuart(((0.2, 0.1, 0.05), (0.05, 0.3, 0.1), (0.02, 0.05, 0.13)), 150, 105001, LARGE)
simulate_stuart(((0.2, 0.1, 0.05), (0.05, 0.3, 0.1), (0.02, 0.05, 0.13)), 400, 105002, LARGE)
simulate_stuart(((0.1, 0.06, 0.04, 0.02), (0.04, 0.2, 0.08, 0.03), (0.02, 0.05, 0.15, 0.05),
                 (0.01, 0.02, 0.03, 0.1)), 300, 105003, LARGE)
simulate_rxc(((0.2, 0.3, 0.5), (0.3, 0.4, 0.3), (0.3, 0.3, 0.4)), (80, 80, 80), 22001, LARGE)
simulate_rxc(((0.3, 0.7), (0.5, 0.5), (0.4, 0.6), (0.5, 0.5)), (50, 70, 70, 70), 22002, LARGE)
simulate_independence(((0.2, 0.1, 0.1), (0.1, 0.2, 0.3)), 100, 110001, LARGE)

HEADS = {
    'tables': 'Chi-square tests of tables, trends, strata.',
    'tables_published': 'Published examples, the sizes as printed there, in this order:',
    'tables_simulated': 'Simulated powers of the tests themselves, in this order:',
}
for table, rows in ROWS.items():
    with open(f'checks/data/validation/{table}.tsv', 'w') as out:
        out.write(f'# Written by checks/reference/tables.py. {HEADS[table]}\n')
        for note in NOTES[table]:
            out.write(f'# - {note}\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\t'
                  'Tolerance\n')
        for row in rows:
            out.write('\t'.join(map(str, row)) + '\n')
    print(table, len(rows), 'cases')

# What checks/tests/tables_check.cpp holds against the published chi-square of 11.96 (Stuart) and 14.00
# (J. L. Fleiss, Statistical Methods for Rates and Proportions, 2nd ed. 1981, chapter 8).
vision = np.array(((1520, 266, 124, 66), (234, 1512, 432, 78), (117, 362, 1772, 205),
                   (36, 82, 179, 492)), float)
diagnoses = np.array(((35, 5, 0), (15, 20, 5), (10, 5, 5)), float)
print('Stuart-Maxwell', stuart_terms(vision), stuart_terms(diagnoses))

TABLE = ((0.2, 0.3, 0.5), (0.3, 0.4, 0.3), (0.35, 0.3, 0.35))
print('R x C, 1:1:1', math.sqrt(rxc_terms(TABLE, (1 / 3,) * 3)))
print('R x C, 40:20:20', math.sqrt(rxc_terms(TABLE, (0.5, 0.25, 0.25))))
P = np.array(((0.2, 0.1, 0.1), (0.1, 0.2, 0.3)))
E = np.outer(P.sum(axis=1), P.sum(axis=0))
print('X by Y', ((P - E) ** 2 / E).sum())
print('trend', trend_terms(*DOSES))
print('strata', strata_terms(STRATA))
print('strata, odds ratio 2', strata_terms(ODDS))
