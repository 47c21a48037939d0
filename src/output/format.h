// Numbers and texts: the platform's conversions and the choosers of display formats.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <string>
#include <string_view>

namespace quorvanta {

// The number at the start of a text, after blanks; reading stops at the first character that is
// not part of a number. 0 for a text that does not begin with a number. Only "." is a decimal
// point; an exponent ("1E-5", "1d3") is read.
f64 Val(std::string_view text);

// The shortest decimal text of x: at most 7 significant digits for a 32-bit float and 15 for a
// 64-bit one. Below 0.0001, and from 1E+07 or 1E+15 up, with an exponent of at least two digits
// ("1E-05", "1.5E+20"); no leading blank; a fraction has its zero ("0.5").
std::string Str(f32 x);
std::string Str(f64 x);

// x in a picture of "#" and "0" placeholders and a point: the decimal text of 15 significant
// digits is rounded half away from zero. A picture that yields no digit shows "0", a bare trailing
// point is dropped, negative zero is 0. Other characters (blanks) stand as they are.
std::string Format(f64 x, std::string_view picture);

// The picture for one value, by its size.
std::string FormatBySize(f64 x);

// The picture for an axis or table of n steps between min and max: always 11 characters wide.
std::string FormatByRange(i16 n, f32 min, f32 max);

// The picture that shows every value of values(first..last) in full: 11 characters wide.
std::string FormatForColumn(int first, int last, const Array1<f32>& values);

// The text of a table cell, right-aligned to the width of the picture; "- " for 99999.
std::string FormatCell(f64 x, std::string_view picture);

// x rounded to a multiple of 10^p: Int(x / 10^p + 0.5) * 10^p.
f64 RoundPow10(f64 x, i16 p);

// The text of a value of a parameter kind: a count is rounded up to a whole number, any other
// value is shown by its size.
std::string FormatPar(i16 kind, f64 x);

// True for the kinds that count: sample sizes and their differences, events, subjects, groups, ...
bool IsCountKind(i16 kind);

} // namespace quorvanta
