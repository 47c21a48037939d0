# The exact values of the worked examples of the help once more, with R's own distributions: they
# confirm those of help_examples.py. Run: Rscript checks/reference/help_examples.R

twoSidedT <- function(alpha, ncp, df) {
  t <- qt(1 - alpha / 2, df)
  pt(t, df, ncp, lower.tail = FALSE) + pt(-t, df, ncp)
}
oneSidedT <- function(alpha, ncp, df) pt(qt(1 - alpha, df), df, ncp, lower.tail = FALSE)
oneSidedZ <- function(alpha, shift) pnorm(shift - qnorm(1 - alpha))
tostZ <- function(alpha, low, high) {
  z <- qnorm(1 - alpha)
  pnorm(low - z) + pnorm(high - z) - 1
}
# The estimated variance over the true one is a chi-square over its degrees of freedom.
tostT <- function(alpha, low, high, df) {
  t <- qt(1 - alpha, df)
  end <- ((low + high) / (2 * t))^2 * df
  inside <- function(q) {
    u <- sqrt(q / df)
    (pnorm(high - t * u) - pnorm(t * u - low)) * dchisq(q, df)
  }
  integrate(inside, 0, min(end, df + 20 * sqrt(2 * df)), rel.tol = 1e-10, subdivisions = 2000)$value
}
crossover <- function(cv, ratio, n, alpha = 0.05) {
  se <- sqrt(log(1 + cv^2) / n)
  tostT(alpha, log(ratio / 0.8) / se, log(1.25 / ratio) / se, 2 * n - 2)
}
se <- function(sd, n) sd * sqrt(2 / n)
solve <- function(power, target, low, high)
  uniroot(function(x) power(x) - target, c(low, high), tol = 1e-10)$root
show <- function(number, ...) cat(number, sprintf("%.6g", c(...)), "\n")

show(9301,
     solve(function(n) twoSidedT(0.05, 10 / se(20, n), 2 * n - 2), 0.80, 3, 1000),
     twoSidedT(0.05, 10 / se(20, 64), 126),
     solve(function(d) twoSidedT(0.05, d / se(20, 50), 98), 0.80, 1, 30))
show(9302,
     solve(function(n) twoSidedT(0.05, 2 / 5 * sqrt(n), n - 1), 0.90, 3, 1000),
     twoSidedT(0.05, 2 / 5 * sqrt(50), 49))
fPower <- function(alpha, df1, df2, factor, effect)
  pf(qf(1 - alpha, df1, df2), df1, df2, ncp = factor * effect^2, lower.tail = FALSE)
show(9303,
     solve(function(n) fPower(0.01, 3, 4 * n - 4, 4 * n, 39.5285 / 25), 0.90, 2, 50),
     fPower(0.01, 3, 8, 12, 39.5285 / 25), fPower(0.01, 3, 12, 16, 39.5285 / 25))
show(9304,
     solve(function(n) fPower(0.05, 6, 12 * (n - 1), 12 * n, 0.5 / 1.2), 0.90, 2, 50),
     fPower(0.05, 6, 84, 96, 0.5 / 1.2))
show(9305,
     solve(function(n) fPower(0.05, 2, 12 * n - 5, 2 * n, 10 / 12), 0.80, 1, 50),
     fPower(0.05, 2, 67, 12, 10 / 12))
show(9307, fPower(0.05, 4, 12, 2.5, 8 / 3.2),
     solve(function(e) fPower(0.05, 4, 12, 2.5, e / 3.2), 0.80, 1, 30))
own <- function(r) fPower(0.05, 3, 3 * (3 * r - 1), 2 * r, 6 / 5)
show(9308, solve(own, 0.80, 2, 50), own(6))
random <- function(r) fPower(0.05, 2, 2 * (r - 1), 1.5 * r, 1)
show(9309, solve(random, 0.80, 2, 50), random(6))
show(9311, solve(function(b) fPower(0.05, 3, 3 * (b - 1), b / 2, 2), 0.80, 2, 50),
     fPower(0.05, 3, 15, 3, 2))
show(9312, solve(function(c) fPower(0.05, 2, 8 * (c - 1), 3 * c / 2, 1), 0.80, 2, 50),
     fPower(0.05, 2, 56, 12, 1))
covariate <- 4 / 15 / sqrt(1 - 0.6^2)
show(9431,
     solve(function(n) fPower(0.05, 2, 3 * n - 4, 3 * n, covariate), 0.90, 3, 500),
     fPower(0.05, 2, 176, 180, covariate))
show(9375,
     solve(function(n) tostT(0.05, 20 / se(40, n), 20 / se(40, n), 2 * n - 2), 0.90, 20, 1000),
     tostT(0.05, 24 / se(40, 88), 16 / se(40, 88), 174))
show(9376,
     solve(function(n) tostZ(0.05, log(1.25) / se(0.4, n), log(1.25) / se(0.4, n)), 0.90, 5, 1000),
     solve(function(r) tostZ(0.05, log(1.25) / se(0.4, 60), log(r) / se(0.4, 60)), 0.90, 1.01, 3))
show(9379,
     solve(function(n) crossover(0.2, 0.95, n), 0.80, 3, 1000),
     crossover(0.2, 0.95, 10),
     solve(function(cv) crossover(cv, 0.95, 14), 0.80, 0.1, 0.5))
show(9380,
     solve(function(n) crossover(0.25, 1.05, n), 0.90, 4, 1000),
     solve(function(ratio) crossover(0.25, ratio, 18), 0.90, 1.0, 1.2))
show(9382,
     solve(function(n) oneSidedT(0.025, 5 / se(15, n), 2 * n - 2), 0.90, 5, 1000),
     solve(function(m) oneSidedT(0.025, -m / se(15, 150), 298), 0.90, -20, -1))
show(9383,
     solve(function(n) oneSidedZ(0.025, log(1 / 0.67) / se(0.8, n)), 0.90, 5, 1000),
     oneSidedZ(0.025, log(0.95 / 0.67) / se(0.8, 84)))

# --- Proportions

# How many of the first probabilities together stay within the level. An exact tie counts as
# within.
exactTail <- function(p, level) sum(cumsum(p) <= level + 1e-12)
fisher <- function(n, p1, p2, level = 0.05) {
  power <- 0
  for (t in 0:(2 * n)) {
    x <- max(0, t - n):min(n, t)
    given <- dhyper(x, n, n, t)
    joint <- dbinom(x, n, p1) * dbinom(t - x, n, p2)
    power <- power + sum(head(joint, exactTail(given, level / 2))) +
      sum(tail(joint, exactTail(rev(given), level / 2)))
  }
  power
}
mcnemar <- function(n, s, d, level = 0.05) {
  r <- (s + d) / (2 * s)
  given <- sapply(1:199, function(m) {
    k <- exactTail(dbinom(0:m, m, 0.5), level / 2)
    pbinom(k - 1, m, r) + pbinom(m - k, m, r, lower.tail = FALSE)
  })
  sum(dbinom(1:199, n, s) * given)
}
betweenWhole <- function(power, target, n) {
  a <- power(n)
  b <- power(n + 1)
  stopifnot(a < target, target <= b)
  n + (target - a) / (b - a)
}
unpooled <- function(p1, p2, n) sqrt((p1 * (1 - p1) + p2 * (1 - p2)) / n)
twoProportions <- function(n, p1, p2, alpha = 0.05) {
  p <- (p1 + p2) / 2
  pnorm((abs(p2 - p1) - qnorm(1 - alpha / 2) * unpooled(p, p, n)) / unpooled(p1, p2, n))
}
tostProportions <- function(n, p1, p2, limit, alpha = 0.05) {
  z <- qnorm(1 - alpha)
  m <- (p1 + p2) / 2
  s0 <- unpooled(m - limit / 2, m + limit / 2, n)
  s1 <- unpooled(p1, p2, n)
  pnorm((p2 - p1 + limit - z * s0) / s1) + pnorm((limit - p2 + p1 - z * s0) / s1) - 1
}
# p10 + p01 by the formula of Tango (1998), where help_examples.py maximises the likelihood.
likeliestSum <- function(s, d, d0) {
  larger <- (s + sign(d0) * d) / 2
  smaller <- s - larger
  e <- abs(d0)
  b <- -larger - smaller + (2 - larger + smaller) * e
  2 * (sqrt(b^2 + 8 * smaller * e * (1 - e)) - b) / 4 + e
}
pairsShift <- function(n, s, d, d0, alpha) {
  se0 <- sqrt((likeliestSum(s, d, d0) - d0^2) / n)
  pnorm((d - d0 - qnorm(1 - alpha) * se0) / sqrt((s - d^2) / n))
}
tostPairs <- function(n, s, d, limit, alpha = 0.05)
  pairsShift(n, s, d, -limit, alpha) + pairsShift(n, s, -d, -limit, alpha) - 1

show(9320,
     betweenWhole(function(n) fisher(n, 0.2, 0.6), 0.80, 26),
     fisher(27, 0.2, 0.6),
     solve(function(p) fisher(20, 0.2, p), 0.80, 0.3, 0.95))
show(9321,
     betweenWhole(function(n) mcnemar(n, 0.15, 0.05), 0.90, 651),
     solve(function(d) mcnemar(500, 0.15, d), 0.90, 0.02, 0.10))
show(9322,
     solve(function(n) twoProportions(n, 0.4, 0.3), 0.90, 3, 10000),
     twoProportions(400, 0.4, 0.3))
show(9377,
     solve(function(n) tostProportions(n, 0.8, 0.8, 0.15), 0.80, 10, 1000),
     tostProportions(120, 0.8, 0.83, 0.15))
show(9384,
     solve(function(n) oneSidedZ(0.025, 0.1 / unpooled(0.85, 0.85, n)), 0.80, 10, 1000),
     solve(function(m) oneSidedZ(0.025, -m / unpooled(0.85, 0.85, 150)), 0.80, -0.5, -0.01))
show(9421,
     sapply(c(0.2, 0.3), function(s)
       solve(function(n) pairsShift(n, s, 0.1, 0, 0.025), 0.80, 3, 10000)))
show(9422,
     solve(function(n) tostPairs(n, 0.15, 0, 0.1), 0.90, 10, 1000),
     tostPairs(181, 0.15, 0.02, 0.1))
show(9423,
     sapply(c(0.18, 0.25), function(s)
       solve(function(n) pairsShift(n, s, 0, -0.1, 0.025), 0.80, 10, 1000)))

# --- Parameters of distributions ---------------------------------------------------------------

lognormalWidthProbability <- function(n, shape, width, level) {
  half <- qt((1 + level) / 2, n - 1) * shape / sqrt(n)
  pchisq((n - 1) * (asinh(width / 2) / half)^2, n - 1)
}
# n failures of gamma distributed total time.
lifeTest <- function(n, ratio, alpha = 0.05)
  pgamma(qgamma(alpha, n), n, scale = ratio)
finiteError <- function(n, p, N, quantile) quantile * sqrt(p * (1 - p) / n * (N - n) / (N - 1))
twoRates <- function(time, l1, l2, alpha = 0.05) {
  shift <- abs(l2 - l1) / sqrt((l1 + l2) / time)
  pnorm(shift - qnorm(1 - alpha / 2)) + pnorm(-shift - qnorm(1 - alpha / 2))
}
correlationWidth <- function(n, r, level) {
  h <- qnorm((1 + level) / 2) / sqrt(n - 3)
  tanh(atanh(r) + h) - tanh(atanh(r) - h)
}

# Repeated measurements; epsilon from the traces of the centred covariance matrix, its bias from
# numerical derivatives.
epsilonOf <- function(roots) sum(roots)^2 / (length(roots) * sum(roots^2))
biasOf <- function(roots) {
  h <- 1e-4
  at <- function(i, x) epsilonOf(replace(roots, i, roots[i] + x))
  bias <- 0
  for (i in seq_along(roots)) {
    first <- (at(i, h) - at(i, -h)) / (2 * h)
    second <- (at(i, h) - 2 * at(i, 0) + at(i, -h)) / h^2
    others <- roots[-i]
    bias <- bias + second * roots[i]^2 + sum(first * roots[i] * others / (roots[i] - others))
  }
  bias
}

oneWithin <- function(n, k, sd, rho, effect) {
  centre <- diag(k) - 1 / k
  s <- sd^2 * rho^abs(outer(1:k, 1:k, "-"))
  roots <- eigen(centre %*% s %*% centre, symmetric = TRUE)$values[1:(k - 1)]
  e <- epsilonOf(roots) + biasOf(roots / mean(roots)) / (n - 1)
  fPower(0.05, (k - 1) * e, (k - 1) * (n - 1) * e, n * k * effect^2 / mean(roots) * e, 1)
}
interaction <- function(n, a, b, sd, rho, effect) {
  e <- 1 + 2 * (1 / (b - 1) - 1) / (a * n - 1)
  fPower(0.05, (a - 1) * (b - 1) * e, (b - 1) * (a * n - a) * e,
           a * n * b * (effect / sd)^2 / (1 - rho) * e, 1)
}
hotelling <- function(n, p, d) fPower(0.05, p, n - p, d * n, 1)
hotellingTwo <- function(n, p, d) fPower(0.05, p, 2 * n - p - 1, d * n / 2, 1)
twoGroups <- function(total, b, d) fPower(0.05, b - 1, total - b + 1, d * total / 4, 1)

show(9313, solve(function(n) oneWithin(n, 4, 12, 0.6, 3), 0.90, 5, 500), oneWithin(39, 4, 12, 0.6, 3))
show(9314, solve(function(n) interaction(n, 2, 4, 8, 0.5, 1.5), 0.80, 5, 500),
     interaction(21, 2, 4, 8, 0.5, 1.5))
show(9315, solve(function(n) hotelling(n, 3, 0.487), 0.90, 5, 500), hotelling(20, 3, 0.487))
show(9316, solve(function(n) hotellingTwo(n, 4, 1), 0.90, 5, 500), hotellingTwo(25, 4, 1))
show(9317, solve(function(n) hotelling(n, 3, 0.8), 0.90, 5, 500), hotelling(18, 3, 0.8))
show(9318, solve(function(n) twoGroups(n, 4, 0.8), 0.80, 6, 500), twoGroups(60, 4, 0.8))

show(9801, (2 * qnorm(0.975) / 1)^2, 2 * qnorm(0.975) / sqrt(16))
show(9802,
     solve(function(n) lognormalWidthProbability(n, 0.6, 0.4, 0.95), 0.90, 10, 1000),
     lognormalWidthProbability(40, 0.6, 0.4, 0.95))
show(9803, solve(function(n) lifeTest(n, 0.5), 0.95, 2, 200), lifeTest(20, 0.5))
show(9805, qnorm(0.975)^2 * 0.2 * 0.8 / 0.05^2, qnorm(0.975) * sqrt(0.2 * 0.8 / 150))
show(9806,
     solve(function(n) finiteError(n, 0.3, 600, qnorm(0.975)), 0.05, 3, 599),
     finiteError(150, 0.3, 600, qnorm(0.975)))
show(9807, solve(function(t) twoRates(t, 0.5, 0.35), 0.90, 3, 10000), twoRates(300, 0.5, 0.35))
show(9809,
     solve(function(n) finiteError(n, 0.5, 3200, qnorm(1 - 0.0455 / 2)), 0.05, 3, 3199),
     finiteError(200, 0.5, 3200, qnorm(1 - 0.0455 / 2)))
show(9811,
     solve(function(n) correlationWidth(n, 0.5, 0.95), 0.2, 5, 10000),
     correlationWidth(100, 0.5, 0.95))

# --- Regression, correlation, crossover designs --------------------------------------------------

slopePower <- function(n, slope = 2)
  twoSidedT(0.05, slope * 2 * sqrt(n) / 14, n - 2)
fPower <- function(n, p, m, a, b) {
  df2 <- n - m - 1
  pf(qf(0.95, p, df2), p, df2, n * (a^2 - b^2) / (1 - a^2), lower.tail = FALSE)
}
wald <- function(alpha, twoSided, b, se0, se1) {
  z <- qnorm(1 - if (twoSided) alpha / 2 else alpha)
  pnorm((abs(b) - z * se0) / se1) + if (twoSided) pnorm((-abs(b) - z * se0) / se1) else 0
}
hsieh <- function(n, p, ratio, r) {
  b <- log(ratio)
  e1 <- exp(-b^2 / 4)
  d <- (1 + (1 + b^2) * exp(5 * b^2 / 4)) / (1 + e1)
  unit <- sqrt((1 + 2 * p * d) / (p * (1 - r^2) * n))
  wald(0.05, FALSE, b, unit, e1 * unit)
}
hsiehBinary <- function(n, p, ratio, x, r) {
  v0 <- 1 / (1 - x) + 1 / x
  v1 <- 1 / (1 - x) + 1 / (x * ratio)
  r1 <- v1 * x * (1 - x) * ratio^2 / (1 - x + x * ratio)^2
  d <- (sqrt(v0) + r1 * sqrt(v1)) / (sqrt(v0) + sqrt(v1))
  unit <- sqrt((1 + 2 * p * d) / (p * (1 - r^2) * n))
  wald(0.05, TRUE, log(ratio), sqrt(v0) * unit, sqrt(v1) * unit)
}
signorini <- function(n, phi = 1) {
  v0 <- phi / ((1 - 0.3^2) * n * 0.5)
  wald(0.05, TRUE, log(1.25), sqrt(v0), sqrt(v0 / exp(log(1.25)^2 / 2)))
}
rateRatio <- function(n, phi = 1)
  wald(0.05, FALSE, log(1.3), sqrt(phi / (0.85 * 0.25 * n)),
       sqrt(phi * (1 / 0.85 + 1 / (0.85 * 1.3)) / 0.5 / n))
correlation <- function(n, r) wald(0.05, TRUE, atanh(r) * sqrt(n - 3), 1, 1)
twoWay <- function(n, effect, sd, model) {
  df <- if (model == 2) 2 * n - 2 else 4 * n - 3
  twoSidedT(0.05, effect / (sd * sqrt(2 / n * if (model == 0) 1 else 0.5)), df)
}
show(9355, solve(slopePower, 0.90, 5, 300), slopePower(100),
     solve(function(b) slopePower(100, b), 0.90, 0.1, 5))
show(9356, solve(function(n) fPower(n, 3, 7, sqrt(0.3), sqrt(0.2)), 0.80, 12, 1000),
     fPower(100, 3, 7, sqrt(0.3), sqrt(0.2)))
show(9357, solve(function(n) hsieh(n, 0.07, 1.5, 0), 0.80, 5, 9999),
     solve(function(n) hsieh(n, 0.07, 1.5, 0.25), 0.80, 5, 9999), hsieh(500, 0.07, 1.5, 0.25))
show(9358, solve(function(n) hsiehBinary(n, 0.2, 2.2, 0.4, 0.3), 0.80, 5, 9999),
     hsiehBinary(300, 0.2, 2.2, 0.4, 0.3))
show(9359, solve(signorini, 0.90, 5, 9999), signorini(300), signorini(300, 1.5))
show(9360, solve(rateRatio, 0.95, 5, 9999),
     solve(function(n) rateRatio(n, 1.4), 0.95, 5, 9999), rateRatio(800, 1.4))
show(9362, solve(function(n) correlation(n, 0.3), 0.80, 5, 999), correlation(120, 0.3),
     solve(function(r) correlation(120, r), 0.90, 0.01, 0.9))
show(9370, solve(function(n) twoWay(n, 0.15, 0.32, 2), 0.90, 3, 300), twoWay(55, 0.15, 0.32, 2),
     solve(function(n) twoWay(n, 0.15, 0.48, 0), 0.90, 100, 300))
show(9371, solve(function(n) twoWay(n, log(1.25), 0.32, 2), 0.90, 3, 200),
     twoWay(16, log(1.25), 0.32, 2),
     exp(solve(function(d) twoWay(16, d, 0.32, 2), 0.90, 0.01, 1)))

# --- Contingency tables, strata, trends ----------------------------------------------------------

chi2Power <- function(df, lambda) pchisq(qchisq(0.95, df), df, lambda, lower.tail = FALSE)
nonCentrality <- function(p) {
  e <- outer(rowSums(p), colSums(p)) / sum(p)
  sum((p - e)^2 / e) / sum(p)
}
twoSidedNormal <- function(d, se0, se1) {
  q <- qnorm(0.975)
  pnorm((d - q * se0) / se1) + pnorm((-d - q * se0) / se1)
}

w <- round(sqrt(nonCentrality(rbind(c(5, 3, 2), c(4, 3, 3), c(3, 3, 4)))), 7)
show(9323, w, solve(function(n) chi2Power(4, 3 * n * w^2), 0.80, 3, 1000),
     chi2Power(4, 3 * 80 * w^2))

p1 <- c(0.1, 0.2, 0.4)
p2 <- plogis(qlogis(p1) + log(2))
part <- c(0.3, 0.3, 0.4)
average <- (p1 + p2) / 2
sums <- round(c(sum(part / 4 * (p2 - p1)), sum(part / 4 * average * (1 - average)),
                sum(part / 8 * (p1 * (1 - p1) + p2 * (1 - p2)))), 7)
strataPower <- function(n)
  twoSidedNormal(sums[1] - 0.5 / n, sqrt(sums[2] / n), sqrt(sums[3] / n))
show(9324, sums, solve(strataPower, 0.80, 3, 10000), strataPower(400))

p <- c(0.05, 0.08, 0.12, 0.2)
x <- 0:3 - 1.5
terms <- round(c(mean(x * p), mean(p), mean(x^2 * p * (1 - p)), mean(x^2)), 7)
trendPower <- function(n)
  twoSidedNormal(terms[1], sqrt(terms[2] * (1 - terms[2]) * terms[4] / n), sqrt(terms[3] / n))
show(9325, terms, solve(trendPower, 0.85, 3, 10000), trendPower(300))

p <- rbind(c(0.25, 0.1, 0.05), c(0.05, 0.25, 0.1), c(0.02, 0.05, 0.13))
d <- (rowSums(p) - colSums(p))[1:2]
v <- -(p + t(p))
diag(v) <- rowSums(p) + colSums(p) - 2 * diag(p)
lambda <- round(c(d %*% base::solve(v[1:2, 1:2], d)), 7)
show(9406, lambda, solve(function(n) chi2Power(2, n * lambda), 0.80, 3, 1000),
     chi2Power(2, 200 * lambda))

lambda <- round(nonCentrality(rbind(c(0.15, 0.15, 0.1), c(0.15, 0.2, 0.25))), 7)
show(9411, lambda, solve(function(n) chi2Power(2, n * lambda), 0.80, 3, 1000),
     chi2Power(2, 200 * lambda))

# --- General crossover designs -------------------------------------------------------------------

# Information of a design on its treatments, by the projection off subjects, periods and carryover.
information <- function(design, carryover) {
  cells <- data.frame(s = factor(row(design)), p = factor(col(design)))
  z <- model.matrix(~ s + p, cells)
  indicators <- function(x) sapply(seq_len(max(design)), function(k) as.numeric(x == k))
  if (carryover) z <- cbind(z, indicators(cbind(0, design[, -ncol(design)])))
  x <- qr.resid(qr(z), indicators(design))
  crossprod(x)
}
# C is singular in the direction of equal effects only.
designVariance <- function(information, weights)
  c(weights %*% base::solve(information + 1, weights))
four <- rbind(c(1, 4, 2, 3), c(2, 1, 3, 4), c(3, 2, 4, 1), c(4, 3, 1, 2))
three <- rbind(1:3, c(2, 3, 1), c(3, 1, 2), c(1, 3, 2), c(2, 1, 3), 3:1)
v4 <- round(designVariance(information(four, TRUE), c(-1, 0, 0, 1)), 7)
v3 <- round(designVariance(information(three, FALSE), c(-1, 1, 0)), 7)
williamsT <- function(n) twoSidedT(0.05, 0.5 / (0.8 * sqrt(v4 / n)), 12 * n - 9)
williamsTost <- function(n) {
  e <- 0.25 * sqrt(v3 / n)
  tostT(0.05, log(0.95 / 0.8) / e, log(1.25 / 0.95) / e, 12 * n - 4)
}
show(9372, solve(williamsT, 0.90, 2, 100), williamsT(12))
show(9373, solve(williamsTost, 0.90, 2, 100), williamsTost(5))

# --- Tables and graphs ---------------------------------------------------------------------------

# Topic 12: sizes, differences by standard deviations. Topic 13: powers, sizes by differences.
outer(c(5, 10, 15, 20), c(15, 20, 25), Vectorize(function(d, sd)
  power.t.test(delta = d, sd = sd, power = 0.9, sig.level = 0.05, strict = TRUE, tol = 1e-10)$n))
outer(seq(20, 100, 20), c(8, 10, 12), Vectorize(function(n, d)
  power.t.test(n = n, delta = d, sd = 20, sig.level = 0.05, strict = TRUE)$power))
