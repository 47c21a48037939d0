#!/usr/bin/python3
"""Group sequential boundaries, crossing probabilities and designs by exact integration.

    /usr/bin/python3 checks/reference/group_sequential.py

writes checks/data/group_sequential_bounds.tsv, _families.tsv and _exits.tsv. Needs numpy and scipy.

The sub-densities of the standardised statistic are carried from analysis to analysis on the nodes
of Gauss and Legendre (panels of 24 nodes), in 64 bits: twice the panels change no figure by more
than 1e-12, which is checked here. The program integrates by Simpson's rule in 32 bits.

Two-sided designs are solved one-sided at half the level, as the program does.
"""

import math
import os
import sys

import numpy as np
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


TABLES = [
    ("bounds", constants, ["Type", "Parameter", "Tails", "Level", "Fractions", "Upper"]),
    ("families", families, ["Parameter", "Tails", "Level", "Fractions", "Upper", "Beta", "C1", "C2",
                            "Lower"]),
    ("exits", crossings, ["Drift", "Information", "Upper", "Lower", "Above", "Below"]),
]


def main():
    for name, rows_of, names in TABLES:
        rows = []
        rows_of(rows)
        path = os.path.join(DATA, f"group_sequential_{name}.tsv")
        with open(path, "w", encoding="utf-8") as file:
            for row in [names] + rows:
                file.write("\t".join(str(cell) for cell in row) + "\n")
        print(len(rows), name, file=sys.stderr)


if __name__ == "__main__":
    main()
