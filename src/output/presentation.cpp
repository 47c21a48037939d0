#include "output/presentation.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/records.h"
#include "output/scale.h"

#include <cmath>

namespace quorvanta {

namespace {

Presentation CurrentPresentation() {
    const auto titles = OutTitle.Raw();
    return {{titles.begin(), titles.end()},
            OutXAxis,
            OutYAxis,
            OutZLabel,
            TypeOf(OutFontName, OutFontSize, OutFontBold == 1),
            OutCurveWidth,
            OutDecimals,
            TableYKind,
            TableX,
            TableY,
            ZValues};
}

Presentation StoredPresentation(const AnalysisRecord& record, const AnalysisStatus& status) {
    const auto titles = record.OutTitle.Raw();
    return {{titles.begin(), titles.begin() + record.NoOfTitles},
            record.OutXAxis,
            record.OutYAxis,
            record.OutZLabel,
            TypeOf(record.OutFontName, record.OutFontSize, record.OutFontBold == 1),
            record.OutCurveWidth,
            record.OutDecimals,
            status.TableYKind,
            status.TableX,
            status.TableY,
            status.ZValues};
}

} // namespace

Presentation PresentationOf(i16 analysisNo) {
    if (analysisNo == AnalysisNo)
        return CurrentPresentation();
    return StoredPresentation(Analysis(analysisNo), AnalysisState(analysisNo));
}

bool IsStale(i16 analysisNo) {
    const i16 calculated =
        analysisNo == AnalysisNo ? Calculated : AnalysisState(analysisNo).Calculated;
    return calculated == False;
}

bool HasCellValue(f32 value) {
    return std::fabs(value) < static_cast<f32>(NoValue);
}

ValueRange RangeOf(std::span<const f32> values) {
    ValueRange range;
    for (const f32 value : values)
        if (HasCellValue(value)) {
            range.Low = MinSingle(range.Low, value);
            range.High = MaxSingle(range.High, value);
        }
    return range;
}

Font TypeOf(const std::string& name, const std::string& size, bool bold) {
    constexpr f64 usual = 9;
    const f64 points = TypedLimit(size).value_or(usual);
    return {name, points >= 1 && points <= 200 ? points : usual, bold};
}

} // namespace quorvanta
