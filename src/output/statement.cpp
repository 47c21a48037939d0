#include "output/statement.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/records.h"
#include "core/values.h"
#include "output/statement_clauses.h"
#include "output/statement_words.h"

#include <sstream>
#include <utility>
#include <vector>

namespace quorvanta {

std::string SummaryFont = "Arial";
i16 SummaryFontSize = 10;
i16 SummaryBold = 0;

namespace {

constexpr i16 levelParNo = 0;
constexpr i16 powerParNo = 1;

bool IsSimulation() {
    return CurrentWindowKind() == SimulationWindow;
}

// A test, of the catalogue or of a parameter: whatever has hypotheses, level and power.
bool IsHypothesisTest() {
    return IsTest == True || ProcedureNo == ProcedureTest;
}

// The interim analyses and the final one; 1 without any.
i16 NoOfAnalyses() {
    return IsGroupSeq == True || IsSimulation() ? static_cast<i16>(NoOfInterim + 1) : i16{1};
}

std::string LabelOf(i16 parNo) {
    return StripAmpersand(ParLabel(ParKind(parNo)));
}

bool IsConfidenceLevel() {
    return Contains(LabelOf(levelParNo), "Confidence");
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    std::string word;
    while (stream >> word)
        words.push_back(word);
    return words;
}

// --- Results ------------------------------------------------------------------------------------

// The row of a simulation's estimates that counts: over all analyses, or the only one.
i16 EstimateRow() {
    return NoOfAnalyses() > 1 ? NoOfAnalyses() : i16{0};
}

bool HasResult() {
    if (NoOfPar < 1)
        return false;
    if (IsRunWindow())
        return TableYMin <= TableYMax;
    if (IsSimulation())
        return HasValue(PowerEstimateText(EstimateRow()));
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

// What the estimates of a simulation are called.
std::vector<std::pair<std::string, std::string>> NamedEstimates() {
    const i16 row = EstimateRow();
    const std::string& sign = SignEstimateText(row);
    const std::string& power = PowerEstimateText(row);
    if (!IsHypothesisTest())
        return {{"Coverage Probability", sign},
                {"Prob (Interval Width < w)", power},
                {"Pr(Coverage and Width)", PrAcceptEstimateText(row)}};
    if (IsConfidenceLevel())
        return {{"Pr(CI Within Limits | H0 true)", sign},
                {"Pr(CI Within Limits | H1 true)", power}};
    return {{"Actual Significance Level", sign}, {"Power", power}};
}

// "the estimated actual significance level is ... and the estimated power is ...".
std::string EstimatesClause(SumUsed& used) {
    std::vector<std::string> estimates;
    for (const auto& [name, text] : NamedEstimates())
        if (HasValue(text))
            estimates.push_back("the estimated " + SumPhrase(name) + " is " +
                                std::string(Trimmed(SumMonteCI(text, MonteCI::InText))));
    used.Add(powerParNo);
    return SingleBlanks(SumList(estimates));
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

// --- Interim analyses ---------------------------------------------------------------------------

std::string AnalysisName(i16 k) {
    return k < NoOfAnalyses() ? "at interim " + std::to_string(k) : "at the final analysis";
}

using AnalysisTexts = FixedArray<std::string, 0, 5>;

bool HasLevels(const AnalysisTexts& texts) {
    for (i16 k = 1; k <= NoOfAnalyses(); ++k)
        if (ReadNumber(texts(k - 1)) != 0)
            return true;
    return false;
}

std::string LevelText(const AnalysisTexts& texts, i16 k) {
    return NumberInFull(ReadNumber(texts(k - 1)));
}

std::string RejectSentence() {
    std::vector<std::string> levels;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        // Nothing entered stands for the significance level.
        const bool isEntered = ReadNumber(RejectH0Text(k - 1)) != 0;
        levels.push_back(isEntered ? LevelText(RejectH0Text, k)
                                   : NumberInFull(NominalLevel(levelParNo)));
    }
    return " The significance levels at the interim and final analysis are " + SumList(levels) +
           " respectively.";
}

// H0 may be accepted at some analyses only: nothing, or 1, is no level at all.
std::string AcceptSentence() {
    std::vector<std::string> levels;
    for (i16 k = 1; k <= NoOfAnalyses(); ++k) {
        const f64 level = ReadNumber(AcceptH0Text(k - 1));
        if (level != 0 && level != 1)
            levels.push_back(LevelText(AcceptH0Text, k) + " (" + AnalysisName(k) + ")");
    }
    if (levels.empty())
        return "";
    const bool isOne = levels.size() == 1;
    return " Similarly, the accept H0 level" + SumPlural(static_cast<i32>(levels.size())) +
           (isOne ? " is " : " are ") + SumList(levels) + ".";
}

// The texts of the sizes hold times or numbers of events where the analysis has those.
std::string SizesSentence() {
    if (UsesEventTimes() || !HasValue(InterimSize1Text(0)))
        return "";
    const bool isPair = HasValue(InterimSize2Text(0));
    std::vector<std::string> sizes;
    for (i16 k = 1; k < NoOfAnalyses(); ++k) {
        const std::string first = LevelText(InterimSize1Text, k);
        sizes.push_back(isPair ? "(" + first + "," + LevelText(InterimSize2Text, k) + ")" : first);
    }
    const bool isOne = sizes.size() == 1 && !isPair;
    return " The cumulative sample size" + SumPlural(isOne ? 1 : 2) +
           (isPair ? " (Sample 1, Sample 2)" : "") + " at the interim " +
           (sizes.size() == 1 ? "analysis" : "analyses") + (isOne ? " is " : " are ") +
           SumList(sizes) + ".";
}

// The levels and sizes of the analyses, as the interim window shows them for one calculation or
// simulation; a table or graph has other ones at each of its points.
std::string InterimSentences() {
    if (NoOfAnalyses() == 1 || IsRunWindow() || !HasLevels(RejectH0Text))
        return "";
    return RejectSentence() + AcceptSentence() + SizesSentence();
}

// --- Parameter estimation -----------------------------------------------------------------------

std::string InDistribution() {
    const std::string distribution = DistributionPhrase();
    return " in " + SumArticle(distribution) + " " + distribution;
}

// How probable an error of the estimate is.
std::string AccuracyClause(SumUsed& used) {
    constexpr i16 probability = 0;
    constexpr i16 margin = 1;
    used.Add(probability);
    used.Add(margin);
    const std::string error = ParPhrase(margin);
    return "the probability is " + ParValueText(probability) +
           (NoOfTails == OneSided ? " to overestimate the " : " to over/under estimate the ") +
           ComparedParameterPhrase() + InDistribution() + " by " + SumArticleLabel(error) + error +
           " of more than " + ParValueText(margin);
}

std::string EstimationClause(SumUsed& used) {
    if (ProcedureNo == ProcedureEstimate)
        return AccuracyClause(used);
    if (!IsSimulation())
        return SumIntervalClause(used);
    const std::string estimates = EstimatesClause(used);
    return estimates + " for " + SumIntervalClause(used);
}

// What is estimated, unless the sentence before has said it.
std::string EstimatedSentence() {
    if (ProcedureNo == ProcedureEstimate && !IsRunWindow())
        return "";
    return std::string(" The ") +
           (ProcedureNo == ProcedureEstimate ? "estimate" : "confidence interval") +
           " is calculated for the parameter " + ComparedParameterPhrase() + InDistribution() + ".";
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

// The replicates that the estimates come from; before the window has counted any, those asked for.
std::string ReplicatesSentence() {
    const std::string& done = SampleSizeEstimateText(2);
    const std::string& number = HasValue(done) ? done : MaxNoOfSimText;
    if (!HasValue(number))
        return "";
    return " The number of Monte Carlo simulations is " + NumberInFull(ReadNumber(number)) + ".";
}

std::string Capitalised(std::string sentence) {
    if (!sentence.empty() && sentence[0] >= 'a' && sentence[0] <= 'z')
        sentence[0] = static_cast<char>(sentence[0] - 'a' + 'A');
    return sentence;
}

// The sentence that the paragraph begins with, without its full stop.
std::string FirstSentence(SumUsed& used) {
    std::string text;
    if (IsRunWindow()) {
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

std::string SumMonteCI(const std::string& text, MonteCI form) {
    const std::vector<std::string> words = Words(text);
    if (words.size() != 3)
        return text;
    const std::string& lower = words[0];
    const std::string& estimate = words[1];
    const std::string& upper = words[2];
    if (form == MonteCI::InTable)
        return estimate + ", 95% CI [" + lower + " ," + upper + "], ";
    return estimate + " (95% CI  " + lower + " to " + upper + ") ";
}

} // namespace quorvanta
