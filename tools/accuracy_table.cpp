// Writes docs/accuracy.md: how far each distribution function is from the exact one, over the
// values of checks/data/exact.csv.
#include "validation/functions.h"
#include "validation/number.h"

#include <cmath>
#include <fstream>
#include <iostream>

using namespace quorvanta;
using namespace quorvanta::validation;

namespace {

constexpr const char* Introduction = R"(# Accuracy of the distribution functions

Written by `tools/accuracy_table` from `checks/data/exact.csv`; don't edit.

The figures of the program are defined by its own approximations, most of them closed formulas held
in 32 bits, and not by the exact functions. These tables say how far the two are apart. The exact
values come from mpmath and scipy (`checks/reference/exact.py`), at arguments that are 32-bit floats.

A row is a range of arguments with the number of points looked at, the largest absolute deviation
and the largest relative one, each with the arguments where it was found, in the order in which the
function takes them. *Bound* says what the checks hold every single point to: the error bound
published with the formula, or the deviation of the formula itself without any rounding to 32 bits
at that point, plus what the rounding points can add. Rows that are *not bounded* are known weak
corners; they are listed here so that nobody has to find them.

The corners worth knowing:

- The incomplete beta function takes every argument below 1e-5 for 1e-5. So `TCdf` does not pass
  through 0.5 but jumps there, by 0.008 with 10 degrees of freedom and by 0.08 with 1000; `FCdf` and
  `Chi2Cdf` (which is an F with 10000 degrees of freedom up to df = 21) stay at the same value for
  all smaller arguments, chi-square below 0.1. Critical values are there with one degree of freedom of
  the error alone, where no F-test keeps a level below 0.002, or 0.008 with 10 degrees of freedom of
  the effect: two treatments in two blocks, tested at 0.001, are given a power of 0.98 where 0.90 is
  exact.
- `LogGammaStar` is a 32-bit float of 37000 for the 5000 that `Chi2Cdf` hands to it, so chi-square
  up to df = 21 is right to 0.001 only.
- The beta function's factor 1/B(a, b) is cut off at exp(75): a and b both above 56 reach that, and
  smaller ones beside a very large one. The sums of `NcFCdf` meet it with one degree of freedom near
  10 and the other above 500, in terms that hardly count at a level of 0.05: at that critical value a
  power stays right to about 0.001 up to the 999 degrees of freedom to which `FInv` cuts both, and
  would be wrong by 0.14 with 20000. The smaller the level, the more these terms count: with 999
  degrees of freedom a power is too large by up to 0.011 at 0.01 and by up to 0.07 at 0.001. Ten
  groups of 101, tested at 0.001, are given 0.838 where 0.800 is exact; groups of 50 are right to
  0.003.
- The bisection of `FInv` ends within 2e-5 (f + df2/df1): fine for a critical value above 1, coarse
  for the lower quantiles of F with few numerator and many denominator degrees of freedom.
- The quantile of chi-square climbs in steps over a broken df up to 10, and its distribution function
  by up to 0.005 over one up to 21. Searches need curves: for broken df that low the engines
  interpolate between the whole ones.
- Non-central t is a normal approximation: over its whole range off by up to 0.04 with 2 to 5 degrees
  of freedom, 0.007 with 10 to 30, and 0.0007 from 60 on. With 1 and 2 degrees of freedom it gives
  more power than with 3: a regression slope in 3 subjects has 0.293 where 0.057 is exact.
- `PoissonCdf` is a chi-square and shares its corners: with a mean below 0.05 it stays where it is.
- `KolSmiCdf` takes the limit for n above 50, which is too small by 0.006 at the 5 % level there: the
  test rejects somewhat too rarely.
- `NorTail` in its second mode loses its digits below 0.001.
- The critical values of multiple comparisons are integrals over the estimated standard deviation,
  right to 1e-4 up to 45 degrees of freedom. From 50 to 59 the density of chi-square ends at 100,
  and from 180 on the points are farther apart than it is wide: near 59 and from 200 to the 250 that
  are used at most they are off by up to 0.8 % at a level of 0.05, and by 2.7 % at 0.01. The
  one-sided value for comparisons with a control is the two-sided one of twice the level, right to
  0.0006 from 20 degrees of freedom on. `checks/data/multiple_comparisons.tsv` has 233 exact values.
)";

std::string Number(f64 x) {
    return NumberText(x, 6);
}

std::string Deviation(f64 x) {
    return NumberText(x, 1, std::chars_format::scientific);
}

// A deviation and the row where it is the largest so far.
struct Worst {
    f64 Deviation = 0;
    const ReferenceRow* Row = nullptr;

    void Meet(f64 deviation, const ReferenceRow& row) {
        if (Row != nullptr && !(deviation > Deviation))
            return;
        Deviation = deviation;
        Row = &row;
    }

    std::string Place() const {
        std::string place;
        for (const f64 argument : Row->Arguments)
            place += (place.empty() ? "" : ", ") + Number(argument);
        return place;
    }
};

void WriteSection(std::ostream& out, const ReferenceSection& section) {
    const ReferenceFunction& function = ReferenceFunctions().at(section.Function);
    Worst absolute;
    Worst relative;
    for (const ReferenceRow& row : section.Rows) {
        const f64 deviation = std::fabs(function(row.Arguments) - row.Value);
        absolute.Meet(deviation, row);
        if (row.Value != 0)
            relative.Meet(deviation / std::fabs(row.Value), row);
    }
    out << "| " << section.Range << " | " << section.Rows.size() << " | "
        << Deviation(absolute.Deviation) << " | " << absolute.Place() << " | "
        << Deviation(relative.Deviation) << " | " << relative.Place() << " | " << section.Bound
        << " |\n";
}

} // namespace

int main() {
    const std::string source = SOURCE_DIR;
    std::ofstream out(source + "/docs/accuracy.md");
    out << Introduction;
    std::string function;
    for (const ReferenceSection& section : ReadReferenceTable(source + "/checks/data/exact.csv")) {
        if (section.Function != function) {
            function = section.Function;
            out << "\n## " << function
                << "\n\n| Range | Points | Absolute | at | Relative | at | Bound |\n"
                << "|---|---|---|---|---|---|---|\n";
        }
        WriteSection(out, section);
    }
    out.close();
    if (!out) {
        std::cerr << "can't write docs/accuracy.md\n";
        return 1;
    }
    return 0;
}
