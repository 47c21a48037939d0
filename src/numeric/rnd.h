// The uniform source of every simulation.
//
// The generator is xoshiro256++ 1.0 (D. Blackman and S. Vigna, Scrambled linear pseudorandom
// number generators, ACM Transactions on Mathematical Software 47(4), 2021): period 2^256 - 1,
// equidistributed in four dimensions, no failure known in TestU01's BigCrush or in PractRand, about
// a nanosecond per draw. It is integer arithmetic throughout, so a seed gives the same stream with
// every compiler on every platform. Seeds enter through SplitMix64 (G. L. Steele, D. Lea and
// C. H. Flood, Fast splittable pseudorandom number generators, OOPSLA 2014), as its authors advise:
// neighbouring seeds give unrelated streams.
#pragma once

#include "core/types.h"

#include <array>
#include <bit>
#include <cstdint>

namespace quorvanta {

class Xoshiro256 {
  public:
    using State = std::array<std::uint64_t, 4>;

    // Not all four words may be 0.
    constexpr explicit Xoshiro256(const State& words) : s_(words) {}

    constexpr std::uint64_t Next() {
        const std::uint64_t result = std::rotl(s_[0] + s_[3], 23) + s_[0];
        const std::uint64_t shifted = s_[1] << 17;
        s_[2] ^= s_[0];
        s_[3] ^= s_[1];
        s_[1] ^= s_[2];
        s_[0] ^= s_[3];
        s_[2] ^= shifted;
        s_[3] = std::rotl(s_[3], 45);
        return result;
    }

    // Mixes a number into the state: a chain of SplitMix64 steps that takes up one word of the
    // old state and gives one word of the new at each link. From the state of zeros it gives the
    // first four numbers of SplitMix64 seeded with x.
    constexpr void Absorb(std::uint64_t x) {
        for (std::uint64_t& word : s_) {
            x = (x ^ word) + 0x9E3779B97F4A7C15U;
            std::uint64_t mixed = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
            mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
            word = mixed ^ (mixed >> 31);
        }
    }

    constexpr const State& Words() const { return s_; }

  private:
    State s_;
};

// The one stream of the program. It stands here for the loops that draw from it; everyone else
// uses the three operations below. Before the first restart it is the stream of Rnd(0).
extern constinit Xoshiro256 UniformSource;

// The next number of the stream: a multiple of 2^-24 in [0, 1). 0 occurs, 1 never does.
inline f32 Rnd() {
    return static_cast<f32>(static_cast<i32>(UniformSource.Next() >> 40)) * 0x1p-24F;
}

// Restarts the stream at a state that depends on x alone, and returns its first number. The
// customary argument is -|seed|; 0 and -0 are the same.
f32 Rnd(f64 x);

// Mixes x into the state of the stream. Rnd(-|seed|) followed by Randomize(seed) gives the same
// stream on every run, and another one for seed and for -seed.
void Randomize(f64 x);

} // namespace quorvanta
