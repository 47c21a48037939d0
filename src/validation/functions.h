// Tables of reference values, and the distribution functions by the names that they have there.
#pragma once

#include "core/types.h"

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace quorvanta::validation {

// One line of a table: function, arguments, value, and in tables of exact values the tolerance.
struct ReferenceRow {
    std::string Function;
    std::vector<f64> Arguments;
    f64 Value = 0;
    f64 Tolerance = 0;
};

// Rows with a heading: function, range of the arguments, origin of the tolerances.
struct ReferenceSection {
    std::string Function;
    std::string Range;
    std::string Bound;
    std::vector<ReferenceRow> Rows;
};

// The sections of a file of comma-separated values. A line "[function; range; bound]" opens a
// section, a line that begins with "#" is a comment; rows before the first heading have none.
// Throws std::runtime_error for a row without numbers, and if there is no file of that path.
std::vector<ReferenceSection> ReadReferenceTable(std::istream& file);
std::vector<ReferenceSection> ReadReferenceTable(const std::string& path);

using ReferenceFunction = std::function<f64(const std::vector<f64>&)>;

// The functions by name. Each takes the arguments of a row, rounded to its own widths.
const std::map<std::string, ReferenceFunction>& ReferenceFunctions();

} // namespace quorvanta::validation
