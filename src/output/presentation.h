// What a table or graph window presents: a result with its texts and its settings.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"
#include "output/surface.h"

#include <string>
#include <vector>

namespace quorvanta {

// The area under a curve from one x-value to another, hatched.
struct ShadedArea {
    int Curve = 1;
    f64 From = 0;
    f64 To = 0;
};

struct Presentation {
    std::vector<std::string> Title;
    FixedArray<std::string, 0, 3> XAxis; // label, minimum, maximum, tick
    FixedArray<std::string, 0, 3> YAxis;
    std::string ZLabel;
    Font Type;
    i16 CurveWidth = 0; // of a table: columns of a block
    i16 Decimals = 0;
    i16 YKind = 0;
    Array1<f32> X;
    Array2<f32> Y;
    Array1<f32> Z;
    std::vector<std::string> ZTexts{}; // in the legend, in place of the numbers of Z; empty: those
    std::vector<ShadedArea> Areas{};
    std::vector<f64> Marks{}; // x-values with a line from the top to the bottom of the plot

    bool HasResult() const { return !X.Raw().empty() && !Y.Raw().empty(); }
};

// The presentation of an open analysis: of the current one as the state has it, of any other as it
// was when its window was last in front. Windows behind are drawn too.
Presentation PresentationOf(i16 analysisNo);

// True if what the window of an analysis shows is no longer, or not yet, the result of its values:
// they have changed since, and no run has been completed with them.
bool IsStale(i16 analysisNo);

// The smallest and the largest of the values that are there; 99999 and -99999 if none is.
struct ValueRange {
    f32 Low = static_cast<f32>(NoValue);
    f32 High = -static_cast<f32>(NoValue);
};
ValueRange RangeOf(std::span<const f32> values);

// True for a cell with a value, false for 99999 and -99999.
bool HasCellValue(f32 value);

// The type of the texts of a setting; a size that is no number within 1..200 is 9 points.
Font TypeOf(const std::string& name, const std::string& size, bool bold);

} // namespace quorvanta
