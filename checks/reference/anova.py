#!/usr/bin/env python3
"""Exact reference values for the analyses of variance with fixed effects, written to
checks/data/validation/anova.tsv.

Independent of the program: nothing is taken from the formulas of a design. The model matrix of each
design is built observation by observation; the degrees of freedom are ranks of such matrices, the
non-centrality is what the true means lose in the sum of squares when the tested terms leave the
model, and the contrast is estimated by least squares. Powers are those of scipy's non-central F and
t distributions; two one-sided t-tests by the integral over the distribution of the estimated
standard deviation (Owen 1965; Phillips 1990).

A type of effect is a configuration of true means: their standard deviation (any configuration
serves); two means apart by the effect and the others midway between them; one mean apart from all
others. What the types "any" and "smallest" stand for in an interaction is defined by the program
(the cells as groups) and only its degrees of freedom are taken from the design.

Other unknowns are found with Brent's method on the exact power; where they are broken numbers of
levels or subjects the power is that of the closed form, which is checked against the model matrix
at whole ones.

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import itertools
import math
import numpy as np
from scipy import integrate, optimize, stats

ROWS = []


# --- Designs, observation by observation ----------------------------------------------------------

def indicator(codes):
    codes = list(codes)
    return np.array([[1.0 if c == level else 0.0 for level in sorted(set(codes))] for c in codes])


def rank(x):
    return int(np.linalg.matrix_rank(x))


def residual(x, y):
    return y - x @ np.linalg.lstsq(x, y, rcond=None)[0]


def is_product_of(term, tested):
    return isinstance(term, tuple) and tested in term


class Layout:
    """Columns of codes by name; model: names, or tuples of names for a product."""

    def __init__(self, model, **codes):
        self.codes = {name: list(values) for name, values in codes.items()}
        self.n = len(next(iter(self.codes.values())))
        self.model = model

    def term(self, term):
        if isinstance(term, tuple):
            return indicator(zip(*(self.codes[name] for name in term)))
        return indicator(self.codes[term])

    def matrix(self, terms):
        return np.hstack([np.ones((self.n, 1))] + [self.term(t) for t in terms])

    def without(self, tested):
        """The model of the other terms; a product that contains the tested one would bring it back."""
        return self.matrix([t for t in self.model if t != tested and not is_product_of(t, tested)])

    def dfs(self, tested):
        products = [t for t in self.model if is_product_of(t, tested)]
        df1 = rank(self.matrix([t for t in self.model if t not in products])) - \
            rank(self.without(tested))
        return df1, self.n - rank(self.matrix(self.model))

    def lost(self, tested, y):
        """Sum of squares of the true means y that the tested term explains."""
        return float(np.sum(residual(self.without(tested), y) ** 2))

    def contrast_variance(self, term, coefficients):
        """Variance, in error variances, of the least squares estimate of sum c_i mean_i."""
        x = self.matrix(self.model)
        levels = sorted(set(self.codes[term] if not isinstance(term, tuple)
                            else zip(*(self.codes[name] for name in term))))
        own = list(self.codes[term] if not isinstance(term, tuple)
                   else zip(*(self.codes[name] for name in term)))
        # What is estimated: the contrast of the averages of the expectations at each level.
        averages = np.array([np.mean(x[[o == level for o in own]], axis=0) for level in levels])
        c = np.asarray(coefficients) @ averages
        return float(c @ np.linalg.pinv(x.T @ x) @ c)


def one_way(k, n1, nk):
    return Layout(['A'], A=[0] * n1 + [g for g in range(1, k) for _ in range(nk)])


def crossed(levels, n, model):
    cells = [cell for cell in itertools.product(*(range(l) for l in levels)) for _ in range(n)]
    return Layout(model, **{name: [c[i] for c in cells] for i, name in enumerate('ABC'[:len(levels)])})


def squares(t, r, model):
    rows = [(s, i, j) for s in range(r) for i in range(t) for j in range(t)]
    return Layout(model, square=[s for s, i, j in rows],
                  row=[i for s, i, j in rows], column=[j for s, i, j in rows],
                  A=[(i + j + s) % t for s, i, j in rows])


def blocks(levels, b, model):
    rows = [(cell, k) for cell in itertools.product(*(range(l) for l in levels)) for k in range(b)]
    return Layout(model, block=[k for _, k in rows],
                  **{name: [cell[i] for cell, _ in rows] for i, name in enumerate('AB'[:len(levels)])})


OWN = ['square', ('square', 'row'), ('square', 'column'), 'A']
COMMON = ['square', 'row', 'column', 'A']
RANDOM = ['square', 'A']  # on the means of a treatment in a square


def random_squares(t, r):
    """A square's t observations of a treatment are one mean; the error is treatments x squares."""
    rows = [(s, i) for s in range(r) for i in range(t)]
    return Layout(RANDOM, square=[s for s, _ in rows], A=[i for _, i in rows])


# --- Configurations of means -----------------------------------------------------------------------

def configuration(kind, levels, weights, effect):
    """Main effects of a factor: the means of its levels, by type of effect."""
    w = np.asarray(weights, float)
    if kind == 0:
        m = np.arange(levels, dtype=float) ** 1.3
        m -= np.average(m, weights=w)
        return m * effect / math.sqrt(np.average(m ** 2, weights=w))
    if kind == 1:
        # The first and the last apart, the others at their centre of gravity.
        m = np.zeros(levels)
        m[0], m[-1] = effect * w[-1] / (w[0] + w[-1]), -effect * w[0] / (w[0] + w[-1])
        return m
    m = np.zeros(levels)
    m[int(np.argmin(w))] = effect
    return m


def exact_design(layout, tested, kind, scale=1):
    """df1, df2, lambda for an effect of 1 and a standard deviation of 1."""
    df1, df2 = layout.dfs(tested)
    if isinstance(tested, tuple):
        a, b = (len(set(layout.codes[name])) for name in tested)
        per_cell = layout.n / (a * b)
        if kind == 0:
            rng = np.random.default_rng(5)
            m = rng.normal(size=(a, b))
            m -= m.mean(0, keepdims=True) + m.mean(1, keepdims=True) - m.mean()
            m /= math.sqrt(np.mean(m ** 2))
            y = np.array([m[i, j] for i, j in zip(*(layout.codes[x] for x in tested))])
            return df1, df2, layout.lost(tested, y)
        return df1, df2, a * b * per_cell if kind == 1 else (a * b - 1) * per_cell
    codes = layout.codes[tested]
    levels = sorted(set(codes))
    weights = [codes.count(level) for level in levels]
    m = configuration(kind, len(levels), weights, 1)
    y = np.array([m[levels.index(c)] for c in codes])
    return df1, df2, layout.lost(tested, y) * scale


# --- Powers ----------------------------------------------------------------------------------------

def f_power(alpha, df1, df2, lam):
    return float(stats.ncf.sf(stats.f.ppf(1 - alpha, df1, df2), df1, df2, lam)) if lam > 0 else alpha


def t_power(alpha, tails, left, ncp, df):
    if tails == 2:
        t = stats.t.ppf(1 - alpha / 2, df)
        return stats.nct.sf(t, df, ncp) + stats.nct.cdf(-t, df, ncp)
    t = stats.t.ppf(1 - alpha, df)
    return stats.nct.cdf(-t, df, ncp) if left else stats.nct.sf(t, df, ncp)


def tost_power(alpha, low, high, df):
    """P(both one-sided tests reject); low, high: distances to the limits in standard errors."""
    t = stats.t.ppf(1 - alpha, df)
    end = (low + high) / (2 * t)
    if end <= 0:
        return 0.0
    def integrand(u):
        return (stats.norm.cdf(high - t * u) - stats.norm.cdf(t * u - low)) * \
            stats.chi.pdf(u * math.sqrt(df), df) * math.sqrt(df)
    width = 12 / math.sqrt(2 * df)
    low_end, high_end = max(0.0, 1 - width), min(end, 1 + width)
    if high_end <= low_end:
        low_end, high_end = 0.0, end
    return integrate.quad(integrand, low_end, high_end, limit=800, epsabs=1e-12)[0]


# --- Closed forms for broken numbers, checked at whole ones ------------------------------------------

def main_effect(kind, levels, per_level, df2):
    return levels - 1, df2, (levels * per_level, per_level / 2,
                             (levels - 1) * per_level / levels)[kind]


def one_way_closed(kind, k, n1, nk, covariate=0):
    n = n1 + (k - 1) * nk
    small, rest = (n1, n - n1) if n1 <= nk else (nk, n - nk)
    return k - 1, n - k - covariate, (n, n1 * nk / (n1 + nk), small * rest / n)[kind]


def same(closed, exact):
    assert np.allclose(closed, exact, rtol=1e-9), (closed, exact)
    return closed


# --- Rows --------------------------------------------------------------------------------------------

def add(menu, tails, left, checks, groups, values, unknown, power, bracket, tolerance):
    target = values.get(1)
    if unknown == 1:
        exact = power(values)
    else:
        exact = optimize.brentq(lambda x: power({**values, unknown: x}) - target, *bracket,
                                xtol=1e-10)
    given = ';'.join(f'{k}={v:g}' for k, v in values.items() if k != unknown)
    ROWS.append([f'menu {menu}', 3, tails, left, ','.join(map(str, checks)),
                 ','.join(f'{g}={o}' for g, o in groups.items()), given, unknown,
                 f'{exact:.8g}', f'{tolerance:g}'])
    return exact


# What the program's approximations of the power deserve (docs/accuracy.md): sums for F up to 10 df
# and lambda up to 50, Patnaik's form beyond, degrees of freedom cut to 999 beside 10 or fewer, and
# critical values interpolated between whole ones; the non-central t by its normal form.
F_SUMS, F_PATNAIK = 0.0005, 0.006
T_NORMAL, T_FEW_DF = 0.004, 0.04


def f_error(alpha, df1, df2, lam):
    exact = f_power(alpha, df1, df2, lam)
    if min(df1, df2) <= 10:
        df1, df2 = min(df1, 999), min(df2, 999)
    low1, low2 = math.floor(df1), math.floor(df2)
    def quantile(nu1):
        at = [stats.f.ppf(1 - alpha, nu1, low2 + i) for i in (0, 1)]
        return at[0] + (df2 - low2) * (at[1] - at[0])
    critical = quantile(low1) + (df1 - low1) * (quantile(low1 + 1) - quantile(low1))
    told = float(stats.ncf.sf(critical, df1, df2, lam))
    return abs(told - exact) + (F_PATNAIK if lam > 48 or (df1 > 10 and df2 > 10) else F_SUMS)


def tolerance_of(power, values, unknown, in_power):
    if unknown == 1:
        return in_power
    x = values[unknown]
    h = max(abs(x), 1e-3) * 1e-4
    slope = (power({**values, unknown: x + h}) - power({**values, unknown: x - h})) / (2 * h)
    return float(f'{in_power / abs(slope) + 1e-4:.2g}')


TYPES = (34, 147, 148)


def f_row(menu, checks, groups, kind, values, unknown, design, bracket=None, sd=lambda v: v[2]):
    """design(values) -> df1, df2, lambda for an effect as large as the standard deviation."""
    effect = TYPES[kind]

    def power(v):
        df1, df2, factor = design(v)
        return f_power(v[0], df1, df2, factor * (v[effect] / sd(v)) ** 2)
    solved = dict(values)
    if unknown != 1:
        solved[unknown] = optimize.brentq(lambda x: power({**values, unknown: x}) - values[1],
                                          *bracket, xtol=1e-10)
    df1, df2, factor = design(solved)
    lam = factor * (solved[effect] / sd(solved)) ** 2
    in_power = round(f_error(solved[0], df1, df2, lam), 5)
    add(menu, 2, 0, checks, {**groups, 17: kind}, values, unknown, power, bracket,
        tolerance_of(power, solved, unknown, in_power))


def t_row(menu, tails, left, checks, groups, values, unknown, design, bracket=None, mean=247,
          sd=lambda v: v[137]):
    """design(values) -> error df, variance of the contrast of means over that of the contrast of
    single observations."""
    def power(v):
        df, variance = design(v)
        se = sd(v) * math.sqrt(variance)
        if tails == 3:
            return tost_power(v[0], (v[mean] - v[6]) / se, (v[7] - v[mean]) / se, df)
        return t_power(v[0], tails, left, v[mean] / se, df)
    solved = dict(values)
    if unknown != 1:
        solved[unknown] = optimize.brentq(lambda x: power({**values, unknown: x}) - values[1],
                                          *bracket, xtol=1e-10)
    in_power = T_NORMAL if design(solved)[0] > 5 else T_FEW_DF
    add(menu, tails, left, [10] + checks, groups, values, unknown, power, bracket,
        tolerance_of(power, solved, unknown, in_power))


COEFFICIENTS = (1.0, -0.5, -0.5)


def coefficients(levels):
    c = np.zeros(levels)
    c[:3] = COEFFICIENTS if levels > 2 else (0, 0, 0)[:levels]
    if levels == 2:
        c[:] = (1, -1)
    return c


def contrast_of(layout, tested):
    """Error df; the estimate's variance over sum c_i^2."""
    levels = len(set(layout.codes[tested])) if not isinstance(tested, tuple) else \
        len(set(zip(*(layout.codes[n] for n in tested))))
    c = coefficients(levels)
    return layout.n - rank(layout.matrix(layout.model)), \
        layout.contrast_variance(tested, c) / float(c @ c)


# --- One-way -----------------------------------------------------------------------------------------

def one_way_design(kind, covariate=0):
    def design(v):
        k, n1 = v[17], v[4]
        nk = v[149] if 149 in v else n1 + v[150] if 150 in v else n1 * v[151]
        closed = one_way_closed(kind, k, n1, nk, covariate)
        if all(abs(x - round(x)) < 1e-12 for x in (k, n1, nk)) and n1 + (k - 1) * nk < 400:
            layout = one_way(round(k), round(n1), round(nk))
            df1, df2, lam = exact_design(layout, 'A', kind)
            if kind == 1:
                m = np.zeros(round(k))
                m[0], m[1] = nk / (n1 + nk), -n1 / (n1 + nk)
                lam = layout.lost('A', m[layout.codes['A']])
            same(closed, (df1, df2 - covariate, lam))
        return closed
    return design


def one_way_row(kind, values, unknown, bracket=None, menu=10):
    form = 0 if 149 in values else 1 if 150 in values else 2
    covariate = 1 if menu == 50 else 0
    def sd(v):
        return v[2] * math.sqrt(1 - v[357] ** 2) if covariate else v[2]
    f_row(menu, [], {18: form}, kind, values, unknown, one_way_design(kind, covariate), bracket, sd)


def means(effect, kind=0, **other):
    v = {0: 0.05, 1: 0.8, TYPES[kind]: effect, 2: 1, 17: 4, 4: 20, 149: 20}
    for name, x in other.items():
        v[int(name[1:])] = x
        if name in ('k150', 'k151'):
            v.pop(149, None)
    return v


SIZES = (3, 5000)
for kind, effect in ((0, 0.25), (1, 0.8), (2, 0.8)):
    one_way_row(kind, means(effect, kind), 1)
    one_way_row(kind, means(effect, kind, k17=2, k4=12, k149=12), 1)
    one_way_row(kind, means(effect, kind, k17=10, k4=8, k149=8), 1)
    one_way_row(kind, means(effect, kind, k4=40, k149=12), 1)
    one_way_row(kind, means(effect, kind, k4=12, k149=40), 1)
    one_way_row(kind, means(effect, kind, k150=5), 1)
    one_way_row(kind, means(effect, kind, k151=0.5), 1)
    one_way_row(kind, means(effect, kind, k0=0.01, k1=0.9, k151=1), 4, SIZES)
    one_way_row(kind, means(effect, kind, k151=2), 4, SIZES)
    one_way_row(kind, means(effect, kind, k150=-2), 4, (5.001, 5000))
    one_way_row(kind, means(effect, kind, k4=40), 149, SIZES)
    one_way_row(kind, means(effect, kind, k1=0.6), TYPES[kind], (0.01, 5))
    one_way_row(kind, means(effect, kind, k1=0.7), 2, (0.2, 20))
    one_way_row(kind, means(effect, kind), 0, (1e-4, 0.99))
one_way_row(0, means(0.1, k17=3, k151=1), 4, SIZES)
one_way_row(0, means(0.05, k17=3, k151=1, k1=0.9), 4, SIZES)
one_way_row(0, means(0.8, k17=3, k151=1, k1=0.9), 4, SIZES)
one_way_row(0, means(0.6, k17=3, k4=40, k149=40), 1)      # lambda above 50
one_way_row(0, means(0.01, k17=3, k4=5, k149=5), 1)
one_way_row(0, means(0.25, k4=30, k149=30, k1=0.85), 17, (2, 10))
one_way_row(1, means(0.8, 1, k4=30, k149=30, k1=0.75), 17, (2, 10))
# J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd edition 1988, section 8.3 and
# table 8.3: f = 0.28, 20 in each of 4 groups, alpha 0.05, power 0.53.
one_way_row(0, means(0.28), 1)
# ANCOVA.
for kind, effect in ((0, 0.25), (1, 0.8), (2, 0.8)):
    one_way_row(kind, means(effect, kind, k357=0.5), 1, menu=50)
    one_way_row(kind, means(effect, kind, k357=-0.6, k17=3, k4=8, k149=8), 1, menu=50)
    one_way_row(kind, means(effect, kind, k357=0.5, k151=1), 4, SIZES, menu=50)
    one_way_row(kind, means(effect, kind, k357=0.4, k4=40, k149=15), 1, menu=50)
    one_way_row(kind, means(effect, kind, k357=0.4, k1=0.6), TYPES[kind], (0.01, 5), menu=50)
one_way_row(0, means(0.25, k357=0, k1=0.7), 357, (0, 0.99), menu=50)


def contrast_values(**other):
    v = {0: 0.05, 1: 0.8, 247: 0.6, 137: 1, 17: 4, 326: 20}
    v.update({int(name[1:]): x for name, x in other.items()})
    return v


def one_way_contrast(covariate):
    def design(v):
        closed = v[17] * v[326] - v[17] - covariate, 1 / v[326]
        if all(abs(x - round(x)) < 1e-12 for x in (v[17], v[326])) and v[17] * v[326] < 400:
            df, variance = contrast_of(one_way(round(v[17]), round(v[326]), round(v[326])), 'A')
            same(closed, (df - covariate, variance))
        return closed
    return design


def contrast_sd(v):
    return v[137] * math.sqrt(1 - v.get(357, 0) ** 2)


for menu, extra in ((10, {}), (50, {'k357': 0.5})):
    design = one_way_contrast(1 if menu == 50 else 0)
    def contrast_row(tails, left, values, unknown, bracket=None):
        t_row(menu, tails, left, [], {}, values, unknown, design, bracket, sd=contrast_sd)
    contrast_row(2, 0, contrast_values(**extra), 1)
    contrast_row(1, 0, contrast_values(**extra), 1)
    contrast_row(1, -1, contrast_values(k247=-0.6, **extra), 1)
    contrast_row(2, 0, contrast_values(k17=3, k326=6, k247=1.4, **extra), 1)
    contrast_row(2, 0, contrast_values(**extra), 326, (3, 500))
    contrast_row(1, 0, contrast_values(k0=0.025, k1=0.9, **extra), 326, (3, 500))
    contrast_row(2, 0, contrast_values(**extra), 247, (0.01, 2))
    contrast_row(2, 0, contrast_values(**extra), 137, (0.3, 20))
equivalence = one_way_contrast(0)
for changes, unknown, bracket in (({'k326': 30}, 1, None), ({}, 326, (5, 1e4)),
                                  ({'k247': 0, 'k326': 60}, 1, None)):
    t_row(10, 3, 0, [], {}, {**contrast_values(k247=0.05), 6: -0.5, 7: 0.6,
                             **{int(n[1:]): x for n, x in changes.items()}}, unknown, equivalence,
          bracket)


# --- Designs of a main effect, and of two factors ----------------------------------------------------

def factorial(build, tested, kind, closed):
    """The closed form, compared with the model matrix."""
    def design(v):
        form = closed(v)
        layout = build(v)
        if layout is not None:
            if kind == 'contrast':
                same(form, contrast_of(layout, tested))
            else:
                same(form, exact_design(layout, tested, kind))
        return form
    return design


def whole(v, kinds, limit=400):
    numbers = [v[k] for k in kinds]
    if any(abs(x - round(x)) > 1e-12 for x in numbers):
        return None
    numbers = [round(x) for x in numbers]
    return numbers if math.prod(numbers) < limit else None


def put(values, **changes):
    return {**values, **{int(n[1:]): x for n, x in changes.items()}}


def effect_values(kind, effect, layout):
    head = {0: 0.05, 1: 0.8, 247: effect, 137: 1} if kind == 'contrast' else \
        {0: 0.05, 1: 0.8, TYPES[kind]: effect, 2: 1}
    return {**head, **layout}


KINDS = (0, 1, 2, 'contrast')


def rows(menu, checks, groups, kind, values, design, unknowns, mean=247):
    """unknowns: (changes, unknown, bracket)."""
    for changes, unknown, bracket in unknowns:
        v = put(values, **changes)
        if kind == 'contrast':
            if mean != 247:
                v = {mean if k == 247 else k: x for k, x in v.items()}
                unknown = mean if unknown == 247 else unknown
            for tails, left in (((2, 0), (1, 0)) if unknown != 1 else ((2, 0), (1, 0), (1, -1))):
                own = {**v, mean: -v[mean]} if left else v
                t_row(menu, tails, left, checks, groups, own, unknown, design, bracket, mean)
        else:
            f_row(menu, checks, groups, kind, v, unknown, design, bracket)


for additive in (False, True):
    for tested in (0, 1) if additive else (0, 1, 2):
        for kind in KINDS:
            model = ['A', 'B'] + ([] if additive else [('A', 'B')])
            name = ('A', 'B', ('A', 'B'))[tested]
            per = 328 if additive else 327

            def closed(v, tested=tested, kind=kind, additive=additive, per=per):
                a, b, n = v[238], v[239], v[per]
                df2 = a * b * n - a - b + 1 if additive else a * b * (n - 1)
                levels, m = ((a, b * n), (b, a * n), (a * b, n))[tested]
                if kind == 'contrast':
                    return df2, 1 / m
                if tested == 2:
                    return (a - 1) * (b - 1), df2, (a * b * n, a * b * n, (a * b - 1) * n)[kind]
                return main_effect(kind, levels, m, df2)

            def build(v, model=model, per=per):
                numbers = whole(v, (238, 239, per))
                return numbers and crossed(numbers[:2], numbers[2], model)

            effect = {0: 0.3, 1: 0.9 if tested < 2 else 0.35, 2: 0.9 if tested < 2 else 0.35,
                      'contrast': 0.8 if tested < 2 else 1.3}[kind]
            values = effect_values(kind, effect, {238: 3, 239: 4, per: 5})
            first = 247 if kind == 'contrast' else TYPES[kind]
            rows(11, [11] if additive else [], {36: tested}, kind, values,
                 factorial(build, name, kind, closed),
                 [({}, 1, None), ({f'k{per}': 2, 'k238': 2, 'k239': 2}, 1, None),
                  ({'k0': 0.01, 'k238': 5, f'k{per}': 3}, 1, None),
                  ({'k1': 0.9}, per, (2, 3000))] +
                 ([({}, first, (0.01, 5))] if tested == 0 else []))

for tested in (0, 1, 2):
    for kind in KINDS:
        def closed(v, tested=tested, kind=kind):
            numbers = [v[238], v[239], v[243]]
            total = math.prod(numbers) * v[328]
            df2 = total - sum(numbers) + 2
            levels = numbers[tested]
            if kind == 'contrast':
                return df2, levels / total
            return main_effect(kind, levels, total / levels, df2)

        def build(v):
            numbers = whole(v, (238, 239, 243, 328))
            return numbers and crossed(numbers[:3], numbers[3], ['A', 'B', 'C'])

        values = effect_values(kind, {0: 0.3, 1: 0.9, 2: 0.9, 'contrast': 0.6}[kind],
                               {238: 3, 239: 4, 243: 2, 328: 2})
        rows(12, [], {38: tested}, kind, values, factorial(build, 'ABC'[tested], kind, closed),
             [({}, 1, None), ({'k328': 1, 'k238': 2, 'k239': 2}, 1, None),
              ({'k1': 0.9, 'k0': 0.01}, 328, (1, 3000))])

for kind in KINDS:
    def closed(v, kind=kind):
        t = v[244]
        df2 = (t - 1) * (t - 2)
        return (df2, 1 / t) if kind == 'contrast' else main_effect(kind, t, t, df2)

    def build(v):
        numbers = whole(v, (244,))
        return numbers and squares(numbers[0], 1, ['row', 'column', 'A'])

    values = effect_values(kind, {0: 0.7, 1: 2, 2: 1.8, 'contrast': 1.6}[kind], {244: 5})
    rows(14, [], {}, kind, values, factorial(build, 'A', kind, closed),
         [({}, 1, None), ({'k244': 3}, 1, None), ({'k244': 10, 'k0': 0.01}, 1, None),
          ({}, 247 if kind == 'contrast' else TYPES[kind], (0.05, 20))])

ERRORS = {'own': lambda t, r: (t - 1) * (r * (t - 1) - 1),
          'common': lambda t, r: (t - 1) * (r * (t + 1) - 3),
          'random': lambda t, r: (t - 1) * (r - 1)}
for menu, checks, error in ((15, [], 'own'), (15, [15], 'common'), (16, [], 'common'),
                            (16, [13], 'random')):
    for kind in KINDS:
        def closed(v, kind=kind, error=error):
            t, r = v[270], v[245]
            df2 = ERRORS[error](t, r)
            return (df2, 1 / (r * t)) if kind == 'contrast' else main_effect(kind, t, r * t, df2)

        def build(v, error=error):
            numbers = whole(v, (270, 245, 270))
            return numbers and error != 'random' and \
                squares(numbers[0], numbers[1], OWN if error == 'own' else COMMON) or None

        def design(v, kind=kind, error=error, closed=closed, build=build):
            # Means of t observations have 1/t of the variance.
            numbers = error == 'random' and whole(v, (270, 245))
            if numbers:
                t, r = numbers
                layout = random_squares(t, r)
                if kind == 'contrast':
                    df, variance = contrast_of(layout, 'A')
                    same(closed(v), (df, variance / t))
                else:
                    same(closed(v), exact_design(layout, 'A', kind, t))
            return factorial(build, 'A', kind, closed)(v)

        values = effect_values(kind, {0: 0.5, 1: 1.3, 2: 1.2, 'contrast': 1}[kind],
                               {270: 4, 245: 3})
        rows(menu, checks, {}, kind, values, design,
             [({}, 1, None), ({'k270': 3, 'k245': 2}, 1, None), ({'k0': 0.01, 'k270': 6}, 1, None),
              ({'k1': 0.9}, 245, (2, 900))], mean=269)

for kind in KINDS:
    def closed(v, kind=kind):
        t, b = v[238], v[246]
        df2 = (t - 1) * (b - 1)
        return (df2, 1 / b) if kind == 'contrast' else main_effect(kind, t, b, df2)

    def build(v):
        numbers = whole(v, (238, 246))
        return numbers and blocks(numbers[:1], numbers[1], ['block', 'A'])

    values = effect_values(kind, {0: 0.6, 1: 1.6, 2: 1.6, 'contrast': 1.4}[kind], {238: 4, 246: 6})
    rows(18, [], {}, kind, values, factorial(build, 'A', kind, closed),
         [({}, 1, None), ({'k238': 2, 'k246': 8}, 1, None), ({'k0': 0.01}, 1, None),
          ({'k1': 0.7}, 246, (2, 10))])

for additive in (False, True):
    for tested in (0, 1) if additive else (0, 1, 2):
        for kind in KINDS:
            model = ['block', 'A', 'B'] + ([] if additive else [('A', 'B')])
            name = ('A', 'B', ('A', 'B'))[tested]

            def closed(v, tested=tested, kind=kind, additive=additive):
                a, b, n = v[238], v[239], v[246]
                df2 = (a * b - 1) * (n - 1) + ((a - 1) * (b - 1) if additive else 0)
                levels, m = ((a, b * n), (b, a * n), (a * b, n))[tested]
                if kind == 'contrast':
                    return df2, 1 / m
                if tested == 2:
                    return (a - 1) * (b - 1), df2, (a * b * n, a * b * n, (a * b - 1) * n)[kind]
                return main_effect(kind, levels, m, df2)

            def build(v, model=model):
                numbers = whole(v, (238, 239, 246))
                return numbers and blocks(numbers[:2], numbers[2], model)

            effect = {0: 0.35, 1: 1 if tested < 2 else 0.4, 2: 1 if tested < 2 else 0.4,
                      'contrast': 0.8 if tested < 2 else 1.3}[kind]
            values = effect_values(kind, effect, {238: 3, 239: 3, 246: 5})
            rows(19, [11] if additive else [], {36: tested}, kind, values,
                 factorial(build, name, kind, closed),
                 [({}, 1, None), ({'k238': 2, 'k239': 2, 'k246': 4}, 1, None),
                  ({'k0': 0.01, 'k246': 8}, 1, None)])


if __name__ == '__main__':
    with open('checks/data/validation/anova.tsv', 'w') as out:
        out.write('# Exact values computed by checks/reference/anova.py (scipy).\n')
        out.write('Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance\n')
        for row in ROWS:
            out.write('\t'.join(map(str, row)) + '\n')
    print(len(ROWS), 'rows')
