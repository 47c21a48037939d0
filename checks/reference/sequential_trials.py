#!/usr/bin/python3
"""Group sequential trials: what a simulation of a design has to come out with.

    /usr/bin/python3 checks/reference/sequential_trials.py

writes checks/data/sequential_trials.tsv: for each design the shares of the trials that reject, and that
accept H0, at each analysis, under H0 and under H1. Independent of the program: the bounds come from
group_sequential.py, and the shares

- of means with known deviations from the exact recursion over the joint normal density,
- of one proportion from the exact distribution of the successes at all analyses,
- of Student's test and of two proportions from trials that numpy simulates (seed 20240611), subject
  by subject or by their sufficient statistics, with their standard error in the column Error.

Student's statistic is compared with the quantile of t at the nominal level of the bound, at the degrees
of freedom of the analysis. Needs numpy and scipy.
"""
import math
import os

import numpy as np
from scipy.stats import binom, norm, t as student

import group_sequential as gs

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")
SEED = 20240611
TRIALS = 400000
POCOCK, OBRIEN, WANG, PETO, DEMETS_P, DEMETS_O, GAMMA, RHO, USER, POWER = range(10)


def bounds(kind, par, t, alpha, tails):
    level = alpha / tails
    if kind in (POCOCK, OBRIEN, WANG):
        return gs.shape_bounds({POCOCK: 0.5, OBRIEN: 0.0, WANG: par}[kind], t, level)[0]
    if kind == PETO:
        return gs.peto_bounds(t, level)[0]
    return gs.spending_bounds(kind, par, t, level)[0]


def student_bounds(kind, par, t, alpha, tails, df):
    """The error that O'Brien and Fleming's boundaries spend is that of Student's statistic, with the
    degrees of freedom of the first analysis (Lan and DeMets 1983, with t for the normal)."""
    if kind != DEMETS_O:
        return bounds(kind, par, t, alpha, tails)
    level = alpha / tails
    spent = lambda x: 2 * student.sf(student.isf(level / 2, df) / math.sqrt(x), df)
    normal = gs.spend
    gs.spend = lambda _kind, _par, x, _alpha: spent(x)
    try:
        return gs.spending_bounds(kind, par, t, level)[0]
    finally:
        gs.spend = normal


def lower_of(upp, tails):
    return [-u for u in upp] if tails == 2 else [-100.0] * len(upp)


def exact(low, upp, t, theta, tails, accepts):
    """Rejections and acceptances by analysis. A design with two tails and acceptance leaves its inner
    region in the middle: the recursion runs over the outer ones by reflection."""
    if not accepts:
        up, lo = gs.exits(lower_of(upp, tails), upp, t, theta)
        return (up + lo if tails == 2 else up), np.zeros(len(t))
    assert tails == 1
    return gs.exits(low, upp, t, theta)


def proportion(upp, sizes, p0, p):
    """One proportion, one tail: the distribution of the successes of the trials that go on."""
    alive = {0: 1.0}
    out, before = [], 0
    for bound, n in zip(upp, sizes):
        new = binom.pmf(np.arange(n - before + 1), n - before, p)
        mass = np.zeros(n + 1)
        for x, f in alive.items():
            mass[x:x + len(new)] += f * new
        z = (np.arange(n + 1) / n - p0) / math.sqrt(p0 * (1 - p0) / n)
        rejected = norm.sf(z) < norm.sf(bound)
        out.append(mass[rejected].sum())
        alive = {x: mass[x] for x in np.flatnonzero(~rejected)}
        before = n
    return np.array(out)


def stages(statistics, levels, p_value):
    """Shares of trials by the analysis that rejects."""
    going = np.ones(len(statistics[0]), bool)
    out = []
    for statistic, level in zip(statistics, levels):
        rejected = going & (p_value(statistic, len(out)) < level)
        out.append(rejected.mean())
        going &= ~rejected
    return np.array(out)


def student_trials(rng, sizes1, sizes2, mean, sd, levels, tails):
    """Two groups with one deviation, or one group: means and sums of squares from what is new."""
    groups = [(sizes1, 0.0), (sizes2, mean)] if sizes2 else [(sizes1, mean)]
    sums = [np.zeros(TRIALS) for _ in groups]
    squares = [np.zeros(TRIALS) for _ in groups]
    statistics, before = [], [0] * len(groups)
    for k in range(len(sizes1)):
        total, df, weight = 0.0, -len(groups), 0.0
        for g, (sizes, centre) in enumerate(groups):
            for _ in range(sizes[k] - before[g]):
                x = rng.normal(centre, sd, TRIALS)
                sums[g] += x
                squares[g] += x * x
            before[g] = n = sizes[k]
            total = total + squares[g] - sums[g] ** 2 / n
            df += n
            weight += 1 / n
        means = [s / n for s, n in zip(sums, before)]
        difference = means[-1] - (means[0] if len(means) == 2 else 0)
        statistics.append((difference / np.sqrt(total / df * weight), df))
    tail = lambda s: student.sf(np.abs(s[0]) if tails == 2 else s[0], s[1]) * tails

    going = np.ones(TRIALS, bool)
    out = []
    for s, level in zip(statistics, levels):
        rejected = going & (tail(s) < level)
        out.append(rejected.mean())
        going &= ~rejected
    return np.array(out)


def proportions_trials(rng, sizes1, sizes2, p1, p2, levels, tails):
    """The test of a difference with the proportions pooled."""
    x1 = np.zeros(TRIALS)
    x2 = np.zeros(TRIALS)
    going = np.ones(TRIALS, bool)
    out, before = [], (0, 0)
    for n1, n2, level in zip(sizes1, sizes2, levels):
        x1 += rng.binomial(n1 - before[0], p1, TRIALS)
        x2 += rng.binomial(n2 - before[1], p2, TRIALS)
        before = (n1, n2)
        pooled = (x1 + x2) / (n1 + n2)
        z = (x2 / n2 - x1 / n1) / np.sqrt(np.maximum(pooled * (1 - pooled), 1e-9) * (1 / n1 + 1 / n2))
        p = norm.sf(np.abs(z) if tails == 2 else z) * tails
        rejected = going & (p < level)
        out.append(rejected.mean())
        going &= ~rejected
    return np.array(out)


ROWS = []


def add(menu, par_list, samples, tails, values, kind, par, t, levels, shares0, shares1, accepts0, accepts1,
        sizes, error):
    """sizes: of both groups together, by analysis."""
    text = lambda x: ",".join(f"{v:.8g}" for v in x)
    stops = shares1 + accepts1
    average = sum(n * p for n, p in zip(sizes[:-1], stops[:-1])) + sizes[-1] * (1 - stops[:-1].sum())
    early = accepts0[:-1]
    average0 = sum(n * p for n, p in zip(sizes[:-1], early)) + sizes[-1] * (1 - early.sum())
    ROWS.append([menu, par_list, samples, tails, ";".join(f"{k}={v:.10g}" for k, v in values.items()), kind, par,
                 text(t), ";".join(f"{r:.8g},{a:.8g}" for r, a in levels), text(shares0), text(shares1),
                 text(accepts0), text(accepts1), f"{average0:.8g}", f"{average:.8g}", f"{error:.2g}"])


def standard_error():
    return 0.5 / math.sqrt(TRIALS)


def main():
    rng = np.random.default_rng(SEED)
    none = lambda t: np.zeros(len(t))
    # Means, known deviations. The sizes make whole numbers at all fractions.
    plans = [(POCOCK, 0, [0.5, 1]), (OBRIEN, 0, [0.2, 0.4, 0.6, 0.8, 1]), (WANG, 0.25, [0.25, 0.5, 0.75, 1]),
             (PETO, 0, [0.3, 0.7, 1]), (DEMETS_P, 0, [0.2, 0.5, 1]), (DEMETS_O, 0, [0.4, 0.6, 0.8, 1]),
             (GAMMA, -4, [0.3, 0.6, 1]), (RHO, 2, [0.1, 0.5, 0.9, 1]), (OBRIEN, 0, [0.5, 1]),
             (POCOCK, 0, [0.2, 0.4, 0.6, 0.8, 1])]
    for index, (kind, par, t) in enumerate(plans):
        tails = 1 + index % 2
        alpha = 0.05 if index % 3 else 0.025
        upp = bounds(kind, par, t, alpha, tails)
        levels = [(tails * norm.sf(u), 1.0) for u in upp]
        if index % 4 < 2:
            n, sd, effect = 60, 1.2, 0.45
            theta = effect / (sd / math.sqrt(n))
            sizes = [round(x * n) for x in t]
            values = {0: alpha, 57: 0.5, 58: 0.5 + effect, 2: sd, 85: n}
            samples = 1
        else:
            n, ratio, sd1, sd2, effect = 100, 1.5, 1.0, 1.4, 0.42
            theta = effect / math.sqrt(sd1**2 / n + sd2**2 / (ratio * n))
            sizes = [round(x * n) + round(x * ratio * n) for x in t]
            values = {0: alpha, 61: 0.1, 62: 0.1 + effect, 216: sd1, 217: sd2, 4: n, 5: ratio}
            samples = 2
        shares = [exact(None, upp, t, drift, tails, False)[0] for drift in (0.0, theta)]
        add(600, 0, samples, tails, values, kind, par, t, levels, *shares, none(t), none(t), sizes, 0)
    # Levels of the user's own, with acceptance: the trial also stops for futility.
    for t, reject, accept in (([0.5, 1], [0.005, 0.022], [0.5, 0.022]),
                              ([0.3, 0.6, 1], [0.001, 0.01, 0.02], [0.7, 0.3, 0.02]),
                              ([0.2, 0.4, 0.8, 1], [0.02, 0.02, 0.02, 0.02], [0.9, 0.6, 0.2, 1])):
        n, sd, effect = 80, 1.5, 0.4
        theta = effect / (sd / math.sqrt(n))
        upp, low = norm.isf(reject), np.maximum(norm.isf(accept), -100)
        pairs = [gs.exits(list(low), list(upp), t, drift) for drift in (0.0, theta)]
        values = {0: 0.025, 57: 0, 58: effect, 2: sd, 85: n}
        add(600, 0, 1, 1, values, USER, 0, t, list(zip(reject, accept)), pairs[0][0], pairs[1][0], pairs[0][1],
            pairs[1][1], [round(x * n) for x in t], 0)
    # The power family, one tail: both bounds meet at the end.
    for delta, t in ((0, [0.25, 0.5, 0.75, 1]), (0.25, [0.5, 1]), (-0.5, [0.3, 0.6, 1])):
        alpha, beta, sd, n = 0.025, 0.1, 1.0, 120
        c1, c2, low, upp = gs.power_family(delta, t, alpha, beta, False)
        # The family is made for the drift at which its power is 1 - beta.
        effect = (c1 + c2) * sd / math.sqrt(n)
        pairs = [gs.exits(low, upp, t, drift) for drift in (0.0, c1 + c2)]
        values = {0: alpha, 1: 1 - beta, 57: 0, 58: effect, 2: sd, 85: n}
        levels = [(norm.sf(u), norm.sf(m)) for u, m in zip(upp, low)]
        add(600, 0, 1, 1, values, POWER, delta, t, levels, pairs[0][0], pairs[1][0], pairs[0][1], pairs[1][1],
            [round(x * n) for x in t], 0)
    # Student's test.
    for kind, par, t, tails, samples in ((OBRIEN, 0, [0.5, 1], 2, 2), (POCOCK, 0, [0.25, 0.5, 0.75, 1], 1, 1),
                                         (DEMETS_O, 0, [0.4, 0.7, 1], 2, 1), (GAMMA, 1, [0.3, 0.6, 1], 1, 2)):
        alpha, n, sd, effect = 0.05, 20, 2.0, 1.6
        sizes = [round(x * n) for x in t]
        upp = student_bounds(kind, par, t, alpha, tails, samples * (sizes[0] - 1))
        levels = [tails * norm.sf(u) for u in upp]
        shares = [student_trials(rng, sizes, sizes if samples == 2 else None, mean, sd, levels, tails)
                  for mean in (0.0, effect)]
        values = ({0: alpha, 57: 1, 58: 1 + effect, 2: sd, 85: n} if samples == 1 else
                  {0: alpha, 61: 0, 62: effect, 2: sd, 4: n, 5: 1})
        add(600, 1, samples, tails, values, kind, par, t, [(p, 1.0) for p in levels], *shares, none(t), none(t),
            [samples * x for x in sizes], standard_error())
    # One proportion, exactly; two by simulation.
    for kind, par, t in ((OBRIEN, 0, [0.25, 0.5, 0.75, 1]), (POCOCK, 0, [0.5, 1]), (RHO, 2, [0.4, 0.7, 1])):
        alpha, n, p0, p1 = 0.05, 80, 0.3, 0.45
        upp = bounds(kind, par, t, alpha, 1)
        sizes = [round(x * n) for x in t]
        shares = [proportion(upp, sizes, p0, p) for p in (p0, p1)]
        add(620, 0, 1, 1, {0: alpha, 35: p0, 83: p1, 85: n}, kind, par, t, [(norm.sf(u), 1.0) for u in upp],
            *shares, none(t), none(t), sizes, 0)
    for kind, par, t, tails in ((DEMETS_O, 0, [0.25, 0.5, 0.75, 1], 2), (WANG, 0.1, [0.3, 0.6, 1], 1)):
        alpha, n, p1, p2 = 0.05, 100, 0.3, 0.5
        upp = bounds(kind, par, t, alpha, tails)
        levels = [tails * norm.sf(u) for u in upp]
        sizes = [round(x * n) for x in t]
        middle = (p1 + p2) / 2  # what both are under H0
        shares = [proportions_trials(rng, sizes, sizes, *pair, levels, tails)
                  for pair in ((middle, middle), (p1, p2))]
        add(620, 0, 2, tails, {0: alpha, 51: 0, 8: p1, 69: p2, 4: n, 5: 1}, kind, par, t,
            [(p, 1.0) for p in levels], *shares, none(t), none(t), [2 * x for x in sizes], standard_error())

    names = ["Menu", "List", "Samples", "Tails", "Values", "Type", "Parameter", "Fractions", "Levels", "RejectH0",
             "RejectH1", "AcceptH0", "AcceptH1", "AverageH0", "AverageH1", "Error"]
    with open(os.path.join(DATA, "sequential_trials.tsv"), "w", encoding="utf-8") as file:
        for row in [names] + ROWS:
            file.write("\t".join(str(cell) for cell in row) + "\n")
    print(len(ROWS), "designs")


if __name__ == "__main__":
    main()
