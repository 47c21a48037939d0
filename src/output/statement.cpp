#include "output/statement.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"
#include "core/values.h"
#include "output/statement_clauses.h"
#include "output/statement_estimation.h"
#include "output/statement_hypotheses.h"
#include "output/statement_interim.h"
#include "output/statement_simulation.h"
#include "output/statement_words.h"

#include <string>
#include <vector>

namespace quorvanta {

std::string SummaryFont = "Arial";
i16 SummaryFontSize = 10;
i16 SummaryBold = 0;

namespace {

constexpr i16 levelParNo = 0;
constexpr i16 powerParNo = 1;

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
    const i16 xKind = ParKind(XParNo);
    std::string text = "With " + ParPhrase(XParNo) + " ranging from " +
                       NumberInFull(ReadNumber(ParXminText(xKind))) + " to " +
                       NumberInFull(ReadNumber(ParXmaxText(xKind)));
    if (HasZPar()) {
        std::vector<std::string> values;
        for (const std::string& word : Words(ParZValuesText(ParKind(ZParNo))))
            values.push_back(NumberInFull(ReadNumber(word)));
        text += " and with " + ParPhrase(ZParNo) + " set to " + SumList(values);
        used.Add(ZParNo);
    }
    const std::string lowest = UnknownText(f64{TableYMin});
    const std::string highest = UnknownText(f64{TableYMax});
    text += ", " + WithArticle(ParPhrase(UnknownParNo));
    text += lowest == highest ? " will be " + lowest
                              : " will be ranging from " + lowest + " to " + highest;
    used.Add(XParNo);
    used.Add(UnknownParNo);
    return text;
}

// What was calculated. A size is told by the clause of the sizes already: that the sample size is
// 173 with a sample size of 173 says nothing, and so the power that it gives takes the place.
std::string ResultClause(SumUsed& used) {
    const i16 result = used.Has(UnknownParNo) ? powerParNo : UnknownParNo;
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

std::string TestPhrase() {
    if (IsTest == False)
        return "a test of the parameter " + ParameterPhrase() + " in " +
               SumArticleLabel(DistributionPhrase()) + DistributionPhrase();
    const std::string name = TestNamePhrase();
    const bool saysTest =
        Contains(name, "test") || Contains(name, "Test") || Contains(name, "Kolmo");
    return saysTest ? name : name + " test";
}

// One level is two different demands in a one-sided and in a two-sided test. Nothing where the
// statistic has one direction, as that of an F-test: two tails are all that is offered there.
std::string SidesPhrase() {
    if (IsConfidenceLevel())
        return IsOneSidedInterval() ? ", with a one-sided interval" : ", with a two-sided interval";
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
    return (IsSimulation() ? " at the nominal " : " at the ") + ParPhrase(levelParNo) + " " +
           NumberInFull(NominalLevel(levelParNo));
}

std::string TestSentence(SumUsed& used) {
    const std::string sides = SidesPhrase();
    std::string text = " The test used is " + TestPhrase() + sides;
    if (!HasNoSingleValue(levelParNo))
        text += (sides.empty() ? "" : ",") + LevelPhrase();
    used.Add(levelParNo);
    if (NoOfAnalyses() > 1)
        text += ", with " + std::to_string(NoOfInterim) + " interim" +
                (NoOfInterim == 1 ? " analysis " : " analyses ") + "and a final analysis";
    return text + ".";
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

std::string SumStatement() {
    if (AnalysisNo == 0 || !HasResult())
        return "";
    SumUsed used;
    std::string text = FirstSentence(used) + ".";
    if (IsHypothesisTest())
        text += SumGroupClause(used) + TestSentence(used) + InterimSentences();
    else
        text += EstimatedSentence();
    text += LeftOverSentence(used);
    if (IsSimulation())
        text += ReplicatesSentence();
    ReplaceAll(text, NewLine, " ");
    return text;
}

} // namespace quorvanta
