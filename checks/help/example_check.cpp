// Every worked example of the help, played through the engine: the page says what the program
// shows, and both agree with the exact value.
#include "support/analysis_fixture.h"
#include "support/example.h"

namespace quorvanta::checks {
namespace {

class HelpExamples : public AnalysisFixture, public ::testing::WithParamInterface<ExampleTopic> {};

TEST_P(HelpExamples, SayWhatTheProgramShows) {
    FileCommand(CalculationWindow);
    const help::Example& example = GetParam().Example;
    const auto readings = PlayInEngine(example);
    EXPECT_EQ(HelpExample(), GetParam().Number);
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
    EXPECT_TRUE(platform.Messages.empty());
    EXPECT_EQ(SampleSizeEstimateText(2), example.Simulation.Maximum) << "of the last display";
    ExpectEstimate(example.Simulation.Level, SignEstimateText(0));
    ExpectEstimate(example.Simulation.Power, PowerEstimateText(0));
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpSimulations, ::testing::ValuesIn(ReadSimulations()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

} // namespace
} // namespace quorvanta::checks
