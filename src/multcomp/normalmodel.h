// A multivariate normal distribution as the lists of simulated tests state it: a standard deviation
// and a correlation of the components, or a covariance matrix that is entered.
#pragma once

#include "core/checked_array.h"
#include "core/gridtable.h"
#include "core/types.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvanta {

// How covariances are stated: the options of Group::CorrelationMatrix.
inline constexpr i16 EqualCorrelation = 0;   // r
inline constexpr i16 FallingCorrelation = 1; // r^|i - j|
inline constexpr i16 EnteredCovariance = 2;

class NormalModel {
  public:
    // Offers the forms of the covariance.
    static void Offer();
    // The one that is chosen.
    static i16 CovKind();

    // Adds standard deviation and correlation to the list; an entered matrix needs neither.
    void Add();

    // So many components, the value at that position, can have the correlation.
    bool Check(i16 dimension) const;

    // The grid of an entered matrix of d components, of which one is called `heads`; none for
    // the other forms.
    static std::vector<Grid> Grids(i16 d, const std::string& heads);

    // The covariances of d components, 2 to 10; nothing while an entered matrix is missing.
    std::optional<Array2<f64>> Covariance(i16 d) const;

  private:
    i16 sd_ = 0;
    i16 correlation_ = 0;
};

} // namespace quorvanta
