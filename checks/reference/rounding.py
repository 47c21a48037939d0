#!/usr/bin/env python3
"""Values that depend on where 32-bit floats round, for checks/tests/means_check.cpp: each line gives
the value with all roundings and, to show that they can be told apart, with one of them left out.

Needs Python 3 alone.
"""
import math
import struct


def single(x):
    return struct.unpack('f', struct.pack('f', x))[0]


def exact(x):
    return x


def satterthwaite(s1, s2, n1, n2, round_a=single, round_b=single):
    """F. E. Satterthwaite, Biometrics Bulletin 2, 1946, 110-114."""
    a, b = round_a(single(s1) ** 2 / n1), round_b(single(s2) ** 2 / n2)
    return single((a + b) ** 2 / (a * a / (n1 - 1) + b * b / (n2 - 1)))


def log_difference(h0, h1, round_h0=single, round_h1=single):
    return single(round_h1(math.log(single(h1))) - round_h0(math.log(single(h0))))


for f, cases in ((satterthwaite, ((1.1, 1.9, 13, 9), (1.3, 1.9, 11, 23))),
                 (log_difference, ((2, 2.6), (3, 3.1)))):
    for case in cases:
        print(f.__name__, case, ' '.join(f'{x:.9g}' for x in (
            f(*case), f(*case, exact, single), f(*case, single, exact))))
