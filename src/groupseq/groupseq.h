// Module GroupSeq: the numerical core of group sequential designs. A boundary type, a number of
// analyses and their information fractions become critical values on the standardised scale; the
// probabilities of crossing them follow for a normal process with independent increments under any
// drift.
//
// The method is recursive numerical integration (P. Armitage, C. K. McPherson and B. C. Rowe,
// Journal of the Royal Statistical Society A 132, 1969, 235-244) over the trimmed grid with
// Simpson's rule of C. Jennison and B. W. Turnbull, Group Sequential Methods with Applications to
// Clinical Trials, 2000, chapter 19. Its figures are 32-bit floats, deliberately: probabilities are
// right to 3e-6.
//
// One design at a time: the state of the module belongs to the calculation that runs.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <array>
#include <vector>

namespace quorvanta {

// --- The design ---------------------------------------------------------------------------------

// BoundType
inline constexpr i16 BoundPocock = 0;
inline constexpr i16 BoundOBrienFleming = 1;
inline constexpr i16 BoundWangTsiatis = 2;
inline constexpr i16 BoundHaybittlePeto = 3;
inline constexpr i16 BoundLanDeMetsPocock = 4;
inline constexpr i16 BoundLanDeMetsOBrienFleming = 5;
inline constexpr i16 BoundGammaFamily = 6;
inline constexpr i16 BoundRhoFamily = 7;
inline constexpr i16 BoundUserDefined = 8;
inline constexpr i16 BoundPowerFamily = 9;
inline constexpr i16 NoOfBoundTypes = 10;

// GsTestKind: the scale of the test
inline constexpr i16 GsMeans = 0;
inline constexpr i16 GsStudent = 1; // Student's t
inline constexpr i16 GsProportions = 2;
inline constexpr i16 GsLogrank = 3;

// Bounds that no statistic reaches, on the Z scale.
inline constexpr f32 BoundBelowAll = -100.0F;
inline constexpr f32 BoundAboveAll = 100.0F;

inline constexpr i16 MaxAnalyses = 10;

extern i16 BoundType;
extern f32 FamilyPar;   // delta of types 2 and 9, gamma of type 6, rho of type 7
extern f32 BoundDelta;  // exponent of the shape t^(delta - 1/2)
extern f32 BoundC1;     // constant of the upper boundary
extern f32 BoundC2;     // constant of the lower boundary of the power family
extern f32 DesignTheta; // drift under H1 that the power family is made for
extern f32 SdValue;     // standard error of the fixed design under H1
extern f32 MarginSum;   // sum of the two equivalence margins
extern f32 PowerTarget; // 1 - power: the error of the power family's lower boundary
extern i16 CritReady;   // -1: critical values stand; 0: constants are searched
extern i16 NoOfAnal;    // K, the number of analyses of the current calculation
extern i16 GsTestKind;

extern Array1<f32> IntTime;     // (1..K) information fractions, the last one 1
extern Array1<f32> CumSize;     // (1..K) total sample size at each analysis
extern Array1<f32> UppBound;    // (0..K) boundaries on the Z scale, used from 1
extern Array1<f32> LowBound;    // (0..K)
extern Array1<f32> LevelReject; // (1..K) nominal levels for rejecting H0
extern Array1<f32> LevelAccept; // (1..K) and for accepting it
extern Array1<f32> ExitUpp;     // (0..K) crossing probabilities of the last run: element k - 1
extern Array1<f32> ExitLow;     // (0..K) belongs to analysis k, element K is the total
extern Array1<f32> ExitUppH0;   // (0..K) the same under H0
extern Array1<f32> ExitLowH0;   // (0..K)
extern f32 Theta;               // drift of the last run
extern Array1<f32> Info;        // (1..K) information at each analysis

// K analyses at these fractions of the information; the last fraction is 1.
void SetAnalyses(const std::vector<f64>& fractions);

// --- The grid -----------------------------------------------------------------------------------

inline constexpr i16 GridFineness = 16;                  // r
inline constexpr i16 BasePoints = 6 * GridFineness - 1;  // 95
inline constexpr i16 MaxGridPoints = 2 * BasePoints - 1; // 189, with the midpoints
inline constexpr i16 GridRowBound = 191;

// Points, weights or densities of every stage, (0..191, 1..K). Those of a stage lie side by side.
class StageGrid {
  public:
    static constexpr int Width = GridRowBound + 1;
    using Column = std::array<f32, Width>;

    // K stages, every cell 0.
    void ReDim(i16 stages) { columns_.assign(static_cast<std::size_t>(stages), Column{}); }
    int Stages() const { return static_cast<int>(columns_.size()); }

    f32& operator()(int j, int k) { return Stage(k)[Row(j)]; }
    f32 operator()(int j, int k) const { return Stage(k)[Row(j)]; }

    Column& Stage(int k) { return columns_[Offset(k)]; }
    const Column& Stage(int k) const { return columns_[Offset(k)]; }

  private:
    static std::size_t Row(int j) {
        if (j < 0 || j >= Width)
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>(j);
    }
    std::size_t Offset(int k) const {
        if (k < 1 || k > Stages())
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>(k - 1);
    }

    std::vector<Column> columns_;
};

extern FixedArray<f32, 1, BasePoints> GridBase;  // the standard grid
extern FixedArray<f32, 1, BasePoints> GridX;     // the trimmed grid of the stage in work
extern i16 GridFirst, GridLast;                  // the trimming indices of GridX
extern FixedArray<i16, 1, MaxAnalyses> GridSize; // integration points of each stage, odd
extern StageGrid GridZ;                          // integration points
extern StageGrid GridW;                          // their Simpson weights
extern StageGrid GridH;                          // weighted densities

} // namespace quorvanta
