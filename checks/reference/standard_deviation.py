#!/usr/bin/env python3
"""The H0 standard deviation at which a two-sided chi-square test at level 0.05 with 30 subjects has
power 0.8 against a standard deviation that is 0.3 smaller. Needs Python 3 alone."""
import math


def chi_square_cdf(x, df):
    """The series of the incomplete gamma function."""
    a, x = df / 2, x / 2
    term = total = 1 / a
    n = a
    while term > total * 1e-17:
        n += 1
        term *= x / n
        total += term
    return total * math.exp(-x + a * math.log(x) - math.lgamma(a))


def bisect(f, low, high):
    for _ in range(200):
        middle = (low + high) / 2
        low, high = (middle, high) if f(middle) < 0 else (low, middle)
    return low


def power(h0, difference, n):
    df = n - 1
    ratio = (h0 / (h0 + difference)) ** 2
    lower, upper = (bisect(lambda x: chi_square_cdf(x, df) - p, 1e-3, 300) for p in (0.025, 0.975))
    return chi_square_cdf(ratio * lower, df) + 1 - chi_square_cdf(ratio * upper, df)


if __name__ == "__main__":
    print(f"{bisect(lambda h0: 0.8 - power(h0, -0.3, 30), 0.35, 5):.7f}")
