#include "generator/examplepage.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/dispatch.h"
#include "core/general.h"
#include "core/gridtable.h"
#include "core/help_numbers.h"
#include "core/number_text.h"
#include "core/option_choice.h"
#include "generator/example.h"
#include "generator/markdown.h"
#include "generator/parameterlists.h"
#include "montecarlo/simulation.h"
#include "multcomp/family.h"
#include "output/format.h"
#include "output/statement_simulation.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

namespace quorvanta::help {

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr const char* tableBegin = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n";

std::string TableHtml(const Rows& rows) {
    std::string html = tableBegin;
    for (const auto& [name, value] : rows)
        html += "<tr><td>" + Escape(name) + "</td><td><b>" + Escape(value) + "</b></td></tr>\n";
    return html + "</table>\n";
}

bool IsChoice(const FixedArray<bool, 1, 3>& offered) {
    return offered(1) + offered(2) + offered(3) > 1;
}

// What the option window shows, with the choices of the example.
Rows OptionRows(const Example& example) {
    Rows rows;
    if (IsTest == False)
        rows.emplace_back("Procedure", ProcedureCaption(ProcedureNo));
    if (const auto lists = OfferedParLists(); !lists.empty())
        rows.emplace_back("Parameter", lists[static_cast<std::size_t>(ChosenParList())]);
    if (SamplesShown && IsChoice(SamplesOffered))
        rows.emplace_back("No Of Samples", SamplesCaption(NoOfSamples));
    if (TailsShown && IsChoice(TailsOffered))
        rows.emplace_back("No Of Tails", TailsCaption(NoOfTails));
    const auto addTick = [&rows](const std::string& caption, bool ticked) {
        rows.emplace_back(caption, ticked ? "ticked" : "not ticked");
    };
    if (TailsShown && LeftTailOffered)
        addTick("Reject in Left Tail", LeftTail == True);
    for (i16 i = 0; i < NoOfCheck; ++i)
        if (CheckEnabled(i))
            addTick(StripAmpersand(CheckLabel(CheckList(i))), CheckValue(CheckList(i)) == 1);
    for (i16 i = 0; i < NoOfIntPar; ++i) {
        const i16 group = IntParList(i);
        const std::string caption = StripAmpersand(IntParCaption(group));
        rows.emplace_back("Interchangeable Parameters" + (caption.empty() ? "" : ", " + caption),
                          StripAmpersand(IntParOption(IntParValue(group), group)));
    }
    if (!example.Adjustment.empty())
        rows.emplace_back("Adjustment Method", AdjustMethodName(AdjustMethod));
    if (InterimShown)
        rows.emplace_back("Number Of Interim Analyses", std::to_string(NoOfInterim));
    return rows;
}

// Which values the first step leaves to chance.
void RequireAllTyped(const ExampleStep& step) {
    for (i16 i = 0; i <= NoOfPar; ++i) {
        const std::string label = StripAmpersand(ParLabel(ParKind(i)));
        const auto isOfLabel = [&label](const auto& value) { return value.first == label; };
        if (std::ranges::none_of(step.Typed, isOfLabel) &&
            std::ranges::none_of(step.Derived, isOfLabel) && label != step.Pressed)
            throw std::runtime_error("example: no value for " + label);
    }
}

std::string RowHtml(const std::string& tag, const std::string& first,
                    const std::vector<std::string>& cells) {
    std::string html = "<tr><" + tag + ">" + Escape(first) + "</" + tag + ">";
    for (const std::string& cell : cells)
        html += "<" + tag + ">" + Escape(cell) + "</" + tag + ">";
    return html + "</tr>\n";
}

// The grids that the box of the label opens after these values are typed; refuses a label that
// opens others than the example fills.
std::vector<Grid> GridsOf(const ExampleStep& step) {
    for (const auto& [label, text] : step.Typed)
        ParValue(PositionOfLabel(label)) = Val(text);
    std::vector<Grid> grids = SelTableGrids(PositionOfLabel(step.Opened));
    if (!std::ranges::equal(grids, step.Tables, {}, &Grid::Title, &ExampleTable::Title))
        throw std::runtime_error("example: not the grids of " + step.Opened);
    return grids;
}

std::string FilledTableHtml(const ExampleTable& table, const Grid& grid, const char* button) {
    std::vector<std::string> heads;
    for (i16 column = 1; column <= grid.Columns; ++column)
        heads.push_back(GridHeadOf(grid.ColumnHeads, grid.Columns, column));
    std::string html = "Fill the table <b>" + Escape(table.Title) + "</b>, then press <b>" +
                       button + "</b>:\n" + tableBegin + RowHtml("th", "", heads);
    for (std::size_t i = 0; i < table.Rows.size(); ++i)
        html += RowHtml("td", GridHeadOf(grid.RowHeads, grid.Rows, static_cast<i16>(i + 1)),
                        table.Rows[i]);
    return html + "</table>\n";
}

std::string OpenedHtml(const ExampleStep& step) {
    const std::vector<Grid> grids = GridsOf(step);
    std::string html = "<li>Double-click the box of <b>" + Escape(step.Opened) + "</b>.</li>\n";
    for (std::size_t i = 0; i < grids.size(); ++i)
        html +=
            "<li>" +
            FilledTableHtml(step.Tables[i], grids[i], i + 1 < grids.size() ? "Next" : "Calculate") +
            "</li>\n";
    if (!step.Derived.empty())
        html += "<li>Read what derives from " + std::string(grids.size() > 1 ? "them" : "it") +
                ":\n" + TableHtml(step.Derived) + "</li>\n";
    return html;
}

std::string StepHtml(const ExampleStep& step) {
    std::string html;
    for (const auto& [label, text] : step.Typed)
        PositionOfLabel(label);
    const i16 kind = ParKind(PositionOfLabel(step.Pressed));
    if (!step.Typed.empty())
        html += "<li>Type these values:\n" + TableHtml(step.Typed) + "</li>\n";
    if (!step.Opened.empty())
        html += OpenedHtml(step);
    html += "<li>Press the label <b>" + Escape(step.Pressed) + "</b> and read <b>" +
            Escape(step.Shown) + "</b> in its box. The exact value is " + Escape(step.Exact) +
            (IsPopulationKind(kind) ? ", which is rounded down.</li>\n"
             : IsCountKind(kind)    ? ", which is rounded up.</li>\n"
                                    : ".</li>\n");
    return html;
}

// The values of the step "Type these values" of a table or graph; refuses a parameter that is left
// to chance.
Rows RunInputs(const ExampleRun& run) {
    Rows rows = {{"Parameter To Calculate (y-axis)", run.Y},
                 {"Independent Parameter 1 (x-axis)", run.X},
                 {"Min, Max, Step", run.Min + ", " + run.Max + ", " + run.Step},
                 {"Independent Parameter 2 (z-values)", run.Z},
                 {"Value(s) separated by space", run.Values}};
    std::set<std::string> labels = {run.Y, run.X, run.Z};
    for (const auto& value : run.Set) {
        labels.insert(value.first);
        rows.push_back(value);
    }
    for (const std::string& label : labels)
        PositionOfLabel(label);
    if (labels.size() != static_cast<std::size_t>(NoOfPar) + 1)
        throw std::runtime_error("example: not every parameter has a place");
    return rows;
}

// The values of the step "Type these values" of a simulation; refuses a parameter that is left to
// chance: one that is not typed and derives from no table.
Rows SimulationInputs(const ExampleSimulation& simulation) {
    std::set<std::string> labels;
    for (i16 i = 0; i <= NoOfPar && !simulation.Tables.empty(); ++i)
        if (SelIsTablePar(i))
            labels.insert(StripAmpersand(ParLabel(ParKind(i))));
    for (const auto& value : simulation.Set) {
        PositionOfLabel(value.first);
        labels.insert(value.first);
    }
    if (labels.size() != static_cast<std::size_t>(NoOfPar)) // all but what is estimated
        throw std::runtime_error("example: not every parameter has a value");
    Rows rows = simulation.Set;
    for (std::size_t k = 0; k < simulation.Levels.size(); ++k)
        rows.emplace_back("Interim Analysis " + std::to_string(k + 1) + ", Reject H0 if p<",
                          simulation.Levels[k]);
    rows.emplace_back("Max. No of Simulations", simulation.Maximum);
    rows.emplace_back("Random Seed", simulation.Seed);
    return rows;
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string RunHtmlTable(const ExampleRun& run, std::vector<std::string> RunRow::*cells) {
    std::string html = tableBegin + RowHtml("th", run.X + " \\ " + run.Z, Words(run.Values));
    for (const RunRow& row : run.Rows)
        html += RowHtml("td", row.X, row.*cells);
    return html + "</table>\n";
}

std::string MenuPathHtml(const Example& example) {
    std::string menus;
    for (const std::string& caption : example.Menus)
        menus += (menus.empty() ? "" : " › ") + Escape(caption);
    return menus;
}

std::string OptionsHtml(const Example& example) {
    return "<li>Choose these options, then press <b>OK</b>:\n" + TableHtml(OptionRows(example)) +
           "</li>\n";
}

// The distributions of a simulation, in their order.
std::string DistributionsHtml(const ExampleSimulation& simulation) {
    std::string html;
    for (const ExampleDistribution& distribution : simulation.Distributions) {
        PositionOfLabel(distribution.Label);
        html += "<li>Double-click the blue box of <b>" + Escape(distribution.Label) +
                "</b> and choose <b>" + Escape(distribution.Name) + "</b>";
        for (std::size_t i = 0; i < distribution.Parameters.size(); ++i)
            html += std::string(i == 0 ? " with " : " and ") + Escape(distribution.Parameters[i]);
        html += ".</li>\n";
    }
    return html;
}

// The input grids of a simulation, in their order.
std::string TablesHtml(const ExampleSimulation& simulation) {
    std::string html;
    if (!simulation.Opened.empty()) {
        PositionOfLabel(simulation.Opened);
        html += "<li>Double-click the blue box of <b>" + Escape(simulation.Opened) + "</b>.</li>\n";
    }
    for (const ExampleTable& table : simulation.Tables) {
        html += "<li>Fill the table <b>" + Escape(table.Title) + "</b>:\n" + tableBegin;
        for (std::size_t i = 0; i < table.Rows.size(); ++i)
            html += RowHtml("td", std::to_string(i + 1), table.Rows[i]);
        html += "</table>\n</li>\n";
    }
    return html;
}

// A row of a simulation, each figure with what it estimates.
std::string EstimateRowHtml(const RunRow& row) {
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < row.Shown.size(); ++i) {
        cells.push_back(row.Shown[i]);
        cells.push_back(row.Exact[i]);
    }
    return RowHtml("td", row.X, cells);
}

constexpr const char* estimateHead = "Lower   Estimate   Upper";
constexpr const char* referenceHead = "Reference value";

std::string EstimatesHtml(const ExampleSimulation& simulation) {
    const EstimateCaptions captions = CaptionsOfEstimates();
    std::string html = tableBegin + RowHtml("th", "", {estimateHead, referenceHead});
    html += EstimateRowHtml({captions.Sign, {simulation.Level.Shown}, {simulation.Level.Exact}});
    html += EstimateRowHtml({captions.Power, {simulation.Power.Shown}, {simulation.Power.Exact}});
    html += "</table>\n";
    if (!simulation.Analyses.empty()) {
        std::vector<std::string> heads;
        for (const std::string& caption : {captions.Sign, captions.Power, captions.PrAccept})
            if (heads.size() < 2 * simulation.Analyses.front().Shown.size())
                heads.insert(heads.end(), {caption, referenceHead});
        html += tableBegin + RowHtml("th", "", heads);
        for (const RunRow& row : simulation.Analyses)
            html += EstimateRowHtml(row);
        html += "</table>\n";
    }
    if (!simulation.Average.Shown.empty())
        html += tableBegin +
                RowHtml("th", "", {"H0 is True", referenceHead, "H1 is True", referenceHead}) +
                EstimateRowHtml(
                    {SimAverageCaption(), simulation.Average.Shown, simulation.Average.Exact}) +
                "</table>\n";
    if (simulation.Rejections.empty())
        return html;
    std::vector<std::string> heads;
    for (std::size_t i = 0; i < simulation.Rejections.front().Shown.size(); ++i)
        heads.insert(heads.end(),
                     {i < simulation.RejectionHeads.size() ? simulation.RejectionHeads[i]
                                                           : std::string("Rejected"),
                      referenceHead});
    html += tableBegin + RowHtml("th", "Prob (Reject Test No)", heads);
    for (const RunRow& row : simulation.Rejections)
        html += EstimateRowHtml(row);
    return html + "</table>\n";
}

// What the program says of the values that it starts with.
std::string ToldHtml(const Example& example) {
    std::string html;
    for (const std::string& message : example.Told)
        html += "<li>With the values that it starts with the program says <b>" + Escape(message) +
                "</b> Press <b>OK</b>.</li>\n";
    return html;
}

std::string DesignHtml(const ExampleDesign& design) {
    if (design.Boundaries.empty())
        return "";
    BoundaryOfName(design.Boundaries);
    Rows fractions;
    for (const std::string& fraction : design.Fractions)
        fractions.emplace_back("Interim Analysis " + std::to_string(fractions.size() + 1),
                               fraction);
    std::string levels;
    for (std::size_t k = 0; k < design.Levels.size(); ++k)
        levels += RowHtml(
            "td",
            k + 1 == design.Levels.size() ? "Final" : "Interim Analysis " + std::to_string(k + 1),
            design.Levels[k]);
    if (!levels.empty())
        levels = "Fill the levels, and press <b>Next</b>:\n" + std::string(tableBegin) +
                 RowHtml("th", "", {"Reject H0 if p<", "Accept H0 if p>"}) + levels +
                 "</table></li>\n<li>";
    return "<li>Choose the boundaries <b>" + Escape(design.Boundaries) + "</b>" +
           (design.Parameter.empty() ? "" : ", type <b>" + Escape(design.Parameter) + "</b>,") +
           " and press <b>Next</b>. " + levels +
           "Fill the information fractions, then press "
           "<b>Calculate</b>:\n" +
           TableHtml(fractions) + "</li>\n";
}

// From the values that are typed to the run: what comes before OK, and what OK asks for. The levels
// of boundaries of the user's own are shown before the next OK runs.
std::string RunStepsHtml(const Example& example) {
    const std::string press = "<li>Press <b>OK</b>";
    const std::string tables = TablesHtml(example.Simulation);
    const bool isOpened = !example.Simulation.Opened.empty();
    return (isOpened ? tables : "") + press + ".</li>\n" + ToldHtml(example) +
           DesignHtml(example.Design) + (isOpened ? "" : tables) +
           (example.Design.Levels.empty() ? "" : press + " again.</li>\n");
}

// "2" stands for what the second step reads, "2:3" for the same with three decimals.
std::string Result(const std::string& wanted, const std::vector<ExampleStep>& steps) {
    const std::size_t colon = wanted.find(':');
    const std::string& shown = steps.at(std::stoul(wanted) - 1).Shown;
    if (colon == std::string::npos)
        return shown;
    return Format(Val(shown), "0." + std::string(std::stoul(wanted.substr(colon + 1)), '0'));
}

} // namespace

namespace {

// The page of an analysis has its number from it.
void RequireNumber(i32 number) {
    if (HelpSubjectOf(number).Topic == HelpTopic::Example && HelpExample() != number)
        throw std::runtime_error("example: its analysis has the number " +
                                 std::to_string(HelpExample()));
}

} // namespace

std::string ExampleHtml(const std::string& lines, i32 number) {
    const Example example = ParseExample(lines);
    ChooseOptions(example);
    RequireNumber(number);
    std::string html = "<ol>\n<li>Choose the menu <b>" + MenuPathHtml(example) +
                       "</b>. If no window is open, the program asks for one: take <b>New "
                       "Calculation</b> and press <b>Continue</b>.</li>\n" +
                       OptionsHtml(example) + DesignHtml(example.Design) + ToldHtml(example);
    SelSetParList();
    RequireAllTyped(example.Steps.front());
    for (const ExampleStep& step : example.Steps)
        html += StepHtml(step);
    return html + "</ol>\n<p>Source: " + Escape(example.Source) + "</p>\n";
}

std::string RunHtml(const std::string& lines) {
    const Example example = ParseRun(lines);
    const ExampleRun& run = example.Run;
    ChooseOptions(example);
    std::string html = "<ol>\n<li>Choose the menu <b>File › New " + run.Window + "</b>, then <b>" +
                       MenuPathHtml(example) + "</b>.</li>\n" + OptionsHtml(example);
    SelSetParList();
    html += "<li>Choose the axes, type the values, and press <b>OK</b>:\n" +
            TableHtml(RunInputs(run)) + "</li>\n";
    html += "<li>Read" + std::string(run.Window == "Graph" ? " off the curves" : "") +
            ", in the rows " + Escape(run.X) + ", in the columns " + Escape(run.Z) + ":\n" +
            RunHtmlTable(run, &RunRow::Shown) + "</li>\n</ol>\n";
    return html + "<p>The exact values:</p>\n" + RunHtmlTable(run, &RunRow::Exact) +
           "<p>Source: " + Escape(example.Source) + "</p>\n";
}

std::string SimulationHtml(const std::string& lines, i32 number) {
    const Example example = ParseSimulation(lines);
    const ExampleSimulation& simulation = example.Simulation;
    ShowWindowOf(SimulationWindow);
    ChooseOptions(example);
    RequireNumber(number);
    std::string html =
        "<ol>\n<li>Choose the menu <b>File › New Monte Carlo Simulation</b>, then <b>" +
        MenuPathHtml(example) + "</b>.</li>\n" + OptionsHtml(example);
    SelSetParList();
    html += "<li>Type these values:\n" + TableHtml(SimulationInputs(simulation)) + "</li>\n" +
            DistributionsHtml(simulation) + RunStepsHtml(example) +
            "<li>Read at the end of the run:\n" + EstimatesHtml(simulation) + "</li>\n</ol>\n";
    ShowWindowOf(CalculationWindow); // which all other pages are about
    return html + "<p>Source: " + Escape(example.Source) + "</p>\n";
}

std::string WithResults(const std::string& topicText) {
    const std::string begin = "{result ";
    if (topicText.find(begin) == std::string::npos)
        return topicText;
    const Example example = ExampleOf(topicText);
    std::string text;
    std::size_t done = 0;
    for (std::size_t at = topicText.find(begin); at != std::string::npos;
         at = topicText.find(begin, done)) {
        text += topicText.substr(done, at - done);
        const std::size_t end = topicText.find('}', at);
        text += Result(topicText.substr(at + begin.size(), end - at - begin.size()), example.Steps);
        done = end + 1;
    }
    return text + topicText.substr(done);
}

} // namespace quorvanta::help
