"""Size and power of the tests that checks/montecarlo/parametric_check.cpp simulates, computed
without a simulation: normal and t tests from their distributions, tests of counts by the sum of the
probabilities of all tables that reject. Only the Stuart-Maxwell test of three categories is
simulated here (numpy); its standard errors stand beside it.

    /usr/bin/python3 checks/reference/simulated.py
"""
import itertools

import numpy as np
from scipy import integrate, stats

OUT = 'checks/data/simulation/parametric.tsv'
HEAD = 'Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tSize\tPower\tError'
INTERVALS = ['menu 800', 'menu 801', 'menu 802', 'menu 811', 'menu 830', 'menu 831', 'menu 832']
rows = []


def add(analysis, samples, tails, left, checks, groups, values, result, error=0.0):
    size, power = result
    if analysis in INTERVALS:  # a confidence level in the place of the significance level
        values = {321: values[0], **{k: v for k, v in values.items() if k != 0}}
    rows.append([analysis, str(samples), str(tails), '-1' if left else '0',
                 ','.join(map(str, checks)), ','.join(f'{g}={o}' for g, o in groups.items()),
                 ';'.join(f'{k}={v}' for k, v in values.items()), f'{size:.7f}', f'{power:.7f}',
                 f'{error:.2g}'])


def nearer(low, high, truth):
    """The limit that is H0 of two one-sided tests."""
    return high if truth > (low + high) / 2 else low


# --- Normal and t -----------------------------------------------------------------------------

def reject_z(truth, null, right, se, tails, left, alpha):
    z = stats.norm.isf(alpha / 2 if tails == 2 else alpha)
    cdf = stats.norm.cdf
    if tails == 3:
        return max(0.0, cdf((right - z * se - truth) / se) - cdf((null + z * se - truth) / se))
    d = (truth - null) / se
    if tails == 2:
        return cdf(-z - d) + cdf(-z + d)
    return cdf(-z - d) if left else cdf(-z + d)


def reject_t(truth, null, right, se, df, tails, left, alpha):
    t = stats.t.isf(alpha / 2 if tails == 2 else alpha, df)
    if tails == 3:
        # Given the ratio of the estimated and the true standard error.
        def given(u):
            s = np.sqrt(u / df) * se
            inside = stats.norm.cdf((right - t * s - truth) / se) - \
                stats.norm.cdf((null + t * s - truth) / se)
            return max(inside, 0.0) * stats.chi2.pdf(u, df)
        return integrate.quad(given, 0, stats.chi2.ppf(1 - 1e-13, df), limit=500)[0]
    d = (truth - null) / se
    if tails == 2:
        return stats.nct.sf(t, df, d) + stats.nct.cdf(-t, df, d)
    return stats.nct.cdf(-t, df, d) if left else stats.nct.sf(t, df, d)


def both(reject, null, right, truth, tails, *rest):
    h0 = nearer(null, right, truth) if tails == 3 else null
    return reject(h0, null, right, *rest), reject(truth, null, right, *rest)


def z_test(null, right, truth, se, tails, left, alpha):
    return both(lambda x, a, b: reject_z(x, a, b, se, tails, left, alpha), null, right, truth,
                tails)


def t_test(null, right, truth, se, df, tails, left, alpha):
    return both(lambda x, a, b: reject_t(x, a, b, se, df, tails, left, alpha), null, right, truth,
                tails)


def satterthwaite(null, right, truth, sd1, sd2, n1, n2, tails, left, alpha):
    """Given both sample variances the difference is normal: the mean over a grid of their
    quantiles."""
    grid = (np.arange(3000) + 0.5) / 3000
    v1 = sd1**2 / n1 * stats.chi2.ppf(grid, n1 - 1)[:, None] / (n1 - 1)
    v2 = sd2**2 / n2 * stats.chi2.ppf(grid, n2 - 1)[None, :] / (n2 - 1)
    se = np.sqrt(sd1**2 / n1 + sd2**2 / n2)
    df = (v1 + v2)**2 / (v1**2 / (n1 - 1) + v2**2 / (n2 - 1))
    t = stats.t.isf(alpha / 2 if tails == 2 else alpha, df) * np.sqrt(v1 + v2)

    def reject(x, a, b):
        cdf = stats.norm.cdf
        if tails == 3:
            return np.maximum(0, cdf((b - t - x) / se) - cdf((a + t - x) / se)).mean()
        right_tail = cdf((x - a - t) / se).mean()
        left_tail = cdf((a - t - x) / se).mean()
        return right_tail + left_tail if tails == 2 else left_tail if left else right_tail
    return both(reject, null, right, truth, tails)


# --- Tables -----------------------------------------------------------------------------------

def p_normal(z_null, z_right, tails, left):
    """z above H0 (the left limit), and above the right limit."""
    if tails == 3:
        return np.maximum(stats.norm.sf(z_null), stats.norm.cdf(z_right))
    if tails == 2:
        return 2 * stats.norm.sf(np.abs(z_null))
    return stats.norm.cdf(z_null) if left else stats.norm.sf(z_null)


def p_corrected(d_null, d_right, se0, se_right, c, tails, left):
    """Distances from H0 and from the right limit, the correction c; 1 without a variance."""
    with np.errstate(divide='ignore', invalid='ignore'):
        if tails == 3:
            p = p_normal((d_null - c) / se0, (d_right + c) / se_right, 3, False)
            none = (se0 <= 0) | (se_right <= 0)
        else:
            none = se0 <= 0
            if tails == 2:
                p = 2 * stats.norm.sf((np.abs(d_null) - c) / se0)
            else:
                p = stats.norm.cdf((d_null + c) / se0) if left else stats.norm.sf((d_null - c) / se0)
    return np.where(none, 1.0, p)


def tails_p(above, below, tails, left):
    if tails == 3:
        return np.maximum(above, below)
    if tails == 2:
        return np.minimum(1, 2 * np.minimum(above, below))
    return below if left else above


def pair_with(p1, p2, d):
    """The pair with that difference and the same average, inside the edges."""
    low, high = (p1 + p2 - d) / 2, (p1 + p2 + d) / 2
    e, f = 1e-5, 0.99999
    if d >= 0:
        low, high = np.where(low < e, e, low), np.where(low < e, d, high)
        low, high = np.where(high > f, 1 - d, low), np.where(high > f, f, high)
    else:
        low, high = np.where(high < e, -d, low), np.where(high < e, e, high)
        low, high = np.where(low > f, f, low), np.where(low > f, 1 + d, high)
    return low, high


def a(p):
    return np.arcsin(np.sqrt(p))


def one_proportion(p, null, right, n, form, corrected, tails, left, alpha, population=None):
    x = np.arange(n + 1)
    factor = 1.0
    if population:
        factor = (population - n) / (population - 1)
        law = lambda q: stats.hypergeom(population, round(q * population), n)
    else:
        law = lambda q: stats.binom(n, q)
    if form == 'exact':
        lim = right if tails == 3 else null
        pv = tails_p(law(null).sf(x - 1), law(lim).cdf(x), tails, left)
    elif form == 'arcsine':
        se = 0.5 / np.sqrt(n)
        pv = p_normal((a(x / n) - a(null)) / se, (a(x / n) - a(right)) / se, tails, left)
    else:
        se = lambda q: np.full(n + 1, np.sqrt(q * (1 - q) * factor / n))
        pv = p_corrected(x / n - null, x / n - right, se(null), se(right),
                         0.5 / n if corrected else 0, tails, left)
    rejects = pv < alpha
    h0 = nearer(null, right, p) if tails == 3 else null
    return tuple(law(q).pmf(x)[rejects].sum() for q in (h0, p))


def two_proportions(p1, p2, null, right, n1, n2, form, corrected, tails, left, alpha,
                    populations=None):
    x1, x2 = np.arange(n1 + 1)[:, None], np.arange(n2 + 1)[None, :]
    q1, q2 = x1 / n1 + 0 * x2, x2 / n2 + 0 * x1
    f1 = f2 = 1.0
    if populations:
        f1, f2 = ((N - n) / (N - 1) for N, n in zip(populations, (n1, n2)))

    def se(b1, b2, d):
        if d == 0:
            m = (n1 * b1 + n2 * b2) / (n1 + n2)
            return np.sqrt(m * (1 - m) * (f1 / n1 + f2 / n2))
        return np.sqrt(b1 * (1 - b1) * f1 / n1 + b2 * (1 - b2) * f2 / n2)

    d = q2 - q1
    c = (1 / n1 + 1 / n2) / 2 if corrected else 0
    if form == 'arcsine':
        s = 0.5 * np.sqrt(1 / n1 + 1 / n2)
        at = lambda lim: np.subtract(*(a(q) for q in pair_with(p1, p2, lim)[::-1]))
        e = a(q2) - a(q1)
        pv = p_normal((e - at(null)) / s, (e - at(right)) / s, tails, left)
    elif form == 'fisher':
        pv = np.ones((n1 + 1, n2 + 1))
        for i, j in itertools.product(range(n1 + 1), range(n2 + 1)):
            if 0 < i + j < n1 + n2:
                law = stats.hypergeom(n1 + n2, n1, i + j)
                pv[i, j] = tails_p(law.cdf(i), law.sf(i - 1), tails, left)
    elif tails == 3:
        pv = p_corrected(d - null, d - right, se(*pair_with(q1, q2, null), null),
                         se(*pair_with(q1, q2, right), right), c, 3, left)
    else:
        pv = p_corrected(d - null, 0, se(q1, q2, null), 0, c, tails, left)
    rejects = pv < alpha
    h0 = nearer(null, right, p2 - p1) if tails == 3 else null
    out = []
    for b1, b2 in (pair_with(p1, p2, h0), (p1, p2)):
        if populations:
            w1 = stats.hypergeom(populations[0], round(float(b1) * populations[0]), n1).pmf(x1)
            w2 = stats.hypergeom(populations[1], round(float(b2) * populations[1]), n2).pmf(x2)
        else:
            w1, w2 = stats.binom.pmf(x1, n1, b1), stats.binom.pmf(x2, n2, b2)
        out.append((w1 * w2)[rejects].sum())
    return tuple(out)


def discordant(n, cells):
    """Probabilities of all (first, second) counts of discordant pairs."""
    x, y = np.arange(n + 1)[:, None], np.arange(n + 1)[None, :]
    first, second = cells
    w = stats.binom.pmf(x, n, first)
    rest = np.maximum(n - x, 0)
    return w * np.where(y <= rest, stats.binom.pmf(y, rest, second / (1 - first)), 0)


def mcnemar(s, d, n, exact, tails, left, alpha):
    x, y = np.arange(n + 1)[:, None], np.arange(n + 1)[None, :]
    m = x + y
    if exact:
        pv = tails_p(stats.binom.sf(x - 1, m, 0.5), stats.binom.cdf(x, m, 0.5), tails, left)
    else:
        safe = np.maximum(m, 1)
        pv = p_normal((x / safe - 0.5) / np.sqrt(0.25 / safe), 0, tails, left)
    rejects = (np.where(m == 0, 1, pv) < alpha) & (m <= n)
    return tuple(discordant(n, c)[rejects].sum()
                 for c in ((s / 2, s / 2), ((s + d) / 2, (s - d) / 2)))


def paired(p1, p2, s, null, right, n, variance, tails, left, alpha):
    p01, p10 = np.arange(n + 1)[:, None] / n, np.arange(n + 1)[None, :] / n
    d, t = p01 - p10, p01 + p10

    def se(d0):
        if variance == 'h1':
            v = t - d**2
        elif variance == 'score':
            # The restricted estimate by maximum likelihood, of both cells, found numerically is
            # that of the quadratic equation of Tango (1998).
            k = abs(d0)
            towards = -d if d0 < 0 else d
            large, small = (t + towards) / 2, (t - towards) / 2
            b = -large - small + (2 - large + small) * k
            q = (np.sqrt(b * b + 8 * small * k * (1 - k)) - b) / 4
            v = 2 * q + k - k * k
        else:
            v = t - d0**2
        return np.sqrt(np.maximum(v, 0) / n)
    se_right = se(right) if tails == 3 else se(null)
    pv = p_corrected(d - null, d - right, se(null), se_right, 0, tails, left)
    rejects = (pv < alpha) & (t <= 1 + 1e-9)
    h0 = nearer(null, right, p2 - p1) if tails == 3 else null
    out = []
    for d0 in (h0, p2 - p1):
        u = max(s, abs(d0))
        out.append(discordant(n, ((u + d0) / 2, (u - d0) / 2))[rejects].sum())
    return tuple(out)


def poisson_one(mean, null, right, n, tails, left, alpha):
    x = np.arange(0, int(n * max(mean, null, right) * 2 + 200))
    se = lambda lam: np.full(x.size, np.sqrt(lam / n))
    pv = p_corrected(x / n - null, x / n - right, se(null), se(right), 0, tails, left)
    h0 = nearer(null, right, mean) if tails == 3 else null
    return tuple(stats.poisson.pmf(x, n * q)[pv < alpha].sum() for q in (h0, mean))


def poisson_two(m1, m2, null, right, n1, n2, tails, left, alpha):
    most = int(max(n1, n2) * max(m1, m2) * 2 + 200)
    x1, x2 = np.arange(most)[:, None], np.arange(most)[None, :]
    pooled = np.sqrt((x1 + x2) / (n1 + n2) * (1 / n1 + 1 / n2))
    plain = np.sqrt(x1 / n1**2 + x2 / n2**2)
    se = lambda d: pooled if d == 0 else plain
    d = x2 / n2 - x1 / n1
    pv = p_corrected(d - null, d - right, se(null), se(right), 0, tails, left)
    h0 = nearer(null, right, m2 - m1) if tails == 3 else null
    total = max(m1 + m2, abs(h0))
    return tuple((stats.poisson.pmf(x1, n1 * a1) * stats.poisson.pmf(x2, n2 * a2))[pv < alpha].sum()
                 for a1, a2 in (((total - h0) / 2, (total + h0) / 2), (m1, m2)))


def all_tables(sizes):
    return np.meshgrid(*(np.arange(n + 1) for n in sizes), indexing='ij', sparse=True)


def weights(tables, sizes, ps):
    w = 1.0
    for x, n, p in zip(tables, sizes, ps):
        w = w * stats.binom.pmf(x, n, p)
    return w


def trend(levels, sizes, h1, average, correction, tails, left, alpha):
    n = sum(sizes)
    x = all_tables(sizes)
    m = sum(k * v for k, v in zip(sizes, levels)) / n
    b = sum(k * (v - m)**2 for k, v in zip(sizes, levels)) / n
    p = sum(x) / n
    t = sum((v - m) * y for v, y in zip(levels, x)) / n
    pv = p_corrected(t, 0, np.sqrt(p * (1 - p) * b / n), 0, correction / 2 / n, tails, left)
    return tuple(weights(x, sizes, q)[pv < alpha].sum() for q in ([average] * len(sizes), h1))


def mantel_haenszel(strata, corrected, tails, left, alpha):
    """strata: (n1, n2, p1, p2)"""
    sizes = [n for s in strata for n in s[:2]]
    x = all_tables(sizes)
    excess = var = 0
    for i, (n1, n2, _, _) in enumerate(strata):
        y1, y2 = x[2 * i], x[2 * i + 1]
        n, k = n1 + n2, y1 + y2
        excess = excess + y2 - n2 * k / n
        var = var + n1 * n2 * k * (n - k) / (n**2 * (n - 1))
    pv = p_corrected(excess, 0, np.sqrt(var), 0, 0.5 if corrected else 0, tails, left)
    h0 = [(s[0] * s[2] + s[1] * s[3]) / (s[0] + s[1]) for s in strata for _ in (0, 1)]
    h1 = [q for s in strata for q in s[2:]]
    return tuple(weights(x, sizes, q)[pv < alpha].sum() for q in (h0, h1))


def stuart(table, n, alpha, replicates, rng):
    k = table.shape[0]
    out = []
    for p in ((table + table.T) / 2, table):
        c = rng.multinomial(n, p.ravel(), replicates).reshape(-1, k, k).astype(float)
        d = c.sum(2) - c.sum(1)
        v = -(c + c.transpose(0, 2, 1))
        v[:, range(k), range(k)] = c.sum(1) + c.sum(2) - 2 * c[:, range(k), range(k)]
        inverse = np.linalg.pinv(v, rcond=1e-9, hermitian=True)
        q = np.einsum('ri,rij,rj->r', d, inverse, d)
        out.append((stats.chi2.sf(q, k - 1) < alpha).mean())
    return tuple(out)


def plain_stuart(k, lam):
    cell = max(1 / k**2, lam / (2 * (k - 1)))
    shift = np.sqrt(lam * cell / (2 * (k - 1)))
    t = np.full((k, k), cell)
    t[0, :] += shift
    t[:, 0] -= shift
    t[range(k), range(k)] = (1 - cell * k * (k - 1)) / k
    return t


# --- The cases --------------------------------------------------------------------------------

def means():
    T = {1: [(1, False), (1, True), (2, False)], 3: [(3, False)]}
    # z and t tests of one mean and of one median.
    for lst, df in ((0, None), (1, 19)):
        test = lambda null, right, truth, se, *r: z_test(null, right, truth, se, *r) \
            if df is None else t_test(null, right, truth, se, df, *r)
        for tails, left in T[1]:
            h1 = 9.3 if left else 10.6
            add(f'distribution 0 {lst} 0', 1, tails, left, [], {0: 0},
                {0: 0.05, 57: 10, 58: h1, 2: 1, 85: 20},
                test(10, 0, h1, 1 / np.sqrt(20), tails, left, 0.05))
        add(f'distribution 0 {lst} 0', 1, 2, False, [], {0: 1},
            {0: 0.01, 57: 10, 59: 0.7, 2: 1, 85: 20},
            test(10, 0, 10.7, 1 / np.sqrt(20), 2, False, 0.01))
        add(f'distribution 0 {lst} 0', 1, 2, False, [], {0: 2},
            {0: 0.05, 57: 10, 60: 1.05, 2: 1, 85: 20},
            test(10, 0, 10.5, 1 / np.sqrt(20), 2, False, 0.05))
        for truth in (0.1, -0.1):
            add(f'distribution 0 {lst} 0', 1, 3, False, [], {},
                {0: 0.05, 6: -0.8, 7: 0.7, 58: truth, 2: 1, 85: 20},
                test(-0.8, 0.7, truth, 1 / np.sqrt(20), 3, False, 0.05))
        add(f'distribution 1 {lst} 0', 1, 2, False, [], {9: 2},
            {0: 0.05, 89: 5, 92: 1.3, 27: 0.5, 85: 20},
            test(np.log(5), 0, np.log(6.5), 0.5 / np.sqrt(20), 2, False, 0.05))
        add(f'distribution 1 {lst} 0', 2, 1, True, [], {10: 1, 2: 2, **({31: 2} if lst == 0 else {})},
            {0: 0.05, 93: 1, 96: 0.7, **({50: 0.5, 108: 1} if lst == 0 else {27: 0.5}), 4: 20, 5: 1.5},
            (z_test if lst == 0 else lambda *r: t_test(*r[:4], 48, *r[4:]))(
                0, 0, np.log(0.7), 0.5 * np.sqrt(1 / 20 + 1 / 30), 1, True, 0.05))
    # Degrees of freedom that are entered, or those of more groups.
    add('distribution 0 1 0', 1, 2, False, [0], {0: 0}, {0: 0.05, 57: 0, 58: 0.8, 2: 1, 85: 12, 36: 40},
        t_test(0, 0, 0.8, 1 / np.sqrt(12), 40, 2, False, 0.05))
    add('distribution 0 1 0', 1, 1, False, [5], {0: 0}, {0: 0.05, 57: 0, 58: 0.8, 2: 1, 85: 8, 17: 3},
        t_test(0, 0, 0.8, 1 / np.sqrt(8), 21, 1, False, 0.05))
    # Two samples with known standard deviations of their own.
    se = np.sqrt(1 / 15 + 4 / 25)
    for tails, left in T[1]:
        d = -1.2 if left else 1.3
        add('distribution 0 0 0', 2, tails, left, [], {1: 1, 29: 0, 2: 0},
            {0: 0.05, 61: 0, 62: d, 216: 1, 217: 2, 4: 15, 37: 25},
            z_test(0, 0, d, se, tails, left, 0.05))
    add('distribution 0 0 0', 2, 3, False, [], {1: 0, 29: 1, 2: 1},
        {0: 0.05, 6: -1, 7: 2, 86: 3, 87: 3.6, 216: 1, 218: 1, 4: 15, 38: 10},
        z_test(-1, 2, 0.6, se, 3, False, 0.05))
    # The unpaired t-test.
    se = np.sqrt(1 / 20 + 1 / 20)
    for tails, left in T[1]:
        d = -0.7 if left else 0.8
        add('menu 0', 2, tails, left, [], {1: 1, 2: 0}, {0: 0.05, 61: 0, 62: d, 2: 1, 4: 20, 37: 20},
            t_test(0, 0, d, se, 38, tails, left, 0.05))
    add('menu 0', 2, 2, False, [], {1: 2, 2: 2}, {0: 0.01, 61: 0.5, 86: 4, 88: 1.6, 2: 1.5, 4: 8, 5: 3},
        t_test(0.5, 0, 2.4, 1.5 * np.sqrt(1 / 8 + 1 / 24), 30, 2, False, 0.01))
    add('menu 0', 2, 3, False, [], {1: 0, 2: 1}, {0: 0.05, 6: -1, 7: 1, 86: 2, 87: 2.2, 2: 1, 4: 20, 38: 5},
        t_test(-1, 1, 0.2, np.sqrt(1 / 20 + 1 / 25), 43, 3, False, 0.05))
    add('menu 0', 2, 2, False, [], {1: 1, 2: 0}, {0: 0.05, 61: 0, 62: 3, 2: 1, 4: 3, 37: 3},
        t_test(0, 0, 3, np.sqrt(2 / 3), 4, 2, False, 0.05))
    # Unequal standard deviations.
    for tails, left, d in ((1, False, 1.5), (1, True, -1.5), (2, False, 1.7)):
        add('menu 0', 2, tails, left, [16], {1: 1, 29: 0, 2: 0},
            {0: 0.05, 61: 0, 62: d, 216: 1, 217: 2, 4: 20, 37: 10},
            satterthwaite(0, 0, d, 1, 2, 20, 10, tails, left, 0.05))
    add('menu 0', 2, 3, False, [16], {1: 1, 29: 0, 2: 0},
        {0: 0.05, 6: -2, 7: 2, 62: 0.1, 216: 1, 217: 2, 4: 20, 37: 10},
        satterthwaite(-2, 2, 0.1, 1, 2, 20, 10, 3, False, 0.05))
    # The paired t-test.
    for tails, left in T[1]:
        h1 = -0.9 if left else 0.9
        add('menu 1', 1, tails, left, [], {21: 0}, {0: 0.05, 157: 0, 158: h1, 3: 1.5, 85: 16},
            t_test(0, 0, h1, 1.5 / 4, 15, tails, left, 0.05))
    add('menu 1', 1, 3, False, [], {}, {0: 0.05, 6: -1, 7: 1, 158: 0, 3: 1.5, 85: 25},
        t_test(-1, 1, 0, 0.3, 24, 3, False, 0.05))
    # Bioequivalence in a crossover design.
    for menu, level in ((810, 0.05), (811, 0.9)):
        add(f'menu {menu}', 2, 3, False, [], {10: 1, 19: 0, 53: 0},
            {0: level, 29: 0.8, 30: 1.25, 96: 0.95, 155: 0.2, 322: 8, 323: 10},
            t_test(np.log(0.8), np.log(1.25), np.log(0.95), 0.2 * np.sqrt((1 / 8 + 1 / 10) / 2), 16,
                   3, False, 0.05))
    add('menu 810', 2, 3, False, [], {10: 0, 19: 1, 53: 0},
        {0: 0.05, 29: 0.8, 30: 1.25, 94: 100, 95: 105, 156: 0.25, 322: 15, 323: 15},
        t_test(np.log(0.8), np.log(1.25), np.log(1.05), np.sqrt(np.log(1.0625)) / np.sqrt(15), 28, 3,
               False, 0.05))
    # Through intervals: equivalence, and non-inferiority with one-sided and two-sided ones.
    add('menu 800', 2, 3, False, [], {1: 1, 2: 0}, {0: 0.9, 6: -1, 7: 1, 62: 0.2, 2: 1, 4: 20, 37: 20},
        t_test(-1, 1, 0.2, se, 38, 3, False, 0.05))
    add('menu 801', 2, 3, False, [], {10: 1, 2: 0}, {0: 0.9, 97: 0.8, 98: 1.25, 96: 1.05, 27: 0.3, 4: 40, 37: 40},
        z_test(np.log(0.8), np.log(1.25), np.log(1.05), 0.3 * np.sqrt(2 / 40), 3, False, 0.05))
    for checks, alpha in (([], 0.05), ([36], 0.025)):
        add('menu 830', 2, 1, False, checks, {1: 1, 2: 0}, {0: 0.95, 330: -0.5, 62: 0.3, 2: 1, 4: 20, 37: 20},
            t_test(-0.5, 0, 0.3, se, 38, 1, False, alpha))
    add('menu 831', 2, 1, True, [], {10: 1, 2: 0}, {0: 0.95, 319: 1.25, 96: 1, 27: 0.4, 4: 40, 37: 40},
        z_test(np.log(1.25), 0, 0, 0.4 * np.sqrt(2 / 40), 1, True, 0.05))


def proportions():
    # One proportion.
    for tails, left, p in ((1, False, 0.5), (1, True, 0.15), (2, False, 0.5)):
        for checks, form, corrected in (([], '', False), ([1], '', True), ([2], 'arcsine', False),
                                        ([7], 'exact', False)):
            add('distribution 4 0 0', 1, tails, left, checks, {11: 0}, {0: 0.05, 35: 0.3, 83: p, 85: 40},
                one_proportion(p, 0.3, 0, 40, form, corrected, tails, left, 0.05))
    for checks, form, corrected in (([], '', False), ([1], '', True), ([2], 'arcsine', False),
                                    ([7], 'exact', False)):
        add('distribution 4 0 0', 1, 3, False, checks, {}, {0: 0.05, 47: 0.3, 48: 0.6, 83: 0.46, 85: 80},
            one_proportion(0.46, 0.3, 0.6, 80, form, corrected, 3, False, 0.05))
    add('distribution 4 1 0', 1, 2, False, [7], {34: 2}, {0: 0.05, 225: 0.5, 228: 3, 85: 30},
        one_proportion(0.6, 1 / 3, 0, 30, 'exact', False, 2, False, 0.05))
    # Two proportions: as parameters, as a 2 x 2 table, through intervals.
    for tails, left, p2 in ((1, False, 0.5), (1, True, 0.12), (2, False, 0.55)):
        for checks, form, corrected in (([], '', False), ([1], '', True), ([2], 'arcsine', False)):
            add('distribution 4 0 0', 2, tails, left, checks, {12: 0, 2: 0},
                {0: 0.05, 51: 0, 8: 0.3, 69: p2, 4: 40, 37: 50},
                two_proportions(0.3, p2, 0, 0, 40, 50, form, corrected, tails, left, 0.05))
    add('distribution 4 0 0', 2, 1, False, [], {12: 1, 2: 2},
        {0: 0.05, 51: -0.15, 8: 0.7, 52: 0.05, 4: 40, 5: 1.25},
        two_proportions(0.7, 0.75, -0.15, 0, 40, 50, '', False, 1, False, 0.05))
    add('distribution 4 0 0', 2, 1, False, [2], {12: 1, 2: 2},
        {0: 0.05, 51: -0.15, 8: 0.7, 52: 0.05, 4: 40, 5: 1.25},
        two_proportions(0.7, 0.75, -0.15, 0, 40, 50, 'arcsine', False, 1, False, 0.05))
    for checks, form, corrected in (([], '', False), ([1], '', True), ([2], 'arcsine', False)):
        add('distribution 4 0 0', 2, 3, False, checks, {12: 0, 2: 0},
            {0: 0.05, 71: -0.2, 72: 0.25, 8: 0.4, 69: 0.43, 4: 70, 37: 80},
            two_proportions(0.4, 0.43, -0.2, 0.25, 70, 80, form, corrected, 3, False, 0.05))
    for tails, left, p2 in ((1, False, 0.5), (1, True, 0.12), (2, False, 0.55)):
        for checks, corrected in (([], False), ([1], True)):
            add('menu 111', 2, tails, left, checks, {12: 0, 2: 0},
                {0: 0.05, 51: 0, 8: 0.3, 69: p2, 4: 35, 37: 35},
                two_proportions(0.3, p2, 0, 0, 35, 35, '', corrected, tails, left, 0.05))
    add('menu 111', 2, 2, False, [9], {35: 2, 2: 0}, {0: 0.05, 229: 0.5, 232: 3, 4: 35, 37: 35},
        two_proportions(1 / 3, 0.6, 0, 0, 35, 35, '', False, 2, False, 0.05))
    add('menu 111', 2, 3, False, [], {12: 0, 2: 0}, {0: 0.05, 71: -0.25, 72: 0.25, 8: 0.5, 69: 0.5, 4: 60, 37: 60},
        two_proportions(0.5, 0.5, -0.25, 0.25, 60, 60, '', False, 3, False, 0.05))
    add('menu 802', 2, 3, False, [], {12: 0, 2: 0}, {0: 0.9, 71: -0.25, 72: 0.25, 8: 0.5, 69: 0.45, 4: 60, 37: 60},
        two_proportions(0.5, 0.45, -0.25, 0.25, 60, 60, '', False, 3, False, 0.05))
    add('menu 832', 2, 1, False, [36], {12: 0, 2: 0}, {0: 0.95, 317: -0.2, 8: 0.6, 69: 0.65, 4: 60, 37: 60},
        two_proportions(0.6, 0.65, -0.2, 0, 60, 60, '', False, 1, False, 0.025))
    # Fisher's test.
    for tails, left, p2 in ((1, False, 0.6), (1, True, 0.05), (2, False, 0.7)):
        add('menu 100', 2, tails, left, [], {12: 0, 2: 0}, {0: 0.05, 8: 0.3, 69: p2, 4: 25, 37: 30},
            two_proportions(0.3, p2, 0, 0, 25, 30, 'fisher', False, tails, left, 0.05))
        add('menu 100', 2, tails, left, [], {12: 0, 2: 0}, {0: 0.05, 8: 0.3, 69: p2, 4: 51, 37: 30},
            two_proportions(0.3, p2, 0, 0, 51, 30, 'arcsine', False, tails, left, 0.05))
    add('menu 100', 2, 2, False, [9], {35: 0, 2: 0}, {0: 0.05, 229: 0.25, 230: 1.5, 4: 20, 37: 20},
        two_proportions(0.2, 0.6, 0, 0, 20, 20, 'fisher', False, 2, False, 0.05))
    # Finite populations.
    for tails, left, p in ((1, False, 0.5), (1, True, 0.1), (2, False, 0.5)):
        for checks, form, corrected in (([], '', False), ([1], '', True), ([7], 'exact', False)):
            add('distribution 5 0 0', 1, tails, left, checks, {11: 0},
                {0: 0.05, 35: 0.3, 83: p, 31: 100, 85: 30},
                one_proportion(p, 0.3, 0, 30, form, corrected, tails, left, 0.05, 100))
    add('distribution 5 0 0', 1, 3, False, [7], {}, {0: 0.05, 47: 0.3, 48: 0.6, 83: 0.46, 31: 200, 85: 60},
        one_proportion(0.46, 0.3, 0.6, 60, 'exact', False, 3, False, 0.05, 200))
    add('distribution 5 0 0', 2, 2, False, [], {12: 0, 25: 0, 2: 0},
        {0: 0.05, 51: 0, 8: 0.3, 69: 0.5, 196: 120, 197: 90, 4: 40, 37: 40},
        two_proportions(0.3, 0.5, 0, 0, 40, 40, '', False, 2, False, 0.05, (120, 90)))
    # Paired proportions.
    for tails, left, d in ((1, False, 0.2), (1, True, -0.2), (2, False, 0.25)):
        for checks, exact in (([], True), ([26], True), ([24], False), ([25], False)):
            add('menu 70', 1, tails, left, checks, {}, {0: 0.05, 15: 0.4, 16: d, 85: 60},
                mcnemar(0.4, d, 60, exact, tails, left, 0.05))
    for checks, variance in (([], 'ml'), ([27], 'score'), ([30], 'ml'), ([39], 'h1')):
        for tails, left, p2 in ((1, False, 0.65), (1, True, 0.3), (2, False, 0.7)):
            add('menu 80', 1, tails, left, checks, {12: 0, 20: 1},
                {0: 0.05, 51: 0, 8: 0.5, 69: p2, 15: 0.4, 85: 50},
                paired(0.5, p2, 0.4, 0, 0, 50, variance, tails, left, 0.05))
        add('menu 80', 1, 3, False, checks, {12: 0, 20: 1},
            {0: 0.05, 71: -0.25, 72: 0.2, 8: 0.5, 69: 0.52, 15: 0.3, 85: 80},
            paired(0.5, 0.52, 0.3, -0.25, 0.2, 80, variance, 3, False, 0.05))
        add('menu 80', 1, 1, False, checks, {12: 0, 20: 0},
            {0: 0.05, 51: -0.1, 8: 0.8, 69: 0.85, 123: 0.7, 85: 60},
            paired(0.8, 0.85, 0.25, -0.1, 0, 60, variance, 1, False, 0.05))


def counts():
    for tails, left, m in ((1, False, 2.6), (1, True, 1.5), (2, False, 2.7)):
        add('distribution 6 0 0', 1, tails, left, [], {0: 0}, {0: 0.05, 161: 2, 162: m, 163: 25},
            poisson_one(m, 2, 0, 25, tails, left, 0.05))
        add('distribution 6 1 0', 1, tails, left, [], {4: 0}, {0: 0.05, 63: 2, 81: m, 170: 12.5},
            poisson_one(m, 2, 0, 12.5, tails, left, 0.05))
        add('distribution 6 0 0', 2, tails, left, [], {1: 0, 2: 0},
            {0: 0.05, 61: 0, 168: 2, 169: m, 164: 25, 165: 30},
            poisson_two(2, m, 0, 0, 25, 30, tails, left, 0.05))
        add('distribution 6 1 0', 2, tails, left, [], {5: 0, 22: 0},
            {0: 0.05, 64: 0.1, 9: 2, 73: m, 171: 12.5, 172: 14},
            poisson_two(2, m, 0.1, 0, 12.5, 14, tails, left, 0.05))
    add('distribution 6 0 0', 1, 3, False, [], {}, {0: 0.05, 166: 1.4, 167: 2.8, 162: 2, 163: 25},
        poisson_one(2, 1.4, 2.8, 25, 3, False, 0.05))
    add('distribution 6 0 0', 2, 3, False, [], {1: 0, 2: 0},
        {0: 0.05, 6: -1, 7: 1.2, 168: 2, 169: 2.2, 164: 25, 165: 30},
        poisson_two(2, 2.2, -1, 1.2, 25, 30, 3, False, 0.05))


def tables():
    rng = np.random.default_rng(20261122)
    spacing = np.sqrt(12 * 0.6666667 / (3 * 3 - 1))
    for tails, left, t in ((1, False, 0.1), (1, True, -0.1), (2, False, 0.12)):
        for checks, c in (([], 0), ([1], spacing)):
            levels = [-spacing, 0, spacing]
            h1 = [0.4 + t / 0.6666667 * v for v in levels]
            add('menu 130', 3, tails, left, checks, {},
                {0: 0.05, 311: t, 312: 0.4, 313: 0.15, 314: 0.6666667, 17: 3, 320: 60},
                trend(levels, [20, 20, 20], h1, 0.4, c, tails, left, 0.05))
    for tails, left, a0 in ((1, False, 0.07), (1, True, -0.07), (2, False, 0.08)):
        for checks in ([], [1]):
            p = (1 - np.sqrt(1 - 16 * 0.05)) / 2
            add('menu 120', 2, tails, left, checks, {},
                {0: 0.05, 307: a0, 308: 0.05, 309: 0.045, 310: 2, 320: 72},
                mantel_haenszel([(18, 18, p - 2 * a0, p + 2 * a0)] * 2, bool(checks), tails, left,
                                0.05))
    for k, lam, n in ((2, 0.15, 60), (3, 0.15, 80), (4, 0.3, 50)):
        replicates = 1000000
        add('menu 90', 1, 2, False, [], {}, {0: 0.05, 250: lam, 201: k, 85: n},
            stuart(plain_stuart(k, lam), n, 0.05, replicates, rng), 0.5 / np.sqrt(replicates))


def filled():
    """The tables that the checks fill in themselves, on the screen."""
    ps = [0.2, 0.35, 0.6]
    print('trend', trend([0, 1, 3], [30, 15, 15], ps, np.dot([0.5, 0.25, 0.25], ps), 0, 2, False, 0.05))
    print('strata', mantel_haenszel([(10, 20, 0.2, 0.5), (20, 10, 0.5, 0.8)], False, 2, False, 0.05))
    # Of two categories the test of Stuart and Maxwell is the square of that of d/sqrt(s).
    n, c = 60, (0.25, 0.1)
    x, y = np.arange(n + 1)[:, None], np.arange(n + 1)[None, :]
    rejects = stats.chi2.sf((x - y)**2 / np.maximum(x + y, 1), 1) < 0.05
    print('margins', *(discordant(n, q)[rejects & (x + y <= n)].sum()
                       for q in ((sum(c) / 2, sum(c) / 2), c)))


if __name__ == '__main__':
    filled()
    means()
    proportions()
    counts()
    tables()
    with open(OUT, 'w', encoding='utf-8') as out:
        out.write('# Rejections under H0 and H1, computed by checks/reference/simulated.py (scipy);\n'
                  '# Error is the standard error where they are simulated there.\n' + HEAD + '\n')
        out.writelines('\t'.join(r) + '\n' for r in rows)
