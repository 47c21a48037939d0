#include "numeric/rnd.h"

namespace quorvanta {

namespace {

constexpr Xoshiro256 Restarted(f64 x) {
    // From zeros the four words are different numbers of SplitMix64, so they are never all 0.
    Xoshiro256 source({});
    source.Absorb(std::bit_cast<std::uint64_t>(x + 0.0)); // -0 becomes 0
    return source;
}

} // namespace

constinit Xoshiro256 UniformSource = Restarted(0.0);

f32 Rnd(f64 x) {
    UniformSource = Restarted(x);
    return Rnd();
}

void Randomize(f64 x) {
    // Absorbing a given x is one to one, so one state in 2^256 would become the zeros.
    UniformSource.Absorb(std::bit_cast<std::uint64_t>(x + 0.0));
}

} // namespace quorvanta
