// Samples without replacement from finite populations, and the sizes of these.
#pragma once

#include "core/kinds.h"
#include "core/types.h"
#include "tests/lists/samples.h"

namespace quorvanta {

inline constexpr SampleKinds PopulationKinds{
    Kind::Population,
    Group::Population2,
    Kind::Population1,
    {Kind::Population2, Kind::Population2Minus1, Kind::Population2Over1}};

class FiniteSamples {
  public:
    // Offers the forms of the populations and the sizes.
    static void Offer();
    // Adds populations and sizes to the list.
    void Add();

    // No sample is larger than its population.
    bool Check() const;
    void Narrow(f64& lower, f64& upper) const;

    const SampleValues& Populations() const { return populations_; }
    const SampleValues& Sizes() const { return sizes_; }

  private:
    SampleValues populations_;
    SampleValues sizes_;
};

} // namespace quorvanta
