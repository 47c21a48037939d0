#include "generator/example.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/number_text.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "groupseq/boundchoice.h"
#include "groupseq/groupseq.h"
#include "montecarlo/shiftmodel.h"
#include "multcomp/family.h"

#include <span>
#include <sstream>
#include <stdexcept>

namespace quorvanta::help {

namespace {

constexpr const char* samplesCaptions[] = {"One Sample", "Two Samples", ">Two Samples"};
constexpr const char* tailsCaptions[] = {"One-sided (non-inferiority, superiority)",
                                         "Two-sided (inequality)", "Two One-sided (equivalence)"};
constexpr const char* procedureCaptions[] = {"Test", "Point Estimate", "Conf. Interval"};

[[noreturn]] void Refuse(const std::string& what, const std::string& text) {
    throw std::runtime_error("example: " + what + ": " + text);
}

std::vector<std::string> Split(std::string text, const std::string& separator) {
    std::vector<std::string> parts;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.erase(0, end + separator.size());
    }
    parts.push_back(text);
    return parts;
}

// "label = text"; the label may have an equals sign of its own.
std::pair<std::string, std::string> Typed(const std::string& text) {
    const std::string equals = " = ";
    const std::size_t end = text.rfind(equals);
    if (end == std::string::npos)
        Refuse("no value", text);
    return {text.substr(0, end), text.substr(end + equals.size())};
}

// "5 | 191 | 338".
std::vector<std::string> Cells(const std::string& text) {
    return Split(text, " | ");
}

bool TakeDesign(ExampleDesign& design, const std::string& name, const std::string& text) {
    if (name == "interim")
        design.Interim = static_cast<i16>(Val(text));
    else if (name == "boundaries")
        design.Boundaries = text;
    else if (name == "boundary parameter")
        design.Parameter = text;
    else if (name == "levels")
        design.Levels.push_back(Cells(text));
    else if (name == "fractions")
        design.Fractions = Cells(text);
    else
        return false;
    return true;
}

// A line before the first step.
bool TakeOption(Example& example, const std::string& name, const std::string& text) {
    if (name == "analysis")
        example.Menus = Split(text, " > ");
    else if (name == "procedure")
        example.Procedure = text;
    else if (name == "parameter")
        example.Parameter = text;
    else if (name == "samples")
        example.Samples = text;
    else if (name == "tails")
        example.Tails = text;
    else if (name == "left tail")
        example.LeftTail = text == "yes";
    else if (name == "tick")
        example.Ticked.push_back(text);
    else if (name == "choose")
        example.Chosen.push_back(text);
    else if (name == "adjust")
        example.Adjustment = text;
    else if (name == "told")
        example.Told.push_back(text);
    else if (name == "source")
        example.Source = text;
    else
        return TakeDesign(example.Design, name, text);
    return true;
}

// A line of a step; what is typed, opened or pressed after a value was read begins the next one.
bool TakeStep(Example& example, const std::string& name, const std::string& text) {
    const bool begins = name == "type" || name == "open" || name == "press";
    if (begins && (example.Steps.empty() || !example.Steps.back().Shown.empty()))
        example.Steps.emplace_back();
    if (example.Steps.empty())
        return false;
    ExampleStep& step = example.Steps.back();
    if (name == "type")
        step.Typed.push_back(Typed(text));
    else if (name == "open")
        step.Opened = text;
    else if (name == "table" && !step.Opened.empty())
        step.Tables.push_back({text, {}});
    else if (name == "fill" && !step.Tables.empty())
        step.Tables.back().Rows.push_back(Cells(text));
    else if (name == "derived" && !step.Tables.empty())
        step.Derived.push_back(Typed(text));
    else if (name == "press")
        step.Pressed = text;
    else if (name == "read")
        step.Shown = text;
    else if (name == "exact")
        step.Exact = text;
    else if (name == "tolerance")
        step.Tolerance = Val(text);
    else
        return false;
    return true;
}

void TakeRow(std::vector<RunRow>& rows, const std::string& text) {
    const std::vector<std::string> cells = Cells(text);
    rows.push_back({cells.front(), {cells.begin() + 1, cells.end()}, {}});
}

void TakeExactRow(std::vector<RunRow>& rows, const std::string& text) {
    const std::vector<std::string> cells = Cells(text);
    if (rows.empty() || rows.back().X != cells.front() ||
        rows.back().Shown.size() + 1 != cells.size())
        Refuse("not the exact row of the row before", text);
    rows.back().Exact.assign(cells.begin() + 1, cells.end());
}

void RequireExactRows(const std::vector<RunRow>& rows) {
    for (const RunRow& row : rows)
        if (row.Exact.empty())
            Refuse("no exact row", row.X);
}

// A line that is nothing but the text of a field.
bool TakeField(std::span<const std::pair<const char*, std::string*>> fields,
               const std::string& name, const std::string& text) {
    for (const auto& [field, place] : fields)
        if (name == field) {
            *place = text;
            return true;
        }
    return false;
}

// A line of a table or graph.
bool TakeRun(ExampleRun& run, const std::string& name, const std::string& text) {
    const std::pair<const char*, std::string*> fields[] = {
        {"window", &run.Window}, {"y", &run.Y},     {"x", &run.X},       {"z", &run.Z},
        {"min", &run.Min},       {"max", &run.Max}, {"step", &run.Step}, {"values", &run.Values}};
    if (TakeField(fields, name, text))
        return true;
    if (name == "set") {
        run.Set.push_back(Typed(text));
    } else if (name == "tolerance") {
        run.Tolerance = Val(text);
    } else if (name == "row") {
        TakeRow(run.Rows, text);
    } else if (name == "exact") {
        TakeExactRow(run.Rows, text);
    } else {
        return false;
    }
    return true;
}

// A line of what a simulation shows beside its two estimates.
bool TakeRowOfSimulation(ExampleSimulation& simulation, const std::string& name,
                         const std::string& text) {
    if (name == "row")
        TakeRow(simulation.Analyses, text);
    else if (name == "exact")
        TakeExactRow(simulation.Analyses, text);
    else if (name == "reject heads")
        simulation.RejectionHeads = Cells(text);
    else if (name == "reject")
        TakeRow(simulation.Rejections, text);
    else if (name == "exact reject")
        TakeExactRow(simulation.Rejections, text);
    else if (name == "average")
        simulation.Average.Shown = Cells(text);
    else if (name == "exact average")
        simulation.Average.Exact = Cells(text);
    else if (name == "tolerance")
        simulation.AverageTolerance = Val(text);
    else
        return false;
    return true;
}

void TakeDistribution(ExampleSimulation& simulation, const std::string& text) {
    const std::vector<std::string> cells = Cells(text);
    if (cells.size() < 2)
        Refuse("no distribution", text);
    simulation.Distributions.push_back({cells[0], cells[1], {cells.begin() + 2, cells.end()}});
}

// A line of a simulation.
bool TakeSimulation(ExampleSimulation& simulation, const std::string& name,
                    const std::string& text) {
    const std::pair<const char*, std::string*> fields[] = {
        {"maximum", &simulation.Maximum},
        {"seed", &simulation.Seed},
        {"open", &simulation.Opened},
        {"level", &simulation.Level.Shown},
        {"power", &simulation.Power.Shown},
        {"exact level", &simulation.Level.Exact},
        {"exact power", &simulation.Power.Exact}};
    if (TakeField(fields, name, text))
        return true;
    if (name == "set")
        simulation.Set.push_back(Typed(text));
    else if (name == "reject below")
        simulation.Levels = Cells(text);
    else if (name == "distribution")
        TakeDistribution(simulation, text);
    else if (name == "table")
        simulation.Tables.push_back({text, {}});
    else if (name == "fill" && !simulation.Tables.empty())
        simulation.Tables.back().Rows.push_back(Cells(text));
    else
        return TakeRowOfSimulation(simulation, name, text);
    return true;
}

// Hands every line to what takes it.
template <class Take>
void TakeLines(const std::string& lines, Take&& take) {
    std::istringstream text(lines);
    std::string line;
    while (std::getline(text, line)) {
        const std::string colon = ": ";
        const std::size_t end = line.find(colon);
        if (end == std::string::npos || !take(line.substr(0, end), line.substr(end + colon.size())))
            Refuse("not a line", line);
    }
}

// The lines of the first such block of a topic.
std::string BlockOf(const std::string& topicText, const std::string& name) {
    const std::string begin = "```" + name + "\n";
    const std::size_t start = topicText.find(begin);
    const std::size_t end = topicText.find("\n```", start);
    if (start == std::string::npos || end == std::string::npos)
        Refuse("none in the topic", topicText.substr(0, 40));
    const std::size_t first = start + begin.size();
    return topicText.substr(first, end - first);
}

template <std::size_t Count>
i16 IndexOf(const char* const (&captions)[Count], const std::string& caption) {
    for (std::size_t i = 0; i < Count; ++i)
        if (caption == captions[i])
            return static_cast<i16>(i);
    Refuse("no such option", caption);
}

void ChooseParameter(const std::string& caption) {
    const auto list = OfferedParLists();
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i] == caption)
            return ChooseParList(static_cast<i16>(i));
    Refuse("no such parameter", caption);
}

void TickCheck(const std::string& caption) {
    for (i16 i = 0; i < NoOfCheck; ++i)
        if (StripAmpersand(CheckLabel(CheckList(i))) == caption)
            return ChooseCheck(i, true);
    Refuse("no such check box", caption);
}

void ChooseForm(const std::string& caption) {
    for (i16 i = 0; i < NoOfIntPar; ++i)
        for (i16 option = 0; option <= 2; ++option)
            if (StripAmpersand(IntParOption(option, IntParList(i))) == caption)
                return ChooseIntPar(i, option);
    Refuse("no such form", caption);
}

} // namespace

Example ParseExample(const std::string& lines) {
    Example example;
    TakeLines(lines, [&example](const std::string& name, const std::string& text) {
        return TakeOption(example, name, text) || TakeStep(example, name, text);
    });
    if (example.Steps.empty() || example.Steps.back().Exact.empty())
        Refuse("no complete step", lines);
    return example;
}

Example ParseRun(const std::string& lines) {
    Example example;
    TakeLines(lines, [&example](const std::string& name, const std::string& text) {
        return TakeOption(example, name, text) || TakeRun(example.Run, name, text);
    });
    if (example.Run.Rows.empty())
        Refuse("no row", lines);
    RequireExactRows(example.Run.Rows);
    return example;
}

Example ParseSimulation(const std::string& lines) {
    Example example;
    TakeLines(lines, [&example](const std::string& name, const std::string& text) {
        return TakeOption(example, name, text) || TakeSimulation(example.Simulation, name, text);
    });
    const ExampleSimulation& simulation = example.Simulation;
    for (const ExampleEstimate& estimate : {simulation.Level, simulation.Power})
        if (estimate.Shown.empty() || estimate.Exact.empty())
            Refuse("no estimate", lines);
    RequireExactRows(simulation.Analyses);
    RequireExactRows(simulation.Rejections);
    if (simulation.Average.Shown.size() != simulation.Average.Exact.size())
        Refuse("an average without its exact value", lines);
    return example;
}

Example ExampleOf(const std::string& topicText) {
    return ParseExample(BlockOf(topicText, "example"));
}

Example RunOf(const std::string& topicText) {
    return ParseRun(BlockOf(topicText, "run"));
}

Example SimulationOf(const std::string& topicText) {
    return ParseSimulation(BlockOf(topicText, "simulation"));
}

const MenuItem& MenuEntry(const std::vector<std::string>& captions) {
    const MenuItem* entry = nullptr;
    for (const std::string& caption : captions) {
        const MenuItem* found = nullptr;
        for (const MenuItem& item : entry == nullptr ? MainMenu() : entry->Children)
            if (StripAmpersand(item.Caption) == caption)
                found = &item;
        if (found == nullptr)
            Refuse("no such menu entry", caption);
        entry = found;
    }
    return *entry;
}

void ChooseOptions(const Example& example) {
    const MenuItem& entry = MenuEntry(example.Menus);
    if (entry.Action == MenuAction::Test)
        NewTest(entry.MenuNo);
    else
        NewDistribution(entry.MenuNo);
    if (!example.Parameter.empty())
        ChooseParameter(example.Parameter);
    if (!example.Procedure.empty())
        ChooseProcedure(IndexOf(procedureCaptions, example.Procedure));
    if (!example.Samples.empty())
        ChooseSamples(static_cast<i16>(IndexOf(samplesCaptions, example.Samples) + OneSample));
    if (!example.Tails.empty())
        ChooseTails(static_cast<i16>(IndexOf(tailsCaptions, example.Tails) + OneSided));
    ChooseLeftTail(example.LeftTail);
    for (i16 i = 0; i < NoOfCheck; ++i)
        ChooseCheck(i, false);
    for (const std::string& caption : example.Ticked)
        TickCheck(caption);
    // Nothing is left of what was chosen before.
    for (i16 i = 0; i < NoOfIntPar; ++i)
        ChooseIntPar(i, 0);
    for (const std::string& caption : example.Chosen)
        ChooseForm(caption);
    if (!AdjustMethodNames().empty())
        ChooseAdjustMethod(AdjustmentOfName(example.Adjustment));
    else if (!example.Adjustment.empty())
        Refuse("no method of adjustment", example.Adjustment);
    if (InterimShown)
        ChooseInterim(example.Design.Interim);
}

i16 AdjustmentOfName(const std::string& name) {
    const std::vector<std::string> names = AdjustMethodNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        if (name.empty() || names[i] == name)
            return static_cast<i16>(i);
    Refuse("no such method of adjustment", name);
}

i16 ButtonOfDistribution(const std::string& name) {
    for (i16 button = 0; button <= static_cast<i16>(ShiftList.HighBound()); ++button)
        if (SimDistrName(ShiftList(button)) == name)
            return button;
    Refuse("no such distribution", name);
}

i16 BoundaryOfName(const std::string& name) {
    for (i16 type = 0; type < NoOfBoundTypes; ++type)
        if (BoundName(type) == name)
            return type;
    Refuse("no such boundaries", name);
}

i16 PositionOfLabel(const std::string& label) {
    for (i16 i = 0; i <= NoOfPar; ++i)
        if (StripAmpersand(ParLabel(ParKind(i))) == label)
            return i;
    Refuse("no such parameter", label);
}

const char* SamplesCaption(i16 noOfSamples) {
    return samplesCaptions[noOfSamples - OneSample];
}

const char* TailsCaption(i16 noOfTails) {
    return tailsCaptions[noOfTails - OneSided];
}

const char* ProcedureCaption(i16 procedureNo) {
    return procedureCaptions[procedureNo];
}

} // namespace quorvanta::help
