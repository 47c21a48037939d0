// The designs of the analyses of variance with fixed effects, and the equations that all of them
// share: the F-test of an effect and the t-test of a contrast, both on the pooled error.
#pragma once

#include "core/types.h"

#include <vector>

namespace quorvanta {

// The way in which H1 is given: the standard deviation of the means, a difference between any two
// of them, or the smallest difference that two of them have.
enum class AnovaEffectType : i16 { SdOfMeans, AnyDifference, MinDifference };

// What a design says about one of its effects.
struct AnovaDesign {
    f32 Df1 = 0; // of the effect
    f32 Df2 = 0; // of the error
    // The non-centrality by type of effect, where the effect is as large as the standard deviation.
    f64 Lambda[3] = {0, 0, 0};
    f32 PerMean = 0; // observations behind each of the means that a contrast combines
};

// k groups, the first of n1 subjects, the others of nk each. What a contrast compares has n1.
AnovaDesign OneWayDesign(f32 k, f32 n1, f32 nk);

// Means of these groups that have exactly this effect: of two means apart or one mean apart those
// behind the equation, with the least power; of a standard deviation of the means the first one
// apart from all others, since any have the same power.
std::vector<f64> OneWayMeans(i16 k, f64 n1, f64 nk, AnovaEffectType type, f64 effect);

// A main effect of a factor with so many levels, each observed perLevel times.
AnovaDesign MainEffect(f32 levels, f32 perLevel, f64 errorDf);

// The interaction of two factors with a and b levels, each of their cells observed perCell times.
AnovaDesign InteractionEffect(f32 a, f32 b, f32 perCell, f64 errorDf);

// Power of an F-test, minus the power entered: that a non-central F has above the critical value of
// the central one. The degrees of freedom have to be 1 or more.
f64 FTestEq(f32 df1, f32 df2, f32 lambda);

// p-value of the F-test: between and within are the sums of squares of the effect and of the error.
// 1 where a degree of freedom is below 1; without error the effect is certain, and no effect is no
// evidence.
f32 FTestPValue(f64 between, f64 within, f64 df1, f64 df2);

// Power of the F-test of the effect, minus the power entered: effect as its type says, sd the
// standard deviation of the error, above 0. The degrees of freedom have to be 1 or more.
f64 AnovEq(const AnovaDesign& design, AnovaEffectType type, f32 effect, f32 sd);

// Power of the t-test of a contrast, minus the power entered. contrastSd is the standard deviation
// of the contrast in single observations, one at each of its means: that of the error times the
// root of the sum of squared coefficients. deltaLow and deltaHigh are the distances to the limits
// of two one-sided tests, else 0.
f64 ContrastPowerEq(const AnovaDesign& design, f32 contrast, f32 contrastSd, f32 deltaLow,
                    f32 deltaHigh);

} // namespace quorvanta
