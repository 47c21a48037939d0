#!/usr/bin/python3
"""Group sequential boundaries, crossing probabilities and designs by exact integration.

    /usr/bin/python3 checks/reference/group_sequential.py

writes checks/data/group_sequential_bounds.tsv, _families.tsv, _exits.tsv, _designs.tsv,
_two_boundaries.tsv and _times.tsv, and checks/data/validation/group_sequential.tsv. --designs writes
the last four alone. Needs numpy and scipy.

The sub-densities of the standardised statistic are carried from analysis to analysis on the nodes
of Gauss and Legendre (panels of 24 nodes), in 64 bits: twice the panels change no figure by more
than 1e-12, which is checked here. The program integrates by Simpson's rule in 32 bits.

Two-sided designs are solved one-sided at half the level, as the program does.
"""

import math
import os
import sys

import numpy as np
from scipy.integrate import quad
from scipy.optimize import brentq, fsolve
from scipy.stats import norm

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, "..", "data")

NODES, WEIGHTS = np.polynomial.legendre.leggauss(24)


def rule(a, b, panels):
    edges = np.linspace(a, b, panels + 1)
    half = np.diff(edges) / 2
    mid = (edges[1:] + edges[:-1]) / 2
    x = (mid[:, None] + half[:, None] * NODES[None, :]).ravel()
    w = (half[:, None] * WEIGHTS[None, :]).ravel()
    return x, w


def exits(low, upp, info, theta, panels=14):
    """Probabilities of leaving above and below at each analysis."""
    k = len(upp)
    info = np.asarray(info, float)
    root = np.sqrt(info)
    up = np.zeros(k)
    lo = np.zeros(k)
    up[0] = norm.sf(upp[0] - theta * root[0])
    lo[0] = norm.cdf(low[0] - theta * root[0])
    x = w = f = None
    for i in range(k):
        if i > 0:
            d = info[i] - info[i - 1]
            s = math.sqrt(d)
            shift = d * theta
            up[i] = np.sum(w * f * norm.sf((upp[i] * root[i] - x * root[i - 1] - shift) / s))
            lo[i] = np.sum(w * f * norm.cdf((low[i] * root[i] - x * root[i - 1] - shift) / s))
        centre = theta * root[i]
        a = max(low[i], centre - 11)
        b = min(upp[i], centre + 11)
        if b <= a:
            return up, lo
        y, wy = rule(a, b, panels)
        if i == 0:
            fy = norm.pdf(y - theta * root[0])
        else:
            step = (y[:, None] * root[i] - x[None, :] * root[i - 1] - shift) / s
            fy = (norm.pdf(step) * root[i] / s) @ (w * f)
        x, w, f = y, wy, fy
    return up, lo


def upper_total(upp, t):
    return exits([-math.inf] * len(upp), upp, t, 0.0)[0].sum()


def spend(kind, par, t, alpha):
    if kind == 4:
        return min(alpha * math.log(1 + (math.e - 1) * t), alpha)
    if kind == 5:
        return 2 - 2 * norm.cdf(norm.ppf(1 - alpha / 2) / math.sqrt(t))
    if kind == 6:
        if par == 0:
            return alpha * t
        return alpha * (1 - math.exp(-par * t)) / (1 - math.exp(-par))
    return alpha * t**par


def shape_bounds(delta, t, alpha):
    def bounds(c):
        return [c * x ** (delta - 0.5) for x in t]

    c = brentq(lambda c: upper_total(bounds(c), t) - alpha, 0.1, 8, xtol=1e-12)
    return bounds(c), c


def peto_bounds(t, alpha):
    def bounds(c):
        return [3.0] * (len(t) - 1) + [c]

    c = brentq(lambda c: upper_total(bounds(c), t) - alpha, 0.1, 8, xtol=1e-12)
    return bounds(c), c


def spending_bounds(kind, par, t, alpha):
    bounds = []
    spent = 0.0
    for i, x in enumerate(t):
        spent = spend(kind, par, x, alpha)
        if i == 0:
            bounds.append(norm.isf(max(spent, 1e-5)))
            continue

        def rest(c):
            return upper_total(bounds + [c], t[: i + 1]) - spent

        bounds.append(brentq(rest, 0.0, 12, xtol=1e-12))
    return bounds, bounds[-1]


def power_family(delta, t, alpha, beta, two_sided):
    """C1, C2 and both boundaries; the drift times the root of the information is (C1 + C2) at the
    end."""

    def bounds(c):
        c1, c2 = c
        upp = [min(c1 * x ** (delta - 0.5), 10) for x in t]
        low = [(c1 + c2) * math.sqrt(x) - c2 * x ** (delta - 0.5) for x in t]
        if two_sided:
            low = [-100.0 if m <= 0 else m for m in low]
        low = [min(m, u) for m, u in zip(low, upp)]
        low[-1] = upp[-1]
        return low, upp

    def sides(c):
        low, upp = bounds(c)
        above = exits(low, upp, t, 0.0)[0].sum()
        below = exits(low, upp, t, c[0] + c[1])[1].sum()
        return [above - alpha, below - beta]

    c, _, flag, _ = fsolve(sides, [norm.isf(alpha) + 0.1, norm.isf(beta) + 0.1], xtol=1e-12,
                           full_output=True)
    if flag != 1 or max(map(abs, sides(c))) > 1e-9:
        return None
    low, upp = bounds(c)
    return c[0], c[1], low, upp


def equal(k):
    return [(i + 1) / k for i in range(k)]


UNEQUAL = {2: [[0.3, 1], [0.7, 1]], 3: [[0.2, 0.5, 1], [0.5, 0.8, 1]],
           4: [[0.1, 0.4, 0.7, 1]], 5: [[0.3, 0.45, 0.6, 0.8, 1], [0.1, 0.2, 0.5, 0.9, 1]],
           6: [[0.25, 0.4, 0.5, 0.7, 0.85, 1]], 8: [[0.1, 0.2, 0.35, 0.4, 0.6, 0.75, 0.9, 1]]}


def text(values, digits=10):
    return ",".join(f"{v:.{digits}g}" for v in values)


def constants(out):
    def row(kind, par, t, alpha, tails, bounds):
        out.append([kind, par, tails, alpha, text(t), text(bounds, 9)])

    shapes = {0: 0.5, 1: 0.0}
    for kind in (0, 1):
        for k in range(1, 11):
            for alpha, tails in ((0.05, 2), (0.025, 1), (0.01, 2), (0.1, 2), (0.001, 1)):
                if k > 6 and alpha in (0.025, 0.001):
                    continue
                t = equal(k)
                one = alpha / 2 if tails == 2 else alpha
                row(kind, 0, t, alpha, tails, shape_bounds(shapes[kind], t, one)[0])
    for kind in (0, 1):
        for k, sets in UNEQUAL.items():
            for t in sets:
                row(kind, 0, t, 0.05, 2, shape_bounds(shapes[kind], t, 0.025)[0])
    for delta in (0.1, 0.25, 0.4, 0.7, -0.5):
        for t in (equal(2), equal(5), equal(10), UNEQUAL[3][0], UNEQUAL[5][0]):
            row(2, delta, t, 0.05, 2, shape_bounds(delta, t, 0.025)[0])
    for k in range(1, 11):
        row(3, 0, equal(k), 0.05, 2, peto_bounds(equal(k), 0.025)[0])
    for t in (UNEQUAL[3][1], UNEQUAL[5][1]):
        row(3, 0, t, 0.05, 1, peto_bounds(t, 0.05)[0])
    for kind, pars in ((4, [0]), (5, [0]), (6, [-4, -2, 0, 1]), (7, [1, 1.5, 2, 3])):
        for par in pars:
            for t in (equal(1), equal(2), equal(3), equal(5), UNEQUAL[3][1], UNEQUAL[5][0],
                      UNEQUAL[6][0]):
                for alpha, tails in ((0.05, 2), (0.05, 1)):
                    one = alpha / 2 if tails == 2 else alpha
                    row(kind, par, t, alpha, tails, spending_bounds(kind, par, t, one)[0])
    for k in (8, 10):
        row(4, 0, equal(k), 0.05, 2, spending_bounds(4, 0, equal(k), 0.025)[0])
        row(6, -2, equal(k), 0.05, 2, spending_bounds(6, -2, equal(k), 0.025)[0])


def families(out):
    for delta in (-0.5, -0.25, 0, 0.25):
        for k in range(1, 7):
            for alpha, beta, tails in ((0.05, 0.1, 1), (0.025, 0.2, 1), (0.05, 0.1, 2)):
                one = alpha / 2 if tails == 2 else alpha
                found = power_family(delta, equal(k), one, beta, tails == 2)
                if found is None or (tails == 2 and delta > 0):
                    continue
                c1, c2, low, upp = found
                out.append([delta, tails, alpha, text(equal(k)), text(upp, 9),
                            beta, f"{c1:.9g}", f"{c2:.9g}", text(low, 9)])


def single(x):
    return float(np.float32(x))


def crossings(out):
    """Exits of given boundaries, whose decimals are exact in 32 bits."""
    rng = np.random.default_rng(6101)
    for theta in (0, 0.5, 1, 2, 3, 4, 5, 6, 8):
        for k in (1, 2, 3, 5, 10):
            for lower in ("none", "mirror", "futility"):
                t = equal(k) if k != 3 else UNEQUAL[3][0]
                upp = [single(round(2 + rng.uniform(0, 1.5) * math.sqrt(1 - x), 3)) for x in t]
                if lower == "none":
                    low = [-100.0] * k
                elif lower == "mirror":
                    low = [-u for u in upp]
                else:
                    low = [single(round(-0.5 + 2 * x, 3)) for x in t]
                    low[-1] = upp[-1]
                info = [single(x) for x in t]
                up, lo = exits(low, upp, info, theta)
                fine = exits(low, upp, info, theta, panels=28)
                assert np.max(np.abs(up - fine[0])) < 1e-12, (theta, k, lower)
                assert np.max(np.abs(lo - fine[1])) < 1e-12, (theta, k, lower)
                out.append([theta, text(info), text(upp), text(low),
                            text(up, 12), text(lo, 12)])


# --- Designs --------------------------------------------------------------------------------------

LIMITS = (71, 72)  # of a difference of proportions
LEVEL, POWER, SD, N1, N, N2 = 0, 1, 2, 4, 85, 37


def bounds_of(kind, par, t, one):
    if kind in (0, 1, 2):
        delta = {0: 0.5, 1: 0.0, 2: par}[kind]
        return shape_bounds(delta, t, one)[0]
    if kind == 3:
        return peto_bounds(t, one)[0]
    return spending_bounds(kind, par, t, one)[0]


def stops(upp, t, theta, two_sided):
    low = [-u for u in upp] if two_sided else [-100.0] * len(upp)
    up, lo = exits(low, upp, t, theta)
    return up + lo


def means_error(n, samples, sd, sd2, ratio):
    return sd / math.sqrt(n) if samples == 1 else math.sqrt(sd**2 / n + sd2**2 / (ratio * n))


def proportions_error(n, samples, p1, p2, ratio):
    if samples == 1:
        return math.sqrt(p2 * (1 - p2) / n)
    return math.sqrt(p1 * (1 - p1) / n + p2 * (1 - p2) / (ratio * n))


def designs(out):
    """Sizes and their stopping probabilities: the size solved for; exits and average sizes of the
    whole subjects that it stands for, those of an analysis rounded, as the program shows them."""
    plans = [(kind, par) for kind, par in ((0, 0), (1, 0), (2, 0.25), (3, 0), (4, 0), (5, 0),
                                           (6, -2), (6, 1), (7, 2), (7, 3))]
    looks = [equal(2), equal(3), [0.3, 0.6, 1], equal(5), [0.5, 0.8, 1]]
    count = 0
    for kind, par in plans:
        for t in looks:
            count += 1
            samples = 1 + count % 2
            tails = 1 + (count // 2) % 2
            alpha, power = (0.05, 0.8) if count % 3 else (0.025, 0.9)
            upp = bounds_of(kind, par, t, alpha / 2 if tails == 2 else alpha)
            theta = brentq(lambda x: stops(upp, t, x, tails == 2).sum() - power, 0.5, 8, xtol=1e-12)
            if count % 4 == 3:
                menu, ratio = 620, 1
                p1, p2 = 0.3, 0.5
                effect = 0.2
                error = lambda n: proportions_error(n, samples, p1, p2, ratio)
                values = ({LEVEL: alpha, POWER: power, 35: 0.3, 83: 0.5} if samples == 1 else
                          {LEVEL: alpha, POWER: power, 51: 0, 8: p1, 69: p2, 5: ratio})
            else:
                menu, ratio = 600, (1 if count % 5 else 2)
                effect = 0.5
                sd, sd2 = 1.2, 1.5
                error = lambda n: means_error(n, samples, sd, sd2, ratio)
                values = ({LEVEL: alpha, POWER: power, 57: 0, 58: effect, SD: sd} if samples == 1 else
                          {LEVEL: alpha, POWER: power, 61: 0, 62: effect, 216: sd, 217: sd2, 5: ratio})
            n = brentq(lambda n: effect / error(n) - theta, 2, 1e6, xtol=1e-10)
            whole = math.ceil(n - 1e-5)
            drift = effect / error(whole)
            p1s = stops(upp, t, drift, tails == 2)
            p0s = stops(upp, t, 0.0, tails == 2)
            total = [math.floor(x * whole + 0.5) +
                     (math.floor(x * whole * ratio + 0.5) if samples == 2 else 0) for x in t]

            def average(p):
                head = sum(c * q for c, q in zip(total[:-1], p[:-1]))
                return head + total[-1] * (1 - sum(p[:-1]))

            text_values = ";".join(f"{k}={v:g}" for k, v in values.items())
            out.append([menu, samples, tails, text_values, kind, par, text(t), f"{n:.8g}",
                        text(p1s, 8), f"{average(p0s):.8g}", f"{average(p1s):.8g}"])


def two_boundaries(out):
    """Designs with early stop for H0: the power family, and levels of the user's own (reject;accept).
    One mean, one-sided or two-sided at half the level, H1 0.5 with a standard deviation of 1.2."""
    sd, effect = 1.2, 0.5
    plans = [(9, delta, t, tails) for delta in (-0.5, -0.25, 0, 0.25) for t in (equal(2), equal(3))
             for tails in (1, 2) if tails == 1 or delta == -0.5]
    plans += [(8, levels, t, 1) for levels, t in (
        (((0.01, 0.045), (1, 1)), equal(2)), (((0.01, 0.045), (0.5, 1)), equal(2)),
        (((0.005, 0.02, 0.04), (0.8, 0.5, 1)), [0.3, 0.6, 1]))]
    for kind, par, t, tails in plans:
        alpha, power = 0.05, 0.9
        if kind == 9:
            found = power_family(par, t, alpha / tails, 1 - power, tails == 2)
            if found is None:
                continue
            c1, c2, low, upp = found
            theta = c1 + c2
        else:
            upp, low = ([norm.isf(p) if p < 1 else -100.0 for p in levels] for levels in par)
            theta = brentq(lambda x: exits(low, upp, t, x)[0].sum() - power, 0.5, 8, xtol=1e-12)
            par = ";".join(text(levels) for levels in par)
        n = (theta * sd / effect) ** 2
        whole = math.ceil(n - 1e-5)
        drift = effect * math.sqrt(whole) / sd
        above, below = exits(low, upp, t, drift)
        null = [tails * (x + y) for x, y in zip(*exits(low, upp, t, 0.0))] if tails == 1 else None
        total = [math.floor(x * whole + 0.5) for x in t]

        def average(p):
            return sum(c * q for c, q in zip(total[:-1], p[:-1])) + total[-1] * (1 - sum(p[:-1]))

        values = ";".join(f"{k}={v:g}" for k, v in {LEVEL: alpha, POWER: power, 57: 0, 58: effect,
                                                     SD: sd}.items())
        out.append([600, 1, tails, values, kind, par, text(t), f"{n:.8g}", text(above, 8),
                    f"{average(null):.8g}" if null else "-", f"{average(above + below):.8g}"])


def level_quantile(alpha, tails):
    return norm.isf(alpha / 2 if tails == 2 else alpha)


def fixed_power(delta, se, alpha, tails):
    z = level_quantile(alpha, tails)
    power = norm.sf(z - delta / se)
    return power + (norm.cdf(-z - delta / se) if tails == 2 else 0)


HEAD = "Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance"


def validation_rows():
    """One analysis, and no interim one: the fixed test with the standard error under H1."""
    rows = []

    def add(menu, samples, tails, groups, values, unknown, exact, tolerance, left=0):
        text_values = ";".join(f"{k}={v:.10g}" for k, v in values.items())
        text_groups = ",".join(f"{k}={v}" for k, v in groups.items())
        rows.append([menu and f"menu {menu}", samples, tails, left, "", text_groups, text_values,
                     unknown, f"{exact:.9g}", tolerance])

    for alpha in (0.05, 0.01):
        for n in (20, 60):
            sd, sd2, d = 1.0, 1.4, 0.45
            one, two = sd / math.sqrt(n), math.sqrt(sd**2 / n + sd2**2 / (1.5 * n))
            for tails in (1, 2):
                add(600, 1, tails, {0: 0}, {0: alpha, 57: 0.1, 58: 0.1 + d, 2: sd, 85: n}, 1,
                    fixed_power(d, one, alpha, tails), 0.0005)
                add(600, 2, tails, {1: 1, 29: 0, 2: 2},
                    {0: alpha, 61: 0, 62: d, 216: sd, 217: sd2, 4: n, 5: 1.5}, 1,
                    fixed_power(d, two, alpha, tails), 0.0005)
            z = norm.isf(alpha)
            low, high, truth = -0.9, 0.8, 0.05
            for samples, se, groups, values in (
                    (1, one, {}, {0: alpha, 6: low, 7: high, 58: truth, 2: sd, 85: n}),
                    (2, two, {1: 1, 29: 0, 2: 2},
                     {0: alpha, 6: low, 7: high, 62: truth, 216: sd, 217: sd2, 4: n, 5: 1.5})):
                power = norm.cdf((truth - low) / se - z) + norm.cdf((high - truth) / se - z) - 1
                if power > 0.05:
                    add(600, samples, 3, groups, values, 1, power, 0.001)
    for alpha in (0.05, 0.01):
        n, p0, p1 = 80, 0.3, 0.45
        for tails in (1, 2):
            add(620, 1, tails, {11: 0}, {0: alpha, 35: p0, 83: p1, 85: n}, 1,
                fixed_power(p1 - p0, math.sqrt(p1 * (1 - p1) / n), alpha, tails), 0.0005)
            se = math.sqrt(p0 * (1 - p0) / n + p1 * (1 - p1) / (1.5 * n))
            add(620, 2, tails, {12: 0, 2: 2}, {0: alpha, 51: 0, 8: p0, 69: p1, 4: n, 5: 1.5}, 1,
                fixed_power(p1 - p0, se, alpha, tails), 0.0005)
            if tails == 1:
                z = norm.isf(alpha)

                def between(low, se_low, high, se_high):
                    return norm.cdf(low / se_low - z) + norm.cdf(high / se_high - z) - 1

                n3, left, right, p3 = 400, 0.4, 0.6, 0.5
                sl, sr = (math.sqrt(x * (1 - x) / n3) for x in (left, right))
                add(620, 1, 3, {}, {0: alpha, 47: left, 48: right, 83: p3, 85: n3}, 1,
                    between(p3 - left, sl, right - p3, sr), 0.001)
                q1, q2, d = 0.4, 0.42, 0.12
                seat = lambda x: proportions_error(n3, 2, (q1 + q2 - x) / 2, (q1 + q2 + x) / 2, 1)
                add(620, 2, 3, {12: 0, 2: 2}, {0: alpha, LIMITS[0]: -d, LIMITS[1]: d, 8: q1, 69: q2, 4: n3,
                                               5: 1}, 1,
                    between(q2 - q1 + d, seat(-d), d - (q2 - q1), seat(d)), 0.001)
                m, r = 600, 1.2
                share = 1 / (1.05 * r + 1)
                se = math.sqrt(1 / (share * m) + 1 / ((1 - share) * m))
                add(630, 2, 3, {5: 0, 55: 1}, {0: alpha, 29: 0.75, 30: 1.4, 9: 0.5, 73: 0.525, 99: m, 5: r},
                    1, between(math.log(1.05 / 0.75), se, math.log(1.4 / 1.05), se), 0.001)
            events, ratio, hazard = 120, 1.5, 1.6
            share = 1 / (hazard * ratio + 1)
            se = math.sqrt(1 / (share * events) + 1 / ((1 - share) * events))
            add(630, 2, tails, {5: 0, 55: 1},
                {0: alpha, 332: 1, 9: 0.5, 73: 0.5 * hazard, 99: events, 5: ratio}, 1,
                fixed_power(math.log(hazard), se, alpha, tails), 0.0005)
    return rows


def events_by(time, hazard, loss, accrual):
    """The share of the patients of a group with an event by that time, who enter evenly until the end
    of accrual, by integration over the times of entry."""

    def event(entry):
        return hazard / (hazard + loss) * (1 - math.exp(-(hazard + loss) * (time - entry)))

    return quad(event, 0, min(time, accrual), epsabs=1e-13)[0] / accrual


def study_times(out):
    """Analyses of a log-rank test: the information is that of the events, 1/(1/E1 + 1/E2)."""
    for hazard1, hazard2, loss, accrual, study, n1, n2 in (
            (0.5, 0.3, 0.0, 2.0, 5.0, 100, 100), (0.5, 0.3, 0.1, 2.0, 5.0, 100, 150),
            (0.2, 0.35, 0.05, 4.0, 4.5, 200, 120), (1.2, 0.8, 0.2, 1.0, 3.0, 80, 80)):

        def information(time, second):
            e1 = n1 * events_by(time, hazard1, loss, accrual)
            e2 = n2 * events_by(time, second, loss, accrual)
            return 1 / (1 / e1 + 1 / e2)

        for share in (0.25, 0.5, 0.8):
            times = [brentq(lambda t: information(t, second) / information(study, second) - share,
                            1e-6, study, xtol=1e-12) for second in (hazard2, hazard1)]
            fixed = information(share * study, hazard2) / information(study, hazard2)
            out.append([hazard1, hazard2, loss, accrual, study, n1, n2, share, f"{times[0]:.9g}",
                        f"{times[1]:.9g}", f"{fixed:.9g}"])


TABLES = [
    ("bounds", constants, ["Type", "Parameter", "Tails", "Level", "Fractions", "Upper"]),
    ("families", families, ["Parameter", "Tails", "Level", "Fractions", "Upper", "Beta", "C1", "C2",
                            "Lower"]),
    ("exits", crossings, ["Drift", "Information", "Upper", "Lower", "Above", "Below"]),
    ("designs", designs, ["Menu", "Samples", "Tails", "Values", "Type", "Parameter", "Fractions",
                          "Size", "Stops", "AverageH0", "AverageH1"]),
    ("two_boundaries", two_boundaries, ["Menu", "Samples", "Tails", "Values", "Type", "Parameter",
                                        "Fractions", "Size", "Stops", "AverageH0", "AverageH1"]),
    ("times", study_times, ["Hazard1", "Hazard2", "Loss", "Accrual", "Study", "Size1", "Size2", "Share",
                            "TimeH1", "TimeH0", "Fixed"]),
]


def main():
    for name, rows_of, names in TABLES:
        if name not in ("designs", "two_boundaries", "times") and "--designs" in sys.argv:
            continue
        rows = []
        rows_of(rows)
        path = os.path.join(DATA, f"group_sequential_{name}.tsv")
        with open(path, "w", encoding="utf-8") as file:
            for row in [names] + rows:
                file.write("\t".join(str(cell) for cell in row) + "\n")
        print(len(rows), name, file=sys.stderr)
    rows = validation_rows()
    with open(os.path.join(DATA, "validation", "group_sequential.tsv"), "w", encoding="utf-8") as file:
        file.write("# Exact values computed by checks/reference/group_sequential.py (scipy).\n")
        for row in [HEAD.split("\t")] + rows:
            file.write("\t".join(str(cell) for cell in row) + "\n")
    print(len(rows), "validation", file=sys.stderr)


if __name__ == "__main__":
    main()
