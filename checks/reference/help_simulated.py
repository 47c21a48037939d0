#!/usr/bin/env python3
"""What the simulated worked examples of the help estimate: a line for each page, "number what value".

Independent of the program: the studies are drawn with numpy and judged by the statistics of the other
programs here (survivalsim.py, ranksim.py, friedman.py, multcomp_simulated.py, sequential_trials.py), each
from its definition. 200000 studies under H0 and under H1, so that a rate has a standard error of at most
0.0012; designs of means with known deviations by exact integration.

Needs Python 3 with numpy and scipy. Usage: help_simulated.py [number ...]; all of them take half an hour.
"""
import math
import sys

import numpy as np
from scipy import optimize, stats

import friedman
import group_sequential as gs
import multcomp_simulated as mc
import ranksim
import sequential_trials as seq
import survivalsim as surv

STUDIES = 200_000
SEED = 20261124


def show(number, what, values):
    print(number, what, *(f'{v:.5g}' for v in np.atleast_1d(values)), flush=True)


# --- Survival ---------------------------------------------------------------------------------------

def study(loss1, loss2, accrual, total, n1, n2, **more):
    return {13: loss1, 45: loss2, 33: 0, 10: accrual, 11: total, surv.N1: n1, surv.N2: n2, **more}


def table(*rows):
    return {316: rows}


# Number: statistic, model, group 1, group 2 (hazards of exponential survival, else medians), study.
SURVIVAL = {
    9632: ('logrank', 'exponential', 0.35, 0.22, study(0.05, 0.05, 2, 5, 90, 90)),
    9333: ('logrank', 'weibull', 1.5, 2.1, {**study(0.05, 0.05, 2, 5, 60, 60), 329: 1.6}),
    9334: ('logrank', 'gamma', 2.0, 2.8, {**study(0.03, 0.03, 1, 5, 70, 70), 329: 2}),
    9335: ('logrank', 'lognormal', 1.0, 1.6, {**study(0.1, 0.1, 1.5, 4, 80, 80), 27: 0.9}),
    9336: ('logrank', 'piecewise', None, None,
           {**study(0, 0, 1, 4, 100, 100), **table((0, .5, .5, .02, .02), (0.5, .4, .2, .02, .02),
                                                   (2, .2, .1, .02, .02))}),
    9386: ('gehan', 'exponential', 0.6, 0.36, study(0.1, 0.1, 1, 3, 75, 75)),
    9387: ('gehan', 'weibull', 1.2, 2.0, {**study(0.05, 0.05, 1, 4, 90, 90), 329: 0.8}),
    9388: ('gehan', 'gamma', 1.5, 2.0, {**study(0.05, 0.05, 2, 5, 60, 60), 329: 3}),
    9389: ('gehan', 'lognormal', 2.0, 3.0, {**study(0.04, 0.04, 2, 6, 85, 85), 27: 1}),
    9390: ('gehan', 'piecewise', None, None,
           {**study(0, 0, 1, 3, 80, 80), **table((0, .9, .4, .05, .05), (1, .3, .3, .05, .05))}),
    9391: ('coxmantel', 'exponential', 0.4, 0.25, study(0.05, 0.05, 2, 6, 80, 80)),
    9392: ('coxmantel', 'weibull', 2.0, 2.8, {**study(0.02, 0.02, 2, 6, 65, 65), 329: 1.5}),
    9393: ('coxmantel', 'gamma', 1.0, 1.5, {**study(0.1, 0.1, 1, 3, 75, 75), 329: 1.5}),
    9394: ('coxmantel', 'lognormal', 1.5, 2.2, {**study(0.05, 0.05, 1, 5, 70, 70), 27: 0.8}),
    9395: ('coxmantel', 'piecewise', None, None,
           {**study(0, 0, 2, 5, 110, 110), **table((0, .2, .2, .03, .03), (1, .5, .3, .03, .03))}),
    9396: ('f', 'exponential', 0.5, 0.25, study(0.05, 0.05, 1, 4, 45, 45)),
    9397: ('fhazard', 'weibull', 1.0, 1.6, {**study(0.05, 0.05, 1, 4, 40, 40), 329: 1.4}),
    9398: ('fhazard', 'gamma', 1.5, 2.3, {**study(0.05, 0.05, 1, 4, 45, 45), 329: 2}),
    9399: ('fhazard', 'lognormal', 1.2, 2.0, {**study(0.05, 0.05, 1, 5, 50, 50), 27: 0.9}),
    9400: ('fhazard', 'piecewise', None, None,
           {**study(0, 0, 1, 4, 60, 60), **table((0, .8, .4, .04, .04), (1, .5, .3, .04, .04))}),
    9401: ('peto', 'exponential', 0.3, 0.18, study(0.02, 0.02, 2, 6, 85, 85)),
    9402: ('peto', 'weibull', 1.8, 2.6, {**study(0.05, 0.05, 2, 5, 75, 75), 329: 1.3}),
    9403: ('peto', 'gamma', 2.5, 3.4, {**study(0.03, 0.03, 1, 6, 80, 80), 329: 2.5}),
    9404: ('peto', 'lognormal', 1.0, 1.5, {**study(0.05, 0.05, 1, 4, 80, 80), 27: 0.85}),
    9405: ('peto', 'piecewise', None, None,
           {**study(0, 0, 1, 4, 95, 95), **table((0, .6, .3, .05, .05), (0.5, .4, .3, .05, .05))}),
}


def survival(number):
    method, model, first, second, v = SURVIVAL[number]
    rng = np.random.default_rng([SEED, number])
    pairs = [(1, 1), (1, 2)] if model == 'piecewise' else [(first, first), (first, second)]
    rates = [sum(surv.decisions(method, surv.studies(rng, model, *pair, v), 2, False, 0.05, 1, 0, None, v).sum()
                 for _ in range(STUDIES // surv.BLOCK)) / STUDIES for pair in pairs]
    show(number, 'level, power', rates)


# Number: hazards of group 1 and 2 and sizes of each stratum, the loss rate, accrual and study time.
# Survival by the end of the study is what 9480 enters: all patients are there from the beginning.
STRATA = {
    9480: (((-math.log(.5), -math.log(.66), 30, 30), (-math.log(.2), -math.log(.38), 40, 80)), 0, 0, 1),
    9484: (((.2, .12, 30, 30), (.6, .36, 40, 80)), .05, 2, 5),
}


def strata(number):
    """Two strata of 60 and 120 patients; the larger one has twice as many in group 2."""
    groups, loss, accrual, total = STRATA[number]
    rng = np.random.default_rng([SEED, number])
    rates = [0, 0]
    for _ in range(STUDIES // surv.BLOCK):
        for h in (0, 1):
            score = variance = 0
            for a, b, n1, n2 in groups:
                v = study(loss, loss, accrual, total, n1, n2)
                s, w = surv.score('logrank', surv.studies(rng, 'exponential', a, b if h else a, v), v)
                score, variance = score + s, variance + w
            rates[h] += (abs(score / np.sqrt(variance)) > stats.norm.ppf(0.975)).sum() / STUDIES
    show(number, 'level, power', rates)


# --- Ranks ------------------------------------------------------------------------------------------

def rank(number, tails, test, draw, n1, n2, shift, scale):
    rates = [ranksim.rate(lambda: test(draw(n1), draw(n2) * s + d, tails), STUDIES)
             for d, s in ((0.0, 1.0), (shift, scale))]
    show(number, 'level, power', rates)


def groups(number, test, means, n):
    rates = [ranksim.rate(lambda: test([ranksim.normal(n) + m for m in row]), STUDIES)
             for row in ([0] * len(means), means)]
    show(number, 'level, power', rates)


def blocks(number):
    rng = np.random.default_rng([SEED, number])
    friedman.RUNS = STUDIES
    cov = friedman.covariance(0, 4, 2, 0.4)
    show(number, 'level, power', [friedman.rate(rng, m, cov, 24) for m in ((0, 0, 0, 0), (0, 0.5, 1, 1))])


RANKS = {
    9344: lambda k: rank(k, 2, ranksim.scores, ranksim.normal, 40, 40, 0.6, 1),
    9345: lambda k: groups(k, ranksim.kruskal, (0, 0.4, 0.8), 25),
    9346: lambda k: rank(k, 2, ranksim.siegel, ranksim.normal, 40, 40, 0, 1.75),
    9347: lambda k: rank(k, 1, ranksim.ansari, ranksim.normal, 35, 35, 0, 1.8),
    9348: lambda k: rank(k, 2, ranksim.klotz, ranksim.normal, 40, 40, 0, 1.6),
    9349: lambda k: rank(k, 2, ranksim.mood, ranksim.normal, 45, 45, 0, 1.6),
    9350: lambda k: rank(k, 1, ranksim.conover, ranksim.exponential, 40, 40, 0, 1.8),
    9412: lambda k: rank(k, 2, ranksim.kolmogorov, ranksim.normal, 50, 50, 0.7, 1),
    9413: lambda k: groups(k, ranksim.jonckheere, (0, 0.3, 0.6, 0.9), 20),
    9678: blocks,
}


# --- Many hypotheses --------------------------------------------------------------------------------

def hypotheses(number):
    d = HYPOTHESES[number]
    rng = np.random.default_rng([SEED, number])
    mc.RUNS = STUDIES
    c = mc.contrasts(d)
    false = np.abs(c @ np.array(d['means'], float)) > 1e-9
    crit = mc.joint_crit(rng, d, c, c.shape[0]) if d['methods'] == (3,) else None
    null = mc.simulate(rng, d, c, mc.null_means(d, false), crit)
    real = mc.simulate(rng, d, c, d['means'], crit)
    hits = real[:, false]
    show(number, 'error', (null if false.all() else null[:, ~false]).any(axis=1).mean())
    show(number, 'disjunctive, conjunctive, average', [hits.any(axis=1).mean(), hits.all(axis=1).mean(), hits.mean()])
    show(number, 'each test, true ones under H0', np.where(false, real.mean(axis=0), null.mean(axis=0)))


def doses(method, **more):
    return mc.design(138, (0, 0.9, 0.8, 0), 20, methods=(method,), **more)


HYPOTHESES = {
    9439: doses(3),
    9440: mc.design(139, (0, 0, 0.8, 0.8), 20, methods=(3,)),
    9441: mc.design(140, (0.5, 0.4, 0, 0.3), 25, methods=(3,)),
    9442: mc.design(141, (0, 0.5, 1), 20, combinations=((-1, 0, 1), (1, -2, 1), (-1, 0.5, 0.5)), methods=(3,)),
    9443: mc.design(142, (0, 0.7, 0.5, 0), 25, tails=1, rho=0.3, known=1, methods=(2,)),
    9444: mc.design(143, (0, 0, 0.6), 30, cov=1, rho=0.5, methods=(1,)),
    9445: mc.design(144, (0.7, 0.6, 0, 0.6), 30, rho=0.2, gate=1, methods=(5, 6), families=(1, 1, 2, 2)),
    9446: mc.design(145, (0.5, 0.5, 0), 30, cov=1, rho=0.6, combinations=((1, 1, 1), (1, 0, -1)), methods=(4,)),
    65: doses(1),
    66: doses(2),
    67: doses(4),
    68: doses(5),
    69: doses(6),
    70: mc.design(138, (0, 0.8, 0.7, 0), 20, methods=(0,), weights=(0.5, 0.3, 0.2)),
    71: mc.design(144, (0.6, 0, 0.6, 0.5), 30, rho=0.2, known=1, gate=2, methods=(1, 5), families=(1, 1, 2, 2)),
}


# --- Designs ----------------------------------------------------------------------------------------

def stops(number, shares0, shares1, sizes):
    for h, shares in enumerate((shares0, shares1)):
        show(number, f'stops under H{h}, over all', [*shares, sum(shares)])
    # A trial that rejects a true H0 counts with its full size.
    show(number, 'average sizes', [sizes[-1], sum(n * p for n, p in zip(sizes, shares1)) +
                                   sizes[-1] * (1 - sum(shares1))])


def mean_design(number):
    """40 subjects, mean 0.5, deviation 1, O'Brien and Fleming, one-sided at 0.05."""
    t, n = [0.25, 0.5, 0.75, 1], 40
    upp = seq.bounds(seq.OBRIEN, 0, t, 0.05, 1)
    shares = [seq.exact(None, upp, t, theta, 1, False)[0] for theta in (0.0, 0.5 * math.sqrt(n))]
    stops(number, *shares, [round(x * n) for x in t])


def student_design(number):
    """Two groups of 20, effect 1.6, deviation 2, O'Brien and Fleming, two-sided at 0.05."""
    t, n = [0.5, 1], 20
    levels = [2 * stats.norm.sf(u) for u in seq.bounds(seq.OBRIEN, 0, t, 0.05, 2)]
    sizes = [round(x * n) for x in t]
    rng = np.random.default_rng([SEED, number])
    shares = [seq.student_trials(rng, sizes, sizes, mean, 2.0, levels, 2) for mean in (0.0, 1.6)]
    stops(number, *shares, [2 * x for x in sizes])


def proportion_design(number):
    """One proportion of 80, 0.3 against 0.45, Pocock, one-sided at 0.05: exactly."""
    t, n = [0.5, 1], 80
    upp = seq.bounds(seq.POCOCK, 0, t, 0.05, 1)
    sizes = [round(x * n) for x in t]
    stops(number, *[seq.proportion(upp, sizes, 0.3, p) for p in (0.3, 0.45)], sizes)


def futility_design(number):
    """120 subjects, deviation 1, power family with Delta 0, one-sided at 0.025, made for a power of 0.8."""
    t, n = [0.25, 0.5, 0.75, 1], 120
    c1, c2, low, upp = gs.power_family(0, t, 0.025, 0.2, False)
    show(number, 'mean for which it is made', (c1 + c2) / math.sqrt(n))
    for h, drift in enumerate((0.0, c1 + c2)):
        up, lo = gs.exits(low, upp, t, drift)
        show(number, f'rejections under H{h}, over all', [*up, sum(up)])
        show(number, f'acceptances under H{h}', lo)
        leave = up + lo if h else lo
        sizes = [round(x * n) for x in t]
        show(number, f'average under H{h}', sum(s * p for s, p in zip(sizes[:-1], leave)) +
             n * (1 - sum(leave[:-1])))


def own_levels(number):
    """80 subjects, mean 0.4, deviation 1.5, one-sided, with levels of one's own for both decisions."""
    t, n = [0.5, 1], 80
    upp, low = list(stats.norm.isf([0.005, 0.022])), list(stats.norm.isf([0.5, 0.022]))
    for h, drift in enumerate((0.0, 0.4 * math.sqrt(n) / 1.5)):
        up, lo = gs.exits(low, upp, t, drift)
        show(number, f'rejections under H{h}, over all', [*up, sum(up)])
        show(number, f'acceptances under H{h}', lo)
        leave = up + lo if h else lo
        show(number, f'average under H{h}', n / 2 * leave[0] + n * (1 - leave[0]))


def survival_design(number):
    """Two groups of 80 with hazards of 0.35 and 0.2, accrual over 2 of 5 years, O'Brien and Fleming's boundaries
    at half of the information 1/(1/E1 + 1/E2) and at the end, two-sided at 0.05; times in years."""
    n, accrual, total, hazards = 80, 2, 5, (0.35, 0.2)
    upp = seq.bounds(seq.OBRIEN, 0, [0.5, 1], 0.05, 2)
    rng = np.random.default_rng([SEED, number])

    def events(hazard, t):
        first = max(t - accrual, 0)  # the shortest time that a patient has been there
        there = min(accrual, t)
        return there - (math.exp(-hazard * first) - math.exp(-hazard * t)) / hazard

    shares, times = [], []
    for pair in ((hazards[0], hazards[0]), hazards):
        information = lambda t: 1 / sum(1 / events(h, t) for h in pair)
        times.append(optimize.brentq(lambda t: information(t) - information(total) / 2, 0.1, total))
        second = np.repeat([False, True], n) * np.ones((surv.BLOCK, 1), bool)
        rates = np.zeros(2)
        for _ in range(STUDIES // surv.BLOCK):
            entry = rng.random(second.shape) * accrual
            life = rng.exponential(size=second.shape) / np.where(second, pair[1], pair[0])
            going = np.ones(surv.BLOCK, bool)
            for k, now in enumerate((times[-1], total)):
                follow = now - entry
                there = follow > 0
                data = np.where(there, np.minimum(life, follow), np.inf), (life < follow) & there, there, second
                score, variance = surv.score('logrank', data, {})
                rejected = going & (np.abs(score / np.sqrt(variance)) > upp[k])
                rates[k] += rejected.sum() / STUDIES
                going &= ~rejected
        shares.append(rates)
    stops(number, *shares, [times[1], total])


def interim_families(number):
    """Three comparisons with a control at three analyses, Bonferroni: mc.INTERIM has the design. A study ends
    with the first rejection; it counts where one of the hypotheses in question was rejected."""
    d, levels = mc.INTERIM[1]
    rng = np.random.default_rng([SEED, number])
    c = mc.contrasts(d)
    false = np.abs(c @ np.array(d['means'], float)) > 1e-9
    shares = np.zeros((2, len(levels)))
    tests = np.zeros((2, len(levels), len(false)))
    for h, counted in ((0, ~false), (1, false)):
        for _ in range(STUDIES // 10_000):
            data = mc.draw(rng, d, d['means'], 10_000)
            going = np.ones(10_000, bool)
            for k, alpha in enumerate(levels):
                share = (k + 1) / len(levels)
                rejected = mc.decide(mc.p_values(mc.statistics(d, c, data, share), d, share), d, alpha)
                rejected &= going[:, None]
                shares[h, k] += rejected[:, counted].any(axis=1).sum() / STUDIES
                tests[h, k] += rejected.sum(axis=0) / STUDIES
                going &= ~rejected.any(axis=1)
    stops(number, *shares, [40, 80, 120])
    for test, h in enumerate(false.astype(int)):
        show(number, f'test {test + 1}, over all', [*tests[h, :, test], tests[h, :, test].sum()])


def goodness(number):
    """Pearson's statistic of the categories of a table: proportions under H0, under H1, subjects."""
    null, real, n = GOODNESS[number]
    rng = np.random.default_rng([SEED, number])
    critical = stats.chi2.isf(0.05, len(null) - 1)
    expected = n * np.array(null)
    show(number, 'level, power', [
        (((rng.multinomial(n, p, STUDIES) - expected) ** 2 / expected).sum(axis=1) > critical).mean()
        for p in (null, real)])


# The categories of the examples' own tables.
GOODNESS = {
    9326: ((0.5625, 0.1875, 0.1875, 0.0625), (0.5, 0.2, 0.2, 0.1), 300),
    9407: ((0.135, 0.271, 0.271, 0.18, 0.143), (0.2, 0.26, 0.22, 0.15, 0.17), 200),
    9408: ((0.125,) * 8, (0.09, 0.11, 0.13, 0.15, 0.15, 0.14, 0.12, 0.11), 400),
}


def distances(number):
    """Kolmogorov's and Smirnov's test of a standard normal distribution, 40 values of one shifted by 0.5."""
    rng = np.random.default_rng([SEED, number])
    n, critical = 40, stats.kstwo.isf(0.05, 40)
    up, down = np.arange(1, n + 1) / n, np.arange(n) / n
    rates = []
    for mean in (0, 0.5):
        f = stats.norm.cdf(np.sort(rng.normal(mean, 1, (STUDIES, n)), axis=1))
        d = np.maximum((up - f).max(axis=1), (f - down).max(axis=1))
        rates.append((d > critical).mean())
    show(number, 'level, power', rates)


SURVIVAL[9331] = ('lifetable', 'piecewise', None, None,
                  {**study(0, 0, 2, 5, 200, 200), **table((0, .2, .2, .05, .05), (1, .4, .2, .05, .05),
                                                          (3, .3, .25, .05, .05))})
SURVIVAL[9503] = ('logrank', 'exponential', 0.3, 0.2, study(0.05, 0.05, 2, 5, 120, 120))

OTHERS = {9326: goodness, 9407: goodness, 9408: goodness, 9410: distances, 9480: strata, 9484: strata, 72: interim_families,
          9428: survival_design, 73: mean_design, 74: student_design, 75: proportion_design,
          76: futility_design, 77: own_levels}


def main():
    wanted = [int(n) for n in sys.argv[1:]]
    for cases, work in ((SURVIVAL, survival), (HYPOTHESES, hypotheses)):
        for number in cases:
            if not wanted or number in wanted:
                work(number)
    for cases in (RANKS, OTHERS):
        for number, work in cases.items():
            if not wanted or number in wanted:
                work(number)


if __name__ == '__main__':
    main()
