#!/usr/bin/env python3
"""Reference values for the simulations of analyses of variance, regressions, correlations, tests of
scale parameters and of finite populations, and of all point estimates and confidence intervals,
written to checks/data/simulated.tsv.

Independent of the program: each procedure is written out here and applied to sufficient statistics
drawn with numpy (chi-square sums of squares, normal means, Bartlett's decomposition of two
correlated variables, regressions given their covariate), with the exact quantiles of scipy; what is
discrete is summed over all counts. A row holds the probability of one result:

  0  that the test rejects H0 where H0 is true; that the interval covers, or the estimate is within
     its error
  1  that the test rejects H0 where H1 is true; that the interval is narrow
  2  that the interval covers and is narrow

The tolerance is four standard errors of the value itself, plus the error that the program's
approximations of quantiles and probabilities may have (0.0015); 0.0001 where all studies have one
result.

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import math
import numpy as np
from scipy import stats

DRAWS = 1_000_000
RNG = np.random.default_rng(20240611)
ROWS = []
NOR = stats.norm


def add(analysis, samples, tails, values, results, left=0, checks='', groups=''):
    """results: arrays of what each study showed, or exact probabilities."""
    for number, result in enumerate(results):
        if result is None:
            continue
        exact = not isinstance(result, np.ndarray)
        p = float(result) if exact else float(np.mean(result))
        error = 0 if exact else math.sqrt(p * (1 - p) / len(result))
        tolerance = 1e-4 if p in (0.0, 1.0) else 0.0015 + 4 * error
        ROWS.append([analysis, samples, tails, left, checks, groups, values, number,
                     f'{p:.6f}', f'{tolerance:.5f}'])


def normal(size=DRAWS):
    return RNG.standard_normal(size)


def chi2(df):
    return RNG.chisquare(df, DRAWS) if df > 0 else np.zeros(DRAWS)


# --- Tests --------------------------------------------------------------------------------------

def rejects(statistic, quantile, tails, left, alpha=0.05):
    """statistic(null) has this quantile function where the null value is true."""
    if tails == 3:
        return (statistic('left') > quantile(1 - alpha)) & (statistic('right') < quantile(alpha))
    if tails == 2:
        x = statistic('null')
        return (x > quantile(1 - alpha / 2)) | (x < quantile(alpha / 2))
    x = statistic('null')
    return x < quantile(alpha) if left else x > quantile(1 - alpha)


def test(analysis, samples, tails, values, draw, nulls, truth, quantile, statistic, left=0, **kw):
    """draw(truth) gives the data, statistic(data, null) what is compared with the quantile."""
    if tails == 3:
        # The scale on which the nearer limit is the nearer one.
        scale = kw.pop('scale', lambda x: x)
        middle = (scale(nulls['left']) + scale(nulls['right'])) / 2
        under_h0 = nulls['right'] if scale(truth) > middle else nulls['left']
    else:
        kw.pop('scale', None)
        under_h0 = nulls['null']
    results = []
    for true_value in (under_h0, truth):
        data = draw(true_value)
        results.append(rejects(lambda which: statistic(data, nulls[which]), quantile, tails, left))
    add(analysis, samples, tails, values, results, left, **kw)


def anova():
    """k groups with these means, the covariate's correlation rho: F-tests given the covariate."""
    def powers(sizes, means, sd, rho):
        sizes, means = np.array(sizes), np.array(means)
        k, total = len(sizes), sum(sizes)
        df2 = total - k - (1 if rho else 0)
        critical = stats.f.ppf(0.95, k - 1, df2)
        centred = means - np.sum(sizes * means) / total
        between = np.sum(sizes * centred ** 2)
        variance = sd ** 2 * (1 - rho ** 2)
        if not rho:
            return stats.ncf.sf(critical, k - 1, df2, between / variance)
        # The covariate's part of what separates the means is lost: given the covariate, lambda is
        # that of their residuals.
        draws = 200_000
        x = RNG.standard_normal((draws, k)) / np.sqrt(sizes)
        mean = x @ sizes / total
        b_xx = ((x - mean[:, None]) ** 2) @ sizes
        b_xm = (x - mean[:, None]) @ (sizes * centred)
        w_xx = RNG.chisquare(total - k, draws)
        lam = (between - b_xm ** 2 / (b_xx + w_xx)) / variance
        grid = np.linspace(lam.min(), lam.max(), 200)
        return float(np.mean(np.interp(lam, grid, stats.ncf.sf(critical, k - 1, df2, grid))))

    def row(menu, effect_kind, option, effect, k, n1, nk, sd, rho, means):
        values = f'0=0.05;{effect_kind}={effect};2={sd};17={k};4={n1};149={nk}'
        if rho:
            values += f';357={rho}'
        sizes = [n1] + [nk] * (k - 1)
        add(f'menu {menu}', 3, 2, values, [0.05, powers(sizes, means, sd, rho)],
            groups=f'18=0,17={option}')

    def of_sd(effect, k, n1, nk):
        total = n1 + (k - 1) * nk
        share = n1 / total
        return [effect / math.sqrt(share * (1 - share))] + [0] * (k - 1)

    def of_any(effect, k, n1, nk):
        return [effect, *[effect * n1 / (n1 + nk)] * (k - 2), 0]

    def of_min(effect, k, n1, nk):
        return [0] * (k - 1) + [effect] if nk < n1 else [effect] + [0] * (k - 1)
    for menu, rho in ((10, 0), (50, 0.6)):
        for n1, nk in ((8, 8), (14, 5), (5, 12)):
            row(menu, 34, 0, 0.4, 4, n1, nk, 1, rho, of_sd(0.4, 4, n1, nk))
            row(menu, 147, 1, 1.1, 3, n1, nk, 1, rho, of_any(1.1, 3, n1, nk))
            row(menu, 148, 2, 0.9, 5, n1, nk, 1.3, rho, of_min(0.9, 5, n1, nk))
    row(10, 147, 1, 1.8, 2, 3, 3, 1, 0, [1.8, 0])

    def contrast(menu, tails, left, effect, sd, k, n, rho, limits=None):
        """The coefficients are 1 and -1, each mean with the deviation sd / sqrt 2."""
        df = k * n - k - (1 if rho else 0)
        error = sd / math.sqrt(2) * math.sqrt(1 - rho ** 2)

        def draw(truth):
            s = np.sqrt(chi2(df) / df) * error
            per = np.full(DRAWS, 2 / n)
            if rho:
                x_difference = normal() * math.sqrt(2 / n)
                per = per + x_difference ** 2 / chi2(k * (n - 1))
            root = np.sqrt(per)
            return truth + error * root * normal(), s * root
        values = f'0=0.05;247={effect};137={sd};17={k};326={n}'
        if rho:
            values += f';357={rho}'
        nulls = {'null': 0}
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values += f';6={limits[0]};7={limits[1]}'
        test(f'menu {menu}', 3, tails, values, draw, nulls, effect,
             lambda p: stats.t.ppf(p, df), lambda data, null: (data[0] - null) / data[1], left,
             checks='10')
    for menu, rho in ((10, 0), (50, 0.5)):
        contrast(menu, 2, 0, 1.1, 1.4, 3, 7, rho)
        contrast(menu, 1, 0, 0.7, 1, 4, 6, rho)
        contrast(menu, 1, -1, -0.7, 1, 4, 6, rho)
    contrast(10, 3, 0, 0.1, 1, 4, 20, 0, (-0.5, 0.6))


def slope_data(n, b, residual, covariate):
    """Estimated slope, sum of squares of the covariate, residual sum of squares."""
    s_xx = covariate ** 2 * chi2(n - 1)
    return b + residual * normal() / np.sqrt(s_xx), s_xx, residual ** 2 * chi2(n - 2)


def regression():
    def one(analysis, tails, left, null, truth, n, limits=None, residual=1, covariate=1.5):
        def draw(b):
            slope, s_xx, rss = slope_data(n, b, residual, covariate)
            return slope, np.sqrt(rss / (n - 2) / s_xx)
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;6={limits[0]};7={limits[1]};204={truth}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;203={null};204={truth}'
        test(analysis, 1, tails, values + f';212={residual};213={covariate};85={n}', draw, nulls,
             truth, lambda p: stats.t.ppf(p, n - 2), lambda data, m: (data[0] - m) / data[1], left,
             groups='' if limits else '27=0')
    for analysis in ('menu 170', 'distribution 10 3 0'):
        one(analysis, 2, 0, 0, 0.4, 12)
        one(analysis, 1, 0, 0.2, 0.6, 25)
        one(analysis, 1, -1, 0, -0.5, 8)
        one(analysis, 3, 0, 0, 0.05, 40, (-0.4, 0.4))

    def two(tails, left, null, truth, n1, n2, limits=None):
        s1, s2, residual = 0.8, 1.3, 1.2
        df = n1 + n2 - 4

        def draw(b):
            slope1, xx1, rss1 = slope_data(n1, 0, residual, s1)
            slope2, xx2, rss2 = slope_data(n2, b, residual, s2)
            return slope2 - slope1, np.sqrt((rss1 + rss2) / df * (1 / xx1 + 1 / xx2))
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;6={limits[0]};7={limits[1]};208=1;209={1 + truth:g}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;207={null};208=1;209={1 + truth:g}'
        test('menu 170', 2, tails, values + f';212={residual};214={s1};215={s2};4={n1};37={n2}', draw,
             nulls, truth, lambda p: stats.t.ppf(p, df), lambda data, m: (data[0] - m) / data[1],
             left, groups='28=0,29=0,2=0')
    two(2, 0, 0, 0.9, 15, 25)
    two(1, 0, 0.2, 0.9, 30, 12)
    two(1, -1, 0, -0.8, 20, 20)
    two(3, 0, 0, 0.1, 60, 40, (-0.6, 0.7))


def pairs(n, rho, scale=1.0):
    """Bartlett's decomposition: correlation, and the ratio of the standard deviations."""
    a = np.sqrt(chi2(n - 1))
    b = np.sqrt(chi2(n - 2))
    c = normal()
    root = math.sqrt(1 - rho * rho)
    cross = rho * a + root * c
    second = np.sqrt(cross ** 2 + (root * b) ** 2)
    return cross / second, scale * second / a


def z_of(r):
    return np.arctanh(np.clip(r, -0.99999, 0.99999))


def correlation():
    def one(analysis, tails, left, null, truth, n, limits=None):
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;194={limits[0]};195={limits[1]};186={truth};14={n}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;185={null};186={truth};14={n}'
        test(analysis, 1, tails, values, lambda rho: pairs(n, rho)[0], nulls, truth,
             lambda p: NOR.ppf(p) / math.sqrt(n - 3), lambda r, null: z_of(r) - z_of(null), left,
             scale=z_of, groups='' if limits else '23=0')
    for analysis in ('menu 210', 'distribution 10 2 0'):
        one(analysis, 2, 0, 0, 0.6, 12)
        one(analysis, 1, 0, 0.3, 0.6, 40)
        one(analysis, 1, -1, 0.5, 0.1, 20)
        one(analysis, 3, 0, 0, 0.55, 80, (0.3, 0.7))

    def two(tails, left, null, r1, r2, n1, n2, limits=None):
        se = math.sqrt(1 / (n1 - 3) + 1 / (n2 - 3))
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;194={limits[0]};195={limits[1]}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;189={null}'
        values += f';190={r1};191={r2};39={n1};42={n2}'
        test('menu 210', 2, tails, values, lambda d: (pairs(n1, r1)[0], pairs(n2, r1 + d)[0]),
             nulls, round(r2 - r1, 9), lambda p: NOR.ppf(p) * se,
             lambda data, null: z_of(data[1]) - z_of(data[0]) - (z_of(r1 + null) - z_of(r1)), left,
             scale=z_of,
             groups='24=0,2=0')
    two(2, 0, 0, 0.2, 0.6, 30, 45)
    two(1, 0, 0, 0.1, 0.5, 60, 25)
    two(1, -1, 0.2, 0.3, 0.2, 50, 50)
    two(3, 0, 0, 0.4, 0.42, 120, 150, (-0.25, 0.25))


def scale_tests():
    def one(distribution, par_list, tails, left, null, truth, n, limits=None):
        sd = distribution == 0
        exponent = 2 if sd else 1
        known = par_list == (2 if sd else 1)
        df = (1 if sd else 2) * (n - (0 if known else 1))
        k = dict(null=110, left=116, right=117, truth=111, group='3=0') if sd else \
            dict(null=142, left=129, right=130, truth=124, group='15=0')
        nulls = {'left': limits[0], 'right': limits[1]} if limits else {'null': null}
        values = '0=0.05;' + ''.join(f'{k[key]}={x};' for key, x in nulls.items())
        test(f'distribution {distribution} {par_list} 0', 1, tails,
             values + f'{k["truth"]}={truth};85={n}', lambda s: s ** exponent * chi2(df), nulls, truth,
             lambda p: stats.chi2.ppf(p, df), lambda x, m: x / m ** exponent, left, scale=math.log,
             groups='' if limits else k['group'])
    one(0, 2, 2, 0, 1, 1.6, 15)
    one(0, 3, 1, 0, 1, 1.5, 26)
    one(0, 3, 1, -1, 1, 0.6, 9)
    one(0, 3, 3, 0, 1, 1.05, 100, (0.8, 1.25))
    one(2, 1, 2, 0, 1, 1.8, 12)
    one(2, 2, 1, 0, 1, 1.6, 20)
    one(2, 2, 1, -1, 1, 0.5, 8)
    one(2, 1, 3, 0, 1, 1.05, 80, (0.7, 1.4))

    def two(distribution, par_list, tails, left, null, truth, n1, n2, limits=None):
        sd = distribution == 0
        exponent = 2 if sd else 1
        known = par_list == (2 if sd else 1)
        d1, d2 = ((1 if sd else 2) * (n - (0 if known else 1)) for n in (n2, n1))
        k = dict(null=114, left=116, right=117, truth=115, group='13=1,2=0') if sd else \
            dict(null=127, left=129, right=130, truth=128, group='16=1,2=0')
        nulls = {'left': limits[0], 'right': limits[1]} if limits else {'null': null}
        values = '0=0.05;' + ''.join(f'{k[key]}={x};' for key, x in nulls.items())
        test(f'distribution {distribution} {par_list} 0', 2, tails,
             values + f'{k["truth"]}={truth};4={n1};37={n2}',
             lambda s: s ** exponent * (chi2(d1) / d1) / (chi2(d2) / d2), nulls, truth,
             lambda p: stats.f.ppf(p, d1, d2), lambda x, m: x / m ** exponent, left, scale=math.log,
             groups=k['group'])
    two(0, 2, 2, 0, 1, 1.8, 15, 30)
    two(0, 3, 1, 0, 1.2, 2, 25, 12)
    two(0, 3, 1, -1, 1, 0.5, 12, 20)
    two(0, 3, 3, 0, 1, 1.04, 250, 200, (0.8, 1.25))
    two(2, 1, 2, 0, 1, 2, 14, 25)
    two(2, 2, 1, 0, 1, 2, 20, 10)
    two(2, 2, 1, -1, 1, 0.5, 10, 18)
    two(2, 1, 3, 0, 1, 1.05, 150, 120, (0.7, 1.4))


def location_tests():
    def one(tails, left, null, truth, s, n, limits=None):
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;135={limits[0]};136={limits[1]};132={truth};146={s};85={n}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;131={null};132={truth};146={s};85={n}'
        test('distribution 2 0 0', 1, tails, values, lambda m: m + s / n * RNG.exponential(size=DRAWS),
             nulls, truth, stats.expon.ppf, lambda x, m: n * (x - m) / s, left,
             groups='' if limits else '14=0')
    one(2, 0, 0, 0.2, 2, 20)
    one(1, 0, 0, 0.3, 2, 12)
    one(1, -1, 0, -0.3, 2, 5)
    one(3, 0, 0, 0.1, 1, 12, (-0.5, 0.5))


def scores(population):
    """A finite population as normal as can be, with deviation 1 as one of a population."""
    v = NOR.ppf((np.arange(population) + 0.5) / population)
    return (v - v.mean()) / v.std()


def finite_mean(population, n, draws=200_000):
    v = scores(population)
    means = np.empty(draws)
    for start in range(0, draws, 2000):
        order = np.argsort(RNG.random((2000, population)), axis=1)[:, :n]
        means[start:start + 2000] = v[order].mean(axis=1)
    return means


def marked(population, share):
    return round(population * share)


def finite_tests():
    def mean(tails, left, null, truth, sd, population, n, limits=None):
        se = sd * math.sqrt((population - n) / (population - 1) / n)
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;6={limits[0]};7={limits[1]}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;57={null}'
        test('distribution 8 0 0', 1, tails, values + f';58={truth};2={sd};31={population};85={n}',
             lambda m: m + sd * finite_mean(population, n), nulls, truth, NOR.ppf,
             lambda x, m: (x - m) / se, left, groups='' if limits else '0=0')
    mean(2, 0, 0, 0.35, 1, 120, 40)
    mean(1, 0, 1, 1.6, 1.5, 60, 20)
    mean(1, -1, 0, -0.3, 1, 200, 60)
    mean(3, 0, 0, 0.05, 1, 200, 90, (-0.3, 0.3))

    def share(tails, left, null, truth, population, n, limits=None):
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;47={limits[0]};48={limits[1]}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;35={null}'
        weight = (population - n) / (population - 1) / n
        x = np.arange(n + 1)
        under_h0 = null if not limits else \
            limits[1] if truth > sum(limits) / 2 else limits[0]
        reject = rejects(lambda which: (x / n - nulls[which]) /
                         math.sqrt(nulls[which] * (1 - nulls[which]) * weight), NOR.ppf, tails, left)
        results = [stats.hypergeom.pmf(x, population, marked(population, p), n)[reject].sum()
                   for p in (under_h0, truth)]
        add('distribution 8 1 0', 1, tails, values + f';83={truth};31={population};85={n}', results, left,
            groups='' if limits else '11=0')
    share(2, 0, 0.3, 0.45, 300, 60)
    share(1, 0, 0.3, 0.5, 100, 25)
    share(1, -1, 0.4, 0.2, 200, 40)
    share(3, 0, 0, 0.5, 300, 80, (0.35, 0.65))


def pair_tests():
    def mean(tails, left, null, truth, sd1, sd2, rho, n, limits=None):
        sd = math.sqrt(sd1 ** 2 + sd2 ** 2 - 2 * rho * sd1 * sd2)

        def draw(m):
            return m + sd / math.sqrt(n) * normal(), sd * np.sqrt(chi2(n - 1) / (n - 1) / n)
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;6={limits[0]};7={limits[1]}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;61={null}'
        test('distribution 10 0 0', 1, tails,
             values + f';62={truth};216={sd1};217={sd2};220={rho};85={n}', draw, nulls, truth,
             lambda p: stats.t.ppf(p, n - 1), lambda data, m: (data[0] - m) / data[1], left,
             groups='1=1,29=0')
    mean(2, 0, 0, 0.8, 1, 1.3, 0.5, 14)
    mean(1, 0, 0.2, 0.8, 1, 1.3, 0.5, 20)
    mean(1, -1, 0, -0.9, 1, 1, -0.3, 15)
    mean(3, 0, 0, 0.05, 1, 1.1, 0.6, 40, (-0.5, 0.6))

    def sd(tails, left, null, truth, rho, n, limits=None):
        def statistic(data, m):
            r, ratio = data
            q = ratio / m
            return np.arcsinh((q - 1 / q) / 2 / np.sqrt(1 - r ** 2))
        if limits:
            nulls = {'left': limits[0], 'right': limits[1]}
            values = f'0=0.05;116={limits[0]};117={limits[1]}'
        else:
            nulls = {'null': null}
            values = f'0=0.05;114={null}'
        test('distribution 10 1 0', 1, tails, values + f';115={truth};220={rho};14={n}',
             lambda ratio: pairs(n, rho, ratio), nulls, truth,
             lambda p: NOR.ppf(p) / math.sqrt(n - 3), statistic, left, scale=math.log, groups='13=1')
    sd(2, 0, 1, 1.6, 0.5, 25)
    sd(1, 0, 1.1, 1.7, 0, 30)
    sd(1, -1, 1, 0.6, -0.6, 12)
    sd(3, 0, 1, 1.03, 0.5, 120, (0.8, 1.25))


# --- Estimates ----------------------------------------------------------------------------------

ALPHA = 0.1


def outside(is_two_sided):
    return ALPHA / 2 if is_two_sided else ALPHA


def forms(analysis, samples, values, error_kinds, width_kind, entered, interval, point, groups='',
          tails_of_interval=(True, False), probability=False):
    """The two intervals and the two point estimates of a parameter. entered: error and width;
    interval(q, w, two) and point(q, e, two) give the results, q being the tail outside."""
    e, w = entered
    last = ';101=0.8' if probability else ''
    for two in tails_of_interval:
        add(f'{analysis} 2', samples, 2, f'22={1 - ALPHA:g};{width_kind}={w};{values}{last}',
            interval(outside(two), w, two), checks='36' if two else '', groups=groups)
    for two in (True, False):
        add(f'{analysis} 1', samples, 2 if two else 1,
            f'143={ALPHA};{error_kinds[0 if two else 1]}={e};{values}', point(outside(two), e, two),
            groups=groups)


def three(covers, narrow):
    narrow = np.broadcast_to(narrow, np.shape(covers)) if isinstance(covers, np.ndarray) else narrow
    return [covers, np.array(narrow), covers & narrow]


def interval_of(error, below, above, two, w):
    covers = (error >= -above) & ((error <= below) | (not two))
    width = below + above if two else above + 0 * error
    return three(covers, width <= w)


def point_of(error, promised, e, two):
    covers = (error <= e) & ((error >= -e) | (not two))
    return three(covers, promised + 0 * error <= e)


def normal_forms(analysis, samples, values, data, entered, **kw):
    """data() gives error and standard error of a normal estimate."""
    def interval(q, w, two):
        error, se = data()
        half = NOR.ppf(1 - q) * se
        return interval_of(error, half, half, two, w)

    def point(q, e, two):
        error, se = data()
        return point_of(error, NOR.ppf(1 - q) * se, e, two)
    forms(analysis, samples, values, (18, 19), 100, entered, interval, point, **kw)


def student_forms(analysis, samples, values, data, df, entered, **kw):
    def interval(q, w, two):
        error, se = data()
        half = stats.t.ppf(1 - q, df) * se
        return interval_of(error, half, half, two, w)

    def point(q, e, two):
        error, se = data()
        return point_of(error, stats.t.ppf(1 - q, df) * se, e, two)
    forms(analysis, samples, values, (18, 19), 100, entered, interval, point, probability=True, **kw)


def log_forms(analysis, samples, values, data, quantile, entered, random, **kw):
    def log_error(se, e, two):
        low = NOR.cdf(math.log(1 - e) / se) if two and e < 1 else 0
        return NOR.cdf(math.log(1 + e) / se) - low

    def interval(q, w, two):
        error, se = data()
        half = quantile(1 - q) * se
        widest = math.asinh(w / 2) if two else math.log(1 + w)
        return three((error >= -half) & ((error <= half) | (not two)), half + 0 * error <= widest)

    def point(q, e, two):
        error, se = data()
        covers = (np.exp(error) <= 1 + e) & ((np.exp(error) >= 1 - e) | (not two))
        return three(covers, log_error(se, e, two) + 0 * error >= 1 - ALPHA)
    forms(analysis, samples, values, (23, 24), 145, entered, interval, point, probability=random, **kw)


def mean_forms():
    one, two = '2=1.2;85=16', '2=1.2;4=10;37=18'
    known = '216=1;217=1.5;4=12;37=20'
    normal_forms('distribution 0 0', 1, one, lambda: (0.3 * normal(), 0.3 + 0 * normal(1)), (0.5, 1))
    se = math.sqrt(1 / 12 + 2.25 / 20)
    normal_forms('distribution 0 0', 2, known, lambda: (se * normal(), se + 0 * normal(1)), (0.8, 1.4),
                 groups='29=0,2=0')

    def estimated(df, root):
        return lambda: (1.2 * root * normal(), 1.2 * root * np.sqrt(chi2(df) / df))
    root1, root2 = 0.25, math.sqrt(1 / 10 + 1 / 18)
    student_forms('distribution 0 1', 1, one, estimated(15, root1), 15, (0.55, 1.1))
    student_forms('distribution 0 1', 2, two, estimated(26, root2), 26, (0.8, 1.6), groups='2=0')
    # Degrees of freedom that are entered, and those of an analysis of variance with four groups.
    for checks, entry, df in (('0', '36=40', 40), ('5', '17=4', 60)):
        error, se = estimated(df, root1)()
        half = stats.t.ppf(1 - ALPHA / 2, df) * se
        add('distribution 0 1 2', 1, 2, f'22=0.9;100=1.05;{one};{entry};101=0.8',
            interval_of(error, half, half, True, 1.05), checks=f'36,{checks}')

    shape1, shape2 = '27=0.4;85=14', '27=0.4;4=12;37=20'
    log_forms('distribution 1 0', 1, shape1,
              lambda: (0.4 / math.sqrt(14) * normal(), np.full(DRAWS, 0.4 / math.sqrt(14))), NOR.ppf,
              (0.2, 0.4), False)
    se = math.sqrt(0.16 / 12 + 0.36 / 20)
    log_forms('distribution 1 0', 2, '50=0.4;54=0.6;4=12;37=20',
              lambda: (se * normal(), np.full(DRAWS, se)), NOR.ppf, (0.3, 0.65), False,
              groups='31=0,2=0')
    for samples, values, n, df, groups in ((1, shape1, 1 / 14, 13, ''),
                                           (2, shape2, 1 / 12 + 1 / 20, 30, '2=0')):
        root = 0.4 * math.sqrt(n)
        log_forms('distribution 1 1', samples, values,
                  lambda: (root * normal(), root * np.sqrt(chi2(df) / df)),
                  lambda p: stats.t.ppf(p, df), (0.25, 0.5), True, groups=groups)


def scale_forms():
    def one(distribution, par_list, values, dist, at_truth, draw, exponent, entered, samples, groups='',
            width_kind=145, unit=1):
        def interval(q, w, two):
            x = draw()
            low, high = dist.ppf(q), dist.ppf(1 - q)
            estimate = (x / at_truth) ** (1 / exponent)
            covers = (x >= low) & ((x <= high) | (not two))
            upper = (at_truth / low) ** (1 / exponent)
            lower = (at_truth / high) ** (1 / exponent)
            return three(covers, estimate * unit * (upper - (lower if two else 1)) <= w)

        def point(q, e, two):
            ratio = draw() / at_truth
            kept = dist.cdf((1 + e) * at_truth) - (dist.cdf((1 - e) * at_truth) if two else 0)
            covers = (ratio <= 1 + e) & ((ratio >= 1 - e) | (not two))
            return three(covers, np.full(DRAWS, kept >= 1 - ALPHA))
        # An interval of a ratio of deviations has the true ratio in its list.
        analysis = f'distribution {distribution} {par_list}'
        e, w = entered
        for two in (True, False):
            extra = f'138={unit};' if unit != 1 else ''
            add(f'{analysis} 2', samples, 2, f'22={1 - ALPHA:g};{width_kind}={w};{extra}{values};101=0.8',
                interval(outside(two), w, two), checks='36' if two else '', groups=groups)
            add(f'{analysis} 1', samples, 2 if two else 1, f'143={ALPHA};{23 if two else 24}={e};{values}',
                point(outside(two), e, two), groups=groups)
    for distribution, par_list, per, known in ((0, 2, 1, 1), (0, 3, 1, 0), (2, 1, 2, 1), (2, 2, 2, 0)):
        exponent = 2 if distribution == 0 else 1
        df = per * (20 - (0 if known else 1))
        one(distribution, par_list, '85=20', stats.chi2(df), df, lambda: chi2(df), exponent,
            (0.45, 0.7 if distribution == 0 else 0.9), 1)
        d1, d2 = (per * (n - (0 if known else 1)) for n in (30, 24))
        of_sd = distribution == 0
        one(distribution, par_list, '4=24;37=30', stats.f(d1, d2), 1,
            lambda: (chi2(d1) / d1) / (chi2(d2) / d2), exponent, (0.6, 1.1 if of_sd else 1.3), 2, '2=0',
            100 if of_sd else 145, 1.2 if of_sd else 1)

    n, s = 25, 2

    def error():
        return s / n * RNG.exponential(size=DRAWS)

    def interval(q, w, two):
        x = error()
        near, far = (s / n * stats.expon.ppf(p) for p in (q, 1 - q))
        covers = (x <= far) & ((x >= near) | (not two))
        return three(covers, np.full(DRAWS, (far - near if two else far) <= w))

    def point(q, e, two):
        x = error()
        return three(x <= e, np.full(DRAWS, s / n * stats.expon.ppf(1 - ALPHA) <= e))
    forms('distribution 2 0', 1, f'146={s};85={n}', (18, 19), 100, (0.2, 0.25), interval, point)


class Counts:
    """All counts of one sample, or of two independent ones, with their probabilities."""

    def __init__(self, *distributions):
        # Counts that can hardly be are left out.
        self.x, self.p = [], []
        for d, top in distributions:
            x = np.arange(top + 1)
            p = d.pmf(x)
            keep = p > 1e-12
            self.x.append(x[keep].astype(float))
            self.p.append(p[keep])
        if len(distributions) == 1:
            self.weights = self.p[0]
        else:
            self.x = [g.ravel() for g in np.meshgrid(*self.x, indexing='ij')]
            self.weights = np.outer(*self.p).ravel()

    def __call__(self, results):
        return [float(self.weights[np.broadcast_to(r, self.weights.shape)].sum()) for r in results]


def off_lattice(counts, multiples, near):
    """The first limit from near on that hardly any of these multiples lie close to: the program's
    normal quantiles have an error of 3e-4."""
    limit = near
    while True:
        close = sum(counts([abs(m / limit - 1) < 6e-4])[0] for m in multiples)
        if close < 3e-4:
            return round(limit, 6)
        limit *= 1.0003


def count_forms(analysis, samples, values, counts, estimate, near, **kw):
    """estimate(x...) gives error and standard error of a normal estimate; near: about which error
    and width."""
    se = estimate(*counts.x)[1]
    z2, z1 = NOR.ppf(1 - outside(True)), NOR.ppf(1 - outside(False))
    entered = (off_lattice(counts, [z2 * se, z1 * se], near[0]),
               off_lattice(counts, [2 * z2 * se, z1 * se], near[1]))

    def interval(q, w, two):
        error, se = estimate(*counts.x)
        half = NOR.ppf(1 - q) * se
        return counts(interval_of(error, half, half, two, w))

    def point(q, e, two):
        error, se = estimate(*counts.x)
        return counts(point_of(error, NOR.ppf(1 - q) * se, e, two))
    forms(analysis, samples, values, (18, 19), 100, entered, interval, point, **kw)


def discrete_forms():
    def share(n, truth, weight):
        return lambda x: (x / n - truth, x / n * (1 - x / n) * weight)

    def difference(first, second):
        def estimate(x1, x2):
            e1, v1 = first(x1)
            e2, v2 = second(x2)
            return e2 - e1, np.sqrt(v1 + v2)
        return estimate

    def single(first):
        def estimate(x):
            error, variance = first(x)
            return error, np.sqrt(variance)
        return estimate
    binom, hyper, poisson = stats.binom, stats.hypergeom, stats.poisson
    # No count lies on these errors: 0.1321 is no multiple of 1/40.
    count_forms('distribution 4 0', 1, '102=0.3;85=40', Counts((binom(40, 0.3), 40)),
                single(share(40, 0.3, 1 / 40)), (0.1321, 0.2417))
    count_forms('distribution 4 0', 2, '103=0.3;104=0.55;4=40;37=50',
                Counts((binom(40, 0.3), 40), (binom(50, 0.55), 50)),
                difference(share(40, 0.3, 1 / 40), share(50, 0.55, 1 / 50)), (0.1723, 0.3331),
                groups='12=0,2=0')

    def weight(population, n):
        return (population - n) / (population - 1) / n
    m1, m2 = marked(200, 0.3), marked(300, 0.55)
    first = share(40, m1 / 200, weight(200, 40))
    second = share(50, m2 / 300, weight(300, 50))
    count_forms('distribution 5 0', 1, '102=0.3;31=200;85=40', Counts((hyper(200, m1, 40), 40)),
                single(first), (0.1221, 0.2117))
    count_forms('distribution 8 1', 1, '102=0.3;31=200;85=40', Counts((hyper(200, m1, 40), 40)),
                single(first), (0.1221, 0.2117))
    count_forms('distribution 5 0', 2, '103=0.3;104=0.55;196=200;197=300;4=40;37=50',
                Counts((hyper(200, m1, 40), 40), (hyper(300, m2, 50), 50)), difference(first, second),
                (0.1521, 0.3017), groups='12=0,25=0,2=0')

    def mean(exposure, truth):
        return lambda x: (x / exposure - truth, x / exposure / exposure)
    for par_list, one, two, groups in (
            (0, '175=0.8;163=30', '176=0.8;177=1.3;164=30;165=20', '1=0,2=0'),
            (1, '180=0.8;170=30', '181=0.8;182=1.3;171=30;172=20', '5=0,22=0')):
        count_forms(f'distribution 6 {par_list}', 1, one, Counts((poisson(24), 90)),
                    single(mean(30, 0.8)), (0.2879, 0.5419))
        count_forms(f'distribution 6 {par_list}', 2, two, Counts((poisson(24), 90), (poisson(26), 90)),
                    difference(mean(30, 0.8), mean(20, 1.3)), (0.5123, 0.9973), groups=groups)

    # Clopper and Pearson.
    counts = Counts((binom(30, 0.2), 30))
    x = counts.x[0]
    for two in (True, False):
        q = outside(two)
        with np.errstate(invalid='ignore'):
            low = np.where(x == 0, 0, stats.beta.ppf(q, x, 31 - x))
            high = np.where(x == 30, 1, stats.beta.ppf(1 - q, x + 1, 30 - x))
        add('distribution 4 0 2', 1, 2, '22=0.9;100=0.2617;102=0.2;85=30',
            counts(interval_of(x / 30 - 0.2, x / 30 - low, high - x / 30, two, 0.2617)),
            checks='36,7' if two else '7')

    # Woolf: without an interval, and not within the error, where a cell is empty.
    def odds(analysis_samples, values, counts, data, entered, groups=''):
        error, variance, empty = data

        def interval(q, w, two):
            half = NOR.ppf(1 - q) * np.sqrt(variance)
            covers = empty | ((error >= -half) & ((error <= half) | (not two)))
            widest = math.asinh(w / 2) if two else math.log(1 + w)
            return counts(three(covers, ~empty & (half <= widest)))

        def point(q, e, two):
            se = np.sqrt(variance)
            kept = NOR.cdf(math.log(1 + e) / se) - (NOR.cdf(math.log(1 - e) / se) if two else 0)
            covers = ~empty & (error <= math.log(1 + e)) & ((error >= math.log(1 - e)) | (not two))
            return counts(three(covers, ~empty & (kept >= 1 - ALPHA)))
        forms('distribution 4 1', analysis_samples, values, (23, 24), 145, entered, interval, point,
              groups=groups)

    def log_odds(x, n):
        empty = (x == 0) | (x == n)
        inner = np.where(empty, n / 2, x)
        return np.log(inner / (n - inner)), 1 / inner + 1 / (n - inner), empty
    counts = Counts((binom(25, 1 / 3), 25))
    value, variance, empty = log_odds(counts.x[0], 25)
    odds(1, '233=0.5;85=25', counts, (value - math.log(0.5), variance, empty), (0.6013, 1.6171))
    counts = Counts((binom(30, 1 / 3), 30), (binom(40, 0.6), 40))
    v1, s1, e1 = log_odds(counts.x[0], 30)
    v2, s2, e2 = log_odds(counts.x[1], 40)
    odds(2, '234=0.5;235=1.5;4=30;37=40', counts, (v2 - v1 - math.log(3), s1 + s2, e1 | e2),
         (0.7013, 1.8971), groups='35=0,2=0')


def finite_forms():
    se = 1.2 * math.sqrt((120 - 30) / 119 / 30)
    normal_forms('distribution 8 0', 1, '2=1.2;31=120;85=30',
                 lambda: (1.2 * finite_mean(120, 30), np.full(200_000, se)), (0.32, 0.65))


def pair_forms():
    n, sd1, sd2, rho = 18, 1, 1.3, 0.5
    sd = math.sqrt(sd1 ** 2 + sd2 ** 2 - 2 * rho * sd1 * sd2)
    student_forms('distribution 10 0', 1, f'216={sd1};217={sd2};220={rho};85={n}',
                  lambda: (sd / math.sqrt(n) * normal(), sd * np.sqrt(chi2(n - 1) / (n - 1) / n)), n - 1,
                  (0.45, 0.9), groups='29=0')

    def slope():
        b, s_xx, rss = slope_data(20, 0, 1, 1.5)
        return b, np.sqrt(rss / 18 / s_xx)
    student_forms('distribution 10 3', 1, '212=1;213=1.5;85=20', slope, 18, (0.28, 0.6))

    # Ratio of deviations: 1.2 for the interval; the correlation is that of the sample.
    n, rho, se = 30, 0.5, 1 / math.sqrt(27)
    for two in (True, False):
        q = outside(two)
        r, ratio = pairs(n, rho, 1.2)
        y = math.sinh(NOR.ppf(1 - q) * se) * np.sqrt(1 - r ** 2)
        factor = y + np.sqrt(1 + y ** 2)
        add('distribution 10 1 2', 1, 2, f'22=0.9;100=0.66;138=1.2;220={rho};14={n}',
            interval_of(ratio - 1.2, ratio * (1 - 1 / factor), ratio * (factor - 1), two, 0.66),
            checks='36' if two else '')
        r, ratio = pairs(n, rho)
        e = 0.24

        def below(x):
            return NOR.cdf(np.arcsinh((x - 1 / x) / 2 / np.sqrt(1 - r ** 2)) / se)
        kept = below(1 + e) - (below(1 - e) if two else 0)
        covers = (ratio <= 1 + e) & ((ratio >= 1 - e) | (not two))
        add('distribution 10 1 1', 1, 2 if two else 1, f'143={ALPHA};{23 if two else 24}={e};220={rho};14={n}',
            three(covers, kept >= 1 - ALPHA))

        r = np.clip(pairs(n, rho)[0], -0.99999, 0.99999)
        half = NOR.ppf(1 - q) * se
        add('distribution 10 2 2', 1, 2, f'22=0.9;100=0.45;220={rho};14={n}',
            interval_of(r - rho, r - np.tanh(z_of(r) - half), np.tanh(z_of(r) + half) - r, two, 0.45),
            checks='36' if two else '')
        e = 0.22

        def below_r(edge):
            inside = np.clip(edge, -1 + 1e-12, 1 - 1e-12)
            p = NOR.cdf((np.arctanh(np.clip(inside, -0.99999, 0.99999)) - z_of(r)) / se)
            return np.where(edge >= 1, 1, np.where(edge <= -1, 0, p))
        kept = below_r(r + e) - (below_r(r - e) if two else 0)
        covers = (r - rho <= e) & ((r - rho >= -e) | (not two))
        add('distribution 10 2 1', 1, 2 if two else 1, f'143={ALPHA};{18 if two else 19}={e};220={rho};14={n}',
            three(covers, kept >= 1 - ALPHA))


def main():
    for section in (anova, regression, correlation, scale_tests, location_tests, finite_tests, pair_tests,
                    mean_forms, scale_forms, discrete_forms, finite_forms, pair_forms):
        section()
    with open('checks/data/simulated.tsv', 'w', encoding='utf-8') as out:
        out.write('# Probabilities computed by checks/reference/simulated_estimates.py (numpy, scipy).\n')
        out.write('\t'.join(['Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values',
                             'Result', 'Exact', 'Tolerance']) + '\n')
        for row in ROWS:
            out.write('\t'.join(map(str, row)) + '\n')


main()
