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
