"""Powers of the analyses of variance, of repeated measurements and of Hotelling's test from the
model itself: the design as a matrix of its cells, true means, and the non-centrality as the length
of what the tested effect explains of them. Unusual corners: the smallest designs, huge ones, small
and large units, levels from 0.001 to 0.3, powers near the level and near 1.

    /usr/bin/python3 checks/reference/model_matrices.py > checks/data/validation/model_matrices.tsv

The tolerance of a power is what the published approximations differ from the exact distributions at
that point, in 64 bits (Abramowitz and Stegun 26.5.22, 26.6.16 and 26.7.10, Patnaik 1949; an F with
more than 999 degrees of freedom has 999; the guards of the incomplete beta function as
docs/accuracy.md tells them), and 0.0005 for 32 bits, more where the logarithms of the beta function
are large; that of other unknowns what these do to the solution. Powers that the approximations miss
by more than 0.02 are left out: they would hold nothing to anything.
"""

import math
import random

import numpy as np
from scipy import optimize, special, stats

POWER, LEVEL = 1, 0
ROOM = 5e-4  # of a power, for 32 bits, the steps of the bisection and the floor of arguments
WORTHLESS = 0.02  # a tolerance


# --- The laws, exact and as they are approximated ---------------------------------------------------

def exact_f(alpha, df1, df2, noncentrality):
    return exact_at(stats.f.isf(alpha, df1, df2), df1, df2, noncentrality)


def noncentrality_for(target, alpha, df1, df2):
    high = 1.0
    while exact_f(alpha, df1, df2, high) < target:
        high *= 2
    return optimize.brentq(lambda x: exact_f(alpha, df1, df2, x) - target, 0, high, xtol=1e-12)


def whole_quantile(p, df1, df2):
    if df1 <= 10 or df2 <= 10:
        return stats.f.ppf(p, min(df1, 999), min(df2, 999))
    z = stats.norm.ppf(p)
    g = (z * z - 3) / 6
    h = 2 / (1 / (df1 - 1) + 1 / (df2 - 1))
    w = z * math.sqrt(h + g) / h - (1 / (df1 - 1) - 1 / (df2 - 1)) * (g + 5 / 6 - 2 / (3 * h))
    return math.exp(2 * w)


def approximate_quantile(p, df1, df2):
    a, b = math.floor(df1), math.floor(df2)
    u, v = df1 - a, df2 - b
    value = 0
    for i, share1 in ((a, 1 - u), (a + 1, u)):
        for j, share2 in ((b, 1 - v), (b + 1, v)):
            if share1 * share2 > 0:
                value += share1 * share2 * whole_quantile(p, i, j)
    return value


def approximate_f(alpha, df1, df2, noncentrality):
    critical = approximate_quantile(1 - alpha, df1, df2)
    if min(df1, df2) <= 10:
        df1, df2 = min(df1, 999), min(df2, 999)
    if min(df1, df2) > 10 or noncentrality > 50:
        df = (noncentrality + df1) ** 2 / (2 * noncentrality + df1)
        return approximate_tail(critical * df1 / (noncentrality + df1), df, df2)
    counts = np.arange(101)
    weights = stats.poisson.pmf(counts, noncentrality / 2)
    x = critical * df1 / (critical * df1 + df2)
    return float(1 - sum(w * guarded_beta(x, df1 / 2 + i, df2 / 2)
                         for i, w in zip(counts, weights)))


def approximate_tail(f, df1, df2):
    if min(df1, df2) > 10 and max(df1, df2) > 100:  # E. Paulson
        z = ((1 - 2 / (9 * df2)) * f ** (1 / 3) - (1 - 2 / (9 * df1)))
        return float(stats.norm.sf(z / math.sqrt(2 * f ** (2 / 3) / (9 * df2) + 2 / (9 * df1))))
    return guarded_beta(df2 / (f * df1 + df2), df2 / 2, df1 / 2)


def guarded_beta(x, a, b):
    """With its smallest argument of 1e-5, and with exp(75) as the largest of its factor."""
    x = max(x, 1e-5)
    if (a + 1) / (a + b + 2) < x:
        return 1 - guarded_beta(1 - x, b, a)
    factor = (math.lgamma(a + b) - math.lgamma(a + 1) - math.lgamma(b) +
              math.log(2 * math.pi) / 2)
    return float(special.betainc(a, b, x)) * math.exp(min(0, 75 - factor))


def exact_at(critical, df1, df2, noncentrality):
    """The Poisson mixture of incomplete beta functions, as far as its terms count."""
    half = noncentrality / 2
    reach = 12 * math.sqrt(half) + 60
    counts = np.arange(max(0, math.floor(half - reach)), math.ceil(half + reach))
    weights = stats.poisson.pmf(counts, half)
    x = critical * df1 / (critical * df1 + df2)
    return float(1 - np.sum(weights * special.betainc(df1 / 2 + counts, df2 / 2, x)))


def exact_t(t, df, delta):
    return float(stats.nct.cdf(t, df, delta)) if delta != 0 else float(stats.t.cdf(t, df))


def approximate_t(t, df, delta):
    return float(stats.norm.cdf((t * (1 - 1 / (4 * df)) - delta) / math.sqrt(1 + t * t / (2 * df))))


def t_power(law, alpha, tails, delta, se, df, left=False, limits=None):
    upper = stats.t.isf(alpha / (2 if tails == 2 else 1), df)
    if tails == 3:
        low, high = limits
        return law(-upper, df, (delta - high) / se) - law(upper, df, (delta - low) / se)
    if tails == 2:
        return 1 - law(upper, df, delta / se) + law(-upper, df, delta / se)
    return law(-upper, df, delta / se) if left else 1 - law(upper, df, delta / se)


# --- Models -----------------------------------------------------------------------------------------

def coded(factor):
    """Deviations from the average of the levels."""
    levels = sorted(set(factor))
    columns = np.zeros((len(factor), len(levels) - 1))
    for row, level in enumerate(factor):
        if level == levels[-1]:
            columns[row, :] = -1
        else:
            columns[row, levels.index(level)] = 1
    return columns


def crossed(a, b):
    return np.hstack([a[:, [i]] * b[:, [j]] for i in range(a.shape[1]) for j in range(b.shape[1])])


def nested(inner, outer):
    """Levels of the inner factor that are the outer one's own."""
    blocks = []
    for level in sorted(set(outer)):
        inside = np.array([value == level for value in outer])
        own = coded([value for value, keep in zip(inner, inside) if keep])
        block = np.zeros((len(outer), own.shape[1]))
        block[inside] = own
        blocks.append(block)
    return np.hstack(blocks)


class Model:
    """Cells with their numbers of observations; terms in order, the first the general mean."""

    def __init__(self, weights, **terms):
        self.weights = np.asarray(weights, float)
        self.terms = {'mean': np.ones((len(self.weights), 1)), **terms}

    def basis(self, without=None):
        matrix = np.hstack([t for name, t in self.terms.items() if name != without])
        u, s, _ = np.linalg.svd(matrix * np.sqrt(self.weights)[:, None], full_matrices=False)
        return u[:, s > 1e-9 * s[0]]

    def test(self, effect, means):
        """df1, df2 and the non-centrality where the error has a standard deviation of 1."""
        full, reduced = self.basis(), self.basis(effect)
        y = np.sqrt(self.weights) * np.asarray(means, float)
        explained = np.sum((full.T @ y) ** 2) - np.sum((reduced.T @ y) ** 2)
        return (full.shape[1] - reduced.shape[1], float(np.sum(self.weights)) - full.shape[1],
                float(explained))


def grid(*sizes):
    return [list(axis) for axis in zip(*np.ndindex(*sizes))]


def means_of(levels, kind):
    """Means of balanced levels with an effect of 1: of that standard deviation; two apart and the
    others midway; one apart from all others."""
    means = np.zeros(levels)
    if kind == 1:
        means[0], means[-1] = 0.5, -0.5
        return means
    means[0] = 1
    return means if kind == 2 else means / np.std(means)


def main_effect(model, factor, kind):
    levels = sorted(set(factor))
    means = means_of(len(levels), kind)
    return model.test('tested', [means[levels.index(v)] for v in factor])


def one_way(k, n1, nk, kind):
    """The least power that a difference leaves, searched among the means."""
    weights = np.array([n1] + [nk] * (k - 1), float)
    model = Model(weights, tested=coded(list(range(k))))

    def lam(means):
        return model.test('tested', means)

    if kind == 0:
        means = np.arange(k, dtype=float)
        average = np.average(means, weights=weights)
        means = (means - average) / math.sqrt(np.average((means - average) ** 2, weights=weights))
        return lam(means)
    best = None
    for i in range(k):
        for j in range(k):
            if i == j:
                continue
            means = np.zeros(k)
            if kind == 2:
                means[i] = 1
            else:  # of the first and any other group; the others where they add nothing
                if 0 not in (i, j):
                    continue
                means[i], means[j] = 0, 1
                others = [g for g in range(k) if g not in (i, j)]
                means[others] = weights[j] / (weights[i] + weights[j])
            found = lam(means)
            if best is None or found[2] < best[2]:
                best = found
    return best


def two_way(a, b, n, tested, additive, kind, blocks=False):
    """n observations in each cell, or n blocks."""
    if blocks:
        fa, fb, fc = grid(a, b, n)
        weights = np.ones(a * b * n)
    else:
        fa, fb = grid(a, b)
        weights = np.full(a * b, n)
    ca, cb = coded(fa), coded(fb)
    terms = {'A': ca, 'B': cb}
    if not additive:
        terms['AB'] = crossed(ca, cb)
    if blocks:
        terms['blocks'] = coded(fc)
    name = ('A', 'B', 'AB')[tested]
    terms['tested'] = terms.pop(name)
    model = Model(weights, **terms)
    if tested < 2:
        return main_effect(model, (fa, fb)[tested], kind)
    residuals = np.outer(np.arange(a) - (a - 1) / 2, np.arange(b) ** 2 - np.mean(np.arange(b) ** 2))
    residuals /= math.sqrt(np.sum(residuals ** 2))  # sum of squares 1
    cells = a * b
    squares = (cells, cells, cells - 1)[kind]  # by definition of the three types
    found = model.test('tested', [residuals[i, j] * math.sqrt(squares) for i, j in zip(fa, fb)])
    return found


def three_way(sizes, n, tested, kind):
    factors = grid(*sizes)
    terms = {name: coded(f) for name, f in zip('ABC', factors)}
    terms['tested'] = terms.pop('ABC'[tested])
    return main_effect(Model(np.full(math.prod(sizes), n), **terms), factors[tested], kind)


def latin(t, r, rows, kind):
    """rows: 'single', 'own', 'common', 'random'."""
    square, row, column = grid(r, t, t)
    treatment = [(i + j + s) % t for s, i, j in zip(square, row, column)]
    terms = {'tested': coded(treatment)}
    if rows == 'random':  # the table of treatments and squares, t observations behind each cell
        table_t, table_s = grid(t, r)
        model = Model(np.full(t * r, float(t)), tested=coded(table_t), squares=coded(table_s))
        df1, _, noncentrality = main_effect(model, table_t, kind)
        return df1, (t - 1) * (r - 1), noncentrality
    if r > 1:
        terms['squares'] = coded(square)
    if rows == 'own':
        terms['rows'], terms['columns'] = nested(row, square), nested(column, square)
    else:
        terms['rows'], terms['columns'] = coded(row), coded(column)
    return main_effect(Model(np.ones(r * t * t), **terms), treatment, kind)


def random_blocks(t, b, kind):
    treatment, block = grid(t, b)
    return main_effect(Model(np.ones(t * b), tested=coded(treatment), blocks=coded(block)),
                       treatment, kind)


# --- Repeated measurements --------------------------------------------------------------------------

def helmert(k):
    c = np.zeros((k - 1, k))
    for i in range(1, k):
        c[i - 1, :i] = 1 / math.sqrt(i * (i + 1))
        c[i - 1, i] = -i / math.sqrt(i * (i + 1))
    return c


def epsilon(values):
    return np.sum(values) ** 2 / np.sum(values ** 2) / len(values)


def expected_epsilon(s, n):
    """The mean of Greenhouse and Geisser's estimate to the first order of 1/(n - 1), with the
    derivatives of epsilon as differences. Pairs of equal eigenvalues are left out."""
    k = len(s)
    if k == 2:
        return 1.0
    c = helmert(k)
    values = np.linalg.eigvalsh(c @ s @ c.T)
    values /= np.mean(values)
    step = 1e-4
    bias = 0
    for i in range(k - 1):
        up, down = values.copy(), values.copy()
        up[i] += step
        down[i] -= step
        first = (epsilon(up) - epsilon(down)) / (2 * step)
        second = (epsilon(up) - 2 * epsilon(values) + epsilon(down)) / step ** 2
        bias += second * values[i] ** 2
        for j in range(k - 1):
            if j != i and abs(values[i] - values[j]) > 1e-6:
                bias += first * values[i] * values[j] / (values[i] - values[j])
    return epsilon(values) + bias / (n - 1)


def structure(kind, k, rho):
    lags = np.abs(np.subtract.outer(np.arange(k), np.arange(k)))
    return np.where(lags == 0, 1.0, rho) if kind == 0 else np.where(lags == 0, 1.0,
                                                                   np.sign(rho) ** lags *
                                                                   abs(rho) ** lags)


def within_variance(s):
    """Mean of the contrasts' variances."""
    c = helmert(len(s))
    return np.trace(c @ s @ c.T) / (len(s) - 1)


def one_within(k, n, kind):
    level = list(range(k))
    model = Model(np.full(k, float(n)), tested=coded(level))
    df1, _, noncentrality = main_effect(model, level, kind)
    return df1, (k - 1) * (n - 1), noncentrality


# --- Rows -------------------------------------------------------------------------------------------

class Row:
    """power(law, values): values by kind; law 0 exact, 1 approximate."""

    def __init__(self, menu, samples, checks, groups, values, power, tails=2, left=False,
                 largest_df=1):
        self.largest_df = min(largest_df, 999)
        self.menu, self.samples, self.checks, self.groups = menu, samples, checks, groups
        self.values, self.power, self.tails, self.left = values, power, tails, left

    def line(self, unknown, exact, tolerance, values):
        texts = ';'.join(f'{kind}={text(value)}' for kind, value in values.items())
        groups = ','.join(f'{g}={o}' for g, o in self.groups.items())
        checks = ','.join(str(c) for c in self.checks)
        return '\t'.join([f'menu {self.menu}', str(self.samples), str(self.tails),
                          str(-1 if self.left else 0), checks, groups, texts, str(unknown),
                          f'{exact:.8g}', f'{tolerance:.2g}'])

    def deviation(self):
        return 1.05 * abs(self.power(1, self.values) - self.power(0, self.values)) + self.room()

    def room(self):
        """32 bits hold the logarithm of a gamma function of half the largest df to that much."""
        return ROOM + 1.5 * float(np.spacing(np.float32(math.lgamma(self.largest_df / 2 + 1))))

    def of_power(self):
        tolerance = self.deviation()
        if tolerance > WORTHLESS:
            return None
        return self.line(POWER, self.power(0, self.values), tolerance, self.values)

    def of(self, unknown, low, high, target):
        """The unknown at which the power is the target; none outside the limits."""
        def residual(law):
            return lambda x: self.power(law, {**self.values, unknown: x}) - target
        if residual(0)(low) * residual(0)(high) > 0 or residual(1)(low) * residual(1)(high) > 0:
            return None
        exact = optimize.brentq(residual(0), low, high, xtol=1e-10 * high)
        near = optimize.brentq(residual(1), low, high, xtol=1e-10 * high)
        step = 1e-3 * exact
        slope = abs(residual(0)(exact + step) - residual(0)(exact - step)) / (2 * step)
        tolerance = 1.1 * abs(near - exact) + self.room() / slope + 1e-5
        if tolerance > WORTHLESS * exact:
            return None
        values = {kind: v for kind, v in self.values.items() if kind != unknown}
        return self.line(unknown, exact, tolerance, {**values, POWER: target})


def text(value):
    return f'{value:.10f}'.rstrip('0').rstrip('.')


def f_power(design):
    """design(values) -> df1, df2, lambda at an effect of 1 and an error of 1, effect/error."""
    def power(law, values):
        df1, df2, noncentrality, ratio = design(values)
        return (exact_f, approximate_f)[law](values[LEVEL], df1, df2, noncentrality * ratio ** 2)
    return power


def ratio_of(values, kind):
    return values[(34, 147, 148)[kind]] / values[2]


def anova_rows(draw):
    """Each design with each type of effect, at random corners."""
    effects = (34, 147, 148)

    def row(menu, checks, groups, kind, layout, size, design):
        """layout: kind -> count; size: (kind, lowest, highest) of what repeats; the effect is what
        gives a power drawn from near the level to near 1."""
        size_kind, low, high = size
        sd = draw.choice((0.001, 0.37, 1, 25, 9000))
        alpha = draw.choice((0.001, 0.01, 0.05, 0.1, 0.3))
        n = draw.choice((low, low, low + 1, low + 2, high))
        values = {LEVEL: alpha, effects[kind]: sd, 2: sd, **layout}
        if size_kind:
            values[size_kind] = n

        def of_values(v):
            return (*design(v), v[effects[kind]] / v[2])
        power = f_power(of_values)
        target = draw.choice((alpha + 0.01, 0.45, 0.7, 0.9, 0.99))
        df1, df2, lam = design(values)
        ratio = math.sqrt(noncentrality_for(target, alpha, df1, df2) / lam)
        values[effects[kind]] = float(f'{ratio * sd:.3g}')
        return Row(menu, 3, checks, {**groups, 17: kind}, values, power, largest_df=df2)

    for kind in range(3):
        for k in (2, 3, 5, 10):
            n1 = draw.choice((3, 4, 7, 40, 100000))
            nk = draw.choice((3, 5, 8, 33, 20000))
            yield row(10, [], {18: 0}, kind, {17: k, 4: n1, 149: nk}, (None, 0, 0),
                      lambda v, kind=kind: one_way(v[17], v[4], v[149], kind)), None
            yield row(10, [], {18: 2}, kind, {17: k, 151: draw.choice((0.5, 1, 3))},
                      (4, 6, 60), lambda v, kind=kind: one_way(v[17], v[4], v[4] * v[151], kind)), 4
        for tested in range(3):
            for additive in (False, True):
                if additive and tested == 2:
                    continue
                for a, b in ((2, 2), (2, 7), (6, 3), (10, 10)):
                    size = (328, 1, 50) if additive else (327, 2, 2000)
                    if (a, b) == (2, 2) and additive:
                        size = (328, 2, 50)
                    yield row(11, [11] if additive else [], {36: tested}, kind, {238: a, 239: b},
                              size, lambda v, i=tested, add=additive, kind=kind, s=size[0]:
                              two_way(v[238], v[239], v[s], i, add, kind)), size[0]
                for a, b in ((2, 2), (4, 3), (2, 5)):
                    layout = {238: a, 239: b, 246: draw.choice((2, 3, 10))}
                    if additive and layout[246] == 2 and (a, b) == (2, 2):
                        layout[246] = 3
                    yield row(19, [11] if additive else [], {36: tested}, kind, layout, (None, 0, 0),
                              lambda v, i=tested, add=additive, kind=kind:
                              two_way(v[238], v[239], v[246], i, add, kind, True)), None
        for tested in range(3):
            for sizes in ((2, 2, 2), (2, 3, 5), (7, 2, 4)):
                yield row(12, [], {38: tested}, kind, dict(zip((238, 239, 243), sizes)),
                          (328, 1, 70), lambda v, i=tested, kind=kind:
                          three_way((v[238], v[239], v[243]), v[328], i, kind)), 328
        for t in (3, 4, 7, 10):
            yield row(14, [], {}, kind, {244: t}, (None, 0, 0),
                      lambda v, kind=kind: latin(v[244], 1, 'single', kind)), None
        for t, r in ((2, 2), (3, 2), (5, 3), (4, 12), (8, 2)):
            for menu, checks, rows in ((15, [], 'own'), (15, [15], 'common'), (16, [], 'common'),
                                       (16, [13], 'random')):
                yield row(menu, checks, {}, kind, {270: t, 245: r}, (None, 0, 0),
                          lambda v, rows=rows, kind=kind: latin(v[270], v[245], rows, kind)), None
        for t, b in ((2, 2), (3, 10), (6, 3), (10, 10)):
            yield row(18, [], {}, kind, {238: t, 246: b}, (None, 0, 0),
                      lambda v, kind=kind: random_blocks(v[238], v[246], kind)), None
        for k in (2, 4, 9):
            rho = draw.choice((-0.9, 0.2, 0.95))

            def adjusted(v, kind=kind):
                df1, df2, lam = one_way(v[17], v[4], v[149], kind)
                return df1, df2 - 1, lam / (1 - v[357] ** 2)
            yield row(50, [], {18: 0}, kind,
                      {17: k, 357: rho, 4: draw.choice((3, 6, 50)), 149: draw.choice((3, 11, 30))},
                      (None, 0, 0), adjusted), None


def t_row(draw, menu, samples, checks, groups, layout, design, tails, corner=True):
    """A t-test: design(values) -> df, observations behind each estimate. Not at a corner: where one
    more degree of freedom is to be seen."""
    left = tails == 1 and draw.random() < 0.5
    alpha = draw.choice((0.001, 0.01, 0.05, 0.3)) if corner else 0.01
    sd = draw.choice((0.001, 1, 37, 9000))
    df, per_mean = design(layout)
    se = sd / math.sqrt(per_mean)
    values = {LEVEL: alpha, 247: 0, 137: sd, **layout}
    if tails == 3:
        values[6], values[7] = float(f'{-5 * se:.3g}'), float(f'{6 * se:.3g}')
        values[247] = float(f'{draw.choice((0, 0.7, -1)) * se:.3g}')
    else:
        size = (draw.choice((0.3, 1.5, 2.5, 4)) if corner else 3) * se * (-1 if left else 1)
        values[247] = float(f'{size:.3g}')

    def power(law, v):
        df, per_mean = design(v)
        limits = (v[6], v[7]) if tails == 3 else None
        return t_power((exact_t, approximate_t)[law], v[LEVEL], tails, v[247],
                       v[137] / math.sqrt(per_mean), df, left, limits)
    return Row(menu, samples, checks, groups, values, power, tails, left)


def contrast_rows(draw):
    """t-tests: the error's degrees of freedom from the model, the contrast's variance from its
    coefficients on the means."""
    def row(menu, checks, groups, layout, design):
        tails = draw.choice((1, 2, 3) if menu == 10 else (1, 2))
        return t_row(draw, menu, 3, [10, *checks], groups, layout, design, tails)

    def error_df(found):
        return found[1]

    for repeat in range(3):
        k, n = draw.choice(((3, 12), (5, 4), (10, 6), (4, 1000)))
        yield row(10, [], {}, {17: k, 326: n},
                  lambda v: (error_df(one_way(v[17], v[326], v[326], 0)), v[326]))
        yield row(50, [], {}, {17: k, 357: 0, 326: n},
                  lambda v: (error_df(one_way(v[17], v[326], v[326], 0)) - 1, v[326]))
        for tested, others in ((0, 239), (1, 238)):
            for additive in (False, True):
                size = 328 if additive else 327
                layout = {238: draw.choice((3, 5)), 239: draw.choice((4, 2)), size: 4}
                yield row(11, [11] if additive else [], {36: tested}, layout,
                          lambda v, i=tested, o=others, add=additive, s=size:
                          (error_df(two_way(v[238], v[239], v[s], i, add, 0)), v[o] * v[s]))
                layout = {238: 3, 239: draw.choice((2, 5)), 246: draw.choice((4, 9))}
                yield row(19, [11] if additive else [], {36: tested}, layout,
                          lambda v, i=tested, o=others, add=additive:
                          (error_df(two_way(v[238], v[239], v[246], i, add, 0, True)),
                           v[o] * v[246]))
        yield row(11, [], {36: 2}, {238: 3, 239: 2, 327: 5},
                  lambda v: (error_df(two_way(v[238], v[239], v[327], 2, False, 0)), v[327]))
        yield row(19, [], {36: 2}, {238: 3, 239: 4, 246: 6},
                  lambda v: (error_df(two_way(v[238], v[239], v[246], 2, False, 0, True)), v[246]))
        for tested, others in ((0, (239, 243)), (1, (238, 243)), (2, (238, 239))):
            yield row(12, [], {38: tested}, {238: 2, 239: 3, 243: 4, 328: draw.choice((1, 5))},
                      lambda v, i=tested, o=others:
                      (error_df(three_way((v[238], v[239], v[243]), v[328], i, 0)),
                       v[o[0]] * v[o[1]] * v[328]))
        yield row(14, [], {}, {244: draw.choice((5, 8))},
                  lambda v: (error_df(latin(v[244], 1, 'single', 0)), v[244]))
        for menu, checks, rows in ((15, [], 'own'), (15, [15], 'common'), (16, [], 'common'),
                                   (16, [13], 'random')):
            layout = {270: draw.choice((3, 4)), 245: draw.choice((7, 8))}
            yield contrast_of_squares(row(menu, checks, {}, layout,
                                          lambda v, rows=rows:
                                          (error_df(latin(v[270], v[245], rows, 0)),
                                           v[270] * v[245])))
        yield row(18, [], {}, {238: draw.choice((4, 6)), 246: draw.choice((5, 10))},
                  lambda v: (error_df(random_blocks(v[238], v[246], 0)), v[246]))


def combination_rows(draw):
    """Linear combinations of the measurements of a subject, or of a subject of each group: the
    variance of their mean is that of one, over the subjects of each group."""
    one = {256: 4}
    for tails, corner in ((1, True), (1, False), (2, True), (2, False), (3, True)):
        n = draw.choice((12, 40, 1000)) if corner else 12
        layout = {**one, 248: n}
        for menu, groups in ((20, {39: 2}), (30, {}), (40, {})):
            yield t_row(draw, menu, 1, [14], groups, layout, lambda v: (v[248] - 1, v[248]),
                        tails, corner)
        yield t_row(draw, 20, 1, [14], {39: 0}, {**layout, 2: 1, 220: 0.4},
                    lambda v: (v[248] - 1, v[248]), tails, corner)
        for shape, more in ((2, {}), (0, {2: 1, 220: 0.4})):
            yield t_row(draw, 21, 3, [14], {39: shape},
                        {**more, **one, 238: draw.choice((2, 5)), 326: draw.choice((5, 8))},
                        lambda v: (v[238] * v[326] - v[238], v[326]), tails, corner)
        yield t_row(draw, 31, 2, [14], {2: 0},
                    {**one, 4: draw.choice((6, 9)), 37: draw.choice((7, 90))},
                    lambda v: (v[4] + v[37] - 2, 1 / (1 / v[4] + 1 / v[37])), tails, corner)
        yield t_row(draw, 41, 2, [14], {}, {**one, 238: 2, 320: draw.choice((12, 14))},
                    lambda v: (v[320] - 2, v[320] / 2), tails, corner)


def contrast_of_squares(row):
    """Their mean of a contrast is a kind of its own."""
    row.values = {269 if kind == 247 else kind: v for kind, v in row.values.items()}
    inner = row.power
    row.power = lambda law, v: inner(law, {247: v[269], **v})
    return row


def repeated_rows(draw):
    effects = (34, 147, 148)

    def finish(menu, samples, groups, values, effect, design):
        alpha = values[LEVEL]
        df1, df2, lam = design(values)
        target = draw.choice((alpha + 0.02, 0.5, 0.9, 0.99))
        root = noncentrality_for(target, alpha, df1, df2) / lam
        values[effect] = float(f'{(root if effect == 254 else math.sqrt(root)):.3g}')

        def power(law, v):
            df1, df2, lam = design(v)
            x = v[effect] if effect == 254 else v[effect] ** 2
            return (exact_f, approximate_f)[law](v[LEVEL], df1, df2, lam * x)
        return Row(menu, samples, [], groups, values, power, largest_df=df2)

    def corrected(v, k, n, rho_kind, model_test):
        s = v[2] ** 2 * structure(rho_kind, k, v[220])
        e = expected_epsilon(s, n)
        df1, df2, lam = model_test
        return max(df1 * e, 1), max(df2 * e, 1), lam * e / within_variance(s)

    for kind in range(3):
        for shape in (0, 1):
            for k, n in ((2, 3), (3, 8), (4, 40), (7, 12), (10, 400)):
                rho = draw.choice((-0.08, 0.3, 0.6, 0.95)) if shape == 0 else \
                    draw.choice((-0.6, 0.2, 0.55, 0.9))
                values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), effects[kind]: 1,
                          2: draw.choice((0.01, 1, 10000)), 220: rho, 256: k, 248: n}
                yield finish(20, 1, {17: kind, 39: shape}, values, effects[kind],
                             lambda v, kind=kind, shape=shape:
                             corrected(v, v[256], v[248], shape,
                                       one_within(v[256], v[248], kind)))
            for tested in range(3):
                for a, b, n1, n2 in ((2, 3, 6, 6), (2, 5, 5, 20), (4, 4, 9, 9), (3, 2, 30, 12)):
                    if n1 != n2 and tested == 2:
                        n2 = n1  # the interaction of unequal groups is that of their mean size
                    rho = draw.choice((-0.2, 0.3, 0.8))
                    values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), effects[kind]: 1,
                              2: draw.choice((0.01, 1, 10000)), 220: rho, 238: a, 256: b, 4: n1,
                              37: n2}
                    yield finish(21, 3, {43: tested, 39: shape, 17: kind, 2: 0}, values,
                                 effects[kind],
                                 lambda v, tested=tested, kind=kind, shape=shape:
                                 two_factors(v, tested, kind, shape, corrected))
    for p, n in ((2, 3), (3, 7), (10, 11), (5, 500)):
        values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), 254: 1, 256: p, 248: n}
        yield finish(30, 1, {}, values, 254,
                     lambda v: (v[256], v[248] - v[256], v[248]))
        values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), 254: 1, 256: p,
                  4: n, 37: draw.choice((p + 2, 60))}
        yield finish(31, 2, {2: 0}, values, 254,
                     lambda v: (v[256], v[4] + v[37] - 2 - v[256] + 1, 1 / (1 / v[4] + 1 / v[37])))
        values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), 254: 1, 256: p, 248: n}
        yield finish(40, 1, {}, values, 254,
                     lambda v: (v[256] - 1, v[248] - v[256] + 1, v[248]))
        for tested in (1, 2):  # one degree of freedom more than two groups leave, as documented
            values = {LEVEL: draw.choice((0.001, 0.05, 0.3)), 254: 1, 238: 2, 256: p, 320: 2 * n}
            yield finish(41, 2, {43: tested}, values, 254,
                         lambda v: (v[256] - 1, v[320] - v[256] + 1, v[320] / 4))
    for kind in range(3):
        values = {LEVEL: 0.05, effects[kind]: 1, 2: draw.choice((0.01, 10000)), 238: 2,
                  320: draw.choice((6, 50))}
        yield finish(41, 2, {43: 0, 17: kind}, values, effects[kind],
                     lambda v, kind=kind: scaled(one_way(2, v[320] / 2, v[320] / 2, kind), v[2]))


def scaled(found, sd):
    return found[0], found[1], found[2] / sd ** 2


def two_factors(v, tested, kind, shape, corrected):
    """One factor between subjects with a groups, one within with b levels."""
    a, b, n1, n2 = v[238], v[256], v[4], v[37]
    total = n1 + (a - 1) * n2
    s = v[2] ** 2 * structure(shape, b, v[220])
    if tested == 0:  # the means of the subjects
        return scaled(one_way(a, n1, n2, kind), math.sqrt(np.sum(s)) / b)
    if tested == 1:
        df1, _, lam = one_within(b, total, kind)
    else:
        df1, _, lam = two_way(a, b, n1, 2, False, kind)
    return corrected(v, b, total, shape, (df1, (b - 1) * (total - a), lam))


def main():
    draw = random.Random(20261122)
    print('# Exact values computed by checks/reference/model_matrices.py (numpy, scipy), from the '
          'matrices of the designs.')
    print('\t'.join(('Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values', 'Unknown',
                     'Exact', 'Tolerance')))
    lines = []
    for row, size in anova_rows(draw):
        lines.append(row.of_power())
        target = row.power(0, row.values)
        if not 0.1 < target < 0.985:
            continue
        if draw.random() < 0.3:
            kind = draw.choice([k for k in (34, 147, 148, 2) if k in row.values])
            value = row.values[kind]
            lines.append(row.of(kind, value / 3, value * 3, float(f'{target:.3g}')))
        if size:
            lines.append(row.of(size, {328: 1.0, 327: 2.0, 4: 3.0}[size], row.values[size] * 3 + 10,
                                draw.choice((0.8, 0.95))))
    lines += [row.of_power() for row in contrast_rows(draw)]
    lines += [row.of_power() for row in combination_rows(draw)]
    lines += [row.of_power() for row in repeated_rows(draw)]
    print('\n'.join(line for line in lines if line))


if __name__ == '__main__':
    main()
