#!/usr/bin/env python3
"""Reference values for the log-rank tests and the tests of exponential survival, written to
checks/data/validation/logrank.tsv and checks/data/validation/logrank_simulated.tsv; and figures that are
printed elsewhere, written to checks/data/validation/logrank_published.tsv.

Independent of the program. The probability of an event is integrated numerically over the time of
entry (scipy.integrate.quad), for every model of accrual; powers are those of the published formulas
in double precision with scipy's normal distribution; other unknowns are found with Brent's method.

Lachin JM, Foulkes MA (1986) Biometrics 42, 507-519. George SL, Desu MM (1974) J Chronic Dis 27, 15-24.
Rubinstein LV, Gail MH, Santner TJ (1981) J Chronic Dis 34, 469-479. Schoenfeld DA (1983) Biometrics 39,
499-503. Freedman LS (1982) Statistics in Medicine 1, 121-129. Published figures: Collett D (2003)
Modelling Survival Data in Medical Research, 2nd edition, section 10.2 (133 deaths).

The tests themselves are simulated: SIMULATED replicates of entry, survival and loss times, each judged by
its own log-rank statistic. The program's large-sample power may differ from these by a term of first order
in 1/sqrt(n), for which SKEW/sqrt(n) is allowed with n the number of events, and by four standard
errors of the simulated share.

Needs Python 3 with numpy and scipy; run from the repository's root.
"""
import math

import numpy as np
from scipy import integrate, optimize, stats

SEED = 19860301
SIMULATED = 100_000
SKEW = 0.2
NORMAL = 3e-4  # a power: NorInv and NorCdf
ROWS, SIMULATIONS = [], []

LACHIN, GEORGE, RUBENSTEIN = 'menu 402', 'menu 403', 'menu 404'
ML_LACHIN, ML_GEORGE, ML_RUBENSTEIN = 'menu 150', 'menu 151', 'menu 152'
SCHOENFELD, FREEDMAN, NONINFERIOR = 'menu 400', 'menu 401', 'menu 410'
STRATA, STRATA_LACHIN, STRATA_GEORGE, STRATA_RUBENSTEIN = 'menu 420', 'menu 421', 'menu 422', 'menu 423'
EQUIVALENCE, INTERVAL_NONINFERIOR = 'menu 804', 'menu 834'

KINDS = {LACHIN: 4, GEORGE: 5, RUBENSTEIN: 6, ML_LACHIN: 7, ML_GEORGE: 8, ML_RUBENSTEIN: 9,
         EQUIVALENCE: 9, INTERVAL_NONINFERIOR: 9}


def text(value):
    return value if isinstance(value, str) else f'{value:g}'


def row(analysis, samples, tails, left, checks, groups, given, unknown, exact, tolerance):
    return [analysis, str(samples), str(tails), '-1' if left else '0', ','.join(map(str, checks)),
            ','.join(f'{g}={o}' for g, o in groups.items()),
            ';'.join(f'{k}={text(v)}' for k, v in given.items()), str(unknown), f'{exact:.9g}',
            f'{tolerance:.3g}']


def solved(at, bracket):
    """The root, and how far the error of a power moves it."""
    exact = optimize.brentq(at, *bracket, xtol=1e-11, rtol=1e-13)
    step = 1e-4 * max(abs(exact), 1e-2)
    return exact, NORMAL / abs((at(exact + step) - at(exact - step)) / (2 * step)) + 3e-5


def add(analysis, samples, tails, left, checks, groups, values, unknown, power, bracket=None):
    at_power = 1 if 1 in values or unknown == 1 else 318
    if unknown == at_power:
        exact, tolerance = power(values), NORMAL
    else:
        exact, tolerance = solved(lambda x: power({**values, unknown: x}) - values[at_power], bracket)
    given = {k: v for k, v in values.items() if k != unknown}
    ROWS.append(row(analysis, samples, tails, left, checks, groups, given, unknown, exact,
                    tolerance))


# --- Events -------------------------------------------------------------------------------------

def density(values):
    """Pieces (from, to, density) of the time of entry; None: all patients enter at once."""
    accrual = values[10]
    if accrual == 0:
        return None
    if 343 in values:
        pieces, before, begin = [], 0, 0
        for cell in values[343].split():
            end, proportion = map(float, cell.split(':'))
            height = (proportion - before) / (end - begin)
            pieces.append((begin, end, lambda s, height=height: height))
            before, begin = proportion, end
        return pieces
    g = values[33]
    if g == 0:
        return [(0, accrual, lambda s: 1 / accrual)]
    return [(0, accrual, lambda s: g * math.exp(-g * s) / (1 - math.exp(-g * accrual)))]


def event_probability(rate, loss, values):
    study = values[11]
    leaves = lambda u: rate / (rate + loss) * -math.expm1(-(rate + loss) * u)
    pieces = density(values)
    if pieces is None:
        return leaves(study)
    total = 0
    for begin, end, f in pieces:
        end = min(end, study)
        if end > begin:
            total += integrate.quad(lambda s: f(s) * leaves(study - s), begin, end,
                                    epsabs=1e-13, epsrel=1e-12)[0]
    return total


def variance(rate, loss, values):
    return rate * rate / event_probability(rate, loss, values)


# --- Parameters as they are entered -------------------------------------------------------------

def pair(values, first, forms):
    base = values[first]
    value, difference, ratio = forms
    if value in values:
        return base, values[value]
    return base, base + values[difference] if difference in values else base * values[ratio]


def hazard_of(values):
    """The form of input: the function to hazards, and its sign."""
    if any(k in values for k in (94, 89, 90)):
        return (lambda m: math.log(2) / m), -1
    if any(k in values for k in (53, 66, 82)):
        return (lambda p: -math.log1p(-p)), 1
    return (lambda rate: rate), 1


def two_groups(values):
    if 94 in values:
        return pair(values, 94, (95, None, 96))
    if 53 in values:
        return pair(values, 53, (79, 68, 80))
    return pair(values, 9, (73, 65, 74))


def two_losses(values):
    if 119 in values:
        return tuple(-math.log1p(-p) for p in pair(values, 119, (120, 121, 122)))
    return pair(values, 13, (45, 46, 49))


def sizes(values, ratio=5):
    for total in (320, 99, 347):
        if total in values:
            r = values[ratio]
            return values[total] / (1 + r), values[total] * r / (1 + r)
    return pair(values, 4, (37, 38, 5))


# --- Powers -------------------------------------------------------------------------------------

def normal_power(alpha, tails, left, delta, se0, se1):
    phi = stats.norm.cdf
    if tails == 2:
        z = stats.norm.isf(alpha / 2) * se0
        return phi((abs(delta) - z) / se1) + phi((-abs(delta) - z) / se1)
    z = stats.norm.isf(alpha) * se0
    return phi(((-delta if left else delta) - z) / se1)


def equivalence_power(alpha, above, below, se0_left, se0_right, se1):
    z = stats.norm.isf(alpha)
    return stats.norm.cdf((above - z * se0_left) / se1) + \
        stats.norm.cdf((below - z * se0_right) / se1) - 1


def two_sample_errors(kind, values, l1, l2):
    log = kind in (5, 6, 8, 9)
    if 99 in values:
        q = 1 / (l2 / l1 * values[5] + 1)
        e1, e2 = q * values[99], (1 - q) * values[99]
        se = math.sqrt(1 / e1 + 1 / e2) if log else math.sqrt(l1**2 / e1 + l2**2 / e2)
        return se, se
    if 347 in values:
        t1, t2 = sizes(values, 174)
        mean = (t1 * l1 + t2 * l2) / (t1 + t2)
        if not log:
            return math.sqrt(mean / t1 + mean / t2), math.sqrt(l1 / t1 + l2 / t2)
        se1 = math.sqrt(1 / (t1 * l1) + 1 / (t2 * l2))
        return (se1 if kind in (6, 9) else math.sqrt(1 / (t1 * mean) + 1 / (t2 * mean))), se1
    n1, n2 = sizes(values)
    eta1, eta2 = two_losses(values)
    mean = (n1 * l1 + n2 * l2) / (n1 + n2)
    error = lambda a, b, wa, wb: math.sqrt(variance(a, eta1, values) / (n1 * wa**2) +
                                           variance(b, eta2, values) / (n2 * wb**2))
    if not log:
        se1 = error(l1, l2, 1, 1)
        pooled = kind == 4 or eta1 == 0
        return (error(mean, mean, 1, 1) if pooled else se1), se1
    se1 = error(l1, l2, l1, l2)
    return (se1 if kind in (6, 9) else error(mean, mean, mean, mean)), se1


def level(values, tails, two_sided_interval=False):
    if 0 in values:
        return values[0]
    return (1 - values[321]) / (2 if tails == 3 or two_sided_interval else 1)


def two_samples(analysis, tails, left, two_sided_interval=False):
    kind = KINDS[analysis]
    log = kind in (5, 6, 8, 9)

    def power(values):
        hazard, sign = hazard_of(values)
        first, second = two_groups(values)
        l1, l2 = hazard(first), hazard(second)

        def above(null):
            at = hazard(first * null if log else first + null) if (log or sign < 0 or 53 in values) \
                else l1 + null
            return sign * (math.log(l2 / at) if log else l2 - at)

        se0, se1 = two_sample_errors(kind, values, l1, l2)
        alpha = level(values, tails, two_sided_interval)
        if tails == 3:
            limits = next((values[a], values[b]) for a, b in ((29, 30), (97, 98), (77, 78), (71, 72),
                                                             (6, 7)) if a in values)
            return equivalence_power(alpha, above(limits[0]), -above(limits[1]), se0, se0, se1)
        null = next(values[k] for k in (332, 333, 93, 64, 67, 370, 319) if k in values)
        return normal_power(alpha, tails, left, above(null), se0, se1)

    return power


def one_sample(analysis, tails, left):
    kind = KINDS[analysis]
    log = kind != 7

    def power(values):
        hazard, sign = hazard_of(values)
        if tails == 3:
            null, right = next((values[a], values[b]) for a, b in ((75, 76), (47, 48), (166, 167))
                               if a in values)
            truth = next(values[k] for k in (81, 82, 90) if k in values)
        else:
            base, forms = next((b, f) for b, f in ((63, (81, 43, 44)), (66, (82, 55, 56)),
                                                   (89, (90, 91, 92))) if b in values)
            null, truth = pair(values, base, forms)
        l0, l1 = hazard(null), hazard(truth)
        if 99 in values:
            v0, v1 = l0**2 / values[99], l1**2 / values[99]
        elif 347 in values:
            v0, v1 = l0 / values[347], l1 / values[347]
        else:
            eta = -math.log1p(-values[118]) if 118 in values else values[84]
            v0, v1 = variance(l0, eta, values) / values[85], variance(l1, eta, values) / values[85]
        se0, se1 = math.sqrt(v0), math.sqrt(v1)
        if log:
            se0, se1 = se0 / l0, se1 / l1
        if kind == 9:
            se0 = se1
        above = lambda at: sign * (math.log(l1 / hazard(at)) if log else l1 - hazard(at))
        if tails == 3:
            return equivalence_power(values[0], above(null), -above(right), se0, se1, se1)
        return normal_power(values[0], tails, left, above(null), se0, se1)

    return power


def proportional(method, tails, left):
    def power(values):
        survival = any(k in values for k in (354, 355, 356))
        if survival:
            s1, s2 = pair(values, 353, (354, 355, 356))
            ratio = math.log(s2) / math.log(s1)
        else:
            ratio = values[264]
            s1 = values.get(353)
            s2 = None if s1 is None else s1**ratio
        n1, n2 = sizes(values)
        k, total = n2 / n1, n1 + n2
        a, b = k / (k + 1), 1 / (k + 1)
        if 99 in values:
            events = total
        else:
            total *= 1 - values[348]
            events = total * (1 - (b * s1 + a * s2))
        if method == 1:
            z = math.log(ratio) * math.sqrt(events * a * b)
        else:
            z = math.sqrt(k * events) * (ratio - 1) / (ratio * k + 1)
        return normal_power(values[0], tails, left, -z if survival else z, 1, 1)

    return power


def noninferiority(left):
    def power(values):
        if 99 in values:
            s1, s2 = pair(values, 353, (354, 355, 356))
            ratio, sign, events = math.log(s2) / math.log(s1), -1, values[99]
            a = values[5] / (values[5] + 1)
        else:
            ratio, sign = values[264], 1
            n1, n2 = sizes(values)
            a = n2 / (n1 + n2)
            uniform = {10: values[10], 11: values[11], 33: 0}
            events = n1 * event_probability(values[9], 0, uniform) + \
                n2 * event_probability(values[9] * ratio, 0, uniform)
        z = sign * math.log(ratio / values[350]) * math.sqrt(events * a * (1 - a))
        return normal_power(values[0], 1, left, z, 1, 1)

    return power


def stratified(tails, left):
    def power(values):
        effect = next(values[k] for k in (352, 339, 342) if k in values)
        root = math.sqrt(values[320])
        se0 = values.get(340, values.get(341)) / root
        se1 = values.get(341, values.get(340)) / root
        return normal_power(values[0], tails, left, effect, se0, se1)

    return power


# --- Cases --------------------------------------------------------------------------------------

UNIFORM = {33: 0, 10: 3, 11: 5}
EARLY = {33: 0.8, 10: 3, 11: 5}
LATE = {33: -0.6, 10: 3, 11: 5}
CUT = {33: 0.5, 10: 6, 11: 4}
CUT_LATE = {33: -0.4, 10: 6, 11: 4}
NONE = {33: 0, 10: 0, 11: 4}
SLOW = {343: '1:0.15 2:0.5 3:1', 10: 3, 11: 5}
STEPS = {343: '0.5:0.05 1:0.2 2:0.7 2.5:0.9 3:1', 10: 3, 11: 4}


def without(values, kind):
    return {k: v for k, v in values.items() if k != kind}


def two_sample_cases():
    base = {0: 0.05, 1: 0.9, 9: 0.2, 73: 0.3}
    for analysis in (LACHIN, GEORGE, RUBENSTEIN, ML_LACHIN, ML_GEORGE, ML_RUBENSTEIN):
        null = {64: 0} if analysis in (LACHIN, ML_LACHIN) else {332: 1}
        g = {5: 0, 8: 0, 2: 2, 55: 0}
        power = two_samples(analysis, 2, False)
        # Every accrual with and without losses, the size of two equal groups.
        for accrual in (UNIFORM, EARLY, LATE, CUT, CUT_LATE, NONE, SLOW, STEPS):
            checks = [28] if 343 in accrual else []
            for loss in ({13: 0, 45: 0}, {13: 0.1, 45: 0.2}):
                add(analysis, 2, 2, False, checks, g,
                    {**base, **null, **loss, **accrual, 5: 1}, 4, power, (5, 5000))
        # Power, effect, times, losses, unequal groups, one-sided.
        left = two_samples(analysis, 1, True)
        right = two_samples(analysis, 1, False)
        full = {**base, **null, 13: 0.1, 45: 0.2, **UNIFORM, 4: 150, 5: 0.5}
        less = {**full, 9: 0.3, 73: 0.18, 4: 150}
        add(analysis, 2, 2, False, [], g, full, 1, power)
        add(analysis, 2, 1, False, [], g, full, 1, right)
        add(analysis, 2, 1, True, [], g, less, 1, left)
        add(analysis, 2, 2, False, [], g, {**full, 1: 0.8}, 73, power, (0.25, 1))
        add(analysis, 2, 1, True, [], g, {**less, 1: 0.8}, 73, left, (0.1, 0.29))
        add(analysis, 2, 2, False, [], g, {**full, 1: 0.6, 73: 0.32}, 11, power, (3.001, 60))
        add(analysis, 2, 1, False, [], {**g, 2: 0}, {**without(full, 5), 1: 0.8, 37: 90}, 37, right, (20, 3000))
        add(analysis, 2, 2, False, [35], {5: 0, 8: 0, 55: 0},
            {**without(full, 4), 320: 300, 5: 2}, 320, power, (20, 9000))
        # A null value other than equality.
        other = {64: 0.05} if analysis in (LACHIN, ML_LACHIN) else {332: 1.2}
        add(analysis, 2, 1, False, [], g, {**full, **other, 73: 0.4}, 1, right)
        # Other forms of input.
        incidence = {0: 0.05, 1: 0.85, **({67: 0} if 64 in null else {333: 1}), 53: 0.2, 68: 0.12,
                     119: 0.05, 122: 1, **UNIFORM, 4: 100, 38: 20}
        add(analysis, 2, 2, False, [3], {7: 1, 30: 2, 2: 1, 55: 0}, incidence, 1, power)
        add(analysis, 2, 2, False, [3], {7: 1, 30: 2, 2: 1, 55: 0}, incidence, 68, power, (0.02, 0.6))
        median = {0: 0.05, 1: 0.85, **({370: 0} if 64 in null else {93: 1}), 94: 2, 96: 1.6, 13: 0.1,
                  46: 0, **UNIFORM, 4: 100, 5: 1}
        add(analysis, 2, 1, False, [12], {10: 1, 8: 1, 2: 2, 55: 0}, median, 1, right)
        add(analysis, 2, 1, False, [12], {10: 1, 8: 1, 2: 2, 55: 0}, median, 4, right, (5, 5000))
        # Events and time at risk.
        events = {0: 0.05, 1: 0.9, **null, 9: 0.2, 74: 1.6, 99: 150, 5: 1}
        add(analysis, 2, 2, False, [], {5: 2, 55: 1}, events, 99, power, (5, 5000))
        add(analysis, 2, 1, False, [], {5: 2, 55: 1}, {**events, 5: 0.5}, 1, right)
        time = {0: 0.05, 1: 0.9, **null, 9: 0.2, 65: 0.1, 347: 600, 174: 2}
        add(analysis, 2, 2, False, [], {5: 1, 55: 2}, time, 1, power)
        add(analysis, 2, 2, False, [], {5: 1, 55: 2}, time, 347, power, (5, 50000))
        # Equivalence.
        limits = {77: -0.1, 78: 0.1} if 64 in null else {29: 0.7, 30: 1.45}
        between = two_samples(analysis, 3, False)
        same = {0: 0.05, 1: 0.8, **limits, 9: 0.3, 73: 0.31, 13: 0.1, 45: 0.1, **UNIFORM, 4: 400, 5: 1}
        add(analysis, 2, 3, False, [], g, same, 1, between)
        add(analysis, 2, 3, False, [], g, same, 4, between, (100, 5000))
        limits = {6: -1, 7: 1} if 64 in null else {97: 0.7, 98: 1.45}
        add(analysis, 2, 3, False, [12], {10: 0, 8: 0, 2: 2, 55: 0},
            {0: 0.05, 1: 0.8, **limits, 94: 2.5, 95: 2.6, 13: 0, 45: 0, **EARLY, 4: 400, 5: 1.5}, 1,
            between)


def one_sample_cases():
    for analysis in (ML_LACHIN, ML_GEORGE, ML_RUBENSTEIN):
        power = one_sample(analysis, 2, False)
        right, left = one_sample(analysis, 1, False), one_sample(analysis, 1, True)
        between = one_sample(analysis, 3, False)
        base = {0: 0.05, 1: 0.8, 63: 0.3, 81: 0.45, 84: 0.1, **UNIFORM, 85: 80}
        g = {4: 0, 55: 0}
        for accrual in (UNIFORM, LATE, CUT, NONE, STEPS):
            values = {**without(base, 33), **accrual}
            add(analysis, 1, 2, False, [28] if 343 in accrual else [], g, values, 85, power, (5, 5000))
        add(analysis, 1, 1, False, [], g, base, 1, right)
        add(analysis, 1, 1, True, [], g, {**base, 81: 0.2}, 1, left)
        add(analysis, 1, 1, False, [], g, base, 81, right, (0.31, 2))
        add(analysis, 1, 2, False, [3], {6: 0, 55: 0},
            {0: 0.05, 1: 0.8, 66: 0.25, 82: 0.38, 118: 0.1, **UNIFORM, 85: 80}, 1, power)
        add(analysis, 1, 1, False, [12], {9: 2, 55: 0},
            {0: 0.05, 1: 0.8, 89: 2, 92: 1.5, 84: 0, **UNIFORM, 85: 80}, 85, right, (5, 5000))
        add(analysis, 1, 2, False, [], {4: 2, 55: 1}, {0: 0.05, 1: 0.8, 63: 0.3, 44: 1.5, 99: 60}, 99,
            power, (5, 5000))
        add(analysis, 1, 2, False, [], {4: 1, 55: 2}, {0: 0.05, 1: 0.8, 63: 0.3, 43: 0.15, 347: 150},
            1, power)
        add(analysis, 1, 3, False, [], {55: 0},
            {0: 0.05, 1: 0.8, 75: 0.2, 76: 0.45, 81: 0.31, 84: 0.05, **UNIFORM, 85: 150}, 1, between)
        add(analysis, 1, 3, False, [12], {55: 1},
            {0: 0.05, 1: 0.8, 166: 1.4, 167: 2.8, 90: 2, 99: 120}, 1, between)


def proportional_cases():
    for analysis, method in ((SCHOENFELD, 1), (FREEDMAN, 2)):
        power = proportional(method, 2, False)
        right, left = proportional(method, 1, False), proportional(method, 1, True)
        add(analysis, 2, 2, False, [4, 33], {}, {0: 0.05, 1: 0.9, 264: 1.75, 99: 100, 5: 1}, 99, power,
            (5, 5000))
        add(analysis, 2, 1, True, [4, 33], {}, {0: 0.05, 1: 0.9, 264: 0.6, 99: 150, 5: 2}, 1, left)
        add(analysis, 2, 1, False, [4], {12: 0}, {0: 0.05, 353: 0.4, 354: 0.6, 99: 80, 5: 1}, 1, right)
        add(analysis, 2, 2, False, [4], {12: 1}, {0: 0.05, 1: 0.8, 353: 0.4, 355: 0.2, 99: 80, 5: 1},
            355, power, (0.02, 0.5))
        add(analysis, 2, 2, False, [33], {2: 2},
            {0: 0.05, 1: 0.8, 353: 0.6, 264: 1.7, 348: 0.1, 4: 100, 5: 1.5}, 4, power, (5, 5000))
        add(analysis, 2, 1, True, [33, 35], {},
            {0: 0.05, 353: 0.3, 264: 0.65, 348: 0.15, 320: 160, 5: 1}, 1, left)
        add(analysis, 2, 2, False, [], {12: 2, 2: 0},
            {0: 0.05, 353: 0.4, 356: 1.5, 348: 0, 4: 70, 37: 110}, 1, power)
        add(analysis, 2, 2, False, [35], {12: 0},
            {0: 0.05, 1: 0.9, 353: 0.4, 354: 0.6, 348: 0.1, 320: 200, 5: 2}, 320, power, (10, 9000))
    # Collett (2003), section 10.2: a hazard ratio of 0.57 at 0.05, two-sided, with a power of 0.90
    # needs 133 deaths.
    values = {0: 0.05, 1: 0.9, 264: 0.57, 99: 133, 5: 1}
    deaths = optimize.brentq(lambda d: proportional(1, 1, True)({**values, 0: 0.025, 99: d}) - 0.9, 5, 999)
    assert round(deaths) == 133
    ROWS.append(row(SCHOENFELD, 2, 1, True, [4, 33], {}, {0: 0.025, 1: 0.9, 264: 0.57, 5: 1}, 99, 133, 0.5))


def noninferiority_cases():
    right, left = noninferiority(False), noninferiority(True)
    add(NONINFERIOR, 2, 1, False, [4], {12: 0}, {0: 0.05, 1: 0.8, 350: 1.3, 353: 0.6, 354: 0.6, 99: 300,
                                                 5: 1}, 99, right, (5, 5000))
    add(NONINFERIOR, 2, 1, False, [4], {12: 1}, {0: 0.025, 350: 1.25, 353: 0.6, 355: 0.02, 99: 400, 5: 2},
        1, right)
    add(NONINFERIOR, 2, 1, True, [], {2: 2}, {0: 0.05, 1: 0.8, 350: 1.3, 264: 0.95, 9: 0.2, 10: 2, 11: 5,
                                              4: 200, 5: 1}, 4, left, (5, 9000))
    add(NONINFERIOR, 2, 1, True, [], {2: 0}, {0: 0.05, 350: 1.4, 264: 1, 9: 0.3, 10: 3, 11: 3, 4: 200,
                                              37: 300}, 1, left)
    add(NONINFERIOR, 2, 1, True, [35], {}, {0: 0.05, 1: 0.9, 350: 1.3, 264: 1, 9: 0.2, 10: 2, 11: 5,
                                            320: 900, 5: 1.5}, 11, left, (2.01, 60))
    add(NONINFERIOR, 2, 1, True, [35], {}, {0: 0.05, 1: 0.9, 350: 1.3, 264: 1, 9: 0.2, 10: 2, 11: 5,
                                            320: 900, 5: 1.5}, 350, left, (1.01, 3))


def interval_cases():
    g = {5: 2, 8: 0, 2: 2}
    same = {321: 0.9, 318: 0.8, 29: 0.75, 30: 1.3333, 9: 0.3, 74: 1.02, 13: 0.05, 45: 0.05, **UNIFORM,
            4: 400, 5: 1}
    add(EQUIVALENCE, 2, 3, False, [], g, same, 318, two_samples(EQUIVALENCE, 3, False))
    add(EQUIVALENCE, 2, 3, False, [], g, same, 4, two_samples(EQUIVALENCE, 3, False), (100, 9000))
    worse = {321: 0.95, 318: 0.8, 319: 1.3, 9: 0.3, 74: 0.95, 13: 0.05, 45: 0.05, **LATE, 4: 300, 5: 1}
    add(INTERVAL_NONINFERIOR, 2, 1, True, [], g, worse, 318, two_samples(INTERVAL_NONINFERIOR, 1, True))
    add(INTERVAL_NONINFERIOR, 2, 1, True, [36], g, worse, 318,
        two_samples(INTERVAL_NONINFERIOR, 1, True, True))
    add(INTERVAL_NONINFERIOR, 2, 1, True, [36], g, worse, 4,
        two_samples(INTERVAL_NONINFERIOR, 1, True, True), (50, 9000))


def stratified_cases():
    both, right, left = stratified(2, False), stratified(1, False), stratified(1, True)
    times = {310: 3, 33: 0, 10: 2, 11: 5}
    add(STRATA, 2, 2, False, [], {}, {0: 0.05, 1: 0.8, 352: 0.4, 340: 2.5, 310: 3, 320: 200}, 320, both,
        (5, 9000))
    add(STRATA, 2, 1, True, [], {}, {0: 0.05, 352: -0.4, 340: 2.5, 310: 3, 320: 200}, 1, left)
    add(STRATA_LACHIN, 2, 2, False, [], {}, {0: 0.05, 1: 0.8, 339: 0.1, 340: 0.7, 341: 0.8, **times,
                                             320: 300}, 1, both)
    add(STRATA_LACHIN, 2, 1, False, [3], {}, {0: 0.05, 1: 0.8, 342: 0.1, 340: 0.7, 341: 0.8, **times,
                                              320: 300}, 342, right, (0.01, 0.9))
    add(STRATA_GEORGE, 2, 2, False, [], {}, {0: 0.05, 1: 0.8, 352: 0.4, 340: 2.5, 341: 2.6, **times,
                                             320: 300}, 320, both, (5, 9000))
    add(STRATA_GEORGE, 2, 1, True, [], {}, {0: 0.05, 352: -0.4, 340: 2.5, 341: 2.6, **times, 320: 300}, 1,
        left)
    add(STRATA_RUBENSTEIN, 2, 2, False, [], {}, {0: 0.05, 1: 0.8, 352: 0.4, 341: 2.6, **times, 320: 300},
        320, both, (5, 9000))
    add(STRATA_RUBENSTEIN, 2, 1, False, [], {}, {0: 0.05, 352: 0.4, 341: 2.6, **times, 320: 300}, 1, right)


# --- Simulation ---------------------------------------------------------------------------------

def study(rng, replicates, n, rate, loss, accrual, length):
    """Times from entry and whether they end with the event."""
    entry = rng.uniform(0, accrual, (replicates, n))
    event = rng.exponential(1 / rate, (replicates, n))
    censoring = length - entry
    if loss > 0:
        censoring = np.minimum(censoring, rng.exponential(1 / loss, (replicates, n)))
    return np.minimum(event, censoring), event <= censoring


def log_rank_parts(first, second, margin=1.0):
    """Observed minus expected events of group 2 and their variance, where its hazard is margin times
    that of group 1."""
    times = np.concatenate([first[0], second[0]], axis=1)
    events = np.concatenate([first[1], second[1]], axis=1)
    group2 = np.concatenate([np.zeros_like(first[1]), np.ones_like(second[1])], axis=1)
    order = np.argsort(times, axis=1)
    events = np.take_along_axis(events, order, 1)
    group2 = np.take_along_axis(group2, order, 1).astype(float)
    at_risk2 = np.cumsum(group2[:, ::-1], axis=1)[:, ::-1]
    at_risk1 = np.cumsum((1 - group2)[:, ::-1], axis=1)[:, ::-1]
    expected = margin * at_risk2 / (at_risk1 + margin * at_risk2)
    return ((group2 - expected) * events).sum(1), (expected * (1 - expected) * events).sum(1), events.sum(1)


def simulated(strata, accrual, length, margin=1.0, seed=SEED):
    """z statistics of the (stratified) log-rank test; strata: (n1, n2, rate1, rate2, loss1, loss2)."""
    rng = np.random.default_rng(seed)
    z, events, batch = [], 0, 2500
    for _ in range(SIMULATED // batch):
        score, information = np.zeros(batch), np.zeros(batch)
        for n1, n2, rate1, rate2, loss1, loss2 in strata:
            s, v, d = log_rank_parts(study(rng, batch, n1, rate1, loss1, accrual, length),
                                     study(rng, batch, n2, rate2, loss2, accrual, length), margin)
            score += s
            information += v
            events += d.mean() * batch / SIMULATED
        z.append(score / np.sqrt(information))
    return np.concatenate(z), events


def add_simulated(analysis, samples, tails, left, checks, groups, values, unknown, z, events):
    alpha = values.get(0)
    if tails == 2:
        share = np.mean(np.abs(z) > stats.norm.isf(alpha / 2))
    else:
        share = np.mean((-z if left else z) > stats.norm.isf(alpha))
    se = math.sqrt(share * (1 - share) / len(z))
    SIMULATIONS.append(row(analysis, samples, tails, left, checks, groups, values, unknown, share,
                           4 * se + SKEW / math.sqrt(events)))


def simulations():
    groups = {5: 0, 8: 0, 2: 0, 55: 0}
    # Two groups, uniform accrual, losses; equal and unequal sizes.
    for n1, n2, l1, l2, e1, e2 in ((150, 150, 0.2, 0.32, 0.1, 0.1), (100, 200, 0.3, 0.2, 0.05, 0.15),
                                   (200, 100, 0.25, 0.4, 0.0, 0.0)):
        z, events = simulated([(n1, n2, l1, l2, e1, e2)], 3, 5)
        shared = {0: 0.05, 9: l1, 73: l2, 13: e1, 45: e2, **UNIFORM, 4: n1, 37: n2}
        for analysis in (LACHIN, GEORGE, RUBENSTEIN):
            null = {64: 0} if analysis == LACHIN else {332: 1}
            add_simulated(analysis, 2, 2, False, [], groups, {**shared, **null}, 1, z, events)
            add_simulated(analysis, 2, 1, l2 < l1, [], groups, {**shared, **null}, 1, z, events)
    # Proportional hazards without losses: survival to the common end of the study. Less survival in
    # group 2 is more hazard.
    z, events = simulated([(120, 120, 0.3, 0.45, 0, 0)], 1e-6, 4)
    s1, s2 = math.exp(-1.2), math.exp(-1.8)
    for analysis in (SCHOENFELD, FREEDMAN):
        add_simulated(analysis, 2, 2, False, [33], {2: 0}, {0: 0.05, 353: s1, 264: 1.5, 348: 0, 4: 120, 37: 120},
                      1, z, events)
        add_simulated(analysis, 2, 1, True, [], {12: 0, 2: 0},
                      {0: 0.05, 353: s1, 354: s2, 348: 0, 4: 120, 37: 120}, 1, -z, events)
    # Non-inferiority.
    for margin, ratio in ((1.3, 0.9), (1.4, 1.0)):
        z, events = simulated([(300, 300, 0.25, 0.25 * ratio, 0, 0)], 2, 5, margin)
        add_simulated(NONINFERIOR, 2, 1, True, [], {2: 0},
                      {0: 0.05, 350: margin, 264: ratio, 9: 0.25, 10: 2, 11: 5, 4: 300, 37: 300}, 1, z, events)
    # Strata: the weighted effect and its standard deviations by the formulas of one stratum.
    strata = [(60, 60, 0.15, 0.24, 0.05, 0.05), (40, 80, 0.3, 0.45, 0.1, 0.1), (50, 50, 0.6, 1.0, 0.0, 0.1)]
    z, events = simulated(strata, 3, 5)
    total = sum(s[0] + s[1] for s in strata)
    weighted = weighted_effect(strata, total, UNIFORM)
    for analysis, given in ((STRATA_GEORGE, {352: weighted[0], 340: weighted[1], 341: weighted[2]}),
                            (STRATA_RUBENSTEIN, {352: weighted[0], 341: weighted[2]})):
        values = {0: 0.05, **given, 310: 3, **UNIFORM, 320: total}
        add_simulated(analysis, 2, 2, False, [], {}, values, 1, z, events)
    information = sum((n1 * event_probability(l1, e1, UNIFORM) + n2 * event_probability(l2, e2, UNIFORM)) *
                      n1 * n2 / (n1 + n2)**2 for n1, n2, l1, l2, e1, e2 in strata)
    effect = sum((n1 * event_probability(l1, e1, UNIFORM) + n2 * event_probability(l2, e2, UNIFORM)) *
                 n1 * n2 / (n1 + n2)**2 * math.log(l2 / l1)
                 for n1, n2, l1, l2, e1, e2 in strata) / information
    add_simulated(STRATA, 2, 2, False, [], {},
                  {0: 0.05, 352: effect, 340: math.sqrt(total / information), 310: 3, 320: total}, 1, z, events)


def weighted_effect(strata, total, accrual):
    """George and Desu in each stratum, weighted by the inverse of the variance under H0."""
    weights, effect, square = 0, 0, 0
    for n1, n2, l1, l2, e1, e2 in strata:
        mean = (n1 * l1 + n2 * l2) / (n1 + n2)
        v0 = (variance(mean, e1, accrual) / n1 + variance(mean, e2, accrual) / n2) / mean**2
        v1 = variance(l1, e1, accrual) / (n1 * l1**2) + variance(l2, e2, accrual) / (n2 * l2**2)
        weights += 1 / v0
        effect += math.log(l2 / l1) / v0
        square += v1 / v0**2
    return effect / weights, math.sqrt(total / weights), math.sqrt(total * square) / weights


HEAD = ['Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values', 'Unknown', 'Exact', 'Tolerance']


# --- Printed figures ----------------------------------------------------------------------------

def published():
    """Figures as they are printed; those that are rounded up lie at most one rounding step below."""
    rows = []
    # M. A. Phadnis, J. B. Wetmore, M. S. Mayo, Statistics in Medicine 36, 2017, 4121-4140, table 3: deaths
    # in all, rounded up to an even number, of a log-rank test at 0.05, one-sided, with a power of 0.80
    # under proportional hazards.
    for ratio, deaths in {0.85: 938, 0.8: 498, 0.75: 300, 0.7: 196, 0.65: 134, 0.6: 96, 0.55: 70, 0.5: 52,
                          0.45: 40, 0.4: 30}.items():
        rows.append(row(SCHOENFELD, 2, 1, True, [4, 33], {}, {0: 0.05, 1: 0.8, 264: ratio, 5: 1}, 99,
                        deaths - 1, 1))
    # K. Anderson, gsDesign (R package), checks of its nSurv: deaths as the procedure SEQDESIGN of SAS 9.4
    # gives them, and the power that East 6.5 gives.
    rows.append(row(SCHOENFELD, 2, 1, True, [4, 33], {}, {0: 0.025, 1: 0.9, 264: 0.5, 5: 1}, 99, 87.4793,
                    0.05))
    rows.append(row(SCHOENFELD, 2, 1, True, [4, 33], {}, {0: 0.025, 264: 0.5, 99: 39.02121789, 5: 1}, 1,
                    0.58120457, NORMAL))
    # Freedman's method: F. H. C. Felix, Calculo do numero de pacientes (protocol of a trial, 2016), prints the
    # sizes of powerSurvEpi (R package) for one patient to two controls, of whom 14 % and 63 % will
    # die, with a hazard ratio of 0.05: 14 and 27. The deaths kept are those that round to them.
    values = {0: 0.05, 1: 0.8, 264: 0.05, 5: 0.5}
    deaths, tolerance = solved(lambda d: proportional(2, 2, True)({**values, 99: d}) - 0.8, (1, 999))
    controls = deaths / (0.5 * 0.14 + 0.63)
    assert (math.ceil(0.5 * controls), math.ceil(controls)) == (14, 27), controls
    rows.append(row(FREEDMAN, 2, 2, True, [4, 33], {}, values, 99, deaths, tolerance))
    # Of gsDesign again, printed results of its nSurvival, the method of Lachin and Foulkes (1986): patients in all,
    # rounded up to an even number. On the scale of log hazards, uniform accrual and exponential,
    # with and without losses, equal groups and others; and on that of hazards. The sizes kept are
    # those that round to them.
    groups = {5: 0, 8: 0, 2: 2, 55: 0}
    months = math.log(2) / 8, 0.7 * math.log(2) / 8
    for analysis, hazards, loss, accrual, study, gamma, ratio, patients in [
            (GEORGE, (0.2, 0.1), 0.1, 0.5, 2, 0, 1, 430), (GEORGE, (0.2, 0.1), 0.1, 0.5, 2, 1, 1, 426),
            (GEORGE, (0.2, 0.1), 0, 0.5, 2, 1, 1.25, 400), (GEORGE, (0.2, 0.1), 0, 0.5, 2, 1, 0.8, 396),
            (GEORGE, (0.2, 0.1), 6.9, 0.5, 2, 0, 1, 4308), (GEORGE, months, 0.001, 12, 28, 0, 1, 422),
            (LACHIN, (0.2, 0.1), 0, 0.5, 2, 0, 1, 414)]:
        values = {0: 0.025, 1: 0.9, 9: hazards[0], 73: hazards[1], 13: loss, 45: loss, 33: gamma,
                  10: accrual, 11: study, 5: ratio, **({332: 1} if analysis == GEORGE else {64: 0})}
        power = two_samples(analysis, 1, True)
        size, tolerance = solved(lambda n: power({**values, 4: n}) - 0.9, (2, 1e5))
        assert 2 * math.ceil(size * (1 + ratio) / 2) == patients, (size, patients)
        rows.append(row(analysis, 2, 1, True, [], groups, values, 4, size, tolerance))
    write('logrank_published', 'Printed figures; the program has their sources.', rows)


def write(name, comment, rows):
    with open(f'checks/data/validation/{name}.tsv', 'w', encoding='utf-8') as file:
        file.write(f'# Written by checks/reference/logrank.py. {comment}\n')
        for line in [HEAD] + rows:
            file.write('\t'.join(line) + '\n')


if __name__ == '__main__':
    two_sample_cases()
    one_sample_cases()
    proportional_cases()
    noninferiority_cases()
    interval_cases()
    stratified_cases()
    write('logrank', 'Log-rank tests and tests of exponential survival.', ROWS)
    published()
    simulations()
    write('logrank_simulated', f'Simulated log-rank tests, {SIMULATED} replicates with seed {SEED}.', SIMULATIONS)
    print(len(ROWS), 'rows,', len(SIMULATIONS), 'simulated')
