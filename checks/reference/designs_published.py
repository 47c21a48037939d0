"""Published powers of analyses of variance, of repeated measurements and of Hotelling's test: from
textbooks, and from the manuals of other statistical programs. Written to
checks/data/validation/anova_published.tsv and repeated_published.tsv:

    /usr/bin/python3 checks/reference/designs_published.py

Each figure is as it is printed there; this program derives the effect from the printed means, and
stops where the exact power differs from the figure by more than its last digit. The tolerance is half
of that digit, and what checks/reference/model_matrices.py allows a power.
"""

import math

import numpy as np

from model_matrices import ROOM, approximate_f, approximate_t, exact_f, exact_t, t_power, text

SAMPLES = 3
HEAD = '\t'.join(('Analysis', 'Samples', 'Tails', 'Left', 'Checks', 'Groups', 'Values', 'Unknown',
                  'Exact', 'Tolerance'))

R = 'R Core Team, R 4: stats, help page of power.anova.test, examples'
COHEN = 'J. Cohen, Statistical Power Analysis for the Behavioral Sciences, 2nd ed. 1988, example 8.1'
WEBPOWER = 'Z. Zhang and K.-H. Yuan, WebPower, manual of wp.kanova, example'
SUPERPOWER = ('A. R. Caldwell, D. Lakens and others, Power Analysis with Superpower, table 6.2 (exact '
              'powers)')
PWR4EXP = 'K. Wang and M. Niu, R package pwr4exp, vignette, example '
DMAR = ('K. Kelley, R package DMAR, help page of ')
PWRSS = 'M. Bulus, R package pwrss, tests of power.f.ancova.keppel'
STEEL = ('R. G. D. Steel and J. H. Torrie, Principles and Procedures of Statistics, 2nd ed. 1980, '
         'page 207 (rust of flax), with the power that SAS GLMPOWER prints')
LRSTAT = 'K. Lu, R package lrstat, example of getDesignRepeatedANOVA'
ZAIONTZ = 'C. Zaiontz, Real Statistics, Hotelling T-Square Power, example 1'


def sd_of(means):
    return float(np.std(np.asarray(means, float)))


def parts(cells):
    """Standard deviations of the main effects, and the interaction's of the cells."""
    cells = np.asarray(cells, float)
    rows = cells.mean(1) - cells.mean()
    columns = cells.mean(0) - cells.mean()
    rest = cells - cells.mean() - rows[:, None] - columns[None, :]
    return sd_of(rows), sd_of(columns), math.sqrt(np.mean(rest ** 2))


def part(cells, factors):
    """The standard deviation of the part of the cells that a set of factors has for its own."""
    for factor in range(cells.ndim):
        mean = cells.mean(factor, keepdims=True)
        cells = cells - mean if factor in factors else np.broadcast_to(mean, cells.shape)
    return math.sqrt(np.mean(cells ** 2))


class Table:
    def __init__(self, name):
        self.name, self.sources, self.rows = name, [], []

    def f(self, source, printed, menu, groups, values, df1, df2, noncentrality, checks='', samples=3):
        """printed: the power, as text."""
        self.add(source, printed, menu, checks, groups, values, samples,
                 exact_f(values[0], df1, df2, noncentrality),
                 approximate_f(values[0], df1, df2, noncentrality))

    def contrast(self, source, printed, menu, groups, values, df, per_mean):
        se = values[137] / math.sqrt(per_mean)
        powers = [t_power(law, values[0], 2, values[247], se, df) for law in (exact_t, approximate_t)]
        self.add(source, printed, menu, '10', groups, values, 3, *powers)

    def add(self, source, printed, menu, checks, groups, values, samples, exact, near):
        digit = 10.0 ** -len(printed.split('.')[1])
        if abs(exact - float(printed)) > 0.51 * digit:
            raise SystemExit(f'{source}: {printed} printed, {exact} exact')
        tolerance = digit / 2 + ROOM + 1.05 * abs(near - exact)
        self.sources.append(f'{source}: power {printed}')
        self.rows.append('\t'.join((f'menu {menu}', str(samples), '2', '0', checks, groups,
                                    ';'.join(f'{k}={text(v)}' for k, v in values.items()), '1',
                                    printed, f'{tolerance:.2g}')))

    def write(self):
        with open(f'checks/data/validation/{self.name}.tsv', 'w', encoding='ascii') as out:
            out.write('# Written by checks/reference/designs_published.py. Published examples, powers as '
                      'printed there, in this order:\n')
            for source in self.sources:
                out.write(f'# - {source}\n')
            out.write('\n'.join((HEAD, *self.rows)) + '\n')


def anova():
    table = Table('anova_published')
    # One-way.
    table.f(R, '0.3535594', 10, '18=0,17=0', {0: 0.05, 34: math.sqrt(0.75), 2: math.sqrt(3), 17: 4,
                                              4: 5, 149: 5}, 3, 16, 5)
    table.f(COHEN + ', as calculated by S. Champely, R package pwr', '0.5149793', 10, '18=0,17=0',
            {0: 0.05, 34: 0.28, 2: 1, 17: 4, 4: 20, 149: 20}, 3, 76, 80 * 0.28 ** 2)
    means = np.array([35.0, 30, 37, 38])
    table.f(PWR4EXP + '1', '0.95467', 10, '18=0,17=0',
            {0: 0.05, 34: sd_of(means), 2: math.sqrt(15), 17: 4, 4: 8, 149: 8}, 3, 28,
            32 * sd_of(means) ** 2 / 15)
    for name, c, printed in (('linear', [-3, -1, 1, 3], '0.7130735'),
                             ('quadratic', [1, -1, -1, 1], '0.5617849'),
                             ('cubic', [-1, 3, -3, 1], '0.8098383')):
        c = np.array(c, float)
        table.contrast(f'{PWR4EXP}1, {name} contrast', printed, 10, '',
                       {0: 0.05, 247: abs(c @ means), 137: math.sqrt(15 * (c @ c)), 17: 4, 326: 8},
                       28, 8)
    table.contrast(DMAR + 'ss_power_contrast, three means and a control', '0.818', 10, '',
                   {0: 0.05, 247: 9, 137: 12 * math.sqrt(4 / 3), 17: 4, 326: 20}, 76, 20)
    # A covariate.
    table.f(PWRSS + ', two groups', '0.807379456', 50, '18=0,17=0',
            {0: 0.05, 34: 0.25, 2: 1, 357: math.sqrt(0.5), 17: 2, 4: 33, 149: 33}, 1, 63,
            66 * 0.25 ** 2 / 0.5)
    spread = sd_of([0.5, 0, 0.4, 0.2])
    table.f(PWRSS + ', four groups', '0.800524082', 50, '18=0,17=0',
            {0: 0.05, 34: spread, 2: 1, 357: math.sqrt(0.5), 17: 4, 4: 38, 149: 38}, 3, 147,
            152 * spread ** 2 / 0.5)
    # Two factors.
    table.f(WEBPOWER + ', 120 subjects, effect size 0.2', '0.4757998', 11, '36=1,17=0',
            {0: 0.05, 34: 0.2, 2: 1, 238: 2, 239: 3, 327: 20}, 2, 114, 120 * 0.2 ** 2)
    for n, printed in ((27, '0.813'), (20, '0.675')):
        table.f(f'{DMAR}ss_power_factorial_anova, 2 x 3, {n} per cell', printed, 11, '36=1,17=0',
                {0: 0.05, 34: 0.25, 2: 1, 238: 2, 239: 3, 327: n}, 2, 6 * (n - 1), 6 * n * 0.25 ** 2)
    # Three factors of two levels, 50 in each cell: size, colour and load.
    cells = np.array([2.0, 2, 6, 1, 6, 6, 1, 8]).reshape(2, 2, 2)
    for kind, tested, name, printed in ((0, (0,), 'size', '0.70330132'),
                                        (0, (2,), 'load', '0.07895322'),
                                        (1, (0, 1), 'size x colour', '0.32172729'),
                                        (1, (0, 2), 'size x load', '0.84912313'),
                                        (2, (0, 1, 2), 'size x colour x load', '0.84912313')):
        effect = part(cells, tested)
        table.f(f'{SUPERPOWER}, {name}', printed, 12, f'38={kind},17=0',
                {0: 0.05, 34: effect, 2: 10, 238: 2, 239: 2, 243: 2, 328: 50}, 1, 392,
                400 * effect ** 2 / 100)
    # Blocks.
    means = [35.1, 34.3, 34.0, 36.7, 36.075, 37.025]
    table.f(STEEL, '0.904', 18, '17=0', {0: 0.05, 34: sd_of(means), 2: 1.151472, 238: 6, 246: 4}, 5,
            15, 24 * sd_of(means) ** 2 / 1.151472 ** 2)
    cells = [[35, 38], [40, 41]]
    for tested, (name, printed) in enumerate((('A', '0.99969'), ('B', '0.76950'),
                                              ('A x B', '0.27138'))):
        effect = parts(cells)[tested]
        table.f(f'{PWR4EXP}2, {name}', printed, 19, f'36={tested},17=0',
                {0: 0.05, 34: effect, 2: 2, 238: 2, 239: 2, 246: 8}, 1, 21, 32 * effect ** 2 / 4)
    table.write()


def repeated():
    table = Table('repeated_published')
    # The error within, epsilon and bias are entered: these programs take the bias for 0.
    within = math.sqrt(0.5)
    for n, epsilon, printed in ((24, 1, '0.817'), (29, 0.75, '0.814'), (20, 1, '0.729')):
        table.f(f'{DMAR}ss_power_rm_anova, {n} subjects, epsilon {epsilon}', printed, 20, '17=0,39=2',
                {0: 0.05, 34: 0.25, 251: within, 249: epsilon, 252: 0, 256: 4, 248: n}, 3 * epsilon,
                3 * epsilon * (n - 1), 4 * n * 0.0625 / 0.5 * epsilon, samples=1)
    spread = sd_of([1.5, 2.5, 2, 0])
    table.f(LRSTAT, '0.9027', 20, '17=0,39=2',
            {0: 0.05, 34: spread, 251: 5 * math.sqrt(0.8), 249: 1, 252: 0, 256: 4, 248: 83}, 3, 246,
            4 * 83 * spread ** 2 / 20, samples=1)
    split = DMAR + 'ss_power_split_plot_anova, '
    table.f(split + 'groups', '0.808', 21, '43=0,39=0,17=0,2=0',
            {0: 0.05, 34: 0.25, 2: 1, 220: 0.5, 238: 2, 256: 4, 4: 41, 37: 41}, 1, 80,
            82 * 4 * 0.0625 / 2.5)
    for tested, name, epsilon, n, square, printed in (
            (1, 'occasions', 1, 12, 0.0625, '0.816'), (2, 'interaction', 1, 12, 0.0625, '0.816'),
            (2, 'interaction, partial eta squared 0.06', 1, 25, 0.06 / 0.94, '0.993'),
            (1, 'occasions, epsilon 0.7', 0.7, 15, 0.0625, '0.808')):
        table.f(split + name, printed, 21, f'43={tested},39=2,17=0,2=0',
                {0: 0.05, 34: math.sqrt(square), 251: within, 249: epsilon, 252: 0, 238: 2, 256: 4, 4: n,
                 37: n}, 3 * epsilon, 3 * epsilon * (2 * n - 2), 8 * n * square / 0.5 * epsilon)
    table.f(ZAIONTZ, '0.823', 30, '', {0: 0.05, 254: 0.25, 256: 3, 248: 50}, 3, 47, 12.5, samples=1)
    table.write()


if __name__ == '__main__':
    anova()
    repeated()
