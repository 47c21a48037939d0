#include "support/example.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/driver.h"
#include "core/grids.h"
#include "core/help_numbers.h"
#include "core/setup.h"
#include "core/typed_text.h"
#include "generator/topic.h"
#include "groupseq/boundchoice.h"
#include "output/format.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/scripted_platform.h"

#include <cmath>
#include <gtest/gtest.h>
#include <stdexcept>

namespace quorvanta::checks {

std::vector<ExampleTopic> ReadExamples() {
    std::vector<ExampleTopic> examples;
    for (const auto& [number, topic] : help::ReadTopics(HELP_DIR "/topics"))
        if (HelpSubjectOf(number).Topic == HelpTopic::Example)
            examples.push_back({number, help::ExampleOf(topic.Text)});
    if (examples.empty())
        throw std::runtime_error("no example in " HELP_DIR);
    return examples;
}

std::vector<ExampleTopic> ReadRuns() {
    std::vector<ExampleTopic> runs;
    for (const auto& [number, topic] : help::ReadTopics(HELP_DIR "/topics"))
        if (topic.Text.find("\n```run\n") != std::string::npos)
            runs.push_back({number, help::RunOf(topic.Text)});
    if (runs.empty())
        throw std::runtime_error("no table or graph in " HELP_DIR);
    return runs;
}

namespace {

// Fills the input grid of a step, if it has one.
void FillTable(const help::ExampleTable& table) {
    if (table.Label.empty())
        return;
    auto& platform = dynamic_cast<ScriptedPlatform&>(ThePlatform());
    platform.GridFillings.emplace_back([&table] { return FillCurrentGrid(table.Rows); });
    GetFromTable(help::PositionOfLabel(table.Label));
    EXPECT_TRUE(platform.GridFillings.empty()) << "no grid for " << table.Label;
}

// Answers what a design asks for.
void FillDesign(const help::ExampleDesign& design) {
    if (design.Interim == 0)
        return;
    auto& platform = dynamic_cast<ScriptedPlatform&>(ThePlatform());
    platform.BoundaryChoices.emplace_back([&design] {
        ChooseBoundType(help::BoundaryOfName(design.Boundaries));
        if (!design.Parameter.empty())
            FamilyParText = design.Parameter;
        return AcceptBoundary();
    });
    platform.GridFillings.emplace_back([&design] {
        GridRowTexts rows;
        for (const std::string& fraction : design.Fractions)
            rows.push_back({fraction});
        return FillCurrentGrid(rows);
    });
}

} // namespace

std::vector<ExampleReading> PlayInEngine(const help::Example& example) {
    help::ChooseOptions(example);
    FillDesign(example.Design);
    AcceptOptions();
    std::vector<ExampleReading> readings;
    for (const help::ExampleStep& step : example.Steps) {
        for (const auto& [label, text] : step.Typed)
            TypedParText(help::PositionOfLabel(label), text);
        FillTable(step.Table);
        SolveFor(help::PositionOfLabel(step.Pressed));
        const i16 kind = ParKind(UnknownParNo);
        readings.push_back({ParText(kind), ParValue(UnknownParNo), IsCountKind(kind)});
    }
    return readings;
}

void ExpectReading(const help::ExampleStep& step, const ExampleReading& reading) {
    const f64 exact = ParseNumber(step.Exact);
    EXPECT_EQ(reading.Shown, step.Shown) << step.Pressed;
    EXPECT_NEAR(reading.Solution, exact, step.Tolerance) << step.Pressed;
    // The figure that the page shows has to be the exact one itself, rounded as it is shown: a
    // page on which the approximation tips the last figure misleads.
    const f64 shown = ParseNumber(step.Shown);
    if (reading.IsCount) {
        EXPECT_EQ(shown, std::ceil(exact)) << step.Pressed;
        return;
    }
    const std::size_t point = step.Shown.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : step.Shown.size() - point - 1;
    const f64 lastFigure = std::pow(10.0, -static_cast<f64>(decimals));
    EXPECT_NEAR(shown, exact, step.Tolerance + lastFigure / 2) << step.Pressed;
}

} // namespace quorvanta::checks
