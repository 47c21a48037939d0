#!/usr/bin/env python3
"""Exact reference values for the analyses of variance with fixed effects, written to
checks/data/validation/anova.tsv; and the powers of designs whose true means are given one by one,
written to checks/data/anova_means.tsv.

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
from scipy import optimize, stats
from tpowers import t_power, tost_power

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
        less = self.without(tested)
        more = np.hstack([less, self.term(tested)])
        return float(np.sum(residual(less, y) ** 2) - np.sum(residual(more, y) ** 2))

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
one_way_row(0, means(0.28), 1)
# D. C. Montgomery, Design and Analysis of Experiments (plasma etching): means 575, 600, 650 and 675,
# standard deviation 25, level 0.01; powers 0.75, 0.96 and above 0.99 with 3, 4 and 5 in each group,
# as read from operating characteristic curves.
etching = math.sqrt(2 * (50 ** 2 + 25 ** 2) / 4) / 25
for n, published in ((3, 0.75), (4, 0.96), (5, 0.99)):
    assert abs(f_power(0.01, 3, 4 * n - 4, 4 * n * etching ** 2) - published) < 0.01
    one_way_row(0, means(round(etching * 25, 4), k0=0.01, k2=25, k4=n, k149=n), 1)
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
    if kind == 0:
        each_unknown(menu, checks, groups, values, design)


def each_unknown(menu, checks, groups, values, design):
    """The standard deviation, the level, and the number of levels of the tested factor that has the
    power of four and a half of them."""
    f_row(menu, checks, groups, 0, {**values, 1: 0.7}, 2, design, (0.2, 20))
    f_row(menu, checks, groups, 0, values, 0, design, (1e-5, 0.99))
    tested = LEVELS[menu][groups.get(36, groups.get(38, 0))]
    df1, df2, factor = design({**values, tested: 4.5})
    power = round(f_power(values[0], df1, df2, factor * (values[34] / values[2]) ** 2), 3)
    if 0.3 < power < 0.98:
        f_row(menu, checks, groups, 0, {**values, 1: power}, tested, design,
              (3 if tested == 244 else 2, 10))


# The kinds of the levels that are tested; an interaction is solved for those of A.
LEVELS = {11: (238, 239, 238), 12: (238, 239, 243), 14: (244,), 15: (270,), 16: (270,), 18: (238,),
          19: (238, 239, 238)}


def effect_of_two(kind, tested, a, b, n, df2):
    levels, m = ((a, b * n), (b, a * n), (a * b, n))[tested]
    if kind == 'contrast':
        return df2, 1 / m
    if tested == 2:
        return (a - 1) * (b - 1), df2, (a * b * n, a * b * n, (a * b - 1) * n)[kind]
    return main_effect(kind, levels, m, df2)


for additive in (False, True):
    for tested in (0, 1) if additive else (0, 1, 2):
        for kind in KINDS:
            model = ['A', 'B'] + ([] if additive else [('A', 'B')])
            name = ('A', 'B', ('A', 'B'))[tested]
            per = 328 if additive else 327

            def closed(v, tested=tested, kind=kind, additive=additive, per=per):
                a, b, n = v[238], v[239], v[per]
                df2 = a * b * n - a - b + 1 if additive else a * b * (n - 1)
                return effect_of_two(kind, tested, a, b, n, df2)

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
                return effect_of_two(kind, tested, a, b, n, df2)

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


# --- Means, one by one --------------------------------------------------------------------------------

MEANS = []


def grid_text(grid):
    return '/'.join(' '.join(f'{x:.9g}' for x in row) for row in np.atleast_2d(grid))


def means_row(menu, checks, groups, values, grids, derived, power, error):
    MEANS.append([f'menu {menu}', ','.join(map(str, checks)),
                  ','.join(f'{g}={o}' for g, o in groups.items()),
                  ';'.join(f'{k}={v:g}' for k, v in values.items()),
                  '|'.join(grid_text(g) for g in grids),
                  ';'.join(f'{k}={v:.8g}' for k, v in derived.items()), f'{power:.8g}',
                  f'{error:.2g}'])


def from_means(menu, checks, groups, values, layout, tested, y, grids, kind, effect, scale=1,
               covariate=0):
    """y: the true mean of every observation. scale: observations behind each row of the layout."""
    df1, df2 = layout.dfs(tested)
    df2 -= covariate
    variance = values[2] ** 2 * (1 - values.get(357, 0) ** 2) / scale
    lam = layout.lost(tested, np.asarray(y)) / variance
    means_row(menu, checks, {**groups, 17: kind}, values, grids, {TYPES[kind]: effect},
              f_power(values[0], df1, df2, lam), f_error(values[0], df1, df2, lam))


def from_contrast(menu, checks, groups, values, layout, tested, c, grids, contrast, sd, scale=1,
                  mean=247, covariate=0):
    c = np.asarray(c, float).ravel()
    df = layout.n - rank(layout.matrix(layout.model)) - covariate
    se = sd * math.sqrt(layout.contrast_variance(tested, c) / scale *
                        (1 - values.get(357, 0) ** 2))
    means_row(menu, [10] + checks, groups, values, grids,
              {mean: contrast, 137: sd * math.sqrt(float(c @ c))},
              t_power(values[0], 2, 0, contrast / se, df), T_NORMAL if df > 5 else T_FEW_DF)


FIVE = [101.2, 100.4, 99.1, 100.9, 100]
C5 = [1, 0.5, -1.5, 0.25, -0.25]


def column(m):
    return [[x] for x in m]


def beside(m, sd):
    return [m, [sd] * len(m)]


# One-way: equal and unequal groups; two means apart and the others where they weigh nothing; two groups.
for menu, extra in ((10, {}), (50, {357: 0.6})):
    covariate = 1 if menu == 50 else 0
    for n1, nk in ((12, 12), (20, 7), (6, 15)):
        k, m = 4, np.array(FIVE[:4])
        layout = one_way(k, n1, nk)
        y = m[layout.codes['A']]
        values = {0: 0.05, 2: 1.5, **extra, 17: k, 4: n1, 149: nk}
        weights = np.array([n1, nk, nk, nk])
        center = np.average(m, weights=weights)
        from_means(menu, [], {18: 0}, values, layout, 'A', y, [column(m)], 0,
                   math.sqrt(np.average((m - center) ** 2, weights=weights)), covariate=covariate)
        apart = configuration(1, k, weights, 1.8)
        from_means(menu, [], {18: 0}, values, layout, 'A', apart[layout.codes['A']],
                   [column(np.round(apart, 12))], 1, 1.8, covariate=covariate)
        two = one_way(2, n1, nk)
        for kind in (1, 2):
            from_means(menu, [], {18: 0}, {**values, 17: 2}, two, 'A',
                       m[two.codes['A']], [column(m[:2])], kind, 0.8, covariate=covariate)
    layout = one_way(5, 9, 9)
    from_contrast(menu, [], {}, {0: 0.05, **extra, 17: 5, 326: 9}, layout, 'A', C5,
                  [C5, beside(FIVE, 1.3)], float(np.dot(C5, FIVE)), 1.3, covariate=covariate)

# In other forms of the size, and with a ratio alone.
for form, entry in ((1, {150: -13}), (2, {151: 0.35})):
    m = np.array(FIVE[:4])
    layout = one_way(4, 20, 7)
    weights = [20, 7, 7, 7]
    center = np.average(m, weights=weights)
    from_means(10, [], {18: form}, {0: 0.05, 2: 1.5, 17: 4, 4: 20, **entry}, layout, 'A',
               m[layout.codes['A']], [column(m)], 0,
               math.sqrt(np.average((m - center) ** 2, weights=weights)))

# Two factors: a matrix of cells with all three effects, in cells and in blocks.
MATRIX = np.array([[10.3, 11.2, 9.4, 10.9], [9.6, 10.1, 10.8, 8.7], [11.9, 10.2, 10.4, 11.3]])
INTERACTION_CONTRAST = np.array([[1, -1, 0, 0], [-0.5, 0.5, 0, 0], [-0.5, 0.5, 0, 0]])


def cells(layout):
    return MATRIX[layout.codes['A'], layout.codes['B']]


for menu, size, n in ((11, 327, 3), (19, 246, 4)):
    for tested, name in enumerate(('A', 'B', ('A', 'B'))):
        model = ['A', 'B', ('A', 'B')] + (['block'] if menu == 19 else [])
        layout = crossed((3, 4), n, model) if menu == 11 else blocks((3, 4), n, model)
        values = {0: 0.05, 2: 1.4, 238: 3, 239: 4, size: n}
        levels = MATRIX.mean(axis=(1, 0)[tested]) if tested < 2 else None
        rest = MATRIX - MATRIX.mean(0) - MATRIX.mean(1)[:, None] + MATRIX.mean()
        for kind in (0, 1, 2) if tested == 2 else (0,):
            ss = float(np.sum(rest ** 2))
            effect = math.sqrt(ss / (11 if kind == 2 else 12)) if tested == 2 else \
                float(np.std(levels))
            from_means(menu, [], {36: tested}, values, layout, name, cells(layout), [MATRIX], kind,
                       effect)
        c = INTERACTION_CONTRAST if tested == 2 else ([1, -0.25, -0.75] if tested == 0 else
                                                      [1, 0, -1.5, 0.5])
        grids = [c, MATRIX, np.full((3, 4), 1.4)] if tested == 2 else [c, beside(levels, 1.4)]
        true = float(np.sum(np.asarray(c) * (MATRIX if tested == 2 else levels)))
        from_contrast(menu, [], {36: tested}, {0: 0.05, 238: 3, 239: 4, size: n}, layout, name, c,
                      grids, true, 1.4)
        if tested == 2:
            continue
        # Without interaction: the true means are sums, and only those of one factor are given.
        model = ['A', 'B'] + (['block'] if menu == 19 else [])
        layout = crossed((3, 4), n, model) if menu == 11 else blocks((3, 4), n, model)
        y = MATRIX.mean(1)[layout.codes['A']] + MATRIX.mean(0)[layout.codes['B']]
        per = 328 if menu == 11 else 246
        from_means(menu, [11], {36: tested}, {0: 0.05, 2: 1.4, 238: 3, 239: 4, per: n}, layout,
                   name, y, [column(levels)], 0, float(np.std(levels)))
        from_contrast(menu, [11], {36: tested}, {0: 0.05, 238: 3, 239: 4, per: n}, layout, name, c,
                      grids, true, 1.4)

for tested in range(3):
    levels = (3, 4, 2)
    layout = crossed(levels, 2, ['A', 'B', 'C'])
    m = [FIVE[:3], FIVE[1:], FIVE[:2]]
    y = sum(np.array(m[i])[layout.codes[name]] for i, name in enumerate('ABC'))
    values = {0: 0.05, 2: 2, 238: 3, 239: 4, 243: 2, 328: 2}
    from_means(12, [], {38: tested}, values, layout, 'ABC'[tested], y, [column(m[tested])], 0,
               float(np.std(m[tested])))
    c = [C5[0], -C5[0]] + [0] * (levels[tested] - 2)
    del values[2]
    from_contrast(12, [], {38: tested}, values, layout, 'ABC'[tested], c,
                  [c, beside(m[tested], 2)], m[tested][0] - m[tested][1], 2)

for menu, checks, values, layout, scale in (
        (14, [], {244: 5}, squares(5, 1, ['row', 'column', 'A']), 1),
        (15, [], {270: 4, 245: 2}, squares(4, 2, OWN), 1),
        (15, [15], {270: 4, 245: 2}, squares(4, 2, COMMON), 1),
        (16, [], {270: 4, 245: 2}, squares(4, 2, COMMON), 1),
        (16, [13], {270: 4, 245: 3}, random_squares(4, 3), 4),
        (18, [], {238: 4, 246: 6}, blocks((4,), 6, ['block', 'A']), 1)):
    k = len(set(layout.codes['A']))
    m = np.array(FIVE[:k])
    from_means(menu, checks, {}, {0: 0.05, 2: 1.2, **values}, layout, 'A', m[layout.codes['A']],
               [column(m)], 0, float(np.std(m)), scale)
    c = ([1, -0.5, -0.5] + [0] * k)[:k]
    from_contrast(menu, checks, {}, {0: 0.05, **values}, layout, 'A', c, [c, beside(m, 1.2)],
                  float(np.dot(c, m)), 1.2, scale, 269 if menu in (15, 16) else 247)


def write(path, head, rows, source=''):
    with open(path, 'w') as out:
        out.write(source)
        out.write('\t'.join(head) + '\n')
        for row in rows:
            out.write('\t'.join(map(str, row)) + '\n')
    print(path, len(rows))


if __name__ == '__main__':
    write('checks/data/validation/anova.tsv',
          ['Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values', 'Unknown', 'Exact',
           'Tolerance'], ROWS, '# Exact values computed by checks/reference/anova.py (scipy).\n')
    write('checks/data/anova_means.tsv',
          ['analysis', 'checks', 'groups', 'values', 'grids', 'derived', 'power', 'tolerance'],
          MEANS)
