#include "groupseq/groupseq.h"

#include "numeric/rounding.h"

namespace quorvanta {

i16 BoundType;
f32 FamilyPar;
f32 BoundDelta;
f32 BoundC1;
f32 BoundC2;
f32 DesignTheta;
f32 SdValue = 1;
f32 MarginSum;
f32 PowerTarget;
i16 CritReady;
i16 NoOfAnal;
i16 GsTestKind;

Array1<f32> IntTime;
Array1<f32> CumSize;
Array1<f32> UppBound;
Array1<f32> LowBound;
Array1<f32> LevelReject;
Array1<f32> LevelAccept;
Array1<f32> ExitUpp;
Array1<f32> ExitLow;
Array1<f32> ExitUppH0;
Array1<f32> ExitLowH0;
f32 Theta;
Array1<f32> Info;

FixedArray<f32, 1, BasePoints> GridBase;
FixedArray<f32, 1, BasePoints> GridX;
i16 GridFirst, GridLast;
FixedArray<i16, 1, MaxAnalyses> GridSize;
StageGrid GridZ;
StageGrid GridW;
StageGrid GridH;

void SetAnalyses(const std::vector<f64>& fractions) {
    NoOfAnal = static_cast<i16>(fractions.size());
    IntTime.ReDim(1, NoOfAnal);
    for (i16 k = 1; k <= NoOfAnal; ++k)
        IntTime(k) = Single(fractions[static_cast<std::size_t>(k - 1)]);
}

} // namespace quorvanta
