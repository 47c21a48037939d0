// Numbers and texts: the platform's conversions and the choosers of display formats.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <string>
#include <string_view>

namespace quorvanta {

// The shortest decimal text of x: at most 7 significant digits for a 32-bit float and 15 for a
// 64-bit one. Below 0.0001, and from 1E+07 or 1E+15 up, with an exponent of at least two digits
// ("1E-05", "1.5E+20"); no leading blank; a fraction has its zero ("0.5"); negative zero is "0".
// What is no finite number is "INF", "-INF" or "NAN".
std::string Str(f32 x);
std::string Str(f64 x);

// x in a picture of "#" and "0" placeholders and a point: the decimal text of 15 significant
// digits is rounded half away from zero. "0" always shows a digit, "#" only one that is needed; all
// digits before the point are shown, however short the picture. A picture that yields no digit
// shows "0", a bare trailing point is dropped, negative zero is 0. Characters before and after the
// placeholders (blanks) stand as they are.
std::string Format(f64 x, std::string_view picture);

// The picture for one value, by its size: "0" for a whole number, below 5e-6 and from 10000 up,
// else one decimal at least and more the smaller it is.
std::string FormatBySize(f64 x);

// The picture for an axis or table of n steps between min and max: always 11 characters wide. The
// size of one step decides; min = max counts as a step of 1.
std::string FormatByRange(i16 n, f32 min, f32 max);

// The picture that shows the values values(first..last) in full, to 7 decimals at most: 11
// characters wide. A value with a positive exponent counts no decimals. One with a negative
// exponent counts as many decimals as its exponent says, so of 1.5E-05 the picture shows 0.00002:
// that is how the columns have always been laid out, and it stays.
std::string FormatForColumn(int first, int last, const Array1<f32>& values);

// The text of a table cell, right-aligned to the width of the picture; "- " for 99999 and -99999.
std::string FormatCell(f64 x, std::string_view picture);

// x rounded to a multiple of 10^p: Int(x / 10^p + 0.5) * 10^p.
f64 RoundPow10(f64 x, i16 p);

} // namespace quorvanta
