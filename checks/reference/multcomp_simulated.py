#!/usr/bin/python3
"""Multiple comparisons simulated from the observations themselves with numpy, written to
checks/data/simulated/multcomp.tsv: family-wise error, disjunctive, conjunctive and average power, and
how often each hypothesis is rejected; designs with interim analyses to multcomp_interim.tsv there.

Every subject is drawn; statistics are formed from the raw data. Critical values: Student's or normal
ones by scipy, Dunnett's, Tukey's and the studentized maximum modulus by simulation of the joint
distribution of the statistics (2,000,000 draws), Scheffe's by F or chi-square. Holm and Hochberg
decide by adjusted p-values; gates hand on the level by their definition: a serial one all of it when
all tests of the family before are rejected, a parallel one as much as the rejected tests of it had.

The state under H0: the true means if some hypothesis is true there, else all means the same (or 0, where
single means and combinations are tested).

Columns: see HEAD. Methods: 0 weights, 1 Bonferroni, 2 Sidak, 3 joint, 4 sequence, 5 Holm, 6 Hochberg; one for
each family. Families and weights by test. Covariance: 0 equal correlation, 1 r^|i-j|, 2 matrix.

Needs Python 3 with numpy and scipy; run from the repository's root. Takes minutes.
"""
import itertools
import numpy as np
from scipy import stats

RUNS = 100000
SEED = 20261122
HEAD = ('Test Tails Left Means Sd Size Size2 Covariance Correlation Matrix Known Combinations Gate Methods '
        'Families Weights Error Disjunctive Conjunctive Average Rejected').split()
ALPHA = 0.05
MATRIX = ((4, 1, 0.5), (1, 2, 0.2), (0.5, 0.2, 1))


def contrasts(d):
    k = len(d['means'])
    if d['test'] in (138, 142):
        return np.array([[-1.0] + [float(j == i) for j in range(1, k)] for i in range(1, k)])
    if d['test'] in (139, 143):
        rows = []
        for i, j in itertools.combinations(range(k), 2):
            row = np.zeros(k)
            row[i], row[j] = 1, -1
            rows.append(row)
        return np.array(rows)
    if d['test'] in (141, 145):
        return np.array(d['combinations'], float)
    return np.eye(k)


def covariance(d):
    k = len(d['means'])
    if d['cov'] == 2:
        return np.array(MATRIX, float)
    i = np.arange(k)
    apart = np.abs(i[:, None] - i)
    return d['sd'] ** 2 * (np.where(apart == 0, 1, d['rho']) if d['cov'] == 0 else float(d['rho']) ** apart)


def draw(rng, d, means, runs):
    """Fresh data of all subjects: one array for each group, or one of vectors."""
    if d['test'] < 142:
        sizes = [d['n']] + [d['n2'] or d['n']] * (len(means) - 1)
        return [rng.normal(mu, d['sd'], (runs, n)) for mu, n in zip(means, sizes)]
    factor = np.linalg.cholesky(covariance(d))
    return rng.standard_normal((runs, d['n'], len(means))) @ factor.T + np.array(means)


def statistics(d, c, data, share=1):
    """Signed statistics of the first subjects: large where the hypothesis is doubtful in the right tail."""
    if d['test'] < 142:
        parts = [x[:, :round(share * x.shape[1])] for x in data]
        sizes = np.array([x.shape[1] for x in parts])
        centers = np.stack([x.mean(axis=1) for x in parts], axis=1)
        squares = sum(x.var(axis=1) * x.shape[1] for x in parts)
        s = np.sqrt(squares / (sizes.sum() - len(sizes)))
        return centers @ c.T / np.sqrt((c ** 2 / sizes).sum(axis=1)) / s[:, None]
    x = data[:, :round(share * data.shape[1])]
    n = x.shape[1]
    center = x.mean(axis=1)
    if d['known']:
        variance = np.einsum('ij,jk,ik->i', c, covariance(d), c)
    else:
        y = np.einsum('rnk,tk->rnt', x - center[:, None, :], c)
        variance = (y ** 2).sum(axis=1) / (n - 1)
    return center @ c.T / np.sqrt(variance / n)


def law(d, share=1):
    n = round(share * d['n'])
    if d['test'] >= 142:
        return stats.norm if d['known'] else stats.t(n - 1)
    k = len(d['means'])
    return stats.t(n + (k - 1) * round(share * (d['n2'] or d['n'])) - k)


def joint_crit(rng, d, c, m):
    """Critical value of the joint method for a whole family at ALPHA."""
    k = len(d['means'])
    if d['test'] in (141,):
        df = k * d['n'] - k
        return np.sqrt(m * stats.f.isf(ALPHA if d['tails'] == 2 else 2 * ALPHA, m, df))
    if d['test'] >= 142:
        return np.sqrt(stats.chi2.isf(ALPHA if d['tails'] == 2 else 2 * ALPHA, m))
    n2 = d['n2'] or d['n']
    df = d['n'] + (k - 1) * n2 - k
    draws = 2000000
    x = rng.standard_normal((draws, k)) / np.sqrt([d['n']] + [n2] * (k - 1))
    s = np.sqrt(rng.chisquare(df, draws) / df)
    z = np.abs(x @ c.T) / np.sqrt((c ** 2 / np.array([d['n']] + [n2] * (k - 1))).sum(axis=1)) / s[:, None]
    level = 2 * ALPHA if d['tails'] == 1 and d['test'] == 138 else ALPHA
    return np.quantile(z.max(axis=1), 1 - level)


def adjusted(p, method, weights):
    m = p.shape[1]
    if method == 0:
        with np.errstate(divide='ignore', invalid='ignore'):
            return np.where(np.array(weights) > 0, p / np.array(weights), np.inf)
    if method == 1:
        return p * m
    if method == 2:
        return 1 - (1 - p) ** m
    if method == 4:
        return np.maximum.accumulate(p, axis=1)
    order = np.argsort(p, axis=1)
    ranked = np.take_along_axis(p, order, axis=1) * (m - np.arange(m))
    ranked = np.maximum.accumulate(ranked, axis=1) if method == 5 else \
        np.minimum.accumulate(ranked[:, ::-1], axis=1)[:, ::-1]
    back = np.empty_like(p)
    np.put_along_axis(back, order, ranked, axis=1)
    return back


def p_values(z, d, share=1):
    signed = -z if d['left'] else z
    return law(d, share).sf(signed) if d['tails'] == 1 else 2 * law(d, share).sf(np.abs(z))


def decide(p, d, alpha=ALPHA):
    rejected = np.zeros(p.shape, bool)
    level = np.full(p.shape[0], alpha)
    weights = np.array(d['weights'] or [1 / p.shape[1]] * p.shape[1], float)
    for number, f in enumerate(sorted(set(d['families']))):
        at = [i for i, g in enumerate(d['families']) if g == f]
        here = (adjusted(p[:, at], d['methods'][number], weights[at]) < level[:, None]) & (level[:, None] > 0)
        rejected[:, at] = here
        if d['gate'] == 1:
            level = np.where(here.all(axis=1), level, 0)
        elif d['gate'] == 2:
            share = weights[at] if d['methods'][number] == 0 else np.full(len(at), 1 / len(at))
            level = level * (here * share).sum(axis=1)
    return rejected


def simulate(rng, d, c, means, crit):
    parts, done = [], 0
    while done < RUNS:
        runs = min(10000, RUNS - done)
        z = statistics(d, c, draw(rng, d, means, runs))
        if crit is not None:
            parts.append((-z if d['left'] else z if d['tails'] == 1 else np.abs(z)) > crit)
        else:
            parts.append(decide(p_values(z, d), d))
        done += runs
    return np.concatenate(parts)


def design(test, means, n, **more):
    d = dict(test=test, tails=2, left=0, means=means, sd=1, n=n, n2=0, cov=0, rho=0, known=0, combinations=(),
             gate=0, methods=(1,), families=(), weights=())
    d.update(more)
    tests = contrasts(d).shape[0]
    if not d['families']:
        d['families'] = (1,) * tests
    return d


def interim(rng, d, c, means, hit, power):
    """How often the trials reject what `hit` says of their rejected hypotheses, at any analysis. A
    hypothesis stays rejected; a trial ends with the event, with disjunctive power with any rejection,
    with conjunctive power when all are rejected."""
    events = done = 0
    while done < RUNS:
        runs = min(10000, RUNS - done)
        data = draw(rng, d, means, runs)
        rejected = np.zeros((runs, c.shape[0]), bool)
        going = np.ones(runs, bool)
        event = np.zeros(runs, bool)
        for k, alpha in enumerate(d['levels'], 1):
            share = k / len(d['levels'])
            p = np.where(rejected, 0, p_values(statistics(d, c, data, share), d, share))
            rejected |= decide(p, d, alpha) & going[:, None]
            event |= hit(rejected) & going
            going &= ~event & ~(rejected.any(axis=1) if power == 0 else rejected.all(axis=1))
        events += event.sum()
        done += runs
    return events / RUNS


DESIGNS = [
    # each method, ANOVA
    *(design(138, (0, 0.9, 0.8, 0), 20, methods=(m,)) for m in (1, 2, 3, 4, 5, 6)),
    design(138, (0, 1, 1, 0.5), 30, n2=15, methods=(3,)),
    design(138, (0, -0.9, -0.7), 20, tails=1, left=1, methods=(5,)),
    design(138, (0, 0.8, 0.7, 0), 25, tails=1, methods=(3,)),
    design(138, (0, 0.8, 0.7, 0), 20, methods=(0,), weights=(0.5, 0.3, 0.2)),
    *(design(139, (0, 0, 0.8, 0.8), 20, methods=(m,)) for m in (1, 3, 5, 6)),
    design(139, (0, 0.2, 0.4, 0.6, 0.8), 20, methods=(3,)),
    design(140, (0.5, 0.4, 0, 0.3), 25, methods=(3,)),
    design(140, (1, 0.8, 0, 0.6), 25, sd=2, methods=(6,)),
    design(141, (0, 0.5, 1), 20, combinations=((-1, 0, 1), (1, -2, 1), (-1, 0.5, 0.5)), methods=(3,)),
    design(141, (0, 0, 1), 20, combinations=((-1, 1, 0), (-0.5, -0.5, 1)), tails=1, methods=(4,)),
    # multivariate, estimated and known covariance
    *(design(142, (0, 0.7, 0.5, 0), 25, tails=1, rho=0.3, known=1, methods=(m,)) for m in (1, 5, 6)),
    design(142, (0, 0.7, 0.5, 0), 25, rho=0.3, methods=(5,)),
    design(143, (0, 0, 0.6), 30, cov=1, rho=0.5, methods=(6,)),
    design(144, (0.5, 0.4, 0, 0.3), 30, rho=0.5, methods=(5,)),
    design(144, (0.9, 0.5, 0.3), 30, cov=2, methods=(1,)),
    design(144, (0.5, 0.4, 0, 0.3), 30, rho=0.5, known=1, methods=(3,)),
    design(144, (0.6, 0.5, 0.4, 0.3, 0.2), 4, rho=0.3, sd=0.5, methods=(2,)),
    design(145, (0.5, 0.5, 0), 30, cov=1, rho=0.6, combinations=((1, 1, 1), (1, 0, -1)), methods=(5,)),
    # gates
    design(144, (0.7, 0.6, 0, 0.6), 30, rho=0.2, gate=1, methods=(5, 6), families=(1, 1, 2, 2)),
    design(138, (0, 1.0, 0.8, 0), 25, gate=1, methods=(1, 5), families=(1, 2, 2)),
    design(144, (0.6, 0, 0.6, 0.5), 30, rho=0.2, known=1, gate=2, methods=(1, 5), families=(1, 1, 2, 2)),
    design(144, (0.6, 0, 0.6, 0.5), 30, rho=0.2, known=1, tails=1, gate=2, methods=(0, 6), families=(1, 1, 2, 2),
           weights=(0.8, 0.2, 0.5, 0.5)),
    design(138, (0, 0, 0.9, 0.9), 25, gate=1, methods=(6, 1), families=(2, 1, 1)),
    design(144, (0.7, 0.6, 0, 0), 30, rho=0.5, gate=1, methods=(1, 1), families=(1, 1, 2, 2)),
    design(144, (0.7, 0.6, 0, 0), 30, rho=0.5, known=1, gate=2, methods=(1, 1), families=(1, 1, 2, 2)),
    design(144, (0, 0.6, 0, 0), 30, rho=0.5, known=1, gate=2, methods=(1, 2), families=(1, 1, 2, 2)),
    # all hypotheses false: the error is that of the complete null
    design(144, (0.6, 0.5, 0.4, 0.4), 30, rho=0.2, gate=1, methods=(5, 6), families=(1, 1, 2, 2)),
    design(144, (0.6, 0.5, 0.4, 0.4), 30, rho=0.2, known=1, gate=2, methods=(1, 5), families=(1, 1, 2, 2)),
    design(138, (0, 0.8, 0.8), 20, methods=(5,)),
    design(144, (0.5, 0.5, 0.5), 20, rho=0.5, methods=(6,)),
]


# With interim analyses after equal steps: the nominal levels of all analyses.
INTERIM = [
    (design(140, (0, 0.5, 0.6), 40, methods=(5,)), (0.01, 0.045)),
    (design(138, (0, 0.7, 0.7, 0), 30, methods=(1,)), (0.005, 0.014, 0.045)),
    (design(144, (0.5, 0.4, 0.4), 40, rho=0.4, methods=(6,)), (0.02, 0.04)),
    (design(142, (0, 0.6, 0.6), 30, rho=0.3, known=1, tails=1, methods=(4,)), (0.01, 0.04)),
    (design(144, (0.6, 0.5, 0, 0.5), 40, rho=0.2, gate=1, methods=(5, 5), families=(1, 1, 2, 2)), (0.01, 0.045)),
]


def null_means(d, false):
    if not false.all():
        return d['means']
    return (0,) * len(d['means'])


def text(values):
    return ','.join(f'{v:g}' for v in values) or '-'


def main():
    rng = np.random.default_rng(SEED)
    lines = []
    for d in DESIGNS:
        c = contrasts(d)
        false = np.abs(c @ np.array(d['means'], float)) > 1e-9
        crit = joint_crit(rng, d, c, c.shape[0]) if d['methods'] == (3,) else None
        null = simulate(rng, d, c, null_means(d, false), crit)
        real = simulate(rng, d, c, d['means'], crit)
        error = (null if false.all() else null[:, ~false]).any(axis=1).mean()
        hits = real[:, false]
        rates = [error, hits.any(axis=1).mean(), hits.all(axis=1).mean(), hits.mean()]
        lines.append('\t'.join(map(str, (
            d['test'], d['tails'], d['left'], text(d['means']), d['sd'], d['n'], d['n2'], d['cov'], d['rho'],
            text(x for row in MATRIX for x in row) if d['cov'] == 2 else '-', d['known'],
            ';'.join(text(row) for row in d['combinations']) or '-', d['gate'], text(d['methods']),
            text(d['families']), text(d['weights']), *(f'{x:.5f}' for x in rates),
            ','.join(f'{x:.5f}' for x in real.mean(axis=0))))))
        print(lines[-1], flush=True)
    with open('checks/data/simulated/multcomp.tsv', 'w', encoding='utf-8') as out:
        out.write('\t'.join(HEAD) + '\n')
        out.writelines(line + '\n' for line in lines)


def write_interim():
    rng = np.random.default_rng(SEED + 1)
    lines = []
    for d, levels in INTERIM:
        d['levels'] = levels
        c = contrasts(d)
        false = np.abs(c @ np.array(d['means'], float)) > 1e-9
        errors = np.ones(len(false), bool) if false.all() else ~false
        rates = []
        for power, hit in ((0, lambda r: r[:, false].any(axis=1)), (1, lambda r: r[:, false].all(axis=1))):
            rates.append(interim(rng, d, c, null_means(d, false), lambda r: r[:, errors].any(axis=1), power))
            rates.append(interim(rng, d, c, d['means'], hit, power))
        lines.append('\t'.join(map(str, (
            d['test'], d['tails'], d['left'], text(d['means']), d['sd'], d['n'], d['n2'], d['cov'], d['rho'], '-',
            d['known'], '-', d['gate'], text(d['methods']), text(d['families']), '-', text(levels),
            *(f'{x:.5f}' for x in rates)))))
        print(lines[-1], flush=True)
    with open('checks/data/simulated/multcomp_interim.tsv', 'w', encoding='utf-8') as out:
        out.write('\t'.join(HEAD[:16] + ['Levels', 'DisjunctiveError', 'Disjunctive', 'ConjunctiveError',
                                         'Conjunctive']) + '\n')
        out.writelines(line + '\n' for line in lines)


if __name__ == '__main__':
    write_interim()
    main()
