// TESTEQUIV: equivalence and non-inferiority stated through a confidence interval. A member runs on
// the engine of the corresponding test; the level is that of an interval, and the power is the
// probability that the interval lies within the limits.
#pragma once

namespace quorvanta {

// What all members have in common.
struct IntervalMember {
    // The tails and samples of a member, and the interval's own check box.
    static void OfferInterval();

    // Gives the list of the engine the kinds of an interval.
    static void NameAsInterval();
};

// The module of the members that run on an engine: all of the engine but what is offered and how
// the parameters are called.
template <class Engine>
struct TESTEQUIV : Engine {
    static void SetupTest() {
        IntervalMember::OfferInterval();
        Engine::SetupTest();
    }

    static void SetParList() {
        Engine::SetParList();
        IntervalMember::NameAsInterval();
    }
};

} // namespace quorvanta
