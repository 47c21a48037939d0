#include "support/example.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/driver.h"
#include "core/grids.h"
#include "core/gridtable.h"
#include "core/help_numbers.h"
#include "core/setup.h"
#include "core/showintpar.h"
#include "core/typed_text.h"
#include "generator/topic.h"
#include "groupseq/boundchoice.h"
#include "montecarlo/shiftmodel.h"
#include "montecarlo/simulation.h"
#include "output/format.h"
#include "support/grid_filling.h"
#include "support/number.h"
#include "support/scripted_platform.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace quorvanta::checks {

namespace {

// The topics with a block of that name.
std::vector<ExampleTopic> ReadBlocks(const std::string& name,
                                     help::Example (&parse)(const std::string&)) {
    std::vector<ExampleTopic> examples;
    for (const auto& [number, topic] : help::ReadTopics(HELP_DIR "/topics"))
        if (topic.Text.find("\n```" + name + "\n") != std::string::npos)
            examples.push_back({number, parse(topic.Text)});
    if (examples.empty())
        throw std::runtime_error("no " + name + " in " HELP_DIR);
    return examples;
}

} // namespace

std::vector<ExampleTopic> ReadExamples() {
    return ReadBlocks("example", help::ExampleOf);
}

std::vector<ExampleTopic> ReadRuns() {
    return ReadBlocks("run", help::RunOf);
}

std::vector<ExampleTopic> ReadSimulations() {
    return ReadBlocks("simulation", help::SimulationOf);
}

namespace {

void ExpectGrids(const std::vector<help::ExampleTable>& tables) {
    for (const help::ExampleTable& table : tables)
        dynamic_cast<ScriptedPlatform&>(ThePlatform()).GridFillings.emplace_back([&table] {
            EXPECT_EQ(CurrentGrid().Title, table.Title);
            return FillCurrentGrid(table.Rows);
        });
}

// Fills the input grids of a step, if it has some.
void FillTables(const help::ExampleStep& step) {
    if (step.Opened.empty())
        return;
    ExpectGrids(step.Tables);
    GetFromTable(help::PositionOfLabel(step.Opened));
    EXPECT_TRUE(dynamic_cast<ScriptedPlatform&>(ThePlatform()).GridFillings.empty())
        << "other grids for " << step.Opened;
    for (const auto& [label, text] : step.Derived)
        EXPECT_EQ(ParText(ParKind(help::PositionOfLabel(label))), text) << label;
}

// Chooses the distributions of the blue boxes.
void ChooseDistributions(const std::vector<help::ExampleDistribution>& distributions) {
    auto& platform = dynamic_cast<ScriptedPlatform&>(ThePlatform());
    for (std::size_t i = 0; i < distributions.size(); ++i) {
        platform.DistrChoices.emplace_back([chosen = distributions[i]] {
            ChooseShiftDistr(help::ButtonOfDistribution(chosen.Name));
            for (std::size_t k = 0; k < chosen.Parameters.size(); ++k)
                ShiftParText(static_cast<i16>(k)) = chosen.Parameters[k];
            return AcceptShift() == ShiftRefused::Nothing;
        });
        if (i + 1 == distributions.size() || distributions[i + 1].Label != distributions[i].Label)
            GetFromTable(help::PositionOfLabel(distributions[i].Label));
    }
    EXPECT_TRUE(platform.DistrChoices.empty());
}

// Answers what a design asks for.
void FillDesign(const help::ExampleDesign& design) {
    if (design.Boundaries.empty())
        return;
    auto& platform = dynamic_cast<ScriptedPlatform&>(ThePlatform());
    platform.BoundaryChoices.emplace_back([&design] {
        ChooseBoundType(help::BoundaryOfName(design.Boundaries));
        if (!design.Parameter.empty())
            FamilyParText = design.Parameter;
        return AcceptBoundary();
    });
    if (!design.Levels.empty())
        platform.GridFillings.emplace_back([&design] { return FillCurrentGrid(design.Levels); });
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
        FillTables(step);
        SolveFor(help::PositionOfLabel(step.Pressed));
        const i16 kind = ParKind(UnknownParNo);
        readings.push_back({ParText(kind), ParValue(UnknownParNo), IsCountKind(kind)});
    }
    return readings;
}

void SimulateInEngine(const help::Example& example) {
    const help::ExampleSimulation& simulation = example.Simulation;
    help::ChooseOptions(example);
    AcceptOptions();
    for (const auto& [label, text] : simulation.Set)
        TypedParText(help::PositionOfLabel(label), text);
    for (std::size_t k = 0; k < simulation.Levels.size(); ++k)
        TypedIntCell(IntColumn::RejectH0, static_cast<i16>(k), simulation.Levels[k]);
    ChooseDistributions(simulation.Distributions);
    FillDesign(example.Design);
    ExpectGrids(simulation.Tables);
    if (!simulation.Opened.empty())
        GetFromTable(help::PositionOfLabel(simulation.Opened));
    MaxNoOfSimText = simulation.Maximum;
    SeedText = simulation.Seed;
    SimStart();
    if (!example.Design.Levels.empty())
        SimStart(); // the first one has shown them
    EXPECT_TRUE(dynamic_cast<ScriptedPlatform&>(ThePlatform()).GridFillings.empty());
}

namespace {

struct Limits {
    f64 Lower;
    f64 Middle;
    f64 Upper;
};

// "0.0453   0.0483   0.0513".
Limits LimitsOf(const std::string& shown) {
    std::istringstream numbers(shown);
    std::string lower;
    std::string middle;
    std::string upper;
    numbers >> lower >> middle >> upper;
    return {ParseNumber(lower), ParseNumber(middle), ParseNumber(upper)};
}

f64 Share(const std::string& exact) {
    return std::clamp(ParseNumber(exact), 0.0, 1.0);
}

// The row of that name; a failure and nothing if there is none.
const std::vector<std::string>* RowOf(const std::vector<std::vector<std::string>>& rows,
                                      const std::string& name) {
    for (const auto& row : rows)
        if (row.front() == name)
            return &row;
    ADD_FAILURE() << "no row " << name;
    return nullptr;
}

constexpr const char* notTested = "--"; // in that family, or at that analysis

// One of many estimates: within four standard errors, and the last figure.
void ExpectShare(f64 shown, const std::string& exact, f64 runs, const std::string& what) {
    const f64 p = Share(exact);
    EXPECT_NEAR(shown, p, 4 * std::sqrt(p * (1 - p) / runs) + 4 / runs + 5e-5) << what;
}

} // namespace

void ExpectEstimate(const help::ExampleEstimate& estimate, const std::string& shown) {
    EXPECT_EQ(shown, estimate.Shown);
    const Limits limits = LimitsOf(estimate.Shown);
    const f64 exact = ParseNumber(estimate.Exact);
    EXPECT_LE(limits.Lower, exact) << shown;
    EXPECT_GE(limits.Upper, exact) << shown;
}

void ExpectSimulation(const help::ExampleSimulation& simulation, const SimulationReading& reading) {
    const f64 runs = ParseNumber(simulation.Maximum);
    ASSERT_FALSE(reading.Estimates.empty());
    const auto& overAll = reading.Estimates.back();
    ExpectEstimate(simulation.Level, overAll.at(1));
    ExpectEstimate(simulation.Power, overAll.at(2));
    for (const help::RunRow& row : simulation.Analyses)
        if (const auto* shown = RowOf(reading.Estimates, row.X))
            for (std::size_t i = 0; i < row.Shown.size(); ++i) {
                EXPECT_EQ(shown->at(i + 1), row.Shown[i]) << row.X;
                ExpectShare(LimitsOf(row.Shown[i]).Middle, row.Exact[i], runs, row.X);
            }
    for (std::size_t i = 0; i < simulation.Average.Shown.size(); ++i) {
        EXPECT_EQ(reading.Averages.at(i), simulation.Average.Shown[i]);
        EXPECT_NEAR(LimitsOf(simulation.Average.Shown[i]).Middle,
                    ParseNumber(simulation.Average.Exact[i]), simulation.AverageTolerance);
    }
    if (!simulation.RejectionHeads.empty()) {
        EXPECT_EQ(reading.RejectionHeads, simulation.RejectionHeads);
    }
    for (const help::RunRow& row : simulation.Rejections)
        if (const auto* shown = RowOf(reading.Rejections, row.X))
            for (std::size_t i = 0; i < row.Shown.size(); ++i) {
                EXPECT_EQ(shown->at(i + 1), row.Shown[i]) << row.X;
                if (row.Exact[i] != notTested)
                    ExpectShare(ParseNumber(row.Shown[i]), row.Exact[i], runs, "Test No " + row.X);
                else
                    EXPECT_TRUE(row.Shown[i].ends_with(notTested)) << row.X;
            }
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
