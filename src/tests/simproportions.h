// Simulated counts of the tests of proportions: what is drawn where H0 or H1 is true, and the
// p-values of exact tests.
//
// Sum1 and Sum2 of SimStudy are the successes in the two samples.
#pragma once

#include "core/types.h"
#include "numeric/rounding.h"
#include "tests/proportions.h"

#include <cstddef>
#include <vector>

namespace quorvanta {

// --- What is drawn ------------------------------------------------------------------------------

// The proportions of the samples under H0 and under H1, where the planned ones are drawn. Under H0
// one proportion has its H0 value; two have the H0 difference and the average of the planned ones,
// as far as the edges leave it. Of two one-sided tests H0 is the limit that is nearer to the truth.
struct SimProportions {
    ProportionPair UnderH0;
    ProportionPair UnderH1;

    const ProportionPair& At(bool isH1) const { return isH1 ? UnderH1 : UnderH0; }
};
SimProportions OneProportionToSimulate(const ProportionValues& values);
SimProportions TwoProportionsToSimulate(const ProportionValues& values);

// The successes among n new subjects; 0 for n < 1.
i16 CountSuccesses(i16 n, f32 p);

// Adds the successes among n1 and n2 new subjects.
void AddSuccesses(i16 n1, i16 n2, const ProportionPair& proportions);

// The successes so far.
i32 SuccessesIn1();
i32 SuccessesIn2();
TwoCounts CountsOfStudy(i16 n1, i16 n2);

// --- p-values of exact tests --------------------------------------------------------------------

// p-value of a discrete statistic from its tails, which both include what was observed: the
// probability of so much or more under H0 (under the left limit), of so much or less under H0
// (under the right limit).
f32 PValueOfTails(f32 above, f32 below);

// The exact p-value of x successes among n subjects for NoOfTails and LeftTail: p0 under H0, pLow
// and pHigh the limits of two one-sided tests. 1 for n = 0.
f32 BinPValue(i16 n, i16 x, f32 p0, f32 pLow, f32 pHigh);

// p-values by number, each computed when it is first asked for: a run asks for the same ones again
// and again.
class PValueTable {
  public:
    // Forgets them all. Their numbers are below count.
    void Prepare(std::size_t count) { values_.assign(count, unknown); }

    template <class Compute>
    f32 At(std::size_t number, const Compute& compute) {
        f32& value = values_[number];
        if (value == unknown)
            value = compute();
        return value;
    }

  private:
    static constexpr f32 unknown = -1;
    std::vector<f32> values_;
};

// The test of one proportion in a simulation: exact up to MaxExactSize subjects, or by its normal
// form. The test of a sign, which is one of a proportion of 1/2, draws and tests by it, too.
class SimOneProportion {
  public:
    enum class TestForm { Normal, ArcSine, Exact };

    void Prepare(const ProportionValues& values, TestForm form, bool corrected);
    void Sample(i16 n, bool isH1) const { AddSuccesses(n, 0, drawn_.At(isH1)); }
    f32 PValue(i16 n);

  private:
    ProportionValues values_;
    TestForm form_ = TestForm::Normal;
    bool corrected_ = false;
    SimProportions drawn_;
    PValueTable exact_; // by analysis and successes
};

} // namespace quorvanta
