// The worked examples of the help, as checks play them.
#pragma once

#include "core/types.h"
#include "generator/example.h"

#include <ostream>
#include <string>
#include <vector>

namespace quorvanta::checks {

// The topics of the help that hold an example, by number; throws std::runtime_error if there is
// none.
struct ExampleTopic {
    i32 Number = 0;
    help::Example Example;

    friend std::ostream& operator<<(std::ostream& out, const ExampleTopic& topic) {
        return out << topic.Number;
    }
};
std::vector<ExampleTopic> ReadExamples();

// Likewise, the topics with a table or graph.
std::vector<ExampleTopic> ReadRuns();

// Likewise, the topics with a simulation.
std::vector<ExampleTopic> ReadSimulations();

// What a step of an example led to.
struct ExampleReading {
    std::string Shown;    // the text of the unknown's box
    f64 Solution = 0;     // the unrounded value
    bool IsCount = false; // shown rounded up to a whole number
};

// Plays an example through the engine, without windows. A Calculation window has to be open.
std::vector<ExampleReading> PlayInEngine(const help::Example& example);

// Plays a simulation through the engine. A Simulation window has to be open.
void SimulateInEngine(const help::Example& example);

// Does the window show that, and is what it estimates within its limits?
void ExpectEstimate(const help::ExampleEstimate& estimate, const std::string& shown);

// What a simulation has come to, as texts; each row begins with its name.
struct SimulationReading {
    std::vector<std::vector<std::string>> Estimates; // by analysis, the last one over all
    std::vector<std::string> Averages;               // if H0 is true, if H1 is
    std::vector<std::string> RejectionHeads;
    std::vector<std::vector<std::string>> Rejections; // by the number of the hypothesis
};

// Does the window show what the page says, and is that what it estimates? The level and the power
// of the whole study have to be within their limits, any other share within four standard errors.
void ExpectSimulation(const help::ExampleSimulation& simulation, const SimulationReading& reading);

// Is this what the example says, and does the example agree with its exact value? Reports what
// differs as failures of the running check.
void ExpectReading(const help::ExampleStep& step, const ExampleReading& reading);

} // namespace quorvanta::checks
