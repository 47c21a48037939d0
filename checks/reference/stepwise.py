#!/usr/bin/env python3
"""Writes stepwise.csv: the distribution functions evaluated step by step a second time.

The program's figures are defined by formulas with fixed rounding points. Here the same formulas are
written down once more, in another language and independently of the C++ code, with numpy.float32
at every rounding point. A check compares the two bit by bit, so that no rounding point is lost or
added unnoticed. Whether the formulas are any good is another question: exact.py answers it.

    python3 stepwise.py > ../data/stepwise.csv      (Python 3, numpy)
"""
import math
import numpy as np


def R(x):
    """A rounding point: the nearest 32-bit float, as a 64-bit one."""
    return float(np.float32(x))


def expc(v):
    return math.exp(min(R(v), 75.0))


def sgn(x):
    return (x > 0) - (x < 0)


PI = 3.141592654
TWOPI = 6.283185308
F1EM5 = R(1e-5)
F99999 = R(0.99999)


# --- normal -----------------------------------------------------------------------------------
def nor_cdf(x):
    a = abs(x)
    if a >= 10:
        return (sgn(x) + 1) / 2
    t = R(1 / (1 + 0.2316419 * a))
    q = R(((1.061405429 * t - 1.453152027) * t + 1.421413741) * t - 0.284496736)
    e = math.exp(-x * x / 2)
    s = 1 - (q * t + 0.254829592) * (t * e)
    return R((s * sgn(x) + 1) / 2)


def nor_density(x):
    return R((1 / math.sqrt(TWOPI)) * expc(-x * x / 2))


def nor_inv(p):
    if p <= 0:
        return -100.0
    if p >= 1:
        return 100.0
    m = 0.5 - abs(0.5 - p)
    if m == 0:
        return -100.0
    t = R(math.sqrt(-2 * math.log(m)))
    n = (0.010328 * t + 0.802853) * t + 2.515517
    d = ((0.001308 * t + 0.189269) * t + 1.432788) * t + 1
    return R((t - n / d) * sgn(p - 0.5))


def nor_tail1(z):
    a = R(abs(z))
    if a <= 7:
        b = R(((5.383e-6 * a + 4.88906e-5) * a + 3.80036e-5) * a)
        c = R((((b + 0.0032776263) * a + 0.0211410061) * a + 0.049867347) * a + 1)
        p = R(0.5 * c ** -16)
    else:
        p = 0.0
    return R(1 - p) if z < 0 else p


def nor_tail2(p):
    if p == R(0.5):
        return 0.0
    q = R(1 - p if p > 0.5 else p)
    for level, z in ((0.05, 1.64485), (0.025, 1.95996), (0.01, 2.32635), (0.005, 2.57583)):
        if q == R(level):
            z = R(z)
            break
    else:
        w = R(-math.log(4 * q * (1 - q)))
        e1 = R((-3.231081277e-9 * w + 8.360937017e-8) * w - 1.04527497e-6)
        e2 = R((e1 * w + 5.824238515e-6) * w + 6.841218299e-6)
        e3 = R(((e2 * w - 0.0002250947176) * w - 0.000836435359) * w + 0.03706987906)
        e4 = R(e3 * w + 1.570796288)
        z = R(math.sqrt(e4 * w))
    return -z if p > 0.5 else z


# --- beta, t ----------------------------------------------------------------------------------
def log_gamma_star(x):
    p = 1.0
    while x < 10:
        p = R(p * x)
        x = R(x + 1)
    return R(1 / (12 * x) + (x - 0.5) * math.log(x) - 1 / (360 * x ** 3) + 1 / (1260 * x ** 5)
             - math.log(p) - x)


def beta_inc(x, a, b):
    x = max(x, F1EM5)
    if (a + 1) / (a + b + 2) < x:
        return R(1 - beta_inc(R(1 - x), b, a))
    A1, A2, B1, B2 = 1.0, 1.0, 0.0, 1.0
    m = 0.0
    R2 = 0.0
    p = R(a + 2)
    q = R(b + 2)
    while True:
        d = R((q + p + m) * (p + m) * x / (2 * m + p) / (2 * m + p + 1))
        A3 = R(A2 - d * A1)
        B3 = R(B2 - d * B1)
        m = m + 1
        d = R((q - m) * m * x / (2 * m + p - 1) / (2 * m + p))
        A4 = R(d * A2 + A3)
        B4 = R(d * B2 + B3)
        if A3 == 0 or A4 == 0:
            break
        R1 = R(B3 / A3)
        R2 = R(B4 / A4)
        A1, B1, A2, B2 = A3, B3, A4, B4
        if m > 25 or abs(R1 / R2 - 1) < R(1e-10):
            break
    k1 = R((a + b) * x / (a + 1))
    k2 = R((a + b + 1) * x / p)
    f = R(((a + b + 3) * (1 - x) * R2 - p) * (a + b + 2) * (1 - x) / (b + 1))
    f = R((f - p) * k2 / b)
    f = R((f + 1) * k1 + 1)
    return R(x ** a * (1 - x) ** b * f
             * expc(log_gamma_star(R(a + b)) - log_gamma_star(R(a + 1)) - log_gamma_star(b))
             / math.sqrt(TWOPI))


def t_cdf(t, df):
    x = R(df / (t * t + df))
    i = R(beta_inc(x, R(df / 2), 0.5) / 2)
    return i if t < 0 else R(1 - i)


def t_inv(p, df):
    if df <= 1:
        return R(math.tan((p - 0.5) * PI))
    z = nor_inv(p)
    s = R(z * z)
    g1 = R((s + 1) / 4)
    g2 = R(((5 * s + 16) * s + 3) / 96)
    g3 = R((((3 * s + 19) * s + 17) * s - 15) / 384)
    g4 = R(((((79 * s + 776) * s + 1482) * s - 1920) * s - 945) / 92160)
    return R(z * (1 + (g1 + (g2 + (g3 + g4 / df) / df) / df) / df))


def nct_cdf(t, df, delta):
    return nor_cdf(R((t * (1 - 1 / (4 * df)) - delta) / math.sqrt(1 + t * t / (2 * df))))


# --- chi-square -------------------------------------------------------------------------------
def chi2_tail1(df, x):
    if x == 0:
        return 1.0
    if df > 40:
        h = R(2 / (9 * df))
        return nor_tail1(R((np.cbrt(x / df) - (1 - h)) / math.sqrt(h)))
    k = 2 * math.floor(df / 2)
    e = 2 - math.floor(df) + k
    if e == 2:
        p = R(math.exp(-x / 2))
        term = R(math.exp(-x / 2) / 2)
    else:
        p = R(2 * nor_tail1(R(math.sqrt(x))))
        term = R(0.3989422804 * math.exp(-x / 2) / math.sqrt(x))
    i = e
    while i <= df - 1:
        term = R(term * x / i)
        p = R(p + 2 * term)
        i += 2
    return p


def bisect(target, tail):
    lo, hi, w = 0.0, 1.0, 0.5
    while True:
        if tail(w) <= target:
            lo = w
        else:
            hi = w
        previous = w
        w = R((lo + hi) / 2)
        if abs(w - previous) <= 1e-5 * w:
            return w


def chi2_tail2(df, p):
    if df == 1:
        z = nor_tail2(R(p / 2))
        return R(z * z)
    if df == 2:
        return R(-2 * math.log(p))
    w = bisect(p, lambda w: chi2_tail1(df, R(1 / w - 1)))
    return R(1 / w - 1)


def chi2_cdf(x, df):
    if x <= R(1e-10):
        return 0.0
    if df <= 0:
        return 1.0
    if df <= 21:
        return f_cdf(R(x / df), df, 10000.0)
    h = 2 / (9 * df)
    return nor_cdf(R((np.cbrt(x / df) - (1 - h)) / math.sqrt(h)))


def chi2_inv(p, df):
    if df <= 10:
        return chi2_tail2(df, R(1 - p))
    return R(df / f_inv(R(1 - p), [999999.0], [df]))


def ncchi2_cdf(x, df, lam):
    if x <= 0:
        return 0.0
    if df > 10 or lam > 50:
        r = R(lam / (df + lam))
        return chi2_cdf(R(x / (1 + r)), R((df + lam) / (1 + r)))
    h = lam / 2
    total = 0.0
    for i in range(101):
        total += h ** i * math.exp(-h) / factorial(i) * chi2_cdf(x, R(df + 2 * i))
    return R(total)


# --- F ----------------------------------------------------------------------------------------
def f_tail1(df1, df2, f):
    x = R(df2 / (df1 * f + df2))
    y = R(math.sqrt(1 - x))
    e1 = 2 * math.floor(df1 / 2) - df1 + 2
    e2 = 2 * math.floor(df2 / 2) - df2 + 2
    c = 2 * e1 - e2
    if c == 1:
        p = R(1 - (2 / PI) * math.atan(y / math.sqrt(x)))
        term = R(y * math.sqrt(x) / PI)
    elif c == 2:
        p = R(x)
        term = R((1 - x) * x)
    elif c == 3:
        p = R(math.sqrt(x))
        term = R((1 - x) * math.sqrt(x) / 2)
    else:
        p = R(1 - y)
        term = R(y * x / 2)
    i = e2
    while True:
        u = i
        if df2 <= i or abs(2 * term / i) < 1e-5 * p:
            break
        p = R(p - 2 * term / i)
        term = R((e1 / i + 1) * x * term)
        i += 2
    i = e1
    while not (df1 <= i or abs(2 * term / i) < 1e-5 * p):
        p = R(p + 2 * term / i)
        term = R((u / i + 1) * (1 - x) * term)
        i += 2
    return p


def f_tail2(df1, df2, p):
    if df1 <= 30 or df2 <= 30:
        value = lambda w: R((1 / w - 1) * df2 / df1)
        return value(bisect(p, lambda w: f_tail1(df1, df2, value(w))))
    z = nor_tail2(p)
    a = R(2 / (9 * df1))
    b = R(2 / (9 * df2))
    c = (((1 - a) * (1 - b) + z * math.sqrt((1 - a) * (1 - a) * b + (1 - b) * (1 - b) * a
                                            - a * b * z * z)) / ((1 - b) * (1 - b) - b * z * z))
    return R(c * c * c)


def f_cdf(f, df1, df2):
    x = R(df2 / (f * df1 + df2))
    if x <= 0:
        return 0.0
    if df1 > 10 and df2 > 10 and (df1 > 100 or df2 > 100):
        r = float(np.cbrt(f))
        return nor_cdf(R(((1 - 2 / (9 * df2)) * r - (1 - 2 / (9 * df1)))
                         / math.sqrt(2 * r * r / (9 * df2) + 2 / (9 * df1))))
    return R(1 - beta_inc(x, R(df2 / 2), R(df1 / 2)))


def interp(a, b, w):
    return R((1 - w) * a + w * b)


def f_inv(p, df1, df2):
    """df1 and df2 are lists of one element: arguments by reference."""
    if df1[0] <= 10 or df2[0] <= 10:
        df1[0] = min(df1[0], 999.0)
        df2[0] = min(df2[0], 999.0)
    n1, n2 = math.floor(df1[0]), math.floor(df2[0])
    w1, w2 = R(df1[0] - n1), R(df2[0] - n2)
    n1, n2 = float(n1), float(n2)
    if w1 == 0 and w2 == 0:
        if n1 <= 10 or n2 <= 10:
            if n1 <= 0.5 or n2 <= 0.5:
                return 99999.0
            return f_tail2(n1, n2, R(1 - p))
        z = nor_inv(p)
        g = R((z * z - 3) / 6)
        h = R(2 / (1 / (n1 - 1) + 1 / (n2 - 1)))
        w = R(z * math.sqrt(h + g) / h
              - (1 / (n1 - 1) - 1 / (n2 - 1)) * (g + 5 / 6 - 2 / (3 * h)))
        return R(expc(2 * w))
    if w1 == 0:
        a = f_inv(p, df1, [n2])
        b = f_inv(p, df1, [n2 + 1])
        return interp(a, b, w2)
    if w2 == 0:
        a = f_inv(p, [n1], df2)
        b = f_inv(p, [n1 + 1], df2)
        return interp(a, b, w1)
    low = interp(f_inv(p, [n1], [n2]), f_inv(p, [n1 + 1], [n2]), w1)
    high = interp(f_inv(p, [n1], [n2 + 1]), f_inv(p, [n1 + 1], [n2 + 1]), w1)
    return interp(low, high, w2)


def ncf_cdf(f, df1, df2, lam):
    if f <= 0:
        return 0.0
    lam = max(lam, F1EM5)
    if (df1 > 10 and df2 > 10) or lam > 50:
        return f_cdf(R(f * df1 / (lam + df1)), R((lam + df1) * (lam + df1) / (2 * lam + df1)), df2)
    w = R(f * df1 / (f * df1 + df2))
    h = lam / 2
    total = 0.0
    for i in range(101):
        total += h ** i * math.exp(-h) / factorial(i) * beta_inc(w, R(df1 / 2 + i), R(df2 / 2))
    return R(total)


# --- gamma function, factorial ----------------------------------------------------------------
def gamma_fn(x):
    w = x + 2
    return (math.sqrt(TWOPI / w) * math.exp((1 - 1 / (30 * w * w)) / (12 * w) + w * math.log(w) - w)
            / (x * (x + 1)))


def factorial(n):
    if n < 51:
        return float(math.factorial(n))
    return math.exp((2 - 1 / (12 * n + 1)) / (24 * n) - n) * math.sqrt(TWOPI * n) * float(n) ** n


# --- location-scale families ------------------------------------------------------------------
def weibull_v(x, s, g):
    return min((x / s) ** g, 99999.0) if g * math.log(x / s) < 12 else 99999.0


def weibull_cdf(x, s, g):
    return max(F1EM5, R(1 - expc(-weibull_v(x, s, g)) - F1EM5))


def weibull_density(x, s, g):
    return R(g * x ** (g - 1) / s * expc(-weibull_v(x, s, g)))


def weibull_inv(q, s, g):
    tail = 1 - q if q < 1 else 1 - q + F1EM5
    return R(s * (-math.log(tail)) ** (1 / g))


def lognorm_density(x, mu, sigma):
    return R(nor_density(R((math.log(x) - mu) / sigma)) / (x * sigma))


def gamma_density(x, s, g):
    r = expc(-x / s) / gamma_fn(g) / s
    return R(r) if g == 1 else R(r * (x / s) ** (g - 1))


# --- discrete distributions --------------------------------------------------------------------
def choose_product(n, k):
    r = 1.0
    for i in range(1, k + 1):
        r = (n - i + 1) / i * r
    return r


def choose(n, k):
    return choose_product(n, min(k, n - k)) if 0 <= k <= n else 0.0


def bin_density(n, x, p):
    return R(choose(math.floor(n), x) * p ** x * (1 - p) ** (n - x))


def cdf_sum(x, n, half, density):
    total = 0.0
    if half:
        for i in range(0, x + 1):
            total = R(total + R(density(i)))
        return total
    for i in range(math.floor(n), x, -1):
        total = R(total + R(density(i)))
    return R(1 - total)


def bin_cdf(n, x, p):
    if x < 0:
        return 0.0
    if x > n:
        return 1.0
    return cdf_sum(x, n, x <= n / 2, lambda i: bin_density(n, i, p))


def bin_inv(q, n, p):
    x = 0
    while bin_cdf(n, x, p) < q - 1e-5 and x < 502:
        x += 1
    return float(x)


def hyper_density(popsize, n, x, p):
    marked = round(p * popsize)
    unmarked = popsize - marked
    if x > n or x > marked or n - x > unmarked:
        return 0.0
    return choose(unmarked, n - x) * choose(marked, x) / choose(popsize, n)


def hyper_cdf(popsize, n, x, p):
    if x < 0:
        return 0.0
    if x > n:
        return 1.0
    return cdf_sum(x, n, x <= n / 2, lambda i: hyper_density(popsize, n, i, p))


def poisson_density(x, lam):
    if x == 0:
        return R(expc(-lam))
    if x <= 50:
        return R(lam ** x * expc(-lam) / factorial(x))
    return R(chi2_cdf(R(2 * lam), 2.0 * x) - chi2_cdf(R(2 * lam), 2.0 * x + 2))


def poisson_cdf(x, lam):
    return R(1 - chi2_cdf(R(2 * lam), R(2 * x + 2)))


def poisson_inv(q, lam):
    x = 0
    while poisson_cdf(float(x), lam) < q - 1e-5 and x < 502:
        x += 1
    return float(x)


def kol_smi_sum(n, m, b, rounding):
    c = [1.0]
    for j in range(1, m + 1):
        total = 0.0
        for i in range(j):
            total = rounding(total + choose(j, i) * b[i] ** (j - i) * c[i])
        c.append(rounding(1 - total))
    total = 0.0
    for j in range(m + 1):
        total = rounding(total + choose(n, j) * b[j] ** (n - j) * c[j])
    return total


def kol_smi(n, d, bound, rounding):
    """n is 2 at least."""
    if d <= 0:
        return 0.0
    if d >= 1:
        return 1.0
    if n > 50:
        return R(1 - expc(-2 * n * d * d))
    n = int(n)
    m = max(1, math.floor((1 - d) * n - 1e-5))
    b = [max(0.0, R(bound(j / n + d))) for j in range(m + 1)]
    return R(1 - kol_smi_sum(n, m, b, rounding))


def kol_smi_cdf(n, d):
    return kol_smi(n, d, lambda t: 1 - t, R)


def kol_smi_discrete_cdf(n, d, side, probs):
    def bound(t):
        w = 1 - t if side else t
        s = 0.0
        for p in probs:
            if abs(w - s) <= 1e-5:
                return 1 - t
            if R(s + p) > w + 1e-5:
                return s if side else 1 - R(s + p)
            s = R(s + p)
        return 0.0

    return kol_smi(n, d, bound, float)


def kol_smi_two_cdf(n1, n2, d, flag):
    ne = n1 * n2 / (n1 + n2)
    if flag:
        return R(1 - expc(-2 * ne * d * d))
    total = 0.0
    for i in range(1, 21):
        term = expc(-2 * i * i * ne * d * d)
        total += term if i % 2 else -term
        if term < 0.0001:
            return R(min(max(1 - 2 * total, 0.0), 1.0))
    return 0.0


# --- the grid ---------------------------------------------------------------------------------
def emit(name, *args, value):
    print(",".join([name] + [f"{v:.9g}" for v in args] + [f"{value:.9g}"]))


def main():
    print("# Written by stepwise.py: function, arguments, value.")
    probabilities = [R(p) for p in (1e-5, 1e-4, 0.001, 0.005, 0.01, 0.02, 0.025, 0.05, 0.1, 0.2, 0.3,
                                    0.45, 0.55, 0.7, 0.8, 0.9, 0.95, 0.975, 0.99, 0.999, 0.99999)]
    zs = [R(z) for z in (-9.99, -7.1, -5, -3.3, -2, -1.96, -1, -0.3, -0.001, 0, 0.001, 0.3, 0.674,
                         1, 1.2816, 1.645, 1.96, 2.3263, 3, 4.4, 6.9, 9.99)]
    for z in zs:
        emit("NorCdf", z, value=nor_cdf(z))
        emit("NorDensity", z, value=nor_density(z))
        emit("NorTail1", z, value=nor_tail1(z))
    for p in probabilities:
        emit("NorInv", p, value=nor_inv(p))
        emit("NorTail2", p, value=nor_tail2(p))
    for x in (0.25, 0.5, 1, 1.5, 2, 3.7, 5.5, 9.5, 10, 17.5, 56, 200.5, 5000):
        emit("LogGammaStar", R(x), value=log_gamma_star(R(x)))
    for a in (0.5, 1, 2, 3.7, 10, 25, 60, 499.5):
        for b in (0.5, 1, 2.5, 7, 30, 60, 499.5, 5000):
            for x in (1e-7, 0.001, 0.03, 0.2, 0.5, 0.8, 0.97, 0.9999):
                emit("BetaInc", R(x), R(a), R(b), value=beta_inc(R(x), R(a), R(b)))
    dfs = [R(d) for d in (1, 1.5, 2, 3, 4.7, 8, 10, 15.3, 29, 58, 120, 998, 5000)]
    for df in dfs:
        for z in zs:
            emit("TCdf", z, df, value=t_cdf(z, df))
            emit("NcTCdf", z, df, 1.7, value=nct_cdf(z, df, R(1.7)))
        for p in probabilities:
            emit("TInv", p, df, value=t_inv(p, df))
    for df in [R(d) for d in (1, 2, 3, 4, 5, 7.3, 8, 10, 11, 12.5, 20, 21, 22, 40, 41, 60.5, 200)]:
        for x in (0.01, 0.3, 1, 2.5, 3.84, 7, 12, 21, 35, 60, 180, 250):
            emit("Chi2Tail1", df, R(x), value=chi2_tail1(df, R(x)))
            emit("Chi2Cdf", R(x), df, value=chi2_cdf(R(x), df))
            for lam in (0, 0.7, 8, 30, 51):
                emit("NcChi2Cdf", R(x), df, R(lam), value=ncchi2_cdf(R(x), df, R(lam)))
        for p in probabilities:
            if 2 < df or p > 0.0005:
                emit("Chi2Tail2", df, p, value=chi2_tail2(df, p))
            if 2 < df or p < 0.9995:
                emit("Chi2Inv", p, df, value=chi2_inv(p, df))
    for df1 in [R(d) for d in (1, 2, 3, 4, 7, 10, 11, 15, 31, 60, 150)]:
        for df2 in [R(d) for d in (1, 2, 5, 10, 11, 20, 31, 100, 101, 500)]:
            for f in (0.05, 0.5, 1, 1.8, 3, 6.5, 20):
                emit("FTail1", df1, df2, R(f), value=f_tail1(df1, df2, R(f)))
                emit("FCdf", R(f), df1, df2, value=f_cdf(R(f), df1, df2))
                for lam in (1e-7, 2.5, 14, 49, 51) if f in (0.5, 1.8, 6.5) else ():
                    emit("NcFCdf", R(f), df1, df2, R(lam), value=ncf_cdf(R(f), df1, df2, R(lam)))
            for p in probabilities[2:-1:2]:
                emit("FTail2", df1, df2, p, value=f_tail2(df1, df2, p))
                emit("FInv", p, df1, df2, value=f_inv(p, [df1], [df2]))
    for df1, df2 in ((2.5, 20), (3, 47.3), (7.7, 33.3), (15.5, 60), (12, 60.25), (15.5, 60.25),
                     (1500, 5), (5, 1500.5), (1500.5, 10.5), (1500, 10.5), (10.5, 1500), (0.5, 5)):
        for p in (0.05, 0.5, 0.95, 0.99):
            emit("FInv", R(p), R(df1), R(df2), value=f_inv(R(p), [R(df1)], [R(df2)]))
    for x in zs:
        emit("LaplaceCdf", x, value=R(((1 - expc(-abs(x))) * sgn(x) + 1) / 2))
        emit("LaplaceDensity", x, value=R(expc(-abs(x)) / 2))
        emit("CauchyCdf", x, value=R(math.atan(x) / PI + 0.5))
        emit("CauchyDensity", x, value=R((1 / PI) / (x * x + 1)))
        emit("LogisticCdf", x, value=R(1 / (1 + expc(-x))))
        emit("LogisticDensity", x, value=R(expc(-x) / (1 + expc(-x)) ** 2))
        emit("ExtremeCdf", x, value=R(expc(-expc(-x))))
        emit("ExtremeDensity", x, value=R(expc(-expc(-x)) * expc(-x)))
        if x > 0:
            emit("ExpCdf", x, value=R(1 - expc(-x)))
            emit("ExpDensity", x, value=R(expc(-x)))
            for s, g in ((1, 1), (2.5, 0.5), (0.7, 3.3)):
                s, g = R(s), R(g)
                emit("WeibullCdf", x, s, g, value=weibull_cdf(x, s, g))
                emit("WeibullDensity", x, s, g, value=weibull_density(x, s, g))
                emit("LognormCdf", x, s, g, value=nor_cdf(R((math.log(x) - s) / g)))
                emit("LognormDensity", x, s, g, value=lognorm_density(x, s, g))
                emit("GammaDensity", x, s, g, value=gamma_density(x, s, g))
    for q in probabilities:
        emit("ExpInv", q, value=R(-math.log(1 - q)))
        emit("UniformInv", q, value=R(q - 0.5))
        emit("LaplaceInv", q, value=R(-sgn(q - 0.5) * math.log(1 - 2 * abs(q - 0.5))))
        emit("CauchyInv", q, value=R(math.tan((q - 0.5) * PI)))
        emit("LogisticInv", q, value=R(math.log(q / (1 - q))))
        emit("ExtremeInv", q, value=R(-math.log(-math.log(q))))
        for s, g in ((1, 1), (2.5, 0.5), (0.7, 3.3)):
            s, g = R(s), R(g)
            emit("WeibullInv", q, s, g, value=weibull_inv(q, s, g))
            emit("LognormInv", q, s, g, value=R(expc(R(nor_inv(q) * g + s))))


def discrete():
    ps = [R(p) for p in (0.0001, 0.03, 0.3, 0.5, 0.7, 0.99)]
    for n in (1, 7, 24, 60, 61, 200, 1000):
        for p in ps:
            for x in sorted({0, 1, n // 4, n // 2, n // 2 + 1, (7 * n) // 10, n - 1, n}):
                emit("BinDensity", float(n), x, p, value=bin_density(float(n), x, p))
                emit("BinCdf", float(n), x, p, value=bin_cdf(float(n), x, p))
            if n <= 200:
                for q in (R(0.025), R(0.5), R(0.99)):
                    emit("BinInv", q, float(n), p, value=bin_inv(q, float(n), p))
    for n in (24.5, 24.75):
        for x in (3, 12, 13, 24):
            emit("BinDensity", R(n), x, R(0.3), value=bin_density(R(n), x, R(0.3)))
            emit("BinCdf", R(n), x, R(0.3), value=bin_cdf(R(n), x, R(0.3)))
    for popsize, n in ((10, 4), (60, 25), (300, 40), (1000, 100), (1000, 900)):
        for p in ps:
            for x in sorted({0, 1, n // 4, n // 2, n // 2 + 1, n - 1, n}):
                emit("HyperDensity", popsize, n, x, p,
                     value=R(hyper_density(popsize, n, x, p)))
                emit("HyperCdf", popsize, n, x, p, value=hyper_cdf(popsize, n, x, p))
    for lam in [R(v) for v in (0.2, 1, 4.7, 20, 50, 100, 300)]:
        for x in (0, 1, 4, 20, 50, 51, 75, 120, 300):
            emit("PoissonDensity", x, lam, value=poisson_density(x, lam))
            emit("PoissonCdf", float(x), lam, value=poisson_cdf(float(x), lam))
        for q in (R(0.025), R(0.5), R(0.99)):
            emit("PoissonInv", q, lam, value=poisson_inv(q, lam))
    for n in (2, 3, 4, 5, 11, 20, 37, 50, 51, 200.5):
        for d in [R(v) for v in (0.05, 0.12, 0.2, 0.35, 0.6, 0.9)]:
            emit("KolSmiCdf", R(n), d, value=kol_smi_cdf(R(n), d))
            for probs in ((0.25, 0.25, 0.25, 0.25), (0.1, 0.2, 0.3, 0.4), (0.5, 0.3, 0.2)):
                probs = [R(v) for v in probs]
                for side in (0, 1):
                    emit("KolSmiDiscreteCdf", R(n), d, side, *probs,
                         value=kol_smi_discrete_cdf(R(n), d, side, probs))
    for n1, n2 in ((5, 8), (30, 40), (500, 200)):
        for d in [R(v) for v in (0.001, 0.02, 0.1, 0.2, 0.3, 0.5)]:
            for flag in (0, 1):
                emit("KolSmiTwoCdf", n1, n2, d, flag, value=kol_smi_two_cdf(n1, n2, d, flag))


if __name__ == "__main__":
    main()
    discrete()
