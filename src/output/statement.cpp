#include "output/statement.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/records.h"
#include "core/values.h"
#include "output/statement_clauses.h"
#include "output/statement_estimation.h"
#include "output/statement_hypotheses.h"
#include "output/statement_interim.h"
#include "output/statement_simulation.h"
#include "output/statement_words.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvanta {

std::string SummaryFont = "Arial";
i16 SummaryFontSize = 10;
i16 SummaryBold = 0;

namespace {

// --- Results ------------------------------------------------------------------------------------

bool HasResult() {
    if (NoOfPar < 1)
        return false;
    if (IsTableOrGraph())
        return TableYMin <= TableYMax;
    if (IsSimulation())
        return HasEstimates();
    return HasValue(ParText(ParKind(UnknownParNo)));
}

// "With ... ranging from ... to ..., the power will be ranging from ... to ...".
std::string RunClause(SumUsed& used) {
    const Range x = ExtentOf(XParNo);
    std::string text = "With " + ParPhrase(XParNo) + " ranging from " + NumberInFull(x.Min) +
                       " to " + NumberInFull(x.Max) + std::string(UnitOf(XParNo));
    if (HasZPar()) {
        text += " and with " + ParPhrase(ZParNo) + " set to " + SumList(ZValueTexts()) +
                std::string(UnitOf(ZParNo));
        used.Add(ZParNo);
    }
    const Range y = ExtentOf(UnknownParNo);
    const std::string lowest = UnknownText(y.Min);
    const std::string highest = UnknownText(y.Max);
    text += ", " + WithArticle(ParPhrase(UnknownParNo));
    text += lowest == highest ? " will be " + lowest
                              : " will be ranging from " + lowest + " to " + highest;
    text += UnitOf(UnknownParNo);
    used.Add(XParNo);
    used.Add(UnknownParNo);
    return text;
}

// What was calculated. A size is told by the clause of the sizes already: that the sample size is
// 173 with a sample size of 173 says nothing, and so the power that it gives takes the place.
std::string ResultClause(SumUsed& used) {
    const i16 result = used.Has(UnknownParNo) ? PowerParNo : UnknownParNo;
    used.Add(result);
    const std::string phrase = ParPhrase(result);
    return WithArticle(phrase) + std::string(IsOrAre(phrase)) + ParValueText(result);
}

// The power belongs to the result, whatever was calculated.
std::string ForPower(SumUsed& used) {
    const i16 power = PowerParNoOfTest();
    if (power < 0 || used.Has(power))
        return "";
    used.Add(power);
    if (IsConfidenceLevel())
        return " for a probability of " + ParValueText(power) + " of " + WithinLimitsPhrase();
    const std::string phrase = ParPhrase(power);
    return " for " + SumArticleLabel(phrase) + phrase + " of " + ParValueText(power);
}

// --- The test -----------------------------------------------------------------------------------

// The name of the test as it stands, but for what breaks a sentence: a point within a name and at
// its end, a blank at the end of a menu entry.
std::string TestNamePhrase() {
    std::string name = TestName;
    ReplaceAll(name, "et. al.", "et al.");
    ReplaceAll(name, ". ", ", ");
    ReplaceAll(name, " ,", ",");
    name = Trimmed(name);
    if (name.ends_with("."))
        name.pop_back();
    return name;
}

// A test that is named after what it shows, "Equivalence, Confidence Interval, Difference of Means,
// t-distribution", as a noun with all that belongs to it. Empty for a name of another kind.
std::string ClaimPhrase(const std::string& name) {
    std::string interval;
    std::string of;
    std::string in;
    std::string distribution;
    bool isFirst = true;
    std::string text;
    for (const std::string& part : SplitAtCommas(name)) {
        const std::string phrase = SumPhrase(part);
        if (isFirst)
            text = "a test of " + phrase;
        else if (part.starts_with("Confidence"))
            interval = std::string(" by a ") + (IsOneSidedInterval() ? "one" : "two") +
                       "-sided confidence interval";
        else if (part.ends_with("Design"))
            in = " in " + SumArticleLabel(phrase) + phrase;
        else if (part.ends_with("istribution"))
            distribution = " (" + phrase + ")";
        else if (!part.ends_with("approach"))
            of = " for the " + phrase;
        isFirst = false;
    }
    return text + in + interval + of + distribution;
}

// The test is named after what it shows, not after its statistic.
bool IsClaim(const std::string& name) {
    return IsConfidenceLevel() || name.starts_with("Bioequivalence");
}

// What a check box says about an analysis of means: its test, its model.
struct ModelPhrase {
    i16 Check;
    std::string_view Text;
};
constexpr ModelPhrase ModelPhrases[] = {
    {Check::Contrast, " of a contrast"},
    {Check::LinearCombination, " of a linear combination"},
    {Check::Additive, " with additive effects"},
    {Check::RandomSquares, " with random squares"},
    {Check::SquaresAsLevels, " with squares as factor levels"},
};

// How repeated measurements are taken to correlate; a general matrix has no name, and a linear
// combination needs none.
std::string CorrelationPhrase() {
    constexpr std::string_view phrases[] = {" with compound symmetry", " with auto correlation",
                                            ""};
    const auto groups = IntParList.Raw().first(static_cast<std::size_t>(NoOfIntPar));
    if (Ticked(Check::LinearCombination) ||
        std::ranges::find(groups, Group::CorrelationMatrix) == groups.end())
        return "";
    return std::string(phrases[ChosenOption(Group::CorrelationMatrix)]);
}

std::string ModelPhraseHere() {
    std::string text;
    for (const ModelPhrase& phrase : ModelPhrases)
        if (Ticked(phrase.Check))
            text += phrase.Text;
    return text + CorrelationPhrase();
}

// The end of a trial that goes on is foreseen: its test is named without the question.
bool IsForeseen() {
    const i16 kind = ParKind(PowerParNo);
    return IsTest == True && (kind == Kind::ConditionalPower || kind == Kind::PredictivePower);
}

std::string ForeseenTestPhrase(const std::string& name) {
    const std::string test = SumPhrase(SplitAtCommas(name).front());
    return Contains(test, "test") ? "a " + test : "a test of " + test;
}

// What is assumed for the rest of the trial.
std::string ProjectionSentence() {
    constexpr std::string_view assumed[] = {"have the effect under H1", "go on as observed so far",
                                            "show no effect"};
    if (!IsForeseen())
        return "";
    return " The rest of the trial is assumed to " +
           std::string(assumed[ChosenOption(Group::SlopeProjection)]) + ".";
}

std::string TestPhrase() {
    if (IsTest == False)
        return "a test of the parameter " + ParameterPhrase() + " in " +
               SumArticleLabel(DistributionPhrase()) + DistributionPhrase();
    const std::string name = TestNamePhrase();
    if (IsClaim(name))
        return ClaimPhrase(name);
    if (IsForeseen())
        return ForeseenTestPhrase(name);
    const bool saysTest =
        Contains(name, "test") || Contains(name, "Test") || Contains(name, "Kolmo");
    return (saysTest ? name : name + " test") + ModelPhraseHere();
}

// One level is two different demands in a one-sided and in a two-sided test. Nothing where the
// statistic has one direction, as that of an F-test: two tails are all that is offered there.
std::string SidesPhrase() {
    if (IsConfidenceLevel()) // the name of the test says it
        return "";
    switch (NoOfTails) {
    case OneSided:
        return ", one-sided";
    case TwoSided:
        return TailsOffered(OneSided) && TailsShown ? ", two-sided" : "";
    default:
        return ", as two one-sided tests";
    }
}

std::string LevelPhrase() {
    return (IsSimulation() ? " at the nominal " : " at the ") + ParPhrase(LevelParNo) + " " +
           NumberInFull(NominalLevel(LevelParNo));
}

// The largest sample whose power would be exact, if one of the analysis is larger; else 0.
i16 ExactUpToHere() {
    const i16 border = SelExactUpTo();
    return border != 0 && LargestSample() > border ? border : i16{0};
}

std::string TestSentence(SumUsed& used) {
    const std::string sides = SidesPhrase();
    std::string text = " The test used is " + TestPhrase() + sides;
    if (!HasNoSingleValue(LevelParNo))
        text += (sides.empty() && !IsConfidenceLevel() ? "" : ",") + LevelPhrase();
    used.Add(LevelParNo);
    if (NoOfAnalyses() > 1)
        text += ", with " + std::to_string(NoOfInterim) + " interim" +
                (NoOfInterim == 1 ? " analysis " : " analyses ") + "and a final analysis";
    return text + ".";
}

std::string ApproximationSentence() {
    const i16 border = ExactUpToHere();
    if (border == 0)
        return "";
    return " With more than " + std::to_string(border) + " subjects" +
           (NoOfSamples == OneSample ? "" : " in a sample") + ", the power is that of the " +
           SelApproximation() + ", not of the exact test.";
}

// --- The end ------------------------------------------------------------------------------------

std::string LeftOverSentence(const SumUsed& used) {
    std::vector<i16> left;
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (!used.Has(i) && HasValue(ParText(ParKind(i))))
            left.push_back(i);
    if (left.empty())
        return "";
    return " The calculation is based on the assumption" +
           SumPlural(static_cast<i32>(left.size())) + " that " + SumValueList(left) + ".";
}

std::string Capitalised(std::string sentence) {
    if (!sentence.empty() && sentence[0] >= 'a' && sentence[0] <= 'z')
        sentence[0] = static_cast<char>(sentence[0] - 'a' + 'A');
    return sentence;
}

// The sentence that the paragraph begins with, without its full stop.
std::string FirstSentence(SumUsed& used) {
    std::string text;
    if (IsTableOrGraph()) {
        text = RunClause(used);
    } else {
        const std::string sizes = SumSampleClause(used);
        if (!sizes.empty())
            text = "With " + SumArticleLabel(sizes) + sizes + ", ";
        if (!IsHypothesisTest())
            text += EstimationClause(used);
        else
            text += IsSimulation() ? EstimatesClause(used) : ResultClause(used);
    }
    if (IsHypothesisTest()) {
        text += ForPower(used);
        const std::string hypotheses = SumHypClause(used);
        if (!hypotheses.empty())
            text += " when testing " + hypotheses;
    }
    return Capitalised(text);
}

} // namespace

std::string HeadlineNote() {
    const i16 border = Calculated == True ? ExactUpToHere() : i16{0};
    if (border == 0)
        return "";
    return "More than " + std::to_string(border) + (NoOfSamples == OneSample ? "" : " per group") +
           ": " + SelApproximation() + ", not exact.";
}

std::string SumStatement() {
    if (AnalysisNo == 0 || !HasResult())
        return "";
    SumUsed used;
    std::string text = FirstSentence(used) + ".";
    if (IsHypothesisTest())
        text += SumGroupClause(used) + TestSentence(used) + ApproximationSentence() +
                ProjectionSentence() + InterimSentences();
    else
        text += EstimatedSentence();
    text += LeftOverSentence(used);
    if (IsSimulation())
        text += ReplicatesSentence();
    ReplaceAll(text, NewLine, " ");
    return text;
}

std::string StatementText() {
    const std::string statement = SumStatement();
    if (statement.empty())
        return "";
    const AnalysisStatus& status = AnalysisState(AnalysisNo);
    const bool isOwn = !status.OwnStatement.empty() && status.OwnStatementOf == statement;
    return isOwn ? status.OwnStatement : statement;
}

void EditStatement(const std::string& text) {
    const std::string statement = SumStatement();
    if (statement.empty())
        return;
    AnalysisStatus& status = AnalysisState(AnalysisNo);
    const bool isBlank = text.find_first_not_of(" \t\n") == std::string::npos;
    status.OwnStatement = isBlank || text == statement ? "" : text;
    status.OwnStatementOf = statement;
}

} // namespace quorvanta
