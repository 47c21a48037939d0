#include "output/statement_simulation.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/kinds.h"
#include "core/options.h"
#include "core/records.h"
#include "core/values.h"
#include "multcomp/family.h"
#include "output/statement_interim.h"
#include "output/statement_words.h"

#include <string>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

// The row of a simulation's estimates that counts: over all analyses, or the only one.
i16 EstimateRow() {
    return NoOfAnalyses() > 1 ? NoOfAnalyses() : i16{0};
}

// What the estimates of a simulation are called.
std::vector<std::pair<std::string, std::string>> NamedEstimates() {
    const i16 row = EstimateRow();
    const std::string& sign = SignEstimateText(row);
    const std::string& power = PowerEstimateText(row);
    const EstimateCaptions captions = CaptionsOfEstimates();
    if (IsHypothesisTest())
        return {{captions.Sign, sign}, {captions.Power, power}};
    return {{captions.Sign, sign},
            {captions.Power, power},
            {captions.PrAccept, PrAcceptEstimateText(row)}};
}

} // namespace

bool IsSimulation() {
    return CurrentWindowKind() == SimulationWindow;
}

EstimateCaptions CaptionsOfEstimates() {
    if (!IsHypothesisTest())
        return {"Coverage Probability", "Prob (Interval Width < w)", "Pr(Coverage and Width)"};
    if (IsMultCompTest())
        return {"True Family-wise Error",
                IntParOption(ChosenOption(Group::PowerDefinition), Group::PowerDefinition), ""};
    if (IsConfidenceLevel())
        return {"Pr(CI Within Limits | H0 true)", "Pr(CI Within Limits | H1 true)", ""};
    return {"Actual Significance Level", "Power", "Pr(Accept H0 if H1 true)"};
}

std::string EstimateRowHead(i16 row) {
    if (row >= NoOfAnalyses())
        return "Over-All";
    return row + 1 == NoOfAnalyses() ? "Final Analysis"
                                     : "Interim Analysis " + std::to_string(row + 1);
}

i16 EstimateRows() {
    return static_cast<i16>(NoOfAnalyses() > 1 ? NoOfAnalyses() + 1 : 1);
}

bool HasEstimates() {
    return HasValue(PowerEstimateText(EstimateRow()));
}

std::string EstimatesClause(SumUsed& used) {
    std::vector<std::string> estimates;
    for (const auto& [name, text] : NamedEstimates())
        if (HasValue(text))
            estimates.push_back("the estimated " + SumPhrase(name) + " is " +
                                std::string(Trimmed(SumMonteCI(text, MonteCI::InText))));
    used.Add(PowerParNo);
    return SingleBlanks(SumList(estimates));
}

std::string ReplicatesSentence() {
    const std::string& done = SampleSizeEstimateText(2);
    const std::string& number = HasValue(done) ? done : MaxNoOfSimText;
    if (!HasValue(number))
        return "";
    return " The number of Monte Carlo simulations is " + NumberInFull(ReadNumber(number)) + ".";
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
