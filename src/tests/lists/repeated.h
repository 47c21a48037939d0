// What the tests of repeated measurements list: an effect or a linear combination, the errors, the
// layout; and the grids that effect, errors and distance derive from.
#pragma once

#include "core/gridtable.h"
#include "core/types.h"
#include "tests/lists/hypotheses.h"
#include "tests/repeatedeq.h"

#include <vector>

namespace quorvanta {

// The options of Group::TestedBetweenOrWithin.
enum class TestedFactor : i16 { Between, Within, Interaction };
TestedFactor Tested();

// The test of a single linear combination of the measurements is asked for.
bool IsLinearCombination();

// The standard deviation and the correlation of the measurements, or the errors themselves.
class ErrorList {
  public:
    static CorrelationStructure Structure();

    // Adds what the chosen structure needs: in a general matrix, for a comparison between subjects
    // the between error term only.
    void Add(bool between);
    // Adds what a linear combination is derived with: of compound symmetry alone.
    void AddOfCombination();

    // So many measurements can have that correlation. levels is their position.
    bool Check(i16 levels) const;
    void Narrow(f64& lower, f64& upper, i16 levels) const;

    ErrorTerms At(f32 k) const;
    // Compound symmetry: the values are present and have one value each; shows a message if not.
    bool HasValues() const;
    bool HasUnknown() const;
    bool HasCorrelation() const { return correlation_ != 0; }
    f32 Sd() const;
    f32 Correlation() const;

  private:
    i16 sd_ = 0;
    i16 correlation_ = 0;
    i16 within_ = 0; // with epsilon and bias next to it
    i16 between_ = 0;
};

// What the means of a grid are compared between.
enum class MeanRows {
    One,           // of one group
    Hypotheses,    // of one group, under H0 and H1
    TwoGroups,     // of two groups
    LevelsOfFactor // of the groups of a factor
};

// What a list consists of, for the operations that all of the tests share.
struct RepeatedList {
    Hypotheses Hypothesis;  // the effect, the distance or the mean of a combination
    AnovaEffectType Type{}; // of an effect
    i16 CombinationSd = 0;  // positions, 0: there is none
    i16 Groups = 0;
    i16 MaxGroups = MaxGridLines;
    i16 Levels = 0;
    ErrorList Errors;
    MeanRows Rows = MeanRows::One;
    bool OfContrasts = false; // the distance is that of contrasts between the levels
};

// What the modules have in common: one list, its linear combination and its grids.
struct RepeatedTest {
    static bool IsTablePar(i16 parNo);
    static std::vector<Grid> TableGrids(i16 parNo);
    static f32 CalcTablePar(i16 parNo);

  protected:
    // Offers the check boxes and the tails.
    static void Offer(i16 samples);

    // Offers the structures of the correlations. A linear combination needs all of the covariances,
    // unless all correlations are the same.
    static void OfferCorrelationMatrix();

    // Starts the list: level, power and what is tested.
    static void StartWithEffect();
    static void StartWithDistance(bool ofContrasts);
    static void StartWithCombination();
    static void AddLevels();
    static void AddGroups(MeanRows rows);

    // The current list.
    static RepeatedList& List();

    static bool CheckList();
    // Keeps correlation and levels within what there can be, the effect on its side of H0, and a
    // search for levels where there is power. What a linear combination is derived with can't be
    // found from its power.
    static void NarrowList(f64& lower, f64& upper, f64 (*residual)());

    static f32 Effect();
    static f32 Groups();
    static f32 Levels();

    // The equation of the linear combination.
    static f64 CombinationEq(f64 perMean, f32 df);
};

} // namespace quorvanta
