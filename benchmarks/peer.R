# What R's stats package takes for tasks that the benchmarks of the program have: processor time for
# one of them, by its function for the purpose.
#
# Prints lines "task<TAB>seconds<TAB>result<TAB>how".
repetitions <- 5

clock <- function(task) {
  times <- numeric(repetitions)
  for (i in seq_len(repetitions)) {
    times[i] <- sum(system.time(result <- task(), gcFirst = FALSE)[1:2])
  }
  list(seconds = median(times), result = result)
}

# Many times where one is too short for the clock.
many <- function(count, task) function() {
  for (i in seq_len(count)) result <- task()
  result
}

t.size <- function(effect = 0.5, sd = 1) {
  power.t.test(delta = effect, sd = sd, sig.level = 0.05, power = 0.8, strict = TRUE)$n
}

t.table <- function() {
  sapply(c(0.8, 0.9, 1, 1.1, 1.2),
         function(sd) sapply(0:99, function(k) t.size(0.3 + 0.005 * k, sd)))
}

graph <- function() {
  sizes <- t.table()
  file <- tempfile(fileext = ".png")
  png(file, width = 900, height = 600)
  matplot(0.3 + 0.005 * 0:99, sizes, type = "l", xlab = "H1: Mean 2 - Mean 1",
          ylab = "Sample Size 1")
  dev.off()
  unlink(file)
  sizes
}

anova.size <- function() {
  power.anova.test(groups = 4, between.var = 0.25 / 3, within.var = 1, power = 0.8)$n
}

fisher.power <- function(n = 50, p1 = 0.1, p2 = 0.4) {
  power <- 0
  for (x in 0:n) for (y in 0:n) {
    if (fisher.test(matrix(c(x, n - x, y, n - y), 2), conf.int = FALSE)$p.value <= 0.05)
      power <- power + dbinom(x, n, p1) * dbinom(y, n, p2)
  }
  power
}

# One study under H0 and one under H1; the share that rejects under H1.
replicates <- function(count, size, shift, test) function() {
  set.seed(1)
  rejected <- 0
  for (i in seq_len(count)) {
    test(rnorm(size), rnorm(size))
    rejected <- rejected + (test(rnorm(size), rnorm(size, shift)) <= 0.05)
  }
  rejected / count
}

tell <- function(name, count, task, how) {
  timed <- clock(task)
  cat(sprintf("%s\t%.3g\t%.6g\t%s\n", name, timed$seconds / count, timed$result[1], how))
}

cat("# R ", R.version$major, ".", R.version$minor, "\n", sep = "")
tell("t-size", 200, many(200, t.size), "power.t.test")
tell("t-table", 1, t.table, "power.t.test")
tell("t-graph", 1, graph, "power.t.test, matplot into a png")
tell("anova-size", 200, many(200, anova.size), "power.anova.test")
tell("tukey", 200, many(200, function() qtukey(0.95, 4, 30) / sqrt(2)), "qtukey")
tell("fisher-power", 1, fisher.power, "fisher.test over all tables")
tell("t-replicate", 2000,
     replicates(2000, 20, 0.9, function(a, b) t.test(a, b, var.equal = TRUE)$p.value), "t.test")
tell("rank-replicate", 2000,
     replicates(2000, 30, 0.75,
                function(a, b) wilcox.test(a, b, exact = FALSE, correct = FALSE)$p.value),
     "wilcox.test")
