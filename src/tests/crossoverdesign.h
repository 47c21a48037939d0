// What a crossover design tells of its treatments.
#pragma once

#include "core/checked_array.h"
#include "core/types.h"

#include <optional>
#include <vector>

namespace quorvanta {

// The information of a design on its treatments, for a residual variance of 1 and one subject in
// each sequence: sequences (subjects) and periods are eliminated, and so are carryover effects of
// the first order, if the model has them (B. Jones and M. G. Kenward, Design and Analysis of
// Cross-Over Trials, 2nd edition, 2003, chapter 5). n subjects in each sequence have n times the
// information.
//
// In a washout the response is measured without a treatment, whatever its level is then; nothing
// carries over from it.
class CrossoverDesign {
  public:
    // design(1..sequences, 1..periods) holds numbers of treatments, 1 to the number of treatments;
    // 0: a washout.
    CrossoverDesign(const Array2<f32>& design, i16 treatments, bool carryover);

    // Variance of the estimate of the sum of weights times treatment effects. Nothing where the
    // design gives no estimate: the weights of treatments that it compares with each other don't
    // add up to 0.
    std::optional<f64> VarianceOf(const std::vector<f64>& weights) const;

    // t'C t of treatment effects t: their squared distance from equal effects. Nothing where the
    // design doesn't compare all treatments with each other.
    std::optional<f64> DistanceOf(const std::vector<f64>& effects) const;

  private:
    i16 treatments_;
    Array2<f64> information_; // C: (1..treatments, 1..treatments)
};

} // namespace quorvanta
