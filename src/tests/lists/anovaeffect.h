// How the lists of the analyses of variance state their effect: H1 in one of three types with the
// standard deviation of the error, or a contrast with its own.
#pragma once

#include "core/analysis_state.h"
#include "core/kinds.h"
#include "core/types.h"
#include "tests/anovaeq.h"
#include "tests/lists/anovagrids.h"
#include "tests/lists/hypotheses.h"

#include <initializer_list>
#include <vector>

namespace quorvanta {

class AnovaEffect {
  public:
    // Offers the check boxes, "Analyse Contrast" among them, the group of the effects of which one
    // is tested, if there are more, and the types of effect. A contrast has these directions of a
    // t-test, an F-test has one.
    static void Offer(std::initializer_list<i16> checks, std::initializer_list<i16> tested,
                      std::initializer_list<i16> contrastTails = {OneSided, TwoSided});

    bool IsContrast() const { return isContrast_; }
    AnovaEffectType Type() const { return type_; }
    f32 Value() const;
    f32 Sd() const;

    // What derives from input grids: the effect; of a contrast also its standard deviation.
    bool IsTablePar(i16 parNo) const;
    std::vector<Grid> Grids(const TestedMeans& tested) const;
    f32 FromGrids(i16 parNo, const TestedMeans& tested) const;

    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    const Hypotheses& Hypothesis() const { return hypotheses_; }

    // The equation of the effect in a design: the power that follows, minus the power entered.
    f64 PowerEq(const AnovaDesign& design) const;
    // The same with another standard deviation than the one entered.
    f64 PowerEq(const AnovaDesign& design, f32 sd) const;

  private:
    friend AnovaEffect AddAnovaEffect(i16 contrastMean);

    bool isContrast_ = false;
    AnovaEffectType type_ = AnovaEffectType::SdOfMeans;
    Hypotheses hypotheses_;
    i16 sd_ = 0;
};

// Adds the effect that is chosen, and its standard deviation, to the list. contrastMean is the kind
// of the mean of a contrast.
AnovaEffect AddAnovaEffect(i16 contrastMean);

// What the modules of the analyses of variance have in common: one effect in their list, and
// numbers of levels, squares, blocks and subjects that each keep to their range.
struct AnovaModule {
  protected:
    // Keeps the effect on its side of H0, or between its limits. With more levels of a factor the
    // smallest of their differences is shown by more subjects, but one of more effects.
    static void Narrow(f64& lower, f64& upper, f64 (*residual)());

    // Starts the list: level, power, effect, standard deviation.
    static void StartAnovaList(i16 contrastMean = Kind::ContrastMean);
    // The effect of the current list.
    static const AnovaEffect& Effect();
    // Of two factors, "Group::TestedOfTwoFactors": takes the interaction out of reach where the
    // check box says that there is none.
    static void WithoutInteractionIfAdditive();
    // The effect that is chosen of factors with a and b levels, n observations in each cell.
    static AnovaDesign EffectOfTwo(f32 a, f32 b, f32 n, f64 errorDf);
    // Its means: of all cells, or where there is no interaction of the factor's levels. The levels
    // of the second factor stand behind those of the first.
    static TestedMeans MeansOfTwo(i16 levels);
};

// The module of one of them. Module::Tested says which means are behind the effect that is tested.
template <class Module>
struct AnovaTest : AnovaModule {
    static void SearchLimits(f64& lower, f64& upper) {
        Narrow(lower, upper, &Module::RootFunction);
    }
    static bool IsTablePar(i16 parNo) { return Effect().IsTablePar(parNo); }
    static std::vector<Grid> TableGrids(i16) { return Effect().Grids(Module::Tested()); }
    static f32 CalcTablePar(i16 parNo) { return Effect().FromGrids(parNo, Module::Tested()); }
};

} // namespace quorvanta
