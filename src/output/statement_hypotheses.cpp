#include "output/statement_hypotheses.h"

#include "core/analysis_state.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/grids.h"
#include "core/records.h"
#include "output/format.h"
#include "output/statement_labels.h"
#include "output/statement_simulation.h"
#include "output/statement_words.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvanta {

namespace {

constexpr i16 FirstHypothesisParNo = 2;

// One parameter that states a hypothesis.
struct Hypothesis {
    i16 ParNo;
    std::string Label; // without access-key mark

    std::string Rest() const { return SumPhrase(SumNameAfterH(Label)); }
};

std::vector<Hypothesis> HypothesesOf(std::string_view prefix) {
    std::vector<Hypothesis> found;
    for (i16 i = FirstHypothesisParNo; i <= NoOfPar; ++i) {
        const std::string label = StatementLabel(i);
        if (label.starts_with(prefix))
            found.push_back({i, label});
    }
    return found;
}

// " = 0.3", or " from 0.3 to 0.5".
std::string Between(const std::string& lowest, const std::string& highest) {
    return lowest == highest ? " = " + lowest : " from " + lowest + " to " + highest;
}

// " = " and the value; of what a table or graph varies, its values or their range; nothing for what
// a simulation estimates.
std::string Equals(i16 parNo) {
    if (!HasNoSingleValue(parNo))
        return " = " + ParValueText(parNo);
    if (!IsTableOrGraph())
        return "";
    const Range extent = ExtentOf(parNo);
    if (parNo == UnknownParNo)
        return Between(UnknownText(extent.Min), UnknownText(extent.Max));
    if (parNo == XParNo)
        return Between(NumberInFull(extent.Min), NumberInFull(extent.Max));
    return " = " + SumAlternatives(ZValueTexts());
}

// --- The null hypothesis as it is entered -------------------------------------------------------

// "H0: No (p) of Regr.Coeff. = 0" counts coefficients. One stands without its number, and so does
// a number that varies, by its letter.
std::string CoefficientsNull(i16 parNo) {
    const bool varies = HasNoSingleValue(parNo);
    const i32 p = varies ? 0 : ToI32(ParNumber(parNo));
    const std::string number = varies ? "p " : p > 1 ? ParValueText(parNo) + " " : "";
    return "the null hypothesis H0: first " + number + "regression coefficient" + SumPlural(p) +
           " equal to 0";
}

std::string EnteredNull(const std::vector<Hypothesis>& h0) {
    const Hypothesis& first = h0.front();
    const bool isEquivalence = NoOfTails == TwoOneSided;
    const bool isInferiority = !isEquivalence && LabelSays(first.Label, Says::Inferiority);
    std::string text = "the null hypothesis H0: ";
    if (isInferiority)
        text += "inferiority, with ";
    else if (isEquivalence)
        text += "non-equivalence, with ";
    text += first.Rest() + Equals(first.ParNo);
    if (isInferiority)
        text += ",";
    for (std::size_t k = 1; k < h0.size(); ++k) {
        text += " and " + h0[k].Rest() + Equals(h0[k].ParNo);
        if (isInferiority || isEquivalence)
            text += ",";
    }
    return text;
}

// --- The null hypothesis where none is entered --------------------------------------------------

bool TestIs(std::string_view part) {
    return Contains(TestName, part);
}

// The label states what holds in the first sample, or without effect: no effect by itself.
bool IsBaseline(const std::string& label) {
    return (label.ends_with(" 1") && !LabelSays(label, Says::Comparison)) ||
           LabelSays(label, Says::Place);
}

std::string EffectPhrase(const std::string& option) {
    return (Contains(option, " Factor ") ? "effect of " : "") + SumPhrase(option);
}

// The effect that is tested, where a test has several to choose from: the groups that ask for it
// are headed "H0:", and name the effect or its factor. Empty where there is no choice.
std::string TestedEffect() {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        if (IntParCaption(IntParList(i)) == "H0:")
            return EffectPhrase(IntParOption(IntParValue(IntParList(i)), IntParList(i)));
    return "";
}

// What no effect means where 0 has a name.
std::string NoEffectInBrackets(const std::string& label) {
    if (const std::string tested = TestedEffect(); !tested.empty())
        return (LabelSays(label, Says::Contrast) ? " (contrast of " : " (no ") + tested + ")";
    if (LabelSays(label, Says::Distance) && TestIs("Multiplicative"))
        return " (equal medians)";
    if ((LabelSays(label, Says::Mean) && !LabelSays(label, Says::Contrast)) ||
        LabelSays(label, Says::Distance))
        return " (equal means)";
    if (LabelSays(label, Says::Proportion))
        return " (equal distributions)";
    if (LabelSays(label, Says::Trend))
        return " (equal proportions)";
    if (TestIs("Stuart"))
        return " (equal marginal distributions)";
    if (TestIs("Goodness"))
        return " (proportions as stated)";
    if (TestIs("Independence"))
        return " (independent variables)";
    return "";
}

// No effect, in terms of a parameter that measures an effect by itself.
std::string NoEffect(const Hypothesis& h1) {
    const std::string& label = h1.Label;
    std::string rest = h1.Rest();
    if (LabelSays(label, Says::Ratio))
        return rest + " = 1";
    if (LabelSays(label, Says::Sum) && !LabelSays(label, Says::Brackets)) {
        ReplaceAll(rest, " + ", " = ");
        return rest;
    }
    // H1 speaks of one difference of the groups, or of the smallest; H0 of all of them.
    ReplaceAll(rest, " for any j", " for all j");
    for (const std::string_view some : {"any ", "min "})
        if (rest.starts_with(some))
            return "all " + rest.substr(some.size()) + " = 0" +
                   (LabelSays(label, Says::Mean) ? NoEffectInBrackets(label)
                                                 : " (equal proportions)");
    const bool isNonCentrality = TestIs("Stuart") || TestIs("Goodness") || TestIs("Independence");
    if (LabelSays(label, Says::Difference) && !isNonCentrality)
        return rest + " = 0";
    // Half of the pairs are concordant when the two variables have nothing to do with each other.
    if (LabelSays(label, Says::Concordance))
        return rest + " = 0.5 (no association)";
    if (LabelSays(label, Says::OrderOfSamples))
        return rest + " = 0.5 (equal distributions)";
    if (LabelSays(label, Says::OrderInSample))
        return rest + " = 0.5 (median 0)";
    return rest + " = 0" + NoEffectInBrackets(label);
}

// McNemar's test is about the difference of two cells; their sum is what it is calculated with.
bool IsMcNemars(const std::vector<Hypothesis>& h1) {
    return h1.size() > 1 && LabelSays(h1[0].Label, Says::Sum) &&
           LabelSays(h1[1].Label, Says::DifferenceOfTwo);
}

// With a baseline it is the second parameter that says what would be no effect.
std::string DerivedNull(const std::vector<Hypothesis>& h1) {
    std::string text = "the null hypothesis H0: ";
    if (h1.size() == 1 || IsMcNemars(h1) || !IsBaseline(h1[0].Label))
        return text + NoEffect(h1[0]);
    if (LabelSays(h1[1].Label, Says::Ratio) || LabelSays(h1[1].Label, Says::DifferenceOfTwo))
        return text + NoEffect(h1[1]);
    return text + h1[1].Rest() + " = " + h1[0].Rest();
}

// --- The alternative ----------------------------------------------------------------------------

// An H1 value entered as a difference from, or a ratio to, the H0 value before it: "H1:Mean -
// H0:Mean".
struct RelativeForm {
    std::string Name;
    char Sign;
};

std::optional<RelativeForm> RelativeFormOf(const Hypothesis& h1) {
    constexpr std::size_t afterPrefix = 3;
    const std::size_t h0 = h1.Label.find("H0:", afterPrefix);
    if (h0 == std::string::npos)
        return std::nullopt;
    const std::string_view before = Trimmed(std::string_view(h1.Label).substr(0, h0));
    return RelativeForm{SumPhrase(SumNameAfterH(before.substr(0, before.size() - 1))),
                        before.back()};
}

// Name and value of an H1 parameter, the value in absolute terms.
std::string AlternativeText(const Hypothesis& h1) {
    const auto form = RelativeFormOf(h1);
    if (!form)
        return h1.Rest() + Equals(h1.ParNo);
    const i16 h0 = static_cast<i16>(h1.ParNo - 1);
    if (IsSimulation() && (HasNoSingleValue(h1.ParNo) || HasNoSingleValue(h0)))
        return form->Name;
    const Range base = ExtentOf(h0);
    const Range entered = ExtentOf(h1.ParNo);
    const auto absolute = [sign = form->Sign](f64 from, f64 by) {
        return sign == '/' ? from * by : from + by;
    };
    const auto [lowest, highest] =
        std::minmax({absolute(base.Min, entered.Min), absolute(base.Min, entered.Max),
                     absolute(base.Max, entered.Min), absolute(base.Max, entered.Max)});
    // The table's own values have no more digits than these are worth showing with.
    const bool isSolved = h1.ParNo == UnknownParNo || h0 == UnknownParNo;
    const auto text = [isSolved](f64 x) {
        return isSolved && IsTableOrGraph() ? Format(x, FormatBySize(x)) : NumberInFull(x);
    };
    return form->Name + Between(text(lowest), text(highest));
}

// The distribution that the alternative has its values from, where all of them have.
std::string DistributionOf(const std::vector<Hypothesis>& h1) {
    std::string text;
    for (const Hypothesis& hypothesis : h1) {
        text = HasNoSingleValue(hypothesis.ParNo) ? "" : DistributionBehind(hypothesis.ParNo);
        if (text.empty())
            return "";
    }
    return " (" + text + ")";
}

std::string Alternative(const std::vector<Hypothesis>& h1) {
    std::string text = "H1: ";
    for (std::size_t k = IsMcNemars(h1) ? 1 : 0; k < h1.size(); ++k)
        text += (text.ends_with(": ") ? "" : " and ") + AlternativeText(h1[k]);
    return text + DistributionOf(h1);
}

} // namespace

std::string SumHypClause(SumUsed& used) {
    if (TestIs("Kolmogorov-S") && NoOfSamples == TwoSamples)
        return "the null hypothesis H0: equal distributions against H1: different distributions";
    if (const std::string null = SelHypothesis(1); !null.empty())
        return "the null hypothesis H0: " + null + " against H1: " + SelHypothesis(2);
    const std::vector<Hypothesis> h0 = HypothesesOf("H0:");
    const std::vector<Hypothesis> h1 = HypothesesOf("H1:");
    for (const auto* hypotheses : {&h0, &h1})
        for (const Hypothesis& hypothesis : *hypotheses)
            if (!IsMcNemars(h1) || hypothesis.ParNo != h1[0].ParNo)
                used.Add(hypothesis.ParNo);
    // Its table has the hazards.
    if (h0.empty() && h1.empty() && TestIs("Life Table"))
        return "the null hypothesis H0: equal hazard rates against H1: different hazard rates";
    if (h0.empty() && h1.empty())
        return "";
    if (!h0.empty() && LabelSays(h0.front().Label, Says::NoOfCoefficients))
        return CoefficientsNull(h0.front().ParNo);

    if (h1.empty())
        return EnteredNull(h0);

    std::string text;
    if (!h0.empty() && h0.front().ParNo < h1.front().ParNo) {
        text = EnteredNull(h0);
    } else {
        // A list tells H0 before H1. What comes later is no hypothesis but what holds under H0,
        // such as the standard deviation of a sum of differences.
        text = DerivedNull(h1);
        for (const Hypothesis& nuisance : h0)
            text += " and " + nuisance.Rest() + Equals(nuisance.ParNo);
    }
    text += " against " + Alternative(h1);
    if (NoOfTails == TwoOneSided)
        text += " (equivalence)";
    else if (Contains(text, "inferior"))
        text += " (non-inferiority)";
    return text;
}

} // namespace quorvanta
