// Every worked example of the help, played through the engine: the page says what the program
// shows, and both agree with the exact value.
#include "core/catalogue.h"
#include "core/help_numbers.h"
#include "montecarlo/simulation.h"
#include "output/statement_simulation.h"
#include "support/analysis_fixture.h"
#include "support/example.h"

#include <set>

namespace quorvanta::checks {
namespace {

class HelpExamples : public AnalysisFixture, public ::testing::WithParamInterface<ExampleTopic> {};

TEST_P(HelpExamples, SayWhatTheProgramShows) {
    FileCommand(CalculationWindow);
    const help::Example& example = GetParam().Example;
    const auto readings = PlayInEngine(example);
    if (HelpSubjectOf(GetParam().Number).Topic == HelpTopic::Example) {
        EXPECT_EQ(HelpExample(), GetParam().Number);
    }
    for (std::size_t i = 0; i < readings.size(); ++i)
        ExpectReading(example.Steps[i], readings[i]);
    EXPECT_EQ(platform.Texts(), example.Told);
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpExamples, ::testing::ValuesIn(ReadExamples()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

class HelpSimulations : public AnalysisFixture,
                        public ::testing::WithParamInterface<ExampleTopic> {};

TEST_P(HelpSimulations, SayWhatTheProgramCounts) {
    FileCommand(SimulationWindow);
    const help::Example& example = GetParam().Example;
    SimulateInEngine(example);
    EXPECT_EQ(platform.Texts(), example.Told);
    EXPECT_EQ(SampleSizeEstimateText(2), example.Simulation.Maximum) << "of the last display";
    SimulationReading reading;
    for (i16 row = 0; row < EstimateRows(); ++row)
        reading.Estimates.push_back({EstimateRowHead(row), SignEstimateText(row),
                                     PowerEstimateText(row), PrAcceptEstimateText(row)});
    reading.Averages = {SampleSizeEstimateText(0), SampleSizeEstimateText(1)};
    const McTable& rejections = SimRejections();
    reading.RejectionHeads = rejections.Heads;
    for (std::size_t test = 0; test < rejections.Rows.size(); ++test) {
        reading.Rejections.push_back({std::to_string(test + 1)});
        for (const std::string& cell : rejections.Rows[test])
            reading.Rejections.back().push_back(cell);
    }
    ExpectSimulation(example.Simulation, reading);
}

class AllSimulations : public AnalysisFixture {};

// On the page of its own example, or on one that shows it among others.
TEST_F(AllSimulations, HaveAnExample) {
    std::set<i32> played;
    FileCommand(SimulationWindow);
    for (const ExampleTopic& topic : ReadSimulations()) {
        help::ChooseOptions(topic.Example);
        played.insert(HelpDescription());
    }
    int analyses = 0;
    for (i32 number = 301; number < 900; ++number) {
        const HelpSubject subject = HelpSubjectOf(number);
        if (subject.Topic != HelpTopic::Description)
            continue;
        if (subject.IsTest == True && !HasSimWindow(PathToTest(subject.TestNo).back()->MenuNo))
            continue;
        ++analyses;
        EXPECT_TRUE(played.contains(number)) << number << ", " << HelpSubjectName(subject);
    }
    EXPECT_EQ(analyses, 100);
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpSimulations, ::testing::ValuesIn(ReadSimulations()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

} // namespace
} // namespace quorvanta::checks
