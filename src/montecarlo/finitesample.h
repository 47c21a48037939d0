// Samples without replacement from finite populations, drawn one by one for a simulated study.
#pragma once

#include "core/types.h"

#include <vector>

namespace quorvanta {

// A population of which some are marked.
class Urn {
  public:
    Urn() = default;
    // population >= 0, of which 0..population are marked.
    Urn(i32 population, i32 marked) : left_(population), marked_(marked) {}

    // Draws n more, or what is left: how many of them are marked.
    i32 Draw(i32 n);

  private:
    i32 left_ = 0;
    i32 marked_ = 0;
};

// A population of values, as normal as so many can be, with mean 0 and standard deviation 1 as
// those of a population, which divide by its size.
class ScorePopulation {
  public:
    // Puts size values in, 1 or more; a population of one has the value 0.
    void Fill(i32 size);

    // Starts a new sample.
    void Restart() { drawn_ = 0; }
    // Draws n more, or what is left: their sum.
    f64 Draw(i32 n);

  private:
    std::vector<f64> values_; // those of the sample first, in any order
    std::size_t drawn_ = 0;
};

} // namespace quorvanta
