// The clauses of a summary statement. Each speaks of some parameters of the current analysis and
// notes which; the statement's last sentence tells the ones that are left over.
#pragma once

#include "core/form.h"
#include "core/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

// The parameters that a statement has spoken of, by position. There is room for every position:
// a survival test with all its options has thirteen.
class SumUsed {
  public:
    void Add(i16 parNo) { used_ |= 1U << static_cast<unsigned>(parNo); }
    bool Has(i16 parNo) const { return (used_ >> static_cast<unsigned>(parNo) & 1U) != 0; }

  private:
    std::uint32_t used_ = 0;
};

// --- The parameters of the current analysis -----------------------------------------------------

// A test, of the catalogue or of a parameter: whatever has hypotheses, level and power.
bool IsHypothesisTest();

// The level of the analysis is that of an interval, whether it is a test or an estimation.
bool IsConfidenceLevel();

// The parameter has no single value to tell: it is on an axis of a table or graph, or it is what
// a simulation estimates.
bool HasNoSingleValue(i16 parNo);

// The number in the parameter's box.
f64 ParNumber(i16 parNo);

// A number in full, without an exponent: 0.3, 10000.5, 0.00001.
std::string NumberInFull(f64 x);

// The value of a parameter as a statement tells it: the unknown's as its box shows it, any other
// in full. The power has two decimals, and more only where the user has typed them. A size of an
// analysis of pairs has its unit.
std::string ParValueText(i16 parNo);

// A value of a table or graph's unknown, as its box would show it, without unit.
std::string UnknownText(f64 x);

// " pairs" after a size of an analysis of pairs, else nothing.
std::string_view UnitOf(i16 parNo);

// The lowest and the highest value of a parameter: one value, but for what a table or graph varies.
Range ExtentOf(i16 parNo);

// The z-values of a table or graph, in full.
std::vector<std::string> ZValueTexts();

// The position whose label says that it is a power, or a probability in place of one: 1, or -1.
i16 PowerParNoOfTest();

// The label of a parameter without its access-key mark, as statements know it: McNemar's effect,
// whose label has no hypothesis, is one.
std::string StatementLabel(i16 parNo);

// The label of a parameter in words, outside of the hypotheses: a hypothesis is told as
// "mean 2 - mean 1 under H1".
std::string ParPhrase(i16 parNo);

// What the probability of a test through an interval is that of: "a confidence interval within the
// equivalence limits".
std::string WithinLimitsPhrase();

// The phrase with its article: "the power", but "any (mean i - mean j)".
std::string WithArticle(const std::string& phrase);

// " is " or " are ", by the number of the phrase's noun.
std::string_view IsOrAre(std::string_view phrase);

// The level that a test or an interval is planned with: the parameter's value, or what a
// simulation without interim analyses was given instead of it.
f64 NominalLevel(i16 parNo);

// One text stands in the other.
inline bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// --- Clauses ------------------------------------------------------------------------------------

// The larger of the samples, at its largest; 0 if the analysis has no size, or none with a value.
f64 LargestSample();

// The sizes: "total sample size of 60 (30 in sample 1 and 30 in sample 2)". Empty if the analysis
// has none, or none with a value.
std::string SumSampleClause(SumUsed& used);

// The layout of a design of many groups, " For the design, the number of groups is 5."; empty for
// one without.
std::string SumGroupClause(SumUsed& used);

// The values of these parameters as a list: "the power is 0.80, the accrual time is 2 and the ...".
std::string SumValueList(const std::vector<i16>& parNos);

} // namespace quorvanta
