"""Exact powers of t statistics, for the programs beside it: scipy's non-central t distribution and, for
two one-sided tests, the integral over the distribution of the estimated standard deviation (Owen
1965; Phillips 1990)."""
import math
from scipy import integrate, stats


def t_power(alpha, tails, left, ncp, df):
    if tails == 2:
        t = stats.t.ppf(1 - alpha / 2, df)
        return stats.nct.sf(t, df, ncp) + stats.nct.cdf(-t, df, ncp)
    t = stats.t.ppf(1 - alpha, df)
    return stats.nct.cdf(-t, df, ncp) if left else stats.nct.sf(t, df, ncp)


def tost_power(alpha, low, high, df):
    """P(T > L and T < R are both shown); low, high: distances to the limits in standard errors."""
    t = stats.t.ppf(1 - alpha, df)
    end = (low + high) / (2 * t)
    if end <= 0:
        return 0.0
    def integrand(u):
        # u = estimated over true standard deviation: a chi over the root of its df.
        return (stats.norm.cdf(high - t * u) - stats.norm.cdf(t * u - low)) * \
            stats.chi.pdf(u * math.sqrt(df), df) * math.sqrt(df)
    width = 12 / math.sqrt(2 * df)
    points = [max(0.0, 1 - width), min(end, 1 + width)]
    if points[1] <= points[0]:
        return integrate.quad(integrand, 0, end, limit=400, epsabs=1e-12)[0]
    return integrate.quad(integrand, points[0], points[1], limit=400, epsabs=1e-12)[0]
