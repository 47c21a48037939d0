#!/usr/bin/env python3
"""The exact power of Fisher's two-sided test on both sides of the border between enumeration and
the arc-sine approximation, written to checks/data/fisher_border.tsv.

Independent of the program: every table of two equal groups is enumerated in whole numbers, and its
two conditional tails are compared with half the level as fractions. The approximation is Cohen's
(1988), chapter 6.

Needs Python 3 alone; run from the repository's root.
"""
import math
from fractions import Fraction
from statistics import NormalDist

LEVEL = Fraction(5, 100)


def exact_power(n, p1, p2):
    total = 0.0
    density1 = [math.comb(n, x) * p1**x * (1 - p1) ** (n - x) for x in range(n + 1)]
    density2 = [math.comb(n, x) * p2**x * (1 - p2) ** (n - x) for x in range(n + 1)]
    for events in range(2 * n + 1):
        low, high = max(0, events - n), min(n, events)
        weights = {x: math.comb(n, x) * math.comb(n, events - x) for x in range(low, high + 1)}
        whole = sum(weights.values())
        for x in weights:
            below = sum(w for y, w in weights.items() if y <= x)
            above = sum(w for y, w in weights.items() if y >= x)
            if Fraction(min(below, above), whole) <= LEVEL / 2:
                total += density1[x] * density2[events - x]
    return total


def approximate_power(n, p1, p2):
    normal = NormalDist()
    distance = abs(2 * math.asin(math.sqrt(p2)) - 2 * math.asin(math.sqrt(p1))) * math.sqrt(n / 2)
    z = normal.inv_cdf(1 - float(LEVEL) / 2)
    return normal.cdf(distance - z) + normal.cdf(-distance - z)


with open("checks/data/fisher_border.tsv", "w", encoding="utf-8") as out:
    out.write("p1\tp2\tn\texact\tapproximation\n")
    for n in (50, 51, 60, 100):
        out.write(f"0.05\t0.25\t{n}\t{exact_power(n, 0.05, 0.25):.6f}\t"
                  f"{approximate_power(n, 0.05, 0.25):.6f}\n")
