#include "support/simulatedcounts.h"

#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "montecarlo/shiftmodel.h"
#include "montecarlo/simulation.h"
#include "numeric/randdist.h"
#include "support/properties.h"
#include "support/solutions.h"
#include "support/tsv.h"

#include <algorithm>
#include <initializer_list>
#include <set>

namespace quorvanta::checks {

namespace {

// Of the columns of the table of values, the one whose effects lie to the right.
Values ReadValues() {
    constexpr std::size_t right = 1;
    Values values;
    for (const auto& row : ReadTsv("plan_values.tsv"))
        values[static_cast<i16>(std::stoi(row[0]))] = row[right];
    return values;
}

std::string CountsOf(const AnalysisChoice& choice, const Values& values) {
    Start(choice, values);
    MaxNoOfSimText = "600";
    SeedText = "20";
    OutputReady = False;
    SimNo = 0;
    try {
        SimStart();
    } catch (const RunTimeError&) {
        return "-";
    }
    if (SimNo == 0)
        return "-";
    return std::to_string(CountRejectH0(1)) + " " + std::to_string(CountRejectH1(1)) + " " +
           std::to_string(CountAcceptH1(1));
}

// Tests about the distribution of the data, and the distributions under H0 and H1 that they are
// asked with.
std::vector<AnalysisChoice> WithDistributions() {
    struct Asked {
        i16 MenuNo;
        i16 NoOfSamples;
        std::initializer_list<i16> Codes;
    };
    const Asked tests[] = {{300, TwoSamples, {0, 1, 2, 3, 4, 6, 9}},
                           {312, TwoSamples, {0, 2, 3, 4, 6, 9}},
                           {334, TwoSamples, {2, 5, 10, 8}},
                           {360, OneSample, {0, 1, 3, 4, 6}},
                           {370, OneSample, {0, 1, 3, 4, 6}},
                           {263, OneSample, {0, 1, 2, 3, 4, 5, 6, 15, 8, 9}}};
    std::vector<AnalysisChoice> choices;
    for (const Asked& test : tests)
        for (const i16 code : test.Codes) {
            AnalysisChoice choice;
            choice.MenuNo = test.MenuNo;
            choice.NoOfSamples = test.NoOfSamples;
            choice.NoOfTails = TwoSided;
            const f32 first = code == SimChi2 ? 3.0F : code == SimWeibull ? 2.0F : 0.5F;
            choice.Distributions = {{code, first, 1}, {code, first + 1, 1}};
            choices.push_back(choice);
        }
    return choices;
}

std::string Named(const AnalysisChoice& choice) {
    std::string text = Joined(choice);
    for (const DistrRow& distr : choice.Distributions)
        text += ", distribution " + std::to_string(distr.Code);
    return text;
}

} // namespace

std::vector<CountedRow> SimulatedCounts() {
    const Values values = ReadValues();
    FileCommand(SimulationWindow);
    std::vector<CountedRow> rows;
    const auto add = [&rows, &values](const AnalysisChoice& choice) {
        rows.push_back({Named(choice), CountsOf(choice, values)});
    };
    for (const AnalysisChoice& analysis : ServedAnalyses()) {
        std::set<i16> tails;
        for (const AnalysisChoice& choice : AllChoices(analysis))
            if (tails.insert(choice.NoOfTails).second)
                add(choice);
    }
    for (const AnalysisChoice& choice : WithDistributions())
        add(choice);
    return rows;
}

} // namespace quorvanta::checks
