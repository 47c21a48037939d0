// A worked example as the help shows it.
#pragma once

#include "core/types.h"

#include <string>

namespace quorvanta::help {

// The HTML of an example's block: what to choose, type, press and read. Asks the engine what the
// option window offers. Throws std::runtime_error for an example of another analysis than the
// topic's number says, and for one that leaves a value open.
std::string ExampleHtml(const std::string& lines, i32 number);

// The HTML of the block of a table or graph: what to choose and type, and what it shows. Throws
// std::runtime_error for one that leaves a parameter open.
std::string RunHtml(const std::string& lines);

// The HTML of the block of a simulation: what to choose and type, and what the window shows at its
// end. Throws std::runtime_error as ExampleHtml does.
std::string SimulationHtml(const std::string& lines, i32 number);

// The text of a topic, with "{result 1}" and its fellows replaced by what its
// steps read; "{result 1:2}" is rounded to two decimals.
std::string WithResults(const std::string& topicText);

} // namespace quorvanta::help
