"""Rows of the files of checks/data/validation, for the programs beside it: an analysis, its values,
the unknown and its exact value (checks/support/validation.h tells the columns)."""
from scipy import optimize

HEAD = 'Analysis\tSamples\tTails\tLeft\tChecks\tGroups\tValues\tUnknown\tExact\tTolerance'


def row(analysis, samples, tails, left, checks, groups, given, unknown, exact, tolerance):
    return [analysis, str(samples), str(tails), '-1' if left else '0', ','.join(map(str, checks)),
            ','.join(f'{g}={o}' for g, o in groups.items()),
            ';'.join(f'{k}={v:g}' for k, v in given.items()), str(unknown), f'{exact:.9g}',
            f'{tolerance:.3g}']


def solved(analysis, samples, tails, left, groups, values, unknown, power, error, bracket=None,
           checks=()):
    """power(values) is the exact power; error what the program's power may be away from it."""
    if unknown == 1:
        exact, tolerance = power(values), error
    else:
        at = lambda x: power({**values, unknown: x}) - values[1]
        exact = optimize.brentq(at, *bracket, xtol=1e-11, rtol=1e-13)
        step = 1e-5 * max(abs(exact), 1e-2)
        tolerance = error / abs((at(exact + step) - at(exact - step)) / (2 * step)) + 2e-5
    given = {k: v for k, v in values.items() if k != unknown}
    return row(analysis, samples, tails, left, checks, groups, given, unknown, exact, tolerance)


def write(name, title, program, rows, notes=()):
    with open(f'checks/data/validation/{name}.tsv', 'w', encoding='utf-8') as out:
        out.write(f'# {title} checks/reference/{program}.py (scipy).\n')
        out.writelines(f'# - {note}\n' for note in notes)
        out.write(HEAD + '\n')
        out.writelines('\t'.join(r) + '\n' for r in rows)
