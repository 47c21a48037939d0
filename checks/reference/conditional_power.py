#!/usr/bin/env python3
"""Conditional and predictive power by direct integration: checks/data/validation/conditional_power.tsv.

Independent of the program. A trial has seen the effect E with the standard error S2 at the
information fraction t. On the scale of information 0 to 1 its process stands at sqrt(t) E/S2; for
the rest of the trial it has the drift theta and normal increments. Conditional power is the integral
of the density of the last increment over the outcomes that reject. Predictive power is the integral
of conditional power over what theta may be after the look, normal with the variance 1/t: two nested
integrals, without the closed form of their result. Other unknowns are roots of that power (Brent).

Tolerances follow from what the program's approximations may differ: its normal quantile 4.5e-4, its
distribution function 1e-5, and the effect by design 1e-5, all divided by how fast the power changes
with the unknown.

Needs Python 3 with numpy and scipy.
"""
import math
import os

import numpy as np
from scipy.optimize import brentq
from scipy.stats import norm

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "validation")

X, W = np.polynomial.legendre.leggauss(160)


def integral(f, a, b):
    x = (a + b) / 2 + (b - a) / 2 * X
    return (b - a) / 2 * np.sum(W * f(x))


def density(x, mean, sd):
    return np.exp(-(((x - mean) / sd) ** 2) / 2) / (sd * math.sqrt(2 * math.pi))


def tail(z, mean, sd):
    """The probability that a normal increment ends above z, by quadrature."""
    far = mean + 10 * sd
    if z >= far:
        return 0.0
    low = max(z, mean - 10 * sd)
    return integral(lambda x: density(x, mean, sd), low, far)


def conditional(theta, b, t, z, tails):
    """Ends above z, or, with two tails, outside -z to z."""
    mean, sd = b + (1 - t) * theta, math.sqrt(1 - t)
    return tail(z, mean, sd) + (tail(z, -mean, sd) if tails == 2 else 0.0)


def predictive(theta, b, t, z, tails):
    sd = 1 / math.sqrt(t)
    return integral(
        lambda x: np.array([conditional(one, b, t, z, tails) for one in x]) * density(x, theta, sd),
        theta - 9 * sd, theta + 9 * sd)


DESIGN, TREND, NULL = 0, 1, 2


def means_look(v):
    second = 1 / v["n2"] if "n2" in v else 0
    se = v["sd"] * math.sqrt(1 / v["n"] + second)
    return v["truth"] - v["null"], se, v["seen"] - v["null"], se


def proportion_look(v):
    se = lambda p: math.sqrt(p * (1 - p) / v["n"])
    return v["truth"] - v["null"], se(v["truth"]), v["seen"] - v["null"], se(v["seen"])


def proportions_look(v):
    se = lambda a, b: math.sqrt(a * (1 - a) / v["n"] + b * (1 - b) / v["n2"])
    return (v["p2"] - v["p1"] - v["null"], se(v["p1"], v["p2"]), v["difference"] - v["null"],
            se(v["seen1"], v["seen1"] + v["difference"]))


def hazards_look(v):
    def se(ratio, events):
        share = 1 / (ratio * v["ratio"] + 1)
        return math.sqrt(1 / (share * events) + 1 / ((1 - share) * events))
    return (math.log(v["hr"]), se(v["hr"], v["events"]), math.log(v["seen"]),
            se(v["seen"], v["t"] * v["events"]))


def process(look, v, future):
    design, se1, seen, se2 = look(v)
    b = math.sqrt(v["t"]) * seen / se2
    return b, {DESIGN: design / se1, TREND: b / v["t"], NULL: 0.0}[future], se1


def power(look, v, tails, left, future, isPredictive):
    b, theta, _ = process(look, v, future)
    if left:
        b, theta = -b, -theta
    elif tails == 2:
        b, theta = abs(b), abs(theta)
    assert tails == 2 or theta >= 0, "away from the tail"
    z = norm.isf(v["alpha"] / tails)
    return (predictive if isPredictive else conditional)(theta, b, v["t"], z, tails)


def slack(look, v, tails, future, isPredictive):
    """What the program's power may differ."""
    t = v["t"]
    spread = math.sqrt((1 - t) / (t if isPredictive else 1))
    shift = (1 - t) * 1e-5 / process(look, v, future)[2] if future == DESIGN else 0
    return tails * (2e-5 + 0.4 * (4.5e-4 + shift) / spread)


class Analysis:
    """A test with one choice of forms: kinds of its parameters by name, and how they are entered."""

    def __init__(self, menu, samples, groups, look, kinds, enter):
        self.menu, self.samples, self.groups = menu, samples, groups
        self.look, self.kinds, self.enter = look, kinds, enter


def text(x):
    return f"{x:.12g}"


def plain(v, name):
    return v[name]


def second_size(form):
    kind = (37, 38, 5)[form]
    return kind, lambda v: (v["n2"], v["n2"] - v["n"], v["n2"] / v["n"])[form]


def one_mean(form, future):
    kinds = {"alpha": 0, "null": 57, "truth": (58, 59, 60)[form], "sd": 2, "t": 358, "seen": 359, "n": 85}
    entries = {"truth": lambda v: (v["truth"], v["truth"] - v["null"], v["truth"] / v["null"])[form]}
    return Analysis(601, 1, {0: form, 56: future}, means_look, kinds, entries)


def two_means(form, size, future):
    """Form 1 enters the difference; v["truth"] is the difference in any form, v["m1"] the first mean."""
    kind, entry = second_size(size)
    kinds = {"alpha": 0, "null": 61, "truth": (87, 62, 88)[form], "sd": 2, "t": 358, "seen": 360, "n": 4,
             "n2": kind}
    entries = {"n2": entry,
               "truth": lambda v: (v["m1"] + v["truth"], v["truth"], (v["m1"] + v["truth"]) / v["m1"])[form]}
    if form != 1:
        kinds["m1"] = 86
    return Analysis(601, 2, {1: form, 2: size, 56: future}, means_look, kinds, entries)


def one_proportion(form, future):
    kinds = {"alpha": 0, "null": 35, "truth": (83, 40, 41)[form], "t": 358, "seen": 363, "n": 85}
    entries = {"truth": lambda v: (v["truth"], v["truth"] - v["null"], v["truth"] / v["null"])[form]}
    return Analysis(621, 1, {11: form, 56: future}, proportion_look, kinds, entries)


def two_proportions(form, size, future):
    kind, entry = second_size(size)
    kinds = {"alpha": 0, "null": 51, "p1": 8, "p2": (69, 52, 70)[form], "t": 358, "seen1": 365,
             "difference": 364, "n": 4, "n2": kind}
    entries = {"n2": entry, "p2": lambda v: (v["p2"], v["p2"] - v["p1"], v["p2"] / v["p1"])[form]}
    return Analysis(621, 2, {12: form, 2: size, 56: future}, proportions_look, kinds, entries)


def hazards(future):
    kinds = {"alpha": 0, "hr": 264, "t": 358, "seen": 362, "events": 99, "ratio": 5}
    return Analysis(631, 2, {56: future}, hazards_look, kinds, {})


ROWS = []


def add(analysis, future, v, tails, left, isPredictive, unknown=None, low=None, high=None):
    """The power, or another unknown between low and high at the power that v gives."""
    exact = power(analysis.look, v, tails, left, future, isPredictive)
    tolerance = slack(analysis.look, v, tails, future, isPredictive)
    power_kind = 366 if isPredictive else 361
    entry = lambda name, w: analysis.enter.get(name, lambda u: plain(u, name))(w)
    values = {kind: text(entry(name, v)) for name, kind in analysis.kinds.items() if name != unknown}
    kind, result = power_kind, exact
    if unknown:
        target = round(exact, 6)
        values[power_kind] = text(target)

        def residual(x):
            w = dict(v)
            w[unknown] = x
            if unknown == "n" and "n2" in v:  # the ratio of the sizes is kept
                w["n2"] = x * v["n2"] / v["n"]
            return power(analysis.look, w, tails, left, future, isPredictive) - target
        result = brentq(residual, low, high, xtol=1e-11)
        step = 1e-4 * max(abs(result), 0.01)
        slope = abs(residual(result + step) - residual(result - step)) / (2 * step)
        tolerance = tolerance / slope + 2e-5
        kind = analysis.kinds[unknown]
        w = dict(v)
        w[unknown] = result
        result = entry(unknown, w)
    groups = ",".join(f"{k}={g}" for k, g in analysis.groups.items())
    menu = analysis.menu + (1 if isPredictive else 0)
    ROWS.append([f"menu {menu}", analysis.samples, tails, -1 if left else 0, "", groups,
                 ";".join(f"{k}={x}" for k, x in values.items()), kind, f"{result:.9g}",
                 f"{tolerance:.2g}"])


def everything(analysis_of, v, future, tails, left, unknowns=()):
    for isPredictive in (False, True):
        analysis = analysis_of(future)
        add(analysis, future, v, tails, left, isPredictive)
        for unknown, low, high in unknowns:
            add(analysis, future, v, tails, left, isPredictive, unknown, low, high)


def main():
    design_only = lambda future, unknowns: unknowns if future == DESIGN else ()
    for future in (DESIGN, TREND, NULL):
        for tails, left in ((1, False), (2, False), (1, True)):
            s = -1 if left else 1
            for alpha, t, n in ((0.025, 0.4, 90), (0.05, 0.7, 60)):
                v = dict(alpha=alpha, t=t, sd=1.3, null=1.1, truth=1.1 + s * 0.4, seen=1.1 + s * 0.22, n=n)
                side = (1.1001, 3) if s > 0 else (-1, 1.0999)
                solved = [("n", 5, 2000), ("alpha", 1e-4, 0.5), ("sd", 0.2, 9),
                          ("seen", *side)] + list(design_only(future, [("truth", *side)]))
                for form in (0, 1, 2):
                    everything(lambda f: one_mean(form, f), v, future, tails, left,
                               solved if form == 0 else ())
                v = dict(alpha=alpha, t=t, sd=2.2, null=0.1, truth=0.1 + s * 0.95, m1=2.5,
                         seen=0.1 + s * 0.6, n=n, n2=0.8 * n)
                side = (0.1001, 4) if s > 0 else (-4, 0.0999)
                for form, size in ((1, 2), (0, 0), (2, 1)):
                    everything(lambda f: two_means(form, size, f), v, future, tails, left,
                               [("n", 5, 2000), ("seen", *side)] +
                               list(design_only(future, [("truth", *side)])) if size == 2 else ())
                p = 0.55 if left else 0.4
                v = dict(alpha=alpha, t=t, null=p, truth=p + s * 0.15, seen=p + s * 0.1, n=n)
                side = (p + 1e-4, 0.9) if s > 0 else (0.1, p - 1e-4)
                for form in (0, 1, 2):
                    everything(lambda f: one_proportion(form, f), v, future, tails, left,
                               [("n", 5, 2000), ("seen", *side)] if form == 0 else ())
                q = 0.6 if left else 0.38
                v = dict(alpha=alpha, t=t, null=0.02 * s, p1=q, p2=q + s * 0.19, seen1=q + 0.02,
                         difference=s * 0.15, n=n, n2=1.2 * n)
                for form, size in ((0, 2), (1, 0), (2, 1)):
                    everything(lambda f: two_proportions(form, size, f), v, future, tails, left,
                               [("n", 5, 3000), ("difference", *((0.021, 0.5) if s > 0 else (-0.5, -0.021)))]
                               if size == 2 else ())
                hr, seen = (0.65, 0.72) if left else (1.5, 1.4)
                v = dict(alpha=alpha, t=t, hr=hr, seen=seen, events=2 * n, ratio=1.25)
                side = (1.0001, 6) if s > 0 else (0.2, 0.9999)
                everything(hazards, v, future, tails, left,
                           [("events", 10, 5000), ("seen", *side)] +
                           list(design_only(future, [("hr", *side)])))
    # Early and late looks, small and large trials, hazards apart, very unequal groups.
    for t in (0.1, 0.25, 0.5, 0.9):
        for hr, seen, events, ratio in ((1.25, 1.3, 650, 1), (3, 2.2, 30, 2), (1.8, 1.2, 120, 0.25),
                                        (2, 2.6, 60, 5)):
            for future in (DESIGN, TREND, NULL):
                v = dict(alpha=0.05, t=t, hr=hr, seen=seen, events=events, ratio=ratio)
                everything(hazards, v, future, 2, False)
        v = dict(alpha=0.05, t=t, sd=20.0, null=100.0, truth=103.0, seen=102.5, n=350)
        everything(lambda f: one_mean(0, f), v, DESIGN, 2, False)
        v = dict(alpha=0.05, t=t, null=0.0, p1=0.05, p2=0.12, seen1=0.06, difference=0.055, n=300, n2=150)
        everything(lambda f: two_proportions(1, 2, f), v, DESIGN, 1, False)
    # When is the power there? Conditional power under the null drift grows with the fraction here.
    for seen in (0.45, 0.6):
        v = dict(alpha=0.05, t=0.5, sd=1.3, null=1.0, truth=1.5, seen=1 + seen, n=60)
        add(one_mean(0, NULL), NULL, v, 1, False, False, "t", 0.1, 0.95)

    head = ["Analysis", "Samples", "Tails", "Left", "Checks", "Groups", "Values", "Unknown", "Exact",
            "Tolerance"]
    with open(os.path.join(DATA, "conditional_power.tsv"), "w", encoding="utf-8") as file:
        file.write("# Exact values computed by checks/reference/conditional_power.py (numpy, scipy).\n")
        for row in [head] + ROWS:
            file.write("\t".join(str(cell) for cell in row) + "\n")
    print(len(ROWS), "rows")


if __name__ == "__main__":
    main()
